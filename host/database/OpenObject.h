#pragma once

// Opening objects of the drawing database by id.
//
// Ownership: an object that was opened is lent, and every one is given back with close().
// Failure: the pointer is null when the object cannot be opened, and the status is not eOk and says why. Both must
// agree: the layer goes by the pointer in some places and by the status in others.

#include "host/database/VkDbEntity.h"

namespace VkDb {
// What an object is opened for. The layer opens for read alone.
enum OpenMode : int {
  kForRead = 0,   // to ask it; many may at a time
  kForWrite = 1,  // to change it; one at a time
  kForNotify = 2  // to tell it of something
};
}  // namespace VkDb

// Called by: GetPropertiesInfo for property sources and layers, SetPropertiesValue for layers,
// IsDifferentByLayerColors. Failure: no dynamic rows; the entity is not written, and nobody is told; the colors count
// as the same. Opens any object. An erased one is eWasErased, unless openErased is set.
Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased = false);
// Called by: InitializePropData. Failure: the entry keeps the class id that it holds.
// Opens an entity; any other object is eNotThatKindOfClass.
Velt::ErrorStatus vkdbOpenVkDbEntity(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased = false);
// The same, but never an erased one. Called by: GetPropertiesInfo and IsDifferentByLayerColors, and by
// SetPropertiesValue, which leaves out an entity that does not open, and tells nobody.
Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode);

// Opens an object of class T, such as VkDbLayerTableRecord; any other object is eNotThatKindOfClass.
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

// Holds an object of class T open for the length of a scope. object() is null unless openStatus() is eOk.
template <class T>
class VkDbObjectPointer {
 public:
  // Opens it.
  VkDbObjectPointer(VkDbObjectId id, VkDb::OpenMode mode, bool openErased = false)
      : status_(vkdbOpenObject<T>(object_, id, mode, openErased)) {}
  // Gives it back.
  ~VkDbObjectPointer() {
    if (object_ != nullptr) object_->close();
  }
  VkDbObjectPointer(const VkDbObjectPointer&) = delete;
  VkDbObjectPointer& operator=(const VkDbObjectPointer&) = delete;

  // What the opening answered, and the object.
  Velt::ErrorStatus openStatus() const { return status_; }
  T* object() const { return object_; }
  T* operator->() const { return object_; }

 private:
  T* object_ = nullptr;
  Velt::ErrorStatus status_;
};
