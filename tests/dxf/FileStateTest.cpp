#include "dxf/FileState.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>
#include <string>
#include <system_error>

#include "dxf/Descriptor.h"
#include "tests/dxf/Folders.h"

namespace velt::dxf {
namespace {

using testing::putFile;
using testing::readFile;
using testing::statusOf;

ContentDigest digestOf(const std::string& bytes) {
  ContentDigest digest;
  digest.add(bytes);
  return digest;
}

TEST(ADigest, DoesNotDependOnThePortions) {
  const std::string bytes = "an uneven number of bytes, more than a few words of them";
  for (std::size_t first = 0; first <= bytes.size(); ++first) {
    ContentDigest digest;
    digest.add(bytes.substr(0, first));
    digest.add("");
    digest.add(bytes.substr(first));
    EXPECT_EQ(digest.value(), digestOf(bytes).value()) << first;
  }
}

TEST(ADigest, TellsContentsApart) {
  const std::string bytes(100, 'x');
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string other = bytes;
    other[at] = 'y';
    EXPECT_NE(digestOf(other).value(), digestOf(bytes).value()) << at;
  }
  EXPECT_NE(digestOf(std::string(3, '\0')).value(), digestOf(std::string(4, '\0')).value());
  EXPECT_NE(digestOf("").value(), digestOf(std::string(8, '\0')).value());
}

class State : public testing::FolderTest {
 protected:
  State() { putFile(file, content); }

  // As if the file had been left alone since yesterday, which its time of change cannot be told to say.
  void age() const {
    const timespec yesterday[] = {{::time(nullptr) - 86'400, 0}, {::time(nullptr) - 86'400, 0}};
    ::utimensat(AT_FDCWD, file.c_str(), yesterday, 0);
  }
  FileState stateNow() const {
    const struct stat now = statusOf(file);
    return {file, now, now, digestOf(readFile(file))};
  }
  bool isHeld(const FileState& state) const {
    const Descriptor opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    return state.isHeldBy(opened.get());
  }

  const std::string content = std::string(200'000, 'a');
};

TEST_F(State, OfAFileThatWasLeftAloneIsHeld) {
  const FileState state = stateNow();
  EXPECT_TRUE(isHeld(state));
}

TEST_F(State, IsHeldNoMoreOnceTheSizeIsAnother) {
  const FileState state = stateNow();
  putFile(file, content + "b");
  EXPECT_FALSE(isHeld(state));
  putFile(file, content.substr(1));
  EXPECT_FALSE(isHeld(state));
}

TEST_F(State, IsHeldNoMoreOnceTheContentIsAnotherOfTheSameSizeWithTheSameTime) {
  age();
  const FileState state = stateNow();
  std::string other = content;
  other.back() = 'b';
  putFile(file, other);
  age();
  EXPECT_FALSE(isHeld(state));
}

TEST_F(State, IsStillHeldByACopyThatTookThePlaceOfTheFile) {
  const FileState state = stateNow();
  putFile(folder / "copy", content);
  std::filesystem::rename(folder / "copy", file);
  EXPECT_TRUE(isHeld(state));
}

TEST_F(State, IsStillHeldWhenOnlyPermissionsAndTimesAreOthers) {
  const FileState state = stateNow();
  ::chmod(file.c_str(), 0600);
  age();
  EXPECT_TRUE(isHeld(state));
}

TEST_F(State, WhoseContentChangedWhileItWasReadIsNotTrustedForItsTimes) {
  struct stat before = statusOf(file);
  before.st_mtim.tv_nsec ^= 1;
  const FileState torn(file, before, statusOf(file), digestOf(content.substr(1) + "b"));
  EXPECT_FALSE(isHeld(torn));
}

// The times of an old file are enough: nobody reads it again.
TEST_F(State, OfAFileWithOldTimesIsHeldByItsTimesAlone) {
  struct stat old = statusOf(file);
  old.st_mtim.tv_sec -= 3600;
  old.st_ctim.tv_sec -= 3600;
  const FileState young(file, statusOf(file), statusOf(file), digestOf("something else"));
  EXPECT_FALSE(isHeld(young));
  while (statusOf(file).st_ctim.tv_sec + 3 > ::time(nullptr))
    ::usleep(100'000);
  const FileState settled(file, statusOf(file), statusOf(file), digestOf("something else"));
  EXPECT_TRUE(isHeld(settled));
  const FileState moved(file, old, old, digestOf("something else"));
  EXPECT_FALSE(isHeld(moved)) << "the times are others, so the content decides";
}

TEST_F(State, OfAFileThatCannotBeReadIsAFailure) {
  const FileState state = stateNow();
  const Descriptor writeOnly(::open(file.c_str(), O_WRONLY | O_CLOEXEC));
  EXPECT_THROW(static_cast<void>(state.isHeldBy(writeOnly.get())), std::system_error);
}

TEST_F(State, IsThatOfTheFileByWhicheverPath) {
  const FileState state = stateNow();
  std::filesystem::create_symlink("plan.dxf", folder / "link");
  std::filesystem::create_directory(folder / "sub");
  EXPECT_TRUE(state.isOf(file));
  EXPECT_TRUE(state.isOf(folder / "link"));
  EXPECT_TRUE(state.isOf(folder / "." / "plan.dxf"));
  EXPECT_TRUE(state.isOf(folder / "sub" / ".." / "plan.dxf"));
  EXPECT_FALSE(state.isOf(folder / "other"));
  EXPECT_FALSE(state.isOf(folder / "sub" / "plan.dxf"));
}

TEST_F(State, IsStillThatOfALinkThatWasTurnedToAnotherFile) {
  const std::filesystem::path link = folder / "link";
  std::filesystem::create_symlink("plan.dxf", link);
  const FileState state(link, statusOf(link), statusOf(link), digestOf(content));
  std::filesystem::remove(link);
  std::filesystem::create_symlink("other.dxf", link);
  EXPECT_TRUE(state.isOf(link));
  EXPECT_TRUE(state.isOf(file));
}

TEST_F(State, IsRememberedOnceForEachFile) {
  KnownFiles known;
  EXPECT_EQ(known.find(file), nullptr);
  known.remember(stateNow());
  putFile(file, "new");
  known.remember(stateNow());
  putFile(folder / "other", "");
  EXPECT_EQ(known.find(folder / "other"), nullptr);
  ASSERT_NE(known.find(file), nullptr);
  EXPECT_TRUE(isHeld(*known.find(file)));
}

}  // namespace
}  // namespace velt::dxf
