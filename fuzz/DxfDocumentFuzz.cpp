// Any bytes are either refused with an Error, or they form a document that gives them back unchanged and of which
// everything can be read; and when a document is edited and written, it reads back as edited.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "dxf/Document.h"
#include "dxf/Numbers.h"

namespace {

using namespace velt::dxf;

void require(bool condition) {
  if (!condition) std::abort();
}

std::optional<Document> parsed(const std::string& bytes) {
  try {
    return Document::parse(bytes, "fuzz.dxf");
  } catch (const Error&) {
    return std::nullopt;
  }
}

void requireRange(PairRange range, std::size_t size) {
  require(range.first <= size && range.count <= size - range.first);
}

void lookThrough(const RecordView& view, const Document& document) {
  const std::size_t size = view.size();
  require(size != 0);
  require(view.handle().size() <= 0xFFFFFFFF);
  // Each look-up begins at the start of the record, so without a bound a record of a hundred thousand pairs would take
  // quadratic time.
  constexpr std::size_t enough = 64;
  for (std::size_t i = 0; i < size; ++i) {
    const std::wstring text = document.decode(view.value(i));
    require(text.size() <= view.value(i).size());
    (void)document.encode(text);
    if (const auto real = parseReal(view.value(i))) require(parseReal(formatReal(*real)) == real);
    if (i >= enough) continue;
    const int code = view.code(i);
    const auto found = view.find(code, anySubclass);
    require(!found || (*found < size && view.code(*found) == code));
    (void)view.point(code, "AcDbEntity");
    (void)view.integer(code, "");
    if (code == 1001) require(view.extendedData(trimmed(view.value(i))).has_value());
    if (code == 102) (void)view.applicationGroup(trimmed(view.value(i)).substr(0, 8));
    if (code == 100) {
      const auto place = view.insertionPoint(trimmed(view.value(i)), {});
      require(!place || (*place > 0 && *place <= size));
    }
  }
  if (const auto range = view.embeddedObject()) requireRange(*range, size);
  if (const auto range = view.applicationGroup("ACAD_REACTORS")) requireRange(*range, size);
  if (const auto range = view.extendedData("PE_URL")) requireRange(*range, size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::optional<Document> document = parsed(bytes);
  if (!document) return 0;
  require(document->bytes() == bytes);

  for (std::uint32_t index = 0; index < document->recordCount(); ++index) {
    const Record& record = document->records()[index];
    require(record.container == none || record.container < index);
    require(record.sequenceHead == none || record.sequenceHead < index);
    requireRange(document->membersOf(index), document->recordCount());
    lookThrough(document->view(index), *document);
  }
  for (const std::string_view name : document->headerNames())
    require(document->headerVariable(name).has_value());

  // Every record gets a pair at its end, which must not change the other records.
  const auto count = static_cast<std::uint32_t>(document->recordCount());
  for (std::uint32_t index = 0; index < count; ++index) {
    if (document->type(index) == "EOF") continue;
    document->insert(index, document->view(index).size(), 999, "inserted");
  }
  const std::string edited = document->bytes();
  const std::optional<Document> again = parsed(edited);
  require(again.has_value() && again->recordCount() == count);
  for (std::uint32_t index = 0; index < count; ++index) {
    require(again->type(index) == document->type(index));
    require(again->view(index).size() == document->view(index).size());
    document->revert(index);
  }
  require(document->bytes() == bytes);
  return 0;
}
