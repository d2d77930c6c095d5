#include "embedded/automation/hatches/HatchPattern.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

class HatchPatternTest : public ::testing::Test {
 protected:
  Subject hatch(Pairs lines) {
    drawing = Sample().entity("HATCH", lines).open();
    return subjectOf(*drawing);
  }
  [[nodiscard]] double at(int code, std::size_t occurrence = 0) const {
    return *drawing->view(recordOf(*drawing, 0)).real(code, "AcDbHatch", occurrence);
  }
  std::unique_ptr<Drawing> drawing;
};

const Pairs twoFamilies = {{100, "AcDbHatch"}, {10, "0.0"},  {40, "9.0"}, {78, "2"},   {53, "350.0"},
                           {43, "1.0"},        {44, "2.0"},  {45, "3.0"}, {46, "0.0"}, {79, "2"},
                           {49, "4.0"},        {49, "-1.0"}, {53, "0.0"}, {43, "0.0"}, {44, "0.0"},
                           {45, "0.0"},        {46, "5.0"},  {79, "0"}};

TEST_F(HatchPatternTest, EveryFamilyTurnsAboutTheOrigin) {
  changePatternLines(hatch(twoFamilies), {1, 1}, pi / 2, 1);
  EXPECT_NEAR(80, at(53), 1e-9);
  EXPECT_NEAR(0, at(43), 1e-12);
  EXPECT_NEAR(1, at(44), 1e-12);
  EXPECT_NEAR(0, at(45), 1e-12);
  EXPECT_NEAR(3, at(46), 1e-12);
  EXPECT_EQ(90, at(53, 1));
  EXPECT_NEAR(-5, at(45, 1), 1e-12);
  EXPECT_EQ(4, at(49));
}

TEST_F(HatchPatternTest, EveryFamilyIsScaledFromTheOrigin) {
  changePatternLines(hatch(twoFamilies), {1, 1}, 0, 2);
  EXPECT_EQ(
      "100=AcDbHatch 10=0.0 40=9.0 78=2 53=350.0 43=1.0 44=3.0 45=6.0 46=0.0 79=2 49=8.0 49=-2.0 "
      "53=0.0 43=-1.0 44=-1.0 45=0.0 46=10.0 79=0",
      pairsOf(*drawing));
}

TEST_F(HatchPatternTest, LinesThatAreIncompleteAreRefused) {
  EXPECT_EQ(E_FAIL, refusalOf([&] {
              changePatternLines(hatch({{100, "AcDbHatch"}, {53, "0.0"}, {43, "0.0"}}), {0, 0}, 1, 1);
            }));
  EXPECT_EQ(E_FAIL, refusalOf([&] {
              changePatternLines(
                  hatch({{100, "AcDbHatch"}, {53, "0.0"}, {43, "x"}, {44, "0.0"}, {45, "0.0"}, {46, "1.0"}}),
                  {0, 0}, 1, 1);
            }));
}

// --- filling ---

// Horizontal lines.
struct Patterned {
  std::string name, scale, step, angle = "0.0", kind = "1";
};

Sample& add(Sample& sample, const Patterned& lines) {
  return sample.entity("HATCH", {{2, lines.name},
                                 {70, "0"},
                                 {76, lines.kind},
                                 {52, lines.angle},
                                 {41, lines.scale},
                                 {77, "0"},
                                 {78, "1"},
                                 {53, "0.0"},
                                 {43, "0.0"},
                                 {44, "0.0"},
                                 {45, "0.0"},
                                 {46, lines.step},
                                 {79, "0"}});
}

class FillingTest : public HatchPatternTest {
 protected:
  void open(const Patterned& lines) {
    Sample sample;
    drawing = add(sample, lines).open();
  }
  // The distance of the lines of the first hatch once it is filled with plain ones.
  double stepAfterFilling() {
    fillWithPattern(subjectOf(*drawing), L"LINE");
    return at(46);
  }

  Sample metric = Sample().header("$MEASUREMENT", 70, "1");
};

TEST_F(FillingTest, PatternsAreInInchesUnlessTheDrawingSaysOtherwise) {
  hatch({{2, "SOLID"}, {70, "1"}, {76, "1"}});
  EXPECT_EQ(0.125, stepAfterFilling());
  drawing = metric.entity("HATCH", {{2, "SOLID"}, {70, "1"}, {76, "1"}}).open();
  EXPECT_EQ(3.175, stepAfterFilling());
}

TEST_F(FillingTest, PatternsAreAsLargeAsThoseThatAreThereAlready) {
  open({"NET", "2.0", "6.35"});
  EXPECT_EQ(6.35, stepAfterFilling()) << "its own";
  drawing = add(metric.entity("HATCH", {{2, "SOLID"}, {70, "1"}, {76, "1"}}), {"NET", "2.0", "0.25"}).open();
  EXPECT_EQ(0.125, stepAfterFilling()) << "that of another hatch";
}

TEST_F(FillingTest, WhatIsKnownOfOtherHatchesHoldsUntilTheNextEdit) {
  const Pairs solid = {{2, "SOLID"}, {70, "1"}, {76, "1"}};
  Sample sample;
  drawing = add(sample.entity("HATCH", solid).entity("HATCH", solid).entity("HATCH", solid),
                {"NET", "1.0", "3.175"})
                .open();
  const auto stepOf = [&](std::size_t number) {
    return *drawing->view(recordOf(*drawing, number)).real(46, "AcDbHatch");
  };
  fillWithPattern(subjectOf(*drawing, 0), L"LINE");
  fillWithPattern(subjectOf(*drawing, 1), L"LINE");
  EXPECT_EQ(3.175, stepOf(0));
  EXPECT_EQ(3.175, stepOf(1));
  for (const std::size_t other : {0U, 1U, 3U})
    Editor(*drawing, recordOf(*drawing, other)).real(46, "AcDbHatch", 0.125);
  fillWithPattern(subjectOf(*drawing, 2), L"LINE");
  EXPECT_EQ(0.125, stepOf(2));
}

