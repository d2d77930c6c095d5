#pragma once

// Entities, layers and block references, as far as others than the host may ask them.

#include "host/database/VkCmColor.h"
#include "host/database/VkDbObject.h"

class VkDbEntity : public VkDbObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  VkDbObjectId layerId() const;

 protected:
  using VkDbObject::VkDbObject;
  ~VkDbEntity() = default;
};

class VkDbBlockReference : public VkDbEntity {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  VkDbObjectId blockTableRecord() const;

 protected:
  using VkDbEntity::VkDbEntity;
  ~VkDbBlockReference() = default;
};

class VkDbLayerTableRecord : public VkDbObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  VkCmColor color() const;
  bool isLocked() const;

 protected:
  using VkDbObject::VkDbObject;
  ~VkDbLayerTableRecord() = default;
};

// The definition from which a dynamic block made the (often anonymous) block of this reference; null when the
// reference is not of a dynamic block or refers to the definition itself.
VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference* reference);
bool vkdbIsEnhancedBlockRef(const VkDbBlockReference* reference);
