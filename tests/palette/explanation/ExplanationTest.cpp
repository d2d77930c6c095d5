#include "tests/palette/Stage.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToySourceRegistry.h"

namespace velt::palette {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Explanation : public Stage {
 protected:
  Absence whyAbsent(std::string_view name) {
    Selection selection(ids());
    selection.query();
    return selection.whyAbsent(name);
  }
};

TEST_F(Explanation, AVaryingRowHasItsValuesWithTheEntitiesOfEach) {
  addCircle(1.5);
  addCircle(2.5);
  addCircle(1.5);
  Selection selection(ids());
  const std::vector<ValueGroup> groups = selection.valueGroups(selection.query()[0], {.lengthPlaces = 1});
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].value, PlainValue(1.5));
  EXPECT_EQ(groups[0].text, "1.5");
  EXPECT_THAT(groups[0].entities, ElementsAre(0, 2));
  EXPECT_EQ(groups[1].text, "2.5");
  EXPECT_THAT(groups[1].entities, ElementsAre(1));
}

TEST_F(Explanation, ValuesThatAreShownAlikeAreToldApart) {
  addCircle(1.0);
  addCircle(1.0 + 1e-15);
  Selection selection(ids());
  EXPECT_EQ(selection.valueGroups(selection.query()[0]).size(), 2U);
}

TEST_F(Explanation, ARowThatIsThereIsNotAbsent) {
  addCircle(1.0);
  EXPECT_EQ(whyAbsent("radius").cause, Absence::Cause::none);
}

TEST_F(Explanation, WhatNoEntityHasIsUnknown) {
  addCircle(1.0);
  addCircle(2.0);
  EXPECT_EQ(whyAbsent("Colour").cause, Absence::Cause::unknown);
  EXPECT_THAT(whyAbsent("Colour").entities, IsEmpty());
}

TEST_F(Explanation, WhatSomeLackIsNotCommonAndTheyAreNamed) {
  addCircle(1.0);
  add().property(9, L"Area").returns(VT_R8).holds(toys::r8(7.0));
  addCircle(2.0);
  const Absence absence = whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::notCommon);
  EXPECT_THAT(absence.entities, ElementsAre(1));
}

TEST_F(Explanation, WhatAllHaveInAnotherCategoryIsDifferent) {
  addCircle(1.0);
  addCircle(2.0);
  addCircle(3.0)[4].inCategory(5, L"Measures");
  const Absence absence = whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::different);
  EXPECT_THAT(absence.entities, ElementsAre(2));
}

TEST_F(Explanation, WhatSourcesGiveIsWithheldFromSeveralUnlessTheyAreOfOneDynamicBlock) {
  toys::ToySourceRegistry registry(host);
  toys::ToyPropertySource source(host, "source");
  toys::ToyDynamicProperty wood(host, "wood");
  wood.displayName = L"Wood";
  wood.value = toys::ToyValue(toys::i4(1));
  source.properties = {wood.unknown()};
  registry.add(L"Woods", &source);
  addCircle(1.0);
  addCircle(2.0);
  EXPECT_EQ(whyAbsent("Wood").cause, Absence::Cause::dynamicWithheld);
  for (Entity& made : entities)
    made.data.original.setFromOldId(500);
  EXPECT_EQ(whyAbsent("Wood").cause, Absence::Cause::none);
}

}  // namespace
}  // namespace velt::palette
