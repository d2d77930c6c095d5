#include "embedded/database/Dictionary.h"

#include "dxf/Numbers.h"

namespace velt::database {
namespace {

constexpr int nameCode = 3;

// The handle of an entry that the dictionary owns (360) or only refers to (350).
constexpr bool isReference(int code) {
  return code == 360 || code == 350;
}

std::optional<std::uint32_t> follow(const Drawing& drawing, std::string_view handle) {
  return drawing.recordByHandle(dxf::parseHandle(handle).value_or(0));
}

}  // namespace

std::optional<std::uint32_t> dictionaryEntry(const Drawing& drawing, std::uint32_t dictionary,
                                             std::string_view name) {
  const dxf::RecordView view = drawing.view(dictionary);
  if (!view.type().starts_with("DICTIONARY") && view.type() != "ACDBDICTIONARYWDFLT") return std::nullopt;
  std::optional<std::uint32_t> found;
  bool isNext = false;
  view.visit(dxf::anySubclass, [&](std::size_t index) {
    if (view.code(index) == nameCode) isNext = dxf::trimmed(view.value(index)) == name;
    if (!isNext || !isReference(view.code(index))) return true;
    found = follow(drawing, view.value(index));
    return false;
  });
  return found;
}

std::optional<std::uint32_t> extensionDictionary(const Drawing& drawing, std::uint32_t record) {
  const dxf::RecordView view = drawing.view(record);
  const auto group = view.applicationGroup("ACAD_XDICTIONARY");
  if (!group) return std::nullopt;
  for (std::size_t index = group->first; index < group->first + group->count; ++index) {
    if (view.code(index) == 360) return follow(drawing, view.value(index));
  }
  return std::nullopt;
}

}  // namespace velt::database
