#include "embedded/platform/GeneralHeap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

namespace velt::platform {
namespace {

TEST(GeneralHeap, GivesAtLeastAsMuchAsWasAskedFor) {
  for (const std::size_t bytes : {1U, 8U, 24U, 40U, 136U, 1000U, 100'000U, 10'000'000U}) {
    void* const block = generalHeap::take(bytes);
    ASSERT_NE(nullptr, block) << bytes;
    EXPECT_LE(bytes, generalHeap::sizeOf(block));
    const std::size_t alignment = std::min(std::bit_floor(bytes), alignof(std::max_align_t));
    EXPECT_EQ(0U, reinterpret_cast<std::uintptr_t>(block) % alignment) << bytes;
    std::memset(block, 1, bytes);
    generalHeap::giveBack(block);
  }
}

TEST(GeneralHeap, ClearsABlockThatWasUsedBefore) {
  for (const std::size_t bytes : {40U, 4000U, 4'000'000U}) {
    void* const used = generalHeap::take(bytes);
    ASSERT_NE(nullptr, used);
    std::memset(used, 1, bytes);
    generalHeap::giveBack(used);
    void* const block = generalHeap::takeZeroed(bytes);
    ASSERT_NE(nullptr, block);
    const auto* const first = static_cast<const std::byte*>(block);
    EXPECT_TRUE(std::all_of(first, first + bytes, [](std::byte byte) { return byte == std::byte{0}; }))
        << bytes;
    generalHeap::giveBack(block);
  }
}

TEST(GeneralHeap, TakesNothingBackForNull) {
  generalHeap::giveBack(nullptr);
  EXPECT_EQ(0U, generalHeap::sizeOf(nullptr));
}

TEST(GeneralHeap, BlocksThatAreInUseStayWhereNothingIsSpared) {
  void* const used = generalHeap::take(100'000);
  ASSERT_NE(nullptr, used);
  std::memset(used, 7, 100'000);
  {
    const generalHeap::NothingSpared measuring;
    generalHeap::giveBack(generalHeap::take(1'000'000));
  }
  const auto* const first = static_cast<const std::byte*>(used);
  EXPECT_TRUE(std::all_of(first, first + 100'000, [](std::byte byte) { return byte == std::byte{7}; }));
  generalHeap::giveBack(used);
}

TEST(GeneralHeap, TakesBlocksBackOnAnotherThread) {
  std::vector<void*> blocks(1000);
  for (void*& block : blocks)
    block = generalHeap::take(40);
  std::thread([&] {
    for (void* block : blocks)
      generalHeap::giveBack(block);
  }).join();
  void* const block = generalHeap::take(40);
  EXPECT_NE(nullptr, block);
  generalHeap::giveBack(block);
}

}  // namespace
}  // namespace velt::platform
