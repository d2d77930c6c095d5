#include "embedded/platform/Ledger.h"

#include <deque>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace velt::platform {

constinit FixedAccount<0> bstrAccount{"BSTR"};
constinit FixedAccount<1> taskMemoryAccount{"task memory"};
constinit FixedAccount<2> safeArrayAccount{"SAFEARRAY"};

constinit thread_local LedgerCell* ledgerCells [[gnu::tls_model("initial-exec")]] = nullptr;

namespace {

struct Opened {
  std::string name;
  LedgerAccount account;

  Opened(std::string_view of, std::uint32_t index) : name(of), account(name.c_str(), index) {}
};

struct Book {
  std::mutex mutex;
  // Only grows, so that references to its elements stay valid.
  std::deque<Opened> opened;
  // Those, and the ones of the runtime.
  std::map<std::string_view, LedgerAccount*> accounts;
  // The same by their numbers.
  std::vector<LedgerAccount*> numbered;
  std::vector<const LedgerCell*> threads;

  Book() {
    for (LedgerAccount* account :
         std::initializer_list<LedgerAccount*>{&bstrAccount, &taskMemoryAccount, &safeArrayAccount}) {
      accounts.emplace(account->name(), account);
      numbered.push_back(account);
    }
  }
};

// Never destroyed: static objects elsewhere may give references back later than this one would end.
Book& book() {
  static Book& instance = *new Book;
  return instance;
}

// Has no destructor, so it can still be read when the thread's LedgerThread is gone and somebody counts on the thread.
constinit thread_local bool isThreadEnding = false;

}  // namespace

// The cells of one thread, from its first count until it ends.
struct LedgerThread {
  std::unique_ptr<LedgerCell[]> cells;

  LedgerThread() : cells(std::make_unique<LedgerCell[]>(ledgerCellsPerThread)) {
    Book& all = book();
    const std::lock_guard lock(all.mutex);
    all.threads.push_back(cells.get());
    ledgerCells = cells.get();
  }
  LedgerThread(const LedgerThread&) = delete;
  LedgerThread& operator=(const LedgerThread&) = delete;

  ~LedgerThread() {
    isThreadEnding = true;
    ledgerCells = nullptr;
    Book& all = book();
    const std::lock_guard lock(all.mutex);
    std::erase(all.threads, cells.get());
    for (const auto& [name, account] : all.accounts) {
      if (account->index_ >= ledgerCellsPerThread) continue;
      const LedgerCell& cell = cells[account->index_];
      account->shared_.handedOut.fetch_add(cell.handedOut.load(std::memory_order_relaxed),
                                           std::memory_order_relaxed);
      account->shared_.givenBack.fetch_add(cell.givenBack.load(std::memory_order_relaxed),
                                           std::memory_order_relaxed);
    }
  }
};

void LedgerAccount::countElsewhere(std::atomic<std::int64_t> LedgerCell::*side, std::int64_t times) noexcept {
  LedgerCell* const cells = index_ < ledgerCellsPerThread ? enterThread() : nullptr;
  LedgerCell& cell = cells != nullptr ? cells[index_] : shared_;
  (cell.*side).fetch_add(times, std::memory_order_relaxed);
}

LedgerCell* LedgerAccount::enterThread() noexcept {
  if (isThreadEnding) return nullptr;
  try {
    thread_local const LedgerThread thread;
    return thread.cells.get();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

LedgerAccount& Ledger::account(std::string_view name) {
  Book& all = book();
  const std::lock_guard lock(all.mutex);
  if (const auto found = all.accounts.find(name); found != all.accounts.end()) return *found->second;
  // First what may fail: an account stands under its number and its name, or under neither.
  all.numbered.reserve(all.numbered.size() + 1);
  Opened& opened = all.opened.emplace_back(name, static_cast<std::uint32_t>(all.numbered.size()));
  all.accounts.emplace(opened.name, &opened.account);
  all.numbered.push_back(&opened.account);
  return opened.account;
}

LedgerAccount& Ledger::account(AccountNumber number) noexcept {
  Book& all = book();
  const std::lock_guard lock(all.mutex);
  return *all.numbered[number.index_];
}

Ledger::Snapshot Ledger::snapshot() {
  Book& all = book();
  const std::lock_guard lock(all.mutex);
  Snapshot result;
  for (const auto& [name, account] : all.accounts) {
    Count count{account->shared_.handedOut.load(std::memory_order_relaxed),
                account->shared_.givenBack.load(std::memory_order_relaxed)};
    if (account->index_ < ledgerCellsPerThread) {
      for (const LedgerCell* cells : all.threads) {
        count.handedOut += cells[account->index_].handedOut.load(std::memory_order_relaxed);
        count.givenBack += cells[account->index_].givenBack.load(std::memory_order_relaxed);
      }
    }
    result.emplace(name, count);
  }
  return result;
}

Ledger::Difference Ledger::difference(const Snapshot& before, const Snapshot& after) {
  Difference result;
  for (const auto& [name, count] : after)
    result[name] += count.handedOut - count.givenBack;
  for (const auto& [name, count] : before)
    result[name] -= count.handedOut - count.givenBack;
  std::erase_if(result, [](const auto& entry) { return entry.second == 0; });
  return result;
}

std::string Ledger::print(const Difference& difference) {
  if (difference.empty()) return "balanced";
  std::string text;
  for (const auto& [name, net] : difference) {
    if (!text.empty()) text += '\n';
    text += name + (net > 0 ? " +" : " ") + std::to_string(net);
  }
  return text;
}

}  // namespace velt::platform
