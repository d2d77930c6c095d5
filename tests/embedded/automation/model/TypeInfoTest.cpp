#include "embedded/automation/model/TypeInfo.h"

#include <gtest/gtest.h>

#include "embedded/platform/Allocation.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

class TypeInfoTest : public ToyTest {
 protected:
  // The functions without the base ones.
  struct Function {
    MEMBERID id;
    INVOKEKIND kind;
    VARTYPE type;
    SHORT parameters;
    WORD flags;
    friend bool operator==(const Function&, const Function&) = default;
  };

  [[nodiscard]] Function functionAt(UINT index) const {
    FUNCDESC* desc = nullptr;
    EXPECT_EQ(S_OK, info->GetFuncDesc(index, &desc));
    const Function function{desc->memid, desc->invkind, desc->elemdescFunc.tdesc.vt, desc->cParams,
                            desc->wFuncFlags};
    info->ReleaseFuncDesc(desc);
    return function;
  }
  [[nodiscard]] UINT functionCount() const {
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(S_OK, info->GetTypeAttr(&attributes));
    const UINT count = attributes->cFuncs;
    info->ReleaseTypeAttr(attributes);
    return count;
  }
  // Of the function with that id.
  [[nodiscard]] TYPEDESC typeOf(MEMBERID id, INVOKEKIND kind) const {
    for (UINT index = baseFunctionCount; index < functionCount(); ++index) {
      FUNCDESC* desc = nullptr;
      EXPECT_EQ(S_OK, info->GetFuncDesc(index, &desc));
      const bool wanted = desc->memid == id && desc->invkind == kind;
      const TYPEDESC type =
          kind == INVOKE_PROPERTYPUT ? desc->lprgelemdescParam[0].tdesc : desc->elemdescFunc.tdesc;
      info->ReleaseFuncDesc(desc);
      if (wanted) return type;
    }
    ADD_FAILURE() << "no function " << id;
    return {};
  }
  [[nodiscard]] InterfaceHolder<ITypeInfo> referred(HREFTYPE reference) const {
    InterfaceHolder<ITypeInfo> found;
    EXPECT_EQ(S_OK, info->GetRefTypeInfo(reference, found.put()));
    return found;
  }
  static std::wstring nameOf(ITypeInfo& type, MEMBERID member) {
    StringHolder name;
    EXPECT_EQ(S_OK, type.GetDocumentation(member, name.put(), nullptr, nullptr, nullptr));
    return std::wstring(name.view());
  }

  ITypeInfo* info = registry.find(CLSID_VeltTable)->typeInfo;
};

TEST_F(TypeInfoTest, TheFirstSevenFunctionsAreTheBaseOnes) {
  const wchar_t* names[] = {L"QueryInterface", L"AddRef",        L"Release", L"GetTypeInfoCount",
                            L"GetTypeInfo",    L"GetIDsOfNames", L"Invoke"};
  for (UINT index = 0; index < 7; ++index) {
    const Function function = functionAt(index);
    EXPECT_EQ(INVOKE_FUNC, function.kind);
    EXPECT_EQ(FUNCFLAG_FRESTRICTED, function.flags);
    EXPECT_EQ(names[index], nameOf(*info, function.id));
  }
}

TEST_F(TypeInfoTest, EachRowIsAGetAndAWritableOneAPutAfterIt) {
  // General rows first: Shared; then Real with its put, Choice, ...
  EXPECT_EQ((Function{90, INVOKE_PROPERTYGET, VT_R8, 0, 0}), functionAt(7));
  EXPECT_EQ((Function{7, INVOKE_PROPERTYGET, VT_R8, 0, 0}), functionAt(8));
  EXPECT_EQ((Function{7, INVOKE_PROPERTYPUT, VT_VOID, 1, 0}), functionAt(9));
  EXPECT_EQ((Function{3, INVOKE_PROPERTYGET, VT_USERDEFINED, 0, 0}), functionAt(10));
  constexpr UINT writable = 9;
  EXPECT_EQ(7 + 1 + std::size(toyRows) + writable, functionCount());
}

TEST_F(TypeInfoTest, FlagsOfARowMarkItsGetAndItsPut) {
  const auto flagsOf = [&](MEMBERID id, INVOKEKIND kind) {
    for (UINT index = 7; index < functionCount(); ++index) {
      const Function function = functionAt(index);
      if (function.id == id && function.kind == kind) return function.flags;
    }
    return WORD{0xFFFF};
  };
  EXPECT_EQ(FUNCFLAG_FHIDDEN, flagsOf(21, INVOKE_PROPERTYGET));
  EXPECT_EQ(FUNCFLAG_FHIDDEN, flagsOf(21, INVOKE_PROPERTYPUT));
  EXPECT_EQ(FUNCFLAG_FNONBROWSABLE, flagsOf(22, INVOKE_PROPERTYGET));
}

