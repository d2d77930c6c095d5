#pragma once

// The policies of TqVector: how elements are allocated and copied, how references are counted, how a vector grows.

#include <cstdint>
#include <new>
#include <type_traits>

#include "errors/CrashReport.h"
#include "host/platform/Interlocked.h"

// Arrays of default-constructed elements: every allocated slot holds an element, whether it is used or not. Without
// memory, alloc reports status 6 and answers null.
template <class T>
struct TqDefaultMemAllocator {
  static T* alloc(std::uint32_t count) {
    if (count < 1) return nullptr;
    try {
      return new T[count]();
    } catch (const std::bad_alloc&) {
      velt::errors::reportToCrashRecorder(Velt::eOutOfMemory);
      return nullptr;
    }
  }
  static void dealloc(T* elements) { delete[] elements; }
};

struct TqRefCounter {
  static void addReference(std::int32_t& count) { tqInterlockedIncrement(&count); }
  static bool releaseIsLast(std::int32_t& count) { return tqInterlockedDecrement(&count) == 0; }
  static std::int32_t read(std::int32_t& count) { return tqInterlockedExchangeAdd(&count, 0); }
};

struct TqVectorDefaultGrowPolicy {
  static constexpr std::uint32_t defaultGrowCount = 8;

  // QUIRK(linear_growth): a vector grows by its grow count, never geometrically. Callers read the physical
  // lengths and reserve what they know to need.
  static constexpr std::uint32_t growCount(std::uint32_t logical, std::uint32_t physical,
                                           std::uint32_t requested, std::uint32_t growCount) {
    const std::uint32_t grown = logical + growCount;
    if (requested == 0) return grown;
    if (requested < physical) return physical;
    return grown <= requested ? requested : grown;
  }
};

template <class T>
struct TqPodTypeConstructor {
  static void assign(T* destination, const T* source, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i)
      destination[i] = source[i];
  }
};

template <class T>
struct TqObjectTypeConstructor {
  static void assign(T* destination, const T* source, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i)
      destination[i] = source[i];
  }
};

template <class T>
using TqElementConstructor =
    std::conditional_t<std::is_scalar_v<T>, TqPodTypeConstructor<T>, TqObjectTypeConstructor<T>>;
