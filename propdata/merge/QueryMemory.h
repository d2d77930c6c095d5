#pragma once

// The memory that one query needs until it ends.
//
// A palette asks again with every click, mostly for few entities, and what it took last time fits again: so a block is kept
// from one query to the next, and the system is not asked for fresh pages, nor the heap tidied up, each time.
//
// Threads: any; two queries at a time have memory of their own, of which one block is kept afterwards.
// Failure: without memory std::bad_alloc is thrown; where there is none for the block to be kept, the query goes without.

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <type_traits>
#include <vector>

namespace velt::propdata {

class QueryMemory {
 public:
  // Kept between queries: enough for a thousand entities.
  static constexpr std::size_t kept = std::size_t{1} << 20;

  QueryMemory() : block_(takeKept()), resource_(block_.get(), block_ != nullptr ? kept : 0) {}
  QueryMemory(const QueryMemory&) = delete;
  QueryMemory& operator=(const QueryMemory&) = delete;
  ~QueryMemory();

  // For what is small, and for containers that grow but a little.
  [[nodiscard]] std::pmr::memory_resource& resource() { return resource_; }

  // Room for so many, until the query ends; what is in it is anybody's.
  template <class T>
  [[nodiscard]] T* arrayOf(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(std::max_align_t));
    const std::size_t bytes = count * sizeof(T);
    // A large one would make the resource take still larger blocks, and leave much of them unused.
    if (bytes < large) return static_cast<T*>(resource_.allocate(bytes, alignof(T)));
    return static_cast<T*>(
        static_cast<void*>(large_.emplace_back(std::make_unique_for_overwrite<std::byte[]>(bytes)).get()));
  }

 private:
  static constexpr std::size_t large = std::size_t{1} << 16;

  using Block = std::unique_ptr<std::byte[]>;
  // Null without memory.
  static Block takeKept();

  Block block_;
  std::pmr::monotonic_buffer_resource resource_;
  std::vector<Block> large_;
};

}  // namespace velt::propdata
