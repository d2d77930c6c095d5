// The kinds that the names of declared types tell.

#include <string_view>

#include "propdata/VeltPropData.h"
#include "propdata/typeinfo/Cores.h"

using namespace velt::propdata;

namespace {

struct CustomTypeName {
  std::wstring_view name;
  PropertyKind::Code kind;
};

// The short name VELT_LTYPE has no counterpart under the other prefix, and the ACAD_ names exist for colors and
// line weights only.
// clang-format off
constexpr CustomTypeName customTypeNames[] = {
    // name                   kind
    {L"VELT_COLOR",           PropertyKind::color},
    {L"ACAD_COLOR",           PropertyKind::color},
    {L"KELVO_COLOR",          PropertyKind::color},
    {L"VELT_LAYER",           PropertyKind::layer},
    {L"KELVO_LAYER",          PropertyKind::layer},
    {L"VELT_LINETYPE",        PropertyKind::linetype},
    {L"KELVO_LINETYPE",       PropertyKind::linetype},
    {L"VELT_LTYPE",           PropertyKind::linetype},
    {L"VELT_DISTANCE",        PropertyKind::distance},
    {L"KELVO_DISTANCE",       PropertyKind::distance},
    {L"VELT_ANGLE",           PropertyKind::angle},
    {L"KELVO_ANGLE",          PropertyKind::angle},
    {L"VELT_NOUNITS",         PropertyKind::noUnits},
    {L"KELVO_NOUNITS",        PropertyKind::noUnits},
    {L"VELT_LWEIGHT",         PropertyKind::lineweight},
    {L"ACAD_LWEIGHT",         PropertyKind::lineweight},
    {L"KELVO_LWEIGHT",        PropertyKind::lineweight},
    {L"VELT_NULL",            PropertyKind::noEditor},
    {L"KELVO_NULL",           PropertyKind::noEditor},
    {L"VELT_PLOTSTYLE",       PropertyKind::plotStyle},
    {L"KELVO_PLOTSTYLE",      PropertyKind::plotStyle},
    {L"VELT_PLOTSTYLETABLE",  PropertyKind::plotStyleTable},
    {L"KELVO_PLOTSTYLETABLE", PropertyKind::plotStyleTable},
    {L"VELT_AREA",            PropertyKind::area},
    {L"KELVO_AREA",           PropertyKind::area},
};
// clang-format on

}  // namespace

namespace velt::propdata {

PropertyKind::Code kindOfTypeName(const wchar_t* name) {
  const std::wstring_view wanted = name != nullptr ? name : L"";
  for (const CustomTypeName& known : customTypeNames) {
    // QUIRK(irregular_type_names): some names exist under one prefix only; plug-ins declare their types by them.
    if (wanted == known.name) return known.kind;
  }
  return PropertyKind::unknownType;
}

}  // namespace velt::propdata

// Needs no guard: nothing in it throws.
int NameToUserdefinedType(const wchar_t* name) {
  return kindOfTypeName(name);
}
