#include "tool/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/support/Places.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct Outcome {
  int exitCode;
  std::string out;
  std::string err;
};

Outcome veltprops(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "veltprops");
  std::ostringstream out;
  std::ostringstream err;
  const int exitCode = velt::tool::run(static_cast<int>(arguments.size()), arguments.data(), out, err);
  return {exitCode, out.str(), err.str()};
}

TEST(CommandLine, HelpIsAnswered) {
  const Outcome help = veltprops({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, HasSubstr("show"));
  EXPECT_THAT(help.out, HasSubstr("Exit codes: 0 done, 1 failed, 2 wrong usage"));
  EXPECT_EQ(veltprops({"show", "--help"}).exitCode, 0);
  EXPECT_THAT(veltprops({"show", "--help"}).out, HasSubstr("--handle"));
}

TEST(CommandLine, ShowWithoutASelectionSaysHowToSelect) {
  const Outcome outcome = veltprops({"show", "a.dxf"});
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--all, --handle, --layer, --type"));
}

TEST(CommandLine, WhatFollowsASelectionIsAnAssignment) {
  const TemporaryFolder folder;
  const std::string file =
      folder.write("a.dxf", drawingOf({{"0"}, {"Walls"}}, line("2F", "0") + line("30", "Walls")));
  for (const std::vector<const char*>& selection : {std::vector<const char*>{"--handle", "2F"},
                                                    {"--layer", "0"},
                                                    {"--type", "Line"},
                                                    {"--layer", "0", "--layer", "Walls"}}) {
    std::vector<const char*> arguments{"set", file.c_str()};
    arguments.insert(arguments.end(), selection.begin(), selection.end());
    arguments.insert(arguments.end(), {"Color=Red", "Thickness=2", "--dry-run"});
    const Outcome outcome = veltprops(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Color=Red\n"));
  }
}

TEST(CommandLine, AMissingDrawingIsNamed) {
  const TemporaryFolder folder;
  const std::string file = folder.path("missing.dxf");
  const Outcome outcome = veltprops({"show", file.c_str(), "--all"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_THAT(outcome.err, StartsWith("veltprops: " + file + ": "));
  EXPECT_EQ(outcome.out, "");
}

TEST(CommandLine, ATruncatedDrawingIsNamedWithTheLine) {
  const TemporaryFolder folder;
  const std::string file = folder.write("cut.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\n");
  const Outcome outcome = veltprops({"list", file.c_str()});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_THAT(outcome.err, StartsWith("veltprops: " + file + ":5: "));
}

TEST(CommandLine, BinaryEmptyAndForeignFilesAreRefused) {
  const TemporaryFolder folder;
  const std::string binary =
      folder.write("binary.dxf", std::string("A drawing in bytes\r\n\x1A\0", 22) + "xyz");
  const std::string empty = folder.write("empty.dxf", "");
  const std::string foreign = folder.write("foreign.dxf", "%PDF-1.4\nnot a drawing\n");
  EXPECT_THAT(veltprops({"list", binary.c_str()}).err, HasSubstr("the file is binary"));
  for (const std::string& file : {binary, empty, foreign}) {
    const Outcome outcome = veltprops({"list", file.c_str()});
    EXPECT_EQ(outcome.exitCode, 1) << file;
    EXPECT_THAT(outcome.err, StartsWith("veltprops: " + file)) << file;
  }
}

TEST(CommandLine, ACommaThatBelongsToALayerIsEscaped) {
  const TemporaryFolder folder;
  const std::string file = folder.write(
      "a.dxf", drawingOf({{"0"}, {"A, B"}}, line("2F", "A, B") + line("30", "0") + line("31", "0")));
  EXPECT_THAT(veltprops({"list", file.c_str(), "--handle", "2F,31"}).out, HasSubstr("31"));
  EXPECT_THAT(veltprops({"list", file.c_str(), "--layer", "A\\, B"}).out, HasSubstr("2F"));
}

TEST(CommandLine, LookingWritesNothing) {
  const TemporaryFolder folder;
  const std::string bytes = drawingOf({{"0"}}, line("2F", "0") + circle("30", "0"));
  const std::string file = folder.write("a.dxf", bytes);
  EXPECT_EQ(veltprops({"show", file.c_str(), "--all", "--choices"}).exitCode, 0);
  EXPECT_EQ(contentOf(file), bytes);
}

// --- plug-ins -------------------------------------------------------------------------------------------

std::string plugin(const std::string& name) {
  return (velt::tests::testPluginFolder() / (name + ".so")).string();
}

// What a line with extended data shows under a plug-in.
Outcome shownWith(const std::vector<std::string>& plugins, const char* option = "--choices") {
  const TemporaryFolder folder;
  const std::string file =
      folder.write("a.dxf", drawingOf({{"0"}}, line("2F", "0") + pairs({{1001, "ACME"}, {1000, "oak"}})));
  std::vector<const char*> arguments{"show", file.c_str(), "--handle", "2F", option};
  for (const std::string& name : plugins) {
    arguments.push_back("--plugin");
    arguments.push_back(name.c_str());
  }
  return veltprops(arguments);
}

// The outcome when a plug-in misbehaves: done, everybody else's rows are there, and the plug-in is named.
void expectSurvived(const Outcome& outcome, const std::string& plugin) {
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_THAT(outcome.out, ContainsRegex("ACME 1 +oak"));
  EXPECT_THAT(outcome.out, ContainsRegex("Layer +0"));
  EXPECT_THAT(outcome.out, ContainsRegex("Good newer +fine"));
  EXPECT_THAT(outcome.err, HasSubstr("veltprops: plug-in " + plugin + ".so: "));
}

TEST(CommandLinePlugins, TheRowsOfAPluginAreShown) {
  const Outcome outcome = shownWith({plugin("Good")});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_THAT(outcome.out, ContainsRegex("\nTest\n  Good newer +fine"));
  EXPECT_THAT(outcome.out, ContainsRegex("Good older +fine"));
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(shownWith({}).out, Not(HasSubstr("Good newer"))) << "it is let go of at the end of the command";
}

TEST(CommandLinePlugins, PluginsThatCannotBeUsedAreAFailureUnlessToldToGoOn) {
  for (const char* const name : {"NoEntryPoint", "WrongVersion", "Refuses", "ThrowsOnEntry"}) {
    SCOPED_TRACE(name);
    const Outcome outcome = shownWith({plugin(name), plugin("Good")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err,
                HasSubstr(std::string(name) + ".so: not loaded (--keep-going does without it)\n"));
    expectSurvived(shownWith({plugin(name), plugin("Good")}, "--keep-going"), name);
  }
}

TEST(CommandLinePlugins, PluginsThatThrowAreNamedAndSurvived) {
  const Outcome outcome = shownWith({plugin("Throws"), plugin("Good")});
  expectSurvived(outcome, "Throws");
  EXPECT_THAT(outcome.out, ContainsRegex("Good among throwers +fine"));
  EXPECT_THAT(outcome.out, HasSubstr("Without a value"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("Never seen")));
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

TEST(CommandLinePlugins, PluginsThatLieAreNamedAndSurvived) {
  const Outcome outcome = shownWith({plugin("Lies"), plugin("Good")});
  expectSurvived(outcome, "Lies");
  EXPECT_THAT(outcome.out, ContainsRegex("Good among liars +fine"));
  EXPECT_THAT(outcome.err, HasSubstr("GetProperties failed"));
  EXPECT_THAT(outcome.err, HasSubstr("array of objects"));
  EXPECT_THAT(outcome.err, HasSubstr("null property"));
  EXPECT_THAT(outcome.err, HasSubstr("not a dynamic property"));
  EXPECT_THAT(outcome.err, HasSubstr("has declared 8"));
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 5) << outcome.err;
}

TEST(CommandLinePlugins, ARowOfAPluginCanBeSetForAllReferencesOfADynamicBlock) {
  const TemporaryFolder folder;
  const std::string file = folder.path("plan.dxf");
  EXPECT_EQ(veltprops({"sample", file.c_str()}).exitCode, 0);
  const std::string material = (velt::tests::pluginFolder() / "material.so").string();
  const Outcome outcome = veltprops(
      {"set", file.c_str(), "--layer", "Doors", "Material=Oak", "--dry-run", "--plugin", material.c_str()});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.out << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("6 changed"));
  EXPECT_EQ(outcome.err, "") << "nothing else is written to";
}

TEST(CommandLinePlugins, AValueThatAPluginKeepsToItselfIsNotToldAsSaved) {
  const TemporaryFolder folder;
  const std::string file = folder.path("plan.dxf");
  EXPECT_EQ(veltprops({"sample", file.c_str()}).exitCode, 0);
  const std::string bytes = contentOf(file);
  const std::string material = (velt::tests::pluginFolder() / "material.so").string();
  const Outcome outcome = veltprops(
      {"set", file.c_str(), "--layer", "Doors", "Material=Oak", "--in-place", "--plugin", material.c_str()});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("6 changed\n    The plug-in keeps the value outside of the drawing.\n\n"
                                     "Nothing changed in the drawing, so nothing was saved\n"));
  EXPECT_EQ(contentOf(file), bytes);
}

TEST(CommandLinePlugins, AValueOfAFileThatAPluginKeepsToItselfIsNotToldAsSavedEither) {
  const TemporaryFolder folder;
  const std::string file = folder.path("plan.dxf");
  EXPECT_EQ(veltprops({"sample", file.c_str()}).exitCode, 0);
  const nlohmann::json doors =
      nlohmann::json::parse(veltprops({"list", file.c_str(), "--layer", "Doors", "--json"}).out);
  const std::string values = folder.write(
      "values.json",
      nlohmann::json{{"handle", doors["entities"][0]["handle"]}, {"values", {{"Material", "Oak"}}}}.dump());
  const std::string material = (velt::tests::pluginFolder() / "material.so").string();
  const Outcome outcome =
      veltprops({"set", file.c_str(), "--from", values.c_str(), "--in-place", "--plugin", material.c_str()});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("Nothing changed in the drawing, so nothing was saved\n"));
}

TEST(CommandLinePlugins, AFileThatIsNotThereIsAFailure) {
  const Outcome outcome = shownWith({"/nowhere/missing.so"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_EQ(outcome.err, "veltprops: /nowhere/missing.so: no such plug-in\n");
}

TEST(CommandLinePlugins, AFileThatIsNotASharedObjectIsNamedAndSurvived) {
  const TemporaryFolder folder;
  expectSurvived(shownWith({folder.write("text.so", "hello"), plugin("Good")}, "--keep-going"), "text");
}

TEST(CommandLine, AnAnswerThatCannotBeWrittenIsAFailure) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, line("2F", "0")));
  const char* const arguments[] = {"veltprops", "list", file.c_str()};
  std::ostringstream broken;
  broken.setstate(std::ios::badbit);
  std::ostringstream err;
  EXPECT_EQ(velt::tool::run(3, arguments, broken, err), 1);
}

TEST(CommandLine, TheVersionIsAnswered) {
  const Outcome outcome = veltprops({"--version"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_THAT(outcome.out, ContainsRegex("^veltprops [0-9]+\\.[0-9]+"));
}

// A drawing with a line on Walls, a circle on Doors and one on 0.
class Looking : public testing::Test {
 protected:
  Outcome run(std::vector<const char*> arguments) const {
    arguments.insert(arguments.begin() + 1, file_.c_str());
    return veltprops(std::move(arguments));
  }

 private:
  TemporaryFolder folder_;
  std::string file_ =
      folder_.write("a.dxf", drawingOf({{"0"}, {"Walls"}, {"Doors"}},
                                       line("2F", "Walls") + circle("30", "Doors") + circle("31", "0")));
};

TEST_F(Looking, OneRuleForCommasHoldsForAllLists) {
  for (const std::vector<const char*>& selection : {std::vector<const char*>{"--handle", "2F,31"},
                                                    {"--handle", "2F", "--handle", "31"},
                                                    {"--layer", "Walls, 0"},
                                                    {"--where", "@handle in (2F, 31)"},
                                                    {"--not", "--layer", "D*"}}) {
    std::vector<const char*> arguments{"table"};
    arguments.insert(arguments.end(), selection.begin(), selection.end());
    arguments.insert(arguments.end(), {"--columns", "Handle,Layer", "--columns", "Radius", "--csv"});
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "Handle,Layer,Radius\n2F,Walls,\n31,0,2.500\n");
  }
}

TEST_F(Looking, OneFormatIsEnough) {
  EXPECT_EQ(run({"table", "--all", "--csv", "--json"}).exitCode, 2);
}

TEST_F(Looking, AConditionThatIsNoneIsWrongUsageAndOneWithoutSenseAFailure) {
  EXPECT_EQ(run({"show", "--where", "Radius>"}).exitCode, 2);
  const Outcome outcome = run({"show", "--where", "Raduis>5"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_EQ(outcome.err, "veltprops: --where: no entity has a property Raduis; did you mean Radius?\n");
}

TEST_F(Looking, EveryCommandThatSelectsTellsHow) {
  for (const char* const command : {"show", "list", "table", "set", "diff", "explain"})
    EXPECT_THAT(veltprops({command, "--help"}).out, HasSubstr("* and ? are wildcards")) << command;
}

TEST_F(Looking, ExplainAndInfoAnswer) {
  EXPECT_THAT(run({"explain", "Radius", "--all"}).out, HasSubstr("2 of the 3 entities have it."));
  EXPECT_THAT(run({"info"}).out, HasSubstr("3 entities"));
  EXPECT_THAT(run({"show", "--layer", "Walls", "--values"}).out, HasSubstr("Walls"));
}

TEST(CommandLine, DiffAnswersByItsExitCode) {
  const TemporaryFolder folder;
  const std::string one = folder.write("a.dxf", drawingOf({{"0"}}, line("2F", "0")));
  const std::string other = folder.write("b.dxf", drawingOf({{"0"}}, line("2F", "0", 12.0)));
  EXPECT_EQ(veltprops({"diff", one.c_str(), one.c_str()}).exitCode, 0);
  EXPECT_EQ(veltprops({"diff", one.c_str(), other.c_str()}).exitCode, 1);
  EXPECT_EQ(veltprops({"diff", one.c_str(), "none.dxf"}).exitCode, 2) << "1 would say that they differ";
}

TEST(CommandLine, ADrawingWithoutATableOfLayersCanBeEdited) {
  const TemporaryFolder folder;
  const std::string file = folder.write("old.dxf", pairs({{0, "SECTION"},
                                                          {2, "ENTITIES"},
                                                          {0, "LINE"},
                                                          {8, "Walls"},
                                                          {10, "0"},
                                                          {20, "0"},
                                                          {11, "1"},
                                                          {21, "1"},
                                                          {0, "LINE"},
                                                          {8, "Doors"},
                                                          {10, "0"},
                                                          {20, "0"},
                                                          {11, "1"},
                                                          {21, "1"},
                                                          {0, "ENDSEC"},
                                                          {0, "EOF"}}));
  const Outcome outcome = veltprops({"set", file.c_str(), "--layer", "Walls", "Layer=Doors", "--dry-run"});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("1 changed"));
}

TEST(CommandLine, NothingOutOfADrawingIsObeyedByATerminal) {
  const TemporaryFolder folder;
  const std::string escape = "\x1B]0;owned\x07";
  const std::string file = folder.write(
      "a.dxf",
      drawingOf({{"0"}, {escape + "Walls"}}, line("2F", escape + "Walls") + line("30", "\u009BDoors")));
  for (const std::vector<const char*>& arguments :
       {std::vector<const char*>{"list", file.c_str()},
        {"list", file.c_str(), "--json", "--values"},
        {"show", file.c_str(), "--all", "--choices"},
        {"show", file.c_str(), "--handle", "2F", "--json"},
        {"show", file.c_str(), "--layer", "none"},
        {"set", file.c_str(), "--all", "Layer=none", "--dry-run"}}) {
    const Outcome outcome = veltprops(arguments);
    for (const std::string& text : {outcome.out, outcome.err}) {
      EXPECT_EQ(text.find_first_of("\x1B\x07\r"), std::string::npos) << text;
      EXPECT_EQ(text.find("\u009B"), std::string::npos) << text;
    }
  }
}

TEST(CommandLine, AValueThatIsNotUtf8IsAFailureAndNothingIsSaved) {
  const TemporaryFolder folder;
  const std::string text = pairs({{0, "TEXT"},
                                  {5, "2F"},
                                  {100, "AcDbEntity"},
                                  {8, "0"},
                                  {100, "AcDbText"},
                                  {10, "0"},
                                  {20, "0"},
                                  {30, "0"},
                                  {40, "1"},
                                  {1, "old"},
                                  {100, "AcDbText"}});
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, text));
  const Outcome outcome = veltprops({"set", file.c_str(), "--all", "Contents=\xFFnew", "--dry-run"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_THAT(outcome.err, HasSubstr("Contents: the text is not UTF-8"));
}

// --- several drawings ------------------------------------------------------------------------------------

class SeveralDrawings : public testing::Test {
 protected:
  const TemporaryFolder folder;
  const std::string a = folder.write("a.dxf", drawingOf({{"0"}, {"Walls"}}, circle("2F", "Walls")));
  const std::string b = folder.write("b.dxf", drawingOf({{"0"}}, circle("30", "0")));
  const std::string missing = folder.path("missing.dxf");
};

TEST_F(SeveralDrawings, AreNamedInTexts) {
  for (const std::vector<const char*>& command : {std::vector<const char*>{"show", "--all"},
                                                  {"list"},
                                                  {"table", "--all", "--columns", "Radius"},
                                                  {"info"}}) {
    std::vector<const char*> arguments = command;
    arguments.insert(arguments.begin() + 1, {a.c_str(), b.c_str()});
    const Outcome outcome = veltprops(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith(a));
    EXPECT_THAT(outcome.out, HasSubstr("\n\n" + b));
  }
  const Outcome explained = veltprops({"explain", a.c_str(), b.c_str(), "Radius", "--all"});
  EXPECT_THAT(explained.out, HasSubstr("in " + a));
  EXPECT_THAT(explained.out, HasSubstr("in " + b));
}

TEST_F(SeveralDrawings, AreNamedInJson) {
  const Outcome outcome = veltprops({"show", a.c_str(), missing.c_str(), b.c_str(), "--all", "--json"});
  const auto json = nlohmann::json::parse(outcome.out);
  ASSERT_EQ(json.size(), 3u);
  EXPECT_EQ(json[0]["drawing"], a);
  EXPECT_EQ(json[1]["drawing"], missing);
  EXPECT_THAT(json[1]["error"], HasSubstr("No such file"));
  EXPECT_EQ(json[2]["drawing"], b);
}

TEST_F(SeveralDrawings, OneThatFailsDoesNotStopTheOthers) {
  const Outcome outcome = veltprops({"list", missing.c_str(), b.c_str()});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_THAT(outcome.err, HasSubstr(missing));
  EXPECT_THAT(outcome.out, HasSubstr("CIRCLE"));
}

TEST_F(SeveralDrawings, AreOneTableOfValues) {
  const Outcome csv = veltprops({"table", a.c_str(), b.c_str(), "--all", "--columns", "Radius", "--csv"});
  EXPECT_EQ(csv.out, "Drawing,Radius\n" + a + ",2.500\n" + b + ",2.500\n");
  const Outcome json = veltprops({"table", a.c_str(), b.c_str(), "--all", "--columns", "Radius", "--json"});
  EXPECT_THAT(json.out, StartsWith("{\"drawing\":\"" + a + "\",\"handle\":\"2F\""));
  EXPECT_EQ(veltprops({"table", a.c_str(), b.c_str(), "--all", "--csv"}).exitCode, 2);
}

TEST_F(SeveralDrawings, HaveHeadingsAlsoWhenTheFirstFails) {
  const Outcome csv =
      veltprops({"table", missing.c_str(), b.c_str(), "--all", "--columns", "Radius", "--csv"});
  EXPECT_EQ(csv.out, "Drawing,Radius\n" + b + ",2.500\n");
}

TEST_F(SeveralDrawings, AreEditedInPlace) {
  const Outcome outcome =
      veltprops({"set", a.c_str(), missing.c_str(), b.c_str(), "Radius=4", "--all", "--in-place"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_THAT(outcome.err, HasSubstr(missing));
  for (const std::string& file : {a, b})
    EXPECT_THAT(veltprops({"show", file.c_str(), "--all"}).out, ContainsRegex("Radius +4"));
}

TEST_F(SeveralDrawings, HaveNoOutputInCommon) {
  const Outcome outcome = veltprops({"set", a.c_str(), b.c_str(), "Radius=4", "--all", "-o", "c.dxf"});
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--in-place"));
}

TEST(CommandLine, TabsPartTheColumnsOfATable) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  EXPECT_EQ(veltprops({"table", file.c_str(), "--all", "--columns", "Layer,Radius", "--tsv"}).out,
            "Layer\tRadius\n0\t2.500\n");
}

// Standard input and output of the test itself are others' too, so the program runs on its own.
std::string printedBy(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string text;
  for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get()))
    text += static_cast<char>(c);
  return text;
}

// As one word of a shell's command: a checkout may stand in a folder with a blank in its name.
std::string inShell(const std::filesystem::path& path) {
  return "'" + path.string() + "'";
}

TEST(CommandLine, ADrawingPassesThroughStandardInputAndOutput) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  const std::string tool = inShell(buildFolder() / "bin" / "veltprops");
  EXPECT_EQ(printedBy("cat " + file + " | " + tool + " set - Radius=4 --all -o - 2>" + folder.path("report")
                      + " | " + tool + " table - --all --columns Radius --csv"),
            "Radius\n4.000\n");
  EXPECT_THAT(contentOf(folder.path("report")), HasSubstr("1 changed"));
}

TEST(CommandLine, AFullDiskIsAFailure) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  const std::string tool = inShell(buildFolder() / "bin" / "veltprops");
  EXPECT_EQ(printedBy(tool + " list " + file + " 2>&1 > /dev/full; echo $?"),
            "veltprops: the output could not be written\n1\n");
}

