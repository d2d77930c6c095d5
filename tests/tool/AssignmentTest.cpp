#include "tool/Assignment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numbers>
#include <string>

#include "host/automation/IdValues.h"
#include "tool/Failure.h"

using namespace velt::tool;
using testing::HasSubstr;

namespace {

PROPINFO row(const wchar_t* shown, VARTYPE type, const wchar_t* name = L"") {
  PROPINFO made;
  made.displayName = shown;
  made.name = name;
  made.valueType = type;
  made.customType = 0;
  made.clsid = {};
  made.dispId = DISPID_UNKNOWN;
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

TqVector<PROPINFO> rowsOf(std::initializer_list<PROPINFO> list) {
  TqVector<PROPINFO> made;
  for (const PROPINFO& one : list)
    made.push_back(one);
  return made;
}

template <class Call>
std::string failureOf(Call call) {
  try {
    call();
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "no failure";
}

velt::holders::VariantHolder valueIn(const std::string& text, const PROPINFO& of) {
  return valueFor(parseAssignment(text), of);
}

}  // namespace

TEST(Assignment, NameAndValueStandAroundTheFirstEqualsSign) {
  const Assignment made = parseAssignment(" Start X = a=b ");
  EXPECT_EQ(made.name, "Start X");
  EXPECT_EQ(made.value, " a=b ");
  EXPECT_EQ(made.number, 0U);
}

TEST(Assignment, ANumberAfterTheNameTellsWhichOfSeveral) {
  EXPECT_EQ(parseAssignment("Vertex X#12=1").name, "Vertex X");
  EXPECT_EQ(parseAssignment("Vertex X#12=1").number, 12U);
  EXPECT_EQ(parseAssignment("Tag #a=1").name, "Tag #a");
  EXPECT_EQ(parseAssignment("Tag#0=1").name, "Tag#0");
}

TEST(Assignment, AnEmptyValueIsAValue) {
  EXPECT_EQ(parseAssignment("Text=").value, "");
}

TEST(Assignment, WithoutANameOrAnEqualsSignTheUsageIsWrong) {
  EXPECT_THROW(parseAssignment("Layer"), UsageFailure);
  EXPECT_THROW(parseAssignment(" =Walls"), UsageFailure);
}

TEST(Assignment, TheShownNameComesBeforeThePropertysOwn) {
  const auto rows = rowsOf({row(L"X", VT_R8, L"Layer"), row(L"Layer", VT_BSTR, L"LayerName")});
  EXPECT_EQ(&rowFor(parseAssignment("layer=1"), rows), &rows[1]);
  EXPECT_EQ(&rowFor(parseAssignment("LAYERNAME=1"), rows), &rows[1]);
}

TEST(Assignment, AnUnknownNameIsAnsweredWithTheNamesThatCanBeEdited) {
  PROPINFO handle = row(L"Handle", VT_BSTR);
  handle.isEditable = false;
  const auto rows = rowsOf({row(L"Layer", VT_BSTR), handle, row(L"Radius", VT_R8)});
  EXPECT_EQ(failureOf([&] { rowFor(parseAssignment("Radios=1"), rows); }),
            "the selection has no property Radios; these can be edited: Layer, Radius");
}

TEST(Assignment, OfSeveralRowsOneHasToBeTold) {
  const auto rows = rowsOf({row(L"Vertex X", VT_R8), row(L"Vertex Y", VT_R8), row(L"Vertex X", VT_R8)});
  EXPECT_THAT(failureOf([&] { rowFor(parseAssignment("Vertex X=1"), rows); }),
              HasSubstr("from Vertex X#1 to Vertex X#2"));
  EXPECT_EQ(&rowFor(parseAssignment("Vertex X#2=1"), rows), &rows[2]);
  EXPECT_THAT(failureOf([&] { rowFor(parseAssignment("Vertex X#3=1"), rows); }),
              HasSubstr("has 2 of the name"));
}

TEST(Assignment, AReadOnlyRowIsRefusedWithItsReason) {
  PROPINFO length = row(L"Length", VT_R8);
  length.isEditable = false;
  length.clsid = CLSID_VeltLine;
  length.dispId = 5;
  EXPECT_EQ(failureOf([&] {
              rowFor(parseAssignment("Length=1"), rowsOf({length, row(L"Layer", VT_BSTR)}));
            }),
            "Length cannot be edited: it follows from the two; these can be edited: Layer");
}

TEST(Assignment, AReadOnlyRowWithoutAReasonIsRefusedAllTheSame) {
  PROPINFO row = ::row(L"Tag", VT_BSTR);
  row.isEditable = false;
  row.clsid = CLSID_VeltLine;
  row.dispId = dynamicPropertyDispId;
  EXPECT_EQ(failureOf([&] {
              rowFor(parseAssignment("Tag=1"), rowsOf({row, ::row(L"Layer", VT_BSTR)}));
            }),
            "Tag cannot be edited; these can be edited: Layer");
}

TEST(Assignment, NumbersAreTakenAsTheyAre) {
  EXPECT_EQ(valueIn("Radius= +2.5e1 ", row(L"Radius", VT_R8)).get().dblVal, 25.0);
  EXPECT_EQ(valueIn("Radius=-1", row(L"Radius", VT_R4)).get().fltVal, -1.0F);
}

TEST(Assignment, AnglesAreInDegrees) {
  PROPINFO angle = row(L"Rotation", VT_R8);
  for (const int kind : {PropertyKind::angle, PropertyKind::ellipseEndAngle, PropertyKind::hatchAngle}) {
    angle.customType = kind;
    EXPECT_DOUBLE_EQ(valueIn("Rotation=90", angle).get().dblVal, std::numbers::pi / 2) << kind;
    EXPECT_DOUBLE_EQ(valueIn("Rotation=90\u00B0", angle).get().dblVal, std::numbers::pi / 2) << kind;
  }
}

TEST(Assignment, WhatIsNotANumberIsRefused) {
  for (const char* const value : {"", "two", "1,5", "1.5m", "nan", "inf", "1e999"}) {
    EXPECT_THROW(valueIn(std::string("Radius=") + value, row(L"Radius", VT_R8)), Failure) << value;
  }
}

TEST(Assignment, WholeNumbersHaveToFitTheirType) {
  EXPECT_EQ(valueIn("N=-32768", row(L"N", VT_I2)).get().iVal, -32768);
  EXPECT_THROW(valueIn("N=32768", row(L"N", VT_I2)), Failure);
  EXPECT_THROW(valueIn("N=-1", row(L"N", VT_UI1)), Failure);
  EXPECT_EQ(valueIn("N=4294967295", row(L"N", VT_UI4)).get().ulVal, 4294967295U);
  EXPECT_THROW(valueIn("N=2147483648", row(L"N", VT_I4)), Failure);
  EXPECT_THROW(valueIn("N=1.0", row(L"N", VT_I4)), Failure);
  EXPECT_EQ(valueIn("N=7", row(L"N", VT_I4)).get().vt, VT_I4);
}

TEST(Assignment, YesAndNoHaveSeveralWords) {
  for (const char* const yes : {"yes", "True", "ON", "1"})
    EXPECT_EQ(valueIn(std::string("Closed=") + yes, row(L"Closed", VT_BOOL)).get().boolVal, VARIANT_TRUE)
        << yes;
  for (const char* const no : {"No", "false", "off", "0"})
    EXPECT_EQ(valueIn(std::string("Closed=") + no, row(L"Closed", VT_BOOL)).get().boolVal, VARIANT_FALSE)
        << no;
  EXPECT_THROW(valueIn("Closed=maybe", row(L"Closed", VT_BOOL)), Failure);
}

TEST(Assignment, AChoiceGoesByItsNameWhateverTheCaseOrByItsNumber) {
  EXPECT_EQ(valueIn("Style=dashed", rowWithChoices(VT_I4)).get().lVal, 20);
  EXPECT_EQ(valueIn("Style=10", rowWithChoices(VT_I4)).get().lVal, 10);
  EXPECT_STREQ(valueIn("Style=dashed", rowWithChoices(VT_BSTR)).get().bstrVal, L"Dashed");
  EXPECT_EQ(valueIn("Style=solid", rowWithChoices(VT_R8)).get().dblVal, 10.5);
}

TEST(Assignment, WhatIsNotAChoiceIsAnsweredWithTheChoices) {
  EXPECT_EQ(failureOf([] { valueIn("Style=dotted", rowWithChoices(VT_I4)); }),
            "Style: \"dotted\" is none of its choices: solid, Dashed");
  EXPECT_THROW(valueIn("Style=11", rowWithChoices(VT_I4)), Failure);
  EXPECT_THROW(valueIn("Style=dotted", rowWithChoices(VT_BSTR)), Failure);
}

TEST(Assignment, ARealMayBeGivenAValueThatIsNotAChoice) {
  EXPECT_EQ(valueIn("Style=1.25", rowWithChoices(VT_R8)).get().dblVal, 1.25);
}

TEST(Assignment, ColorsStayTexts) {
  const velt::holders::VariantHolder value = valueIn("Style=1,2,3", rowWithChoices(VT_DISPATCH));
  EXPECT_EQ(value.get().vt, VT_BSTR);
  EXPECT_STREQ(value.get().bstrVal, L"1,2,3");
}

TEST(Assignment, TheValueTellsItsTypeWhereTheDeclaredOneIsTheObjectsOwn) {
  PROPINFO radius = row(L"Radius", VT_USERDEFINED);
  radius.value.vt = VT_R8;
  EXPECT_EQ(valueIn("Radius=2", radius).get().vt, VT_R8);
}

TEST(Assignment, TextsKeepTheirBlanksAndTheirCharacters) {
  EXPECT_STREQ(valueIn("Text= \u00E4 ", row(L"Text", VT_BSTR)).get().bstrVal, L" \u00E4 ");
}

TEST(Assignment, AValueOfAnotherKindCannotBeWrittenAsText) {
  EXPECT_THROW(valueIn("Data=1", row(L"Data", VT_ARRAY | VT_R8)), Failure);
}
