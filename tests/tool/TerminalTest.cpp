#include "tool/Terminal.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
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

// What a process whose standard output is `output` finds out with `look`, which is true for the expected.
bool isSeen(int output, bool (*look)()) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(output, STDOUT_FILENO);
    ::_exit(look() ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(Terminal, IsOnlyTheStandardOutputThatIsOne) {
  winsize size{.ws_row = 5, .ws_col = 33, .ws_xpixel = 0, .ws_ypixel = 0};
  int ours = -1;
  int its = -1;
  ASSERT_EQ(0, openpty(&ours, &its, nullptr, nullptr, &size));
  EXPECT_TRUE(isSeen(its, [] { return terminalOf(std::cout).width == 33U; }));
  EXPECT_TRUE(isSeen(its, [] { return !terminalOf(std::ostringstream()).width; }));
  ::close(ours);
  ::close(its);
  int ends[2] = {};
  ASSERT_EQ(0, ::pipe(ends));
  EXPECT_TRUE(isSeen(ends[1], [] { return !terminalOf(std::cout).width; }));
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(Terminal, MayBeOfOneLineOrOneColumn) {
  EXPECT_TRUE(isOf({.ws_row = 1, .ws_col = 1, .ws_xpixel = 0, .ws_ypixel = 0}, 1, 1));
}

TEST(Terminal, HasColorUnlessItIsForbiddenOrUnknownOrDumb) {
  const auto colored = [](const char* noColor, const char* kind) {
    noColor != nullptr ? setenv("NO_COLOR", noColor, 1) : unsetenv("NO_COLOR");
    kind != nullptr ? setenv("TERM", kind, 1) : unsetenv("TERM");
    return terminalOf(std::cout).hasColor;
  };
  static auto* const look = +colored;
  int ours = -1;
  int its = -1;
  ASSERT_EQ(0, openpty(&ours, &its, nullptr, nullptr, nullptr));
  EXPECT_TRUE(isSeen(its, [] { return look(nullptr, "xterm"); }));
  EXPECT_TRUE(isSeen(its, [] { return look("", "xterm"); }));
  EXPECT_TRUE(isSeen(its, [] { return !look("1", "xterm"); }));
  EXPECT_TRUE(isSeen(its, [] { return !look(nullptr, "dumb"); }));
  EXPECT_TRUE(isSeen(its, [] { return !look("", "dumb"); }));
  EXPECT_TRUE(isSeen(its, [] { return !look(nullptr, nullptr); }));
  EXPECT_TRUE(isSeen(its, [] { return !look("1", nullptr); }));
  ::close(ours);
  ::close(its);
}

}  // namespace
}  // namespace velt::tool
