#include "tests/palette/Stage.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToySourceRegistry.h"

namespace velt::palette {
namespace {

using testing::ElementsAre;

class Explanation : public Stage {
 protected:
  // A class of which one property is shown in any case: one without any cannot be read.
  toys::ToyObject& addWithArea(double radius) {
    toys::ToyObject& circle = addCircle(radius);
    circle.property(9, L"Area").returns(VT_R8).holds(toys::r8(7.0));
    return circle;
  }

  std::uint32_t lastClass = 4000;

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
  EXPECT_EQ(whyAbsent("Color").cause, Absence::Cause::unknown);
  EXPECT_THAT(whyAbsent("Color").entities, ElementsAre(0, 1)) << "of which it holds";
}

TEST_F(Explanation, WhatSomeLackIsNotCommonAndTheyAreNamed) {
  addCircle(1.0);
  add().property(9, L"Area").returns(VT_R8).holds(toys::r8(7.0));
  addCircle(2.0);
  const Absence absence = whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::notCommon);
  EXPECT_THAT(absence.entities, ElementsAre(1));
  EXPECT_EQ(absence.ofEntity, Absence::Cause::unknown);
}

TEST_F(Explanation, WhatSomeLackIsExplainedForTheFirstOfThem) {
  addWithArea(1.0);
  addWithArea(2.0)[4].shown(0);
  const Absence absence = whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::notCommon);
  EXPECT_EQ(absence.ofEntity, Absence::Cause::notShown);
}

TEST_F(Explanation, WhatHoldsForAllEntitiesIsTheCause) {
  addWithArea(1.0)[4].shown(-1);
  addWithArea(2.0)[4].shown(0);
  const Absence absence = whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::notShown);
  EXPECT_THAT(absence.entities, ElementsAre(0, 1));
}

TEST_F(Explanation, AnEntityThatCannotBeReadIsNamedWithWhatTheHostSaid) {
  addCircle(1.0);
  addCircle(2.0).dispIds.erase(L"Radius");
  Selection selection(ids());
  EXPECT_THROW(selection.query(), Error);
  const Absence absence = selection.whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::unreadable);
  EXPECT_THAT(absence.entities, ElementsAre(1));
  EXPECT_THAT(absence.message, testing::HasSubstr(toUtf8(message(1010)))) << "a name is not resolved";
}

TEST_F(Explanation, WhatAllHaveInAnotherCategoryIsDifferent) {
  addCircle(1.0);
  addCircle(2.0);
  addCircle(3.0)[4].inCategory(5, L"Measures");
  const Absence absence = whyAbsent("Radius");
  EXPECT_EQ(absence.cause, Absence::Cause::different);
  EXPECT_THAT(absence.entities, ElementsAre(2));
  EXPECT_THAT(absence.parts, ElementsAre(Absence::Part::category));
}

TEST_F(Explanation, EachPartByWhichPropertiesAreToldApartIsNamed) {
  using Part = Absence::Part;
  const auto parts = [&](const std::function<void(toys::ToyObject&)>& change) {
    entities.clear();
    addCircle(1.0)[4].editable(1);
    toys::ToyObject& other = addCircle(2.0);
    other[4].editable(1);
    change(other);
    // Each pair is of classes of its own, because lists of classes are remembered.
    for (Entity& made : entities)
      made.data.classId = toys::toyClass(++lastClass);
    const Absence absence = whyAbsent("Radius");
    EXPECT_EQ(absence.cause, Absence::Cause::different);
    return absence.parts;
  };
  EXPECT_THAT(parts([](toys::ToyObject& other) { other[4].inCategory(3, L"Measures"); }),
              ElementsAre(Part::category));
  EXPECT_THAT(parts([](toys::ToyObject& other) { other[4].editable(0); }), ElementsAre(Part::editability));
  EXPECT_THAT(parts([](toys::ToyObject& other) { other[4].choice(L"Small", toys::r8(1.0)); }),
              ElementsAre(Part::choices));
  EXPECT_THAT(parts([](toys::ToyObject& other) { other[4].returns(VT_I4).holds(toys::i4(2)); }),
              ElementsAre(Part::type));
  EXPECT_THAT(parts([](toys::ToyObject& other) {
                other.property(7, L"Size")
                    .returns(VT_R8)
                    .holds(toys::r8(2.0))
                    .labelled(L"Radius")
                    .inCategory(3, L"Geometry")
                    .editable(1);
                other[4].shown(0);
              }),
              ElementsAre(Part::name));
  EXPECT_THAT(parts([](toys::ToyObject& other) { other[4].labelled(L"RADIUS"); }), ElementsAre(Part::label));
}

TEST_F(Explanation, AnotherNumberOfElementsIsAnotherProperty) {
  const auto addPoint = [&](int elements) {
    toys::ToyProperty& point = add().property(4, L"Start").returns(VT_VARIANT).inCategory(3, L"Geometry");
    const wchar_t* const names[] = {L"Start X", L"Start Y", L"Start Z"};
    for (int i = 0; i < elements; ++i)
      point.element(static_cast<DWORD>(i), names[i], toys::r8(1.0));
  };
  addPoint(2);
  addPoint(3);
  const Absence absence = whyAbsent("Start X");
  EXPECT_EQ(absence.cause, Absence::Cause::different);
  EXPECT_THAT(absence.parts, ElementsAre(Absence::Part::elementCount));
}

TEST_F(Explanation, ElementsInGroupsAreShownOfOneEntityAtATime) {
  for (int i = 0; i < 2; ++i) {
    add()
        .property(4, L"Vertex")
        .returns(VT_VARIANT)
        .inCategory(3, L"Geometry")
        .element(0, L"Vertex X", toys::r8(1.0))
        .grouped(1, 1);
  }
  EXPECT_EQ(whyAbsent("Vertex X").cause, Absence::Cause::oneAtATime);
}

TEST_F(Explanation, EntitiesOnLockedLayersAreKnown) {
  addCircle(1.0);
  addCircle(2.0);
  entity(1).data.layer = lockedLayer.objectId();
  EXPECT_THAT(Selection(ids()).lockedEntities(), ElementsAre(1));
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
