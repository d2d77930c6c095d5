// Choice lists of enumerated properties, and the release of the values that the query read.

#include "errors/Guard.h"
#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "holders/VariantHolder.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/dynamic/Refusals.h"
#include "propdata/support/Lists.h"
#include "propdata/writing/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

// Color, layer, line weight and line type have lists of the host's own.
bool hasListOfTheHost(std::int32_t customType) {
  return customType == PropertyKind::color || customType == PropertyKind::layer
         || customType == PropertyKind::lineweight || customType == PropertyKind::linetype;
}

// False when the list ends before this choice.
bool readValue(IPerPropertyBrowsing& browsing, const PROPINFO& prop, ULONG index, TqVector<int>& values) {
  VariantHolder data;
  // QUIRK(predefined_value_by_index): the place of the string is asked for, not its cookie; objects number their
  // choices from 0.
  const HRESULT result = browsing.GetPredefinedValue(prop.dispId, index, data.put());
  if (!handedOver(result, data)) {
    if (result != E_NOTIMPL) return false;
    const bool isKnown = prop.choiceValues.length() > index;
    mustAppend(values, isKnown ? prop.choiceValues[index] : static_cast<int>(index));
    return true;
  }
  const VARIANT value = data.get();
  // QUIRK(choices_clear_strings_only): objects that answer with anything else hand out what they own themselves.
  if (value.vt != VT_BSTR) static_cast<void>(data.detach());
  switch (value.vt) {
    case VT_BSTR:
      mustAppend(values, static_cast<int>(index));
      break;
    case VT_I2:
      mustAppend(values, static_cast<int>(value.iVal));
      break;
    default:
      // QUIRK(real_choices_cut_to_integers): also of a real value the low 32 bits are taken; only dynamic
      // properties have real choices.
      mustAppend(values, static_cast<int>(value.lVal));
      break;
  }
  return true;
}

void fillFromBrowsing(PROPINFO& prop) {
  InterfaceHolder<IPerPropertyBrowsing> browsing;
  if (FAILED(query(prop.pDispatch, IID_IPerPropertyBrowsing, browsing))) {
    prop.hasChoices = false;
    return;
  }
  CountedStringsHolder strings;
  if (!handedOver(browsing->GetPredefinedStrings(prop.dispId, strings.putStrings(), strings.putCookies()),
                  strings)) {
    prop.hasChoices = false;
    return;
  }
  prop.hasChoices = true;
  TqVector<CStdStr<wchar_t>> names;
  TqVector<int> values;
  reserve(names, strings.stringCount());
  reserve(values, strings.stringCount());
  for (ULONG i = 0; i < strings.stringCount(); ++i) {
    if (!readValue(*browsing.get(), std::as_const(prop), i, values)) break;
    mustAppend(names, CStdStr<wchar_t>(strings.string(i)));
  }
  prop.choiceNames = names;
  prop.choiceValues = values;
}

}  // namespace

namespace velt::propdata {

void fillChoices(TqVector<PROPINFO>& properties) {
  for (PROPINFO& prop : writable(properties)) {
    if (!prop.hasChoices) continue;
    if (prop.dispId == dynamicPropertyDispId) {
      if (orRefused(false, [&] { return fillDynamicChoices(prop); })) continue;
      // QUIRK(choices_kept_after_failed_enumeration): a row of any other type keeps hasChoices and its lists.
      if (!hasListOfTheHost(prop.customType)) continue;
    }
    fillFromBrowsing(prop);
  }
}

void clearValues(TqVector<TqVector<PROPINFO>>& lists) {
  for (TqVector<PROPINFO>& list : writable(lists)) {
    // A list that stays shared holds rows of the cache, which were not read into and have nothing to give back.
    if (!list.copyBeforeWrite()) continue;
    for (PROPINFO& prop : writable(list))
      VariantClear(&prop.value);
  }
}

}  // namespace velt::propdata

void fillPropComboBox(TqVector<PROPINFO>& properties) {
  guarded([&] { fillChoices(properties); });
}

void freePropInfoVariantValue(TqVector<TqVector<PROPINFO>>& lists) {
  guarded([&] { clearValues(lists); });
}
