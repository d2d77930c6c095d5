#include "embedded/sources/GuardedSource.h"

#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "embedded/com/ComObject.h"
#include "embedded/sources/PluginCall.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/com/ComError.h"
#include "host/com/SafeArray.h"

namespace velt::sources {
namespace {

using holders::handedOver;
using holders::InterfaceHolder;
using Reports = std::shared_ptr<PluginReports>;

// Calls a method of the plug-in, and turns an exception into a result. `method` is its name for messages.
template <class Call>
HRESULT guarded(PluginReports& reports, const char* method, Call&& call) {
  const PluginCall calling(reports.plugin().c_str(), method);
  try {
    return call();
  } catch (const _com_error& error) {
    reports.tell(Trouble::Exception, std::string(method) + " threw a _com_error: " + describeException());
    return FAILED(error.Error()) ? error.Error() : E_UNEXPECTED;
  } catch (...) {
    reports.tell(Trouble::Exception, std::string(method) + " threw: " + describeException());
    return E_UNEXPECTED;
  }
}

std::string resultText(HRESULT result) {
  // A _com_error has a text for every result.
  return narrow(static_cast<const wchar_t*>(_com_error(result).Description()));
}

// The same for a method without whose answer there is no row or no value: a failure is told too.
template <class Call>
HRESULT needed(PluginReports& reports, const char* method, Call&& call) {
  bool threw = true;
  const HRESULT result = guarded(reports, method, [&] {
    const HRESULT answered = call();
    threw = false;
    return answered;
  });
  if (FAILED(result) && !threw)
    reports.tell(Trouble::Failure, std::string(method) + " failed: " + resultText(result));
  return result;
}

struct ReleaseAndTell {
  PluginReports* reports = nullptr;

