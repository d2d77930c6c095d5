#include "embedded/automation/model/Editor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class EditorTest : public ::testing::Test {
 protected:
  Editor editorOf(Pairs pairs) {
    drawing = Sample().layer("W\\U+00E4nde").entity("TOY", pairs).open();
    return Editor(subjectOf(*drawing));
  }
  std::unique_ptr<Drawing> drawing;
};

TEST_F(EditorTest, AMissingValueGoesWhereDrawingsHaveIt) {
  Editor polyline =
      editorOf({{8, "0"}, {100, "AcDbPolyline"}, {90, "1"}, {70, "0"}, {10, "1.0"}, {20, "2.0"}});
  polyline.real(39, "AcDbPolyline", 3);
  polyline.real(43, "AcDbPolyline", 0.5);
  EXPECT_EQ("8=0 100=AcDbPolyline 90=1 70=0 43=0.5 39=3.0 10=1.0 20=2.0", pairsOf(*drawing));

  Editor old = editorOf({{8, "0"}, {10, "1.0"}, {20, "2.0"}, {1000, "mine"}});
  old.integer(62, "AcDbEntity", 3);
  old.text(6, "AcDbEntity", L"DASHED");
  old.real(77, "AcDbToy", 1);
  EXPECT_EQ("8=0 6=DASHED 62=3 10=1.0 20=2.0 77=1.0 1000=mine", pairsOf(*drawing));
}

TEST_F(EditorTest, EachMissingValueGoesAfterThoseThatDrawingsHaveBeforeIt) {
  struct Part {
    const char* subclass;
    const char* looked;
    std::vector<int> codes;
  };
  const Part parts[] = {
      {"AcDbEntity", "AcDbEntity", {67, 410, 8, 6, 62, 370, 48, 60, 420, 430, 440}},
      {"AcDbLine", "AcDbLine", {39, 10, 20, 30, 11, 21, 31}},
      {"AcDbPoint", "AcDbPoint", {10, 20, 30, 39}},
      {"AcDbCircle", "AcDbCircle", {39, 10, 20, 30, 40}},
      {"AcDbArc", "AcDbArc", {50, 51}},
      {"AcDbEllipse", "AcDbEllipse", {10, 20, 30, 11, 21, 31, 210, 220, 230, 40, 41, 42}},
      {"AcDbPolyline", "AcDbPolyline", {90, 70, 43, 38, 39}},
      {"AcDbText", "AcDbText", {39, 10, 20, 30, 40, 1, 50, 41, 51, 7, 71, 72, 11, 21, 31}},
      {"AcDbMText", "AcDbMText", {10,  20,  30,  40, 41, 46, 71, 72, 3,  1,  7,
                                  210, 220, 230, 11, 21, 31, 42, 43, 50, 73, 44}},
      {"AcDbHatch", "AcDbHatch", {450, 451, 460}},
      {"AcDbBlockReference", "*", {66, 2, 10, 20, 30, 41, 42, 43, 50, 70, 71, 44, 45}},
  };
  for (const Part& part : parts) {
    const auto withCodes = [&](const std::vector<int>& codes) {
      std::string text = "0\nTOY\n100\n" + std::string(part.subclass) + "\n";
      for (const int code : codes)
        text += std::to_string(code) + "\n5.0\n";
      return Sample().append(text).open();
    };
    const std::string whole = pairsOf(*withCodes(part.codes));
    for (std::size_t missing = 1; missing < part.codes.size(); ++missing) {
      std::vector<int> others = part.codes;
      others.erase(others.begin() + static_cast<std::ptrdiff_t>(missing));
      drawing = withCodes(others);
      Editor(subjectOf(*drawing)).real(part.codes[missing], part.looked, 5);
      EXPECT_EQ(whole, pairsOf(*drawing)) << part.codes[missing];
    }
  }
}

TEST_F(EditorTest, APointIsWrittenCoordinateByCoordinate) {
  Editor editor = editorOf({{100, "AcDbLine"}, {10, "1.50"}, {20, "2"}, {30, "0"}});
  editor.point(10, "AcDbLine", {1.5, 2, 7});
  EXPECT_EQ("100=AcDbLine 10=1.50 20=2 30=7.0", pairsOf(*drawing)) << "what stays the same keeps its digits";
}

