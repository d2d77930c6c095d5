// Dynamic rows of growing selections: references to one dynamic block, whose attributes are the rows.

#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Groups.h"
#include "bench/Selection.h"

namespace velt::bench {

namespace {

constexpr std::uint32_t rowsPerReference = 10;

struct Scale {
  std::vector<std::uint32_t> sizes;
  Repetitions repetitions;
};

Scale scaleFor(const Settings& settings) {
  if (settings.quick) return {{20, 100}, {.atLeast = 2, .atMost = 2}};
  // Few repetitions: the values of all references but the first are never released, as is prescribed.
  return {{2'000, 5'000, 10'000, 20'000}, {.atLeast = 5, .atMost = 5}};
}

void clearValues(TqVector<PROPINFO>& rows) {
  for (PROPINFO& row : rows)
    VariantClear(&row.value);
}

std::uint32_t dynamicRowsOf(const TqVector<PROPINFO>& rows) {
  std::uint32_t count = 0;
  for (const PROPINFO& row : rows)
    count += row.dispId == dynamicPropertyDispId ? 1 : 0;
  return count;
}

void query(Selection& selection, std::uint32_t expectedRows) {
  TqVector<PROPINFO> rows;
  selection.query(rows);
  const std::uint32_t found = dynamicRowsOf(rows);
  clearValues(rows);
  if (found != expectedRows) throw std::logic_error("the query has not the dynamic rows that it should have");
}

void queryAll(Selection& selection) {
  query(selection, rowsPerReference);
}

void queryStaticRowsOnly(Selection& selection) {
  query(selection, 0);
}

// The dynamic rows alone, without the merge.
void readRows(Selection& selection) {
  for (const VeltPropData& entry : selection.data()) {
    TqVector<PROPINFO> rows;
    GetDynPropSourcesPropInfo(entry.pDispatch, rows);
    clearValues(rows);
  }
}

struct Work {
  const char* name;
  void (*run)(Selection&);
  bool isDynamic = true;
};

constexpr Work works[] = {
    {"dynamic/read", readRows},
    {"dynamic/query", queryAll},
    {"dynamic/ordinary", queryStaticRowsOnly, false},
};

}  // namespace

void measureDynamicRows(const Settings& settings, Report& report) {
  const Scale scale = scaleFor(settings);
  for (const Work& work : works) {
    if (!settings.wants(work.name)) continue;
    std::vector<Point> growth;
    for (const std::uint32_t references : scale.sizes) {
      Selection selection(drawingOfReferences(references, rowsPerReference, work.isDynamic));
      selection.setUp();
      work.run(selection);
      const Spread time = spreadOf(sample(scale.repetitions, [&] { work.run(selection); }));
      growth.push_back({static_cast<double>(references), time.median});
      report.add({fmt::format("{}/{}", work.name, references),
                  {{"references", static_cast<double>(references)}, {"rowsPerReference", rowsPerReference}},
                  {{"time", "ns per row", time.over(static_cast<double>(references) * rowsPerReference)}}});
    }
    const double exponent = growthExponent(growth);
    report.add({fmt::format("growth/{}", work.name),
                {{"from", growth.front().size}, {"to", growth.back().size}},
                {{"exponent", "", {exponent, exponent, exponent}}}});
  }
}

}  // namespace velt::bench
