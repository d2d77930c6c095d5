#include "tests/palette/Stage.h"

namespace velt::palette {
namespace {

class LockedLayers : public Stage {
 protected:
  LockedLayers() { add(); }
  ~LockedLayers() override {
    for (const auto& [id, object] : host.database)
      EXPECT_EQ(object->opened, 0) << object->name();
  }
  VkDbObjectId id() { return entity(0).data.objectId(); }
};

TEST_F(LockedLayers, TheLayerTells) {
  EXPECT_FALSE(isOnLockedLayer(id()));
  entity(0).data.layer = lockedLayer.objectId();
  EXPECT_TRUE(isOnLockedLayer(id()));
}

TEST_F(LockedLayers, WhatCannotBeOpenedIsOnNone) {
  EXPECT_FALSE(isOnLockedLayer(VkDbObjectId()));
  EXPECT_FALSE(isOnLockedLayer(VkDbObjectId().setFromOldId(999)));
  entity(0).data.layer = VkDbObjectId();
  EXPECT_FALSE(isOnLockedLayer(id()));
  entity(0).data.layer = VkDbObjectId().setFromOldId(999);
  EXPECT_FALSE(isOnLockedLayer(id()));
}

}  // namespace
}  // namespace velt::palette
