#include "propdata/merge/RecordLists.h"

#include <gtest/gtest.h>

#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyObject.h"

namespace velt::propdata {
namespace {

using namespace velt::toys;

// Two entities with a point that expands.
class RecordListsTest : public LayerTest {
 protected:
  RecordListsTest() {
    for (ToyObject* const object : {&first, &second})
      object->property(1, L"Start").element(1, L"X", i4(10)).element(2, L"Y", i4(20));
    for (ToyObject* const object : {&first, &second, &first})
      all.push_back(
          rows({Row(L"Start").of(*object).declared(VT_VARIANT), Row(L"Known").of(*object).value(i4(3))}));
  }

  const TqVector<PROPINFO>& list(std::uint32_t k) const { return all[k]; }

  ToyObject first{host, "first"};
  ToyObject second{host, "second"};
  TqVector<TqVector<PROPINFO>> all;
};

TEST_F(RecordListsTest, ARowThatBreaksUpLosesItsNameAndItsElementsAreAppended) {
  RecordLists lists(all);
  const KeyNumber name = lists.keys().numberOf(NameKey::of(list(1)[0]));
  EXPECT_EQ(lists.layout(1).length(), 2u);

  EXPECT_EQ(lists.read(1, {0, 0}, name).elements, 2u);

  EXPECT_EQ(names(list(1)), (Lines{"", "Known", "Start", "Start"}));
  EXPECT_EQ(lists.layout(1).length(), 4u);
  EXPECT_EQ(lists.layout(1).nextNamed(name, 0).place, 2u);
  EXPECT_EQ(lists.read(1, {0, 0}, name).elements, 0u) << "it is read";
}

TEST_F(RecordListsTest, ElementsOfListsAlikeShareTheirLabels) {
  all[2] = all[1];
  RecordLists lists(all);
  const KeyNumber name = lists.keys().numberOf(NameKey::of(list(1)[0]));
  for (const std::size_t k : {std::size_t{1}, std::size_t{2}}) {
    lists.layout(k);
    EXPECT_EQ(lists.read(k, {0, 0}, name).elements, 2u);
  }

  EXPECT_TRUE(list(1)[2].displayName.sharesWith(list(2)[2].displayName));
  EXPECT_EQ(&lists.layout(1), &lists.layout(2));
}

TEST_F(RecordListsTest, AReadRowIsNotReadAgain) {
  RecordLists lists(all);

  EXPECT_EQ(lists.read(1, {1, 1}, lists.keys().numberOf(NameKey::of(list(1)[1]))).elements, 0u);
  EXPECT_EQ(host.log.lines(), Lines{});
}

TEST_F(RecordListsTest, ListsThatAreSharedAreCopiedBeforeTheFirstCall) {
  const TqVector<TqVector<PROPINFO>> before = all;
  RecordLists lists(all);
  lists.layout(1);
  lists.read(1, {0, 0}, lists.keys().numberOf(NameKey::of(list(1)[0])));

  EXPECT_EQ(names(before[1]), (Lines{"Start", "Known"}));
}

}  // namespace
}  // namespace velt::propdata
