#include "tool/OpenDrawing.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "dxf/Error.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using velt::database::Drawing;
using velt::tool::numberStyleOf;

TEST(OpenDrawing, ADrawingIsOpened) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", drawingOf({{"0"}}, line("2F", "0")));
  EXPECT_EQ(velt::tool::openDrawing(file)->entities().size(), 1U);
}

TEST(OpenDrawing, WhatCannotBeOpenedIsNamed) {
  const TemporaryFolder folder;
  try {
    velt::tool::openDrawing(folder.path("missing.dxf"));
    FAIL() << "a missing file was opened";
  } catch (const velt::dxf::Error& error) {
    EXPECT_EQ(error.file(), folder.path("missing.dxf"));
  }
}

TEST(OpenDrawing, ADashStandsForStandardInputAndMessagesSaySo) {
  std::istringstream drawing(drawingOf({{"0"}}, line("2F", "0") + circle("30", "0")));
  std::istringstream nothing;
  std::streambuf* const before = std::cin.rdbuf(drawing.rdbuf());
  std::size_t entities = 0;
  EXPECT_NO_THROW(entities = velt::tool::openDrawing("-")->entities().size());
  std::cin.rdbuf(nothing.rdbuf());
  std::string message;
  try {
    velt::tool::openDrawing("-");
  } catch (const velt::dxf::Error& error) {
    message = error.what();
  }
  std::cin.rdbuf(before);
  EXPECT_EQ(entities, 2U);
  EXPECT_EQ(message, "standard input: the file is empty");
}

TEST(NumberStyle, IsPreciseOnlyWhenAskedFor) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, ""), "a.dxf");
  EXPECT_FALSE(numberStyleOf(*drawing).isPrecise);
  EXPECT_TRUE(numberStyleOf(*drawing, true).isPrecise);
}

TEST(NumberStyle, ThePrecisionComesFromTheHeader) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, ""), "a.dxf");
  EXPECT_EQ(numberStyleOf(*drawing).lengthPlaces, 3);
  EXPECT_EQ(numberStyleOf(*drawing).anglePlaces, 1);
  const auto silent =
      Drawing::parse(pairs({{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}, {0, "EOF"}}), "b.dxf");
  EXPECT_EQ(numberStyleOf(*silent).lengthPlaces, 4);
}

TEST(NumberStyle, TheDirectionThatAnglesBeginAtIsAnAngleOfTheHeader) {
  const std::string text = pairs({{0, "SECTION"},
                                  {2, "HEADER"},
                                  {9, "$ANGBASE"},
                                  {50, "90"},
                                  {9, "$ANGDIR"},
                                  {70, "1"},
                                  {0, "ENDSEC"},
                                  {0, "EOF"}});
  const auto drawing = Drawing::parse(text, "a.dxf");
  EXPECT_EQ(numberStyleOf(*drawing).angleBase, 90.0);
  EXPECT_TRUE(numberStyleOf(*drawing).isClockwise);
}

TEST(NumberStyle, APrecisionBeyondReasonIsCutBack) {
  const std::string text = pairs({{0, "SECTION"},
                                  {2, "HEADER"},
                                  {9, "$LUPREC"},
                                  {70, "9999"},
                                  {9, "$AUPREC"},
                                  {70, "-3"},
                                  {0, "ENDSEC"},
                                  {0, "EOF"}});
  const auto drawing = Drawing::parse(text, "a.dxf");
  EXPECT_EQ(numberStyleOf(*drawing).lengthPlaces, 8);
  EXPECT_EQ(numberStyleOf(*drawing).anglePlaces, 0);
}

}  // namespace
}  // namespace velt::tool
