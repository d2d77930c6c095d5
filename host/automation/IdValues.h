#pragma once

// The values of the class ids and interface ids, as constants of whoever includes this.
//
// Ids.h only declares the constants of the same names at global scope: they are data of the property layer, which a host
// and a plug-in do not link. Their code lives in namespace velt, or names these as velt::CLSID_VeltLine.

#include "host/com/Guid.h"

namespace velt {

// clang-format off
#define VELT_CLSID(name, first, second, third, ...) inline constexpr CLSID CLSID_##name{first, second, third, {__VA_ARGS__}};
#define VELT_IID(name, first, second, third, ...) inline constexpr IID IID_##name{first, second, third, {__VA_ARGS__}};
#include "host/automation/Ids.inc"
// clang-format on

}  // namespace velt
