#include "holders/TypeInfoBlockHolder.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/support/ToyHost.h"
#include "tests/support/ToyTypeInfo.h"

namespace velt::holders {
namespace {

using Lines = toys::Lines;

TEST(TypeInfoBlockHolder, GivesItsBlockBackToTheTypeInformationThatLentIt) {
  toys::ToyHost host;
  toys::ToyTypeInfo one(host, "one");
  toys::ToyTypeInfo other(host, "other");
  host.mark();
  {
    TypeAttributesHolder attributes(*one.typeInfo());
    ASSERT_EQ(S_OK, one.typeInfo()->GetTypeAttr(attributes.put()));
    EXPECT_EQ(TKIND_DISPATCH, attributes->typekind);
    TypeAttributesHolder second(*other.typeInfo());
    ASSERT_EQ(S_OK, other.typeInfo()->GetTypeAttr(second.put()));
    second = std::move(attributes);
    EXPECT_EQ(host.log.only({"ReleaseTypeAttr"}), Lines{"ReleaseTypeAttr() on other"});
  }
  EXPECT_EQ(host.log.only({"ReleaseTypeAttr"}),
            (Lines{"ReleaseTypeAttr() on other", "ReleaseTypeAttr() on one"}));
  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::holders
