#include "embedded/automation/model/PointList.h"

#include <gtest/gtest.h>

#include "embedded/database/RecordEditor.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

int reads = 0;

std::vector<Vector3> readTens(const Subject& subject) {
  ++reads;
  return storedPoints(subject, 10, "*");
}

std::vector<Vector3> readElevens(const Subject& subject) {
  return storedPoints(subject, 11, "*");
}

class PointListTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("TOY", {{10, "1"}, {20, "2"}, {30, "3"}, {10, "4"}, {20, "5"}, {11, "7"}})
      .entity("TOY", {{10, "9"}})
      .open();
  // clang-format on
};

TEST_F(PointListTest, IsReadOnceUntilAnotherEntityIsAsked) {
  reads = 0;
  EXPECT_EQ((std::vector<Vector3>{{1, 2, 3}, {4, 5, 0}}), pointList<readTens>(subjectOf(*drawing)));
  EXPECT_EQ(2U, pointList<readTens>(subjectOf(*drawing)).size());
  EXPECT_EQ(1, reads);
  EXPECT_EQ((std::vector<Vector3>{{7, 0, 0}}), pointList<readElevens>(subjectOf(*drawing)));
  EXPECT_EQ((std::vector<Vector3>{{9, 0, 0}}), pointList<readTens>(subjectOf(*drawing, 1)));
  EXPECT_EQ(2, reads);
}

TEST_F(PointListTest, IsReadAgainAfterAnEdit) {
  EXPECT_EQ(9, pointList<readTens>(subjectOf(*drawing, 1)).front().x);
  EXPECT_TRUE(database::RecordEditor(*drawing, recordOf(*drawing, 1)).setReal(10, "*", 8));
  EXPECT_EQ(8, pointList<readTens>(subjectOf(*drawing, 1)).front().x);
}

TEST_F(PointListTest, ElementsAreTheCoordinatesInTurn) {
  const Access access = computedPoints<readTens>();
  const PropertyRow row = toyRow(access, VT_VARIANT);
  const Subject subject = subjectOf(*drawing);
  EXPECT_EQ(2U, access.elements->groups(subject, row));
  const std::vector<double> expected = {1, 2, 3, 4, 5, 0};
  EXPECT_EQ(expected, std::get<std::vector<double>>(access.get(subject, row)));
  for (std::size_t element = 0; element < expected.size(); ++element)
    EXPECT_EQ(expected[element], access.elements->get(subject, row, element));
}

}  // namespace
}  // namespace velt::automation
