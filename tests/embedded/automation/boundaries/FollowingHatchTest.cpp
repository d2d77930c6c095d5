#include "embedded/automation/boundaries/FollowingHatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "embedded/automation/model/RefusalLog.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using CodeList = std::vector<std::pair<int, std::string>>;

std::string writtenCodes(const CodeList& pairs) {
  std::string text;
  for (const auto& [code, value] : pairs)
    text += std::to_string(code) + "\n" + value + "\n";
  return text;
}

// "72 0 73 1 ...": codes and values, parted by blanks.
CodeList codesIn(const std::string& words) {
  CodeList list;
  std::size_t at = 0;
  const auto word = [&] {
    const std::size_t end = std::min(words.find(' ', at), words.size());
    const std::string found = words.substr(at, end - at);
    at = end + 1;
    return found;
  };
  while (at < words.size()) {
    const int code = std::stoi(word());
    list.emplace_back(code, word());
  }
  return list;
}

// An entity that a hatch follows, and the hatch, whose loops are given as they follow their kind (92).
class FollowingHatchTest : public ::testing::Test {
 protected:
  FollowingHatchTest() { makeRegistry(); }

  void open(const std::string& type, const std::string& source, const std::vector<std::string>& loops,
            const std::string& others = {}, const std::string& members = {}) {
    std::string paths;
    for (const std::string& loop : loops)
      paths += writtenCodes(codesIn(loop));
    const std::string entity =
        "0\n" + type + "\n5\nA\n102\n{ACAD_REACTORS\n330\nB\n102\n}\n8\n0\n" + writtenCodes(codesIn(source));
    const std::string hatch =
        "0\nHATCH\n5\nB\n8\n0\n100\nAcDbHatch\n10\n0\n20\n0\n30\n0\n2\nSOLID\n70\n1\n71\n1\n91\n"
        + std::to_string(loops.size()) + "\n" + paths + "75\n0\n76\n1\n98\n0\n";
    drawing = Sample().layer("0").append(entity + members + hatch + others).open();
  }
  Bound source() const { return Bound(*drawing, 0); }
  Bound hatch() const { return Bound(*drawing, 1); }
  // What the hatch stores of its loops.
  std::string loops() const {
    const std::string all = pairsOf(*drawing, recordOf(*drawing, 1));
    const std::size_t from = all.find("92=");
    return all.substr(from, all.find(" 75=") - from);
  }
  // Changes nothing, and says why.
  void expectRefused(const Bound& entity, const wchar_t* property, double value, const wchar_t* words) {
    const std::string before = drawing->document().bytes();
    const Answer answer = entity.put(property, number(value));
    EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
    EXPECT_NE(std::wstring::npos, answer.description.find(words))
        << std::string(answer.description.begin(), answer.description.end());
    EXPECT_EQ(before, drawing->document().bytes());
  }

  std::unique_ptr<Drawing> drawing;
};

const std::string circleSource = "100 AcDbCircle 10 3 20 4 30 0 40 2";
const std::string loopOfCircle = "92 1 93 1 72 2 10 3 20 4 40 2 50 0 51 360 73 1 97 1 330 A";
const std::string loopOfHalves = "92 7 72 1 73 1 93 2 10 1 20 4 42 1 10 5 20 4 42 1 97 1 330 A";
const std::string squareSource = "100 AcDbPolyline 90 4 70 1 10 0 20 0 10 4 20 0 10 4 20 4 10 0 20 4";
const std::string loopOfSquare = "92 7 72 0 73 1 93 4 10 0 20 0 10 4 20 0 10 4 20 4 10 0 20 4 97 1 330 A";
constexpr const wchar_t* wouldNotClose = L"open, cross itself or leave its plane";
constexpr const wchar_t* notMadeOfWholePieces = L"whole pieces";

TEST_F(FollowingHatchTest, FollowsACircle) {
  open("CIRCLE", circleSource, {loopOfCircle});
  EXPECT_EQ(S_OK, source().put(L"Radius", number(5)).result);
  EXPECT_EQ("92=1 93=1 72=2 10=3 20=4 40=5.0 50=0 51=360 73=1 97=1 330=A", loops());
  EXPECT_EQ(S_OK, source().putElement(L"Center", 0, -1));
  EXPECT_EQ("92=1 93=1 72=2 10=-1.0 20=4 40=5.0 50=0 51=360 73=1 97=1 330=A", loops());
  EXPECT_NEAR(source().real(L"Area"), hatch().real(L"Area"), 1e-12);
  EXPECT_TRUE(hatch().flag(L"Associative"));
}

