#include "samples/builder/BlockBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/samples/builder/Made.h"

namespace velt::samples {
namespace {

using namespace velt::dxf;
using namespace test;
using ::testing::ElementsAre;

TEST(BlockBuilderTest, AnEntityHasItsStyle) {
  DrawingBuilder drawing;
  drawing.model().line({0, 0}, {1, 1},
                       {.layer = "L",
                        .color = 3,
                        .trueColor = 0xFF,
                        .lineWeight = 25,
                        .lineType = "T",
                        .lineTypeScale = 2,
                        .visible = false});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "LINE");
  EXPECT_EQ(text(view, 8, "AcDbEntity"), "L");
  EXPECT_EQ(text(view, 62, "AcDbEntity"), "3");
  EXPECT_EQ(text(view, 420, "AcDbEntity"), "255");
  EXPECT_EQ(text(view, 370, "AcDbEntity"), "25");
  EXPECT_EQ(text(view, 6, "AcDbEntity"), "T");
  EXPECT_EQ(text(view, 48, "AcDbEntity"), "2.0");
  EXPECT_EQ(text(view, 60, "AcDbEntity"), "1");
}

TEST(BlockBuilderTest, AnEntityByLayerSaysNothingOfIt) {
  DrawingBuilder drawing;
  drawing.model().line({0, 0}, {1, 1});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "LINE");
  for (const int code : {6, 62, 420, 370, 48, 60, 67})
    EXPECT_EQ(text(view, code, "AcDbEntity"), "nothing") << code;
}

TEST(BlockBuilderTest, AHyperlinkIsExtendedDataOfARegisteredApplication) {
  DrawingBuilder drawing;
  drawing.model().circle({}, 1, {.hyperlink = Hyperlink{"https://example.org", "Page"}});
  drawing.model().circle({}, 1, {.hyperlink = Hyperlink{"https://example.org", "Page"}});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "CIRCLE");
  const PairRange data = view.extendedData("PE_URL").value();
  std::vector<std::string_view> found;
  for (std::size_t i = 0; i < data.count; ++i)
    found.push_back(view.value(data.first + i));
  EXPECT_THAT(found, ElementsAre("https://example.org", "{", "Page", "}"));
  EXPECT_EQ(text(viewOf(document, "APPID", 1), 2, "AcDbRegAppTableRecord"), "PE_URL");
  EXPECT_EQ(documentOf(drawing).bytes().find("APPID", document.bytes().find("PE_URL")), std::string::npos);
}

TEST(BlockBuilderTest, APolylineKeepsBulgesWidthsAndElevation) {
  DrawingBuilder drawing;
  drawing.model().polyline({{1, 2, 0.5, 3, 4}, {5, 6}}, {.closed = true, .elevation = 7});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "LWPOLYLINE");
  EXPECT_EQ(text(view, 90, "AcDbPolyline"), "2");
  EXPECT_EQ(text(view, 70, "AcDbPolyline"), "1");
  EXPECT_EQ(text(view, 38, "AcDbPolyline"), "7.0");
  EXPECT_THAT(values(view, 42, "AcDbPolyline"), ElementsAre("0.5"));
  EXPECT_THAT(values(view, 40, "AcDbPolyline"), ElementsAre("3.0"));
  EXPECT_THAT(values(view, 41, "AcDbPolyline"), ElementsAre("4.0"));
  EXPECT_EQ(view.point(10, "AcDbPolyline", 1), (std::array{5.0, 6.0, 0.0}));
}

TEST(BlockBuilderTest, AnEllipseMeasuresItsAnglesInRadians) {
  DrawingBuilder drawing;
  drawing.model().ellipse({1, 2}, {3, 0}, 0.25, {}, 0, 180);
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "ELLIPSE");
  EXPECT_EQ(view.real(40, "AcDbEllipse"), 0.25);
  EXPECT_EQ(view.real(41, "AcDbEllipse"), 0.0);
  EXPECT_EQ(view.real(42, "AcDbEllipse"), std::numbers::pi);
}

