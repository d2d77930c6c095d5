#include "palette/explanation/EntityCause.h"

#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/TypeInfoBlockHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComError.h"
#include "host/com/ComRuntime.h"
#include "host/com/OleSafeArray.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "host/palette/IPropertySource.h"

namespace velt::palette {

namespace {

using Cause = Absence::Cause;
using holders::handedOver;
using holders::InterfaceHolder;
using holders::query;
using holders::StringHolder;

// The three methods of IUnknown and the four of IDispatch come first in every function table.
constexpr UINT firstOwnFunction = 7;
constexpr WORD hiddenFlags = FUNCFLAG_FHIDDEN | FUNCFLAG_FNONBROWSABLE;

bool isText(const StringHolder& text, std::string_view wanted) {
  return text && equalIgnoringCase(oneLine(text.get()), wanted);
}

// --- the class -------------------------------------------------------------------------------------------

// Looks for the name among all functions of the class, also those that make no rows.
class ClassSearch {
 public:
  ClassSearch(const VeltPropData& entry, std::string_view wanted) : entry_(entry), wanted_(wanted) {}

  Cause run() {
    InterfaceHolder<ITypeInfo> typeInfo;
    if (entry_.pDispatch == nullptr
        || !handedOver(entry_.pDispatch->GetTypeInfo(0, GetUserDefaultLangID(), typeInfo.put()), typeInfo)
        || !typeInfo) {
      return Cause::unknown;
    }
    if (FAILED(query(entry_.pUnknown, IID_IOPMPropertyExtension, extension_))) return Cause::unknown;
    Cause cause = Cause::unknown;
    for (UINT index = firstOwnFunction; index < functionCount(*typeInfo.get()); ++index) {
      const Cause found = look(*typeInfo.get(), index);
      if (found == Cause::hidden || found == Cause::notShown) return found;
      // The get function of the same name may still follow.
      if (found != Cause::unknown) cause = found;
    }
    return cause;
  }

 private:
  static UINT functionCount(ITypeInfo& typeInfo) {
    holders::TypeAttributesHolder attributes(typeInfo);
    if (!handedOver(typeInfo.GetTypeAttr(attributes.put()), attributes) || !attributes) return 0;
    return attributes->cFuncs;
  }

  Cause look(ITypeInfo& typeInfo, UINT index) {
    holders::FunctionDescriptionHolder function(typeInfo);
    if (!handedOver(typeInfo.GetFuncDesc(index, function.put()), function) || !function)
      return Cause::unknown;
    StringHolder name;
    StringHolder documentation;
    const HRESULT documented =
        typeInfo.GetDocumentation(function->memid, name.put(), documentation.put(), nullptr, nullptr);
    if (!handedOver(documented, name, documentation) || !name) return Cause::unknown;
    LPOLESTR nameToResolve = name.get();
    DISPID dispId = 0;
    if (FAILED(entry_.pDispatch->GetIDsOfNames(GUID_NULL, &nameToResolve, 1, LOCALE_SYSTEM_DEFAULT, &dispId)))
      return Cause::unknown;
    if (!isText(name, wanted_) && !hasLabel(dispId)) return Cause::unknown;
    if (function->invkind != INVOKE_PROPERTYGET) return Cause::notReadable;
    if ((function->wFuncFlags & hiddenFlags) != 0) return Cause::hidden;
    return isShown(dispId) ? Cause::unknown : Cause::notShown;
  }

  bool hasLabel(DISPID dispId) {
    StringHolder label;
    return handedOver(extension_->GetDisplayName(dispId, label.put()), label) && isText(label, wanted_);
  }

  bool isShown(DISPID dispId) {
    BOOL show = 1;
    [[maybe_unused]] const HRESULT answered = extension_->ShowProperty(dispId, &show);
    // Any other byte hides a row.
    return show == 1;
  }

  const VeltPropData& entry_;
  std::string_view wanted_;
  InterfaceHolder<IOPMPropertyExtension> extension_;
};

// --- the property sources --------------------------------------------------------------------------------

// Takes the objects that the host's array holds. An element is null where there should have been an object.
template <class Function>
void forEachObject(VARIANT& array, Function function) {
  if ((array.vt & VT_ARRAY) == 0 || array.parray == nullptr || array.parray->cDims != 1) return;
  VARTYPE held = VT_EMPTY;
  if (FAILED(SafeArrayGetVartype(array.parray, &held)) || (held != VT_UNKNOWN && held != VT_DISPATCH)) return;
  LONG first = 0;
  LONG last = -1;
  if (FAILED(SafeArrayGetLBound(array.parray, 1, &first))
      || FAILED(SafeArrayGetUBound(array.parray, 1, &last)))
    return;
  for (LONGLONG index = first; index <= last; ++index) {
    auto place = static_cast<LONG>(index);
    InterfaceHolder<IUnknown> object;
    if (handedOver(SafeArrayGetElement(array.parray, &place, object.put()), object)) function(object.get());
  }
}

// Whether the property has the name and is disabled.
template <class Property, class Entity>
bool isDisabledOne(Property& property, Entity entity, std::string_view wanted) {
  StringHolder name;
  if (!handedOver(property.GetDisplayName(name.put()), name) || !isText(name, wanted)) return false;
  BOOL enabled = 0;
  return FAILED(property.IsPropertyEnabled(entity, &enabled)) || enabled != 1;
}

bool isDisabledOne(IUnknown* property, const VeltPropData& entry, std::string_view wanted) {
  InterfaceHolder<IDynamicProperty2> newer;
  if (SUCCEEDED(query(property, IID_IDynamicProperty2, newer)))
    return isDisabledOne(*newer.get(), entry.pDispatch, wanted);
  InterfaceHolder<IDynamicProperty> older;
  if (FAILED(query(property, IID_IDynamicProperty, older))) return false;
  return isDisabledOne(*older.get(), entry.oldId, wanted);
}

// What a plug-in throws is a failure of its source.
Cause causeInSource(IUnknown* object, const VeltPropData& entry, std::string_view wanted) try {
  InterfaceHolder<IPropertySource> source;
  if (FAILED(query(object, IID_IPropertySource, source))) return Cause::sourceFailed;
  holders::VariantHolder properties;
  if (!handedOver(source->GetProperties(entry.pDispatch, properties.put()), properties))
    return Cause::sourceFailed;
  Cause cause = Cause::unknown;
  forEachObject(properties.get(), [&](IUnknown* property) {
    if (property != nullptr && isDisabledOne(property, entry, wanted)) cause = Cause::disabled;
  });
  return cause;
} catch (const _com_error&) {
  return Cause::sourceFailed;
}

Cause causeInSources(const VeltPropData& entry, std::string_view wanted) {
  COleSafeArray sources;
  if (entry.pDispatch == nullptr || GetDynProperteySources(entry.pDispatch, sources) == 0)
    return Cause::unknown;
  Cause cause = Cause::unknown;
  forEachObject(sources, [&](IUnknown* source) {
    const Cause found = causeInSource(source, entry, wanted);
    if (found == Cause::disabled || cause == Cause::unknown) cause = found;
  });
  return cause;
}

}  // namespace

Cause causeOf(const VeltPropData& entry, std::string_view name) {
  const Cause ofClass = ClassSearch(entry, name).run();
  return ofClass != Cause::unknown ? ofClass : causeInSources(entry, name);
}

}  // namespace velt::palette
