#pragma once

// String tables of resource libraries.

#include "host/com/Types.h"

inline constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 2;

extern "C" {
HMODULE LoadLibraryExW(const wchar_t* name, HANDLE file, DWORD flags);  // null when there is no such library
HMODULE loadResourceDll(const wchar_t* name);
// Copies at most that many characters, and then the NUL, for which the buffer has room besides; returns the
// characters copied. Leaves the buffer alone and returns 0 when the module or the string does not exist.
INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters);
}
