// The property sources of an entity's class and what they offer for the entity.

#include <algorithm>
#include <initializer_list>

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComError.h"
#include "host/database/OpenObject.h"
#include "host/palette/PerInstanceProperties.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/dynamic/Refusals.h"
#include "propdata/support/Lists.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

// Tags an array as what it holds by its own word. Plug-ins tag theirs as an array only, which VariantClear refuses to
// free, or as one of the other kind of interface.
void tagByContent(VARIANT& variant) {
  VARTYPE held = VT_EMPTY;
  if (SUCCEEDED(SafeArrayGetVartype(variant.parray, &held)))
    variant.vt = static_cast<VARTYPE>(VT_ARRAY | held);
}

// The list in a variant when it is one of such elements; sources answer with other things too.
SAFEARRAY* listIn(VARIANT& variant, std::initializer_list<VARTYPE> elementTypes) {
  const bool isArray = (variant.vt & VT_ARRAY) != 0 && (variant.vt & VT_BYREF) == 0;
  if (!isArray || variant.parray == nullptr) return nullptr;
  tagByContent(variant);
  const bool holdsThem = std::any_of(elementTypes.begin(), elementTypes.end(),
                                     [&](VARTYPE type) { return variant.vt == (VT_ARRAY | type); });
  return holdsThem && variant.parray->cDims == 1 ? variant.parray : nullptr;
}

SAFEARRAY* namesIn(VARIANT& variant) {
  return listIn(variant, {VT_BSTR});
}

// By either interface that each object has.
SAFEARRAY* objectsIn(VARIANT& variant) {
  return listIn(variant, {VT_UNKNOWN, VT_DISPATCH});
}

struct Bounds {
  LONG lower = 0;
  LONG upper = -1;
};

Bounds boundsOf(SAFEARRAY* array) {
  Bounds bounds;
  if (FAILED(SafeArrayGetLBound(array, 1, &bounds.lower))
      || FAILED(SafeArrayGetUBound(array, 1, &bounds.upper))) {
    return {};
  }
  return bounds;
}

// Calls the function with each index. The index is wider than the bounds: the last one may be the largest LONG.
template <class Function>
void forEachIndex(SAFEARRAY* array, Function function) {
  const Bounds bounds = boundsOf(array);
  for (LONGLONG index = bounds.lower; index <= bounds.upper; ++index)
    function(static_cast<LONG>(index));
}

template <class Extension>
Extension* extensionOfDatabase() {
  return Extension::cast(VkDbDatabase::desc()->queryX(Extension::desc()));
}

VkRxClass* classOf(VkDbObjectId id) {
  const VkDbObjectPointer<VkDbObject> object(id, VkDb::kForRead);
  return object.openStatus() == Velt::eOk && object.object() != nullptr ? object->isA() : nullptr;
}

bool readSourceNames(VkDbObjectId id, VariantHolder& names) {
  VkRxClass* const entityClass = classOf(id);
  if (entityClass == nullptr) return false;
  auto* const factory = extensionOfDatabase<OPMPerInstancePropertyExtensionFactory>();
  if (factory == nullptr) return false;
  OPMPerInstancePropertyExtension* const extension = factory->CreateOPMInstancePropertyExtension(entityClass);
  if (extension == nullptr) return false;
  return extension->GetObjectPropertySourceNames(id, names.put()) != 0 && names.get().vt != VT_EMPTY;
}

enum class Lookup { noRegistry, noSource, found };

Lookup putSource(SAFEARRAY* names, LONG index, COleSafeArray& out) {
  StringHolder name;
  if (!handedOver(SafeArrayGetElement(names, &index, name.put()), name)) return Lookup::noSource;
  // Looked up for each name: a source may register or remove others while it is asked.
  auto* const registry = extensionOfDatabase<OPMPerInstancePropertySources>();
  if (registry == nullptr) return Lookup::noRegistry;
  InterfaceHolder<IPropertySource> source;
  const bool has = registry->GetPropertySourceAt(name.get(), source.put()) != 0;
  name.reset();
  if (!has) return Lookup::noSource;
  try {
    // QUIRK(source_array_from_zero): the array starts at 0 whatever the names start at, so that the indexes
    // coincide only for names from 0; what falls outside is left out.
    out.PutElement(&index, source.get());
  } catch (const _com_error&) {}
  return Lookup::found;
}

