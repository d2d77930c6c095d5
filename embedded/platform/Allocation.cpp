#include "embedded/platform/Allocation.h"

#include <limits>
#include <memory>
#include <new>

namespace velt::platform {

constinit std::atomic<std::uint32_t> allocation::armedHeaps{0};
constinit thread_local SmallBlocks* allocation::smallBlocks [[gnu::tls_model("initial-exec")]] = nullptr;

namespace {

using allocation::armedHeaps;
using allocation::smallBlocks;

struct Plan {
  // Allocations from `first` to `last` fail, both counted from 1.
  std::atomic<std::uint64_t> first{0};
  std::atomic<std::uint64_t> last{0};
  // Allocations of more bytes fail.
  std::atomic<std::size_t> largest{0};
  std::atomic<std::uint64_t> allocations{0};
  std::atomic<std::uint64_t> failures{0};
};
constinit Plan plan;

bool fails(std::size_t bytes) {
  const std::uint64_t number = plan.allocations.fetch_add(1) + 1;
  const bool failing = (number >= plan.first && number <= plan.last) || bytes > plan.largest;
  if (failing) plan.failures.fetch_add(1);
  return failing;
}

// Half a terabyte. The C library would refuse it as well, but under a sanitizer the request alone ends the process.
constexpr std::size_t largestBlock = std::size_t{1} << 39;

bool isRefused(Heap heap, std::size_t bytes) {
  const bool armed = (armedHeaps.load(std::memory_order_acquire) & static_cast<std::uint32_t>(heap)) != 0;
  return (armed && fails(bytes)) || bytes > largestBlock;
}

// Whoever gives a block back may tell what was asked for, and not know what the block holds.
std::size_t toAskFor(std::size_t bytes) {
  if (generalHeap::mayBeSpared() && bytes <= SmallBlocks::largest) return SmallBlocks::sizeFor(bytes);
  return bytes != 0 ? bytes : 1;
}

// Has no destructor, so that it can still be read after the thread's KeptBlocks.
constinit thread_local bool areBlocksGone = false;

// On the heap: what a library that a host loads later has for each thread itself has to fit into what the C library left
// free when the process began.
struct KeptBlocks {
  const std::unique_ptr<SmallBlocks> blocks{new (std::nothrow) SmallBlocks};

  KeptBlocks() { smallBlocks = blocks.get(); }
  KeptBlocks(const KeptBlocks&) = delete;
  KeptBlocks& operator=(const KeptBlocks&) = delete;
  ~KeptBlocks() {
    areBlocksGone = true;
    smallBlocks = nullptr;
  }
};

// False when the thread keeps no blocks.
bool begunToKeep() {
  if (!generalHeap::mayBeSpared() || areBlocksGone) return false;
  static thread_local const KeptBlocks kept;
  return kept.blocks != nullptr;
}

}  // namespace

void* allocation::allocateFromHeap(Heap heap, std::size_t bytes) noexcept {
  if (isRefused(heap, bytes)) return nullptr;
  return generalHeap::take(toAskFor(bytes));
}

void allocation::deallocateFirst(void* block, SmallBlocks::Kind kind) noexcept {
  if ((smallBlocks != nullptr || begunToKeep()) && smallBlocks->keepOf(block, kind)) return;
  generalHeap::giveBack(block);
}

void* allocateZeroed(Heap heap, std::size_t bytes) noexcept {
  if (isRefused(heap, bytes)) [[unlikely]]
    return nullptr;
  return generalHeap::takeZeroed(toAskFor(bytes));
}

AllocationFault AllocationFault::countOnly(Heap heaps) {
  return {heaps, 0, 0, std::numeric_limits<std::size_t>::max()};
}

AllocationFault AllocationFault::failNth(std::uint64_t n, Heap heaps) {
  return {heaps, n, n, std::numeric_limits<std::size_t>::max()};
}

AllocationFault AllocationFault::failFrom(std::uint64_t n, Heap heaps) {
  return {heaps, n, std::numeric_limits<std::uint64_t>::max(), std::numeric_limits<std::size_t>::max()};
}

AllocationFault AllocationFault::failAbove(std::size_t bytes, Heap heaps) {
  return {heaps, 0, 0, bytes};
}

AllocationFault::AllocationFault(Heap heaps, std::uint64_t first, std::uint64_t last, std::size_t largest) {
  armedHeaps.store(0, std::memory_order_relaxed);
  plan.first = first;
  plan.last = last;
  plan.largest = largest;
  plan.allocations = 0;
  plan.failures = 0;
  armedHeaps.store(static_cast<std::uint32_t>(heaps), std::memory_order_release);
}

AllocationFault::~AllocationFault() {
  armedHeaps.store(0, std::memory_order_release);
}

std::uint64_t AllocationFault::allocations() const noexcept {
  return plan.allocations;
}
std::uint64_t AllocationFault::failures() const noexcept {
  return plan.failures;
}

}  // namespace velt::platform
