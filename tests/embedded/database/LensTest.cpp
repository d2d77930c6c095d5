#include "embedded/database/Lens.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::Pairs;
using test::Sample;

class LensTest : public testing::Test {
 protected:
  Lens lens(Pairs pairs) {
    drawing_ = Sample().version("AC1032").entity("LINE", pairs).open();
    return {*drawing_, entityRecord(*drawing_)};
  }

  std::unique_ptr<Drawing> drawing_;
};

TEST_F(LensTest, ValuesAreNamedByCodeAndSubclass) {
  const Lens it =
      lens({{100, "AcDbEntity"}, {40, "1.5"}, {100, "AcDbLine"}, {40, "2.5"}, {70, "3"}, {340, "1F"}});
  EXPECT_EQ("LINE", it.type());
  EXPECT_DOUBLE_EQ(1.5, it.real(40, "AcDbEntity", 0));
  EXPECT_DOUBLE_EQ(2.5, it.real(40, "AcDbLine", 0));
  EXPECT_EQ(3, it.integer(70, "AcDbLine", 0));
  EXPECT_EQ(0x1FU, it.handle(340, "AcDbLine"));
  EXPECT_TRUE(it.has(40, "AcDbLine"));
  EXPECT_FALSE(it.has(70, "AcDbEntity"));
}

TEST_F(LensTest, WhatIsMissingOrUnreadableIsWhatTheCallerGives) {
  const Lens it = lens({{100, "AcDbLine"}, {40, "wide"}, {70, "3.5"}, {340, "XYZ"}, {10, "nowhere"}});
  EXPECT_DOUBLE_EQ(9.0, it.real(40, "AcDbLine", 9.0));
  EXPECT_DOUBLE_EQ(9.0, it.real(41, "AcDbLine", 9.0));
  EXPECT_EQ(9, it.integer(70, "AcDbLine", 9));
  EXPECT_EQ(9U, it.handle(340, "AcDbLine", 9));
  EXPECT_EQ(L"nobody", it.text(1, "AcDbLine", L"nobody"));
  EXPECT_EQ((Point{1, 2, 3}), it.point(10, "AcDbLine", {1, 2, 3}));
  EXPECT_EQ(std::nullopt, it.value(41, "AcDbLine"));
}

TEST_F(LensTest, TextsAreDecodedAndKeepTheirBlanksAndCodes) {
  const Lens it = lens({{100, "AcDbText"}, {1, "  \xC3\x98 %%c\\U+00B0^J "}});
  EXPECT_EQ(L"  Ø %%c°^J ", it.text(1, "AcDbText"));
}

TEST_F(LensTest, NamesLoseTheBlanksAroundThem) {
  const Lens it = lens({{100, "AcDbText"}, {7, "  Standard "}, {2, "  "}});
  EXPECT_EQ(L"Standard", it.name(7, "AcDbText"));
  EXPECT_EQ(L"given", it.name(2, "AcDbText", L"given"));
  EXPECT_EQ(L"given", it.name(3, "AcDbText", L"given"));
}

TEST_F(LensTest, PointsHaveThreeCoordinatesWhetherTheyAreWrittenOrNot) {
  const Lens it = lens({{100, "AcDbLine"}, {10, "1"}, {20, "2"}, {11, "4"}, {21, "5"}, {31, "6"}});
  EXPECT_EQ((Point{1, 2, 0}), it.point(10, "AcDbLine"));
  EXPECT_EQ((Point{4, 5, 6}), it.point(11, "AcDbLine"));
}

TEST_F(LensTest, RepeatedValuesComeInFileOrder) {
  const Lens it = lens({{100, "AcDbPolyline"},
                        {10, "1"},
                        {20, "2"},
                        {42, "0.5"},
                        {10, "3"},
                        {20, "4"},
                        {42, "x"},
                        {3, "a"},
                        {3, "b"},
                        {100, "Other"},
                        {10, "7"},
                        {42, "8"},
                        {3, "c"}});
  EXPECT_EQ((std::vector<Point>{{1, 2, 0}, {3, 4, 0}}), it.points(10, "AcDbPolyline"));
  EXPECT_EQ((std::vector<double>{0.5, 0.0}), it.reals(42, "AcDbPolyline"));
  EXPECT_EQ((std::vector<std::wstring>{L"a", L"b"}), it.texts(3, "AcDbPolyline"));
}

TEST_F(LensTest, ACoordinateWithoutAPointIsPassedOver) {
  const Lens it = lens({{100, "AcDbPolyline"}, {20, "2"}, {30, "3"}, {10, "1"}});
  EXPECT_EQ((std::vector<Point>{{1, 0, 0}}), it.points(10, "AcDbPolyline"));
}

TEST_F(LensTest, ExtendedDataAreFoundByApplication) {
  const Lens it =
      lens({{100, "AcDbLine"}, {1001, "ONE"}, {1000, "a"}, {1001, "OTHER"}, {1070, "1"}, {1071, "2"}});
  const auto range = it.xdata("OTHER");
  ASSERT_TRUE(range);
  EXPECT_EQ(2U, range->count);
  EXPECT_EQ("1", it.view().value(range->first));
  EXPECT_EQ(std::nullopt, it.xdata("NOBODY"));
}

TEST_F(LensTest, WhatAllEntitiesHaveIsAlsoFoundBeforeTheFirstMarker) {
  const Lens it =
      lens({{62, "1"}, {100, "AcDbEntity"}, {8, "Walls"}, {100, "AcDbLine"}, {62, "2"}, {6, "DASHED"}});
  EXPECT_EQ(1, it.integer(62, commonSubclass, 0));
  EXPECT_EQ(L"Walls", it.name(8, commonSubclass));
  EXPECT_FALSE(it.has(6, commonSubclass));
}

TEST_F(LensTest, GroupsOfApplicationsAreNotPartOfWhatAllEntitiesHave) {
  const Lens it = lens({{102, "{ACAD_REACTORS"},
                        {330, "1"},
                        {102, "}"},
                        {330, "2"},
                        {100, "AcDbEntity"},
                        {102, "{OPEN"},
                        {62, "5"},
                        {100, "AcDbEntity"},
                        {62, "6"},
                        {1001, "APP"},
                        {8, "Late"}});
  EXPECT_EQ(2U, it.handle(330, commonSubclass));
  EXPECT_EQ(6, it.integer(62, commonSubclass, 0)) << "a group that is not closed ends at the marker";
  EXPECT_FALSE(it.has(8, commonSubclass));
}

TEST_F(LensTest, InOldDrawingsTheWholeRecordIsThePartThatAllEntitiesHave) {
  const Lens it = lens({{10, "1"}, {20, "2"}, {62, "3"}});
  EXPECT_EQ(3, it.integer(62, commonSubclass, 0));
  EXPECT_EQ((Point{1, 2, 0}), it.point(10, "AcDbLine"));
}

}  // namespace
}  // namespace velt::database
