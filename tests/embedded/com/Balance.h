#pragma once

#include <gtest/gtest.h>

#include "embedded/platform/Ledger.h"

namespace velt::com {

// Fails the test when something that was handed out within its scope was not given back at the end of it.
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
