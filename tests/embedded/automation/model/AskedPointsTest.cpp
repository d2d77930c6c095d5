#include "embedded/automation/model/AskedPoints.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velt::automation {
namespace {

class AskedPointsTest : public testing::Test {
 protected:
  static constexpr const char* line = "AcDbLine";
  static constexpr const char* circle = "AcDbCircle";

  // The point is told by how many were read before it.
  double read(int code, const char* subclass, std::uint64_t revision) {
    return asked.of(code, subclass, revision, [&] { return Vector3{static_cast<double>(++reads), 0, 0}; }).x;
  }

  AskedPoints asked;
  int reads = 0;
};

TEST_F(AskedPointsTest, TwoPointsAreReadOnce) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(1, read(10, line, 5));
    EXPECT_EQ(2, read(11, line, 5));
  }
}

TEST_F(AskedPointsTest, AnEditMakesThemBeReadAgain) {
  EXPECT_EQ(1, read(10, line, 0));
  EXPECT_EQ(2, read(11, line, 0));
  EXPECT_EQ(3, read(10, line, 1));
  EXPECT_EQ(4, read(11, line, 1));
  EXPECT_EQ(3, read(10, line, 1));
}

TEST_F(AskedPointsTest, PointsOfAnotherSubclassAreOthers) {
  EXPECT_EQ(1, read(10, line, 5));
  EXPECT_EQ(2, read(10, circle, 5));
  EXPECT_EQ(3, read(10, line, 5));
}

TEST_F(AskedPointsTest, PointsThatCannotBeKeptTogetherAreReadEachTime) {
  EXPECT_EQ(1, read(10, line, 5));
  EXPECT_EQ(2, read(210, line, 5));
  EXPECT_EQ(3, read(10, line, 5));
  EXPECT_EQ(4, read(13, line, 5));
  EXPECT_EQ(3, read(10, line, 5));
}

TEST_F(AskedPointsTest, ForgetsForAnotherEntity) {
  EXPECT_EQ(1, read(10, line, 5));
  asked.forget();
  EXPECT_EQ(2, read(10, line, 5));
}

TEST_F(AskedPointsTest, WhatCouldNotBeReadIsReadAgain) {
  EXPECT_EQ(1, read(10, line, 5));
  EXPECT_THROW(static_cast<void>(asked.of(12, line, 5, []() -> Vector3 { throw std::runtime_error("no"); })),
               std::runtime_error);
  EXPECT_EQ(2, read(12, line, 5));
  EXPECT_EQ(3, read(10, line, 5));
}

}  // namespace
}  // namespace velt::automation
