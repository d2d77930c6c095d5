#include "embedded/database/EnhancedBlocks.h"

#include "dxf/Numbers.h"
#include "embedded/database/Dictionary.h"
#include "embedded/database/Lens.h"

namespace velt::database {
namespace {

const TableEntry* blockOfHandle(const Drawing& drawing, std::uint64_t handle) {
  const auto record = drawing.recordByHandle(handle);
  return record ? drawing.blocks().ofRecord(*record) : nullptr;
}

const TableEntry* accordingToBlock(const Drawing& drawing, const TableEntry& block) {
  const dxf::RecordView view = drawing.view(block.record);
  const auto data = view.extendedData("AcDbBlockRepBTag");
  if (!data) return nullptr;
  for (std::size_t index = data->first; index < data->first + data->count; ++index) {
    if (view.code(index) == 1005)
      return blockOfHandle(drawing, dxf::parseHandle(view.value(index)).value_or(0));
  }
  return nullptr;
}

const TableEntry* accordingToReference(const Drawing& drawing, std::uint32_t insert) {
  std::optional<std::uint32_t> here = extensionDictionary(drawing, insert);
  if (here) here = dictionaryEntry(drawing, *here, "AcDbBlockRepresentation");
  if (here) here = dictionaryEntry(drawing, *here, "AcDbRepData");
  if (!here || drawing.document().type(*here) != "ACDB_BLOCKREPRESENTATION_DATA") return nullptr;
  return blockOfHandle(drawing, Lens(drawing, *here).handle(340, "AcDbBlockRepresentationData"));
}

}  // namespace

const TableEntry* referredBlock(const Drawing& drawing, std::uint32_t insert) {
  const std::wstring name = Lens(drawing, insert).name(2, "AcDbBlockReference");
  return name.empty() ? nullptr : drawing.blocks().find(name);
}

const TableEntry* originalBlock(const Drawing& drawing, std::uint32_t insert) {
  const TableEntry* const referred = referredBlock(drawing, insert);
  if (referred == nullptr) return nullptr;
  const TableEntry* original = accordingToBlock(drawing, *referred);
  if (original == nullptr) original = accordingToReference(drawing, insert);
  return original != referred ? original : nullptr;
}

bool isEnhancedDefinition(const Drawing& drawing, const TableEntry& block) {
  const auto dictionary = extensionDictionary(drawing, block.record);
  return dictionary && dictionaryEntry(drawing, *dictionary, "ACAD_ENHANCEDBLOCK").has_value();
}

}  // namespace velt::database
