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

TEST(Assignment, AnElementOfAGroupHasItsNumberInBrackets) {
  EXPECT_EQ(parseAssignment("Vertex[37].X=1").name, "Vertex X");
  EXPECT_EQ(parseAssignment("Vertex[37].X=1").number, 37U);
  EXPECT_EQ(parseAssignment("Vertex[ +2\t].X=1").number, 2U);
  EXPECT_EQ(parseAssignment("Vertex[+12].X=1").number, 12U);
  EXPECT_EQ(parseAssignment("Vertex[-1].X=1").name, "Vertex[-1].X");
  EXPECT_EQ(parseAssignment("Vertex[1 2].X=1").name, "Vertex[1 2].X");
  EXPECT_EQ(parseAssignment("Tag[0].X=1").name, "Tag[0].X");
  EXPECT_EQ(parseAssignment("Tag[1]=1").name, "Tag[1]");
  EXPECT_EQ(parseAssignment("[1].X=1").name, "[1].X");
}

TEST(Assignment, ASignBeforeTheEqualsSignTellsOfARelation) {
  using palette::Relation;
  const std::pair<const char*, Relation> cases[] = {{"Start X+=5", Relation::plus},
                                                    {"Start X -= 5", Relation::minus},
                                                    {"Start X*=5", Relation::times},
                                                    {"Start X/=5", Relation::dividedBy}};
  for (const auto& [text, relation] : cases) {
    const Assignment made = parseAssignment(text);
    EXPECT_EQ(made.name, "Start X") << text;
    EXPECT_EQ(made.relation, relation) << text;
  }
  EXPECT_EQ(parseAssignment("Start X=-5").relation, std::nullopt);
  EXPECT_EQ(parseAssignment("Vertex X#2*=5").number, 2U);
  const Assignment replacing = parseAssignment("Text=~s/a=b/c/");
  EXPECT_EQ(replacing.name, "Text");
  EXPECT_EQ(replacing.relation, Relation::replaced);
  EXPECT_EQ(replacing.value, "s/a=b/c/");
  EXPECT_EQ(parseAssignment("Text=~south").relation, std::nullopt);
  EXPECT_THROW(parseAssignment("+=5"), UsageFailure);
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

TEST(Assignment, AReplacementWithoutItsLetterIsNotWrittenIntoTheTexts) {
  EXPECT_THROW((void)parseAssignment("Text=~/Wall/Door/"), UsageFailure);
  EXPECT_EQ("~/a path/of files", parseAssignment("Text=~/a path/of files").value);
  EXPECT_TRUE(parseAssignment("Text=~s/Wall/Door/").relation);
}

TEST(Assignment, AnUnknownNameIsAnsweredWithTheNearestOnes) {
  PROPINFO handle = row(L"Handle", VT_BSTR);
  handle.isEditable = false;
  const Rows rows({row(L"Layer", VT_BSTR), handle, row(L"Radius", VT_R8)});
  EXPECT_EQ(failureOf([&] { rows.meantBy("Radios=1"); }),
            "the selected entities have no property Radios in common; did you mean Radius?");
  EXPECT_EQ(failureOf([&] { rows.meantBy("Sound=1"); }),
            "the selected entities have no property Sound in common; \"veltprops show\" lists those that "
            "they have, and "
            "\"veltprops explain\" says why one is missing");
}

TEST(Assignment, OfSeveralRowsOneHasToBeTold) {
  const Rows rows({row(L"Vertex X", VT_R8), row(L"Vertex Y", VT_R8), row(L"Vertex X", VT_R8)});
  EXPECT_THAT(failureOf([&] { rows.meantBy("Vertex X=1"); }),
              HasSubstr("choose one of Vertex X#1 to Vertex X#2"));
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
            "Length cannot be edited: it follows from the start and the end");
}

TEST(Assignment, AReadOnlyRowWithoutAReasonIsRefusedAllTheSame) {
  PROPINFO tag = row(L"Tag", VT_BSTR);
  tag.isEditable = false;
  tag.clsid = CLSID_VeltLine;
  tag.dispId = dynamicPropertyDispId;
  EXPECT_EQ(failureOf([&] { Rows({tag, row(L"Layer", VT_BSTR)}).meantBy("Tag=1"); }), "Tag cannot be edited");
}

TEST(Assignment, WhatOnlyLooksLikeAReplacementIsAValue) {
  for (const char* const value : {"path/", "a/b/c/", "~/a/b", "~/a/b/c/", "~a/b/c/"})
    EXPECT_EQ(parseAssignment(std::string("Text=") + value).value, value);
  EXPECT_EQ(failureOf([] { (void)parseAssignment("Text=~/Wall/Door/"); }),
            "\"~/Wall/Door/\" is not a replacement: write Text=~s/OLD/NEW/ (a text that reads so is written "
            "with --from)");
}

TEST(Assignment, OfSeveralRowsTheFirstHasTheNumberOne) {
  const Rows rows({row(L"Vertex X", VT_R8), row(L"Vertex X", VT_R8), row(L"Vertex X", VT_R8)});
  EXPECT_EQ(rows.meantBy("Vertex X#1=1"), &rows[0]);
  EXPECT_EQ(rows.meantBy("Vertex X#3=1"), &rows[2]);
  EXPECT_EQ(failureOf([&] { rows.meantBy("Vertex X=1"); }),
            "3 properties have the name Vertex X: choose one of Vertex X#1 to Vertex X#3");
  EXPECT_EQ(failureOf([&] { rows.meantBy("Vertex X#4=1"); }),
            "Vertex X#4: the selection has only 3 of that name");
  EXPECT_EQ(parseAssignment("Vertex X#1a=1").name, "Vertex X#1a");
  EXPECT_EQ(parseAssignment("V[1].X=1").name, "V X");
  EXPECT_EQ(parseAssignment("Vertex[1].=1").name, "Vertex[1].");
}

}  // namespace
}  // namespace velt::tool
