#pragma once

// Between the VARIANTs of the layer and values.

#include <cstdint>
#include <optional>
#include <string>

#include "palette/Palette.h"

namespace velt::palette {

// Of every whole number but those of 64 bits without a sign.
std::optional<std::int64_t> integerIn(const VARIANT& value);

// May call the host, for the texts of objects.
PlainValue plainValueOf(const VARIANT& value);

// Takes over what the VARIANT owns.
Value owning(const VARIANT& variant);

// Up to the first NUL. Throws std::bad_alloc.
Value textValue(const std::wstring& text);

}  // namespace velt::palette
