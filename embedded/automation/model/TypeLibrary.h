#pragma once

// The type library: what the automation objects publish about their members.
//
// A library holds one type information per class and one per user-defined type that a class uses, all made when the
// library is made and shared from then on. A type information lives exactly as long as its library: each reference to
// it is one to the library as well, so whoever holds either keeps both.
// Threads: a library never changes, so any thread may ask it.
// What the type informations hand out (attributes, descriptions) is task memory until it is given back to them.

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "embedded/automation/model/UserTypes.h"
#include "embedded/com/ComObject.h"
#include "host/com/TypeInfo.h"

namespace velt::automation {

// One function of a dispatch type: a property with both accessors is two of them.
struct TypeFunction {
  MEMBERID id;
  const wchar_t* name;
  std::wstring help;
  INVOKEKIND kind;
  // Of the property, or what a method gives.
  ValueType type;
  WORD flags = 0;
  // Of a method; a property's put has its own value.
  std::optional<ValueType> parameter = std::nullopt;
};

struct DispatchType {
  const wchar_t* name;
  const wchar_t* help;
  GUID id;
  // Without the seven of IUnknown and IDispatch, which come first.
  std::vector<TypeFunction> functions;
};

// The functions of IUnknown and IDispatch, which every dispatch type has before its own.
inline constexpr UINT baseFunctionCount = 7;

class TypeInfo;

class TypeLibrary final : public com::ComObject<ITypeLib> {
 public:
  // The dispatch types in this order, then the user-defined types in the order of their first use.
  TypeLibrary(const wchar_t* name, const wchar_t* help, std::vector<DispatchType> dispatchTypes);
  ~TypeLibrary() override;

  // Without a reference. Null for an index that is not there.
  [[nodiscard]] ITypeInfo* at(UINT index) const;

  UINT GetTypeInfoCount() override;
  HRESULT GetTypeInfo(UINT index, ITypeInfo** typeInfo) override;
  HRESULT GetTypeInfoType(UINT index, TYPEKIND* kind) override;
  HRESULT GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** typeInfo) override;
  HRESULT GetLibAttr(TLIBATTR** attributes) override;
  HRESULT GetTypeComp(ITypeComp** comp) override;
  // The index -1 is the library itself.
  HRESULT GetDocumentation(INT index, BSTR* name, BSTR* documentation, DWORD* helpContext,
                           BSTR* helpFile) override;
  HRESULT IsName(LPOLESTR name, ULONG hash, BOOL* isName) override;
  HRESULT FindName(LPOLESTR name, ULONG hash, ITypeInfo** typeInfos, MEMBERID* members,
                   USHORT* found) override;
  void ReleaseTLibAttr(TLIBATTR* attributes) override;

 private:
  const wchar_t* name_;
  const wchar_t* help_;
  std::vector<std::unique_ptr<TypeInfo>> types_;
};

}  // namespace velt::automation
