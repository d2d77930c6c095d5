#include "propdata/merge/EntityLists.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "propdata/merge/Cores.h"
#include "tests/propdata/merge/MergeScenario.h"
#include "tests/propdata/merge/MergeScenarioRun.h"
#include "tests/propdata/merge/ReferenceMerge.h"
#include "tests/support/LayerTest.h"
#include "tests/support/ToySelection.h"

namespace velt::tests {
namespace {

using namespace velt::toys;
using propdata::EntityLists;
using propdata::SharedRows;

// Entities of one class with a point "Start", which expands, and a text "Length".
class EntityListsTest : public LayerTest {
 protected:
  EntityListsTest() {
    for (ToyObject* const object : {&first, &second, &third}) {
      object->property(1, L"Start").element(1, L"X", toys::text(L"x")).element(2, L"Y", toys::text(L"y"));
      object->property(2, L"Length").holds(toys::text(L"long"));
    }
    list = rows({Row(L"Start").dispId(1).declared(VT_VARIANT), Row(L"Length").dispId(2).declared(VT_BSTR),
                 Row(L"Unread").dispId(3).declared(VT_I4).editable(false)});
  }

  void add(const ToyObject& object) {
    lists.add(lists.sharedRows(list), {7, toyClass(1), object.unknown(), object.dispatch()});
  }
  bool merge() { return propdata::intersect(lists, result, errorText); }
  // The numbers of all lists as they are now.
  std::vector<std::uint32_t> alike() {
    lists.noteAlike();
    std::vector<std::uint32_t> numbers;
    for (std::size_t k = 0; k < lists.count(); ++k)
      numbers.push_back(lists.alike(k));
    return numbers;
  }
  propdata::Reading read(std::size_t k, std::uint32_t place) {
    const propdata::KeyNumber name = lists.keys().numberOf(propdata::NameKey::of(std::as_const(list)[place]));
    return lists.read(k, lists.at(k, {place, place}), name);
  }
  void clearResult() {
    for (PROPINFO& row : result)
      VariantClear(&row.value);
  }

