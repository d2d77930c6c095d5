#include "tool/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>

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

// --- standard input --------------------------------------------------------------------------------------

// While it lives, standard input has this text.
class StandardInput {
 public:
  explicit StandardInput(const std::string& text) : text_(text), before_(std::cin.rdbuf(text_.rdbuf())) {}
  StandardInput(const StandardInput&) = delete;
  StandardInput& operator=(const StandardInput&) = delete;
  ~StandardInput() { std::cin.rdbuf(before_); }

 private:
  std::istringstream text_;
  std::streambuf* const before_;
};

TEST(CommandLine, OneDrawingMayComeFromStandardInput) {
  const TemporaryFolder folder;
  const std::string bytes = drawingOf({{"0"}}, circle("2F", "0"));
  const std::string file = folder.write("a.dxf", bytes);
  {
    const StandardInput input(bytes);
    EXPECT_EQ(veltprops({"list", "-"}).out, "Handle  Class   Type    Layer\n2F      Circle  CIRCLE  0\n");
  }
  const StandardInput input(drawingOf({{"0"}}, circle("2F", "0") + circle("30", "0")));
  EXPECT_EQ(veltprops({"set", file.c_str(), "-", "Radius=4", "--all", "--dry-run"}).out,
            file + ": 1 entity selected\n\nRadius=4\n       1 changed\n\nNothing was saved: --dry-run\n\n"
                   "-: 2 entities selected\n\nRadius=4\n       2 changed\n\nNothing was saved: --dry-run\n");
}

TEST(CommandLine, TwoDrawingsFromStandardInputAreRefusedBeforeAnythingIsRead) {
  for (const std::vector<const char*>& arguments : {std::vector<const char*>{"list", "-", "-"},
                                                    {"diff", "-", "-"},
                                                    {"set", "-", "-", "Radius=4", "--all", "--dry-run"}}) {
    const Outcome outcome = veltprops(arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "veltprops: standard input can be read only once\n");
  }
}

TEST(CommandLine, AWordThatNamesAFileIsAnotherDrawingWhateverItsEnding) {
  const TemporaryFolder folder;
  const std::string one = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  const std::string other = folder.write("copy", drawingOf({{"0"}}, circle("30", "0")));
  const Outcome outcome = veltprops({"set", one.c_str(), other.c_str(), "Radius=4", "--all", "--dry-run"});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            one + ": 1 entity selected\n\nRadius=4\n       1 changed\n\nNothing was saved: --dry-run\n\n"
                + other
                + ": 1 entity selected\n\nRadius=4\n       1 changed\n\nNothing was saved: --dry-run\n");
}

TEST(CommandLine, ADrawingPassesThroughWithinTheProcess) {
  const StandardInput input(drawingOf({{"0"}}, circle("2F", "0")));
  const Outcome outcome = veltprops({"set", "-", "Radius=7.25", "--all", "-o", "-"});
  EXPECT_EQ(outcome.exitCode, 0);
  std::string expected = drawingOf({{"0"}}, circle("2F", "0"));
  expected.replace(expected.find("40\n2.5\n"), 7, "40\n7.25\n");
  EXPECT_EQ(outcome.out, expected);
  EXPECT_EQ(outcome.err, "-: 1 entity selected\n\nRadius=7.25\n       1 changed\n\n-: saved\n");
}

TEST(CommandLine, TheNameOfTheProgramAloneIsNoCommand) {
  // As a system gives them to a program: with a null pointer at the end.
  const char* const arguments[] = {"veltprops", nullptr};
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(velt::tool::run(1, arguments, out, err), 2);
  EXPECT_EQ(err.str(), "veltprops: which command? \"veltprops --help\" lists them\n");
}

TEST(CommandLine, AnAnswerThatFailsWhenItIsFlushedIsAFailure) {
  struct Full : std::stringbuf {
    int sync() override { return -1; }
  };
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, line("2F", "0")));
  const auto failureOf = [](std::vector<const char*> arguments, int code) {
    arguments.insert(arguments.begin(), "veltprops");
    Full full;
    std::ostream out(&full);
    std::ostringstream err;
    EXPECT_EQ(velt::tool::run(static_cast<int>(arguments.size()), arguments.data(), out, err), code);
    return err.str();
  };
  EXPECT_EQ(failureOf({"list", file.c_str()}, 1), "veltprops: the output could not be written\n");
  EXPECT_EQ(failureOf({"diff", file.c_str(), file.c_str()}, 2),
            "veltprops: the output could not be written\n");
}

