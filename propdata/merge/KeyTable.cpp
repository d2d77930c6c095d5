#include "propdata/merge/KeyTable.h"

#include <functional>
#include <string>

namespace velt::propdata {

namespace {

std::size_t mix(std::size_t seed, std::size_t value) {
  return seed * 0x9E3779B97F4A7C15ULL + value;
}

std::size_t hashOf(const CStdStr<wchar_t>& text) {
  return std::hash<std::wstring>()(text.str());
}

}  // namespace

std::size_t KeyTable::Hash::operator()(const SamenessKey& key) const {
  const auto numbers =
      static_cast<std::size_t>(static_cast<std::uint32_t>(key.categoryId)) * 2 + (key.isEditable ? 1 : 0);
  return mix(mix(numbers, hashOf(key.categoryName)), hashOf(key.name));
}

std::size_t KeyTable::Hash::operator()(const FullKey& key) const {
  const auto flags =
      static_cast<std::size_t>(key.property.hasChoices ? 2 : 0) + (key.property.isElement ? 1 : 0);
  return mix(mix(key.sameness, flags), hashOf(key.property.displayName));
}

KeyNumber KeyTable::samenessKey(const PROPINFO& row) {
  return sameness_.try_emplace(SamenessKey::of(row), static_cast<KeyNumber>(sameness_.size())).first->second;
}

KeyNumber KeyTable::fullKey(KeyNumber sameness, const PROPINFO& row) {
  return full_.try_emplace({sameness, PropertyKey::of(row)}, static_cast<KeyNumber>(full_.size()))
      .first->second;
}

}  // namespace velt::propdata
