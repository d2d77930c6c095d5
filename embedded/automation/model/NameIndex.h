#pragma once

// Finding members by name, in any case of the letters.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace velt::automation {

// Names are those of a table and outlive the index. They are plain ASCII, so only A to Z have two cases. A palette
// looks a name up for every element of every entity, so that a look-up allocates nothing and touches one slot or two.
class NameIndex {
 public:
  NameIndex() : slots_(8) {}

  // The first of several equal names stays. Null is not a name.
  void add(const wchar_t* name, std::size_t position) {
    if ((count_ + 1) * 2 > slots_.size()) grow();
    if (place(Slot{name, position})) ++count_;
  }

  [[nodiscard]] std::optional<std::size_t> find(std::wstring_view name) const {
    for (std::size_t at = hash(name); slots_[at & mask()].name.data() != nullptr; ++at) {
      const Slot& slot = slots_[at & mask()];
      if (same(slot.name, name)) return slot.position;
    }
    return std::nullopt;
  }

  [[nodiscard]] static bool same(std::wstring_view one, std::wstring_view other) {
    if (one == other) return true;
    if (one.size() != other.size()) return false;
    for (std::size_t i = 0; i < one.size(); ++i) {
      if (folded(one[i]) != folded(other[i])) return false;
    }
    return true;
  }

 private:
  struct Slot {
    // Without a text where there is none.
    std::wstring_view name{};
    std::size_t position = 0;
  };

  static constexpr wchar_t folded(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
  }

  // Of the length and four characters: names of one table seldom agree in these, and to read a whole name would cost more
  // than to compare one too many.
  static std::size_t hash(std::wstring_view name) {
    const std::size_t length = name.size();
    if (length == 0) return 0;
    std::uint64_t value = length;
    for (const std::size_t at : {std::size_t{0}, length / 3, length / 2, length - 1})
      value = (value ^ static_cast<std::uint32_t>(folded(name[at]))) * 0x100000001B3U;
    return static_cast<std::size_t>(value ^ (value >> 32U));
  }

  [[nodiscard]] std::size_t mask() const { return slots_.size() - 1; }

  bool place(const Slot& slot) {
    std::size_t at = hash(slot.name);
    for (; slots_[at & mask()].name.data() != nullptr; ++at) {
      if (same(slots_[at & mask()].name, slot.name)) return false;
    }
    slots_[at & mask()] = slot;
    return true;
  }

  void grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.name.data() != nullptr) place(slot);
    }
  }

  // A power of two, at most half full.
  std::vector<Slot> slots_;
  std::size_t count_ = 0;
};

}  // namespace velt::automation
