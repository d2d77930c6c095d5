#pragma once

// Small drawings for the tests of this folder, and where the large ones are.

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace velt::dxf::testing {

// Each pair as "code|value", in the padding and line ends that most writers use.
inline std::string pairs(std::initializer_list<std::string_view> list, std::string_view lineEnd = "\n") {
  std::string bytes;
  for (const std::string_view pair : list) {
    const auto bar = pair.find('|');
    std::string code(pair.substr(0, bar));
    if (code.size() < 3) code.insert(0, 3 - code.size(), ' ');
    bytes.append(code).append(lineEnd).append(pair.substr(bar + 1)).append(lineEnd);
  }
  return bytes;
}

inline std::string headerOf(std::string_view version, std::string_view codePage) {
  return "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\n" + std::string(version)
         + "\n  9\n$DWGCODEPAGE\n  3\n" + std::string(codePage) + "\n  0\nENDSEC\n";
}

// An ENTITIES section with these pairs, and EOF.
inline std::string entities(std::initializer_list<std::string_view> list) {
  return pairs({"0|SECTION", "2|ENTITIES"}) + pairs(list) + pairs({"0|ENDSEC", "0|EOF"});
}

inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A file that is removed at the end of the test. Its name is unique, because tests may run at the same time.
class TemporaryFile {
 public:
  TemporaryFile(std::string_view name, std::string_view content)
      : path_(std::filesystem::temp_directory_path()
              / ("velt-dxf-" + std::to_string(getpid()) + "-" + std::string(name))) {
    std::ofstream(path_, std::ios::binary) << content;
  }
  ~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// The drawings in the folder that VELT_DRAWINGS names; empty when it is unset.
inline std::vector<std::filesystem::path> realDrawings() {
  std::vector<std::filesystem::path> drawings;
  if (const char* folder = std::getenv("VELT_DRAWINGS"); folder != nullptr && *folder != '\0') {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".dxf") drawings.push_back(entry.path());
    }
  }
  return drawings;
}

}  // namespace velt::dxf::testing
