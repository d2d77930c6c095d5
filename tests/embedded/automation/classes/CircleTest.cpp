#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

// clang-format off
TEST(CircleTest, ItsMeasuresFollowFromTheRadius) {
  const auto drawing = Sample()
      .entity("CIRCLE", {{100, "AcDbCircle"}, {10, "1"}, {20, "2"}, {30, "3"}, {40, "2.5"}, {39, "7"}})
      .open();
  const Bound circle(*drawing, 0);
  EXPECT_EQ((Numbers{1, 2, 3}), circle.numbers(L"Center"));
  EXPECT_EQ(2.5, circle.real(L"Radius"));
  EXPECT_EQ(5, circle.real(L"Diameter"));
  EXPECT_DOUBLE_EQ(5 * pi, circle.real(L"Circumference"));
  EXPECT_DOUBLE_EQ(6.25 * pi, circle.real(L"Area"));
  EXPECT_EQ(7, circle.real(L"Thickness"));
}

TEST(CircleTest, TheCenterIsOfferedInTheWorld) {
  const auto drawing = Sample()
      .entity("CIRCLE", {{100, "AcDbCircle"}, {10, "1"}, {20, "2"}, {30, "3"}, {40, "1"}, {210, "0"}, {220, "0"}, {230, "-1"}})
      .open();
  const Bound circle(*drawing, 0);
  EXPECT_EQ((Numbers{-1, 2, -3}), circle.numbers(L"Center"));
  EXPECT_EQ(-1, circle.element(L"Center", 0));
  EXPECT_EQ((Numbers{0, 0, -1}), circle.numbers(L"Normal"));
}
// clang-format on

TEST(CircleTest, TheRadiusFollowsItsMeasures) {
  const auto drawing = Sample().entity("CIRCLE", {{10, "1"}, {20, "2"}, {40, "2.5"}}).open();
  const Bound circle(*drawing, 0);
  EXPECT_EQ(S_OK, circle.put(L"Diameter", number(8)).result);
  EXPECT_EQ("10=1 20=2 40=4.0", pairsOf(*drawing));
  EXPECT_EQ(S_OK, circle.put(L"Circumference", number(6 * pi)).result);
  EXPECT_NEAR(3, circle.real(L"Radius"), 1e-15);
  EXPECT_EQ(S_OK, circle.put(L"Area", number(4 * pi)).result);
  EXPECT_NEAR(2, circle.real(L"Radius"), 1e-15);
}

TEST(CircleTest, ARadiusIsGreaterThanZero) {
  const auto drawing = Sample().entity("CIRCLE", {{10, "1"}, {20, "2"}, {40, "2.5"}}).open();
  const Bound circle(*drawing, 0);
  for (const wchar_t* name : {L"Radius", L"Diameter", L"Circumference", L"Area"}) {
    EXPECT_EQ(E_INVALIDARG, circle.put(name, number(0)).scode);
    EXPECT_EQ(E_INVALIDARG, circle.put(name, number(-1)).scode);
  }
  EXPECT_EQ(E_INVALIDARG, circle.put(L"Diameter", number(5e-324)).scode) << "half of it is nothing";
  EXPECT_EQ("10=1 20=2 40=2.5", pairsOf(*drawing));
}

TEST(CircleTest, TheCenterIsPutInTheWorld) {
  const auto drawing =
      Sample()
          .entity("CIRCLE", {{10, "1"}, {20, "2"}, {30, "3"}, {40, "1"}, {210, "0"}, {220, "0"}, {230, "-1"}})
          .open();
  const Bound circle(*drawing, 0);
  EXPECT_EQ(S_OK, circle.putElement(L"Center", 0, 7));
  EXPECT_EQ("10=-7.0 20=2 30=3 40=1 210=0 220=0 230=-1", pairsOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
