#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "palette/Palette.h"

namespace velt::palette {
namespace {

const NumberStyle threePlaces{3, 1};

std::string textOf(const PROPINFO& record, const NumberStyle& with) {
  return Row(record).text(with);
}

PROPINFO typedRow(VARTYPE type) {
  PROPINFO row;
  row.clsid = GUID_NULL;
  row.dispId = 1;
  row.customType = 0;
  row.value.vt = type;
  return row;
}

PlainValue plainOf(VARTYPE type) {
  const PROPINFO record = typedRow(type);
  return Row(record).plain();
}

PROPINFO realRow(double value, std::int32_t customType = 0) {
  PROPINFO row = typedRow(VT_R8);
  row.value.dblVal = value;
  row.customType = customType;
  return row;
}

}  // namespace

TEST(RowText, LengthsHaveThePlacesOfTheDrawing) {
  EXPECT_EQ(textOf(realRow(12.5, PropertyKind::distance), threePlaces), "12.500");
  EXPECT_EQ(textOf(realRow(0), threePlaces), "0.000");
  EXPECT_EQ(textOf(realRow(-0.00001, PropertyKind::distance), threePlaces), "-1e-05") << "not 0";
}

TEST(RowText, OnlyLengthsAndCoordinatesAreInFeet) {
  NumberStyle inFeet;
  inFeet.lengthFormat = LengthFormat::architectural;
  for (const int kind : {PropertyKind::distance, PropertyKind::segmentWidth, PropertyKind::elevation})
    EXPECT_EQ(textOf(realRow(66.5, kind), inFeet), "5'-6 1/2\"") << kind;
  for (const int kind : {PropertyKind::area, PropertyKind::number, PropertyKind::none})
    EXPECT_EQ(textOf(realRow(66.5, kind), inFeet), "66.5000") << kind;
  PROPINFO element = realRow(66.5);
  element.isElement = true;
  element.name = L"Center";
  EXPECT_EQ(textOf(element, inFeet), "5'-6 1/2\"");
  element.name = L"Normal";
  EXPECT_EQ(textOf(element, inFeet), "66.5000");
}

TEST(RowText, OnlyDirectionsCountFromTheDrawingsOwn) {
  NumberStyle fromNorth;
  fromNorth.angleBase = 90;
  PROPINFO angle = realRow(std::numbers::pi, PropertyKind::angle);
  angle.name = L"Rotation";
  EXPECT_EQ(textOf(angle, fromNorth), "90\u00B0");
  angle.name = L"TotalAngle";
  EXPECT_EQ(textOf(angle, fromNorth), "180\u00B0");
  angle.name = L"StartAngle";
  angle.clsid = CLSID_VeltEllipse;
  EXPECT_EQ(textOf(angle, fromNorth), "180\u00B0") << "from the ellipse's own axis";
}

TEST(RowText, APreciseTextHasAllDigits) {
  NumberStyle precise;
  precise.isPrecise = true;
  for (const int kind : {PropertyKind::distance, PropertyKind::noUnits, PropertyKind::area})
    EXPECT_EQ(textOf(realRow(0.12345678901234566, kind), precise), "0.12345678901234566") << kind;
}

TEST(RowText, AnglesAreShownInDegrees) {
  for (const int kind : {PropertyKind::angle, PropertyKind::ellipseEndAngle, PropertyKind::hatchAngle})
    EXPECT_EQ(textOf(realRow(std::numbers::pi / 2, kind), threePlaces), "90.0\u00B0") << kind;
}

TEST(RowText, NumbersWithoutUnitsAreNotFilledUpWithZeros) {
  for (const int kind : {PropertyKind::noUnits, PropertyKind::hatchScale, PropertyKind::entityLinetypeScale})
    EXPECT_EQ(textOf(realRow(0.5, kind), threePlaces), "0.5") << kind;
}

TEST(RowText, InfiniteAndHugeNumbersAreShownAllTheSame) {
  EXPECT_EQ(textOf(realRow(std::numeric_limits<double>::quiet_NaN()), threePlaces), "") << "told by nobody";
  EXPECT_EQ(textOf(realRow(std::numeric_limits<double>::infinity()), threePlaces), "inf");
  EXPECT_EQ(textOf(realRow(1e300), threePlaces), "1e+300");
}

TEST(RowText, ANumberWithAChoiceIsShownByItsLabel) {
  PROPINFO row = typedRow(VT_I4);
  row.value.lVal = 25;
  row.choiceValues.push_back(25);
  row.choiceNames.push_back(CStdStr<wchar_t>(L"0.25 mm"));
  EXPECT_EQ(textOf(row, threePlaces), "0.25 mm");
  row.value.lVal = 30;
  EXPECT_EQ(textOf(row, threePlaces), "30");
}

TEST(RowText, IntegersOfEveryWidthKeepTheirSign) {
  PROPINFO row = typedRow(VT_I2);
  row.value.iVal = -5;
  EXPECT_EQ(textOf(row, threePlaces), "-5");
  row = typedRow(VT_UI1);
  row.value.bVal = 200;
  EXPECT_EQ(textOf(row, threePlaces), "200");
  row = typedRow(VT_I8);
  row.value.llVal = -5000000000;
  EXPECT_EQ(textOf(row, threePlaces), "-5000000000");
  row = typedRow(VT_UI8);
  row.value.ullVal = 18446744073709551615ULL;
  EXPECT_EQ(textOf(row, threePlaces), "18446744073709551615");
}

TEST(RowText, FlagsAreYesOrNo) {
  PROPINFO row = typedRow(VT_BOOL);
  row.value.boolVal = VARIANT_TRUE;
  EXPECT_EQ(textOf(row, threePlaces), "Yes");
  row.value.boolVal = VARIANT_FALSE;
  EXPECT_EQ(textOf(row, threePlaces), "No");
}

TEST(RowText, TextsStandOnOneLine) {
  PROPINFO row = typedRow(VT_BSTR);
  row.value.bstrVal = SysAllocString(L"a\nb");
  EXPECT_EQ(textOf(row, threePlaces), "a\u21B5b");
  EXPECT_EQ(Row(row).plain(), PlainValue(std::string("a\nb"))) << "as it is";
  VariantClear(&row.value);
  row = typedRow(VT_BSTR);
  EXPECT_EQ(textOf(row, threePlaces), "");
}

TEST(RowText, AVaryingRowSaysSoAndKeepsItsValue) {
  PROPINFO row = realRow(1.5);
  row.isVaries = true;
  EXPECT_EQ(textOf(row, threePlaces), "*VARIES*");
  EXPECT_EQ(Row(row).plain(), PlainValue(1.5));
}

TEST(RowText, AValueThatIsMissingIsNothing) {
  EXPECT_EQ(textOf(typedRow(VT_EMPTY), threePlaces), "");
  EXPECT_EQ(plainOf(VT_EMPTY), PlainValue());
  EXPECT_EQ(textOf(typedRow(VT_DISPATCH), threePlaces), "");
  EXPECT_EQ(textOf(typedRow(VT_USERDEFINED), threePlaces), "");
}

TEST(RowText, AnotherValueIsShownAsTheRowsOwn) {
  PROPINFO record = realRow(0.0, PropertyKind::angle);
  record.isVaries = true;
  EXPECT_EQ(Row(record).textOf(Value::ofReal(std::numbers::pi), threePlaces), "180.0\u00B0");
  EXPECT_EQ(Row(record).textOf(Value(), threePlaces), "");
}

}  // namespace velt::palette
