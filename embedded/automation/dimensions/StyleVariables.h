#pragma once

// The variables of dimension styles.
//
// The record of a style holds each under a group code of its own, and entities that override it name it by that code.

#include <numbers>

namespace velt::automation {

// The subclass of the records that hold the variables.
inline constexpr const char* dimensionStyleSubclass = "AcDbDimStyleTableRecord";

struct StyleVariable {
  int code;
  // The value that counts where neither the entity nor its style stores one. Texts are empty, and handles name nothing.
  double usual = 0;
  // The version of the first format that knows it; empty: all do.
  const char* since = "";
};

namespace variables {

// clang-format off

// sizes                                                 code usual   since
inline constexpr StyleVariable overallScale            = { 40, 1};
inline constexpr StyleVariable linearScale             = {144, 1};

// arrowheads: blocks by their handles, and by their names in old drawings
inline constexpr StyleVariable arrowheadSize           = { 41, 0.18};
// Above 0: ticks of that size stand for all arrowheads.
inline constexpr StyleVariable tickSize                = {142, 0};
// Not 0: the ends have arrowheads of their own.
inline constexpr StyleVariable arrowheadsDiffer        = {173, 0};
inline constexpr StyleVariable arrowhead               = {342, 0,      "AC1015"};
inline constexpr StyleVariable firstArrowhead          = {343, 0,      "AC1015"};
inline constexpr StyleVariable secondArrowhead         = {344, 0,      "AC1015"};
inline constexpr StyleVariable leaderArrowhead         = {341, 0,      "AC1015"};
inline constexpr StyleVariable arrowheadName           = {  5};
inline constexpr StyleVariable firstArrowheadName      = {  6};
inline constexpr StyleVariable secondArrowheadName     = {  7};

// the dimension line
inline constexpr StyleVariable dimensionLineColor      = {176, 0};
inline constexpr StyleVariable dimensionLineWeight     = {371, -2,     "AC1015"};
inline constexpr StyleVariable dimensionLinetype       = {345, 0,      "AC1021"};
inline constexpr StyleVariable dimensionLineExtension  = { 46, 0};
inline constexpr StyleVariable suppressFirstHalf       = {281, 0,      "AC1012"};
inline constexpr StyleVariable suppressSecondHalf      = {282, 0,      "AC1012"};
// Drawn between the extension lines also when the text is outside.
inline constexpr StyleVariable dimensionLineForced     = {172, 0};
// Arrowheads that do not fit are left out, with the dimension line outside.
inline constexpr StyleVariable outsideSuppressed       = {175, 0};

// the extension lines
inline constexpr StyleVariable extensionLineColor      = {177, 0};
inline constexpr StyleVariable extensionLineWeight     = {372, -2,     "AC1015"};
inline constexpr StyleVariable firstExtensionLinetype  = {346, 0,      "AC1021"};
inline constexpr StyleVariable secondExtensionLinetype = {347, 0,      "AC1021"};
inline constexpr StyleVariable suppressFirstExtension  = { 75, 0};
inline constexpr StyleVariable suppressSecondExtension = { 76, 0};
inline constexpr StyleVariable extensionBeyond         = { 44, 0.18};
inline constexpr StyleVariable extensionOffset         = { 42, 0.0625};
inline constexpr StyleVariable extensionLengthIsFixed  = {290, 0,      "AC1021"};
inline constexpr StyleVariable extensionLength         = { 49, 1,      "AC1021"};

// Above 0 a mark of that size, below 0 lines.
inline constexpr StyleVariable centerMark              = {141, 0.09};
inline constexpr StyleVariable jogAngle                = { 50, std::numbers::pi / 4};
inline constexpr StyleVariable arcSymbol               = { 90, 0,      "AC1021"};

// the text
inline constexpr StyleVariable textColor               = {178, 0};
inline constexpr StyleVariable textStyle               = {340, 0,      "AC1012"};
inline constexpr StyleVariable textHeight              = {140, 0.18};
// Below 0: the text stands in a frame.
inline constexpr StyleVariable textGap                 = {147, 0.09};
inline constexpr StyleVariable textFill                = { 69, 0,      "AC1021"};
inline constexpr StyleVariable verticalPosition        = { 77, 0};
inline constexpr StyleVariable horizontalPosition      = {280, 0,      "AC1012"};
inline constexpr StyleVariable horizontalInside        = { 73, 1};
inline constexpr StyleVariable horizontalOutside       = { 74, 1};
inline constexpr StyleVariable textInside              = {174, 0};
inline constexpr StyleVariable textMovement            = {279, 0,      "AC1015"};
inline constexpr StyleVariable fit                     = {289, 3,      "AC1015"};

// the measurement; of zeros, the bits say which are left out
inline constexpr StyleVariable affixes                 = {  3};
inline constexpr StyleVariable lengthFormat            = {277, 2,      "AC1015"};
// Where the other one is missing.
inline constexpr StyleVariable oldLengthFormat         = {270, 2,      "AC1012"};
inline constexpr StyleVariable lengthPrecision         = {271, 4,      "AC1012"};
inline constexpr StyleVariable lengthRounding          = { 45, 0};
inline constexpr StyleVariable lengthZeros             = { 78, 0};
inline constexpr StyleVariable fractionFormat          = {276, 0,      "AC1015"};
inline constexpr StyleVariable decimalSeparator        = {278, '.',    "AC1015"};
inline constexpr StyleVariable angleFormat             = {275, 0,      "AC1012"};
// Below 0: that of lengths.
inline constexpr StyleVariable anglePrecision          = {179, 0,      "AC1015"};
inline constexpr StyleVariable angleZeros              = { 79, 0,      "AC1015"};

// the second unit
inline constexpr StyleVariable alternateUnits          = {170, 0};
inline constexpr StyleVariable alternateAffixes        = {  4};
inline constexpr StyleVariable alternateFormat         = {273, 2,      "AC1012"};
inline constexpr StyleVariable alternatePrecision      = {171, 2};
inline constexpr StyleVariable alternateScale          = {143, 25.4};
inline constexpr StyleVariable alternateRounding       = {148, 0,      "AC1015"};
inline constexpr StyleVariable alternateZeros          = {285, 0,      "AC1012"};

// tolerances
inline constexpr StyleVariable hasTolerance            = { 71, 0};
inline constexpr StyleVariable hasLimits               = { 72, 0};
inline constexpr StyleVariable upperLimit              = { 47, 0};
inline constexpr StyleVariable lowerLimit              = { 48, 0};
inline constexpr StyleVariable toleranceJustification  = {283, 1,      "AC1012"};
inline constexpr StyleVariable tolerancePrecision      = {272, 4,      "AC1012"};
inline constexpr StyleVariable toleranceZeros          = {284, 0,      "AC1012"};
inline constexpr StyleVariable toleranceHeight         = {146, 1};

// clang-format on

}  // namespace variables
}  // namespace velt::automation
