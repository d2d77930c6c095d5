#include "tool/Interruption.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace velt::tool {
namespace {

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

TEST(Interruption, EndsWithTheExitCodeThatAShellTells) {
  EXPECT_EQ(128 + SIGINT, exitCodeAfter(SIGINT));
  EXPECT_EQ(128 + SIGTERM, exitCodeAfter(SIGTERM));
}

TEST(Interruption, LeavesIgnoredSignalsIgnored) {
  EXPECT_EQ(0, exitCodeAfter(SIGHUP, [] { std::signal(SIGHUP, SIG_IGN); }));
}

TEST(Interruption, LetsAForkedProcessTakeSignalsAgain) {
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

}  // namespace
}  // namespace velt::tool
