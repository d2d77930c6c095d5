#include "embedded/platform/Allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace velt::platform {
namespace {

// '1' for an allocation that succeeds, '0' for one that fails.
std::string attempts(int count, Heap heap, std::size_t bytes = 8) {
  std::string outcomes;
  for (int i = 0; i < count; ++i) {
    void* block = allocate(heap, bytes);
    outcomes += block != nullptr ? '1' : '0';
    deallocate(block);
  }
  return outcomes;
}

// Whoever keeps a block writes two words into it, however little was asked for.
TEST(Allocation, TheSmallestBlocksStayApartWhenTheyAreGivenBackAndTakenAgain) {
  for (int round = 0; round < 3; ++round) {
    std::vector<unsigned char*> blocks;
    for (std::size_t i = 0; i < 200; ++i) {
      const std::size_t bytes = 1 + i % 24;
      auto* const block = static_cast<unsigned char*>(i % 2 == 0 ? allocateZeroed(Heap::Arrays, bytes)
                                                                 : allocate(Heap::Arrays, bytes));
      ASSERT_NE(nullptr, block);
      std::memset(block, static_cast<int>(i), bytes);
      blocks.push_back(block);
    }
    // Others first, so that what is kept lies between what is in use.
    for (std::size_t i = 0; i < blocks.size(); i += 3) {
      deallocate(blocks[i]);
      blocks[i] = nullptr;
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      if (blocks[i] == nullptr) continue;
      for (std::size_t at = 0; at < 1 + i % 24; ++at)
        ASSERT_EQ(static_cast<unsigned char>(i), blocks[i][at]) << i;
      deallocate(blocks[i]);
    }
  }
}

TEST(Allocation, NoBytesAreABlockTooAndEveryBlockIsAligned) {
  for (const std::size_t bytes : {std::size_t{0}, std::size_t{1}, std::size_t{17}}) {
    void* block = allocate(Heap::Host, bytes);
    ASSERT_NE(nullptr, block);
    EXPECT_EQ(0U, reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t));
    deallocate(block);
  }
  deallocate(nullptr);
}

TEST(Allocation, ZeroedMemoryIsZero) {
  auto* block = static_cast<unsigned char*>(allocateZeroed(Heap::Host, 1000));
  ASSERT_NE(nullptr, block);
  for (int i = 0; i < 1000; ++i)
    ASSERT_EQ(0, block[i]);
  deallocate(block);
}

TEST(Allocation, MoreThanThereCanBeIsNull) {
  for (const std::size_t bytes : {std::numeric_limits<std::size_t>::max(), std::size_t{1} << 62}) {
    EXPECT_EQ(nullptr, allocate(Heap::Host, bytes));
    EXPECT_EQ(nullptr, allocateZeroed(Heap::Host, bytes));
  }
}

TEST(AllocationFault, FailsTheNthAllocationAlone) {
  const AllocationFault fault = AllocationFault::failNth(3);
  EXPECT_EQ("110111", attempts(6, Heap::Strings));
  EXPECT_EQ(6U, fault.allocations());
  EXPECT_EQ(1U, fault.failures());
}

TEST(AllocationFault, FailsEveryAllocationFromTheNthOn) {
  const AllocationFault fault = AllocationFault::failFrom(3);
  EXPECT_EQ("110000", attempts(6, Heap::Strings));
  EXPECT_EQ(4U, fault.failures());
}

TEST(AllocationFault, FailsWhatIsLargerThanALimit) {
  const AllocationFault fault = AllocationFault::failAbove(100);
  EXPECT_EQ("11", attempts(2, Heap::Host, 100));
  EXPECT_EQ("00", attempts(2, Heap::Host, 101));
  EXPECT_EQ(nullptr, allocateZeroed(Heap::Arrays, 101));
}

TEST(AllocationFault, CountsAndFailsInTheNamedHeapsOnly) {
  const AllocationFault fault = AllocationFault::failFrom(1, Heap::Strings | Heap::Arrays);
  EXPECT_EQ("1", attempts(1, Heap::Host));
  EXPECT_EQ("0", attempts(1, Heap::Strings));
  EXPECT_EQ("1", attempts(1, Heap::TaskMemory));
  EXPECT_EQ("0", attempts(1, Heap::Arrays));
  EXPECT_EQ("1", attempts(1, Heap::Objects));
  EXPECT_EQ(2U, fault.allocations());
}

TEST(AllocationFault, CountingAloneFailsNothing) {
  const AllocationFault fault = AllocationFault::countOnly();
  EXPECT_EQ("1111", attempts(4, Heap::Objects));
  EXPECT_EQ(4U, fault.allocations());
  EXPECT_EQ(0U, fault.failures());
}

TEST(AllocationFault, EndsWithItsScope) {
  {
    const AllocationFault fault = AllocationFault::failFrom(1);
    EXPECT_EQ("0", attempts(1, Heap::Host));
  }
  EXPECT_EQ("1", attempts(1, Heap::Host));
}

TEST(AllocationFault, ANewOneStartsToCountAnew) {
  { const AllocationFault fault = AllocationFault::failNth(2); }
  const AllocationFault fault = AllocationFault::failNth(1);
  EXPECT_EQ("01", attempts(2, Heap::Host));
}

}  // namespace
}  // namespace velt::platform
