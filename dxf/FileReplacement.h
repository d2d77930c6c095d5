#pragma once

// A file that is written whole or not at all.
//
// What is written goes into a file of its own in the same folder; commit() brings it to the disk and then, in one step,
// to the place of the old one. So whatever happens at whatever moment, the old or the new file stands there whole: an
// exception, a full disk, the end of the process or of the machine.
//
// A link stays a link: the file that it names is replaced. The new file has the old one's permissions, and its owner
// where the process may give it away.
// Failure: std::system_error, its what() "file: cannot be written: reason". The old file is then as it was, and nothing
// is left beside it; only a process that is killed leaves its unfinished file, whose name ends in ".unfinished".

#include <filesystem>
#include <memory>
#include <ostream>

namespace velt::dxf {

class Document;

class FileReplacement {
 public:
  explicit FileReplacement(const std::filesystem::path& file);
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  // Without a commit the old file stays.
  ~FileReplacement();

  // Takes what is to be written. A write that fails shows in its state, and again when committing.
  [[nodiscard]] std::ostream& stream();
  // Once, at the end.
  void commit();

 private:
  class Unfinished;
  std::unique_ptr<Unfinished> unfinished_;
};

// Replaces the file by the document as it is now, or makes it.
void save(const Document& document, const std::filesystem::path& file);

}  // namespace velt::dxf
