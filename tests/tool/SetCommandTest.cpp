#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <sys/file.h>

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "samples/builder/DrawingBuilder.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Json = nlohmann::json;

class SetCommand : public testing::Test {
 protected:
  std::string run(SetRequest request) {
    request.drawing = file;
    if (request.output.empty() && !request.inPlace && !request.dryRun) request.output = saved;
    std::ostringstream out;
    std::ostringstream err;
    code = set(request, out, err);
    told = err.str();
    return out.str();
  }
  Json runJson(SetRequest request) {
    request.json = true;
    return Json::parse(run(std::move(request)));
  }
  std::string failureOf(SetRequest request) {
    try {
      run(std::move(request));
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
    return "no failure";
  }
  static Json rowOf(const std::string& drawing, const std::string& handle, const std::string& name) {
    std::ostringstream out;
    show({.drawing = drawing, .selection = {.handles = {handle}}, .json = true}, out);
    const Json json = Json::parse(out.str());
    for (const auto& row : json["rows"]) {
      if (row["displayName"] == name) return row["value"];
    }
    return "no such row";
  }
  static bool exists(const std::string& path) { return std::filesystem::exists(path); }

  const TemporaryFolder folder;
  const std::string bytes = drawingOf({{"0"}, {"Walls", 1}, {"Locked", 3, 4}, {"Frozen", 5, 1}},
                                      line("2F", "Walls") + line("30", "Walls", 20.0) + line("31", "Locked")
                                          + line("32", "Frozen") + circle("33", "0"));
  const std::string file = folder.write("house.dxf", bytes);
  const std::string saved = folder.path("saved.dxf");
  ExitCode code = succeeded;
  std::string told;
};

// Called when a file that is about to be replaced is locked.
std::function<void()> beforeLocking;

extern "C" int flock(int descriptor, int operation) noexcept {
  static const auto real = reinterpret_cast<int (*)(int, int)>(::dlsym(RTLD_NEXT, "flock"));
  if (const auto call = std::exchange(beforeLocking, nullptr)) call();
  return real(descriptor, operation);
}

TEST_F(SetCommand, StandardOutputGetsTheDrawingWhetherItChangedOrNot) {
  for (const char* const value : {"Frozen", "Walls"}) {
    std::ostringstream drawing;
    std::ostringstream report;
    std::ostringstream err;
    SetRequest request{.drawing = file, .assignments = {std::string("Layer=") + value}, .output = "-"};
    request.selection.handles = {"2F"};
    request.standardOutput = &drawing;
    set(request, report, err);
    EXPECT_THAT(drawing.str(), testing::StartsWith(contentOf(file).substr(0, 20)));
    EXPECT_THAT(drawing.str(), testing::EndsWith("EOF\n"));
    EXPECT_THAT(report.str(), HasSubstr("\n-: saved\n"));
  }
}

TEST_F(SetCommand, WritesTheValueToTheSelectionAndSavesItElsewhere) {
  const std::string report = run({.selection = {.types = {"Line"}}, .assignments = {"layer=0"}});
  EXPECT_EQ(code, succeeded);
  EXPECT_THAT(report, HasSubstr("house.dxf: 4 entities selected\n\nlayer=0\n       3 changed\n"));
  EXPECT_THAT(report, HasSubstr("1 left as they are: on a locked layer\n"));
  EXPECT_THAT(report, HasSubstr("saved.dxf: saved\n"));
  EXPECT_EQ(rowOf(saved, "2F", "Layer"), "0");
  EXPECT_EQ(rowOf(saved, "31", "Layer"), "Locked");
  EXPECT_EQ(rowOf(saved, "32", "Layer"), "0") << "a frozen layer's entities can be changed";
  EXPECT_EQ(contentOf(file), bytes);
}

TEST_F(SetCommand, OnlyTheWrittenPairsDiffer) {
  run({.selection = {.handles = {"33"}}, .assignments = {"Radius=7.25"}});
  std::string expected = bytes;
  const std::string before = "40\n2.5\n";
  expected.replace(expected.find(before), before.size(), "40\n7.25\n");
  EXPECT_EQ(contentOf(saved), expected);
}

TEST_F(SetCommand, OneElementOfAPointIsWritten) {
  run({.selection = {.handles = {"2F", "30"}}, .assignments = {"Start X=3"}});
  EXPECT_EQ(rowOf(saved, "30", "Start X"), 3.0);
  EXPECT_EQ(rowOf(saved, "30", "Start Y"), 2.0);
  EXPECT_EQ(rowOf(saved, "30", "End X"), 20.0);
}

TEST_F(SetCommand, AnEntityThatHasTheValueAlreadyIsUnchanged) {
  const Json json = runJson({.selection = {.handles = {"2F", "32"}}, .assignments = {"Layer=walls"}});
  EXPECT_THAT(json["assignments"][0]["unchanged"], ElementsAre("2F"));
  EXPECT_THAT(json["assignments"][0]["changed"], ElementsAre("32"));
}

TEST_F(SetCommand, AssignmentsAreAppliedInOrder) {
  run({.selection = {.handles = {"33"}}, .assignments = {"Radius=2", "Color=Red", "Radius=4"}});
  EXPECT_EQ(rowOf(saved, "33", "Radius"), 4.0);
  EXPECT_EQ(rowOf(saved, "33", "Color"), "Red");
}

TEST_F(SetCommand, InPlaceReplacesTheDrawing) {
  run({.selection = {.handles = {"33"}}, .assignments = {"Radius=2"}, .inPlace = true});
  EXPECT_EQ(rowOf(file, "33", "Radius"), 2.0);
  EXPECT_FALSE(exists(saved));
}

TEST_F(SetCommand, ADryRunTellsAndSavesNothing) {
  EXPECT_THAT(run({.selection = {.handles = {"33"}}, .assignments = {"Radius=2"}, .dryRun = true}),
              HasSubstr("1 changed\n\nNothing was saved: --dry-run\n"));
  EXPECT_EQ(contentOf(file), bytes);
}

TEST_F(SetCommand, ARefusalSavesNothingAndSaysWhy) {
  const Json json =
      runJson({.selection = {.handles = {"33"}}, .assignments = {"Color=Red", "Radius=-1", "Layer=Walls"}});
  EXPECT_EQ(code, failed);
  EXPECT_EQ(json["saved"], nullptr);
  EXPECT_EQ(json["assignments"].size(), 2U) << "the third is not tried";
  EXPECT_EQ(json["assignments"][1]["refused"][0]["handle"], "33");
  EXPECT_NE(json["assignments"][1]["refused"][0]["reason"], "");
  EXPECT_FALSE(exists(saved));
}

TEST_F(SetCommand, KeepGoingSavesWhatWasNotRefused) {
  const std::string report =
      run({.selection = {.handles = {"33"}}, .assignments = {"Radius=-1", "Layer=Walls"}, .keepGoing = true});
  EXPECT_EQ(code, partlyDone);
  EXPECT_THAT(report, HasSubstr("1 refused\n    33: "));
  EXPECT_EQ(rowOf(saved, "33", "Layer"), "Walls");
  EXPECT_EQ(rowOf(saved, "33", "Radius"), 2.5);
}

TEST_F(SetCommand, ADrawingInWhichNothingChangesIsNotWritten) {
  const SetRequest request{.selection = {.handles = {"33", "31"}}, .assignments = {"Linetype scale=1"}};
  EXPECT_THAT(run(request), HasSubstr("\n\nNo entity changed, so nothing was saved\n"));
  EXPECT_EQ(code, nothingToDo);
  EXPECT_FALSE(exists(saved));
  const Json json = runJson(request);
  EXPECT_EQ(json["outcome"], "nothingToDo");
  EXPECT_EQ(json["saved"], nullptr);
}

TEST_F(SetCommand, TheOutcomeTellsWhatADryRunWouldDo) {
  const auto outcomeOf = [&](std::vector<std::string> assignments, bool keepGoing) {
    return runJson({.selection = {.handles = {"33"}},
                    .assignments = std::move(assignments),
                    .dryRun = true,
                    .keepGoing = keepGoing})["outcome"];
  };
  EXPECT_EQ(outcomeOf({"Radius=2"}, false), "done");
  EXPECT_EQ(outcomeOf({"Radius=2.5"}, false), "nothingToDo");
  EXPECT_EQ(outcomeOf({"Radius=2", "Radius=-1"}, false), "refused");
  EXPECT_EQ(outcomeOf({"Radius=2", "Radius=-1"}, true), "partlyDone");
  EXPECT_EQ(outcomeOf({"Radius=-1"}, true), "refused") << "nothing was done at all";
}

TEST_F(SetCommand, AWrongValueNamesTheChoices) {
  EXPECT_THAT(failureOf({.selection = {.handles = {"33"}}, .assignments = {"Layer=Nowhere"}}),
              HasSubstr("not one of its choices: 0, Walls, Locked, Frozen"));
}

TEST_F(SetCommand, AWrongNameNamesWhatCanBeEdited) {
  EXPECT_THAT(failureOf({.selection = {.handles = {"33"}}, .assignments = {"Radios=1"}}),
              HasSubstr("Radius"));
}

TEST_F(SetCommand, ANameThatOnlySomeHaveSaysWhichLackItRatherThanNamesLikeIt) {
  EXPECT_EQ(failureOf({.selection = {.handles = {"2F", "33"}}, .assignments = {"Radius=2"}}),
            "the selected entities have no property Radius in common: "
            "1 of the 2 entities has it. Those without it: 2F. Of the first of these: "
            "There is no such property: neither of the class, nor an attribute, extended data or a row of a "
            "plug-in. Classes that have it: Circle, Arc. "
            "To do: select only those that have it: --where \"has Radius\".");
  EXPECT_FALSE(exists(saved));
}

TEST_F(SetCommand, AReadOnlyPropertyCannotBeSet) {
  EXPECT_THAT(failureOf({.selection = {.handles = {"33"}}, .assignments = {"Handle=1"}}),
              HasSubstr("Handle cannot be edited: it never changes"));
}

TEST_F(SetCommand, ASelectionOfLockedLayersAloneLeavesNothingToDo) {
  const Json json = runJson({.selection = {.layers = {"Locked"}}, .assignments = {"Layer=0"}});
  EXPECT_EQ(code, nothingToDo);
  EXPECT_THAT(json["assignments"][0]["locked"], ElementsAre("31"));
  EXPECT_THAT(json["assignments"][0]["changed"], IsEmpty());
}

TEST_F(SetCommand, WithoutASelectionOrATargetTheUsageIsWrong) {
  std::ostringstream out;
  EXPECT_THROW(set({.drawing = file, .assignments = {"Layer=0"}, .dryRun = true}, out, out), UsageFailure);
  EXPECT_THROW(set({.drawing = file, .selection = {.all = true}, .assignments = {"Layer=0"}}, out, out),
               UsageFailure);
}

TEST_F(SetCommand, AnExistingOutputIsKeptUnlessForced) {
  folder.write("saved.dxf", "mine");
  EXPECT_THAT(failureOf({.selection = {.handles = {"33"}}, .assignments = {"Radius=2"}}),
              HasSubstr("exists already (--force replaces it)"));
  EXPECT_EQ(contentOf(saved), "mine");
  run({.selection = {.handles = {"33"}}, .assignments = {"Radius=2"}, .force = true});
  EXPECT_EQ(rowOf(saved, "33", "Radius"), 2.0);
}

TEST_F(SetCommand, TheDrawingItselfMayNotBeTheOutput) {
  EXPECT_THAT(failureOf({.selection = {.handles = {"33"}}, .assignments = {"Radius=2"}, .output = file}),
              HasSubstr("is the drawing itself (--in-place saves to it)"));
  EXPECT_EQ(contentOf(file), bytes);
}

TEST_F(SetCommand, AFileThatCannotBeWrittenIsNamed) {
  EXPECT_THAT(failureOf({.selection = {.handles = {"33"}},
                         .assignments = {"Radius=2"},
                         .output = folder.path("no/such/plan.dxf")}),
              HasSubstr("plan.dxf: cannot be written: No such file or directory"));
}

TEST_F(SetCommand, OfFiveEntitiesTheThirdRefuses) {
  // A circle without the part of its data that the radius belongs in.
  const std::string lame = pairs({{0, "CIRCLE"}, {5, "42"}, {100, "AcDbEntity"}, {8, "0"}});
  folder.write("house.dxf", drawingOf({{"0"}}, circle("40", "0") + circle("41", "0") + lame
                                                   + circle("43", "0") + circle("44", "0")));
  const SetRequest request{.selection = {.all = true}, .assignments = {"Radius=7"}};

  const Json stopped = runJson(request)["assignments"][0];
  EXPECT_EQ(code, failed);
  EXPECT_THAT(stopped["changed"], ElementsAre("40", "41"));
  ASSERT_EQ(stopped["refused"].size(), 1U);
  EXPECT_EQ(stopped["refused"][0]["handle"], "42");
  EXPECT_THAT(stopped["notReached"], ElementsAre("43", "44"));
  EXPECT_FALSE(exists(saved));

  const std::string report = run(request);
  EXPECT_THAT(report, HasSubstr("       2 changed\n       1 refused\n    42: "));
  EXPECT_THAT(report, HasSubstr("\n       2 not reached after the refusal\n"));
  EXPECT_THAT(report, HasSubstr("A value was refused, so nothing was saved (--keep-going saves the rest)"));

  SetRequest onwards = request;
  onwards.keepGoing = true;
  EXPECT_THAT(runJson(onwards)["assignments"][0]["changed"], ElementsAre("40", "41", "43", "44"));
  EXPECT_EQ(rowOf(saved, "44", "Radius"), 7.0);
}

// --- dynamic rows -----------------------------------------------------------------------------------------

// Three references to one dynamic block, the last on a locked layer, each with the attributes NUMBER and RATING.
std::string drawingOfDoors() {
  velt::samples::DrawingBuilder drawing;
  drawing.layer("Locked", {.locked = true});
  drawing.block("*U1").isMadeOf(drawing.block("DOOR"));
  for (const char* const number : {"1", "2", "3"}) {
    const bool isLast = number[0] == '3';
    drawing.model().insert(
        "*U1", {.attributes = {{.tag = "NUMBER", .value = number}, {.tag = "RATING", .value = "T30"}}},
        {.layer = isLast ? "Locked" : "0", .extendedData = {{"ACME", {{1071, "5"}}}}});
  }
  return drawing.bytes();
}

class SetDynamicRows : public SetCommand {
 protected:
  SetDynamicRows() { std::ofstream(file, std::ios::binary) << doors; }

