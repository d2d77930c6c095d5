#pragma once

// Starting COM on a thread, task memory and the user's language.

#include <cstddef>

#include "host/com/HResult.h"
#include "host/com/Types.h"

// Where an automation object is to live: in this process.
inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;
// The locales in which names are resolved and values are put.
inline constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x800;
inline constexpr LCID LOCALE_USER_DEFAULT = 0x400;

extern "C" {
// Counts per thread: S_OK for the first call of a thread, S_FALSE (a success too) for each further one.
// `reserved` is null.
// Called by: InitializePropData, also for an empty selection. Failure: message 1001, and no entry is touched.
HRESULT CoInitialize(void* reserved);
// Takes one call of CoInitialize back. Called by: UnInitializePropData, but not for an empty selection.
void CoUninitialize();

// Memory that one side of a call allocates and the other frees: arrays of strings and of cookies. Null when memory is
// exhausted; freeing null does nothing. The layer frees choices and elements that it has read, and allocates nothing.
void* CoTaskMemAlloc(std::size_t bytes);
void CoTaskMemFree(void* block);

// The user's language, and the locale that it is part of. Type information and values are asked for in it.
LANGID GetUserDefaultLangID();
LCID GetUserDefaultLCID();
}
