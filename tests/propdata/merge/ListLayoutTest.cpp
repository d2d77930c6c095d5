#include "propdata/merge/ListLayout.h"

#include "tests/propdata/merge/LayoutOfAList.h"

namespace velt::propdata {
namespace {

using toys::Row;
using toys::rows;
using ListLayoutTest = LayoutOfAList;

constexpr std::uint32_t none = ListLayout::none;

const Row a(L"A");
const Row b(L"B");

TEST_F(ListLayoutTest, OfAnEmptyListLeadsNowhere) {
  build();

  EXPECT_EQ(first(a), none);
  EXPECT_EQ(candidate(a, 0), none);
}

TEST_F(ListLayoutTest, LeadsFromRowToRowWithTheKeyInTheirOrder) {
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

TEST_F(ListLayoutTest, FindsElementsByTheirFullKey) {
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
  EXPECT_EQ(first(Row(L"").label(L"A")), 0u);
  EXPECT_EQ(candidate(Row(L""), 0), 0u);
  EXPECT_EQ(candidate(Row(L""), 1), none);
  EXPECT_EQ(candidate(Row(L"").inCategory(2, L"General"), 0), none);
}

TEST_F(ListLayoutTest, TheFirstRowOfAKeyMayBeAnElement) {
  list = rows({a, b});
  build();
  EXPECT_EQ(first(a), 0u);

  breakUp(0, {L"X", L"Y"});
  EXPECT_EQ(first(a), 2u);

  breakUp(1, {L"X"});
  EXPECT_EQ(first(b), 4u);
  EXPECT_EQ(first(a), 2u);
}

TEST_F(ListLayoutTest, SeveralRowsOfOneKeyMayBeBrokenUpInAnyOrder) {
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

TEST_F(ListLayoutTest, ARowWithoutANameCanBeBrokenUpToo) {
  const Row nameless = Row(L"");
  list = rows({nameless, a});
  build();
  breakUp(0, {L"X"});

  EXPECT_EQ(candidate(nameless, 0), 0u) << "it keeps its key";
  EXPECT_EQ(candidate(Row(nameless).label(L"X").element(0), 1), 2u);
  EXPECT_EQ(first(nameless), 0u);
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
  EXPECT_EQ(first(start), 3u);
}

}  // namespace
}  // namespace velt::propdata
