#include "propdata/merge/LayoutTable.h"

#include <gtest/gtest.h>

#include "tests/support/Row.h"

namespace velt::propdata {
namespace {

using toys::Row;
using toys::rows;

constexpr std::uint32_t none = ListLayout::none;

// --- KeyTable --------------------------------------------------------------------------------------------------

TEST(KeyTable, EqualSamenessKeysHaveEqualNumbersWhateverElseDiffers) {
  KeyTable keys;
  const PROPINFO other = Row(L"A").dispId(9).label(L"label").withChoices().element(1).value(toys::i4(1));

  EXPECT_EQ(keys.samenessKey(Row(L"A")), keys.samenessKey(other));
}

TEST(KeyTable, EachFieldOfTheSamenessKeyCounts) {
  KeyTable keys;
  const PROPINFO different[] = {Row(L"A"),
                                Row(L"a"),
                                Row(L""),
                                Row(L"A").inCategory(2, L"General"),
                                Row(L"A").inCategory(1, L"general"),
                                Row(L"A").editable(false)};
  std::set<KeyNumber> numbers;
  for (const PROPINFO& row : different)
    numbers.insert(keys.samenessKey(row));

  EXPECT_EQ(numbers.size(), std::size(different));
}

TEST(KeyTable, TextsThatOnlyLookAlikeWhenJoinedAreDifferent) {
  KeyTable keys;

  EXPECT_NE(keys.samenessKey(Row(L"AB").inCategory(1, L"C")),
            keys.samenessKey(Row(L"A").inCategory(1, L"BC")));
  EXPECT_NE(keys.samenessKey(Row(L"A").inCategory(1, L"B")), keys.samenessKey(Row(L"B").inCategory(1, L"A")));
}

TEST(KeyTable, TheFullKeyAddsLabelChoicesAndElement) {
  KeyTable keys;
  const KeyNumber sameness = keys.samenessKey(Row(L"A"));
  const KeyNumber other = keys.samenessKey(Row(L"B"));
  const KeyNumber full = keys.fullKey(sameness, Row(L"A"));

  EXPECT_EQ(keys.fullKey(sameness, Row(L"A").dispId(9).element(0).value(toys::i4(1))),
            keys.fullKey(sameness, Row(L"A").element(7)));
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").label(L"a")), full);
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").withChoices()), full);
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").element(0)), full);
  EXPECT_NE(keys.fullKey(sameness, Row(L"A").element(0)), keys.fullKey(sameness, Row(L"A").withChoices()));
  EXPECT_NE(keys.fullKey(other, Row(L"A")), full);
  EXPECT_EQ(keys.fullKey(sameness, Row(L"A")), full);
}

// --- ListLayout ------------------------------------------------------------------------------------------------

class LayoutOfAList : public ::testing::Test {
 protected:
  KeyNumber sameness(const PROPINFO& row) { return keys.samenessKey(row); }
  KeyNumber full(const PROPINFO& row) { return keys.fullKey(keys.samenessKey(row), row); }
  void build() { layout = &table.of(list); }
  std::uint32_t candidate(const PROPINFO& q, std::uint32_t from) {
    return layout->nextCandidate(sameness(q), full(q), from);
  }
  std::uint32_t first(const PROPINFO& q) { return layout->first(sameness(q)); }
  // The row at `place` becomes elements with these labels at the end of the list.
  void breakUp(std::uint32_t place, std::initializer_list<const wchar_t*> labels) {
    layout = &brokenUp(*layout, list, place, labels);
  }
  ListLayout& brokenUp(ListLayout& before, TqVector<PROPINFO>& broken, std::uint32_t place,
                       std::initializer_list<const wchar_t*> labels) {
    PROPINFO& row = broken[place];
    const KeyNumber key = sameness(row);
    TqVector<PROPINFO> elements;
    for (const wchar_t* const label : labels) {
      elements.push_back(row);
      elements.last().isElement = true;
      elements.last().displayName = label;
    }
    row.name = L"";
    ListLayout& after = table.brokenUp(before, place, key, row, elements);
    broken.append(elements);
    return after;
  }

