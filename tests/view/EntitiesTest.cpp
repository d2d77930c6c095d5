// What each kind of entity looks like; view/entities/ draws them.

#include <gtest/gtest.h>

#include <cmath>

#include "tests/view/Scene.h"
#include "view/Colors.h"

namespace velt::view {
namespace {

using namespace velt::tests;

Box boxOf(const Scene& scene) {
  return scene.picture().extents;
}

void expectBox(const Box& box, double left, double bottom, double right, double top, double slack = 1e-6) {
  EXPECT_NEAR(box.low.x, left, slack);
  EXPECT_NEAR(box.low.y, bottom, slack);
  EXPECT_NEAR(box.high.x, right, slack);
  EXPECT_NEAR(box.high.y, top, slack);
}

// --- curves ---

TEST(Curves, ALineGoesFromItsStartToItsEnd) {
  EXPECT_EQ(spelled(Scene(lineFromTo("1", "2", "3", "4")).points(0)), "1,2 3,4");
}

TEST(Curves, ACircleIsClosedAndRound) {
  const Scene scene(circle("A1", "0"), "", {{"0"}}, {.scale = 100});
  expectBox(boxOf(scene), -2.5, -2.5, 2.5, 2.5, 0.01);
  EXPECT_TRUE(scene.picture().parts[0].isClosed);
}

TEST(Curves, AnArcRunsCounterclockwise) {
  const Scene scene(entityOf("ARC", {{10, "0"}, {20, "0"}, {40, "2"}, {50, "270"}, {51, "90"}}), "", {{"0"}},
                    {.scale = 100});
  expectBox(boxOf(scene), 0, -2, 2, 2, 0.01);
}

TEST(Curves, SeenFromBelowAnArcRunsTheOtherWayAround) {
  const Scene scene(
      entityOf(
          "ARC",
          {{10, "5"}, {20, "0"}, {40, "2"}, {50, "270"}, {51, "90"}, {210, "0"}, {220, "0"}, {230, "-1"}}),
      "", {{"0"}}, {.scale = 100});
  expectBox(boxOf(scene), -7, -2, -5, 2, 0.01);
}

TEST(Curves, ATiltedCircleIsSeenAsAnEllipse) {
  const Scene scene(entityOf("CIRCLE", {{10, "0"}, {20, "0"}, {40, "2"}, {210, "1"}, {220, "0"}, {230, "1"}}),
                    "", {{"0"}}, {.scale = 100});
  expectBox(boxOf(scene), -std::sqrt(2), -2, std::sqrt(2), 2, 0.01);
}

TEST(Curves, AnEllipseFollowsItsAxesAndParameters) {
  const std::vector<Pair> ellipse = {{10, "0"}, {20, "0"}, {11, "0"}, {21, "4"}, {40, "0.5"}};
  std::vector<Pair> half = ellipse;
  half.insert(half.end(), {{41, "0"}, {42, "3.141592653589793"}});
  expectBox(boxOf(Scene(entityOf("ELLIPSE", ellipse), "", {{"0"}}, {.scale = 100})), -2, -4, 2, 4, 0.01);
  expectBox(boxOf(Scene(entityOf("ELLIPSE", half), "", {{"0"}}, {.scale = 100})), -2, -4, 0, 4, 0.01);
}

TEST(Curves, ASplineWithoutKnotsGoesThroughItsFitPoints) {
  const Scene scene(entityOf(
      "SPLINE", {{71, "3"}, {74, "3"}, {11, "0"}, {21, "0"}, {11, "5"}, {21, "5"}, {11, "10"}, {21, "0"}}));
  expectBox(boxOf(scene), 0, 0, 10, 5, 0.3);
}

TEST(Curves, EndlessLinesAreCutOffAtTheWindow) {
  const std::string ray = entityOf("RAY", {{10, "5"}, {20, "5"}, {11, "1"}, {21, "0"}});
  const std::string line = entityOf("XLINE", {{10, "5"}, {20, "5"}, {11, "0"}, {21, "1"}});
  const Scene scene(ray + line, "", {{"0"}}, {.scale = 1, .window = Box{{0, 0}, {10, 10}}});
  EXPECT_EQ(spelled(scene.points(0)), "5,5 10,5");
  EXPECT_EQ(spelled(scene.points(1)), "5,0 5,10");
  EXPECT_EQ(Scene(ray + line).size(), 0U);
}

TEST(Curves, APointIsADotUnlessTheDrawingSaysMore) {
  const Scene scene(entityOf("POINT", {{10, "5"}, {20, "6"}}));
  EXPECT_EQ(spelled(scene.points(0)), "5,6");
}

TEST(Curves, GeometryThatMakesNoSenseIsLeftOut) {
  const Scene scene(entityOf("CIRCLE", {{10, "0"}, {20, "0"}, {40, "1e300"}})
                    + entityOf("LINE", {{10, "1e200"}, {20, "0"}, {11, "1e250"}, {21, "0"}})
                    + entityOf("SPLINE", {{71, "3"}}) + entityOf("ELLIPSE", {{11, "0"}, {21, "0"}})
                    + entityOf("ELLIPSE", {{10, "0"}, {11, "1e308"}, {21, "1e308"}, {40, "1e308"}})
                    + entityOf("RAY", {{10, "0"}, {11, "0"}, {21, "0"}}) + lineFromTo("1", "2", "3", "4"));
  expectBox(boxOf(scene), 0, 0, 3, 4);
}

// --- polylines ---

TEST(Polylines, BulgesAreArcsAndTheLastOneCloses) {
  const Scene scene(
      entityOf("LWPOLYLINE", {{70, "1"}, {10, "0"}, {20, "0"}, {42, "1"}, {10, "2"}, {20, "0"}, {42, "1"}}),
      "", {{"0"}}, {.scale = 1000});
  expectBox(boxOf(scene), 0, -1, 2, 1, 0.01);
}

TEST(Polylines, OneWidthIsABroadLineAndSeveralAreAreas) {
  const Scene even(entityOf("LWPOLYLINE", {{43, "2"}, {10, "0"}, {20, "0"}, {10, "10"}, {20, "0"}}));
  EXPECT_EQ(even[0].shape, Shape::Path);
  EXPECT_EQ(even[0].width, 2);
  const Scene tapered(
      entityOf("LWPOLYLINE", {{10, "0"}, {20, "0"}, {40, "2"}, {41, "0"}, {10, "10"}, {20, "0"}}));
  EXPECT_EQ(tapered[0].shape, Shape::Fill);
  expectBox(boxOf(tapered), 0, -1, 10, 1);
}

TEST(Polylines, AWidthGrowsWithTheBlock) {
  const Scene scene(
      insertOf("B", {{41, "3"}, {42, "3"}, {43, "3"}}),
      blockOf("B", entityOf("LWPOLYLINE", {{43, "2"}, {10, "0"}, {20, "0"}, {10, "10"}, {20, "0"}})));
  EXPECT_NEAR(scene[0].width, 6, 1e-9);
}

std::string vertexOf(const std::string& x, const std::string& y, const std::vector<Pair>& own = {}) {
  return entityOf("VERTEX", {{10, x}, {20, y}}) + pairs(own);
}

TEST(Polylines, TheFrameOfASmoothedOneIsNotSeen) {
  const Scene scene(entityOf("POLYLINE", {{66, "1"}, {70, "4"}}) + vertexOf("0", "50", {{70, "16"}})
                    + vertexOf("0", "0", {{70, "8"}}) + vertexOf("4", "1", {{70, "8"}})
                    + pairs({{0, "SEQEND"}}));
  EXPECT_EQ(spelled(scene.points(0)), "0,0 4,1");
}

TEST(Polylines, AMeshIsSeenAsItsRowsAndColumns) {
  const Scene scene(entityOf("POLYLINE", {{66, "1"}, {70, "16"}, {71, "2"}, {72, "2"}})
                    + vertexOf("0", "0", {{70, "64"}}) + vertexOf("1", "0", {{70, "64"}})
                    + vertexOf("0", "1", {{70, "64"}}) + vertexOf("1", "1", {{70, "64"}})
                    + pairs({{0, "SEQEND"}}));
  EXPECT_EQ(scene[0].count, 4U);
}

TEST(Polylines, EdgesOfFacesAreHiddenByNegativeNumbers) {
  const Scene scene(entityOf("POLYLINE", {{66, "1"}, {70, "64"}, {71, "3"}, {72, "1"}})
                    + vertexOf("0", "0", {{70, "192"}}) + vertexOf("1", "0", {{70, "192"}})
                    + vertexOf("0", "1", {{70, "192"}})
                    + entityOf("VERTEX", {{70, "128"}, {71, "1"}, {72, "-2"}, {73, "3"}, {74, "99"}})
                    + pairs({{0, "SEQEND"}}));
  EXPECT_EQ(scene[0].count, 1U);
  EXPECT_EQ(spelled(scene.points(0)), "0,0 1,0");
}

// --- hatches, faces ---

std::vector<Pair> squareLoop(const std::string& low, const std::string& high) {
  return {{92, "2"}, {72, "0"},  {73, "1"},  {93, "4"}, {10, low},  {20, low}, {10, high},
          {20, low}, {10, high}, {20, high}, {10, low}, {20, high}, {97, "0"}};
}

std::string hatchOf(const std::string& solid, const std::vector<std::vector<Pair>>& loops,
                    const std::string& rest) {
  std::string text = entityOf("HATCH", {{10, "0"},
                                        {20, "0"},
                                        {30, "0"},
                                        {2, "X"},
                                        {70, solid},
                                        {71, "0"},
                                        {91, std::to_string(loops.size())}});
  for (const std::vector<Pair>& loop : loops)
    text += pairs(loop);
  return text + rest;
}

TEST(Hatches, ASolidOneFillsItsLoops) {
  const Scene scene(
      hatchOf("1", {squareLoop("0", "10"), squareLoop("2", "4")}, pairs({{75, "0"}, {76, "1"}})));
  ASSERT_EQ(scene.size(), 1U);
  EXPECT_EQ(scene[0].shape, Shape::Fill);
  EXPECT_EQ(scene[0].count, 2U);
  expectBox(boxOf(scene), 0, 0, 10, 10);
}

TEST(Hatches, IslandsAreLeftOutAsTheStyleSays) {
  const std::vector<std::vector<Pair>> nested = {squareLoop("0", "10"), squareLoop("2", "8"),
                                                 squareLoop("4", "6")};
  EXPECT_EQ(Scene(hatchOf("1", nested, pairs({{75, "0"}})))[0].count, 3U);
  EXPECT_EQ(Scene(hatchOf("1", nested, pairs({{75, "1"}})))[0].count, 2U);
  EXPECT_EQ(Scene(hatchOf("1", nested, pairs({{75, "2"}})))[0].count, 1U);
}

const std::string patternLines = pairs({{75, "0"},
                                        {76, "1"},
                                        {52, "0"},
                                        {41, "1"},
                                        {77, "0"},
                                        {78, "1"},
                                        {53, "0"},
                                        {43, "0"},
                                        {44, "1"},
                                        {45, "0"},
                                        {46, "2"},
                                        {79, "0"}});

TEST(Hatches, APatternIsItsLines) {
  const Scene scene(hatchOf("0", {squareLoop("0", "10")}, patternLines), "", {{"0"}}, {.scale = 10});
  ASSERT_EQ(scene.size(), 1U);
  EXPECT_EQ(scene[0].shape, Shape::Path);
  EXPECT_EQ(scene[0].count, 5U);
}

TEST(Hatches, APatternTooDenseToBeSeenIsAPaleArea) {
  const Scene scene(hatchOf("0", {squareLoop("0", "10")}, patternLines), "", {{"0"}}, {.scale = 0.1});
  EXPECT_EQ(scene[0].shape, Shape::Fill);
  EXPECT_LT(scene[0].opacity, 1);
}

TEST(Hatches, AGradientIsAnAreaBetweenItsColors) {
  const Scene scene(hatchOf("1", {squareLoop("0", "10")},
                            pairs({{75, "0"},
                                   {450, "1"},
                                   {453, "2"},
                                   {463, "0"},
                                   {63, "1"},
                                   {421, "16711680"},
                                   {463, "1"},
                                   {63, "5"},
                                   {421, "255"}})));
  EXPECT_EQ(scene[0].ink, inkOfRgb(0x7F007F));
}

TEST(Hatches, EdgesThatStandTheWrongWayAroundAreTurned) {
  const std::vector<Pair> edges = {{92, "1"}, {93, "3"}, {72, "1"}, {10, "4"}, {20, "0"}, {11, "0"},
                                   {21, "0"}, {72, "1"}, {10, "4"}, {20, "0"}, {11, "4"}, {21, "4"},
                                   {72, "1"}, {10, "0"}, {20, "0"}, {11, "4"}, {21, "4"}, {97, "0"}};
  EXPECT_EQ(spelled(Scene(hatchOf("1", {edges}, pairs({{75, "0"}}))).points(0)), "0,0 4,0 4,0 4,4 4,4 0,0");
}

TEST(Hatches, ABoundaryThatIsCutShortIsLeftOut) {
  EXPECT_EQ(Scene(hatchOf("1", {{{92, "2"}, {72, "0"}, {73, "1"}, {93, "4"}, {10, "0"}}}, "")).size(), 0U);
}

TEST(Faces, TheCornersOfASolidAreStoredCrosswise) {
  const Scene scene(entityOf(
      "SOLID", {{10, "0"}, {20, "0"}, {11, "1"}, {21, "0"}, {12, "0"}, {22, "1"}, {13, "1"}, {23, "1"}}));
  EXPECT_EQ(spelled(scene.points(0)), "0,0 1,0 1,1 0,1");
}

TEST(Faces, HiddenEdgesOfAFaceAreNotSeen) {
  const std::vector<Pair> corners = {{10, "0"}, {20, "0"}, {11, "1"}, {21, "0"},
                                     {12, "1"}, {22, "1"}, {13, "0"}, {23, "1"}};
  EXPECT_EQ(Scene(entityOf("3DFACE", corners))[0].count, 4U);
  EXPECT_EQ(Scene(entityOf("3DFACE", corners) + pairs({{70, "5"}}))[0].count, 2U);
}

TEST(Faces, AMeshShowsEachEdgeOnce) {
  const Scene scene(
      entityOf("MESH", {{91, "0"}, {92, "4"}, {10, "0"}, {20, "0"}, {10, "1"}, {20, "0"}, {10, "1"},
                        {20, "1"}, {10, "0"}, {20, "1"}, {93, "8"}, {90, "3"}, {90, "0"}, {90, "1"},
                        {90, "2"}, {90, "3"}, {90, "0"}, {90, "2"}, {90, "3"}, {94, "0"}, {90, "0"}}));
  EXPECT_EQ(scene[0].count, 5U);
}

// --- texts ---

TEST(Texts, ALineStandsOnItsPointAndTurnsAboutIt) {
  const Scene scene(
      entityOf("TEXT", {{10, "1"}, {20, "2"}, {40, "3"}, {41, "0.5"}, {50, "90"}, {1, "A%%d"}}));
  EXPECT_EQ(scene.text(0).wording, L"A\u00B0");
  EXPECT_NEAR(scene.text(0).right.y, 1.5, 1e-9);
  EXPECT_NEAR(scene.text(0).up.x, -3, 1e-9);
  EXPECT_EQ(scene.text(0).origin, (Vector2{1, 2}));
}

TEST(Texts, AJustifiedLineHangsOnItsSecondPoint) {
  const Scene scene(
      entityOf("TEXT",
               {{10, "1"}, {20, "2"}, {11, "7"}, {21, "8"}, {40, "2"}, {72, "1"}, {73, "3"}, {1, "A"}})
      + entityOf("TEXT", {{10, "1"}, {20, "2"}, {11, "7"}, {21, "8"}, {40, "2"}, {72, "4"}, {1, "A"}}));
  EXPECT_EQ(scene.text(0).anchor, 0.5);
  EXPECT_EQ(scene.text(0).origin, (Vector2{7, 6}));
  EXPECT_EQ(scene.text(1).origin, (Vector2{7, 7}));
}

TEST(Texts, AFittedLineReachesFromPointToPoint) {
  const Scene scene(
      entityOf("TEXT", {{10, "0"}, {20, "0"}, {11, "0"}, {21, "8"}, {40, "2"}, {72, "5"}, {1, "Wall"}}));
  const Text& text = scene.text(0);
  EXPECT_NEAR(text.length * length(text.right), 8, 1e-9);
  EXPECT_NEAR(text.right.x, 0, 1e-9);
}

TEST(Texts, BackwardsAndUpsideDownAreMirrored) {
  const Scene scene(entityOf("TEXT", {{10, "0"}, {20, "0"}, {40, "2"}, {71, "6"}, {1, "A"}}));
  EXPECT_EQ(scene.text(0).right, (Vector2{-2, 0}));
  EXPECT_EQ(scene.text(0).up.y, -2);
}

TEST(Texts, SeveralLinesFollowTheirDirectionAndAttachment) {
  const Scene scene(entityOf(
      "MTEXT",
      {{10, "5"}, {20, "5"}, {40, "2"}, {71, "7"}, {11, "0"}, {21, "1"}, {3, "On"}, {1, "e\\PTwo"}}));
  ASSERT_EQ(scene.size(), 2U);
  EXPECT_EQ(scene.text(0).wording, L"One");
  EXPECT_NEAR(scene.text(1).origin.x, 5, 1e-9);
  EXPECT_NEAR(scene.text(0).origin.x, 5 - 2 * 5.0 / 3, 1e-9);
  EXPECT_NEAR(scene.text(0).right.y, 2, 1e-9);
}

TEST(Texts, SeenFromBehindTheyReadAlongTheXAxisOfTheWorldWhereNoDirectionIsTold) {
  const Scene scene(
      entityOf("MTEXT", {{10, "5"}, {20, "5"}, {40, "2"}, {1, "One"}, {210, "0"}, {220, "0"}, {230, "-1"}}));
  ASSERT_EQ(scene.size(), 1U);
  EXPECT_NEAR(scene.text(0).right.x, 2, 1e-9);
  EXPECT_NEAR(scene.text(0).up.y, -2, 1e-9);
}

TEST(Texts, HaveLinesUnderOverAndThroughThemWhereTheirCodesSaySo) {
  const Scene scene(
      entityOf("MTEXT", {{10, "5"}, {20, "5"}, {40, "2"}, {1, "\\Lunder\\l\\Oover\\o\\Kthrough\\knothing"}}));
  ASSERT_EQ(scene.size(), 4U);
  const auto linesOf = [&](std::size_t index) {
    const Text& text = scene.text(index);
    return (text.isUnderlined ? 1 : 0) + (text.isOverlined ? 2 : 0) + (text.isStruckOut ? 4 : 0);
  };
  EXPECT_EQ(linesOf(0), 1);
  EXPECT_EQ(linesOf(1), 2);
  EXPECT_EQ(linesOf(2), 4);
  EXPECT_EQ(linesOf(3), 0);
}

TEST(Texts, ABackgroundLiesUnderTheText) {
  const Scene scene(entityOf("MTEXT", {{10, "5"}, {20, "5"}, {40, "2"}, {1, "One"}, {90, "3"}, {45, "1.5"}}));
  ASSERT_EQ(scene.size(), 2U);
  EXPECT_EQ(scene[0].shape, Shape::Fill);
  EXPECT_EQ(scene[0].ink.kind, Ink::Kind::Background);
}

// --- references ---

TEST(References, AreScaledTurnedAndMovedFromTheBasePoint) {
  const Scene scene(insertOf("B", {{10, "100"}, {20, "0"}, {41, "2"}, {42, "3"}, {50, "90"}}),
                    blockOf("B", lineFromTo("1", "1", "2", "2"), {{10, "1"}, {20, "1"}}));
  EXPECT_NEAR(scene.points(0)[1].x, 97, 1e-9);
  EXPECT_NEAR(scene.points(0)[1].y, 2, 1e-9);
}

TEST(References, AreRepeatedInRowsAndColumnsAlongTheirOwnAxes) {
  const Scene scene(insertOf("B", {{50, "90"}, {70, "3"}, {71, "2"}, {44, "10"}, {45, "100"}}),
                    blockOf("B", lineFromTo("0", "0", "1", "0")));
  EXPECT_EQ(scene.size(), 6U);
  expectBox(boxOf(scene), -100, 0, 0, 21);
}

TEST(References, AreMirroredByNegativeScalesAndNotSeenWithoutOne) {
  const std::string block = blockOf("B", lineFromTo("0", "0", "1", "0"));
  EXPECT_EQ(Scene(insertOf("B", {{41, "-2"}}), block).points(0)[1].x, -2);
  EXPECT_EQ(Scene(insertOf("B", {{41, "0"}}), block).size(), 0U);
}

TEST(References, ShowTheirAttributesAndOnlyConstantDefinitions) {
  const std::string definitions =
      entityOf("ATTDEF", {{10, "0"}, {20, "0"}, {40, "1"}, {1, "default"}, {2, "TAG"}, {70, "0"}})
      + entityOf("ATTDEF", {{10, "0"}, {20, "0"}, {40, "1"}, {1, "fixed"}, {2, "TAG2"}, {70, "2"}});
  const Scene scene(
      insertOf("B", {{66, "1"}, {10, "50"}, {20, "0"}})
          + entityOf("ATTRIB", {{10, "7"}, {20, "7"}, {40, "1"}, {1, "D1"}, {2, "TAG"}, {70, "0"}})
          + entityOf("ATTRIB", {{10, "7"}, {20, "7"}, {40, "1"}, {1, "hidden"}, {2, "T"}, {70, "1"}})
          + pairs({{0, "SEQEND"}}),
      blockOf("B", definitions));
  ASSERT_EQ(scene.size(), 2U);
  EXPECT_EQ(scene.text(0).wording, L"fixed");
  EXPECT_EQ(scene.text(1).wording, L"D1");
  EXPECT_EQ(scene.text(1).origin, (Vector2{7, 7}));
  EXPECT_EQ(scene[1].entity, scene[0].entity);
}

TEST(References, ADefinitionByItselfShowsItsTag) {
  const Scene scene(
      entityOf("ATTDEF", {{10, "0"}, {20, "0"}, {40, "1"}, {1, "default"}, {2, "TAG"}, {70, "0"}}));
  EXPECT_EQ(scene.text(0).wording, L"TAG");
}

TEST(References, ADimensionIsItsPicture) {
  const Scene scene(entityOf("DIMENSION", {{2, "*D1"}, {10, "40"}, {20, "40"}}),
                    blockOf("*D1", lineFromTo("1", "2", "3", "4")));
  EXPECT_EQ(spelled(scene.points(0)), "1,2 3,4");
}

TEST(References, ADimensionOnALayerThatIsOffIsNotSeenWhateverItsPictureIsOn) {
  const Scene scene(entityOf("DIMENSION", {{2, "*D1"}}, "Off"),
                    blockOf("*D1", lineFromTo("1", "2", "3", "4", "Red")), {{"0"}, {"Off", -1}, {"Red", 1}});
  EXPECT_EQ(scene.size(), 0U);
}

// --- notes, images ---

TEST(Notes, ALeaderHasAnArrowWhereThereIsRoom) {
  const std::vector<Pair> leader = {{71, "1"}, {72, "0"},  {76, "2"}, {10, "0"},
                                    {20, "0"}, {10, "10"}, {20, "10"}};
  const Scene scene(entityOf("LEADER", leader));
  ASSERT_EQ(scene.size(), 2U);
  EXPECT_EQ(scene[1].shape, Shape::Fill);
  EXPECT_EQ(scene.points(1)[0], (Vector2{0, 0}));
}

TEST(Notes, ALeaderHasTheColorAndTheArrowOfItsDimensionStyle) {
  const std::vector<Pair> own = {{1001, "ACAD"}, {1000, "DSTYLE"}, {1002, "{"}, {1070, "176"},
                                 {1070, "41"},   {1070, "41"},     {1040, "3"}, {1002, "}"}};
  const Scene scene(
      entityOf("LEADER", {{3, "Standard"}, {71, "1"}, {10, "0"}, {20, "0"}, {10, "9"}, {20, "0"}})
      + pairs(own));
  ASSERT_EQ(scene.size(), 2U);
  EXPECT_EQ(scene[0].ink, inkOfIndex(41));
  EXPECT_EQ(scene[1].ink, inkOfIndex(41));
  EXPECT_EQ(scene[1].box.high.x, 3) << "the number of a color is not taken for that of the arrow's size";
}

TEST(Notes, AMultileaderHasLinesALandingAnArrowAndATextInItsFrame) {
  const Scene scene(entityOf("MULTILEADER", {{300, "CONTEXT_DATA{"},
                                             {40, "1"},
                                             {41, "2"},
                                             {140, "1"},
                                             {145, "0.5"},
                                             {290, "1"},
                                             {304, "Note"},
                                             {12, "20"},
                                             {22, "11"},
                                             {13, "1"},
                                             {23, "0"},
                                             {171, "1"},
                                             {302, "LEADER{"},
                                             {10, "10"},
                                             {20, "10"},
                                             {11, "1"},
                                             {21, "0"},
                                             {40, "5"},
                                             {304, "LEADER_LINE{"},
                                             {10, "0"},
                                             {20, "0"},
                                             {305, "}"},
                                             {303, "}"},
                                             {301, "}"},
                                             {170, "1"},
                                             {292, "1"}}));
  ASSERT_EQ(scene.size(), 4U);
  EXPECT_EQ(spelled(scene.points(0)), "0,0 10,10 15,10");
  EXPECT_EQ(scene[1].shape, Shape::Fill);
  EXPECT_EQ(scene.text(2).wording, L"Note");
  EXPECT_EQ(scene[3].shape, Shape::Path);
  EXPECT_NEAR(scene.points(3)[0].x, 19.5, 1e-9);
  EXPECT_NEAR(scene.points(3)[2].y, 11.5, 1e-9) << "the upper edge of the text is where the leader places it";
}

TEST(Notes, ATolerancesCompartmentsAreFramed) {
  const Scene scene(entityOf("TOLERANCE", {{10, "0"}, {20, "0"}, {1, "{\\Fgdt;j}%%v0.1%%v%%v"}}));
  ASSERT_EQ(scene.size(), 4U);
  EXPECT_EQ(scene.text(1).wording, L"\u2316");
  EXPECT_EQ(scene.text(3).wording, L"0.1");
}

const std::vector<Pair> imagePairs = {{10, "0"}, {20, "0"},   {11, "0.5"}, {21, "0"},
                                      {12, "0"}, {22, "0.5"}, {13, "20"},  {23, "10"}};

TEST(Images, APictureIsItsFrame) {
  expectBox(boxOf(Scene(entityOf("IMAGE", imagePairs))), 0, 0, 10, 5);
}

TEST(Images, AFrameIsCutOffFromTheTopDown) {
  std::vector<Pair> clipped = imagePairs;
  clipped.insert(
      clipped.end(),
      {{70, "7"}, {280, "1"}, {71, "1"}, {91, "2"}, {14, "-0.5"}, {24, "-0.5"}, {14, "9.5"}, {24, "3.5"}});
  expectBox(boxOf(Scene(entityOf("IMAGE", clipped))), 0, 3, 5, 5);
}

TEST(Images, AWipeoutCoversWhatLiesUnderIt) {
  const Scene scene(entityOf("WIPEOUT", {{10, "0"},
                                         {20, "0"},
                                         {11, "4"},
                                         {21, "0"},
                                         {12, "0"},
                                         {22, "4"},
                                         {13, "1"},
                                         {23, "1"},
                                         {71, "2"},
                                         {91, "4"},
                                         {14, "-0.5"},
                                         {24, "-0.5"},
                                         {14, "0.5"},
                                         {24, "-0.5"},
                                         {14, "0.5"},
                                         {24, "0.5"},
                                         {14, "-0.5"},
                                         {24, "-0.5"}}));
  EXPECT_EQ(scene[0].shape, Shape::Fill);
  EXPECT_EQ(scene[0].ink.kind, Ink::Kind::Background);
  expectBox(boxOf(scene), 0, 0, 4, 4);
}

// --- viewports ---

std::string onPaper(const std::string& type, const std::vector<Pair>& own) {
  return entityOf(type, own, "0", {{67, "1"}});
}

TEST(Viewports, ShowModelSpaceInTheirFrame) {
  const std::string viewport = onPaper("VIEWPORT", {{10, "100"},
                                                    {20, "50"},
                                                    {40, "40"},
                                                    {41, "20"},
                                                    {68, "2"},
                                                    {69, "2"},
                                                    {12, "5"},
                                                    {22, "5"},
                                                    {16, "0"},
                                                    {26, "0"},
                                                    {36, "1"},
                                                    {45, "10"}});
  const Scene scene(
      database::Drawing::parse(
          drawingOf({{"0"}}, lineFromTo("5", "5", "10", "5") + lineFromTo("500", "5", "510", "5") + viewport),
          "sheet"),
      {.scale = 1}, 1);
  ASSERT_EQ(scene.size(), 2U) << "the second line lies outside of the frame";
  EXPECT_EQ(spelled(scene.points(0)), "100,50 110,50");
  EXPECT_EQ(scene.drawing().document().type(scene[0].entity), "LINE");
  EXPECT_EQ(scene.drawing().document().type(scene[0].viewport), "VIEWPORT");
  EXPECT_NE(scene[0].clip, none);
  expectBox(scene[1].box, 80, 40, 120, 60);
}

TEST(Viewports, TurnTheirViewByTheTwist) {
  const std::string viewport =
      onPaper("VIEWPORT",
              {{10, "0"}, {20, "0"}, {40, "40"}, {41, "20"}, {68, "2"}, {69, "2"}, {45, "20"}, {51, "90"}});
  const Scene scene(
      database::Drawing::parse(drawingOf({{"0"}}, lineFromTo("0", "0", "5", "0") + viewport), "sheet"),
      {.scale = 1}, 1);
  EXPECT_NEAR(scene.points(0)[1].x, 0, 1e-9);
  EXPECT_NEAR(scene.points(0)[1].y, 5, 1e-9);
}

TEST(Viewports, AreNotSeenInModelSpaceNorForTheSheetItself) {
  const std::vector<Pair> own = {{10, "0"}, {20, "0"}, {40, "40"}, {41, "20"},
                                 {68, "1"}, {69, "1"}, {45, "20"}};
  EXPECT_EQ(Scene(entityOf("VIEWPORT", own)).size(), 0U);
  EXPECT_EQ(
      Scene(database::Drawing::parse(drawingOf({{"0"}}, onPaper("VIEWPORT", own)), "sheet"), {}, 1).size(),
      0U);
}

}  // namespace
}  // namespace velt::view
