#pragma once

// What the host hands out and gets back while some work is done: strings, arrays, references to objects of each class,
// open database objects. The ledger counts it anyway, so the work is not slowed down.

#include <functional>

#include "embedded/platform/Ledger.h"

namespace velt::bench {

[[nodiscard]] platform::Ledger::Snapshot hostTrafficOf(const std::function<void()>& work);

}  // namespace velt::bench