// False when the array cannot be had.
bool createFor(const Bounds& bounds, COleSafeArray& out) {
  try {
    out.CreateOneDim(VT_UNKNOWN, static_cast<DWORD>(LONGLONG{bounds.upper} + 1 - bounds.lower));
    return true;
  } catch (const _com_error&) {
    return false;
  }
}

Described describeElement(IDispatch* entity, IUnknown* element, PROPINFO& row) {
  const Described newer = describeByNewer(entity, element, row);
  return newer == noNewerInterface ? describeByOlder(entity, element, row) : newer;
}

bool findSources(IDispatch* entity, COleSafeArray& out) {
  InterfaceHolder<IVeltBaseObject> baseObject;
  if (FAILED(query(entity, IID_IVeltBaseObject, baseObject))) return false;
  VkDbObjectId id;
  [[maybe_unused]] const HRESULT answered = baseObject->GetObjectId(&id);
  VariantHolder names;
  if (!readSourceNames(id, names)) return false;
  SAFEARRAY* const array = namesIn(names.get());
  if (array == nullptr) return false;
  if (!createFor(boundsOf(array), out)) return false;
  bool hasRegistry = true;
  bool foundAny = false;
  forEachIndex(array, [&](LONG index) {
    if (!hasRegistry) return;
    const Lookup lookup = orRefused(Lookup::noSource, [&] { return putSource(array, index, out); });
    hasRegistry = lookup != Lookup::noRegistry;
    foundAny = foundAny || lookup == Lookup::found;
  });
  // A registry that vanishes on the way takes no source back.
  return hasRegistry || foundAny;
}

// False when the source does not answer.
bool appendRowsOf(IPropertySource& source, IDispatch* entity, TqVector<PROPINFO>& out) {
  VariantHolder properties;
  if (!handedOver(source.GetProperties(entity, properties.put()), properties)) return false;
  if (properties.get().vt == VT_EMPTY) return false;
  // The source answered; an answer that is not an array holds no properties.
  SAFEARRAY* const array = objectsIn(properties.get());
  if (array == nullptr) return true;
  Appender<PROPINFO> rows(out);
  forEachIndex(array, [&](LONG index) {
    InterfaceHolder<IUnknown> element;
    if (!handedOver(SafeArrayGetElement(array, &index, element.put()), element) || !element) return;
    PROPINFO row;
    if (orRefused(skipped, [&] { return describeElement(entity, element.get(), row); }) != described) return;
    // The list may not have memory for the row, and then nobody else gives its value back.
    VariantHolder value;
    value.attach(row.value);
    rows.append(row);
    [[maybe_unused]] const VARIANT ownedByTheRow = value.detach();
  });
  return true;
}

// False when the element is not a source or does not answer.
bool appendRowsOf(IUnknown* element, IDispatch* entity, TqVector<PROPINFO>& out) {
  InterfaceHolder<IPropertySource> source;
  return SUCCEEDED(query(element, IID_IPropertySource, source)) && appendRowsOf(*source.get(), entity, out);
}

}  // namespace

namespace velt::propdata {

bool appendDynamicRows(IDispatch* entity, TqVector<PROPINFO>& out) {
  COleSafeArray sources;
  if (!orRefused(false, [&] { return findSources(entity, sources); })) return false;
  SAFEARRAY* const array = objectsIn(sources);
  if (array == nullptr) return false;
  forEachIndex(array, [&](LONG index) {
    InterfaceHolder<IUnknown> element;
    if (!handedOver(SafeArrayGetElement(array, &index, element.put()), element) || !element) return;
    [[maybe_unused]] const bool answered =
        orRefused(false, [&] { return appendRowsOf(element.get(), entity, out); });
  });
  return true;
}

}  // namespace velt::propdata

int GetDynProperteySources(IDispatch* entity, COleSafeArray& out) {
  return guarded(0, [&] { return findSources(entity, out) ? 1 : 0; });
}

int GetDynPropSourcePropInfo(IDispatch* entity, IPropertySource* source, TqVector<PROPINFO>& out) {
  return guarded(0, [&] { return appendRowsOf(*source, entity, out) ? 1 : 0; });
}

int GetDynPropSourcesPropInfo(IDispatch* entity, TqVector<PROPINFO>& out) {
  return guarded(0, [&] { return appendDynamicRows(entity, out) ? 1 : 0; });
}
