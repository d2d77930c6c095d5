#include <stdexcept>

#include "tests/hostcheck/Fakes.h"
#include "tests/hostcheck/Stage.h"

namespace velt::hostcheck {
namespace {

using namespace velt::tests;
using namespace velt::toys;

using Properties = Stage;

TEST_F(Properties, OfTheToyHostKeepEverything) {
  EXPECT_EQ(found(), Names{});
}

TEST_F(Properties, AreFoundWhenTheyAreShownByMinusOne) {
  part[length].shown(-1);
  EXPECT_EQ(found(), Names{"flag-shown"});
}

TEST_F(Properties, AreFoundWhenAFlagIsWrittenAsANumber) {
  WideFlags extension;
  const velt::hostcheck::Property property{L"Length", length, VT_R8, true};
  EXPECT_EQ(foundBy([&](auto& findings) {
              velt::hostcheck::checkProperty(findings, extension, *part.dispatch(), property);
            }),
            Names{"flag-one-byte"});
}

TEST_F(Properties, AreFoundWhenTheyThrowSomethingElseThanAComError) {
  host.on("ShowProperty(4)").first([] { throw std::runtime_error("lost"); });
  EXPECT_EQ(found(), Names{"exceptions"});
}

TEST_F(Properties, MayThrowAComError) {
  host.on("GetPropertyWeight").raise(L"no connection");
  host.on("GetPredefinedStrings").raise(L"no connection");
  EXPECT_EQ(found(), Names{});
}

TEST_F(Properties, AreFoundWhenALabelIsLeftByAFailingCall) {
  host.on("GetDisplayName(5)").workThenReturn(E_FAIL);
  EXPECT_EQ(found(), Names{"label"});
}

TEST_F(Properties, AreFoundWhenTheyHaveNoCategory) {
  part[length].category.reset();
  EXPECT_EQ(found(), Names{"category"});
}

TEST_F(Properties, AreFoundWhenTheirCategoryHasNoName) {
  part[length].inCategory(99);
  EXPECT_EQ(found(), Names{"category-name"});
}

TEST_F(Properties, AreFoundWhenAPredefinedCategoryHasNoName) {
  host.on("loadResourceDll").fail();
  EXPECT_EQ(found(), Names{"category-name"});
}

TEST_F(Properties, AreFoundWhenANumberCannotBeHadAndZeroIsLeft) {
  part[length].value.reset();
  EXPECT_EQ(found(), Names{"value-got"});
}

TEST_F(Properties, MayHaveATextThatCannotBeHad) {
  part[name].value.reset();
  EXPECT_EQ(found(), Names{});
}

TEST_F(Properties, AreFoundWhenAFailingGetLeavesAValue) {
  part[length].holds(i4(3));
  host.on("Invoke(4, get").workThenReturn(E_FAIL);
  EXPECT_EQ(found(), Names{"failed-outputs"});
}

TEST_F(Properties, AreFoundWhenTheirValueIsOfAnotherType) {
  part[length].holds(i4(3));
  EXPECT_EQ(found(), Names{"value-type"});
}

TEST_F(Properties, AreFoundWhenElementsAreMeantAndNobodyAnswersThem) {
  part.withhold(IID_IOPMPropertyExpander);
  EXPECT_EQ(found(), Names{"value-expander"});
}

TEST_F(Properties, MayBeVariantsWithAValueInPlaceOfElements) {
  part.withhold(IID_IOPMPropertyExpander);
  part[start].holds(r8(2));
  EXPECT_EQ(found(), Names{});
}

TEST_F(Properties, AreFoundWhenAnEmptyTextIsNull) {
  VARIANT null{};
  null.vt = VT_BSTR;
  part[name].holds(null);
  EXPECT_EQ(found(), Names{"value-text"});
}

}  // namespace
}  // namespace velt::hostcheck
