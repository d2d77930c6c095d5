#pragma once

// Failures that an operation cannot return go to the host's crash recorder, and the operation carries on.
//
// Inline, because the vector uses it and is compiled into every program that uses the layer: so such a program needs
// only the symbols of the host and those that the layer exports.

#include <new>

#include "host/platform/CrashRecorder.h"

namespace velt::errors {

// Never throws; the recorder may be missing.
inline void reportToCrashRecorder(Velt::ErrorStatus status) {
  TqErrorStatus* const error = new (std::nothrow) TqErrorStatus(status);
  VeltCrashRecorder* const recorder = veltGetCrashRecorder();
  if (recorder != nullptr && error != nullptr) recorder->report(error);
  delete error;
}

}  // namespace velt::errors
