#include "tool/Progress.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <string>
#include <thread>

namespace velt::tool {
namespace {

// A terminal whose output can be read.
class PseudoTerminal {
 public:
  PseudoTerminal() {
    EXPECT_EQ(openpty(&master_, &slave_, nullptr, nullptr, nullptr), 0);
    file_ = fdopen(slave_, "w");
  }
  ~PseudoTerminal() {
    std::fclose(file_);
    close(master_);
  }
  std::FILE* file() const { return file_; }
  std::string shown() {
    std::fflush(file_);
    char buffer[4096];
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(master_, &ready);
    timeval atOnce{};
    if (select(master_ + 1, &ready, nullptr, nullptr, &atOnce) <= 0) return {};
    const auto count = read(master_, buffer, sizeof buffer);
    return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
  }

 private:
  int master_ = -1;
  int slave_ = -1;
  std::FILE* file_ = nullptr;
};

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
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
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
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
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
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    progress.report(1, 2);
  }
  EXPECT_EQ(std::ftell(file), 0);
  std::fclose(file);
}

TEST(Progress, AnUnknownTotalGivesNoPercentage) {
  PseudoTerminal terminal;
  Progress progress("Loading", terminal.file());
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  progress.report(5, 0);
  EXPECT_EQ(terminal.shown(), "");
}

}  // namespace
}  // namespace velt::tool