TEST_F(FillingTest, APatternOfTheDrawingIsFoundAgainForEachHatchThatGetsIt) {
  const Pairs solid = {{2, "SOLID"}, {70, "1"}, {76, "1"}};
  Sample sample;
  drawing =
      add(sample.entity("HATCH", solid).entity("HATCH", solid), {"WAVES", "1.0", "3.0", "0.0", "2"}).open();
  for (const std::size_t number : {0U, 1U}) {
    fillWithPattern(subjectOf(*drawing, number), L"Waves");
    EXPECT_EQ(3, drawing->view(recordOf(*drawing, number)).real(46, "AcDbHatch"));
  }
  fillWithPattern(subjectOf(*drawing, 2), L"LINE");
  EXPECT_EQ(E_INVALIDARG, refusalOf([&] { fillWithPattern(subjectOf(*drawing, 1), L"other"); }));
}

TEST_F(FillingTest, APatternWithoutAScaleHasTheScaleOne) {
  Sample sample;
  drawing = sample.entity("HATCH", {{2, "SOLID"}, {70, "1"}, {76, "1"}})
                .entity("HATCH", {{2, "WAVES"},
                                  {70, "0"},
                                  {76, "2"},
                                  {78, "1"},
                                  {53, "0.0"},
                                  {43, "0.0"},
                                  {44, "0.0"},
                                  {45, "0.0"},
                                  {46, "2.0"},
                                  {79, "0"}})
                .open();
  fillWithPattern(subjectOf(*drawing), L"Waves");
  EXPECT_EQ(2, at(46));
}

TEST_F(FillingTest, APatternLiesAsTheHatchIsTurned) {
  open({"NET", "2.0", "0.25", "90.0"});
  fillWithPattern(subjectOf(*drawing), L"ANSI31");
  EXPECT_EQ(135, at(53));
  EXPECT_NEAR(-0.25 / std::sqrt(2), at(45), 1e-12);
  EXPECT_NEAR(-0.25 / std::sqrt(2), at(46), 1e-12);
  EXPECT_EQ(90, at(52));
}

TEST_F(FillingTest, APatternOfTheDrawingIsTakenFromTheHatchThatHasIt) {
  Sample sample;
  drawing = add(sample, {"NET", "1.0", "0.125"})
                .entity("HATCH", {{2, "WAVES"},
                                  {70, "0"},
                                  {76, "2"},
                                  {52, "0.0"},
                                  {41, "0.5"},
                                  {77, "0"},
                                  {78, "1"},
                                  {53, "10.0"},
                                  {43, "1.0"},
                                  {44, "2.0"},
                                  {45, "3.0"},
                                  {46, "4.0"},
                                  {79, "2"},
                                  {49, "5.0"},
                                  {49, "-1.0"}})
                .open();
  fillWithPattern(subjectOf(*drawing), L"waves");
  EXPECT_EQ(
      "2=WAVES 70=0 76=2 52=0.0 41=1.0 77=0 78=1 53=10.0 43=2.0 44=4.0 45=6.0 46=8.0 79=2 49=10.0 49=-2.0",
      pairsOf(*drawing));
}

TEST_F(FillingTest, PlainLinesKeepTheirDistance) {
  Sample sample;
  add(sample, {"NET", "5.0", "0.625"});
  drawing = add(sample, {"U", "2.0", "2.0", "0.0", "0"}).open();
  fillWithPattern(subjectOf(*drawing), L"U");
  EXPECT_EQ(2, at(41));
  EXPECT_EQ(2, at(46));
  fillWithPattern(subjectOf(*drawing), L"NET");
  EXPECT_EQ(1, at(41)) << "a distance is not a scale";
}

TEST_F(FillingTest, WhatOnlyAreasWithoutLinesHaveGoes) {
  hatch({{2, "SOLID"},
         {70, "1"},
         {76, "1"},
         {98, "0"},
         {450, "0"},
         {451, "0"},
         {463, "0.0"},
         {63, "5"},
         {470, ""}});
  fillWithPattern(subjectOf(*drawing), L"LINE");
  EXPECT_EQ("2=LINE 70=0 76=1 52=0.0 41=1.0 77=0 78=1 53=0.0 43=0.0 44=0.0 45=0.0 46=0.125 79=0 98=0",
            pairsOf(*drawing));
}

TEST_F(FillingTest, AHatchWithoutPlaceForItsPatternIsRefused) {
  EXPECT_EQ(E_FAIL, refusalOf([&] { fillWithPattern(hatch({{2, "SOLID"}, {70, "1"}}), L"LINE"); }));
  EXPECT_EQ(E_FAIL, refusalOf([&] { crossPlainLines(hatch({{76, "0"}, {78, "0"}}), true); }));
}

TEST_F(HatchPatternTest, AHatchThatStoresNoLinesStaysAsItIs) {
  changePatternLines(hatch({{100, "AcDbHatch"}, {78, "0"}}), {0, 0}, 1, 2);
  EXPECT_EQ("100=AcDbHatch 78=0", pairsOf(*drawing));
}

}  // namespace
}  // namespace velt::automation
