#include "embedded/automation/model/PreparedStrings.h"

#include <algorithm>
#include <cstring>

#include "embedded/automation/model/CountedStrings.h"
#include "embedded/com/Blocks.h"
#include "embedded/platform/Allocation.h"

namespace velt::automation {

using platform::SmallBlocks;

PreparedStrings::PreparedStrings(std::span<const std::wstring> texts) : count_(texts.size()) {
  const auto kindOf = [](const std::wstring& text) {
    return SmallBlocks::kindFor(com::stringBlockFor(text.size() * sizeof(OLECHAR)));
  };
  for (const std::wstring& text : texts)
    kind_ = std::max(kind_, kindOf(text));
  const bool areOfOneKind = std::all_of(texts.begin(), texts.end(),
                                        [&](const std::wstring& text) { return kindOf(text) == kind_; });
  const bool arraysFit = com::taskMemoryKind(count_ * sizeof(LPOLESTR)) <= kind_;
  blocksAtOnce_ = areOfOneKind && arraysFit ? count_ + 2 : 0;
  words_.resize(count_ * wordsIn(kind_));
  for (std::size_t i = 0; i < count_; ++i) {
    Word* const block = &words_[i * wordsIn(kind_)];
    const std::size_t bytes = texts[i].size() * sizeof(OLECHAR);
    const auto prefix = static_cast<com::StringPrefix>(bytes);
    std::memcpy(block, &prefix, sizeof prefix);
    std::memcpy(com::charactersOf(block), texts[i].data(), bytes);
  }
}

std::wstring_view PreparedStrings::text(std::size_t index) const noexcept {
  const Word* const block = &words_[index * wordsIn(kind_)];
  com::StringPrefix bytes = 0;
  std::memcpy(&bytes, block, sizeof bytes);
  return {com::charactersOf(const_cast<Word*>(block)), bytes / sizeof(OLECHAR)};
}

HRESULT PreparedStrings::give(std::size_t times, CALPOLESTR& strings, CADWORD& cookies) const {
  SmallBlocks* const kept = platform::blocksAtOnce();
  if (times == 1 && kept != nullptr && giveAtOnce(*kept, strings, cookies)) return S_OK;
  CountedStrings list(count_ * times);
  for (std::size_t i = 0; i < times; ++i) {
    for (std::size_t index = 0; index < count_; ++index)
      list.add(text(index));
  }
  return list.giveTo(strings, cookies);
}

}  // namespace velt::automation
