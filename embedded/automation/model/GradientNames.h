#pragma once

// The gradients that a hatch can be filled with.

#include <array>

namespace velt::automation {

// Those whose name begins with INV run from the second color to the first.
inline constexpr std::array<const wchar_t*, 9> gradientNames = {
    L"LINEAR",        L"CYLINDER",         L"INVCYLINDER", L"SPHERICAL", L"INVSPHERICAL",
    L"HEMISPHERICAL", L"INVHEMISPHERICAL", L"CURVED",      L"INVCURVED",
};

}  // namespace velt::automation