TEST_F(EditorTest, ANameKeepsTheSpellingOfItsTable) {
  Editor editor = editorOf({{100, "AcDbEntity"}, {8, "0"}});
  editor.name(8, "AcDbEntity", *drawing->layers().find(L"W\u00C4NDE"));
  EXPECT_EQ("100=AcDbEntity 8=W\\U+00E4nde", pairsOf(*drawing));
  editor.name(6, "AcDbEntity", *drawing->linetypes().find(L"byblock"));
  EXPECT_EQ("100=AcDbEntity 8=W\\U+00E4nde 6=ByBlock", pairsOf(*drawing)) << "one without a record";
}

TEST_F(EditorTest, TheDefaultOfAMissingValueIsNotWritten) {
  Editor editor = editorOf({{100, "AcDbToy"}, {71, "4"}});
  editor.integer(70, "AcDbToy", 1, 1);
  editor.integer(71, "AcDbToy", 0, 0);
  EXPECT_EQ("100=AcDbToy 71=0", pairsOf(*drawing)) << "one that is there is replaced all the same";
}

TEST_F(EditorTest, WhatTheEntityHasNoPlaceForIsRefused) {
  Editor editor = editorOf({{100, "AcDbToy"}});
  EXPECT_EQ(E_FAIL, refusalOf([&] { editor.real(40, "AcDbCircle", 1); }));
  EXPECT_EQ(E_FAIL, refusalOf([&] { editor.text(1, "AcDbText", L"x"); }));
  EXPECT_EQ(E_FAIL, refusalOf([&] { editor.point(10, "AcDbLine", {1, 2, 3}); }));
  EXPECT_EQ("100=AcDbToy", pairsOf(*drawing));
}

TEST_F(EditorTest, NumbersThatBecameTooLargeAreRefused) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  Editor editor = editorOf({{100, "AcDbToy"}});
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { editor.real(40, "AcDbToy", infinite); }));
  EXPECT_EQ(DISP_E_OVERFLOW, refusalOf([&] { editor.point(10, "AcDbToy", {1, infinite, 2}); }));
  EXPECT_EQ("100=AcDbToy", pairsOf(*drawing));
}

TEST_F(EditorTest, FormatsAreOrderedByTheirVersion) {
  const auto is = [](const std::string& own, const char* version) {
    return isOfFormat(*Sample().version(own).entity("TOY").open(), version);
  };
  EXPECT_TRUE(is("AC1018", "AC1018"));
  EXPECT_TRUE(is(" AC1032 ", "AC1018"));
  EXPECT_FALSE(is("AC1015", "AC1018"));
  EXPECT_FALSE(is("AC1009", "AC1015"));
  EXPECT_FALSE(is("AC2.10", "AC1012")) << "older than the numbered ones";
  EXPECT_FALSE(isOfFormat(*Sample().entity("TOY").open(), "AC1009")) << "one that does not tell";
}

TEST_F(EditorTest, OnlyALockedLayerKeepsItsEntitiesFromChanging) {
  const PropertyRow row = toyRow(storedReal(40, "*"));
  const auto result = [&](const std::string& layer) {
    drawing = Sample()
                  .layer("Locked", {{70, "68"}})
                  .layer("Frozen", {{70, "1"}})
                  .layer("Off", {{62, "-3"}})
                  .entity("TOY", {{8, layer}})
                  .open();
    return refusalOf([&] { requireChangeable(subjectOf(*drawing), row); });
  };
  EXPECT_EQ(E_ACCESSDENIED, result("LOCKED"));
  EXPECT_EQ(S_OK, result("Frozen"));
  EXPECT_EQ(S_OK, result("Off"));
  EXPECT_EQ(S_OK, result("Missing"));
}

TEST_F(EditorTest, ARowCanNeedANewerFormat) {
  const PropertyRow row = toyRow(storedReal(40, "*").from("AC1018"));
  const auto result = [&](const std::string& version) {
    drawing = Sample().version(version).entity("TOY").open();
    return refusalOf([&] { requireChangeable(subjectOf(*drawing), row); });
  };
  EXPECT_EQ(E_FAIL, result("AC1015"));
  EXPECT_EQ(S_OK, result("AC1018"));
}

