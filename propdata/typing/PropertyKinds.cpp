// Kinds of properties for which the palette has an editor of its own.

#include <algorithm>
#include <array>
#include <cwchar>

#include "host/automation/IVeltVkCmColor.h"
#include "propdata/VeltPropData.h"
#include "propdata/support/ComPtr.h"

using namespace velt::propdata;

namespace {

constexpr std::uint32_t indexOfNull = 0xFFFFFFFE;
constexpr std::uint32_t indexOfOtherName = 0xFFFFFFFF;
constexpr std::uint32_t kindOfColor = 505;
constexpr std::uint32_t kindOfChoices = 511;

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
  std::uint32_t kind;
};

constexpr KindOfDispId kindsOfDispIds[] = {
    // DISPID kind
    {1280, 505},
    {1281, 521},
    {1282, 522},
    {1283, 539},
    {1299, 530},
    {1300, 523},
    {1301, 510},
};

constexpr const GUID* annotationClasses[] = {
    &CLSID_VeltDimRadial,   &CLSID_VeltDimDiametric,      &CLSID_VeltDimRotated,  &CLSID_VeltDimAligned,
    &CLSID_VeltDimAngular,  &CLSID_VeltDim3PointAngular,  &CLSID_VeltDimOrdinate, &CLSID_VeltLeader,
    &CLSID_VeltMLeader,     &CLSID_VeltDimRadialLarge,    &CLSID_VeltDimArcLength, &CLSID_VeltTolerance,
};

constexpr const GUID* anyAnnotation = nullptr;

struct KindOfSpecialName {
  std::uint32_t specialIndex;
  const GUID* wantedClass;
  std::uint32_t kind;
};

// Tried in this order; the rows of one index stand together.
constexpr KindOfSpecialName kindsOfSpecialNames[] = {
    // index  class                        kind
    {0,       &CLSID_VeltRasterImage,      533},
    {1,       &CLSID_VeltRasterImage,      534},
    {2,       &CLSID_VeltText,             536},
    {2,       &CLSID_VeltAttribute,        536},
    {3,       &CLSID_VeltEllipse,          508},
    {4,       &CLSID_VeltSpline,           538},
    {5,       &CLSID_VeltLWPolyline,       502},
    {5,       &CLSID_VeltPolyline,         502},
    {6,       &CLSID_VeltLWPolyline,       502},
    {6,       &CLSID_VeltPolyline,         502},
    {7,       &CLSID_VeltLWPolyline,       503},
    {7,       &CLSID_VeltPolyline,         503},
    {8,       &CLSID_VeltPolyline,         500},
    {8,       &CLSID_Velt3DPolyline,       501},
    {8,       &CLSID_VeltPolygonMesh,      532},
    {9,       &CLSID_VeltText,             537},
    {9,       &CLSID_VeltAttribute,        537},
    {9,       &CLSID_VeltMText,            526},
    {10,      &CLSID_VeltMLeader,          524},
    {11,      &CLSID_VeltMText,            525},
    {11,      &CLSID_VeltMLeader,          525},
    {12,      &CLSID_VeltPViewport,        531},
    {13,      &CLSID_VeltArc,              529},
    {13,      &CLSID_VeltCircle,           529},
    {13,      &CLSID_VeltEllipse,          529},
    {13,      &CLSID_VeltPolyline,         529},
    {13,      &CLSID_VeltLWPolyline,       529},
    {13,      &CLSID_VeltRegion,           529},
    {13,      &CLSID_VeltSpline,           529},
    {14,      anyAnnotation,               507},
    {15,      anyAnnotation,               511},
    {16,      anyAnnotation,               506},
    {17,      anyAnnotation,               506},
    {18,      anyAnnotation,               511},
    {19,      anyAnnotation,               511},
    {20,      anyAnnotation,               506},
    {21,      &CLSID_VeltHatch,            518},
    {22,      &CLSID_VeltHatch,            509},
    {23,      &CLSID_VeltHatch,            517},
    {24,      &CLSID_VeltHatch,            513},
    {25,      &CLSID_VeltHatch,            519},
    {26,      &CLSID_VeltHatch,            520},
    {27,      &CLSID_VeltHatch,            514},
    {28,      &CLSID_VeltHatch,            515},
    {28,      &CLSID_VeltSolid,            527},
    {28,      &CLSID_VeltTrace,            527},
    // QUIRK(associative_shares_double): the palette edits both of a hatch's flags with one editor.
    {29,      &CLSID_VeltHatch,            514},
    {30,      &CLSID_VeltHatch,            516},
    {31,      &CLSID_VeltHatch,            512},
};
// clang-format on

bool isOfClass(const GUID& clsid, const GUID* wanted) {
  if (wanted != anyAnnotation) return _ObjectIsA(clsid, wanted) != 0;
  return std::any_of(std::begin(annotationClasses), std::end(annotationClasses),
                     [&](const GUID* annotation) { return _ObjectIsA(clsid, annotation) != 0; });
}

bool isColorObject(const VARIANT& value) {
  if (value.vt != VT_DISPATCH) return false;
  ComPtr<IVeltVkCmColor> color;
  return SUCCEEDED(query(value.pdispVal, IID_IVeltVkCmColor, color));
}

std::uint32_t kindOfValue(const VARIANT& value) {
  switch (value.vt) {
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_INT:
      return 528;
    case VT_BSTR:
      return 535;
    case VT_BOOL:
      return 504;
    default:
      return 0;
  }
}

}  // namespace

std::uint32_t _GetSpecialPropertyIndex(const wchar_t* name) {
  if (name == nullptr) return indexOfNull;
  for (std::uint32_t index = 0; index < arrSpecialProperties.size(); ++index) {
    const wchar_t* const special = arrSpecialProperties[index];
    if (*special == *name && std::wcscmp(special, name) == 0) return index;
  }
  return indexOfOtherName;
}

int _ObjectIsA(GUID clsid, const GUID* wanted) {
  return wanted != nullptr && clsid == *wanted ? 1 : 0;
}

std::uint32_t _GetPropertyType(GUID clsid, PROPINFO* prop) {
  if (prop == nullptr) return 0;
  for (const KindOfDispId& rule : kindsOfDispIds) {
    if (rule.dispId == prop->dispId) return rule.kind;
  }
  if (isColorObject(prop->value)) return kindOfColor;
  const std::uint32_t index = _GetSpecialPropertyIndex(prop->name.c_str());
  for (const KindOfSpecialName& rule : kindsOfSpecialNames) {
    if (rule.specialIndex == index && isOfClass(clsid, rule.wantedClass)) return rule.kind;
  }
  if (prop->hasChoices) return kindOfChoices;
  return kindOfValue(prop->value);
}
