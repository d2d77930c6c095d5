#pragma once

// What a file was when a document was read from it or saved to it, so that nobody else's change is written over.
//
// Whether a file still is what it was, its state tells as far as it can: device and inode, size, and the times of its
// last changes. It cannot where the times are so young that a further change could bear the same ones, and where they
// are others although the content may be the same (somebody copied the file back, or changed its permissions). Then the
// content decides, of which a digest is kept.
//
// Threads: as any value.

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

struct stat;

namespace velt::dxf {

// Tells contents apart that came about by accident: 64 bits, for this process only.
class ContentDigest {
 public:
  // In portions of any size.
  void add(std::string_view bytes);
  [[nodiscard]] std::uint64_t value() const;

 private:
  void takeWord(const char* bytes);

  std::uint64_t state_ = 0;
  std::uint64_t length_ = 0;
  // The bytes that do not fill a word yet.
  std::array<char, sizeof(std::uint64_t)> begun_{};
};

class FileState {
 public:
  // Of the file whose status was `before` when its content was begun to be read or had been written, and `after` at the
  // end. `content` is what was read or written.
  FileState(const std::filesystem::path& file, const struct stat& before, const struct stat& after,
            const ContentDigest& content);

  // As it was named, absolute.
  [[nodiscard]] const std::filesystem::path& file() const { return named_; }
  // Whether the path names this file: as it was named then, or behind links now.
  [[nodiscard]] bool isOf(const std::filesystem::path& file) const;
  // Whether the open file holds what this one held. Throws std::system_error when it cannot be read.
  [[nodiscard]] bool isHeldBy(int descriptor) const;

 private:
  struct Identity {
    explicit Identity(const struct stat& status);
    friend bool operator==(const Identity&, const Identity&) = default;

    std::uint64_t device;
    std::uint64_t inode;
    std::int64_t size;
    // Of content and of everything else, in nanoseconds.
    std::int64_t modified;
    std::int64_t changed;
  };

  std::filesystem::path named_;
  // Behind all links.
  std::filesystem::path real_;
  Identity identity_;
  // Whether every later change shows in the times.
  bool isSettled_;
  std::uint64_t digest_;
};

// All files that hold, or held, what a document was at some moment.
class KnownFiles {
 public:
  // Null for a file that this document has nothing to do with. Valid until the next call of remember().
  [[nodiscard]] const FileState* find(const std::filesystem::path& file) const;
  // Takes the place of what was known of the same file.
  void remember(FileState state);

 private:
  std::vector<FileState> states_;
};

}  // namespace velt::dxf
