#pragma once

// A file that is being written beside the one whose place it is to take.
//
// Its name is that of the other one, or the beginning of a long name, followed by six random characters and
// ".unfinished". Its writer holds it locked, so that the ones that killed writers left behind can be told from it.
// Failure: as FilePlace.

#include <string>

#include "dxf/Descriptor.h"
#include "dxf/FilePlace.h"

namespace velt::dxf {

class UnfinishedFile {
 public:
  // Who may read the file while it is written.
  enum class Access {
    OwnerOnly,
    // Whoever may read any new file of this process in this folder.
    AsNewFiles,
  };

  // Removes what killed writers of the same file left behind. What cannot be removed stays.
  static void clearLeftovers(const FilePlace& place);

  // For a process that is about to end at once, on any thread: removes all that are being written now. From then on none
  // can be made, take its place or go: whoever tries waits for the end of the process. One that was taking its place has
  // taken it.
  static void removeAllForGood() noexcept;

  // The place must outlive it.
  UnfinishedFile(const FilePlace& place, Access access);
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  // Removes it unless it has taken its place.
  ~UnfinishedFile();

  // Stays open and locked afterwards, too.
  [[nodiscard]] int descriptor() const noexcept { return descriptor_.get(); }
  // Takes the place of the other file in one step, or its own when there is none.
  void replace();
  // Only when no file is there; fails with EEXIST else.
  void takeFreePlace();

 private:
  bool create(Access access);
  void moveIntoPlace();

  const FilePlace& place_;
  std::string name_;
  Descriptor descriptor_;
  bool isInPlace_ = false;
};

}  // namespace velt::dxf