TEST_F(FollowingHatchTest, FollowsACircleThatIsStoredAsBulges) {
  open("CIRCLE", circleSource, {loopOfHalves});
  EXPECT_EQ(S_OK, source().put(L"Radius", number(5)).result);
  EXPECT_EQ("92=7 72=1 73=1 93=2 10=-2.0 20=4 42=1 10=8.0 20=4 42=1 97=1 330=A", loops());
  EXPECT_NEAR(source().real(L"Area"), hatch().real(L"Area"), 1e-12);
}

TEST_F(FollowingHatchTest, FollowsACircleWhoseBulgesMeetAboveAndBelow) {
  open("CIRCLE", circleSource, {"92 7 72 1 73 1 93 2 10 3 20 2 42 1 10 3 20 6 42 1 97 1 330 A"});
  EXPECT_EQ(S_OK, source().put(L"Radius", number(5)).result);
  EXPECT_EQ("92=7 72=1 73=1 93=2 10=3 20=-1.0 42=1 10=3 20=9.0 42=1 97=1 330=A", loops());
}

TEST_F(FollowingHatchTest, FollowsACircleThatIsNotItsFirstLoop) {
  const std::string triangle = "92 7 72 0 73 1 93 3 10 20 20 0 10 24 20 0 10 24 20 4 97 0";
  open("CIRCLE", circleSource, {triangle, loopOfCircle});
  EXPECT_EQ(S_OK, source().put(L"Radius", number(5)).result);
  EXPECT_EQ(
      "92=7 72=0 73=1 93=3 10=20 20=0 10=24 20=0 10=24 20=4 97=0 "
      "92=1 93=1 72=2 10=3 20=4 40=5.0 50=0 51=360 73=1 97=1 330=A",
      loops());
}

TEST_F(FollowingHatchTest, FollowsAnEllipse) {
  open("ELLIPSE", "100 AcDbEllipse 10 1 20 2 30 0 11 0 21 4 31 0 40 0.5 41 0 42 6.283185307179586",
       {"92 1 93 1 72 3 10 1 20 2 11 0 21 4 40 0.5 50 0 51 360 73 1 97 1 330 A"});
  EXPECT_EQ(S_OK, source().put(L"RadiusRatio", number(0.25)).result);
  EXPECT_EQ(S_OK, source().put(L"MajorRadius", number(8)).result);
  EXPECT_EQ("92=1 93=1 72=3 10=1 20=2 11=0 21=8.0 40=0.125 50=0 51=360 73=1 97=1 330=A", loops());
  EXPECT_NEAR(source().real(L"Area"), hatch().real(L"Area"), 1e-12);
}

TEST_F(FollowingHatchTest, FollowsAPolyline) {
  open("LWPOLYLINE", squareSource, {loopOfSquare});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 8, 6)) << "x of the third vertex";
  EXPECT_EQ("92=7 72=0 73=1 93=4 10=0 20=0 10=4 20=0 10=6.0 20=4 10=0 20=4 97=1 330=A", loops());
  EXPECT_EQ(source().real(L"Area"), hatch().real(L"Area"));
}

TEST_F(FollowingHatchTest, FollowsAPolylineWhoseLoopBeginsElsewhereAndRunsTheOtherWay) {
  open("LWPOLYLINE", squareSource,
       {"92 1 93 4 72 1 10 4 20 4 11 4 21 0 72 1 10 4 20 0 11 0 21 0 72 1 10 0 20 0 11 0 21 4 72 1 10 0 20 4 "
        "11 4 21 4 "
        "97 1 330 A"});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 8, 6));
  EXPECT_EQ(
      "92=1 93=4 72=1 10=6.0 20=4 11=4 21=0 72=1 10=4 20=0 11=0 21=0 72=1 10=0 20=0 11=0 21=4 "
      "72=1 10=0 20=4 11=6.0 21=4 97=1 330=A",
      loops());
  EXPECT_EQ(source().real(L"Area"), hatch().real(L"Area"));
}

