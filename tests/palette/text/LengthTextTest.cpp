#include "palette/text/LengthText.h"

#include <gtest/gtest.h>

namespace velt::palette {
namespace {

NumberStyle lengthsIn(LengthFormat format, int places) {
  NumberStyle style;
  style.lengthFormat = format;
  style.lengthPlaces = places;
  return style;
}

}  // namespace

TEST(LengthText, EachFormatHasItsForm) {
  EXPECT_EQ(lengthText(15.5, lengthsIn(LengthFormat::scientific, 2)), "1.55E+01");
  EXPECT_EQ(lengthText(15.5, lengthsIn(LengthFormat::decimal, 2)), "15.50");
  EXPECT_EQ(lengthText(15.5, lengthsIn(LengthFormat::engineering, 2)), "1'-3.50\"");
  EXPECT_EQ(lengthText(15.5, lengthsIn(LengthFormat::architectural, 4)), "1'-3 1/2\"");
  EXPECT_EQ(lengthText(15.5, lengthsIn(LengthFormat::fractional, 4)), "15 1/2");
}

TEST(LengthText, FractionsAreCancelledAndRoundedWithTheirFeet) {
  const NumberStyle sixteenths = lengthsIn(LengthFormat::architectural, 4);
  EXPECT_EQ(lengthText(66.25, sixteenths), "5'-6 1/4\"");
  EXPECT_EQ(lengthText(-0.5, sixteenths), "-1/2\"");
  EXPECT_EQ(lengthText(12, sixteenths), "1'-0\"");
  EXPECT_EQ(lengthText(11.99, sixteenths), "1'-0\"");
  EXPECT_EQ(lengthText(11.999, lengthsIn(LengthFormat::engineering, 2)), "1'-0.00\"");
  EXPECT_EQ(lengthText(0, sixteenths), "0\"");
  EXPECT_EQ(lengthText(0.001, sixteenths), "0.0010\"") << "not 0";
  EXPECT_EQ(lengthText(1e300, sixteenths), "1e+300\"");
}

TEST(LengthText, ZeroFeetAndZeroInchesAreThereWhereTheStyleHasThem) {
  NumberStyle style = lengthsIn(LengthFormat::architectural, 4);
  style.hasZeroFeet = true;
  EXPECT_EQ(lengthText(6, style), "0'-6\"");
  style.hasZeroInches = false;
  EXPECT_EQ(lengthText(24, style), "2'");
  EXPECT_EQ(lengthText(24.5, style), "2'-0 1/2\"");
  style.hasZeroFeet = false;
  EXPECT_EQ(lengthText(-24, style), "-2'");
  EXPECT_EQ(lengthText(6, style), "6\"");
}

TEST(LengthText, WhatIsShownAsTypedHasNoBlanks) {
  NumberStyle style = lengthsIn(LengthFormat::architectural, 4);
  style.isAsTyped = true;
  EXPECT_EQ(lengthText(66.5, style), "5'6-1/2\"");
  style.lengthFormat = LengthFormat::fractional;
  EXPECT_EQ(lengthText(15.5, style), "15-1/2");
}

TEST(LengthText, FeetAndInchesAreUnderstoodWhereTheyAreTheFormat) {
  for (const LengthFormat format : {LengthFormat::engineering, LengthFormat::architectural}) {
    const NumberStyle style = lengthsIn(format, 4);
    EXPECT_EQ(lengthIn("5'6\"", style), 66.0);
    EXPECT_EQ(lengthIn("5'-6 1/2\"", style), 66.5);
    EXPECT_EQ(lengthIn("5'6-1/2\"", style), 66.5);
    EXPECT_EQ(lengthIn("-5' 6", style), -66.0);
    EXPECT_EQ(lengthIn("5'", style), 60.0);
    EXPECT_EQ(lengthIn("66.5", style), 66.5) << "inches are the unit";
    for (const char* const text : {"'6\"", "5'-6'", "5'--6\"", "5'x\"", "\"", "5' -6' "})
      EXPECT_EQ(lengthIn(text, style), std::nullopt) << text;
  }
  EXPECT_EQ(lengthIn("5'6\"", lengthsIn(LengthFormat::decimal, 4)), std::nullopt);
  EXPECT_EQ(lengthIn("15 1/2", lengthsIn(LengthFormat::decimal, 4)), 15.5);
}

TEST(LengthText, WhatIsShownIsUnderstoodAndShownAgain) {
  for (int variant = 0; variant < 32; ++variant) {
    for (const int format : {1, 2, 3, 4, 5}) {
      NumberStyle style = lengthsIn(static_cast<LengthFormat>(format), variant % 3 * 4);
      style.hasLeadingZeros = (variant & 1) == 0;
      style.hasTrailingZeros = (variant & 2) == 0;
      style.hasZeroFeet = (variant & 4) == 0;
      style.hasZeroInches = (variant & 8) == 0;
      style.isAsTyped = (variant & 16) == 0;
      for (const double length :
           {0.0, 1.0, -1.0, 0.3, 11.9999, 12.0, 15.5, -66.53, 1234567.891, 3e-7, 1e16, 9e299}) {
        const std::string shown = lengthText(length, style);
        const std::optional<double> back = lengthIn(shown, style);
        ASSERT_TRUE(back) << shown;
        EXPECT_EQ(lengthText(*back, style), shown) << length;
      }
    }
  }
}

TEST(LengthText, APreciseOneHasAllDigitsInAnyFormat) {
  NumberStyle style = lengthsIn(LengthFormat::architectural, 4);
  style.isPrecise = true;
  EXPECT_EQ(lengthText(15.123456789012344, style), "15.123456789012344");
  EXPECT_EQ(lengthIn("15.123456789012344", style), 15.123456789012344);
}

}  // namespace velt::palette
