#pragma once

// How far the memory of the process grows while something is done.

#include <cstddef>
#include <functional>
#include <optional>

namespace velt::bench {

// Bytes between the resident memory before and its highest mark meanwhile. What the heap keeps for later is given back
// to the system first, so that it is counted when it is used again. Nothing where the system does not tell.
[[nodiscard]] std::optional<std::size_t> peakMemoryOf(const std::function<void()>& work);

}  // namespace velt::bench
