#pragma once

// Numbers for the keys of rows, so that a merge compares strings once for each row and numbers from then on:
// equal keys have equal numbers, different keys different ones. One table serves one merge.

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "propdata/merge/PropertyKey.h"
#include "propdata/merge/SamenessKey.h"

namespace velt::propdata {

using KeyNumber = std::uint32_t;

class KeyTable {
 public:
  KeyNumber samenessKey(const PROPINFO& row);
  // The full key: the sameness key with that number and the row's property key together.
  KeyNumber fullKey(KeyNumber sameness, const PROPINFO& row);

 private:
  struct FullKey {
    KeyNumber sameness;
    PropertyKey property;
    bool operator==(const FullKey&) const = default;
  };
  struct Hash {
    std::size_t operator()(const SamenessKey& key) const;
    std::size_t operator()(const FullKey& key) const;
  };

  std::unordered_map<SamenessKey, KeyNumber, Hash> sameness_;
  std::unordered_map<FullKey, KeyNumber, Hash> full_;
};

}  // namespace velt::propdata
