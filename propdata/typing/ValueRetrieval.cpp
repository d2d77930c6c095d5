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

VARIANT asVariant(DISPID dispId) {
  VARIANT property;
  VariantInit(&property);
  property.vt = VT_I4;
  property.lVal = dispId;
  return property;
}

// The weight is left alone when the object tells none. Inline, like fetchValue(): a query does both for every value.
inline void askForWeight(IDispatch* object, const VARIANT& property, std::int32_t& weight) {
  InterfaceHolder<IVkPiPropertyDisplay> display;
  if (FAILED(query(object, IID_IVkPiPropertyDisplay, display))) return;
  long answer = 0;
  if (SUCCEEDED(display->GetPropertyWeight(property, &answer))) weight = static_cast<std::int32_t>(answer);
}

void readWeight(PROPINFO& prop, const VARIANT& property) {
  askForWeight(prop.pDispatch, property, prop.weight);
  setWeight(prop.clsid, prop);
}

inline void fetchValue(IDispatch* object, DISPID dispId, VARTYPE declaredType, VARIANT& value) {
  // QUIRK(type_tag_before_get): the tag is the declared type before the call and stays it when the call fails;
  // what the value held before is overwritten, not freed.
  value.vt = declaredType;
  if (object == nullptr) return;
  DISPPARAMS noParameters{};
  ExceptionRecord exception;
  UINT argumentError = 0;
  [[maybe_unused]] const HRESULT got =
      object->Invoke(dispId, GUID_NULL, GetUserDefaultLangID(), DISPATCH_PROPERTYGET, &noParameters, &value,
                     &exception, &argumentError);
}

bool isKindOpen(const PROPINFO& prop) {
  return prop.customType == PropertyKind::none || prop.customType == PropertyKind::unknownType;
}

void settleKind(PROPINFO& prop) {
  if (isKindOpen(prop)) prop.customType = kindOf(prop.clsid, prop);
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
    property.attach(asVariant(prop.dispId));
    readWeight(prop, property.get());
  }
  fetchValue(prop.pDispatch, prop.dispId, prop.valueType, prop.value);
  settleKind(prop);
}

}  // namespace

namespace velt::propdata {

void readValue(PROPINFO& prop, TqVector<PROPINFO>& elements) {
  readWeight(prop, asVariant(prop.dispId));
  if (prop.valueType != VT_VARIANT || !expand(prop, elements)) {
    fetchValue(prop.pDispatch, prop.dispId, prop.valueType, prop.value);
    settleKind(prop);
  }
  // QUIRK(has_value_in_every_case): also after a failed get, so that nothing is fetched twice.
  prop.hasValue = true;
}

void readValueOnly(const PROPINFO& prop, IDispatch* object, ValueReceiver& receiver) {
  std::int32_t unusedWeight = 0;
  askForWeight(object, asVariant(prop.dispId), unusedWeight);
  if (prop.valueType == VT_VARIANT) {
    SHORT unusedGrouping = 0;
    long unusedCount = 0;
    CStdStr<wchar_t> discardedMessage;
    if (expandProperty(object, prop.dispId, unusedGrouping, unusedCount, receiver, discardedMessage)) return;
  }
  VARIANT& value = receiver.value();
  fetchValue(object, prop.dispId, prop.valueType, value);
  if (isKindOpen(prop)) askForKind(prop.dispId, value);
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
