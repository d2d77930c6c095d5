#include "samples/builder/DrawingBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/Document.h"
#include "dxf/Numbers.h"
#include "tests/dxf/Audit.h"

namespace velt::samples {

using namespace velt::dxf;
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

Document documentOf(const DrawingBuilder& drawing) {
  return Document::parse(drawing.bytes(), "made.dxf");
}

// The occurrence of the type, counted over the whole document.
RecordView viewOf(const Document& document, std::string_view type, std::size_t occurrence = 0) {
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    if (document.type(record) == type && occurrence-- == 0) return document.view(record);
  }
  ADD_FAILURE() << "no " << type;
  return document.view(0);
}

std::string_view text(const RecordView& view, int code, std::string_view subclass,
                      std::size_t occurrence = 0) {
  return view.text(code, subclass, occurrence).value_or("nothing");
}

std::vector<std::string> values(const RecordView& view, int code, std::string_view subclass) {
  std::vector<std::string> all;
  for (const std::size_t index : view.findAll(code, subclass))
    all.emplace_back(view.value(index));
  return all;
}

// One of everything that the builder makes.
void fill(DrawingBuilder& drawing) {
  const Outline square{{0, 0}, {10, 0}, {10, 10, 0.5}, {0, 10}};
  drawing.layer("Wände",
                {.color = 1, .trueColor = 0x102030, .lineWeight = 50, .lineType = "DASHED", .locked = true});
  drawing.lineType("DASHED", "Dashed __ __", {12.7, -6.35});
  drawing.textStyle("Plain", "arial.ttf", 0.9);
  drawing.variable("$PDMODE", {{70, "34"}});
  drawing.extents({-1, -2}, {30, 20});
  BlockBuilder& door = drawing.block("DOOR");
  door.line({0, 0}, {0, 1});
  door.arc({0, 0}, 1, 0, 90);
  door.attributeDefinition({.tag = "NUMBER", .value = "0", .height = 0.2}, "Number of the door");
  BlockBuilder& model = drawing.model();
  model.line({0, 0, 0}, {1, 2, 3}, {.layer = "Wände", .color = 3, .lineWeight = 25, .lineType = "DASHED"});
  model.point({1, 1});
  model.circle({5, 5}, 2.5,
               {.trueColor = 0xFF8000, .hyperlink = Hyperlink{"https://example.org/a", "A page"}});
  model.arc({5, 5}, 3, 10, 200);
  model.ellipse({5, 5}, {4, 0}, 0.5);
  model.polyline({{0, 0, 0.5, 1, 2}, {5, 0}}, {.closed = true, .elevation = 3});
  model.text({1, 1}, "Küche", {.height = 1.5, .rotation = 30, .style = "Plain"});
  model.text({1, 1}, "Mitte", {.align = Align::Centre, .alignVertical = AlignVertical::Middle});
  model.mtext({1, 1}, std::string(600, 'x'), {.width = 40, .rotation = 90});
  model.insert("DOOR", {.at = {3, 3},
                        .scaleX = 2,
                        .rotation = 45,
                        .attributes = {{.tag = "NUMBER", .value = "12", .at = {3, 3}, .height = 0.2}}});
  model.insert("DOOR", {});
  drawing.block("*U1").isMadeOf(door);
  model.insert("*U1", {}, {.extendedData = {{"ACME", {{1000, "oak"}, {1040, "2.5"}}}}});
  model.solidHatch({{square}}, {.color = 8});
  model.patternHatch({{square}}, {.name = "LINES",
                                  .lines = {{.angle = 45, .offset = {0, 2}, .dashes = {1, -1}}},
                                  .angle = 15,
                                  .scale = 2});
  model.gradientHatch({{square}}, {.firstColor = 0x0000FF, .secondColor = 0xFFFFFF, .angle = 90});
  model.raw("3DFACE", {{100, "AcDbFace"},
                       {10, "0"},
                       {20, "0"},
                       {30, "0"},
                       {11, "1"},
                       {21, "0"},
                       {31, "0"},
                       {12, "1"},
                       {22, "1"},
                       {32, "0"},
                       {13, "0"},
                       {23, "1"},
                       {33, "0"}});
}

class MadeIn : public ::testing::TestWithParam<DrawingVersion> {
 protected:
  MadeIn() : drawing(GetParam()) { fill(drawing); }
  DrawingBuilder drawing;
};

INSTANTIATE_TEST_SUITE_P(Versions, MadeIn, ::testing::Values(DrawingVersion::AC1018, DrawingVersion::AC1027));

TEST_P(MadeIn, IsFoundSoundByAnotherReader) {
  const auto findings = dxf::testing::audited(drawing.bytes());
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_EQ(
      *findings,
      "3DFACE=1 ARC=1 CIRCLE=1 ELLIPSE=1 HATCH=3 INSERT=3 LINE=1 LWPOLYLINE=1 MTEXT=1 POINT=1 TEXT=2\n");
}

