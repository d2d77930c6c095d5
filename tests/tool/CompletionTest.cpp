#include "tool/Completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class CompletionOfALine : public testing::Test {
 protected:
  const TemporaryFolder folder;
  const std::string drawing = folder.write(
      "a.dxf", drawingOf({{"0"}, {"Walls"}, {"Doors, new"}}, line("2F", "0") + circle("30", "Walls")));
  Subject subject;
  std::vector<std::string> plugins, values, columns;
  CLI::App app{"Draws things", "draw"};

  CompletionOfALine() {
    CLI::App* const show = app.add_subcommand("show", "Shows");
    show->add_option("DRAWING", subject.drawings)->required();
    show->add_option("--layer", subject.selection.layers)->allow_extra_args(false)->trigger_on_parse();
    show->add_option("--where", subject.selection.where);
    show->add_option("--columns", columns)->allow_extra_args(false);
    show->add_option("--plugin", plugins)->allow_extra_args(false);
    show->add_flag("--all", subject.selection.all, "Everything");
    CLI::App* const set = app.add_subcommand("set", "Writes");
    set->add_option("DRAWING", subject.drawings)->required()->expected(1);
    set->add_option("NAME=VALUE", values)->required();
    set->add_option("--layer", subject.selection.layers)->allow_extra_args(false);
    app.add_subcommand("inner", "For the build")->group("");
  }

  Completion of(const std::vector<std::string>& words) {
    return complete(app, words, [this](std::vector<std::string> complete) {
      subject = {};
      std::reverse(complete.begin(), complete.end());
      try {
        app.parse(std::move(complete));
      } catch (const CLI::ParseError&) {
        // The line is not finished.
      }
      return subject;
    });
  }
  std::vector<std::string> wordsOf(const std::vector<std::string>& words) {
    std::vector<std::string> found;
    for (Candidate& candidate : of(words).candidates)
      found.push_back(std::move(candidate.word));
    return found;
  }
};

TEST_F(CompletionOfALine, CommandsStandFirst) {
  EXPECT_THAT(wordsOf({""}), ElementsAre("show", "set"));
  EXPECT_THAT(wordsOf({"se"}), ElementsAre("set"));
}

TEST_F(CompletionOfALine, AnUnknownCommandHasNothing) {
  EXPECT_THAT(wordsOf({"nothing", ""}), IsEmpty());
}

TEST_F(CompletionOfALine, OptionsAreThoseOfTheCommand) {
  EXPECT_THAT(wordsOf({"show", "--a"}), ElementsAre("--all"));
  EXPECT_THAT(wordsOf({"set", drawing, "--a"}), IsEmpty());
}

TEST_F(CompletionOfALine, ADrawingIsAFile) {
  EXPECT_EQ(of({"show", ""}).files, ".dxf");
  EXPECT_EQ(of({"show", "--plugin", ""}).files, ".so");
}

TEST_F(CompletionOfALine, LayersAreThoseOfTheDrawing) {
  EXPECT_THAT(wordsOf({"show", drawing, "--layer", "W"}), ElementsAre("Walls"));
  EXPECT_THAT(wordsOf({"show", drawing, "--layer=W"}), ElementsAre("--layer=Walls"));
  EXPECT_THAT(wordsOf({"show", "--layer", "W"}), IsEmpty());
}

TEST_F(CompletionOfALine, ALayerFollowsThoseBeforeTheCommaAndACommaOfItsNameIsMarked) {
  EXPECT_THAT(wordsOf({"show", drawing, "--layer", "0,D"}), ElementsAre("0,Doors\\, new"));
}

TEST_F(CompletionOfALine, WhatIsTypedInAnotherCaseIsFound) {
  EXPECT_THAT(wordsOf({"show", drawing, "--layer", "wa"}), ElementsAre("Walls"));
}

TEST_F(CompletionOfALine, ColumnsAreThePropertiesOfTheSelection) {
  EXPECT_THAT(wordsOf({"show", drawing, "--columns", "R"}), ElementsAre("Radius"));
  EXPECT_THAT(wordsOf({"show", drawing, "--layer", "0", "--columns", "Layer,R"}), IsEmpty());
  EXPECT_THAT(wordsOf({"show", drawing, "--columns", "@h"}), ElementsAre("@handle"));
}

