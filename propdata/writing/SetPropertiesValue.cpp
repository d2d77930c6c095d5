// Writing a committed value to every selected entity.

#include <new>

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/InterfaceHolder.h"
#include "holders/OpenObjectHolder.h"
#include "holders/StringHolder.h"
#include "host/com/ComRuntime.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::failWith;
using velt::errors::guarded;
namespace message = velt::errors::message;

namespace {

constexpr int stopped = 0;
constexpr int processed = 1;

enum class Layer { cannotBeAsked, locked, unlocked };

Layer layerOf(VkDbObjectId entityId) {
  VkDbObjectId layerId;
  {
    OpenObjectHolder<VkDbEntity> entity;
    if (!handedOver(vkdbOpenObject(*entity.put(), entityId, VkDb::kForRead), entity) || !entity)
      return Layer::cannotBeAsked;
    layerId = entity->layerId();
  }
  if (layerId.isNull()) return Layer::cannotBeAsked;
  OpenObjectHolder<VkDbLayerTableRecord> layer;
  const Velt::ErrorStatus opened =
      vkdbOpenObject<VkDbLayerTableRecord>(*layer.put(), layerId, VkDb::kForRead, false);
  if (!handedOver(opened, layer) || !layer) return Layer::cannotBeAsked;
  return layer->isLocked() ? Layer::locked : Layer::unlocked;
}

struct Write {
  const CStdStr<wchar_t>& name;
  BSTR nameToResolve;
  VARIANT& value;
  bool isElement;
  DWORD elementCookie;
};

bool putWhole(VeltPropData& entry, DISPID dispId, const Write& write) {
  DISPID namedArgument = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&write.value, &namedArgument, 1, 1};
  VARIANT result{};
  VariantInit(&result);
  // QUIRK(result_slot_tag): the slot goes in tagged with the new value's type and is never read or cleared.
  result.vt = write.value.vt;
  // QUIRK(two_locales): names are looked up under the system's locale, values put under the user's.
  // QUIRK(failed_put_leaves_error_text): the object alone knows why it refused; palettes have a text there already.
  return SUCCEEDED(entry.pDispatch->Invoke(dispId, GUID_NULL, GetUserDefaultLCID(), DISPATCH_PROPERTYPUT,
                                           &parameters, &result, nullptr, nullptr));
}

bool putElement(VeltPropData& entry, DISPID dispId, const Write& write, CStdStr<wchar_t>& errorText) {
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (FAILED(query(entry.pUnknown, IID_IOPMPropertyExpander, expander))) {
    return failWith(errorText, message::noExpander);
  }
  if (FAILED(expander->SetElementValue(dispId, write.elementCookie, write.value))) {
    // QUIRK(message_1014_with_and_without_name): above as it stands, here with the name; palettes tell the two apart.
    return failWith(errorText, message::noExpander, write.name);
  }
  return true;
}

bool put(VeltPropData& entry, const Write& write, CStdStr<wchar_t>& errorText) {
  if (entry.pDispatch == nullptr) {
    return failWith(errorText, message::noDispatch);
  }
  LPOLESTR name = write.nameToResolve;
  DISPID dispId = 0;
  const HRESULT resolved =
      entry.pDispatch->GetIDsOfNames(GUID_NULL, &name, 1, LOCALE_SYSTEM_DEFAULT, &dispId);
  // QUIRK(dispid_zero_refused): a member with the id 0 counts as not found and cannot be set this way.
  if (FAILED(resolved) || dispId == 0) {
    return failWith(errorText, message::nameNotFound, write.name);
  }
  return write.isElement ? putElement(entry, dispId, write, errorText) : putWhole(entry, dispId, write);
}

int writeToAll(const TqVector<VeltPropData*>& selection, const Write& write, CStdStr<wchar_t>& errorText,
               int& lockedCount, VkArray<VkDbObjectId>& touchedIds) {
  for (VeltPropData* const entry : selection) {
    if (entry == nullptr) continue;
    VkDbObjectId id;
    id.setFromOldId(entry->oldId);
    const Layer layer = layerOf(id);
    if (layer == Layer::cannotBeAsked) continue;
    if (layer == Layer::locked) {
      ++lockedCount;
      continue;
    }
    touchedIds.append(id);
    if (!put(*entry, write, errorText)) return stopped;
  }
  return processed;
}

}  // namespace

int SetPropertiesValue(TqVector<VeltPropData*>& selection, const PROPINFO& property, VARIANT& value,
                       bool elementWrite, CStdStr<wchar_t>& errorText, int& lockedCount,
                       VkArray<VkDbObjectId>& touchedIds, unsigned int elementCookie) {
  return guarded(stopped, errorText, [&] {
    if (property.dispId == dynamicPropertyDispId) {
      writeDynamic(property, value);
      return processed;
    }
    const CStdStr<wchar_t> name = property.name;
    const auto nameToResolve = StringHolder::owning(SysAllocString(name.c_str()));
    if (!nameToResolve) throw std::bad_alloc();
    const Write write{name, nameToResolve.get(), value, elementWrite, elementCookie};
    return writeToAll(selection, write, errorText, lockedCount, touchedIds);
  });
}
