#pragma once

// Folders and processes of their own, for tests of what happens to files.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace velt::dxf::testing {

inline std::string readFile(const std::filesystem::path& from) {
  std::ifstream file(from, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
inline void putFile(const std::filesystem::path& to, const std::string& bytes) {
  std::ofstream(to, std::ios::binary) << bytes;
}
inline struct stat statusOf(const std::filesystem::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) ADD_FAILURE() << file << " is not there";
  return status;
}
inline std::size_t filesIn(const std::filesystem::path& folder) {
  const std::filesystem::directory_iterator all(folder);
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// A folder that goes with the test, and a file's name in it.
class FolderTest : public ::testing::Test {
 protected:
  FolderTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velt-files-XXXXXX").string();
    folder = ::mkdtemp(pattern.data());
    file = folder / "plan.dxf";
  }
  ~FolderTest() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  std::filesystem::path folder;
  std::filesystem::path file;
};

// --- processes ----------------------------------------------------------------------------------------------------------

// Ends the child: expectations that fail are told by the parent.
template <class Body>
[[noreturn]] void runAsChild(Body&& body) {
  int result = 1;
  try {
    body();
    result = ::testing::Test::HasFailure() ? 1 : 0;
  } catch (const std::exception& error) {
    std::cerr << "in the child: " << error.what() << std::endl;
  }
  std::cout.flush();
  ::_exit(result);
}

// Runs it in a child process and waits; expectations inside count.
template <class Body>
void inChild(Body&& body) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) runAsChild(body);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "in the child, see above";
}

// --- what a test needs of the machine ------------------------------------------------------------------------------

// From here on the process is in a mount namespace of its own, in which it may mount; without root in a user namespace
// of its own as well. For children only.
inline bool leaveForNamespace() {
  const auto put = [](const char* file, const std::string& text) {
    const int descriptor = ::open(file, O_WRONLY | O_CLOEXEC);
    const bool isPut = descriptor >= 0 && ::write(descriptor, text.data(), text.size()) > 0;
    if (descriptor >= 0) ::close(descriptor);
    return isPut;
  };
  const std::string user = std::to_string(::geteuid());
  const std::string group = std::to_string(::getegid());
  const bool isRoot = ::geteuid() == 0;
  if (::unshare(isRoot ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  if (!isRoot
      && !(put("/proc/self/setgroups", "deny") && put("/proc/self/uid_map", "0 " + user + " 1")
           && put("/proc/self/gid_map", "0 " + group + " 1")))
    return false;
  return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// An empty file system of that size over the folder; after leaveForNamespace().
inline bool mountMemory(const std::filesystem::path& folder, const std::string& options) {
  return ::mount("velt", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

// Whether the machine allows the two above.
inline bool hasNamespaces(const std::filesystem::path& folder) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(leaveForNamespace() && mountMemory(folder, "size=1m") ? 0 : 1);
  int status = 0;
  return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace velt::dxf::testing
