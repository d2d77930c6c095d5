#include "view/Svg.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/view/Scene.h"

namespace velt::view {
namespace {

using namespace velt::tests;

std::string svgOf(const Scene& scene, SvgOptions options = {}) {
  options.window = {{0, 0}, {10, 5}};
  options.width = 100;
  std::ostringstream out;
  writeSvg(scene.picture(), options, out);
  return out.str();
}

testing::AssertionResult has(const std::string& text, const std::string& part) {
  if (text.find(part) != std::string::npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "no " << part << " in\n" << text;
}

TEST(Svg, IsAsLargeAsAskedForWithYDownwards) {
  const std::string svg = svgOf(Scene(lineFromTo("0", "0", "10", "4")));
  EXPECT_TRUE(has(svg, R"(width="100" height="50")"));
  EXPECT_TRUE(has(svg, R"(data-window="0 0 10 5")"));
  EXPECT_TRUE(has(svg, R"(d="M0 50L100 10")"));
}

TEST(Svg, TheForegroundIsSeenOnEitherBackground) {
  const Scene scene(lineFromTo("0", "0", "10", "4"));
  EXPECT_TRUE(has(svgOf(scene), R"(stroke="#000000")"));
  EXPECT_TRUE(has(svgOf(scene, {.background = Background::Dark}), R"(stroke="#ffffff")"));
}

TEST(Svg, WhatIsHighlightedComesLastInAColorOfItsOwn) {
  const Scene scene(lineFromTo("0", "0", "10", "0") + lineFromTo("0", "1", "10", "1"));
  const std::string svg = svgOf(scene, {.highlighted = {scene[0].entity}});
  EXPECT_TRUE(has(svg, R"(<g opacity="0.35">)"));
  EXPECT_GT(svg.find("#e8590c"), svg.find("#000000"));
  EXPECT_LT(svg.find("M0 40L100 40"), svg.find("M0 50L100 50"));
}

TEST(Svg, EntitiesAreNamedAsAsked) {
  const SvgOptions options{.nameOf = [](std::uint32_t) { return std::string("A\"7"); }};
  EXPECT_TRUE(has(svgOf(Scene(lineFromTo("0", "0", "1", "1")), options), R"(data-entity="A&quot;7")"));
}

TEST(Svg, TextsAreEscaped) {
  const Scene scene(entityOf("TEXT", {{10, "0"}, {20, "0"}, {40, "1"}, {1, "<a> & \"b\" \\U+00E4"}}));
  EXPECT_TRUE(has(svgOf(scene), "&lt;a&gt; &amp; &quot;b&quot; \xC3\xA4</text>"));
}

TEST(Svg, ATextStandsOnItsBaselineAsTallAsItsCapitals) {
  const Scene scene(entityOf("TEXT", {{10, "2"}, {20, "1"}, {40, "0.716"}, {1, "Wall"}, {50, "90"}}));
  EXPECT_TRUE(has(svgOf(scene), R"(font-size="10" transform="matrix)"));
  EXPECT_TRUE(has(svgOf(scene), "20 40)\" fill="));
}

TEST(Svg, DotsAndDashesAreSeen) {
  EXPECT_TRUE(has(svgOf(Scene(entityOf("POINT", {{10, "2"}, {20, "1"}}))), R"(d="M20 40h0")"));
}

TEST(Svg, AreasLeaveTheirHolesOut) {
  const Scene scene(entityOf(
      "SOLID", {{10, "0"}, {20, "0"}, {11, "1"}, {21, "0"}, {12, "0"}, {22, "1"}, {13, "1"}, {23, "1"}}));
  EXPECT_TRUE(has(svgOf(scene), R"(d="M0 50L10 50L10 40L0 40Z" fill="#000000" fill-rule="evenodd")"));
}

TEST(Svg, TheWindowHasRoomAroundAndAnArea) {
  const Box window = windowAround({{0, 0}, {100, 50}});
  EXPECT_EQ(window.low.x, -2);
  EXPECT_EQ(window.high.y, 52);
  EXPECT_GT(windowAround(Box{}).size(), 0);
  const Box ofPoint = windowAround({{5, 5}, {5, 5}});
  EXPECT_LT(ofPoint.low.x, 5);
  const Box tall = windowAround({{0, 0}, {0, 300}});
  EXPECT_GE(tall.high.x - tall.low.x, 100);
}

}  // namespace
}  // namespace velt::view
