#include "host/com/Cancellation.h"
#include "tests/palette/Stage.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToySourceRegistry.h"

namespace velt::palette {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using toys::r8;
using enum Fate;

class Writing : public Stage {
 protected:
  // Entities of which each has another radius; all take 7.
  void addCircles(int count) {
    for (int i = 0; i < count; ++i)
      takes(addCircle(i + 1.0), 4, r8(7));
  }
  Report write(const WriteOptions& options = {}) {
    Selection selection(ids());
    selection.query();
    return selection.write(selection.row("Radius"), Value::ofReal(7), options);
  }
};

TEST_F(Writing, TellsOfEachEntityWhetherItChanged) {
  addCircles(2);
  takes(addCircle(7), 4, r8(7));
  host.mark();
  const Report report = write();
  EXPECT_THAT(report.fates, ElementsAre(changed, changed, unchanged));
  EXPECT_THAT(report.reasons, IsEmpty());
  EXPECT_EQ(report.message, "");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Writing, ATextThatAnEntityShowsAlreadyIsNotWrittenToIt) {
  addCircle(7.00001);
  takes(addCircle(3), 4, r8(7));
  addCircle(7);
  Selection selection(ids());
  selection.query();
  const Report report = selection.writeText(selection.row("Radius"), "7.0000");
  EXPECT_THAT(report.fates, ElementsAre(unchanged, changed, unchanged));
  EXPECT_EQ(report.rounded, 1U) << "the first has another number";
}

TEST_F(Writing, ATextWithOtherDigitsThanTheShownIsWritten) {
  takes(addCircle(7.00001), 4, r8(7));
  Selection selection(ids());
  selection.query();
  EXPECT_THAT(selection.writeText(selection.row("Radius"), "7").fates, ElementsAre(changed));
}

TEST_F(Writing, APreciseStyleWritesWhereRoundingHidesTheDifference) {
  takes(addCircle(7.00001), 4, r8(7));
  Selection selection(ids());
  selection.query();
  WriteOptions options;
  options.style.isPrecise = true;
  EXPECT_THAT(selection.writeText(selection.row("Radius"), "7.0000", options).fates, ElementsAre(changed));
}

TEST_F(Writing, TheMarkOfDifferentValuesWrittenBackLeavesThemAll) {
  addCircles(2);
  Selection selection(ids());
  selection.query();
  EXPECT_THAT(selection.writeText(selection.row("Radius"), variesText).fates,
              ElementsAre(unchanged, unchanged));
}

TEST_F(Writing, ATextThatMeansNothingIsWrittenToNobody) {
  addCircles(2);
  Selection selection(ids());
  selection.query();
  EXPECT_THROW(selection.writeText(selection.row("Radius"), "two"), Error);
}

TEST_F(Writing, EachEntityGetsItsOwnValue) {
  takes(addCircle(1), 4, r8(10));
  addCircle(2);
  takes(addCircle(3), 4, r8(30));
  Selection selection(ids());
  selection.query();
  std::vector<std::optional<Value>> values(3);
  values[0] = Value::ofReal(10);
  values[2] = Value::ofReal(30);
  const Report report = selection.writeEach(selection.row("Radius"), values);
  EXPECT_THAT(report.fates, ElementsAre(changed, unchanged, changed));
  EXPECT_EQ(std::get<double>(selection.value(selection.row("Radius"), 2).plain()), 30);
}

TEST_F(Writing, TellsTheLockedOnesFromThoseThatCannotBeOpened) {
  addCircles(4);
  entity(1).data.layer = lockedLayer.objectId();
  entity(2).data.layer = VkDbObjectId();
  EXPECT_THAT(write().fates, ElementsAre(changed, locked, skipped, changed));
}

TEST_F(Writing, EndsAtARefusalAndHasItsReason) {
  addCircles(4);
  host.on("Invoke(4, put VT_R8 7 named -3, locale 0x807, result VT_R8) on object1").fail(E_INVALIDARG);
  host.on("Invoke(4, put VT_R8 7 named -3, locale 0x400").fail(E_INVALIDARG);
  const Report report = write();
  EXPECT_THAT(report.fates, ElementsAre(changed, refused, notReached, notReached));
  EXPECT_THAT(report.reasons, ElementsAre(std::pair(1, "the value is not allowed")));
  EXPECT_THAT(write({.keepGoing = true}).fates, ElementsAre(unchanged, refused, changed, changed));
}

TEST_F(Writing, AnEntityThatTakesTheValueWhenItIsAskedForTheReasonHasChanged) {
  toys::ToyObject& object = addCircle(3);
  host.on("Invoke(4, put VT_R8 7 named -3, locale 0x807").fail(E_INVALIDARG);
  host.on("Invoke(4, put VT_R8 7 named -3, locale 0x400").first([&] { object[4].holds(r8(7)); });
  const Report report = write();
  EXPECT_THAT(report.fates, ElementsAre(changed));
  EXPECT_THAT(report.reasons, IsEmpty());
}

TEST_F(Writing, HasTheLayersMessageOfTheLastRefusal) {
  addCircles(1);
  Selection selection(ids());
  selection.query();
  entity(0).object.dispIds.erase(L"Radius");
  host.texts[errors::message::nameNotFound] = L"no %s";
  EXPECT_EQ(selection.write(selection.rows()[0], Value::ofReal(7)).message, "no Radius");
}

TEST_F(Writing, WritesTheElementOfTheRow) {
  toys::ToyObject& object = add();
  object.property(5, L"Start")
      .returns(VT_VARIANT)
      .element(1, L"X", r8(1))
      .element(2, L"Y", r8(2))
      .editable(1);
  Selection selection(ids());
  ASSERT_EQ(selection.query().size(), 2U);
  host.log.clear();
  selection.write(selection.rows()[1], Value::ofReal(7));
  EXPECT_THAT(host.log.only({"SetElementValue"}),
              ElementsAre("SetElementValue(5, cookie 2, VT_R8 7) on object0"));
}

TEST_F(Writing, TellsHowFarItIsAndEndsWhenToldSo) {
  takes(addCircle(1), 4, r8(7));
  Selection selection(std::vector<VkDbObjectId>(2500, ids()[0]));
  const Row row = selection.query()[0];
  std::vector<std::size_t> told;
  const auto goOn = [&](std::size_t done, std::size_t total) {
    EXPECT_EQ(total, 2500U);
    told.push_back(done);
    return true;
  };
  const Report whole = selection.write(row, Value::ofReal(7), {.progress = goOn});
  EXPECT_THAT(told, ElementsAre(1000, 2000, 2500));
  EXPECT_EQ(whole.count(notReached), 0U);

  const auto stopAt2000 = [](std::size_t done, std::size_t) { return done < 2000; };
  const Report cut = selection.write(row, Value::ofReal(7), {.progress = stopAt2000});
  EXPECT_TRUE(cut.isCancelled);
  EXPECT_FALSE(whole.isCancelled);
  EXPECT_EQ(cut.count(notReached), 500U);
  EXPECT_EQ(cut.fates[1999], unchanged);
  EXPECT_EQ(cut.fates[2000], notReached);
}

TEST_F(Writing, AValueThatTheHostTookAndTheEntityDidNotIsRefused) {
  addCircle(1);
  const Report report = write();
  EXPECT_THAT(report.fates, ElementsAre(refused));
  EXPECT_EQ(report.reasons.at(0), "the entity kept the value that it had");
}

TEST_F(Writing, AHostThatThrowsDoesNotHideWhatBecameOfTheOthers) {
  addCircles(2);
  Selection selection(ids());
  selection.query();
  host.on("Invoke(4, get, locale 0x400, result VT_EMPTY) on object0").raise(L"no connection");
  EXPECT_THAT(selection.write(selection.rows()[0], Value::ofReal(7)).fates, ElementsAre(unchanged, changed));
}

TEST_F(Writing, EndsWhereTheHostCancelsAndTellsWhatWasWritten) {
  addCircles(4);
  host.on("Invoke(4, put VT_R8 7 named -3, locale 0x807, result VT_R8) on object2").raise(cancelledText);
  const Report report = write({.keepGoing = true});
  EXPECT_TRUE(report.isCancelled);
  EXPECT_THAT(report.fates, ElementsAre(changed, changed, notReached, notReached));
  EXPECT_THAT(report.reasons, IsEmpty()) << "it is not a refusal";
  EXPECT_EQ(report.message, "");
}

TEST_F(Writing, CancelledBeforeTheFirstEntityItReachesNone) {
  addCircles(2);
  host.on("Invoke(4, get, locale 0x400, result VT_EMPTY) on object1").raise(cancelledText);
  const Report report = write();
  EXPECT_TRUE(report.isCancelled);
  EXPECT_THAT(report.fates, ElementsAre(notReached, notReached));
  EXPECT_THAT(host.log.only({"Invoke(4, put"}), IsEmpty());
}

TEST_F(Writing, CancelledWhileAnEntityIsReadBackItTellsWhatBecameOfAllThatWereWritten) {
  addCircles(3);
  Selection selection(ids());
  selection.query();
  host.on("Invoke(4, get, locale 0x400, result VT_EMPTY) on object0").nth(2).raise(cancelledText);
  const Report report = selection.write(selection.row("Radius"), Value::ofReal(7));
  EXPECT_TRUE(report.isCancelled);
  EXPECT_THAT(report.fates, ElementsAre(changed, changed, changed)) << "one call wrote them all";
}

TEST_F(Writing, CancelledWhileAnEntityIsOpenedItCountsTheOnesBeforeAsWritten) {
  addCircles(3);
  host.on("vkdbOpenObject(").nth(2).raise(cancelledText);
  const Report report = write();
  EXPECT_TRUE(report.isCancelled);
  EXPECT_THAT(report.fates, ElementsAre(changed, notReached, notReached));
}

TEST_F(Writing, CancelledWhileTheReasonOfARefusalIsAskedForItHasTheReason) {
  addCircles(2);
  host.on("Invoke(4, put VT_R8 7").fail(E_INVALIDARG);
  host.on("Invoke(4, put VT_R8 7 named -3, locale 0x400").nth(1).raise(cancelledText);
  const Report report = write({.keepGoing = true});
  EXPECT_TRUE(report.isCancelled);
  EXPECT_THAT(report.fates, ElementsAre(refused, notReached));
  EXPECT_THAT(report.reasons, ElementsAre(std::pair(0, "the value is not allowed")));
}

// --- dynamic rows ----------------------------------------------------------------------------------------------

// References to one dynamic block with the property Wood.
class WritingDynamic : public Writing {
 protected:
  WritingDynamic() {
    for (int i = 0; i < 3; ++i) {
      addCircle(1);
      entity(static_cast<std::size_t>(i)).data.original.setFromOldId(500);
    }
    entity(2).data.layer = lockedLayer.objectId();
    for (Entity& made : entities)
      made.object.objectId = made.data.objectId();
    wood.displayName = L"Wood";
    wood.value = toys::ToyValue(toys::i4(1));
    source.properties = {wood.unknown()};
    registry.add(L"Woods", &source);
  }
  Report writeWood(std::int32_t number) {
    Selection selection(ids());
    selection.query();
    return selection.write(selection.row("Wood"), Value::ofInteger(number));
  }

