#pragma once

// Shows progress on standard error, in a line that is rewritten. Only on a terminal, and only for work that takes
// longer than a second.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace velt::tool {

class Progress {
 public:
  explicit Progress(const std::string& what, std::FILE* terminal = stderr);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  // Clears the line.
  ~Progress();

  void report(std::uint64_t done, std::uint64_t total);

 private:
  using Clock = std::chrono::steady_clock;
  std::string what_;
  // Null when standard error is not a terminal.
  std::FILE* terminal_;
  Clock::time_point started_ = Clock::now();
  int shownPercent_ = -1;
};

}  // namespace velt::tool
