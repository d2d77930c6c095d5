// By-layer colors, compared by the layers' colors.

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "holders/OpenObjectHolder.h"
#include "holders/StringHolder.h"
#include "host/automation/IVeltVkCmColor.h"
#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

constexpr DISPID layerDispId = 1281;

bool readLayerId(VkDbObjectId entityId, VkDbObjectId& layerId) {
  OpenObjectHolder<VkDbEntity> entity;
  // QUIRK(opening_status_unexamined): an entity counts as opened when there is a pointer; hosts tell by the status that
  // it is open elsewhere too.
  [[maybe_unused]] const Velt::ErrorStatus opened = vkdbOpenObject(*entity.put(), entityId, VkDb::kForRead);
  if (!entity) return false;
  layerId = entity->layerId();
  return true;
}

bool readLayerColor(VkDbObjectId layerId, VkCmColor& color) {
  OpenObjectHolder<VkDbLayerTableRecord> layer;
  [[maybe_unused]] const Velt::ErrorStatus opened =
      vkdbOpenObject<VkDbLayerTableRecord>(*layer.put(), layerId, VkDb::kForRead, false);
  if (!layer) return false;
  color = layer->color();
  return true;
}

bool isByLayer(const VARIANT& value) {
  VkCmColor color;
  return readColor(value, color) && color.isByLayer();
}

bool readEntityLayerColor(VkDbObjectId entityId, VkCmColor& color) {
  VkDbObjectId layerId;
  return readLayerId(entityId, layerId) && readLayerColor(layerId, color);
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

namespace velt::propdata {

bool readColor(const VARIANT& value, VkCmColor& color) {
  if (value.vt != VT_DISPATCH) return false;
  InterfaceHolder<IVeltVkCmColor> object;
  if (FAILED(query(value.pdispVal, IID_IVeltVkCmColor, object))) return false;

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
  return true;
}

bool differByLayerColors(const PROPINFO& first, VkDbObjectId other) {
  if (!isByLayer(first.value)) return false;
  VkCmColor colorOfFirst;
  VkCmColor colorOfOther;
  return readEntityLayerColor(first.objectId, colorOfFirst) && readEntityLayerColor(other, colorOfOther)
         && colorOfFirst != colorOfOther;
}

}  // namespace velt::propdata

HRESULT VariantToColorHelper(VARIANT* value, VkCmColor& color) {
  return guarded(E_FAIL, [&] { return readColor(*value, color) ? S_OK : E_FAIL; });
}

bool getPropEntityLayerColor(VkCmColor& color, PROPINFO& prop) {
  return guarded(false, [&] { return readEntityLayerColor(prop.objectId, color); });
}

bool IsDifferentByLayerColors(PROPINFO& first, PROPINFO& other) {
  return guarded(false, [&] { return differByLayerColors(first, other.objectId); });
}

bool IsDifferentByLayerColors(VARIANT& value, TqVector<PROPINFO>& listA, TqVector<PROPINFO>& listB) {
  return guarded(false, [&] {
    if (!isByLayer(value)) return false;
    const VkCmColor colorA = layerColorOf(listA);
    const VkCmColor colorB = layerColorOf(listB);
    return colorA != colorB;
  });
}
