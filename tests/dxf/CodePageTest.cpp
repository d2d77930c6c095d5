#include "dxf/CodePage.h"

#include <gtest/gtest.h>

#include <string>

namespace velt::dxf {
namespace {

char32_t only(const CodePage& page, std::string_view bytes) {
  const CodePage::Read read = page.read(bytes);
  return read.length == bytes.size() ? read.character : U'\0';
}

std::string written(const CodePage& page, char32_t character) {
  std::string bytes;
  return page.write(character, bytes) ? bytes : "lacks it";
}

TEST(CodePage, ASingleBytePageReadsAndWritesItsCharacters) {
  const auto page = CodePage::named("CP1252");
  EXPECT_EQ(only(*page, "A"), U'A');
  EXPECT_EQ(only(*page, "\xFC"), U'ü');
  EXPECT_EQ(only(*page, "\x80"), U'€');
  EXPECT_EQ(written(*page, U'€'), "\x80");
  EXPECT_EQ(written(*page, U'Ж'), "lacks it");
}

TEST(CodePage, EachPageHasItsOwnCharacters) {
  EXPECT_EQ(only(*CodePage::named("CP1250"), "\xB3"), U'ł');
  EXPECT_EQ(only(*CodePage::named("CP1251"), "\xC6"), U'Ж');
  EXPECT_EQ(only(*CodePage::named("CP1253"), "\xE1"), U'α');
  EXPECT_EQ(only(*CodePage::named("CP850"), "\x81"), U'ü');
}

TEST(CodePage, APageWhoseConverterComposesAccentsStillReadsSingleLetters) {
  EXPECT_EQ(only(*CodePage::named("CP1258"), "\xC2"), U'Â');
  EXPECT_EQ(only(*CodePage::named("CP1255"), "\xE0"), U'א');
}

TEST(CodePage, ADoubleBytePageReadsPairs) {
  const auto page = CodePage::named("CP932");
  // The trail byte of this one is a backslash.
  EXPECT_EQ(only(*page, "\x95\x5C"), U'表');
  EXPECT_EQ(written(*page, U'表'), "\x95\x5C");
  EXPECT_EQ(only(*page, "\xB1"), U'ｱ');
  EXPECT_EQ(only(*page, "\\"), U'\\');
  EXPECT_EQ(only(*CodePage::named("CP936"), "\xB1\xED"), U'表');
  EXPECT_EQ(only(*CodePage::named("CP949"), "\xB0\xA1"), U'가');
  EXPECT_EQ(only(*CodePage::named("CP950"), "\xAA\xED"), U'表');
  EXPECT_EQ(only(*CodePage::named("CP1361"), "\x88\x61"), U'가');
}

TEST(CodePage, ACharacterWithSeveralBytesIsWrittenWithTheUsualOnes) {
  // U+FFE2 stands at 81CA, EEF9 and FA54, U+7E8A at ED40 and FA5C.
  const auto page = CodePage::named("CP932");
  EXPECT_EQ(only(*page, "\xFA\x54"), U'\uFFE2');
  EXPECT_EQ(written(*page, U'\uFFE2'), "\x81\xCA");
  EXPECT_EQ(only(*page, "\xED\x40"), U'\u7E8A');
  EXPECT_EQ(written(*page, U'\u7E8A'), "\xFA\x5C");
}

TEST(CodePage, BytesThatAreNotACharacterAreReadOneByOne) {
  const auto western = CodePage::named("CP1252");
  EXPECT_EQ(western->read("\x81").character, replacementCharacter);
  const auto japanese = CodePage::named("CP932");
  for (const std::string_view bytes :
       {std::string_view("\x95"), std::string_view("\x95 x"), std::string_view("\xFF")}) {
    const CodePage::Read read = japanese->read(bytes);
    EXPECT_EQ(read.character, replacementCharacter);
    EXPECT_EQ(read.length, 1U);
  }
}

TEST(CodePage, AZeroIsACharacterOfItsOwn) {
  const CodePage::Read read = CodePage::named("CP932")->read(std::string_view("\0A", 2));
  EXPECT_EQ(read.character, U'\0');
  EXPECT_EQ(read.length, 1U);
}

TEST(CodePage, AsciiStandsForItselfInEveryPage) {
  for (const char* name : {"CP1252", "CP932", "CP936", "CP949", "CP950", "CP1361", "CP874", "CP437"}) {
    const auto page = CodePage::named(name);
    for (char c = 0; c >= 0 && c < 0x7F; ++c) {
      ASSERT_EQ(page->read({&c, 1}).character, static_cast<char32_t>(c)) << name;
      ASSERT_EQ(written(*page, static_cast<char32_t>(c)), std::string(1, c)) << name;
    }
  }
}

TEST(CodePage, AMissingConverterShowsLatinAndWritesAsciiOnly) {
  const auto page = CodePage::named("CP99999");
  EXPECT_EQ(only(*page, "\xFC"), U'ü');
  EXPECT_EQ(written(*page, U'ü'), "lacks it");
  EXPECT_EQ(written(*page, U'u'), "u");
}

TEST(CodePage, APageIsMadeOnce) {
  EXPECT_EQ(CodePage::named("CP1252"), CodePage::named("CP1252"));
}

}  // namespace
}  // namespace velt::dxf
