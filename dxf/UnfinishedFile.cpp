#include "dxf/UnfinishedFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <random>
#include <string_view>
#include <vector>

#include "dxf/FileLock.h"

namespace velt::dxf {
namespace {

constexpr std::string_view suffix = ".unfinished";
constexpr std::string_view randomCharacters =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t randomLength = 6;

// The part that all unfinished files of one place have in common. A name of the longest length leaves no room for what
// follows it, and how long that is, file systems do not agree; short enough is right everywhere.
std::string stemOf(const FilePlace& place) {
  constexpr std::size_t longest = 100;
  std::string stem = place.name();
  if (stem.size() > longest) {
    std::size_t length = longest;
    // Not in the middle of a character, which some file systems refuse.
    const auto continues = [&](std::size_t at) {
      return (static_cast<unsigned char>(stem[at]) & 0xC0) == 0x80;
    };
    while (length > longest - 3 && continues(length))
      --length;
    stem.resize(length);
  }
  return stem + ".";
}

std::string randomName(const FilePlace& place) {
  std::random_device device;
  std::uniform_int_distribution<std::size_t> any(0, randomCharacters.size() - 1);
  std::string name = stemOf(place);
  for (std::size_t i = 0; i < randomLength; ++i)
    name += randomCharacters[any(device)];
  return name.append(suffix);
}

bool isUnfinished(std::string_view name, std::string_view stem) {
  if (!name.starts_with(stem) || !name.ends_with(suffix)) return false;
  if (name.size() != stem.size() + randomLength + suffix.size()) return false;
  return name.substr(stem.size(), randomLength).find_first_not_of(randomCharacters) == std::string_view::npos;
}

std::vector<std::string> unfinishedFilesOf(const FilePlace& place) {
  std::vector<std::string> names;
  Descriptor opened(::openat(place.folder(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  DIR* const folder = opened ? ::fdopendir(opened.get()) : nullptr;
  if (folder == nullptr) return names;
  [[maybe_unused]] const int ownedByFolder = opened.release();
  const std::string stem = stemOf(place);
  while (const dirent* const entry = ::readdir(folder)) {
    if (isUnfinished(entry->d_name, stem)) names.emplace_back(entry->d_name);
  }
  ::closedir(folder);
  return names;
}

bool names(const FilePlace& place, const std::string& name, int descriptor) {
  struct stat there {
  }, open{};
  return ::fstatat(place.folder(), name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0
         && ::fstat(descriptor, &open) == 0 && there.st_dev == open.st_dev && there.st_ino == open.st_ino;
}

// Those that are being written now. Held while one comes into being, takes its place or goes.
struct BeingWritten {
  std::mutex mutex;
  std::vector<const UnfinishedFile*> files;
};

BeingWritten& beingWritten() {
  // Never destroyed: a process may end while a thread of it writes.
  static BeingWritten& all = *new BeingWritten;
  return all;
}

}  // namespace

void UnfinishedFile::removeAllForGood() noexcept {
  BeingWritten& all = beingWritten();
  all.mutex.lock();
  for (const UnfinishedFile* const file : all.files) {
    if (!file->isInPlace_) ::unlinkat(file->place_.folder(), file->name_.c_str(), 0);
  }
}

void UnfinishedFile::clearLeftovers(const FilePlace& place) {
  for (const std::string& name : unfinishedFilesOf(place)) {
    // Whatever else bears such a name must not be waited for, followed or removed.
    const Descriptor left(
        ::openat(place.folder(), name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!left || ::fstat(left.get(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
    // Where there are no locks nobody can say that its writer is dead.
    if (tryLock(left.get()) != Locked::ByUs) continue;
    if (names(place, name, left.get())) ::unlinkat(place.folder(), name.c_str(), 0);
  }
}

UnfinishedFile::UnfinishedFile(const FilePlace& place, Access access) : place_(place) {
  while (!create(access)) {}
}

// False when the name is taken, or when another process took the file for left behind before it was locked.
bool UnfinishedFile::create(Access access) {
  BeingWritten& all = beingWritten();
  const std::lock_guard lock(all.mutex);
  all.files.reserve(all.files.size() + 1);
  name_ = randomName(place_);
  const mode_t mode = access == Access::OwnerOnly ? 0600 : 0666;
  descriptor_ = Descriptor(
      ::openat(place_.folder(), name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
  if (!descriptor_ && errno == EEXIST) return false;
  if (!descriptor_) place_.fail(errno);
  if (tryLock(descriptor_.get()) == Locked::ByAnother) return false;
  if (!names(place_, name_, descriptor_.get())) return false;
  all.files.push_back(this);
  return true;
}

UnfinishedFile::~UnfinishedFile() {
  BeingWritten& all = beingWritten();
  const std::lock_guard lock(all.mutex);
  std::erase(all.files, this);
  if (!isInPlace_) ::unlinkat(place_.folder(), name_.c_str(), 0);
}

void UnfinishedFile::replace() {
  const std::lock_guard lock(beingWritten().mutex);
  moveIntoPlace();
}

void UnfinishedFile::moveIntoPlace() {
  if (::renameat(place_.folder(), name_.c_str(), place_.folder(), place_.name().c_str()) != 0)
    place_.fail(errno);
  isInPlace_ = true;
}

void UnfinishedFile::takeFreePlace() {
  const std::lock_guard lock(beingWritten().mutex);
  const int folder = place_.folder();
  const char* const target = place_.name().c_str();
  isInPlace_ = ::renameat2(folder, name_.c_str(), folder, target, RENAME_NOREPLACE) == 0;
  if (isInPlace_) return;
  if (errno == EEXIST) place_.fail(errno);
  // Not every file system can do that. A second name for the file, and no more the first one, comes to the same.
  if (::linkat(folder, name_.c_str(), folder, target, 0) == 0)
    return;  // the first name goes with this object
  if (errno == EEXIST) place_.fail(errno);
  // Nor are there always second names.
  if (place_.status()) place_.fail(EEXIST);
  moveIntoPlace();
}

}  // namespace velt::dxf
