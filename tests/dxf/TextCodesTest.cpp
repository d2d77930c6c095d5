#include "dxf/TextCodes.h"

#include <gtest/gtest.h>

namespace velt::dxf {
namespace {

TEST(TextCodes, PercentLettersBecomeTheirSigns) {
  EXPECT_EQ(decodePercentCodes(L"%%c20"), L"\u220520");
  EXPECT_EQ(decodePercentCodes(L"45%%d"), L"45\u00B0");
  EXPECT_EQ(decodePercentCodes(L"%%p0.1"), L"\u00B10.1");
  EXPECT_EQ(decodePercentCodes(L"%%C%%D%%P"), L"\u2205\u00B0\u00B1");
}

TEST(TextCodes, PercentNumbersBecomeTheCharacterOfThatNumber) {
  EXPECT_EQ(decodePercentCodes(L"%%065"), L"A");
  EXPECT_EQ(decodePercentCodes(L"%%128"), L"\u20AC");
  EXPECT_EQ(decodePercentCodes(L"%%216x"), L"\u00D8x");
}

TEST(TextCodes, ADoubledPercentCodeIsAPercentSign) {
  EXPECT_EQ(decodePercentCodes(L"50%%%"), L"50%");
}

TEST(TextCodes, SwitchesForLinesAreNotShown) {
  EXPECT_EQ(decodePercentCodes(L"%%uTitle%%U %%oA%%kB"), L"Title AB");
}

TEST(TextCodes, WhatIsNotAPercentCodeStays) {
  for (const wchar_t* text : {L"", L"%", L"%%", L"100%", L"%%x", L"%%12", L"%%999", L"%%000", L"%% c"}) {
    EXPECT_EQ(decodePercentCodes(text), text);
  }
}

TEST(TextCodes, CaretCodesBecomeControlCharacters) {
  EXPECT_EQ(decodeCaretCodes(L"a^Jb^Ic^ d"), L"a\nb\tc^d");
}

TEST(TextCodes, WhatIsNotACaretCodeStays) {
  for (const wchar_t* text : {L"", L"^", L"x^", L"^1", L"^j", L"^@"})
    EXPECT_EQ(decodeCaretCodes(text), text);
}

TEST(TextCodes, CaretCodesReadBackAsTheText) {
  const std::wstring text = L"^ \t\n^J^^ \x1F end";
  EXPECT_EQ(encodeCaretCodes(text), L"^  ^I^J^ J^ ^  ^_ end");
  EXPECT_EQ(decodeCaretCodes(encodeCaretCodes(text)), text);
}

}  // namespace
}  // namespace velt::dxf
