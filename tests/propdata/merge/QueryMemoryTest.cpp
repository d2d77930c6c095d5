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
  for (std::uint32_t i = 0; i < 3 * QueryMemory::kept / 1000; ++i) {
    pieces.push_back(memory.arrayOf<std::uint32_t>(250));
    std::fill_n(pieces.back(), 250, i);
  }
  for (std::uint32_t i = 0; i < pieces.size(); ++i)
    ASSERT_EQ(250, std::count(pieces[i], pieces[i] + 250, i)) << i;
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
