#include "palette/text/AngleText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace velt::palette {
namespace {

using std::numbers::pi;

double degrees(double number) {
  return number * pi / 180.0;
}

NumberStyle anglesIn(AngleFormat format, int places) {
  NumberStyle style;
  style.angleFormat = format;
  style.anglePlaces = places;
  return style;
}

std::string directionText(double angle, const NumberStyle& style) {
  return angleText(angle, true, style);
}

// In degrees, to nine places.
double directionIn(const char* text, const NumberStyle& style) {
  const std::optional<double> angle = angleIn(text, true, style);
  EXPECT_TRUE(angle) << text;
  return std::round(angle.value_or(-1000) * 180.0 / pi * 1e9) / 1e9;
}

}  // namespace

TEST(AngleText, EachFormatHasItsForm) {
  const double angle = degrees(45.5);
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::degrees, 2)), "45.50\u00B0");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::degreesMinutesSeconds, 0)), "46\u00B0");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::degreesMinutesSeconds, 2)), "45\u00B030'");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::degreesMinutesSeconds, 4)), "45\u00B030'0\"");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::degreesMinutesSeconds, 6)), "45\u00B030'0.00\"");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::grads, 2)), "50.56g");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::radians, 3)), "0.794r");
  EXPECT_EQ(directionText(angle, anglesIn(AngleFormat::surveyor, 1)), "N 44\u00B030' E");
}

TEST(AngleText, BearingsCountFromNorthAndSouth) {
  const NumberStyle style = anglesIn(AngleFormat::surveyor, 0);
  EXPECT_EQ(directionText(0, style), "E");
  EXPECT_EQ(directionText(degrees(90), style), "N");
  EXPECT_EQ(directionText(degrees(180), style), "W");
  EXPECT_EQ(directionText(degrees(270), style), "S");
  EXPECT_EQ(directionText(degrees(120), style), "N 30\u00B0 W");
  EXPECT_EQ(directionText(degrees(200), style), "S 70\u00B0 W");
  EXPECT_EQ(directionText(degrees(-30), style), "S 60\u00B0 E");
  EXPECT_EQ(angleText(degrees(120), false, style), "120\u00B0") << "not a direction";
  EXPECT_EQ(directionIn("N 30 W", style), 120);
  EXPECT_EQ(directionIn("s70dw", style), 200);
  EXPECT_EQ(directionIn("S 60\u00B0 E", style), 330);
  EXPECT_EQ(directionIn("w", style), 180);
  for (const char* const text : {"N", "N 30 W"})
    EXPECT_EQ(angleIn(text, false, style), std::nullopt) << text;
  for (const char* const text : {"N 100 E", "N 30", "N -30 E", "N E", "NS"})
    EXPECT_EQ(angleIn(text, true, style), std::nullopt) << text;
}

TEST(AngleText, DirectionsBeginAndTurnAsTheDrawingSays) {
  NumberStyle style;
  style.angleBase = 90;
  EXPECT_EQ(directionText(degrees(120), style), "30\u00B0");
  EXPECT_EQ(directionText(degrees(60), style), "330\u00B0");
  EXPECT_EQ(directionIn("30", style), 120);
  style.isClockwise = true;
  EXPECT_EQ(directionText(degrees(60), style), "30\u00B0");
  EXPECT_EQ(directionIn("30", style), 60);
  EXPECT_EQ(angleText(degrees(120), false, style), "120\u00B0") << "not a direction";
  EXPECT_DOUBLE_EQ(*angleIn("120", false, style), degrees(120));
}

TEST(AngleText, AnAngleMayNameItsUnit) {
  const NumberStyle style = anglesIn(AngleFormat::grads, 0);
  EXPECT_EQ(angleIn("1.5 rad", false, style), 1.5);
  EXPECT_EQ(angleIn("-1.5r", false, style), -1.5);
  for (const char* const text : {"90\u00B0", "90d", "90 deg", "90d0'0\"", "100", "100 gon", "100g"})
    EXPECT_DOUBLE_EQ(*angleIn(text, false, style), pi / 2) << text;
  EXPECT_DOUBLE_EQ(*angleIn("45\u00B030'36\"", false, style), degrees(45.51));
  EXPECT_EQ(angleIn("1.5", false, anglesIn(AngleFormat::radians, 0)), 1.5);
  for (const char* const text : {"", "rad", "\u00B0", "45 m", "45\u00B030", "two", "--1", "45'"})
    EXPECT_EQ(angleIn(text, false, style), std::nullopt) << text;
}

TEST(AngleText, WhatIsShownIsUnderstoodAndShownAgain) {
  for (const int format : {0, 1, 2, 3, 4}) {
    for (const int places : {0, 1, 3, 6, 8}) {
      for (const bool isDirection : {false, true}) {
        const NumberStyle style = anglesIn(static_cast<AngleFormat>(format), places);
        for (const double angle : {0.0, 0.01, 30.0, 44.9999, 90.0, 135.7, 200.123, 359.99999, 1e-6}) {
          const std::string shown = angleText(degrees(angle), isDirection, style);
          const std::optional<double> back = angleIn(shown, isDirection, style);
          ASSERT_TRUE(back) << shown;
          EXPECT_EQ(angleText(*back, isDirection, style), shown) << angle;
        }
      }
    }
  }
}

TEST(AngleText, APreciseOneGivesTheAngleBack) {
  NumberStyle style = anglesIn(AngleFormat::radians, 0);
  style.isPrecise = true;
  EXPECT_EQ(angleText(pi / 6, false, style), "30\u00B0");
  for (const double angle : {0.1, 1.0, 2.0 / 3.0, 5.123456789012345})
    EXPECT_NEAR(*angleIn(angleText(angle, false, style), false, style), angle, 1e-15);
}

}  // namespace velt::palette
