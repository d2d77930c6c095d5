#include "propdata/merge/LayoutTable.h"

#include "tests/propdata/merge/LayoutOfAList.h"

namespace velt::propdata {
namespace {

using toys::Row;
using toys::rows;
using LayoutTableTest = LayoutOfAList;

constexpr std::uint32_t none = ListLayout::none;

const Row a(L"A");
const Row b(L"B");

TEST_F(LayoutTableTest, ALayoutIsSharedByListsThatShareTheirStrings) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  alike.last().hasChoices = true;

  EXPECT_EQ(&table.of(list), &table.of(alike));
}

TEST_F(LayoutTableTest, ALayoutIsSharedWithEarlierListsWhenOthersCameBetween) {
  list = rows({a, b});
  const TqVector<PROPINFO> other = rows({b, a});
  const ListLayout& early = table.of(list);
  EXPECT_NE(&table.of(other), &early);
  EXPECT_EQ(&table.of(list), &early);
}

TEST_F(LayoutTableTest, ALayoutIsNotSharedByListsThatDifferInAKeyOrInLength) {
  list = rows({a, b});
  TqVector<PROPINFO> others[] = {list, list, list, list, list};
  others[0].last().isEditable = !others[0].last().isEditable;
  others[1].last().categoryId += 1;
  others[2].last().categoryName = L"Another";
  others[3].setLogicalLength(1);
  others[4].append(Row(L"C"));

  for (const TqVector<PROPINFO>& other : others) {
    const ListLayout& early = table.of(list);
    const ListLayout& ofOther = table.of(other);
    EXPECT_NE(&ofOther, &early);
    EXPECT_EQ(ofOther.first(sameness(other[0])), 0u);
    const PROPINFO& last = other[other.length() - 1];
    EXPECT_EQ(ofOther.first(sameness(last)), other.length() - 1);
  }
}

TEST_F(LayoutTableTest, ALayoutStaysSharedWhenTheSameRowsAreBrokenUpIntoTheSameElements) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  ListLayout& unbroken = table.of(list);

  ListLayout& first = brokenUp(unbroken, list, 0, {L"X", L"Y"});
  EXPECT_EQ(&brokenUp(unbroken, alike, 0, {L"X", L"Y"}), &first);
  EXPECT_EQ(&brokenUp(first, alike, 1, {L"Z"}), &brokenUp(first, list, 1, {L"Z"}));
  EXPECT_EQ(unbroken.first(sameness(a)), 0u) << "lists that are still as they came go on with it";
}

TEST_F(LayoutTableTest, ALayoutIsNotSharedByListsBrokenUpIntoOtherElements) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  ListLayout& unbroken = table.of(list);
  const ListLayout& shared = brokenUp(unbroken, list, 0, {L"X", L"Y"});

  TqVector<PROPINFO> shorter(alike);
  const ListLayout& ofShorter = brokenUp(unbroken, shorter, 0, {L"X"});
  TqVector<PROPINFO> other(alike);
  ListLayout& ofOther = brokenUp(unbroken, other, 0, {L"X", L"Z"});

  EXPECT_NE(&ofShorter, &shared);
  EXPECT_NE(&ofOther, &shared);
  EXPECT_EQ(ofOther.nextCandidate(sameness(a), full(Row(a).label(L"Z").element(0)), 0), 3u);
  EXPECT_EQ(ofOther.nextCandidate(sameness(a), full(Row(a).label(L"Y").element(0)), 0), none);
  EXPECT_EQ(brokenUp(ofOther, other, 1, {L"X"}).first(sameness(b)), 4u);
}

TEST_F(LayoutTableTest, ElementsOfListsAlikeShareTheirLabels) {
  list = rows({a});
  TqVector<PROPINFO> alike(list);
  ListLayout& unbroken = table.of(list);
  brokenUp(unbroken, list, 0, {L"X"});
  brokenUp(unbroken, alike, 0, {L"X"});

  EXPECT_TRUE(list.last().displayName.sharesWith(alike.last().displayName));
}

}  // namespace
}  // namespace velt::propdata
