#pragma once

// The data block behind the shared vectors of the host and its libraries, and the host's one empty block.

#include <cstddef>
#include <cstdint>

struct TqVectorBlock {
  std::int32_t refCount;        // changed only by atomic operations
  std::uint32_t logicalLength;  // elements in use
  std::uint32_t physicalLength;
  std::uint32_t growCount;
  void* elements;
};

static_assert(sizeof(TqVectorBlock) == 24 && offsetof(TqVectorBlock, elements) == 16);

// Shared by every empty vector of the process and counted like any other block. The host holds one reference
// of its own, so it is never freed; its lengths stay 0.
extern "C" TqVectorBlock* gpEmptyVectorData;
