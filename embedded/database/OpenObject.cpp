#include "host/database/OpenObject.h"

#include "embedded/database/ObjectTable.h"
#include "embedded/database/OpenAccount.h"

namespace {

using velt::database::ObjectTable;

// Any number may have an object open at once, also for writing: a drawing is edited on its one thread, and edits take
// effect at once.
Velt::ErrorStatus open(VkDbImpObject*& opened, VkDbObjectId id, VkDb::OpenMode mode, bool openErased,
                       bool entitiesOnly) {
  opened = nullptr;
  if (id.isNull()) return Velt::eNullObjectId;
  if (mode < VkDb::kForRead || mode > VkDb::kForNotify) return Velt::eInvalidInput;
  VkDbImpObject* const object = ObjectTable::ofProcess().find(id);
  if (object == nullptr) return Velt::eInvalidObjectId;
  if (object->isErased && !openErased) return Velt::eWasErased;
  if (entitiesOnly && !isEntityShape(object->objectClass->shape)) return Velt::eNotThatKindOfClass;
  ++object->opens;
  velt::database::openObjectsAccount().handOut();
  opened = object;
  return Velt::eOk;
}

}  // namespace

Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  VkDbImpObject* opened = nullptr;
  const Velt::ErrorStatus status = open(opened, id, mode, openErased, false);
  object = opened != nullptr ? ObjectTable::objectOf(*opened) : nullptr;
  return status;
}

Velt::ErrorStatus vkdbOpenVkDbEntity(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  VkDbImpObject* opened = nullptr;
  const Velt::ErrorStatus status = open(opened, id, mode, openErased, true);
  entity = opened != nullptr ? static_cast<VkDbEntity*>(ObjectTable::objectOf(*opened)) : nullptr;
  return status;
}

Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode) {
  return vkdbOpenVkDbEntity(entity, id, mode, false);
}
