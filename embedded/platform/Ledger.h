#pragma once

// Counts what the host handed out and what came back.
//
// One account per kind of thing: "BSTR", "task memory", "SAFEARRAY", and for references to COM objects one account
// under each class's name. A test takes a snapshot before and one after; the difference is what was leaked (positive)
// or given back once too often (negative).
//
// Threads: every function may be called on every thread. Strings and references are counted by the million, so a
// thread counts in memory of its own, without locks and atomic additions. A snapshot adds up all threads, and is
// exact for what happened before it.
// Ownership: accounts live as long as the process, since references are given back until its end.

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

// Accounts that each thread counts in a cell of its own; should there ever be more, all threads share their cells.
inline constexpr std::uint32_t ledgerCellsPerThread = 256;

// The cells of this thread: null before it has counted anything and after it has ended. Only the ledger sets it.
extern constinit thread_local LedgerCell* ledgerCells [[gnu::tls_model("initial-exec")]];

class LedgerAccount {
 public:
  // `index` is that of the account's cell in each thread, assigned by Ledger::account. The name must live as long as
  // the account.
  constexpr LedgerAccount(const char* name, std::uint32_t index) : name_(name), index_(index) {}
  LedgerAccount(const LedgerAccount&) = delete;
  LedgerAccount& operator=(const LedgerAccount&) = delete;

  void handOut() noexcept { count(&LedgerCell::handedOut, 1, index_); }
  void giveBack() noexcept { count(&LedgerCell::givenBack, 1, index_); }
  // False, and nothing has happened, on a thread that has not counted before, or can have no cells.
  [[nodiscard]] bool giveBackAtOnce() noexcept { return countAtOnce(&LedgerCell::givenBack, 1, index_); }

  [[nodiscard]] const char* name() const noexcept { return name_; }

 protected:
  // In the account's cell, whose index is given.
  void count(std::atomic<std::int64_t> LedgerCell::*side, std::int64_t times, std::uint32_t index) noexcept {
    if (!countAtOnce(side, times, index)) countElsewhere(side, times);
  }
  static bool countAtOnce(std::atomic<std::int64_t> LedgerCell::*side, std::int64_t times,
                          std::uint32_t index) noexcept {
    LedgerCell* const cells = ledgerCells;
    if (cells == nullptr || index >= ledgerCellsPerThread) [[unlikely]]
      return false;
    add(cells[index].*side, times);
    return true;
  }
  // Not an atomic addition: no other thread writes this cell, and those who read it see one value or the next.
  static void add(std::atomic<std::int64_t>& counted, std::int64_t times) noexcept {
    counted.store(counted.load(std::memory_order_relaxed) + times, std::memory_order_relaxed);
  }

 private:
  friend class Ledger;
  friend class AccountNumber;
  friend struct LedgerThread;

  // On a thread that has not counted before, or can have no cells.
  void countElsewhere(std::atomic<std::int64_t> LedgerCell::*side, std::int64_t times) noexcept;
  // Null when this thread can have no cells: it is ending, or there is no memory.
  static LedgerCell* enterThread() noexcept;

  // What threads without cells count, and what threads that have ended had counted.
  LedgerCell shared_;
  const char* name_;
  std::uint32_t index_;
};

// An account by its number, for objects: it takes less room in them than the account's address, and less to count.
class AccountNumber {
 public:
  explicit AccountNumber(const LedgerAccount& account) noexcept : index_(account.index_) {}

  void handOut() const noexcept;
  void giveBack() const noexcept;
  // As that of the account.
  [[nodiscard]] bool giveBackAtOnce() const noexcept {
    return LedgerAccount::countAtOnce(&LedgerCell::givenBack, 1, index_);
  }

 private:
  friend class Ledger;

  std::uint32_t index_;
};

// An account whose cell is known where it is counted, which spares looking it up: strings are counted a hundred times for
// each line of a drawing that is queried.
template <std::uint32_t index>
class FixedAccount : public LedgerAccount {
  static_assert(index < ledgerCellsPerThread);

 public:
  constexpr explicit FixedAccount(const char* name) : LedgerAccount(name, index) {}

  void handOut() noexcept { count(&LedgerCell::handedOut, 1, index); }
  void giveBack() noexcept { count(&LedgerCell::givenBack, 1, index); }
  // So many things of this kind, and so many of another. False, and nothing has happened, on a thread that has not counted
  // before, or can have no cells.
  template <std::uint32_t other>
  [[nodiscard]] bool handOutAtOnce(std::int64_t times, FixedAccount<other>& /*account*/,
                                   std::int64_t timesOfOther) noexcept {
    LedgerCell* const cells = ledgerCells;
    if (cells == nullptr) [[unlikely]]
      return false;
    add(cells[index].handedOut, times);
    add(cells[other].handedOut, timesOfOther);
    return true;
  }
};

class Ledger {
 public:
  struct Count {
    std::int64_t handedOut = 0;
    std::int64_t givenBack = 0;
    friend bool operator==(const Count&, const Count&) = default;
  };
  using Snapshot = std::map<std::string, Count, std::less<>>;
  // By the name of the account, how many more were handed out than given back. Balanced accounts are left out, so an
  // empty map means that nothing leaked.
  using Difference = std::map<std::string, std::int64_t, std::less<>>;

  // The account of that name, made at the first call. Takes a lock and a search: keep the reference.
  static LedgerAccount& account(std::string_view name);
  // The account of that number. Takes a lock.
  static LedgerAccount& account(AccountNumber number) noexcept;
  // All accounts that were ever opened.
  [[nodiscard]] static Snapshot snapshot();
  [[nodiscard]] static Difference difference(const Snapshot& before, const Snapshot& after);
  // One line per account, such as "BSTR +2"; "balanced" when there is none.
  [[nodiscard]] static std::string print(const Difference& difference);
};

inline void AccountNumber::handOut() const noexcept {
  if (!LedgerAccount::countAtOnce(&LedgerCell::handedOut, 1, index_)) Ledger::account(*this).handOut();
}
inline void AccountNumber::giveBack() const noexcept {
  if (!giveBackAtOnce()) Ledger::account(*this).giveBack();
}

// The accounts of the runtime itself. Constant-initialised, so that they count before any constructor has run.
extern constinit FixedAccount<0> bstrAccount;
extern constinit FixedAccount<1> taskMemoryAccount;
extern constinit FixedAccount<2> safeArrayAccount;

}  // namespace velt::platform
