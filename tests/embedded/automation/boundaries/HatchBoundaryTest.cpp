#include "embedded/automation/boundaries/HatchBoundary.h"

#include <gtest/gtest.h>

#include <numbers>
#include <string>

#include "dxf/Numbers.h"
#include "tests/embedded/database/Sample.h"

namespace velt::automation {
namespace {

using database::Drawing;
using database::test::Sample;
using std::numbers::pi;

// A hatch in the making: the pairs before its loops, its loops, and the pairs after them.
class Hatch {
 public:
  Hatch& style(int style) {
    style_ = style;
    return *this;
  }
  // "72 1 73 1 ..." as they follow 92; blanks part codes and values.
  Hatch& loop(bool polyline, const std::string& pairs) {
    ++loops_;
    add("92", polyline ? "2" : "0");
    std::size_t at = 0;
    const auto word = [&] {
      const std::size_t end = pairs.find(' ', at);
      const std::string found = pairs.substr(at, end - at);
      at = end == std::string::npos ? pairs.size() : end + 1;
      return found;
    };
    while (at < pairs.size()) {
      const std::string code = word();
      add(code, word());
    }
    add("97", "0");
    return *this;
  }
  [[nodiscard]] std::string pairs() const {
    return "100\nAcDbEntity\n100\nAcDbHatch\n10\n0\n20\n0\n30\n0\n2\nSOLID\n70\n1\n71\n0\n91\n"
           + std::to_string(loops_) + "\n" + body_ + "75\n" + std::to_string(style_)
           + "\n76\n1\n98\n1\n10\n5\n20\n5\n";
  }
  [[nodiscard]] double area() const {
    const auto drawing =
        Drawing::parse("0\nSECTION\n2\nENTITIES\n0\nHATCH\n" + pairs() + "0\nENDSEC\n0\nEOF\n", "sample.dxf");
    return hatchArea(database::Lens(*database::resolve(drawing->entities()[0])));
  }

 private:
  void add(const std::string& code, const std::string& value) { body_ += code + "\n" + value + "\n"; }

