#include "dxf/FileAttributes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "tests/dxf/Folders.h"

namespace velt::dxf {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::putFile;
using testing::statusOf;

// --- access control lists, in the form that the kernel takes them -----------------------------------------------------

enum : std::uint16_t {
  ownerTag = 1,
  userTag = 2,
  groupTag = 4,
  namedGroupTag = 8,
  maskTag = 16,
  othersTag = 32
};

struct Entry {
  std::uint16_t tag;
  std::uint16_t permissions;
  std::uint32_t id = 0xFFFF'FFFF;
};

std::string listOf(const std::vector<Entry>& entries) {
  std::string bytes = {2, 0, 0, 0};
  const auto put = [&](std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
      bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  };
  for (const Entry& entry : entries) {
    put(entry.tag, 2);
    put(entry.permissions, 2);
    put(entry.id, 4);
  }
  return bytes;
}

// Read and write for the owner and one more user, nothing for the file's group.
std::string listWithUser(std::uint32_t user) {
  return listOf({{ownerTag, 6}, {userTag, 6, user}, {groupTag, 0}, {maskTag, 6}, {othersTag, 0}});
}

constexpr const char* access = "system.posix_acl_access";
constexpr const char* inherited = "system.posix_acl_default";

std::optional<std::string> attribute(const std::filesystem::path& file, const char* name) {
  std::string value(65'536, '\0');
  const ssize_t length = ::getxattr(file.c_str(), name, value.data(), value.size());
  if (length < 0) return std::nullopt;
  value.resize(static_cast<std::size_t>(length));
  return value;
}
bool setAttribute(const std::filesystem::path& file, const char* name, const std::string& value) {
  return ::setxattr(file.c_str(), name, value.data(), value.size(), 0) == 0;
}

constexpr uid_t alice = 12'001;
constexpr uid_t bob = 12'002;
constexpr gid_t team = 12'100;
constexpr gid_t strangers = 12'200;

class Attributes : public testing::FolderTest {
 protected:
  Attributes() {
    putFile(file, "old");
    ::chmod(folder.c_str(), 0777);
  }

  // Makes the new file as a replacement does.
  std::vector<std::string> keep() const {
    const FilePlace place(file);
    const Descriptor old(::open(file.c_str(), O_RDWR | O_CLOEXEC));
    const Descriptor made(::open(fresh().c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!old || !made) ADD_FAILURE() << "the files cannot be opened";
    return keepAttributes(place, old.get(), made.get());
  }
  std::string failure() const {
    try {
      static_cast<void>(keep());
    } catch (const std::system_error& error) {
      return error.what();
    }
    return "no failure";
  }
  std::filesystem::path fresh() const { return folder / "new"; }

  // As a user who is none of the special ones.
  template <class Body>
  static void as(uid_t user, std::vector<gid_t> groups, Body&& body) {
    testing::inChild([&] {
      ASSERT_EQ(::setgroups(groups.size(), groups.data()), 0);
      ASSERT_EQ(::setresgid(groups.front(), groups.front(), groups.front()), 0);
      ASSERT_EQ(::setresuid(user, user, user), 0);
      body();
    });
  }
  static bool isRoot() { return ::geteuid() == 0; }
};

#define NEEDS_ROOT() \
  if (!isRoot()) GTEST_SKIP() << "needs root, who can give files away"

TEST_F(Attributes, PermissionsAreKept) {
  for (const mode_t mode : {0600U, 0640U, 0664U, 0666U, 0755U}) {
    ::chmod(file.c_str(), mode);
    EXPECT_THAT(keep(), IsEmpty());
    EXPECT_EQ(statusOf(fresh()).st_mode & 07777, mode);
    std::filesystem::remove(fresh());
  }
}

TEST_F(Attributes, TheRightToRunAsTheOwnerIsDropped) {
  ::chmod(file.c_str(), 07755);
  ASSERT_EQ(statusOf(file).st_mode & 07777, 07755U);
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(statusOf(fresh()).st_mode & 07777, 0755U);
}

TEST_F(Attributes, OwnerAndGroupAreKept) {
  NEEDS_ROOT();
  ASSERT_EQ(::chown(file.c_str(), alice, team), 0);
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(statusOf(fresh()).st_uid, alice);
  EXPECT_EQ(statusOf(fresh()).st_gid, team);
}

TEST_F(Attributes, TheGroupIsKeptWhereTheOwnerCannotBe) {
  NEEDS_ROOT();
  ASSERT_EQ(::chown(file.c_str(), alice, team), 0);
  ::chmod(file.c_str(), 0660);
  as(bob, {strangers, team},
     [&] { EXPECT_THAT(keep(), ElementsAre("its owner cannot be kept: Operation not permitted")); });
  EXPECT_EQ(statusOf(fresh()).st_uid, bob);
  EXPECT_EQ(statusOf(fresh()).st_gid, team);
  EXPECT_EQ(statusOf(fresh()).st_mode & 07777, 0660U);
}

TEST_F(Attributes, AFileIsNotOpenedToAnotherGroup) {
  NEEDS_ROOT();
  ASSERT_EQ(::chown(file.c_str(), bob, team), 0);
  ::chmod(file.c_str(), 0660);
  as(bob, {strangers}, [&] {
    EXPECT_EQ(failure(),
              file.string() + ": cannot be written: its group cannot be kept: Operation not permitted");
  });
  EXPECT_EQ(statusOf(fresh()).st_mode & 07777, 0600U);
}

TEST_F(Attributes, AGroupThatWasKeptOutIsNotLetIn) {
  NEEDS_ROOT();
  ASSERT_EQ(::chown(file.c_str(), bob, team), 0);
  ::chmod(file.c_str(), 0604);
  as(bob, {strangers}, [&] { EXPECT_THAT(failure(), HasSubstr("its group cannot be kept")); });
}

TEST_F(Attributes, AnotherGroupIsToldWhereItMayDoWhatEverybodyMay) {
  NEEDS_ROOT();
  ASSERT_EQ(::chown(file.c_str(), bob, team), 0);
  ::chmod(file.c_str(), 0644);
  as(bob, {strangers},
     [&] { EXPECT_THAT(keep(), ElementsAre("its group cannot be kept: Operation not permitted")); });
  EXPECT_EQ(statusOf(fresh()).st_mode & 07777, 0644U);
}

TEST_F(Attributes, AnAccessControlListIsKept) {
  if (!setAttribute(file, access, listWithUser(alice)))
    GTEST_SKIP() << "the file system has no access control lists";
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(attribute(fresh(), access), listWithUser(alice));
  EXPECT_EQ(statusOf(fresh()).st_mode, statusOf(file).st_mode);
}

TEST_F(Attributes, AnAccessControlListThatTheFolderGivesToNewFilesIsTakenAway) {
  if (!setAttribute(folder, inherited, listWithUser(alice)))
    GTEST_SKIP() << "the file system has no access control lists";
  ::chmod(file.c_str(), 0640);
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(attribute(fresh(), access), std::nullopt);
  EXPECT_EQ(statusOf(fresh()).st_mode & 07777, 0640U);
}

TEST_F(Attributes, AnAccessControlListGoesWithNoOtherGroup) {
  NEEDS_ROOT();
  if (!setAttribute(file, access, listWithUser(alice)))
    GTEST_SKIP() << "the file system has no access control lists";
  ASSERT_EQ(::chown(file.c_str(), bob, team), 0);
  ::chmod(file.c_str(), 0666);
  as(bob, {strangers}, [&] { EXPECT_THAT(failure(), HasSubstr("its group cannot be kept")); });
}

TEST_F(Attributes, ExtendedAttributesAreKept) {
  if (!setAttribute(file, "user.origin", "a survey"))
    GTEST_SKIP() << "the file system has no attributes of users";
  ASSERT_TRUE(setAttribute(file, "user.empty", ""));
  const std::string large(1000, '\xFF');
  ASSERT_TRUE(setAttribute(file, "user.large", large));
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(attribute(fresh(), "user.origin"), "a survey");
  EXPECT_EQ(attribute(fresh(), "user.empty"), "");
  EXPECT_EQ(attribute(fresh(), "user.large"), large);
}

TEST_F(Attributes, AreKeptTogetherWhenTheFileIsGivenAway) {
  NEEDS_ROOT();
  if (!setAttribute(file, "user.origin", "a survey") || !setAttribute(file, access, listWithUser(bob)))
    GTEST_SKIP() << "the file system has neither attributes nor access control lists";
  ASSERT_EQ(::chown(file.c_str(), alice, team), 0);
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(statusOf(fresh()).st_uid, alice);
  EXPECT_EQ(attribute(fresh(), "user.origin"), "a survey");
  EXPECT_EQ(attribute(fresh(), access), listWithUser(bob));
}

TEST_F(Attributes, CapabilitiesAreDroppedLikeTheRightToRunAsTheOwner) {
  NEEDS_ROOT();
  const std::string capability{1, 0, 0, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  if (!setAttribute(file, "security.capability", capability)) GTEST_SKIP() << "no capabilities here";
  EXPECT_THAT(keep(), IsEmpty());
  EXPECT_EQ(attribute(fresh(), "security.capability"), std::nullopt);
}

// --- on a file system that has no room or no such thing -----------------------------------------------------------

class AttributesElsewhere : public Attributes {
 protected:
  void SetUp() override {
    if (!testing::hasNamespaces(folder)) GTEST_SKIP() << "the machine allows no mount namespaces";
  }
};

// Two file systems, as a bind mount of a single file would give them.
TEST_F(AttributesElsewhere, AnAttributeThatHasNoRoomIsToldAndALabelIsRefused) {
  if (!setAttribute(file, "user.origin", "a survey"))
    GTEST_SKIP() << "the file system has no attributes of users";
  std::filesystem::create_directory(folder / "other");
  testing::inChild([&] {
    if (!testing::leaveForNamespace() || ::mount("velt", (folder / "other").c_str(), "ramfs", 0, "") != 0)
      return;  // a file system without attributes is for root only
    const FilePlace place(file);
    const Descriptor old(::open(file.c_str(), O_RDWR | O_CLOEXEC));
    const Descriptor made(::open((folder / "other" / "new").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_TRUE(made);
    EXPECT_THAT(keepAttributes(place, old.get(), made.get()),
                ElementsAre("its attribute user.origin cannot be kept: Operation not supported"));
    if (!setAttribute(file, access, listWithUser(alice))) return;
    try {
      static_cast<void>(keepAttributes(place, old.get(), made.get()));
      ADD_FAILURE() << "kept an access control list where there are none";
    } catch (const std::system_error& error) {
      EXPECT_EQ(error.what(), file.string()
                                  + ": cannot be written: its access control list cannot be kept: "
                                    "Operation not supported");
    }
  });
}

}  // namespace
}  // namespace velt::dxf