  ToyObject first{host, "first"};
  ToyObject second{host, "second"};
  ToyObject third{host, "third"};
  TqVector<PROPINFO> list;
  EntityLists lists;
  TqVector<PROPINFO> result;
};

TEST_F(EntityListsTest, WithoutAnEntityNothingIsMerged) {
  result = rows({Row(L"Old").value(i4(1))});

  EXPECT_FALSE(merge());

  EXPECT_EQ(names(result), Lines{"Old"});
}

TEST_F(EntityListsTest, EntitiesWithTheSameBlockShareTheirRows) {
  const TqVector<PROPINFO> sameBlock(list);
  const TqVector<PROPINFO> other = rows({Row(L"Start")});
  const SharedRows& shared = lists.sharedRows(list);

  EXPECT_NE(&lists.sharedRows(other), &shared);
  EXPECT_EQ(&lists.sharedRows(sameBlock), &shared);
}

TEST_F(EntityListsTest, TheRowsOfTheResultCarryTheFirstEntitysOwnFields) {
  add(first);
  lists.setEditable(0, 1, false);

  EXPECT_TRUE(merge());

  ASSERT_EQ(names(result), (Lines{"Start", "Start", "Length", "Unread"}));
  for (const PROPINFO& row : std::as_const(result)) {
    EXPECT_EQ(row.pDispatch, first.dispatch());
    EXPECT_EQ(row.clsid, toyClass(1));
    EXPECT_EQ(row.objectId.asOldId(), 7);
    EXPECT_EQ(row.isEditable, row.name.str() == L"Start") << narrow(row.name.c_str());
  }
  clearResult();
}

// More rows than a word has bits.
TEST_F(EntityListsTest, EachEntityHasItsOwnBitForEachRow) {
  TqVector<PROPINFO> many;
  for (int place = 0; place < 130; ++place)
    many.append(Row(L"A").editable(place % 3 == 0));
  SharedRows& shared = lists.sharedRows(many);
  for (int k = 0; k < 3; ++k)
    lists.add(shared, {});
  lists.setEditable(1, 63, false);
  lists.setEditable(1, 64, true);
  lists.setEditable(1, 129, false);
  lists.setEditable(2, 0, true);

  const auto isEditable = [&](std::size_t k, std::uint32_t place) {
    propdata::ListLayout::Spot spot;
    spot.row = place;
    return lists.isEditable(k, spot);
  };
  for (std::uint32_t place = 0; place < 130; ++place) {
    EXPECT_EQ(isEditable(0, place), place % 3 == 0) << place;
    const bool expected = place == 64 || (place % 3 == 0 && place != 63 && place != 129);
    EXPECT_EQ(isEditable(1, place), expected) << place;
    EXPECT_EQ(isEditable(2, place), place % 3 == 0) << place;
  }
}

TEST_F(EntityListsTest, ListsAreAlikeUntilOneIsEditableOtherwise) {
  TqVector<PROPINFO> many;
  for (int place = 0; place < 130; ++place)
    many.append(Row(L"A").editable(true));
  SharedRows& shared = lists.sharedRows(many);
  SharedRows& others = lists.sharedRows(list);
  for (int k = 0; k < 7; ++k)
    lists.add(k < 6 ? shared : others, {});
  lists.setEditable(2, 0, false);
  lists.setEditable(4, 129, false);
  lists.setEditable(5, 129, false);

  EXPECT_NE(alike()[1], alike()[2]) << "its first row";
  EXPECT_NE(alike()[3], alike()[4]) << "their last row";
  EXPECT_EQ(alike()[4], alike()[5]);
  EXPECT_NE(alike()[5], alike()[6]) << "of another class";
  // Each number has a last list, after which no other has it.
  for (std::uint32_t number = 0; number < lists.alikeCount(); ++number) {
    const std::vector<std::uint32_t> all = alike();
    const auto last = std::find(all.rbegin(), all.rend(), number);
    ASSERT_NE(last, all.rend()) << number;
    EXPECT_EQ(lists.lastOfAlike(number), static_cast<std::size_t>(all.rend() - last - 1)) << number;
  }
}

TEST_F(EntityListsTest, ListsAreAlikeWhereverTheyStand) {
  SharedRows& shared = lists.sharedRows(list);
  const TqVector<PROPINFO> others = rows({Row(L"Start")});
  SharedRows& other = lists.sharedRows(others);
  for (int k = 0; k < 5; ++k)
    lists.add(k % 2 == 0 ? shared : other, {});

  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 2, 1, 2})) << "the first is not searched in";

  EXPECT_EQ(lists.alikeCount(), 3U);
  EXPECT_EQ(lists.lastOfAlike(1), 3U);
  EXPECT_EQ(lists.lastOfAlike(2), 4U);
}

TEST_F(EntityListsTest, ListsStayAlikeThatAreBrokenUpIntoTheSame) {
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);
  const std::vector<std::uint32_t> all{0, 1, 1};
  EXPECT_EQ(alike(), all);

  EXPECT_EQ(read(1, 0).elements, 2U);
  EXPECT_EQ(read(2, 0).elements, 2U);

  EXPECT_EQ(alike(), all);
  EXPECT_EQ(lists.lastOfAlike(1), 2U);
  EXPECT_EQ(&lists.layout(1), &lists.layout(2));
  lists.clearValues();
}

TEST_F(EntityListsTest, ListsAreNoLongerAlikeOfWhichSomeAreBrokenUp) {
  ToyObject fourth{host, "fourth"};
  fourth.property(1, L"Start").element(1, L"X", toys::text(L"x")).element(2, L"Y", toys::text(L"y"));
  for (const ToyObject* const object : {&first, &second, &third, &fourth})
    add(*object);
  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 1, 1}));

  EXPECT_EQ(read(2, 0).elements, 2U);
  EXPECT_EQ(lists.alike(2), 1U) << "as long as the search goes on";
  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 2, 1}));
  EXPECT_EQ(read(1, 0).elements, 2U);
  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 1, 2})) << "alike again";
  EXPECT_EQ(lists.lastOfAlike(1), 2U);
  EXPECT_EQ(lists.lastOfAlike(2), 3U);
  lists.clearValues();
}

TEST_F(EntityListsTest, ListsAreNoLongerAlikeThatAreBrokenUpIntoOtherElements) {
  third[1].elements = {{1, L"X", toys::text(L"x")}, {2, L"Z", toys::text(L"z")}};
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);
  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 1}));

  EXPECT_EQ(read(1, 0).elements, 2U);
  EXPECT_EQ(read(2, 0).elements, 2U);

  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 2}));
  lists.clearValues();
}

