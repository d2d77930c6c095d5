#include "tests/hostcheck/Fakes.h"
#include "tests/hostcheck/Stage.h"

namespace velt::hostcheck {
namespace {

using namespace velt::tests;
using namespace velt::toys;

using Lists = Stage;

TEST_F(Lists, AreFoundWhenTextsAndCookiesOfChoicesDisagree) {
  LoseCookies object;
  const velt::hostcheck::Property property{L"Material", material, VT_I4, true};
  EXPECT_EQ(foundBy([&](auto& findings) { velt::hostcheck::checkChoices(findings, object, property); }),
            Names{"choice-lists"});
}

TEST_F(Lists, AreFoundWhenTheyAreLentAndNotHandedOver) {
  LendsChoices choices;
  const velt::hostcheck::Property listed{L"Material", material, VT_I4, true};
  EXPECT_EQ(foundBy([&](auto& findings) { velt::hostcheck::checkChoices(findings, choices, listed); }),
            Names{"list-ownership"});
  LendsElements elements;
  const velt::hostcheck::Property point{L"Start", start, VT_VARIANT, true};
  EXPECT_EQ(foundBy([&](auto& findings) { velt::hostcheck::checkElements(findings, elements, point); }),
            Names{"list-ownership"});
}

TEST_F(Lists, AreFoundWhenAChoiceHasNoValue) {
  part[material].choices[1].result = E_FAIL;
  EXPECT_EQ(found(), Names{"choice-values"});
}

TEST_F(Lists, MayLeaveTheValuesOfChoicesToTheirPlaces) {
  for (ToyChoice& choice : part[material].choices)
    choice.result = E_NOTIMPL;
  EXPECT_EQ(found(), Names{});
}

TEST_F(Lists, AreFoundWhenAChoiceIsAReal) {
  part[material].choices[1].value = ToyValue(r8(3.6));
  EXPECT_EQ(found(), Names{"choice-types"});
}

TEST_F(Lists, AreFoundWhenTextsAndCookiesOfElementsDisagree) {
  part[start].extraNames = {L"Z"};
  EXPECT_EQ(found(), Names{"element-lists"});
}

TEST_F(Lists, AreFoundWhenAnElementHasNoValue) {
  host.on("GetElementValue(7, cookie 2").fail();
  EXPECT_EQ(found(), Names{"element-values"});
}

TEST_F(Lists, AreFoundWhenTwoElementsHaveOneLabel) {
  part[start].elements[1].name = L"X";
  EXPECT_EQ(found(), Names{"element-labels"});
}

TEST_F(Lists, AreFoundWhenAnElementHasAnEmptyLabel) {
  part[start].elements[1].name = L"";
  EXPECT_EQ(found(), Names{"element-labels"});
}

TEST_F(Lists, MayHaveElementsOfOneLabelInSeveralGroups) {
  part[start].elements[1].name = L"X";
  part[start].grouped(1, 2);
  EXPECT_EQ(found(), Names{});
}

TEST_F(Lists, AreFoundWhenTwoElementsHaveOneCookie) {
  part[start].elements[1].cookie = 1;
  EXPECT_EQ(found(), Names{"element-cookies"});
}

TEST_F(Lists, AreFoundWhenCookiesChange) {
  host.on("GetElementStrings(7)").nth(2).first([this] { part[start].elements[1].cookie = 9; });
  EXPECT_EQ(found(), Names{"element-cookies"});
}

TEST_F(Lists, AreGivenBack) {
  host.mark();
  found();
  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::hostcheck
