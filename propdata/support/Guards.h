#pragma once

// Exceptions become results at the edge of exported functions. New code uses errors/Guard.h.

#include "errors/Guard.h"
#include "propdata/support/Lists.h"

namespace velt::propdata {

using ListIsFull = errors::ReportedShortage;

// How many guarded operations this thread is in: exported operations call each other, and the outermost one
// answers for all.
inline thread_local int guardDepth = 0;

// Exhausted memory ends the operation with its failure value; the crash recorder has status 6.
template <class Result, class Operation>
Result orOnNoMemory(Result failure, Operation operation) {
  struct Depth {
    Depth() { ++guardDepth; }
    ~Depth() { --guardDepth; }
  } const depth;
  if (guardDepth > 1) return operation();
  return errors::guardedFromShortage(failure, operation);
}

template <class Operation>
void orNothingOnNoMemory(Operation operation) {
  orOnNoMemory(0, [&] {
    operation();
    return 0;
  });
}

// A _com_error ends the operation with false, its description becomes the message; exhausted memory likewise,
// without a message.
template <class Operation>
bool orMessageOnComError(CStdStr<wchar_t>& errorText, Operation operation) {
  return orOnNoMemory(false, [&] {
    try {
      return operation();
    } catch (const _com_error& error) {
      errorText = CStdStr<wchar_t>(error.Description());
      return false;
    }
  });
}

}  // namespace velt::propdata
