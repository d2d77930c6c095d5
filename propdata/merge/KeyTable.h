#pragma once

// Numbers for the keys of rows, so that a merge compares strings once for each row and numbers from then on:
// equal keys have equal numbers, different keys different ones. One table serves one merge.

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "propdata/merge/NameKey.h"
#include "propdata/merge/PropertyKey.h"

namespace velt::propdata {

using KeyNumber = std::uint32_t;

class KeyTable {
 public:
  KeyNumber numberOf(const NameKey& key);
  KeyNumber numberOf(const PropertyKey& key);

 private:
  struct Hash {
    std::size_t operator()(const NameKey& key) const;
    std::size_t operator()(const PropertyKey& key) const;
  };

  std::unordered_map<NameKey, KeyNumber, Hash> names_;
  std::unordered_map<PropertyKey, KeyNumber, Hash> properties_;
};

}  // namespace velt::propdata