// As many rows were broken up as there are lists, but all of one list.
TEST_F(EntityListsTest, AListThatIsBrokenUpTwiceCountsForItselfAlone) {
  second.property(3, L"End").element(1, L"X", toys::text(L"x"));
  list = rows({Row(L"Start").dispId(1).declared(VT_VARIANT), Row(L"End").dispId(3).declared(VT_VARIANT)});
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);
  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 1}));

  EXPECT_EQ(read(1, 0).elements, 2U);
  EXPECT_EQ(read(1, 1).elements, 1U);

  EXPECT_EQ(alike(), (std::vector<std::uint32_t>{0, 1, 2}));
  lists.clearValues();
}

TEST_F(EntityListsTest, ARowIsReadOnceAndItsValueHandedOut) {
  for (const ToyObject* const object : {&first, &second})
    add(*object);

  const propdata::Reading reading = read(1, 1);
  ASSERT_NE(reading.value, nullptr);
  EXPECT_EQ(reading.elements, 0U);
  const propdata::Reading again = read(1, 1);
  EXPECT_EQ(again.value, reading.value);
  EXPECT_EQ(host.log.count("Invoke(2, get"), 1);
  lists.clearValues();
}

// Two properties of one name, which the second and the third entity have broken up into the same, and of which the third
// may edit the other one. From where Z varies on only the name counts, which the first one's X has too.
TEST_F(EntityListsTest, ASearchBeginsAnewWhereTheRowBeginsToVary) {
  ToyObject front{host, "front"};
  for (const DISPID dispId : {1, 2, 3, 4}) {
    const wchar_t* const labels[] = {L"Q", L"X", L"X", L"Z"};
    front.property(dispId, L"Twin").element(1, labels[dispId - 1], toys::text(L"same"));
  }
  ToyObject back[] = {{host, "back 1"}, {host, "back 2"}};
  for (ToyObject& object : back) {
    object.property(1, L"Twin").element(1, L"X", toys::text(L"same"));
    object.property(2, L"Twin").element(1, L"X", toys::text(L"same")).element(2, L"Z", toys::text(L"other"));
    object.dispIds[L"Twin"] = 1;  // by its name both have as many elements
  }
  const auto twin = [](DISPID dispId) { return Row(L"Twin").dispId(dispId).declared(VT_VARIANT); };
  const TqVector<PROPINFO> ofFront = rows(
      {twin(1).editable(false), twin(2).editable(true), twin(3).editable(false), twin(4).editable(true)});
  const TqVector<PROPINFO> ofBack = rows({twin(1).editable(false), twin(2).editable(true)});
  lists.add(lists.sharedRows(ofFront), {7, toyClass(1), front.unknown(), front.dispatch()});
  for (ToyObject& object : back)
    lists.add(lists.sharedRows(ofBack), {7, toyClass(2), object.unknown(), object.dispatch()});
  lists.setEditable(2, 0, true);
  lists.setEditable(2, 1, false);

  EXPECT_TRUE(merge());

  ASSERT_EQ(result.length(), 3U) << "of Q, X, X and Z only Q is missing";
  EXPECT_EQ(toys::narrow(std::as_const(result)[2].displayName.c_str()), "Z");
  EXPECT_TRUE(std::as_const(result)[2].isVaries);
  EXPECT_EQ(&lists.layout(1), &lists.layout(2)) << "or the search would begin anew anyway";
  lists.clearValues();
  clearResult();
}

TEST_F(EntityListsTest, ARowThatVariesIsLookedForInEveryListThatIsNotAlike) {
  ToyObject fourth{host, "fourth"};
  ToyObject fifth{host, "fifth"};
  const TqVector<PROPINFO> shorter = rows({Row(L"Start").dispId(1).declared(VT_VARIANT)});
  for (ToyObject* const object : {&fourth, &fifth})
    object->property(1, L"Start").element(1, L"X", toys::text(L"x")).element(2, L"Y", toys::text(L"y"));
  second[1].elements = {{1, L"X", toys::text(L"other")}, {2, L"Y", toys::text(L"other")}};
  second[2].holds(toys::text(L"short"));
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);
  lists.add(lists.sharedRows(shorter), {7, toyClass(1), fourth.unknown(), fourth.dispatch()});
  lists.add(lists.sharedRows(shorter), {7, toyClass(1), fifth.unknown(), fifth.dispatch()});
  host.mark();

  EXPECT_TRUE(merge());

  ASSERT_EQ(names(result), (Lines{"Start", "Start"})) << "the fourth has no Length";
  EXPECT_TRUE(std::as_const(result)[0].isVaries);
  EXPECT_EQ(host.log.count("Invoke(2, get"), 2) << "varying rows are not read, so not the third entity's";
  lists.clearValues();
  clearResult();
}

