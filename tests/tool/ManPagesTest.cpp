#include "tool/ManPages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Files.h"
#include "tests/support/Golden.h"
#include "tool/Failure.h"
#include "tool/Version.h"

namespace velt::tool {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ManPages : public testing::Test {
 protected:
  CLI::App app{"Draws things", "draw"};
  CLI::App* line = app.add_subcommand("line", "Draws a line");
  std::string text;
  std::vector<std::string> files;
  bool isDashed = false;

  ManPages() {
    line->add_option("FILE", files, "Where to")->required();
    line->add_option("-c,--color", text, ".5 and 'red'")->type_name("NAME");
    line->add_flag("--dashed", isDashed, "With gaps");
    line->footer("First.\n  draw line --dashed a\nThen.\n\nLast.");
    app.add_subcommand("inner", "For the build")->group("");
  }
};

TEST_F(ManPages, APageTellsUsageArgumentsAndOptions) {
  const std::string page = manPage(*line);
  EXPECT_THAT(page, HasSubstr(".SH NAME\ndraw\\-line \\- Draws a line\n"));
  EXPECT_THAT(page, HasSubstr(".SH SYNOPSIS\ndraw line [OPTIONS] FILE...\n"));
  EXPECT_THAT(page, HasSubstr("\\fB\\-c\\fR, \\fB\\-\\-color\\fR \\fINAME\\fR\n"));
  EXPECT_THAT(page, HasSubstr("\\fB\\-\\-dashed\\fR\nWith gaps\n"));
}

TEST_F(ManPages, ALineThatLooksLikeARequestIsText) {
  EXPECT_THAT(manPage(*line), HasSubstr("\n\\&.5 and \\(aqred\\(aq\n"));
}

TEST_F(ManPages, ExamplesStayAsTheyStand) {
  EXPECT_THAT(manPage(*line),
              HasSubstr("First.\n.RS 4\n.nf\ndraw line \\-\\-dashed a\n.fi\n.RE\nThen.\n.PP\nLast.\n"));
}

TEST_F(ManPages, ThePageOfTheProgramNamesTheCommandsThatItsHelpLists) {
  const std::string page = manPage(app);
  EXPECT_THAT(page, HasSubstr("\\fBdraw\\-line\\fR(1)"));
  EXPECT_THAT(page, Not(HasSubstr("inner")));
}

// Without what a release changes.
std::string withoutRelease(std::string page) {
  const std::size_t title = page.find(" 1 ");
  return page.erase(title, page.find('\n') - title);
}

TEST_F(ManPages, AreAsTheyWereAccepted) {
  CLI::App* const circle = app.add_subcommand("circle", "Draws a circle");
  circle->add_option("--radius", text, "How large");
  EXPECT_TRUE(tests::matchesGolden("golden/output/man-pages.txt", withoutRelease(manPage(app)) + "\n"
                                                                      + withoutRelease(manPage(*line)) + "\n"
                                                                      + withoutRelease(manPage(*circle))));
}

TEST_F(ManPages, EachListedCommandHasAFile) {
  const tests::TemporaryFolder folder;
  writeManPages(app, folder.path() / "man");
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "man" / "draw.1"));
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "man" / "draw-line.1"));
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "man" / "draw-inner.1"));
}

TEST_F(ManPages, WhatThePageWouldObeyIsWrittenAsItLooks) {
  CLI::App odd{"a\\b ^c ~d 'e' f-g", "odd"};
  EXPECT_THAT(manPage(odd), HasSubstr("\nodd \\- a\\eb \\(hac \\(tid \\(aqe\\(aq f\\-g\n"));
  odd.add_flag("--quoted", isDashed, "'One'\n.two a.b\n'three");
  EXPECT_THAT(manPage(odd), HasSubstr("\n\\&\\(aqOne\\(aq\n\\&.two a.b\n\\&\\(aqthree\n"));
}

