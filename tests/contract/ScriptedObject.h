#pragma once

// Automation objects and their type information as the embedded host makes them, with every call in the log of the
// ToyHost and under its script.
//
// A scripted object passes each call on to the real one, unless the script says otherwise. It begins with one reference
// and ends with its last; live() counts those that have not ended.

#include <string>
#include <utility>

#include "embedded/automation/hatches/HatchObject.h"
#include "embedded/com/InterfaceTraits.h"
#include "holders/InterfaceHolder.h"
#include "host/com/TypeInfo.h"
#include "tests/support/ToyHost.h"

namespace velt::tests {

class Scripted {
 public:
  [[nodiscard]] static long live() { return count(); }

 protected:
  explicit Scripted(std::string name) : name_(std::move(name)) { ++count(); }
  Scripted(const Scripted&) = delete;
  Scripted& operator=(const Scripted&) = delete;
  ~Scripted() { --count(); }

  using Action = toys::ToyHost::Action;
  HRESULT perform(const std::string& call, const std::function<HRESULT()>& work,
                  const Action& answerNull = {}, const Action& lie = {}) const {
    toys::ToyHost* const host = toys::ToyHost::current();
    return host != nullptr ? host->perform(call + " on " + name_, work, answerNull, lie) : work();
  }
  [[nodiscard]] const std::string& name() const { return name_; }

 private:
  static long& count() {
    static long alive = 0;
    return alive;
  }
  std::string name_;
};

class ScriptedTypeInfo final : public ITypeInfo, private Scripted {
 public:
  // Takes over the reference.
  ScriptedTypeInfo(std::string name, ITypeInfo* real)
      : Scripted(std::move(name)), real_(holders::InterfaceHolder<ITypeInfo>::owning(real)) {}
  virtual ~ScriptedTypeInfo() = default;

  HRESULT QueryInterface(REFIID iid, void** object) override { return real_->QueryInterface(iid, object); }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT GetTypeAttr(TYPEATTR** attributes) override {
    return perform(
        "GetTypeAttr()", [=, this] { return real_->GetTypeAttr(attributes); }, [=] { *attributes = nullptr; },
        [=] { (*attributes)->cFuncs = static_cast<WORD>((*attributes)->cFuncs + 100); });
  }
  HRESULT GetFuncDesc(UINT index, FUNCDESC** function) override {
    return perform(
        "GetFuncDesc()", [=, this] { return real_->GetFuncDesc(index, function); },
        [=] { *function = nullptr; });
  }
  HRESULT GetVarDesc(UINT index, VARDESC** variable) override {
    return perform(
        "GetVarDesc()", [=, this] { return real_->GetVarDesc(index, variable); },
        [=] { *variable = nullptr; });
  }
  HRESULT GetDocumentation(MEMBERID member, BSTR* text, BSTR* documentation, DWORD* context,
                           BSTR* file) override {
    return perform(
        "GetDocumentation()",
        [=, this] { return real_->GetDocumentation(member, text, documentation, context, file); },
        [=] {
          if (text != nullptr) *text = nullptr;
          if (documentation != nullptr) *documentation = nullptr;
        });
  }
  HRESULT GetRefTypeInfo(HREFTYPE type, ITypeInfo** info) override {
    return perform(
        "GetRefTypeInfo()",
        [=, this] {
          const HRESULT result = real_->GetRefTypeInfo(type, info);
          if (SUCCEEDED(result)) *info = new ScriptedTypeInfo(name() + "'s kinds", *info);
          return result;
        },
        [=] { *info = nullptr; });
  }
  HRESULT GetContainingTypeLib(ITypeLib** library, UINT* index) override {
    return perform(
        "GetContainingTypeLib()", [=, this] { return real_->GetContainingTypeLib(library, index); },
        [=] { *library = nullptr; }, [=] { *index += 1000; });
  }
  void ReleaseTypeAttr(TYPEATTR* attributes) override { real_->ReleaseTypeAttr(attributes); }
  void ReleaseFuncDesc(FUNCDESC* function) override { real_->ReleaseFuncDesc(function); }
  void ReleaseVarDesc(VARDESC* variable) override { real_->ReleaseVarDesc(variable); }

