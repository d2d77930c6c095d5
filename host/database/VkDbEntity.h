#pragma once

// Entities, block references and layers of the drawing database. The layer asks them which layer an entity is on, what
// color that layer has and whether it is locked, and which block a reference shows.
//
// They are opened and closed (see OpenObject.h), and may be asked only in between.

#include "host/database/VkCmColor.h"
#include "host/database/VkDbObject.h"

class VkDbEntity : public VkDbObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // Null when the entity's layer does not exist.
  VkDbObjectId layerId() const;

 protected:
  using VkDbObject::VkDbObject;
  ~VkDbEntity() = default;
};

class VkDbBlockReference : public VkDbEntity {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // The block that is shown; null when it does not exist.
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
  // Nothing on a locked layer is written.
  bool isLocked() const;

 protected:
  using VkDbObject::VkDbObject;
  ~VkDbLayerTableRecord() = default;
};

// A dynamic block draws each of its shapes as a block of its own, mostly an anonymous one. The dynamic block's
// definition from which the block of this reference was made; null when the reference is not of a dynamic block, or
// shows the definition itself.
VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference* reference);
// Whether the reference is of a dynamic block at all.
bool vkdbIsEnhancedBlockRef(const VkDbBlockReference* reference);
