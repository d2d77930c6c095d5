#pragma once

// The type information of a toy: a table of functions, or the members of an enumeration.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/com/TypeInfo.h"
#include "tests/support/Toy.h"

namespace velt::toys {

inline BSTR newString(const std::wstring& text) {
  return SysAllocString(text.c_str());
}

class ToyTypeInfo;

struct ToyFunction {
  std::wstring name;
  MEMBERID memid = 0;
  INVOKEKIND kind = INVOKE_PROPERTYGET;
  VARTYPE returns = VT_VOID;
  WORD flags = 0;
  ToyTypeInfo* type = nullptr;  // of VT_USERDEFINED
  std::optional<std::wstring> documentation;
};

struct ToyMember {
  std::wstring name;
  VARIANT value;
  VARKIND kind = VAR_CONST;
};

class ToyTypeInfo : public Toy {
 public:
  ToyTypeInfo(ToyHost& host, std::string name, TYPEKIND kind = TKIND_DISPATCH);
  ~ToyTypeInfo() override;

  // A named user-defined type in a library of its own; its name in logs is the type's.
  static std::unique_ptr<ToyTypeInfo> named(ToyHost& host, std::wstring name, TYPEKIND kind = TKIND_ENUM);
  ToyTypeInfo& member(std::wstring memberName, VARIANT value, VARKIND memberKind = VAR_CONST);

  ITypeInfo* typeInfo() const { return as<ITypeInfo>(IID_ITypeInfo); }

  TYPEKIND kind;
  // Functions stand after the seven of every dispatch interface, which are counted but never described.
  static constexpr UINT baseFunctions = 7;
  std::vector<ToyFunction> functions;
  std::optional<WORD> functionCount;  // told instead of the true one
  std::vector<ToyMember> members;     // member ids count from 1, by position
  std::wstring typeName;              // in the containing library
  INT libraryIndex = 3;

 private:
  class TypeInfoFacet;
  class Library;
  std::unique_ptr<TypeInfoFacet> facet_;
  std::unique_ptr<Library> library_;
  std::map<HREFTYPE, ToyTypeInfo*> references_;
};

}  // namespace velt::toys
