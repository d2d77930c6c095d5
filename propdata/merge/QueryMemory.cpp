#include "propdata/merge/QueryMemory.h"

#include <atomic>
#include <new>

namespace velt::propdata {
namespace {

// Ends with the library.
struct KeptBlock {
  std::atomic<std::byte*> bytes{nullptr};

  constexpr KeptBlock() = default;
  KeptBlock(const KeptBlock&) = delete;
  KeptBlock& operator=(const KeptBlock&) = delete;
  ~KeptBlock() { delete[] bytes.exchange(nullptr); }
};
constinit KeptBlock keptBlock;

}  // namespace

QueryMemory::~QueryMemory() {
  // When another query gave one back meanwhile, one of the two goes.
  block_.reset(keptBlock.bytes.exchange(block_.release()));
}

QueryMemory::Block QueryMemory::takeKept() {
  if (std::byte* const bytes = keptBlock.bytes.exchange(nullptr)) return Block(bytes);
  return Block(new (std::nothrow) std::byte[kept]);
}

}  // namespace velt::propdata