TEST(CommandLine, TheManualPagesAreWrittenIntoAFolder) {
  const TemporaryFolder folder;
  const std::string pages = folder.path("man");
  const Outcome outcome = veltprops({"man-pages", pages.c_str()});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(contentOf(pages + "/veltprops.1"), StartsWith(".TH VELTPROPS 1 "));
  EXPECT_THAT(contentOf(pages + "/veltprops-set.1"), StartsWith(".TH VELTPROPS\\-SET 1 "));
  EXPECT_EQ(veltprops({"man-pages"}).err,
            "veltprops: FOLDER is required; \"veltprops man-pages --help\" tells more\n");
}

TEST_F(Looking, APictureIsDrawnOnTheBackgroundThatIsAskedFor) {
  EXPECT_THAT(run({"draw", "--background", "dark"}).out, HasSubstr("height=\"100%\" fill=\"#212830\"/>"));
  EXPECT_THAT(run({"draw", "--background", "light"}).out, HasSubstr("height=\"100%\" fill=\"#ffffff\"/>"));
  const Outcome blue = run({"draw", "--background", "blue"});
  EXPECT_EQ(blue.exitCode, 2);
  EXPECT_THAT(blue.err, StartsWith("veltprops: --background: blue not in "));
}

TEST_F(Looking, APictureIsFrom16To20000PixelsWide) {
  for (const char* const width : {"16", "20000"})
    EXPECT_THAT(run({"draw", "--width", width}).out, HasSubstr(std::string(" width=\"") + width + "\""));
  for (const char* const width : {"15", "20001"})
    EXPECT_EQ(run({"draw", "--width", width}).exitCode, 2) << width;
}

// --- more about plug-ins ---------------------------------------------------------------------------------

TEST(CommandLinePlugins, APluginIsOneWordSoThatADrawingMayFollowIt) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0")));
  const std::string good = plugin("Good");
  const Outcome outcome = veltprops({"list", "--plugin", good.c_str(), file.c_str()});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Handle  Class   Type    Layer\n2F      Circle  CIRCLE  0\n");
}

TEST(CommandLinePlugins, OneValueKeptOutsideIsToldBesideOneThatWasThereAlready) {
  const TemporaryFolder folder;
  const std::string bytes = drawingOf({{"0"}}, circle("2F", "0"));
  const std::string file = folder.write("a.dxf", bytes);
  const std::string material = (velt::tests::pluginFolder() / "material.so").string();
  std::vector<const char*> arguments{"set",     file.c_str(), "--all",    "Material=Oak",
                                     "Layer=0", "--in-place", "--plugin", material.c_str()};
  const Outcome text = veltprops(arguments);
  EXPECT_EQ(text.exitCode, 0) << text.err;
  EXPECT_EQ(text.out, file
                          + ": 1 entity selected\n\n"
                            "Material=Oak\n       1 changed\n"
                            "    The plug-in keeps the value outside of the drawing.\n\n"
                            "Layer=0\n       1 unchanged: already had the value\n\n"
                            "Nothing changed in the drawing, so nothing was saved\n");
  EXPECT_EQ(contentOf(file), bytes);
  arguments.push_back("--json");
  const auto json = nlohmann::json::parse(veltprops(arguments).out);
  EXPECT_EQ(json["assignments"][0]["keptOutside"], true);
  EXPECT_FALSE(json["assignments"][1].contains("keptOutside"));
  EXPECT_EQ(json["saved"], nullptr);
  EXPECT_EQ(json["outcome"], "done");
}

TEST(CommandLinePlugins, ARowThatNoEntityShowsIsNotSaidToBeThereForSome) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, circle("2F", "0") + line("30", "0")));
  const std::string throws = plugin("Throws");
  const Outcome outcome =
      veltprops({"set", file.c_str(), "--all", "Never seen=1", "--dry-run", "--plugin", throws.c_str()});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err,
              HasSubstr("the selected entities have no property Never seen in common; "
                        "\"veltprops show\" lists those that they have, and \"veltprops explain\" "
                        "says why one is missing\n"));
}

// --- on a terminal ---------------------------------------------------------------------------------------

// What a command shows on a terminal of so many lines and columns; in a process of its own, whose standard output the
// terminal is.
Outcome onTerminal(std::vector<const char*> arguments, winsize size, const std::string& pager = "cat") {
  arguments.insert(arguments.begin(), "veltprops");
  int ours = -1;
  int its = -1;
  EXPECT_EQ(openpty(&ours, &its, nullptr, nullptr, &size), 0);
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    dup2(its, STDOUT_FILENO);
    setenv("PAGER", pager.c_str(), 1);
    setenv("TERM", "dumb", 1);
    std::ostringstream err;
    const int code = velt::tool::run(static_cast<int>(arguments.size()), arguments.data(), std::cout, err);
    std::cout.flush();
    _exit(code);
  }
  int status = -1;
  waitpid(child, &status, 0);
  // What is shown arrives in order, so all of it is there once this is.
  constexpr char end = '\004';
  EXPECT_EQ(write(its, &end, 1), 1);
  std::string shown;
  for (char c = 0; read(ours, &c, 1) == 1 && c != end;) {
    if (c != '\r') shown += c;
  }
  close(its);
  close(ours);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, shown, ""};
}

