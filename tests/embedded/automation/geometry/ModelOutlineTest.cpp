#include "embedded/automation/geometry/ModelOutline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <sstream>

#include "embedded/automation/geometry/Boundary.h"
#include "embedded/automation/geometry/EllipticalArc.h"
#include "tests/embedded/automation/geometry/RegionText.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

using Lines = std::vector<std::string>;

RegionSize sizeOf(Lines lines) {
  return sizeOfRegion(ModelText(std::move(lines)));
}

void expectSize(double area, double perimeter, const RegionText& text) {
  const RegionSize size = sizeOf(text.lines());
  EXPECT_NEAR(area, size.area, 1e-12 * area);
  EXPECT_NEAR(perimeter, size.perimeter, 1e-12 * perimeter);
}

// Nothing when the text is refused.
std::optional<RegionSize> sizeUnlessRefused(Lines lines) {
  try {
    return sizeOf(std::move(lines));
  } catch (const ModelError&) {
  } catch (const BoundaryError&) {}
  return std::nullopt;
}

// The lines with a text replaced at its only place.
Lines with(Lines lines, const std::string& before, const std::string& after) {
  int count = 0;
  for (std::string& line : lines) {
    const std::size_t at = line.find(before);
    if (at == std::string::npos) continue;
    line.replace(at, before.size(), after);
    ++count;
  }
  EXPECT_EQ(1, count) << before;
  return lines;
}

// Of an ellipse, by many short chords.
double summedLength(double major, double ratio, double start, double end) {
  const EllipticalArc arc{{}, {major, 0}, {0, major * ratio}, start, end - start};
  constexpr int steps = 200000;
  double total = 0;
  for (int step = 0; step < steps; ++step)
    total += length(arc.at(start + (end - start) * (step + 1) / steps)
                    - arc.at(start + (end - start) * step / steps));
  return total;
}

class EveryVersion : public ::testing::TestWithParam<int> {};

TEST_P(EveryVersion, ASquareIsItsSideSquared) {
  expectSize(9, 12, RegionText(GetParam()).face({rectangle({1, 2}, {4, 5})}));
}

TEST_P(EveryVersion, AHoleIsTakenOutAndItsOutlineAdded) {
  expectSize(16 * pi - pi, 8 * pi + 2 * pi,
             RegionText(GetParam()).face({{circle({3, 4}, 4)}, {circle({3, 5}, 1)}}));
}

TEST_P(EveryVersion, AHalfEllipseIsHalfAsLargeWhicheverWayItsPartsRun) {
  const Piece base = line({-3, 0}, {3, 0});
  const Piece bow = arc({0, 0}, {3, 0}, 0.5, 0, pi);
  const double around = 6 + summedLength(3, 0.5, 0, pi);
  for (const Piece& piece :
       {bow, bow.withCurveReversed(), bow.withEdgeReversed(), bow.withEdgeReversed().withCurveReversed()}) {
    for (const Piece& straight : {base, base.withCurveReversed(), base.withEdgeReversed(),
                                  base.withEdgeReversed().withCurveReversed()}) {
      const RegionSize size = sizeOf(RegionText(GetParam()).face({{straight, piece}}).lines());
      EXPECT_NEAR(pi * 3 * 1.5 / 2, size.area, 1e-12);
      EXPECT_NEAR(around, size.perimeter, 1e-8);
    }
  }
}

TEST_P(EveryVersion, OfACircleThePartIsTakenThatTheArcRunsAround) {
  // Between the same two radii: three quarters of a disc, or the quarter that is left.
  for (const double sweep : {1.5 * pi, -0.5 * pi}) {
    const Piece bow = arc({0, 0}, {2, 0}, 1, 0, sweep);
    for (const Piece& piece :
         {bow, bow.withCurveReversed(), bow.withEdgeReversed(), bow.withEdgeReversed().withCurveReversed()}) {
      const Loop loop = {line({0, 0}, {2, 0}), piece, line({0, -2}, {0, 0})};
      expectSize(2 * std::abs(sweep), 4 + 2 * std::abs(sweep), RegionText(GetParam()).face({loop}));
    }
  }
}

