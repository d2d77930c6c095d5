// The choices of a dynamic row.

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/support/Lists.h"

using namespace velt::holders;
using namespace velt::propdata;

namespace {

struct Choices {
  TqVector<CStdStr<wchar_t>> names;
  TqVector<int> values;
  TqVector<double> reals;
};

void appendChoice(const VARIANT& data, int index, Choices& choices) {
  switch (data.vt) {
    case VT_BSTR:
      mustAppend(choices.values, index);
      break;
    case VT_R8:
      mustAppend(choices.values, index);
      mustAppend(choices.reals, data.dblVal);
      break;
    case VT_R4:
      mustAppend(choices.values, index);
      mustAppend(choices.reals, static_cast<double>(data.fltVal));
      break;
    case VT_I2:
      mustAppend(choices.values, static_cast<int>(data.iVal));
      break;
    default:
      mustAppend(choices.values, static_cast<int>(data.lVal));
      break;
  }
}

bool readChoice(IDynamicEnumProperty& enumeration, LONG index, Choices& choices) {
  StringHolder name;
  [[maybe_unused]] const HRESULT named = enumeration.GetPropValueName(index, name.put());
  mustAppend(choices.names, CStdStr<wchar_t>(name.get()));
  VARIANT data{};
  VariantInit(&data);
  if (FAILED(enumeration.GetPropValueData(index, &data))) return false;
  appendChoice(data, index, choices);
  // QUIRK(choices_clear_strings_only): objects that answer with anything else hand out what they own themselves.
  if (data.vt == VT_BSTR) VariantClear(&data);
  return true;
}

}  // namespace

namespace velt::propdata {

bool fillDynamicChoices(PROPINFO& property) {
  InterfaceHolder<IDynamicEnumProperty> enumeration;
  if (FAILED(query(property.pDynamicProperty, IID_IDynamicEnumProperty, enumeration))) return false;
  LONG count = 0;
  enumeration->GetNumPropertyValues(&count);
  // QUIRK(a_single_choice_in_the_list): one choice is enough here, although the description asks for more.
  if (count > 0) property.hasChoices = true;
  Choices choices;
  for (LONG index = 0; index < count; ++index) {
    if (!readChoice(*enumeration.get(), index, choices)) return false;
  }
  property.choiceNames = choices.names;
  property.choiceValues = choices.values;
  property.choiceReals = choices.reals;
  return true;
}

}  // namespace velt::propdata

int fillDynPropComboBox(PROPINFO& property) {
  return velt::errors::guarded(0, [&] { return fillDynamicChoices(property) ? 1 : 0; });
}
