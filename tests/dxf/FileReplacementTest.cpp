#include "dxf/FileReplacement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "dxf/Document.h"
#include "samples/FloorPlan.h"
#include "tests/dxf/Drawings.h"
#include "tests/dxf/Folders.h"

namespace {

// The calls to the system while a file is replaced. The functions below take the place of the C library's in this
// process; when armed, the n-th call ends the process or fails.
struct SystemCalls {
  enum class Fault { None, Killed, Fails };
  Fault fault = Fault::None;
  int at = 0;
  int error = 0;
  int made = 0;
  // What was called, in order.
  std::vector<std::string> names{};

  // True when the call is to fail.
  bool next(const char* of) {
    if (fault == Fault::None) return false;
    names.emplace_back(of);
    if (++made != at) return false;
    if (fault == Fault::Killed) ::kill(::getpid(), SIGKILL);
    errno = error;
    return true;
  }
};
SystemCalls calls;
int masksSet = 0;

template <class Function>
Function original(const char* name) {
  return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {
ssize_t write(int descriptor, const void* bytes, size_t count) {
  static const auto real = original<ssize_t (*)(int, const void*, size_t)>("write");
  if (calls.next("write")) return -1;
  // Less than asked for, as the system may: whoever writes has to go on.
  return real(descriptor, bytes, calls.fault == SystemCalls::Fault::None ? count : (count + 1) / 2);
}
ssize_t pread(int descriptor, void* bytes, size_t count, off_t offset) {
  static const auto real = original<ssize_t (*)(int, void*, size_t, off_t)>("pread");
  return calls.next("pread") ? -1 : real(descriptor, bytes, count, offset);
}
int flock(int descriptor, int operation) noexcept {
  static const auto real = original<int (*)(int, int)>("flock");
  return calls.next("flock") ? -1 : real(descriptor, operation);
}
int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
  static const auto real = original<int (*)(int, uid_t, gid_t)>("fchown");
  return calls.next("fchown") ? -1 : real(descriptor, owner, group);
}
int fchmod(int descriptor, mode_t mode) noexcept {
  static const auto real = original<int (*)(int, mode_t)>("fchmod");
  return calls.next("fchmod") ? -1 : real(descriptor, mode);
}
ssize_t flistxattr(int descriptor, char* list, size_t size) noexcept {
  static const auto real = original<ssize_t (*)(int, char*, size_t)>("flistxattr");
  return calls.next("flistxattr") ? -1 : real(descriptor, list, size);
}
ssize_t fgetxattr(int descriptor, const char* name, void* value, size_t size) noexcept {
  static const auto real = original<ssize_t (*)(int, const char*, void*, size_t)>("fgetxattr");
  return calls.next("fgetxattr") ? -1 : real(descriptor, name, value, size);
}
int fsetxattr(int descriptor, const char* name, const void* value, size_t size, int flags) noexcept {
  static const auto real = original<int (*)(int, const char*, const void*, size_t, int)>("fsetxattr");
  return calls.next("fsetxattr") ? -1 : real(descriptor, name, value, size, flags);
}
int fremovexattr(int descriptor, const char* name) noexcept {
  static const auto real = original<int (*)(int, const char*)>("fremovexattr");
  return calls.next("fremovexattr") ? -1 : real(descriptor, name);
}
mode_t umask(mode_t mask) noexcept {
  static const auto real = original<mode_t (*)(mode_t)>("umask");
  ++masksSet;
  return real(mask);
}
int fsync(int descriptor) {
  static const auto real = original<int (*)(int)>("fsync");
  return calls.next("fsync") ? -1 : real(descriptor);
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
  static const auto real = original<int (*)(int, const char*, int, const char*)>("renameat");
  return calls.next("renameat") ? -1 : real(fromFolder, from, toFolder, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  static const auto real = original<int (*)(int, const char*, int, const char*, unsigned)>("renameat2");
  return calls.next("renameat2") ? -1 : real(fromFolder, from, toFolder, to, flags);
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
  static const auto real = original<int (*)(int, const char*, int, const char*, int)>("linkat");
  return calls.next("linkat") ? -1 : real(fromFolder, from, toFolder, to, flags);
}
}

namespace velt::dxf {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using testing::filesIn;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::putFile;
using testing::readFile;
using testing::statusOf;

class ReplacedFile : public testing::FolderTest {
 protected:
  ~ReplacedFile() override { calls = {}; }

  static std::string read(const std::filesystem::path& from) { return readFile(from); }
  static void put(const std::filesystem::path& to, const std::string& bytes) { putFile(to, bytes); }
  void replace(const std::string& bytes, ReplacementOptions options = {}) const {
    FileReplacement replacement(file, std::move(options));
    replacement.stream() << bytes;
    replacement.commit();
  }
  std::string failureOf(const std::string& bytes, ReplacementOptions options = {}) const {
    try {
      replace(bytes, std::move(options));
    } catch (const std::exception& error) {
      return error.what();
    }
    return "no failure";
  }
  std::size_t filesInFolder() const { return filesIn(folder); }

  const std::string before = std::string(300'000, 'o') + "old";
  const std::string after = std::string(400'000, 'n') + "new";
};

TEST_F(ReplacedFile, AFileThatIsNotThereIsMade) {
  replace(after);
  EXPECT_EQ(read(file), after);
  EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(ReplacedFile, WithoutACommitTheOldFileStaysAndNothingIsLeftBesideIt) {
  put(file, before);
  { FileReplacement(file).stream() << after; }
  EXPECT_EQ(read(file), before);
  EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(ReplacedFile, PermissionsAreKept) {
  put(file, before);
  ::chmod(file.c_str(), 0640);
  replace(after);
  EXPECT_EQ(statusOf(file).st_mode & 07777, 0640U);
}

TEST_F(ReplacedFile, ANewFileHasThePermissionsOfAnyNewFile) {
  replace(after);
  put(folder / "other", "");
  EXPECT_EQ(statusOf(file).st_mode, statusOf(folder / "other").st_mode);
}

// The mask belongs to all threads of a process: while one looked it up by setting it, another made open files.
TEST_F(ReplacedFile, TheMaskOfTheProcessIsNeverTouched) {
  const mode_t usual = ::umask(0027);
  masksSet = 0;
  replace(after);
  replace(before);
  EXPECT_EQ(masksSet, 0);
  EXPECT_EQ(::umask(usual), 0027U);
  EXPECT_EQ(statusOf(file).st_mode & 07777, 0640U);
}

TEST_F(ReplacedFile, NobodyElseMayReadAReplacementThatIsBeingWritten) {
  put(file, before);
  ::chmod(file.c_str(), 0666);
  FileReplacement replacement(file);
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    EXPECT_TRUE(entry.path() == file || (statusOf(entry.path()).st_mode & 07777) == 0600);
  }
}

TEST_F(ReplacedFile, TheLongestNameIsOne) {
  file = folder / std::string(255, 'n');
  replace(before);
  replace(after);
  EXPECT_EQ(read(file), after);
  EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(ReplacedFile, TheLongestPathIsOne) {
  std::filesystem::path deep = folder;
  while (deep.native().size() + 101 < 4095 - 101) {
    deep /= std::string(100, 'd');
    std::filesystem::create_directory(deep);
  }
  file = deep / std::string(4095 - deep.native().size() - 1, 'n');
  ASSERT_EQ(file.native().size(), 4095U);
  ASSERT_LE(file.filename().native().size(), 255U);
  replace(before);
  replace(after);
  EXPECT_EQ(read(file), after);
}

TEST_F(ReplacedFile, ALoopOfLinksIsRefusedAndStays) {
  std::filesystem::create_symlink("other.dxf", file);
  std::filesystem::create_symlink("plan.dxf", folder / "other.dxf");
  EXPECT_EQ(failureOf(after), file.string() + ": cannot be written: Too many levels of symbolic links");
  EXPECT_TRUE(std::filesystem::is_symlink(file));
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "other.dxf"));
}

TEST_F(ReplacedFile, OtherNamesOfTheFileAreToldAboutBeforeItIsReplaced) {
  put(file, before);
  std::filesystem::create_hard_link(file, folder / "second.dxf");
  std::vector<std::string> told;
  replace(after, {.tell = [&](std::string_view text) {
            told.emplace_back(text);
            EXPECT_EQ(read(file), before);
          }});
  EXPECT_THAT(told, ElementsAre(file.string() + ": the file has 1 more name, which keeps the old content"));
  EXPECT_EQ(read(file), after);
  EXPECT_EQ(read(folder / "second.dxf"), before);
}

TEST_F(ReplacedFile, WhoeverIsToldMayPreventIt) {
  put(file, before);
  std::filesystem::create_hard_link(file, folder / "second.dxf");
  std::filesystem::create_hard_link(file, folder / "third.dxf");
  EXPECT_EQ(
      failureOf(after, {.tell = [](std::string_view text) { throw std::runtime_error(std::string(text)); }}),
      file.string() + ": the file has 2 more names, which keep the old content");
  EXPECT_EQ(read(file), before);
  EXPECT_EQ(filesInFolder(), 3U);
}

TEST_F(ReplacedFile, NothingIsToldOfAFileThatKeepsAll) {
  put(file, before);
  replace(after, {.tell = [](std::string_view text) { ADD_FAILURE() << text; }});
}

TEST_F(ReplacedFile, ALinkStaysALinkAndItsFileIsReplaced) {
  put(folder / "real.dxf", before);
  std::filesystem::create_symlink("real.dxf", file);
  replace(after);
  EXPECT_TRUE(std::filesystem::is_symlink(file));
  EXPECT_EQ(read(folder / "real.dxf"), after);
}

TEST_F(ReplacedFile, AFolderIsNotAFile) {
  std::filesystem::create_directory(file);
  EXPECT_NE(failureOf(after).find("Is a directory"), std::string::npos);
}

TEST_F(ReplacedFile, AMissingFolderIsNamedWithTheFile) {
  file = folder / "no" / "plan.dxf";
  EXPECT_EQ(failureOf(after), file.string() + ": cannot be written: No such file or directory");
}

TEST_F(ReplacedFile, ShortWritesAreContinued) {
  calls = {SystemCalls::Fault::Fails, 1'000'000, EIO};  // arms the short writes, fails none
  replace(after);
  calls = {};
  EXPECT_EQ(read(file), after);
}

// --- others -------------------------------------------------------------------------------------------------------------

TEST_F(ReplacedFile, IsLockedAgainstOthersThatReplaceIt) {
  put(file, before);
  FileReplacement first(file);
  EXPECT_EQ(failureOf("second", {.patience = milliseconds(20)}),
            file.string() + ": cannot be written: another program holds it locked: Device or resource busy");
  first.stream() << after;
  first.commit();
  EXPECT_EQ(read(file), after);
}

TEST_F(ReplacedFile, OthersWaitTheirTurn) {
  put(file, before);
  auto first = std::make_unique<FileReplacement>(file);
  std::thread second([&] { replace("second"); });
  std::this_thread::sleep_for(milliseconds(30));
  first->stream() << after;
  first->commit();
  EXPECT_EQ(read(file), after);
  first.reset();
  second.join();
  EXPECT_EQ(read(file), "second");
  EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(ReplacedFile, ThatMustBeNewIsNotOneThatIsThere) {
  const std::string failure = file.string() + ": cannot be written: File exists";
  put(file, before);
  EXPECT_EQ(failureOf(after, {.onlyNew = true}), failure);
  EXPECT_EQ(read(file), before);
  std::filesystem::remove(file);
  replace(after, {.onlyNew = true});
  EXPECT_EQ(read(file), after);
}

TEST_F(ReplacedFile, ThatMustBeNewIsNotOneThatSomebodyElseMakesMeanwhile) {
  FileReplacement replacement(file, {.onlyNew = true});
  replacement.stream() << after;
  put(file, "somebody else's");
  EXPECT_THROW(replacement.commit(), std::system_error);
  EXPECT_EQ(read(file), "somebody else's");
}

TEST_F(ReplacedFile, ThatMustBeNewIsMadeAlsoWhereRenamingCannotLeaveAFileAlone) {
  for (const int notRenamed : {1, 2}) {
    SCOPED_TRACE(notRenamed);
    // The call that renames comes after all others; the one after it makes the second name.
    calls = {SystemCalls::Fault::Fails, 0, EINVAL};
    replace(after, {.onlyNew = true});
    ASSERT_EQ(calls.names.back(), "fsync") << "of the folder";
    const int rename = calls.made - 1;
    std::filesystem::remove(file);

    calls = {SystemCalls::Fault::Fails, rename, EINVAL};
    replace(after, {.onlyNew = true});
    calls = {};
    EXPECT_EQ(read(file), after);
    EXPECT_EQ(filesInFolder(), 1U);
    std::filesystem::remove(file);
  }
}

TEST_F(ReplacedFile, LeftoversOfAKilledProcessAreGoneAfterTheNext) {
  put(file, before);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    FileReplacement replacement(file);
    replacement.stream() << after << std::flush;
    ::kill(::getpid(), SIGKILL);
  }
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(filesInFolder(), 2U);
  replace(after);
  EXPECT_EQ(filesInFolder(), 1U);
}

// --- faults -------------------------------------------------------------------------------------------------------------

// A file with all that a file can have here: more than one owner's rights, an attribute, a list of further users.
class ReplacedFileWithFaults : public ReplacedFile {
 protected:
  static constexpr const char* list = "system.posix_acl_access";

  void putOld() const {
    put(file, before);
    ::chmod(file.c_str(), 0640);
    ::setxattr(file.c_str(), "user.origin", "survey", 6, 0);
    // Owner: all but running; user 1: reading; group: nothing; at most: reading; others: nothing.
    constexpr unsigned char entries[] = {
        2,  0, 0, 0,                                                       //
        1,  0, 6, 0, 255, 255, 255, 255, 2,  0, 4, 0, 1,   0,   0,   0,    //
        4,  0, 0, 0, 255, 255, 255, 255, 16, 0, 4, 0, 255, 255, 255, 255,  //
        32, 0, 0, 0, 255, 255, 255, 255,
    };
    ::setxattr(file.c_str(), list, entries, sizeof(entries), 0);
    EXPECT_TRUE(::geteuid() != 0 || ::chown(file.c_str(), 1, 1) == 0);
  }
  std::map<std::string, std::string> belongings() const {
    const struct stat status = statusOf(file);
    std::map<std::string, std::string> found = {{"owner", std::to_string(status.st_uid)},
                                                {"group", std::to_string(status.st_gid)},
                                                {"mode", std::to_string(status.st_mode)}};
    for (const char* const name : {"user.origin", list}) {
      std::string value(1000, '\0');
      const ssize_t length = ::getxattr(file.c_str(), name, value.data(), value.size());
      if (length >= 0) found[name] = value.substr(0, static_cast<std::size_t>(length));
    }
    return found;
  }

  // Fails the first call, then the second, and so on until a replacement goes through.
  void failEach(int error) {
    putOld();
    const auto all = belongings();
    for (int n = 1;; ++n) {
      std::filesystem::remove(file);
      putOld();
      std::vector<std::string> told;
      calls = {SystemCalls::Fault::Fails, n, error};
      const std::string failure =
          failureOf(after, {.tell = [&](std::string_view text) { told.emplace_back(text); }});
      const SystemCalls made = std::exchange(calls, {});
      SCOPED_TRACE(std::to_string(n) + ": " + made.names.back());
      EXPECT_EQ(filesInFolder(), 1U);
      if (made.made < n) {
        EXPECT_EQ(failure, "no failure");
        EXPECT_GT(n, 12);
        break;
      }
      EXPECT_TRUE(failure == "no failure" || failure.starts_with(file.string() + ": cannot be written: "))
          << failure;
      EXPECT_EQ(read(file), failure == "no failure" ? after : before);
      // Nothing goes missing in silence, and the list of those who may read it not at all.
      if (failure != "no failure" || told.empty()) {
        EXPECT_EQ(belongings(), all);
      }
      EXPECT_EQ(belongings()[list], std::map(all)[list]);
      EXPECT_EQ(statusOf(file).st_mode & 07, 0U);
    }
  }

  // Ends the process at the first call, then at the second, and so on.
  void killAtEach(const ReplacementOptions& options) {
    int old = 0, renewed = 0;
    for (int n = 1;; ++n) {
      SCOPED_TRACE(n);
      std::filesystem::remove(file);
      if (!options.onlyNew) putOld();
      const pid_t child = ::fork();
      ASSERT_GE(child, 0);
      if (child == 0) {
        calls = {SystemCalls::Fault::Killed, n, 0};
        replace(after, options);
        ::_exit(0);
      }
      int status = 0;
      ASSERT_EQ(::waitpid(child, &status, 0), child);
      const std::string now = read(file);
      EXPECT_TRUE(now == after || (options.onlyNew ? !exists(file) : now == before))
          << now.size() << " bytes";
      ++(now == after ? renewed : old);
      EXPECT_TRUE(options.onlyNew || (statusOf(file).st_mode & 07) == 0);
      if (WIFEXITED(status)) {
        EXPECT_EQ(WEXITSTATUS(status), 0);
        break;
      }
      EXPECT_EQ(WTERMSIG(status), SIGKILL);
      replace(after);
      EXPECT_EQ(filesInFolder(), 1U) << "the next one clears what this one left";
    }
    EXPECT_GT(old, 8);
    EXPECT_GE(renewed, 2) << "killed after the rename, and not at all";
  }
};

TEST_F(ReplacedFileWithFaults, LeaveTheOldFileAndNothingBesideItWhicheverCallFails) {
  for (const int error : {ENOSPC, EPERM, EIO}) {
    SCOPED_TRACE(error);
    failEach(error);
  }
}

TEST_F(ReplacedFileWithFaults, LeaveTheOldOrTheNewFileWholeWhereverTheProcessIsKilled) {
  killAtEach({});
}

TEST_F(ReplacedFileWithFaults, LeaveNoFileOrTheNewOneWholeWhereverTheProcessIsKilled) {
  killAtEach({.onlyNew = true});
}

// The name must not be on the disk before what it stands for.
TEST_F(ReplacedFile, IsOnTheDiskBeforeItTakesItsPlaceAndItsNameAfterwards) {
  put(file, before);
  calls = {SystemCalls::Fault::Fails, 0, EIO};
  replace(after);
  std::vector<std::string> last = std::exchange(calls, {}).names;
  last.erase(std::remove_if(last.begin(), last.end(),
                            [](const std::string& name) { return name != "fsync" && name != "renameat"; }),
             last.end());
  EXPECT_THAT(last, ElementsAre("fsync", "renameat", "fsync"));
}

// The kernel's own refusal in the middle of a file.
TEST_F(ReplacedFile, AFileThatMayNotGrowFurtherIsAFullDisk) {
  put(file, before);
  testing::inChild([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100'000, 100'000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_THAT(failureOf(after), HasSubstr("File too large"));
  });
  EXPECT_EQ(read(file), before);
  EXPECT_EQ(filesInFolder(), 1U);
}

// --- on file systems of their own -----------------------------------------------------------------------------------

class ReplacedFileElsewhere : public ReplacedFileWithFaults {
 protected:
  void SetUp() override {
    if (!testing::hasNamespaces(folder)) GTEST_SKIP() << "the machine allows no mount namespaces";
  }
};

TEST_F(ReplacedFileElsewhere, AFullDiskLeavesTheOldFileAndNothingBesideIt) {
  testing::inChild([&] {
    ASSERT_TRUE(testing::leaveForNamespace() && testing::mountMemory(folder, "size=600k"));
    put(file, before);
    EXPECT_EQ(failureOf(after), file.string() + ": cannot be written: No space left on device");
    EXPECT_EQ(read(file), before);
    EXPECT_EQ(filesInFolder(), 1U);
  });
}

TEST_F(ReplacedFileElsewhere, ADiskThatMayOnlyBeReadRefuses) {
  testing::inChild([&] {
    ASSERT_TRUE(testing::leaveForNamespace() && testing::mountMemory(folder, "size=2m"));
    put(file, before);
    ASSERT_EQ(::mount(nullptr, folder.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(failureOf(after), file.string() + ": cannot be written: Read-only file system");
    EXPECT_EQ(read(file), before);
  });
}

// Another file system stands at the file itself, as containers get single files.
TEST_F(ReplacedFileElsewhere, AFileThatIsMountedIsNotReplacedAndNothingIsLeftBesideIt) {
  testing::inChild([&] {
    put(folder / "real.dxf", before);
    put(file, "");
    ASSERT_TRUE(testing::leaveForNamespace());
    ASSERT_EQ(::mount((folder / "real.dxf").c_str(), file.c_str(), nullptr, MS_BIND, nullptr), 0);
    EXPECT_EQ(failureOf(after), file.string() + ": cannot be written: Device or resource busy");
    EXPECT_EQ(read(file), before);
    EXPECT_EQ(filesInFolder(), 2U);
  });
}

TEST_F(ReplacedFileElsewhere, FaultsAndKillsDoNoMoreHarmThanOnTheUsualOne) {
  testing::inChild([&] {
    ASSERT_TRUE(testing::leaveForNamespace() && testing::mountMemory(folder, "size=8m"));
    failEach(ENOSPC);
    killAtEach({});
    std::filesystem::remove(file);
    killAtEach({.onlyNew = true});
  });
}

// --- documents ----------------------------------------------------------------------------------------------------------

class SavedDocument : public ReplacedFile {
 protected:
  SavedDocument() { put(file, drawing("Walls")); }

  static std::string drawing(const std::string& layer) {
    return testing::entities({"0|LINE", "5|A1", "8|" + layer, "10|0.0", "20|0.0"});
  }
  static void setLayer(Document& document, const std::string& layer) {
    for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
      if (document.type(record) == "LINE") document.set(record, 8, anySubclass, layer);
    }
  }
  std::string failureOfSaving(Document& document, const std::filesystem::path& to) const {
    try {
      save(document, to);
    } catch (const FileChanged& changed) {
      return changed.what();
    }
    return "no failure";
  }
};

TEST_F(SavedDocument, IsWhatWasReadWhenNothingWasEdited) {
  const std::string bytes = velt::samples::sampleFloorPlan();
  Document document = Document::parse(bytes, "plan");
  save(document, file);
  EXPECT_EQ(read(file), bytes);
}

TEST_F(SavedDocument, IsNotWrittenOverSomebodyElsesChange) {
  Document document = Document::open(file);
  setLayer(document, "Doors");
  put(file, drawing("Roofs"));
  EXPECT_EQ(failureOfSaving(document, file), file.string() + ": has been changed since it was read");
  EXPECT_EQ(read(file), drawing("Roofs"));
  EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(SavedDocument, IsNotWrittenOverAnotherFileThatTookThePlace) {
  Document document = Document::open(file);
  setLayer(document, "Doors");
  put(folder / "other", drawing("Roofs"));
  std::filesystem::rename(folder / "other", file);
  EXPECT_EQ(failureOfSaving(document, file), file.string() + ": has been changed since it was read");
  EXPECT_EQ(read(file), drawing("Roofs"));
}

TEST_F(SavedDocument, DoesNotComeBackWhereSomebodyElseHasRemovedIt) {
  Document document = Document::open(file);
  std::filesystem::remove(file);
  EXPECT_EQ(failureOfSaving(document, file), file.string() + ": has been removed since it was read");
  EXPECT_EQ(filesInFolder(), 0U);
}

TEST_F(SavedDocument, IsWrittenOverEveryChangeWhenAskedTo) {
  Document document = Document::open(file);
  setLayer(document, "Doors");
  put(file, drawing("Roofs"));
  save(document, file, {.overwriteChanges = true});
  EXPECT_EQ(read(file), drawing("Doors"));
  std::filesystem::remove(file);
  save(document, file, {.overwriteChanges = true});
  EXPECT_EQ(read(file), drawing("Doors"));
}

TEST_F(SavedDocument, IsNotWrittenOverAChangeWhileItIsSaved) {
  Document document = Document::open(file);
  const FileState state = *document.knownFiles().find(file);
  FileReplacement replacement(file, {.expected = &state});
  replacement.stream() << after;
  put(file, drawing("Roofs"));
  EXPECT_THROW(replacement.commit(), FileChanged);
  EXPECT_EQ(read(file), drawing("Roofs"));
}

TEST_F(SavedDocument, IsNotWrittenOverAFileThatTookThePlaceWhileItIsSaved) {
  Document document = Document::open(file);
  const FileState state = *document.knownFiles().find(file);
  FileReplacement replacement(file, {.expected = &state});
  replacement.stream() << after;
  put(folder / "other", drawing("Roofs"));
  std::filesystem::rename(folder / "other", file);
  EXPECT_THROW(replacement.commit(), FileChanged);
  EXPECT_EQ(read(file), drawing("Roofs"));
}

TEST_F(SavedDocument, MayBeSavedAgain) {
  Document document = Document::open(file);
  for (const std::string layer : {"Doors", "Windows", "Roofs"}) {
    setLayer(document, layer);
    EXPECT_EQ(failureOfSaving(document, file), "no failure");
    EXPECT_EQ(read(file), drawing(layer));
  }
  put(file, drawing("Walls"));
  EXPECT_EQ(failureOfSaving(document, file), file.string() + ": has been changed since it was read");
}

TEST_F(SavedDocument, IsProtectedInEveryFileThatItWasSavedTo) {
  Document document = Document::open(file);
  const std::filesystem::path second = folder / "second.dxf";
  save(document, second);
  setLayer(document, "Doors");
  EXPECT_EQ(failureOfSaving(document, second), "no failure");
  EXPECT_EQ(failureOfSaving(document, file), "no failure");
  put(second, drawing("Roofs"));
  EXPECT_EQ(failureOfSaving(document, second), second.string() + ": has been changed since it was read");
}

TEST_F(SavedDocument, ReplacesAFileThatItHasNothingToDoWith) {
  Document document = Document::open(file);
  put(folder / "other", "anything");
  EXPECT_EQ(failureOfSaving(document, folder / "other"), "no failure");
  EXPECT_EQ(read(folder / "other"), drawing("Walls"));
}

TEST_F(SavedDocument, IsProtectedBehindALinkAndByItsOtherPaths) {
  std::filesystem::create_symlink("plan.dxf", folder / "link.dxf");
  Document document = Document::open(folder / "link.dxf");
  put(file, drawing("Roofs"));
  EXPECT_NE(failureOfSaving(document, folder / "link.dxf"), "no failure");
  EXPECT_NE(failureOfSaving(document, file), "no failure");
  EXPECT_EQ(read(file), drawing("Roofs"));
}

TEST_F(SavedDocument, WhoseFileCannotBeComparedIsNotSaved) {
  Document document = Document::open(file);
  calls = {SystemCalls::Fault::Fails, 2, EIO};  // the first call locks, the second one reads
  EXPECT_THROW(save(document, file), std::system_error);
  EXPECT_EQ(calls.names.back(), "pread");
  calls = {};
  EXPECT_EQ(read(file), drawing("Walls"));
}

TEST_F(SavedDocument, ThatWasReadFromAPipeHasNoFile) {
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::thread writer([&] { put(folder / "pipe", drawing("Walls")); });
  Document document = Document::open(folder / "pipe");
  writer.join();
  EXPECT_EQ(document.knownFiles().find(folder / "pipe"), nullptr);
}

}  // namespace
}  // namespace velt::dxf