  int style_ = 0;
  int loops_ = 0;
  std::string body_;
};

const std::string square = "72 0 73 1 93 4 10 0 20 0 10 10 20 0 10 10 20 10 10 0 20 10";

TEST(HatchBoundary, APolylineBoundsItsArea) {
  EXPECT_NEAR(100, Hatch().loop(true, square).area(), 1e-12);
}

TEST(HatchBoundary, BulgesOfAPolylineAreArcs) {
  EXPECT_NEAR(pi * 4, Hatch().loop(true, "72 1 73 1 93 2 10 -2 20 0 42 1 10 2 20 0 42 1").area(), 1e-12);
}

TEST(HatchBoundary, AVertexMayLackItsBulge) {
  EXPECT_NEAR(pi * 2, Hatch().loop(true, "72 1 73 1 93 2 10 -2 20 0 42 1 10 2 20 0").area(), 1e-12);
}

TEST(HatchBoundary, LinesAndArcsBoundTogether) {
  EXPECT_NEAR(
      pi / 2,
      Hatch().loop(false, "93 2 72 2 10 0 20 0 40 1 50 0 51 180 73 1 72 1 10 -1 20 0 11 1 21 0").area(),
      1e-12);
}

TEST(HatchBoundary, AnglesOfAClockwiseArcAreMeasuredClockwise) {
  // From (-1, 0) over the top to (1, 0): clockwise from 180 to 360.
  EXPECT_NEAR(
      pi / 2,
      Hatch().loop(false, "93 2 72 2 10 0 20 0 40 1 50 180 51 360 73 0 72 1 10 1 20 0 11 -1 21 0").area(),
      1e-12);
}

TEST(HatchBoundary, AFullCircleAndAFullEllipseAreLoopsOfTheirOwn) {
  EXPECT_NEAR(pi * 9, Hatch().loop(false, "93 1 72 2 10 5 20 5 40 3 50 0 51 360 73 1").area(), 1e-12);
  EXPECT_NEAR(pi * 3 * 1.5,
              Hatch().loop(false, "93 1 72 3 10 5 20 5 11 0 21 3 40 0.5 50 0 51 360 73 0").area(), 1e-12);
}

TEST(HatchBoundary, EndsOfAnEllipseAreAnglesOrParametersAsTheyMeet) {
  // A quarter of an ellipse with the half axes 4 and 2, to the point at the parameter of 60 degrees, which stands at
  // the angle whose tangent is half the one of 60 degrees.
  const double parameter = pi / 3;
  const double angle = std::atan(0.5 * std::tan(parameter)) / pi * 180;
  const std::string end =
      dxf::formatReal(4 * std::cos(parameter)) + " 20 " + dxf::formatReal(2 * std::sin(parameter));
  const std::string ellipse = "72 3 10 0 20 0 11 4 21 0 40 0.5 50 0 51 ";
  const std::string sides = " 73 1 72 1 10 " + end + " 11 0 21 0 72 1 10 0 20 0 11 4 21 0";
  const double expected = 4 * 2 * parameter / 2;
  EXPECT_NEAR(expected, Hatch().loop(false, "93 3 " + ellipse + dxf::formatReal(angle) + sides).area(), 1e-9);
  EXPECT_NEAR(expected, Hatch().loop(false, "93 3 " + ellipse + "60" + sides).area(), 1e-9);
}

TEST(HatchBoundary, SplinesAreReadWithTheirKnotsAndWeights) {
  const std::string arc =
      "72 4 94 2 73 1 74 0 95 6 96 3 40 0 40 0 40 0 40 1 40 1 40 1 "
      "10 1 20 0 42 1 10 1 20 1 42 0.70710678118654752 10 0 20 1 42 1";
  const std::string sides = " 72 1 10 0 20 1 11 0 21 0 72 1 10 0 20 0 11 1 21 0";
  EXPECT_NEAR(pi / 4, Hatch().loop(false, "93 3 " + arc + sides).area(), 1e-11);
  EXPECT_NEAR(
      pi / 4,
      Hatch().loop(false, "93 3 " + arc + " 97 2 11 1 21 0 11 0 21 1 12 0 22 1 13 -1 23 0" + sides).area(),
      1e-11)
      << "newer drawings add fit points";
}

TEST(HatchBoundary, IslandsGoByTheStyle) {
  const std::string inner = "93 1 72 2 10 5 20 5 40 3 50 0 51 360 73 1";
  const std::string innermost = "93 1 72 2 10 5 20 5 40 1 50 0 51 360 73 1";
  const auto area = [&](int style) {
    return Hatch().style(style).loop(true, square).loop(false, inner).loop(false, innermost).area();
  };
  EXPECT_NEAR(100 - 9 * pi + pi, area(0), 1e-11);
  EXPECT_NEAR(100 - 9 * pi, area(1), 1e-11);
  EXPECT_NEAR(100, area(2), 1e-11);
}

TEST(HatchBoundary, ABoundaryThatIsCutShortIsRefused) {
  EXPECT_THROW(static_cast<void>(Hatch().loop(true, "72 0 73 1 93 4 10 0 20 0").area()), BoundaryError);
  EXPECT_THROW(static_cast<void>(Hatch().loop(true, "72 0 73 1 93 400000000 10 0 20 0").area()),
               BoundaryError);
  EXPECT_THROW(static_cast<void>(Hatch().loop(true, "72 0 73 1 93 -4 10 0 20 0").area()), BoundaryError);
  EXPECT_THROW(static_cast<void>(Hatch().loop(false, "93 2 72 1 10 0 20 0 11 1 21 0").area()), BoundaryError);
  EXPECT_THROW(static_cast<void>(Hatch().loop(false, "93 1 72 1 10 0 20 x 11 1 21 0").area()), BoundaryError);
  EXPECT_THROW(static_cast<void>(Hatch().loop(false, "93 1 72 9 10 0 20 0").area()), BoundaryError);
  EXPECT_THROW(
      static_cast<void>(
          Hatch()
              .loop(false, "93 1 72 4 94 2 73 0 74 0 95 2 96 3 40 0 40 1 10 0 20 0 10 1 20 1 10 2 20 0")
              .area()),
      BoundaryError);
}

}  // namespace
}  // namespace velt::automation
