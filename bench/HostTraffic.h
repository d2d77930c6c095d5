#pragma once

// What the host hands out and gets back while something is done, as its ledger says: strings, arrays, references to
// objects of each class, open database objects. Knowing it costs the work nothing.

#include <functional>

#include "embedded/platform/Ledger.h"

namespace velt::bench {

[[nodiscard]] platform::Ledger::Snapshot hostTrafficOf(const std::function<void()>& work);

}  // namespace velt::bench
