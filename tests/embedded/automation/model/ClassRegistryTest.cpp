#include "embedded/automation/model/ClassRegistry.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

TEST(ClassRegistry, FindsItsClassesById) {
  const ClassRegistry registry(L"Toys", toyClasses);
  ASSERT_NE(nullptr, registry.find(CLSID_VeltTable));
  EXPECT_EQ(&toyClass, &registry.find(CLSID_VeltTable)->index.kind());
  EXPECT_EQ(&otherToyClass, &registry.find(CLSID_VeltLeader)->index.kind());
  EXPECT_EQ(nullptr, registry.find(CLSID_VeltLine));
  EXPECT_EQ(nullptr, registry.find(GUID_NULL));
}

TEST(ClassRegistry, ALibraryThatIsMadeAndEndsLeavesTheLedgerBalanced) {
  const Balance balance;
  const ClassRegistry registry(L"Toys", toyClasses);
  EXPECT_TRUE(balance.now().empty()) << "what a registry keeps itself is not handed out";
}

TEST(ClassRegistry, FurtherTypesComeAfterTheClasses) {
  const ClassRegistry registry(L"Toys", toyClasses, {ColorObject::type()});
  InterfaceHolder<ITypeInfo> info;
  ASSERT_EQ(S_OK, registry.library().GetTypeInfo(2, info.put()));
  StringHolder name;
  EXPECT_EQ(S_OK, info->GetDocumentation(DISPID_UNKNOWN, name.put(), nullptr, nullptr, nullptr));
  EXPECT_EQ(L"VeltVkCmColor", name.view());
}

TEST(ClassRegistry, TheHostsIsMadeOnce) {
  EXPECT_EQ(&ClassRegistry::ofHost(), &ClassRegistry::ofHost());
  EXPECT_NE(nullptr, ClassRegistry::ofHost().find(CLSID_VeltEntity));
  EXPECT_NE(nullptr, ClassRegistry::ofHost().find(CLSID_VeltObject));
}

}  // namespace
}  // namespace velt::automation
