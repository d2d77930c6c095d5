#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

std::unique_ptr<Drawing> drawingWithPdfUnderlay() {
  // clang-format off
  return Sample()
      .entity("PDFUNDERLAY", {{100, "AcDbUnderlayReference"}, {340, "60"}, {10, "1"}, {20, "2"}, {30, "3"}, {41, "0.5"}, {42, "2"}, {43, "1"}, {50, "90"}, {280, "11"}, {281, "5"}, {282, "30"}})
      .object("DICTIONARY", {{5, "61"}, {3, "site - 2"}, {350, "60"}})
      .object("PDFDEFINITION", {{5, "60"}, {330, "61"}, {100, "AcDbUnderlayDefinition"}, {1, "site.pdf"}, {2, "2"}})
      .open();
  // clang-format on
}

TEST(PdfUnderlayTest, TellsWhatItShowsAndHow) {
  const auto drawing = drawingWithPdfUnderlay();
  const Bound made(*drawing, 0);
  EXPECT_EQ(0.5, made.real(L"XScaleFactor"));
  EXPECT_EQ(2, made.real(L"YScaleFactor"));
  EXPECT_DOUBLE_EQ(std::numbers::pi / 2, made.real(L"Rotation"));
  EXPECT_EQ(L"site - 2", made.text(L"Name"));
  EXPECT_EQ(L"site.pdf", made.text(L"File"));
  EXPECT_EQ(L"2", made.text(L"ItemName"));
  EXPECT_TRUE(made.flag(L"ClippingEnabled"));
  EXPECT_TRUE(made.flag(L"UnderlayVisibility"));
  EXPECT_FALSE(made.flag(L"Monochrome"));
  EXPECT_TRUE(made.flag(L"AdjustColors"));
  EXPECT_EQ(20, made.integer(L"Contrast")) << "the least there is";
  EXPECT_EQ(30, made.integer(L"Fade"));
}

TEST(PdfUnderlayTest, KeepsContrastAndFadeWithinTheirBounds) {
  const auto drawing = drawingWithPdfUnderlay();
  const Bound made(*drawing, 0);
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"Fade", test::integer(81)).result);
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"Contrast", test::integer(19)).result);
  EXPECT_EQ(S_OK, made.put(L"Fade", test::integer(80)).result);
  EXPECT_EQ(80, made.integer(L"Fade"));
}

TEST(PdfUnderlayTest, WithoutItsDefinitionTellsNoFile) {
  // clang-format off
  const auto drawing = Sample().entity("PDFUNDERLAY", {{100, "AcDbUnderlayReference"}, {340, "60"}}).open();
  // clang-format on
  EXPECT_EQ(L"", Bound(*drawing, 0).text(L"File"));
  EXPECT_EQ(100, Bound(*drawing, 0).integer(L"Contrast"));
}

}  // namespace
}  // namespace velt::automation
