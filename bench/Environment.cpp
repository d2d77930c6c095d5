#include "bench/Environment.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <thread>

#include <fmt/chrono.h>
#include <fmt/format.h>

namespace velt::bench {

namespace {

std::string processorName() {
  std::ifstream information("/proc/cpuinfo");
  for (std::string line; std::getline(information, line);) {
    if (!line.starts_with("model name")) continue;
    const std::size_t colon = line.find(": ");
    if (colon != std::string::npos) return line.substr(colon + 2);
  }
  return "unknown";
}

double memoryInGiB() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGE_SIZE);
  return static_cast<double>(pages) * static_cast<double>(pageSize) / (1024.0 * 1024.0 * 1024.0);
}

std::string systemName() {
  utsname names{};
  if (uname(&names) != 0) return "unknown";
  return fmt::format("{} {} {}", names.sysname, names.release, names.machine);
}

std::string compilerName() {
#if defined(__clang__)
  return "clang " __clang_version__;
#else
  return "g++ " __VERSION__;
#endif
}

}  // namespace

bool isDebugBuild() {
#if defined(NDEBUG) && defined(__OPTIMIZE__)
  return false;
#else
  return true;
#endif
}

Environment environment() {
  return {
      .processor = processorName(),
      .cores = std::thread::hardware_concurrency(),
      .memoryGiB = memoryInGiB(),
      .system = systemName(),
      .compiler = compilerName(),
      .build = isDebugBuild() ? "debug" : "release",
      .date =
          fmt::format("{:%Y-%m-%dT%H:%M:%SZ}",
                      fmt::gmtime(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()))),
  };
}

}  // namespace velt::bench