TEST_F(TypeInfoTest, APutTakesTheTypeOfItsGet) {
  EXPECT_EQ(VT_R8, typeOf(7, INVOKE_PROPERTYPUT).vt);
}

TEST_F(TypeInfoTest, BeyondTheLastFunctionThereIsNone) {
  FUNCDESC* desc = nullptr;
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetFuncDesc(functionCount(), &desc));
  EXPECT_EQ(nullptr, desc);
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetFuncDesc(0xFFFFFFFF, &desc));
  EXPECT_EQ(E_POINTER, info->GetFuncDesc(7, nullptr));
}

TEST_F(TypeInfoTest, DescribesItself) {
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(S_OK, info->GetTypeAttr(&attributes));
  EXPECT_EQ(TKIND_DISPATCH, attributes->typekind);
  EXPECT_TRUE(CLSID_VeltTable == attributes->guid);
  EXPECT_EQ(0, attributes->cVars);
  info->ReleaseTypeAttr(attributes);
  EXPECT_EQ(E_POINTER, info->GetTypeAttr(nullptr));
  EXPECT_EQ(L"VeltToy", nameOf(*info, DISPID_UNKNOWN));
}

TEST_F(TypeInfoTest, NamesAndHelpOfMembersComeFromTheRows) {
  StringHolder name;
  StringHolder help;
  StringHolder file;
  DWORD context = 55;
  EXPECT_EQ(S_OK, info->GetDocumentation(7, name.put(), help.put(), &context, file.put()));
  EXPECT_EQ(L"Real", name.view());
  EXPECT_EQ(L"Help for the real.", help.view());
  help.reset();
  EXPECT_EQ(S_OK, info->GetDocumentation(3, nullptr, help.put(), nullptr, nullptr));
  EXPECT_EQ(L"Help for the choice. Read-only: it never changes.", help.view());
  EXPECT_EQ(0U, context);
  EXPECT_FALSE(file);
  EXPECT_EQ(S_OK, info->GetDocumentation(7, nullptr, nullptr, nullptr, nullptr));
  BSTR untouched = nullptr;
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetDocumentation(4711, &untouched, nullptr, nullptr, nullptr));
}

TEST_F(TypeInfoTest, TextsAreAllGivenOrNone) {
  for (std::uint64_t n = 1; n <= 2; ++n) {
    const auto fault = platform::AllocationFault::failNth(n);
    BSTR name = nullptr;
    BSTR help = nullptr;
    EXPECT_EQ(E_OUTOFMEMORY, info->GetDocumentation(7, &name, &help, nullptr, nullptr));
    EXPECT_EQ(nullptr, name);
    EXPECT_EQ(nullptr, help);
  }
}

TEST_F(TypeInfoTest, BlocksThatFindNoMemoryAreNull) {
  const auto fault = platform::AllocationFault::failFrom(1);
  TYPEATTR* attributes = nullptr;
  FUNCDESC* function = nullptr;
  EXPECT_EQ(E_OUTOFMEMORY, info->GetTypeAttr(&attributes));
  EXPECT_EQ(E_OUTOFMEMORY, info->GetFuncDesc(7, &function));
  EXPECT_EQ(nullptr, attributes);
  EXPECT_EQ(nullptr, function);
}

TEST_F(TypeInfoTest, GivesOneNamePerMember) {
  BSTR names[2] = {nullptr, nullptr};
  UINT count = 55;
  EXPECT_EQ(S_OK, info->GetNames(7, names, 2, &count));
  EXPECT_EQ(1U, count);
  EXPECT_STREQ(L"Real", names[0]);
  SysFreeString(names[0]);
  EXPECT_EQ(S_OK, info->GetNames(7, names, 0, &count));
  EXPECT_EQ(0U, count);
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetNames(4711, names, 1, &count));
  EXPECT_EQ(E_POINTER, info->GetNames(7, nullptr, 1, &count));
  EXPECT_EQ(E_POINTER, info->GetNames(7, names, 1, nullptr));
}

