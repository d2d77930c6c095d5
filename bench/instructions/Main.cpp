// velt_bench_instructions: a load, a query and a write, small enough to count their instructions one by one. Each is a
// function whose name an instruction counter finds; nothing is timed.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/Drawings.h"
#include "bench/Selection.h"
#include "dxf/Document.h"
#include "embedded/database/Drawing.h"

using namespace velt;
using bench::Selection;

extern "C" {

[[gnu::noinline]] void measuredLoad(std::string&& bytes) {
  const auto drawing = database::Drawing::parse(std::move(bytes), "benchmark");
  if (drawing->document().recordCount() == 0) throw std::logic_error("nothing was read");
}

[[gnu::noinline]] void measuredQuery(Selection& selection, TqVector<PROPINFO>& rows) {
  selection.query(rows);
}

[[gnu::noinline]] int measuredWrite(Selection& selection, const PROPINFO& row, VARIANT& value) {
  CStdStr<wchar_t> errorText;
  int lockedCount = 0;
  VkArray<VkDbObjectId> touched;
  const int result =
      SetPropertiesValue(selection.entries(), row, value, false, errorText, lockedCount, touched, 0);
  return result == 1 ? touched.length() : -1;
}
}

int main() {
  constexpr std::uint32_t entities = 50;
  const std::string bytes = bench::drawingOf(bench::Content::Lines, entities);
  measuredLoad(std::string(bytes));

  Selection selection(bytes);
  selection.setUp();
  TqVector<PROPINFO> rows;
  // The first query fills the cache of property lists.
  selection.query(rows);
  rows = {};
  measuredQuery(selection, rows);
  PROPINFO scale;
  for (const PROPINFO& row : std::as_const(rows)) {
    if (row.name == CStdStr<wchar_t>(L"LinetypeScale")) scale = row;
  }
  VARIANT value{};
  value.vt = VT_R8;
  value.dblVal = 0.5;
  return measuredWrite(selection, scale, value) == static_cast<int>(entities) ? 0 : 1;
}