TEST_F(CompletionOfALine, AConditionIsCompletedWordByWord) {
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Rad"}), ElementsAre("Radius"));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Radius "}), Contains("Radius >="));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Radius>5 "}), ElementsAre("Radius>5 and", "Radius>5 or"));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Radius>5 and La"}), ElementsAre("Radius>5 and Layer"));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Radius>5 and "}), Contains("Radius>5 and has"));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Radius>5 "}), Not(Contains("Radius>5 has")));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Layer=w"}), ElementsAre("Layer=Walls"));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "@layer in (Walls, 'D"}),
              ElementsAre("@layer in (Walls, 'Doors, new'"));
  EXPECT_THAT(wordsOf({"show", drawing, "--where=not has Ra"}), ElementsAre("--where=not has Radius"));
}

TEST_F(CompletionOfALine, AssignmentsArePropertiesOfTheSelectionThatCanBeWritten) {
  const std::vector<std::string> ofCircles = wordsOf({"set", drawing, "--layer", "Walls", ""});
  EXPECT_THAT(ofCircles, Contains("Radius="));
  EXPECT_THAT(ofCircles, Not(Contains("Handle=")));
  EXPECT_THAT(wordsOf({"set", drawing, "R"}), IsEmpty());  // not of the line
}

TEST_F(CompletionOfALine, AValueIsAChoiceOfTheProperty) {
  EXPECT_THAT(wordsOf({"set", drawing, "Layer=W"}), ElementsAre("Layer=Walls"));
  EXPECT_THAT(wordsOf({"set", drawing, "Handle="}), IsEmpty());
}

TEST_F(CompletionOfALine, ADrawingThatCannotBeReadIsAFailureOfTheCallOnly) {
  EXPECT_THROW(of({"show", "no-such.dxf", "--layer", ""}), std::exception);
  EXPECT_THAT(wordsOf({"show", "no-such.dxf", "--a"}), ElementsAre("--all"));
}

TEST_F(CompletionOfALine, ALineWithoutAWordIsOneWithAnEmptyWord) {
  EXPECT_THAT(wordsOf({}), ElementsAre("show", "set"));
}

TEST_F(CompletionOfALine, AnOptionThatThereIsNotStandsForNothing) {
  EXPECT_THAT(wordsOf({"--odd", "show", "--a"}), ElementsAre("--all"));
  EXPECT_THAT(wordsOf({"-x", "show", "--a"}), ElementsAre("--all"));
  EXPECT_EQ(of({"set", "-x", "Layer="}).files, ".dxf") << "the drawing is still to come";
}

TEST_F(CompletionOfALine, AnOptionWithItsValueIsOneWord) {
  EXPECT_THAT(wordsOf({"set", drawing, "--layer=Walls", "R"}), ElementsAre("Radius="));
  EXPECT_THAT(wordsOf({"show", drawing, "--layer=0,D"}), ElementsAre("--layer=0,Doors\\, new"));
}

TEST_F(CompletionOfALine, OptionsMayStandBeforeTheDrawing) {
  EXPECT_THAT(wordsOf({"set", "--layer", "Walls", drawing, "Layer=W"}), ElementsAre("Layer=Walls"));
}

TEST_F(CompletionOfALine, AnAssignmentIsNoDrawing) {
  const Completion found = of({"set", "Layer="});
  EXPECT_EQ(found.files, ".dxf");
  EXPECT_THAT(found.candidates, IsEmpty());
}

TEST_F(CompletionOfALine, ADrawingMayBeCalledAsTheArgumentIs) {
  EXPECT_THAT(wordsOf({"show", "DRAWING", "--a"}), ElementsAre("--all"));
}

