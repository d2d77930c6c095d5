#pragma once

// How far the memory of the process grows while some work is done.

#include <cstddef>
#include <functional>
#include <optional>

namespace velt::bench {

// In bytes: the highest resident memory during the work less that before it. What the heap keeps in reserve is given
// back to the system first, so that it counts when it is used again. Nothing when the system does not tell.
[[nodiscard]] std::optional<std::size_t> peakMemoryOf(const std::function<void()>& work);

}  // namespace velt::bench
