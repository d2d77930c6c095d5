#include "embedded/platform/SmallBlocks.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <vector>

#include "embedded/platform/GeneralHeap.h"

namespace velt::platform {
namespace {

TEST(SmallBlocks, HaveNoneAtFirst) {
  SmallBlocks blocks;
  EXPECT_EQ(nullptr, blocks.take(8));
}

TEST(SmallBlocks, GiveTheOneThatCameLastFirst) {
  SmallBlocks blocks;
  void* one = generalHeap::take(40);
  void* other = generalHeap::take(40);
  ASSERT_TRUE(blocks.keep(one, 40));
  ASSERT_TRUE(blocks.keep(other, 40));
  EXPECT_EQ(other, blocks.take(40));
  EXPECT_EQ(one, blocks.take(40));
  EXPECT_EQ(nullptr, blocks.take(40));
  generalHeap::giveBack(one);
  generalHeap::giveBack(other);
}

TEST(SmallBlocks, NeverGiveOneThatIsTooSmall) {
  for (std::size_t held = 1; held <= 2 * SmallBlocks::largest; ++held) {
    for (std::size_t wanted = 0; wanted <= 2 * SmallBlocks::largest; ++wanted) {
      SmallBlocks blocks;
      void* block = generalHeap::take(held);
      if (!blocks.keep(block, held)) {
        generalHeap::giveBack(block);
        break;
      }
      void* taken = blocks.take(wanted);
      if (taken == nullptr) continue;  // it goes with the blocks
      EXPECT_EQ(block, taken);
      EXPECT_LE(wanted, held);
      generalHeap::giveBack(taken);
    }
  }
}

// Some heaps have blocks of 8 bytes.
TEST(SmallBlocks, NeverKeepOneThatHasNoRoomForWhatStandsInAKeptBlock) {
  SmallBlocks blocks;
  std::byte tiny[32]{};
  for (std::size_t held = 0; held < 24; ++held) {
    EXPECT_FALSE(blocks.keep(tiny, held)) << held;
    EXPECT_FALSE(blocks.keepOf(tiny, SmallBlocks::kindOf(held))) << held;
    EXPECT_FALSE(blocks.keepAtOnce(tiny, SmallBlocks::kindOf(held))) << held;
  }
  EXPECT_EQ(nullptr, blocks.take(1));
}

TEST(SmallBlocks, GiveABlockToWhoeverAsksForAsMuchAsItWasMadeFor) {
  for (std::size_t bytes = 0; bytes <= SmallBlocks::largest; ++bytes) {
    const std::size_t held = SmallBlocks::sizeFor(bytes);
    EXPECT_GE(held, bytes);
    SmallBlocks blocks;
    void* block = generalHeap::take(held);
    ASSERT_TRUE(blocks.keep(block, held));
    EXPECT_EQ(block, blocks.take(bytes)) << bytes;
    generalHeap::giveBack(block);
  }
}

TEST(SmallBlocks, GiveABlockOfTheHeapToWhoeverAsksForAsMuch) {
  // As the C heap rounds them.
  for (std::size_t bytes = 24; bytes <= SmallBlocks::largest; bytes += 16) {
    SmallBlocks blocks;
    void* block = generalHeap::take(bytes);
    ASSERT_TRUE(blocks.keep(block, bytes));
    EXPECT_EQ(nullptr, blocks.take(bytes + 1));
    EXPECT_EQ(block, blocks.take(bytes - 15));
    generalHeap::giveBack(block);
  }
}

TEST(SmallBlocks, KeepNoLargeOnesAndNotTooMany) {
  SmallBlocks blocks;
  void* large = generalHeap::take(SmallBlocks::largest + 16);
  EXPECT_FALSE(blocks.keep(large, SmallBlocks::largest + 16));
  generalHeap::giveBack(large);
  for (std::uint32_t i = 0; i < SmallBlocks::keptOfEach; ++i)
    ASSERT_TRUE(blocks.keep(generalHeap::take(24), 24));
  void* tooMany = generalHeap::take(24);
  EXPECT_FALSE(blocks.keep(tooMany, 24));
  generalHeap::giveBack(tooMany);
}

TEST(SmallBlocksDeathTest, EndTheProcessWhenABlockIsGivenBackTwice) {
  SmallBlocks blocks;
  void* block = generalHeap::take(24);
  void* other = generalHeap::take(24);
  ASSERT_TRUE(blocks.keep(block, 24));
  ASSERT_TRUE(blocks.keep(other, 24));
  EXPECT_DEATH((void)blocks.keep(block, 24), "");
}

TEST(SmallBlocks, KeepAtOnceWhatDoesNotLookAsIfItWereKept) {
  SmallBlocks blocks;
  const SmallBlocks::Kind kind = SmallBlocks::kindFor(24);
  void* block = generalHeap::take(24);
  // What an earlier owner left there may look like anything.
  static_cast<const void**>(block)[1] = nullptr;
  EXPECT_TRUE(blocks.keepAtOnce(block, kind));
  EXPECT_FALSE(blocks.keepAtOnce(block, kind)) << "it is kept already";
  EXPECT_EQ(block, blocks.takeOf(kind));
  EXPECT_EQ(nullptr, blocks.takeOf(kind));
  // The same bytes as in a kept one.
  static_cast<const void**>(block)[1] = &blocks;
  EXPECT_FALSE(blocks.keepAtOnce(block, kind));
  EXPECT_TRUE(blocks.keepOf(block, kind));
  EXPECT_FALSE(blocks.keepAtOnce(block, SmallBlocks::kindFor(SmallBlocks::largest + 1)));
}

TEST(SmallBlocks, GiveSeveralAtOnceThatTheyHave) {
  SmallBlocks blocks;
  const SmallBlocks::Kind kind = SmallBlocks::kindFor(40);
  std::set<void*> all;
  for (int i = 0; i < 3; ++i) {
    void* const block = generalHeap::take(40);
    all.insert(block);
    ASSERT_TRUE(blocks.keepOf(block, kind));
  }
  EXPECT_TRUE(blocks.has(kind, 3));
  EXPECT_FALSE(blocks.has(kind, 4));
  EXPECT_FALSE(blocks.has(SmallBlocks::kindFor(SmallBlocks::largest + 1), 0));
  void* const* const taken = blocks.takeOf(kind, 2);
  EXPECT_NE(taken[0], taken[1]);
  for (void* const block : {taken[0], taken[1]}) {
    EXPECT_EQ(1U, all.erase(block));
    generalHeap::giveBack(block);
  }
  EXPECT_FALSE(blocks.has(kind, 2));
  void* const last = blocks.takeOf(kind);
  EXPECT_EQ(1U, all.count(last));
  generalHeap::giveBack(last);
}

// Until its second word is written, which is where the keeper stands.
TEST(SmallBlocks, TakenTogetherLookKeptUntilTheyAreWritten) {
  SmallBlocks blocks;
  const SmallBlocks::Kind kind = SmallBlocks::kindFor(24);
  void* const block = generalHeap::take(24);
  ASSERT_TRUE(blocks.keepOf(block, kind));
  EXPECT_EQ(block, blocks.takeOf(kind, 1)[0]);
  EXPECT_FALSE(blocks.keepAtOnce(block, kind));
  static_cast<const void**>(block)[1] = nullptr;
  EXPECT_TRUE(blocks.keepAtOnce(block, kind));
}

TEST(SmallBlocks, AreNotMisledByWhatABlockHolds) {
  SmallBlocks blocks;
  void* block = generalHeap::take(24);
  // The same bytes as in a kept one.
  static_cast<const void**>(block)[1] = &blocks;
  EXPECT_TRUE(blocks.keep(block, 24));
}

}  // namespace
}  // namespace velt::platform
