#pragma once

// The data block that shared vectors point to, and the host's one empty block. Vectors are handed between host and
// layer as they are, so both sides agree on this layout to the byte.

#include <cstddef>
#include <cstdint>

// Allocated with _tqMalloc by whoever fills a vector first, and freed with _tqFree by whoever lets go of it last.
struct TqVectorBlock {
  // Changed only by atomic operations: vectors that share a block may be on different threads.
  std::int32_t refCount;
  // Elements in use.
  std::uint32_t logicalLength;
  // Elements allocated, all of them constructed.
  std::uint32_t physicalLength;
  // So many more elements are allocated when the vector grows.
  std::uint32_t growCount;
  // physicalLength of them, made with array new; null when there are none.
  void* elements;
};

static_assert(sizeof(TqVectorBlock) == 24 && offsetof(TqVectorBlock, elements) == 16);

// Shared by every empty vector of the process and counted like any other block. The host holds one reference
// of its own, so it is never freed. Its lengths stay 0, and its grow count is 8, with which every vector begins.
extern "C" TqVectorBlock* gpEmptyVectorData;
