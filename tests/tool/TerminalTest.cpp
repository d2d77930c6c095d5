#include "tool/Terminal.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velt::tool {
namespace {

TEST(Terminal, AStreamThatIsNoTerminalHasNeitherWidthNorColor) {
  const std::ostringstream out;
  EXPECT_FALSE(terminalOf(out).width);
  EXPECT_FALSE(terminalOf(out).hasColor);
}

TEST(Terminal, ALineIsNoLongerThanTheTerminal) {
  EXPECT_EQ((Terminal{.width = 4}).fitted("Walls"), "Wal\u2026");
  EXPECT_EQ(Terminal().fitted("Walls"), "Walls");
}

TEST(Terminal, OnlyATerminalWithColorGetsStyles) {
  EXPECT_EQ((Terminal{.hasColor = true}).bold("Walls"), "\033[1mWalls\033[0m");
  EXPECT_EQ((Terminal{.hasColor = true}).faint("Walls"), "\033[2mWalls\033[0m");
  EXPECT_EQ(Terminal().bold("Walls"), "Walls");
}

}  // namespace
}  // namespace velt::tool