  // Of all references in file order.
  std::vector<std::string> values(const std::string& drawing, const std::string& name) const {
    std::ostringstream out;
    list({.drawing = drawing, .selection = {.types = {"INSERT"}}, .json = true}, out);
    const Json entities = Json::parse(out.str())["entities"];
    std::vector<std::string> found;
    for (const auto& entity : entities)
      found.push_back(rowOf(drawing, entity["handle"], name).dump());
    return found;
  }

  const std::string doors = drawingOfDoors();
};

TEST_F(SetDynamicRows, OnlyTheAttributeThatIsMeantIsWritten) {
  const Json report = runJson({.selection = {.types = {"INSERT"}}, .assignments = {"RATING=T90"}});
  EXPECT_EQ(code, succeeded);
  EXPECT_EQ(report["assignments"][0]["changed"].size(), 2U);
  EXPECT_EQ(report["assignments"][0]["locked"].size(), 1U);
  EXPECT_THAT(values(saved, "RATING"), ElementsAre("\"T90\"", "\"T90\"", "\"T30\""));
  EXPECT_THAT(values(saved, "NUMBER"), ElementsAre("\"1\"", "\"2\"", "\"3\""));
}

TEST_F(SetDynamicRows, TheFirstAttributeIsWrittenToAllToo) {
  const Json report = runJson({.selection = {.types = {"INSERT"}}, .assignments = {"NUMBER=9"}});
  EXPECT_EQ(report["assignments"][0]["changed"].size(), 2U);
  EXPECT_THAT(values(saved, "NUMBER"), ElementsAre("\"9\"", "\"9\"", "\"3\""));
  EXPECT_THAT(values(saved, "RATING"), ElementsAre("\"T30\"", "\"T30\"", "\"T30\""));
}

TEST_F(SetDynamicRows, ExtendedDataAreWrittenAsWhatTheyAre) {
  run({.selection = {.types = {"INSERT"}}, .assignments = {"ACME 1=70000"}});
  EXPECT_THAT(values(saved, "ACME 1"), ElementsAre("70000", "70000", "5"));
}

TEST_F(SetDynamicRows, OnlyTheWrittenPairsDiffer) {
  run({.selection = {.types = {"INSERT"}}, .assignments = {"RATING=T90"}, .inPlace = true});
  std::string expected = doors;
  for (std::size_t from = 0, door = 0; door < 2; ++door) {
    from = expected.find("T30", from);
    expected.replace(from, 3, "T90");
  }
  EXPECT_EQ(contentOf(file), expected);
}

class SetUnderAHatch : public SetCommand {
 protected:
  const std::string hatched =
      folder.write("hatched.dxf",
                   drawingOf({{"0"}}, pairs({{0, "CIRCLE"},      {5, "2F"},           {102, "{ACAD_REACTORS"},
                                             {330, "30"},        {102, "}"},          {100, "AcDbEntity"},
                                             {8, "0"},           {100, "AcDbCircle"}, {10, "0.0"},
                                             {20, "0.0"},        {40, "2.5"},         {0, "HATCH"},
                                             {5, "30"},          {100, "AcDbEntity"}, {8, "0"},
                                             {100, "AcDbHatch"}, {2, "SOLID"},        {70, "1"},
                                             {71, "1"},          {91, "0"},           {76, "1"}})));
  SetRequest radius(bool breaks) const {
    return {.drawing = hatched,
            .selection = {.handles = {"2F"}},
            .assignments = {"Radius=4"},
            .output = saved,
            .breakAssociations = breaks};
  }
};

TEST_F(SetUnderAHatch, WhatAHatchFollowsIsRefusedWithTheWayToChangeIt) {
  std::ostringstream out, err;
  EXPECT_EQ(set(radius(false), out, err), failed);
  EXPECT_THAT(out.str(), HasSubstr("--break-associations"));
  EXPECT_FALSE(exists(saved));
}

TEST_F(SetUnderAHatch, ACoordinateThatWouldBreakTheBoundaryIsRefusedWithTheWayToChangeIt) {
  const std::string square = folder.write("square.dxf", drawingOf({{"0"}}, pairs({{0, "LWPOLYLINE"},
                                                                                  {5, "2F"},
                                                                                  {102, "{ACAD_REACTORS"},
                                                                                  {330, "30"},
                                                                                  {102, "}"},
                                                                                  {100, "AcDbEntity"},
                                                                                  {8, "0"},
                                                                                  {100, "AcDbPolyline"},
                                                                                  {90, "4"},
                                                                                  {70, "1"},
                                                                                  {10, "0.0"},
                                                                                  {20, "0.0"},
                                                                                  {10, "4.0"},
                                                                                  {20, "0.0"},
                                                                                  {10, "4.0"},
                                                                                  {20, "4.0"},
                                                                                  {10, "0.0"},
                                                                                  {20, "4.0"},
                                                                                  {0, "HATCH"},
                                                                                  {5, "30"},
                                                                                  {100, "AcDbEntity"},
                                                                                  {8, "0"},
                                                                                  {100, "AcDbHatch"},
                                                                                  {10, "0.0"},
                                                                                  {20, "0.0"},
                                                                                  {30, "0.0"},
                                                                                  {2, "SOLID"},
                                                                                  {70, "1"},
                                                                                  {71, "1"},
                                                                                  {91, "1"},
                                                                                  {92, "7"},
                                                                                  {72, "0"},
                                                                                  {73, "1"},
                                                                                  {93, "4"},
                                                                                  {10, "0.0"},
                                                                                  {20, "0.0"},
                                                                                  {10, "4.0"},
                                                                                  {20, "0.0"},
                                                                                  {10, "4.0"},
                                                                                  {20, "4.0"},
                                                                                  {10, "0.0"},
                                                                                  {20, "4.0"},
                                                                                  {97, "1"},
                                                                                  {330, "2F"},
                                                                                  {75, "0"},
                                                                                  {76, "1"},
                                                                                  {98, "0"}})));
  const SetRequest crossing{.drawing = square,
                            .selection = {.handles = {"2F"}},
                            .assignments = {"Vertex[2].X=-4"},
                            .output = saved};
  std::ostringstream out, err;
  EXPECT_EQ(set(crossing, out, err), failed);
  EXPECT_THAT(out.str(), HasSubstr("cross itself"));
  EXPECT_THAT(out.str(), HasSubstr("--break-associations"));
  EXPECT_FALSE(exists(saved));
}

TEST_F(SetUnderAHatch, WhatAHatchFollowsIsChangedWhenTheHatchMayLetGo) {
  std::ostringstream out, err;
  EXPECT_EQ(set(radius(true), out, err), succeeded);
  EXPECT_EQ(rowOf(saved, "2F", "Radius"), 4.0);
  EXPECT_EQ(rowOf(saved, "30", "Associative"), false);
}

TEST_F(SetCommand, DoesNotSaveOverSomebodyElsesChange) {
  const std::string changed = drawingOf({{"0"}}, circle("33", "0"));
  beforeLocking = [&] { folder.write("house.dxf", changed); };
  const SetRequest request{.selection = {.handles = {"33"}}, .assignments = {"Radius=7.25"}, .inPlace = true};
  EXPECT_EQ(failureOf(request),
            file + ": has been changed since it was read, so nothing was saved (run it again to change the file as "
                   "it is now, or save over the other change with --overwrite-changes)");
  EXPECT_EQ(contentOf(file), changed);
  EXPECT_EQ(failureOf(request), "no failure") << "again";
  EXPECT_EQ(rowOf(file, "33", "Radius"), 7.25);
}

TEST_F(SetCommand, SavesOverSomebodyElsesChangeWhenAskedTo) {
  beforeLocking = [&] { folder.write("house.dxf", drawingOf({{"0"}}, circle("34", "0"))); };
  run({.selection = {.handles = {"33"}},
       .assignments = {"Radius=7.25"},
       .inPlace = true,
       .overwriteChanges = true});
  EXPECT_EQ(beforeLocking, nullptr) << "somebody did change it";
  EXPECT_EQ(rowOf(file, "33", "Radius"), 7.25);
}

TEST_F(SetCommand, DoesNotSaveOverAFileThatSomebodyElseHasMadeMeanwhile) {
  beforeLocking = [&] { folder.write("saved.dxf", "somebody else's"); };
  EXPECT_EQ(failureOf({.selection = {.handles = {"33"}}, .assignments = {"Radius=7.25"}}),
            saved + ": cannot be written: File exists");
  EXPECT_EQ(contentOf(saved), "somebody else's");
}

TEST_F(SetCommand, TellsOfOtherNamesOfTheFileThatItSplitsOff) {
  std::filesystem::create_hard_link(file, folder.path("second.dxf"));
  run({.selection = {.handles = {"33"}}, .assignments = {"Radius=7.25"}, .inPlace = true});
  EXPECT_EQ(told, "veltprops: " + file + ": the file has 1 more name, which keeps the old content\n");
  EXPECT_EQ(contentOf(folder.path("second.dxf")), bytes);
}

// --- the report ------------------------------------------------------------------------------------------

std::string circles(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i)
    text += circle(std::to_string(40 + i), "0");
  return text;
}