TEST_P(MadeIn, IsReadHere) {
  const Document document = documentOf(drawing);
  EXPECT_EQ(document.bytes(), drawing.bytes());
  EXPECT_EQ(document.headerValue("$PDMODE", 70), "34");
  EXPECT_EQ(document.encoding().isUtf8(), GetParam() == DrawingVersion::AC1027);
  EXPECT_EQ(document.decode(text(viewOf(document, "TEXT"), 1, "AcDbText")), L"Küche");
  EXPECT_EQ(document.decode(text(viewOf(document, "LAYER", 1), 2, "AcDbLayerTableRecord")), L"Wände");
}

TEST_P(MadeIn, EveryHandleIsUniqueAndBelowTheSeed) {
  // given
  const Document document = documentOf(drawing);
  const auto seed = parseHandle(document.headerValue("$HANDSEED", 5).value());
  std::set<std::uint64_t> seen;
  // when, then
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    const std::string_view handle = document.view(record).handle();
    if (handle.empty()) continue;
    const auto value = parseHandle(handle);
    ASSERT_TRUE(value.has_value()) << handle;
    EXPECT_LT(value, seed);
    EXPECT_TRUE(seen.insert(*value).second) << handle;
  }
  EXPECT_GT(seen.size(), 50U);
}

TEST_P(MadeIn, EveryRecordIsOwnedByOneThatIsThere) {
  const Document document = documentOf(drawing);
  std::map<std::string_view, std::string_view> types{{"0", "nothing"}};
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    types.emplace(document.view(record).handle(), document.type(record));
  }
  const auto ownerType = [&](std::string_view type) { return types[text(viewOf(document, type), 330, "")]; };
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    if (document.view(record).handle().empty()) continue;
    EXPECT_TRUE(types.contains(text(document.view(record), 330, ""))) << document.type(record);
  }
  EXPECT_EQ(ownerType("CIRCLE"), "BLOCK_RECORD");
  EXPECT_EQ(ownerType("BLOCK"), "BLOCK_RECORD");
  EXPECT_EQ(ownerType("ATTRIB"), "INSERT");
  EXPECT_EQ(ownerType("SEQEND"), "INSERT");
  EXPECT_EQ(ownerType("LAYER"), "TABLE");
  EXPECT_EQ(ownerType("LAYOUT"), "DICTIONARY");
}

TEST_P(MadeIn, EveryReferenceIsToARecordThatIsThere) {
  // given
  const Document document = documentOf(drawing);
  std::set<std::string_view> handles{"0"};
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    handles.insert(document.view(record).handle());
  }
  // when, then
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    const RecordView view = document.view(record);
    for (std::size_t i = 0; i < view.size(); ++i) {
      const int code = view.code(i);
      if (code == 330 || code == 340 || code == 350 || code == 390) {
        EXPECT_TRUE(handles.contains(view.value(i))) << view.type() << ' ' << code << ' ' << view.value(i);
      }
    }
  }
}

TEST_P(MadeIn, ASpaceAndItsLayoutReferToEachOther) {
  const Document document = documentOf(drawing);
  for (const std::size_t space : {0U, 1U}) {
    const RecordView record = viewOf(document, "BLOCK_RECORD", space);
    const RecordView layout = viewOf(document, "LAYOUT", space);
    EXPECT_EQ(text(record, 340, "AcDbBlockTableRecord"), layout.handle());
    EXPECT_EQ(text(layout, 330, "AcDbLayout"), record.handle());
  }
}

TEST_P(MadeIn, ADimensionStyleHasItsHandleWhereReadersLookForIt) {
  const Document document = documentOf(drawing);
  EXPECT_NE(viewOf(document, "DIMSTYLE").handle(), "");
}

TEST_P(MadeIn, TheSameCallsMakeTheSameBytes) {
  DrawingBuilder again(GetParam());
  fill(again);
  EXPECT_EQ(again.bytes(), drawing.bytes());
}

TEST(Generator, AnEmptyDrawingIsSound) {
  const auto findings = dxf::testing::audited(DrawingBuilder().bytes());
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_EQ(*findings, "\n");
}

TEST(Generator, TheAuditFindsWhatIsWrong) {
  // given a line with a line type that the drawing does not have
  DrawingBuilder drawing;
  drawing.model().line({0, 0}, {1, 1}, {.lineType = "MISSING"});
  // when
  const auto findings = dxf::testing::audited(drawing.bytes());
  // then
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_THAT(*findings, HasSubstr("finding:"));
}

