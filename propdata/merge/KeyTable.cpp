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

std::size_t KeyTable::Hash::operator()(const NameKey& key) const {
  return mix(mix(static_cast<std::uint32_t>(key.categoryId), hashOf(key.categoryName)), hashOf(key.name));
}

std::size_t KeyTable::Hash::operator()(const PropertyKey& key) const {
  const auto flags = static_cast<std::size_t>(key.hasChoices ? 2 : 0) + (key.isElement ? 1 : 0);
  return mix(flags, hashOf(key.displayName));
}

KeyNumber KeyTable::numberOf(const NameKey& key) {
  return names_.try_emplace(key, static_cast<KeyNumber>(names_.size())).first->second;
}

KeyNumber KeyTable::numberOf(const PropertyKey& key) {
  return properties_.try_emplace(key, static_cast<KeyNumber>(properties_.size())).first->second;
}

}  // namespace velt::propdata
