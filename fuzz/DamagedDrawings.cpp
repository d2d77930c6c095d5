// Sessions (see Session.h) on the project's own drawings, each damaged in a few places that a seed decides:
//
//   damaged_drawings [COUNT [SEED [FIRST [FILE]]]]
//
// runs COUNT of them, of which the first has the number FIRST. The number of each is printed before it begins, so that a
// crash tells which it was, and at the end how many there were and which one was slowest by its size. Exits with 1 when
// none of them was a drawing any more. Each drawing is written to the FILE before its session, after a line that tells the
// put as an input of the fuzzer does.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Session.h"
#include "samples/FloorPlan.h"
#include "samples/Gallery.h"

namespace {

// The same numbers on every machine, which the distributions of the standard library do not promise.
class Chance {
 public:
  explicit Chance(std::uint64_t seed) : engine_(seed) {}
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }
  template <class List>
  const auto& oneOf(const List& list) {
    return list[below(std::size(list))];
  }

 private:
  std::mt19937_64 engine_;
};

constexpr std::array<std::string_view, 24> values = {"0",
                                                     "1",
                                                     "-1",
                                                     "0.5",
                                                     "7",
                                                     "1e308",
                                                     "-1e-300",
                                                     "9999999999",
                                                     "nan",
                                                     "inf",
                                                     "yes",
                                                     "no",
                                                     "Red",
                                                     "ByLayer",
                                                     "0.35",
                                                     "Walls",
                                                     "0",
                                                     "Standard",
                                                     "1,2,3",
                                                     "",
                                                     " ",
                                                     "\\U+00E9",
                                                     "a longer text with blanks",
                                                     "\xc3\xa9\xf0\x9f\x93\x90"};
constexpr std::array<std::string_view, 20> codes = {"0",   "5",  "8",    "10",   "20",   "40",  "41",
                                                    "62",  "70", "71",   "90",   "100",  "102", "330",
                                                    "999", "-1", "1000", "1001", "1070", "abc"};

// A group code and its value, each with its line end.
struct Pair {
  std::string code;
  std::string value;
};

std::string takeLine(std::string_view& text) {
  const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
  std::string line(text.substr(0, length));
  text.remove_prefix(length);
  return line;
}

std::vector<Pair> pairsOf(std::string_view text) {
  std::vector<Pair> found;
  while (!text.empty()) {
    Pair& pair = found.emplace_back();
    pair.code = takeLine(text);
    if (!text.empty()) pair.value = takeLine(text);
  }
  return found;
}

template <class List>
std::string lineFrom(const List& list, Chance& chance) {
  return std::string(chance.oneOf(list)) + '\n';
}

// Mostly of whole pairs: of a drawing in which a line is missing nothing can be read from there on.
void damage(std::vector<Pair>& drawing, Chance& chance) {
  const std::size_t at = chance.below(drawing.size());
  const std::size_t other = chance.below(drawing.size());
  const std::size_t some = std::min(chance.below(40) + 1, drawing.size() - at);
  const auto place = drawing.begin() + static_cast<std::ptrdiff_t>(at);
  const auto end = place + static_cast<std::ptrdiff_t>(some);
  switch (chance.below(12)) {
    case 0:
      drawing.erase(place);
      break;
    case 1:
      drawing.erase(place, end);
      break;
    case 2:
      drawing.insert(place, Pair(drawing[other]));
      break;
    case 3: {
      const std::vector<Pair> again(place, end);
      drawing.insert(drawing.begin() + static_cast<std::ptrdiff_t>(other), again.begin(), again.end());
      break;
    }
    case 4:
      std::swap(drawing[at], drawing[other]);
      break;
    case 5:
      std::swap(drawing[at].value, drawing[other].value);
      break;
    case 6:
      drawing[at].code = lineFrom(codes, chance);
      break;
    case 7:
      drawing.insert(place, {lineFrom(codes, chance), lineFrom(values, chance)});
      break;
    case 8: {  // one byte
      std::string& line = drawing[at].value.empty() ? drawing[at].code : drawing[at].value;
      line[chance.below(line.size())] = static_cast<char>(chance.below(256));
      break;
    }
    case 9:  // a line, or the end: seldom, because little can be read after it
      if (chance.below(8) == 0) drawing[at].code.clear();
      break;
    case 10:
      if (chance.below(8) == 0) drawing.erase(place, drawing.end());
      break;
    default:
      drawing[at].value = lineFrom(values, chance);
      break;
  }
}

fuzz::SessionInput inputOf(const std::vector<std::string>& drawings, std::uint64_t seed) {
  Chance chance(seed);
  std::vector<Pair> drawing = pairsOf(chance.oneOf(drawings));
  for (std::size_t left = 1 + chance.below(8); left > 0 && drawing.size() > 8; --left)
    damage(drawing, chance);
  fuzz::SessionInput input;
  // Often one entity, and sometimes all.
  input.entity = chance.below(8) == 0 ? 0 : 1 + chance.below(1'000);
  input.row = chance.below(1'000);
  input.value = chance.oneOf(values);
  for (const Pair& pair : drawing)
    input.drawing += pair.code + pair.value;
  return input;
}

std::uint64_t numberOf(int argc, char** argv, int index, std::uint64_t otherwise) {
  return index < argc ? std::strtoull(argv[index], nullptr, 10) : otherwise;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr double bytesPerMegabyte = 1e6;
  constexpr double fewestBytes = 1e4;
  const std::uint64_t count = numberOf(argc, argv, 1, 100);
  const std::uint64_t seed = numberOf(argc, argv, 2, 1);
  const std::uint64_t first = numberOf(argc, argv, 3, 0);
  const char* const file = argc > 4 ? argv[4] : nullptr;
  const std::vector<std::string> drawings = {velt::samples::galleryDrawing(),
                                             velt::samples::sampleFloorPlan()};

  std::uint64_t sessions = 0;
  std::uint64_t slowest = first;
  double slowestRate = 0;
  for (std::uint64_t number = first; number < first + count; ++number) {
    std::printf("%llu\r", static_cast<unsigned long long>(number));
    std::fflush(stdout);
    const fuzz::SessionInput input = inputOf(drawings, seed * 1'000'003 + number);
    if (file != nullptr)
      std::ofstream(file, std::ios::binary) << input.entity << ' ' << input.row << ' ' << input.value << '\n'
                                            << input.drawing;
    const auto begin = std::chrono::steady_clock::now();
    if (fuzz::runSession(input)) ++sessions;
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    // What a session costs whatever the drawing would be much for each byte of a tiny one.
    const double bytes = std::max(static_cast<double>(input.drawing.size()), fewestBytes);
    const double rate = taken.count() / (bytes / bytesPerMegabyte);
    if (rate > slowestRate) {
      slowestRate = rate;
      slowest = number;
    }
  }
  std::printf(
      "%llu damaged drawings, of which %llu could be loaded; the slowest, %llu, took %.1f s per megabyte\n",
      static_cast<unsigned long long>(count), static_cast<unsigned long long>(sessions),
      static_cast<unsigned long long>(slowest), slowestRate);
  return sessions == 0 ? 1 : 0;
}
