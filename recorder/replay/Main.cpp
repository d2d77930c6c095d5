// velt-replay: runs the layer on a recording, without the host and the drawing that were recorded.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "recorder/replay/Replay.h"
#include "recorder/replay/TextReplacement.h"

namespace {

using namespace velt::recorder;

constexpr int asRecorded = 0;
constexpr int departs = 1;
constexpr int cannotReplay = 2;

Replay* current = nullptr;

struct Options {
  std::string file;
  std::string replaced;
  bool asJson = false;
  bool isVerbose = false;
};

// --- telling --------------------------------------------------------------------------------------------------------

void tell(const Outcome& outcome, const Options& options) {
  if (options.asJson) {
    json departures = json::array();
    for (const Departure& one : outcome.departures)
      departures.push_back(
          {{"line", one.line}, {"operation", one.operation}, {"recorded", one.recorded}, {"now", one.now}});
    std::cout << json{{"operations", outcome.operations},
                      {"calls", outcome.calls},
                      {"departures", departures}}
                     .dump(2, ' ', false, json::error_handler_t::replace)
              << '\n';
    return;
  }
  for (const Departure& one : outcome.departures)
    std::cout << "line " << one.line << ", in " << one.operation << ":\n  recorded  " << one.recorded
              << "\n  now       " << one.now << '\n';
  std::cout << outcome.operations << " operations, " << outcome.calls << " calls: ";
  if (outcome.departures.empty())
    std::cout << "all as recorded\n";
  else
    std::cout << outcome.departures.size()
              << (outcome.departures.size() == 1 ? " departure\n" : " departures\n");
}

// There is no way on from inside of the layer, which waits for an answer: the process ends at once.
[[noreturn]] void endNow(int code) {
  std::cout.flush();
  _exit(code);
}

// --- a layer that crashes ------------------------------------------------------------------------------------------------

[[noreturn]] void tellOfCrash(int) {
  std::array<char, 100> text{};
  const int length = std::snprintf(text.data(), text.size(),
                                   "velt-replay: the layer crashed after line %zu\n", current->line());
  [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), static_cast<std::size_t>(length));
  _exit(departs);
}

// --- what it does -----------------------------------------------------------------------------------------------------

std::ifstream opened(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw DamagedRecording("it cannot be opened");
  return file;
}

int replay(const Options& options) {
  std::ifstream file = opened(options.file);
  Replay replay(file, {[&](const Outcome& outcome) {
                         tell(outcome, options);
                         endNow(departs);
                       },
                       [&](const std::string& why) {
                         std::cerr << "velt-replay: " << options.file << ": " << why << '\n';
                         endNow(cannotReplay);
                       }});
  if (options.isVerbose) {
    replay.onOperation = [](std::size_t line, const std::string& operation) {
      std::cerr << "line " << line << ": " << operation << '\n';
    };
  }
  current = &replay;
  for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT})
    std::signal(signal, &tellOfCrash);
  const Outcome outcome = replay.run();
  tell(outcome, options);
  return outcome.departures.empty() ? asRecorded : departs;
}

// The layer itself tells which words it goes by.
bool isKnownToTheLayer(const std::wstring& word) {
  constexpr std::uint32_t noSpecialName = 0xFFFFFFFF;
  return _GetSpecialPropertyIndex(word.c_str()) != noSpecialName
         || NameToUserdefinedType(word.c_str()) != PropertyKind::unknownType;
}

template <class Work>
void forEachLine(const std::string& path, Work work) {
  std::ifstream file = opened(path);
  std::string text;
  for (std::size_t number = 1; std::getline(file, text); ++number) {
    try {
      json line = json::parse(text);
      work(number, line);
    } catch (const json::exception& error) {
      throw DamagedRecording("line " + std::to_string(number) + ": " + error.what());
    }
  }
}

int replaceTexts(const Options& options) {
  std::random_device random;
  TextReplacement replacement((std::uint64_t{random()} << 32) ^ random(), &isKnownToTheLayer);
  forEachLine(options.file, [&](std::size_t number, const json& line) {
    if (number == 1 && line.value("veltRecording", json()) != formatVersion)
      throw DamagedRecording("it is not a recording of format " + std::to_string(formatVersion));
    replacement.learn(line);
  });
  if (std::ifstream(options.replaced)) {
    std::cerr << "velt-replay: " << options.replaced << ": there is such a file already\n";
    return cannotReplay;
  }
  // All of it first: nothing is written when a line is damaged.
  std::string text;
  forEachLine(options.file, [&](std::size_t, json& line) {
    replacement.replaceIn(line);
    text += line.dump() + '\n';
  });
  std::ofstream out(options.replaced, std::ios::binary);
  out << text;
  out.close();
  if (out) return asRecorded;
  std::cerr << "velt-replay: " << options.replaced << ": it cannot be written\n";
  return cannotReplay;
}

}  // namespace

velt::recorder::Session& velt::recorder::session() {
  return *current;
}

int main(int argumentCount, char** arguments) {
  Options options;
  CLI::App app(
      "Runs the layer on a recording of libVeltRecorder.so, and tells where it does something else.");
  app.add_option("recording", options.file, "what was recorded")->type_name("FILE")->required();
  app.add_option("--replace-texts", options.replaced,
                 "replay nothing; write the recording to this new file, each text replaced by another of the "
                 "same length")
      ->type_name("FILE");
  app.add_flag("--json", options.asJson, "print one JSON object");
  app.add_flag("--verbose", options.isVerbose, "tell on standard error of each operation, before it is run");
  app.set_version_flag("--version", VELT_VERSION);
  app.footer(
      "Exit codes: 0 all as recorded, 1 the layer departs from the recording, 2 it cannot be replayed, or "
      "wrong usage.");
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? asRecorded : cannotReplay;
  }
  try {
    return options.replaced.empty() ? replay(options) : replaceTexts(options);
  } catch (const std::exception& error) {
    std::cerr << "velt-replay: " << options.file << ": " << error.what() << '\n';
    return cannotReplay;
  }
}
