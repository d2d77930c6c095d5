#pragma once

// Objects that do one thing wrong which no toy can do. They live on the stack, and end with their scope.

#include <cwchar>

#include "host/com/ComRuntime.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/com/TypeInfo.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"

namespace velt::tests {

// Has one interface, and counts.
template <class Interface>
class Fake : public Interface {
 public:
  explicit Fake(const IID& iid) : iid_(iid) {}

  HRESULT QueryInterface(REFIID iid, void** object) override {
    const bool has = iid == IID_IUnknown || iid == iid_;
    *object = has ? this : nullptr;
    if (has && addsReferences) ++references;
    return has ? S_OK : E_NOINTERFACE;
  }
  ULONG AddRef() override { return static_cast<ULONG>(++references); }
  ULONG Release() override { return static_cast<ULONG>(--references); }

  int references = 1;
  bool addsReferences = true;

 private:
  IID iid_;
};

// Writes its flags as numbers of four bytes.
class WideFlags final : public Fake<IOPMPropertyExtension> {
 public:
  WideFlags() : Fake(IID_IOPMPropertyExtension) {}
  HRESULT GetDisplayName(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT Editable(DISPID, BOOL* editable) override { return write(editable); }
  HRESULT ShowProperty(DISPID, BOOL* show) override { return write(show); }

 private:
  static HRESULT write(BOOL* flag) {
    flag[0] = 1;
    flag[1] = flag[2] = flag[3] = 0;
    return S_OK;
  }
};

// Lists two choices and one cookie.
class LoseCookies final : public Fake<IPerPropertyBrowsing> {
 public:
  LoseCookies() : Fake(IID_IPerPropertyBrowsing) {}
  HRESULT GetDisplayString(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT MapPropertyToPage(DISPID, CLSID*) override { return E_NOTIMPL; }
  HRESULT GetPredefinedStrings(DISPID, CALPOLESTR* strings, CADWORD* cookies) override {
    *strings = {2, static_cast<LPOLESTR*>(CoTaskMemAlloc(2 * sizeof(LPOLESTR)))};
    *cookies = {1, static_cast<DWORD*>(CoTaskMemAlloc(sizeof(DWORD)))};
    strings->pElems[0] = SysAllocString(L"Steel");
    strings->pElems[1] = SysAllocString(L"Copper");
    cookies->pElems[0] = 0;
    return S_OK;
  }
  HRESULT GetPredefinedValue(DISPID, DWORD, VARIANT*) override { return E_NOTIMPL; }
};

// Lends its lists, again and again, as if nobody freed them.
struct LentLists {
  void lend(CALPOLESTR* strings, CADWORD* cookies) {
    *strings = {1, texts_};
    *cookies = {1, numbers_};
  }

 private:
  wchar_t text_[2] = L"X";
  LPOLESTR texts_[1] = {text_};
  DWORD numbers_[1] = {0};
};

class LendsChoices final : public Fake<IPerPropertyBrowsing> {
 public:
  LendsChoices() : Fake(IID_IPerPropertyBrowsing) {}
  HRESULT GetDisplayString(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT MapPropertyToPage(DISPID, CLSID*) override { return E_NOTIMPL; }
  HRESULT GetPredefinedStrings(DISPID, CALPOLESTR* strings, CADWORD* cookies) override {
    return lists_.lend(strings, cookies), S_OK;
  }
  HRESULT GetPredefinedValue(DISPID, DWORD, VARIANT*) override { return E_NOTIMPL; }

 private:
  LentLists lists_;
};

class LendsElements final : public Fake<IOPMPropertyExpander> {
 public:
  LendsElements() : Fake(IID_IOPMPropertyExpander) {}
  HRESULT GetElementValue(DISPID, DWORD, VARIANT*) override { return S_OK; }
  HRESULT SetElementValue(DISPID, DWORD, VARIANT) override { return E_NOTIMPL; }
  HRESULT GetElementStrings(DISPID, CALPOLESTR* strings, CADWORD* cookies) override {
    return lists_.lend(strings, cookies), S_OK;
  }
  HRESULT GetElementGrouping(DISPID, SHORT*) override { return E_NOTIMPL; }
  HRESULT GetGroupCount(DISPID, long*) override { return E_NOTIMPL; }

 private:
  LentLists lists_;
};

// Type information that begins with its properties, and counts no base methods: every function is a get of Length.
class Baseless final : public Fake<ITypeInfo> {
 public:
  Baseless() : Fake(IID_ITypeInfo) {
    attributes_.cFuncs = 8;
    function_.invkind = INVOKE_PROPERTYGET;
    function_.elemdescFunc.tdesc.vt = VT_R8;
  }

  HRESULT GetTypeAttr(TYPEATTR** attributes) override { return *attributes = &attributes_, S_OK; }
  HRESULT GetFuncDesc(UINT, FUNCDESC** function) override { return *function = &function_, S_OK; }
  HRESULT GetDocumentation(MEMBERID, BSTR* name, BSTR*, DWORD*, BSTR*) override {
    return *name = SysAllocString(L"Length"), S_OK;
  }
  void ReleaseTypeAttr(TYPEATTR*) override {}
  void ReleaseFuncDesc(FUNCDESC*) override {}
  void ReleaseVarDesc(VARDESC*) override {}

  HRESULT GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  HRESULT GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
  HRESULT GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
  HRESULT GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
  HRESULT GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  HRESULT Invoke(void*, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
  HRESULT GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT AddressOfMember(MEMBERID, INVOKEKIND, void**) override { return E_NOTIMPL; }
  HRESULT CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
  HRESULT GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
  HRESULT GetContainingTypeLib(ITypeLib**, UINT*) override { return E_NOTIMPL; }

 private:
  TYPEATTR attributes_{};
  FUNCDESC function_{};
};

// An object with a type information, which knows one name.
class Dispatch final : public Fake<IDispatch> {
 public:
  explicit Dispatch(ITypeInfo* type = nullptr) : Fake(IID_IDispatch), type_(type) {}
  HRESULT GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT GetTypeInfo(UINT, LCID, ITypeInfo** type) override {
    if (type_ == nullptr) return E_FAIL;
    type_->AddRef();
    return *type = type_, S_OK;
  }
  HRESULT GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    if (std::wcscmp(names[0], L"Length") != 0) return DISP_E_UNKNOWNNAME;
    return *ids = 4, S_OK;
  }
  HRESULT Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }

 private:
  ITypeInfo* type_;
};

}  // namespace velt::tests
