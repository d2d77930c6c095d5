#pragma once

// What tests and tools set and ask of the COM runtime, beyond the functions that host/com/ declares.

#include "host/com/Types.h"

namespace velt::com {

// How often CoInitialize succeeded on this thread less how often CoUninitialize was called.
[[nodiscard]] int initializeCount() noexcept;

// What GetUserDefaultLangID and GetUserDefaultLCID answer on every thread from now on; both are 0x0409 at first.
void setUserLanguage(LANGID language, LCID locale) noexcept;

}  // namespace velt::com
