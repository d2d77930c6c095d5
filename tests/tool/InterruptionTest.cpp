#include "tool/Interruption.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <filesystem>
#include <string>

#include "dxf/FileReplacement.h"
#include "tests/support/Files.h"

namespace velt::tool {
namespace {

// A shell starts what runs in the background with these signals ignored.
class Interruption : public testing::Test {
 protected:
  Interruption() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGHUP, SIG_DFL);
  }
};

// What a shell tells of a process that waits for interruptions and sends itself a signal; `prepare` comes first.
int exitCodeAfter(
    int signal, void (*prepare)() = [] {}) {
  const pid_t child = ::fork();
  if (child == 0) {
    prepare();
    endCleanlyWhenInterrupted();
    ::kill(::getpid(), signal);
    // A signal that ends the process does so soon.
    ::sleep(1);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(Interruption, EndsWithTheExitCodeThatAShellTells) {
  EXPECT_EQ(128 + SIGINT, exitCodeAfter(SIGINT));
  EXPECT_EQ(128 + SIGTERM, exitCodeAfter(SIGTERM));
}

// What an interrupted process leaves on its standard error, which is `theirs`; it is read from `ours`.
std::string leftOn(int theirs, int ours) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(theirs, STDERR_FILENO);
    endCleanlyWhenInterrupted();
    ::kill(::getpid(), SIGINT);
    ::sleep(1);
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
  ::close(theirs);
  char buffer[64];
  const ssize_t count = ::read(ours, buffer, sizeof buffer);
  ::close(ours);
  return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
}

TEST_F(Interruption, ClearsTheLineOfProgressOnATerminalOnly) {
  int terminal[2] = {};
  ASSERT_EQ(0, openpty(&terminal[0], &terminal[1], nullptr, nullptr, nullptr));
  EXPECT_EQ("\r\033[K", leftOn(terminal[1], terminal[0]));
  int ends[2] = {};
  ASSERT_EQ(0, ::pipe(ends));
  EXPECT_EQ("", leftOn(ends[1], ends[0]));
}

TEST_F(Interruption, LeavesIgnoredSignalsIgnored) {
  EXPECT_EQ(0, exitCodeAfter(SIGHUP, [] { std::signal(SIGHUP, SIG_IGN); }));
}

TEST_F(Interruption, LetsAForkedProcessTakeSignalsAgain) {
  const pid_t child = ::fork();
  if (child == 0) {
    endCleanlyWhenInterrupted();
    const pid_t program = ::fork();
    if (program == 0) {
      takeSignalsAgain();
      std::raise(SIGINT);
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(program, &status, 0);
    ::_exit(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(0, WEXITSTATUS(status));
}

TEST_F(Interruption, WhatIsIgnoredWhileItWaitsDoesNotEndIt) {
  // As while a pager shows the output. The lower of two signals is taken first.
  const pid_t child = ::fork();
  if (child == 0) {
    endCleanlyWhenInterrupted();
    std::signal(SIGINT, SIG_IGN);
    ::kill(::getpid(), SIGINT);
    ::kill(::getpid(), SIGTERM);
    ::sleep(1);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(128 + SIGTERM, WEXITSTATUS(status));
}

TEST_F(Interruption, LeavesNoUnfinishedFile) {
  const tests::TemporaryFolder folder;
  const std::string target = folder.path("new.dxf");
  int ends[2] = {};
  ASSERT_EQ(0, ::pipe(ends));
  const pid_t child = ::fork();
  if (child == 0) {
    dxf::FileReplacement file(target, {.onlyNew = true});
    file.stream() << "half" << std::flush;
    const bool isThere = !std::filesystem::is_empty(folder.path());
    [[maybe_unused]] const ssize_t told = ::write(ends[1], isThere ? "1" : "0", 1);
    endCleanlyWhenInterrupted();
    ::kill(::getpid(), SIGTERM);
    ::sleep(1);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(128 + SIGTERM, WIFEXITED(status) ? WEXITSTATUS(status) : -1);
  char isThere = '?';
  EXPECT_EQ(1, ::read(ends[0], &isThere, 1));
  EXPECT_EQ('1', isThere) << "there was one to remove";
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
  ::close(ends[0]);
  ::close(ends[1]);
}

}  // namespace
}  // namespace velt::tool
