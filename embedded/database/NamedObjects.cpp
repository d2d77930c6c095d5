#include "embedded/database/NamedObjects.h"

#include "dxf/Numbers.h"
#include "embedded/database/Lens.h"

namespace velt::database {

std::wstring entryName(const Drawing& drawing, const Table& table, std::uint64_t handle) {
  const std::optional<std::uint32_t> record = drawing.recordByHandle(handle);
  const TableEntry* const entry = record ? table.ofRecord(*record) : nullptr;
  return entry == nullptr ? std::wstring() : entry->name;
}

std::wstring objectName(const Drawing& drawing, std::uint64_t handle) {
  constexpr int nameCode = 3;
  const std::optional<std::uint32_t> object = drawing.recordByHandle(handle);
  if (!object) return {};
  const std::uint64_t owner = Lens(drawing, *object).handle(330, "");
  const std::optional<std::uint32_t> dictionary = drawing.recordByHandle(owner);
  if (!dictionary) return {};
  const dxf::RecordView view = drawing.view(*dictionary);
  std::string_view name;
  std::wstring found;
  view.visit(dxf::anySubclass, [&](std::size_t index) {
    const int code = view.code(index);
    if (code == nameCode) name = view.value(index);
    if ((code != 350 && code != 360) || dxf::parseHandle(view.value(index)) != handle) return true;
    found = drawing.decode(dxf::trimmed(name));
    return false;
  });
  return found;
}

}  // namespace velt::database
