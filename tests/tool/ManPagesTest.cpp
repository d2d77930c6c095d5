#include "tool/ManPages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Files.h"
#include "tests/support/Golden.h"

namespace velt::tool {
namespace {

using testing::HasSubstr;
using testing::Not;

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

}  // namespace
}  // namespace velt::tool
