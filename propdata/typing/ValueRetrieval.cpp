// Reading a property's current value, and settling its weight and kind on the way.

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "holders/VariantHolder.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/com/ComRuntime.h"
#include "propdata/VeltPropData.h"
#include "propdata/typeinfo/Cores.h"
#include "propdata/typing/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

// Frees the three strings at the end of its scope, whether the call succeeded or not.
struct ExceptionRecord : EXCEPINFO {
  ExceptionRecord() : EXCEPINFO{} {}
  ExceptionRecord(const ExceptionRecord&) = delete;
  ExceptionRecord& operator=(const ExceptionRecord&) = delete;
  ~ExceptionRecord() {
    SysFreeString(bstrSource);
    SysFreeString(bstrDescription);
    SysFreeString(bstrHelpFile);
  }
};

VARIANT dispIdAsVariant(const PROPINFO& prop) {
  VARIANT property;
  VariantInit(&property);
  property.vt = VT_I4;
  property.lVal = prop.dispId;
  return property;
}

void readWeight(PROPINFO& prop, const VARIANT& property) {
  InterfaceHolder<IVkPiPropertyDisplay> display;
  if (SUCCEEDED(query(prop.pDispatch, IID_IVkPiPropertyDisplay, display))) {
    long weight = 0;
    if (SUCCEEDED(display->GetPropertyWeight(property, &weight)))
      prop.weight = static_cast<std::int32_t>(weight);
  }
  display.reset();
  setWeight(prop.clsid, prop);
}

void fetchValue(PROPINFO& prop) {
  // QUIRK(type_tag_before_get): the tag is the declared type before the call and stays it when the call fails;
  // what the value held before is overwritten, not freed.
  prop.value.vt = prop.valueType;
  if (prop.pDispatch == nullptr) return;
  DISPPARAMS noParameters{};
  ExceptionRecord exception;
  UINT argumentError = 0;
  [[maybe_unused]] const HRESULT got =
      prop.pDispatch->Invoke(prop.dispId, GUID_NULL, GetUserDefaultLangID(), DISPATCH_PROPERTYGET,
                             &noParameters, &prop.value, &exception, &argumentError);
}

void settleKind(PROPINFO& prop) {
  if (prop.customType == PropertyKind::none || prop.customType == PropertyKind::unknownType) {
    prop.customType = kindOf(prop.clsid, prop);
  }
}

// QUIRK(expanded_from_a_copy): the row itself keeps its kind and gets no value, whatever the expansion writes into its
// template; callers that read a row depend on its being the same property afterwards.
bool expand(const PROPINFO& prop, TqVector<PROPINFO>& elements) {
  PROPINFO element(prop);
  CStdStr<wchar_t> discardedMessage;
  return listElements(element, elements, discardedMessage);
}

void refresh(PROPINFO& prop) {
  {
    VariantHolder property;
    property.attach(dispIdAsVariant(prop));
    readWeight(prop, property.get());
  }
  fetchValue(prop);
  settleKind(prop);
}

}  // namespace

namespace velt::propdata {

void readValue(PROPINFO& prop, TqVector<PROPINFO>& elements) {
  readWeight(prop, dispIdAsVariant(prop));
  if (prop.valueType != VT_VARIANT || !expand(prop, elements)) {
    fetchValue(prop);
    settleKind(prop);
  }
  // QUIRK(has_value_in_every_case): also after a failed get, so that nothing is fetched twice.
  prop.hasValue = true;
}

}  // namespace velt::propdata

void getPropValue(PROPINFO& prop, TqVector<PROPINFO>& elements) {
  guarded([&] { readValue(prop, elements); });
  prop.hasValue = true;
}

bool GetPropInfoValue(PROPINFO& prop) {
  guarded([&] { refresh(prop); });
  prop.hasValue = true;
  return true;
}