TEST_F(TypeInfoTest, FindsIdsOfNamesInAnyCase) {
  wchar_t real[] = L"REAL";
  wchar_t unknown[] = L"Unknown";
  LPOLESTR name = real;
  MEMBERID id = 0;
  EXPECT_EQ(S_OK, info->GetIDsOfNames(&name, 1, &id));
  EXPECT_EQ(7, id);
  name = unknown;
  EXPECT_EQ(DISP_E_UNKNOWNNAME, info->GetIDsOfNames(&name, 1, &id));
  EXPECT_EQ(DISPID_UNKNOWN, id);
  LPOLESTR withParameters[] = {real, unknown, unknown};
  MEMBERID ids[] = {0, 0, 0};
  EXPECT_EQ(DISP_E_UNKNOWNNAME, info->GetIDsOfNames(withParameters, 3, ids));
  EXPECT_EQ(7, ids[0]);
  EXPECT_EQ(DISPID_UNKNOWN, ids[1]);
  EXPECT_EQ(DISPID_UNKNOWN, ids[2]);
  EXPECT_EQ(E_POINTER, info->GetIDsOfNames(nullptr, 1, &id));
  EXPECT_EQ(E_POINTER, info->GetIDsOfNames(&name, 1, nullptr));
  EXPECT_EQ(E_INVALIDARG, info->GetIDsOfNames(&name, 0, &id));
}

TEST_F(TypeInfoTest, InvokesOnAnInstance) {
  const Bound made = bound();
  DISPPARAMS none{};
  VariantHolder value;
  EXPECT_EQ(S_OK,
            info->Invoke(&made.dispatch(), 7, DISPATCH_PROPERTYGET, &none, value.put(), nullptr, nullptr));
  EXPECT_EQ(1.5, value.get().dblVal);
  EXPECT_EQ(E_POINTER, info->Invoke(nullptr, 7, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr));
}

TEST_F(TypeInfoTest, AnEnumerationNamesItsConstantsInOrder) {
  const TYPEDESC type = typeOf(3, INVOKE_PROPERTYGET);
  ASSERT_EQ(VT_USERDEFINED, type.vt);
  const auto enumeration = referred(type.hreftype);
  EXPECT_EQ(L"ToyEnumeration", nameOf(*enumeration.get(), DISPID_UNKNOWN));
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(S_OK, enumeration->GetTypeAttr(&attributes));
  EXPECT_EQ(TKIND_ENUM, attributes->typekind);
  ASSERT_EQ(2, attributes->cVars);
  EXPECT_EQ(0, attributes->cFuncs);
  enumeration->ReleaseTypeAttr(attributes);
  const std::pair<LONG, std::wstring> expected[] = {{10, L"Ten"}, {20, L"Twenty"}};
  for (UINT index = 0; index < 2; ++index) {
    VARDESC* variable = nullptr;
    ASSERT_EQ(S_OK, enumeration->GetVarDesc(index, &variable));
    EXPECT_EQ(VAR_CONST, variable->varkind);
    EXPECT_EQ(VT_I4, variable->lpvarValue->vt);
    EXPECT_EQ(expected[index].first, variable->lpvarValue->lVal);
    BSTR name = nullptr;
    UINT count = 0;
    EXPECT_EQ(S_OK, enumeration->GetNames(variable->memid, &name, 1, &count));
    EXPECT_EQ(expected[index].second, name);
    SysFreeString(name);
    enumeration->ReleaseVarDesc(variable);
  }
  VARDESC* none = nullptr;
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, enumeration->GetVarDesc(2, &none));
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetVarDesc(0, &none)) << "a dispatch type has no variables";
  EXPECT_EQ(E_POINTER, enumeration->GetVarDesc(0, nullptr));
  EXPECT_EQ(E_POINTER, info->GetVarDesc(0, nullptr));
  FUNCDESC* function = nullptr;
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, enumeration->GetFuncDesc(0, &function));
  EXPECT_EQ(E_POINTER, enumeration->GetFuncDesc(0, nullptr));
}