TEST_P(EveryVersion, LumpsAndFacesAddUp) {
  expectSize(1 + 4 + 9, 4 + 8 + 12,
             RegionText(GetParam())
                 .face({rectangle({0, 0}, {1, 1})})
                 .face({rectangle({5, 0}, {7, 2})})
                 .another({rectangle({10, 0}, {13, 3})}));
}

TEST_P(EveryVersion, APlaneMayStandAnyhowAndTheBodyBeTransformed) {
  const Loop loop = {line({-3, 0}, {3, 0}), arc({0, 0}, {3, 0}, 1, 0, pi)};
  expectSize(pi * 9 / 2, 6 + 3 * pi,
             RegionText(GetParam()).plane({100, -20, 7}, {0.6, 0, 0.8}, {0, 1, 0}).face({loop}));
  expectSize(pi * 9 / 2 * 4, (6 + 3 * pi) * 2,
             RegionText(GetParam())
                 .plane({100, -20, 7}, {0.6, 0, 0.8}, {0, 1, 0})
                 .transformed("0 1 0 -1 0 0 0 0 1 50 60 70 2 rotate no_reflect no_shear ")
                 .face({loop}));
}

INSTANTIATE_TEST_SUITE_P(ModelOutline, EveryVersion, ::testing::Values(106, 400, 500, 700, 20800));

TEST(ModelOutline, AnIslandInAHoleCountsAgain) {
  expectSize(100 - 36 + 4, 40 + 24 + 8,
             RegionText()
                 .face({rectangle({0, 0}, {10, 10}), rectangle({2, 2}, {8, 8})})
                 .face({rectangle({4, 4}, {6, 6})}));
}

TEST(ModelOutline, FlatEllipsesHaveTheLengthOfTheirChords) {
  for (const double ratio : {1.0, 0.9, 0.3, 0.01}) {
    const Loop loop = {line({-2, 0}, {2, 0}), arc({0, 0}, {2, 0}, ratio, 0, pi)};
    EXPECT_NEAR(4 + summedLength(2, ratio, 0, pi), sizeOf(RegionText().face({loop}).lines()).perimeter, 1e-8);
  }
}

TEST(ModelOutline, FarFromTheOriginNoDigitsAreLost) {
  const RegionSize size =
      sizeOf(RegionText().plane({1e6, 2e6, 0}, {1, 0, 0}, {0, 1, 0}).face({{circle({0, 0}, 1)}}).lines());
  EXPECT_NEAR(pi, size.area, 1e-8);
}

TEST(ModelOutline, EveryTextThatIsCutShortIsRefused) {
  const Lines whole = RegionText().face({{line({-3, 0}, {3, 0}), arc({0, 0}, {3, 0}, 1, 0, pi)}}).lines();
  ASSERT_TRUE(sizeUnlessRefused(whole));
  for (std::size_t line = 0; line < whole.size(); ++line) {
    Lines cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(line) + 1);
    while (!cut.back().empty()) {
      cut.back().pop_back();
      EXPECT_FALSE(sizeUnlessRefused(cut)) << line << ": " << cut.back();
    }
  }
}

TEST(ModelOutline, ARecordThatLacksAnyFieldIsRefused) {
  const Lines whole = RegionText()
                          .transformed("1 0 0 0 1 0 0 0 1 0 0 0 1 no_rotate no_reflect no_shear ")
                          .face({{line({-3, 0}, {3, 0}), arc({0, 0}, {3, 0}, 1, 0, pi)}})
                          .lines();
  ASSERT_TRUE(sizeUnlessRefused(whole));
  for (std::size_t line = 3; line < whole.size(); ++line) {
    for (std::size_t blank = whole[line].find(' '); blank != std::string::npos;) {
      const std::size_t next = whole[line].find(' ', blank + 1);
      Lines damaged = whole;
      // Without its count, a word is still a word.
      if (next != std::string::npos && whole[line].substr(blank + 1, 1) != "@") {
        damaged[line].erase(blank, next - blank);
        EXPECT_FALSE(sizeUnlessRefused(damaged)) << damaged[line];
      }
      blank = next;
    }
  }
}