TEST_F(SetCommand, TheFirstEightOfThoseWithOneReasonAreNamed) {
  const SetRequest request{
      .selection = {.all = true}, .assignments = {"Radius=0"}, .dryRun = true, .keepGoing = true};
  folder.write("house.dxf", drawingOf({{"0"}}, circles(8)));
  EXPECT_EQ(run(request), file
                              + ": 8 entities selected\n\nRadius=0\n       8 refused\n"
                                "    40, 41, 42, 43, 44, 45, 46, 47: The value must be greater than 0.\n\n"
                                "No entity changed, so nothing was saved\n");
  folder.write("house.dxf", drawingOf({{"0"}}, circles(9)));
  EXPECT_EQ(run(request), file
                              + ": 9 entities selected\n\nRadius=0\n       9 refused\n"
                                "    40, 41, 42, 43, 44, 45, 46, 47 and 1 more: The value must be greater than 0.\n\n"
                                "No entity changed, so nothing was saved\n");
}

TEST_F(SetCommand, AValueThatIsOnlyShownAlreadyIsToldAndWrittenWhenAskedFor) {
  std::string almost = circle("41", "0");
  almost.replace(almost.find("2.5\n"), 4, "2.5001\n");
  folder.write("house.dxf", drawingOf({{"0"}}, circle("40", "0") + almost));
  const SetRequest request{.selection = {.all = true}, .assignments = {"Radius=2.500"}, .dryRun = true};
  EXPECT_EQ(run(request), file
                              + ": 2 entities selected\n\nRadius=2.500\n"
                                "       2 unchanged: already had the value\n"
                                "    1 of them only as it is shown, with fewer digits (--precise writes it)\n\n"
                                "No entity changed, so nothing was saved\n");
  EXPECT_EQ(runJson(request)["assignments"][0]["rounded"], 1);
  SetRequest exactly = request;
  exactly.precise = true;
  EXPECT_EQ(run(exactly), file
                              + ": 2 entities selected\n\nRadius=2.500\n       1 changed\n"
                                "       1 unchanged: already had the value\n\nNothing was saved: --dry-run\n");
  EXPECT_FALSE(runJson(exactly)["assignments"][0].contains("rounded"));
}

