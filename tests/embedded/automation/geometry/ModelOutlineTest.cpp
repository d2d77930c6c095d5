#include "embedded/automation/geometry/ModelOutline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

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

/// Nothing when the text is refused.
std::optional<RegionSize> sizeUnlessRefused(Lines lines) {
  try {
    return sizeOf(std::move(lines));
  } catch (const ModelError&) {
  } catch (const BoundaryError&) {}
  return std::nullopt;
}

/// The lines with a text replaced at its only place.
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

/// Of an ellipse, by many short chords.
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

TEST_P(EveryVersion, AnArcBulgesToItsOwnSide) {
  // A square with a half circle out of it on the right, or into it.
  const Loop out = {line({2, 2}, {0, 2}), line({0, 2}, {0, 0}), line({0, 0}, {2, 0}),
                    arc({2, 1}, {0, -1}, 1, 0, pi)};
  const Loop in = {line({2, 2}, {0, 2}), line({0, 2}, {0, 0}), line({0, 0}, {2, 0}),
                   arc({2, 1}, {0, -1}, 1, 0, -pi)};
  expectSize(4 + pi / 2, 6 + pi, RegionText(GetParam()).face({out}));
  expectSize(4 - pi / 2, 6 + pi, RegionText(GetParam()).face({in}));
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
      RegionText().face({{circle({0, 0}, 4)}, {circle({1, 0}, 2)}}).face({{circle({9, 0}, 1)}}).lines();
  const double area = sizeOf(whole).area;
  int refused = 0;
  for (std::size_t line = 3; line < whole.size(); ++line) {
    for (std::size_t at = whole[line].find('$'); at != std::string::npos;
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
