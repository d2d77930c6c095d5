#include "view/TextStyles.h"

#include <gtest/gtest.h>

#include "tests/view/Scene.h"

namespace velt::view {
namespace {

using namespace velt::tests;

TextStyle styleIn(const std::string& own) {
  std::string text = drawingOf({{"0"}}, "");
  const std::string place = pairs({{2, "TABLES"}});
  text.insert(text.find(place) + place.size(),
              pairs({{0, "TABLE"}, {2, "STYLE"}, {0, "STYLE"}, {5, "F1"}, {2, "Notes"}, {70, "0"}}) + own
                  + pairs({{0, "ENDTAB"}}));
  const auto drawing = database::Drawing::parse(text, "styles");
  return textStyleNamed(*drawing, L"NOTES");
}

TEST(TextStyles, AFontFileIsItsFamilyAndStrokesHaveNone) {
  EXPECT_EQ(styleIn(pairs({{3, "C:\\Fonts\\Arial.TTF"}})).family, L"Arial");
  EXPECT_EQ(styleIn(pairs({{3, "romans.shx"}})).family, L"");
  EXPECT_EQ(styleIn(pairs({{3, "txt"}})).family, L"");
}

TEST(TextStyles, TheFamilyInTheExtendedDataCountsFirst) {
  const TextStyle style =
      styleIn(pairs({{3, "arialbd.ttf"}, {1001, "ACAD"}, {1000, "Liberation Serif"}, {1071, "50331648"}}));
  EXPECT_EQ(style.family, L"Liberation Serif");
  EXPECT_TRUE(style.isBold);
  EXPECT_TRUE(style.isItalic);
}

TEST(TextStyles, WidthsAndSlantsAreThoseOfTheStyleIfTheyMakeSense) {
  const TextStyle style = styleIn(pairs({{41, "0.8"}, {50, "90"}}));
  EXPECT_DOUBLE_EQ(style.widthFactor, 0.8);
  EXPECT_NEAR(style.oblique, 1.5708, 1e-4);
  EXPECT_DOUBLE_EQ(styleIn(pairs({{41, "-3"}})).widthFactor, 1);
}

TEST(TextStyles, AStyleThatIsMissingIsPlain) {
  const auto drawing = database::Drawing::parse(drawingOf({{"0"}}, ""), "none");
  EXPECT_EQ(textStyleNamed(*drawing, L"Missing").family, L"");
  EXPECT_EQ(textStyleOfHandle(*drawing, 0xFFFF).widthFactor, 1);
}

}  // namespace
}  // namespace velt::view
