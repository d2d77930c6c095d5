#pragma once

// Objects of the drawing database. They belong to the database: opening lends one out, close() gives it back (see
// OpenObject.h).

#include "host/com/Guid.h"
#include "host/database/VkDbObjectId.h"
#include "host/database/VkRxObject.h"
#include "host/platform/ErrorStatus.h"

// The host's own part of an object.
struct VkDbImpObject;

class VkDbObject : public VkRxObject {
 public:
  // The run-time class.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // Called by: InitializePropData.
  // Writes the id of the automation class that speaks for this object (see Ids.inc); any status but eOk leaves it
  // untouched, and the layer then takes the general class of entities or of objects.
  virtual Velt::ErrorStatus getClassID(CLSID* clsid) const;
  // By which it was opened. Not called by the layer.
  VkDbObjectId objectId() const;
  // Called by: every operation that opens one.
  // Gives the object back; the pointer must not be used any more.
  Velt::ErrorStatus close();

 protected:
  // The host alone makes objects, with a part of its own, and ends them.
  explicit VkDbObject(VkDbImpObject* imp) : imp_(imp) {}
  ~VkDbObject() = default;
  // Not looked at by the layer; may be null.
  VkDbImpObject* imp_;
};

// The drawing database as a class: the extensions that publish property sources are registered on it (see
// PerInstanceProperties.h).
class VkDbDatabase : public VkRxObject {
 public:
  // The run-time class.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

 protected:
  // The host alone ends it.
  ~VkDbDatabase() = default;
};
