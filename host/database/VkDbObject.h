#pragma once

// Objects of the drawing database. They belong to the database: opening lends one out, close() gives it back.

#include "host/com/Guid.h"
#include "host/database/VkDbObjectId.h"
#include "host/database/VkRxObject.h"
#include "host/platform/ErrorStatus.h"

struct VkDbImpObject;  // the host's own part of an object

class VkDbObject : public VkRxObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // Writes the automation class id; any status other than eOk leaves it untouched.
  virtual Velt::ErrorStatus getClassID(CLSID* clsid) const;
  VkDbObjectId objectId() const;
  Velt::ErrorStatus close();

 protected:
  explicit VkDbObject(VkDbImpObject* imp) : imp_(imp) {}
  ~VkDbObject() = default;
  VkDbImpObject* imp_;
};

class VkDbDatabase : public VkRxObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

 protected:
  ~VkDbDatabase() = default;
};
