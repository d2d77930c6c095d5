#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

#include "palette/Palette.h"

namespace velt::palette {
namespace {

NumberStyle styleOf(std::map<std::string, double> variables) {
  return NumberStyle::ofVariables([&](std::string_view name) {
    const auto found = variables.find(std::string(name));
    return found != variables.end() ? std::optional(found->second) : std::nullopt;
  });
}

}  // namespace

TEST(NumberStyle, IsThatOfTheDrawingsVariables) {
  const NumberStyle style =
      styleOf({{"LUNITS", 4}, {"LUPREC", 6}, {"AUNITS", 2}, {"AUPREC", 3}, {"ANGBASE", 90.0}, {"ANGDIR", 1}});
  EXPECT_EQ(style.lengthFormat, LengthFormat::architectural);
  EXPECT_EQ(style.lengthPlaces, 6);
  EXPECT_EQ(style.angleFormat, AngleFormat::grads);
  EXPECT_EQ(style.anglePlaces, 3);
  EXPECT_EQ(style.angleBase, 90.0);
  EXPECT_TRUE(style.isClockwise);
}

TEST(NumberStyle, TellsWhichZerosAreShown) {
  const auto zerosOf = [](double variable) {
    const NumberStyle style = styleOf({{"DIMZIN", variable}});
    return std::string(style.hasZeroFeet ? "F" : "-") + (style.hasZeroInches ? "I" : "-")
           + (style.hasLeadingZeros ? "L" : "-") + (style.hasTrailingZeros ? "T" : "-");
  };
  EXPECT_EQ(zerosOf(0), "--LT");
  EXPECT_EQ(zerosOf(1), "FILT");
  EXPECT_EQ(zerosOf(2), "F-LT");
  EXPECT_EQ(zerosOf(3), "-ILT");
  EXPECT_EQ(zerosOf(4), "---T");
  EXPECT_EQ(zerosOf(8), "--L-");
  EXPECT_EQ(zerosOf(15), "-I--");
  EXPECT_EQ(zerosOf(16), "-ILT") << "means nothing";
}

TEST(NumberStyle, MayBeThatOfTyping) {
  EXPECT_FALSE(styleOf({}).isAsTyped);
  EXPECT_TRUE(styleOf({{"UNITMODE", 1}}).isAsTyped);
}

TEST(NumberStyle, WhatIsMissingOrMeansNothingIsAsWithoutADrawing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const NumberStyle& style : {styleOf({}), styleOf({{"LUNITS", 6},
                                                         {"LUPREC", nan},
                                                         {"AUNITS", -1},
                                                         {"AUPREC", nan},
                                                         {"ANGBASE", nan},
                                                         {"ANGDIR", 2}})}) {
    EXPECT_EQ(style.lengthFormat, LengthFormat::decimal);
    EXPECT_EQ(style.lengthPlaces, 4);
    EXPECT_EQ(style.angleFormat, AngleFormat::degrees);
    EXPECT_EQ(style.anglePlaces, 0);
    EXPECT_EQ(style.angleBase, 0);
    EXPECT_FALSE(style.isClockwise);
  }
  const NumberStyle beyond = styleOf({{"LUNITS", 0}, {"AUNITS", 5}, {"UNITMODE", 2}, {"DIMZIN", 16}});
  EXPECT_EQ(beyond.lengthFormat, LengthFormat::decimal);
  EXPECT_EQ(beyond.angleFormat, AngleFormat::degrees);
  EXPECT_FALSE(beyond.isAsTyped);
  EXPECT_EQ(beyond.hasLeadingZeros, NumberStyle().hasLeadingZeros);
  EXPECT_EQ(beyond.hasZeroFeet, NumberStyle().hasZeroFeet);
  EXPECT_EQ(styleOf({{"LUPREC", 1e9}, {"AUPREC", -5}}).lengthPlaces, 8);
  EXPECT_EQ(styleOf({{"LUPREC", 1e9}, {"AUPREC", -5}}).anglePlaces, 0);
}

}  // namespace velt::palette
