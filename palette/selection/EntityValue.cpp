#include "palette/selection/EntityValue.h"

#include <fmt/format.h>

#include <iterator>

#include "holders/InterfaceHolder.h"
#include "holders/VariantHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComRuntime.h"
#include "host/com/IDispatch.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "palette/rows/RowText.h"
#include "palette/text/Utf8.h"

namespace velt::tool {

namespace {

using holders::InterfaceHolder;

template <class Interface>
InterfaceHolder<Interface> asked(IUnknown* object, REFIID iid) {
  InterfaceHolder<Interface> made;
  if (object != nullptr) object->QueryInterface(iid, reinterpret_cast<void**>(made.put()));
  return made;
}

void readDynamic(const DispatchDynPropSourceNode& node, VARIANT& value) {
  const auto entity = asked<IDispatch>(node.pDispatch, IID_IDispatch);
  if (const auto newer = asked<IDynamicProperty2>(node.pDynamicProperty, IID_IDynamicProperty2)) {
    newer->GetCurrentValueData(entity.get(), &value);
    return;
  }
  const auto older = asked<IDynamicProperty>(node.pDynamicProperty, IID_IDynamicProperty);
  const auto object = asked<IVeltBaseObject>(node.pDispatch, IID_IVeltBaseObject);
  if (!older || !object) return;
  VkDbObjectId id;
  object->GetObjectId(&id);
  older->GetCurrentValueData(id.asOldId(), &value);
}

void readStatic(const PROPINFO& row, VeltPropData& entry, VARIANT& value) {
  if (row.isElement) {
    const auto expander = asked<IOPMPropertyExpander>(entry.pUnknown, IID_IOPMPropertyExpander);
    if (expander) expander->GetElementValue(row.dispId, static_cast<DWORD>(row.elementCookie), &value);
    return;
  }
  DISPPARAMS none{};
  entry.pDispatch->Invoke(row.dispId, GUID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value,
                          nullptr, nullptr);
}

std::string textOf(HRESULT result) {
  switch (result) {
    case E_INVALIDARG:
      return "the value is not allowed";
    case DISP_E_TYPEMISMATCH:
      return "the value is of the wrong kind";
    case DISP_E_OVERFLOW:
      return "the value is out of range";
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME:
      return "the entity has no such property";
    case E_ACCESSDENIED:
      return "the entity may not be changed";
    default:
      return fmt::format("refused with result {:08X}", static_cast<std::uint32_t>(result));
  }
}

}  // namespace

std::wstring comparable(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
      return {};
    case VT_R8:
      return fromUtf8(fmt::format("{:.17g}", value.dblVal));
    default: {
      PROPINFO bare;
      bare.value = value;
      bare.valueType = value.vt;
      return fromUtf8(
          valueJson(bare, {}).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
    }
  }
}

std::wstring entityValue(const PROPINFO& row, VeltPropData& entry, std::size_t index) {
  holders::VariantHolder value;
  if (row.dispId != dynamicPropertyDispId) {
    readStatic(row, entry, value.get());
  } else if (index < row.dynSources.length()) {
    readDynamic(row.dynSources[static_cast<std::uint32_t>(index)], value.get());
  }
  return comparable(value.get());
}

std::string reasonOfRefusal(const PROPINFO& row, VeltPropData& entry, VARIANT& value) {
  if (row.isElement) {
    const auto expander = asked<IOPMPropertyExpander>(entry.pUnknown, IID_IOPMPropertyExpander);
    if (!expander) return "the entity has no elements to write";
    return textOf(expander->SetElementValue(row.dispId, static_cast<DWORD>(row.elementCookie), value));
  }
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&value, &named, 1, 1};
  EXCEPINFO exception{};
  const HRESULT result =
      entry.pDispatch->Invoke(row.dispId, GUID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                              nullptr, &exception, nullptr);
  const std::string told = exception.bstrDescription != nullptr ? oneLine(exception.bstrDescription) : "";
  for (const BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
    SysFreeString(text);
  return told.empty() ? textOf(result) : told;
}

}  // namespace velt::tool
