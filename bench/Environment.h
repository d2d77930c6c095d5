#pragma once

// What a figure depends on besides the code: the machine and the build.

#include <string>

namespace velt::bench {

struct Environment {
  std::string processor;
  unsigned cores = 0;
  double memoryGiB = 0.0;
  std::string system;
  std::string compiler;
  // "release" or "debug".
  std::string build;
  // UTC, ISO 8601.
  std::string date;
};

[[nodiscard]] Environment environment();

// Whether this program, and so the libraries beside it, was built without optimisation.
[[nodiscard]] bool isDebugBuild();

}  // namespace velt::bench
