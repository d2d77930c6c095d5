#include "dxf/FilePlace.h"

#include <fcntl.h>
#include <linux/limits.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "dxf/FileLock.h"

namespace velt::dxf {

FilePlace::FilePlace(const std::filesystem::path& file) : file_(file), folder_(AT_FDCWD) {
  // The system's own way to the file comes first: it knows of links that this process must not follow.
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 && errno != ENOENT) fail(errno);

  constexpr int mostLinks = 40;  // as many as the system follows
  follow(file);
  for (int links = 0;; ++links) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlinkat(folder(), name_.c_str(), target.data(), target.size());
    if (length < 0 && (errno == EINVAL || errno == ENOENT)) return;  // not a link, or nothing yet
    if (length < 0) fail(errno);
    if (links == mostLinks) fail(ELOOP);
    follow(std::string(target.data(), static_cast<std::size_t>(length)));
  }
}

// Goes on from the folder where it stands.
void FilePlace::follow(const std::filesystem::path& link) {
  name_ = link.filename().string();
  if (name_.empty() || name_ == "." || name_ == "..") fail(EISDIR);
  const std::filesystem::path parent = link.has_parent_path() ? link.parent_path() : ".";
  Descriptor next(::openat(folder(), parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!next) fail(errno);
  folder_ = std::move(next);
}

std::optional<struct stat> FilePlace::status() const {
  struct stat status {};
  if (::fstatat(folder(), name_.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) return status;
  if (errno != ENOENT) fail(errno);
  return std::nullopt;
}

bool FilePlace::names(int descriptor) const {
  struct stat open {};
  if (::fstat(descriptor, &open) != 0) fail(errno);
  const std::optional<struct stat> there = status();
  return there && there->st_dev == open.st_dev && there->st_ino == open.st_ino;
}

Descriptor FilePlace::openLocked(std::chrono::milliseconds patience) const {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (const std::optional<struct stat> there = status()) {
    // Opening something else may do more than open it.
    if (!S_ISREG(there->st_mode)) fail(S_ISDIR(there->st_mode) ? EISDIR : EINVAL);
    constexpr int flags = O_NOFOLLOW | O_CLOEXEC;
    Descriptor opened(::openat(folder(), name_.c_str(), O_RDWR | flags));
    // May be written but not read: enough for whoever does not mind what it holds.
    if (!opened && errno == EACCES) opened = Descriptor(::openat(folder(), name_.c_str(), O_WRONLY | flags));
    if (!opened && errno == ENOENT) continue;
    if (!opened) fail(errno);
    if (lock(opened.get(), deadline) == Locked::ByAnother) fail(EBUSY, "another program holds it locked");
    // Whoever held the lock may have replaced the file.
    if (names(opened.get())) return opened;
  }
  return Descriptor();
}

void FilePlace::flush() const {
  const Descriptor opened(::openat(folder(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) ::fsync(opened.get());
}

void FilePlace::fail(int error, std::string_view what) const {
  std::string message = file_.string() + ": cannot be written";
  if (!what.empty()) message.append(": ").append(what);
  throw std::system_error(error, std::generic_category(), message);
}

}  // namespace velt::dxf