TEST(CommandLine, APluginIsFoundByItsName) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  setenv("VELT_PLUGIN_PATH", pluginFolder().c_str(), 1);
  const Outcome shown = veltprops({"show", file.c_str(), "--all", "--plugin", "material"});
  const Outcome table =
      veltprops({"table", file.c_str(), "--all", "--plugin", "material", "--columns", "Material", "--csv"});
  const Outcome list =
      veltprops({"list", file.c_str(), "--plugin", "material", "--where", "Material=Concrete"});
  unsetenv("VELT_PLUGIN_PATH");
  EXPECT_THAT(shown.out, ContainsRegex("Material +Concrete"));
  EXPECT_EQ(table.out, "Material\nConcrete\n");
  EXPECT_THAT(list.out, HasSubstr("2F"));
}

TEST(CommandLine, ACrashNamesThePluginThatWasBeingCalled) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  const std::string tool = inShell(buildFolder() / "bin" / "veltprops");
  const std::string plugin = inShell(testPluginFolder() / "Crashes.so");
  EXPECT_THAT(printedBy("ulimit -c 0; " + tool + " show " + file + " --all --plugin " + plugin + " 2>&1"),
              HasSubstr("veltprops: plug-in Crashes.so crashed in GetCurrentValueData\n"));
}

TEST(CommandLine, StandardInputIsReadOnceAndIsNoFileToSaveTo) {
  EXPECT_EQ(veltprops({"diff", "-", "-"}).exitCode, 2);
  EXPECT_EQ(veltprops({"list", "-", "-"}).exitCode, 2);
  EXPECT_EQ(veltprops({"set", "-", "Radius=4", "--all", "--in-place"}).exitCode, 2);
}

TEST(CommandLine, ExplainWithoutAPropertyIsWrongUsage) {
  EXPECT_THAT(veltprops({"explain", "a.dxf", "--all"}).err, HasSubstr("which property?"));
}

}  // namespace
}  // namespace velt::tool
