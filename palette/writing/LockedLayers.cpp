#include "holders/OpenObjectHolder.h"
#include "host/database/OpenObject.h"
#include "palette/Palette.h"
#include "palette/support/HostCalls.h"

namespace velt::palette {

namespace {

using holders::handedOver;
using holders::OpenObjectHolder;

// Null when the layer cannot be found out.
VkDbObjectId layerOf(VkDbObjectId id) {
  OpenObjectHolder<VkDbEntity> entity;
  const Velt::ErrorStatus opened = vkdbOpenObject(*entity.put(), id, VkDb::kForRead);
  return handedOver(opened, entity) && entity ? entity->layerId() : VkDbObjectId();
}

bool isLocked(VkDbObjectId id) {
  OpenObjectHolder<VkDbLayerTableRecord> layer;
  const Velt::ErrorStatus opened =
      vkdbOpenObject<VkDbLayerTableRecord>(*layer.put(), id, VkDb::kForRead, false);
  return handedOver(opened, layer) && layer && layer->isLocked();
}

}  // namespace

bool isOnLockedLayer(VkDbObjectId entity) {
  return orError([&] {
    const VkDbObjectId layer = layerOf(entity);
    return !layer.isNull() && isLocked(layer);
  });
}

}  // namespace velt::palette
