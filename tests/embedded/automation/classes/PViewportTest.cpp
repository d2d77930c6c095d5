#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithPViewport() {
  // clang-format off
  return Sample()
      .version("AC1027")
      .tableRecord("BLOCK_RECORD", {{5, "70"}, {2, "*Paper_Space"}, {340, "71"}})
      .entity("VIEWPORT", {{5, "72"}, {330, "70"}, {100, "AcDbEntity"}, {67, "1"}, {100, "AcDbViewport"}, {10, "5"}, {20, "6"}, {30, "0"}, {40, "150"}, {41, "100"}, {17, "1"}, {27, "2"}, {37, "3"}, {16, "0"}, {26, "0"}, {36, "1"}, {42, "35"}, {45, "200"}, {51, "90"}, {71, "1"}, {90, "16384"}, {1, "plain.ctb"}, {281, "2"}, {170, "3"}})
      .entity("VIEWPORT", {{100, "AcDbViewport"}, {68, "0"}, {340, "5"}})
      .entity("VIEWPORT", {{100, "AcDbViewport"}, {90, "131072"}})
      .object("LAYOUT", {{5, "71"}, {100, "AcDbPlotSettings"}, {7, "sheet.stb"}, {100, "AcDbLayout"}, {1, "Sheet 1"}, {330, "70"}})
      .open();
  // clang-format on
}

TEST(PViewportTest, TellsWhatItShowsAndHow) {
  const auto drawing = drawingWithPViewport();
  const Bound made(*drawing, 0);
  EXPECT_EQ(150, made.real(L"Width"));
  EXPECT_EQ(100, made.real(L"Height"));
  EXPECT_EQ(0.5, made.real(L"CustomScale"));
  EXPECT_TRUE(made.flag(L"On"));
  EXPECT_TRUE(made.flag(L"DisplayLocked"));
  EXPECT_TRUE(made.flag(L"UCSPerViewport"));
  EXPECT_FALSE(made.flag(L"Clipped"));
  EXPECT_EQ(2, made.integer(L"RenderMode"));
  EXPECT_EQ(3, made.integer(L"ShadePlot"));
  EXPECT_EQ(L"plain.ctb", made.text(L"PlotStyleTable"));
  EXPECT_EQ(L"sheet.stb", made.text(L"SheetPlotStyleTable"));
  EXPECT_EQ(L"Sheet 1", made.text(L"SheetName"));
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"Target"));
  EXPECT_EQ(35, made.real(L"LensLength"));
}

TEST(PViewportTest, IsOffByAFlagOrByItsNumber) {
  const auto drawing = drawingWithPViewport();
  EXPECT_FALSE(Bound(*drawing, 1).flag(L"On"));
  EXPECT_TRUE(Bound(*drawing, 1).flag(L"Clipped"));
  EXPECT_FALSE(Bound(*drawing, 2).flag(L"On"));
  EXPECT_EQ(DISP_E_EXCEPTION, Bound(*drawing, 1).get(L"CustomScale").result);
}

TEST(PViewportTest, OldDrawingsTellWhatIsSeenAmongOtherData) {
  // clang-format off
  const auto drawing = Sample()
      .entity("VIEWPORT", {{10, "1"}, {40, "20"}, {41, "10"}, {1001, "ACAD"}, {1000, "MVIEW"}, {1002, "{"}, {1070, "16"}, {1040, "0.5"}, {1040, "40"},
                           {1040, "3"}, {1002, "}"}})
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(40, made.real(L"ViewHeight"));
  EXPECT_EQ(0.25, made.real(L"CustomScale"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"CustomScale", test::number(1)).result);
}

TEST(PViewportTest, AnotherScaleShowsMoreOrLess) {
  const auto drawing = drawingWithPViewport();
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"CustomScale", test::number(0.25)).result);
  EXPECT_EQ(400, made.real(L"ViewHeight"));
  EXPECT_EQ(100, made.real(L"Height"));
}

}  // namespace
}  // namespace velt::automation
