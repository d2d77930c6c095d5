#include "dxf/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <streambuf>
#include <string>
#include <system_error>
#include <utility>

#include "dxf/Document.h"
#include "dxf/FileAttributes.h"
#include "dxf/FilePlace.h"
#include "dxf/UnfinishedFile.h"

namespace velt::dxf {

namespace {

// What is written, by large pieces. The first error stays, for the one who asks for the result.
class DescriptorBuffer final : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
    setp(buffer_.data(), buffer_.data() + buffer_.size());
  }
  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] const ContentDigest& content() const { return content_; }

 protected:
  int_type overflow(int_type character) override {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
  }

  int sync() override {
    content_.add({pbase(), static_cast<std::size_t>(pptr() - pbase())});
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
  ContentDigest content_;
  std::array<char, 1 << 16> buffer_;
};

UnfinishedFile::Access accessOf(const Descriptor& oldFile) {
  return oldFile ? UnfinishedFile::Access::OwnerOnly : UnfinishedFile::Access::AsNewFiles;
}

}  // namespace

class FileReplacement::Unfinished {
 public:
  Unfinished(const std::filesystem::path& file, ReplacementOptions options)
      : file_(file),
        options_(std::move(options)),
        place_(file),
        old_(place_.openLocked(options_.patience)),
        made_(prepared(), accessOf(old_)),
        buffer_(made_.descriptor()),
        stream_(&buffer_) {}

  [[nodiscard]] std::ostream& stream() { return stream_; }

  FileState commit() {
    stream_.flush();
    if (buffer_.error() != 0) place_.fail(buffer_.error());
    if (!stream_) place_.fail(EIO);
    if (old_) keepWhatBelongsToTheOldFile();
    if (::fsync(made_.descriptor()) != 0) place_.fail(errno);
    FileState state = stateOfTheNewFile();
    requireExpected();
    if (options_.onlyNew) {
      made_.takeFreePlace();
    } else {
      made_.replace();
    }
    place_.flush();
    return state;
  }

 private:
  const FilePlace& prepared() const {
    requireExpected();
    UnfinishedFile::clearLeftovers(place_);
    return place_;
  }

  void requireExpected() const {
    if (options_.onlyNew && place_.status()) place_.fail(EEXIST);
    if (options_.expected == nullptr) return;
    if (!place_.status()) throw FileChanged(file_.string() + ": has been removed since it was read");
    bool isUnchanged = old_ && place_.names(old_.get());
    try {
      isUnchanged = isUnchanged && options_.expected->isHeldBy(old_.get());
    } catch (const std::system_error& error) {
      place_.fail(error.code().value(), "it cannot be compared with what was read");
    }
    if (!isUnchanged) throw FileChanged(file_.string() + ": has been changed since it was read");
  }

  void keepWhatBelongsToTheOldFile() const {
    const std::vector<std::string> losses = keepAttributes(place_, old_.get(), made_.descriptor());
    struct stat status {};
    if (::fstat(old_.get(), &status) != 0) place_.fail(errno);
    if (!options_.tell) return;
    for (const std::string& loss : losses)
      options_.tell(file_.string() + ": " + loss);
    if (status.st_nlink > 1)
      options_.tell(file_.string() + ": the file has " + std::to_string(status.st_nlink - 1) + " more "
                    + (status.st_nlink > 2 ? "names, which keep" : "name, which keeps") + " the old content");
  }

  FileState stateOfTheNewFile() const {
    struct stat status {};
    if (::fstat(made_.descriptor(), &status) != 0) place_.fail(errno);
    return {file_, status, status, buffer_.content()};
  }

  std::filesystem::path file_;
  ReplacementOptions options_;
  FilePlace place_;
  Descriptor old_;
  UnfinishedFile made_;
  DescriptorBuffer buffer_;
  std::ostream stream_;
};

FileReplacement::FileReplacement(const std::filesystem::path& file, ReplacementOptions options)
    : unfinished_(std::make_unique<Unfinished>(file, std::move(options))) {}

FileReplacement::~FileReplacement() = default;

std::ostream& FileReplacement::stream() {
  return unfinished_->stream();
}

FileState FileReplacement::commit() {
  return unfinished_->commit();
}

void save(Document& document, const std::filesystem::path& file, const SaveOptions& options) {
  const FileState* const known = document.knownFiles().find(file);
  FileReplacement replacement(file, {.expected = options.overwriteChanges ? nullptr : known,
                                     .onlyNew = options.onlyNew,
                                     .tell = options.tell,
                                     .patience = options.patience});
  document.write(replacement.stream(), options.progress);
  document.knownFiles().remember(replacement.commit());
}

}  // namespace velt::dxf
