#pragma once

// The user-defined types of the type library: aliases that say what a plain value means, and enumerations.
//
// A palette picks its editor by the name of the type (VELT_DISTANCE, VELT_LAYER, ...), so the names are a contract.

#include <cstdint>
#include <span>

#include "host/com/Variant.h"

namespace velt::automation {

struct EnumMember {
  std::int32_t value;
  // In the type library.
  const wchar_t* name;
  // As shown to people.
  const wchar_t* label;
};

struct UserType {
  const wchar_t* name;
  const wchar_t* help;
  // What a value of the type is: VT_I4 for every enumeration.
  VARTYPE base;
  // In the order in which they are offered; empty for an alias.
  std::span<const EnumMember> members;

  [[nodiscard]] constexpr bool isEnumeration() const { return !members.empty(); }
};

// What type a property's value has.
struct ValueType {
  // VT_USERDEFINED for a user-defined type.
  VARTYPE declared;
  // Null for a plain type.
  const UserType* user;

  // Both conversions are meant: a row names a plain type or a user-defined one in the same column.
  constexpr ValueType(VARENUM plain) : declared(plain), user(nullptr) {}  // NOLINT(*-explicit-*)
  constexpr ValueType(const UserType& type)
      : declared(VT_USERDEFINED), user(&type) {}  // NOLINT(*-explicit-*)