TEST(ModelOutline, AReferenceToAnyOtherRecordIsRefusedOrSaysTheSame) {
  const Lines whole =
      RegionText(400).face({{circle({0, 0}, 4)}, {circle({1, 0}, 2)}}).face({{circle({9, 0}, 1)}}).lines();
  const double area = sizeOf(whole).area;
  int refused = 0;
  for (std::size_t line = 3; line < whole.size(); ++line) {
    // The first one is that of an attribute, which nobody follows.
    for (std::size_t at = whole[line].find('$', whole[line].find("$-1 ") + 1); at != std::string::npos;
         at = whole[line].find('$', at + 1)) {
      for (int other = -1; other < static_cast<int>(whole.size()); ++other) {
        Lines damaged = whole;
        const std::size_t end = whole[line].find(' ', at);
        damaged[line].replace(at, end - at, "$" + std::to_string(other));
        const std::optional<RegionSize> size = sizeUnlessRefused(damaged);
        // What a vertex says of its edges, or an edge of its loop, does not count.
        if (size) {
          EXPECT_NEAR(area, size->area, 1e-9) << damaged[line];
        }
        refused += size ? 0 : 1;
      }
    }
  }
  EXPECT_GT(refused, 1000);
}

TEST(ModelOutline, AnyOtherCharacterIsRefusedOrChangesNothing) {
  // No end lies on an axis, so that every number counts.
  const Piece bow = arc({0, 0}, {3, 0}, 0.5, 0.3, 2.5);
  const Lines whole = RegionText().face({{line(bow.to, bow.from), bow}}).lines();
  const double area = sizeOf(whole).area;
  for (std::size_t line = 0; line < whole.size(); ++line) {
    for (std::size_t at = 0; at < whole[line].size(); ++at) {
      for (const char c : std::string("09-.e$#@ xI\xff")) {
        Lines damaged = whole;
        damaged[line][at] = c;
        const std::optional<RegionSize> size = sizeUnlessRefused(damaged);
        if (size) {
          EXPECT_NEAR(area, size->area, 1e-4) << damaged[line];
        }
      }
    }
  }
}

TEST(ModelOutline, WhatIsNotReadIsRefused) {
  const Lines square = RegionText()
                           .transformed("1 0 0 0 1 0 0 0 1 0 0 0 1 no_rotate no_reflect no_shear ")
                           .face({{circle({0, 0}, 1)}})
                           .lines();
  EXPECT_TRUE(sizeUnlessRefused(square));
  EXPECT_FALSE(sizeUnlessRefused(with(square, "ellipse-curve", "intcurve-curve")));
  EXPECT_FALSE(sizeUnlessRefused(with(square, "plane-surface", "cone-surface")));
  EXPECT_FALSE(sizeUnlessRefused(with(square, "1 0 0 0 1 0 0 0 1 ", "2 0 0 0 2 0 0 0 2 ")));
  EXPECT_FALSE(sizeUnlessRefused(with(square, "1 0 0 0 1 0 0 0 1 ", "1 0 0 1 1 0 0 0 1 ")));
  EXPECT_FALSE(sizeUnlessRefused(with(square, "0 0 0 1 no_rotate", "0 0 0 0 no_rotate")));
  EXPECT_FALSE(sizeUnlessRefused(with(square, "body", "torso")));
}