TEST_F(CompletionOfALine, StandardInputIsADrawingThatIsNotRead) {
  const Completion found = of({"set", "-", "Layer="});
  EXPECT_EQ(found.files, "");
  EXPECT_THAT(found.candidates, IsEmpty());
  EXPECT_THAT(wordsOf({"show", "-", "--layer", ""}), IsEmpty());
}

TEST_F(CompletionOfALine, EachArgumentHasItsOwnAndTheLastOneIsThatOfAllFurtherOnes) {
  CLI::App* const copy = app.add_subcommand("copy", "Copies");
  std::string name, target;
  copy->add_option("DRAWING", subject.drawings)->required()->expected(1);
  copy->add_option("NAME", name)->required();
  copy->add_option("TARGET", target)->required();
  EXPECT_THAT(wordsOf({"copy", drawing, "R"}), ElementsAre("Radius"));
  EXPECT_EQ(of({"copy", drawing, "R"}).files, ".dxf");
  EXPECT_THAT(wordsOf({"copy", drawing, "Radius", "R"}), IsEmpty());
  EXPECT_EQ(of({"copy", drawing, "Radius", "R"}).files, ".dxf");
  EXPECT_THAT(wordsOf({"copy", drawing, "Radius", "b.dxf", "R"}), IsEmpty());
}

TEST_F(CompletionOfALine, OptionsAfterAHiddenOneAreThere) {
  CLI::App* const show = app.get_subcommand("show");
  show->add_flag("--lurking")->group("");
  show->add_flag("--later");
  EXPECT_THAT(wordsOf({"show", "--l"}), ElementsAre("--layer", "--later"));
}

TEST_F(CompletionOfALine, WhatIsSpelledAsTypedStandsAlone) {
  app.get_subcommand("show")->add_option("--type", subject.selection.types)->allow_extra_args(false);
  EXPECT_THAT(wordsOf({"show", drawing, "--type", "Cir"}), ElementsAre("Circle"));
  EXPECT_THAT(wordsOf({"show", drawing, "--type", "cir"}), ElementsAre("CIRCLE", "Circle"));
}

TEST_F(CompletionOfALine, AWholeNameInAnotherCaseIsFoundToo) {
  EXPECT_THAT(wordsOf({"show", drawing, "--layer", "walls"}), ElementsAre("Walls"));
  EXPECT_THAT(wordsOf({"show", drawing, "--layer", "wallsx"}), IsEmpty());
}

TEST_F(CompletionOfALine, PropertiesOfEveryTypeAreThereAlsoAfterSeveralEntitiesOfOne) {
  const std::string mixed =
      folder.write("mixed.dxf", drawingOf({{"0"}}, line("2F", "0") + line("30", "0") + line("31", "0")
                                                       + circle("32", "0") + textEntity("40", "a")));
  EXPECT_THAT(wordsOf({"show", mixed, "--columns", "Radi"}), ElementsAre("Radius"));
  EXPECT_THAT(wordsOf({"show", mixed, "--columns", "Conte"}), ElementsAre("Contents"));
  EXPECT_THAT(wordsOf({"show", mixed, "--where", "Justify=Le"}), ElementsAre("Justify=Left"));
}

TEST_F(CompletionOfALine, TheQuotesOfAConditionStayAsTheyAreTyped) {
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "\"Center"}),
              ElementsAre("\"Center X\"", "\"Center Y\"", "\"Center Z\""));
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "'Center"}),
              ElementsAre("'Center X'", "'Center Y'", "'Center Z'"));
}

TEST_F(CompletionOfALine, AConditionGoesOnAfterABlankOnly) {
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Layer in (Walls)"}), IsEmpty());
  EXPECT_THAT(wordsOf({"show", drawing, "--where", "Layer in (Walls) "}),
              ElementsAre("Layer in (Walls) and", "Layer in (Walls) or"));
}

TEST(PrintedCompletion, IsReadLineByLine) {
  std::ostringstream out;
  print({{{"--all", "Every\nentity"}, {"a\tb"}}, ".dxf"}, out);
  EXPECT_EQ(out.str(), ".dxf\n--all\tEvery entity\na b\t\n");
}

}  // namespace
}  // namespace velt::tool
