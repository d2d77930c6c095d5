#include "embedded/automation/model/TypeInfo.h"

#include <array>
#include <cstddef>
#include <new>

#include "embedded/automation/model/Documentation.h"
#include "host/com/ComRuntime.h"

namespace velt::automation {
namespace {

constexpr MEMBERID firstEnumMember = 0x40000000;

struct BaseFunction {
  MEMBERID id;
  const wchar_t* name;
  VARTYPE type;
  SHORT parameters;
};

// clang-format off
constexpr std::array<BaseFunction, baseFunctionCount> baseFunctions = {{
    // id         name                 gives       parameters
    {0x60000000, L"QueryInterface",    VT_HRESULT, 2},
    {0x60000001, L"AddRef",            VT_UI4,     0},
    {0x60000002, L"Release",           VT_UI4,     0},
    {0x60010000, L"GetTypeInfoCount",  VT_HRESULT, 1},
    {0x60010001, L"GetTypeInfo",       VT_HRESULT, 3},
    {0x60010002, L"GetIDsOfNames",     VT_HRESULT, 5},
    {0x60010003, L"Invoke",            VT_HRESULT, 8},
}};
// clang-format on

// Nobody outside calls the base functions through a description, so their parameters are all plain pointers.
constexpr std::size_t mostParameters = 8;

struct FunctionBlock {
  FUNCDESC function;
  std::array<ELEMDESC, mostParameters> parameters;
};

struct VariableBlock {
  VARDESC variable;
  VARIANT value;
};

// Zeroed task memory; null when it is exhausted.
template <class Block>
Block* newBlock() {
  void* memory = CoTaskMemAlloc(sizeof(Block));
  return memory == nullptr ? nullptr : new (memory) Block{};
}

}  // namespace

// --- what they have in common -----------------------------------------------------------------------------------------

TypeInfo::TypeInfo(TypeLibrary& library, UINT index, const wchar_t* name, const wchar_t* help, TYPEKIND kind,
                   GUID id)
    : library_(library),
      index_(index),
      name_(name),
      help_(help),
      kind_(kind),
      id_(id),
      account_(platform::Ledger::account("type information")) {}

HRESULT TypeInfo::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!(iid == IID_IUnknown) && !(iid == IID_ITypeInfo)) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<ITypeInfo*>(this);
  return S_OK;
}

ULONG TypeInfo::AddRef() {
  account_.handOut();
  return library_.AddRef();
}

ULONG TypeInfo::Release() {
  account_.giveBack();
  return library_.Release();
}

HRESULT TypeInfo::GetTypeAttr(TYPEATTR** attributes) {
  if (attributes == nullptr) return E_POINTER;
  *attributes = newBlock<TYPEATTR>();
  if (*attributes == nullptr) return E_OUTOFMEMORY;
  TYPEATTR& block = **attributes;
  block.guid = id_;
  block.typekind = kind_;
  block.memidConstructor = block.memidDestructor = DISPID_UNKNOWN;
  block.wMajorVerNum = 1;
  describe(block);
  return S_OK;
}