  template <class Interface>
  void operator()(Interface* object) const noexcept {
    try {
      guarded(*reports, "Release", [&] { return object->Release(), S_OK; });
    } catch (...) {  // NOLINT(bugprone-empty-catch): there is no memory to tell of it
    }
  }
};

// A reference to an object of the plug-in. The reports must outlive it.
template <class Interface>
class PluginReference : public holders::PointerHolder<Interface, ReleaseAndTell> {
 public:
  explicit PluginReference(PluginReports& reports)
      : holders::PointerHolder<Interface, ReleaseAndTell>(ReleaseAndTell{&reports}) {}
};

template <class Interface>
PluginReference<Interface> ask(PluginReports& reports, IUnknown& object,
                               REFIID iid = com::InterfaceTraits<Interface>::iid) {
  PluginReference<Interface> found(reports);
  void* asked = nullptr;
  const HRESULT result =
      guarded(reports, "QueryInterface", [&] { return object.QueryInterface(iid, &asked); });
  if (SUCCEEDED(result)) found.attach(static_cast<Interface*>(asked));
  return found;
}

// Empty when AddRef throws.
PluginReference<IPropertySource> share(PluginReports& reports, IPropertySource* source) {
  PluginReference<IPropertySource> shared(reports);
  if (SUCCEEDED(guarded(reports, "AddRef", [&] { return source->AddRef(), S_OK; }))) shared.attach(source);
  return shared;
}

// Passes a text on when the call succeeds.
template <class Call>
HRESULT giveText(BSTR* out, Call&& call) {
  if (out == nullptr) return E_POINTER;
  holders::StringHolder text;
  const HRESULT result = call(text.put());
  if (handedOver(result, text)) *out = text.detach();
  return result;
}

template <class Value, class Call>
HRESULT giveValue(Value* out, Call&& call) {
  if (out == nullptr) return E_POINTER;
  Value value{};
  const HRESULT result = call(&value);
  if (SUCCEEDED(result)) *out = value;
  return result;
}

class GuardedProperty final : public com::ComObject<IDynamicProperty2, IDynamicProperty, IDynamicEnumProperty,
                                                    ICategorizeProperties> {
 public:
  GuardedProperty(IUnknown& property, Reports reports)
      : ComObject(platform::Ledger::account("property of a plug-in")),
        reports_(std::move(reports)),
        newer_(ask<IDynamicProperty2>(*reports_, property)),
        older_(ask<IDynamicProperty>(*reports_, property)),
        choices_(ask<IDynamicEnumProperty>(*reports_, property)),
        categories_(ask<ICategorizeProperties>(*reports_, property)) {}

  [[nodiscard]] bool isProperty() const { return newer_ || older_; }

  HRESULT QueryInterface(REFIID iid, void** object) override {
    const bool isWithheld = (iid == IID_IDynamicProperty2 && !newer_)
                            || (iid == IID_IDynamicProperty && !older_)
                            || (iid == IID_IDynamicEnumProperty && !choices_)
                            || (iid == IID_ICategorizeProperties && !categories_);
    if (!isWithheld) return ComObject::QueryInterface(iid, object);
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return E_NOINTERFACE;
  }

  // --- of both generations
  // ----------------------------------------------------------------------------------------------

  HRESULT GetGUID(GUID* guid) override {
    return giveValue(guid, [&](GUID* out) {
      return either("GetGUID", [&](auto& property) { return property.GetGUID(out); });
    });
  }
  HRESULT GetDisplayName(BSTR* name) override {
    return giveText(name, [&](BSTR* out) {
      return eitherNeeded("GetDisplayName", [&](auto& property) { return property.GetDisplayName(out); });
    });
  }
  HRESULT IsPropertyReadOnly(BOOL* readOnly) override {
    return giveValue(readOnly, [&](BOOL* out) {
      return either("IsPropertyReadOnly", [&](auto& property) { return property.IsPropertyReadOnly(out); });
    });
  }
  HRESULT GetDescription(BSTR* description) override {
    return giveText(description, [&](BSTR* out) {
      return either("GetDescription", [&](auto& property) { return property.GetDescription(out); });
    });
  }
  HRESULT GetCurrentValueName(BSTR* typeName) override {
    return giveText(typeName, [&](BSTR* out) {
      return either("GetCurrentValueName", [&](auto& property) { return property.GetCurrentValueName(out); });
    });
  }
  HRESULT GetCurrentValueType(VARTYPE* type) override {
    return giveValue(type, [&](VARTYPE* out) {
      return either("GetCurrentValueType", [&](auto& property) { return property.GetCurrentValueType(out); });
    });
  }

  // --- of the newer one
  // -------------------------------------------------------------------------------------------------

  HRESULT IsPropertyEnabled(IDispatch* entity, BOOL* enabled) override {
    return isEnabled(newer_, entity, enabled);
  }
  HRESULT GetCurrentValueData(IDispatch* entity, VARIANT* value) override {
    return getValue(newer_, entity, value);
  }
  HRESULT SetCurrentValueData(IDispatch* entity, VARIANT value) override {
    return setValue(newer_, entity, value);
  }

  // --- of the older one
  // -------------------------------------------------------------------------------------------------

  HRESULT IsPropertyEnabled(long oldId, BOOL* enabled) override { return isEnabled(older_, oldId, enabled); }
  HRESULT GetCurrentValueData(long oldId, VARIANT* value) override { return getValue(older_, oldId, value); }
  HRESULT SetCurrentValueData(long oldId, VARIANT value) override { return setValue(older_, oldId, value); }

  // --- choices and categories
  // -------------------------------------------------------------------------------------------

  HRESULT GetNumPropertyValues(LONG* count) override {
    return giveValue(count, [&](LONG* out) {
      const HRESULT result =
          guarded(*reports_, "GetNumPropertyValues", [&] { return choices_->GetNumPropertyValues(out); });
      if (SUCCEEDED(result) && *out > mostChoices) {
        reports_->tell(Trouble::TooManyChoices, "GetNumPropertyValues answered " + std::to_string(*out)
                                                    + " choices; only the first "
                                                    + std::to_string(mostChoices) + " are there");
        *out = mostChoices;
      }
      return result;
    });
  }
  HRESULT GetPropValueName(LONG index, BSTR* name) override {
    return giveText(name, [&](BSTR* out) {
      return guarded(*reports_, "GetPropValueName", [&] { return choices_->GetPropValueName(index, out); });
    });
  }
  HRESULT GetPropValueData(LONG index, VARIANT* value) override {
    if (value == nullptr) return E_POINTER;
    holders::VariantHolder data;
    const HRESULT result =
        guarded(*reports_, "GetPropValueData", [&] { return choices_->GetPropValueData(index, data.put()); });
    if (handedOver(result, data)) *value = data.detach();
    return result;
  }
  HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) override {
    return giveValue(category, [&](PROPCAT* out) {
      return guarded(*reports_, "MapPropertyToCategory",
                     [&] { return categories_->MapPropertyToCategory(dispId, out); });
    });
  }
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) override {
    return giveText(name, [&](BSTR* out) {
      return guarded(*reports_, "GetCategoryName",
                     [&] { return categories_->GetCategoryName(category, locale, out); });
    });
  }

