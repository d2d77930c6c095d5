#include "tool/Interruption.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <string_view>
#include <thread>

#include "dxf/UnfinishedFile.h"

namespace velt::tool {
namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};

bool isIgnored(int signal) {
  struct sigaction action {};
  return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

[[noreturn]] void end(int signal) {
  dxf::UnfinishedFile::removeAllForGood();
  // A line of progress may stand there, without an end.
  constexpr std::string_view clearedLine = "\r\033[K";
  if (::isatty(STDERR_FILENO) != 0) {
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, clearedLine.data(), clearedLine.size());
  }
  // The destructors of globals are for a process whose other threads have ended.
  ::_exit(128 + signal);
}

}  // namespace

void endCleanlyWhenInterrupted() {
  sigset_t waitedFor;
  ::sigemptyset(&waitedFor);
  for (const int signal : signals) {
    if (!isIgnored(signal)) ::sigaddset(&waitedFor, signal);
  }
  // Waiting for signals takes them from every thread. Programs that the tool starts begin with the same ones blocked: see
  // takeSignalsAgain().
  ::pthread_sigmask(SIG_BLOCK, &waitedFor, nullptr);
  std::thread([waitedFor] {
    while (true) {
      int signal = 0;
      // While a pager shows the output an interrupt is the pager's.
      if (::sigwait(&waitedFor, &signal) == 0 && !isIgnored(signal)) end(signal);
    }
  }).detach();
}

void takeSignalsAgain() {
  sigset_t all;
  ::sigemptyset(&all);
  for (const int signal : signals)
    ::sigaddset(&all, signal);
  ::pthread_sigmask(SIG_UNBLOCK, &all, nullptr);
}

}  // namespace velt::tool
