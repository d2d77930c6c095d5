// Splitting a property into its elements.

#include "errors/Guard.h"
#include "propdata/VeltPropData.h"
#include "propdata/support/Lists.h"
#include "propdata/typeinfo/Cores.h"
#include "propdata/typeinfo/ElementExpansion.h"

using namespace velt::propdata;
using velt::errors::guardedFromShortage;

namespace {

// QUIRK(polyline_width_cookies): the widths at the polyline's first vertex keep their place in the display
// order instead of being sorted by cookie.
bool sortsByCookie(const GUID& clsid, DWORD cookie) {
  return !(clsid == CLSID_VeltLWPolyline && (cookie == 2 || cookie == 3));
}

// Makes a record of each element, after the template.
class RecordReceiver {
 public:
  RecordReceiver(PROPINFO& info, TqVector<PROPINFO>& out) : info_(info), out_(out) {}

  void expect(std::uint32_t count) { reserve(out_, out_.length() + count); }

  void addHeader() {
    info_.customType = PropertyKind::vertex;
    VariantInit(&info_.value);
    info_.value.vt = VT_I4;
    info_.value.lVal = 0;
    info_.valueType = VT_I4;
    info_.hasValue = true;
    mustAppend(out_, info_);
  }

  void beginElements() {
    info_.customType = PropertyKind::none;
    info_.groupCount = 0;
  }

  void addElement(const OLECHAR* label, DWORD cookie, const VARIANT& value) {
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

}  // namespace

namespace velt::propdata {

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
