#include "propdata/merge/QueryMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "tests/support/AllocationSpy.h"

namespace velt::propdata {
namespace {

TEST(QueryMemory, GivesEachArrayRoomOfItsOwn) {
  QueryMemory memory;
  auto* const small = memory.arrayOf<std::uint64_t>(10);
  auto* const large = memory.arrayOf<std::uint64_t>(100'000);
  auto* const another = memory.arrayOf<std::uint8_t>(3);
  auto* const none = memory.arrayOf<std::uint8_t>(0);
  ASSERT_NE(nullptr, none);
  for (std::uint64_t i = 0; i < 10; ++i)
    small[i] = i;
  for (std::uint64_t i = 0; i < 100'000; ++i)
    large[i] = ~i;
  for (std::uint8_t i = 0; i < 3; ++i)
    another[i] = i;
  for (std::uint64_t i = 0; i < 10; ++i)
    EXPECT_EQ(i, small[i]);
  for (std::uint64_t i = 0; i < 100'000; ++i)
    ASSERT_EQ(~i, large[i]);
  EXPECT_EQ(2, another[2]);
}

TEST(QueryMemory, TheNextQueryHasTheSameBlock) {
  const void* first = QueryMemory().arrayOf<int>(1);
  EXPECT_EQ(first, QueryMemory().arrayOf<int>(1));
}

TEST(QueryMemory, TwoQueriesAtATimeHaveBlocksOfTheirOwn) {
  QueryMemory outer;
  auto* const ofOuter = outer.arrayOf<int>(1);
  *ofOuter = 7;
  {
    QueryMemory inner;
    auto* const ofInner = inner.arrayOf<int>(1);
    *ofInner = 8;
    EXPECT_NE(ofOuter, ofInner);
  }
  EXPECT_EQ(7, *ofOuter);
}

// More than the block that is kept, in small pieces.
TEST(QueryMemory, GoesOnWhenTheBlockIsUsedUp) {
  QueryMemory memory;
  std::vector<std::uint32_t*> pieces;
  for (std::uint32_t i = 0; i < 3 * QueryMemory::keptAtLeast / 1000; ++i) {
    pieces.push_back(memory.arrayOf<std::uint32_t>(250));
    std::fill_n(pieces.back(), 250, i);
  }
  for (std::uint32_t i = 0; i < pieces.size(); ++i)
    ASSERT_EQ(250, std::count(pieces[i], pieces[i] + 250, i)) << i;
}

// Numbers between bytes, so that much is left out for their alignment.
TEST(QueryMemory, NeverGivesMoreThanTheBlockHas) {
  for (int query = 0; query < 2; ++query)
    static_cast<void>(QueryMemory().arrayOf<int>(1));  // so that the smallest block is kept
  QueryMemory memory;
  const auto* const begin = memory.arrayOf<std::byte>(16);
  std::size_t last = 0;
  for (std::size_t i = 0; i < QueryMemory::keptAtLeast / 9; ++i) {
    const auto* const byte = memory.arrayOf<std::byte>(1);
    const auto* const number = memory.arrayOf<std::uint64_t>(1);
    ASSERT_EQ(0U, reinterpret_cast<std::uintptr_t>(number) % alignof(std::uint64_t));
    const auto* const end = static_cast<const std::byte*>(static_cast<const void*>(number + 1));
    // Follows what was taken before, so it stands in the block.
    if (byte == begin + 16 + last) last = static_cast<std::size_t>(end - begin) - 16;
  }
  EXPECT_LT(QueryMemory::keptAtLeast - 64, last + 16);
  EXPECT_GE(QueryMemory::keptAtLeast, last + 16);
}

// What a query takes of the heap, as large arrays and small ones, that takes so many bytes.
std::uint64_t allocationsOfAQueryOf(std::size_t bytes) {
  const tests::AllocationSpy spy;
  QueryMemory memory;
  const std::size_t half = bytes / 2;
  static_cast<void>(memory.arrayOf<std::byte>(half));
  for (std::size_t taken = 0; taken < half; taken += 1000)
    static_cast<void>(memory.arrayOf<std::byte>(1000));
  return spy.allocations();
}

TEST(QueryMemory, KeepsAsMuchAsTheLastQueryTookUntilOneNeedsFarLess) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new cannot be counted here";
  constexpr std::size_t small = 100'000;
  constexpr std::size_t large = 3 * QueryMemory::keptAtLeast;
  allocationsOfAQueryOf(small);  // whatever was kept before
  allocationsOfAQueryOf(small);
  EXPECT_EQ(0U, allocationsOfAQueryOf(small));
  EXPECT_LT(0U, allocationsOfAQueryOf(large));
  EXPECT_LT(0U, allocationsOfAQueryOf(large)) << "the block is made";
  EXPECT_EQ(0U, allocationsOfAQueryOf(large));
  EXPECT_EQ(0U, allocationsOfAQueryOf(large / 3)) << "as long as a quarter is in use";
  EXPECT_EQ(0U, allocationsOfAQueryOf(large));
  EXPECT_EQ(0U, allocationsOfAQueryOf(small)) << "after which the large one goes";
  EXPECT_LT(0U, allocationsOfAQueryOf(small));
  EXPECT_EQ(0U, allocationsOfAQueryOf(small));
  EXPECT_LT(0U, allocationsOfAQueryOf(large));
  allocationsOfAQueryOf(large);
  allocationsOfAQueryOf(small);
}

TEST(QueryMemory, KeepsNoMoreThanForAHundredThousandEntities) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new cannot be counted here";
  constexpr std::size_t most = QueryMemory::keptAtMost;
  constexpr std::size_t tooLarge = most + 100'000;
  allocationsOfAQueryOf(tooLarge);
  EXPECT_LT(0U, allocationsOfAQueryOf(tooLarge));
  EXPECT_LT(0U, allocationsOfAQueryOf(tooLarge));
  EXPECT_LT(0U, allocationsOfAQueryOf(most - 100'000));
  EXPECT_LT(0U, allocationsOfAQueryOf(most - 100'000));
  EXPECT_EQ(0U, allocationsOfAQueryOf(most - 100'000));
  EXPECT_LT(0U, allocationsOfAQueryOf(tooLarge));
  allocationsOfAQueryOf(1000);
}

TEST(QueryMemory, GoesWithoutABlockWhereThereIsNoMemoryForIt) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new cannot be failed here";
  // Whose block is taken, so that the next one needs another.
  QueryMemory holder;
  std::optional<QueryMemory> memory;
  {
    const auto spy = tests::AllocationSpy::failNth(1);
    memory.emplace();
    EXPECT_EQ(1U, spy.counts().failures);
  }
  *memory->arrayOf<int>(1) = 1;
}

}  // namespace
}  // namespace velt::propdata
