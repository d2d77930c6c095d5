#include "embedded/automation/dimensions/DimensionRows.h"

#include <string>

#include "embedded/automation/dimensions/Arrowheads.h"
#include "embedded/automation/dimensions/DimensionPicture.h"
#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/dimensions/StyleAccess.h"
#include "embedded/automation/dimensions/StyleLines.h"
#include "embedded/automation/dimensions/StyleName.h"
#include "embedded/automation/dimensions/StyleText.h"
#include "embedded/automation/dimensions/StyleTolerances.h"
#include "embedded/automation/dimensions/StyleUnits.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/Sameness.h"

namespace velt::automation {
namespace {

using platform::Category;

void putTextOverride(const Subject& subject, const std::wstring& wording) {
  constexpr int code = 1;
  constexpr const char* dimension = "AcDbDimension";
  requireLine(subject.drawing(), wording);
  if (subject.lens().text(code, dimension) == wording) return;
  requireOwnWording(subject);
  Editor(subject).text(code, dimension, wording);
}

// The ids are those by which palettes order the rows of dimensions; the weights repeat that order.
// clang-format off
constexpr PropertyRow dimensionTable[] = {
  // id   name                               label                                 type                           category                  access                                                                                        writability                             choices               weight help
  { 1542, L"DimStyle",                       L"Dim style",                         VT_BSTR,                       Category::Misc,           computed<getDimStyle, putDimStyle>(),                                                         readOnlyWhere(drawnInPicture),          Choices::DimStyles,   1001,  L"Name of the dimension style."},
  {   26, L"DimensionLineWeight",            L"Dim line lineweight",               types::lineweight,             Category::LinesAndArrows, followedBy(styleMember(variables::dimensionLineWeight), putDimensionLineWeight),              refusedWhere(drawnWithUnknownLines),    Choices::Enumeration, 1010,  L"Width of the dimension line on paper."},
  {   13, L"DimensionLineColor",             L"Dim line color",                    types::color,                  Category::LinesAndArrows, followedBy(styleColor(variables::dimensionLineColor), putDimensionLineColor),                 refusedWhere(drawnWithUnknownLines),    Choices::Colors,      1011,  L"Color of the dimension line."},
  {   68, L"DimensionLinetype",              L"Dim line linetype",                 types::linetypeName,           Category::LinesAndArrows, styleLinetype(variables::dimensionLinetype),                                                  readOnlyWhere(drawnInPicture),          Choices::Linetypes,   1012,  L"Line type of the dimension line."},
  { 1546, L"TextColor",                      L"Text color",                        types::color,                  Category::Text,           followedBy(styleColor(variables::textColor), putTextColor),                                   refusedWhere(drawnWithUnknownText),     Choices::Colors,      1022,  L"Color of the text."},
  { 1563, L"TextStyle",                      L"Text style",                        VT_BSTR,                       Category::Text,           computed<getDimensionTextStyle, putDimensionTextStyle>().from(variables::textStyle.since),    readOnlyWhere(drawnInPicture),          Choices::TextStyles,  1023,  L"Name of the text style."},
  { 1549, L"TextGap",                        L"Text offset",                       types::distance,               Category::Text,           computed<getTextGap, putTextGap>().notNegative(),                                             readOnlyWhere(drawnInPicture),          Choices::None,        1024,  L"Room around the text."},
  {   33, L"TextFill",                       L"Fill behind text",                  VT_BOOL,                       Category::Text,           styleFlag(variables::textFill),                                                               readOnlyWhere(drawnInPicture),          Choices::None,        1025,  L"Whether a filled box hides what lies behind the text."},
  {   20, L"TextHeight",                     L"Text height",                       types::distance,               Category::Text,           styleReal(variables::textHeight).positive(),                                                  readOnlyWhere(drawnInPicture),          Choices::None,        1026,  L"Height of the text, before the overall scale."},
  { 1554, L"VerticalTextPosition",           L"Text pos vert",                     types::verticalPosition,       Category::Text,           styleMember(variables::verticalPosition),                                                     readOnlyWhere(drawnInPicture),          Choices::Enumeration, 1027,  L"Where the text stands against the dimension line."},
  {   30, L"TextInsideAlign",                L"Text inside align",                 VT_BOOL,                       Category::Text,           styleFlag(variables::horizontalInside),                                                       readOnlyWhere(drawnInPicture),          Choices::None,        1029,  L"Whether a text between the extension lines stays horizontal."},
  { 1539, L"TextOutsideAlign",               L"Text outside align",                VT_BOOL,                       Category::Text,           styleFlag(variables::horizontalOutside),                                                      readOnlyWhere(drawnInPicture),          Choices::None,        1030,  L"Whether a text outside of the extension lines stays horizontal."},
  { 1540, L"TextOverride",                   L"Text override",                     VT_BSTR,                       Category::Text,           writtenBy<putTextOverride>(storedText(1, "AcDbDimension")),                                   readOnlyWhere(drawnInPicture),          Choices::None,        1031,  L"Shown in place of the measurement, which <> stands for; empty for the measurement alone."},
  {   67, L"TextRotation",                   L"Text rotation",                     types::angle,                  Category::Text,           storedDirection(53, "AcDbDimension"),                                                         readOnlyWhere(drawnInPicture),          Choices::None,        1032,  L"Direction of the text; 0 for the direction that the style gives it."},
  {   64, L"TextPosition",                   L"Text position",                     VT_VARIANT,                    Category::Text,           objectPoint(11, "AcDbDimension"),                                                             readOnly(reasons::placeDependsOnStyle), Choices::None,        1033,  L"Middle of the text."},
  { 1541, L"ScaleFactor",                    L"Dim scale overall",                 types::noUnits,                Category::Fit,            styleReal(variables::overallScale).notNegative(),                                             readOnlyWhere(drawnInPicture),          Choices::None,        1034,  L"Scale of all sizes of the dimension."},
  {   32, L"Fit",                            L"Fit",                               types::fit,                    Category::Fit,            styleMember(variables::fit),                                                                  readOnlyWhere(drawnInPicture),          Choices::Enumeration, 1035,  L"What leaves first when the extension lines are too near."},
  {   29, L"TextMovement",                   L"Text movement",                     types::textMovement,           Category::Fit,            styleMember(variables::textMovement),                                                         readOnlyWhere(drawnInPicture),          Choices::Enumeration, 1036,  L"What follows a text that is moved."},
  { 1553, L"TextInside",                     L"Text inside",                       VT_BOOL,                       Category::Fit,            styleFlag(variables::textInside),                                                             readOnlyWhere(drawnInPicture),          Choices::None,        1037,  L"Whether the text is forced between the extension lines."},
  {   18, L"ForceLineInside",                L"Dim line forced",                   VT_BOOL,                       Category::Fit,            styleFlag(variables::dimensionLineForced),                                                    readOnlyWhere(drawnInPicture),          Choices::None,        1038,  L"Whether the dimension line is drawn between the extension lines also when the text is outside."},
  {   21, L"TextPrefix",                     L"Dim prefix",                        VT_BSTR,                       Category::PrimaryUnits,   computed<getPrefix, putPrefix>(),                                                             readOnlyWhere(drawnInPicture),          Choices::None,        1045,  L"Text in front of the measurement."},
  {   22, L"TextSuffix",                     L"Dim suffix",                        VT_BSTR,                       Category::PrimaryUnits,   computed<getSuffix, putSuffix>(),                                                             readOnlyWhere(drawnInPicture),          Choices::None,        1046,  L"Text behind the measurement."},
  { 1565, L"DecimalSeparator",               L"Decimal separator",                 VT_BSTR,                       Category::PrimaryUnits,   computed<getDecimalSeparator, putDecimalSeparator>().from(variables::decimalSeparator.since), readOnlyWhere(drawnInPicture),          Choices::None,        1047,  L"What stands between the whole and the rest."},
  { 1560, L"ToleranceDisplay",               L"Tolerance display",                 types::tolerance,              Category::Tolerances,     computed<getTolerance, putTolerance>(),                                                       readOnlyWhere(drawnInPicture),          Choices::Enumeration, 1068,  L"How tolerances are shown."},
  { 1555, L"ToleranceLowerLimit",            L"Tolerance limit lower",             types::distance,               Category::Tolerances,     computed<getLowerLimit, putLowerLimit>(),                                                     refusedWhere(drawnWithTolerances),      Choices::None,        1069,  L"How much less than measured is allowed."},
  { 1569, L"ToleranceUpperLimit",            L"Tolerance limit upper",             types::distance,               Category::Tolerances,     computed<getUpperLimit, putUpperLimit>(),                                                     refusedWhere(drawnWithTolerances),      Choices::None,        1070,  L"How much more than measured is allowed."},
  { 1570, L"ToleranceJustification",         L"Tolerance pos vert",                types::toleranceJustification, Category::Tolerances,     styleMember(variables::toleranceJustification),                                               refusedWhere(drawnWithTolerances),      Choices::Enumeration, 1071,  L"Where tolerances stand against the measurement."},
  {   58, L"TolerancePrecision",             L"Tolerance precision",               types::precision,              Category::Tolerances,     styleMember(variables::tolerancePrecision),                                                   refusedWhere(drawnWithTolerances),      Choices::Enumeration, 1072,  L"How many decimal places of tolerances are shown."},
  {   59, L"ToleranceSuppressLeadingZeros",  L"Tolerance suppress leading zeros",  VT_BOOL,                       Category::Tolerances,     styleBit(variables::toleranceZeros, 4),                                                       refusedWhere(drawnWithTolerances),      Choices::None,        1073,  L"Whether the zero in front of the separator is left out."},
  { 1556, L"ToleranceSuppressTrailingZeros", L"Tolerance suppress trailing zeros", VT_BOOL,                       Category::Tolerances,     styleBit(variables::toleranceZeros, 8),                                                       refusedWhere(drawnWithTolerances),      Choices::None,        1074,  L"Whether zeros at the end are left out."},
  {   53, L"ToleranceHeightScale",           L"Tolerance text height",             types::noUnits,                Category::Tolerances,     styleReal(variables::toleranceHeight).positive(),                                             refusedWhere(drawnWithSmallText),       Choices::None,        1077,  L"Height of tolerances, relative to the measurement."},
};

constexpr PropertyRow arrowTable[] = {
  // id name              label               type             category                  access                                             writability                    choices        weight help
  { 61, L"ArrowheadSize", L"Arrow size",      types::distance, Category::LinesAndArrows, styleReal(variables::arrowheadSize).notNegative(), readOnlyWhere(drawnInPicture), Choices::None, 1004,  L"Size of the arrowheads, before the overall scale."},
  { 31, L"DimLineInside", L"Dim line inside", VT_BOOL,         Category::Fit,            computed<getDimLineInside, putDimLineInside>(),    readOnlyWhere(drawnInPicture), Choices::None, 1039,  L"Whether arrowheads that do not fit are drawn outside."},
};

constexpr PropertyRow twoArrowTable[] = {
  // id name                label             type              category                  access                                                                                        writability                    choices               weight help
  { 62, L"Arrowhead1Type",  L"Arrow 1",       types::arrowhead, Category::LinesAndArrows, computed<getArrowhead<1>, putArrowhead<1>>().from(variables::firstArrowhead.since),           readOnlyWhere(drawnInPicture), Choices::Enumeration, 1002,  L"What stands at the first end of the dimension line."},
  { 63, L"Arrowhead2Type",  L"Arrow 2",       types::arrowhead, Category::LinesAndArrows, computed<getArrowhead<2>, putArrowhead<2>>().from(variables::firstArrowhead.since),           readOnlyWhere(drawnInPicture), Choices::Enumeration, 1003,  L"What stands at the second end of the dimension line."},
  { 43, L"Arrowhead1Block", L"Arrow 1 block", VT_BSTR,          Category::LinesAndArrows, computed<getArrowheadBlock<1>, putArrowheadBlock<1>>().from(variables::firstArrowhead.since).comparedBy(isSameName), readOnlyWhere(drawnInPicture), Choices::None,        1005,  L"Block that is the first arrowhead; empty for the usual one."},
  { 44, L"Arrowhead2Block", L"Arrow 2 block", VT_BSTR,          Category::LinesAndArrows, computed<getArrowheadBlock<2>, putArrowheadBlock<2>>().from(variables::firstArrowhead.since).comparedBy(isSameName), readOnlyWhere(drawnInPicture), Choices::None,        1006,  L"Block that is the second arrowhead; empty for the usual one."},
};

constexpr PropertyRow oneArrowTable[] = {
  // id name      label     type              category                  access                                                                              writability                    choices               weight help
  { 62, L"Arrow", L"Arrow", types::arrowhead, Category::LinesAndArrows, computed<getArrowhead<2>, putArrowhead<2>>().from(variables::firstArrowhead.since), readOnlyWhere(drawnInPicture), Choices::Enumeration, 1002,  L"What stands at the end of the dimension line."},
};

constexpr PropertyRow dimensionLineTable[] = {
  // id name                 label                   type     category                  access                                    writability                    choices        weight help
  { 60, L"DimLine1Suppress", L"Suppress dim line 1", VT_BOOL, Category::LinesAndArrows, styleFlag(variables::suppressFirstHalf),  readOnlyWhere(drawnInPicture), Choices::None, 1007,  L"Whether the first half of the dimension line is left out."},
  { 23, L"DimLine2Suppress", L"Suppress dim line 2", VT_BOOL, Category::LinesAndArrows, styleFlag(variables::suppressSecondHalf), readOnlyWhere(drawnInPicture), Choices::None, 1008,  L"Whether the second half of the dimension line is left out."},
};

constexpr PropertyRow extensionLineTable[] = {
  // id   name                        label                     type                       category                  access                                                                           writability                          choices               weight help
  {   25, L"DimensionLineExtend",     L"Dim line extension",    types::distance,           Category::LinesAndArrows, styleReal(variables::dimensionLineExtension).notNegative(),                      readOnlyWhere(drawnInPicture),       Choices::None,        1009,  L"How far the dimension line runs on behind the extension lines, where ticks stand for arrowheads."},
  {   69, L"ExtensionLineColor",      L"Ext line color",        types::color,              Category::LinesAndArrows, followedBy(styleColor(variables::extensionLineColor), putExtensionLineColor),    refusedWhere(drawnWithUnknownLines), Choices::Colors,      1013,  L"Color of the extension lines."},
  {   70, L"ExtensionLineWeight",     L"Ext line lineweight",   types::lineweight,         Category::LinesAndArrows, followedBy(styleMember(variables::extensionLineWeight), putExtensionLineWeight), refusedWhere(drawnWithUnknownLines), Choices::Enumeration, 1014,  L"Width of the extension lines on paper."},
  {   16, L"ExtLine1Linetype",        L"Ext line 1 linetype",   types::linetypeName,       Category::LinesAndArrows, styleLinetype(variables::firstExtensionLinetype),                                readOnlyWhere(drawnInPicture),       Choices::Linetypes,   1015,  L"Line type of the first extension line."},
  {   27, L"ExtLine2Linetype",        L"Ext line 2 linetype",   types::linetypeName,       Category::LinesAndArrows, styleLinetype(variables::secondExtensionLinetype),                               readOnlyWhere(drawnInPicture),       Choices::Linetypes,   1016,  L"Line type of the second extension line."},
  {   28, L"ExtLine1Suppress",        L"Suppress ext line 1",   VT_BOOL,                   Category::LinesAndArrows, styleFlag(variables::suppressFirstExtension),                                    readOnlyWhere(drawnInPicture),       Choices::None,        1017,  L"Whether the first extension line is left out."},
  {   14, L"ExtLine2Suppress",        L"Suppress ext line 2",   VT_BOOL,                   Category::LinesAndArrows, styleFlag(variables::suppressSecondExtension),                                   readOnlyWhere(drawnInPicture),       Choices::None,        1018,  L"Whether the second extension line is left out."},
  {   17, L"ExtensionLineExtend",     L"Ext line extension",    types::distance,           Category::LinesAndArrows, styleReal(variables::extensionBeyond).notNegative(),                             readOnlyWhere(drawnInPicture),       Choices::None,        1019,  L"How far the extension lines run on behind the dimension line."},
  {   35, L"ExtensionLineOffset",     L"Ext line offset",       types::distance,           Category::LinesAndArrows, styleReal(variables::extensionOffset).notNegative(),                             readOnlyWhere(drawnInPicture),       Choices::None,        1020,  L"How far from what is measured the extension lines begin."},
  {   19, L"ExtLineFixedLen",         L"Ext line fixed length", types::distance,           Category::LinesAndArrows, styleReal(variables::extensionLength).positive(),                                refusedWhere(drawnWithFixedLength),  Choices::None,        1021,  L"Length of the extension lines where it is fixed."},
  { 1562, L"HorizontalTextPosition",  L"Text pos hor",          types::horizontalPosition, Category::Text,           styleMember(variables::horizontalPosition),                                      readOnlyWhere(drawnInPicture),       Choices::Enumeration, 1028,  L"Where the text stands along the dimension line."},
  { 1558, L"ExtLineFixedLenSuppress", L"Ext line fixed",        VT_BOOL,                   Category::LinesAndArrows, styleFlag(variables::extensionLengthIsFixed),                                    readOnlyWhere(drawnInPicture),       Choices::None,        1040,  L"Whether the extension lines have a fixed length."},
};

constexpr PropertyRow centerMarkTable[] = {
  // id name               label                type               category                  access                                                       writability                    choices               weight help
  { 54, L"CenterType",     L"Center mark",      types::centerMark, Category::LinesAndArrows, computed<getCenterType, putCenterType>(),                    readOnlyWhere(drawnInPicture), Choices::Enumeration, 1078,  L"How the center is marked."},
  { 55, L"CenterMarkSize", L"Center mark size", types::distance,   Category::LinesAndArrows, computed<getCenterMarkSize, putCenterMarkSize>().positive(), readOnlyWhere(drawnInPicture), Choices::None,        1079,  L"Size of the center mark, before the overall scale."},
};

constexpr PropertyRow lengthUnitTable[] = {
  // id   name                            label                              type                   category                access                                                                                                                                                writability                        choices               weight help
  { 1548, L"UnitsFormat",                 L"Dim units",                      types::lengthFormat,   Category::PrimaryUnits, computed<getUnitsFormat, putUnitsFormat>().from(variables::lengthFormat.since),                                                                       readOnlyWhere(drawnInPicture),     Choices::Enumeration, 1041,  L"How the measurement is written."},
  { 1551, L"Precision",                   L"Precision",                      types::precision,      Category::PrimaryUnits, styleMember(variables::lengthPrecision),                                                                                                              readOnlyWhere(drawnInPicture),     Choices::Enumeration, 1042,  L"How many decimal places of the measurement are shown."},
  { 1552, L"RoundDistance",               L"Dim roundoff",                   types::distance,       Category::PrimaryUnits, styleReal(variables::lengthRounding).notNegative(),                                                                                                   readOnlyWhere(drawnInPicture),     Choices::None,        1043,  L"What the measurement is rounded to; 0 for nothing."},
  {   24, L"LinearScaleFactor",           L"Dim scale linear",               types::noUnits,        Category::PrimaryUnits, computed<getLinearScale, putLinearScale>().positive(),                                                                                                readOnlyWhere(drawnInPicture),     Choices::None,        1044,  L"What the measurement is multiplied with before it is written."},
  { 1566, L"FractionFormat",              L"Fraction type",                  types::fractionFormat, Category::PrimaryUnits, styleMember(variables::fractionFormat),                                                                                                               refusedWhere(drawnWithFractions),  Choices::Enumeration, 1048,  L"How fractions are written."},
  {   56, L"SuppressLeadingZeros",        L"Suppress leading zeros",         VT_BOOL,               Category::PrimaryUnits, styleBit(variables::lengthZeros, 4),                                                                                                                  readOnlyWhere(drawnInPicture),     Choices::None,        1049,  L"Whether the zero in front of the separator is left out."},
  {   57, L"SuppressTrailingZeros",       L"Suppress trailing zeros",        VT_BOOL,               Category::PrimaryUnits, styleBit(variables::lengthZeros, 8),                                                                                                                  readOnlyWhere(drawnInPicture),     Choices::None,        1050,  L"Whether zeros at the end are left out."},
  {   15, L"SuppressZeroFeet",            L"Suppress zero feet",             VT_BOOL,               Category::PrimaryUnits, computed<getSuppressZeroFeet<variables::lengthZeros>, putSuppressZeroFeet<variables::lengthZeros>>(),                                                 readOnlyWhere(drawnInPicture),     Choices::None,        1051,  L"Whether no feet at all are left out."},
  {    3, L"SuppressZeroInches",          L"Suppress zero inches",           VT_BOOL,               Category::PrimaryUnits, computed<getSuppressZeroInches<variables::lengthZeros>, putSuppressZeroInches<variables::lengthZeros>>(),                                             readOnlyWhere(drawnInPicture),     Choices::None,        1052,  L"Whether no inches at all are left out."},
  {    7, L"ToleranceSuppressZeroFeet",   L"Tolerance suppress zero feet",   VT_BOOL,               Category::Tolerances,   computed<getSuppressZeroFeet<variables::toleranceZeros>, putSuppressZeroFeet<variables::toleranceZeros>>().from(variables::toleranceZeros.since),     refusedWhere(drawnWithTolerances), Choices::None,        1075,  L"Whether no feet at all are left out."},
  {   52, L"ToleranceSuppressZeroInches", L"Tolerance suppress zero inches", VT_BOOL,               Category::Tolerances,   computed<getSuppressZeroInches<variables::toleranceZeros>, putSuppressZeroInches<variables::toleranceZeros>>().from(variables::toleranceZeros.since), refusedWhere(drawnWithTolerances), Choices::None,        1076,  L"Whether no inches at all are left out."},
};

constexpr PropertyRow angleUnitTable[] = {
  // id name                      label                       type                category                access                                                                                  writability                    choices               weight help
  {  9, L"AngleFormat",           L"Angle format",            types::angleFormat, Category::PrimaryUnits, styleMember(variables::angleFormat),                                                    readOnlyWhere(drawnInPicture), Choices::Enumeration, 1053,  L"How the measurement is written."},
  {  4, L"AnglePrecision",        L"Angle precision",         types::precision,   Category::PrimaryUnits, computed<getAnglePrecision, putAnglePrecision>().from(variables::anglePrecision.since), readOnlyWhere(drawnInPicture), Choices::Enumeration, 1054,  L"How many decimal places of the measurement are shown."},
  { 56, L"SuppressLeadingZeros",  L"Suppress leading zeros",  VT_BOOL,            Category::PrimaryUnits, styleBit(variables::angleZeros, 1),                                                     readOnlyWhere(drawnInPicture), Choices::None,        1049,  L"Whether the zero in front of the separator is left out."},
  { 57, L"SuppressTrailingZeros", L"Suppress trailing zeros", VT_BOOL,            Category::PrimaryUnits, styleBit(variables::angleZeros, 2),                                                     readOnlyWhere(drawnInPicture), Choices::None,        1050,  L"Whether zeros at the end are left out."},
};

constexpr PropertyRow alternateTable[] = {
  // id   name                         label                           type                 category                  access                                                                                                                                                writability                            choices               weight help
  {   48, L"AltUnits",                 L"Alt enabled",                 VT_BOOL,             Category::AlternateUnits, styleFlag(variables::alternateUnits),                                                                                                                 readOnlyWhere(drawnInPicture),         Choices::None,        1057,  L"Whether the measurement is written in a second unit, too."},
  {   49, L"AltUnitsFormat",           L"Alt format",                  types::lengthFormat, Category::AlternateUnits, styleMember(variables::alternateFormat),                                                                                                              refusedWhere(drawnWithAlternateUnits), Choices::Enumeration, 1058,  L"How the measurement in the second unit is written."},
  {   50, L"AltUnitsPrecision",        L"Alt precision",               types::precision,    Category::AlternateUnits, styleMember(variables::alternatePrecision),                                                                                                           refusedWhere(drawnWithAlternateUnits), Choices::Enumeration, 1059,  L"How many decimal places are shown in the second unit."},
  {   51, L"AltUnitsScale",            L"Alt scale factor",            types::noUnits,      Category::AlternateUnits, styleReal(variables::alternateScale).positive(),                                                                                                      refusedWhere(drawnWithAlternateUnits), Choices::None,        1060,  L"How many of the second unit are one of the first."},
  {   11, L"AltRoundDistance",         L"Alt round",                   types::distance,     Category::AlternateUnits, styleReal(variables::alternateRounding).notNegative(),                                                                                                refusedWhere(drawnWithAlternateUnits), Choices::None,        1061,  L"What the measurement in the second unit is rounded to; 0 for nothing."},
  {   12, L"AltTextPrefix",            L"Alt prefix",                  VT_BSTR,             Category::AlternateUnits, computed<getAlternatePrefix, putAlternatePrefix>(),                                                                                                   refusedWhere(drawnWithAlternateUnits), Choices::None,        1062,  L"Text in front of the second unit."},
  {   36, L"AltTextSuffix",            L"Alt suffix",                  VT_BSTR,             Category::AlternateUnits, computed<getAlternateSuffix, putAlternateSuffix>(),                                                                                                   refusedWhere(drawnWithAlternateUnits), Choices::None,        1063,  L"Text behind the second unit."},
  {   41, L"AltSuppressLeadingZeros",  L"Alt suppress leading zeros",  VT_BOOL,             Category::AlternateUnits, styleBit(variables::alternateZeros, 4),                                                                                                               refusedWhere(drawnWithAlternateUnits), Choices::None,        1064,  L"Whether the zero in front of the separator is left out."},
  { 1559, L"AltSuppressTrailingZeros", L"Alt suppress trailing zeros", VT_BOOL,             Category::AlternateUnits, styleBit(variables::alternateZeros, 8),                                                                                                               refusedWhere(drawnWithAlternateUnits), Choices::None,        1065,  L"Whether zeros at the end are left out."},
  { 1557, L"AltSuppressZeroFeet",      L"Alt suppress zero feet",      VT_BOOL,             Category::AlternateUnits, computed<getSuppressZeroFeet<variables::alternateZeros>, putSuppressZeroFeet<variables::alternateZeros>>().from(variables::alternateZeros.since),     refusedWhere(drawnWithAlternateUnits), Choices::None,        1066,  L"Whether no feet at all are left out."},
  { 1561, L"AltSuppressZeroInches",    L"Alt suppress zero inches",    VT_BOOL,             Category::AlternateUnits, computed<getSuppressZeroInches<variables::alternateZeros>, putSuppressZeroInches<variables::alternateZeros>>().from(variables::alternateZeros.since), refusedWhere(drawnWithAlternateUnits), Choices::None,        1067,  L"Whether no inches at all are left out."},
};
// clang-format on

}  // namespace

const std::span<const PropertyRow> dimensionRows = dimensionTable;
const std::span<const PropertyRow> arrowRows = arrowTable;
const std::span<const PropertyRow> twoArrowRows = twoArrowTable;
const std::span<const PropertyRow> oneArrowRows = oneArrowTable;
const std::span<const PropertyRow> dimensionLineRows = dimensionLineTable;
const std::span<const PropertyRow> extensionLineRows = extensionLineTable;
const std::span<const PropertyRow> centerMarkRows = centerMarkTable;
const std::span<const PropertyRow> lengthUnitRows = lengthUnitTable;
const std::span<const PropertyRow> angleUnitRows = angleUnitTable;
const std::span<const PropertyRow> alternateRows = alternateTable;

}  // namespace velt::automation
