#include "propdata/merge/LayoutTable.h"

#include "tests/propdata/merge/LayoutOfAList.h"

namespace velt::propdata {
namespace {

using toys::Row;
using toys::rows;
using LayoutTableTest = LayoutOfAList;

TEST_F(LayoutTableTest, ALayoutIsSharedByListsThatShareTheirStrings) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  alike.last().hasChoices = true;
  alike.last().isEditable = !alike.last().isEditable;

  EXPECT_EQ(&table.of(list), &table.of(alike));
}

TEST_F(LayoutTableTest, ALayoutIsSharedByListsWithEqualStringsOfTheirOwn) {
  list = rows({a, b});
  const TqVector<PROPINFO> alike = rows({Row(L"A"), Row(L"B")});
  EXPECT_FALSE(alike[0].name.sharesWith(std::as_const(list)[0].name));

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
  TqVector<PROPINFO> others[] = {list, list, list, list};
  others[0].last().categoryId += 1;
  others[1].last().categoryName = L"Another";
  others[2].setLogicalLength(1);
  others[3].append(Row(L"C"));

  for (const TqVector<PROPINFO>& other : others) {
    const ListLayout& early = table.of(list);
    const ListLayout& ofOther = table.of(other);
    EXPECT_NE(&ofOther, &early);
    EXPECT_EQ(ofOther.nextNamed(name(other[0]), 0).place, 0u);
    const PROPINFO& last = other[other.length() - 1];
    EXPECT_EQ(ofOther.nextNamed(name(last), 0).place, other.length() - 1);
  }
}

TEST_F(LayoutTableTest, ALayoutStaysSharedWhenTheSameRowsAreBrokenUpIntoTheSameElements) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  ListLayout& unbroken = table.of(list);

  ListLayout& first = brokenUp(unbroken, list, 0, {L"X", L"Y"});
  EXPECT_EQ(&brokenUp(unbroken, alike, 0, {L"X", L"Y"}), &first);
  EXPECT_EQ(&brokenUp(first, alike, 1, {L"Z"}), &brokenUp(first, list, 1, {L"Z"}));
  EXPECT_EQ(unbroken.nextNamed(name(a), 0).place, 0u) << "lists that are still as they came go on with it";
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
  EXPECT_EQ(ofOther.nextCandidate(name(a), property(Row(a).label(L"Z").element(0)), 0).place, 3u);
  EXPECT_EQ(ofOther.nextCandidate(name(a), property(Row(a).label(L"Y").element(0)), 0).place, none);
  EXPECT_EQ(brokenUp(ofOther, other, 1, {L"X"}).nextNamed(name(b), 0).place, 4u);
}

TEST_F(LayoutTableTest, TheFirstElementsOfARowStayTheKnownOnes) {
  list = rows({a, b});
  TqVector<PROPINFO> other(list);
  ListLayout& unbroken = table.of(list);
  EXPECT_EQ(LayoutTable::known(unbroken, 0), nullptr);

  const ListLayout& first = brokenUp(unbroken, list, 0, {L"X"});
  brokenUp(unbroken, other, 0, {L"Y"});

  EXPECT_EQ(LayoutTable::known(unbroken, 0)->layout, &first);
  EXPECT_EQ(LayoutTable::known(unbroken, 0)->elements.front().displayName, CStdStr<wchar_t>(L"X"));
  EXPECT_EQ(LayoutTable::known(unbroken, 1), nullptr);
}

TEST_F(LayoutTableTest, ALayoutThatIsBuiltTellsThePropertiesThatAllItsListsHave) {
  list = toys::rows({a, b});
  layout = &table.build({list.begin(), list.length()}, {property(a), property(b)});
  EXPECT_EQ(property(b), layout->at(1).property);
  EXPECT_EQ(property(a), layout->nextCandidate(name(a), property(b), 0).property)
      << "it may break up into that";
  EXPECT_EQ(property(b), layout->nextNamed(name(b), 0).property);

  breakUp(0, {L"X", L"Y"});
  EXPECT_EQ(property(b), layout->at(1).property);
  EXPECT_EQ(property(list[3]), layout->at(3).property);
}

TEST_F(LayoutTableTest, ALayoutThatIsBuiltIsSharedWithNoList) {
  list = rows({a, b});
  const TqVector<PROPINFO>& asRows = list;

  EXPECT_NE(&table.build({asRows.begin(), asRows.length()}), &table.of(list));
}

}  // namespace
}  // namespace velt::propdata
