#pragma once

// A list of texts that is handed out again and again, as the labels of a point's coordinates are: a query asks for them
// thirty times for each line.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "embedded/platform/SmallBlocks.h"
#include "host/com/CountedArrays.h"
#include "host/com/HResult.h"

namespace velt::automation {

// Threads: every one may give, once all texts were added.
class PreparedStrings {
 public:
  void add(std::wstring_view text);

  [[nodiscard]] bool empty() const noexcept { return images_.empty(); }
  [[nodiscard]] std::size_t size() const noexcept { return images_.size(); }
  [[nodiscard]] std::wstring_view text(std::size_t index) const noexcept { return images_[index].text(); }

  // All texts so many times, one after the other, with cookies counted from 0, for the caller, who frees the texts as
  // strings and both arrays as task memory. E_OUTOFMEMORY, and the arguments stay as they are, without memory.
  HRESULT give(std::size_t times, CALPOLESTR& strings, CADWORD& cookies) const;

  // All texts once, from these blocks. False, and nothing has happened, when they are not enough.
  bool giveAtOnce(platform::SmallBlocks& kept, CALPOLESTR& strings, CADWORD& cookies) const noexcept;

 private:
  using Word = std::uint64_t;

  // A text as it lies in the block of a string. A block holds one word, and two more for its kind; what the text does not
  // fill is zero.
  struct Image {
    platform::SmallBlocks::Kind kind;
    std::unique_ptr<Word[]> words;
    // Of the characters.
    std::size_t bytes;

    [[nodiscard]] std::wstring_view text() const noexcept;
  };

  HRESULT giveOneByOne(std::size_t times, CALPOLESTR& strings, CADWORD& cookies) const;

  std::vector<Image> images_;
};

}  // namespace velt::automation
