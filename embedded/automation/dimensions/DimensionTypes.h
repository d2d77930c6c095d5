#pragma once

// The user-defined types that only dimensions, leaders and tolerances use.

#include "embedded/automation/model/UserTypes.h"

namespace velt::automation::types {

// clang-format off

inline constexpr EnumMember arrowheadMembers[] = {
  // value  name                    label
  {  0,     L"ClosedFilled",        L"Closed filled"},
  {  1,     L"ClosedBlank",         L"Closed blank"},
  {  2,     L"Closed",              L"Closed"},
  {  3,     L"Dot",                 L"Dot"},
  {  4,     L"ArchitecturalTick",   L"Architectural tick"},
  {  5,     L"Oblique",             L"Oblique"},
  {  6,     L"Open",                L"Open"},
  {  7,     L"Origin",              L"Origin indicator"},
  {  8,     L"Origin2",             L"Origin indicator 2"},
  {  9,     L"Open90",              L"Right angle"},
  { 10,     L"Open30",              L"Open 30"},
  { 11,     L"DotSmall",            L"Dot small"},
  { 12,     L"DotBlank",            L"Dot blank"},
  { 13,     L"Small",               L"Dot small blank"},
  { 14,     L"BoxBlank",            L"Box"},
  { 15,     L"BoxFilled",           L"Box filled"},
  { 16,     L"DatumBlank",          L"Datum triangle"},
  { 17,     L"DatumFilled",         L"Datum triangle filled"},
  { 18,     L"Integral",            L"Integral"},
  { 19,     L"None",                L"None"},
  { 20,     L"UserDefined",         L"User-defined"},
};
inline constexpr UserType arrowhead = {L"VeltArrowhead", L"What stands at the end of a line.", VT_I4, arrowheadMembers};

inline constexpr EnumMember precisionMembers[] = {
  // value  name        label
  { 0,      L"Places0", L"0"},
  { 1,      L"Places1", L"0.0"},
  { 2,      L"Places2", L"0.00"},
  { 3,      L"Places3", L"0.000"},
  { 4,      L"Places4", L"0.0000"},
  { 5,      L"Places5", L"0.00000"},
  { 6,      L"Places6", L"0.000000"},
  { 7,      L"Places7", L"0.0000000"},
  { 8,      L"Places8", L"0.00000000"},
};
inline constexpr UserType precision = {L"VeltPrecision", L"How many decimal places are shown.", VT_I4, precisionMembers};

inline constexpr EnumMember lengthFormatMembers[] = {
  // value  name               label
  { 1,      L"Scientific",     L"Scientific"},
  { 2,      L"Decimal",        L"Decimal"},
  { 3,      L"Engineering",    L"Engineering"},
  { 4,      L"Architectural",  L"Architectural"},
  { 5,      L"Fractional",     L"Fractional"},
  { 6,      L"System",         L"As the system does"},
  { 7,      L"ArchitecturalStacked", L"Architectural stacked"},
  { 8,      L"FractionalStacked", L"Fractional stacked"},
};
inline constexpr UserType lengthFormat = {L"VeltLengthFormat", L"How lengths are written.", VT_I4, lengthFormatMembers};

inline constexpr EnumMember angleFormatMembers[] = {
  // value  name               label
  { 0,      L"DecimalDegrees", L"Decimal degrees"},
  { 1,      L"DegreesMinutesSeconds", L"Degrees, minutes, seconds"},
  { 2,      L"Gradians",       L"Gradians"},
  { 3,      L"Radians",        L"Radians"},
  { 4,      L"SurveyorsUnits", L"Surveyor's units"},
};
inline constexpr UserType angleFormat = {L"VeltAngleFormat", L"How angles are written.", VT_I4, angleFormatMembers};

inline constexpr EnumMember fractionFormatMembers[] = {
  // value  name               label
  { 0,      L"Horizontal",     L"Horizontal"},
  { 1,      L"Diagonal",       L"Diagonal"},
  { 2,      L"NotStacked",     L"Not stacked"},
};
inline constexpr UserType fractionFormat = {L"VeltFractionFormat", L"How fractions are written.", VT_I4, fractionFormatMembers};

inline constexpr EnumMember verticalPositionMembers[] = {
  // value  name               label
  { 0,      L"Centered",       L"Centered"},
  { 1,      L"Above",          L"Above"},
  { 2,      L"Outside",        L"Outside"},
  { 3,      L"Jis",            L"JIS"},
  { 4,      L"Below",          L"Below"},
};
inline constexpr UserType verticalPosition = {L"VeltVerticalTextPosition", L"Where a text stands against the dimension line.", VT_I4, verticalPositionMembers};

inline constexpr EnumMember horizontalPositionMembers[] = {
  // value  name               label
  { 0,      L"Centered",       L"Centered"},
  { 1,      L"FirstExtension", L"At the first extension line"},
  { 2,      L"SecondExtension", L"At the second extension line"},
  { 3,      L"OverFirst",      L"Over the first extension line"},
  { 4,      L"OverSecond",     L"Over the second extension line"},
};
inline constexpr UserType horizontalPosition = {L"VeltHorizontalTextPosition", L"Where a text stands along the dimension line.", VT_I4, horizontalPositionMembers};

inline constexpr EnumMember fitMembers[] = {
  // value  name               label
  { 0,      L"TextAndArrows",  L"Both outside"},
  { 1,      L"ArrowsFirst",    L"Arrows first"},
  { 2,      L"TextFirst",      L"Text first"},
  { 3,      L"BestFit",        L"Best fit"},
};
inline constexpr UserType fit = {L"VeltDimensionFit", L"What leaves first when the extension lines are too near.", VT_I4, fitMembers};

inline constexpr EnumMember textMovementMembers[] = {
  // value  name               label
  { 0,      L"WithLine",       L"Keep dimension line with text"},
  { 1,      L"AddLeader",      L"Move text, add leader"},
  { 2,      L"Free",           L"Move text, no leader"},
};
inline constexpr UserType textMovement = {L"VeltDimensionTextMovement", L"What follows a text that is moved.", VT_I4, textMovementMembers};

inline constexpr EnumMember centerMarkMembers[] = {
  // value  name               label
  { 0,      L"NoMark",         L"None"},
  { 1,      L"Mark",           L"Mark"},
  { 2,      L"Line",           L"Line"},
};
inline constexpr UserType centerMark = {L"VeltCenterMark", L"How the center of a circle is marked.", VT_I4, centerMarkMembers};

inline constexpr EnumMember arcSymbolMembers[] = {
  // value  name               label
  { 0,      L"InFront",        L"In front of the text"},
  { 1,      L"OverText",       L"Over the text"},
  { 2,      L"NoSymbol",       L"None"},
};
inline constexpr UserType arcSymbol = {L"VeltArcSymbol", L"Where the symbol of an arc stands.", VT_I4, arcSymbolMembers};

inline constexpr EnumMember toleranceMembers[] = {
  // value  name               label
  { 0,      L"NoTolerance",    L"None"},
  { 1,      L"Symmetrical",    L"Symmetrical"},
  { 2,      L"Deviation",      L"Deviation"},
  { 3,      L"Limits",         L"Limits"},
  { 4,      L"Basic",          L"Basic"},
};
inline constexpr UserType tolerance = {L"VeltDimensionTolerance", L"How tolerances are shown.", VT_I4, toleranceMembers};

inline constexpr EnumMember toleranceJustificationMembers[] = {
  // value  name               label
  { 0,      L"Bottom",         L"Bottom"},
  { 1,      L"Middle",         L"Middle"},
  { 2,      L"Top",            L"Top"},
};
inline constexpr UserType toleranceJustification = {L"VeltToleranceJustification", L"Where tolerances stand against the measurement.", VT_I4, toleranceJustificationMembers};

// clang-format on

}  // namespace velt::automation::types
