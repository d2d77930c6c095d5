#pragma once

// The part of the COM runtime that callers outside the host have no declaration for: what a test or a tool sets and
// asks.

#include "host/com/Types.h"

namespace velt::com {

// How often CoInitialize succeeded on this thread less how often CoUninitialize was called.
[[nodiscard]] int initializeCount() noexcept;

// What GetUserDefaultLangID and GetUserDefaultLCID answer on every thread from now on; both are 0x0409 at first.
void setUserLanguage(LANGID language, LCID locale) noexcept;

}  // namespace velt::com
