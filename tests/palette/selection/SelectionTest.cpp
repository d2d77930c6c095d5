#include "host/com/Cancellation.h"
#include "host/com/ComError.h"
#include "tests/palette/Stage.h"

namespace velt::palette {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using toys::Lines;

class SelectionTest : public Stage {
 protected:
  std::vector<std::string> labels(const std::vector<Row>& rows) {
    std::vector<std::string> made;
    for (const Row& row : rows)
      made.push_back(row.label());
    return made;
  }
};

TEST_F(SelectionTest, ItsRowsAreThoseThatAllEntitiesHave) {
  addCircle(1.5).property(9, L"Area").returns(VT_R8).holds(toys::r8(7.0));
  addCircle(2.5);
  host.mark();
  {
    Selection selection(ids());
    EXPECT_EQ(selection.size(), 2U);
    EXPECT_EQ(selection.entity(1), entity(1).data.objectId());
    EXPECT_THAT(selection.rows(), IsEmpty()) << "not before they are asked for";
    EXPECT_THAT(labels(selection.query()), ElementsAre("Radius"));
    EXPECT_TRUE(selection.rows()[0].isVarying());
    EXPECT_EQ(selection.rows()[0].text(), variesText);
    EXPECT_EQ(selection.rows()[0].plain(), PlainValue(1.5));
  }
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionTest, TheRowsStandInDisplayOrder) {
  toys::ToyObject& object = addCircle(1.0);
  object.property(5, L"First").returns(VT_R8).holds(toys::r8(1)).weighs(1);
  object[4].weighs(2);
  Selection selection(ids());
  EXPECT_THAT(labels(selection.query()), ElementsAre("First", "Radius"));
}

TEST_F(SelectionTest, AnEmptySelectionHasNoRowsAndNeedsNoCom) {
  host.log.clear();
  {
    Selection selection(ids());
    EXPECT_THAT(selection.query(), IsEmpty());
  }
  EXPECT_THAT(host.log.all(), IsEmpty());
}

TEST_F(SelectionTest, AValueIsFoundByItsNameInEntitiesOfOtherClasses) {
  addCircle(1.5);
  toys::ToyObject& other = add();
  other.property(4, L"Area").returns(VT_R8).holds(toys::r8(7.0)).inCategory(3, L"Geometry");
  other.property(9, L"Radius").returns(VT_R8).holds(toys::r8(2.5)).inCategory(3, L"Geometry");
  Selection selection(ids());
  selection.query();
  const std::vector<Value> values = selection.values(selection.row("Radius"));
  EXPECT_EQ(values[0].plain(), PlainValue(1.5));
  EXPECT_EQ(values[1].plain(), PlainValue(2.5));
}

TEST_F(SelectionTest, OneEntityAloneHasItsOwnRowsAndValues) {
  addCircle(1.5).property(9, L"Area").returns(VT_R8).holds(toys::r8(7.0));
  addCircle(2.5);
  host.mark();
  {
    Selection selection(ids());
    EXPECT_THAT(labels(selection.queryAlone(0)), ElementsAre("Radius", "Area"));
    EXPECT_THAT(labels(selection.queryAlone(1)), ElementsAre("Radius"));
    EXPECT_FALSE(selection.rows()[0].isVarying());
    EXPECT_EQ(selection.rows()[0].plain(), PlainValue(2.5));
    EXPECT_THAT(labels(selection.query()), ElementsAre("Radius")) << "and the selection is as it was";
    EXPECT_TRUE(selection.rows()[0].isVarying());
    EXPECT_THROW(selection.queryAlone(2), std::out_of_range);
  }
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionTest, AnotherQueryGivesBackTheValuesOfTheOneBefore) {
  add().property(4, L"Text").returns(VT_BSTR).holds(toys::text(L"one"));
  Selection selection(ids());
  selection.query();
  host.mark();
  entity(0).object[4].holds(toys::text(L"two"));
  EXPECT_EQ(selection.query()[0].text(), "two");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionTest, AnEntityThatCannotBeHadEndsTheSetUpAndEverythingIsGivenBack) {
  addCircle(1.0);
  std::vector<VkDbObjectId> two = ids();
  two.push_back(VkDbObjectId().setFromOldId(999));
  host.mark();
  host.log.clear();
  EXPECT_EQ(errorOf([&] { Selection selection(two); }),
            "the selection cannot be set up: " + toUtf8(message(errors::message::instanceCreation)));
  EXPECT_EQ(host.balance(), "balanced");
  EXPECT_EQ(host.log.count("CoUninitialize"), 1);
}

TEST_F(SelectionTest, WhereComDoesNotStartItIsNotEnded) {
  addCircle(1.0);
  host.on("CoInitialize").fail();
  host.log.clear();
  EXPECT_EQ(errorOf([&] { Selection selection(ids()); }),
            "the selection cannot be set up: " + toUtf8(message(errors::message::comInitialisation)));
  EXPECT_EQ(host.log.count("CoUninitialize"), 0);
}

TEST_F(SelectionTest, AQueryThatFailsTellsTheLayersMessageAndLeavesNoRows) {
  addCircle(1.0);
  Selection selection(ids());
  selection.query();
  getTqPROPINFOCache()->clear();
  host.on("GetTypeInfo(").fail();
  EXPECT_EQ(errorOf([&] { selection.query(); }),
            "the properties cannot be read: " + toUtf8(message(errors::message::typeInfoFailed)));
  EXPECT_THAT(selection.rows(), IsEmpty());
}

TEST_F(SelectionTest, ARowIsFoundByNameAndElseSaidToBeMissing) {
  toys::ToyObject& object = addCircle(1.0);
  object.property(5, L"X").returns(VT_R8).holds(toys::r8(1)).labelled(L"Vertex");
  object.property(6, L"Y").returns(VT_R8).holds(toys::r8(2)).labelled(L"Vertex");
  Selection selection(ids());
  selection.query();
  EXPECT_EQ(selection.row("radius").name(), "Radius");
  EXPECT_EQ(errorOf([&] { selection.row("Color"); }), "the selection has no property Color");
  EXPECT_EQ(errorOf([&] { selection.row("Vertex"); }), "2 properties have the name Vertex");
}

TEST_F(SelectionTest, EveryEntityHasItsOwnValue) {
  addCircle(1.5);
  addCircle(2.5);
  Selection selection(ids());
  const Row row = selection.query()[0];
  EXPECT_EQ(selection.value(row, 0).plain(), PlainValue(1.5));
  EXPECT_EQ(selection.value(row, 1).plain(), PlainValue(2.5));
  const std::vector<Value> all = selection.values(row);
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[1].plain(), PlainValue(2.5));
  EXPECT_THROW(selection.value(row, 2), std::out_of_range);
}

