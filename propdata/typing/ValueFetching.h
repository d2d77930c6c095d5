#pragma once

// The host calls by which one value is read. Inline, because a query makes them for every value of every entity.

#include <cstdint>

#include "holders/InterfaceHolder.h"
#include "holders/WholeVariant.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/com/ComRuntime.h"
#include "propdata/VeltPropData.h"
#include "propdata/typing/Cores.h"

namespace velt::propdata {

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

inline VARIANT asVariant(DISPID dispId) {
  return holders::wholeVariant(VT_I4, static_cast<std::uint32_t>(dispId));
}

// The weight is left alone when the object tells none.
inline void askForWeight(IDispatch* object, const VARIANT& property, std::int32_t& weight) {
  holders::InterfaceHolder<IVkPiPropertyDisplay> display;
  if (FAILED(holders::query(object, IID_IVkPiPropertyDisplay, display))) return;
  long answer = 0;
  if (SUCCEEDED(display->GetPropertyWeight(property, &answer))) weight = static_cast<std::int32_t>(answer);
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

inline bool isKindOpen(const PROPINFO& prop) {
  return prop.customType == PropertyKind::none || prop.customType == PropertyKind::unknownType;
}

// Reads the property of an object of which nothing but the value is kept. The row is only looked at. `makeValue` makes the
// place to fetch into, with what it is to hold before, once the weight was asked for.
template <class MakeValue>
VARIANT& fetchValueOnly(const PROPINFO& prop, IDispatch* object, MakeValue&& makeValue) {
  VARIANT& value = makeValue();
  fetchValue(object, prop.dispId, prop.valueType, value);
  if (isKindOpen(prop)) askForKind(prop.dispId, value);
  return value;
}

inline void askForWeightOnly(const PROPINFO& prop, IDispatch* object) {
  std::int32_t unusedWeight = 0;
  askForWeight(object, asVariant(prop.dispId), unusedWeight);
}

}  // namespace velt::propdata
