#pragma once

// The names of user-defined types by which the layer knows the kind of a property. The check is loaded without the layer,
// so it has a list of its own; a test compares it with the layer's.

#include <array>
#include <string_view>

namespace velt::hostcheck {

inline constexpr std::array<std::wstring_view, 25> typeNames = {
    L"VELT_COLOR",      L"ACAD_COLOR",          L"KELVO_COLOR",          L"VELT_LAYER",
    L"KELVO_LAYER",     L"VELT_LINETYPE",       L"KELVO_LINETYPE",       L"VELT_LTYPE",
    L"VELT_DISTANCE",   L"KELVO_DISTANCE",      L"VELT_ANGLE",           L"KELVO_ANGLE",
    L"VELT_NOUNITS",    L"KELVO_NOUNITS",       L"VELT_LWEIGHT",         L"ACAD_LWEIGHT",
    L"KELVO_LWEIGHT",   L"VELT_NULL",           L"KELVO_NULL",           L"VELT_PLOTSTYLE",
    L"KELVO_PLOTSTYLE", L"VELT_PLOTSTYLETABLE", L"KELVO_PLOTSTYLETABLE", L"VELT_AREA",
    L"KELVO_AREA",
};

}  // namespace velt::hostcheck
