#include "embedded/automation/hatches/HatchPattern.h"

#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

class HatchPatternTest : public ::testing::Test {
 protected:
  Subject hatch(Pairs lines) {
    drawing = Sample().entity("HATCH", lines).open();
    return subjectOf(*drawing);
  }
  [[nodiscard]] double at(int code, std::size_t occurrence = 0) const {
    return *drawing->view(recordOf(*drawing, 0)).real(code, "AcDbHatch", occurrence);
  }
  std::unique_ptr<Drawing> drawing;
};

const Pairs twoFamilies = {{100, "AcDbHatch"}, {10, "0.0"},  {40, "9.0"}, {78, "2"},   {53, "350.0"},
                           {43, "1.0"},        {44, "2.0"},  {45, "3.0"}, {46, "0.0"}, {79, "2"},
                           {49, "4.0"},        {49, "-1.0"}, {53, "0.0"}, {43, "0.0"}, {44, "0.0"},
                           {45, "0.0"},        {46, "5.0"},  {79, "0"}};

TEST_F(HatchPatternTest, EveryFamilyTurnsAboutTheOrigin) {
  changePatternLines(hatch(twoFamilies), {1, 1}, pi / 2, 1);
  EXPECT_NEAR(80, at(53), 1e-9);
  EXPECT_NEAR(0, at(43), 1e-12);
  EXPECT_NEAR(1, at(44), 1e-12);
  EXPECT_NEAR(0, at(45), 1e-12);
  EXPECT_NEAR(3, at(46), 1e-12);
  EXPECT_EQ(90, at(53, 1));
  EXPECT_NEAR(-5, at(45, 1), 1e-12);
  EXPECT_EQ(4, at(49));
}

TEST_F(HatchPatternTest, EveryFamilyIsScaledFromTheOrigin) {
  changePatternLines(hatch(twoFamilies), {1, 1}, 0, 2);
  EXPECT_EQ(
      "100=AcDbHatch 10=0.0 40=9.0 78=2 53=350.0 43=1.0 44=3.0 45=6.0 46=0.0 79=2 49=8.0 49=-2.0 "
      "53=0.0 43=-1.0 44=-1.0 45=0.0 46=10.0 79=0",
      pairsOf(*drawing));
}

TEST_F(HatchPatternTest, LinesThatAreIncompleteAreRefused) {
  EXPECT_EQ(E_FAIL, refusalOf([&] {
              changePatternLines(hatch({{100, "AcDbHatch"}, {53, "0.0"}, {43, "0.0"}}), {0, 0}, 1, 1);
            }));
  EXPECT_EQ(E_FAIL, refusalOf([&] {
              changePatternLines(
                  hatch({{100, "AcDbHatch"}, {53, "0.0"}, {43, "x"}, {44, "0.0"}, {45, "0.0"}, {46, "1.0"}}),
                  {0, 0}, 1, 1);
            }));
}

TEST_F(HatchPatternTest, AHatchThatStoresNoLinesStaysAsItIs) {
  changePatternLines(hatch({{100, "AcDbHatch"}, {78, "0"}}), {0, 0}, 1, 2);
  EXPECT_EQ("100=AcDbHatch 78=0", pairsOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
