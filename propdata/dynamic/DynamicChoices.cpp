// The choices of a dynamic row.

#include <vector>

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/support/Lists.h"

using namespace velt::holders;
using namespace velt::propdata;

namespace {

struct Choices {
  std::vector<CStdStr<wchar_t>> names;
  std::vector<int> values;
  std::vector<double> reals;
};

void appendChoice(const VARIANT& data, int index, Choices& choices) {
  switch (data.vt) {
    case VT_BSTR:
      choices.values.push_back(index);
      break;
    case VT_R8:
      choices.values.push_back(index);
      choices.reals.push_back(data.dblVal);
      break;
    case VT_R4:
      choices.values.push_back(index);
      choices.reals.push_back(static_cast<double>(data.fltVal));
      break;
    case VT_I2:
      choices.values.push_back(static_cast<int>(data.iVal));
      break;
    default:
      choices.values.push_back(static_cast<int>(data.lVal));
      break;
  }
}

bool readChoice(IDynamicEnumProperty& enumeration, LONG index, Choices& choices) {
  StringHolder name;
  // QUIRK(dynamic_choices_unexamined): like the count, the label is what stands in the output; enumerations refuse a label
  // that a value does not have.
  [[maybe_unused]] const HRESULT named = enumeration.GetPropValueName(index, name.put());
  choices.names.emplace_back(name.get());
  VariantHolder data;
  if (!handedOver(enumeration.GetPropValueData(index, data.put()), data)) return false;
  const VARIANT value = data.get();
  // QUIRK(choices_clear_strings_only): objects that answer with anything else hand out what they own themselves.
  if (value.vt != VT_BSTR) static_cast<void>(data.detach());
  appendChoice(value, index, choices);
  return true;
}

}  // namespace

namespace velt::propdata {

bool fillDynamicChoices(PROPINFO& property) {
  InterfaceHolder<IDynamicEnumProperty> enumeration;
  if (FAILED(query(property.pDynamicProperty, IID_IDynamicEnumProperty, enumeration))) return false;
  LONG count = 0;
  [[maybe_unused]] const HRESULT counted = enumeration->GetNumPropertyValues(&count);
  // QUIRK(a_single_choice_in_the_list): one choice is enough here, although the description asks for more.
  if (count > 0) property.hasChoices = true;
  Choices choices;
  for (LONG index = 0; index < count; ++index) {
    if (!readChoice(*enumeration.get(), index, choices)) return false;
  }
  const TqVector<CStdStr<wchar_t>> names = appendedOneByOne(std::move(choices.names));
  const TqVector<int> values = appendedOneByOne(std::move(choices.values));
  const TqVector<double> reals = appendedOneByOne(std::move(choices.reals));
  property.choiceNames = names;
  property.choiceValues = values;
  property.choiceReals = reals;
  return true;
}

}  // namespace velt::propdata

int fillDynPropComboBox(PROPINFO& property) {
  return velt::errors::guarded(0, [&] { return fillDynamicChoices(property) ? 1 : 0; });
}
