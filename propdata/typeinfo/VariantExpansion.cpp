// Splitting a property into its elements.

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "holders/VariantHolder.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "propdata/VeltPropData.h"
#include "propdata/support/Lists.h"
#include "propdata/typeinfo/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::failWith;
using velt::errors::guardedFromShortage;
namespace message = velt::errors::message;

namespace {

// QUIRK(polyline_width_cookies): the widths at the polyline's first vertex keep their place in the display
// order instead of being sorted by cookie.
bool sortsByCookie(const GUID& clsid, DWORD cookie) {
  return !(clsid == CLSID_VeltLWPolyline && (cookie == 2 || cookie == 3));
}

void appendGroupHeader(IOPMPropertyExpander& expander, PROPINFO& info, TqVector<PROPINFO>& out) {
  info.customType = PropertyKind::vertex;
  // QUIRK(grouping_results_unexamined): like that of the grouping, this result is not looked at: expanders without
  // groups refuse both calls.
  [[maybe_unused]] const HRESULT counted = expander.GetGroupCount(info.dispId, &info.groupCount);
  VariantInit(&info.value);
  info.value.vt = VT_I4;
  info.value.lVal = 0;
  info.valueType = VT_I4;
  info.hasValue = true;
  mustAppend(out, info);
}

bool appendElement(IOPMPropertyExpander& expander, DWORD cookie, const CStdStr<wchar_t>& label,
                   PROPINFO& info, TqVector<PROPINFO>& out) {
  VariantHolder value;
  if (!handedOver(expander.GetElementValue(info.dispId, cookie, value.put()), value)) return false;
  info.valueType = value.get().vt;
  info.isElement = true;
  info.elementCookie = cookie;
  info.displayName = label;
  info.value = value.get();
  info.hasValue = true;
  info.sortByCookie = sortsByCookie(info.clsid, cookie);
  mustAppend(out, info);
  [[maybe_unused]] const VARIANT ownedByTheRows = value.detach();
  return true;
}

}  // namespace

namespace velt::propdata {

bool listElements(PROPINFO& info, TqVector<PROPINFO>& out, CStdStr<wchar_t>& errorText) {
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (FAILED(query(info.pDispatch, IID_IOPMPropertyExpander, expander))) {
    return failWith(errorText, message::noExpander);
  }
  CountedStringsHolder elements;
  if (!handedOver(expander->GetElementStrings(info.dispId, elements.putStrings(), elements.putCookies()),
                  elements)) {
    return failWith(errorText, message::elementStrings);
  }
  SHORT grouping = 0;
  [[maybe_unused]] const HRESULT grouped = expander->GetElementGrouping(info.dispId, &grouping);
  info.elementGrouping = grouping;
  reserve(out, out.length() + 1 + elements.cookieCount());
  if (grouping != 0) appendGroupHeader(*expander.get(), info, out);
  info.customType = PropertyKind::none;
  info.groupCount = 0;
  for (ULONG i = 0; i < elements.cookieCount(); ++i) {
    if (!appendElement(*expander.get(), elements.cookie(i), CStdStr<wchar_t>(elements.string(i)), info,
                       out)) {
      return failWith(errorText, message::elementValue);
    }
  }
  expander.reset();
  return true;
}

}  // namespace velt::propdata

bool GetVariantTypeInfo(PROPINFO& info, TqVector<PROPINFO>& out, CStdStr<wchar_t>& errorText) {
  // What the host throws is for the caller, who knows whether it has a message to leave.
  return guardedFromShortage(false, [&] { return listElements(info, out, errorText); });
}
