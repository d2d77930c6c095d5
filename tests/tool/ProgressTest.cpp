#include "tool/Progress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <ctime>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/Files.h"
#include "tests/tool/Drawings.h"
#include "tool/CommandLine.h"

namespace {

constinit std::atomic<std::int64_t> secondsAhead{0};
constinit std::atomic<std::int64_t> secondsPerLook{0};

}  // namespace

// Every clock of this test program, so that no test has to wait for a second to pass.
extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
  const long result = syscall(SYS_clock_gettime, clock, time);
  if (result == 0) time->tv_sec += secondsAhead.fetch_add(secondsPerLook.load()) + secondsPerLook.load();
  return static_cast<int>(result);
}

namespace velt::tool {
namespace {

using testing::HasSubstr;

void passSeconds(std::int64_t count) {
  secondsAhead += count;
}

// While it lives, two seconds pass between a look at a clock and the next.
class HurriedClock {
 public:
  HurriedClock() { secondsPerLook = 2; }
  HurriedClock(const HurriedClock&) = delete;
  HurriedClock& operator=(const HurriedClock&) = delete;
  ~HurriedClock() { secondsPerLook = 0; }
};

// A terminal whose output can be read.
class PseudoTerminal {
 public:
  PseudoTerminal() {
    EXPECT_EQ(openpty(&master_, &slave_, nullptr, nullptr, nullptr), 0);
    file_ = fdopen(slave_, "w");
  }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal() {
    std::fclose(file_);
    close(master_);
  }
  std::FILE* file() const { return file_; }
  int descriptor() const { return slave_; }
  bool hasOutput() const {
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(master_, &ready);
    timeval atOnce{};
    return select(master_ + 1, &ready, nullptr, nullptr, &atOnce) > 0;
  }
  std::string shown() {
    std::fflush(file_);
    if (!hasOutput()) return {};
    char buffer[4096];
    const auto count = read(master_, buffer, sizeof buffer);
    return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
  }

 private:
  int master_ = -1;
  int slave_ = -1;
  std::FILE* file_ = nullptr;
};

// What a command of the tool writes to standard error, on a terminal and with a hurried clock.
std::string progressOf(const std::vector<std::string>& arguments) {
  PseudoTerminal terminal;
  std::string text;
  std::atomic<bool> isDone{false};
  // A terminal that nobody reads would stop the command at some time.
  std::thread reader([&] {
    while (!isDone || terminal.hasOutput()) {
      if (terminal.hasOutput()) text += terminal.shown();
      std::this_thread::yield();
    }
  });
  std::vector<const char*> words{"veltprops"};
  std::transform(arguments.begin(), arguments.end(), std::back_inserter(words),
                 [](const std::string& word) { return word.c_str(); });
  std::ostringstream out;
  std::ostringstream err;
  std::fflush(stderr);
  const int before = dup(STDERR_FILENO);
  dup2(terminal.descriptor(), STDERR_FILENO);
  int code = 0;
  {
    const HurriedClock hurried;
    code = run(static_cast<int>(words.size()), words.data(), out, err);
  }
  std::fflush(stderr);
  dup2(before, STDERR_FILENO);
  close(before);
  isDone = true;
  reader.join();
  EXPECT_EQ(code, 0) << err.str();
  return text;
}

TEST(Progress, ShortWorkShowsNothing) {
  PseudoTerminal terminal;
  {
    Progress progress("Loading", terminal.file());
    progress.report(1, 2);
  }
  EXPECT_EQ(terminal.shown(), "");
}

TEST(Progress, LongWorkShowsThePercentageAndClearsItAtTheEnd) {
  PseudoTerminal terminal;
  {
    Progress progress("Loading a.dxf", terminal.file());
    passSeconds(1);
    progress.report(1, 2);
    progress.report(1, 2);
    EXPECT_EQ(terminal.shown(), "\r\033[KLoading a.dxf: 50%");
    progress.report(199, 200);
    EXPECT_EQ(terminal.shown(), "\r\033[KLoading a.dxf: 99%") << "not yet done";
    progress.report(200, 200);
    EXPECT_EQ(terminal.shown(), "\r\033[KLoading a.dxf: 100%");
  }
  EXPECT_EQ(terminal.shown(), "\r\033[K");
}

TEST(Progress, CountsWhatNobodyKnowsTheEndOf) {
  PseudoTerminal terminal;
  {
    Progress progress("Reading", terminal.file());
    progress.count(7, "values");
    passSeconds(1);
    EXPECT_EQ(terminal.shown(), "") << "not in the first second";
    progress.count(1200000, "values");
    EXPECT_EQ(terminal.shown(), "\r\033[KReading: 1200000 values");
  }
  EXPECT_EQ(terminal.shown(), "\r\033[K");
}

TEST(Progress, WhatIsNotATerminalGetsNothing) {
  std::FILE* const file = std::tmpfile();
  {
    Progress progress("Loading", file);
    passSeconds(1);
    progress.report(1, 2);
  }
  EXPECT_EQ(std::ftell(file), 0);
  std::fclose(file);
}

TEST(Progress, AnUnknownTotalGivesNoPercentage) {
  PseudoTerminal terminal;
  Progress progress("Loading", terminal.file());
  passSeconds(1);
  progress.report(5, 0);
  EXPECT_EQ(terminal.shown(), "");
}

// Which work shows its progress, and that it does so entity by entity.
TEST(Progress, EveryCommandThatMayTakeLongShowsIt) {
  const tests::TemporaryFolder folder;
  const std::string plan = folder.write(
      "plan.dxf",
      tests::drawingOf({{"0"}, {"Walls"}}, tests::line("2F", "Walls") + tests::circle("131", "0")));
  const std::string values =
      folder.write("values.json", R"({"entities":[{"handle":"2F","values":{"Layer":"0"}},)"
                                  R"({"handle":"131","values":{"Layer":"Walls"}}]})");
  const auto halfOf = [](const std::string& what) { return HasSubstr(what + ": 50%"); };

  EXPECT_THAT(progressOf({"info", plan}), HasSubstr("Loading " + plan + ": "));
  EXPECT_THAT(progressOf({"list", plan, "--json", "--values"}), halfOf("Reading " + plan));
  EXPECT_THAT(progressOf({"list", plan, "--where", "Layer=0"}), halfOf("Selecting"));
  EXPECT_THAT(progressOf({"table", plan, "--all"}), halfOf("Reading"));
  EXPECT_THAT(progressOf({"diff", plan, plan}), halfOf("Comparing"));
  EXPECT_THAT(progressOf({"show", plan, "--all"}), HasSubstr("Reading properties: "));
  EXPECT_THAT(progressOf({"explain", plan, "Layer", "--all"}), HasSubstr("Reading properties: "));
  const std::string target = folder.path("other.dxf");
  const std::string written = progressOf({"set", plan, "LinetypeScale=2", "--all", "-o", target});
  EXPECT_THAT(written, HasSubstr("Writing LinetypeScale: 100%"));
  EXPECT_THAT(written, HasSubstr("Saving " + target + ": 100%"));
  EXPECT_THAT(progressOf({"set", plan, "--from", values, "--dry-run"}), halfOf("Writing " + values));
}

}  // namespace
}  // namespace velt::tool
