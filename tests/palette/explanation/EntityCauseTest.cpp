#include "palette/explanation/EntityCause.h"

#include "tests/palette/Stage.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToySourceRegistry.h"

namespace velt::palette {
namespace {

using Cause = Absence::Cause;

class EntityCause : public Stage {
 protected:
  Cause cause(std::string_view name) {
    Selection selection(ids());
    host.mark();
    const Cause found = causeOf(*selection.entries()[0], name);
    EXPECT_EQ(host.balance(), "balanced");
    return found;
  }
};

class CauseInSources : public EntityCause {
 protected:
  CauseInSources() {
    wood_.displayName = L"Wood";
    source_.properties = {wood_.unknown()};
    registry_.add(L"Woods", &source_);
    addCircle(1.0);
  }

  toys::ToySourceRegistry registry_{host};
  toys::ToyPropertySource source_{host, "source"};
  toys::ToyDynamicProperty wood_{host, "wood"};
};

TEST_F(EntityCause, ANameThatTheClassDoesNotHaveIsUnknown) {
  addCircle(1.0);
  EXPECT_EQ(cause("Color"), Cause::unknown);
}

TEST_F(EntityCause, APropertyMayBeHiddenOrNotBrowsable) {
  addCircle(1.0)[4].flagged(FUNCFLAG_FHIDDEN);
  EXPECT_EQ(cause("radius"), Cause::hidden);
  entity(0).object[4].flagged(FUNCFLAG_FNONBROWSABLE);
  EXPECT_EQ(cause("Radius"), Cause::hidden);
}

TEST_F(EntityCause, APropertyIsShownByTheFlagOneAlone) {
  addCircle(1.0)[4].shown(-1);
  EXPECT_EQ(cause("Radius"), Cause::notShown);
}

TEST_F(EntityCause, APropertyIsFoundByItsLabelToo) {
  addCircle(1.0)[4].labelled(L"Half the width").shown(0);
  EXPECT_EQ(cause("half the width"), Cause::notShown);
}

TEST_F(EntityCause, WhatGivesNoValueIsNotReadable) {
  toys::ToyObject& circle = addCircle(1.0);
  circle.writeOnly(8, L"Password");
  circle.method(9, L"Explode");
  EXPECT_EQ(cause("Password"), Cause::notReadable);
  EXPECT_EQ(cause("Explode"), Cause::notReadable);
}

TEST_F(EntityCause, AnObjectWithoutTypeInformationTellsNothing) {
  addCircle(1.0);
  host.on("GetTypeInfo(").fail();
  EXPECT_EQ(cause("Radius"), Cause::unknown);
}

TEST_F(CauseInSources, APropertyThatItsSourceDisabledIsNamed) {
  wood_.enabled = BOOL{0};
  EXPECT_EQ(cause("wood"), Cause::disabled);
  EXPECT_EQ(cause("Stone"), Cause::unknown);
}

TEST_F(CauseInSources, SoIsOneOfTheOlderGeneration) {
  wood_.withhold(IID_IDynamicProperty2);
  wood_.enabled = BOOL{-1};
  EXPECT_EQ(cause("Wood"), Cause::disabled);
}

TEST_F(CauseInSources, ASourceThatFailsMayHaveHadTheProperty) {
  host.on("GetProperties(").fail();
  EXPECT_EQ(cause("Stone"), Cause::sourceFailed);
}

TEST_F(CauseInSources, SoMayOneThatThrows) {
  host.on("GetProperties(").raise(L"no connection");
  EXPECT_EQ(cause("Stone"), Cause::sourceFailed);
}

TEST_F(CauseInSources, SoMayOneThatIsMissing) {
  registry_.add(L"Gone", nullptr);
  EXPECT_EQ(cause("Stone"), Cause::sourceFailed);
}

TEST_F(CauseInSources, ASourceWithoutPropertiesForTheEntityHasNotFailed) {
  source_.answersEmpty = true;
  EXPECT_EQ(cause("Stone"), Cause::unknown);
}

}  // namespace
}  // namespace velt::palette
