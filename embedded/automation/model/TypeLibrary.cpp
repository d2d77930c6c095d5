#include "embedded/automation/model/TypeLibrary.h"

#include <algorithm>

#include "embedded/automation/model/Documentation.h"
#include "embedded/automation/model/TypeInfo.h"
#include "embedded/platform/Ledger.h"
#include "host/com/ComRuntime.h"

namespace velt::automation {
namespace {

// Every user-defined type that the functions mention, once, in the order of the first mention.
std::vector<const UserType*> usedTypes(const std::vector<DispatchType>& dispatchTypes) {
  std::vector<const UserType*> used;
  const auto use = [&used](const UserType* type) {
    if (type != nullptr && std::find(used.begin(), used.end(), type) == used.end()) used.push_back(type);
  };
  for (const DispatchType& type : dispatchTypes) {
    for (const TypeFunction& function : type.functions) {
      use(function.type.user);
      if (function.parameter) use(function.parameter->user);
    }
  }
  return used;
}

// The type's own name stands for the type itself.
std::optional<MEMBERID> memberNamed(const TypeInfo& type, const wchar_t* name) {
  return NameIndex::same(type.name(), name) ? DISPID_UNKNOWN : type.findMemberId(name);
}

}  // namespace

TypeLibrary::TypeLibrary(const wchar_t* name, const wchar_t* help, std::vector<DispatchType> dispatchTypes)
    : ComObject(platform::Ledger::account("type library")), name_(name), help_(help) {
  const std::vector<const UserType*> used = usedTypes(dispatchTypes);
  const auto firstUsed = static_cast<UINT>(dispatchTypes.size());
  const auto referenceOf = [&](const UserType& type) {
    const auto position = std::find(used.begin(), used.end(), &type) - used.begin();
    return firstUsed + static_cast<HREFTYPE>(position) + 1;
  };
  UINT index = 0;
  for (const DispatchType& type : dispatchTypes) {
    types_.push_back(std::make_unique<DispatchTypeInfo>(*this, index++, type, referenceOf));
  }
  for (const UserType* type : used)
    types_.push_back(std::make_unique<UserTypeInfo>(*this, index++, *type));
}

TypeLibrary::~TypeLibrary() = default;

ITypeInfo* TypeLibrary::at(UINT index) const {
  return index < types_.size() ? types_[index].get() : nullptr;
}

UINT TypeLibrary::GetTypeInfoCount() {
  return static_cast<UINT>(types_.size());
}

HRESULT TypeLibrary::GetTypeInfo(UINT index, ITypeInfo** typeInfo) {
  if (typeInfo == nullptr) return E_POINTER;
  *typeInfo = at(index);
  if (*typeInfo == nullptr) return TYPE_E_ELEMENTNOTFOUND;
  (*typeInfo)->AddRef();
  return S_OK;
}

HRESULT TypeLibrary::GetTypeInfoType(UINT index, TYPEKIND* kind) {
  if (kind == nullptr) return E_POINTER;
  if (index >= types_.size()) return TYPE_E_ELEMENTNOTFOUND;
  *kind = types_[index]->kind();
  return S_OK;
}

HRESULT TypeLibrary::GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** typeInfo) {
  if (typeInfo == nullptr) return E_POINTER;
  *typeInfo = nullptr;
  for (UINT index = 0; index < types_.size(); ++index) {
    if (types_[index]->kind() == TKIND_DISPATCH && types_[index]->id() == guid)
      return GetTypeInfo(index, typeInfo);
  }
  return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT TypeLibrary::GetLibAttr(TLIBATTR** attributes) {
  if (attributes == nullptr) return E_POINTER;
  *attributes = nullptr;
  void* memory = CoTaskMemAlloc(sizeof(TLIBATTR));
  if (memory == nullptr) return E_OUTOFMEMORY;
  *attributes = new (memory) TLIBATTR{};
  (*attributes)->wMajorVerNum = 1;
  return S_OK;
}

void TypeLibrary::ReleaseTLibAttr(TLIBATTR* attributes) {
  CoTaskMemFree(attributes);
}

HRESULT TypeLibrary::GetTypeComp(ITypeComp** comp) {
  if (comp == nullptr) return E_POINTER;
  *comp = nullptr;
  return E_NOTIMPL;
}

HRESULT TypeLibrary::GetDocumentation(INT index, BSTR* name, BSTR* documentation, DWORD* helpContext,
                                      BSTR* helpFile) {
  if (index == -1) return giveDocumentation(name_, help_, name, documentation, helpContext, helpFile);
  if (index < 0 || index >= static_cast<INT>(types_.size())) return TYPE_E_ELEMENTNOTFOUND;
  return types_[static_cast<std::size_t>(index)]->GetDocumentation(DISPID_UNKNOWN, name, documentation,
                                                                   helpContext, helpFile);
}

HRESULT TypeLibrary::IsName(LPOLESTR name, ULONG, BOOL* isName) {
  if (name == nullptr || isName == nullptr) return E_POINTER;
  const auto knows = [&](const auto& type) { return memberNamed(*type, name).has_value(); };
  *isName = std::any_of(types_.begin(), types_.end(), knows) ? 1 : 0;
  return S_OK;
}

HRESULT TypeLibrary::FindName(LPOLESTR name, ULONG, ITypeInfo** typeInfos, MEMBERID* members, USHORT* found) {
  if (name == nullptr || typeInfos == nullptr || members == nullptr || found == nullptr) return E_POINTER;
  const USHORT room = *found;
  *found = 0;
  for (UINT index = 0; index < types_.size() && *found < room; ++index) {
    const std::optional<MEMBERID> member = memberNamed(*types_[index], name);
    if (!member) continue;
    GetTypeInfo(index, &typeInfos[*found]);
    members[*found] = *member;
    ++*found;
  }
  return S_OK;
}

}  // namespace velt::automation
