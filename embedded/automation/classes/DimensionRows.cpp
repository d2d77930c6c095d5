#include "embedded/automation/classes/DimensionRows.h"

#include <cmath>
#include <string>

#include "embedded/automation/Access.h"
#include "embedded/automation/DimensionStyle.h"
#include "embedded/automation/DimensionTypes.h"

namespace velt::automation {
namespace {

using palette::Category;

std::wstring getStyleName(const Subject& subject) {
  return DimensionStyle(subject).name();
}

// --- lines and arrows ---

/// Two different arrowheads have variables of their own; else one stands at both ends.
std::wstring arrowheadBlock(const Subject& subject, int handleCode, int nameCode) {
  const DimensionStyle style(subject);
  if (style.real(142, 0) > 0) return L"_Oblique";  // ticks of that size stand for all arrowheads
  const bool areDifferent = style.integer(173, 0) != 0;
  return areDifferent ? style.blockName(handleCode, nameCode) : style.blockName(342, 5);
}

std::wstring getArrowhead1Block(const Subject& subject) {
  return arrowheadBlock(subject, 343, 6);
}

std::wstring getArrowhead2Block(const Subject& subject) {
  return arrowheadBlock(subject, 344, 7);
}

std::int32_t getArrowhead1(const Subject& subject) {
  return arrowheadOfBlock(getArrowhead1Block(subject));
}

std::int32_t getArrowhead2(const Subject& subject) {
  return arrowheadOfBlock(getArrowhead2Block(subject));
}

/// A dimension with one arrowhead has the second one.
std::int32_t getSecondArrowhead(const Subject& subject) {
  return getArrowhead2(subject);
}

/// Stored as what is left out.
bool getDimLineInside(const Subject& subject) {
  return DimensionStyle(subject).integer(175, 0) == 0;
}

std::int32_t getCenterType(const Subject& subject) {
  const double stored = DimensionStyle(subject).real(141, 0.09);
  return stored > 0 ? 1 : stored < 0 ? 2 : 0;
}

double getCenterMarkSize(const Subject& subject) {
  return std::abs(DimensionStyle(subject).real(141, 0.09));
}

// --- text ---

std::wstring getTextStyle(const Subject& subject) {
  const std::wstring name = DimensionStyle(subject).entryName(340, subject.drawing().textStyles());
  return name.empty() ? std::wstring(L"Standard") : name;
}

/// Negative for a text in a frame.
double gapOf(const Subject& subject) {
  return DimensionStyle(subject).real(147, 0.09);
}

double getTextGap(const Subject& subject) {
  return std::abs(gapOf(subject));
}

struct Affixes {
  std::wstring prefix;
  std::wstring suffix;
};

/// Without a mark for the measurement, all is suffix.
Affixes affixesOf(const std::wstring& stored, std::wstring_view mark) {
  const std::size_t at = stored.find(mark);
  if (at == std::wstring::npos) return {L"", stored};
  return {stored.substr(0, at), stored.substr(at + mark.size())};
}

std::wstring getPrefix(const Subject& subject) {
  return affixesOf(DimensionStyle(subject).text(3), L"<>").prefix;
}

std::wstring getSuffix(const Subject& subject) {
  return affixesOf(DimensionStyle(subject).text(3), L"<>").suffix;
}

std::wstring getAlternatePrefix(const Subject& subject) {
  return affixesOf(DimensionStyle(subject).text(4), L"[]").prefix;
}

std::wstring getAlternateSuffix(const Subject& subject) {
  return affixesOf(DimensionStyle(subject).text(4), L"[]").suffix;
}

// --- units ---

std::int32_t memberOr(const UserType& type, std::int64_t value, std::int32_t otherwise) {
  const EnumMember* const member = findMember(type, value);
  return member == nullptr ? otherwise : member->value;
}

/// Older drawings have it under another code.
std::int32_t getUnitsFormat(const Subject& subject) {
  constexpr std::int32_t decimal = 2;
  const DimensionStyle style(subject);
  return memberOr(types::lengthFormat, style.integer(277, style.integer(270, decimal)), decimal);
}

/// Negative for one that counts on sheets of paper only.
double getLinearScale(const Subject& subject) {
  return std::abs(DimensionStyle(subject).real(144, 1));
}

/// -1 for the precision of lengths.
std::int32_t getAnglePrecision(const Subject& subject) {
  const DimensionStyle style(subject);
  const std::int64_t own = style.integer(179, 0);
  return memberOr(types::precision, own < 0 ? style.integer(271, 4) : own, 0);
}

std::wstring getDecimalSeparator(const Subject& subject) {
  const std::int64_t character = DimensionStyle(subject).integer(278, L'.');
  return std::wstring(1, character > 0 && character < 0x10000 ? static_cast<wchar_t>(character) : L'.');
}

/// The lowest two bits: 0 neither, 1 both, 2 feet only, 3 inches only are shown when they are zero.
template <int Code>
bool getSuppressZeroFeet(const Subject& subject) {
  const std::int64_t kind = DimensionStyle(subject).integer(Code, 0) & 3;
  return kind == 0 || kind == 3;
}

template <int Code>
bool getSuppressZeroInches(const Subject& subject) {
  const std::int64_t kind = DimensionStyle(subject).integer(Code, 0) & 3;
  return kind == 0 || kind == 2;
}

std::int32_t getTolerance(const Subject& subject) {
  enum : std::int32_t { none, symmetrical, deviation, limits, basic };
  const DimensionStyle style(subject);
  if (style.integer(72, 0) != 0) return limits;
  if (style.integer(71, 0) != 0) {
    // Stored with the same text, two equal numbers are the same number.
    return style.real(47, 0) == style.real(48, 0) ? symmetrical : deviation;
  }
  return gapOf(subject) < 0 ? basic : none;
}

// The ids are those by which palettes order the rows of dimensions; the weights repeat that order.
#define DRAWN L" Read-only: the drawing stores how the dimension looks, which would stay what it is."

// clang-format off
constexpr PropertyRow dimensionTable[] = {
  // id    name                               label                                 type                           category                  access                                           choices               weight help
  { 1542, L"DimStyle",                       L"Dim style",                         VT_BSTR,                       Category::Misc,           computed<getStyleName>(),                        Choices::DimStyles,   1001,  L"Name of the dimension style." DRAWN},
  { 26,   L"DimensionLineWeight",            L"Dim line lineweight",               types::lineweight,             Category::LinesAndArrows, styleMember(371, -2),                            Choices::Enumeration, 1010,  L"Width of the dimension line on paper." DRAWN},
  { 13,   L"DimensionLineColor",             L"Dim line color",                    types::color,                  Category::LinesAndArrows, styleInteger(176, 0),                            Choices::Colors,      1011,  L"Colour of the dimension line." DRAWN},
  { 68,   L"DimensionLinetype",              L"Dim line linetype",                 types::linetypeName,           Category::LinesAndArrows, styleLinetype(345),                              Choices::Linetypes,   1012,  L"Line type of the dimension line." DRAWN},
  { 1546, L"TextColor",                      L"Text color",                        types::color,                  Category::Text,           styleInteger(178, 0),                            Choices::Colors,      1022,  L"Colour of the text." DRAWN},
  { 1563, L"TextStyle",                      L"Text style",                        VT_BSTR,                       Category::Text,           computed<getTextStyle>(),                        Choices::TextStyles,  1023,  L"Name of the text style." DRAWN},
  { 1549, L"TextGap",                        L"Text offset",                       types::distance,               Category::Text,           computed<getTextGap>(),                          Choices::None,        1024,  L"Room around the text." DRAWN},
  { 33,   L"TextFill",                       L"Fill behind text",                  VT_BOOL,                       Category::Text,           styleFlag(69, false),                            Choices::None,        1025,  L"Whether a filled box hides what lies behind the text." DRAWN},
  { 20,   L"TextHeight",                     L"Text height",                       types::distance,               Category::Text,           styleReal(140, 0.18),                            Choices::None,        1026,  L"Height of the text, before the overall scale." DRAWN},
  { 1554, L"VerticalTextPosition",           L"Text pos vert",                     types::verticalPosition,       Category::Text,           styleMember(77, 0),                              Choices::Enumeration, 1027,  L"Where the text stands against the dimension line." DRAWN},
  { 30,   L"TextInsideAlign",                L"Text inside align",                 VT_BOOL,                       Category::Text,           styleFlag(73, true),                             Choices::None,        1029,  L"Whether a text between the extension lines stays horizontal." DRAWN},
  { 1539, L"TextOutsideAlign",               L"Text outside align",                VT_BOOL,                       Category::Text,           styleFlag(74, true),                             Choices::None,        1030,  L"Whether a text outside of the extension lines stays horizontal." DRAWN},
  { 1540, L"TextOverride",                   L"Text override",                     VT_BSTR,                       Category::Text,           storedText(1, "AcDbDimension").readOnly(),       Choices::None,        1031,  L"Shown in place of the measurement, which <> stands for; empty for the measurement alone." DRAWN},
  { 67,   L"TextRotation",                   L"Text rotation",                     types::angle,                  Category::Text,           storedDirection(53, "AcDbDimension").readOnly(), Choices::None,        1032,  L"Direction of the text; 0 for the direction that the style gives it." DRAWN},
  { 64,   L"TextPosition",                   L"Text position",                     VT_VARIANT,                    Category::Text,           objectPoint(11, "AcDbDimension").readOnly(),     Choices::None,        1033,  L"Middle of the text." DRAWN},
  { 1541, L"ScaleFactor",                    L"Dim scale overall",                 types::noUnits,                Category::Fit,            styleReal(40, 1),                                Choices::None,        1034,  L"Scale of all sizes of the dimension." DRAWN},
  { 32,   L"Fit",                            L"Fit",                               types::fit,                    Category::Fit,            styleMember(289, 3),                             Choices::Enumeration, 1035,  L"What leaves first when the extension lines are too near." DRAWN},
  { 29,   L"TextMovement",                   L"Text movement",                     types::textMovement,           Category::Fit,            styleMember(279, 0),                             Choices::Enumeration, 1036,  L"What follows a text that is moved." DRAWN},
  { 1553, L"TextInside",                     L"Text inside",                       VT_BOOL,                       Category::Fit,            styleFlag(174, false),                           Choices::None,        1037,  L"Whether the text is forced between the extension lines." DRAWN},
  { 18,   L"ForceLineInside",                L"Dim line forced",                   VT_BOOL,                       Category::Fit,            styleFlag(172, false),                           Choices::None,        1038,  L"Whether the dimension line is drawn between the extension lines also when the text is outside." DRAWN},
  { 21,   L"TextPrefix",                     L"Dim prefix",                        VT_BSTR,                       Category::PrimaryUnits,   computed<getPrefix>(),                           Choices::None,        1045,  L"Text in front of the measurement." DRAWN},
  { 22,   L"TextSuffix",                     L"Dim suffix",                        VT_BSTR,                       Category::PrimaryUnits,   computed<getSuffix>(),                           Choices::None,        1046,  L"Text behind the measurement." DRAWN},
  { 1565, L"DecimalSeparator",               L"Decimal separator",                 VT_BSTR,                       Category::PrimaryUnits,   computed<getDecimalSeparator>(),                 Choices::None,        1047,  L"What stands between the whole and the rest." DRAWN},
  { 1560, L"ToleranceDisplay",               L"Tolerance display",                 types::tolerance,              Category::Tolerances,     computed<getTolerance>(),                        Choices::Enumeration, 1068,  L"How tolerances are shown." DRAWN},
  { 1555, L"ToleranceLowerLimit",            L"Tolerance limit lower",             types::distance,               Category::Tolerances,     styleReal(48, 0),                                Choices::None,        1069,  L"How much less than measured is allowed." DRAWN},
  { 1569, L"ToleranceUpperLimit",            L"Tolerance limit upper",             types::distance,               Category::Tolerances,     styleReal(47, 0),                                Choices::None,        1070,  L"How much more than measured is allowed." DRAWN},
  { 1570, L"ToleranceJustification",         L"Tolerance pos vert",                types::toleranceJustification, Category::Tolerances,     styleMember(283, 1),                             Choices::Enumeration, 1071,  L"Where tolerances stand against the measurement." DRAWN},
  { 58,   L"TolerancePrecision",             L"Tolerance precision",               types::precision,              Category::Tolerances,     styleMember(272, 4),                             Choices::Enumeration, 1072,  L"How many decimal places of tolerances are shown." DRAWN},
  { 59,   L"ToleranceSuppressLeadingZeros",  L"Tolerance suppress leading zeros",  VT_BOOL,                       Category::Tolerances,     styleBit(284, 4),                                Choices::None,        1073,  L"Whether the zero in front of the separator is left out." DRAWN},
  { 1556, L"ToleranceSuppressTrailingZeros", L"Tolerance suppress trailing zeros", VT_BOOL,                       Category::Tolerances,     styleBit(284, 8),                                Choices::None,        1074,  L"Whether zeros at the end are left out." DRAWN},
  { 53,   L"ToleranceHeightScale",           L"Tolerance text height",             types::noUnits,                Category::Tolerances,     styleReal(146, 1),                               Choices::None,        1077,  L"Height of tolerances, relative to the measurement." DRAWN},
};

constexpr PropertyRow arrowTable[] = {
  // id  name              label               type             category                  access                        choices        weight help
  { 61, L"ArrowheadSize", L"Arrow size",      types::distance, Category::LinesAndArrows, styleReal(41, 0.18),          Choices::None, 1004,  L"Size of the arrowheads, before the overall scale." DRAWN},
  { 31, L"DimLineInside", L"Dim line inside", VT_BOOL,         Category::Fit,            computed<getDimLineInside>(), Choices::None, 1039,  L"Whether arrowheads that do not fit are drawn outside." DRAWN},
};

constexpr PropertyRow twoArrowTable[] = {
  // id  name                label             type              category                  access                          choices               weight help
  { 62, L"Arrowhead1Type",  L"Arrow 1",       types::arrowhead, Category::LinesAndArrows, computed<getArrowhead1>(),      Choices::Enumeration, 1002,  L"What stands at the first end of the dimension line." DRAWN},
  { 63, L"Arrowhead2Type",  L"Arrow 2",       types::arrowhead, Category::LinesAndArrows, computed<getArrowhead2>(),      Choices::Enumeration, 1003,  L"What stands at the second end of the dimension line." DRAWN},
  { 43, L"Arrowhead1Block", L"Arrow 1 block", VT_BSTR,          Category::LinesAndArrows, computed<getArrowhead1Block>(), Choices::None,        1005,  L"Block that is the first arrowhead; empty for the usual one." DRAWN},
  { 44, L"Arrowhead2Block", L"Arrow 2 block", VT_BSTR,          Category::LinesAndArrows, computed<getArrowhead2Block>(), Choices::None,        1006,  L"Block that is the second arrowhead; empty for the usual one." DRAWN},
};

constexpr PropertyRow oneArrowTable[] = {
  // id  name      label     type              category                  access                          choices               weight help
  { 62, L"Arrow", L"Arrow", types::arrowhead, Category::LinesAndArrows, computed<getSecondArrowhead>(), Choices::Enumeration, 1002,  L"What stands at the end of the dimension line." DRAWN},
};

constexpr PropertyRow dimensionLineTable[] = {
  // id  name                 label                   type     category                  access                 choices        weight help
  { 60, L"DimLine1Suppress", L"Suppress dim line 1", VT_BOOL, Category::LinesAndArrows, styleFlag(281, false), Choices::None, 1007,  L"Whether the first half of the dimension line is left out." DRAWN},
  { 23, L"DimLine2Suppress", L"Suppress dim line 2", VT_BOOL, Category::LinesAndArrows, styleFlag(282, false), Choices::None, 1008,  L"Whether the second half of the dimension line is left out." DRAWN},
};

constexpr PropertyRow extensionLineTable[] = {
  // id    name                        label                     type                       category                  access                 choices               weight help
  { 25,   L"DimensionLineExtend",     L"Dim line extension",    types::distance,           Category::LinesAndArrows, styleReal(46, 0),      Choices::None,        1009,  L"How far the dimension line runs on behind the extension lines, where ticks stand for arrowheads." DRAWN},
  { 69,   L"ExtensionLineColor",      L"Ext line color",        types::color,              Category::LinesAndArrows, styleInteger(177, 0),  Choices::Colors,      1013,  L"Colour of the extension lines." DRAWN},
  { 70,   L"ExtensionLineWeight",     L"Ext line lineweight",   types::lineweight,         Category::LinesAndArrows, styleMember(372, -2),  Choices::Enumeration, 1014,  L"Width of the extension lines on paper." DRAWN},
  { 16,   L"ExtLine1Linetype",        L"Ext line 1 linetype",   types::linetypeName,       Category::LinesAndArrows, styleLinetype(346),    Choices::Linetypes,   1015,  L"Line type of the first extension line." DRAWN},
  { 27,   L"ExtLine2Linetype",        L"Ext line 2 linetype",   types::linetypeName,       Category::LinesAndArrows, styleLinetype(347),    Choices::Linetypes,   1016,  L"Line type of the second extension line." DRAWN},
  { 28,   L"ExtLine1Suppress",        L"Suppress ext line 1",   VT_BOOL,                   Category::LinesAndArrows, styleFlag(75, false),  Choices::None,        1017,  L"Whether the first extension line is left out." DRAWN},
  { 14,   L"ExtLine2Suppress",        L"Suppress ext line 2",   VT_BOOL,                   Category::LinesAndArrows, styleFlag(76, false),  Choices::None,        1018,  L"Whether the second extension line is left out." DRAWN},
  { 17,   L"ExtensionLineExtend",     L"Ext line extension",    types::distance,           Category::LinesAndArrows, styleReal(44, 0.18),   Choices::None,        1019,  L"How far the extension lines run on behind the dimension line." DRAWN},
  { 35,   L"ExtensionLineOffset",     L"Ext line offset",       types::distance,           Category::LinesAndArrows, styleReal(42, 0.0625), Choices::None,        1020,  L"How far from what is measured the extension lines begin." DRAWN},
  { 19,   L"ExtLineFixedLen",         L"Ext line fixed length", types::distance,           Category::LinesAndArrows, styleReal(49, 1),      Choices::None,        1021,  L"Length of the extension lines where it is fixed." DRAWN},
  { 1562, L"HorizontalTextPosition",  L"Text pos hor",          types::horizontalPosition, Category::Text,           styleMember(280, 0),   Choices::Enumeration, 1028,  L"Where the text stands along the dimension line." DRAWN},
  { 1558, L"ExtLineFixedLenSuppress", L"Ext line fixed",        VT_BOOL,                   Category::LinesAndArrows, styleFlag(290, false), Choices::None,        1040,  L"Whether the extension lines have a fixed length." DRAWN},
};

constexpr PropertyRow centerMarkTable[] = {
  // id  name               label                type               category                  access                         choices               weight help
  { 54, L"CenterType",     L"Center mark",      types::centerMark, Category::LinesAndArrows, computed<getCenterType>(),     Choices::Enumeration, 1078,  L"How the center is marked." DRAWN},
  { 55, L"CenterMarkSize", L"Center mark size", types::distance,   Category::LinesAndArrows, computed<getCenterMarkSize>(), Choices::None,        1079,  L"Size of the center mark, before the overall scale." DRAWN},
};

constexpr PropertyRow lengthUnitTable[] = {
  // id    name                            label                              type                   category                access                                  choices               weight help
  { 1548, L"UnitsFormat",                 L"Dim units",                      types::lengthFormat,   Category::PrimaryUnits, computed<getUnitsFormat>(),             Choices::Enumeration, 1041,  L"How the measurement is written." DRAWN},
  { 1551, L"Precision",                   L"Precision",                      types::precision,      Category::PrimaryUnits, styleMember(271, 4),                    Choices::Enumeration, 1042,  L"How many decimal places of the measurement are shown." DRAWN},
  { 1552, L"RoundDistance",               L"Dim roundoff",                   types::distance,       Category::PrimaryUnits, styleReal(45, 0),                       Choices::None,        1043,  L"What the measurement is rounded to; 0 for nothing." DRAWN},
  { 24,   L"LinearScaleFactor",           L"Dim scale linear",               types::noUnits,        Category::PrimaryUnits, computed<getLinearScale>(),             Choices::None,        1044,  L"What the measurement is multiplied with before it is written." DRAWN},
  { 1566, L"FractionFormat",              L"Fraction type",                  types::fractionFormat, Category::PrimaryUnits, styleMember(276, 0),                    Choices::Enumeration, 1048,  L"How fractions are written." DRAWN},
  { 56,   L"SuppressLeadingZeros",        L"Suppress leading zeros",         VT_BOOL,               Category::PrimaryUnits, styleBit(78, 4),                        Choices::None,        1049,  L"Whether the zero in front of the separator is left out." DRAWN},
  { 57,   L"SuppressTrailingZeros",       L"Suppress trailing zeros",        VT_BOOL,               Category::PrimaryUnits, styleBit(78, 8),                        Choices::None,        1050,  L"Whether zeros at the end are left out." DRAWN},
  { 15,   L"SuppressZeroFeet",            L"Suppress zero feet",             VT_BOOL,               Category::PrimaryUnits, computed<getSuppressZeroFeet<78>>(),    Choices::None,        1051,  L"Whether no feet at all are left out." DRAWN},
  { 3,    L"SuppressZeroInches",          L"Suppress zero inches",           VT_BOOL,               Category::PrimaryUnits, computed<getSuppressZeroInches<78>>(),  Choices::None,        1052,  L"Whether no inches at all are left out." DRAWN},
  { 7,    L"ToleranceSuppressZeroFeet",   L"Tolerance suppress zero feet",   VT_BOOL,               Category::Tolerances,   computed<getSuppressZeroFeet<284>>(),   Choices::None,        1075,  L"Whether no feet at all are left out." DRAWN},
  { 52,   L"ToleranceSuppressZeroInches", L"Tolerance suppress zero inches", VT_BOOL,               Category::Tolerances,   computed<getSuppressZeroInches<284>>(), Choices::None,        1076,  L"Whether no inches at all are left out." DRAWN},
};

constexpr PropertyRow angleUnitTable[] = {
  // id  name                      label                       type                category                access                         choices               weight help
  { 9,  L"AngleFormat",           L"Angle format",            types::angleFormat, Category::PrimaryUnits, styleMember(275, 0),           Choices::Enumeration, 1053,  L"How the measurement is written." DRAWN},
  { 4,  L"AnglePrecision",        L"Angle precision",         types::precision,   Category::PrimaryUnits, computed<getAnglePrecision>(), Choices::Enumeration, 1054,  L"How many decimal places of the measurement are shown." DRAWN},
  { 56, L"SuppressLeadingZeros",  L"Suppress leading zeros",  VT_BOOL,            Category::PrimaryUnits, styleBit(79, 1),               Choices::None,        1049,  L"Whether the zero in front of the separator is left out." DRAWN},
  { 57, L"SuppressTrailingZeros", L"Suppress trailing zeros", VT_BOOL,            Category::PrimaryUnits, styleBit(79, 2),               Choices::None,        1050,  L"Whether zeros at the end are left out." DRAWN},
};

constexpr PropertyRow alternateTable[] = {
  // id    name                         label                           type                 category                  access                                  choices               weight help
  { 48,   L"AltUnits",                 L"Alt enabled",                 VT_BOOL,             Category::AlternateUnits, styleFlag(170, false),                  Choices::None,        1057,  L"Whether the measurement is written in a second unit, too." DRAWN},
  { 49,   L"AltUnitsFormat",           L"Alt format",                  types::lengthFormat, Category::AlternateUnits, styleMember(273, 2),                    Choices::Enumeration, 1058,  L"How the measurement in the second unit is written." DRAWN},
  { 50,   L"AltUnitsPrecision",        L"Alt precision",               types::precision,    Category::AlternateUnits, styleMember(171, 2),                    Choices::Enumeration, 1059,  L"How many decimal places are shown in the second unit." DRAWN},
  { 51,   L"AltUnitsScale",            L"Alt scale factor",            types::noUnits,      Category::AlternateUnits, styleReal(143, 25.4),                   Choices::None,        1060,  L"How many of the second unit are one of the first." DRAWN},
  { 11,   L"AltRoundDistance",         L"Alt round",                   types::distance,     Category::AlternateUnits, styleReal(148, 0),                      Choices::None,        1061,  L"What the measurement in the second unit is rounded to; 0 for nothing." DRAWN},
  { 12,   L"AltTextPrefix",            L"Alt prefix",                  VT_BSTR,             Category::AlternateUnits, computed<getAlternatePrefix>(),         Choices::None,        1062,  L"Text in front of the second unit." DRAWN},
  { 36,   L"AltTextSuffix",            L"Alt suffix",                  VT_BSTR,             Category::AlternateUnits, computed<getAlternateSuffix>(),         Choices::None,        1063,  L"Text behind the second unit." DRAWN},
  { 41,   L"AltSuppressLeadingZeros",  L"Alt suppress leading zeros",  VT_BOOL,             Category::AlternateUnits, styleBit(285, 4),                       Choices::None,        1064,  L"Whether the zero in front of the separator is left out." DRAWN},
  { 1559, L"AltSuppressTrailingZeros", L"Alt suppress trailing zeros", VT_BOOL,             Category::AlternateUnits, styleBit(285, 8),                       Choices::None,        1065,  L"Whether zeros at the end are left out." DRAWN},
  { 1557, L"AltSuppressZeroFeet",      L"Alt suppress zero feet",      VT_BOOL,             Category::AlternateUnits, computed<getSuppressZeroFeet<285>>(),   Choices::None,        1066,  L"Whether no feet at all are left out." DRAWN},
  { 1561, L"AltSuppressZeroInches",    L"Alt suppress zero inches",    VT_BOOL,             Category::AlternateUnits, computed<getSuppressZeroInches<285>>(), Choices::None,        1067,  L"Whether no inches at all are left out." DRAWN},
};
// clang-format on

#undef DRAWN

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
