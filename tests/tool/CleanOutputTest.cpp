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

}  // namespace
}  // namespace velt::tool
