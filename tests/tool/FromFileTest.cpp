#include "tool/FromFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "samples/Gallery.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::HasSubstr;

class SetFromFile : public testing::Test {
 protected:
  std::string run(const std::string& json, SetRequest request = {}) {
    request.drawing = file;
    request.from = folder.write("values.json", json);
    request.output = saved;
    request.force = true;
    std::ostringstream out;
    std::ostringstream err;
    code = set(request, out, err);
    return out.str();
  }
  std::string failureOf(const std::string& json, SetRequest request = {}) {
    try {
      run(json, std::move(request));
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
    return "no failure";
  }
  // What the saved drawing should be.
  std::string withReplaced(const std::string& before, const std::string& after) const {
    std::string expected = bytes;
    return expected.replace(expected.find(before), before.size(), after);
  }

  const TemporaryFolder folder;
  const std::string bytes = drawingOf({{"0"}, {"Walls"}, {"Locked", 3, 4}},
                                      line("2F", "Walls") + circle("33", "0") + circle("34", "Locked"));
  const std::string file = folder.write("house.dxf", bytes);
  const std::string saved = folder.path("saved.dxf");
  ExitCode code = succeeded;
};

TEST_F(SetFromFile, WritesWhatDiffersAndNothingElse) {
  const std::string report = run(R"({"handle":"33","values":{"Layer":"0","Radius":7.25,"Diameter":5.0}})");
  EXPECT_EQ(code, succeeded);
  EXPECT_EQ(contentOf(saved), withReplaced("40\n2.5\n", "40\n7.25\n"))
      << "the diameter follows, and is not put back";
  EXPECT_THAT(report, HasSubstr("house.dxf: 1 entity in "));
  EXPECT_THAT(report, HasSubstr("       1 value changed\n       2 values unchanged: already there\n"));
}

TEST_F(SetFromFile, TheLayerIsWrittenLast) {
  run(R"({"handle":"33","values":{"Layer":"Locked","Radius":7.25}})");
  EXPECT_EQ(code, succeeded) << "nothing else could be changed on it";
  std::ostringstream out;
  table({.drawing = saved, .selection = {.handles = {"33"}}, .columns = {"Radius", "Layer"}}, out);
  EXPECT_THAT(out.str(), HasSubstr("7.250   Locked"));
}

TEST_F(SetFromFile, OnlySelectedEntitiesAreWritten) {
  const std::string values =
      "{\"handle\":\"33\",\"values\":{\"Radius\":7.25}}\n{\"handle\":\"2F\",\"values\":{\"Start X\":9}}";
  run(values, {.selection = {.types = {"Circle"}}});
  EXPECT_EQ(contentOf(saved), withReplaced("40\n2.5\n", "40\n7.25\n"));
}

TEST_F(SetFromFile, AShownSelectionIsWrittenToTheSelectedOnes) {
  const std::string values = R"({"rows":[{"name":"Radius","displayName":"Radius","value":7.25}]})";
  EXPECT_THAT(failureOf(values), HasSubstr("which entities?"));
  run(values, {.selection = {.types = {"Circle"}}});
  EXPECT_EQ(code, succeeded);
  EXPECT_EQ(contentOf(saved), withReplaced("40\n2.5\n", "40\n7.25\n")) << "the other is on a locked layer";
}

TEST_F(SetFromFile, ARefusalNamesTheEntityAndTheValue) {
  EXPECT_THAT(run(R"({"handle":"33","values":{"Radius":-1,"Linetype scale":2}})"),
              HasSubstr("       1 value refused\n    33 Radius=-1: The value must be greater than 0.\n"));
  EXPECT_EQ(code, failed);
  run(R"({"handle":"33","values":{"Radius":-1,"Linetype scale":2}})", {.keepGoing = true});
  EXPECT_EQ(code, partlyDone);
}

TEST_F(SetFromFile, WhatCannotBeEditedIsARefusalWhereItDiffers) {
  EXPECT_THAT(run(R"({"handle":"2F","values":{"Length":8.5}})"), HasSubstr("nothing was saved"));
  EXPECT_EQ(code, nothingToDo) << "it is as long as that";
  EXPECT_THAT(run(R"({"handle":"2F","values":{"Length":9}})"),
              HasSubstr("2F Length=9: it cannot be edited: it follows from the start and the end"));
  EXPECT_EQ(code, failed);
}

TEST_F(SetFromFile, WhatIsNotThereIsNamedAndNothingIsWritten) {
  const std::string good = R"({"handle":"33","values":{"Radius":7}})"
                           "\n";
  EXPECT_THAT(failureOf(good + R"({"handle":"99","values":{}})"),
              HasSubstr("values.json: the drawing has no entity 99"));
  EXPECT_THAT(failureOf(good + R"({"handle":"2F","values":{"Radius":7}})"),
              HasSubstr("2F has no property Radius"));
  EXPECT_THAT(failureOf(good + R"({"handle":"2F","values":{"Start X":[1,2]}})"),
              HasSubstr("it gives 2 values for Start X of 2F, and the drawing has 1"));
}

TEST_F(SetFromFile, AValueInAnotherUnitIsNotTakenForOneInTheDrawings) {
  const std::string good = R"({"handle":"2F","values":{"Start X":9}})"
                           "\n";
  EXPECT_THAT(failureOf(good + R"({"handle":"33","values":{"Radius":7},"units":{"Radius":"inches"}})"),
              HasSubstr("values.json: Radius of 33 is in inches there, and in drawing units in the drawing"));
  EXPECT_FALSE(std::filesystem::exists(saved));
  run(R"({"handle":"33","values":{"Radius":7.25},"units":{"Radius":"drawing units"}})");
  EXPECT_EQ(contentOf(saved), withReplaced("40\n2.5\n", "40\n7.25\n"));
  EXPECT_THAT(failureOf(R"({"handle":"33","values":{"Layer":"0"},"units":{"Layer":"inches"}})"),
              HasSubstr("Layer of 33 is in inches there, and has no unit in the drawing"));
}

TEST_F(SetFromFile, AssignmentsAndAFileExcludeEachOther) {
  EXPECT_THAT(failureOf("", {.assignments = {"Radius=2"}}), HasSubstr("exclude each other"));
  std::ostringstream out;
  EXPECT_THROW(set({.drawing = file, .selection = {.all = true}, .dryRun = true}, out, out), UsageFailure);
}

std::string polylineOf3(const std::string& handle) {
  return pairs({{0, "LWPOLYLINE"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbPolyline"},
                {90, "3"},
                {70, "0"},
                {10, "1"},
                {20, "0"},
                {10, "9"},
                {20, "0"},
                {10, "9"},
                {20, "5"}});
}

// As SetFromFile, of drawings of their own.
class SetFromFileIn : public testing::Test {
 protected:
  // What set tells; the drawing is saved as saved.dxf.
  std::string writtenTo(const std::string& drawing, const std::string& json, bool keepGoing = false) {
    return told({.drawing = folder.write("own.dxf", drawing),
                 .from = folder.write("values.json", json),
                 .output = folder.path("saved.dxf"),
                 .force = true,
                 .keepGoing = keepGoing});
  }
  std::string valuesOf(const std::vector<std::string>& columns) const {
    std::ostringstream out;
    table({.drawing = folder.path("saved.dxf"),
           .selection = {.all = true},
           .columns = columns,
           .format = TableFormat::csv},
          out);
    return out.str();
  }
  ExitCode code = succeeded;

 private:
  std::string told(const SetRequest& request) {
    std::ostringstream out;
    std::ostringstream err;
    try {
      code = set(request, out, err);
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
    return out.str();
  }
  const TemporaryFolder folder;
};

TEST_F(SetFromFileIn, ValuesThatAreNullInAListAreSkipped) {
  EXPECT_THAT(writtenTo(drawingOf({{"0"}}, polylineOf3("2F")),
                        R"({"handle":"2F","values":{"Vertex X":[null,7,null],"Vertex Y":[1,null,6]}})"),
              HasSubstr("       3 values changed\n"));
  EXPECT_EQ(valuesOf({"Vertex X", "Vertex Y"}),
            "Vertex X,Vertex Y\n1.000; 7.000; 9.000,1.000; 0.000; 6.000\n");
}

TEST_F(SetFromFileIn, TheUnitOfEachValueOfAListIsChecked) {
  const std::string drawing = drawingOf({{"0"}}, polylineOf3("2F"));
  for (const std::string units : {R"(["drawing units","drawing units","inches"])", R"([null,null,"inches"])",
                                  R"([null,"inches"])", R"(["inches"])"}) {
    EXPECT_THAT(writtenTo(drawing, R"({"handle":"2F","values":{"Vertex X":[1,7,9]},"units":{"Vertex X":)"
                                       + units + "}}"),
                testing::EndsWith(
                    "values.json: Vertex X of 2F is in inches there, and in drawing units in the drawing"))
        << units;
  }
}

TEST_F(SetFromFileIn, WhatIsNotThereIsFoundBeforeAnyValueIsRefused) {
  const std::string drawing = drawingOf({{"0"}}, circle("33", "0") + line("2F", "0"));
  EXPECT_THAT(writtenTo(drawing, R"({"handle":"33","values":{"Radius":-1}})"
                                 "\n"
                                 R"({"handle":"2F","values":{"Radius":7}})"),
              testing::EndsWith("values.json: 2F has no property Radius"));
}

TEST_F(SetFromFileIn, AfterARefusalNoOtherEntityIsWrittenUnlessToKeepGoing) {
  const std::string drawing = drawingOf({{"0"}}, circle("33", "0") + circle("34", "0"));
  const std::string values = R"({"handle":"33","values":{"Radius":-1}})"
                             "\n"
                             R"({"handle":"34","values":{"Radius":7}})";
  EXPECT_EQ(writtenTo(drawing, values).find("changed"), std::string::npos);
  EXPECT_EQ(code, failed);
  EXPECT_THAT(writtenTo(drawing, values, true),
              HasSubstr("       1 value changed\n       1 value refused\n"));
  EXPECT_EQ(code, partlyDone);
  EXPECT_EQ(valuesOf({"Radius"}), "Radius\n2.500\n7.000\n");
}

TEST_F(SetFromFileIn, OfEntitiesWithOneHandleEachHasItsOwnValuesAndTheLastTheOthers) {
  const std::string drawing =
      drawingOf({{"0"}}, circle("33", "0") + circle("33", "0") + circle("34", "0") + circle("33", "0"));
  const auto ofRadius = [](const std::string& handle, int radius) {
    return R"({"handle":")" + handle + R"(","values":{"Radius":)" + std::to_string(radius) + "}}\n";
  };
  EXPECT_THAT(writtenTo(drawing, ofRadius("33", 3) + ofRadius("33", 4) + ofRadius("33", 5) + ofRadius("33", 6)
                                     + ofRadius("34", 8) + ofRadius("34", 9)),
              HasSubstr("6 entities in "));
  EXPECT_EQ(valuesOf({"Radius"}), "Radius\n3.000\n4.000\n9.000\n6.000\n");
}

TEST_F(SetFromFileIn, AValueThatTheFormatHasNoPlaceForIsRefusedInTheWordsOfShow) {
  EXPECT_THAT(
      writtenTo(oldDrawing(), R"({"handle":"2F","values":{"Lineweight":25}})"),
      HasSubstr("       1 value refused\n"
                "    2F Lineweight=25: DXF R12 cannot store this property; DXF 2000 and later can\n"));
}

TEST_F(SetFromFileIn, WhatWasWrittenBeforeMayTakeAPropertyAway) {
  EXPECT_THAT(writtenTo(samples::galleryDrawing(),
                        R"({"handle":"6C","values":{"Pattern name":"SOLID","Scale":3.5}})"),
              HasSubstr("    6C Scale=3.5: it has no such property any more\n"));
}

}  // namespace
}  // namespace velt::tool
