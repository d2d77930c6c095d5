#pragma once

#include "embedded/com/ComObject.h"

namespace velt::com {

// An object of two interfaces. Tests ask neither of them for more than the object's identity.
class Probe : public ComObject<IPropertySource, ICategorizeProperties> {
 public:
  Probe() : ComObject(platform::Ledger::account("Probe")) {}

  HRESULT GetProperties(IDispatch*, VARIANT*) override { return E_NOTIMPL; }
  HRESULT MapPropertyToCategory(DISPID, PROPCAT*) override { return E_NOTIMPL; }
  HRESULT GetCategoryName(PROPCAT, LCID, BSTR*) override { return E_NOTIMPL; }

  // The one reference that the caller then has, counted through the identity.
  static IUnknown* make() { return static_cast<IPropertySource*>(makeObject<Probe>()); }
};

// An object with an interface that extends another one.
class DispatchProbe : public ComObject<IVeltVkCmColor> {
 public:
  DispatchProbe() : ComObject(platform::Ledger::account("DispatchProbe")) {}

  HRESULT GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT put_EntityColor(LONG) override { return E_NOTIMPL; }
  HRESULT get_EntityColor(LONG*) override { return E_NOTIMPL; }
  HRESULT get_ColorName(BSTR*) override { return E_NOTIMPL; }
  HRESULT get_BookName(BSTR*) override { return E_NOTIMPL; }
  HRESULT SetNames(BSTR, BSTR) override { return E_NOTIMPL; }

  static IDispatch* make() { return makeObject<DispatchProbe>(); }
};

inline ULONG referencesOf(IUnknown* object) {
  object->AddRef();
  return object->Release();
}

}  // namespace velt::com
