#pragma once

// A list of texts that is handed out again and again, as the labels of a point's coordinates are: a query asks for them
// thirty times for each line.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/com/Blocks.h"
#include "embedded/platform/SmallBlocks.h"
#include "host/com/CountedArrays.h"
#include "host/com/HResult.h"

namespace velt::automation {

// Threads: every one may give.
class PreparedStrings {
 public:
  PreparedStrings() = default;
  explicit PreparedStrings(std::span<const std::wstring> texts);

  [[nodiscard]] bool empty() const noexcept { return count_ == 0; }
  [[nodiscard]] std::size_t size() const noexcept { return count_; }
  [[nodiscard]] std::wstring_view text(std::size_t index) const noexcept;

  // All texts so many times, one after the other, with cookies counted from 0, for the caller, who frees the texts as
  // strings and both arrays as task memory. E_OUTOFMEMORY, and the arguments stay as they are, without memory.
  HRESULT give(std::size_t times, CALPOLESTR& strings, CADWORD& cookies) const;

  // All texts once, from these blocks. False, and nothing has happened, when they are not enough, or when the texts need
  // blocks of several sizes, as the labels of a point never do. Calls nothing.
  bool giveAtOnce(platform::SmallBlocks& kept, CALPOLESTR& strings, CADWORD& cookies) const noexcept {
    if (blocksAtOnce_ == 0 || !kept.has(kind_, blocksAtOnce_)
        || !platform::bstrAccount.handOutAtOnce(static_cast<std::int64_t>(count_),
                                                platform::taskMemoryAccount, 2)) [[unlikely]] {
      return false;
    }
    void* const* const blocks = kept.takeOf(kind_, blocksAtOnce_);
    // The arrays are in blocks of the same size, so that all can be taken together.
    const std::size_t held = wordsIn(kind_) * sizeof(Word) - sizeof(com::TaskMemoryPrefix);
    auto* const madeStrings = static_cast<LPOLESTR*>(com::asTaskMemory(blocks[0], held));
    auto* const madeCookies = static_cast<DWORD*>(com::asTaskMemory(blocks[1], held));
    if (kind_ == mostly) {
      copyTo(blocks + 2, mostly, madeStrings, madeCookies);
    } else {
      copyTo(blocks + 2, kind_, madeStrings, madeCookies);
    }
    strings = {static_cast<ULONG>(count_), madeStrings};
    cookies = {static_cast<ULONG>(count_), madeCookies};
    return true;
  }

 private:
  using Word = std::uint64_t;

  // A block holds one word, and two more for its kind.
  static constexpr std::size_t wordsIn(platform::SmallBlocks::Kind kind) noexcept { return 1 + 2 * kind; }

  // Most labels are that long. Where a length is known to the compiler, nothing is called for a text.
  static constexpr platform::SmallBlocks::Kind mostly = 2;

  [[gnu::always_inline]] void copyTo(void* const* blocks, platform::SmallBlocks::Kind kind, LPOLESTR* strings,
                                     DWORD* cookies) const noexcept {
    const Word* words = words_.data();
    const std::size_t count = count_;
    for (std::size_t i = 0; i < count; ++i, words += wordsIn(kind)) {
      auto* const block = static_cast<Word*>(blocks[i]);
      // The length by itself, as it is read.
      *block = *words;
      std::memcpy(block + 1, words + 1, 2 * kind * sizeof(Word));
      strings[i] = com::charactersOf(block);
      cookies[i] = static_cast<DWORD>(i);
    }
  }

  std::size_t count_ = 0;
  // Of the block of every text; of the longest one where they need several.
  platform::SmallBlocks::Kind kind_ = 0;
  // For all texts and both arrays; 0 when they are not all of that kind.
  std::size_t blocksAtOnce_ = 0;
  // One text after the other as it lies in its block; what the text does not fill is zero.
  std::vector<Word> words_;
};

}  // namespace velt::automation
