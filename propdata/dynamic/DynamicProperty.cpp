// Describing one dynamic property as a row, in both generations of the interface.

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComRuntime.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/dynamic/EntityId.h"
#include "propdata/typeinfo/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

template <class Getter>
CStdStr<wchar_t> textFrom(Getter getter) {
  StringHolder text;
  [[maybe_unused]] const HRESULT got = getter(text.put());
  return CStdStr<wchar_t>(text.get());
}

template <class Property>
int customTypeOf(Property& property) {
  StringHolder typeName;
  if (handedOver(property.GetCurrentValueName(typeName.put()), typeName))
    return kindOfTypeName(typeName.get());
  VARTYPE overwrittenByTheValue = VT_EMPTY;
  property.GetCurrentValueType(&overwrittenByTheValue);
  return PropertyKind::unknownType;
}

void readChoices(IUnknown* property, PROPINFO& out) {
  InterfaceHolder<IDynamicEnumProperty> enumeration;
  if (FAILED(query(property, IID_IDynamicEnumProperty, enumeration))) return;
  LONG count = 0;
  enumeration->GetNumPropertyValues(&count);
  // QUIRK(more_than_one_choice): a single choice counts only when the choice list is built.
  if (count > 1) out.hasChoices = true;
}

void readCategory(IUnknown* property, PROPINFO& out) {
  InterfaceHolder<ICategorizeProperties> categories;
  if (FAILED(query(property, IID_ICategorizeProperties, categories))) return;
  PROPCAT category = out.categoryId;
  [[maybe_unused]] const HRESULT mapped = categories->MapPropertyToCategory(out.dispId, &category);
  out.categoryId = category;
  out.categoryName =
      textFrom([&](BSTR* name) { return categories->GetCategoryName(category, LOCALE_USER_DEFAULT, name); });
}

// Entity is what the generation names the entity by: its automation object or its old id.
template <class Property, class Entity>
Described describe(IDispatch* dispatch, IUnknown* object, InterfaceHolder<Property>& property, Entity entity,
                   PROPINFO& out) {
  BOOL enabled = 0;
  // QUIRK(enabled_exactly_one): any other byte leaves the property out.
  if (FAILED(property->IsPropertyEnabled(entity, &enabled)) || enabled != 1) return skipped;

  out.clsid = GUID_NULL;  // no class of the host's: no weights, no special kinds
  out.pDispatch = dispatch;
  // QUIRK(dynamic_getters_unexamined): from here on what a getter left counts and not its result, so that plug-ins
  // implement only what they have to tell.
  GUID guid{};
  property->GetGUID(&guid);
  out.displayName = textFrom([&](BSTR* name) { return property->GetDisplayName(name); });
  out.name = out.displayName;
  out.description = textFrom([&](BSTR* description) { return property->GetDescription(description); });
  out.customType = customTypeOf(*property.get());
  out.dispId = dynamicPropertyDispId;
  // QUIRK(borrowed_dynamic_property): no reference stays; the source keeps its property objects alive.
  out.pDynamicProperty = property.get();

  VariantHolder value;
  [[maybe_unused]] const HRESULT gotValue = property->GetCurrentValueData(entity, value.put());

  BOOL readOnly = 0;
  [[maybe_unused]] const HRESULT gotReadOnly = property->IsPropertyReadOnly(&readOnly);
  out.isEditable = readOnly == 0;
  property.reset();

  readChoices(object, out);
  readCategory(object, out);
  // After all that may throw: the value of a row that does not come about is given back here.
  out.value = value.detach();
  out.valueType = out.value.vt;
  return described;
}

}  // namespace

namespace velt::propdata {

Described describeByNewer(IDispatch* entity, IUnknown* property, PROPINFO& out) {
  InterfaceHolder<IDynamicProperty2> newer;
  const HRESULT queried = query(property, IID_IDynamicProperty2, newer);
  // QUIRK(only_no_interface_falls_back): any other failure leaves the property out.
  if (queried == E_NOINTERFACE) return noNewerInterface;
  if (FAILED(queried)) return skipped;
  return describe(entity, property, newer, entity, out);
}

Described describeByOlder(IDispatch* entity, IUnknown* property, PROPINFO& out) {
  InterfaceHolder<IDynamicProperty> older;
  if (FAILED(query(property, IID_IDynamicProperty, older))) return skipped;
  const VkDbObjectId id = entityIdOf(entity);
  if (id.isNull()) return skipped;
  return describe(entity, property, older, id.asOldId(), out);
}

}  // namespace velt::propdata

int GetDynamicPropertyPropInfo(IDispatch* entity, IUnknown* property, PROPINFO& out) {
  return guarded(skipped, [&] { return describeByNewer(entity, property, out); });
}

int GetDynamicPropertyPropInfoDefault(IDispatch* entity, IUnknown* property, PROPINFO& out) {
  return guarded(skipped, [&] { return describeByOlder(entity, property, out); });
}
