#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "tests/support/Golden.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;

class DrawCommand : public testing::Test {
 protected:
  TemporaryFolder folder_;
  std::string drawing_ =
      folder_.write("a.dxf", drawingOf({{"Walls"}, {"Doors"}}, line("A1", "Walls") + circle("A2", "Doors")));
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(DrawCommand, WritesThePictureToTheOutput) {
  draw({.drawing = drawing_, .width = 300}, out_, err_);
  EXPECT_EQ(out_.str().rfind("<svg ", 0), 0U);
  EXPECT_NE(out_.str().find("width=\"300\""), std::string::npos);
  EXPECT_NE(out_.str().find("data-entity=\"A1\""), std::string::npos);
  EXPECT_NE(out_.str().find("data-entity=\"A2\""), std::string::npos);
  EXPECT_EQ(out_.str().find("e8590c"), std::string::npos);
  EXPECT_EQ(err_.str(), "");
}

TEST_F(DrawCommand, WritesAFileAndKeepsAnExistingOneUnlessForced) {
  const std::string output = folder_.path("a.svg");
  draw({.drawing = drawing_, .output = output}, out_, err_);
  EXPECT_EQ(out_.str(), output + ": written\n");
  EXPECT_THROW(draw({.drawing = drawing_, .output = output}, out_, err_), Failure);
  draw({.drawing = drawing_, .output = output, .force = true, .isDark = true}, out_, err_);
  EXPECT_NE(contentOf(output).find("#212830"), std::string::npos);
}

TEST_F(DrawCommand, TheDrawingIsNeverReplacedByItsPicture) {
  const std::string before = contentOf(drawing_);
  EXPECT_THROW(draw({.drawing = drawing_, .output = drawing_, .force = true}, out_, err_), Failure);
  std::filesystem::create_symlink(drawing_, folder_.path("same.svg"));
  EXPECT_THROW(draw({.drawing = drawing_, .output = folder_.path("same.svg"), .force = true}, out_, err_),
               Failure);
  EXPECT_EQ(before, contentOf(drawing_));
}

TEST_F(DrawCommand, WhatIsSelectedStandsOut) {
  draw({.drawing = drawing_, .selection = {.layers = {"Doors"}}}, out_, err_);
  const std::string svg = out_.str();
  EXPECT_LT(svg.find("data-entity=\"A1\""), svg.find("data-entity=\"A2\""));
  EXPECT_GT(svg.find("#e8590c"), svg.find("data-entity=\"A2\""));
}

TEST_F(DrawCommand, ALayoutIsFoundByItsNameOrTheNamesAreTold) {
  draw({.drawing = drawing_, .layout = "MODEL"}, out_, err_);
  EXPECT_NE(out_.str().find("data-entity"), std::string::npos);
  try {
    draw({.drawing = drawing_, .layout = "Sheet"}, out_, err_);
    FAIL() << "drew a layout that is missing";
  } catch (const Failure& failure) {
    EXPECT_STREQ(failure.what(), "Sheet: no such layout; there are: Model, Paper");
  }
}

TEST_F(DrawCommand, NothingIsWrittenForADrawingThatIsMissing) {
  const std::string output = folder_.path("a.svg");
  EXPECT_ANY_THROW(draw({.drawing = folder_.path("none.dxf"), .output = output}, out_, err_));
  EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(DrawCommand, ADrawingOfNothingIsAnEmptyPicture) {
  draw({.drawing = folder_.write("b.dxf", drawingOf({{"0"}}, ""))}, out_, err_);
  EXPECT_EQ(out_.str().find("<path"), std::string::npos);
  EXPECT_NE(out_.str().find("</svg>"), std::string::npos);
}

TEST_F(DrawCommand, TheFloorPlanLooksAsInTheReadme) {
  const std::string plan = folder_.path("plan.dxf");
  sample({.file = plan}, out_);
  out_.str("");
  draw({.drawing = plan, .width = 900}, out_, err_);
  const GoldenPlaces places = goldenPlaces();
  EXPECT_TRUE(matchesGolden("docs/plan.svg", out_.str(), {places.accepted.parent_path(), places.produced}));
}

}  // namespace
}  // namespace velt::tool
