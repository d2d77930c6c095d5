#include "dxf/Encoding.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace velt::dxf {
namespace {

TEST(Encoding, IsUtf8FromTheVersionOn) {
  EXPECT_TRUE(Encoding::ofDrawing("AC1021", "ANSI_1252").isUtf8());
  EXPECT_TRUE(Encoding::ofDrawing(" AC1032 ", "").isUtf8());
  EXPECT_FALSE(Encoding::ofDrawing("AC1018", "ANSI_1252").isUtf8());
}

TEST(Encoding, IsTheCodePageOfAnOldDrawing) {
  EXPECT_EQ(Encoding::ofDrawing("AC1015", "ANSI_1250").name(), "CP1250");
  EXPECT_EQ(Encoding::ofDrawing("AC1015", "ansi_932").name(), "CP932");
  EXPECT_EQ(Encoding::ofDrawing("AC1009", "dos850").name(), "CP850");
  EXPECT_EQ(Encoding::ofDrawing("AC1009", "big5").name(), "CP950");
  EXPECT_EQ(Encoding::ofDrawing("AC1009", "iso8859-2").name(), "ISO-8859-2");
}

TEST(Encoding, IsUtf8AlsoByName) {
  EXPECT_TRUE(Encoding::ofCodePage("UTF-8").isUtf8());
  EXPECT_TRUE(Encoding::ofCodePage("utf8").isUtf8());
  EXPECT_TRUE(Encoding::ofCodePage("ANSI_65001").isUtf8());
}

TEST(Encoding, IsAssumedWhereTheDrawingDoesNotTell) {
  EXPECT_EQ(Encoding::ofDrawing("AC1009", "").name(), "CP1252");
  EXPECT_EQ(Encoding::ofDrawing("", "").name(), "CP1252");
  EXPECT_EQ(Encoding::ofDrawing("garbage", "ANSI_x//TRANSLIT").name(), "CP1252");
}

TEST(Encoding, ReadsUtf8) {
  const Encoding utf8 = Encoding::utf8();
  EXPECT_EQ(utf8.decode("Tür"), L"Tür");
  EXPECT_EQ(utf8.decode("\xE8\xA1\xA8"), L"表");
  EXPECT_EQ(utf8.decode("\xF0\x9F\x98\x80"), L"\U0001F600");
}

TEST(Encoding, ShowsBytesThatAreNotACharacterAsReplacements) {
  const Encoding utf8 = Encoding::utf8();
  EXPECT_EQ(utf8.decode("T\xFCr"), L"T\uFFFDr");
  EXPECT_EQ(utf8.decode("\xE8\xA1"), L"\uFFFD");
  EXPECT_EQ(utf8.decode("\xE8\xA1x"), L"\uFFFDx");
  EXPECT_EQ(utf8.decode("\xC0\x80"), L"\uFFFD\uFFFD");
  EXPECT_EQ(utf8.decode("\xED\xA0\x80").front(), L'\uFFFD');
  EXPECT_EQ(utf8.decode("\xF5\x80\x80\x80").front(), L'\uFFFD');
  EXPECT_EQ(Encoding::ofCodePage("ANSI_1252").decode("a\x81z"), L"a\uFFFDz");
}

TEST(Encoding, ReadsUnicodeEscapesAnywhere) {
  for (const Encoding& encoding : {Encoding::utf8(), Encoding::ofCodePage("ANSI_1252")}) {
    EXPECT_EQ(encoding.decode("\\U+2205 20"), L"\u2205 20");
    EXPECT_EQ(encoding.decode("a\\U+00e9b\\U+00E9"), L"a\u00E9b\u00E9");
    EXPECT_EQ(encoding.decode("\\\\U+2205"), L"\\\u2205");
  }
}

TEST(Encoding, JoinsEscapedSurrogates) {
  const Encoding western = Encoding::ofCodePage("ANSI_1252");
  EXPECT_EQ(western.decode("\\U+D83D\\U+DE00!"), L"\U0001F600!");
  EXPECT_EQ(western.decode("\\U+D83Dx"), L"\uFFFDx");
  EXPECT_EQ(western.decode("\\U+DE00"), L"\uFFFD");
  EXPECT_EQ(western.decode("\\U+D83D\\U+D83D\\U+DE00"), L"\uFFFD\U0001F600");
}

TEST(Encoding, AnEscapedZeroDoesNotEndTheText) {
  EXPECT_EQ(Encoding::utf8().decode("a\\U+0000b"), L"a\uFFFDb");
}

TEST(Encoding, ReadsMultiByteEscapes) {
  const Encoding western = Encoding::ofCodePage("ANSI_1252");
  EXPECT_EQ(western.decode("\\M+1955C"), L"表");
  EXPECT_EQ(western.decode("\\M+2AAED"), L"表");
  EXPECT_EQ(western.decode("\\M+3B0A1"), L"가");
  EXPECT_EQ(western.decode("\\M+48861"), L"가");
  EXPECT_EQ(western.decode("\\M+5B1ED!"), L"表!");
  EXPECT_EQ(western.decode("\\M+100B1"), L"ｱ");
  EXPECT_EQ(western.decode("\\M+1FFFF"), L"\uFFFD");
  EXPECT_EQ(western.decode("\\M+1B1B1"), L"\uFFFD");
}

TEST(Encoding, LeavesWhatIsNotAnEscape) {
  const Encoding western = Encoding::ofCodePage("ANSI_1252");
  for (const char* text :
       {"\\U+12", "\\U+12G4", "\\U2205", "\\M+6955C", "\\M+0955C", "\\M+195", "\\", "\\P", "\\U+"}) {
    EXPECT_EQ(western.decode(text), std::wstring(text, text + std::string_view(text).size()));
  }
}

TEST(Encoding, ABackslashThatIsATrailByteBeginsNoEscape) {
  const Encoding japanese = Encoding::ofCodePage("ANSI_932");
  EXPECT_EQ(japanese.decode("\x95\x5CU+0041"), L"表U+0041");
  EXPECT_EQ(japanese.decode("\x95\x5C\\U+0041"), L"表A");
}

TEST(Encoding, WritesUtf8) {
  const Encoding utf8 = Encoding::utf8();
  EXPECT_EQ(utf8.encode(L"Tür 表 \U0001F600"), "T\xC3\xBCr \xE8\xA1\xA8 \xF0\x9F\x98\x80");
}

TEST(Encoding, WritesThePagesCharactersAsBytesAndOthersAsEscapes) {
  const Encoding western = Encoding::ofCodePage("ANSI_1252");
  EXPECT_EQ(western.encode(L"Tür"), "T\xFCr");
  EXPECT_EQ(western.encode(L"Жx"), "\\U+0416x");
  EXPECT_EQ(western.encode(L"\U0001F600"), "\\U+D83D\\U+DE00");
  EXPECT_EQ(Encoding::ofCodePage("ANSI_932").encode(L"表"), "\x95\x5C");
}

TEST(Encoding, WritesNoLineEnds) {
  EXPECT_EQ(Encoding::utf8().encode(L"a\nb\r\tc"), "a^Jb^M^Ic");
  EXPECT_EQ(Encoding::utf8().encode(L"\x1F!"), "^_!");
  EXPECT_EQ(Encoding::utf8().encode(std::wstring(1, L'\0')), "^@");
}

TEST(Encoding, ATextThatReadsAsAnEscapeIsWrittenSoThatItComesBack) {
  for (const char* page : {"utf-8", "ANSI_1252", "ANSI_932"}) {
    const Encoding encoding = Encoding::ofCodePage(page);
    EXPECT_EQ(encoding.encode(L"\\U+00E9"), "\\U+005CU+00E9");
    EXPECT_EQ(encoding.encode(L"a\\M+182A0b"), "a\\U+005CM+182A0b");
    EXPECT_EQ(encoding.encode(L"\\U+00\u00E9"), "\\U+00" + encoding.encode(L"\u00E9"));
    for (const wchar_t* text :
         {L"\\U+00E9", L"\\\\U+005CU+0041", L"\\U+D83D\\U+DE00", L"\\M+182A0", L"\\U+005C\\"})
      EXPECT_EQ(encoding.decode(encoding.encode(text)), text);
  }
}

TEST(Encoding, OneCharacterIsWrittenAsTheTextAroundItNeeds) {
  const Encoding western = Encoding::ofCodePage("ANSI_1252");
  EXPECT_EQ(western.encodeAt(L"a\\U+00E9", 1), "\\U+005C");
  EXPECT_EQ(western.encodeAt(L"a\\P", 1), "\\");
  EXPECT_EQ(western.encodeAt(L"aЖ", 1), "\\U+0416");
}

TEST(Encoding, HoldsWhatEveryReaderFindsAgain) {
  const Encoding western = Encoding::ofCodePage("ANSI_1252");
  for (const Encoding& encoding : {western, Encoding::utf8()}) {
    for (const wchar_t held : {L' ', L'\\', L'\u00E9', L'Ж', L'\uFFFD'})
      EXPECT_TRUE(encoding.canHold(held));
    for (const char32_t never : {0x0U, 0x1FU, 0xD800U, 0xDFFFU, 0x110000U})
      EXPECT_FALSE(encoding.canHold(static_cast<wchar_t>(never)));
  }
  EXPECT_TRUE(Encoding::utf8().canHold(L'\U0001F600'));
  EXPECT_FALSE(western.canHold(L'\U0001F600'));
}

TEST(Encoding, WritesWhatIsNotACharacterAsReplacement) {
  const std::wstring text{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000),
                          static_cast<wchar_t>(-1)};
  EXPECT_EQ(Encoding::utf8().encode(text), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(Encoding::ofCodePage("ANSI_1252").encode(text), "\\U+FFFD\\U+FFFD\\U+FFFD");
}

TEST(Encoding, EveryTextReadsBackFromEveryEncoding) {
  constexpr unsigned seed = 4711;
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (const char* name : {"utf-8", "ANSI_1252", "ANSI_1250", "ANSI_1251", "ANSI_874", "ANSI_932", "ANSI_936",
                           "ANSI_949", "ANSI_950", "ANSI_1361", "ANSI_9999"}) {
    const Encoding encoding = Encoding::ofCodePage(name);
    for (int round = 0; round < 400; ++round) {
      // given characters from low and high planes, none of them a control or a surrogate, and beginnings of escapes
      std::wstring text;
      while (text.size() < 20) {
        if (random() % 8 == 0) text += random() % 2 == 0 ? L"\\U+00E9" : L"\\M+182A0";
        const char32_t c = random() >> (random() % 24) & 0x1FFFFF;
        if (c < 0x20 || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) continue;
        text += static_cast<wchar_t>(c);
      }
      // when, then
      ASSERT_EQ(encoding.decode(encoding.encode(text)), text) << name;
    }
  }
}

}  // namespace
}  // namespace velt::dxf
