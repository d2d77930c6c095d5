// Reading a property's current value, and settling its weight and kind on the way.

#include "errors/Guard.h"
#include "holders/VariantHolder.h"
#include "propdata/VeltPropData.h"
#include "propdata/typeinfo/Cores.h"
#include "propdata/typing/Cores.h"
#include "propdata/typing/ValueFetching.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

void readWeight(PROPINFO& prop, const VARIANT& property) {
  askForWeight(prop.pDispatch, property, prop.weight);
  setWeight(prop.clsid, prop);
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
