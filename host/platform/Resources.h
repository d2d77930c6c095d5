#pragma once

// String tables of resource libraries. The layer reads two: "PropertyBarRes.dll" with its messages (1001 to 1023) and
// "PlxOPMRes.dll" with the names of predefined categories (1001 to 1032). Each may have to stand in for the other, so
// their numbers must not clash: see shared_resource_handle in docs/quirks.md.
//
// A module stays loaded for the life of the process.

#include "host/com/Types.h"

// For its texts alone: no code of the library runs.
inline constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 2;

extern "C" {
// Called by: the first operation that needs a message (the first function), or the name of a predefined category (the
// second). Failure: the text is empty, and the next need tries again.
// Both answer null when there is no such library. file is null; flags are LOAD_LIBRARY_AS_DATAFILE.
HMODULE LoadLibraryExW(const wchar_t* name, HANDLE file, DWORD flags);
HMODULE loadResourceDll(const wchar_t* name);

// Copies at most that many characters of the string and then a NUL, for which the buffer has room besides; answers how
// many characters were copied. Leaves the buffer alone and answers 0 when the module or the string does not exist.
INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters);
}