class OnATerminal : public Looking {
 protected:
  static constexpr winsize narrow{.ws_row = 200, .ws_col = 12, .ws_xpixel = 0, .ws_ypixel = 0};
  static constexpr winsize low{.ws_row = 3, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};

  const TemporaryFolder folder;
  const std::string file = folder.write(
      "a.dxf", drawingOf({{"0"}, {"Walls"}}, line("2F", "Walls") + circle("30", "0") + circle("31", "0")));
  const std::string other =
      folder.write("b.dxf", drawingOf({{"0"}, {"Walls"}}, line("2F", "0") + circle("30", "Walls")));
  const std::string paged = folder.path("paged");
  const std::string listed =
      "Handle  Class   Type    Layer\n2F      Line    LINE    Walls\n30      Circle  CIRCLE  0\n"
      "31      Circle  CIRCLE  0\n";
};

TEST_F(OnATerminal, LinesFitItUnlessTheyAreWantedWide) {
  for (std::vector<const char*> arguments :
       {std::vector<const char*>{"list", file.c_str()},
        {"show", file.c_str(), "--all"},
        {"table", file.c_str(), "--all", "--columns", "Layer,Color,Linetype"},
        {"info", file.c_str()},
        {"diff", file.c_str(), other.c_str()},
        {"explain", file.c_str(), "Layer", "--all"}}) {
    SCOPED_TRACE(arguments.front());
    EXPECT_THAT(onTerminal(arguments, narrow).out, HasSubstr("\u2026\n"));
    arguments.push_back("--wide");
    const Outcome wide = onTerminal(arguments, narrow);
    EXPECT_EQ(wide.exitCode, arguments.front() == std::string_view("diff") ? 1 : 0);
    EXPECT_THAT(wide.out, Not(HasSubstr("\u2026")));
  }
}

TEST_F(OnATerminal, AnAnswerThatIsLongerGoesThroughThePager) {
  // Not ">>": a second pager would replace what the first one got.
  const Outcome outcome = onTerminal({"list", file.c_str()}, low, "cat > '" + paged + "'");
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(contentOf(paged), listed);
}

TEST_F(OnATerminal, AnAnswerThatIsAsLongAsItStaysThere) {
  const Outcome outcome =
      onTerminal({"list", file.c_str(), "--type", "Circle"}, low, "cat >> '" + paged + "'");
  EXPECT_EQ(outcome.out,
            "Handle  Class   Type    Layer\n30      Circle  CIRCLE  0\n31      Circle  CIRCLE  0\n");
  EXPECT_FALSE(std::filesystem::exists(paged));
}

TEST_F(OnATerminal, NoPagerIsStartedWhenNoneIsWanted) {
  EXPECT_EQ(onTerminal({"list", file.c_str(), "--no-pager"}, low, "cat >> '" + paged + "'").out, listed);
  EXPECT_FALSE(std::filesystem::exists(paged));
}

TEST_F(OnATerminal, AReportOfWhatWasWrittenStaysThere) {
  EXPECT_EQ(onTerminal({"set", file.c_str(), "--type", "Circle", "Radius=4", "--dry-run"}, low,
                       "cat >> '" + paged + "'")
                .out,
            file + ": 2 entities selected\n\nRadius=4\n       2 changed\n\nNothing was saved: --dry-run\n");
  EXPECT_FALSE(std::filesystem::exists(paged));
}

TEST_F(OnATerminal, WhatGoesElsewhereIsNeitherShortenedNorPaged) {
  std::string entities;
  std::string expected = "Handle  Class  Type  Layer\n";
  for (int handle = 100; handle < 200; ++handle) {
    entities += line(std::to_string(handle), "0");
    expected += std::to_string(handle) + "     Line   LINE  0\n";
  }
  const std::string many = folder.write("many.dxf", drawingOf({{"0"}}, entities));
  const char* const set = std::getenv("PAGER");
  const std::string before = set != nullptr ? set : "";
  setenv("PAGER", ("cat >> '" + paged + "'").c_str(), 1);
  const Outcome outcome = veltprops({"list", many.c_str()});
  set != nullptr ? setenv("PAGER", before.c_str(), 1) : unsetenv("PAGER");
  EXPECT_EQ(outcome.out, expected);
  EXPECT_FALSE(std::filesystem::exists(paged));
}

}  // namespace
}  // namespace velt::tool
