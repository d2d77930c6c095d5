#include "propdata/merge/QueryMemory.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

namespace velt::propdata {

// Ends with the library.
struct QueryMemory::Kept {
  std::atomic<Block*> block{nullptr};
  // Of the next block that is made.
  std::atomic<std::size_t> size{keptAtLeast};

  constexpr Kept() = default;
  Kept(const Kept&) = delete;
  Kept& operator=(const Kept&) = delete;
  ~Kept() { delete block.exchange(nullptr); }
};
constinit QueryMemory::Kept QueryMemory::kept;

QueryMemory::QueryMemory()
    : block_(takeKept()), next_(block_ != nullptr ? block_->bytes.get() : nullptr), left_(sizeOfBlock()) {}

QueryMemory::~QueryMemory() {
  const std::size_t size = sizeOfBlock();
  const std::size_t taken = size - left_ + besides_;
  if (taken > size && taken <= keptAtMost) {
    kept.size = std::max(keptAtLeast, std::min(taken + taken / 8, keptAtMost));
  } else if (size > keptAtLeast && taken < size / 4) {
    kept.size = keptAtLeast;
  } else {
    // When another query gave one back meanwhile, one of the two goes.
    block_.reset(kept.block.exchange(block_.release()));
  }
}

void* QueryMemory::takeFurther(std::size_t bytes, std::size_t alignment) {
  void* const taken = bytes < large
                          ? further_.allocate(bytes, alignment)
                          : large_.emplace_back(std::make_unique_for_overwrite<std::byte[]>(bytes)).get();
  besides_ += bytes;
  return taken;
}

std::unique_ptr<QueryMemory::Block> QueryMemory::takeKept() noexcept {
  if (Block* const block = kept.block.exchange(nullptr)) return std::unique_ptr<Block>(block);
  const std::size_t size = kept.size;
  Bytes bytes(new (std::nothrow) std::byte[size]);
  std::unique_ptr<Block> block(bytes != nullptr ? new (std::nothrow) Block{std::move(bytes), size} : nullptr);
  if (block == nullptr) kept.size = keptAtLeast;
  return block;
}

}  // namespace velt::propdata
