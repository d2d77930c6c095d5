#include "embedded/automation/texts/AttachedTexts.h"

#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

class AttachedTextsTest : public ::testing::Test {
 protected:
  Subject reference(Pairs attribute, Pairs insert = {{66, "1"}, {10, "1.0"}, {20, "1.0"}}) {
    drawing = Sample().entity("INSERT", insert).entity("ATTRIB", attribute).entity("SEQEND").open();
    return subjectOf(*drawing);
  }
  [[nodiscard]] std::string attribute() const { return pairsOf(*drawing, recordOf(*drawing, 0) + 1); }
  std::unique_ptr<Drawing> drawing;
};

TEST_F(AttachedTextsTest, AReferenceWithoutAttributesHasNone) {
  drawing = Sample().entity("INSERT", {{10, "1.0"}}).open();
  EXPECT_FALSE(hasAttachedTexts(subjectOf(*drawing)));
  moveAttachedTexts(subjectOf(*drawing), {1, 2, 3});
  EXPECT_EQ(0U, drawing->revision());
  EXPECT_TRUE(hasAttachedTexts(reference({{1, "x"}})));
}

TEST_F(AttachedTextsTest, TheyMoveWithTheirSecondPointWhereItCounts) {
  moveAttachedTexts(reference({{10, "1.0"}, {20, "2.0"}, {11, "5.0"}, {21, "6.0"}}), {1, 2, 0});
  EXPECT_EQ("10=2.0 20=4.0 11=5.0 21=6.0", attribute()) << "justified left";
  moveAttachedTexts(reference({{10, "1.0"}, {20, "2.0"}, {72, "1"}, {11, "5.0"}, {21, "6.0"}}), {1, 2, 0});
  EXPECT_EQ("10=2.0 20=4.0 72=1 11=6.0 21=8.0", attribute());
  moveAttachedTexts(reference({{10, "1.0"}, {20, "2.0"}, {11, "5.0"}, {21, "6.0"}, {74, "2"}}), {1, 2, 0});
  EXPECT_EQ("10=2.0 20=4.0 11=6.0 21=8.0 74=2", attribute());
}

TEST_F(AttachedTextsTest, TheyMoveInTheirOwnPlane) {
  moveAttachedTexts(reference({{10, "1.0"}, {20, "2.0"}, {30, "3.0"}, {210, "0"}, {220, "0"}, {230, "-1"}}),
                    {1, 2, 4});
  EXPECT_EQ("10=0.0 20=4.0 30=-1.0 210=0 220=0 230=-1", attribute());
}

TEST_F(AttachedTextsTest, TheyTurnAboutThePoint) {
  turnAttachedTexts(reference({{10, "2.0"}, {20, "1.0"}, {30, "7.0"}, {50, "300.0"}}), {1, 1, 0}, pi / 2);
  const database::Lens lens(*drawing, recordOf(*drawing, 0) + 1);
  const database::Point point = lens.point(10, "*");
  EXPECT_NEAR(1, point[0], 1e-12);
  EXPECT_NEAR(2, point[1], 1e-12);
  EXPECT_EQ(7, point[2]);
  EXPECT_NEAR(30, lens.real(50, "*", 0), 1e-9);
}

TEST_F(AttachedTextsTest, OneInAnotherPlaneCannotTurn) {
  const Subject tilted = reference({{10, "2.0"}, {20, "1.0"}, {210, "1"}, {220, "0"}, {230, "0"}});
  EXPECT_EQ(E_FAIL, refusalOf([&] { turnAttachedTexts(tilted, {1, 1, 0}, 1); }));
}

TEST_F(AttachedTextsTest, OneOfSeveralLinesCannotFollow) {
  for (const Pairs& lines : {Pairs{{100, "AcDbText"}, {10, "1.0"}, {101, "Embedded Object"}, {10, "1.0"}},
                             Pairs{{100, "AcDbText"}, {10, "1.0"}, {100, "AcDbXrecord"}, {280, "1"}},
                             Pairs{{100, "AcDbText"}, {10, "1.0"}, {100, "AcDbAttribute"}, {71, "2"}}}) {
    const Subject made = reference(lines);
    EXPECT_EQ(E_FAIL, refusalOf([&] { moveAttachedTexts(made, {1, 0, 0}); }));
    EXPECT_EQ(E_FAIL, refusalOf([&] { turnAttachedTexts(made, {1, 0, 0}, 1); }));
  }
}

TEST_F(AttachedTextsTest, OneInSeveralScalesCannotFollow) {
  drawing = Sample()
                .entity("INSERT", {{66, "1"}, {10, "1.0"}})
                .entity("ATTRIB", {{102, "{ACAD_XDICTIONARY"}, {360, "B"}, {102, "}"}, {10, "1.0"}})
                .entity("SEQEND")
                .object("DICTIONARY", {{5, "B"}, {3, "AcDbContextDataManager"}, {360, "C"}})
                .object("DICTIONARY", {{5, "C"}})
                .open();
  EXPECT_EQ(E_FAIL, refusalOf([&] { moveAttachedTexts(subjectOf(*drawing), {1, 0, 0}); }));
}

}  // namespace
}  // namespace velt::automation
