#include "dxf/RecordView.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

#include "dxf/Record.h"
#include "tests/dxf/Drawings.h"

namespace velt::dxf {
namespace {

// A record and the bytes that its view needs.
class Sample {
 public:
  Sample(std::initializer_list<std::string_view> list)
      : bytes_(testing::pairs(list)), list_(readRecords(bytes_, "a.dxf")) {}
  [[nodiscard]] RecordView view() const {
    return RecordView(list_.pairsOf(list_.records.front(), bytes_.data()));
  }

  [[nodiscard]] std::string text(int code, std::string_view subclass, std::size_t occurrence = 0) const {
    return std::string(view().text(code, subclass, occurrence).value_or("nothing"));
  }

 private:
  std::string bytes_;
  RecordList list_;
};

const Sample& circle() {
  static const Sample sample{"0|CIRCLE",       "5|2F",   "330|1F", "100|AcDbEntity", "8|Walls", "62|  1",
                             "100|AcDbCircle", "10|1.5", "20|2.5", "30|3.5",         "40|0.25"};
  return sample;
}

TEST(RecordView, TellsItsTypeAndHandle) {
  EXPECT_EQ(circle().view().type(), "CIRCLE");
  EXPECT_EQ(circle().view().handle(), "2F");
  EXPECT_EQ((Sample{"0| LINE "}).view().type(), "LINE");
  EXPECT_EQ((Sample{"999|comment"}).view().type(), "");
}

TEST(RecordView, TellsTheHandleExactlyAsItStands) {
  EXPECT_EQ((Sample{"0|LINE", "5| 00af "}).view().handle(), " 00af ");
  EXPECT_EQ((Sample{"0|LINE", "8|0"}).view().handle(), "");
  EXPECT_EQ((Sample{"0|LINE", "5|no handle"}).view().handle(), "no handle");
  EXPECT_EQ((Sample{"0|LINE", "100|AcDbEntity", "5|AA"}).view().handle(), "");
}

TEST(RecordView, ADimensionStylesHandleHasItsOwnCode) {
  EXPECT_EQ((Sample{"0|DIMSTYLE", "105|27", "100|AcDbSymbolTableRecord", "2|STANDARD"}).view().handle(),
            "27");
  EXPECT_EQ((Sample{"0|DIMSTYLE", "2|STANDARD", "5|ARROW", "105|27"}).view().handle(), "27");
  EXPECT_EQ((Sample{"0|DIMSTYLE", "2|STANDARD", "5|ARROW"}).view().handle(), "");
}

TEST(RecordView, ASectionHasNoHandle) {
  EXPECT_EQ((Sample{"0|SECTION", "2|HEADER", "9|$HANDSEED", "5|FF"}).view().handle(), "");
}

TEST(RecordView, FindsAPropertyInItsSubclassOnly) {
  EXPECT_EQ(circle().text(8, "AcDbEntity"), "Walls");
  EXPECT_EQ(circle().text(40, "AcDbCircle"), "0.25");
  EXPECT_EQ(circle().text(40, "AcDbEntity"), "nothing");
  EXPECT_EQ(circle().text(8, ""), "nothing");
  EXPECT_EQ(circle().text(330, ""), "1F");
  EXPECT_EQ(circle().text(8, "AcDbArc"), "nothing");
}

TEST(RecordView, FindsAPropertyInAnySubclassWhenAsked) {
  EXPECT_EQ(circle().text(330, anySubclass), "1F");
  EXPECT_EQ(circle().text(40, anySubclass), "0.25");
}

TEST(RecordView, ARecordWithoutMarkersIsOneSection) {
  const Sample old{"0|CIRCLE", "5|2F", "8|Walls", "40|0.25"};
  EXPECT_FALSE(old.view().hasSubclasses());
  EXPECT_EQ(old.text(8, "AcDbEntity"), "Walls");
  EXPECT_EQ(old.text(40, "AcDbCircle"), "0.25");
  EXPECT_EQ(old.text(40, ""), "0.25");
  EXPECT_EQ(old.view().handle(), "2F");
}

TEST(RecordView, ASubclassMayStandTwice) {
  const Sample text{"0|TEXT",    "100|AcDbEntity", "8|0",          "100|AcDbText",
                    "1|Kitchen", "72|1",           "100|AcDbText", "73|2"};
  EXPECT_EQ(text.text(1, "AcDbText"), "Kitchen");
  EXPECT_EQ(text.text(73, "AcDbText"), "2");
}

TEST(RecordView, TheSameCodeMeansAnotherThingInAnotherSubclass) {
  const Sample attribute{"0|ATTRIB",          "100|AcDbEntity", "100|AcDbText", "1|12",
                         "100|AcDbAttribute", "1|other",        "2|NUMBER"};
  EXPECT_EQ(attribute.text(1, "AcDbText"), "12");
  EXPECT_EQ(attribute.text(1, "AcDbAttribute"), "other");
}

TEST(RecordView, FindsTheFurtherOccurrences) {
  const Sample polyline{"0|LWPOLYLINE", "100|AcDbPolyline", "10|1", "20|2", "10|3", "20|4", "10|5", "20|6"};
  EXPECT_EQ(polyline.text(10, "AcDbPolyline", 2), "5");
  EXPECT_EQ(polyline.text(10, "AcDbPolyline", 3), "nothing");
  EXPECT_EQ(polyline.view().findAll(20, "AcDbPolyline"), (std::vector<std::size_t>{3, 5, 7}));
}

TEST(RecordView, SkipsApplicationGroups) {
  const Sample sample{"0|LINE", "5|2F",   "102|{ACAD_REACTORS", "330|AA", "5|BB",
                      "102|}",  "330|1F", "100|AcDbEntity",     "102|{X", "8|wrong",
                      "102|}",  "8|right"};
  EXPECT_EQ(sample.text(330, ""), "1F");
  EXPECT_EQ(sample.text(5, "", 1), "nothing");
  EXPECT_EQ(sample.text(8, "AcDbEntity"), "right");
  EXPECT_EQ(sample.text(8, "AcDbEntity", 1), "nothing");
}

TEST(RecordView, SurvivesNestedUnclosedAndStrayGroups) {
  const Sample nested{"0|LINE", "102|{A", "102|{B", "8|wrong", "102|}", "8|wrong", "102|}", "8|right"};
  EXPECT_EQ(nested.text(8, ""), "right");
  const Sample unclosed{"0|LINE", "102|{A", "330|wrong", "100|AcDbEntity", "8|right"};
  EXPECT_EQ(unclosed.text(8, "AcDbEntity"), "right");
  EXPECT_EQ(unclosed.text(330, ""), "nothing");
  const Sample stray{"0|LINE", "102|}", "8|right", "102|name"};
  EXPECT_EQ(stray.text(8, ""), "right");
  EXPECT_EQ(stray.text(102, "", 1), "name");
}

TEST(RecordView, SkipsExtendedDataAndComments) {
  const Sample sample{"0|LINE", "100|AcDbLine", "999|8", "1001|APP", "1000|text", "1010|1", "1071|5"};
  for (const int code : {999, 1000, 1001, 1010, 1071})
    EXPECT_EQ(sample.text(code, "AcDbLine"), "nothing") << code;
}

TEST(RecordView, DoesNotLookIntoAnEmbeddedObject) {
  const Sample mtext{"0|MTEXT", "100|AcDbMText", "40|2.5",       "101|Embedded Object",
                     "70|1",    "40|9",          "100|AcDbText", "7|x"};
  EXPECT_EQ(mtext.text(40, "AcDbMText"), "2.5");
  EXPECT_EQ(mtext.text(70, "AcDbMText"), "nothing");
  EXPECT_EQ(mtext.text(70, anySubclass), "nothing");
  EXPECT_EQ(mtext.text(7, "AcDbText"), "nothing");
  EXPECT_FALSE(mtext.view().hasSubclass("AcDbText"));
  EXPECT_TRUE(mtext.view().hasSubclass("AcDbMText"));
}

TEST(RecordView, AnotherValueOfTheSameCodeIsNotAnEmbeddedObject) {
  const Sample sample{"0|X", "100|AcDbX", "101|5", "40|1"};
  EXPECT_EQ(sample.text(101, "AcDbX"), "5");
  EXPECT_EQ(sample.text(40, "AcDbX"), "1");
}

TEST(RecordView, ReadsNumbers) {
  EXPECT_EQ(circle().view().real(40, "AcDbCircle"), 0.25);
  EXPECT_EQ(circle().view().integer(62, "AcDbEntity"), 1);
  EXPECT_EQ(circle().view().integer(8, "AcDbEntity"), std::nullopt);
  EXPECT_EQ(circle().view().real(41, "AcDbCircle"), std::nullopt);
}

TEST(RecordView, ReadsPoints) {
  using Point = std::array<double, 3>;
  EXPECT_EQ(circle().view().point(10, "AcDbCircle"), (Point{1.5, 2.5, 3.5}));
  const Sample polyline{"0|LWPOLYLINE", "100|AcDbPolyline", "10|1", "20|2", "10|3", "10|5", "20|6"};
  EXPECT_EQ(polyline.view().point(10, "AcDbPolyline", 0), (Point{1, 2, 0}));
  EXPECT_EQ(polyline.view().point(10, "AcDbPolyline", 1), (Point{3, 0, 0}));
  EXPECT_EQ(polyline.view().point(10, "AcDbPolyline", 2), (Point{5, 6, 0}));
  EXPECT_EQ(polyline.view().point(10, "AcDbPolyline", 3), std::nullopt);
  EXPECT_EQ((Sample{"0|POINT", "10|1", "20|2", "30|3", "20|8", "30|9"}).view().point(10, ""),
            (Point{1, 2, 3}));
  EXPECT_EQ((Sample{"0|POINT", "10|x", "20|1"}).view().point(10, ""), std::nullopt);
}

TEST(RecordView, FindsTheExtendedDataOfAnApplication) {
  const Sample sample{"0|LINE", "8|0", "1001|A", "1000|a1", "1001|B", "1000|b1", "1071|5"};
  const RecordView view = sample.view();
  EXPECT_FALSE(view.extendedData("C").has_value());
  ASSERT_TRUE(view.extendedData("A").has_value());
  EXPECT_EQ(view.extendedData("A")->first, 3U);
  EXPECT_EQ(view.extendedData("A")->count, 1U);
  EXPECT_EQ(view.extendedData("B")->first, 5U);
  EXPECT_EQ(view.extendedData("B")->count, 2U);
}

TEST(RecordView, FindsAnApplicationGroupByName) {
  const Sample sample{"0|LINE",    "5|1",    "102|{ACAD_REACTORS", "330|AA", "330|BB", "102|}",
                      "102|{OPEN", "330|CC", "100|AcDbEntity"};
  const RecordView view = sample.view();
  ASSERT_TRUE(view.applicationGroup("ACAD_REACTORS").has_value());
  EXPECT_EQ(view.applicationGroup("ACAD_REACTORS")->first, 3U);
  EXPECT_EQ(view.applicationGroup("ACAD_REACTORS")->count, 2U);
  EXPECT_EQ(view.applicationGroup("OPEN")->count, 1U);
  EXPECT_FALSE(view.applicationGroup("ACAD").has_value());
}

TEST(RecordView, AnApplicationGroupEndsWithItsOwnBrace) {
  const Sample sample{"0|LINE", "102|{A", "102|{B", "330|1", "102|}", "330|2", "102|}", "330|3"};
  EXPECT_EQ(sample.view().applicationGroup("A")->count, 4U);
  EXPECT_EQ(sample.view().applicationGroup("B")->count, 1U);
}

TEST(RecordView, FindsTheEmbeddedObject) {
  const Sample sample{"0|MTEXT", "100|AcDbMText", "101|Embedded Object", "70|1", "10|2", "1001|A", "1000|x"};
  ASSERT_TRUE(sample.view().embeddedObject().has_value());
  EXPECT_EQ(sample.view().embeddedObject()->first, 3U);
  EXPECT_EQ(sample.view().embeddedObject()->count, 2U);
  EXPECT_FALSE(circle().view().embeddedObject().has_value());
}

TEST(RecordView, VisitsThePropertiesOfASubclassUntilToldToStop) {
  std::vector<int> codes;
  circle().view().visit("AcDbCircle", [&](std::size_t index) {
    codes.push_back(circle().view().code(index));
    return codes.size() < 3;
  });
  EXPECT_EQ(codes, (std::vector<int>{10, 20, 30}));
}

TEST(RecordView, AMissingPairGoesAfterItsNeighbourOrToTheEndOfItsSubclass) {
  const std::array colorNeighbours{8, 6};
  EXPECT_EQ(circle().view().insertionPoint("AcDbEntity", colorNeighbours), 5U);
  EXPECT_EQ(circle().view().insertionPoint("AcDbEntity", {}), 6U);
  EXPECT_EQ(circle().view().insertionPoint("AcDbCircle", {}), 11U);
  EXPECT_EQ(circle().view().insertionPoint("", {}), 3U);
  EXPECT_EQ(circle().view().insertionPoint("AcDbArc", {}), std::nullopt);
}

TEST(RecordView, AMissingPairGoesInFrontOfExtendedDataAndEmbeddedObjects) {
  const Sample old{"0|LINE", "8|0", "102|{A", "8|x", "102|}", "1001|APP", "1000|x"};
  EXPECT_EQ(old.view().insertionPoint("AcDbEntity", {}), 5U);
  EXPECT_EQ(old.view().insertionPoint("AcDbEntity", std::array{8}), 2U);
  const Sample mtext{"0|MTEXT", "100|AcDbMText", "40|2.5", "101|Embedded Object", "70|1"};
  EXPECT_EQ(mtext.view().insertionPoint("AcDbMText", {}), 3U);
}

TEST(RecordView, AMissingPairGoesIntoTheFirstOfTwoSectionsOfASubclass) {
  const Sample text{"0|TEXT", "100|AcDbText", "1|a", "100|AcDbText", "73|2"};
  EXPECT_EQ(text.view().insertionPoint("AcDbText", {}), 3U);
  EXPECT_EQ(text.view().insertionPoint("AcDbText", std::array{73}), 5U);
}

// --- records that are not as writers make them ---

TEST(RecordView, TheCommonPartIsWhatStandsBeforeTheFirstMarkerAndAfterItsOwn) {
  const Sample line{"0|LINE",       "62|1",     "100|AcDbEntity", "8|Walls",
                    "100|AcDbLine", "6|DASHED", "100|AcDbEntity", "48|2"};
  EXPECT_EQ(line.text(62, commonSubclass), "1");
  EXPECT_EQ(line.text(8, commonSubclass), "Walls");
  EXPECT_EQ(line.text(6, commonSubclass), "nothing");
  EXPECT_EQ(line.text(48, commonSubclass), "nothing");
  EXPECT_EQ(line.view().insertionPoint(commonSubclass, {}), 4U);
}

TEST(RecordView, ACommonPartAfterAnotherSubclassCountsWhenThereIsNoEarlierOne) {
  const Sample line{"0|LINE",         "5|1",     "100|AcDbLine", "10|1",
                    "100|AcDbEntity", "8|Walls", "100|AcDbMore", "62|1"};
  EXPECT_EQ(line.text(8, commonSubclass), "Walls");
  EXPECT_EQ(line.text(62, commonSubclass), "nothing");
  EXPECT_EQ(line.view().insertionPoint(commonSubclass, {}), 6U);
}

TEST(RecordView, ARecordWithOtherMarkersOnlyHasItsCommonPartBeforeThem) {
  const Sample line{"0|LINE", "5|1", "8|Walls", "100|AcDbLine", "10|1"};
  EXPECT_EQ(line.text(8, commonSubclass), "Walls");
  EXPECT_EQ(line.view().insertionPoint(commonSubclass, {}), 3U);
}

TEST(RecordView, NothingIsInsertedIntoAGroup) {
  const Sample line{"0|LINE", "100|AcDbLine", "10|1",     "102|{A",      "1|x",
                    "102|}",  "102|{OPEN",    "40|wrong", "100|AcDbMore"};
  EXPECT_EQ(line.view().insertionPoint("AcDbLine", {}), 6U);
  EXPECT_EQ(line.view().insertionPoint("AcDbLine", std::array{40}), 6U);
}

TEST(RecordView, CoordinatesBelongToTheXBeforeThem) {
  const Sample line{"0|LINE", "20|8", "30|9", "10|1", "30|3", "20|2", "10|4", "20|5"};
  const RecordView view = line.view();
  EXPECT_EQ(view.point(10, anySubclass), (std::array{1.0, 2.0, 3.0}));
  EXPECT_EQ(view.point(10, anySubclass, 1), (std::array{4.0, 5.0, 0.0}));
  const auto pairs = view.pointPairs(10, anySubclass);
  ASSERT_TRUE(pairs);
  EXPECT_EQ(pairs->x, 3U);
  EXPECT_EQ(pairs->y, 5U);
  EXPECT_EQ(pairs->z, 4U);
  EXPECT_FALSE(view.pointPairs(10, anySubclass, 2));
}

}  // namespace
}  // namespace velt::dxf
