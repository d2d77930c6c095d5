#pragma once

// Long output goes through a pager when somebody looks at it on a terminal.
//
// The pager is the command in the environment variable PAGER, run by the shell; without it, less or else more, where
// one of them is installed. An empty one, and "cat", mean none. It is started when the output is longer than the
// terminal is high, so that short output stays where it is. less is told to keep colors, unless LESS says otherwise.

#include <cstddef>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

namespace velt::tool {

class Pager : private std::streambuf, public std::ostream {
 public:
  // Output longer than so many lines is paged.
  explicit Pager(std::ostream& to, std::size_t lines);
  Pager(const Pager&) = delete;
  Pager& operator=(const Pager&) = delete;
  ~Pager() override;

  // Passes on what is left, and waits until the reader has left the pager. Throws Failure when the pager could not be
  // started. Writing ends without a failure when the reader leaves before the end.
  void finish();

 private:
  int overflow(int character) override;
  std::streamsize xsputn(const char* text, std::streamsize length) override;
  void start();
  void writeToPager(const char* text, std::size_t length);

  std::ostream& to_;
  const std::size_t lines_;
  const std::string command_;
  std::string kept_;
  std::size_t linesKept_ = 0;
  int process_ = -1;
  int pipe_ = -1;
  bool hasEnded_ = false;
  // What stood there before; see start().
  void (*onBrokenPipe_)(int) = nullptr;
  void (*onInterrupt_)(int) = nullptr;
};

}  // namespace velt::tool
