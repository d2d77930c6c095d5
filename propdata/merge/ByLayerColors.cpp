// By-layer colors, compared by the layers' colors.

#include "holders/InterfaceHolder.h"
#include "holders/OpenObjectHolder.h"
#include "holders/StringHolder.h"
#include "host/automation/IVeltVkCmColor.h"
#include "propdata/VeltPropData.h"

using namespace velt::holders;

namespace {

constexpr DISPID layerDispId = 1281;

bool readLayerId(VkDbObjectId entityId, VkDbObjectId& layerId) {
  OpenObjectHolder<VkDbEntity> entity;
  vkdbOpenObject(*entity.put(), entityId, VkDb::kForRead);
  if (!entity) return false;
  layerId = entity->layerId();
  return true;
}

bool readLayerColor(VkDbObjectId layerId, VkCmColor& color) {
  OpenObjectHolder<VkDbLayerTableRecord> layer;
  vkdbOpenObject<VkDbLayerTableRecord>(*layer.put(), layerId, VkDb::kForRead, false);
  if (!layer) return false;
  color = layer->color();
  return true;
}

bool isByLayer(VARIANT& value) {
  VkCmColor color;
  return SUCCEEDED(VariantToColorHelper(&value, color)) && color.isByLayer();
}

// The layer color of the list's first entity that can be opened; the default color when there is none.
VkCmColor layerColorOf(const TqVector<PROPINFO>& list) {
  VkCmColor color;
  for (const PROPINFO& row : list) {
    VkDbObjectId layerId;
    if (row.dispId != layerDispId || !readLayerId(row.objectId, layerId)) continue;
    // QUIRK(default_color_for_a_missing_layer): a layer that cannot be opened leaves the default color, which is then
    // compared like any other; palettes show such a color as varying.
    [[maybe_unused]] const bool opened = readLayerColor(layerId, color);
    break;
  }
  return color;
}

}  // namespace

HRESULT VariantToColorHelper(VARIANT* value, VkCmColor& color) {
  if (value->vt != VT_DISPATCH) return E_FAIL;
  InterfaceHolder<IVeltVkCmColor> object;
  if (FAILED(query(value->pdispVal, IID_IVeltVkCmColor, object))) return E_FAIL;

  LONG entityColor = 0;
  StringHolder colorName;
  StringHolder bookName;
  // QUIRK(color_results_unexamined): whatever the methods left is the color's; color objects refuse a name that the
  // color does not have.
  [[maybe_unused]] const HRESULT gotColor = object->get_EntityColor(&entityColor);
  [[maybe_unused]] const HRESULT gotName = object->get_ColorName(colorName.put());
  [[maybe_unused]] const HRESULT gotBook = object->get_BookName(bookName.put());
  color.setColor(static_cast<std::uint32_t>(entityColor));
  color.setNames(colorName.get(), bookName.get());
  return S_OK;
}

bool getPropEntityLayerColor(VkCmColor& color, PROPINFO& prop) {
  VkDbObjectId layerId;
  return readLayerId(prop.objectId, layerId) && readLayerColor(layerId, color);
}

bool IsDifferentByLayerColors(PROPINFO& first, PROPINFO& other) {
  if (!isByLayer(first.value)) return false;
  VkCmColor colorOfFirst;
  VkCmColor colorOfOther;
  if (!getPropEntityLayerColor(colorOfFirst, first)) return false;
  if (!getPropEntityLayerColor(colorOfOther, other)) return false;
  return colorOfFirst != colorOfOther;
}

bool IsDifferentByLayerColors(VARIANT& value, TqVector<PROPINFO>& listA, TqVector<PROPINFO>& listB) {
  if (!isByLayer(value)) return false;
  const VkCmColor colorA = layerColorOf(listA);
  const VkCmColor colorB = layerColorOf(listB);
  return colorA != colorB;
}
