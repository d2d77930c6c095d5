#pragma once

// Files of tests: read whole, and written where nobody else writes.

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace velt::tests {

// Empty when the file cannot be read.
inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A folder of its own for each test, removed at its end; tests may run at the same time.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velt-test-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::string path(const std::string& name) const { return (path_ / name).string(); }
  // Gives the path of the file.
  std::string write(const std::string& name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace velt::tests
