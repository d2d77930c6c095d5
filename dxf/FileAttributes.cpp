#include "dxf/FileAttributes.h"

#include <linux/limits.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>

namespace velt::dxf {
namespace {

constexpr std::string_view accessControlList = "system.posix_acl_access";

bool isNotSupported(int error) {
  return error == ENOTSUP || error == ENOSYS;
}

// Capabilities go the way of the set-user bits; signatures are made from the content, and the kernel makes them anew.
bool belongsToContent(std::string_view name) {
  constexpr std::string_view those[] = {"security.capability", "security.evm", "security.ima"};
  return std::find(std::begin(those), std::end(those), name) != std::end(those);
}

// What decides who gets at the file: access control lists of all kinds, and labels.
bool guards(std::string_view name) {
  return name.starts_with("system.") || name.starts_with("security.");
}

class Keeping {
 public:
  Keeping(const FilePlace& place, int oldFile, int newFile) : place_(place), old_(oldFile), new_(newFile) {}

  std::vector<std::string> run() {
    const std::vector<std::string> names = attributeNames();
    const struct stat before = status(old_);
    // What the folder gives to new files, and the old one does not have.
    if (std::find(names.begin(), names.end(), accessControlList) == names.end()) removeAccessControlList();
    // Before the file may be another's, who alone could set them then.
    for (const std::string& name : names) {
      if (!name.starts_with("system.")) keep(name);
    }
    keepOwner(before, names);
    for (const std::string& name : names) {
      if (name.starts_with("system.")) keep(name);
    }
    keepPermissions(before.st_mode & 0777);
    return std::move(losses_);
  }

 private:
  [[nodiscard]] struct stat status(int descriptor) const {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) place_.fail(errno);
    return status;
  }

  [[nodiscard]] std::vector<std::string> attributeNames() const {
    std::string list(XATTR_LIST_MAX, '\0');
    const ssize_t length = ::flistxattr(old_, list.data(), list.size());
    if (length < 0 && !isNotSupported(errno)) place_.fail(errno, "its attributes cannot be read");
    std::vector<std::string> names;
    for (std::size_t begin = 0; begin < static_cast<std::size_t>(std::max<ssize_t>(length, 0));) {
      std::string name = list.c_str() + begin;
      begin += name.size() + 1;
      if (!belongsToContent(name)) names.push_back(std::move(name));
    }
    return names;
  }

  void removeAccessControlList() const {
    if (::fremovexattr(new_, accessControlList.data()) == 0 || errno == ENODATA || isNotSupported(errno))
      return;
    place_.fail(errno, "an access control list that the folder gives to new files cannot be taken away");
  }

  // Nothing for one that is not there, with the reason in errno.
  static std::optional<std::string> valueOf(int descriptor, const std::string& name) {
    std::string value(XATTR_SIZE_MAX, '\0');
    const ssize_t length = ::fgetxattr(descriptor, name.c_str(), value.data(), value.size());
    if (length < 0) return std::nullopt;
    value.resize(static_cast<std::size_t>(length));
    return value;
  }

  void keep(const std::string& name) {
    const std::optional<std::string> value = valueOf(old_, name);
    if (!value && errno == ENODATA) return;  // somebody has just removed it
    // What the new file has already need not be set, and often must not be.
    if (value && valueOf(new_, name) == value) return;
    if (value && ::fsetxattr(new_, name.c_str(), value->data(), value->size(), 0) == 0) return;
    const int error = errno;
    if (name == accessControlList) place_.fail(error, "its access control list cannot be kept");
    if (guards(name)) place_.fail(error, "its attribute " + name + " cannot be kept");
    losses_.push_back("its attribute " + name + " cannot be kept: " + std::generic_category().message(error));
  }

  void keepOwner(const struct stat& before, const std::vector<std::string>& names) {
    const struct stat made = status(new_);
    if (made.st_uid == before.st_uid && made.st_gid == before.st_gid) return;
    if (::fchown(new_, before.st_uid, before.st_gid) == 0) return;
    const int error = errno;
    if (made.st_uid != before.st_uid)
      losses_.push_back("its owner cannot be kept: " + std::generic_category().message(error));
    if (made.st_gid == before.st_gid) return;
    if (::fchown(new_, static_cast<uid_t>(-1), before.st_gid) == 0) return;
    // Another group would get what was the old one's, and the old one what is everybody's.
    const bool groupIsAsOthers = ((before.st_mode >> 3) & 07) == (before.st_mode & 07);
    const bool hasList = std::find(names.begin(), names.end(), accessControlList) != names.end();
    if (!groupIsAsOthers || hasList) place_.fail(errno, "its group cannot be kept");
    losses_.push_back("its group cannot be kept: " + std::generic_category().message(errno));
  }

  void keepPermissions(mode_t permissions) {
    const mode_t made = status(new_).st_mode & 07777;
    if (made == permissions || ::fchmod(new_, permissions) == 0) return;
    const bool opensToOthers = (made & 077 & ~permissions) != 0;
    if (opensToOthers) place_.fail(errno, "its permissions cannot be kept");
    losses_.push_back("its permissions cannot be kept: " + std::generic_category().message(errno));
  }

  const FilePlace& place_;
  int old_;
  int new_;
  std::vector<std::string> losses_;
};

}  // namespace

std::vector<std::string> keepAttributes(const FilePlace& place, int oldFile, int newFile) {
  return Keeping(place, oldFile, newFile).run();
}

}  // namespace velt::dxf
