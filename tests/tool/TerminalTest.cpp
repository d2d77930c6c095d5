#include "tool/Terminal.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <sstream>

namespace velt::tool {
namespace {

TEST(Terminal, AStreamThatIsNoTerminalHasNeitherWidthNorColor) {
  const std::ostringstream out;
  EXPECT_FALSE(terminalOf(out).width);
  EXPECT_FALSE(terminalOf(out).hasColor);
}

// What the program is told of a terminal of so many lines and columns, of which 0 are not known; in a process of its own,
// whose standard output it is.
bool isOf(winsize size, std::size_t height, std::size_t width) {
  int ours = -1;
  int its = -1;
  EXPECT_EQ(0, openpty(&ours, &its, nullptr, nullptr, &size));
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(its, STDOUT_FILENO);
    const Terminal terminal = terminalOf(std::cout);
    ::_exit(terminal.height == height && terminal.width == width ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  ::close(ours);
  ::close(its);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(Terminal, TellsItsSizeOrCountsAsAUsualOne) {
  EXPECT_TRUE(isOf({.ws_row = 5, .ws_col = 33, .ws_xpixel = 0, .ws_ypixel = 0}, 5, 33));
  EXPECT_TRUE(isOf({.ws_row = 0, .ws_col = 33, .ws_xpixel = 0, .ws_ypixel = 0}, 24, 33));
  EXPECT_TRUE(isOf({.ws_row = 5, .ws_col = 0, .ws_xpixel = 0, .ws_ypixel = 0}, 5, 80));
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
