#pragma once

// Shows progress on standard error, in a line that is rewritten. Only on a terminal, and only for work that takes
// longer than a second.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "embedded/platform/Watch.h"

namespace velt::tool {

class Progress {
 public:
  explicit Progress(const std::string& what, std::FILE* terminal = stderr);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  // Clears the line.
  ~Progress();

  void report(std::uint64_t done, std::uint64_t total);
  // Where nobody knows how much there is: "Reading: 1200000 values".
  void count(std::uint64_t done, const char* what);
  // Whether anything is ever shown.
  [[nodiscard]] bool isOnTerminal() const { return terminal_ != nullptr; }

 private:
  using Clock = std::chrono::steady_clock;

  [[nodiscard]] bool isShown() const;
  void show(const std::string& text);

  std::string what_;
  // Null when standard error is not a terminal.
  std::FILE* terminal_;
  Clock::time_point started_ = Clock::now();
  std::string shown_;
};

// Shows how many values the host has read, of work that consists of that.
class ReadingProgress {
 public:
  ReadingProgress();

 private:
  Progress progress_;
  std::optional<platform::Watch> watch_;
};

}  // namespace velt::tool