// What is known of where a search begins is kept for some kinds of lists at a time.
TEST_F(EntityListsTest, AsManyKindsOfListsAsThereAreAreToldApart) {
  constexpr int count = 200;
  std::deque<ToyObject> objects;
  std::deque<TqVector<PROPINFO>> blocks;
  for (int k = 0; k < count; ++k) {
    ToyObject& object = objects.emplace_back(host, "toy");
    object.property(2, L"Length").holds(toys::text(k < count - 1 ? L"long" : L"short"));
    blocks.push_back(rows({Row(L"Length").dispId(2).declared(VT_BSTR)}));
    lists.add(lists.sharedRows(blocks.back()), {7, toyClass(1), object.unknown(), object.dispatch()});
  }

  EXPECT_TRUE(merge());

  ASSERT_EQ(names(result), Lines{"Length"});
  EXPECT_TRUE(std::as_const(result)[0].isVaries) << "the last one is short";
  EXPECT_EQ(host.log.count("Invoke(2, get"), count);
  lists.clearValues();
  clearResult();
}

TEST_F(EntityListsTest, TheRowsThatAreSharedStayAsTheyAre) {
  for (const ToyObject* const object : {&first, &second})
    add(*object);

  EXPECT_TRUE(merge());
  lists.clearValues();
  clearResult();

  EXPECT_EQ(names(list), (Lines{"Start", "Length", "Unread"}));
  for (const PROPINFO& row : std::as_const(list)) {
    EXPECT_FALSE(row.hasValue);
    EXPECT_EQ(row.pDispatch, nullptr);
    EXPECT_EQ(row.value.vt, VT_EMPTY);
  }
}

TEST_F(EntityListsTest, EveryRowOfEveryEntityIsClearedInTheOrderOfTheListsWhetherItWasReadOrNot) {
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);
  host.mark();
  EXPECT_TRUE(merge());
  host.log.clear();

  lists.clearValues();

  Lines expected(3, "VariantClear(VT_EMPTY)");  // nothing is read into the first list
  for (int entity = 1; entity < 3; ++entity) {
    for (const char* const value :
         {"VT_EMPTY", "VT_BSTR \"long\"", "VT_I4 0", "VT_BSTR \"x\"", "VT_BSTR \"y\""})
      expected.push_back(say("VariantClear(", value, ")"));
  }
  EXPECT_EQ(host.log.only({"VariantClear"}), expected);
  clearResult();
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(EntityListsTest, AnEntityThatBreaksUpIntoOtherElementsHasThemForItself) {
  second[1].elements = {{1, L"X", toys::text(L"x")}, {2, L"Other", toys::text(L"y")}};
  third[1].elements = {{1, L"X", toys::text(L"x")}};
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);
  host.mark();

  EXPECT_TRUE(merge());
  EXPECT_EQ(names(result), (Lines{"Length", "Unread"})) << "the numbers of elements differ";
  EXPECT_EQ(host.log.count("GetElementValue(1, cookie 2) on second"), 1);
  lists.clearValues();
  clearResult();

  EXPECT_EQ(host.balance(), "BSTR +2") << "the values of the first entity's elements, which were dropped";
}

TEST_F(EntityListsTest, AnElementIsNotTheOneWhoseLabelIsOneLetterLonger) {
  first[1].elements = {{1, L"X", toys::text(L"x")}, {2, L"Ys", toys::text(L"y")}};
  second[1].elements = first[1].elements;
  for (const ToyObject* const object : {&first, &second, &third})
    add(*object);

  EXPECT_TRUE(merge());
  EXPECT_EQ(names(result), (Lines{"Start", "Length", "Unread"})) << "of the elements only X is in all three";
  EXPECT_EQ(toys::narrow(result[0].displayName.c_str()), "X");
  lists.clearValues();
  clearResult();
}

// --- against the merge of records ----------------------------------------------------------------------------------

struct RecordsOutcome {
  bool answer;
  Lines result;
  std::string errorText;
  Lines calls;
  std::string balance;
};