TEST_F(FollowingHatchTest, FollowsTheArcsOfAPolyline) {
  const std::string pondSource = "100 AcDbPolyline 90 2 70 1 10 0 20 0 42 1 10 4 20 0";
  open("LWPOLYLINE", pondSource,
       {"92 1 93 2 72 2 10 2 20 0 40 2 50 180 51 360 73 1 72 1 10 4 20 0 11 0 21 0 97 1 330 A"});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 4, 8));
  EXPECT_EQ("92=1 93=2 72=2 10=4.0 20=0 40=4.0 50=180 51=0.0 73=1 72=1 10=8.0 20=0 11=0 21=0 97=1 330=A",
            loops());
  EXPECT_NEAR(8 * pi, hatch().real(L"Area"), 1e-12);
  open("LWPOLYLINE", pondSource,
       {"92 1 93 2 72 2 10 2 20 0 40 2 50 0 51 180 73 0 72 1 10 0 20 0 11 4 21 0 97 1 330 A"});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 4, 8));
  EXPECT_EQ("92=1 93=2 72=2 10=4.0 20=0 40=4.0 50=0 51=180 73=0 72=1 10=0 20=0 11=8.0 21=0 97=1 330=A",
            loops())
      << "clockwise, with its angles measured so";
  open("LWPOLYLINE", pondSource,
       {"92 1 93 2 72 2 10 2 20 0 40 2 50 180 51 360 73 1 72 1 10 4 20 0 11 0 21 0 97 1 330 A"});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 5, 4)) << "aslant, so that both angles change";
  EXPECT_EQ(
      "92=1 93=2 72=2 10=2 20=2.0 40=2.8284271247461903 50=225.0 51=45.0 73=1 72=1 10=4 20=4.0 11=0 21=0 "
      "97=1 330=A",
      loops());
}

TEST_F(FollowingHatchTest, FollowsAPolylineWithVerticesOfTheirOwn) {
  const auto vertex = [](const std::string& place) { return "0\nVERTEX\n" + writtenCodes(codesIn(place)); };
  open("POLYLINE", "66 1 10 0 20 0 30 0 70 1",
       {"92 7 72 0 73 1 93 3 10 0 20 0 10 4 20 0 10 4 20 4 97 1 330 A"}, {},
       vertex("10 0 20 0 30 0") + vertex("10 4 20 0 30 0") + vertex("10 4 20 4 30 0") + "0\nSEQEND\n");
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 0, -2)) << "x of the first vertex";
  EXPECT_EQ("92=7 72=0 73=1 93=3 10=-2.0 20=0 10=4 20=0 10=4 20=4 97=1 330=A", loops());
  EXPECT_EQ(source().real(L"Area"), hatch().real(L"Area"));
}

TEST_F(FollowingHatchTest, FollowsOneOfTwoLoopsAndLeavesTheOther) {
  const std::string other = "92 18 72 0 73 1 93 3 10 1 20 1 10 2 20 1 10 1 20 2 97 0";
  open("LWPOLYLINE", squareSource, {loopOfSquare, other});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 8, 6));
  EXPECT_NE(std::string::npos, loops().find("92=18 72=0 73=1 93=3 10=1 20=1 10=2 20=1 10=1 20=2 97=0"));
  EXPECT_EQ(20 - 0.5, hatch().real(L"Area"));
}

TEST_F(FollowingHatchTest, KeepsWhereAnOpenPolylineMeetsAnotherEntity) {
  // Three sides of the square, and a line.
  const std::string open3 = "100 AcDbPolyline 90 4 70 0 10 0 20 0 10 4 20 0 10 4 20 4 10 0 20 4";
  const std::string both = loopOfSquare.substr(0, loopOfSquare.find("97 1")) + "97 2 330 A 330 C";
  open("LWPOLYLINE", open3, {both});
  EXPECT_EQ(S_OK, source().putElement(L"Vertex", 8, 6)) << "between the ends";
  EXPECT_EQ(20, hatch().real(L"Area"));
  expectRefused(source(), L"Elevation", 3, wouldNotClose);
  const std::string before = drawing->document().bytes();
  EXPECT_EQ(E_FAIL, source().putElement(L"Vertex", 0, 1)) << "where the line begins";
  EXPECT_EQ(before, drawing->document().bytes());
}

TEST_F(FollowingHatchTest, FollowsTheHeightOfItsOnlyEntity) {
  open("LWPOLYLINE", squareSource, {loopOfSquare});
  EXPECT_EQ(S_OK, source().put(L"Elevation", number(3)).result);
  EXPECT_EQ(3, hatch().real(L"Elevation"));
}

TEST_F(FollowingHatchTest, WouldRatherKeepItsEntityThanCrossItself) {
  open("LWPOLYLINE", squareSource, {loopOfSquare});
  const std::string before = drawing->document().bytes();
  const RefusalLog log;
  EXPECT_EQ(E_FAIL, source().putElement(L"Vertex", 9, -6)) << "y of the third vertex";
  EXPECT_NE(std::wstring::npos, log.of(drawing->entities()[0]).find(wouldNotClose));
  EXPECT_EQ(before, drawing->document().bytes());
}

