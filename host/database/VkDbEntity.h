#pragma once

// Entities, block references and layers of the drawing database. The layer asks them which layer an entity is on, what
// color that layer has and whether it is locked, and which block a reference shows.
//
// They are opened and closed (see OpenObject.h), and may be asked only in between.

#include "host/database/VkCmColor.h"
#include "host/database/VkDbObject.h"

// Anything that can be selected.
class VkDbEntity : public VkDbObject {
 public:
  // The run-time class.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // Called by: SetPropertiesValue for each entity, GetPropertiesInfo and IsDifferentByLayerColors for colors.
  // Null when the entity's layer does not exist: then nothing is written to it.
  VkDbObjectId layerId() const;

 protected:
  // The host alone makes them.
  using VkDbObject::VkDbObject;
  ~VkDbEntity() = default;
};

// Shows a block. Several references to one dynamic block have dynamic rows in common.
class VkDbBlockReference : public VkDbEntity {
 public:
  // The run-time class.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // The block that is shown; null when it does not exist.
  VkDbObjectId blockTableRecord() const;

 protected:
  // The host alone makes them.
  using VkDbEntity::VkDbEntity;
  ~VkDbBlockReference() = default;
};

// A layer.
class VkDbLayerTableRecord : public VkDbObject {
 public:
  // The run-time class.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // What entities whose color is by layer show. Called by: GetPropertiesInfo and IsDifferentByLayerColors.
  VkCmColor color() const;
  // Called by: SetPropertiesValue. Nothing on a locked layer is written.
  bool isLocked() const;

 protected:
  // The host alone makes them.
  using VkDbObject::VkDbObject;
  ~VkDbLayerTableRecord() = default;
};

// Called by: GetPropertiesInfo with several entities, as the next.
// A dynamic block draws each of its shapes as a block of its own, mostly an anonymous one. The dynamic block's
// definition from which the block of this reference was made; null when the reference is not of a dynamic block, or
// shows the definition itself.
VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference* reference);
// Whether the reference is of a dynamic block at all.
bool vkdbIsEnhancedBlockRef(const VkDbBlockReference* reference);
