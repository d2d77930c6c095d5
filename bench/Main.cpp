// velt_bench: what the property layer costs beyond the calls that it must make to its host.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "bench/Environment.h"
#include "bench/Groups.h"
#include "bench/Report.h"

using namespace velt::bench;

namespace {

constexpr const char* help =
    "velt_bench [--json FILE] [--filter TEXT] [--quick] [--allow-debug]\n"
    "\n"
    "  --json FILE     also writes the figures to FILE\n"
    "  --filter TEXT   only measurements whose names contain TEXT, such as query/lines or merge\n"
    "  --quick         small sizes only: shows that everything runs, the figures mean little\n"
    "  --allow-debug   runs although this is a debug build, whose figures mean nothing\n";

struct UsageError : std::runtime_error {
  using runtime_error::runtime_error;
};

struct CommandLine {
  Settings settings;
  std::optional<std::filesystem::path> json;
  bool allowsDebug = false;
  bool wantsHelp = false;
};

CommandLine parse(int count, char** arguments) {
  CommandLine line;
  for (int i = 1; i < count; ++i) {
    const std::string_view argument = arguments[i];
    const auto value = [&] {
      if (++i == count) throw UsageError(fmt::format("{} needs a value", argument));
      return arguments[i];
    };
    if (argument == "--json") {
      line.json = value();
    } else if (argument == "--filter") {
      line.settings.filter = value();
    } else if (argument == "--quick") {
      line.settings.quick = true;
    } else if (argument == "--allow-debug") {
      line.allowsDebug = true;
    } else if (argument == "--help") {
      line.wantsHelp = true;
    } else {
      throw UsageError(fmt::format("{} is not an option; --help lists them", argument));
    }
  }
  return line;
}

int run(const CommandLine& line) {
  if (line.wantsHelp) {
    fmt::print("{}", help);
    return 0;
  }
  if (isDebugBuild() && !line.allowsDebug) {
    fmt::print(
        stderr,
        "velt_bench: this is a debug build, its figures would mean nothing; build the release preset\n");
    return 1;
  }
  Report report(environment(), line.settings.filter);
  measureQueries(line.settings, report);
#ifdef VELT_HAS_QT
  measureBaseline(line.settings, report);
#else
  fmt::print("the baseline on QtCore is left out: QtCore 6 was not there when this was built\n");
#endif
  measureReading(line.settings, report);
  measureWriting(line.settings, report);
  measureShapes(line.settings, report);
  measureLists(line.settings, report);
  measureDynamicRows(line.settings, report);
#ifdef VELT_HAS_WINDOW
  measureWindow(line.settings, report);
#else
  fmt::print("the window is left out: Qt 6 Widgets was not there when this was built\n");
#endif
  if (line.json) report.writeJson(*line.json);
  return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  try {
    return run(parse(argumentCount, arguments));
  } catch (const UsageError& error) {
    fmt::print(stderr, "velt_bench: {}\n", error.what());
    return 2;
  } catch (const std::exception& error) {
    fmt::print(stderr, "velt_bench: {}\n", error.what());
    return 1;
  }
}
