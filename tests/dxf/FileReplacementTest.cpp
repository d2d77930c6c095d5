#include "dxf/FileReplacement.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include "dxf/Document.h"
#include "samples/FloorPlan.h"

namespace {

// The calls to the system while a file is replaced. The functions below take the place of the C library's in this
// process; when armed, the n-th call ends the process or fails.
struct SystemCalls {
  enum class Fault { None, Killed, Fails };
  Fault fault = Fault::None;
  int at = 0;
  int error = 0;
  int made = 0;

  // True when the call is to fail.
  bool next() {
    if (fault == Fault::None || ++made != at) return false;
    if (fault == Fault::Killed) ::kill(::getpid(), SIGKILL);
    errno = error;
    return true;
  }
};
SystemCalls calls;

template <class Function>
Function original(const char* name) {
  return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {
ssize_t write(int descriptor, const void* bytes, size_t count) {
  static const auto real = original<ssize_t (*)(int, const void*, size_t)>("write");
  if (calls.next()) return -1;
  // Less than asked for, as the system may: whoever writes has to go on.
  return real(descriptor, bytes, calls.fault == SystemCalls::Fault::None ? count : (count + 1) / 2);
}
int fsync(int descriptor) {
  static const auto real = original<int (*)(int)>("fsync");
  return calls.next() ? -1 : real(descriptor);
}
int rename(const char* from, const char* to) noexcept {
  static const auto real = original<int (*)(const char*, const char*)>("rename");
  return calls.next() ? -1 : real(from, to);
}
}

namespace velt::dxf {
namespace {

class ReplacedFile : public testing::Test {
 protected:
  ReplacedFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velt-save-XXXXXX").string();
    folder = ::mkdtemp(pattern.data());
    file = folder / "plan.dxf";
  }
  ~ReplacedFile() override {
    calls = {};
    std::filesystem::remove_all(folder);
  }

  static std::string read(const std::filesystem::path& from) {
    std::ostringstream bytes;
    bytes << std::ifstream(from, std::ios::binary).rdbuf();
    return bytes.str();
  }
  static void put(const std::filesystem::path& to, const std::string& bytes) {
    std::ofstream(to, std::ios::binary) << bytes;
  }
  void replace(const std::string& bytes) const {
    FileReplacement replacement(file);
    replacement.stream() << bytes;
    replacement.commit();
  }
  std::string failureOf(const std::string& bytes) const {
    try {
      replace(bytes);
    } catch (const std::system_error& error) {
      return error.what();
    }
    return "no failure";
  }
  std::size_t filesInFolder() const {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder))
      ++count;
    return count;
  }

  std::filesystem::path folder;
  std::filesystem::path file;
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
  struct stat now {};
  ::stat(file.c_str(), &now);
  EXPECT_EQ(now.st_mode & 07777, 0640U);
}

TEST_F(ReplacedFile, ANewFileHasThePermissionsOfAnyNewFile) {
  replace(after);
  put(folder / "other", "");
  struct stat made {
  }, other{};
  ::stat(file.c_str(), &made);
  ::stat((folder / "other").c_str(), &other);
  EXPECT_EQ(made.st_mode, other.st_mode);
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

TEST_F(ReplacedFile, WhicheverCallFailsTheOldFileStaysAndNothingIsLeftBesideIt) {
  for (int n = 1;; ++n) {
    SCOPED_TRACE(n);
    put(file, before);
    calls = {SystemCalls::Fault::Fails, n, ENOSPC};
    const std::string failure = failureOf(after);
    const bool wasReached = calls.made >= n;
    calls = {};
    EXPECT_EQ(filesInFolder(), 1U);
    if (!wasReached) {
      EXPECT_EQ(failure, "no failure");
      EXPECT_GT(n, 8);
      break;
    }
    // The folder's own flush comes last, when the new file is in its place already.
    if (failure == "no failure") {
      EXPECT_EQ(read(file), after);
      continue;
    }
    EXPECT_EQ(failure, file.string() + ": cannot be written: No space left on device");
    EXPECT_EQ(read(file), before);
  }
}

TEST_F(ReplacedFile, AProcessKilledAtAnyCallLeavesTheOldOrTheNewFileWhole) {
  int old = 0, renewed = 0;
  for (int n = 1;; ++n) {
    SCOPED_TRACE(n);
    put(file, before);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      calls = {SystemCalls::Fault::Killed, n, 0};
      replace(after);
      ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    const std::string now = read(file);
    EXPECT_TRUE(now == before || now == after) << now.size() << " bytes";
    ++(now == before ? old : renewed);
    if (WIFEXITED(status)) break;
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
  }
  EXPECT_GT(old, 8);
  EXPECT_GE(renewed, 2) << "killed after the rename, and not at all";
}

// The kernel's own refusal in the middle of a file, as a full disk gives it.
TEST_F(ReplacedFile, AFileThatMayNotGrowFurtherIsAFullDisk) {
  put(file, before);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100'000, 100'000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(failureOf(after).find("File too large") != std::string::npos ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(read(file), before);
  EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(ReplacedFile, ASavedDocumentIsWhatWasReadWhenNothingWasEdited) {
  const std::string bytes = velt::samples::sampleFloorPlan();
  save(Document::parse(bytes, "plan"), file);
  EXPECT_EQ(read(file), bytes);
}

}  // namespace
}  // namespace velt::dxf
