#pragma once

// From the VARIANTs of the layer to values, and back.

#include <cstdint>
#include <optional>
#include <string>

#include "palette/Palette.h"

namespace velt::palette {

// The value of an integer; nothing for other types, and for VT_UI8, whose numbers may not fit.
std::optional<std::int64_t> integerIn(const VARIANT& value);

// May call the host, for the texts of objects.
PlainValue plainValueOf(const VARIANT& value);

// The value owns what the VARIANT owned.
Value owning(const VARIANT& variant);

// Up to the first NUL. Throws std::bad_alloc.
Value textValue(const std::wstring& text);

}  // namespace velt::palette
