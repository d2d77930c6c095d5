#pragma once

// The scalar types of COM on this platform. LONG has 32 bits and `long` has 64: where an interface says `long`, all 64
// are read and written. wchar_t has 4 bytes and holds one character of UTF-32.

#include <cstdint>

#include "host/com/Guid.h"

// One byte, and not a C++ bool: an answer may be any number (some flags count only when they are exactly 1, and -1 is
// true elsewhere), and exactly one byte is written through a BOOL*.
using BOOL = signed char;

// Unsigned and signed integers of 8 to 64 bits.
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
// A status number; the language, and its locale.
using SCODE = std::int32_t;
using LCID = std::uint32_t;
using LANGID = std::uint16_t;
// The number of a member, and that of a category.
using DISPID = std::int32_t;
using MEMBERID = DISPID;
using PROPCAT = std::int32_t;
// A VARENUM; a yes or no (VARIANT_TRUE, VARIANT_FALSE); days since the end of 1899.
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using DATE = double;
// One character, and pointers to texts that a NUL ends.
using OLECHAR = wchar_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
// What only its giver understands.
using HANDLE = void*;
using HMODULE = void*;

static_assert(sizeof(long) == 8 && sizeof(wchar_t) == 4);

// Of a VARIANT_BOOL.
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;