TEST_F(FollowingHatchTest, DoesNotFollowWhereItsBoundaryWasCutFromTheEntity) {
  open("CIRCLE", circleSource, {"92 7 72 1 73 1 93 2 10 1 20 4 42 1 10 5 20 4 42 0 97 1 330 A"});
  expectRefused(source(), L"Radius", 5, notMadeOfWholePieces);
  open("LWPOLYLINE", squareSource,
       {"92 7 72 0 73 1 93 4 10 0 20 0 10 3 20 0 10 4 20 4 10 0 20 4 97 1 330 A"});
  expectRefused(source(), L"Elevation", 5, notMadeOfWholePieces);
}

TEST_F(FollowingHatchTest, DoesNotFollowWhatItDoesNotName) {
  open("CIRCLE", circleSource, {"92 1 93 1 72 2 10 3 20 4 40 2 50 0 51 360 73 1 97 1 330 F"});
  expectRefused(source(), L"Radius", 5, notMadeOfWholePieces);
}

TEST_F(FollowingHatchTest, DoesNotFollowALineOfWhichBothEndsMeetOthers) {
  open("LINE", "100 AcDbLine 10 0 20 0 30 0 11 4 21 0 31 0",
       {"92 1 93 3 72 1 10 0 20 0 11 4 21 0 72 1 10 4 20 0 11 4 21 4 72 1 10 4 20 4 11 0 21 0 97 3 330 A 330 "
        "C 330 D"});
  EXPECT_EQ(E_FAIL, source().putElement(L"StartPoint", 0, 1));
}

TEST_F(FollowingHatchTest, IsOneStepToUndoWithItsEntity) {
  open("CIRCLE", circleSource, {loopOfCircle});
  const std::string before = drawing->document().bytes();
  database::Changes changes;
  drawing->record(changes, [&] { EXPECT_EQ(S_OK, source().put(L"Radius", number(5)).result); });
  EXPECT_NE(before, drawing->document().bytes());
  const database::Changes again = drawing->undo(std::move(changes));
  EXPECT_EQ(before, drawing->document().bytes());
}

TEST_F(FollowingHatchTest, StaysWhereNothingChanges) {
  open("CIRCLE", circleSource, {loopOfCircle});
  const std::string before = drawing->document().bytes();
  EXPECT_EQ(S_OK, source().put(L"Radius", number(2)).result);
  EXPECT_EQ(before, drawing->document().bytes());
}

TEST_F(FollowingHatchTest, LetsGoWhereAssociationsAreToBeBroken) {
  open("CIRCLE", circleSource, {loopOfCircle});
  drawing->setBreaksAssociations(true);
  EXPECT_EQ(S_OK, source().put(L"Radius", number(5)).result);
  EXPECT_NEAR(4 * pi, hatch().real(L"Area"), 1e-12);
  EXPECT_FALSE(hatch().flag(L"Associative"));
}

// Squares that touch at their corners, each a loop, and a polyline that goes along the right of all and back along the left,
// so that hardly any two of its segments are neighbors in a loop.
std::pair<std::string, std::vector<std::string>> chainOfSquares(int count) {
  const auto corner = [](int x, int y) { return " 10 " + std::to_string(x) + " 20 " + std::to_string(y); };
  std::string outline = "100 AcDbPolyline 90 " + std::to_string(4 * count) + " 70 1";
  std::vector<std::string> loops;
  for (int i = 0; i < count; ++i) {
    outline += corner(i, i) + corner(i + 1, i);
    loops.push_back("92 7 72 0 73 1 93 4" + corner(i, i) + corner(i + 1, i) + corner(i + 1, i + 1)
                    + corner(i, i + 1) + " 97 1 330 A");
  }
  for (int i = count; i > 0; --i)
    outline += corner(i, i) + corner(i - 1, i);
  return {outline, loops};
}

TEST_F(FollowingHatchTest, FollowsAnEntityWhosePiecesAreScatteredOverManyLoops) {
  const auto [outline, loops] = chainOfSquares(50);
  open("LWPOLYLINE", outline, loops);
  EXPECT_EQ(S_OK, source().put(L"Elevation", number(1)).result);
  EXPECT_EQ(1, hatch().real(L"Elevation"));
}

TEST_F(FollowingHatchTest, DoesNotLookForThePiecesWithoutEnd) {
  const auto [outline, loops] = chainOfSquares(2'000);
  open("LWPOLYLINE", outline, loops);
  expectRefused(source(), L"Elevation", 1, notMadeOfWholePieces);
}

}  // namespace
}  // namespace velt::automation
