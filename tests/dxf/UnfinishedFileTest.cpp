#include "dxf/UnfinishedFile.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <system_error>

#include "dxf/FileLock.h"
#include "tests/dxf/Folders.h"

namespace velt::dxf {
namespace {

using testing::filesIn;
using testing::putFile;
using testing::readFile;
using testing::statusOf;
using Access = UnfinishedFile::Access;

class Unfinished : public testing::FolderTest {
 protected:
  std::string onlyName() const {
    EXPECT_EQ(filesIn(folder), 1U);
    return std::filesystem::directory_iterator(folder)->path().filename().string();
  }
  void put(const UnfinishedFile& unfinished, const std::string& bytes) const {
    ASSERT_EQ(::write(unfinished.descriptor(), bytes.data(), bytes.size()),
              static_cast<ssize_t>(bytes.size()));
  }
};

TEST_F(Unfinished, StandsBesideItsPlaceUnderANameOfItsOwn) {
  const FilePlace place(file);
  const UnfinishedFile unfinished(place, Access::OwnerOnly);
  const std::string name = onlyName();
  EXPECT_TRUE(name.starts_with("plan.dxf."));
  EXPECT_TRUE(name.ends_with(".unfinished"));
  EXPECT_EQ(name.size(), std::string("plan.dxf.XXXXXX.unfinished").size());
}

TEST_F(Unfinished, GoesWhenItIsNotWanted) {
  const FilePlace place(file);
  { const UnfinishedFile unfinished(place, Access::OwnerOnly); }
  EXPECT_EQ(filesIn(folder), 0U);
}

TEST_F(Unfinished, GoesWhenItsProcessIsToEndAtOnce) {
  const FilePlace place(file);
  const FilePlace otherPlace(folder / "other.dxf");
  testing::inChild([&] {
    // given one that is being written, and one that has taken its place
    const UnfinishedFile unfinished(place, Access::OwnerOnly);
    UnfinishedFile finished(otherPlace, Access::OwnerOnly);
    finished.replace();
    // when
    UnfinishedFile::removeAllForGood();
    // then
    ::_exit(filesIn(folder) == 1U && std::filesystem::exists(folder / "other.dxf") ? 0 : 1);
  });
}

TEST_F(Unfinished, IsTheOwnersAloneOrAsAnyNewFile) {
  const FilePlace place(file);
  testing::inChild([&] {
    ::umask(0022);
    const UnfinishedFile hidden(place, Access::OwnerOnly);
    const UnfinishedFile open(place, Access::AsNewFiles);
    struct stat status {};
    ::fstat(hidden.descriptor(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    ::fstat(open.descriptor(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0644U);
  });
}

TEST_F(Unfinished, TakesThePlaceOfAFileAndOfNone) {
  const FilePlace place(file);
  for (const std::string content : {"first", "second"}) {
    UnfinishedFile unfinished(place, Access::OwnerOnly);
    put(unfinished, content);
    unfinished.replace();
    EXPECT_EQ(readFile(file), content);
  }
  EXPECT_EQ(onlyName(), "plan.dxf");
}

TEST_F(Unfinished, TakesAFreePlaceOnly) {
  const FilePlace place(file);
  {
    UnfinishedFile unfinished(place, Access::OwnerOnly);
    put(unfinished, "first");
    unfinished.takeFreePlace();
  }
  EXPECT_EQ(readFile(file), "first");
  {
    UnfinishedFile unfinished(place, Access::OwnerOnly);
    put(unfinished, "second");
    try {
      unfinished.takeFreePlace();
      ADD_FAILURE() << "took a place that was not free";
    } catch (const std::system_error& error) {
      EXPECT_EQ(error.what(), file.string() + ": cannot be written: File exists");
    }
  }
  EXPECT_EQ(readFile(file), "first");
  EXPECT_EQ(onlyName(), "plan.dxf");
}

// --- names --------------------------------------------------------------------------------------------------------------

TEST_F(Unfinished, HasAShortNameBesideAFileWithTheLongestOne) {
  for (const std::size_t length : {100U, 101U, 237U, 238U, 255U}) {
    const FilePlace place(folder / std::string(length, 'n'));
    UnfinishedFile unfinished(place, Access::OwnerOnly);
    EXPECT_EQ(onlyName().size(), 118U);
    unfinished.replace();
    EXPECT_EQ(onlyName(), std::string(length, 'n'));
    std::filesystem::remove(folder / std::string(length, 'n'));
  }
}

TEST_F(Unfinished, HasNoHalfCharacterInItsName) {
  // Characters of one to four bytes, so that every one of them is cut somewhere.
  const std::string characters[] = {"n", "\u00F6", "\u4E2D", "\U0001F600"};
  for (std::size_t before = 95; before <= 101; ++before) {
    for (const std::string& character : characters) {
      std::string name(before, 'n');
      while (name.size() < 240)
        name += character;
      const FilePlace place(folder / name);
      const UnfinishedFile unfinished(place, Access::OwnerOnly);
      std::string stem = onlyName();
      stem.resize(stem.size() - std::string(".XXXXXX.unfinished").size());
      ASSERT_TRUE(name.starts_with(stem));
      EXPECT_LE(stem.size(), 100U);
      EXPECT_GT(stem.size(), 96U);
      EXPECT_EQ((stem.size() - std::min(stem.size(), before)) % character.size(), 0U) << name;
    }
  }
}

TEST_F(Unfinished, HasAShortNameAlsoWhereTheNameIsNoText) {
  const FilePlace place(folder / std::string(255, '\x80'));
  const UnfinishedFile unfinished(place, Access::OwnerOnly);
  EXPECT_EQ(onlyName().size(), 97U + 18U);
}

// --- what killed writers leave ------------------------------------------------------------------------------------------

TEST_F(Unfinished, IsClearedOnceItsWriterWasKilled) {
  const FilePlace place(file);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const UnfinishedFile unfinished(place, Access::OwnerOnly);
    ::kill(::getpid(), SIGKILL);
  }
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(filesIn(folder), 1U);
  UnfinishedFile::clearLeftovers(place);
  EXPECT_EQ(filesIn(folder), 0U);
}

TEST_F(Unfinished, IsNotClearedWhileItIsWritten) {
  const FilePlace place(file);
  UnfinishedFile unfinished(place, Access::OwnerOnly);
  testing::inChild([&] { UnfinishedFile::clearLeftovers(place); });
  UnfinishedFile::clearLeftovers(place);
  unfinished.replace();
  EXPECT_EQ(onlyName(), "plan.dxf");
}

TEST_F(Unfinished, IsClearedForAFileWithALongNameToo) {
  const FilePlace place(folder / std::string(255, 'n'));
  putFile(folder / (std::string(100, 'n') + ".abcdef.unfinished"), "");
  UnfinishedFile::clearLeftovers(place);
  EXPECT_EQ(filesIn(folder), 0U);
}

TEST_F(Unfinished, IsToldFromWhatOnlyLooksLikeIt) {
  const char* const others[] = {
      "plan.dxf",
      "plan.dxf.unfinished",
      "plan.dxf.abcde.unfinished",
      "plan.dxf.abcdefg.unfinished",
      "plan.dxf.abc-ef.unfinished",
      "plan.dxf.abcdef.unfinished.dxf",
      "other.dxf.abcdef.unfinished",
      "splan.dxf.abcdef.unfinished",
  };
  for (const char* const name : others)
    putFile(folder / name, "");
  // What bears the name and is no file.
  std::filesystem::create_directory(folder / "plan.dxf.folder.unfinished");
  std::filesystem::create_symlink("plan.dxf", folder / "plan.dxf.linked.unfinished");
  ASSERT_EQ(::mkfifo((folder / "plan.dxf.piped0.unfinished").c_str(), 0600), 0);
  const std::size_t before = filesIn(folder);
  UnfinishedFile::clearLeftovers(FilePlace(file));
  EXPECT_EQ(filesIn(folder), before);
}

// A name as the last step of takeFreePlace() may leave it: the file's own second one.
TEST_F(Unfinished, IsClearedWithoutTheFileThatHasTakenItsPlace) {
  putFile(file, "content");
  std::filesystem::create_hard_link(file, folder / "plan.dxf.abcdef.unfinished");
  UnfinishedFile::clearLeftovers(FilePlace(file));
  EXPECT_EQ(onlyName(), "plan.dxf");
  EXPECT_EQ(readFile(file), "content");
  EXPECT_EQ(statusOf(file).st_nlink, 1U);
}

}  // namespace
}  // namespace velt::dxf