  // clang-format off
  HRESULT GetTypeComp(ITypeComp** comp) override { return real_->GetTypeComp(comp); }
  HRESULT GetNames(MEMBERID member, BSTR* names, UINT most, UINT* count) override { return real_->GetNames(member, names, most, count); }
  HRESULT GetRefTypeOfImplType(UINT index, HREFTYPE* type) override { return real_->GetRefTypeOfImplType(index, type); }
  HRESULT GetImplTypeFlags(UINT index, INT* flags) override { return real_->GetImplTypeFlags(index, flags); }
  HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* members) override { return real_->GetIDsOfNames(names, count, members); }
  HRESULT Invoke(void* instance, MEMBERID member, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception, UINT* error) override { return real_->Invoke(instance, member, flags, params, result, exception, error); }
  HRESULT GetDllEntry(MEMBERID member, INVOKEKIND kind, BSTR* dll, BSTR* text, WORD* ordinal) override { return real_->GetDllEntry(member, kind, dll, text, ordinal); }
  HRESULT AddressOfMember(MEMBERID member, INVOKEKIND kind, void** address) override { return real_->AddressOfMember(member, kind, address); }
  HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) override { return real_->CreateInstance(outer, iid, object); }
  HRESULT GetMops(MEMBERID member, BSTR* mops) override { return real_->GetMops(member, mops); }
  // clang-format on

 private:
  ULONG references_ = 1;
  holders::InterfaceHolder<ITypeInfo> real_;
};

