#include "text/Format.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "text/CStdStr.h"

namespace velt::text {
namespace {

template <class... Arguments>
std::wstring wide(const wchar_t* format, const Arguments&... arguments) {
  return formatted<wchar_t>(format, arguments...);
}

template <class... Arguments>
std::string narrow(const char* format, const Arguments&... arguments) {
  return formatted<char>(format, arguments...);
}

std::wstring widened(const std::string& text) {
  return {text.begin(), text.end()};
}

// What the C library makes of one number.
template <class Number>
std::string printed(const std::string& format, Number number) {
  std::array<char, 5000> buffer{};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  std::snprintf(buffer.data(), buffer.size(), format.c_str(), number);
#pragma GCC diagnostic pop
  return buffer.data();
}

// --- the one wide-string placeholder of a message -------------------------------------------------------------------

TEST(Format, FillsAWideStringIntoEitherSpellingOfThePlaceholder) {
  EXPECT_EQ(wide(L"The property '%s' cannot be found.", L"Area"), L"The property 'Area' cannot be found.");
  EXPECT_EQ(wide(L"The property '%ls' cannot be found.", L"Area"), L"The property 'Area' cannot be found.");
}

TEST(Format, TakesEveryFormOfAWideString) {
  EXPECT_EQ(wide(L"<%s>", std::wstring(L"Area")), L"<Area>");
  EXPECT_EQ(wide(L"<%ls>", CStdStr<wchar_t>(L"Area")), L"<Area>");
  EXPECT_EQ(wide(L"<%s>", CStdStr<wchar_t>()), L"<>");
  EXPECT_EQ(wide(L"<%s>", static_cast<const wchar_t*>(nullptr)), L"<>");
}

TEST(Format, KeepsEveryCharacterOfAName) {
  EXPECT_EQ(wide(L"%s", L"\u00c4nderung \u7ebf \U0001F4D0"), L"\u00c4nderung \u7ebf \U0001F4D0");
  EXPECT_EQ(wide(L"\u7ebf\U0001F4D0 %ls", L"x"), L"\u7ebf\U0001F4D0 x");
}

TEST(Format, DoesNotReadPlaceholdersInAnArgument) {
  EXPECT_EQ(wide(L"<%s>", L"%s%d%n%%"), L"<%s%d%n%%>");
}

TEST(Format, AMessageWithoutPlaceholderStaysAsItIs) {
  EXPECT_EQ(wide(L"Nothing here to fill in.", L"Area"), L"Nothing here to fill in.");
  EXPECT_EQ(wide(L"", L"Area"), L"");
  EXPECT_EQ(wide(L"", L""), L"");
}

TEST(Format, ANullFormatIsTheEmptyString) {
  EXPECT_EQ(wide(nullptr, L"Area"), L"");
  EXPECT_EQ(narrow(nullptr, 5), "");
}

TEST(Format, WritesADoubledPercentSignOnce) {
  EXPECT_EQ(wide(L"100 %% of %s", L"Area"), L"100 % of Area");
  EXPECT_EQ(wide(L"%%s", L"Area"), L"%s");
  EXPECT_EQ(wide(L"%%%s%%", L"Area"), L"%Area%");
  EXPECT_EQ(wide(L"%%%%"), L"%%");
}

// --- placeholders that do not fit -----------------------------------------------------------------------------------

TEST(Format, APlaceholderBeyondTheArgumentsStandsAsItIs) {
  EXPECT_EQ(wide(L"%s and %s", L"Area"), L"Area and %s");
  EXPECT_EQ(wide(L"%ls, %ls and %d", L"Area"), L"Area, %ls and %d");
  EXPECT_EQ(wide(L"%s"), L"%s");
  EXPECT_EQ(narrow("%d %s"), "%d %s");
}

TEST(Format, APlaceholderOfAnotherKindStandsAsItIs) {
  for (const wchar_t* const format : {L"<%d>", L"<%i>", L"<%u>", L"<%x>", L"<%X>", L"<%o>", L"<%c>", L"<%f>",
                                      L"<%F>", L"<%e>", L"<%E>", L"<%g>", L"<%G>", L"<%08.3f>", L"<%-5d>"}) {
    EXPECT_EQ(wide(format, L"Area"), format);
  }
  for (const wchar_t* const format : {L"<%s>", L"<%ls>", L"<%S>", L"<%hs>"}) {
    EXPECT_EQ(wide(format, 5), format);
    EXPECT_EQ(wide(format, 2.5), format);
  }
  EXPECT_EQ(wide(L"<%d>", 2.5), L"<%d>");
  EXPECT_EQ(wide(L"<%f>", 5), L"<%f>");
}

TEST(Format, AnArgumentWaitsForAPlaceholderOfItsKind) {
  EXPECT_EQ(wide(L"%d of %s", L"Area"), L"%d of Area");
  EXPECT_EQ(wide(L"%s of %d", 5), L"%s of 5");
  EXPECT_EQ(wide(L"%n%5$s%s", L"Area"), L"%n%5$sArea");
}

TEST(Format, WhatIsNotAPlaceholderStandsAsItIs) {
  for (const wchar_t* const format : {L"%n", L"%p", L"%a", L"%q", L"%", L"100 %", L"%y of", L"%1$s", L"%*s",
                                      L"%.*s", L"%*.*f", L"%l", L"%-", L"%.", L"%5", L"%\u7ebf"}) {
    EXPECT_EQ(wide(format, L"Area"), format);
    EXPECT_EQ(wide(format, 5), format);
    EXPECT_EQ(wide(format), format);
  }
}

TEST(Format, NeverWritesThroughAnArgument) {
  int written = 7;
  EXPECT_EQ(wide(L"%s%n", L"Area", written), L"Area%n");
  EXPECT_EQ(written, 7);
}

RC_GTEST_PROP(Format, NeverReadsBeyondTheArgumentsGiven, ()) {
  const auto characters =
      *rc::gen::container<std::wstring>(rc::gen::elementOf(std::wstring(L"%%%%sldhxcfgSn*.$0123-+ #x")));
  const std::array<FormatArgument, 4> arguments{L"first", 42, L"SECRET", 777777};
  const auto count = *rc::gen::inRange<std::size_t>(0, 3);
  const std::wstring result = formatWide(characters, arguments.data(), count);
  RC_ASSERT(result.find(L"SECRET") == std::wstring::npos);
  RC_ASSERT(result.find(L"777777") == std::wstring::npos);
  RC_ASSERT(result.size() <= characters.size() * 4095 + 10);
  if (characters.find(L'%') == std::wstring::npos) RC_ASSERT(result == characters);
}

RC_GTEST_PROP(Format, NarrowFormatsNeverReadBeyondTheArgumentsEither, ()) {
  const auto characters =
      *rc::gen::container<std::string>(rc::gen::elementOf(std::string("%%%%sldhxcfgSn*.$0123-+ #x")));
  const std::array<FormatArgument, 3> arguments{"first", "SECRET", 777777};
  const std::string result = formatNarrow(characters, arguments.data(), 1);
  RC_ASSERT(result.find("SECRET") == std::string::npos);
  RC_ASSERT(result.find("777777") == std::string::npos);
  if (characters.find('%') == std::string::npos) RC_ASSERT(result == characters);
}

TEST(Format, AViewThatEndsInAPlaceholderIsNotReadFurther) {
  const std::wstring_view whole = L"%5.3s";
  const FormatArgument argument(L"Area");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A buffer of exactly that size, so that a sanitizer sees the first character too many.
    const std::vector<wchar_t> exact(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(formatWide({exact.data(), exact.size()}, &argument, 1), whole.substr(0, length));
  }
}

// --- flags, width, precision ----------------------------------------------------------------------------------------

TEST(Format, PadsAndCutsStrings) {
  EXPECT_EQ(wide(L"<%8s>", L"Area"), L"<    Area>");
  EXPECT_EQ(wide(L"<%-8ls>", L"Area"), L"<Area    >");
  EXPECT_EQ(wide(L"<%.2s>", L"Area"), L"<Ar>");
  EXPECT_EQ(wide(L"<%.0s>", L"Area"), L"<>");
  EXPECT_EQ(wide(L"<%.s>", L"Area"), L"<>");
  EXPECT_EQ(wide(L"<%6.3s>", L"Area"), L"<   Are>");
  EXPECT_EQ(wide(L"<%-6.3s>", L"Area"), L"<Are   >");
  EXPECT_EQ(wide(L"<%2s>", L"Area"), L"<Area>");
  EXPECT_EQ(wide(L"<%.9s>", L"Area"), L"<Area>");
  EXPECT_EQ(wide(L"<%3.1s>", L"\U0001F4D0x"), L"<  \U0001F4D0>");
}

TEST(Format, HonoursWidthsAndPrecisionsUpTo4095) {
  EXPECT_EQ(wide(L"%4095s", L"x"), std::wstring(4094, L' ') + L"x");
  EXPECT_EQ(wide(L"%.4095s", std::wstring(5000, L'y')), std::wstring(4095, L'y'));
  EXPECT_EQ(wide(L"%4095d", 5), std::wstring(4094, L' ') + L"5");
  EXPECT_EQ(wide(L"%.4095d", 5), std::wstring(4094, L'0') + L"5");
  EXPECT_EQ(wide(L"%.4000f", 0.5).size(), 4002u);
  EXPECT_EQ(wide(L"%1.0d", 0), L" ") << "a zero without a digit, one wide";
}

TEST(Format, AWidthOrPrecisionBeyondThatMakesNoPlaceholder) {
  for (const wchar_t* const format : {L"%4096s", L"%.4096s", L"%4096d", L"%.4096d"}) {
    EXPECT_EQ(wide(format, L"x"), format);
    EXPECT_EQ(wide(format, 5), format);
  }
}

TEST(Format, AnAbsurdWidthTakesNoMemory) {
  for (const wchar_t* const format :
       {L"%4096s", L"%99999999999999999999999s", L"%2147483648s", L"%4294967297s",
        L"%.99999999999999999999999s", L"%18446744073709551617.3s"}) {
    EXPECT_LE(wide(format, L"Area").size(), 4200u) << "for a format of a wrong width";
  }
  EXPECT_LE(wide(L"%99999999999d", 5).size(), 4200u);
  EXPECT_LE(wide(L"%.99999999999f", 5.0).size(), 4200u);
}

TEST(Format, TheLargestNumbersFit) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(narrow("%.4095f", largest), printed("%.4095f", largest).substr(0, 309 + 1 + 4095));
  EXPECT_EQ(wide(L"%f", -largest), widened(printed("%f", -largest)));
  EXPECT_EQ(wide(L"%d", std::numeric_limits<long long>::min()), L"-9223372036854775808");
  EXPECT_EQ(wide(L"%u", std::numeric_limits<unsigned long long>::max()), L"18446744073709551615");
}

TEST(Format, WritesNumbers) {
  EXPECT_EQ(wide(L"%d of %u", -3, 7u), L"-3 of 7");
  EXPECT_EQ(wide(L"%i", static_cast<short>(-3)), L"-3");
  EXPECT_EQ(wide(L"%x %X %o", 255, 255u, 8), L"ff FF 10");
  EXPECT_EQ(wide(L"%c%c", 'A', L'\u7ebf'), L"A\u7ebf");
  EXPECT_EQ(wide(L"%g", 2.5f), L"2.5");
  EXPECT_EQ(narrow("%c", 'A'), "A");
}

RC_GTEST_PROP(Format, WritesWholeNumbersAsTheCLibraryDoes, (int number)) {
  std::string flags;
  for (const char flag : {'-', '+', ' ', '0', '#'}) {
    if (*rc::gen::arbitrary<bool>()) flags += flag;
  }
  const auto conversion = *rc::gen::elementOf(std::string("di"));
  // '#' means nothing for these.
  std::erase(flags, '#');
  std::string format = "%" + flags;
  if (*rc::gen::arbitrary<bool>()) format += std::to_string(*rc::gen::inRange(1, 30));
  if (*rc::gen::arbitrary<bool>()) format += "." + std::to_string(*rc::gen::inRange(0, 30));
  format += conversion;
  const std::string expected = printed(format, number);
  RC_ASSERT(narrow(format.c_str(), number) == expected);
  RC_ASSERT(wide(widened(format).c_str(), number) == widened(expected));
}

RC_GTEST_PROP(Format, WritesUnsignedNumbersAsTheCLibraryDoes, (unsigned int number)) {
  std::string flags;
  for (const char flag : {'-', '0', '#'}) {
    if (*rc::gen::arbitrary<bool>()) flags += flag;
  }
  const auto conversion = *rc::gen::elementOf(std::string("uxXo"));
  if (conversion == 'u') std::erase(flags, '#');
  std::string format = "%" + flags;
  if (*rc::gen::arbitrary<bool>()) format += std::to_string(*rc::gen::inRange(1, 30));
  if (*rc::gen::arbitrary<bool>()) format += "." + std::to_string(*rc::gen::inRange(0, 30));
  format += conversion;
  const std::string expected = printed(format, number);
  RC_ASSERT(narrow(format.c_str(), number) == expected);
  RC_ASSERT(wide(widened(format).c_str(), number) == widened(expected));
}

TEST(Format, TheBitsOfANegativeNumberAreThoseOfItsType) {
  for (const char* const format : {"%x", "%X", "%o", "%u"}) {
    EXPECT_EQ(narrow(format, -1), printed(format, -1)) << format;
    EXPECT_EQ(narrow(format, static_cast<signed char>(-2)), printed(format, -2)) << format;
    EXPECT_EQ(narrow(format, -1LL), printed(std::string("%ll") + (format + 1), -1LL)) << format;
  }
}

RC_GTEST_PROP(Format, WritesRealNumbersAsTheCLibraryDoes, (double number)) {
  std::string format = "%";
  for (const char flag : {'-', '+', ' ', '0', '#'}) {
    if (*rc::gen::arbitrary<bool>()) format += flag;
  }
  if (*rc::gen::arbitrary<bool>()) format += std::to_string(*rc::gen::inRange(1, 30));
  if (*rc::gen::arbitrary<bool>()) format += "." + std::to_string(*rc::gen::inRange(0, 20));
  format += *rc::gen::elementOf(std::string("fFeEgG"));
  const std::string expected = printed(format, number);
  RC_ASSERT(narrow(format.c_str(), number) == expected);
  RC_ASSERT(wide(widened(format).c_str(), number) == widened(expected));
}

// --- several arguments ----------------------------------------------------------------------------------------------

TEST(Format, FillsArgumentsInOrder) {
  EXPECT_EQ(wide(L"%s = %d (%.1f %%, %hs)", L"Area", 5, 2.25, "ab"), L"Area = 5 (2.2 %, ab)");
  EXPECT_EQ(narrow("%s %s %d", "a", "b", 3), "a b 3");
}

TEST(Format, KnowsTheSizeOfANumberWithoutBeingTold) {
  EXPECT_EQ(wide(L"%ld %lld %hd %zu", 5, 6, 7, 8u), L"5 6 7 8");
  EXPECT_EQ(wide(L"%d", 5'000'000'000LL), L"5000000000");
}

TEST(Format, ArgumentsLeftOverAreDropped) {
  EXPECT_EQ(wide(L"%s", L"a", L"b", 3), L"a");
}

TEST(Format, MixesWideAndNarrowStrings) {
  EXPECT_EQ(wide(L"%s %ls %S %hs", "a", "b", "c", "d"), L"a b c d");
  EXPECT_EQ(wide(L"%s %ls %S %hs", L"a", L"b", L"c", L"d"), L"a b c d");
  EXPECT_EQ(narrow("%s %ls %S %hs", L"a", L"b", L"c", L"d"), "a b c d");
  EXPECT_EQ(narrow("%s", CStdStr<char>("e")), "e");
  EXPECT_EQ(narrow("%s", std::string("f")), "f");
  EXPECT_EQ(narrow("<%s>", static_cast<const char*>(nullptr)), "<>");
}

RC_GTEST_PROP(Format, APatchworkOfTextAndPlaceholdersIsFilledPieceByPiece, ()) {
  const auto pieces = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 5));
  std::wstring format;
  std::wstring expected;
  std::vector<FormatArgument> arguments;
  int number = 0;
  for (const int piece : pieces) {
    ++number;
    switch (piece) {
      case 0:
        format += L"text ";
        expected += L"text ";
        break;
      case 1:
        format += L"%%";
        expected += L"%";
        break;
      case 2:
        format += number % 2 != 0 ? L"%s" : L"%ls";
        expected += L"name";
        arguments.emplace_back(L"name");
        break;
      case 3:
        format += L"%d";
        expected += std::to_wstring(number);
        arguments.emplace_back(number);
        break;
      default:
        format += L"%.1f";
        expected += std::to_wstring(number) + L".5";
        arguments.emplace_back(number + 0.5);
        break;
    }
  }
  RC_ASSERT(formatWide(format, arguments.data(), arguments.size()) == expected);
}

}  // namespace
}  // namespace velt::text
