#pragma once

// What the host handed out and what came back.
//
// One account per kind of thing: "BSTR", "task memory", "SAFEARRAY", and for references to COM objects one account
// under each class's name. A test takes a snapshot before and after, and the difference is what was leaked (positive)
// or given back once too often (negative).
//
// Threads: every function may be called on every thread. A thread counts in memory of its own, without a lock and
// without a locked instruction, since strings and references are counted by the million; a snapshot adds the threads
// up, and is exact for the work that happened before it.
// Ownership: accounts live as long as the process, since the last references are given back while it ends.

#include <atomic>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace velt::platform {

struct LedgerCell {
  std::atomic<std::int64_t> handedOut{0};
  std::atomic<std::int64_t> givenBack{0};
};

// The first accounts to be opened have a cell in every thread; the rest, should there ever be more, share theirs.
inline constexpr std::uint32_t ledgerCellsPerThread = 256;

// The cells of this thread: null before it has counted anything and after it has ended. Only the ledger sets it.
extern constinit thread_local LedgerCell* ledgerCells [[gnu::tls_model("initial-exec")]];

class LedgerAccount {
 public:
  // The index tells the cell; Ledger::account assigns it. The name must live as long as the account.
  constexpr LedgerAccount(const char* name, std::uint32_t index) : name_(name), index_(index) {}
  LedgerAccount(const LedgerAccount&) = delete;
  LedgerAccount& operator=(const LedgerAccount&) = delete;

  void handOut() noexcept {
    if (LedgerCell* cell = ownCell()) {
      increment(cell->handedOut);
    } else {
      shared_.handedOut.fetch_add(1, std::memory_order_relaxed);
    }
  }

  void giveBack() noexcept {
    if (LedgerCell* cell = ownCell()) {
      increment(cell->givenBack);
    } else {
      shared_.givenBack.fetch_add(1, std::memory_order_relaxed);
    }
  }

  [[nodiscard]] const char* name() const noexcept { return name_; }

 private:
  friend class Ledger;
  friend struct LedgerThread;

  [[nodiscard]] LedgerCell* ownCell() const noexcept {
    if (index_ >= ledgerCellsPerThread) return nullptr;
    LedgerCell* cells = ledgerCells;
    if (cells == nullptr) [[unlikely]]
      cells = enterThread();
    return cells != nullptr ? cells + index_ : nullptr;
  }

  // Not an atomic addition: no other thread writes this cell, and those who read it see one value or the next.
  static void increment(std::atomic<std::int64_t>& count) noexcept {
    count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  }

  // Null when this thread can have no cells: it is ending, or there is no memory.
  static LedgerCell* enterThread() noexcept;

  LedgerCell shared_;  // what threads without a cell count, and what ended threads left behind
  const char* name_;
  std::uint32_t index_;
};

class Ledger {
 public:
  struct Count {
    std::int64_t handedOut = 0;
    std::int64_t givenBack = 0;
    friend bool operator==(const Count&, const Count&) = default;
  };
  using Snapshot = std::map<std::string, Count, std::less<>>;
  // Name of the account -> handed out less given back. Balanced accounts are left out: an empty map is no leak.
  using Difference = std::map<std::string, std::int64_t, std::less<>>;

  // The account of that name, opened at the first call. Costs a lock and a search: keep the reference.
  static LedgerAccount& account(std::string_view name);
  // All accounts that were ever opened.
  [[nodiscard]] static Snapshot snapshot();
  [[nodiscard]] static Difference difference(const Snapshot& before, const Snapshot& after);
  // One line per account, "BSTR +2"; "balanced" when there is none.
  [[nodiscard]] static std::string print(const Difference& difference);
};

// The accounts that the runtime itself keeps; constant-initialised, so they count from the first instruction on.
extern constinit LedgerAccount bstrAccount;
extern constinit LedgerAccount taskMemoryAccount;
extern constinit LedgerAccount safeArrayAccount;

}  // namespace velt::platform
