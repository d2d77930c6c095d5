#pragma once

// The type informations of the library: dispatch types, enumerations and aliases.

#include <string_view>
#include <unordered_map>
#include <vector>

#include "embedded/automation/model/NameIndex.h"
#include "embedded/automation/model/TypeLibrary.h"
#include "embedded/platform/Ledger.h"

namespace velt::automation {

// What they have in common. Belongs to its library and shares the library's count of references.
class TypeInfo : public ITypeInfo {
 public:
  TypeInfo(TypeLibrary& library, UINT index, const wchar_t* name, const wchar_t* help, TYPEKIND kind,
           GUID id);
  virtual ~TypeInfo() = default;
  TypeInfo(const TypeInfo&) = delete;
  TypeInfo& operator=(const TypeInfo&) = delete;

  [[nodiscard]] const wchar_t* name() const noexcept { return name_; }
  [[nodiscard]] const wchar_t* help() const noexcept { return help_; }
  [[nodiscard]] TYPEKIND kind() const noexcept { return kind_; }
  [[nodiscard]] const GUID& id() const noexcept { return id_; }
  // By which other types of the library refer to this one.
  [[nodiscard]] HREFTYPE reference() const noexcept { return index_ + 1; }
  // The id of the member of that name, in any case of the letters; nothing when there is none.
  [[nodiscard]] virtual std::optional<MEMBERID> findMemberId(std::wstring_view name) const = 0;

  HRESULT QueryInterface(REFIID iid, void** object) override;
  ULONG AddRef() override;
  ULONG Release() override;

  HRESULT GetTypeAttr(TYPEATTR** attributes) override;
  HRESULT GetTypeComp(ITypeComp** comp) override;
  HRESULT GetFuncDesc(UINT index, FUNCDESC** function) override;
  HRESULT GetVarDesc(UINT index, VARDESC** variable) override;
  HRESULT GetNames(MEMBERID member, BSTR* names, UINT maxNames, UINT* nameCount) override;
  HRESULT GetRefTypeOfImplType(UINT index, HREFTYPE* refType) override;
  HRESULT GetImplTypeFlags(UINT index, INT* flags) override;
  HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* members) override;
  HRESULT Invoke(void* instance, MEMBERID member, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception, UINT* argumentError) override;
  HRESULT GetDocumentation(MEMBERID member, BSTR* name, BSTR* documentation, DWORD* helpContext,
                           BSTR* helpFile) override;
  HRESULT GetDllEntry(MEMBERID member, INVOKEKIND kind, BSTR* dll, BSTR* name, WORD* ordinal) override;
  HRESULT GetRefTypeInfo(HREFTYPE refType, ITypeInfo** typeInfo) override;
  HRESULT AddressOfMember(MEMBERID member, INVOKEKIND kind, void** address) override;
  HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT GetMops(MEMBERID member, BSTR* mops) override;
  HRESULT GetContainingTypeLib(ITypeLib** library, UINT* index) override;
  void ReleaseTypeAttr(TYPEATTR* attributes) override;
  void ReleaseFuncDesc(FUNCDESC* function) override;
  void ReleaseVarDesc(VARDESC* variable) override;

 protected:
  struct MemberText {
    const wchar_t* name;
    const wchar_t* help;
  };

  virtual void describe(TYPEATTR& attributes) const = 0;
  // Nothing for an id that no member has.
  [[nodiscard]] virtual std::optional<MemberText> textOf(MEMBERID member) const = 0;

 private:
  TypeLibrary& library_;
  UINT index_;
  const wchar_t* name_;
  const wchar_t* help_;
  TYPEKIND kind_;
  GUID id_;
  platform::LedgerAccount& account_;
};

class DispatchTypeInfo final : public TypeInfo {
 public:
  // `referenceOf` gives the reference of a user-defined type of the library.
  template <class ReferenceOf>
  DispatchTypeInfo(TypeLibrary& library, UINT index, const DispatchType& type, ReferenceOf&& referenceOf)
      : TypeInfo(library, index, type.name, type.help, TKIND_DISPATCH, type.id) {
    for (const TypeFunction& function : type.functions) {
      add(function, typeDesc(function.type, referenceOf),
          function.parameter ? typeDesc(*function.parameter, referenceOf) : TYPEDESC{});
    }
  }

  HRESULT GetFuncDesc(UINT index, FUNCDESC** function) override;
  [[nodiscard]] std::optional<MEMBERID> findMemberId(std::wstring_view name) const override;

 protected:
  void describe(TYPEATTR& attributes) const override;
  [[nodiscard]] std::optional<MemberText> textOf(MEMBERID member) const override;

 private:
  struct Entry {
    TypeFunction function;
    TYPEDESC type;
    TYPEDESC parameter;
  };

  template <class ReferenceOf>
  static TYPEDESC typeDesc(const ValueType& type, ReferenceOf&& referenceOf) {
    TYPEDESC desc{};
    desc.vt = type.declared;
    if (type.user != nullptr) desc.hreftype = referenceOf(*type.user);
    return desc;
  }

  void add(const TypeFunction& function, TYPEDESC type, TYPEDESC parameter);

  std::vector<Entry> entries_;
  std::unordered_map<MEMBERID, std::size_t> byId_;
  NameIndex names_;
};

// An alias or an enumeration.
class UserTypeInfo final : public TypeInfo {
 public:
  UserTypeInfo(TypeLibrary& library, UINT index, const UserType& type);

  HRESULT GetVarDesc(UINT index, VARDESC** variable) override;
  [[nodiscard]] std::optional<MEMBERID> findMemberId(std::wstring_view name) const override;

 protected:
  void describe(TYPEATTR& attributes) const override;
  [[nodiscard]] std::optional<MemberText> textOf(MEMBERID member) const override;

 private:
  const UserType& type_;
};

}  // namespace velt::automation
