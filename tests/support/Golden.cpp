#include "tests/support/Golden.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <system_error>
#include "tests/support/Places.h"

namespace velt::tests {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool leave(const fs::path& path, const std::string& text) {
  std::error_code ignored;
  fs::create_directories(path.parent_path(), ignored);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << text;
  return static_cast<bool>(file.flush());
}

std::string firstDifference(const std::string& accepted, const std::string& produced) {
  std::istringstream left(accepted);
  std::istringstream right(produced);
  for (int line = 1;; ++line) {
    std::string a;
    std::string b;
    const bool hasA = static_cast<bool>(std::getline(left, a));
    const bool hasB = static_cast<bool>(std::getline(right, b));
    if (!hasA && !hasB) return "only the last line's end differs";
    if (hasA != hasB || a != b) {
      return "line " + std::to_string(line) + "\n  accepted: " + (hasA ? a : "(the end)")
             + "\n  produced: " + (hasB ? b : "(the end)");
    }
  }
}

}  // namespace

GoldenPlaces goldenPlaces() {
  return {sourceFolder() / "tests", buildFolder() / "golden"};
}

::testing::AssertionResult matchesGolden(const fs::path& path, const std::string& text,
                                         const GoldenPlaces& places) {
  const std::optional<std::string> accepted = contentOf(places.accepted / path);
  const fs::path produced = places.produced / path;
  if (accepted == text) {
    std::error_code ignored;
    fs::remove(produced, ignored);
    return ::testing::AssertionSuccess();
  }
  ::testing::AssertionResult failure = ::testing::AssertionFailure();
  failure << "tests/" << path.generic_string() << ": "
          << (accepted ? firstDifference(*accepted, text) : std::string("there is no such golden file yet"));
  if (leave(produced, text)) {
    failure << "\nwhat came out: " << produced.string() << "; `make accept-golden` takes it over";
  } else {
    failure << "\nwhat came out could not be written to " << produced.string();
  }
  return failure;
}

}  // namespace velt::tests