// `Dispatch` is IDispatch or IVeltHatch.
template <class Dispatch>
class ScriptedObject : public Dispatch,
                       public IVeltBaseObject,
                       public IOPMPropertyExtension,
                       public IOPMPropertyExpander,
                       public ICategorizeProperties,
                       public IPerPropertyBrowsing,
                       public IVkPiPropertyDisplay,
                       protected Scripted {
 public:
  ScriptedObject(std::string name, IUnknown& real)
      : Scripted(std::move(name)),
        dispatch_(find<Dispatch>(real)),
        baseObject_(find<IVeltBaseObject>(real)),
        extension_(find<IOPMPropertyExtension>(real)),
        expander_(find<IOPMPropertyExpander>(real)),
        categories_(find<ICategorizeProperties>(real)),
        browsing_(find<IPerPropertyBrowsing>(real)),
        display_(find<IVkPiPropertyDisplay>(real)) {}
  virtual ~ScriptedObject() = default;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    return perform(
        "QueryInterface(" + toys::nameOf(iid) + ")",
        [&] {
          *object = nullptr;
          const bool offered =
              give<Dispatch>(iid, object) || give<IDispatch>(iid, object)
              || give<IVeltBaseObject>(iid, object) || give<IOPMPropertyExtension>(iid, object)
              || give<IOPMPropertyExpander>(iid, object) || give<ICategorizeProperties>(iid, object)
              || give<IPerPropertyBrowsing>(iid, object) || give<IVkPiPropertyDisplay>(iid, object);
          if (!offered) return E_NOINTERFACE;
          ++references_;
          return S_OK;
        },
        [&] { *object = nullptr; });
  }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // clang-format off
  HRESULT GetTypeInfoCount(UINT* count) override { return dispatch_->GetTypeInfoCount(count); }
  HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return perform("GetTypeInfo()", [&] {
      const HRESULT result = dispatch_->GetTypeInfo(index, locale, info);
      if (SUCCEEDED(result)) *info = new ScriptedTypeInfo(name() + "'s type", *info);
      return result;
    }, [&] { *info = nullptr; });
  }
  HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override { return perform("GetIDsOfNames()", [&] { return dispatch_->GetIDsOfNames(iid, names, count, locale, ids); }, [&] { *ids = 0; }, [&] { *ids += 7777; }); }
  HRESULT Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception, UINT* error) override {
    return perform((flags & DISPATCH_PROPERTYGET) != 0 ? "Invoke(get)" : "Invoke(put)", [&] { return dispatch_->Invoke(id, iid, locale, flags, params, result, exception, error); }, [&] { if (result != nullptr) *result = {}; });
  }
  HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) override { return perform("SetObjectId()", [&] { return baseObject_->SetObjectId(object, owner, keyword); }); }
  HRESULT GetObjectId(VkDbObjectId* object) override { return perform("GetObjectId()", [&] { return baseObject_->GetObjectId(object); }, [&] { *object = {}; }); }
  HRESULT GetDisplayName(DISPID id, BSTR* text) override { return perform("GetDisplayName()", [&] { return extension_->GetDisplayName(id, text); }, [&] { *text = nullptr; }); }
  HRESULT Editable(DISPID id, BOOL* editable) override { return perform("Editable()", [&] { return extension_->Editable(id, editable); }, [&] { *editable = 0; }, [&] { *editable = static_cast<BOOL>(-1); }); }
  HRESULT ShowProperty(DISPID id, BOOL* show) override { return perform("ShowProperty()", [&] { return extension_->ShowProperty(id, show); }, [&] { *show = 0; }, [&] { *show = static_cast<BOOL>(-1); }); }
  HRESULT GetElementValue(DISPID id, DWORD cookie, VARIANT* value) override { return perform("GetElementValue()", [&] { return expander_->GetElementValue(id, cookie, value); }, [&] { *value = {}; }); }
  HRESULT SetElementValue(DISPID id, DWORD cookie, VARIANT value) override { return perform("SetElementValue()", [&] { return expander_->SetElementValue(id, cookie, value); }); }
  HRESULT GetElementStrings(DISPID id, CALPOLESTR* strings, CADWORD* cookies) override { return perform("GetElementStrings()", [&] { return expander_->GetElementStrings(id, strings, cookies); }, [&] { *strings = {}; *cookies = {}; }, [&] { if (cookies->cElems > 0) --cookies->cElems; }); }
  HRESULT GetElementGrouping(DISPID id, SHORT* grouping) override { return perform("GetElementGrouping()", [&] { return expander_->GetElementGrouping(id, grouping); }, [&] { *grouping = 0; }, [&] { *grouping = -1; }); }
  HRESULT GetGroupCount(DISPID id, long* groups) override { return perform("GetGroupCount()", [&] { return expander_->GetGroupCount(id, groups); }, [&] { *groups = 0; }, [&] { *groups = -*groups - 1; }); }
  HRESULT MapPropertyToCategory(DISPID id, PROPCAT* category) override { return perform("MapPropertyToCategory()", [&] { return categories_->MapPropertyToCategory(id, category); }, [&] { *category = 0; }, [&] { *category += 5000; }); }
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* text) override { return perform("GetCategoryName()", [&] { return categories_->GetCategoryName(category, locale, text); }, [&] { *text = nullptr; }); }
  HRESULT GetDisplayString(DISPID id, BSTR* text) override { return perform("GetDisplayString()", [&] { return browsing_->GetDisplayString(id, text); }, [&] { *text = nullptr; }); }
  HRESULT MapPropertyToPage(DISPID id, CLSID* page) override { return browsing_->MapPropertyToPage(id, page); }
  HRESULT GetPredefinedStrings(DISPID id, CALPOLESTR* strings, CADWORD* cookies) override { return perform("GetPredefinedStrings()", [&] { return browsing_->GetPredefinedStrings(id, strings, cookies); }, [&] { *strings = {}; *cookies = {}; }, [&] { if (cookies->cElems > 0) --cookies->cElems; }); }
  HRESULT GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) override { return perform("GetPredefinedValue()", [&] { return browsing_->GetPredefinedValue(id, cookie, value); }, [&] { *value = {}; }); }
  HRESULT GetCustomPropertyCtrl(VARIANT property, LCID locale, BSTR* control) override { return display_->GetCustomPropertyCtrl(property, locale, control); }
  HRESULT GetPropertyColor(VARIANT property, ULONG* color) override { return display_->GetPropertyColor(property, color); }
  HRESULT GetPropertyTextColor(VARIANT property, ULONG* color) override { return display_->GetPropertyTextColor(property, color); }
  HRESULT IsFullView(VARIANT property, BOOL* full) override { return display_->IsFullView(property, full); }
  HRESULT GetPropertyWeight(VARIANT property, long* weight) override { return perform("GetPropertyWeight()", [&] { return display_->GetPropertyWeight(property, weight); }, [&] { *weight = 0; }, [&] { *weight = -*weight; }); }
  // clang-format on

 protected:
  [[nodiscard]] Dispatch& real() { return *dispatch_.get(); }

 private:
  template <class Interface>
  using Holder = holders::InterfaceHolder<Interface>;

  template <class Interface>
  static Holder<Interface> find(IUnknown& real) {
    void* found = nullptr;
    real.QueryInterface(com::InterfaceTraits<Interface>::iid, &found);
    return Holder<Interface>::owning(static_cast<Interface*>(found));
  }

  template <class Interface>
  bool give(REFIID iid, void** object) {
    if (!(iid == com::InterfaceTraits<Interface>::iid)) return false;
    *object = static_cast<Interface*>(this);
    return true;
  }

  ULONG references_ = 1;
  Holder<Dispatch> dispatch_;
  Holder<IVeltBaseObject> baseObject_;
  Holder<IOPMPropertyExtension> extension_;
  Holder<IOPMPropertyExpander> expander_;
  Holder<ICategorizeProperties> categories_;
  Holder<IPerPropertyBrowsing> browsing_;
  Holder<IVkPiPropertyDisplay> display_;
};

class ScriptedEntity final : public ScriptedObject<IDispatch> {
 public:
  using ScriptedObject::ScriptedObject;
};

class ScriptedHatch final : public automation::HeldSlots<ScriptedObject<IVeltHatch>> {
 public:
  using HeldSlots::HeldSlots;
  HRESULT get_PropertyVariant(INT* variant) override {
    return perform(
        "get_PropertyVariant()", [&] { return real().get_PropertyVariant(variant); }, [&] { *variant = 0; },
        [&] { *variant = 99; });
  }
};

}  // namespace velt::tests
