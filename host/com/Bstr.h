#pragma once

// BSTR: the string of every interface. A pointer to wide characters that a NUL ends; the 32 bits before the
// first one hold the length in bytes without that NUL, so a string may also hold NULs of its own. The null pointer
// is an empty string.
//
// Called by: every operation that reads texts frees them; SetPropertiesValue alone allocates one, the name of the
// property. When that fails, the write ends before an entity is asked. Threads: as all of COM, on the palette's thread
// alone. Ownership: a string that a call answers belongs to the caller, who frees it with SysFreeString. A string that
// is passed to a call stays the caller's.

#include "host/com/Types.h"

using BSTR = OLECHAR*;

extern "C" {
// Each of the three answers null when memory is exhausted. SysAllocString also does for null; the two others leave
// the characters unset then.
BSTR SysAllocString(const OLECHAR* text);
BSTR SysAllocStringLen(const OLECHAR* text, UINT characters);
BSTR SysAllocStringByteLen(const char* bytes, UINT byteCount);

// Does nothing for null.
void SysFreeString(BSTR string);

// The length in characters, and in bytes; 0 for null.
UINT SysStringLen(BSTR string);
UINT SysStringByteLen(BSTR string);
}