 private:
  template <class Call>
  HRESULT either(const char* method, Call&& call) {
    return guarded(*reports_, method, [&] { return newer_ ? call(*newer_.get()) : call(*older_.get()); });
  }
  template <class Call>
  HRESULT eitherNeeded(const char* method, Call&& call) {
    return needed(*reports_, method, [&] { return newer_ ? call(*newer_.get()) : call(*older_.get()); });
  }

  template <class Property, class Entity>
  HRESULT isEnabled(Property& property, Entity entity, BOOL* enabled) {
    if (!property) return E_NOTIMPL;
    return giveValue(enabled, [&](BOOL* out) {
      return needed(*reports_, "IsPropertyEnabled", [&] { return property->IsPropertyEnabled(entity, out); });
    });
  }

  template <class Property, class Entity>
  HRESULT getValue(Property& property, Entity entity, VARIANT* value) {
    if (value == nullptr) return E_POINTER;
    if (!property) return E_NOTIMPL;
    holders::VariantHolder data;
    const HRESULT result = needed(*reports_, "GetCurrentValueData",
                                  [&] { return property->GetCurrentValueData(entity, data.put()); });
    if (!handedOver(result, data)) return result;
    if (!isAsDeclared(data.get().vt)) return DISP_E_TYPEMISMATCH;
    *value = data.detach();
    return result;
  }

  template <class Property, class Entity>
  HRESULT setValue(Property& property, Entity entity, const VARIANT& value) {
    if (!property) return E_NOTIMPL;
    return needed(*reports_, "SetCurrentValueData",
                  [&] { return property->SetCurrentValueData(entity, value); });
  }

  // A property that does not declare a type may have values of any type, and every property may have an empty value.
  bool isAsDeclared(VARTYPE actual) {
    VARTYPE declared = VT_EMPTY;
    if (FAILED(GetCurrentValueType(&declared)) || declared == VT_EMPTY || declared == VT_VARIANT) return true;
    if (actual == declared || actual == VT_EMPTY || actual == VT_NULL) return true;
    reports_->tell(Trouble::WrongType, "GetCurrentValueData answered a value of type "
                                           + std::to_string(actual) + ", but the property has declared "
                                           + std::to_string(declared));
    return false;
  }

  Reports reports_;
  PluginReference<IDynamicProperty2> newer_;
  PluginReference<IDynamicProperty> older_;
  PluginReference<IDynamicEnumProperty> choices_;
  PluginReference<ICategorizeProperties> categories_;
};

class GuardedSource final : public com::ComObject<IPropertySource> {
 public:
  GuardedSource(IPropertySource* source, Reports reports)
      : ComObject(platform::Ledger::account("source of a plug-in")),
        reports_(std::move(reports)),
        source_(share(*reports_, source)) {}

  [[nodiscard]] bool hasSource() const { return static_cast<bool>(source_); }

