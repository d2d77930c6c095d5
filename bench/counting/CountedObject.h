#pragma once

// An automation object that counts every call and passes it on to the real one.

#include <memory>
#include <string>

#include "bench/counting/CallCounts.h"
#include "embedded/automation/hatches/HatchObject.h"
#include "embedded/com/InterfaceTraits.h"
#include "holders/InterfaceHolder.h"

namespace velt::bench {

// `Dispatch` is IDispatch or IVeltHatch. It ends with its last reference, and keeps one to the real object until then.
template <class Dispatch>
class CountedObject : public Dispatch,
                      public IVeltBaseObject,
                      public IOPMPropertyExtension,
                      public IOPMPropertyExpander,
                      public ICategorizeProperties,
                      public IPerPropertyBrowsing,
                      public IVkPiPropertyDisplay {
 public:
  // Begins with one reference, for the caller.
  explicit CountedObject(IUnknown& real)
      : dispatch_(find<Dispatch>(real)),
        baseObject_(find<IVeltBaseObject>(real)),
        extension_(find<IOPMPropertyExtension>(real)),
        expander_(find<IOPMPropertyExpander>(real)),
        categories_(find<ICategorizeProperties>(real)),
        browsing_(find<IPerPropertyBrowsing>(real)),
        display_(find<IVkPiPropertyDisplay>(real)) {}
  virtual ~CountedObject() = default;

  HRESULT QueryInterface(REFIID iid, void** object) override {
    countCall("QueryInterface");
    *object = nullptr;
    const bool offered =
        give<Dispatch>(iid, object) || give<IDispatch>(iid, object) || give<IVeltBaseObject>(iid, object)
        || give<IOPMPropertyExtension>(iid, object) || give<IOPMPropertyExpander>(iid, object)
        || give<ICategorizeProperties>(iid, object) || give<IPerPropertyBrowsing>(iid, object)
        || give<IVkPiPropertyDisplay>(iid, object);
    if (!offered) return E_NOINTERFACE;
    ++references_;
    return S_OK;
  }
  ULONG AddRef() override {
    countCall("AddRef");
    return ++references_;
  }
  ULONG Release() override {
    countCall("Release");
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // clang-format off
  HRESULT GetTypeInfoCount(UINT* count) override { countCall("GetTypeInfoCount"); return dispatch_->GetTypeInfoCount(count); }
  HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override { countCall("GetTypeInfo"); return dispatch_->GetTypeInfo(index, locale, info); }
  HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override { countCall("GetIDsOfNames"); return dispatch_->GetIDsOfNames(iid, names, count, locale, ids); }
  HRESULT Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception, UINT* error) override { countCall("Invoke"); return dispatch_->Invoke(id, iid, locale, flags, params, result, exception, error); }
  HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) override { countCall("SetObjectId"); return baseObject_->SetObjectId(object, owner, keyword); }
  HRESULT GetObjectId(VkDbObjectId* object) override { countCall("GetObjectId"); return baseObject_->GetObjectId(object); }
  HRESULT GetDisplayName(DISPID id, BSTR* name) override { countCall("GetDisplayName"); return extension_->GetDisplayName(id, name); }
  HRESULT Editable(DISPID id, BOOL* editable) override { countCall("Editable"); return extension_->Editable(id, editable); }
  HRESULT ShowProperty(DISPID id, BOOL* show) override { countCall("ShowProperty"); return extension_->ShowProperty(id, show); }
  HRESULT GetElementValue(DISPID id, DWORD cookie, VARIANT* value) override { countCall("GetElementValue"); return expander_->GetElementValue(id, cookie, value); }
  HRESULT SetElementValue(DISPID id, DWORD cookie, VARIANT value) override { countCall("SetElementValue"); return expander_->SetElementValue(id, cookie, value); }
  HRESULT GetElementStrings(DISPID id, CALPOLESTR* strings, CADWORD* cookies) override { countCall("GetElementStrings"); return expander_->GetElementStrings(id, strings, cookies); }
  HRESULT GetElementGrouping(DISPID id, SHORT* grouping) override { countCall("GetElementGrouping"); return expander_->GetElementGrouping(id, grouping); }
  HRESULT GetGroupCount(DISPID id, long* groups) override { countCall("GetGroupCount"); return expander_->GetGroupCount(id, groups); }
  HRESULT MapPropertyToCategory(DISPID id, PROPCAT* category) override { countCall("MapPropertyToCategory"); return categories_->MapPropertyToCategory(id, category); }
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) override { countCall("GetCategoryName"); return categories_->GetCategoryName(category, locale, name); }
  HRESULT GetDisplayString(DISPID id, BSTR* text) override { countCall("GetDisplayString"); return browsing_->GetDisplayString(id, text); }
  HRESULT MapPropertyToPage(DISPID id, CLSID* page) override { countCall("MapPropertyToPage"); return browsing_->MapPropertyToPage(id, page); }
  HRESULT GetPredefinedStrings(DISPID id, CALPOLESTR* strings, CADWORD* cookies) override { countCall("GetPredefinedStrings"); return browsing_->GetPredefinedStrings(id, strings, cookies); }
  HRESULT GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) override { countCall("GetPredefinedValue"); return browsing_->GetPredefinedValue(id, cookie, value); }
  HRESULT GetCustomPropertyCtrl(VARIANT property, LCID locale, BSTR* control) override { countCall("GetCustomPropertyCtrl"); return display_->GetCustomPropertyCtrl(property, locale, control); }
  HRESULT GetPropertyColor(VARIANT property, ULONG* color) override { countCall("GetPropertyColor"); return display_->GetPropertyColor(property, color); }
  HRESULT GetPropertyTextColor(VARIANT property, ULONG* color) override { countCall("GetPropertyTextColor"); return display_->GetPropertyTextColor(property, color); }
  HRESULT IsFullView(VARIANT property, BOOL* full) override { countCall("IsFullView"); return display_->IsFullView(property, full); }
  HRESULT GetPropertyWeight(VARIANT property, long* weight) override { countCall("GetPropertyWeight"); return display_->GetPropertyWeight(property, weight); }
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

class CountedEntity final : public CountedObject<IDispatch> {
 public:
  using CountedObject::CountedObject;
};

class CountedHatch final : public automation::HeldSlots<CountedObject<IVeltHatch>> {
 public:
  using HeldSlots::HeldSlots;
  HRESULT get_PropertyVariant(INT* variant) override {
    countCall("get_PropertyVariant");
    return real().get_PropertyVariant(variant);
  }
};

}  // namespace velt::bench