TEST(Generator, ALayerHasItsStyle) {
  DrawingBuilder drawing;
  drawing.layer("A", {.color = 3, .off = true});
  drawing.layer("B", {.color = 4, .trueColor = 0x010203, .lineWeight = 35, .frozen = true, .locked = true});
  const Document document = documentOf(drawing);
  constexpr std::string_view record = "AcDbLayerTableRecord";
  const RecordView off = viewOf(document, "LAYER", 1);
  EXPECT_EQ(text(off, 2, record), "A");
  EXPECT_EQ(text(off, 62, record), "-3");
  EXPECT_EQ(text(off, 70, record), "0");
  EXPECT_EQ(text(off, 370, record), "-3");
  EXPECT_EQ(text(off, 6, record), "Continuous");
  const RecordView both = viewOf(document, "LAYER", 2);
  EXPECT_EQ(text(both, 70, record), "5");
  EXPECT_EQ(text(both, 62, record), "4");
  EXPECT_EQ(text(both, 420, record), "66051");
  EXPECT_EQ(text(both, 370, record), "35");
}

TEST(Generator, ALineTypeHasItsDashes) {
  DrawingBuilder drawing;
  drawing.lineType("DOTS", "Dots . .", {0, -2.5});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "LTYPE", 3);
  EXPECT_EQ(text(view, 40, "AcDbLinetypeTableRecord"), "2.5");
  EXPECT_THAT(values(view, 49, "AcDbLinetypeTableRecord"), ElementsAre("0.0", "-2.5"));
}

TEST(Generator, AnEntityHasItsStyle) {
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

TEST(Generator, AnEntityByLayerSaysNothingOfIt) {
  DrawingBuilder drawing;
  drawing.model().line({0, 0}, {1, 1});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "LINE");
  for (const int code : {6, 62, 420, 370, 48, 60, 67})
    EXPECT_EQ(text(view, code, "AcDbEntity"), "nothing") << code;
}

TEST(Generator, AHyperlinkIsExtendedDataOfARegisteredApplication) {
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

TEST(Generator, APolylineKeepsBulgesWidthsAndElevation) {
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

TEST(Generator, AnEllipseMeasuresItsAnglesInRadians) {
  DrawingBuilder drawing;
  drawing.model().ellipse({1, 2}, {3, 0}, 0.25, {}, 0, 180);
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "ELLIPSE");
  EXPECT_EQ(view.real(40, "AcDbEllipse"), 0.25);
  EXPECT_EQ(view.real(41, "AcDbEllipse"), 0.0);
  EXPECT_EQ(view.real(42, "AcDbEllipse"), std::numbers::pi);
}

TEST(Generator, AnAlignedTextHasItsAlignmentPoint) {
  DrawingBuilder drawing;
  drawing.model().text({3, 4}, "x", {.align = Align::Right, .alignVertical = AlignVertical::Top});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "TEXT");
  EXPECT_EQ(text(view, 72, "AcDbText"), "2");
  EXPECT_EQ(text(view, 73, "AcDbText"), "3");
  EXPECT_EQ(view.point(11, "AcDbText"), (std::array{3.0, 4.0, 0.0}));
}

TEST(Generator, ALongTextIsCutBetweenCharacters) {
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

TEST(Generator, AShortTextHasNoChunks) {
  DrawingBuilder drawing;
  drawing.model().mtext({}, std::string(250, 'x'));
  const Document document = documentOf(drawing);
  EXPECT_TRUE(values(viewOf(document, "MTEXT"), 3, "AcDbMText").empty());
}

TEST(Generator, AnInsertIsFollowedByItsAttributes) {
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

TEST(Generator, ABlockIsMadeOnce) {
  DrawingBuilder drawing;
  EXPECT_EQ(&drawing.block("B"), &drawing.block("B"));
  EXPECT_NE(&drawing.block("B"), &drawing.block("C"));
}

TEST(Generator, APatternIsWrittenAsItComesToLie) {
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

TEST(Generator, AHatchIsSolidPatternedOrAGradient) {
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

TEST(Generator, ExtendedDataStandBehindTheEntityAndTheirApplicationIsRegistered) {
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

TEST(Generator, AShapeOfADynamicBlockNamesItsDefinition) {
  DrawingBuilder drawing;
  drawing.block("*U1").isMadeOf(drawing.block("DOOR"));
  const Document document = documentOf(drawing);
  std::map<std::string, RecordView> blocks;
  for (std::size_t entry = 0; entry < 4; ++entry) {
    const RecordView view = viewOf(document, "BLOCK_RECORD", entry);
    blocks.emplace(text(view, 2, "AcDbBlockTableRecord"), view);
  }
  const RecordView& shape = blocks.at("*U1");
  const auto data = shape.extendedData("AcDbBlockRepBTag");
  ASSERT_TRUE(data.has_value());
  EXPECT_EQ(shape.value(data->first + 1), blocks.at("DOOR").handle());
  EXPECT_FALSE(blocks.at("DOOR").extendedData("AcDbBlockRepBTag").has_value());
}

TEST(Generator, RawPairsAreWrittenAsTheyAre) {
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
