#pragma once

// The memory that one query needs until it ends.
//
// A palette asks again with every click and after every edit, and what it took last time mostly fits again: so a block is
// kept from one query to the next, and the system is not asked for fresh pages, which for many entities takes as long as a
// tenth of the query, nor the heap tidied up, each time.
//
// Threads: any; two queries at a time have memory of their own, of which one block is kept afterwards.
// Failure: without memory std::bad_alloc is thrown; where there is none for the block to be kept, the query goes without.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <type_traits>
#include <vector>

namespace velt::propdata {

class QueryMemory final : private std::pmr::memory_resource {
 public:
  // The block that is kept has as much as the last query took, at most enough for a hundred thousand entities, and at least
  // for ten thousand. Pages that no query has needed yet cost nothing.
  static constexpr std::size_t keptAtLeast = std::size_t{8} << 20;
  static constexpr std::size_t keptAtMost = std::size_t{96} << 20;

  QueryMemory();
  QueryMemory(const QueryMemory&) = delete;
  QueryMemory& operator=(const QueryMemory&) = delete;
  ~QueryMemory() override;

  // For containers that grow but a little: what they give back stays taken.
  [[nodiscard]] std::pmr::memory_resource& resource() { return *this; }

  // Room for so many, until the query ends; what is in it is anybody's.
  template <class T>
  [[nodiscard]] T* arrayOf(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(std::max_align_t));
    return static_cast<T*>(take(count * sizeof(T), alignof(T)));
  }

 private:
  // Larger ones get blocks of their own where the kept one is used up: they would make the further blocks still larger, of
  // which much would stay unused.
  static constexpr std::size_t large = std::size_t{1} << 16;

  using Bytes = std::unique_ptr<std::byte[]>;
  struct Block {
    Bytes bytes;
    std::size_t size = 0;
  };
  struct Kept;
  static Kept kept;

  // Null without memory.
  static std::unique_ptr<Block> takeKept() noexcept;
  [[nodiscard]] std::size_t sizeOfBlock() const noexcept { return block_ != nullptr ? block_->size : 0; }

  void* take(std::size_t bytes, std::size_t alignment) {
    const std::size_t gap = (alignment - reinterpret_cast<std::uintptr_t>(next_) % alignment) % alignment;
    if (left_ < gap || left_ - gap < bytes) return takeFurther(bytes, alignment);
    std::byte* const taken = next_ + gap;
    next_ = taken + bytes;
    left_ -= gap + bytes;
    return taken;
  }
  void* takeFurther(std::size_t bytes, std::size_t alignment);

  void* do_allocate(std::size_t bytes, std::size_t alignment) override { return take(bytes, alignment); }
  void do_deallocate(void*, std::size_t, std::size_t) override {}
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }

  std::unique_ptr<Block> block_;
  // What is left of the block.
  std::byte* next_;
  std::size_t left_;
  // How much was taken besides.
  std::size_t besides_ = 0;
  std::pmr::monotonic_buffer_resource further_;
  std::vector<Bytes> large_;
};

}  // namespace velt::propdata