TEST(BlockBuilderTest, AnAlignedTextHasItsAlignmentPoint) {
  DrawingBuilder drawing;
  drawing.model().text({3, 4}, "x", {.align = Align::Right, .alignVertical = AlignVertical::Top});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "TEXT");
  EXPECT_EQ(text(view, 72, "AcDbText"), "2");
  EXPECT_EQ(text(view, 73, "AcDbText"), "3");
  EXPECT_EQ(view.point(11, "AcDbText"), (std::array{3.0, 4.0, 0.0}));
}

TEST(BlockBuilderTest, ALongTextIsCutBetweenCharacters) {
  for (const DrawingVersion version : {DrawingVersion::AC1018, DrawingVersion::AC1027}) {
    // given
    std::string wording;
    for (int i = 0; i < 300; ++i)
      wording += "aЖ";
    DrawingBuilder drawing(version);
    drawing.model().mtext({}, wording);
    // when
    const Document document = documentOf(drawing);
    const RecordView view = viewOf(document, "MTEXT");
    // then
    const auto chunks = values(view, 3, "AcDbMText");
    ASSERT_GE(chunks.size(), 3U);
    std::wstring joined;
    for (const std::string& chunk : chunks) {
      EXPECT_LE(chunk.size(), 250U);
      joined += document.decode(chunk);
    }
    joined += document.decode(text(view, 1, "AcDbMText"));
    EXPECT_EQ(joined, Encoding::utf8().decode(wording));
  }
}

TEST(BlockBuilderTest, AShortTextHasNoChunks) {
  DrawingBuilder drawing;
  drawing.model().mtext({}, std::string(250, 'x'));
  const Document document = documentOf(drawing);
  EXPECT_TRUE(values(viewOf(document, "MTEXT"), 3, "AcDbMText").empty());
}

TEST(BlockBuilderTest, AnInsertIsFollowedByItsAttributes) {
  DrawingBuilder drawing;
  drawing.block("B").attributeDefinition({.tag = "T"}, "Which?");
  drawing.model().insert(
      "B", {.attributes = {{.tag = "T", .value = "v"}, {.tag = "U", .value = "w", .visible = false}}});
  drawing.model().insert("B", {});
  const Document document = documentOf(drawing);
  std::vector<std::string_view> types;
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    if (document.records()[record].section == Section::Entities) types.push_back(document.type(record));
    if (document.records()[record].sequenceHead != none) {
      EXPECT_EQ(document.type(document.records()[record].sequenceHead), "INSERT");
    }
  }
  EXPECT_THAT(types, ElementsAre("SECTION", "INSERT", "ATTRIB", "ATTRIB", "SEQEND", "INSERT", "ENDSEC"));
  EXPECT_EQ(text(viewOf(document, "ATTRIB"), 1, "AcDbText"), "v");
  EXPECT_EQ(text(viewOf(document, "ATTRIB"), 2, "AcDbAttribute"), "T");
  EXPECT_EQ(text(viewOf(document, "ATTRIB", 1), 70, "AcDbAttribute"), "1");
  EXPECT_EQ(text(viewOf(document, "INSERT", 1), 66, "AcDbBlockReference"), "nothing");
  EXPECT_EQ(text(viewOf(document, "BLOCK", 2), 70, "AcDbBlockBegin"), "2");
}

