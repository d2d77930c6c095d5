#pragma once

// Opening objects by id. The pointer is null when the object cannot be opened; every object opened is closed.

#include "host/database/VkDbEntity.h"

namespace VkDb {
enum OpenMode : int { kForRead = 0, kForWrite = 1, kForNotify = 2 };
}

Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased = false);
Velt::ErrorStatus vkdbOpenVkDbEntity(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased = false);
Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode);

template <class T>
Velt::ErrorStatus vkdbOpenObject(T*& object, VkDbObjectId id, VkDb::OpenMode mode, bool openErased) {
  object = nullptr;
  VkDbObject* opened = nullptr;
  const Velt::ErrorStatus status = vkdbOpenVkDbObject(opened, id, mode, openErased);
  if (status != Velt::eOk || opened == nullptr) return status;
  if (!opened->isKindOf(T::desc())) {
    opened->close();
    return Velt::eNotThatKindOfClass;
  }
  object = static_cast<T*>(opened);
  return Velt::eOk;
}

// Holds an object open for the length of a scope.
template <class T>
class VkDbObjectPointer {
 public:
  VkDbObjectPointer(VkDbObjectId id, VkDb::OpenMode mode, bool openErased = false)
      : status_(vkdbOpenObject<T>(object_, id, mode, openErased)) {}
  ~VkDbObjectPointer() {
    if (object_ != nullptr) object_->close();
  }
  VkDbObjectPointer(const VkDbObjectPointer&) = delete;
  VkDbObjectPointer& operator=(const VkDbObjectPointer&) = delete;

  Velt::ErrorStatus openStatus() const { return status_; }
  T* object() const { return object_; }
  T* operator->() const { return object_; }

 private:
  T* object_ = nullptr;
  Velt::ErrorStatus status_;
};
