#pragma once

// A file that is written whole or not at all, and over nobody else's change.
//
// What is written goes into a file of its own in the same folder; commit() brings it to the disk and then, in one step,
// to the place of the old one. So whatever happens at whatever moment, the old or the new file stands there whole: an
// exception, a full disk, the end of the process or of the machine.
//
// A link stays a link: the file that it names is replaced. The new file has the old one's owner, group, permissions,
// access control lists and extended attributes (see FileAttributes.h for what cannot be kept). A new file has the
// permissions of any new file in its folder. Other names of the same file (hard links) keep the old content.
//
// Others: the old file is locked from the beginning to the end, so that two of these do not replace it at once, and what
// it holds is compared with what it is expected to hold, last just before it is replaced. A program that does not lock
// can slip in between the two only.
//
// Failure: std::system_error, its what() "file: cannot be written: reason". The old file is then as it was, and nothing
// is left beside it. Only a process that is killed leaves its unfinished file, whose name ends in ".unfinished"; the next
// replacement of the same file removes it.

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include "dxf/FileState.h"
#include "dxf/TagReader.h"

namespace velt::dxf {

class Document;

// Somebody else has changed, replaced or removed the file. Nothing was done to it.
class FileChanged : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Told, before the file is replaced, what the new one will lack and who keeps the old one: sentences without a full
// stop, which begin with the file's name. What it throws ends the replacement.
using Tell = std::function<void(std::string_view)>;

// For how long a replacement waits for others that replace the same file.
inline constexpr std::chrono::milliseconds usualPatience{30'000};

struct ReplacementOptions {
  // What must stand there, else FileChanged is thrown. Null: anything. Must outlive the replacement.
  const FileState* expected = nullptr;
  // The file must not be there yet.
  bool onlyNew = false;
  Tell tell = nullptr;
  std::chrono::milliseconds patience = usualPatience;
};

class FileReplacement {
 public:
  explicit FileReplacement(const std::filesystem::path& file, ReplacementOptions options = {});
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  // Without a commit the old file stays.
  ~FileReplacement();

  // Takes what is to be written. A write that fails shows in its state, and again when committing.
  [[nodiscard]] std::ostream& stream();
  // Once, at the end. Gives what stands there now.
  FileState commit();

 private:
  class Unfinished;
  std::unique_ptr<Unfinished> unfinished_;
};

struct SaveOptions {
  // Also when somebody else has changed the file since the document was read from it or saved to it.
  bool overwriteChanges = false;
  // The file must not be there yet.
  bool onlyNew = false;
  Tell tell = nullptr;
  std::chrono::milliseconds patience = usualPatience;
  // Called while the new file is written. What it throws ends the replacement.
  Progress progress = nullptr;
};

// Replaces the file by the document as it is now, or makes it, and remembers what it holds. Throws FileChanged rather
// than replace a file that the document was read from or saved to, and that is not what it was then. A file that the
// document never had to do with is replaced whatever it holds.
void save(Document& document, const std::filesystem::path& file, const SaveOptions& options = {});

}  // namespace velt::dxf
