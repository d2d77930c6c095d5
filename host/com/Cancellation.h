#pragma once

// How a host cancels what the layer is doing: a call throws a _com_error with this result and this description. The
// operation ends with its failure value and the text as its message, by which a palette can tell it from a failure.
//
// Such a call has done nothing yet. The calls that follow are answered as ever, so that a palette can find out how far the
// operation came. No call that looks for dynamic rows cancels: there an exception costs a row and not the operation.

#include "host/com/HResult.h"

// The user does not want it any more.
inline constexpr HRESULT E_ABORT = velt::com::failure(0x80004004U);

// The description of what is thrown, and the message that users see.
inline constexpr const wchar_t* cancelledText = L"The operation was cancelled.";
