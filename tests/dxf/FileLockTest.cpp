#include "dxf/FileLock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "dxf/Descriptor.h"
#include "tests/dxf/Folders.h"

namespace velt::dxf {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

class FileLock : public testing::FolderTest {
 protected:
  Descriptor opened() const { return Descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)); }
};

TEST_F(FileLock, IsHeldByOneAtATime) {
  Descriptor first = opened();
  const Descriptor second = opened();
  EXPECT_EQ(tryLock(first.get()), Locked::ByUs);
  EXPECT_EQ(tryLock(second.get()), Locked::ByAnother);
  first = Descriptor();
  EXPECT_EQ(tryLock(second.get()), Locked::ByUs);
}

TEST_F(FileLock, IsWaitedForUntilTheDeadline) {
  const Descriptor first = opened();
  const Descriptor second = opened();
  ASSERT_EQ(tryLock(first.get()), Locked::ByUs);
  const auto deadline = Clock::now() + milliseconds(50);
  EXPECT_EQ(lock(second.get(), deadline), Locked::ByAnother);
  EXPECT_GE(Clock::now(), deadline);
}

TEST_F(FileLock, IsTakenAsSoonAsItIsFree) {
  Descriptor first = opened();
  const Descriptor second = opened();
  ASSERT_EQ(tryLock(first.get()), Locked::ByUs);
  std::thread other([&] {
    std::this_thread::sleep_for(milliseconds(20));
    first = Descriptor();
  });
  EXPECT_EQ(lock(second.get(), Clock::now() + std::chrono::minutes(1)), Locked::ByUs);
  other.join();
}

TEST_F(FileLock, EndsWithTheProcessThatHeldIt) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const Descriptor held = opened();
    const char isHeld = tryLock(held.get()) == Locked::ByUs ? 'y' : 'n';
    if (::write(ready[1], &isHeld, 1) == 1) ::pause();
    ::_exit(1);
  }
  char isHeld = 'n';
  ASSERT_EQ(::read(ready[0], &isHeld, 1), 1);
  EXPECT_EQ(isHeld, 'y');
  const Descriptor mine = opened();
  EXPECT_EQ(tryLock(mine.get()), Locked::ByAnother);
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(tryLock(mine.get()), Locked::ByUs);
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST_F(FileLock, OfNoFileIsNever) {
  EXPECT_EQ(tryLock(-1), Locked::Never);
  EXPECT_EQ(lock(-1, Clock::now() + std::chrono::minutes(1)), Locked::Never);
}

}  // namespace
}  // namespace velt::dxf
