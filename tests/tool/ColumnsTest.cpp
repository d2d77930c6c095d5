#include "tool/Columns.h"

#include <gtest/gtest.h>

namespace velt::tool {
namespace {

TEST(Columns, CountCharactersNotBytes) {
  EXPECT_EQ(columns("\xC3\xA4\xC3\xA4"), 2U);
  EXPECT_EQ(padded("\xC3\xA4", 3), "\xC3\xA4  ");
  EXPECT_EQ(padded("long", 2), "long");
}

TEST(Columns, WideCharactersTakeTwoAndAccentsOfTheirOwnNone) {
  EXPECT_EQ(columns("\u58C1\u9762"), 4U);
  EXPECT_EQ(columns("e\u0301"), 1U);
  EXPECT_EQ(padded("\u58C1", 3), "\u58C1 ");
}

TEST(Columns, ATextThatIsTooLongEndsWithAnEllipsis) {
  EXPECT_EQ(shortened("Walls", 5), "Walls");
  EXPECT_EQ(shortened("Walls", 4), "Wal\u2026");
  EXPECT_EQ(shortened("\u58C1\u9762\u58C1", 4), "\u58C1\u2026") << "half a character is none";
  EXPECT_EQ(shortened("Walls", 0), "");
}

TEST(Columns, WhatIsNotUtf8CountsByTheByte) {
  EXPECT_EQ(columns("a\xFF\xFE"), 3U);
  EXPECT_EQ(shortened("\xFF\xFF\xFF", 2), "\xFF\u2026");
}

TEST(Columns, ControlCharactersTakeNone) {
  EXPECT_EQ(columns("a\x7F\x01"), 1U);
  EXPECT_EQ(padded("a\x7F", 2), "a\x7F ");
}

TEST(Columns, OneColumnHasRoomForTheEllipsisOrForOneCharacter) {
  EXPECT_EQ(shortened("Walls", 1), "\u2026");
  EXPECT_EQ(shortened("W", 1), "W");
  EXPECT_EQ(shortened("\u58C1\u9762\u58C1", 5), "\u58C1\u9762\u2026");
  EXPECT_EQ(shortened("", 0), "");
  EXPECT_EQ(padded("", 2), "  ");
}

}  // namespace
}  // namespace velt::tool
