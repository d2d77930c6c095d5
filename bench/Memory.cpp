#include "bench/Memory.h"

#include <malloc.h>

#include <fstream>
#include <limits>
#include <string>
#include <string_view>

namespace velt::bench {

namespace {

std::optional<std::size_t> bytesOf(std::string_view key) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    std::size_t kibibytes = 0;
    if (word == key && status >> kibibytes) return kibibytes * 1024;
    status.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  return std::nullopt;
}

bool forgetHighestMark() {
  std::ofstream control("/proc/self/clear_refs");
  control << "5" << std::flush;
  return control.good();
}

}  // namespace

std::optional<std::size_t> peakMemoryOf(const std::function<void()>& work) {
  malloc_trim(0);
  if (!forgetHighestMark()) return std::nullopt;
  const std::optional<std::size_t> before = bytesOf("VmRSS:");
  work();
  const std::optional<std::size_t> highest = bytesOf("VmHWM:");
  if (!before || !highest) return std::nullopt;
  return *highest > *before ? *highest - *before : 0;
}

}  // namespace velt::bench
