#include <limits>
#include <numbers>
#include <string>

#include "tests/palette/Stage.h"

namespace velt::palette {
namespace {

PROPINFO row(const wchar_t* shown, VARTYPE type) {
  PROPINFO made;
  made.displayName = shown;
  made.valueType = type;
  made.customType = PropertyKind::none;
  made.isEditable = true;
  return made;
}

PROPINFO rowWithChoices(VARTYPE type) {
  PROPINFO made = row(L"Style", type);
  made.hasChoices = true;
  int value = 10;
  for (const wchar_t* const name : {L"solid", L"Dashed"}) {
    made.choiceNames.push_back(name);
    made.choiceValues.push_back(value);
    made.choiceReals.push_back(value + 0.5);
    value += 10;
  }
  return made;
}

Value parsed(std::string_view text, const PROPINFO& record) {
  return Row(record).parse(text);
}

}  // namespace

TEST(RowParsing, NumbersAreTakenAsTheyAre) {
  EXPECT_EQ(parsed(" +2.5e1 ", row(L"Radius", VT_R8)).variant().dblVal, 25.0);
  EXPECT_EQ(parsed("-1", row(L"Radius", VT_R4)).variant().fltVal, -1.0F);
}

TEST(RowParsing, AnglesAreInDegrees) {
  PROPINFO angle = row(L"Rotation", VT_R8);
  for (const int kind : {PropertyKind::angle, PropertyKind::ellipseEndAngle, PropertyKind::hatchAngle}) {
    angle.customType = kind;
    EXPECT_DOUBLE_EQ(parsed("90", angle).variant().dblVal, std::numbers::pi / 2) << kind;
    EXPECT_DOUBLE_EQ(parsed("90\u00B0", angle).variant().dblVal, std::numbers::pi / 2) << kind;
  }
}

TEST(RowParsing, LengthsAndAnglesAreInTheFormatOfTheDrawing) {
  NumberStyle style;
  style.lengthFormat = LengthFormat::architectural;
  style.angleFormat = AngleFormat::radians;
  PROPINFO record = row(L"Radius", VT_R8);
  record.customType = PropertyKind::distance;
  EXPECT_EQ(Row(record).parse("5'6\"", style).variant().dblVal, 66.0);
  EXPECT_EQ(errorOf([&] { static_cast<void>(Row(record).parse("5''", style)); }),
            "\"5''\" is not a length: write inches such as 66 or 66.5, or 5'-6 1/2\"");
  record.customType = PropertyKind::angle;
  EXPECT_EQ(Row(record).parse("1.5", style).variant().dblVal, 1.5);
  EXPECT_EQ(errorOf([&] { static_cast<void>(Row(record).parse("north", style)); }),
            "\"north\" is not an angle: write degrees such as 80 or 80.5\u00B0, 80\u00B030', or 1.5 rad");
}

TEST(RowParsing, ANumberBeyondAnyDrawingIsRefused) {
  EXPECT_EQ(errorOf([] { parsed("-1e21", row(L"Radius", VT_R8)); }),
            "\"-1e21\" is too large for any drawing");
  EXPECT_EQ(parsed("1e20", row(L"Radius", VT_R8)).variant().dblVal, 1e20);
}

TEST(RowParsing, ATypeOfTheObjectsOwnWithoutAValueIsANumber) {
  EXPECT_EQ(parsed("2.5", row(L"Width", VT_USERDEFINED)).variant().dblVal, 2.5);
  EXPECT_EQ(parsed("dashed", rowWithChoices(VT_USERDEFINED)).variant().lVal, 20);
  EXPECT_TRUE(Row(row(L"Width", VT_USERDEFINED)).takesText());
}

TEST(RowParsing, WhatIsNotANumberIsRefused) {
  for (const char* const value : {"", "two", "1,5", "1.5m", "nan", "inf", "1e999"}) {
    EXPECT_THROW(parsed(value, row(L"Radius", VT_R8)), Error) << value;
  }
}

TEST(RowParsing, WholeNumbersHaveToFitTheirType) {
  EXPECT_EQ(parsed("-32768", row(L"N", VT_I2)).variant().iVal, -32768);
  EXPECT_THROW(parsed("32768", row(L"N", VT_I2)), Error);
  EXPECT_THROW(parsed("-1", row(L"N", VT_UI1)), Error);
  EXPECT_EQ(parsed("4294967295", row(L"N", VT_UI4)).variant().ulVal, 4294967295U);
  EXPECT_THROW(parsed("2147483648", row(L"N", VT_I4)), Error);
  EXPECT_THROW(parsed("1.0", row(L"N", VT_I4)), Error);
  EXPECT_EQ(parsed("7", row(L"N", VT_I4)).variant().vt, VT_I4);
}

TEST(RowParsing, YesAndNoHaveSeveralWords) {
  for (const char* const yes : {"yes", "True", "ON", "1"})
    EXPECT_EQ(parsed(yes, row(L"Closed", VT_BOOL)).variant().boolVal, VARIANT_TRUE) << yes;
  for (const char* const no : {"No", "false", "off", "0"})
    EXPECT_EQ(parsed(no, row(L"Closed", VT_BOOL)).variant().boolVal, VARIANT_FALSE) << no;
  EXPECT_THROW(parsed("maybe", row(L"Closed", VT_BOOL)), Error);
}

TEST(RowParsing, AChoiceGoesByItsNameWhateverTheCaseOrByItsNumber) {
  EXPECT_EQ(parsed("dashed", rowWithChoices(VT_I4)).variant().lVal, 20);
  EXPECT_EQ(parsed("10", rowWithChoices(VT_I4)).variant().lVal, 10);
  EXPECT_STREQ(parsed("dashed", rowWithChoices(VT_BSTR)).variant().bstrVal, L"Dashed");
  EXPECT_EQ(parsed("solid", rowWithChoices(VT_R8)).variant().dblVal, 10.5);
}

TEST(RowParsing, AChoiceMayComeWithTheEndOfItsLine) {
  EXPECT_EQ(parsed("dashed\r", rowWithChoices(VT_I4)).variant().lVal, 20);
  EXPECT_EQ(parsed("Das\rhed", rowWithChoices(VT_I4)).variant().lVal, 20) << "which is not seen";
  EXPECT_EQ(parsed("solid\r", rowWithChoices(VT_DISPATCH)).variant().vt,
            parsed("solid", rowWithChoices(VT_DISPATCH)).variant().vt);
  EXPECT_THROW(parsed("dashed\n", rowWithChoices(VT_I4)), Error);
  EXPECT_THROW(parsed("das\thed", rowWithChoices(VT_I4)), Error);
  EXPECT_THROW(parsed("dashed\xFF", rowWithChoices(VT_I4)), Error);
}

TEST(RowParsing, WhatIsNotAChoiceIsAnsweredWithTheChoices) {
  EXPECT_EQ(errorOf([] { parsed("dotted", rowWithChoices(VT_I4)); }),
            "\"dotted\" is not one of its choices: solid, Dashed");
  EXPECT_THROW(parsed("11", rowWithChoices(VT_I4)), Error);
  EXPECT_THROW(parsed("dotted", rowWithChoices(VT_BSTR)), Error);
}

TEST(RowParsing, OfChoicesTheNearestIsNamed) {
  EXPECT_EQ(errorOf([] { parsed("dashd", rowWithChoices(VT_I4)); }),
            "\"dashd\" is not one of its choices; did you mean Dashed?");
}

TEST(RowParsing, ALineweightIsInMillimetresOrInHundredthsOfThem) {
  PROPINFO weight = row(L"Lineweight", VT_I4);
  weight.customType = PropertyKind::entityLineweight;
  weight.hasChoices = true;
  for (const int hundredths : {-1, 0, 5, 35, 100}) {
    weight.choiceNames.push_back(hundredths < 0 ? L"ByLayer"
                                                : (std::to_wstring(hundredths / 100.0) + L" mm").c_str());
    weight.choiceValues.push_back(hundredths);
  }
  for (const char* const text : {"35", "0.35", "0.35mm", "0.35 mm", ".35 MM"})
    EXPECT_EQ(parsed(text, weight).variant().lVal, 35) << text;
  EXPECT_EQ(parsed("5", weight).variant().lVal, 5);
  EXPECT_EQ(parsed("1", weight).variant().lVal, 100) << "no hundredth is a width";
  EXPECT_EQ(parsed("1mm", weight).variant().lVal, 100);
  EXPECT_EQ(parsed("bylayer", weight).variant().lVal, -1);
  for (const char* const text : {"0.36", "36", "0.351", "mm", "1e300", "two"})
    EXPECT_THROW(parsed(text, weight), Error) << text;
}

TEST(RowParsing, AColorMayBeWrittenInHexadecimalDigits) {
  PROPINFO color = rowWithChoices(VT_DISPATCH);
  color.customType = PropertyKind::colorObject;
  EXPECT_STREQ(parsed("#ff8800", color).variant().bstrVal, L"255,136,0");
  EXPECT_STREQ(parsed("#ff88", color).variant().bstrVal, L"#ff88") << "for the host to refuse";
  EXPECT_STREQ(parsed("#ff880g", color).variant().bstrVal, L"#ff880g");
}

TEST(RowParsing, ThePlainValueOfARowIsTakenBack) {
  EXPECT_EQ(Row(row(L"Radius", VT_R8)).valueOf(2.5).variant().dblVal, 2.5);
  EXPECT_EQ(Row(row(L"Radius", VT_R8)).valueOf(std::int64_t{2}).variant().dblVal, 2.0);
  EXPECT_EQ(Row(rowWithChoices(VT_I4)).valueOf(std::int64_t{20}).variant().lVal, 20);
  EXPECT_EQ(Row(rowWithChoices(VT_I4)).valueOf("dashed").variant().lVal, 20);
  EXPECT_EQ(Row(row(L"Closed", VT_BOOL)).valueOf(true).variant().boolVal, VARIANT_TRUE);
  EXPECT_STREQ(Row(rowWithChoices(VT_BSTR)).valueOf("dotted").variant().bstrVal, L"dotted") << "exactly";
  EXPECT_STREQ(Row(row(L"Text", VT_BSTR)).valueOf("a\nb").variant().bstrVal, L"a\nb");
}

TEST(RowParsing, APlainValueThatDoesNotFitTheRowIsRefused) {
  EXPECT_THROW(static_cast<void>(Row(row(L"Radius", VT_R8)).valueOf(true)), Error);
  EXPECT_THROW(static_cast<void>(Row(row(L"Radius", VT_R8)).valueOf(std::monostate())), Error);
  EXPECT_THROW(static_cast<void>(Row(row(L"Radius", VT_R8)).valueOf(1e21)), Error);
  EXPECT_THROW(static_cast<void>(Row(row(L"N", VT_I2)).valueOf(std::int64_t{40000})), Error);
  EXPECT_THROW(static_cast<void>(Row(row(L"N", VT_I2)).valueOf(1.5)), Error);
  EXPECT_THROW(static_cast<void>(Row(row(L"Text", VT_BSTR)).valueOf(1.5)), Error);
  EXPECT_THROW(static_cast<void>(Row(row(L"Closed", VT_BOOL)).valueOf(1.5)), Error);
}

TEST(RowParsing, ARealMayBeGivenAValueThatIsNotAChoice) {
  EXPECT_EQ(parsed("1.25", rowWithChoices(VT_R8)).variant().dblVal, 1.25);
}

TEST(RowParsing, ColorsStayTexts) {
  const Value value = parsed("1,2,3", rowWithChoices(VT_DISPATCH));
  EXPECT_EQ(value.variant().vt, VT_BSTR);
  EXPECT_STREQ(value.variant().bstrVal, L"1,2,3");
}

TEST(RowParsing, TheValueTellsItsTypeWhereTheDeclaredOneIsTheObjectsOwn) {
  PROPINFO radius = row(L"Radius", VT_USERDEFINED);
  radius.value.vt = VT_R8;
  EXPECT_EQ(parsed("2", radius).variant().vt, VT_R8);
}

TEST(RowParsing, TextsKeepTheirBlanksAndTheirCharacters) {
  EXPECT_STREQ(parsed(" \u00E4 ", row(L"Text", VT_BSTR)).variant().bstrVal, L" \u00E4 ");
}

TEST(RowParsing, AValueOfAnotherKindCannotBeWrittenAsText) {
  const PROPINFO data = row(L"Data", VT_ARRAY | VT_R8);
  EXPECT_FALSE(Row(data).takesText());
  EXPECT_EQ(errorOf([&] { parsed("1", data); }), "its value cannot be written as text");
  for (const VARTYPE type : {VT_R8, VT_R4, VT_BOOL, VT_BSTR, VT_DISPATCH, VT_UI1, VT_I8}) {
    const PROPINFO record = row(L"A", type);
    EXPECT_TRUE(Row(record).takesText()) << type;
  }
}

TEST(RowParsing, AChoiceWithoutAValueIsRefused) {
  PROPINFO record = rowWithChoices(VT_I4);
  record.choiceNames.push_back(L"dotted");
  EXPECT_EQ(errorOf([&] { parsed("dotted", record); }), "\"dotted\" is a choice that has no value to write");
}

TEST(RowParsing, TheLargestNumbersOf64BitsAreTaken) {
  EXPECT_EQ(parsed("-9223372036854775808", row(L"N", VT_I8)).variant().llVal,
            std::numeric_limits<LONGLONG>::min());
  EXPECT_EQ(parsed("9223372036854775807", row(L"N", VT_UI8)).variant().ullVal, 9223372036854775807ULL);
  EXPECT_THROW(parsed("-1", row(L"N", VT_UI8)), Error);
}

}  // namespace velt::palette