  KeyTable keys;
  LayoutTable table{keys};
  ListLayout* layout = nullptr;
  TqVector<PROPINFO> list;
};

const Row a(L"A");
const Row b(L"B");

TEST_F(LayoutOfAList, OfAnEmptyListLeadsNowhere) {
  build();

  EXPECT_EQ(first(a), none);
  EXPECT_EQ(candidate(a, 0), none);
}

TEST_F(LayoutOfAList, LeadsFromRowToRowWithTheKeyInTheirOrder) {
  list = rows({b, a, Row(a).label(L"another label"), b, a});
  build();

  EXPECT_EQ(first(a), 1u);
  EXPECT_EQ(first(b), 0u);
  EXPECT_EQ(candidate(a, 0), 1u);
  EXPECT_EQ(candidate(a, 1), 1u);
  EXPECT_EQ(candidate(a, 2), 2u)
      << "the full key of rows as they came is not asked for: they may have to be read";
  EXPECT_EQ(candidate(a, 3), 4u);
  EXPECT_EQ(candidate(a, 5), none);
  EXPECT_EQ(candidate(b, 1), 3u);
  EXPECT_EQ(first(Row(L"C")), none);
}

TEST_F(LayoutOfAList, FindsElementsByTheirFullKey) {
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

TEST_F(LayoutOfAList, ARowThatWasBrokenUpIsFoundUnderTheEmptyName) {
  list = rows({a, a});
  build();
  breakUp(0, {L"X"});

  EXPECT_EQ(candidate(a, 0), 1u);
  EXPECT_EQ(first(Row(L"").label(L"A")), 0u);
  EXPECT_EQ(candidate(Row(L""), 0), 0u);
  EXPECT_EQ(candidate(Row(L""), 1), none);
  EXPECT_EQ(candidate(Row(L"").inCategory(2, L"General"), 0), none);
}

TEST_F(LayoutOfAList, TheFirstRowOfAKeyMayBeAnElement) {
  list = rows({a, b});
  build();
  EXPECT_EQ(first(a), 0u);

  breakUp(0, {L"X", L"Y"});
  EXPECT_EQ(first(a), 2u);

  breakUp(1, {L"X"});
  EXPECT_EQ(first(b), 4u);
  EXPECT_EQ(first(a), 2u);
}

TEST_F(LayoutOfAList, SeveralRowsOfOneKeyMayBeBrokenUpInAnyOrder) {
  list = rows({a, a, a});
  build();
  breakUp(1, {L"X"});        // 3
  breakUp(0, {L"Y", L"X"});  // 4, 5

  EXPECT_EQ(first(a), 2u);
  EXPECT_EQ(candidate(Row(a).label(L"X").element(0), 0), 2u);
  EXPECT_EQ(candidate(Row(a).label(L"X").element(0), 3), 3u);
  EXPECT_EQ(candidate(Row(a).label(L"X").element(0), 4), 5u);
  EXPECT_EQ(candidate(Row(L""), 0), 0u);
  EXPECT_EQ(candidate(Row(L""), 1), 1u);

  breakUp(2, {L"Z"});  // 6
  EXPECT_EQ(first(a), 3u);
  EXPECT_EQ(candidate(Row(L""), 2), 2u);
}

TEST_F(LayoutOfAList, ARowWithoutANameCanBeBrokenUpToo) {
  const Row nameless = Row(L"");
  list = rows({nameless, a});
  build();
  breakUp(0, {L"X"});

  EXPECT_EQ(candidate(nameless, 0), 0u) << "it keeps its key";
  EXPECT_EQ(candidate(Row(nameless).label(L"X").element(0), 1), 2u);
  EXPECT_EQ(first(nameless), 0u);
}

// --- LayoutTable -----------------------------------------------------------------------------------------------

TEST_F(LayoutOfAList, IsSharedByListsThatShareTheirStrings) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  alike.last().hasChoices = true;

  EXPECT_EQ(&table.of(list), &table.of(alike));
}

TEST_F(LayoutOfAList, IsSharedWithEarlierListsWhenOthersCameBetween) {
  list = rows({a, b});
  const TqVector<PROPINFO> other = rows({b, a});
  const ListLayout& early = table.of(list);
  EXPECT_NE(&table.of(other), &early);
  EXPECT_EQ(&table.of(list), &early);
}

TEST_F(LayoutOfAList, IsNotSharedByListsThatDifferInAKeyOrInLength) {
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

TEST_F(LayoutOfAList, StaysSharedWhenTheSameRowsAreBrokenUpIntoTheSameElements) {
  list = rows({a, b});
  TqVector<PROPINFO> alike(list);
  ListLayout& unbroken = table.of(list);

  ListLayout& first = brokenUp(unbroken, list, 0, {L"X", L"Y"});
  EXPECT_EQ(&brokenUp(unbroken, alike, 0, {L"X", L"Y"}), &first);
  EXPECT_EQ(&brokenUp(first, alike, 1, {L"Z"}), &brokenUp(first, list, 1, {L"Z"}));
  EXPECT_EQ(unbroken.first(sameness(a)), 0u) << "lists that are still as they came go on with it";
}

TEST_F(LayoutOfAList, IsNotSharedByListsBrokenUpIntoOtherElements) {
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

TEST_F(LayoutOfAList, ElementsOfListsAlikeShareTheirLabels) {
  list = rows({a});
  TqVector<PROPINFO> alike(list);
  ListLayout& unbroken = table.of(list);
  brokenUp(unbroken, list, 0, {L"X"});
  brokenUp(unbroken, alike, 0, {L"X"});

  EXPECT_TRUE(list.last().displayName.sharesWith(alike.last().displayName));
}

}  // namespace
}  // namespace velt::propdata
