#pragma once

#include <gtest/gtest.h>

#include "embedded/platform/Ledger.h"

namespace velt::com {

// At the end of its scope everything that was handed out meanwhile must have come back.
class Balance {
 public:
  Balance() = default;
  Balance(const Balance&) = delete;
  Balance& operator=(const Balance&) = delete;
  ~Balance() { EXPECT_EQ("balanced", platform::Ledger::print(now())); }

  [[nodiscard]] platform::Ledger::Difference now() const {
    return platform::Ledger::difference(before_, platform::Ledger::snapshot());
  }

 private:
  platform::Ledger::Snapshot before_ = platform::Ledger::snapshot();
};

}  // namespace velt::com
