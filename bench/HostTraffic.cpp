#include "bench/HostTraffic.h"

namespace velt::bench {

using platform::Ledger;

Ledger::Snapshot hostTrafficOf(const std::function<void()>& work) {
  const Ledger::Snapshot before = Ledger::snapshot();
  work();
  Ledger::Snapshot traffic = Ledger::snapshot();
  for (auto& [name, count] : traffic) {
    const auto earlier = before.find(name);
    if (earlier == before.end()) continue;
    count.handedOut -= earlier->second.handedOut;
    count.givenBack -= earlier->second.givenBack;
  }
  return traffic;
}

}  // namespace velt::bench
