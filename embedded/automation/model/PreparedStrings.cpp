#include "embedded/automation/model/PreparedStrings.h"

#include <cstring>

#include "embedded/automation/model/CountedStrings.h"
#include "embedded/com/Blocks.h"
#include "embedded/platform/Allocation.h"

namespace velt::automation {
namespace {

using platform::SmallBlocks;

OLECHAR* charactersIn(void* block) {
  return static_cast<OLECHAR*>(static_cast<void*>(static_cast<com::StringPrefix*>(block) + 1));
}

}  // namespace

std::wstring_view PreparedStrings::Image::text() const noexcept {
  return {charactersIn(words.get()), bytes / sizeof(OLECHAR)};
}

void PreparedStrings::add(std::wstring_view text) {
  const std::size_t bytes = text.size() * sizeof(OLECHAR);
  const SmallBlocks::Kind kind = SmallBlocks::kindFor(com::stringBlockFor(bytes));
  Image image{kind, std::make_unique<Word[]>(1 + 2 * kind), bytes};
  const auto prefix = static_cast<com::StringPrefix>(bytes);
  std::memcpy(image.words.get(), &prefix, sizeof prefix);
  std::memcpy(charactersIn(image.words.get()), text.data(), bytes);
  images_.push_back(std::move(image));
}

HRESULT PreparedStrings::give(std::size_t times, CALPOLESTR& strings, CADWORD& cookies) const {
  SmallBlocks* const kept = platform::blocksAtOnce();
  if (times == 1 && kept != nullptr && giveAtOnce(*kept, strings, cookies)) return S_OK;
  return giveOneByOne(times, strings, cookies);
}

HRESULT PreparedStrings::giveOneByOne(std::size_t times, CALPOLESTR& strings, CADWORD& cookies) const {
  CountedStrings list(images_.size() * times);
  for (std::size_t i = 0; i < times; ++i) {
    for (const Image& image : images_)
      list.add(image.text());
  }
  return list.giveTo(strings, cookies);
}

bool PreparedStrings::giveAtOnce(SmallBlocks& kept, CALPOLESTR& strings, CADWORD& cookies) const noexcept {
  const std::size_t count = images_.size();
  const SmallBlocks::Kind stringsKind = com::taskMemoryKind(count * sizeof(LPOLESTR));
  const SmallBlocks::Kind cookiesKind = com::taskMemoryKind(count * sizeof(DWORD));
  void* const stringsBlock = kept.takeOf(stringsKind);
  if (stringsBlock == nullptr) return false;
  void* const cookiesBlock = kept.takeOf(cookiesKind);
  if (cookiesBlock == nullptr) {
    (void)kept.keepOf(stringsBlock, stringsKind);
    return false;
  }
  auto* const madeStrings = static_cast<LPOLESTR*>(com::asTaskMemory(stringsBlock, count * sizeof(LPOLESTR)));
  auto* const madeCookies = static_cast<DWORD*>(com::asTaskMemory(cookiesBlock, count * sizeof(DWORD)));
  for (std::size_t i = 0; i < count; ++i) {
    const Image& image = images_[i];
    void* const block = kept.takeOf(image.kind);
    if (block == nullptr) [[unlikely]] {
      while (i-- > 0)
        (void)kept.keepOf(com::prefixOf(madeStrings[i]), images_[i].kind);
      (void)kept.keepOf(cookiesBlock, cookiesKind);
      (void)kept.keepOf(stringsBlock, stringsKind);
      return false;
    }
    const Word* from = image.words.get();
    auto* to = static_cast<Word*>(block);
    *to++ = *from++;
    for (SmallBlocks::Kind left = image.kind; left != 0; --left, to += 2, from += 2)
      std::memcpy(to, from, 2 * sizeof(Word));
    madeStrings[i] = charactersIn(block);
    madeCookies[i] = static_cast<DWORD>(i);
  }
  platform::bstrAccount.handOut(static_cast<std::int64_t>(count));
  platform::taskMemoryAccount.handOut(2);
  strings = {static_cast<ULONG>(count), madeStrings};
  cookies = {static_cast<ULONG>(count), madeCookies};
  return true;
}

}  // namespace velt::automation