TEST_F(SelectionTest, AHostThatThrowsWhileAValueIsReadIsAnError) {
  addCircle(1.5);
  Selection selection(ids());
  const Row row = selection.query()[0];
  host.on("Invoke(4, get").raise(L"no connection");
  EXPECT_EQ(errorOf([&] { selection.value(row, 0); }), "no connection");
  EXPECT_EQ(errorOf([&] { selection.values(row); }), "no connection");
}

TEST_F(SelectionTest, MovesWithItsRows) {
  addCircle(1.5);
  toys::ToyObject& other = add();
  other.property(5, L"Length").returns(VT_BSTR).holds(toys::text(L"long"));
  const std::vector<VkDbObjectId> owned = ids();
  const std::span<const VkDbObjectId> all = owned;
  host.mark();
  {
    Selection first(all.first(1));
    first.query();
    Selection second(std::move(first));
    EXPECT_THAT(labels(second.rows()), ElementsAre("Radius"));
    Selection third(all.last(1));
    third.query();
    second = std::move(third);
    EXPECT_EQ(second.rows()[0].text(), "long");
    EXPECT_EQ(second.query()[0].text(), "long");
    EXPECT_EQ(second.entity(0), all[1]);
  }
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionTest, AnObjectThatDoesNotWantToEndDoesNotEndTheProgram) {
  addCircle(1.5);
  host.log.clear();
  { Selection selection(ids()); }
  EXPECT_EQ(host.log.count("CoUninitialize"), 1);
}

TEST_F(SelectionTest, WhatTheHostCancelsIsAnErrorOfItsOwnKind) {
  addCircle(1.5);
  addCircle(2.5);
  for (const char* const call : {"TqAutoCreateInstance(", "Editable(4)", "Invoke(4, get"}) {
    SCOPED_TRACE(call);
    host.on(call).raise(cancelledText);
    EXPECT_THROW(Selection(ids()).query(), Cancelled);
    host.on(call).first([] {});
  }
  Selection selection(ids());
  const Row row = selection.query()[0];
  host.on("Invoke(4, get").raise(cancelledText);
  EXPECT_THROW(static_cast<void>(selection.value(row, 1)), Cancelled);
}

}  // namespace
}  // namespace velt::palette
