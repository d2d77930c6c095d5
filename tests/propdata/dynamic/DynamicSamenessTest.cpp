#include <gtest/gtest.h>

#include "host/automation/IVeltBaseObject.h"
#include "propdata/VeltPropData.h"
#include "tests/support/LayerTest.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToySelection.h"

namespace velt::toys {
namespace {

constexpr long definition = 500;       // a dynamic block
constexpr long otherDefinition = 501;  // another one
constexpr long anonymousBlock = 600;   // what a reference of it really refers to
constexpr long otherAnonymousBlock = 601;

class DynamicSameness : public LayerTest {
 protected:
  // An entity whose automation object tells the id; what stands under it in the database is up to the test.
  ToyObject& select(long id) {
    ToyObject& object = objects.emplace_back(host, say("object", id));
    object.objectId.setFromOldId(id);
    selection.add(object, id, CLSID_VeltBlockReference);
    return object;
  }
  ToyBlockReference& reference(long id, long original, bool isEnhanced, long block) {
    ToyBlockReference& made = references.emplace_back(host, say("reference", id), id);
    made.original.setFromOldId(original);
    made.enhanced = isEnhanced;
    made.block.setFromOldId(block);
    return made;
  }
  bool answer() {
    host.mark();
    const bool same = isAllEntitiesSameDynProp(selection.entries);
    EXPECT_EQ(host.balance(), "balanced");
    for (const auto& [id, object] : host.database)
      EXPECT_EQ(object->opened, 0) << object->name();
    return same;
  }

