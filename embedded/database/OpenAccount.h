#pragma once

// The ledger's account of database objects that were opened and not yet closed.

#include "embedded/platform/Ledger.h"

namespace velt::database {

inline constexpr const char* openObjectsAccountName = "open database object";

inline platform::LedgerAccount& openObjectsAccount() {
  static platform::LedgerAccount& account = platform::Ledger::account(openObjectsAccountName);
  return account;
}

}  // namespace velt::database