  // The VARTYPE of the values themselves.
  [[nodiscard]] constexpr VARTYPE base() const { return user == nullptr ? declared : user->base; }
};

// The member of that value; null when the type has none.
constexpr const EnumMember* findMember(const UserType& type, std::int64_t value) {
  for (const EnumMember& member : type.members) {
    if (member.value == value) return &member;
  }
  return nullptr;
}

namespace types {

// clang-format off

// --- aliases ---------------------------------------------------------------------------------------------------------
//                                          name                  help                                            base
inline constexpr UserType layerName      = {L"VELT_LAYER",        L"Name of a layer of the drawing.",             VT_BSTR, {}};
inline constexpr UserType linetypeName   = {L"VELT_LINETYPE",     L"Name of a line type of the drawing.",         VT_BSTR, {}};
inline constexpr UserType plotStyleName  = {L"VELT_PLOTSTYLE",    L"Name of a plot style.",                       VT_BSTR, {}};
inline constexpr UserType distance       = {L"VELT_DISTANCE",     L"Length in drawing units.",                    VT_R8,   {}};
inline constexpr UserType angle          = {L"VELT_ANGLE",        L"Angle in radians.",                           VT_R8,   {}};
inline constexpr UserType area           = {L"VELT_AREA",         L"Area in square drawing units.",               VT_R8,   {}};
inline constexpr UserType noUnits        = {L"VELT_NOUNITS",      L"Number without a unit.",                      VT_R8,   {}};
inline constexpr UserType color          = {L"VELT_COLOR",        L"Index of a colour.",                          VT_I4,   {}};
inline constexpr UserType plotStyleTable = {L"VELT_PLOTSTYLETABLE", L"Name of a table of plot styles.",           VT_BSTR, {}};
inline constexpr UserType noEditor       = {L"VELT_NULL",         L"A value that no editor is offered for.",      VT_BSTR, {}};

// --- enumerations ----------------------------------------------------------------------------------------------------
inline constexpr EnumMember lineweightMembers[] = {
  // value  name               label
  {  -1,    L"LwByLayer",      L"ByLayer"},
  {  -2,    L"LwByBlock",      L"ByBlock"},
  {  -3,    L"LwDefault",      L"Default"},
  {   0,    L"Lw000",          L"0.00 mm"},
  {   5,    L"Lw005",          L"0.05 mm"},
  {   9,    L"Lw009",          L"0.09 mm"},
  {  13,    L"Lw013",          L"0.13 mm"},
  {  15,    L"Lw015",          L"0.15 mm"},
  {  18,    L"Lw018",          L"0.18 mm"},
  {  20,    L"Lw020",          L"0.20 mm"},
  {  25,    L"Lw025",          L"0.25 mm"},
  {  30,    L"Lw030",          L"0.30 mm"},
  {  35,    L"Lw035",          L"0.35 mm"},
  {  40,    L"Lw040",          L"0.40 mm"},
  {  50,    L"Lw050",          L"0.50 mm"},
  {  53,    L"Lw053",          L"0.53 mm"},
  {  60,    L"Lw060",          L"0.60 mm"},
  {  70,    L"Lw070",          L"0.70 mm"},
  {  80,    L"Lw080",          L"0.80 mm"},
  {  90,    L"Lw090",          L"0.90 mm"},
  { 100,    L"Lw100",          L"1.00 mm"},
  { 106,    L"Lw106",          L"1.06 mm"},
  { 120,    L"Lw120",          L"1.20 mm"},
  { 140,    L"Lw140",          L"1.40 mm"},
  { 158,    L"Lw158",          L"1.58 mm"},
  { 200,    L"Lw200",          L"2.00 mm"},
  { 211,    L"Lw211",          L"2.11 mm"},
};
inline constexpr UserType lineweight = {L"VELT_LWEIGHT", L"Line weight in hundredths of a millimetre.", VT_I4, lineweightMembers};
// The same under a name that no palette knows: it picks the editor of the entity's own line weight by other means.
inline constexpr UserType entityLineweight = {L"VeltLineweight", L"Line weight in hundredths of a millimetre.", VT_I4, lineweightMembers};

inline constexpr EnumMember textJustificationMembers[] = {
  // value  name               label
  {  0,     L"Left",           L"Left"},
  {  1,     L"Center",         L"Center"},
  {  2,     L"Right",          L"Right"},
  {  3,     L"Aligned",        L"Aligned"},
  {  4,     L"Middle",         L"Middle"},
  {  5,     L"Fit",            L"Fit"},
  {  6,     L"TopLeft",        L"Top left"},
  {  7,     L"TopCenter",      L"Top center"},
  {  8,     L"TopRight",       L"Top right"},
  {  9,     L"MiddleLeft",     L"Middle left"},
  { 10,     L"MiddleCenter",   L"Middle center"},
  { 11,     L"MiddleRight",    L"Middle right"},
  { 12,     L"BottomLeft",     L"Bottom left"},
  { 13,     L"BottomCenter",   L"Bottom center"},
  { 14,     L"BottomRight",    L"Bottom right"},
};
inline constexpr UserType textJustification = {L"VeltTextJustification", L"Where the points of a text lie against it.", VT_I4, textJustificationMembers};

inline constexpr EnumMember attachmentMembers[] = {
  // value  name               label
  { 1,      L"TopLeft",        L"Top left"},
  { 2,      L"TopCenter",      L"Top center"},
  { 3,      L"TopRight",       L"Top right"},
  { 4,      L"MiddleLeft",     L"Middle left"},
  { 5,      L"MiddleCenter",   L"Middle center"},
  { 6,      L"MiddleRight",    L"Middle right"},
  { 7,      L"BottomLeft",     L"Bottom left"},
  { 8,      L"BottomCenter",   L"Bottom center"},
  { 9,      L"BottomRight",    L"Bottom right"},
};
inline constexpr UserType attachment = {L"VeltAttachment", L"Where the insertion point lies against a text box.", VT_I4, attachmentMembers};

inline constexpr EnumMember drawingDirectionMembers[] = {
  // value  name               label
  { 1,      L"LeftToRight",    L"Horizontal"},
  { 3,      L"TopToBottom",    L"Vertical"},
  { 5,      L"ByStyle",        L"By style"},
};
inline constexpr UserType drawingDirection = {L"VeltDrawingDirection", L"How the lines of a text run.", VT_I4, drawingDirectionMembers};

inline constexpr EnumMember lineSpacingStyleMembers[] = {
  // value  name               label
  { 1,      L"AtLeast",        L"At least"},
  { 2,      L"Exactly",        L"Exactly"},
};
inline constexpr UserType lineSpacingStyle = {L"VeltLineSpacingStyle", L"Whether tall characters push lines apart.", VT_I4, lineSpacingStyleMembers};

inline constexpr EnumMember hatchTypeMembers[] = {
  // value  name               label
  { 0,      L"UserDefined",    L"User-defined"},
  { 1,      L"Predefined",     L"Predefined"},
  { 2,      L"Custom",         L"Custom"},
  { 3,      L"Solid",          L"Solid"},
  { 4,      L"Gradient",       L"Gradient"},
};
inline constexpr UserType hatchType = {L"VeltHatchType", L"Where a hatch has its pattern from.", VT_I4, hatchTypeMembers};

inline constexpr EnumMember islandStyleMembers[] = {
  // value  name               label
  { 0,      L"Normal",         L"Normal"},
  { 1,      L"Outer",          L"Outer"},
  { 2,      L"Ignore",         L"Ignore"},
};
inline constexpr UserType islandStyle = {L"VeltIslandStyle", L"What a hatch does with islands.", VT_I4, islandStyleMembers};

inline constexpr EnumMember isoPenWidthMembers[] = {
  // value  name               label
  {  -1,    L"PenUnknown",     L"Not ISO"},
  {  13,    L"Pen013",         L"0.13 mm"},
  {  18,    L"Pen018",         L"0.18 mm"},
  {  25,    L"Pen025",         L"0.25 mm"},
  {  35,    L"Pen035",         L"0.35 mm"},
  {  50,    L"Pen050",         L"0.50 mm"},
  {  70,    L"Pen070",         L"0.70 mm"},
  { 100,    L"Pen100",         L"1.00 mm"},
  { 140,    L"Pen140",         L"1.40 mm"},
  { 200,    L"Pen200",         L"2.00 mm"},
};
inline constexpr UserType isoPenWidth = {L"VeltIsoPenWidth", L"Pen width that an ISO pattern is drawn for, in hundredths of a millimetre.", VT_I4, isoPenWidthMembers};

inline constexpr EnumMember insertUnitsMembers[] = {
  // value  name                   label
  {  0,     L"Unitless",           L"Unitless"},
  {  1,     L"Inches",             L"Inches"},
  {  2,     L"Feet",               L"Feet"},
  {  3,     L"Miles",              L"Miles"},
  {  4,     L"Millimeters",        L"Millimeters"},
  {  5,     L"Centimeters",        L"Centimeters"},
  {  6,     L"Meters",             L"Meters"},
  {  7,     L"Kilometers",         L"Kilometers"},
  {  8,     L"Microinches",        L"Microinches"},
  {  9,     L"Mils",               L"Mils"},
  { 10,     L"Yards",              L"Yards"},
  { 11,     L"Angstroms",          L"Angstroms"},
  { 12,     L"Nanometers",         L"Nanometers"},
  { 13,     L"Microns",            L"Microns"},
  { 14,     L"Decimeters",         L"Decimeters"},
  { 15,     L"Decameters",         L"Decameters"},
  { 16,     L"Hectometers",        L"Hectometers"},
  { 17,     L"Gigameters",         L"Gigameters"},
  { 18,     L"AstronomicalUnits",  L"Astronomical units"},
  { 19,     L"LightYears",         L"Light years"},
  { 20,     L"Parsecs",            L"Parsecs"},
  { 21,     L"SurveyFeet",         L"US survey feet"},
  { 22,     L"SurveyInches",       L"US survey inches"},
  { 23,     L"SurveyYards",        L"US survey yards"},
  { 24,     L"SurveyMiles",        L"US survey miles"},
};
inline constexpr UserType insertUnits = {L"VeltInsertUnits", L"Unit that a block is drawn in.", VT_I4, insertUnitsMembers};

inline constexpr EnumMember polylineFitMembers[] = {
  // value  name               label
  { 0,      L"NoFit",          L"None"},
  { 1,      L"CurveFit",       L"Fit curve"},
  { 5,      L"Quadratic",      L"Quadratic"},
  { 6,      L"Cubic",          L"Cubic"},
};
inline constexpr UserType polylineFit = {L"VeltPolylineFit", L"How a polyline is smoothed.", VT_I4, polylineFitMembers};

inline constexpr EnumMember spatialPolylineFitMembers[] = {
  // value  name               label
  { 0,      L"NoFit",          L"None"},
  { 5,      L"Quadratic",      L"Quadratic"},
  { 6,      L"Cubic",          L"Cubic"},
};
inline constexpr UserType spatialPolylineFit = {L"VeltSpatialPolylineFit", L"How a polyline in space is smoothed.", VT_I4, spatialPolylineFitMembers};

inline constexpr EnumMember meshFitMembers[] = {
  // value  name               label
  { 0,      L"NoFit",          L"None"},
  { 5,      L"Quadratic",      L"Quadratic"},
  { 6,      L"Cubic",          L"Cubic"},
  { 8,      L"Bezier",         L"Bezier"},
};
inline constexpr UserType meshFit = {L"VeltMeshFit", L"How a mesh is smoothed.", VT_I4, meshFitMembers};

inline constexpr EnumMember multilineJustificationMembers[] = {
  // value  name               label
  { 0,      L"Top",            L"Top"},
  { 1,      L"Zero",           L"Zero"},
  { 2,      L"Bottom",         L"Bottom"},
};
inline constexpr UserType multilineJustification = {L"VeltMultilineJustification", L"Which of its lines a multiline was drawn along.", VT_I4, multilineJustificationMembers};

inline constexpr EnumMember leaderTypeMembers[] = {
  // value  name               label
  { 0,      L"LineNoArrow",    L"Line"},
  { 1,      L"SplineNoArrow",  L"Spline"},
  { 2,      L"LineWithArrow",  L"Line with arrow"},
  { 3,      L"SplineWithArrow", L"Spline with arrow"},
};
inline constexpr UserType leaderType = {L"VeltLeaderType", L"How a leader is drawn.", VT_I4, leaderTypeMembers};

inline constexpr EnumMember leaderAnnotationMembers[] = {
  // value  name               label
  { 0,      L"Text",           L"Text"},
  { 1,      L"Tolerance",      L"Tolerance"},
  { 2,      L"Block",          L"Block"},
  { 3,      L"None",           L"None"},
};
inline constexpr UserType leaderAnnotation = {L"VeltLeaderAnnotation", L"What a leader leads to.", VT_I4, leaderAnnotationMembers};

inline constexpr EnumMember multileaderLineMembers[] = {
  // value  name               label
  { 0,      L"NoLine",         L"None"},
  { 1,      L"Straight",       L"Straight"},
  { 2,      L"Spline",         L"Spline"},
};
inline constexpr UserType multileaderLine = {L"VeltMultileaderLine", L"How the lines of a multileader are drawn.", VT_I4, multileaderLineMembers};

inline constexpr EnumMember multileaderContentMembers[] = {
  // value  name               label
  { 0,      L"NoContent",      L"None"},
  { 1,      L"BlockContent",   L"Block"},
  { 2,      L"TextContent",    L"Text"},
  { 3,      L"ToleranceContent", L"Tolerance"},
};
inline constexpr UserType multileaderContent = {L"VeltMultileaderContent", L"What a multileader shows.", VT_I4, multileaderContentMembers};

inline constexpr EnumMember viewRenderingMembers[] = {
  // value  name               label
  { 0,      L"Optimized2D",    L"2D optimized"},
  { 1,      L"Wireframe",      L"Wireframe"},
  { 2,      L"HiddenLine",     L"Hidden lines"},
  { 3,      L"FlatShaded",     L"Flat shaded"},
  { 4,      L"GouraudShaded",  L"Gouraud shaded"},
  { 5,      L"FlatShadedEdges", L"Flat shaded with edges"},
  { 6,      L"GouraudShadedEdges", L"Gouraud shaded with edges"},
};
inline constexpr UserType viewRendering = {L"VeltViewRendering", L"How a viewport shows its contents.", VT_I4, viewRenderingMembers};

inline constexpr EnumMember shadePlotMembers[] = {
  // value  name               label
  { 0,      L"AsDisplayed",    L"As displayed"},
  { 1,      L"Wireframe",      L"Wireframe"},
  { 2,      L"Hidden",         L"Hidden lines"},
  { 3,      L"Rendered",       L"Rendered"},
};
inline constexpr UserType shadePlot = {L"VeltShadePlot", L"How a viewport is plotted.", VT_I4, shadePlotMembers};

inline constexpr EnumMember flowDirectionMembers[] = {
  // value  name               label
  { 0,      L"Down",           L"Down"},
  { 1,      L"Up",             L"Up"},
};
inline constexpr UserType flowDirection = {L"VeltFlowDirection", L"Which way the rows of a table follow each other.", VT_I4, flowDirectionMembers};

// clang-format on

}  // namespace types
}  // namespace velt::automation
