#pragma once

// What was reported to the crash recorder, for tests and tools to read.
//
// Threads: every function and the recorder itself may be called on every thread.
// Failure: reports beyond the first ten thousand, and those for which there is no memory, are counted and dropped.

#include <cstddef>
#include <string>
#include <vector>

#include "host/platform/CrashRecorder.h"

namespace velt::platform {

struct CrashReport {
  Velt::ErrorStatus status;         // eInvalidInput for a report that carried no error
  std::vector<std::wstring> notes;  // what was noted since the report before
};

class CrashReports {
 public:
  // Hands over what was collected and forgets it.
  [[nodiscard]] static std::vector<CrashReport> take();
  static void clear();
  [[nodiscard]] static std::size_t dropped();

  // Off: veltGetCrashRecorder returns null from now on, as in a host that records nothing.
  static void setRecording(bool on);
};

}  // namespace velt::platform
