#include "host/platform/VectorBlock.h"

#include <gtest/gtest.h>

namespace velt::platform {
namespace {

// Read while the constructors of this executable run.
[[gnu::constructor(101)]] void readEarly();
bool wasThereEarly = false;
void readEarly() {
  wasThereEarly = gpEmptyVectorData != nullptr && gpEmptyVectorData->refCount >= 1;
}

TEST(VectorBlock, TheEmptyBlockIsReferredToByTheHostAndHoldsNothing) {
  ASSERT_NE(nullptr, gpEmptyVectorData);
  EXPECT_EQ(1, gpEmptyVectorData->refCount);
  EXPECT_EQ(0U, gpEmptyVectorData->logicalLength);
  EXPECT_EQ(0U, gpEmptyVectorData->physicalLength);
  EXPECT_EQ(nullptr, gpEmptyVectorData->elements);
}

TEST(VectorBlock, VectorsThatStartEmptyGrowByEight) {
  EXPECT_EQ(8U, gpEmptyVectorData->growCount);
}

TEST(VectorBlock, IsThereBeforeAnyConstructorHasRun) {
  EXPECT_TRUE(wasThereEarly);
}

}  // namespace
}  // namespace velt::platform
