#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/CrashReports.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/Variants.h"

namespace velt::tests {
namespace {

const std::vector<DISPID> dimension = {
    1542, 62,   63,   61,   43,   44,   60,   23,   25,   26,   13,   68,   69, 70,   16,   27,
    28,   14,   17,   35,   19,   1546, 1563, 1549, 33,   20,   1554, 1562, 30, 1539, 1540, 67,
    64,   1541, 32,   29,   1553, 18,   31,   1558, 1548, 1551, 1552, 24,   21, 22,   1565, 1566,
    56,   57,   15,   3,    9,    4,    6,    5,    48,   49,   50,   51,   11, 12,   36,   41,
    1559, 1557, 1561, 1560, 1555, 1569, 1570, 58,   59,   1556, 7,    52,   53, 54,   55};

struct Weights {
  const char* name;
  const CLSID* clsid;
  std::vector<DISPID> dispIds;
};

#define VELT_CLASS(name) #name, &CLSID_##name
const std::vector<Weights> expectedRows = {
    {VELT_CLASS(VeltDimRotated), dimension},
    {VELT_CLASS(VeltDimAligned), dimension},
    {VELT_CLASS(VeltDimRadial), dimension},
    {VELT_CLASS(VeltDimDiametric), dimension},
    {VELT_CLASS(VeltDimAngular), dimension},
    {VELT_CLASS(VeltDim3PointAngular), dimension},
    {VELT_CLASS(VeltDimOrdinate), dimension},
    {VELT_CLASS(VeltDimRadialLarge), dimension},
    {VELT_CLASS(VeltDimArcLength), dimension},
    {VELT_CLASS(VeltLeader), {64, 1542, 65, 1553, 69, 1543, 1550, 13, 1549, 1554}},
    {VELT_CLASS(VeltTolerance), {81, 1542, 1553, 13, 1546, 1563, 1549, 1562, 1541}},
    {VELT_CLASS(VeltExternalReference), {4}},
};
#undef VELT_CLASS

PROPINFO row(DISPID dispId, int weight = -5) {
  PROPINFO made;
  made.clsid = GUID_NULL;
  made.dispId = dispId;
  made.customType = PropertyKind::none;
  made.weight = weight;
  return made;
}

int weightOf(const CLSID& clsid, DISPID dispId, int before = -5) {
  PROPINFO prop = row(dispId, before);
  EXPECT_EQ(SetPropertyWeight(clsid, prop), 0);
  return prop.weight;
}

PROPINFO element(DISPID dispId, int weight, std::uint32_t cookie, bool sortByCookie = true) {
  PROPINFO made = row(dispId, weight);
  made.isElement = true;
  made.elementCookie = cookie;
  made.sortByCookie = sortByCookie;
  return made;
}

// --- the table ------------------------------------------------------------------------------------------------------

TEST(WeightTable, HasRowsOf336Bytes) {
  EXPECT_EQ(sizeof(Guid2DispIds), 336u);
  EXPECT_EQ(offsetof(Guid2DispIds, dispIds), 16u);
  EXPECT_EQ(sizeof(DISPID), 4u);
  EXPECT_TRUE(std::is_signed_v<DISPID>);
}

TEST(WeightTable, HoldsTheRowsInOrderAndEndsWithANullClass) {
  ASSERT_EQ(dimension.size(), 79u);
  ASSERT_EQ(std::size(g_guid2dispids), expectedRows.size() + 1);
  for (std::size_t i = 0; i < expectedRows.size(); ++i) {
    SCOPED_TRACE(expectedRows[i].name);
    EXPECT_EQ(g_guid2dispids[i].clsid, *expectedRows[i].clsid);
    std::vector<DISPID> full = expectedRows[i].dispIds;
    full.resize(80, 0);
    EXPECT_EQ(std::vector<DISPID>(std::begin(g_guid2dispids[i].dispIds), std::end(g_guid2dispids[i].dispIds)),
              full);
  }
  EXPECT_EQ(g_guid2dispids[expectedRows.size()].clsid, GUID_NULL);
}

TEST(WeightTable, HasNoClassTwiceAndNoDispIdTwiceInARow) {
  std::set<std::string> rowsOfClasses;
  for (const Guid2DispIds& one : g_guid2dispids) {
    EXPECT_TRUE(rowsOfClasses.insert(std::string(reinterpret_cast<const char*>(&one.clsid), sizeof one.clsid))
                    .second);
    std::set<DISPID> dispIds;
    for (const DISPID dispId : one.dispIds) {
      if (dispId == 0) break;
      EXPECT_TRUE(dispIds.insert(dispId).second) << dispId;
    }
    EXPECT_EQ(one.dispIds[79], 0) << "the last slot always ends the list";
  }
}

TEST(WeightTable, IsConstant) {
  EXPECT_TRUE(std::is_const_v<std::remove_reference_t<decltype(g_guid2dispids[0])>>);
}

// --- weights --------------------------------------------------------------------------------------------------------

TEST(PropertyWeight, IsTheOneBasedPlaceInTheRowOfTheClass) {
  for (const Weights& expected : expectedRows) {
    for (std::size_t i = 0; i < expected.dispIds.size(); ++i) {
      EXPECT_EQ(weightOf(*expected.clsid, expected.dispIds[i]), static_cast<int>(i) + 1)
          << expected.name << " " << expected.dispIds[i];
    }
  }
  EXPECT_EQ(weightOf(CLSID_VeltDimRotated, 1542), 1);
  EXPECT_EQ(weightOf(CLSID_VeltDimRotated, 55), 79);
  EXPECT_EQ(weightOf(CLSID_VeltLeader, 1542), 2);
}

TEST(PropertyWeight, StaysForADispIdThatTheRowLacks) {
  for (const Weights& expected : expectedRows) {
    for (DISPID dispId = -5; dispId < 1700; ++dispId) {
      const bool isListed =
          std::find(expected.dispIds.begin(), expected.dispIds.end(), dispId) != expected.dispIds.end();
      if (isListed) continue;
      EXPECT_EQ(weightOf(*expected.clsid, dispId, 33), 33) << expected.name << " " << dispId;
    }
  }
}

TEST(PropertyWeight, AZeroDispIdNeverMatchesTheEndOfARow) {
  for (const Weights& expected : expectedRows)
    EXPECT_EQ(weightOf(*expected.clsid, 0, 33), 33) << expected.name;
}

TEST(PropertyWeight, StaysForAClassWithoutARow) {
  std::set<std::string> listed;
  for (const Weights& expected : expectedRows)
    listed.insert(expected.name);
  int others = 0;
#define VELT_CLSID(name, ...)                                 \
  if (!listed.contains(#name)) {                              \
    ++others;                                                 \
    EXPECT_EQ(weightOf(CLSID_##name, 1542, 33), 33) << #name; \
    EXPECT_EQ(weightOf(CLSID_##name, 4, 0), 0) << #name;      \
  }
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
  EXPECT_GT(others, 20);
}

TEST(PropertyWeight, StaysForTheNullClassThatEndsTheTable) {
  EXPECT_EQ(weightOf(GUID_NULL, 0, 33), 33);
  EXPECT_EQ(weightOf(GUID_NULL, 1542, 33), 33);
}

TEST(PropertyWeight, TheClassIsTheOneGivenAndNotTheRecords) {
  PROPINFO prop = row(1542, 33);
  prop.clsid = CLSID_VeltLeader;
  static_cast<void>(SetPropertyWeight(CLSID_VeltLine, prop));
  EXPECT_EQ(prop.weight, 33);
  static_cast<void>(SetPropertyWeight(CLSID_VeltDimRotated, prop));
  EXPECT_EQ(prop.weight, 1);
}

TEST(PropertyWeight, TakesAllSixteenBytesOfAClassIntoAccount) {
  for (std::size_t i = 0; i < sizeof(GUID); ++i) {
    CLSID other = CLSID_VeltLeader;
    reinterpret_cast<unsigned char*>(&other)[i] ^= 0x80;
    EXPECT_EQ(weightOf(other, 1542, 33), 33) << "byte " << i;
  }
}

TEST(PropertyWeight, ChangesNothingElseInTheRecord) {
  PROPINFO prop = element(64, 0, 5);
  prop.customType = PropertyKind::unknownType;
  static_cast<void>(SetPropertyWeight(CLSID_VeltLeader, prop));
  EXPECT_EQ(prop.weight, 1);
  EXPECT_EQ(prop.dispId, 64);
  EXPECT_EQ(prop.customType, PropertyKind::unknownType);
  EXPECT_EQ(prop.elementCookie, 5u);
  EXPECT_TRUE(prop.sortByCookie);
}

// --- order ----------------------------------------------------------------------------------------------------------

TEST(PiCompare, PutsTheSmallerWeightFirst) {
  EXPECT_TRUE(picompare(row(1, 1), row(2, 2)));
  EXPECT_FALSE(picompare(row(1, 2), row(2, 1)));
  EXPECT_FALSE(picompare(row(1, 2), row(2, 2)));
}

TEST(PiCompare, ComparesWeightsWithTheirSigns) {
  EXPECT_TRUE(picompare(row(1, -1), row(2, 0)));
  EXPECT_FALSE(picompare(row(1, 0), row(2, -1)));
  EXPECT_TRUE(picompare(row(1, INT32_MIN), row(2, INT32_MAX)));
  EXPECT_FALSE(picompare(row(1, INT32_MAX), row(2, INT32_MIN)));
}

TEST(PiCompare, PutsTheElementsOfOnePropertyInTheOrderOfTheirCookies) {
  EXPECT_TRUE(picompare(element(4, 3, 1), element(4, 3, 2)));
  EXPECT_FALSE(picompare(element(4, 3, 2), element(4, 3, 1)));
  EXPECT_FALSE(picompare(element(4, 3, 1), element(4, 3, 1)));
}

TEST(PiCompare, ComparesCookiesWithoutSign) {
  EXPECT_TRUE(picompare(element(4, 3, 1), element(4, 3, 0xFFFFFFFF)));
  EXPECT_FALSE(picompare(element(4, 3, 0xFFFFFFFF), element(4, 3, 1)));
  EXPECT_TRUE(picompare(element(4, 3, 0x7FFFFFFF), element(4, 3, 0x80000000)));
}

TEST(PiCompare, CookiesCountOnlyWhenBothRowsSaySo) {
  for (const bool first : {false, true}) {
    for (const bool second : {false, true}) {
      if (first && second) continue;
      EXPECT_FALSE(picompare(element(4, 3, 1, first), element(4, 3, 2, second)));
      EXPECT_FALSE(picompare(element(4, 3, 2, first), element(4, 3, 1, second)));
    }
  }
}

TEST(PiCompare, CookiesCountOnlyWithinOnePropertyAndOneWeight) {
  EXPECT_FALSE(picompare(element(4, 3, 1), element(5, 3, 2)));
  EXPECT_FALSE(picompare(element(4, 4, 1), element(4, 3, 2)));
  EXPECT_TRUE(picompare(element(4, 3, 2), element(4, 4, 1)));
}

TEST(PiCompare, NeedsNoElementFlag) {
  PROPINFO a = element(4, 3, 1);
  PROPINFO b = element(4, 3, 2);
  a.isElement = b.isElement = false;
  EXPECT_TRUE(picompare(a, b));
}

TEST(PiCompare, NeverPutsARowBeforeItself) {
  for (const PROPINFO& prop : {row(1, 0), row(1, -3), element(4, 3, 1), element(4, 3, 1, false)}) {
    EXPECT_FALSE(picompare(prop, prop));
  }
}

// --- sorting --------------------------------------------------------------------------------------------------------

TqVector<PROPINFO> list(const std::vector<PROPINFO>& rows) {
  TqVector<PROPINFO> made;
  std::int64_t number = 0;
  for (const PROPINFO& one : rows) {
    made.push_back(one);
    made.last().groupCount = number++;  // tells rows that are alike apart
  }
  return made;
}

std::vector<int> weights(const TqVector<PROPINFO>& rows) {
  std::vector<int> made;
  for (const PROPINFO& one : rows)
    made.push_back(one.weight);
  return made;
}

std::vector<std::uint32_t> cookiesOf(const TqVector<PROPINFO>& rows, DISPID dispId) {
  std::vector<std::uint32_t> made;
  for (const PROPINFO& one : rows) {
    if (one.dispId == dispId) made.push_back(one.elementCookie);
  }
  return made;
}

TEST(SortByWeight, LeavesAnEmptyListAndASingleRowAsTheyAre) {
  TqVector<PROPINFO> rows;
  SortByWeight(rows);
  EXPECT_TRUE(rows.isEmpty());
  rows = list({row(4, 2)});
  SortByWeight(rows);
  ASSERT_EQ(rows.length(), 1u);
  EXPECT_EQ(std::as_const(rows)[0].dispId, 4);
  EXPECT_EQ(std::as_const(rows)[0].weight, 2);
}

TEST(SortByWeight, PutsRowsInTheOrderOfTheirWeights) {
  TqVector<PROPINFO> rows = list({row(1, 5), row(2, 3), row(3, 9), row(4, 1)});
  SortByWeight(rows);
  EXPECT_EQ(weights(rows), (std::vector<int>{1, 3, 5, 9}));
}

TEST(SortByWeight, Quirk_unweighted_rows_first) {
  TqVector<PROPINFO> rows = list({row(1, 5), row(2, 0), row(3, -1), row(4, 1)});
  SortByWeight(rows);
  EXPECT_EQ(weights(rows), (std::vector<int>{-1, 0, 1, 5}));
}

TEST(SortByWeight, PutsElementsInTheOrderOfTheirCookies) {
  TqVector<PROPINFO> rows = list({element(4, 0, 3), element(4, 0, 1), element(4, 0, 2)});
  SortByWeight(rows);
  EXPECT_EQ(cookiesOf(rows, 4), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST(SortByWeight, PutsElementsInTheOrderOfTheirCookiesAlsoWhenOtherRowsStandBetween) {
  TqVector<PROPINFO> rows = list({row(9, 0), element(4, 0, 3), row(8, 0), element(4, 0, 1), element(5, 0, 2),
                                  row(7, 0), element(4, 0, 2), element(5, 0, 1)});
  SortByWeight(rows);
  EXPECT_EQ(cookiesOf(rows, 4), (std::vector<std::uint32_t>{1, 2, 3}));
  EXPECT_EQ(cookiesOf(rows, 5), (std::vector<std::uint32_t>{1, 2}));
  EXPECT_EQ(rows.length(), 8u);
}

TEST(SortByWeight, GoesByTheCookieFlagAndNotByTheElementFlag) {
  TqVector<PROPINFO> rows = list({element(4, 0, 3), element(4, 0, 2), element(4, 0, 1)});
  for (PROPINFO& one : rows)
    one.isElement = false;
  SortByWeight(rows);
  EXPECT_EQ(cookiesOf(rows, 4), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST(SortByWeight, ARowWithoutTheCookieFlagKeepsItsPlaceAmongTheElements) {
  TqVector<PROPINFO> rows = list({element(4, 0, 9), element(4, 0, 20), element(4, 0, 1)});
  rows[1].sortByCookie = false;
  SortByWeight(rows);
  EXPECT_EQ(cookiesOf(rows, 4), (std::vector<std::uint32_t>{1, 20, 9}));
}

TEST(SortByWeight, LeavesListsThatShareTheRowsAsTheyAre) {
  TqVector<PROPINFO> rows = list({row(1, 5), row(2, 3)});
  const TqVector<PROPINFO> other(rows);
  SortByWeight(rows);
  EXPECT_EQ(weights(rows), (std::vector<int>{3, 5}));
  EXPECT_EQ(weights(other), (std::vector<int>{5, 3}));
}

TEST(SortByWeight, KeepsEveryFieldOfARowWithIt) {
  PROPINFO late = row(1, 5);
  late.name = L"late";
  late.value = variants::i4(55);
  late.choiceValues.push_back(5);
  TqVector<PROPINFO> rows = list({late, row(2, 3)});
  const std::uint32_t physical = rows.physicalLength();
  SortByWeight(rows);
  const PROPINFO& moved = std::as_const(rows)[1];
  EXPECT_EQ(moved.name, L"late");
  EXPECT_EQ(moved.value.lVal, 55);
  EXPECT_EQ(moved.choiceValues.length(), 1u);
  EXPECT_EQ(rows.physicalLength(), physical);
}

TEST(SortByWeight, LeavesTheListAsItIsWhenMemoryIsExhausted) {
  const TqVector<PROPINFO> before =
      list({row(9, 4), element(4, 0, 3), row(8, 2), element(4, 0, 1), row(7, 0)});
  const std::vector<int> unsorted = weights(before);
  const std::vector<int> sorted = {0, 0, 0, 2, 4};
  int failed = 0;
  const auto sortFailing = [&](const auto& makeFault, const auto& failures) {
    for (std::uint64_t n = 1;; ++n) {
      ASSERT_LT(n, 200u);
      TqVector<PROPINFO> rows(before);
      platform::CrashReports::clear();
      bool hasFailed = false;
      {
        const auto fault = makeFault(n);
        EXPECT_NO_THROW(SortByWeight(rows));
        hasFailed = failures(fault) > 0;
      }
      EXPECT_EQ(weights(before), unsorted);
      const auto reported = platform::CrashReports::take();
      // A buffer that is wanted but not needed may be refused without a consequence.
      if (reported.empty()) {
        EXPECT_EQ(weights(rows), sorted) << "allocation " << n;
      } else {
        ++failed;
        EXPECT_EQ(weights(rows), unsorted) << "allocation " << n;
        ASSERT_EQ(reported.size(), 1u) << "allocation " << n;
        EXPECT_EQ(reported[0].status, Velt::eOutOfMemory);
      }
      if (!hasFailed) {
        EXPECT_TRUE(reported.empty());
        break;
      }
    }
  };
  sortFailing([](std::uint64_t n) { return platform::AllocationFault::failNth(n, platform::Heap::Host); },
              [](const platform::AllocationFault& fault) { return fault.failures(); });
  EXPECT_GT(failed, 0);
  if (!AllocationSpy::seesNew()) return;
  failed = 0;
  sortFailing([](std::uint64_t n) { return AllocationSpy::failNth(n); },
              [](const AllocationSpy& fault) { return fault.counts().failures; });
  EXPECT_GT(failed, 0);
}

RC_GTEST_PROP(SortByWeight, KeepsAllRowsAndTheOrderOfWeightsAndCookies, ()) {
  const auto count = *rc::gen::inRange<std::size_t>(0, 200);
  std::vector<PROPINFO> some;
  for (std::size_t i = 0; i < count; ++i) {
    some.push_back(element(*rc::gen::inRange(1, 4), *rc::gen::inRange(-1, 2),
                           *rc::gen::inRange<std::uint32_t>(0, 9), *rc::gen::inRange(0, 4) != 0));
  }
  const TqVector<PROPINFO> before = list(some);
  TqVector<PROPINFO> rows(before);
  SortByWeight(rows);

  RC_ASSERT(rows.length() == before.length());
  std::set<std::int64_t> numbers;
  for (const PROPINFO& one : std::as_const(rows)) {
    numbers.insert(one.groupCount);
    const PROPINFO& original = before[static_cast<std::uint32_t>(one.groupCount)];
    RC_ASSERT(one.dispId == original.dispId);
    RC_ASSERT(one.elementCookie == original.elementCookie);
  }
  RC_ASSERT(numbers.size() == count);
  const std::vector<int> order = weights(rows);
  RC_ASSERT(std::is_sorted(order.begin(), order.end()));
  // By property and weight, the cookies of the rows that are to be in order.
  std::map<std::pair<DISPID, int>, std::vector<std::uint32_t>> cookies;
  for (const PROPINFO& one : std::as_const(rows)) {
    if (one.sortByCookie) cookies[{one.dispId, one.weight}].push_back(one.elementCookie);
  }
  for (const auto& [key, sequence] : cookies)
    RC_ASSERT(std::is_sorted(sequence.begin(), sequence.end()));
}

}  // namespace
}  // namespace velt::tests
