#include "host/platform/VectorBlock.h"

namespace {

// One reference is the host's own. A vector that leaves the empty block takes over its grow count.
constexpr std::uint32_t defaultGrowth = 8;
constinit TqVectorBlock emptyBlock{1, 0, 0, defaultGrowth, nullptr};

}  // namespace

// Constant-initialised: vectors of static objects point at the block before any constructor of this library has run.
constinit TqVectorBlock* gpEmptyVectorData = &emptyBlock;
