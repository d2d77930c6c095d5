#pragma once

// GUID: the 16-byte identifier of a class, an interface or a property. The first three fields are
// numbers of the machine: on this platform their lowest byte comes first in memory.

#include <cstdint>
#include <cstring>

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};

static_assert(sizeof(GUID) == 16);

using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFGUID = const GUID&;
using REFCLSID = const CLSID&;

inline bool operator==(const GUID& a, const GUID& b) {
  return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

inline constexpr GUID GUID_NULL{};