// A scenario in which entities share the rows of a class: the lists of the world are the classes' rows, and the flags
// say whether an entity's row is as editable as its class's.
struct SharedScenario {
  Scenario scenario;
  std::vector<std::size_t> classOf;
  std::vector<bool> flips;

  bool isEditable(std::size_t k, std::uint32_t place, const PROPINFO& row) const {
    return row.isEditable != flips[(k * 7 + place) % flips.size()];
  }
};

RecordsOutcome outcomeOfEntities(const SharedScenario& shared) {
  MergeWorld world(shared.scenario);
  world.host.mark();
  EntityLists lists;
  for (std::size_t k = 0; k < shared.classOf.size(); ++k) {
    const TqVector<PROPINFO>& rowsOfClass =
        std::as_const(world.lists)[static_cast<std::uint32_t>(shared.classOf[k])];
    SharedRows& sharedRows = lists.sharedRows(rowsOfClass);
    lists.add(sharedRows, world.entry(k));
    for (std::uint32_t place = 0; place < rowsOfClass.length(); ++place)
      lists.setEditable(k, place, shared.isEditable(k, place, rowsOfClass[place]));
  }
  TqVector<PROPINFO> result = rows({Row(L"Old").value(i4(1))});
  CStdStr<wchar_t> errorText(L"as before");
  const bool answer = propdata::intersect(lists, result, errorText);
  return {answer, world.printList(std::as_const(result)), narrow(errorText.str()), world.host.log.all(),
          world.host.balance()};
}

RecordsOutcome outcomeOfRecords(const SharedScenario& shared) {
  MergeWorld world(shared.scenario);
  world.host.mark();
  std::vector<PlainList> all;
  for (std::size_t k = 0; k < shared.classOf.size(); ++k) {
    const VeltPropData entry = world.entry(k);
    PlainList& list =
        all.emplace_back(plain(std::as_const(world.lists)[static_cast<std::uint32_t>(shared.classOf[k])]));
    for (std::uint32_t place = 0; place < list.size(); ++place) {
      PROPINFO& row = list[place];
      row.isEditable = shared.isEditable(k, place, row);
      row.clsid = entry.clsid;
      row.pDispatch = entry.pDispatch;
      row.objectId.setFromOldId(entry.oldId);
    }
  }
  PlainList result = plain(rows({Row(L"Old").value(i4(1))}));
  CStdStr<wchar_t> errorText(L"as before");
  const bool answer = mergeReference(all, result, errorText);
  return {answer, world.printList(result), narrow(errorText.str()), world.host.log.all(),
          world.host.balance()};
}

SharedScenario someSharedScenario(int mostRows) {
  SharedScenario shared;
  shared.scenario = *rc::gen::resize(rc::kNominalSize, someScenario(mostRows));
  const auto entities = static_cast<int>(shared.scenario.entities.size());
  // Mostly the class of the first entity, so that there is something in common.
  for (int k = 0; k < entities; ++k)
    shared.classOf.push_back(
        static_cast<std::size_t>(*rc::gen::oneOf(rc::gen::just(0), rc::gen::inRange(0, entities))));
  shared.flips = *rc::gen::container<std::vector<bool>>(40, rarely(12));
  return shared;
}

void compareWithRecords(int mostRows, int scenarios) {
  Reached reached;
  const auto property = [&] {
    const SharedScenario shared = someSharedScenario(mostRows);
    const RecordsOutcome expected = outcomeOfRecords(shared);
    const RecordsOutcome actual = outcomeOfEntities(shared);
    RC_ASSERT(actual.answer == expected.answer);
    RC_ASSERT(actual.calls == expected.calls);
    RC_ASSERT(actual.result == expected.result);
    RC_ASSERT(actual.errorText == expected.errorText);
    RC_ASSERT(actual.balance == expected.balance);
    if (shared.classOf.size() < 2) return;
    reached.count(expected);
  };
  holdsForScenarios(property, scenarios, reached);
}

TEST(EntityLists, DoOnSmallSelectionsWhatTheNestedScansOverRecordsWouldDo) {
  compareWithRecords(5, 1500);
}

TEST(EntityLists, DoOnLongListsWhatTheNestedScansOverRecordsWouldDo) {
  compareWithRecords(20, 250);
}

}  // namespace
}  // namespace velt::tests
