#include "host/platform/Memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "embedded/platform/Allocation.h"

namespace velt::platform {
namespace {

TEST(Memory, GivesBlocksThatCanBeWrittenAndFreed) {
  void* block = _tqMalloc(32);
  ASSERT_NE(nullptr, block);
  std::memset(block, 1, 32);
  _tqFree(block);
  block = _tqMalloc(0);
  EXPECT_NE(nullptr, block);
  _tqFree(block);
  _tqFree(nullptr);
}

TEST(Memory, IsNullWhenExhausted) {
  EXPECT_EQ(nullptr, _tqMalloc(std::numeric_limits<std::size_t>::max()));
  const AllocationFault fault = AllocationFault::failNth(1, Heap::Host);
  EXPECT_EQ(nullptr, _tqMalloc(1));
  EXPECT_EQ(1U, fault.failures());
}

}  // namespace
}  // namespace velt::platform
