// What a figure depends on besides the code: the machine and the build.
#pragma once

#include <string>

namespace velt::bench {

struct Environment {
  std::string processor;
  unsigned cores = 0;
  double memoryGiB = 0.0;
  std::string system;
  std::string compiler;
  std::string build;  ///< "release" or "debug"
  std::string date;   ///< UTC, ISO 8601
};

[[nodiscard]] Environment environment();

/// Whether this program, and with it the libraries beside it, was built without optimisation.
[[nodiscard]] bool isDebugBuild();

}  // namespace velt::bench