TEST_F(TypeInfoTest, AnEnumerationFindsItsConstantsByName) {
  const auto enumeration = referred(typeOf(3, INVOKE_PROPERTYGET).hreftype);
  wchar_t twenty[] = L"TWENTY";
  LPOLESTR name = twenty;
  MEMBERID id = 0;
  EXPECT_EQ(S_OK, enumeration->GetIDsOfNames(&name, 1, &id));
  EXPECT_EQ(L"Twenty", nameOf(*enumeration.get(), id));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND,
            enumeration->Invoke(info, id, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(TypeInfoTest, AnAliasNamesThePlainType) {
  const auto alias = referred(typeOf(5, INVOKE_PROPERTYGET).hreftype);
  EXPECT_EQ(L"VELT_LAYER", nameOf(*alias.get(), DISPID_UNKNOWN));
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(S_OK, alias->GetTypeAttr(&attributes));
  EXPECT_EQ(TKIND_ALIAS, attributes->typekind);
  EXPECT_EQ(VT_BSTR, attributes->tdescAlias.vt);
  EXPECT_EQ(0, attributes->cVars);
  alias->ReleaseTypeAttr(attributes);
}

TEST_F(TypeInfoTest, EveryTypeOfTheLibraryCanBeReferredTo) {
  ITypeLib* library = nullptr;
  ASSERT_EQ(S_OK, info->GetContainingTypeLib(&library, nullptr));
  const UINT count = library->GetTypeInfoCount();
  for (HREFTYPE reference = 1; reference <= count; ++reference)
    EXPECT_NE(nullptr, referred(reference).get()) << reference;
  library->Release();
}

TEST_F(TypeInfoTest, ReferencesThatNobodyGaveLeadNowhere) {
  for (const HREFTYPE reference : {HREFTYPE{0}, HREFTYPE{1000}, HREFTYPE{0xFFFFFFFF}}) {
    ITypeInfo* found = info;
    EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetRefTypeInfo(reference, &found));
    EXPECT_EQ(nullptr, found);
  }
  EXPECT_EQ(E_POINTER, info->GetRefTypeInfo(1, nullptr));
}

TEST_F(TypeInfoTest, KnowsItsPlaceInTheLibrary) {
  const auto enumeration = referred(typeOf(3, INVOKE_PROPERTYGET).hreftype);
  InterfaceHolder<ITypeLib> library;
  UINT index = 0;
  ASSERT_EQ(S_OK, enumeration->GetContainingTypeLib(library.put(), &index));
  EXPECT_EQ(&registry.library(), library.get());
  StringHolder name;
  EXPECT_EQ(S_OK, library->GetDocumentation(static_cast<INT>(index), name.put(), nullptr, nullptr, nullptr));
  EXPECT_EQ(L"ToyEnumeration", name.view());
  UINT only = 0;
  EXPECT_EQ(S_OK, info->GetContainingTypeLib(nullptr, &only));
  EXPECT_EQ(0U, only);
  EXPECT_EQ(E_POINTER, info->GetContainingTypeLib(nullptr, nullptr));
}

TEST_F(TypeInfoTest, OffersItselfAndNothingElse) {
  void* asked = nullptr;
  EXPECT_EQ(S_OK, info->QueryInterface(IID_ITypeInfo, &asked));
  EXPECT_EQ(info, asked);
  info->Release();
  EXPECT_EQ(S_OK, info->QueryInterface(IID_IUnknown, &asked));
  info->Release();
  EXPECT_EQ(E_NOINTERFACE, info->QueryInterface(IID_IDispatch, &asked));
  EXPECT_EQ(nullptr, asked);
  EXPECT_EQ(E_POINTER, info->QueryInterface(IID_ITypeInfo, nullptr));
}

TEST_F(TypeInfoTest, ReferencesAreCountedAndKeepTheLibrary) {
  info->AddRef();
  EXPECT_EQ(1, balance.now().at("type information"));
  EXPECT_EQ(1, balance.now().at("type library"));
  info->Release();
  EXPECT_EQ(0U, balance.now().size());
}

TEST_F(TypeInfoTest, WhatDoesNotApplyIsRefused) {
  ITypeComp* comp = nullptr;
  HREFTYPE reference = 0;
  INT flags = 0;
  void* address = info;
  BSTR mops = nullptr;
  EXPECT_EQ(E_NOTIMPL, info->GetTypeComp(&comp));
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetRefTypeOfImplType(0, &reference));
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetImplTypeFlags(0, &flags));
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->GetDllEntry(7, INVOKE_FUNC, nullptr, nullptr, nullptr));
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, info->AddressOfMember(7, INVOKE_FUNC, &address));
  EXPECT_EQ(nullptr, address);
  address = info;
  EXPECT_EQ(E_NOTIMPL, info->CreateInstance(nullptr, IID_IDispatch, &address));
  EXPECT_EQ(nullptr, address);
  EXPECT_EQ(E_NOTIMPL, info->GetMops(7, &mops));
  EXPECT_EQ(E_POINTER, info->GetTypeComp(nullptr));
  EXPECT_EQ(E_POINTER, info->GetRefTypeOfImplType(0, nullptr));
  EXPECT_EQ(E_POINTER, info->GetImplTypeFlags(0, nullptr));
  EXPECT_EQ(E_POINTER, info->AddressOfMember(7, INVOKE_FUNC, nullptr));
  EXPECT_EQ(E_POINTER, info->CreateInstance(nullptr, IID_IDispatch, nullptr));
  EXPECT_EQ(E_POINTER, info->GetMops(7, nullptr));
}

}  // namespace
}  // namespace velt::automation
