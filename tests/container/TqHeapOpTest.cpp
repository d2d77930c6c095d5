#include "container/TqHeapOp.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/container/HostDoubles.h"
#include "tests/support/AllocationSpy.h"

namespace velt::tests {
namespace {

struct Block : TqHeapOp {
  int numbers[4] = {};
};

TEST(TqHeapOp, TakesBlocksFromTheHostsHeapAndGivesThemBack) {
  const long live = liveHostBlocks();
  const std::uint64_t calls = hostAllocations();
  const AllocationSpy spy;
  Block* const block = new Block;
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(hostAllocations(), calls + 1);
  EXPECT_EQ(liveHostBlocks(), live + 1);
  delete block;
  EXPECT_EQ(liveHostBlocks(), live);
  EXPECT_EQ(spy.counts().news, 0u);
}

TEST(TqHeapOp, GivesNullAndNoExceptionWhenTheHeapIsExhausted) {
  const HostHeapFault fault = HostHeapFault::failAll();
  EXPECT_EQ(new Block, nullptr);
  EXPECT_EQ(fault.failures(), 1u);
}

template <class T>
using Numbers = std::map<std::string, T, std::less<>, _TqSTLAllocator<std::pair<const std::string, T>>>;

TEST(TqSTLAllocator, TakesTheNodesOfAMapFromTheHostsHeap) {
  const long live = liveHostBlocks();
  {
    Numbers<int> map;
    map["a"] = 1;
    map["b"] = 2;
    EXPECT_EQ(liveHostBlocks(), live + 2);
    map.erase("a");
    EXPECT_EQ(liveHostBlocks(), live + 1);
  }
  EXPECT_EQ(liveHostBlocks(), live);
}

TEST(TqSTLAllocator, ThrowsAsAStandardAllocatorWhenTheHeapIsExhausted) {
  Numbers<int> map;
  map["a"] = 1;
  {
    const HostHeapFault fault = HostHeapFault::failAll();
    EXPECT_THROW(map["b"], std::bad_alloc);
  }
  EXPECT_EQ(map.size(), 1u);
  map["b"] = 2;
  EXPECT_EQ(map.at("b"), 2);
}

TEST(TqSTLAllocator, RefusesMoreThanCanBeCounted) {
  const std::uint64_t calls = hostAllocations();
  _TqSTLAllocator<double> allocator;
  EXPECT_THROW(static_cast<void>(allocator.allocate(std::numeric_limits<std::size_t>::max() / 4)),
               std::bad_alloc);
  EXPECT_EQ(hostAllocations(), calls);
}

TEST(TqSTLAllocator, AllAreAlike) {
  const _TqSTLAllocator<int> ints;
  const _TqSTLAllocator<double> doubles(ints);
  EXPECT_TRUE(ints == doubles);
  // So one container may give back what another took.
  std::vector<int, _TqSTLAllocator<int>> first{1, 2, 3};
  std::vector<int, _TqSTLAllocator<int>> second;
  const int* const elements = first.data();
  second = std::move(first);
  EXPECT_EQ(second.data(), elements);
}

TEST(TqSTLAllocator, AsksForRoomForAllElements) {
  _TqSTLAllocator<double> allocator;
  double* const numbers = allocator.allocate(100);
  for (int i = 0; i < 100; ++i)
    std::construct_at(numbers + i, i);  // a sanitizer sees a block that is too small
  EXPECT_EQ(numbers[99], 99.0);
  allocator.deallocate(numbers, 100);
}

}  // namespace
}  // namespace velt::tests
