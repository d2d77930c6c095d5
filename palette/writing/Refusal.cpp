#include "palette/writing/Refusal.h"

#include "holders/InterfaceHolder.h"
#include "host/com/ComRuntime.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "palette/Palette.h"
#include "palette/selection/EntityValue.h"
#include "palette/support/HostCalls.h"
#include "palette/support/HostTexts.h"

namespace velt::palette {

namespace {

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
      return "the entity cannot be changed";
    default:
      return "the value was refused, and nothing says why";
  }
}

std::string reasonOfElement(const PROPINFO& row, const VeltPropData& entry, VARIANT value) {
  if (entry.pDispatch == nullptr) return textOf(DISP_E_MEMBERNOTFOUND);
  holders::InterfaceHolder<IOPMPropertyExpander> expander;
  if (FAILED(holders::query(entry.pUnknown, IID_IOPMPropertyExpander, expander)))
    return "the entity has no coordinates or other parts to write";
  DISPID dispId = 0;
  if (const HRESULT found = findProperty(row, entry, dispId); FAILED(found)) return textOf(found);
  return textOf(expander->SetElementValue(dispId, row.elementCookie, value));
}

std::string reasonOfWhole(const PROPINFO& row, const VeltPropData& entry, VARIANT value) {
  if (entry.pDispatch == nullptr) return textOf(DISP_E_MEMBERNOTFOUND);
  DISPID dispId = 0;
  if (const HRESULT found = findProperty(row, entry, dispId); FAILED(found)) return textOf(found);
  DISPID named = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&value, &named, 1, 1};
  HostTexts told;
  const HRESULT result = entry.pDispatch->Invoke(dispId, GUID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                                                 &parameters, nullptr, told.put(), nullptr);
  const std::string description = told.description();
  return description.empty() ? textOf(result) : description;
}

}  // namespace

std::string reasonOfRefusal(const PROPINFO& row, const VeltPropData& entry, const VARIANT& value) {
  try {
    return orError([&] { return (row.isElement ? reasonOfElement : reasonOfWhole)(row, entry, value); });
  } catch (const Cancelled&) {
    throw;
  } catch (const Error& error) {
    return error.what();
  }
}

}  // namespace velt::palette
