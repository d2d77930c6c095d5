#pragma once

// The host's crash recorder, for its crash reports. The layer's vector reports there what it cannot answer: 2 the last
// element of an empty vector, 6 no memory, 24 an index out of range. It then carries on.
//
// Threads: vectors may be used on any thread, so the recorder may be called on any thread.

#include "host/platform/ErrorStatus.h"

// What went wrong. The layer makes one for each report, and deletes it after the call.
class TqErrorStatus {
 public:
  // Called by: every operation, when memory runs out; and by vectors that are used wrongly.
  explicit TqErrorStatus(Velt::ErrorStatus status);
  virtual ~TqErrorStatus();
  // As it was made with.
  virtual Velt::ErrorStatus status() const;

 private:
  Velt::ErrorStatus status_;
};

// An interface without IUnknown: callers count on report being the third entry of the function table. The layer calls
// no other.
struct VeltCrashRecorder {
  // Of the host's own use.
  virtual void addNote(const wchar_t* note) = 0;
  virtual void flush() = 0;
  // Keeps nothing of its argument.
  virtual void report(const TqErrorStatus* error) = 0;
};

// Null when the host records nothing. The recorder stays the host's.
VeltCrashRecorder* veltGetCrashRecorder();
