#pragma once

// The user-defined types by which the layer knows that a number is a length, an angle or an area: for type information of
// a host's own, as that of minimal-host. The guide, docs/host.md, has the three lines that use it.
//
// Types and library live as long as the program, so references are not counted. What the layer does not call is not there.

#include <array>
#include <cstddef>

#include "host/com/ComRuntime.h"
#include "host/com/TypeInfo.h"

enum class Unit : HREFTYPE { distance, angle, area };

// Each at the place of its unit. Whatever else a type is, the layer goes by this name.
inline constexpr std::array unitTypeNames = {L"VELT_DISTANCE", L"VELT_ANGLE", L"VELT_AREA"};

class UnitLibrary final : public ITypeLib {
 public:
  HRESULT GetDocumentation(INT index, BSTR* name, BSTR*, DWORD*, BSTR*) override {
    const auto place = static_cast<std::size_t>(index);
    if (place >= unitTypeNames.size()) return TYPE_E_ELEMENTNOTFOUND;
    if (name != nullptr) *name = SysAllocString(unitTypeNames[place]);
    return S_OK;
  }

  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }
  UINT GetTypeInfoCount() override { return 0; }
  HRESULT GetTypeInfo(UINT, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT GetTypeInfoType(UINT, TYPEKIND*) override { return E_NOTIMPL; }
  HRESULT GetTypeInfoOfGuid(REFGUID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT GetLibAttr(TLIBATTR**) override { return E_NOTIMPL; }
  HRESULT GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  HRESULT IsName(LPOLESTR, ULONG, BOOL*) override { return E_NOTIMPL; }
  HRESULT FindName(LPOLESTR, ULONG, ITypeInfo**, MEMBERID*, USHORT*) override { return E_NOTIMPL; }
  void ReleaseTLibAttr(TLIBATTR*) override {}
};

class UnitType final : public ITypeInfo {
 public:
  explicit UnitType(Unit unit) : unit_(unit) { attributes_.typekind = TKIND_ALIAS; }

  HRESULT GetTypeAttr(TYPEATTR** attributes) override {
    *attributes = &attributes_;
    return S_OK;
  }
  HRESULT GetContainingTypeLib(ITypeLib** library, UINT* index) override {
    static UnitLibrary units;
    *library = &units;
    *index = static_cast<UINT>(unit_);
    return S_OK;
  }

  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }
  HRESULT GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  HRESULT GetFuncDesc(UINT, FUNCDESC**) override { return E_NOTIMPL; }
  HRESULT GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
  HRESULT GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
  HRESULT GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
  HRESULT GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  HRESULT Invoke(void*, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT GetDocumentation(MEMBERID, BSTR*, BSTR*, DWORD*, BSTR*) override { return E_NOTIMPL; }
  HRESULT GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
  HRESULT GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT AddressOfMember(MEMBERID, INVOKEKIND, void**) override { return E_NOTIMPL; }
  HRESULT CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
  HRESULT GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
  void ReleaseTypeAttr(TYPEATTR*) override {}
  void ReleaseFuncDesc(FUNCDESC*) override {}
  void ReleaseVarDesc(VARDESC*) override {}

 private:
  Unit unit_;
  TYPEATTR attributes_{};
};

// What the FUNCDESC of a get declares in place of VT_R8. The values stay VT_R8.
inline TYPEDESC declaredAs(Unit unit) {
  TYPEDESC type{};
  type.vt = VT_USERDEFINED;
  type.hreftype = static_cast<HREFTYPE>(unit);
  return type;
}

// What GetRefTypeInfo answers then; null for a reference that declaredAs has not made.
inline ITypeInfo* unitType(HREFTYPE reference) {
  static std::array types = {UnitType(Unit::distance), UnitType(Unit::angle), UnitType(Unit::area)};
  return reference < types.size() ? &types[reference] : nullptr;
}