TEST_F(ManPages, TheTitleIsInCapitalsWithTheReleaseOfTheProgram) {
  CLI::App zoom{"Enlarges things", "az_9{`"};
  const auto titleFor = [&](const std::string& title) {
    return ".TH " + title + " 1 " + releaseDate + " \"az_9{` " + version + "\" \"User Commands\"\n";
  };
  EXPECT_THAT(manPage(zoom), StartsWith(titleFor("AZ_9{`") + ".SH NAME\n"));
  EXPECT_THAT(manPage(*zoom.add_subcommand("size")), StartsWith(titleFor("AZ_9{`\\-SIZE") + ".SH NAME\n"))
      << "the page of a command tells of the program, too";
}

TEST_F(ManPages, AnExampleMayEndTheTextAndHaveSeveralLines) {
  CLI::App odd{"Odd", "odd"};
  odd.footer("One.\n\nTwo.\nThree.\n  first\n    second\n\n  third");
  EXPECT_THAT(manPage(odd), HasSubstr(".SH DESCRIPTION\nOne.\n.PP\nTwo.\nThree.\n"
                                      ".RS 4\n.nf\nfirst\nsecond\n.fi\n.RE\n"
                                      ".PP\n.RS 4\n.nf\nthird\n.fi\n.RE\n.SH SEE ALSO\n"));
  odd.footer("One.\n   \nTwo.");
  EXPECT_THAT(manPage(odd), HasSubstr("\nOne.\n.RS 4\n.nf\n   \n.fi\n.RE\nTwo.\n"));
}

TEST_F(ManPages, APageWithoutATextHasNoDescription) {
  EXPECT_THAT(manPage(app), Not(HasSubstr("DESCRIPTION")));
  EXPECT_THAT(manPage(app), Not(HasSubstr("ARGUMENTS")));
  EXPECT_THAT(manPage(*line), Not(HasSubstr("COMMANDS")));
}

TEST_F(ManPages, WhatIsInNoGroupIsNotTold) {
  line->add_option("LATER", text, "To come")->group("");
  line->add_flag("--secret", isDashed, "For the build")->group("");
  const std::string page = manPage(*line);
  EXPECT_THAT(page, Not(HasSubstr("LATER")));
  EXPECT_THAT(page, Not(HasSubstr("secret")));
  EXPECT_EQ(usageOf(*line), "draw line [OPTIONS] FILE...");
}

TEST_F(ManPages, AnOptionHasAllItsNamesAndAnArgumentMayBeOne) {
  CLI::App copy{"Copies", "copy"};
  std::string from, to;
  copy.add_option("FROM", from, "Of this");
  copy.add_option("TO", to, "To that");
  copy.add_option("-w,-W,--width,--breadth", text, "How wide")->type_name("NUMBER");
  EXPECT_EQ(usageOf(copy), "copy [OPTIONS] FROM TO");
  const std::string page = manPage(copy);
  EXPECT_THAT(page, HasSubstr(".SH ARGUMENTS\n.TP\n\\fIFROM\\fR\nOf this\n.TP\n\\fITO\\fR\nTo that\n"));
  EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-w\\fR, \\fB\\-W\\fR, \\fB\\-\\-width\\fR, \\fB\\-\\-breadth\\fR "
                              "\\fINUMBER\\fR\nHow wide\n"));
}

TEST_F(ManPages, AFileHoldsThePage) {
  const tests::TemporaryFolder folder;
  writeManPages(app, folder.path() / "share" / "man");
  EXPECT_EQ(tests::contentOf(folder.path() / "share" / "man" / "draw.1"), manPage(app));
  EXPECT_EQ(tests::contentOf(folder.path() / "share" / "man" / "draw-line.1"), manPage(*line));
}

TEST_F(ManPages, AFullDiskIsNoticed) {
  const tests::TemporaryFolder folder;
  const std::filesystem::path page = folder.path() / "draw-line.1";
  std::filesystem::create_symlink("/dev/full", page);
  EXPECT_THAT([&] { writeManPages(app, folder.path()); },
              testing::ThrowsMessage<Failure>(page.string() + ": could not be written"));
}

}  // namespace
}  // namespace velt::tool
