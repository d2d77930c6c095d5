// Kinds of properties for which the palette has an editor of its own.

#include <algorithm>
#include <array>
#include <cwchar>
#include <string_view>

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltVkCmColor.h"
#include "propdata/VeltPropData.h"
#include "propdata/typing/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

constexpr std::uint32_t indexOfNull = 0xFFFFFFFE;
constexpr std::uint32_t indexOfOtherName = 0xFFFFFFFF;

// clang-format off
constexpr std::array<const wchar_t*, 32> arrSpecialProperties = {
    L"Height",         L"Width",          L"Justify",        L"EndAngle",
    L"Weight",         L"StartSeg",       L"EndSeg",         L"Vertex",
    L"FitSmooth",      L"Style",          L"ContentBlockName", L"Direction",
    L"PlotStyleTable", L"Area",           L"DimStyle",       L"TextStyle",
    L"Arrowhead1Type", L"Arrowhead2Type", L"Precision",      L"AnglePrecision",
    L"Arrow",          L"PatternName",    L"Type",           L"ISOPenWidth",
    L"Angle",          L"HatchScale",     L"Spacing",        L"Double",
    L"Elevation",      L"Associative",    L"IslandStyle",    L"GradientName",
};

struct KindOfDispId {
  DISPID dispId;
  PropertyKind::Code kind;
};

// Properties that every entity has, with the same DISPID in every class.
constexpr KindOfDispId kindsOfDispIds[] = {
    // DISPID kind
    {1280,    PropertyKind::colorObject},
    {1281,    PropertyKind::entityLayer},
    {1282,    PropertyKind::entityLinetype},
    {1283,    PropertyKind::entityLinetypeScale},
    {1299,    PropertyKind::entityLineweight},
    {1300,    PropertyKind::entityPlotStyle},
    {1301,    PropertyKind::hyperlinks},
};

constexpr const GUID* annotationClasses[] = {
    &CLSID_VeltDimRadial,   &CLSID_VeltDimDiametric,      &CLSID_VeltDimRotated,  &CLSID_VeltDimAligned,
    &CLSID_VeltDimAngular,  &CLSID_VeltDim3PointAngular,  &CLSID_VeltDimOrdinate, &CLSID_VeltLeader,
    &CLSID_VeltMLeader,     &CLSID_VeltDimRadialLarge,    &CLSID_VeltDimArcLength, &CLSID_VeltTolerance,
};

constexpr const GUID* anyAnnotation = nullptr;

struct KindOfSpecialName {
  const wchar_t* name;
  const GUID* wantedClass;
  PropertyKind::Code kind;
};

// Tried in this order.
constexpr KindOfSpecialName kindsOfSpecialNames[] = {
    // name               class                      kind
    {L"Height",           &CLSID_VeltRasterImage,    PropertyKind::imageHeight},
    {L"Width",            &CLSID_VeltRasterImage,    PropertyKind::imageWidth},
    {L"Justify",          &CLSID_VeltText,           PropertyKind::textJustification},
    {L"Justify",          &CLSID_VeltAttribute,      PropertyKind::textJustification},
    {L"EndAngle",         &CLSID_VeltEllipse,        PropertyKind::ellipseEndAngle},
    {L"Weight",           &CLSID_VeltSpline,         PropertyKind::splineWeight},
    {L"StartSeg",         &CLSID_VeltLWPolyline,     PropertyKind::segmentWidth},
    {L"StartSeg",         &CLSID_VeltPolyline,       PropertyKind::segmentWidth},
    {L"EndSeg",           &CLSID_VeltLWPolyline,     PropertyKind::segmentWidth},
    {L"EndSeg",           &CLSID_VeltPolyline,       PropertyKind::segmentWidth},
    {L"Vertex",           &CLSID_VeltLWPolyline,     PropertyKind::vertex},
    {L"Vertex",           &CLSID_VeltPolyline,       PropertyKind::vertex},
    {L"FitSmooth",        &CLSID_VeltPolyline,       PropertyKind::polylineFit},
    {L"FitSmooth",        &CLSID_Velt3DPolyline,     PropertyKind::polyline3dFit},
    {L"FitSmooth",        &CLSID_VeltPolygonMesh,    PropertyKind::meshFit},
    {L"Style",            &CLSID_VeltText,           PropertyKind::textStyle},
    {L"Style",            &CLSID_VeltAttribute,      PropertyKind::textStyle},
    {L"Style",            &CLSID_VeltMText,          PropertyKind::mtextStyle},
    {L"ContentBlockName", &CLSID_VeltMLeader,        PropertyKind::leaderBlock},
    {L"Direction",        &CLSID_VeltMText,          PropertyKind::textDirection},
    {L"Direction",        &CLSID_VeltMLeader,        PropertyKind::textDirection},
    {L"PlotStyleTable",   &CLSID_VeltPViewport,      PropertyKind::viewportPlotStyleTable},
    {L"Area",             &CLSID_VeltArc,            PropertyKind::shapeArea},
    {L"Area",             &CLSID_VeltCircle,         PropertyKind::shapeArea},
    {L"Area",             &CLSID_VeltEllipse,        PropertyKind::shapeArea},
    {L"Area",             &CLSID_VeltPolyline,       PropertyKind::shapeArea},
    {L"Area",             &CLSID_VeltLWPolyline,     PropertyKind::shapeArea},
    {L"Area",             &CLSID_VeltRegion,         PropertyKind::shapeArea},
    {L"Area",             &CLSID_VeltSpline,         PropertyKind::shapeArea},
    {L"DimStyle",         anyAnnotation,             PropertyKind::dimensionStyle},
    {L"TextStyle",        anyAnnotation,             PropertyKind::choice},
    {L"Arrowhead1Type",   anyAnnotation,             PropertyKind::arrowhead},
    {L"Arrowhead2Type",   anyAnnotation,             PropertyKind::arrowhead},
    {L"Precision",        anyAnnotation,             PropertyKind::choice},
    {L"AnglePrecision",   anyAnnotation,             PropertyKind::choice},
    {L"Arrow",            anyAnnotation,             PropertyKind::arrowhead},
    {L"PatternName",      &CLSID_VeltHatch,          PropertyKind::hatchPattern},
    {L"Type",             &CLSID_VeltHatch,          PropertyKind::hatchType},
    {L"ISOPenWidth",      &CLSID_VeltHatch,          PropertyKind::hatchIsoPenWidth},
    {L"Angle",            &CLSID_VeltHatch,          PropertyKind::hatchAngle},
    {L"HatchScale",       &CLSID_VeltHatch,          PropertyKind::hatchScale},
    {L"Spacing",          &CLSID_VeltHatch,          PropertyKind::hatchSpacing},
    {L"Double",           &CLSID_VeltHatch,          PropertyKind::hatchFlag},
    {L"Elevation",        &CLSID_VeltHatch,          PropertyKind::hatchElevation},
    {L"Elevation",        &CLSID_VeltSolid,          PropertyKind::elevation},
    {L"Elevation",        &CLSID_VeltTrace,          PropertyKind::elevation},
    // QUIRK(associative_shares_double): the palette edits both of a hatch's flags with one editor.
    {L"Associative",      &CLSID_VeltHatch,          PropertyKind::hatchFlag},
    {L"IslandStyle",      &CLSID_VeltHatch,          PropertyKind::hatchIslandStyle},
    {L"GradientName",     &CLSID_VeltHatch,          PropertyKind::hatchGradient},
};
// clang-format on

