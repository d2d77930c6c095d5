#include "palette/writing/Meaning.h"

#include <gtest/gtest.h>

#include <numbers>

namespace velt::palette {
namespace {

using std::numbers::pi;

PROPINFO rowOf(VARTYPE type, std::int32_t kind = 0) {
  PROPINFO row;
  row.valueType = type;
  row.customType = kind;
  return row;
}

bool may(const PlainValue& put, const PlainValue& now, const PROPINFO& row = rowOf(VT_R8)) {
  return mayMean(row, put, now);
}

TEST(Meaning, NumbersAreMeantUpToRounding) {
  EXPECT_TRUE(may(2.0, 2.0 + 1e-9));
  EXPECT_TRUE(may(std::int64_t{2}, 2.0));
  EXPECT_FALSE(may(2.0, 2.1));
  EXPECT_FALSE(may(0.0, 1e-9));
  EXPECT_FALSE(may(true, false));
}

TEST(Meaning, AnglesAreMeantUpToWholeTurns) {
  const PROPINFO angle = rowOf(VT_R8, PropertyKind::angle);
  EXPECT_TRUE(may(2.5 * pi, 0.5 * pi, angle));
  EXPECT_FALSE(may(2.5 * pi, 0.6 * pi, angle));
  EXPECT_FALSE(may(2.5 * pi, 0.5 * pi));
}

TEST(Meaning, NamesAreMeantInAnyCase) {
  const PROPINFO text = rowOf(VT_BSTR);
  EXPECT_TRUE(may(std::string("walls"), std::string("Walls"), text));
  EXPECT_TRUE(may(std::string("T\u00FCr"), std::string("T\u00DCR"), text));
  EXPECT_FALSE(may(std::string("walls"), std::string("Doors"), text));
}

TEST(Meaning, WhatCannotBeComparedMayBeMeant) {
  EXPECT_TRUE(may(std::string("7"), 7.0));
  EXPECT_TRUE(may(std::string("red"), std::string("255,0,0"), rowOf(VT_DISPATCH)));
  EXPECT_TRUE(may(1.0, PlainValue()));
}

}  // namespace
}  // namespace velt::palette