TEST_F(SetCommand, SeveralHandlesOfADamagedDrawingAreToldInJsonToo) {
  folder.write("house.dxf", drawingOf({{"0"}}, circle("40", "0") + circle("40", "0") + circle("41", "0")));
  const Json json = runJson({.selection = {.all = true}, .assignments = {"Radius=4"}, .dryRun = true});
  EXPECT_EQ(json["selection"]["count"], 3);
  EXPECT_EQ(json["selection"]["sharedHandles"].size(), 1U) << json["selection"].dump();
}

TEST_F(SetCommand, APropertyOfTheFirstEntityAloneIsNotInCommonEither) {
  const std::string house = drawingOf({{"0"}}, circle("33", "0") + line("34", "0") + line("35", "0"));
  folder.write("house.dxf", house);
  EXPECT_EQ(failureOf({.selection = {.all = true}, .assignments = {"Radius=2"}}),
            "the selected entities have no property Radius in common: "
            "1 of the 3 entities has it. Those without it: 34, 35. Of the first of these: "
            "There is no such property: neither of the class, nor an attribute, extended data or a row of a "
            "plug-in. Classes that have it: Circle, Arc. "
            "To do: select only those that have it: --where \"has Radius\".");
}

TEST_F(SetCommand, APropertyOfALaterClassIsFoundBehindSeveralEntitiesOfAnother) {
  folder.write("house.dxf", drawingOf({{"0"}}, line("33", "0") + line("34", "0") + circle("35", "0")));
  EXPECT_THAT(failureOf({.selection = {.all = true}, .assignments = {"Radius=2"}}),
              testing::StartsWith("the selected entities have no property Radius in common: "
                                  "1 of the 3 entities has it. Those without it: 33, 34. "));
}

