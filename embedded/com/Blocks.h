#pragma once

// How strings and task memory lie in blocks of the host, for the runtime's functions and for whoever makes many of them:
// a query asks for the labels of points again and again, a hundred strings for each line, and calls cost more than the
// copying.
//
// Whatever is made here is given back by SysFreeString and CoTaskMemFree.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/Ledger.h"
#include "host/com/Bstr.h"

namespace velt::com {

// What stands before the characters: the number of their bytes. It is as wide as a character, so both are aligned when
// the block is.
using StringPrefix = std::uint32_t;
static_assert(sizeof(StringPrefix) == sizeof(OLECHAR));

// With the terminator. Where the last character is partly filled, the terminator is the whole one after it.
constexpr std::uint64_t charactersFor(std::uint64_t bytes) noexcept {
  return (bytes + sizeof(OLECHAR) - 1) / sizeof(OLECHAR) + 1;
}

constexpr std::size_t stringBlockFor(std::uint64_t bytes) noexcept {
  return sizeof(StringPrefix) + charactersFor(bytes) * sizeof(OLECHAR);
}

// What to give the block of such a string back with: as little as it may have, so that nothing need be rounded. It is of the
// same kind.
constexpr std::size_t leastStringBlockFor(std::uint64_t bytes) noexcept {
  return sizeof(StringPrefix) + bytes + sizeof(OLECHAR);
}
static_assert([] {
  using platform::SmallBlocks;
  for (std::uint64_t bytes = 0; bytes <= SmallBlocks::largest; ++bytes) {
    if (SmallBlocks::kindFor(leastStringBlockFor(bytes)) != SmallBlocks::kindFor(stringBlockFor(bytes)))
      return false;
  }
  return true;
}());

inline StringPrefix* prefixOf(BSTR string) noexcept {
  return static_cast<StringPrefix*>(static_cast<void*>(string)) - 1;
}

inline BSTR charactersOf(void* block) noexcept {
  return static_cast<BSTR>(static_cast<void*>(static_cast<StringPrefix*>(block) + 1));
}

// A string of so many bytes, of which only the terminator is written; null without memory. Counts in 64 bits, because the
// largest string, its terminator and the prefix together need more than 32.
inline BSTR makeString(std::uint64_t bytes) noexcept {
  if (bytes > std::numeric_limits<StringPrefix>::max()) return nullptr;
  void* block = platform::allocate(platform::Heap::Strings, stringBlockFor(bytes));
  if (block == nullptr) return nullptr;
  auto* prefix = static_cast<StringPrefix*>(block);
  *prefix = static_cast<StringPrefix>(bytes);
  const BSTR string = charactersOf(block);
  string[bytes / sizeof(OLECHAR)] = L'\0';
  string[charactersFor(bytes) - 1] = L'\0';
  platform::bstrAccount.handOut();
  return string;
}

// The same with these bytes in it.
inline BSTR makeString(const void* from, std::uint64_t bytes) noexcept {
  const BSTR string = makeString(bytes);
  if (string != nullptr) std::memcpy(string, from, bytes);
  return string;
}

// Before task memory: how many bytes the block has.
struct alignas(std::max_align_t) TaskMemoryPrefix {
  std::size_t bytes;
  std::size_t unused;
};

// The memory in a block that was allocated for so many bytes of it; still to be counted.
inline void* asTaskMemory(void* block, std::size_t bytes) noexcept {
  auto* const prefix = static_cast<TaskMemoryPrefix*>(block);
  *prefix = {sizeof(TaskMemoryPrefix) + bytes, 0};
  return prefix + 1;
}

constexpr platform::SmallBlocks::Kind taskMemoryKind(std::size_t bytes) noexcept {
  return platform::SmallBlocks::kindFor(sizeof(TaskMemoryPrefix) + bytes);
}

// Null without memory.
inline void* makeTaskMemory(std::size_t bytes) noexcept {
  if (bytes > std::numeric_limits<std::size_t>::max() - sizeof(TaskMemoryPrefix)) return nullptr;
  void* block = platform::allocate(platform::Heap::TaskMemory, sizeof(TaskMemoryPrefix) + bytes);
  if (block == nullptr) return nullptr;
  platform::taskMemoryAccount.handOut();
  return asTaskMemory(block, bytes);
}

}  // namespace velt::com
