#include "container/TqPolicies.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <type_traits>

#include "tests/container/HostDoubles.h"
#include "tests/support/AllocationSpy.h"

namespace velt::tests {
namespace {

using SlotAllocator = TqDefaultMemAllocator<Slot>;

TEST(TqDefaultMemAllocator, FillsEverySlotWithADefaultElement) {
  const long live = Slot::live;
  Slot* const slots = SlotAllocator::alloc(5);
  ASSERT_NE(slots, nullptr);
  EXPECT_EQ(Slot::live, live + 5);
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(slots[i].value, Slot::untouched);
  SlotAllocator::dealloc(slots);
  EXPECT_EQ(Slot::live, live);
}

TEST(TqDefaultMemAllocator, TakesArraysAndGivesBackArrays) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  const AllocationSpy spy;
  TqDefaultMemAllocator<int>::dealloc(TqDefaultMemAllocator<int>::alloc(3));
  SlotAllocator::dealloc(SlotAllocator::alloc(3));
  EXPECT_EQ(spy.counts().arrayNews, 2u);
  EXPECT_EQ(spy.counts().arrayDeletes, 2u);
  EXPECT_EQ(spy.counts().news, 2u);
  EXPECT_EQ(spy.counts().deletes, 2u);
}

TEST(TqDefaultMemAllocator, GivesNullForNoElementsAndReportsNothing) {
  clearReports();
  const AllocationSpy spy;
  EXPECT_EQ(SlotAllocator::alloc(0), nullptr);
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_TRUE(reports().empty());
}

TEST(TqDefaultMemAllocator, AllowsNullToBeGivenBack) {
  SlotAllocator::dealloc(nullptr);
  TqDefaultMemAllocator<int>::dealloc(nullptr);
}

TEST(TqDefaultMemAllocator, ReportsExhaustedMemoryAndGivesNull) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  clearReports();
  Slot* slots = nullptr;
  {
    const AllocationSpy fault = AllocationSpy::failNth(1);
    slots = SlotAllocator::alloc(3);
  }
  EXPECT_EQ(slots, nullptr);
  EXPECT_EQ(reports(), std::vector<int>{6});
}

TEST(TqDefaultMemAllocator, SurvivesWhenNotEvenTheReportFindsMemory) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  clearReports();
  Slot* slots = nullptr;
  {
    const AllocationSpy fault = AllocationSpy::failFrom(1);
    slots = SlotAllocator::alloc(3);
  }
  EXPECT_EQ(slots, nullptr);
  EXPECT_TRUE(reports().empty());
}

// An element that needs memory of its own, which runs out at the third.
struct Hungry {
  Hungry() {
    if (++made == 3) throw std::bad_alloc();
  }
  ~Hungry() { --made; }
  static inline int made = 0;
};

TEST(TqDefaultMemAllocator, ReportsAnElementThatFindsNoMemoryAndDestroysThoseBefore) {
  clearReports();
  Hungry::made = 0;
  EXPECT_EQ(TqDefaultMemAllocator<Hungry>::alloc(5), nullptr);
  EXPECT_EQ(Hungry::made, 1);  // two were destroyed again, the third never was one
  EXPECT_EQ(reports(), std::vector<int>{6});
}

TEST(TqRefCounter, CountsUpAndDownAndReads) {
  std::int32_t count = 1;
  EXPECT_EQ(TqRefCounter::read(count), 1);
  TqRefCounter::addReference(count);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(TqRefCounter::read(count), 2);
  EXPECT_EQ(count, 2);
  EXPECT_FALSE(TqRefCounter::releaseIsLast(count));
  EXPECT_TRUE(TqRefCounter::releaseIsLast(count));
  EXPECT_EQ(count, 0);
}

TEST(TqVectorDefaultGrowPolicy, GrowsByEightUnlessMoreIsAskedFor) {
  EXPECT_EQ(TqVectorDefaultGrowPolicy::defaultGrowCount, 8u);
  // clang-format off
  const struct { std::uint32_t logical, physical, requested, growCount, result; const char* why; } rows[] = {
      {0,   0,  0,  8,  8,  "nothing requested: the length and the grow count"},
      {20,  3,  0,  8,  28, "nothing requested, whatever the physical length"},
      {20,  64, 0,  8,  28, "nothing requested, even below the physical length"},
      {4,   16, 15, 8,  16, "less than there is: what there is"},
      {15,  16, 1,  8,  16, "less than there is: what there is"},
      {4,   16, 16, 8,  16, "all there is, beyond the step: the request"},
      {12,  16, 16, 8,  20, "all there is, within the step: the step"},
      {0,   0,  1,  8,  8,  "the first element: a step"},
      {0,   0,  7,  8,  8,  "within a step"},
      {0,   0,  8,  8,  8,  "exactly a step"},
      {0,   0,  9,  8,  9,  "beyond a step: the request"},
      {8,   8,  9,  8,  16, "one more: a step from the length"},
      {5,   8,  9,  8,  13, "one more: a step from the length, not from the slots"},
      {5,   8,  13, 8,  13, "exactly a step from the length"},
      {5,   8,  14, 8,  14, "beyond a step from the length"},
      {8,   8,  9,  3,  11, "another grow count"},
      {8,   8,  9,  0,  9,  "no grow count: what is asked for"},
  };
  // clang-format on
  for (const auto& row : rows) {
    EXPECT_EQ(TqVectorDefaultGrowPolicy::growCount(row.logical, row.physical, row.requested, row.growCount),
              row.result)
        << row.why;
  }
}

template <class T, template <class> class Constructor>
constexpr bool isCopiedBy = std::is_same_v<TqElementConstructor<T>, Constructor<T>>;

TEST(TqElementConstructor, TreatsScalarsAndClassesApart) {
  EXPECT_TRUE((isCopiedBy<int, TqPodTypeConstructor>));
  EXPECT_TRUE((isCopiedBy<double, TqPodTypeConstructor>));
  EXPECT_TRUE((isCopiedBy<Slot*, TqPodTypeConstructor>));
  EXPECT_TRUE((isCopiedBy<Slot, TqObjectTypeConstructor>));
  EXPECT_TRUE((isCopiedBy<std::string, TqObjectTypeConstructor>));
}

TEST(TqElementConstructor, AssignsExactlyTheElementsCounted) {
  int from[] = {1, 2, 3, 4};
  int to[] = {0, 0, 0, 0};
  TqElementConstructor<int>::assign(to, from, 3);
  EXPECT_EQ(std::vector<int>(to, to + 4), (std::vector<int>{1, 2, 3, 0}));
  const std::string texts[] = {"a", "b"};
  std::string copies[] = {"x", "y"};
  TqElementConstructor<std::string>::assign(copies, texts, 1);
  EXPECT_EQ(copies[0], "a");
  EXPECT_EQ(copies[1], "y");
  TqElementConstructor<std::string>::assign(nullptr, nullptr, 0);
}

}  // namespace
}  // namespace velt::tests
