#include "palette/selection/EntityValue.h"

#include <utility>

#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComRuntime.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"

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
  const HRESULT found = query(entry.pUnknown, IID_IOPMPropertyExpander, expander);
  return FAILED(found) ? found : expander->GetElementValue(row.dispId, row.elementCookie, value);
}

HRESULT readWhole(const PROPINFO& row, const VeltPropData& entry, VARIANT* value) {
  if (entry.pDispatch == nullptr) return E_NOINTERFACE;
  DISPPARAMS none{};
  return entry.pDispatch->Invoke(row.dispId, GUID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                 value, nullptr, nullptr);
}

HRESULT read(const PROPINFO& row, const VeltPropData& entry, std::size_t index, VARIANT* value) {
  if (row.dispId == dynamicPropertyDispId) {
    const TqVector<DispatchDynPropSourceNode>& nodes = row.dynSources;
    return index < nodes.length() ? readDynamic(nodes[static_cast<std::uint32_t>(index)], value) : S_FALSE;
  }
  return row.isElement ? readElement(row, entry, value) : readWhole(row, entry, value);
}

}  // namespace

Value entityValue(const PROPINFO& row, const VeltPropData& entry, std::size_t index) {
  holders::VariantHolder value;
  if (!holders::handedOver(read(row, entry, index, value.put()), value)) return Value();
  return Value(std::move(value));
}

}  // namespace velt::palette
