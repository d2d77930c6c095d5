#pragma once

// The guard at the edge of an exported function.
//
// An exported function is an edge: inside one guard it calls its core, an ordinary function of the same folder, and the
// guard turns what is thrown into what the function promises. Cores call cores, never exported functions, so a failure
// ends the whole operation and not a part of it. A host that calls the layer again from inside one of its own methods
// meets an edge again: nothing thrown crosses a frame of the host.
//
// All calls come from one thread, the palette's: in debug builds the guard asserts that it is the one of the first call.
//
// Exhausted memory gives the failure value, and the crash recorder gets status 6. A _com_error of the host gives the
// failure value too; its description becomes the message of a function that has an error text.

#include <cassert>
#include <new>
#include <utility>

#include "errors/CrashReport.h"
#include "host/com/ComError.h"
#include "text/CStdStr.h"

namespace velt::errors {

// No memory, and the crash recorder knows already: containers report for themselves.
struct ReportedShortage : std::bad_alloc {};

// Whether this is the thread on which this was asked first.
bool isPaletteThread();

void takeDescription(const _com_error& error, CStdStr<wchar_t>& errorText);

// For a function that lets the host's exceptions pass: guards against exhausted memory only.
template <class Result, class Core>
Result guardedFromShortage(Result failure, Core&& core) {
  assert(isPaletteThread());
  try {
    return std::forward<Core>(core)();
  } catch (const ReportedShortage&) {
    return failure;
  } catch (const std::bad_alloc&) {
    reportToCrashRecorder(Velt::eOutOfMemory);
    return failure;
  }
}

template <class Result, class Core>
Result guarded(Result failure, Core&& core) {
  return guardedFromShortage(failure, [&]() -> Result {
    try {
      return std::forward<Core>(core)();
    } catch (const _com_error&) {
      return failure;
    }
  });
}

template <class Result, class Core>
Result guarded(Result failure, CStdStr<wchar_t>& errorText, Core&& core) {
  return guardedFromShortage(failure, [&]() -> Result {
    try {
      return std::forward<Core>(core)();
    } catch (const _com_error& error) {
      takeDescription(error, errorText);
      return failure;
    }
  });
}

template <class Core>
void guarded(Core&& core) {
  guarded(false, [&] {
    std::forward<Core>(core)();
    return true;
  });
}

}  // namespace velt::errors
