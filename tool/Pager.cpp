#include "tool/Pager.h"

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

#include "tool/Failure.h"
#include "tool/Interruption.h"

namespace velt::tool {

namespace {

// Of the shell, for a command that it does not find.
constexpr int notFound = 127;

bool isOnThePath(const std::string& program) {
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path != nullptr ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) return true;
  }
  return false;
}

// Empty for none.
std::string pagerCommand() {
  if (const char* const asked = std::getenv("PAGER")) return std::string(asked) == "cat" ? "" : asked;
  for (const char* const known : {"less", "more"}) {
    if (isOnThePath(known)) return known;
  }
  return {};
}

}  // namespace

Pager::Pager(std::ostream& to, std::size_t lines)
    : std::ostream(static_cast<std::streambuf*>(this)), to_(to), lines_(lines), command_(pagerCommand()) {}

Pager::~Pager() {
  try {
    finish();
  } catch (...) {
    // Whoever wants to know has called it.
  }
}

int Pager::overflow(int character) {
  if (std::char_traits<char>::eq_int_type(character, std::char_traits<char>::eof()))
    return std::char_traits<char>::not_eof(character);
  const char c = std::char_traits<char>::to_char_type(character);
  return xsputn(&c, 1) == 1 ? character : std::char_traits<char>::eof();
}

std::streamsize Pager::xsputn(const char* text, std::streamsize length) {
  const auto size = static_cast<std::size_t>(length);
  if (command_.empty()) return to_.write(text, length) ? length : 0;
  if (process_ >= 0) {
    writeToPager(text, size);
    return length;
  }
  kept_.append(text, size);
  linesKept_ += static_cast<std::size_t>(std::count(text, text + size, '\n'));
  if (linesKept_ > lines_) start();
  return length;
}

void Pager::start() {
  int ends[2];
  if (pipe(ends) != 0) throw Failure("the pager could not be started (--no-pager does without)");
  to_.flush();
  process_ = fork();
  if (process_ == 0) {
    takeSignalsAgain();
    dup2(ends[0], STDIN_FILENO);
    close(ends[0]);
    close(ends[1]);
    setenv("LESS", "FRX", 0);
    execl("/bin/sh", "sh", "-c", command_.c_str(), static_cast<char*>(nullptr));
    _exit(notFound);
  }
  close(ends[0]);
  if (process_ < 0) {
    close(ends[1]);
    throw Failure("the pager could not be started (--no-pager does without)");
  }
  pipe_ = ends[1];
  // A reader who leaves early does not end the program, and an interrupt is for the pager.
  onBrokenPipe_ = std::signal(SIGPIPE, SIG_IGN);
  onInterrupt_ = std::signal(SIGINT, SIG_IGN);
  writeToPager(kept_.data(), kept_.size());
  kept_.clear();
  // What comes when the pager has ended, even if it is nothing, is no reason to start another one.
  linesKept_ = 0;
}

void Pager::writeToPager(const char* text, std::size_t length) {
  while (length > 0 && !hasEnded_) {
    const ssize_t written = ::write(pipe_, text, length);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) {
      hasEnded_ = true;
      return;
    }
    text += written;
    length -= static_cast<std::size_t>(written);
  }
}

void Pager::finish() {
  to_ << std::exchange(kept_, {});
  to_.flush();
  if (process_ < 0) return;
  close(std::exchange(pipe_, -1));
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {}
  process_ = -1;
  std::signal(SIGPIPE, onBrokenPipe_);
  std::signal(SIGINT, onInterrupt_);
  if (WIFEXITED(status) && WEXITSTATUS(status) == notFound)
    throw Failure(fmt::format("the pager \"{}\" could not be started (--no-pager does without)", command_));
}

}  // namespace velt::tool