TEST(BlockBuilderTest, APatternIsWrittenAsItComesToLie) {
  DrawingBuilder drawing;
  const Outline square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  drawing.model().patternHatch(
      {{square}}, {.name = "P",
                   .lines = {{.angle = 45, .base = {1, 0}, .offset = {0, 2}, .dashes = {1, -0.5}}},
                   .angle = 45,
                   .scale = 2});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "HATCH");
  constexpr std::string_view hatch = "AcDbHatch";
  EXPECT_EQ(text(view, 70, hatch), "0");
  EXPECT_EQ(view.real(53, hatch), 90.0);
  EXPECT_NEAR(view.real(43, hatch).value(), std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(view.real(44, hatch).value(), std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(view.real(45, hatch).value(), -4.0, 1e-12);
  EXPECT_NEAR(view.real(46, hatch).value(), 0.0, 1e-12);
  EXPECT_THAT(values(view, 49, hatch), ElementsAre("2.0", "-1.0"));
}

TEST(BlockBuilderTest, AHatchIsSolidPatternedOrAGradient) {
  DrawingBuilder drawing;
  const Outline square{{0, 0}, {1, 0}, {1, 1, 1}, {0, 1}};
  drawing.model().solidHatch({{square}});
  drawing.model().gradientHatch({{square}},
                                {.name = "SPHERICAL", .firstColor = 255, .secondColor = 256, .angle = 180});
  const Document document = documentOf(drawing);
  const RecordView solid = viewOf(document, "HATCH", 0);
  EXPECT_EQ(text(solid, 2, "AcDbHatch"), "SOLID");
  EXPECT_EQ(text(solid, 70, "AcDbHatch"), "1");
  EXPECT_EQ(text(solid, 93, "AcDbHatch"), "4");
  EXPECT_EQ(text(solid, 450, "AcDbHatch"), "nothing");
  EXPECT_THAT(values(solid, 42, "AcDbHatch"), ElementsAre("0.0", "0.0", "1.0", "0.0"));
  const RecordView gradient = viewOf(document, "HATCH", 1);
  EXPECT_EQ(text(gradient, 450, "AcDbHatch"), "1");
  EXPECT_EQ(gradient.real(460, "AcDbHatch"), std::numbers::pi);
  EXPECT_THAT(values(gradient, 421, "AcDbHatch"), ElementsAre("255", "256"));
  EXPECT_EQ(text(gradient, 470, "AcDbHatch"), "SPHERICAL");
}

TEST(BlockBuilderTest, ExtendedDataStandAfterTheEntityAndTheirApplicationIsRegistered) {
  DrawingBuilder drawing;
  drawing.model().line(
      {}, {1, 0}, {.extendedData = {{"ACME", {{1000, "oak"}, {1070, "3"}}}, {"Other", {{1040, "1.5"}}}}});
  const Document document = documentOf(drawing);
  const RecordView line = viewOf(document, "LINE");
  const auto data = line.extendedData("ACME");
  ASSERT_TRUE(data.has_value());
  ASSERT_EQ(data->count, 2U);
  EXPECT_EQ(line.code(data->first), 1000);
  EXPECT_EQ(line.value(data->first), "oak");
  EXPECT_EQ(line.value(data->first + 1), "3");
  EXPECT_TRUE(line.extendedData("Other").has_value());
  std::set<std::string> applications;
  for (std::size_t entry = 0; entry < 3; ++entry)
    applications.emplace(text(viewOf(document, "APPID", entry), 2, "AcDbRegAppTableRecord"));
  EXPECT_EQ(applications, (std::set<std::string>{"ACAD", "ACME", "Other"}));
}

TEST(BlockBuilderTest, RawPairsAreWrittenAsTheyAre) {
  DrawingBuilder drawing;
  const Handle polyline = drawing.model().raw("POLYLINE", {{100, "AcDb2dPolyline"}, {66, " 1 "}});
  drawing.model().raw("VERTEX", {{100, "AcDbVertex"}, {10, "\xFF"}}, {}, polyline);
  drawing.model().raw("SEQEND", {}, {}, polyline);
  const Document document = documentOf(drawing);
  EXPECT_EQ(text(viewOf(document, "POLYLINE"), 66, "AcDb2dPolyline"), " 1 ");
  EXPECT_EQ(text(viewOf(document, "VERTEX"), 10, "AcDbVertex"), "\xFF");
  EXPECT_EQ(text(viewOf(document, "VERTEX"), 330, ""), viewOf(document, "POLYLINE").handle());
}

}  // namespace
}  // namespace velt::samples