TEST(ModelOutline, PartsThatContradictEachOtherAreRefused) {
  const Lines whole = RegionText().face({{line({-3, 0}, {3, 0}), arc({0, 0}, {3, 0}, 0.5, 0, pi)}}).lines();
  ASSERT_TRUE(sizeUnlessRefused(whole));
  // clang-format off
  constexpr std::pair<const char*, const char*> damages[] = {
      // what it says               what it says then
      {"body $-1 -1 $-1 $1 $-1",    "body $-1 -1 $-1 $1 $2"},        // wires
      {"shell $-1 -1 $-1 $-1",      "shell $-1 -1 $-1 $2"},          // another shell
      {"forward $4 $-1 #\ncoedge",  "reversed $4 $-1 #\ncoedge"},    // edges run against each other
      {"$-1 $7 forward $4",         "$-1 $7 forward $3"},            // a coedge of another loop
      {"0.0 $11 6.0",               "0.0 $11 5.0"},                  // more than the line between the ends
      {"0.0 $9 3.14159",            "0.0 $9 3.24159"},               // or the arc
      {"straight-curve $-1 -1 $-1 -3.0 0.0", "straight-curve $-1 -1 $-1 -3.0 0.1"},
      {"0.0 0.0 1.0 3.0 0.0 0.0",   "0.0 0.6 0.8 3.0 0.0 0.0"},      // an ellipse out of the plane
      {"0.0 0.0 1.0 3.0 0.0 0.0",   "0.0 0.0 0.5 3.0 0.0 0.0"},
      {"0.0 0.0 1.0 1.0 0.0 0.0 forward_v", "0.0 0.0 0.0 1.0 0.0 0.0 forward_v"},
      {"3.0 0.0 0.0 0.5 ",          "3.0 0.0 0.0 1.5 "},
      {"3.0 0.0 0.0 0.5 ",          "3.0 0.0 0.0 -0.5 "},
      {"1.0 0.0 0.0 I I",           "0.0 0.0 0.0 I I"},              // a line without a direction
  };
  // clang-format on
  std::string text;
  for (const std::string& line : whole)
    text += line + "\n";
  for (const auto& [before, after] : damages) {
    const std::size_t at = text.find(before);
    ASSERT_NE(std::string::npos, at) << before;
    std::istringstream damaged(std::string(text).replace(at, std::string_view(before).size(), after));
    Lines lines;
    for (std::string line; std::getline(damaged, line);)
      lines.push_back(line);
    EXPECT_FALSE(sizeUnlessRefused(lines)) << after;
  }
}

TEST(ModelOutline, EdgesThatAlmostMeetAreRefused) {
  Loop open = rectangle({0, 0}, {10, 10});
  open[1] = line({10, 0}, {10, 9.99999});
  EXPECT_FALSE(sizeUnlessRefused(RegionText().face({open}).lines()));
  open = rectangle({0, 0}, {10, 10});
  open[3] = line({0, 10}, {0, 0.00001});
  EXPECT_FALSE(sizeUnlessRefused(RegionText().face({open}).lines()));
}

TEST(ModelOutline, AnArcThatMayBeNothingOrAlmostFullIsRefused) {
  const Piece bow = arc({0, 0}, {1, 0}, 1, 0, 2 * pi - 1e-8);
  EXPECT_FALSE(sizeUnlessRefused(RegionText(400).face({{bow, line(bow.to, bow.from)}}).lines()));
}

TEST(ModelOutline, LoopsThatCrossAreRefused) {
  EXPECT_FALSE(
      sizeUnlessRefused(RegionText().face({rectangle({0, 0}, {2, 2}), rectangle({1, 1}, {3, 3})}).lines()));
}

TEST(ModelOutline, FacesOfDifferentPlanesAreRefused) {
  Lines lines = RegionText().face({rectangle({0, 0}, {1, 1})}).face({rectangle({5, 5}, {6, 6})}).lines();
  for (std::string& line : lines) {
    if (line.find("point") == 0 && line.find(" 5.0 5.0 0.0 ") != std::string::npos)
      line.replace(line.find(" 5.0 5.0 0.0 "), 13, " 5.0 5.0 1.0 ");
  }
  EXPECT_FALSE(sizeUnlessRefused(lines));
}

}  // namespace
}  // namespace velt::automation