TEST_F(SetCommand, AFileWhoseNameIsThatOfStandardOutputIsNotInTheWay) {
  const std::string other = folder.write("-", "mine");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  std::ostringstream drawing, report, err;
  SetRequest request{.drawing = file,
                     .selection = {.handles = {"33"}},
                     .assignments = {"Radius=2"},
                     .output = "-",
                     .standardOutput = &drawing};
  ExitCode answered = failed;
  EXPECT_NO_THROW(answered = set(request, report, err));
  std::filesystem::current_path(before);
  EXPECT_EQ(answered, succeeded);
  EXPECT_THAT(drawing.str(), testing::EndsWith("EOF\n"));
  EXPECT_EQ(contentOf(other), "mine");
}

TEST_F(SetCommand, WrongUsageIsToldWithTheWayOut) {
  const auto usageOf = [&](const SetRequest& request) -> std::string {
    std::ostringstream out, err;
    try {
      set(request, out, err);
    } catch (const UsageFailure& failure) {
      return failure.what();
    }
    return "no failure";
  };
  const std::vector<std::string> radius{"Radius=2"};
  EXPECT_EQ(usageOf({.drawing = file, .selection = {.all = true}, .dryRun = true}),
            "write what? Say NAME=VALUE, or name a file with --from");
  EXPECT_EQ(usageOf({.drawing = file, .assignments = radius, .from = "values.json", .dryRun = true}),
            "NAME=VALUE and --from exclude each other");
  EXPECT_EQ(usageOf({.drawing = file, .selection = {.all = true}, .assignments = radius}),
            "save where? Name a file with -o, or say --in-place or --dry-run");
  EXPECT_EQ(usageOf({.drawing = "-", .selection = {.all = true}, .assignments = radius, .inPlace = true}),
            "standard input cannot be saved to: name a file with -o, or -o - for standard output");
}

}  // namespace
}  // namespace velt::tool
