// host/database: run-time classes, opening by id, layers. The layer asks an entity for its automation class and for its
// layer, and a layer whether it is locked.

#include "Parts.h"
#include "host/database/OpenObject.h"
#include "host/palette/PerInstanceProperties.h"

// --- run-time classes --------------------------------------------------------------------------------------------------

VkRxClass::VkRxClass(const wchar_t* name, VkRxClass* parent) : name_(name), parent_(parent) {}
VkRxClass* VkRxClass::myParent() const { return parent_; }

bool VkRxObject::isKindOf(const VkRxClass* wanted) const {
  const VkRxClass* here = isA();
  while (here != nullptr && here != wanted) here = here->myParent();
  return here != nullptr;
}

#define RUNTIME_CLASS(name, parent)                  \
  VkRxClass* name::isA() const { return desc(); }    \
  VkRxClass* name::desc() {                          \
    static VkRxClass description(L## #name, parent); \
    return &description;                             \
  }
RUNTIME_CLASS(VkRxObject, nullptr)
RUNTIME_CLASS(VkRxClass, VkRxObject::desc())
RUNTIME_CLASS(VkDbDatabase, VkRxObject::desc())
RUNTIME_CLASS(VkDbObject, VkRxObject::desc())
RUNTIME_CLASS(VkDbEntity, VkDbObject::desc())
RUNTIME_CLASS(VkDbBlockReference, VkDbEntity::desc())
RUNTIME_CLASS(VkDbLayerTableRecord, VkDbObject::desc())
RUNTIME_CLASS(OPMPerInstancePropertyExtensionFactory, VkRxObject::desc())
RUNTIME_CLASS(OPMPerInstancePropertySources, VkRxObject::desc())

// Rows of plug-ins begin with extensions that are registered on VkDbDatabase. Here nobody registers one.
using Factory = OPMPerInstancePropertyExtensionFactory;
using Sources = OPMPerInstancePropertySources;
VkRxObject* VkRxClass::queryX(const VkRxClass*) const { return nullptr; }
Factory* Factory::cast(const VkRxObject*) { return nullptr; }
Sources* Sources::cast(const VkRxObject*) { return nullptr; }

// --- objects -----------------------------------------------------------------------------------------------------------

// What a database object is to this program: one of the two is set.
struct VkDbImpObject {
  const Part* part;
  const Layer* layer;
};

namespace {

struct PartEntity : VkDbEntity {
  PartEntity(const Part& part) : VkDbEntity(&own), own{&part, nullptr} {}
  VkDbImpObject own;
};

struct LayerRecord : VkDbLayerTableRecord {
  LayerRecord(const Layer& layer) : VkDbLayerTableRecord(&own), own{nullptr, &layer} {}
  VkDbImpObject own;
};

// They live as long as the program, so opening lends them and closing has nothing to do. Ids come from outside, and some
// are out of date or made up: those name nothing.
VkDbObject* objectOfId(VkDbObjectId id) {
  static PartEntity entities[] = {parts[0], parts[1], parts[2]};
  static LayerRecord records[] = {layers[0], layers[1]};
  const auto number = static_cast<std::size_t>(id.asOldId());
  if (number - firstPartId < parts.size()) return &entities[number - firstPartId];
  return number - firstLayerId < layers.size() ? &records[number - firstLayerId] : nullptr;
}

}  // namespace

// The three ways of opening. The pointer is null unless the status is eOk.
Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode, bool) {
  object = objectOfId(id);
  return object != nullptr ? Velt::eOk : Velt::eInvalidObjectId;
}
Velt::ErrorStatus vkdbOpenVkDbEntity(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode, bool erased) {
  return vkdbOpenObject<VkDbEntity>(entity, id, mode, erased);
}
Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode) {
  return vkdbOpenObject<VkDbEntity>(entity, id, mode, false);
}
Velt::ErrorStatus VkDbObject::close() { return Velt::eOk; }

Velt::ErrorStatus VkDbObject::getClassID(CLSID* clsid) const {
  if (imp_->part == nullptr) return Velt::eNoAutomationClass;
  *clsid = imp_->part->kind == Kind::pipe ? CLSID_Pipe : CLSID_Valve;
  return Velt::eOk;
}
VkDbObjectId VkDbEntity::layerId() const {
  return VkDbObjectId().setFromOldId(static_cast<long>(firstLayerId + imp_->part->layer));
}
bool VkDbLayerTableRecord::isLocked() const { return imp_->layer->isLocked; }
VkCmColor VkDbLayerTableRecord::color() const { return {}; }

// No part is a block reference.
VkDbObjectId VkDbBlockReference::blockTableRecord() const { return VkDbObjectId::kNull; }
VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference*) { return VkDbObjectId::kNull; }
bool vkdbIsEnhancedBlockRef(const VkDbBlockReference*) { return false; }

// Parts have no colors, and layers the color that nobody has set. So there are no names of colors to keep.
VkCmColor::VkCmColor() : value_(0), colorName_(nullptr), bookName_(nullptr) {}
VkCmColor::~VkCmColor() = default;
VkCmColor& VkCmColor::operator=(const VkCmColor& other) = default;
bool VkCmColor::operator!=(const VkCmColor& other) const { return value_ != other.value_; }
bool VkCmColor::isByLayer() const { return value_ >> 24 == 0xC0; }
void VkCmColor::setColor(std::uint32_t value) { value_ = value; }
void VkCmColor::setNames(const wchar_t*, const wchar_t*) {}
