#include "dxf/FileLock.h"

#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace velt::dxf {

Locked tryLock(int descriptor) {
  while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return Locked::ByAnother;
    if (errno != EINTR) return Locked::Never;
  }
  return Locked::ByUs;
}

// Asks again and again: the system's own waiting knows no deadline.
Locked lock(int descriptor, std::chrono::steady_clock::time_point deadline) {
  using std::chrono::milliseconds;
  constexpr milliseconds longestPause{20};
  for (milliseconds pause{1};; pause = std::min(2 * pause, longestPause)) {
    const Locked result = tryLock(descriptor);
    if (result != Locked::ByAnother || std::chrono::steady_clock::now() >= deadline) return result;
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace velt::dxf
