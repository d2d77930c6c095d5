#pragma once

// Progress on standard error: a line that is rewritten, for work of more than a second, on terminals only.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace velt::tool {

class Progress {
 public:
  explicit Progress(std::string what, std::FILE* terminal = stderr);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();  // clears the line

  void report(std::uint64_t done, std::uint64_t total);

 private:
  using Clock = std::chrono::steady_clock;
  std::string what_;
  std::FILE* terminal_;  // null when there is no terminal
  Clock::time_point started_ = Clock::now();
  int shownPercent_ = -1;
};

}  // namespace velt::tool
