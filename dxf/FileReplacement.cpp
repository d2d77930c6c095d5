#include "dxf/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <streambuf>
#include <string>
#include <system_error>
#include <utility>

#include "dxf/Document.h"

namespace velt::dxf {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, int error) {
  throw std::system_error(error, std::generic_category(), file.string() + ": cannot be written");
}

// What is written, by large pieces. The first error stays, for the one who asks for the result.
class DescriptorBuffer final : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
    setp(buffer_.data(), buffer_.data() + buffer_.size());
  }
  [[nodiscard]] int error() const { return error_; }

 protected:
  int_type overflow(int_type character) override {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
  }

  int sync() override {
    const char* from = pbase();
    while (error_ == 0 && from != pptr()) {
      const ssize_t written = ::write(descriptor_, from, static_cast<std::size_t>(pptr() - from));
      if (written >= 0) {
        from += written;
      } else if (errno != EINTR) {
        error_ = errno;
      }
    }
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    return error_ == 0 ? 0 : -1;
  }

 private:
  int descriptor_;
  int error_ = 0;
  std::array<char, 1 << 16> buffer_;
};

// The file itself where the path is a link, also one to a file that is not there yet.
std::filesystem::path behindLinks(const std::filesystem::path& file) {
  constexpr int mostLinks = 40;
  std::filesystem::path here = file;
  std::error_code failure;
  for (int i = 0; i < mostLinks && std::filesystem::is_symlink(here, failure); ++i) {
    const std::filesystem::path next = std::filesystem::read_symlink(here, failure);
    if (failure) break;
    here = here.parent_path() / next;
  }
  return here;
}

// A file that was renamed is sure to be found after a crash only when its folder is on the disk, too. Not every file
// system can do that; the file itself is whole either way.
void flushFolderOf(const std::filesystem::path& file) {
  const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

class FileReplacement::Unfinished {
 public:
  explicit Unfinished(const std::filesystem::path& file)
      : asked_(file),
        target_(behindLinks(file)),
        descriptor_(create()),
        buffer_(descriptor_),
        stream_(&buffer_) {}
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!isCommitted_) ::unlink(name_.c_str());
  }

  [[nodiscard]] std::ostream& stream() { return stream_; }

  void commit() {
    stream_.flush();
    if (buffer_.error() != 0) fail(asked_, buffer_.error());
    if (!stream_) fail(asked_, EIO);
    if (::fsync(descriptor_) != 0) fail(asked_, errno);
    if (::close(std::exchange(descriptor_, -1)) != 0) fail(asked_, errno);
    if (::rename(name_.c_str(), target_.c_str()) != 0) fail(asked_, errno);
    isCommitted_ = true;
    flushFolderOf(target_);
  }

 private:
  int create() {
    struct stat old {};
    const bool isThere = ::stat(target_.c_str(), &old) == 0;
    if (isThere && !S_ISREG(old.st_mode)) fail(asked_, S_ISDIR(old.st_mode) ? EISDIR : EINVAL);
    // A file that may not be written is not to be replaced either, though the folder would allow it.
    if (isThere && ::access(target_.c_str(), W_OK) != 0) fail(asked_, errno);
    name_ = target_.string() + ".XXXXXX.unfinished";
    const int descriptor = ::mkostemps(name_.data(), static_cast<int>(sizeof(".unfinished") - 1), O_CLOEXEC);
    if (descriptor < 0) fail(asked_, errno);
    if (isThere) {
      if (::fchown(descriptor, old.st_uid, old.st_gid) != 0) errno = 0;  // stays the process's own
      ::fchmod(descriptor, old.st_mode & 07777);
    } else {
      const mode_t mask = ::umask(0);
      ::umask(mask);
      ::fchmod(descriptor, 0666 & ~mask);
    }
    return descriptor;
  }

  std::filesystem::path asked_;
  std::filesystem::path target_;
  std::string name_;
  int descriptor_;
  DescriptorBuffer buffer_;
  std::ostream stream_;
  bool isCommitted_ = false;
};

FileReplacement::FileReplacement(const std::filesystem::path& file)
    : unfinished_(std::make_unique<Unfinished>(file)) {}

FileReplacement::~FileReplacement() = default;

std::ostream& FileReplacement::stream() {
  return unfinished_->stream();
}

void FileReplacement::commit() {
  unfinished_->commit();
}

void save(const Document& document, const std::filesystem::path& file) {
  FileReplacement replacement(file);
  document.write(replacement.stream());
  replacement.commit();
}

}  // namespace velt::dxf
