#pragma once

// What stands at the edge of exported functions: exceptions become results there, in one way for all.

#include <algorithm>
#include <cstdint>
#include <new>
#include <span>

#include "container/TqVector.h"
#include "errors/CrashReport.h"
#include "host/com/ComError.h"
#include "text/CStdStr.h"

namespace velt::propdata {

// Thrown when a list could not take an element; the container has already reported it.
struct ListIsFull : std::bad_alloc {};

template <class T>
void mustAppend(TqVector<T>& list, const T& element) {
  const auto before = list.length();
  list.append(element);
  if (list.length() == before) throw ListIsFull();
}

// Makes room for so many elements in all; by halves, because a vector grows by no more than it is asked for.
template <class T>
void reserve(TqVector<T>& list, std::uint32_t elements) {
  const std::uint32_t physical = list.physicalLength();
  if (elements <= physical) return;
  if (!list.setPhysicalLength(std::max(elements, physical + physical / 2))) throw ListIsFull();
}

// The elements to write to. Not begin() and end(), each of which gives a shared list a block of its own: with memory
// short, one may succeed after the other failed, and the two then point into different blocks.
template <class T>
std::span<T> writable(TqVector<T>& list) {
  if (!list.copyBeforeWrite()) throw ListIsFull();
  return {list.begin(), list.length()};
}

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
  try {
    return operation();
  } catch (const ListIsFull&) {
    return failure;
  } catch (const std::bad_alloc&) {
    velt::errors::reportToCrashRecorder(Velt::eOutOfMemory);
    return failure;
  }
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
