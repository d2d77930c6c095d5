#include "palette/text/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

namespace velt::palette {

TEST(NumberText, ANumberThatIsNot0IsNotShownAs0) {
  EXPECT_EQ(decimalText(12.5, 3), "12.500");
  EXPECT_EQ(decimalText(0.0, 3), "0.000");
  EXPECT_EQ(decimalText(-0.000123456, 3), "-0.0001235");
  EXPECT_EQ(decimalText(0.0000123456, 3), "1.235e-05");
  EXPECT_EQ(decimalText(0.4, 0), "0.4");
  EXPECT_EQ(decimalText(-1e-15, 3), "0.000") << "from rounding in a computation";
}

TEST(NumberText, ZerosAtEitherEndGoWhereTheStyleHasNone) {
  NumberStyle trailing, leading;
  trailing.hasTrailingZeros = false;
  leading.hasLeadingZeros = false;
  EXPECT_EQ(withZeros("2.5000", {}), "2.5000");
  EXPECT_EQ(withZeros("2.5000", trailing), "2.5");
  EXPECT_EQ(withZeros("-20.0000", trailing), "-20");
  EXPECT_EQ(withZeros("0.00", trailing), "0");
  EXPECT_EQ(withZeros("100", trailing), "100");
  EXPECT_EQ(withZeros("1.500E+10", trailing), "1.5E+10");
  EXPECT_EQ(withZeros("1.000E+10", trailing), "1E+10");
  EXPECT_EQ(withZeros("-0.50", leading), "-.50");
  EXPECT_EQ(withZeros("0.00", leading), "0.00") << "a point alone is no number";
  EXPECT_EQ(withZeros("10.5", leading), "10.5");
}

TEST(NumberText, NumbersWithoutEndAndHugeOnesAreShownAllTheSame) {
  EXPECT_EQ(decimalText(std::numeric_limits<double>::quiet_NaN(), 3), "");
  EXPECT_EQ(decimalText(-std::numeric_limits<double>::infinity(), 3), "-inf");
  EXPECT_EQ(decimalText(1e300, 3), "1e+300");
}

TEST(NumberText, TheExactTextHasAllDigits) {
  EXPECT_EQ(exactText(0.1), "0.1");
  EXPECT_EQ(decimalIn(exactText(1.0 / 3.0)), 1.0 / 3.0);
  EXPECT_EQ(exactText(std::numeric_limits<double>::quiet_NaN()), "");
}

TEST(NumberText, OnlyAWholeFiniteNumberIsOne) {
  EXPECT_EQ(decimalIn(" +2.5e1 "), 25.0);
  EXPECT_EQ(decimalIn("-.5"), -0.5);
  for (const char* const text : {"", "-", "+-1", "1,5", "1.5m", "nan", "inf", "1e999", "0x10"})
    EXPECT_EQ(decimalIn(text), std::nullopt) << text;
}

TEST(NumberText, FractionsAreNumbers) {
  EXPECT_EQ(unsignedIn("1/2"), 0.5);
  EXPECT_EQ(unsignedIn("3 1/2"), 3.5);
  EXPECT_EQ(unsignedIn("3-1/2"), 3.5);
  EXPECT_EQ(unsignedIn("3"), 3.0);
  for (const char* const text : {"-1/2", "1/0", "1/2/4", "3 1", "/2", "1/", "3 1/-4"})
    EXPECT_EQ(unsignedIn(text), std::nullopt) << text;
  EXPECT_EQ(unsignedIn("-1"), std::nullopt);
}

}  // namespace velt::palette
