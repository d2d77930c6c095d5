#include "palette/selection/EntityValue.h"

#include <string>
#include <utility>

#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComRuntime.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "palette/support/HostTexts.h"

namespace velt::palette {

namespace {

using holders::InterfaceHolder;
using holders::query;

HRESULT readDynamic(const DispatchDynPropSourceNode& node, VARIANT* value) {
  InterfaceHolder<IDynamicProperty2> newer;
  if (SUCCEEDED(query(node.pDynamicProperty, IID_IDynamicProperty2, newer))) {
    InterfaceHolder<IDispatch> entity;
    const HRESULT found = query(node.pDispatch, IID_IDispatch, entity);
    return FAILED(found) ? found : newer->GetCurrentValueData(entity.get(), value);
  }
  InterfaceHolder<IDynamicProperty> older;
  InterfaceHolder<IVeltBaseObject> object;
  if (const HRESULT found = query(node.pDynamicProperty, IID_IDynamicProperty, older); FAILED(found))
    return found;
  if (const HRESULT found = query(node.pDispatch, IID_IVeltBaseObject, object); FAILED(found)) return found;
  VkDbObjectId id;
  object->GetObjectId(&id);
  return older->GetCurrentValueData(id.asOldId(), value);
}

HRESULT readElement(const PROPINFO& row, const VeltPropData& entry, VARIANT* value) {
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (const HRESULT found = query(entry.pUnknown, IID_IOPMPropertyExpander, expander); FAILED(found))
    return found;
  DISPID dispId = 0;
  const HRESULT found = findProperty(row, entry, dispId);
  return FAILED(found) ? found : expander->GetElementValue(dispId, row.elementCookie, value);
}

HRESULT readWhole(const PROPINFO& row, const VeltPropData& entry, VARIANT* value, EXCEPINFO* exception) {
  if (entry.pDispatch == nullptr) return E_NOINTERFACE;
  DISPID dispId = 0;
  if (const HRESULT found = findProperty(row, entry, dispId); FAILED(found)) return found;
  DISPPARAMS none{};
  return entry.pDispatch->Invoke(dispId, GUID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value,
                                 exception, nullptr);
}

HRESULT read(const PROPINFO& row, const VeltPropData& entry, std::size_t index, VARIANT* value) {
  if (row.dispId == dynamicPropertyDispId) {
    const TqVector<DispatchDynPropSourceNode>& nodes = row.dynSources;
    return index < nodes.length() ? readDynamic(nodes[static_cast<std::uint32_t>(index)], value) : S_FALSE;
  }
  if (entry.pDispatch == nullptr) return E_NOINTERFACE;
  return row.isElement ? readElement(row, entry, value) : readWhole(row, entry, value, nullptr);
}

}  // namespace

HRESULT findProperty(const PROPINFO& row, const VeltPropData& entry, DISPID& dispId) {
  dispId = row.dispId;
  if (entry.clsid == row.clsid) return S_OK;
  // GetIDsOfNames takes no pointer to const, although it only reads.
  LPOLESTR name = const_cast<LPOLESTR>(row.name.c_str());
  if (entry.pDispatch == nullptr) return E_NOINTERFACE;
  const HRESULT found = entry.pDispatch->GetIDsOfNames(GUID_NULL, &name, 1, LOCALE_SYSTEM_DEFAULT, &dispId);
  // The layer, which writes by the name as well, takes 0 for no member.
  return SUCCEEDED(found) && dispId == 0 ? DISP_E_UNKNOWNNAME : found;
}

Value entityValue(const PROPINFO& row, const VeltPropData& entry, std::size_t index) {
  holders::VariantHolder value;
  if (!holders::handedOver(read(row, entry, index, value.put()), value)) return Value();
  return Value(std::move(value));
}

std::string whyNoValue(const PROPINFO& row, const VeltPropData& entry) {
  if (row.dispId == dynamicPropertyDispId || row.isElement) return {};
  holders::VariantHolder value;
  HostTexts told;
  return FAILED(readWhole(row, entry, value.put(), told.put())) ? told.description() : std::string();
}

}  // namespace velt::palette
