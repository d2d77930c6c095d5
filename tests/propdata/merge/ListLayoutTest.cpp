#include "propdata/merge/ListLayout.h"

#include "tests/propdata/merge/LayoutOfAList.h"

namespace velt::propdata {
namespace {

using toys::Row;
using toys::rows;
using ListLayoutTest = LayoutOfAList;

TEST_F(ListLayoutTest, OfAnEmptyListLeadsNowhere) {
  build();

  EXPECT_EQ(named(a), none);
  EXPECT_EQ(candidate(a, 0), none);
}

TEST_F(ListLayoutTest, LeadsFromRowToRowWithTheKeyInTheirOrder) {
  list = rows({b, a, Row(a).label(L"another label"), b, a});
  build();

  EXPECT_EQ(named(a), 1u);
  EXPECT_EQ(named(b), 0u);
  EXPECT_EQ(candidate(a, 0), 1u);
  EXPECT_EQ(candidate(a, 1), 1u);
  EXPECT_EQ(candidate(a, 2), 2u)
      << "the label of rows as they came is not asked for: they may have to be read";
  EXPECT_EQ(candidate(a, 3), 4u);
  EXPECT_EQ(candidate(a, 5), none);
  EXPECT_EQ(candidate(b, 1), 3u);
  EXPECT_EQ(named(Row(L"C")), none);
}

TEST_F(ListLayoutTest, FindsElementsByBothKeys) {
  list = rows({a, b, a});
  build();
  breakUp(0, {L"X", L"Y", L"X"});  // places 3, 4, 5

  const Row x = Row(a).label(L"X").element(0);
  EXPECT_EQ(candidate(x, 0), 2u) << "the last row as it came is still to be read";
  EXPECT_EQ(candidate(x, 3), 3u);
  EXPECT_EQ(candidate(x, 4), 5u);
  EXPECT_EQ(candidate(Row(a).label(L"Y").element(0), 3), 4u);
  EXPECT_EQ(candidate(Row(a).label(L"Z").element(0), 3), none);
  EXPECT_EQ(candidate(a, 3), none) << "what is no element is not among the elements";
}

TEST_F(ListLayoutTest, ARowThatWasBrokenUpIsFoundUnderTheEmptyName) {
  list = rows({a, a});
  build();
  breakUp(0, {L"X"});

  EXPECT_EQ(candidate(a, 0), 1u);
  EXPECT_EQ(named(Row(L"").label(L"A")), 0u);
  EXPECT_EQ(candidate(Row(L""), 0), 0u);
  EXPECT_EQ(candidate(Row(L""), 1), none);
  EXPECT_EQ(candidate(Row(L"").inCategory(2, L"General"), 0), none);
}

TEST_F(ListLayoutTest, TheFirstRowOfAKeyMayBeAnElement) {
  list = rows({a, b});
  build();
  EXPECT_EQ(named(a), 0u);

  breakUp(0, {L"X", L"Y"});
  EXPECT_EQ(named(a), 2u);

  breakUp(1, {L"X"});
  EXPECT_EQ(named(b), 4u);
  EXPECT_EQ(named(a), 2u);
}

TEST_F(ListLayoutTest, SeveralRowsOfOneKeyMayBeBrokenUpInAnyOrder) {
  list = rows({a, a, a});
  build();
  breakUp(1, {L"X"});        // 3
  breakUp(0, {L"Y", L"X"});  // 4, 5

  EXPECT_EQ(named(a), 2u);
  EXPECT_EQ(candidate(Row(a).label(L"X").element(0), 0), 2u);
  EXPECT_EQ(candidate(Row(a).label(L"X").element(0), 3), 3u);
  EXPECT_EQ(candidate(Row(a).label(L"X").element(0), 4), 5u);
  EXPECT_EQ(candidate(Row(L""), 0), 0u);
  EXPECT_EQ(candidate(Row(L""), 1), 1u);

  breakUp(2, {L"Z"});  // 6
  EXPECT_EQ(named(a), 3u);
  EXPECT_EQ(candidate(Row(L""), 2), 2u);
}

TEST_F(ListLayoutTest, ARowWithoutANameCanBeBrokenUpToo) {
  const Row nameless = Row(L"");
  list = rows({nameless, a});
  build();
  breakUp(0, {L"X"});

  EXPECT_EQ(candidate(nameless, 0), 0u) << "it keeps its key";
  EXPECT_EQ(candidate(Row(nameless).label(L"X").element(0), 1), 2u);
  EXPECT_EQ(named(nameless), 0u);
}

TEST_F(ListLayoutTest, LeadsFromNameToNameAndOverTheElementsOfOneExpansionAtOnce) {
  list = rows({a, b, Row(a).label(L"another label"), a, b});
  build();
  EXPECT_EQ(named(a, 1), 2u);
  EXPECT_EQ(named(a, 3), 3u);
  EXPECT_EQ(named(a, 4), none);

  breakUp(0, {L"X", L"Y", L"Z"});  // 5, 6, 7
  breakUp(2, {L"X", L"Y"});        // 8, 9
  EXPECT_EQ(named(a, 0), 3u);
  EXPECT_EQ(named(a, 4), 5u);
  EXPECT_EQ(named(a, 6), 8u);
  EXPECT_EQ(named(a, 9), none);
  EXPECT_EQ(named(b, 5), none);
}

TEST_F(ListLayoutTest, WhatASearchFindsIsWhatStandsAtItsPlace) {
  list = rows({a, b});
  build();
  breakUp(0, {L"X", L"Y"});  // 2, 3

  const PROPINFO y = Row(a).label(L"Y").element(0);
  const ListLayout::Spot candidate = layout->nextCandidate(name(y), property(y), 0);
  EXPECT_EQ(candidate.place, 3u);
  EXPECT_EQ(candidate.row, 0u);
  EXPECT_EQ(candidate.element, 1u);
  EXPECT_EQ(candidate.property, property(y));
  const ListLayout::Spot first = layout->nextNamed(name(a), 0);
  EXPECT_EQ(first.row, 0u);
  EXPECT_EQ(first.element, 0u);
  const ListLayout::Spot row = layout->nextNamed(name(b), 0);
  EXPECT_EQ(row.row, 1u);
  EXPECT_FALSE(row.isElement());
  EXPECT_FALSE(layout->nextNamed(name(b), 2).isElement()) << "nothing is there";
}

TEST_F(ListLayoutTest, TellsFromWhichRowAnElementComes) {
  list = rows({a, b, a});
  build();
  EXPECT_FALSE(layout->at(2).isElement());
  EXPECT_EQ(layout->length(), 3u);

  breakUp(2, {L"X", L"Y"});  // 3, 4
  breakUp(0, {L"X"});        // 5

  EXPECT_EQ(layout->length(), 6u);
  const ListLayout::Spot broken = layout->at(2);
  EXPECT_EQ(broken.place, 2u);
  EXPECT_EQ(broken.row, 2u);
  EXPECT_FALSE(broken.isElement());
  for (const std::uint32_t place : {3u, 4u}) {
    const ListLayout::Spot element = layout->at(place);
    EXPECT_EQ(element.place, place);
    EXPECT_EQ(element.row, 2u);
    EXPECT_EQ(element.element, place - 3);
    EXPECT_EQ(element.property, property(Row(a).label(place == 3 ? L"X" : L"Y").element(0)));
  }
  EXPECT_EQ(layout->at(5).row, 0u);
  EXPECT_EQ(layout->at(5).element, 0u);
  EXPECT_EQ(layout->expansions().size(), 2u);
  EXPECT_EQ(*layout->expansions()[0].elements,
            (std::vector<KeyNumber>{property(Row(a).label(L"X").element(0)),
                                    property(Row(a).label(L"Y").element(0))}));
}

TEST_F(ListLayoutTest, KnowsNothingOfWhetherARowMayBeEdited) {
  list = rows({Row(a).editable(false), a});
  build();

  EXPECT_EQ(candidate(a, 0), 0u);
  EXPECT_EQ(candidate(Row(a).editable(false), 1), 1u);
}

// The example that the header tells.
TEST_F(ListLayoutTest, LeadsAPointsElementsToEachOther) {
  const Row start = Row(L"Start").inCategory(2, L"Geometry");
  list = rows({Row(L"Color"), start, Row(L"Layer")});
  build();
  const Row startX = Row(start).label(L"Start X").element(0);
  EXPECT_EQ(candidate(startX, 0), 1u) << "the row may not have been read yet";

  breakUp(1, {L"Start X", L"Start Y", L"Start Z"});
  EXPECT_EQ(candidate(startX, 2), 3u);
  EXPECT_EQ(candidate(Row(start).label(L"Start Y").element(1), 0), 4u);
  EXPECT_EQ(named(start), 3u);
}

}  // namespace
}  // namespace velt::propdata