  toys::ToySourceRegistry registry{host};
  toys::ToyPropertySource source{host, "source"};
  toys::ToyDynamicProperty wood{host, "wood"};
};

TEST_F(WritingDynamic, TheValuesTellWhatBecameOfEachEntity) {
  host.on("SetCurrentValueData(object0").first([&] { wood.value = toys::ToyValue(toys::i4(2)); });
  EXPECT_THAT(writeWood(2).fates, ElementsAre(changed, changed, changed));
  EXPECT_THAT(writeWood(2).fates, ElementsAre(unchanged, unchanged, unchanged));
}

TEST_F(WritingDynamic, AValueThatDoesNotComeBackIsRefusedOrLocked) {
  const Report report = writeWood(2);
  EXPECT_THAT(report.fates, ElementsAre(refused, refused, locked));
  EXPECT_EQ(report.reasons.at(1), "the property does not take the value");
  EXPECT_FALSE(report.reasons.contains(2));
}

TEST_F(WritingDynamic, EveryEntityIsWrittenOnce) {
  host.log.clear();
  writeWood(2);
  EXPECT_THAT(host.log.only({"SetCurrentValueData"}),
              ElementsAre("SetCurrentValueData(object0, VT_I4 2) on wood",
                          "SetCurrentValueData(object1, VT_I4 2) on wood",
                          "SetCurrentValueData(object2, VT_I4 2) on wood"));
}

}  // namespace
}  // namespace velt::palette
