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

// Makes a record of each element, after the template.
class RecordReceiver final : public ElementReceiver {
 public:
  RecordReceiver(PROPINFO& info, TqVector<PROPINFO>& out) : info_(info), out_(out) {}

  void expect(std::uint32_t count) override { reserve(out_, out_.length() + count); }

  void addHeader() override {
    info_.customType = PropertyKind::vertex;
    VariantInit(&info_.value);
    info_.value.vt = VT_I4;
    info_.value.lVal = 0;
    info_.valueType = VT_I4;
    info_.hasValue = true;
    mustAppend(out_, info_);
  }

  void beginElements() override {
    info_.customType = PropertyKind::none;
    info_.groupCount = 0;
  }

  void addElement(const OLECHAR* label, DWORD cookie, const VARIANT& value) override {
    info_.displayName = CStdStr<wchar_t>(label);
    info_.valueType = value.vt;
    info_.isElement = true;
    info_.elementCookie = cookie;
    info_.value = value;
    info_.hasValue = true;
    info_.sortByCookie = sortsByCookie(info_.clsid, cookie);
    mustAppend(out_, info_);
  }

 private:
  PROPINFO& info_;
  TqVector<PROPINFO>& out_;
};

bool readElement(IOPMPropertyExpander& expander, DISPID dispId, DWORD cookie, const OLECHAR* label,
                 ElementReceiver& receiver) {
  VariantHolder value;
  if (!handedOver(expander.GetElementValue(dispId, cookie, value.put()), value)) return false;
  receiver.addElement(label, cookie, value.get());
  [[maybe_unused]] const VARIANT ownedByTheReceiver = value.detach();
  return true;
}

}  // namespace

namespace velt::propdata {

bool expandProperty(IDispatch* object, DISPID dispId, SHORT& grouping, long& groupCount,
                    ElementReceiver& receiver, CStdStr<wchar_t>& errorText) {
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (FAILED(query(object, IID_IOPMPropertyExpander, expander)))
    return failWith(errorText, message::noExpander);
  CountedStringsHolder elements;
  if (!handedOver(expander->GetElementStrings(dispId, elements.putStrings(), elements.putCookies()),
                  elements)) {
    return failWith(errorText, message::elementStrings);
  }
  // QUIRK(grouping_results_unexamined): neither this result nor that of the count is looked at: expanders without
  // groups refuse both calls.
  SHORT answer = 0;
  [[maybe_unused]] const HRESULT grouped = expander->GetElementGrouping(dispId, &answer);
  grouping = answer;
  receiver.expect((grouping != 0 ? 1 : 0) + elements.cookieCount());
  if (grouping != 0) {
    [[maybe_unused]] const HRESULT counted = expander->GetGroupCount(dispId, &groupCount);
    receiver.addHeader();
  }
  receiver.beginElements();
  for (ULONG i = 0; i < elements.cookieCount(); ++i) {
    if (!readElement(*expander.get(), dispId, elements.cookie(i), elements.string(i), receiver))
      return failWith(errorText, message::elementValue);
  }
  expander.reset();
  return true;
}

bool listElements(PROPINFO& info, TqVector<PROPINFO>& out, CStdStr<wchar_t>& errorText) {
  RecordReceiver receiver(info, out);
  return expandProperty(info.pDispatch, info.dispId, info.elementGrouping, info.groupCount, receiver,
                        errorText);
}

}  // namespace velt::propdata

bool GetVariantTypeInfo(PROPINFO& info, TqVector<PROPINFO>& out, CStdStr<wchar_t>& errorText) {
  // What the host throws is for the caller, who knows whether it has a message to leave.
  return guardedFromShortage(false, [&] { return listElements(info, out, errorText); });
}