  HRESULT GetProperties(IDispatch* entity, VARIANT* properties) override {
    if (properties == nullptr) return E_POINTER;
    holders::VariantHolder answer;
    const HRESULT result =
        needed(*reports_, "GetProperties", [&] { return source_->GetProperties(entity, answer.put()); });
    if (!handedOver(result, answer)) return result;
    if (answer.get().vt == VT_EMPTY) return S_OK;
    try {
      return wrap(answer.get(), *properties);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }

 private:
  HRESULT wrap(const VARIANT& answer, VARIANT& properties) {
    SAFEARRAY* const array = arrayIn(answer);
    if (array == nullptr) {
      reports_->tell(Trouble::NoArray,
                     "GetProperties answered something other than a one-dimensional array of objects");
      return S_OK;
    }
    std::vector<InterfaceHolder<IUnknown>> wrapped;
    LONG lower = 0;
    LONG upper = -1;
    SafeArrayGetLBound(array, 1, &lower);
    SafeArrayGetUBound(array, 1, &upper);
    for (LONGLONG index = lower; index <= upper; ++index) {
      if (GuardedProperty* const property = propertyAt(array, static_cast<LONG>(index))) {
        wrapped.push_back(InterfaceHolder<IUnknown>::sharing(static_cast<IDynamicProperty2*>(property)));
      }
    }
    return give(wrapped, properties);
  }

  static HRESULT give(const std::vector<InterfaceHolder<IUnknown>>& wrapped, VARIANT& properties) {
    if (wrapped.empty()) return S_OK;
    holders::VariantHolder array;
    SAFEARRAY* const made = SafeArrayCreateVector(VT_UNKNOWN, 0, static_cast<ULONG>(wrapped.size()));
    if (made == nullptr) return E_OUTOFMEMORY;
    array.put()->vt = VT_ARRAY | VT_UNKNOWN;
    array.get().parray = made;
    LONG index = 0;
    for (const InterfaceHolder<IUnknown>& property : wrapped) {
      if (const HRESULT put = SafeArrayPutElement(made, &index, property.get()); FAILED(put)) return put;
      ++index;
    }
    properties = array.detach();
    return S_OK;
  }

  static SAFEARRAY* arrayIn(const VARIANT& answer) {
    const bool isList = answer.vt == (VT_ARRAY | VT_UNKNOWN) || answer.vt == (VT_ARRAY | VT_DISPATCH);
    if (!isList || answer.parray == nullptr || SafeArrayGetDim(answer.parray) != 1) return nullptr;
    VARTYPE elements = VT_EMPTY;
    if (FAILED(SafeArrayGetVartype(answer.parray, &elements))) return nullptr;
    return elements == VT_UNKNOWN || elements == VT_DISPATCH ? answer.parray : nullptr;
  }

  // Null for an element that is not a dynamic property.
  GuardedProperty* propertyAt(SAFEARRAY* array, LONG index) {
    PluginReference<IUnknown> element(*reports_);
    const HRESULT fetched = SafeArrayGetElement(array, &index, element.put());
    if (!handedOver(fetched, element)) {
      reports_->tell(Trouble::Exception, "AddRef threw");
      return nullptr;
    }
    if (!element) {
      reports_->tell(Trouble::NullElement, "GetProperties handed out a null property");
      return nullptr;
    }
    // An object is the same property whichever of its interfaces is handed out.
    const PluginReference<IUnknown> identity = ask<IUnknown>(*reports_, *element.get(), IID_IUnknown);
    return guardOf(identity ? *identity.get() : *element.get());
  }

  GuardedProperty* guardOf(IUnknown& property) {
    const std::lock_guard lock(mutex_);
    if (const auto known = guards_.find(&property); known != guards_.end()) return known->second.get();
    auto made =
        InterfaceHolder<GuardedProperty>::owning(com::makeObject<GuardedProperty>(property, reports_));
    if (!made) throw std::bad_alloc();
    if (!made->isProperty()) {
      reports_->tell(Trouble::NoProperty,
                     "GetProperties handed out an object that is not a dynamic property");
      return nullptr;
    }
    if (guards_.size() == manyProperties) {
      reports_->tell(Trouble::TooMany, "the source goes on handing out new property objects, "
                                           + std::to_string(manyProperties)
                                           + " so far; all of them are kept: hand out the same ones again");
    }
    return guards_.emplace(&property, std::move(made)).first->second.get();
  }

  Reports reports_;
  PluginReference<IPropertySource> source_;
  std::mutex mutex_;
  // By the IUnknown of the plug-in's object.
  std::unordered_map<IUnknown*, InterfaceHolder<GuardedProperty>> guards_;
};

}  // namespace

holders::InterfaceHolder<IPropertySource> guard(IPropertySource* source,
                                                std::shared_ptr<PluginReports> reports) {
  auto made =
      InterfaceHolder<GuardedSource>::owning(com::makeObject<GuardedSource>(source, std::move(reports)));
  if (!made) throw std::bad_alloc();
  if (!made->hasSource()) return {};
  return InterfaceHolder<IPropertySource>::owning(made.detach());
}

}  // namespace velt::sources
