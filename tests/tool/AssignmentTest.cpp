#include "tool/Assignment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/automation/IdValues.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using testing::HasSubstr;

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

// Owns the records that the rows are views of.
class Rows {
 public:
  Rows(std::initializer_list<PROPINFO> list) : records_(list) {
    for (const PROPINFO& record : records_)
      rows_.emplace_back(record);
  }
  const PROPINFO& operator[](std::size_t index) const { return records_[index]; }
  // The record of the row that the assignment means.
  const PROPINFO* meantBy(const std::string& text) const {
    return &rowFor(parseAssignment(text), rows_).record();
  }

 private:
  std::vector<PROPINFO> records_;
  std::vector<velt::palette::Row> rows_;
};

template <class Call>
std::string failureOf(Call call) {
  try {
    call();
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  return "no failure";
}

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
  const Rows rows({row(L"X", VT_R8, L"Layer"), row(L"Layer", VT_BSTR, L"LayerName")});
  EXPECT_EQ(rows.meantBy("layer=1"), &rows[1]);
  EXPECT_EQ(rows.meantBy("LAYERNAME=1"), &rows[1]);
}

TEST(Assignment, AnUnknownNameIsAnsweredWithTheNamesThatCanBeEdited) {
  PROPINFO handle = row(L"Handle", VT_BSTR);
  handle.isEditable = false;
  const Rows rows({row(L"Layer", VT_BSTR), handle, row(L"Radius", VT_R8)});
  EXPECT_EQ(failureOf([&] { rows.meantBy("Radios=1"); }),
            "the selection has no property Radios; these can be edited: Layer, Radius");
}

TEST(Assignment, OfSeveralRowsOneHasToBeTold) {
  const Rows rows({row(L"Vertex X", VT_R8), row(L"Vertex Y", VT_R8), row(L"Vertex X", VT_R8)});
  EXPECT_THAT(failureOf([&] { rows.meantBy("Vertex X=1"); }), HasSubstr("choose one of Vertex X#1 to Vertex X#2"));
  EXPECT_EQ(rows.meantBy("Vertex X#2=1"), &rows[2]);
  EXPECT_THAT(failureOf([&] { rows.meantBy("Vertex X#3=1"); }), HasSubstr("has only 2 of that name"));
}

TEST(Assignment, AReadOnlyRowIsRefusedWithItsReason) {
  PROPINFO length = row(L"Length", VT_R8);
  length.isEditable = false;
  length.clsid = CLSID_VeltLine;
  length.dispId = 5;
  EXPECT_EQ(failureOf([&] {
              Rows({length, row(L"Layer", VT_BSTR)}).meantBy("Length=1");
            }),
            "Length cannot be edited: it follows from the two; these can be edited: Layer");
}

TEST(Assignment, AReadOnlyRowWithoutAReasonIsRefusedAllTheSame) {
  PROPINFO tag = row(L"Tag", VT_BSTR);
  tag.isEditable = false;
  tag.clsid = CLSID_VeltLine;
  tag.dispId = dynamicPropertyDispId;
  EXPECT_EQ(failureOf([&] {
              Rows({tag, row(L"Layer", VT_BSTR)}).meantBy("Tag=1");
            }),
            "Tag cannot be edited; these can be edited: Layer");
}

TEST(Assignment, TheValueIsWhatTheRowUnderstands) {
  const PROPINFO radius = row(L"Radius", VT_R8);
  EXPECT_EQ(valueFor(parseAssignment("radius= 2.5"), velt::palette::Row(radius)).plain(),
            velt::palette::PlainValue(2.5));
}

TEST(Assignment, AValueThatIsRefusedIsToldWithItsName) {
  const PROPINFO radius = row(L"Radius", VT_R8);
  EXPECT_EQ(failureOf([&] { valueFor(parseAssignment("radius=two"), velt::palette::Row(radius)); }),
            "radius: \"two\" is not a number");
}

TEST(Assignment, AValueOfAnotherKindCannotBeWrittenAsText) {
  const PROPINFO data = row(L"Data", VT_ARRAY | VT_R8);
  EXPECT_EQ(failureOf([&] { valueFor(parseAssignment("data=1"), velt::palette::Row(data)); }),
            "data has a value that cannot be written as text");
}

}  // namespace
}  // namespace velt::tool
