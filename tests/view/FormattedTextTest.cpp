#include "view/FormattedText.h"

#include <gtest/gtest.h>

#include "view/Colors.h"
#include "view/Letters.h"

namespace velt::view {
namespace {

std::vector<std::wstring> wordingsOf(std::wstring_view codes, const TextLayout& layout = {}) {
  std::vector<std::wstring> wordings;
  for (const PlacedText& text : layOut(codes, layout).texts)
    wordings.push_back(text.wording);
  return wordings;
}

using Wordings = std::vector<std::wstring>;

TEST(FormattedText, ParagraphsAreLinesBelowEachOther) {
  const LaidOutText text = layOut(L"One\\PTwo^JThree", {.format = {.height = 3}});
  ASSERT_EQ(text.texts.size(), 3U);
  EXPECT_EQ(text.texts[2].wording, L"Three");
  EXPECT_DOUBLE_EQ(text.texts[0].origin.y, -3);
  EXPECT_DOUBLE_EQ(text.texts[1].origin.y, -8);
  EXPECT_DOUBLE_EQ(text.texts[2].origin.y, -13);
}

TEST(FormattedText, CodesThatAreNotFormatsAreTheirCharacters) {
  EXPECT_EQ(wordingsOf(L"a\\\\b\\{c\\}d\\~e%%c\\U+00E4^ "), (Wordings{L"a\\b{c}d\u00A0e\u2205\u00E4^"}));
}

TEST(FormattedText, BracesGiveTheFormatBackAfterTheirLastLetter) {
  const LaidOutText text = layOut(L"a {\\C1;\\H2x;red} b", {});
  ASSERT_EQ(text.texts.size(), 3U);
  EXPECT_EQ(text.texts[1].wording, L"red");
  EXPECT_EQ(text.texts[1].format.ink, inkOfIndex(1));
  EXPECT_DOUBLE_EQ(text.texts[1].format.height, 2);
  EXPECT_EQ(text.texts[2].wording, L"b");
  EXPECT_FALSE(text.texts[2].format.ink);
  EXPECT_DOUBLE_EQ(text.texts[2].format.height, 1);
}

TEST(FormattedText, BlanksBeforeAFormatPushItAlong) {
  const LaidOutText text = layOut(L"a {\\C1;b}", {});
  ASSERT_EQ(text.texts.size(), 2U);
  EXPECT_NEAR(text.texts[1].origin.x, lengthOf(L"a "), 1e-12);
}

TEST(FormattedText, LongLinesAreBrokenBetweenWords) {
  const double width = lengthOf(L"one two") + 0.1;
  EXPECT_EQ(wordingsOf(L"one two three four", {.width = width}), (Wordings{L"one two", L"three", L"four"}));
  EXPECT_EQ(wordingsOf(L"{\\C1;uncommonly}long", {.width = 1}).size(), 2U);
}

TEST(FormattedText, StacksStandAboveEachOtherWithABar) {
  const LaidOutText text = layOut(L"\\S+0.1^ -0.2;", {});
  ASSERT_EQ(text.texts.size(), 2U);
  EXPECT_EQ(text.texts[0].wording, L"+0.1");
  EXPECT_EQ(text.texts[1].wording, L"-0.2");
  EXPECT_GT(text.texts[0].origin.y, text.texts[1].origin.y);
  EXPECT_TRUE(text.bars.empty());
  EXPECT_EQ(layOut(L"\\S1/2;", {}).bars.size(), 1U);
}

TEST(FormattedText, LinesHangOnTheirPoint) {
  const LaidOutText text = layOut(L"ab\\Pabab", {.across = 1, .down = 1});
  EXPECT_DOUBLE_EQ(text.texts[0].anchor, 1);
  EXPECT_NEAR(text.texts[0].origin.x, 0, 1e-12);
  EXPECT_NEAR(text.texts[1].origin.y, 0, 1e-12);
  const LaidOutText centered = layOut(L"\\pxqc;ab\\Pabab", {});
  EXPECT_DOUBLE_EQ(centered.texts[0].anchor, 0.5);
}

TEST(FormattedText, FontsOfSymbolsShowTheSymbols) {
  EXPECT_EQ(wordingsOf(L"{\\Fgdt|c0;n}20"), (Wordings{L"\u2300", L"20"}));
}

TEST(FormattedText, CodesThatAreCutOffAreNoHarm) {
  for (const wchar_t* codes : {L"\\", L"^", L"\\H", L"\\S1/", L"}}}", L"{{{", L"\\U+12", L"\\fArial",
                               L"\\H-1;a", L"\\W0;a", L"\\Hnan;a", L"\\C999999999999;a", L"\\c-5;a"}) {
    for (const PlacedText& text : layOut(codes, {.width = 0.1}).texts)
      EXPECT_GT(text.format.height, 0);
  }
}

}  // namespace
}  // namespace velt::view
