#include "palette/text/Utf8.h"

#include <gtest/gtest.h>

using namespace velt::tool;

TEST(Text, EveryCharacterSurvivesTheWayToUtf8AndBack) {
  const std::wstring text = L"a\u00E4\u20AC\U0001F600\U0010FFFF";
  EXPECT_EQ(toUtf8(text), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(fromUtf8(toUtf8(text)), text);
}

TEST(Text, WhatIsNotACharacterIsShownAsReplacement) {
  EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(0xD800)}), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(std::wstring{static_cast<wchar_t>(0x7FFFFFFF)}), "\xEF\xBF\xBD");
}

TEST(Text, BytesThatAreNotUtf8BecomeReplacementsOneByOne) {
  EXPECT_EQ(fromUtf8("a\xFFz"), L"a\uFFFDz");
  EXPECT_EQ(fromUtf8("\xC3"), L"\uFFFD");
  EXPECT_EQ(fromUtf8("\xC0\xAF"), L"\uFFFD\uFFFD");
  EXPECT_EQ(fromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(fromUtf8("\xF5\x80\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Text, ALineOfATerminalHoldsNoLineEndsAndNoControls) {
  EXPECT_EQ(oneLine(L"two\r\nlines\tand\x1B[31m"), "two\xE2\x86\xB5lines and [31m");
}

TEST(Text, ColumnsCountCharactersNotBytes) {
  EXPECT_EQ(columns("\xC3\xA4\xC3\xA4"), 2U);
  EXPECT_EQ(padded("\xC3\xA4", 3), "\xC3\xA4  ");
  EXPECT_EQ(padded("long", 2), "long");
}

TEST(Text, CaseOfLettersDoesNotMatterButLengthDoes) {
  EXPECT_TRUE(equalIgnoringCase("Line", "LINE"));
  EXPECT_FALSE(equalIgnoringCase("Line", "Lines"));
  EXPECT_FALSE(equalIgnoringCase("Line", "Lime"));
}
