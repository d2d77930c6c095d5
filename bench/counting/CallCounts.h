#pragma once

// How often each call to the host was made.

#include <cstdint>
#include <map>
#include <string>

namespace velt::bench {

using CallCounts = std::map<std::string, std::int64_t>;

// The counts of the process. To count some work, empty it first.
[[nodiscard]] inline CallCounts& callCounts() {
  static CallCounts counts;
  return counts;
}

inline void countCall(const char* name) {
  ++callCounts()[name];
}

}  // namespace velt::bench
