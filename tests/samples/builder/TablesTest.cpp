#include "samples/builder/Sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

#include "tests/samples/builder/Made.h"

namespace velt::samples {
namespace {

using namespace velt::dxf;
using namespace test;
using ::testing::ElementsAre;

TEST(TablesTest, ADimensionStyleHasItsHandleWhereReadersLookForIt) {
  const Document document = documentOf(DrawingBuilder());
  EXPECT_NE(viewOf(document, "DIMSTYLE").handle(), "");
}

TEST(TablesTest, ALayerHasItsStyle) {
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

TEST(TablesTest, ALineTypeHasItsDashes) {
  DrawingBuilder drawing;
  drawing.lineType("DOTS", "Dots . .", {0, -2.5});
  const Document document = documentOf(drawing);
  const RecordView view = viewOf(document, "LTYPE", 3);
  EXPECT_EQ(text(view, 40, "AcDbLinetypeTableRecord"), "2.5");
  EXPECT_THAT(values(view, 49, "AcDbLinetypeTableRecord"), ElementsAre("0.0", "-2.5"));
}

TEST(TablesTest, AShapeOfADynamicBlockNamesItsDefinition) {
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

}  // namespace
}  // namespace velt::samples
