// velt-host-check: loads a host from a shared object, checks it with a few entities, and tells what it found.

#include <dlfcn.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "hostcheck/CheckList.h"
#include "hostcheck/HostCheck.h"
#include "hostcheck/HostModule.h"

namespace {

using velt::hostcheck::Report;

constexpr int passed = 0;
constexpr int foundSomething = 1;
constexpr int wrongUsage = 2;

// Found beside this program, in the build folder as in an installation.
constexpr const char* checkLibrary = "libVeltHostCheck.so.0";

// --- a host that crashes ---------------------------------------------------------------------------------------------

// What is being asked, ready to be written by a signal handler, which may not do much.
std::array<char, 400> asked{};

void remember(const std::string& what, const std::string& subject) {
  std::snprintf(asked.data(), asked.size(), "velt-host-check: the host crashed in %s%s%s\n", what.c_str(),
                subject.empty() ? "" : ": ", subject.c_str());
}

[[noreturn]] void tellOfCrash(int) {
  const auto length = static_cast<std::size_t>(std::find(asked.begin(), asked.end(), '\0') - asked.begin());
  [[maybe_unused]] const auto written = write(STDERR_FILENO, asked.data(), length);
  _exit(foundSomething);
}

void watchForCrashes() {
  remember("its loading", "");
  for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT})
    std::signal(signal, &tellOfCrash);
}

// --- the check --------------------------------------------------------------------------------------------------------

struct Options {
  std::string host;
  std::string document;
  std::vector<long> oldIds;
  std::size_t atMost = 1000;
  bool asJson = false;
  bool isVerbose = false;
};

void* load(const std::string& path, int flags) {
  void* const library = dlopen(path.c_str(), flags);
  if (library != nullptr) return library;
  std::string reason = dlerror();
  if (reason.find("undefined symbol") != std::string::npos)
    reason += "; the host does not define it, or keeps it hidden (-fvisibility)";
  throw std::runtime_error(reason);
}

// A name without a slash would be looked for among the libraries of the system.
std::string asPath(const std::string& name) {
  return name.find('/') == std::string::npos ? "./" + name : name;
}

void openDocument(void* host, Options& options) {
  auto* const open = reinterpret_cast<decltype(&veltOpenForCheck)>(dlsym(host, "veltOpenForCheck"));
  if (open == nullptr)
    throw std::runtime_error(
        options.host + ": it has no veltOpenForCheck, so it opens no document; give the ids of entities");
  std::vector<long> ids(options.atMost);
  std::string message(1000, '\0');
  const long count = open(options.document.c_str(), ids.data(), ids.size(), message.data(), message.size());
  if (count < 0) throw std::runtime_error(options.document + ": " + message.c_str());
  ids.resize(std::min(ids.size(), static_cast<std::size_t>(count)));
  if (static_cast<std::size_t>(count) > ids.size())
    std::cerr << options.document << ": the first " << ids.size() << " of " << count
              << " entities are checked (--at-most)\n";
  options.oldIds.insert(options.oldIds.end(), ids.begin(), ids.end());
}

Report check(const Options& options) {
  // Only now: its symbols are those of the host, which has to be there first.
  void* const library = load(checkLibrary, RTLD_NOW);
  auto* const checkHost = reinterpret_cast<decltype(&veltCheckHost)>(dlsym(library, "veltCheckHost"));
  if (checkHost == nullptr) throw std::runtime_error(dlerror());
  Report report;
  report.onTry = [&](const std::string& what, const std::string& subject) {
    remember(what, subject);
    if (options.isVerbose) std::cerr << what << (subject.empty() ? "" : ": ") << subject << std::endl;
  };
  checkHost(options.oldIds.data(), options.oldIds.size(), &report);
  return report;
}

void list() {
  for (const velt::hostcheck::Check& check : velt::hostcheck::checks)
    std::cout << check.name << "\n  suffers  " << check.suffers << '\n';
}

