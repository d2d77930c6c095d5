#include "dxf/Numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <stdexcept>

namespace velt::dxf {
namespace {

TEST(Numbers, ARealIsWrittenWithThePointOrExponentThatReadersTellItBy) {
  EXPECT_EQ(formatReal(0.0), "0.0");
  EXPECT_EQ(formatReal(-0.0), "-0.0");
  EXPECT_EQ(formatReal(5.0), "5.0");
  EXPECT_EQ(formatReal(100000.0), "100000.0");
  EXPECT_EQ(formatReal(0.1), "0.1");
  EXPECT_EQ(formatReal(-2.5), "-2.5");
  EXPECT_EQ(formatReal(0.00001), "0.00001");
  EXPECT_EQ(formatReal(1e-9), "1e-09");
  EXPECT_EQ(formatReal(1e20), "1e+20");
}

TEST(Numbers, ARealReadsBackAsTheSameDouble) {
  // given doubles of every magnitude, by their bits
  constexpr std::uint64_t seed = 20240611;
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  for (int i = 0; i < 100000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    // when
    const std::string text = formatReal(value);
    const auto back = parseReal(text);
    // then
    ASSERT_TRUE(back.has_value()) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(*back), std::bit_cast<std::uint64_t>(value)) << text;
    ASSERT_NE(text.find_first_of(".e"), std::string::npos) << text;
  }
}

TEST(Numbers, TheLargestDoubleHasRoom) {
  EXPECT_EQ(parseReal(formatReal(std::numeric_limits<double>::lowest())),
            std::numeric_limits<double>::lowest());
  EXPECT_EQ(parseReal(formatReal(std::numeric_limits<double>::denorm_min())),
            std::numeric_limits<double>::denorm_min());
}

TEST(Numbers, AnInfiniteRealIsRefused) {
  EXPECT_THROW((void)formatReal(std::numeric_limits<double>::infinity()), std::invalid_argument);
  EXPECT_THROW((void)formatReal(std::numeric_limits<double>::quiet_NaN()), std::invalid_argument);
}

TEST(Numbers, ARealIsReadInEveryUsualSpelling) {
  EXPECT_EQ(parseReal("  1.5"), 1.5);
  EXPECT_EQ(parseReal("1.5 \t\r"), 1.5);
  EXPECT_EQ(parseReal("+1.5"), 1.5);
  EXPECT_EQ(parseReal("-1.5"), -1.5);
  EXPECT_EQ(parseReal("1."), 1.0);
  EXPECT_EQ(parseReal(".5"), 0.5);
  EXPECT_EQ(parseReal("-.5"), -0.5);
  EXPECT_EQ(parseReal("1e5"), 1e5);
  EXPECT_EQ(parseReal("1.0E+005"), 1e5);
  EXPECT_EQ(parseReal("7"), 7.0);
}

TEST(Numbers, ARealOfAFewDigitsIsTheNearestDouble) {
  // given digits with a point anywhere among them, up to more than a double holds
  constexpr std::uint64_t seed = 20261122;
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  for (int i = 0; i < 100000; ++i) {
    const std::size_t count = 1 + random() % 20;
    std::string text = random() % 2 == 0 ? "-" : "";
    const std::size_t point = random() % (2 * count);
    for (std::size_t digit = 0; digit < count; ++digit) {
      if (digit == point) text += '.';
      text += static_cast<char>('0' + random() % 10);
    }
    const auto value = parseReal(text);
    ASSERT_TRUE(value.has_value()) << text;
    // then it is what the C library reads
    ASSERT_EQ(std::bit_cast<std::uint64_t>(*value),
              std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)))
        << text;
  }
  EXPECT_TRUE(std::signbit(parseReal("-0").value_or(1.0)));
  EXPECT_TRUE(std::signbit(parseReal("-0.000").value_or(1.0)));
  EXPECT_EQ(parseReal("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(parseReal("9007199254740995"), 9007199254740996.0);
  EXPECT_EQ(parseReal("1.2.3"), std::nullopt);
  EXPECT_EQ(parseReal("--1"), std::nullopt);
}

TEST(Numbers, ARealTooSmallForADoubleIsZero) {
  EXPECT_EQ(parseReal("1e-400"), 0.0);
  EXPECT_EQ(parseReal("1E-400"), 0.0);
}

TEST(Numbers, WhatIsNotAFiniteNumberIsNotReadAsReal) {
  for (const char* text : {"", " ", "nan", "inf", "-inf", "abc", "1.5x", "1,5", "1 2", "++1", "+-1", "+", "-",
                           ".", "e5", "1e400", "0x10", "1e"}) {
    EXPECT_EQ(parseReal(text), std::nullopt) << text;
  }
}

TEST(Numbers, AnIntegerIsReadWithBlanksAndSign) {
  EXPECT_EQ(parseInteger<int>("     0"), 0);
  EXPECT_EQ(parseInteger<int>(" 42 "), 42);
  EXPECT_EQ(parseInteger<int>("+42"), 42);
  EXPECT_EQ(parseInteger<int>("-42"), -42);
}

TEST(Numbers, AnIntegerThatItsTypeCannotHoldIsNotRead) {
  EXPECT_EQ(parseInteger<std::int16_t>("32767"), 32767);
  EXPECT_EQ(parseInteger<std::int16_t>("32768"), std::nullopt);
  EXPECT_EQ(parseInteger<std::int64_t>("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(parseInteger<std::int64_t>("9223372036854775808"), std::nullopt);
  EXPECT_EQ(parseInteger<std::uint8_t>("-1"), std::nullopt);
}

TEST(Numbers, WhatIsNotAnIntegerIsNotReadAsOne) {
  for (const char* text : {"", " ", "1.0", "x", "1x", "+-1", "+", "-", "1 2"}) {
    EXPECT_EQ(parseInteger<int>(text), std::nullopt) << text;
  }
}

TEST(Numbers, AnIntegerIsWrittenPlain) {
  EXPECT_EQ(formatInteger(0), "0");
  EXPECT_EQ(formatInteger(-256), "-256");
}

TEST(Numbers, AHandleHasUpToSixtyFourBits) {
  EXPECT_EQ(parseHandle("0"), 0U);
  EXPECT_EQ(parseHandle("1f"), 0x1FU);
  EXPECT_EQ(parseHandle(" 1F "), 0x1FU);
  EXPECT_EQ(parseHandle("FFFFFFFFFFFFFFFF"), 0xFFFF'FFFF'FFFF'FFFFU);
  EXPECT_EQ(parseHandle("10000000000000000"), std::nullopt);
}

TEST(Numbers, WhatIsNotHexadecimalIsNotAHandle) {
  for (const char* text : {"", "-1", "0x1F", "G", "_ARROW", "1F 2"})
    EXPECT_EQ(parseHandle(text), std::nullopt) << text;
}

TEST(Numbers, AHandleIsWrittenInUpperCaseWithoutZerosInFront) {
  EXPECT_EQ(formatHandle(0), "0");
  EXPECT_EQ(formatHandle(0xAB1F), "AB1F");
  EXPECT_EQ(formatHandle(0xFFFF'FFFF'FFFF'FFFFU), "FFFFFFFFFFFFFFFF");
}

}  // namespace
}  // namespace velt::dxf
