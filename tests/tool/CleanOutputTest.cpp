#include "tool/CleanOutput.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velt::tool {
namespace {

using velt::tool::CleanOutput;

constexpr const char* replaced = "\xEF\xBF\xBD";

std::string cleaned(std::string_view text) {
  std::ostringstream to;
  CleanOutput(to) << text;
  return to.str();
}

TEST(CleanOutput, TextPassesAsItIs) {
  EXPECT_EQ(cleaned("plain\nT\u00FCr \u8868 \U0001F600\n"), "plain\nT\u00FCr \u8868 \U0001F600\n");
  EXPECT_EQ(cleaned("no line end"), "no line end");
}

TEST(CleanOutput, TabsPartColumns) {
  EXPECT_EQ(cleaned("Layer\tRadius\nT\u00FCren\t2\n"), "Layer\tRadius\nT\u00FCren\t2\n");
}

TEST(CleanOutput, TheProgramsOwnStylesPassWhereItHasColors) {
  std::ostringstream to;
  CleanOutput(to, true) << "\x1B[1mGeneral\x1B[0m \x1B[2mfaint\x1B[0m \x1B[31mred\n";
  EXPECT_EQ(to.str(), std::string("\x1B[1mGeneral\x1B[0m \x1B[2mfaint\x1B[0m ") + replaced + "[31mred\n");
}

TEST(CleanOutput, WhatATerminalObeysIsReplaced) {
  const std::string r = replaced;
  EXPECT_EQ(cleaned("\x1B[31mred\x1B[0m"), r + "[31mred" + r + "[0m");
  EXPECT_EQ(cleaned("over\rwritten\b\x07\x7F"), "over" + r + "written" + r + r + r);
  EXPECT_EQ(cleaned("\u009B31m"), r + "31m");
  EXPECT_EQ(cleaned("\x9B"
                    "31m\xFF"),
            r + "31m" + r);
}

TEST(CleanOutput, ACharacterThatComesInPartsIsWhole) {
  std::ostringstream to;
  CleanOutput out(to);
  for (const char c : std::string("\u8868\n"))
    out << c;
  EXPECT_EQ(to.str(), "\u8868\n");
}

TEST(CleanOutput, LinesArePassedOnAsTheyEndAndTheRestWhenItIsFlushed) {
  std::ostringstream to;
  CleanOutput out(to);
  out << "one\ntwo";
  EXPECT_EQ(to.str(), "one\n");
  out << std::flush;
  EXPECT_EQ(to.str(), "one\ntwo");
}

TEST(CleanOutput, AFailureOfTheStreamShows) {
  std::ostringstream to;
  CleanOutput out(to);
  to.setstate(std::ios::badbit);
  out << "lost\n";
  out.flush();
  EXPECT_FALSE(out);
}

TEST(CleanOutput, EachControlCharacterIsReplacedByItself) {
  const std::string r = replaced;
  for (int c = 0; c < 0x80; ++c) {
    if (c == '\n' || c == '\t') continue;
    const std::string text = std::string("a") + static_cast<char>(c) + "b\n";
    const std::string expected = c < 0x20 || c == 0x7F ? "a" + r + "b\n" : text;
    EXPECT_EQ(cleaned(text), expected) << c;
    EXPECT_EQ(cleaned("\u8868" + text), "\u8868" + expected) << c << ", with others that are not plain";
  }
  EXPECT_EQ(cleaned("\u0080\u009F\u00A0\u00A1"), r + r + "\u00A0\u00A1");
}

TEST(CleanOutput, WhatFollowsAStyleIsLookedAtAtOnce) {
  std::ostringstream to;
  CleanOutput(to, true) << "\x1B[1m\x07\x1B[0m\x1B[31m\x1B[2m\r\n\x1B[0m";
  EXPECT_EQ(to.str(), std::string("\x1B[1m") + replaced + "\x1B[0m" + replaced + "[31m\x1B[2m" + replaced
                          + "\n\x1B[0m");
}

TEST(CleanOutput, SingleCharactersPass) {
  std::ostringstream to;
  {
    CleanOutput out(to);
    EXPECT_EQ(out.rdbuf()->sputc('a'), 'a');
    EXPECT_EQ(out.rdbuf()->sputc('\xFF'), 0xFF);
    EXPECT_EQ(to.str(), "");
    EXPECT_EQ(out.rdbuf()->sputc('\n'), '\n');
    EXPECT_EQ(to.str(), std::string("a") + replaced + "\n");
    out.put('b');
    EXPECT_TRUE(out);
  }
  EXPECT_EQ(to.str(), std::string("a") + replaced + "\nb");
}

TEST(CleanOutput, AFailureShowsWithTheCharacterThatMeetsIt) {
  std::ostringstream to;
  CleanOutput out(to);
  to.setstate(std::ios::badbit);
  EXPECT_EQ(out.rdbuf()->sputc('a'), 'a') << "nothing is passed on yet";
  EXPECT_EQ(out.rdbuf()->sputc('\n'), std::char_traits<char>::eof());
  EXPECT_EQ(out.rdbuf()->sputn("\n", 1), 0);
  EXPECT_EQ(out.rdbuf()->pubsync(), -1);
}

TEST(CleanOutput, AFailureOfTheRestShowsWhenItIsFlushed) {
  std::ostringstream to;
  CleanOutput out(to);
  out << "kept" << std::flush;
  EXPECT_EQ(out.rdbuf()->pubsync(), 0);
  to.setstate(std::ios::badbit);
  out << "lost";
  EXPECT_TRUE(out);
  out.flush();
  EXPECT_FALSE(out);
}

// Takes everything and cannot write it.
class FullBuffer : public std::stringbuf {
 private:
  int sync() override { return -1; }
};

TEST(CleanOutput, AStreamThatCannotBeFlushedHasFailed) {
  FullBuffer full;
  std::ostream to(&full);
  CleanOutput out(to);
  out << "taken\n";
  EXPECT_TRUE(out);
  out.flush();
  EXPECT_FALSE(out);
}

}  // namespace
}  // namespace velt::tool
