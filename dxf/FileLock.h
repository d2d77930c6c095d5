#pragma once

// Locks on open files that the kernel gives back when the descriptor is closed and when the process ends, however it
// ends. They bind those who ask for them, nobody else.

#include <chrono>

namespace velt::dxf {

enum class Locked {
  ByUs,
  ByAnother,
  // The file system has no locks.
  Never,
};

// Does not wait.
[[nodiscard]] Locked tryLock(int descriptor);
// Waits for whoever holds the lock, until the deadline.
[[nodiscard]] Locked lock(int descriptor, std::chrono::steady_clock::time_point deadline);

}  // namespace velt::dxf
