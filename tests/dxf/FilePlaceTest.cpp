#include "dxf/FilePlace.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <system_error>
#include <thread>

#include "tests/dxf/Folders.h"

namespace velt::dxf {
namespace {

using std::chrono::milliseconds;
using testing::putFile;
using testing::statusOf;

class Place : public testing::FolderTest {
 protected:
  static std::string failureOf(const std::filesystem::path& of) {
    try {
      const FilePlace place(of);
      static_cast<void>(place.openLocked(milliseconds(20)));
    } catch (const std::system_error& error) {
      return error.what();
    }
    return "no failure";
  }
  // Root may do everything.
  static void becomeNobody() {
    constexpr uid_t nobody = 65534;
    ASSERT_TRUE(::geteuid() != 0 || ::setresuid(nobody, nobody, nobody) == 0);
  }
};

TEST_F(Place, OfAFileIsItsFolderAndItsName) {
  putFile(file, "content");
  const FilePlace place(file);
  EXPECT_EQ(place.name(), "plan.dxf");
  ASSERT_TRUE(place.status());
  EXPECT_EQ(place.status()->st_size, 7);
  const Descriptor opened = place.openLocked(milliseconds(0));
  ASSERT_TRUE(opened);
  EXPECT_TRUE(place.names(opened.get()));
}

TEST_F(Place, OfAFileThatIsNotThereIsOne) {
  const FilePlace place(file);
  EXPECT_FALSE(place.status());
  EXPECT_FALSE(place.openLocked(milliseconds(0)));
}

TEST_F(Place, OfANameAloneIsInTheWorkingFolder) {
  testing::inChild([&] {
    std::filesystem::current_path(folder);
    putFile("plan.dxf", "");
    const FilePlace place("plan.dxf");
    EXPECT_TRUE(place.status());
    EXPECT_EQ(place.status()->st_ino, statusOf(file).st_ino);
  });
}

TEST_F(Place, IsBehindLinksHoweverTheyAreWritten) {
  std::filesystem::create_directories(folder / "a" / "b");
  putFile(folder / "a" / "real.dxf", "");
  std::filesystem::create_symlink("../real.dxf", folder / "a" / "b" / "relative");
  std::filesystem::create_symlink(folder / "a" / "b" / "relative", folder / "absolute");
  std::filesystem::create_symlink("a/b", folder / "short");
  std::filesystem::create_symlink("short/relative", file);
  for (const auto& path : {file, folder / "absolute"}) {
    const FilePlace place(path);
    EXPECT_EQ(place.name(), "real.dxf") << path;
    ASSERT_TRUE(place.status());
    EXPECT_EQ(place.status()->st_ino, statusOf(folder / "a" / "real.dxf").st_ino);
  }
}

TEST_F(Place, BehindALinkToNothingIsWhereTheLinkLeads) {
  std::filesystem::create_symlink("new.dxf", file);
  const FilePlace place(file);
  EXPECT_EQ(place.name(), "new.dxf");
  EXPECT_FALSE(place.status());
}

TEST_F(Place, IsRefusedWhereLinksRunInCircles) {
  std::filesystem::create_symlink("other", file);
  std::filesystem::create_symlink("plan.dxf", folder / "other");
  EXPECT_EQ(failureOf(file), file.string() + ": cannot be written: Too many levels of symbolic links");
}

TEST_F(Place, IsRefusedBehindMoreLinksThanTheSystemFollows) {
  std::filesystem::path last = "new.dxf";
  for (int i = 0; i < 41; ++i) {
    const std::filesystem::path link = "link" + std::to_string(i);
    std::filesystem::create_symlink(last, folder / link);
    last = link;
  }
  EXPECT_NE(failureOf(folder / last).find("Too many levels"), std::string::npos);
}

// In folders where everybody may write, links of others are a trap, which the system keeps processes from.
TEST_F(Place, IsRefusedBehindALinkThatTheSystemDoesNotFollow) {
  if (::geteuid() != 0 || testing::readFile("/proc/sys/fs/protected_symlinks") != "1\n")
    GTEST_SKIP() << "needs root, and a system that guards links";
  constexpr uid_t stranger = 12'345;
  putFile(folder / "real.dxf", "");
  std::filesystem::create_symlink("real.dxf", file);
  ASSERT_EQ(::lchown(file.c_str(), stranger, stranger), 0);
  ASSERT_EQ(::chmod(folder.c_str(), 01777), 0);
  ASSERT_EQ(::chmod((folder / "real.dxf").c_str(), 0666), 0);
  testing::inChild([&] {
    becomeNobody();
    EXPECT_EQ(failureOf(file), file.string() + ": cannot be written: Permission denied");
  });
}

TEST_F(Place, IsRefusedWhereNoFileCanBe) {
  std::filesystem::create_directory(file);
  EXPECT_EQ(failureOf(file), file.string() + ": cannot be written: Is a directory");
  EXPECT_NE(failureOf(folder / "new" / "").find("Is a directory"), std::string::npos);
  EXPECT_NE(failureOf(folder / "no" / "plan.dxf").find("No such file or directory"), std::string::npos);
  putFile(folder / "text", "");
  EXPECT_NE(failureOf(folder / "text" / "plan.dxf").find("Not a directory"), std::string::npos);
}

TEST_F(Place, OfAPipeIsRefusedWithoutWaitingForIt) {
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_NE(failureOf(file).find("Invalid argument"), std::string::npos);
}

TEST_F(Place, StaysTheSameWhenItsFolderIsMoved) {
  std::filesystem::create_directory(folder / "old");
  putFile(folder / "old" / "plan.dxf", "");
  const FilePlace place(folder / "old" / "plan.dxf");
  std::filesystem::rename(folder / "old", folder / "new");
  EXPECT_TRUE(place.status());
}

TEST_F(Place, GivesOneOpenFileAtATime) {
  putFile(file, "");
  const FilePlace place(file);
  Descriptor first = place.openLocked(milliseconds(0));
  EXPECT_EQ(failureOf(file), file.string()
                                 + ": cannot be written: another program holds it locked: "
                                   "Device or resource busy");
  first = Descriptor();
  EXPECT_TRUE(place.openLocked(milliseconds(0)));
}

TEST_F(Place, GivesTheFileThatWhoeverHeldTheLockHasPutThere) {
  putFile(file, "old");
  const FilePlace place(file);
  Descriptor held = place.openLocked(milliseconds(0));
  std::thread other([&] {
    std::this_thread::sleep_for(milliseconds(30));
    putFile(folder / "next", "new");
    std::filesystem::rename(folder / "next", file);
    held = Descriptor();
  });
  const Descriptor opened = place.openLocked(std::chrono::minutes(1));
  other.join();
  EXPECT_TRUE(place.names(opened.get()));
  EXPECT_EQ(statusOf(file).st_size, 3);
}

TEST_F(Place, OfAFileThatMayNotBeWrittenIsRefused) {
  putFile(file, "");
  std::filesystem::permissions(folder, std::filesystem::perms(0755));
  ::chmod(file.c_str(), 0444);
  testing::inChild([&] {
    becomeNobody();
    EXPECT_EQ(failureOf(file), file.string() + ": cannot be written: Permission denied");
  });
}

TEST_F(Place, OfAFileThatMayBeWrittenAndNotReadIsOne) {
  putFile(file, "");
  std::filesystem::permissions(folder, std::filesystem::perms(0755));
  ::chmod(file.c_str(), 0222);
  testing::inChild([&] {
    becomeNobody();
    EXPECT_TRUE(FilePlace(file).openLocked(milliseconds(0)));
  });
}

}  // namespace
}  // namespace velt::dxf
