#pragma once

// The scalar types of COM on this platform. LONG has 32 bits and `long` has 64: where an interface says `long`, all 64
// are read and written. wchar_t has 4 bytes and holds one character of UTF-32.

#include <cstdint>

#include "host/com/Guid.h"

// One byte, and not a C++ bool: an answer may be any number (some flags count only when they are exactly 1, and -1 is
// true elsewhere), and exactly one byte is written through a BOOL*.
using BOOL = signed char;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using SCODE = std::int32_t;
using LCID = std::uint32_t;
using LANGID = std::uint16_t;
using DISPID = std::int32_t;
using MEMBERID = DISPID;
using PROPCAT = std::int32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using DATE = double;
using OLECHAR = wchar_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using HANDLE = void*;
using HMODULE = void*;

static_assert(sizeof(long) == 8 && sizeof(wchar_t) == 4);

inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;