HRESULT TypeInfo::GetFuncDesc(UINT, FUNCDESC** function) {
  if (function == nullptr) return E_POINTER;
  *function = nullptr;
  return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeInfo::GetVarDesc(UINT, VARDESC** variable) {
  if (variable == nullptr) return E_POINTER;
  *variable = nullptr;
  return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeInfo::GetNames(MEMBERID member, BSTR* names, UINT maxNames, UINT* nameCount) {
  if (names == nullptr || nameCount == nullptr) return E_POINTER;
  *nameCount = 0;
  const std::optional<MemberText> text = textOf(member);
  if (!text) return TYPE_E_ELEMENTNOTFOUND;
  if (maxNames == 0) return S_OK;
  const HRESULT result = giveDocumentation(text->name, text->help, names, nullptr);
  if (SUCCEEDED(result)) *nameCount = 1;
  return result;
}

HRESULT TypeInfo::GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* members) {
  if (names == nullptr || members == nullptr || (count > 0 && names[0] == nullptr)) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  const std::optional<MEMBERID> id = findMemberId(names[0]);
  members[0] = id.value_or(DISPID_UNKNOWN);
  for (UINT i = 1; i < count; ++i)
    members[i] = DISPID_UNKNOWN;  // parameters have no names
  return id && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT TypeInfo::Invoke(void* instance, MEMBERID member, WORD flags, DISPPARAMS* params, VARIANT* result,
                         EXCEPINFO* exception, UINT* argumentError) {
  if (instance == nullptr) return E_POINTER;
  if (kind_ != TKIND_DISPATCH) return DISP_E_MEMBERNOTFOUND;
  return static_cast<IDispatch*>(instance)->Invoke(member, GUID_NULL, LOCALE_USER_DEFAULT, flags, params,
                                                   result, exception, argumentError);
}

HRESULT TypeInfo::GetDocumentation(MEMBERID member, BSTR* name, BSTR* documentation, DWORD* helpContext,
                                   BSTR* helpFile) {
  const std::optional<MemberText> text = member == DISPID_UNKNOWN ? MemberText{name_, help_} : textOf(member);
  if (!text) return TYPE_E_ELEMENTNOTFOUND;
  return giveDocumentation(text->name, text->help, name, documentation, helpContext, helpFile);
}

HRESULT TypeInfo::GetRefTypeInfo(HREFTYPE refType, ITypeInfo** typeInfo) {
  if (typeInfo == nullptr) return E_POINTER;
  *typeInfo = nullptr;
  if (refType == 0 || library_.at(refType - 1) == nullptr) return TYPE_E_ELEMENTNOTFOUND;
  return library_.GetTypeInfo(refType - 1, typeInfo);
}

HRESULT TypeInfo::GetContainingTypeLib(ITypeLib** library, UINT* index) {
  if (library == nullptr && index == nullptr) return E_POINTER;
  if (library != nullptr) {
    library_.AddRef();
    *library = &library_;
  }
  if (index != nullptr) *index = index_;
  return S_OK;
}

// What has no meaning for types that inherit nothing and have neither code in a library nor instances of their own.

HRESULT TypeInfo::GetTypeComp(ITypeComp** comp) {
  if (comp == nullptr) return E_POINTER;
  *comp = nullptr;
  return E_NOTIMPL;
}

HRESULT TypeInfo::GetRefTypeOfImplType(UINT, HREFTYPE* refType) {
  return refType == nullptr ? E_POINTER : TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeInfo::GetImplTypeFlags(UINT, INT* flags) {
  return flags == nullptr ? E_POINTER : TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeInfo::GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) {
  return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeInfo::AddressOfMember(MEMBERID, INVOKEKIND, void** address) {
  if (address == nullptr) return E_POINTER;
  *address = nullptr;
  return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeInfo::CreateInstance(IUnknown*, REFIID, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return E_NOTIMPL;
}

HRESULT TypeInfo::GetMops(MEMBERID, BSTR* mops) {
  if (mops == nullptr) return E_POINTER;
  *mops = nullptr;
  return E_NOTIMPL;
}

void TypeInfo::ReleaseTypeAttr(TYPEATTR* attributes) {
  CoTaskMemFree(attributes);
}
void TypeInfo::ReleaseFuncDesc(FUNCDESC* function) {
  CoTaskMemFree(function);
}
void TypeInfo::ReleaseVarDesc(VARDESC* variable) {
  CoTaskMemFree(variable);
}

// --- dispatch types ---------------------------------------------------------------------------------------------------

void DispatchTypeInfo::add(const TypeFunction& function, TYPEDESC type, TYPEDESC parameter) {
  byId_.emplace(function.id, entries_.size());
  names_.add(function.name, entries_.size());
  entries_.push_back({function, type, parameter});
}

void DispatchTypeInfo::describe(TYPEATTR& attributes) const {
  attributes.cFuncs = static_cast<WORD>(baseFunctionCount + entries_.size());
  attributes.cbSizeVft = static_cast<WORD>(baseFunctionCount * sizeof(void*));
  attributes.cbSizeInstance = sizeof(void*);
  attributes.cbAlignment = sizeof(void*);
}

HRESULT DispatchTypeInfo::GetFuncDesc(UINT index, FUNCDESC** function) {
  if (function == nullptr) return E_POINTER;
  *function = nullptr;
  if (index >= baseFunctionCount + entries_.size()) return TYPE_E_ELEMENTNOTFOUND;
  auto* block = newBlock<FunctionBlock>();
  if (block == nullptr) return E_OUTOFMEMORY;
  FUNCDESC& desc = block->function;
  desc.funckind = FUNC_DISPATCH;
  desc.callconv = CC_CDECL;
  desc.lprgelemdescParam = block->parameters.data();
  if (index < baseFunctionCount) {
    const BaseFunction& base = baseFunctions[index];
    desc.memid = base.id;
    desc.invkind = INVOKE_FUNC;
    desc.oVft = static_cast<SHORT>(index * sizeof(void*));
    desc.cParams = base.parameters;
    desc.elemdescFunc.tdesc.vt = base.type;
    desc.wFuncFlags = FUNCFLAG_FRESTRICTED;
    for (SHORT i = 0; i < base.parameters; ++i)
      block->parameters[static_cast<std::size_t>(i)].tdesc.vt = VT_PTR;
  } else {
    const Entry& entry = entries_[index - baseFunctionCount];
    const bool put =
        entry.function.kind == INVOKE_PROPERTYPUT || entry.function.kind == INVOKE_PROPERTYPUTREF;
    desc.memid = entry.function.id;
    desc.invkind = entry.function.kind;
    desc.wFuncFlags = entry.function.flags;
    if (put) {
      desc.elemdescFunc.tdesc.vt = VT_VOID;
      block->parameters[0].tdesc = entry.type;
      desc.cParams = 1;
    } else {
      desc.elemdescFunc.tdesc = entry.type;
      block->parameters[0].tdesc = entry.parameter;
      desc.cParams = entry.function.parameter ? 1 : 0;
    }
  }
  *function = &desc;
  return S_OK;
}

std::optional<MEMBERID> DispatchTypeInfo::findMemberId(std::wstring_view name) const {
  const std::optional<std::size_t> position = names_.find(name);
  if (!position) return std::nullopt;
  return entries_[*position].function.id;
}

std::optional<TypeInfo::MemberText> DispatchTypeInfo::textOf(MEMBERID member) const {
  if (const auto found = byId_.find(member); found != byId_.end()) {
    const TypeFunction& function = entries_[found->second].function;
    return MemberText{function.name, function.help.c_str()};
  }
  for (const BaseFunction& base : baseFunctions) {
    if (base.id == member) return MemberText{base.name, L""};
  }
  return std::nullopt;
}

// --- aliases and enumerations -----------------------------------------------------------------------------------------

UserTypeInfo::UserTypeInfo(TypeLibrary& library, UINT index, const UserType& type)
    : TypeInfo(library, index, type.name, type.help, type.isEnumeration() ? TKIND_ENUM : TKIND_ALIAS,
               GUID_NULL),
      type_(type) {}

void UserTypeInfo::describe(TYPEATTR& attributes) const {
  attributes.cVars = static_cast<WORD>(type_.members.size());
  attributes.cbSizeInstance = type_.base == VT_R8 || type_.base == VT_BSTR ? 8 : 4;
  attributes.cbAlignment = static_cast<WORD>(attributes.cbSizeInstance);
  if (!type_.isEnumeration()) attributes.tdescAlias.vt = type_.base;
}

HRESULT UserTypeInfo::GetVarDesc(UINT index, VARDESC** variable) {
  if (variable == nullptr) return E_POINTER;
  *variable = nullptr;
  if (index >= type_.members.size()) return TYPE_E_ELEMENTNOTFOUND;
  auto* block = newBlock<VariableBlock>();
  if (block == nullptr) return E_OUTOFMEMORY;
  block->value.vt = VT_I4;
  block->value.lVal = type_.members[index].value;
  block->variable.memid = firstEnumMember + static_cast<MEMBERID>(index);
  block->variable.varkind = VAR_CONST;
  block->variable.lpvarValue = &block->value;
  block->variable.elemdescVar.tdesc.vt = VT_I4;
  *variable = &block->variable;
  return S_OK;
}

std::optional<MEMBERID> UserTypeInfo::findMemberId(std::wstring_view name) const {
  for (std::size_t i = 0; i < type_.members.size(); ++i) {
    if (NameIndex::same(type_.members[i].name, name)) return firstEnumMember + static_cast<MEMBERID>(i);
  }
  return std::nullopt;
}

std::optional<TypeInfo::MemberText> UserTypeInfo::textOf(MEMBERID member) const {
  const std::int64_t index = std::int64_t{member} - firstEnumMember;
  if (index < 0 || index >= static_cast<std::int64_t>(type_.members.size())) return std::nullopt;
  const EnumMember& found = type_.members[static_cast<std::size_t>(index)];
  return MemberText{found.name, found.label};
}

}  // namespace velt::automation