  std::list<ToyObject> objects;
  std::list<ToyBlockReference> references;
  ToyEntity line1{host, "line1", 11};
  ToyEntity line2{host, "line2", 12};
  ToySelection selection;
};

TEST_F(DynamicSameness, ASingleEntityIsAlwaysEnough) {
  select(11);

  EXPECT_TRUE(answer());
  EXPECT_EQ(host.log.all(), Lines{}) << "nobody is asked";
}

TEST_F(DynamicSameness, ASingleEntryIsEnoughWhateverItIs) {
  selection.addNull();

  EXPECT_TRUE(answer());
}

TEST_F(DynamicSameness, TwoLinesAreNot) {
  select(11);
  select(12);

  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, AnEmptySelectionIsNot) {
  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, ASelectionOfNothingButNullEntriesIsNot) {
  selection.addNull();
  selection.addNull();

  EXPECT_FALSE(answer());
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(DynamicSameness, ReferencesToOneDynamicBlockAreTheSameWhateverTheirOwnBlocksAre) {
  reference(21, definition, true, anonymousBlock);
  reference(22, definition, true, otherAnonymousBlock);
  select(21);
  select(22);

  EXPECT_TRUE(answer());
}

TEST_F(DynamicSameness, ReferencesToDifferentDynamicBlocksAreNot) {
  reference(21, definition, true, anonymousBlock);
  reference(22, definition, true, anonymousBlock);
  reference(23, otherDefinition, true, anonymousBlock);
  for (const long id : {21L, 22L, 23L})
    select(id);

  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, ADynamicReferenceToTheDefinitionItselfCountsByItsOwnBlock) {
  reference(21, 0, true, definition);
  reference(22, definition, true, anonymousBlock);
  reference(23, 0, true, definition);
  for (const long id : {21L, 22L, 23L})
    select(id);

  EXPECT_TRUE(answer());
}

TEST_F(DynamicSameness, DynamicReferencesToDifferentDefinitionsThemselvesAreNot) {
  reference(21, 0, true, definition);
  reference(22, 0, true, otherDefinition);
  select(21);
  select(22);

  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, ReferencesToOneOrdinaryBlockAreNot) {
  reference(21, 0, false, anonymousBlock);
  reference(22, 0, false, anonymousBlock);
  select(21);
  select(22);

  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, TheOriginalCountsEvenWhenTheReferenceSaysThatItIsNotDynamic) {
  reference(21, definition, false, anonymousBlock);
  reference(22, definition, false, otherAnonymousBlock);
  select(21);
  select(22);

  EXPECT_TRUE(answer());
  EXPECT_EQ(host.log.count("vkdbIsEnhancedBlockRef"), 0);
  EXPECT_EQ(host.log.count("blockTableRecord"), 0);
}

TEST_F(DynamicSameness, AMixOfDynamicReferencesAndOtherEntitiesIsNot) {
  reference(21, definition, true, anonymousBlock);
  select(21);
  select(11);
  EXPECT_FALSE(answer());

  selection.entries.clear();
  select(11);
  select(21);
  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, WhatDoesNotOpenAsAReferenceIsAskedForNoBlock) {
  select(11);
  select(12);
  EXPECT_FALSE(answer());

  selection.entries.clear();
  for (const long id : {31L, 32L})
    select(id).withhold(IID_IVeltBaseObject);
  EXPECT_FALSE(answer());

  EXPECT_EQ(host.log.only({"vkdbGetEnhanced", "vkdbIsEnhanced", "blockTableRecord"}), Lines{});
  EXPECT_EQ(host.log.count("vkdbOpen"), 1) << "an object without an id leads to no entity";
}

TEST_F(DynamicSameness, TheDispatchOfAnEntryIsAskedForItsId) {
  reference(21, definition, true, anonymousBlock);
  reference(22, definition, true, anonymousBlock);
  ToyObject asDispatch(host, "asDispatch");
  asDispatch.objectId.setFromOldId(22);
  select(21);
  select(11);  // what the unknown says
  VeltPropData& entry = *selection.entries[1];
  entry.pDispatch->Release();
  entry.pDispatch = asDispatch.dispatch();

  EXPECT_TRUE(answer());

  EXPECT_EQ(host.log.only({"QueryInterface"}), (Lines{"QueryInterface(IVeltBaseObject) on object21",
                                                      "QueryInterface(IVeltBaseObject) on asDispatch"}));
  entry.pDispatch = nullptr;
}

TEST_F(DynamicSameness, StopsAtTheFirstEntityThatDecides) {
  reference(21, definition, true, anonymousBlock);
  reference(22, otherDefinition, true, anonymousBlock);
  select(11);
  select(21);
  EXPECT_FALSE(answer());
  EXPECT_EQ(host.log.count("GetObjectId() on object21"), 0);

  selection.entries.clear();
  host.log.clear();
  for (const long id : {21L, 22L, 12L})
    select(id);
  EXPECT_FALSE(answer());
  EXPECT_EQ(host.log.count("GetObjectId() on object22"), 1);
  EXPECT_EQ(host.log.count("GetObjectId() on object12"), 0);
}

TEST_F(DynamicSameness, NullEntriesAreSkipped) {
  reference(21, definition, true, anonymousBlock);
  reference(22, definition, true, anonymousBlock);
  selection.addNull();
  select(21);
  selection.addNull();
  select(22);
  selection.addNull();

  EXPECT_TRUE(answer());
}

TEST_F(DynamicSameness, ANullEntryBesideOneDynamicReferenceIsEnough) {
  reference(21, definition, true, anonymousBlock);
  selection.addNull();
  select(21);

  EXPECT_TRUE(answer());
}

TEST_F(DynamicSameness, ASingleLineBesideANullEntryIsNotASelectionOfOne) {
  selection.addNull();
  select(11);

  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, EachObjectIsAskedForItsEntityWhichIsOpenedForReadAndClosed) {
  reference(21, definition, true, anonymousBlock);
  reference(22, 0, true, definition);
  select(21);
  select(22);

  EXPECT_TRUE(answer());

  const Lines calls = host.log.all();
  EXPECT_EQ(calls,
            (Lines{"QueryInterface(IVeltBaseObject) on object21", "GetObjectId() on object21",
                   "Release(IVeltBaseObject) on object21", "vkdbOpenVkDbObject(21, mode 0)",
                   "vkdbGetEnhancedBlkOriginalBtrId(reference21)", "close() on reference21",
                   "QueryInterface(IVeltBaseObject) on object22", "GetObjectId() on object22",
                   "Release(IVeltBaseObject) on object22", "vkdbOpenVkDbObject(22, mode 0)",
                   "vkdbGetEnhancedBlkOriginalBtrId(reference22)", "vkdbIsEnhancedBlockRef(reference22)",
                   "blockTableRecord() on reference22", "close() on reference22"}));
}

TEST_F(DynamicSameness, AnEntityWithoutABaseObjectOrAnIdIsNotABlock) {
  reference(21, definition, true, anonymousBlock);
  reference(22, definition, true, anonymousBlock);
  select(21);
  ToyObject& second = select(22);
  ASSERT_TRUE(answer());

  second.objectId = VkDbObjectId();
  EXPECT_FALSE(answer());

  second.objectId.setFromOldId(22);
  second.withhold(IID_IVeltBaseObject);
  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, AnEntryWithoutADispatchIsNotABlock) {
  reference(21, definition, true, anonymousBlock);
  select(21);
  selection.addBare(22);

  EXPECT_FALSE(answer());
}

TEST_F(DynamicSameness, EveryFailedCallMakesTheAnswerFalse) {
  reference(21, definition, true, anonymousBlock);
  reference(22, definition, true, anonymousBlock);
  select(21);
  select(22);
  for (int n = 1;; ++n) {
    host.failCall(n);
    const bool same = answer();
    if (host.failedCall().empty()) {
      EXPECT_TRUE(same);
      EXPECT_EQ(n, 2 * 3 + 1);
      break;
    }
    EXPECT_FALSE(same) << host.failedCall();
  }
}

}  // namespace
}  // namespace velt::toys
