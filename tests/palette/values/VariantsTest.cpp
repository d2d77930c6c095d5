#include "palette/values/Variants.h"

#include "tests/palette/Stage.h"
#include "tests/support/ToyColor.h"

namespace velt::palette {
namespace {

using namespace toys;

TEST(Variants, IntegersOfEveryWidthKeepTheirSign) {
  const auto plain = [](VARTYPE type, LONGLONG bits) { return plainValueOf(ofType(type, bits)); };
  EXPECT_EQ(plain(VT_I1, -5), PlainValue(std::int64_t{-5}));
  EXPECT_EQ(plain(VT_UI1, 200), PlainValue(std::int64_t{200}));
  EXPECT_EQ(plain(VT_I2, -5), PlainValue(std::int64_t{-5}));
  EXPECT_EQ(plain(VT_UI2, 65535), PlainValue(std::int64_t{65535}));
  EXPECT_EQ(plain(VT_I4, -5), PlainValue(std::int64_t{-5}));
  EXPECT_EQ(plain(VT_INT, -5), PlainValue(std::int64_t{-5}));
  EXPECT_EQ(plain(VT_UI4, 0xFFFFFFFF), PlainValue(std::int64_t{0xFFFFFFFF}));
  EXPECT_EQ(plain(VT_UINT, 0xFFFFFFFF), PlainValue(std::int64_t{0xFFFFFFFF}));
  EXPECT_EQ(plain(VT_I8, -5000000000), PlainValue(std::int64_t{-5000000000}));
  EXPECT_EQ(plain(VT_UI8, -1), PlainValue(std::uint64_t{18446744073709551615ULL}));
}

TEST(Variants, RealsAndFlagsAreWhatTheyAre) {
  EXPECT_EQ(plainValueOf(r8(1.5)), PlainValue(1.5));
  EXPECT_EQ(plainValueOf(r4(0.25F)), PlainValue(0.25));
  EXPECT_EQ(plainValueOf(boolean(true)), PlainValue(true));
  EXPECT_EQ(plainValueOf(boolean(false)), PlainValue(false));
}

TEST(Variants, NoTextIsTheEmptyText) {
  EXPECT_EQ(plainValueOf(borrowed(static_cast<BSTR>(nullptr))), PlainValue(std::string()));
}

TEST(Variants, WhatNoPaletteShowsIsNothing) {
  for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_USERDEFINED, VT_DATE})
    EXPECT_EQ(plainValueOf(ofType(type)), PlainValue()) << type;
}

TEST(Variants, AnObjectIsItsText) {
  ToyHost host;
  const ToyColor color(host, "color", ToyColor::indexed(1));
  EXPECT_EQ(plainValueOf(borrowed(color.dispatch())), PlainValue(std::string("Red")));
}

TEST(Variants, ATextValueKeepsEveryCharacter) {
  const Value value = textValue(L"a\nb \u20AC");
  EXPECT_STREQ(value.variant().bstrVal, L"a\nb \u20AC");
}

TEST(PlainValues, NumbersOfEachTypeAreNumbersAndNothingElseIs) {
  EXPECT_EQ(numberOf(-2.5), -2.5);
  EXPECT_EQ(numberOf(std::int64_t{-3}), -3.0);
  EXPECT_EQ(numberOf(std::uint64_t{18446744073709551615U}), 18446744073709551616.0);
  EXPECT_EQ(numberOf(true), std::nullopt);
  EXPECT_EQ(numberOf(std::string("4")), std::nullopt);
  EXPECT_EQ(numberOf(PlainValue()), std::nullopt);
}

TEST(PlainValues, NumbersAreTheSameByWhatTheyCount) {
  EXPECT_TRUE(isSame(std::int64_t{2}, 2.0));
  EXPECT_TRUE(isSame(std::uint64_t{2}, std::int64_t{2}));
  EXPECT_FALSE(isSame(std::int64_t{2}, 2.5));
  EXPECT_FALSE(isSame(std::int64_t{-1}, std::uint64_t{18446744073709551615ULL}));
  EXPECT_FALSE(isSame(std::int64_t{9007199254740993}, 9007199254740992.0));
}

TEST(PlainValues, RealsAreComparedToTheLastBit) {
  EXPECT_TRUE(isSame(0.1, 0.1));
  EXPECT_FALSE(isSame(0.1, 0.1 + 1e-16));
  EXPECT_FALSE(isSame(0.0, -0.0));
  EXPECT_TRUE(isSame(std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()));
}

TEST(PlainValues, OfDifferentKindsNothingIsTheSame) {
  EXPECT_FALSE(isSame(true, std::int64_t{1}));
  EXPECT_FALSE(isSame(std::string("1"), std::int64_t{1}));
  EXPECT_FALSE(isSame(std::monostate(), std::string()));
  EXPECT_TRUE(isSame(std::monostate(), std::monostate()));
  EXPECT_TRUE(isSame(std::string("a"), std::string("a")));
  EXPECT_FALSE(isSame(std::string("a"), std::string("A")));
}

}  // namespace
}  // namespace velt::palette