// Only special names have rules, and each of them has one.
constexpr bool isSpecial(std::wstring_view name) {
  return std::ranges::find(arrSpecialProperties, name) != arrSpecialProperties.end();
}
constexpr bool hasRule(std::wstring_view name) {
  return std::ranges::find(kindsOfSpecialNames, name, &KindOfSpecialName::name)
         != std::end(kindsOfSpecialNames);
}
static_assert(std::ranges::all_of(kindsOfSpecialNames, isSpecial, &KindOfSpecialName::name));
static_assert(std::ranges::all_of(arrSpecialProperties, hasRule));

// Looks at the first characters before all others, because mostly those differ already.
bool isNamed(const wchar_t* name, const wchar_t* wanted) {
  return *name == *wanted && std::wcscmp(name, wanted) == 0;
}

bool isOfClass(const GUID& clsid, const GUID* wanted) {
  if (wanted != anyAnnotation) return clsid == *wanted;
  return std::any_of(std::begin(annotationClasses), std::end(annotationClasses),
                     [&](const GUID* annotation) { return clsid == *annotation; });
}

PropertyKind::Code kindOfDispId(DISPID dispId) {
  for (const KindOfDispId& rule : kindsOfDispIds) {
    if (rule.dispId == dispId) return rule.kind;
  }
  return PropertyKind::none;
}

bool isColorObject(const VARIANT& value) {
  if (value.vt != VT_DISPATCH) return false;
  InterfaceHolder<IVeltVkCmColor> color;
  return SUCCEEDED(query(value.pdispVal, IID_IVeltVkCmColor, color));
}

PropertyKind::Code kindOfValue(const VARIANT& value) {
  switch (value.vt) {
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_INT:
      return PropertyKind::number;
    case VT_BSTR:
      return PropertyKind::text;
    case VT_BOOL:
      return PropertyKind::flag;
    default:
      return PropertyKind::none;
  }
}

}  // namespace

namespace velt::propdata {

PropertyKind::Code kindOf(const GUID& clsid, const PROPINFO& prop) {
  if (const PropertyKind::Code kind = kindOfDispId(prop.dispId); kind != PropertyKind::none) return kind;
  if (isColorObject(prop.value)) return PropertyKind::colorObject;
  const wchar_t* const name = prop.name.c_str();
  for (const KindOfSpecialName& rule : kindsOfSpecialNames) {
    if (isNamed(name, rule.name) && isOfClass(clsid, rule.wantedClass)) return rule.kind;
  }
  return prop.hasChoices ? PropertyKind::choice : kindOfValue(prop.value);
}

void askForKind(DISPID dispId, const VARIANT& value) {
  if (kindOfDispId(dispId) == PropertyKind::none) static_cast<void>(isColorObject(value));
}

}  // namespace velt::propdata

// The first two need no guard: nothing in them throws.

std::uint32_t _GetSpecialPropertyIndex(const wchar_t* name) {
  if (name == nullptr) return indexOfNull;
  for (std::uint32_t index = 0; index < arrSpecialProperties.size(); ++index) {
    if (isNamed(name, arrSpecialProperties[index])) return index;
  }
  return indexOfOtherName;
}

int _ObjectIsA(GUID clsid, const GUID* wanted) {
  return wanted != nullptr && clsid == *wanted ? 1 : 0;
}

std::uint32_t _GetPropertyType(GUID clsid, PROPINFO* prop) {
  return guarded<std::uint32_t>(PropertyKind::none, [&]() -> std::uint32_t {
    return static_cast<std::uint32_t>(prop != nullptr ? kindOf(clsid, *prop) : PropertyKind::none);
  });
}
