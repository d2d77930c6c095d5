// Codes of custom type names.

#include <string_view>

#include "propdata/VeltPropData.h"

namespace {

constexpr int noCustomType = 551;

struct CustomTypeName {
  std::wstring_view name;
  int code;
};

// The numbers are stored in rows and compared elsewhere: they follow no order and stay as they are. The short
// name VELT_LTYPE has no counterpart under the other prefix, and the ACAD_ names exist for colors and line
// weights only.
// clang-format off
constexpr CustomTypeName customTypeNames[] = {
    // name                   code
    {L"VELT_COLOR",           540},
    {L"ACAD_COLOR",           540},
    {L"KELVO_COLOR",          540},
    {L"VELT_LAYER",           541},
    {L"KELVO_LAYER",          541},
    {L"VELT_LINETYPE",        547},
    {L"KELVO_LINETYPE",       547},
    {L"VELT_LTYPE",           547},
    {L"VELT_DISTANCE",        542},
    {L"KELVO_DISTANCE",       542},
    {L"VELT_ANGLE",           543},
    {L"KELVO_ANGLE",          543},
    {L"VELT_NOUNITS",         544},
    {L"KELVO_NOUNITS",        544},
    {L"VELT_LWEIGHT",         545},
    {L"ACAD_LWEIGHT",         545},
    {L"KELVO_LWEIGHT",        545},
    {L"VELT_NULL",            548},
    {L"KELVO_NULL",           548},
    {L"VELT_PLOTSTYLE",       546},
    {L"KELVO_PLOTSTYLE",      546},
    {L"VELT_PLOTSTYLETABLE",  549},
    {L"KELVO_PLOTSTYLETABLE", 549},
    {L"VELT_AREA",            550},
    {L"KELVO_AREA",           550},
};
// clang-format on

}  // namespace

int NameToUserdefinedType(const wchar_t* name) {
  const std::wstring_view wanted = name != nullptr ? name : L"";
  for (const CustomTypeName& known : customTypeNames) {
    // QUIRK(irregular_type_names): some names exist under one prefix only; plug-ins declare their types by them.
    if (wanted == known.name) return known.code;
  }
  return noCustomType;
}
