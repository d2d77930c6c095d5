#pragma once

// Starting COM on a thread, task memory and the user's locale.

#include <cstddef>

#include "host/com/HResult.h"
#include "host/com/Types.h"

inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;
inline constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x800;
inline constexpr LCID LOCALE_USER_DEFAULT = 0x400;

extern "C" {
HRESULT CoInitialize(void* reserved);
void CoUninitialize();
void* CoTaskMemAlloc(std::size_t bytes);
void CoTaskMemFree(void* block);  // null is allowed
LANGID GetUserDefaultLangID();
LCID GetUserDefaultLCID();
}