constexpr Obstacle roundness = {
    .where = L"the toy is round.",
    .reasonFor =
        [](const Subject& subject) {
          return subject.lens().has(40, dxf::anySubclass) ? &reasons::centerWouldFollow : nullptr;
        },
};

TEST_F(EditorTest, ARowCanNameObstaclesOfSomeEntities) {
  drawing = Sample().entity("TOY", {{40, "1"}}).entity("TOY").open();
  for (const Writability& writability : {readOnlyWhere(roundness), refusedWhere(roundness)}) {
    const PropertyRow row = toyRow(storedReal(41, "*"), VT_R8, writability);
    EXPECT_EQ(E_FAIL, refusalOf([&] { requireChangeable(subjectOf(*drawing, 0), row); }));
    EXPECT_EQ(S_OK, refusalOf([&] { requireChangeable(subjectOf(*drawing, 1), row); }));
  }
}

TEST_F(EditorTest, LimitsExcludeTheirNumbers) {
  const auto result = [](Limit limit, double number) {
    return refusalOf([&] { requireWithin(limit, number); });
  };
  EXPECT_EQ(S_OK, result(Limit::None, -1));
  EXPECT_EQ(E_INVALIDARG, result(Limit::Positive, 0));
  EXPECT_EQ(S_OK, result(Limit::Positive, 1e-300));
  EXPECT_EQ(E_INVALIDARG, result(Limit::NotNegative, -1e-300));
  EXPECT_EQ(S_OK, result(Limit::NotNegative, 0));
  EXPECT_EQ(E_INVALIDARG, result(Limit::NotZero, -0.0));
  EXPECT_EQ(S_OK, result(Limit::NotZero, -1));
}

TEST_F(EditorTest, AnEnumerationTakesItsMembersOnly) {
  EXPECT_EQ(S_OK, refusalOf([] { requireMember(toyEnumeration, Value(20)); }));
  EXPECT_EQ(E_INVALIDARG, refusalOf([] { requireMember(toyEnumeration, Value(15)); }));
  EXPECT_EQ(S_OK, refusalOf([] { requireMember(VT_I4, Value(15)); }));
}

TEST_F(EditorTest, ALineHoldsCharactersOnly) {
  const auto newer = Sample().version("AC1032").open();
  EXPECT_EQ(S_OK, refusalOf([&] { requireLine(*newer, L"\u00E4 \u2264 \U0001F600"); }));
  for (const wchar_t character :
       {L'\n', L'\0', L'\t', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000)})
    EXPECT_EQ(E_INVALIDARG, refusalOf([&] { requireLine(*newer, std::wstring(1, character)); }));
}

TEST_F(EditorTest, ACharacterThatAnOlderDrawingLosesIsRefusedByName) {
  const auto older = Sample().version("AC1015").open();
  EXPECT_EQ(S_OK, refusalOf([&] { requireLine(*older, L"\u00E4 \u2264"); }));
  try {
    requireLine(*older, L"smile \U0001F600");
    FAIL();
  } catch (const Refusal& refusal) {
    EXPECT_EQ(E_INVALIDARG, refusal.result());
    EXPECT_EQ(L"The drawing's texts are written in CP1252, which has no place for the character \U0001F600.",
              refusal.text());
  }
}

TEST_F(EditorTest, OnlyAnOwnRowThatChangesTheShapeDisturbsAFollower) {
  drawing = Sample()
                .entity("TOY", {{5, "A"}, {102, "{ACAD_REACTORS"}, {330, "B"}, {102, "}"}, {40, "1.0"}})
                .entity("HATCH", {{5, "B"}, {71, "1"}})
                .open();
  const PropertyRow shape = toyRow(storedReal(40, "*"));
  const PropertyRow keeping = toyRow(storedReal(40, "*").keepingShape());
  const Subject subject = subjectOf(*drawing);
  EXPECT_EQ(E_FAIL, refusalOf([&] { requireChangeable(subject, shape); }));
  EXPECT_EQ(S_OK, refusalOf([&] { requireChangeable(subject, keeping); }));
  EXPECT_EQ(S_OK, refusalOf([&] { requireChangeable(subject, toyGeneralRows[0]); }));
}

}  // namespace
}  // namespace velt::automation
