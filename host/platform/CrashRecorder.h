#pragma once

// The host's crash recorder: failures that cannot be returned are reported there and the caller carries on.

#include "host/platform/ErrorStatus.h"

class TqErrorStatus {
 public:
  explicit TqErrorStatus(Velt::ErrorStatus status);
  virtual ~TqErrorStatus();
  virtual Velt::ErrorStatus status() const;

 private:
  Velt::ErrorStatus status_;
};

struct VeltCrashRecorder {
  virtual void addNote(const wchar_t* note) = 0;
  virtual void flush() = 0;
  virtual void report(const TqErrorStatus* error) = 0;  // keeps nothing of its argument
};

VeltCrashRecorder* veltGetCrashRecorder();  // null when the host records nothing
