#include <gtest/gtest.h>

#include "palette/Palette.h"

using namespace velt::palette;

TEST(Utf8, EveryCharacterSurvivesTheWayToUtf8AndBack) {
  const std::wstring text = L"a\u00E4\u20AC\U0001F600\U0010FFFF";
  EXPECT_EQ(toUtf8(text), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(fromUtf8(toUtf8(text)), text);
}

TEST(Utf8, WhatIsNotACharacterIsShownAsReplacement) {
  EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(0xD800)}), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(0x7FFFFFFF)}), "\xEF\xBF\xBD");
}

TEST(Utf8, BytesThatAreNotUtf8BecomeReplacementsOneByOne) {
  EXPECT_EQ(fromUtf8("a\xFFz"), L"a\uFFFDz");
  EXPECT_EQ(fromUtf8("\xC3"), L"\uFFFD");
  EXPECT_EQ(fromUtf8("\xC0\xAF"), L"\uFFFD\uFFFD");
  EXPECT_EQ(fromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(fromUtf8("\xF5\x80\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Utf8, ALineOfATerminalHoldsNoLineEndsAndNoControls) {
  EXPECT_EQ(oneLine(L"two\r\nlines\tand\x1B[31m"), "two\xE2\x86\xB5lines and [31m");
  EXPECT_EQ(oneLine(L" ~"), " ~") << "the first and the last character that a typewriter has";
  EXPECT_EQ(oneLine(L"\x1F\x7F\x80"), "   ");
  EXPECT_EQ(oneLine(L"\xA0\xE9"), "\xC2\xA0\xC3\xA9");
  EXPECT_EQ(oneLine(L""), "");
}

TEST(Utf8, CaseOfLettersDoesNotMatterButLengthDoes) {
  EXPECT_TRUE(equalIgnoringCase("Line", "LINE"));
  EXPECT_FALSE(equalIgnoringCase("Line", "Lines"));
  EXPECT_FALSE(equalIgnoringCase("Line", "Lime"));
}
