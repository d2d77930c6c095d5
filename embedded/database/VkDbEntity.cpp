#include "host/database/VkDbEntity.h"

#include "embedded/database/EnhancedBlocks.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "embedded/database/ObjectClass.h"
#include "embedded/database/VkDbImpObject.h"

namespace {

using velt::database::ObjectRef;
using velt::database::TableEntry;

// Nothing when the drawing was closed while the object was open.
std::optional<ObjectRef> inDrawing(const VkDbImpObject* part) {
  if (part == nullptr || part->drawing == nullptr) return std::nullopt;
  return ObjectRef{part->drawing, part->record};
}

VkDbObjectId idOf(const TableEntry* entry) {
  return entry != nullptr ? entry->id : VkDbObjectId::kNull;
}

}  // namespace

VkRxClass* VkDbEntity::desc() {
  static VkRxClass description(L"VkDbEntity", VkDbObject::desc());
  return &description;
}

VkRxClass* VkDbEntity::isA() const {
  return imp_ != nullptr ? VkDbObject::isA() : desc();
}

VkDbObjectId VkDbEntity::layerId() const {
  const auto entity = inDrawing(imp_);
  return entity ? idOf(velt::database::Entity(*entity).layer()) : VkDbObjectId::kNull;
}

VkRxClass* VkDbBlockReference::desc() {
  static VkRxClass description(L"VkDbBlockReference", VkDbEntity::desc());
  return &description;
}

VkRxClass* VkDbBlockReference::isA() const {
  return imp_ != nullptr ? VkDbObject::isA() : desc();
}

VkDbObjectId VkDbBlockReference::blockTableRecord() const {
  const auto insert = inDrawing(imp_);
  return insert ? idOf(velt::database::referredBlock(*insert->drawing, insert->record)) : VkDbObjectId::kNull;
}

VkRxClass* VkDbLayerTableRecord::desc() {
  static VkRxClass description(L"VkDbLayerTableRecord", VkDbObject::desc());
  return &description;
}

VkRxClass* VkDbLayerTableRecord::isA() const {
  return imp_ != nullptr ? VkDbObject::isA() : desc();
}

VkCmColor VkDbLayerTableRecord::color() const {
  const auto layer = inDrawing(imp_);
  return layer ? velt::database::Layer(*layer).color() : VkCmColor();
}

bool VkDbLayerTableRecord::isLocked() const {
  const auto layer = inDrawing(imp_);
  return layer && velt::database::Layer(*layer).isLocked();
}

VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference* reference) {
  const auto insert = reference != nullptr ? velt::database::resolve(reference->objectId()) : std::nullopt;
  return insert ? idOf(velt::database::originalBlock(*insert->drawing, insert->record)) : VkDbObjectId::kNull;
}

bool vkdbIsEnhancedBlockRef(const VkDbBlockReference* reference) {
  const auto insert = reference != nullptr ? velt::database::resolve(reference->objectId()) : std::nullopt;
  if (!insert) return false;
  if (velt::database::originalBlock(*insert->drawing, insert->record) != nullptr) return true;
  const TableEntry* const block = velt::database::referredBlock(*insert->drawing, insert->record);
  return block != nullptr && velt::database::isEnhancedDefinition(*insert->drawing, *block);
}
