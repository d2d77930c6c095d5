#include "embedded/database/NameFolding.h"

#include <gtest/gtest.h>

#include <clocale>

namespace velt::database {
namespace {

TEST(NameFolding, CaseDoesNotTellNamesApart) {
  EXPECT_TRUE(sameName(L"Walls", L"WALLS"));
  EXPECT_TRUE(sameName(L"Wände", L"WÄNDE"));
  EXPECT_TRUE(sameName(L"стены", L"СТЕНЫ"));
  EXPECT_TRUE(sameName(L"τοίχος", L"ΤΟΊΧΟΣ")) << "both small sigmas have one capital";
  EXPECT_FALSE(sameName(L"Walls", L"Wall"));
  EXPECT_FALSE(sameName(L"Wande", L"Wände"));
}

TEST(NameFolding, TheLengthNeverChanges) {
  EXPECT_EQ(L"straße", foldName(L"Straße"));
  EXPECT_FALSE(sameName(L"Straße", L"STRASSE"));
}

TEST(NameFolding, DottedAndDotlessLettersOfTurkicLanguagesStayThemselves) {
  EXPECT_EQ(L"i", foldName(L"I"));
  EXPECT_EQ(L"\u0130", foldName(L"\u0130"));
  EXPECT_EQ(L"\u0131", foldName(L"\u0131"));
}

TEST(NameFolding, FoldingTwiceIsFoldingOnce) {
  for (wchar_t character = 1; character < 0x20000; ++character) {
    const wchar_t folded = foldCharacter(character);
    ASSERT_EQ(folded, foldCharacter(folded)) << static_cast<long>(character);
  }
}

TEST(NameFolding, CharactersOutsideUnicodeStayThemselves) {
  EXPECT_EQ(static_cast<wchar_t>(0x7FFFFFFF), foldCharacter(static_cast<wchar_t>(0x7FFFFFFF)));
  EXPECT_EQ(static_cast<wchar_t>(-1), foldCharacter(static_cast<wchar_t>(-1)));
}

TEST(NameFolding, TheLocaleOfTheProcessDoesNotMatter) {
  // given
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(nullptr, std::setlocale(LC_ALL, "C"));
  // when, then
  EXPECT_EQ(L"wände", foldName(L"WÄNDE"));
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace velt::database
