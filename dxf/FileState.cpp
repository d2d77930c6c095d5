#include "dxf/FileState.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>

namespace velt::dxf {
namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
// How coarse the times of a file may be: the oldest file systems that drawings still travel on count in pairs of
// seconds.
constexpr std::int64_t coarsestTime = 2 * nanosecondsPerSecond;

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * nanosecondsPerSecond + time.tv_nsec;
}

std::int64_t now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

// A path that no change of the working folder moves; as it is when there is no working folder.
std::filesystem::path absolutePath(const std::filesystem::path& file) {
  std::error_code failure;
  const std::filesystem::path found = std::filesystem::absolute(file, failure);
  return failure ? file : found.lexically_normal();
}

// As far as there are files and links; empty when that cannot be told.
std::filesystem::path behindLinks(const std::filesystem::path& file) {
  std::error_code failure;
  std::filesystem::path found = std::filesystem::weakly_canonical(file, failure);
  return failure ? std::filesystem::path() : found;
}

}  // namespace

void ContentDigest::takeWord(const char* bytes) {
  constexpr std::uint64_t odd = 0x9E37'79B9'7F4A'7C15;
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof(word));
  state_ = (state_ ^ word) * odd;
  state_ ^= state_ >> 32;
}

void ContentDigest::add(std::string_view bytes) {
  // Byte by byte up to the next whole word, so that it does not matter what the portions are.
  const auto takeByte = [this](char byte) {
    begun_[length_ % begun_.size()] = byte;
    if (++length_ % begun_.size() == 0) takeWord(begun_.data());
  };
  std::size_t next = 0;
  for (; next < bytes.size() && length_ % begun_.size() != 0; ++next)
    takeByte(bytes[next]);
  for (; bytes.size() - next >= begun_.size(); next += begun_.size(), length_ += begun_.size())
    takeWord(bytes.data() + next);
  for (; next < bytes.size(); ++next)
    takeByte(bytes[next]);
}

std::uint64_t ContentDigest::value() const {
  ContentDigest whole = *this;
  while (whole.length_ % begun_.size() != 0)
    whole.add(std::string_view("\0", 1));
  whole.takeWord(reinterpret_cast<const char*>(&length_));
  return whole.state_;
}

FileState::Identity::Identity(const struct stat& status)
    : device(status.st_dev),
      inode(status.st_ino),
      size(status.st_size),
      modified(nanoseconds(status.st_mtim)),
      changed(nanoseconds(status.st_ctim)) {}

FileState::FileState(const std::filesystem::path& file, const struct stat& before, const struct stat& after,
                     const ContentDigest& content)
    : named_(absolutePath(file)),
      real_(behindLinks(file)),
      identity_(after),
      isSettled_(Identity(before) == identity_
                 && std::max(identity_.modified, identity_.changed) + coarsestTime < now()),
      digest_(content.value()) {}

bool FileState::isOf(const std::filesystem::path& file) const {
  return named_ == absolutePath(file) || (!real_.empty() && real_ == behindLinks(file));
}

bool FileState::isHeldBy(int descriptor) const {
  const auto fail = [] { throw std::system_error(errno, std::generic_category()); };
  const auto identity = [&] {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) fail();
    return Identity(status);
  };
  const Identity there = identity();
  if (isSettled_ && there == identity_) return true;
  if (there.size != identity_.size) return false;

  ContentDigest content;
  std::array<char, 1 << 16> portion;
  for (std::int64_t at = 0;;) {
    const ssize_t got = ::pread(descriptor, portion.data(), portion.size(), at);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) fail();
    if (got == 0) break;
    content.add({portion.data(), static_cast<std::size_t>(got)});
    at += got;
  }
  // Nor may it have changed while it was read.
  return content.value() == digest_ && identity() == there;
}

const FileState* KnownFiles::find(const std::filesystem::path& file) const {
  const auto found =
      std::find_if(states_.begin(), states_.end(), [&](const FileState& state) { return state.isOf(file); });
  return found == states_.end() ? nullptr : &*found;
}

void KnownFiles::remember(FileState state) {
  std::erase_if(states_, [&](const FileState& known) { return known.isOf(state.file()); });
  states_.push_back(std::move(state));
}

}  // namespace velt::dxf
