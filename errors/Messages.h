#pragma once

// How the layer itself gets its messages. These functions throw std::bad_alloc, as inner functions do.

#include "errors/LoadErrString.h"

namespace velt::errors {

// The core of LoadErrString.
CStdStr<wchar_t> loadMessage(int id);

// For `return failWith(...)`: leaves the message in the error text and answers false.
bool failWith(CStdStr<wchar_t>& errorText, int id);
// The same for a message that is a format with a place for a property's name.
bool failWith(CStdStr<wchar_t>& errorText, int id, const CStdStr<wchar_t>& name);

}  // namespace velt::errors
