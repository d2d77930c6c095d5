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
  // eInvalidInput for a report that carried no error.
  Velt::ErrorStatus status;
  // What was noted since the report before this one.
  std::vector<std::wstring> notes;
};

class CrashReports {
 public:
  // Hands over what was collected and forgets it.
  [[nodiscard]] static std::vector<CrashReport> take();
  static void clear();
  [[nodiscard]] static std::size_t dropped();

  // When off, veltGetCrashRecorder answers null, as in a host that records nothing.
  static void setRecording(bool on);
};

}  // namespace velt::platform
