#include "view/Letters.h"

#include <gtest/gtest.h>

namespace velt::view {
namespace {

TEST(Letters, BroadLettersTakeMoreRoomThanNarrowOnes) {
  EXPECT_GT(lengthOf(L"W"), 2 * lengthOf(L"l"));
  EXPECT_NEAR(lengthOf(L"\x4E2D"), 1 / capitalHeight, 1e-12);
}

TEST(Letters, ATextIsAsLongAsItsLetters) {
  EXPECT_EQ(lengthOf(L""), 0);
  EXPECT_NEAR(lengthOf(L"Wall"), lengthOf(L"W") + lengthOf(L"a") + 2 * lengthOf(L"l"), 1e-12);
}

}  // namespace
}  // namespace velt::view
