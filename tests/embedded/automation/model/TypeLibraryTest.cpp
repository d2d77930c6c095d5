#include "embedded/automation/model/TypeLibrary.h"

#include <gtest/gtest.h>

#include "embedded/platform/Allocation.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

class TypeLibraryTest : public ToyTest {
 protected:
  [[nodiscard]] std::wstring nameOf(INT index) const {
    StringHolder name;
    EXPECT_EQ(S_OK, library.GetDocumentation(index, name.put(), nullptr, nullptr, nullptr));
    return std::wstring(name.view());
  }

  TypeLibrary& library = registry.library();
};

TEST_F(TypeLibraryTest, HoldsTheClassesAndThenTheTypesThatTheyUse) {
  ASSERT_EQ(4U, library.GetTypeInfoCount());
  EXPECT_EQ(L"VeltToy", nameOf(0));
  EXPECT_EQ(L"VeltOtherToy", nameOf(1));
  EXPECT_EQ(L"ToyEnumeration", nameOf(2));
  EXPECT_EQ(L"VELT_LAYER", nameOf(3));
  TYPEKIND kind = TKIND_MODULE;
  EXPECT_EQ(S_OK, library.GetTypeInfoType(0, &kind));
  EXPECT_EQ(TKIND_DISPATCH, kind);
  EXPECT_EQ(S_OK, library.GetTypeInfoType(2, &kind));
  EXPECT_EQ(TKIND_ENUM, kind);
  EXPECT_EQ(S_OK, library.GetTypeInfoType(3, &kind));
  EXPECT_EQ(TKIND_ALIAS, kind);
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, library.GetTypeInfoType(4, &kind));
  EXPECT_EQ(E_POINTER, library.GetTypeInfoType(0, nullptr));
}

TEST_F(TypeLibraryTest, NamesItself) {
  StringHolder name;
  StringHolder help;
  EXPECT_EQ(S_OK, library.GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr));
  EXPECT_EQ(L"Toys", name.view());
  EXPECT_FALSE(help.view().empty());
  BSTR none = nullptr;
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, library.GetDocumentation(4, &none, nullptr, nullptr, nullptr));
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, library.GetDocumentation(-2, &none, nullptr, nullptr, nullptr));
}

TEST_F(TypeLibraryTest, GivesTypeInformationByIndexAndById) {
  InterfaceHolder<ITypeInfo> byIndex;
  InterfaceHolder<ITypeInfo> byId;
  ASSERT_EQ(S_OK, library.GetTypeInfo(1, byIndex.put()));
  ASSERT_EQ(S_OK, library.GetTypeInfoOfGuid(CLSID_VeltLeader, byId.put()));
  EXPECT_EQ(byIndex.get(), byId.get());
  ITypeInfo* none = byId.get();
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, library.GetTypeInfo(4, &none));
  EXPECT_EQ(nullptr, none);
  none = byId.get();
  EXPECT_EQ(TYPE_E_ELEMENTNOTFOUND, library.GetTypeInfoOfGuid(GUID_NULL, &none)) << "aliases have no id";
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(E_POINTER, library.GetTypeInfo(0, nullptr));
  EXPECT_EQ(E_POINTER, library.GetTypeInfoOfGuid(CLSID_VeltLeader, nullptr));
}

TEST_F(TypeLibraryTest, ATypeInformationKeepsTheLibrary) {
  InterfaceHolder<ITypeInfo> kept;
  {
    const ClassRegistry shortLived(L"Short", toyClasses);
    ASSERT_EQ(S_OK, shortLived.library().GetTypeInfo(0, kept.put()));
  }
  StringHolder name;
  EXPECT_EQ(S_OK, kept->GetDocumentation(7, name.put(), nullptr, nullptr, nullptr));
  EXPECT_EQ(L"Real", name.view());
}

TEST_F(TypeLibraryTest, FindsNamesOfTypesAndMembers) {
  const auto isName = [&](std::wstring name) {
    BOOL found = 55;
    EXPECT_EQ(S_OK, library.IsName(name.data(), 0, &found));
    return found;
  };
  EXPECT_EQ(1, isName(L"velttoy"));
  EXPECT_EQ(1, isName(L"Real"));
  EXPECT_EQ(1, isName(L"Twenty"));
  EXPECT_EQ(0, isName(L"Nowhere"));

  std::wstring shared = L"Shared";
  ITypeInfo* types[3] = {nullptr, nullptr, nullptr};
  MEMBERID members[3] = {0, 0, 0};
  USHORT found = 3;
  EXPECT_EQ(S_OK, library.FindName(shared.data(), 0, types, members, &found));
  ASSERT_EQ(2, found);
  EXPECT_EQ(90, members[0]);
  EXPECT_EQ(90, members[1]);
  types[0]->Release();
  types[1]->Release();
  found = 1;
  EXPECT_EQ(S_OK, library.FindName(shared.data(), 0, types, members, &found));
  EXPECT_EQ(1, found) << "no more than there is room for";
  types[0]->Release();
  std::wstring type = L"VELT_LAYER";
  EXPECT_EQ(S_OK, library.FindName(type.data(), 0, types, members, &found));
  EXPECT_EQ(DISPID_UNKNOWN, members[0]) << "the type itself";
  types[0]->Release();

  BOOL flag = 0;
  EXPECT_EQ(E_POINTER, library.IsName(nullptr, 0, &flag));
  EXPECT_EQ(E_POINTER, library.IsName(type.data(), 0, nullptr));
  EXPECT_EQ(E_POINTER, library.FindName(nullptr, 0, types, members, &found));
  EXPECT_EQ(E_POINTER, library.FindName(type.data(), 0, nullptr, members, &found));
  EXPECT_EQ(E_POINTER, library.FindName(type.data(), 0, types, nullptr, &found));
  EXPECT_EQ(E_POINTER, library.FindName(type.data(), 0, types, members, nullptr));
}

TEST_F(TypeLibraryTest, GivesItsAttributes) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(S_OK, library.GetLibAttr(&attributes));
  EXPECT_EQ(1, attributes->wMajorVerNum);
  library.ReleaseTLibAttr(attributes);
  EXPECT_EQ(E_POINTER, library.GetLibAttr(nullptr));
  const auto fault = platform::AllocationFault::failFrom(1);
  EXPECT_EQ(E_OUTOFMEMORY, library.GetLibAttr(&attributes));
  EXPECT_EQ(nullptr, attributes);
}

TEST_F(TypeLibraryTest, HasNoCompiler) {
  ITypeComp* comp = nullptr;
  EXPECT_EQ(E_NOTIMPL, library.GetTypeComp(&comp));
  EXPECT_EQ(E_POINTER, library.GetTypeComp(nullptr));
}

}  // namespace
}  // namespace velt::automation