void printJson(const Report& report) {
  nlohmann::json findings = nlohmann::json::array();
  for (const auto& finding : report.findings) {
    findings.push_back({{"check", finding.check},
                        {"subject", finding.subject},
                        {"expected", finding.expected},
                        {"came", finding.came},
                        {"suffers", finding.suffers}});
  }
  nlohmann::json notTried = nlohmann::json::array();
  for (const auto& one : report.notTried)
    notTried.push_back({{"check", one.check}, {"reason", one.reason}});
  std::cout << nlohmann::json{{"findings", findings},
                              {"further", report.further},
                              {"tried", report.tried},
                              {"notTried", notTried}}
                   .dump(2, ' ', false, nlohmann::json::error_handler_t::replace)
            << '\n';
}

// One line for each reason, in the order in which the reasons come.
void printNotTried(std::vector<velt::hostcheck::NotTried> left) {
  while (!left.empty()) {
    const std::string reason = left.front().reason;
    const auto others = std::stable_partition(left.begin(), left.end(),
                                              [&](const auto& one) { return one.reason == reason; });
    const auto count = others - left.begin();
    std::cout << count << (count == 1 ? " check" : " checks") << " not tried, because " << reason << ":";
    for (auto one = left.begin(); one != others; ++one)
      std::cout << (one == left.begin() ? " " : ", ") << one->check;
    std::cout << '\n';
    left.erase(left.begin(), others);
  }
}

void print(const Report& report) {
  for (const auto& finding : report.findings) {
    std::cout << finding.check << (finding.subject.empty() ? "" : ": ") << finding.subject << "\n  expected  "
              << finding.expected << "\n  came      " << finding.came << "\n  suffers   " << finding.suffers
              << "\n\n";
  }
  for (const auto& [check, count] : report.further)
    std::cout << check << ": " << count << " more like these\n\n";
  printNotTried(report.notTried);
  std::size_t count = report.findings.size();
  for (const auto& [check, more] : report.further)
    count += more;
  std::cout << report.tried.size() << " checks, " << count << (count == 1 ? " finding\n" : " findings\n");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  Options options;
  CLI::App app(
      "Checks whether a host keeps what the property layer relies on. Nothing is written to the entities.");
  bool isToList = false;
  app.add_option("--host", options.host, "shared object with the host's symbols")->type_name("FILE.so");
  app.add_option("--document", options.document, "document that the host opens; all its entities are checked")
      ->type_name("FILE");
  app.add_option("ids", options.oldIds, "ids of entities to check, as a palette hands them over");
  app.add_option("--at-most", options.atMost, "so many entities of the document at most")
      ->capture_default_str();
  app.add_flag("--json", options.asJson, "print one JSON object");
  app.add_flag("--verbose", options.isVerbose, "tell on standard error what is tried, before it is");
  app.add_flag("--list", isToList, "list the checks, and what users see when one fails; checks nothing");
  app.set_version_flag("--version", VELT_VERSION);
  app.footer(
      "Exit codes: 0 nothing found, 1 something found, or the check could not be made, 2 wrong usage.");
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? passed : wrongUsage;
  }
  if (isToList) {
    list();
    return passed;
  }
  if (options.host.empty()) {
    std::cerr << "velt-host-check: which host? Give its shared object with --host\n";
    return wrongUsage;
  }
  if (options.oldIds.empty() && options.document.empty()) {
    std::cerr << "velt-host-check: which entities? Give ids, or --document\n";
    return wrongUsage;
  }
  watchForCrashes();
  try {
    void* const host = load(asPath(options.host), RTLD_NOW | RTLD_GLOBAL);
    if (!options.document.empty()) openDocument(host, options);
    const Report report = check(options);
    options.asJson ? printJson(report) : print(report);
    return report.findings.empty() ? passed : foundSomething;
  } catch (const std::exception& error) {
    std::cerr << "velt-host-check: " << error.what() << '\n';
    return foundSomething;
  }
}
