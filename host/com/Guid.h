#pragma once

// GUID: the 16-byte identifier of a class, an interface or a property. The first three fields are
// numbers of the machine: on this platform their lowest byte comes first in memory.

#include <cstdint>
#include <cstring>

struct GUID {
  // The number before the first hyphen of its text form; then those up to the third hyphen; then eight bytes as they
  // stand there.
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};

static_assert(sizeof(GUID) == 16);

// The id of an interface, and of a class; with REF as an argument is passed.
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFGUID = const GUID&;
using REFCLSID = const CLSID&;

// Byte for byte.
inline bool operator==(const GUID& a, const GUID& b) {
  return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

// The id of nothing: ends lists of ids, and stands where an id has no meaning.
inline constexpr GUID GUID_NULL{};
