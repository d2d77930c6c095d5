#include "palette/rows/RowText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <set>

#include "tests/tool/Drawings.h"

using namespace velt::tool;
using namespace velt::tests;
using velt::database::Drawing;

namespace {

constexpr NumberStyle style{3, 1};

PROPINFO rowOf(VARTYPE type) {
  PROPINFO row;
  row.clsid = GUID_NULL;
  row.dispId = 1;
  row.customType = 0;
  row.value.vt = type;
  return row;
}

PROPINFO realRow(double value, std::int32_t customType = 0) {
  PROPINFO row = rowOf(VT_R8);
  row.value.dblVal = value;
  row.customType = customType;
  return row;
}

}  // namespace

TEST(RowText, LengthsHaveThePlacesOfTheDrawing) {
  EXPECT_EQ(valueText(realRow(12.5, PropertyKind::distance), style), "12.500");
  EXPECT_EQ(valueText(realRow(-0.00001), style), "0.000");
}

TEST(RowText, AnglesAreShownInDegrees) {
  for (const int kind : {PropertyKind::angle, PropertyKind::ellipseEndAngle, PropertyKind::hatchAngle})
    EXPECT_EQ(valueText(realRow(std::numbers::pi / 2, kind), style), "90.0\u00B0") << kind;
}

TEST(RowText, NumbersWithoutUnitsAreNotFilledUpWithZeros) {
  for (const int kind : {PropertyKind::noUnits, PropertyKind::hatchScale, PropertyKind::entityLinetypeScale})
    EXPECT_EQ(valueText(realRow(0.5, kind), style), "0.5") << kind;
}

TEST(RowText, InfiniteAndHugeNumbersAreShownAllTheSame) {
  EXPECT_EQ(valueText(realRow(std::numeric_limits<double>::quiet_NaN()), style), "nan");
  EXPECT_EQ(valueText(realRow(std::numeric_limits<double>::infinity()), style), "inf");
  EXPECT_EQ(valueText(realRow(1e300), style), "1e+300");
}

TEST(RowText, ANumberWithAChoiceIsShownByItsLabel) {
  PROPINFO row = rowOf(VT_I4);
  row.value.lVal = 25;
  row.choiceValues.push_back(25);
  row.choiceNames.push_back(CStdStr<wchar_t>(L"0.25 mm"));
  EXPECT_EQ(valueText(row, style), "0.25 mm");
  row.value.lVal = 30;
  EXPECT_EQ(valueText(row, style), "30");
}

TEST(RowText, IntegersOfEveryWidthKeepTheirSign) {
  PROPINFO row = rowOf(VT_I2);
  row.value.iVal = -5;
  EXPECT_EQ(valueText(row, style), "-5");
  row = rowOf(VT_UI1);
  row.value.bVal = 200;
  EXPECT_EQ(valueText(row, style), "200");
  row = rowOf(VT_I8);
  row.value.llVal = -5000000000;
  EXPECT_EQ(valueText(row, style), "-5000000000");
  row = rowOf(VT_UI8);
  row.value.ullVal = 18446744073709551615ULL;
  EXPECT_EQ(valueText(row, style), "18446744073709551615");
}

TEST(RowText, FlagsAreYesOrNo) {
  PROPINFO row = rowOf(VT_BOOL);
  row.value.boolVal = VARIANT_TRUE;
  EXPECT_EQ(valueText(row, style), "Yes");
  row.value.boolVal = VARIANT_FALSE;
  EXPECT_EQ(valueText(row, style), "No");
}

TEST(RowText, TextsStandOnOneLine) {
  PROPINFO row = rowOf(VT_BSTR);
  row.value.bstrVal = SysAllocString(L"a\nb");
  EXPECT_EQ(valueText(row, style), "a\u21B5b");
  EXPECT_EQ(rowJson(row, style)["value"], "a\nb");
  VariantClear(&row.value);
  row = rowOf(VT_BSTR);
  EXPECT_EQ(valueText(row, style), "");
}

TEST(RowText, AVaryingRowSaysSoAndKeepsItsValueInJson) {
  PROPINFO row = realRow(1.5);
  row.isVaries = true;
  EXPECT_EQ(valueText(row, style), "*VARIES*");
  EXPECT_EQ(rowJson(row, style)["value"], 1.5);
  EXPECT_EQ(rowJson(row, style)["text"], "*VARIES*");
}

TEST(RowText, AValueThatIsMissingIsNothing) {
  EXPECT_EQ(valueText(rowOf(VT_EMPTY), style), "");
  EXPECT_TRUE(rowJson(rowOf(VT_EMPTY), style)["value"].is_null());
  EXPECT_EQ(valueText(rowOf(VT_DISPATCH), style), "");
  EXPECT_EQ(valueText(rowOf(VT_USERDEFINED), style), "");
}

TEST(RowText, JsonHasEveryFieldOfTheRecordUnderItsOwnName) {
  const std::set<std::string> fields = {
      "clsid",       "pDispatch",        "dispId",       "name",         "description",   "displayName",
      "value",       "categoryId",       "categoryName", "isElement",    "elementCookie", "hasChoices",
      "choiceNames", "choiceValues",     "isWritable",   "isEditable",   "isVaries",      "customType",
      "groupCount",  "elementGrouping",  "weight",       "sortByCookie", "objectId",      "valueType",
      "hasValue",    "pDynamicProperty", "dynSources",   "choiceReals",  "text"};
  std::set<std::string> found;
  const nlohmann::ordered_json json = rowJson(realRow(1.0), style);
  for (const auto& [name, value] : json.items())
    found.insert(name);
  EXPECT_EQ(found, fields);
}

TEST(RowText, ClassIdsAreWrittenInTheUsualWay) {
  EXPECT_EQ(guidText(GUID{0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}}),
            "01020304-0506-0708-090A-0B0C0D0E0F10");
}

TEST(RowText, ThePrecisionComesFromTheHeader) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, ""), "a.dxf");
  EXPECT_EQ(numberStyleOf(*drawing).lengthPlaces, 3);
  EXPECT_EQ(numberStyleOf(*drawing).anglePlaces, 1);
  const auto silent =
      Drawing::parse(pairs({{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}, {0, "EOF"}}), "b.dxf");
  EXPECT_EQ(numberStyleOf(*silent).lengthPlaces, 4);
}

TEST(RowText, APrecisionBeyondReasonIsCutBack) {
  const std::string text = pairs({{0, "SECTION"},
                                  {2, "HEADER"},
                                  {9, "$LUPREC"},
                                  {70, "9999"},
                                  {9, "$AUPREC"},
                                  {70, "-3"},
                                  {0, "ENDSEC"},
                                  {0, "EOF"}});
  const auto drawing = Drawing::parse(text, "a.dxf");
  EXPECT_EQ(numberStyleOf(*drawing).lengthPlaces, 8);
  EXPECT_EQ(numberStyleOf(*drawing).anglePlaces, 0);
}
