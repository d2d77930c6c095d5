#pragma once

// The values of the class ids and interface ids, as constants of namespace velt: velt::CLSID_VeltLine.
//
// For hosts and plug-ins. The constants of the same names at global scope, which Ids.h declares, are data of the
// property layer, and neither a host nor a plug-in links that.

#include "host/com/Guid.h"

namespace velt {

// clang-format off
#define VELT_CLSID(name, first, second, third, ...) inline constexpr CLSID CLSID_##name{first, second, third, {__VA_ARGS__}};
#define VELT_IID(name, first, second, third, ...) inline constexpr IID IID_##name{first, second, third, {__VA_ARGS__}};
#include "host/automation/Ids.inc"
// clang-format on

}  // namespace velt
