#pragma once

// Where a file stands: the folder, held open, and its name there.
//
// Everything is done by way of the open folder, so that it happens in one place although somebody moves folders or
// links meanwhile, and however long the path is.
// Failure: std::system_error, its what() "file: cannot be written: reason", with the file as it was named.

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "dxf/Descriptor.h"

namespace velt::dxf {

class FilePlace {
 public:
  // Follows links to the place of the file itself, which need not be there yet. Refuses links that run in circles.
  explicit FilePlace(const std::filesystem::path& file);

  // For functions that take an open folder.
  [[nodiscard]] int folder() const noexcept { return folder_.get(); }
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  // Nothing when no file is there.
  [[nodiscard]] std::optional<struct stat> status() const;
  // Whether the name stands for the open file.
  [[nodiscard]] bool names(int descriptor) const;

  // Opens the file for reading and writing and locks it against others that do the same; none when there is no file.
  // Waits for others that long. Refuses what is not a regular file, and one that may not be written.
  // The lock ends when the descriptor is closed, and with the process. Without effect on file systems without locks.
  [[nodiscard]] Descriptor openLocked(std::chrono::milliseconds patience) const;

  // Brings the names in the folder to the disk. Not every file system can do that, so failure is not told.
  void flush() const;

  // `what`: what was done, when the system's reason alone does not tell.
  [[noreturn]] void fail(int error, std::string_view what = {}) const;

 private:
  void follow(const std::filesystem::path& link);

  std::filesystem::path file_;
  Descriptor folder_;
  std::string name_;
};

}  // namespace velt::dxf
