#include "samples/builder/DrawingBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "dxf/Numbers.h"
#include "tests/dxf/Audit.h"
#include "tests/samples/builder/Made.h"

namespace velt::samples {
namespace {

using namespace velt::dxf;
using namespace test;
using ::testing::HasSubstr;

// One of everything that the builder makes.
void fill(DrawingBuilder& drawing) {
  const Outline square{{0, 0}, {10, 0}, {10, 10, 0.5}, {0, 10}};
  drawing.layer("Wände",
                {.color = 1, .trueColor = 0x102030, .lineWeight = 50, .lineType = "DASHED", .locked = true});
  drawing.lineType("DASHED", "Dashed __ __", {12.7, -6.35});
  drawing.textStyle("Plain", "arial.ttf", 0.9);
  drawing.variable("$PDMODE", {70, 34});
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
  model.insert("*U1", {}, {.extendedData = {{"ACME", {{1000, "oak"}, {1040, 2.5}}}}});
  model.solidHatch({{square}}, {.color = 8});
  model.patternHatch({{square}}, {.name = "LINES",
                                  .lines = {{.angle = 45, .offset = {0, 2}, .dashes = {1, -1}}},
                                  .angle = 15,
                                  .scale = 2});
  model.gradientHatch({{square}}, {.firstColor = 0x0000FF, .secondColor = 0xFFFFFF, .angle = 90});
  model.raw("3DFACE", {subclass("AcDbFace"), point(10, 0, 0, 0), point(11, 1, 0, 0), point(12, 1, 1, 0),
                       point(13, 0, 1, 0)});
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

TEST_P(MadeIn, TheSameCallsMakeTheSameBytes) {
  DrawingBuilder again(GetParam());
  fill(again);
  EXPECT_EQ(again.bytes(), drawing.bytes());
}

TEST(DrawingBuilderTest, AnEmptyDrawingIsSound) {
  const auto findings = dxf::testing::audited(DrawingBuilder().bytes());
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_EQ(*findings, "\n");
}

TEST(DrawingBuilderTest, TheAuditFindsWhatIsWrong) {
  // given a line with a line type that the drawing does not have
  DrawingBuilder drawing;
  drawing.model().line({0, 0}, {1, 1}, {.lineType = "MISSING"});
  // when
  const auto findings = dxf::testing::audited(drawing.bytes());
  // then
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_THAT(*findings, HasSubstr("finding:"));
}

TEST(DrawingBuilderTest, ABlockIsMadeOnce) {
  DrawingBuilder drawing;
  EXPECT_EQ(&drawing.block("B"), &drawing.block("B"));
  EXPECT_NE(&drawing.block("B"), &drawing.block("C"));
}

}  // namespace
}  // namespace velt::samples
