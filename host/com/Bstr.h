#pragma once

// BSTR: a pointer to NUL-terminated wide characters with a 32-bit length prefix that counts bytes. The
// null pointer is the empty string. Whoever receives one from a call owns it and frees it.

#include "host/com/Types.h"

using BSTR = OLECHAR*;

extern "C" {
BSTR SysAllocString(const OLECHAR* text);                      // null for null or when memory is exhausted
BSTR SysAllocStringLen(const OLECHAR* text, UINT characters);  // null text leaves the characters unset
BSTR SysAllocStringByteLen(const char* bytes, UINT byteCount);
void SysFreeString(BSTR string);  // null is allowed
UINT SysStringLen(BSTR string);   // characters, 0 for null
UINT SysStringByteLen(BSTR string);
}
