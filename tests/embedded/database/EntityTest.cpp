#include "embedded/database/Entity.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::nameOf;
using test::Pairs;
using test::record;
using test::Sample;

Entity entityOf(const Drawing& drawing, std::size_t index = 0) {
  return {drawing, entityRecord(drawing, index)};
}

TEST(Entity, TellsWhatItsRecordSays) {
  const auto drawing = Sample()
                           .layer("Walls")
                           .entity("LINE", {{5, "1A"},
                                            {100, "AcDbEntity"},
                                            {8, "WALLS"},
                                            {6, "DASHED"},
                                            {62, "3"},
                                            {370, "50"},
                                            {100, "AcDbLine"}})
                           .open();
  const Entity entity = entityOf(*drawing);
  EXPECT_EQ("LINE", entity.dxfName());
  EXPECT_EQ(0x1AU, entity.handle());
  EXPECT_EQ(L"WALLS", entity.layerName());
  EXPECT_EQ(L"Walls", nameOf(entity.layer()));
  EXPECT_EQ(L"DASHED", entity.linetypeName());
  EXPECT_EQ(50, entity.lineweight());
  EXPECT_EQ(0xC3000003, entity.color().color());
  EXPECT_FALSE(entity.isErased());
}

TEST(Entity, WithoutValuesIsByLayerOnLayerZeroInModelSpace) {
  const auto drawing = Sample().entity("LINE").open();
  const Entity entity = entityOf(*drawing);
  EXPECT_EQ(L"0", entity.layerName());
  ASSERT_NE(nullptr, entity.layer());
  EXPECT_TRUE(entity.layer()->isImplied());
  EXPECT_EQ(L"ByLayer", entity.linetypeName());
  EXPECT_EQ(-1, entity.lineweight());
  EXPECT_TRUE(entity.color().isByLayer());
  EXPECT_EQ(nullptr, entity.owner());
  EXPECT_EQ(Space::Model, entity.space());
  EXPECT_EQ(L"Model", entity.layoutName());
}

TEST(Entity, ALayerAfterTheMarkerOfTheKindIsFoundToo) {
  const auto drawing =
      Sample().entity("LINE", {{100, "AcDbEntity"}, {100, "AcDbLine"}, {8, "Walls"}, {6, "DASHED"}}).open();
  EXPECT_EQ(L"Walls", entityOf(*drawing).layerName());
  EXPECT_EQ(L"ByLayer", entityOf(*drawing).linetypeName());
}

TEST(Entity, AnEditShowsAtOnce) {
  // given
  const auto drawing = Sample().entity("LINE", {{8, "A"}}).open();
  const Entity entity = entityOf(*drawing);
  const std::uint32_t line = entityRecord(*drawing);
  // when
  drawing->edit(line, [&](dxf::Document& document) { document.set(line, 8, dxf::anySubclass, "B"); });
  drawing->setErased(line, true);
  // then
  EXPECT_EQ(L"B", entity.layerName());
  EXPECT_TRUE(entity.isErased());
}

// Two sheets and a block; model space is spelled as some writers do.
Sample sheets() {
  return Sample()
      .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "*MODEL_SPACE"}})
      .tableRecord("BLOCK_RECORD", {{5, "11"}, {2, "*Paper_Space"}})
      .tableRecord("BLOCK_RECORD", {{5, "12"}, {2, "*Paper_Space0"}})
      .tableRecord("BLOCK_RECORD", {{5, "13"}, {2, "Door"}})
      .object(
          "LAYOUT",
          {{5, "20"}, {100, "AcDbPlotSettings"}, {1, "plot"}, {100, "AcDbLayout"}, {1, "Model"}, {330, "10"}})
      .object(
          "LAYOUT",
          {{5, "21"}, {100, "AcDbPlotSettings"}, {1, "plot"}, {100, "AcDbLayout"}, {1, "Plan"}, {330, "11"}})
      .object("LAYOUT", {{5, "22"}, {100, "AcDbLayout"}, {1, "Section"}, {330, "12"}});
}

struct Place {
  std::wstring owner;
  Space space;
  std::wstring layout;
  friend bool operator==(const Place&, const Place&) = default;
};

Place placeOf(const Entity& entity) {
  return {nameOf(entity.owner()), entity.space(), entity.layoutName()};
}

Place placeOf(const Sample& sample) {
  const auto drawing = sample.open();
  return placeOf(entityOf(*drawing));
}

TEST(Entity, StandsInTheSheetThatOwnsIt) {
  EXPECT_EQ((Place{L"*MODEL_SPACE", Space::Model, L"Model"}),
            placeOf(sheets().entity("LINE", {{330, "10"}})));
  EXPECT_EQ((Place{L"*Paper_Space", Space::Paper, L"Plan"}),
            placeOf(sheets().entity("LINE", {{330, "11"}, {67, "1"}})));
}

TEST(Entity, InsideABlockStandsThereWhateverItSaysOfItsOwner) {
  const std::string line = record("LINE", {{330, "10"}, {67, "1"}});
  EXPECT_EQ((Place{L"Door", Space::Block, L""}), placeOf(sheets().block({{330, "13"}, {2, "Door"}}, line)));
  EXPECT_EQ((Place{L"*Paper_Space0", Space::Paper, L"Section"}),
            placeOf(sheets().block({{330, "12"}, {2, "*Paper_Space0"}}, line)));
}

TEST(Entity, WithAnOwnerThatIsNotASheetStandsWhereItsFlagSays) {
  for (const char* owner : {"13", "20", "99", "0", "none", "FFFFFFFFFFFFFFFFF"}) {
    EXPECT_EQ((Place{L"*MODEL_SPACE", Space::Model, L"Model"}),
              placeOf(sheets().entity("LINE", {{330, owner}})));
    EXPECT_EQ((Place{L"*Paper_Space", Space::Paper, L"Plan"}),
              placeOf(sheets().entity("LINE", {{330, owner}, {67, "1"}})));
  }
}

TEST(Entity, MayOwnItselfOrBeOwnedInACircle) {
  const auto drawing = sheets()
                           .entity("LINE", {{5, "A"}, {330, "A"}})
                           .entity("LINE", {{5, "B"}, {330, "C"}})
                           .entity("LINE", {{5, "C"}, {330, "B"}})
                           .open();
  for (std::size_t index = 0; index < 3; ++index)
    EXPECT_EQ(Space::Model, entityOf(*drawing, index).space());
}

TEST(Entity, OfAnOldDrawingStandsWhereItsFlagSays) {
  const Sample old = Sample().block({{2, "$MODEL_SPACE"}}).block({{2, "$PAPER_SPACE"}, {67, "1"}});
  EXPECT_EQ((Place{L"$MODEL_SPACE", Space::Model, L"Model"}), placeOf(Sample(old).entity("LINE")));
  EXPECT_EQ((Place{L"$PAPER_SPACE", Space::Paper, L""}), placeOf(Sample(old).entity("LINE", {{67, "1"}})));
  EXPECT_EQ((Place{L"-", Space::Paper, L""}), placeOf(Sample().entity("LINE", {{67, "1"}})));
  EXPECT_EQ((Place{L"DOOR", Space::Block, L""}), placeOf(Sample().block({{2, "DOOR"}}, record("LINE", {}))));
}

TEST(Entity, AmongTheBlocksButOutsideEachOfThemHasNoOwner) {
  // given
  std::string bytes = sheets().block({{2, "DOOR"}}).bytes();
  bytes.insert(bytes.find("0\nENDBLK\n") + 9, record("LINE", {{330, "10"}}));
  const auto drawing = Drawing::parse(bytes, "sample.dxf");
  // then
  ASSERT_EQ(1U, drawing->entities().size());
  EXPECT_EQ((Place{L"-", Space::Block, L""}), placeOf(entityOf(*drawing)));
}

TEST(Entity, AMemberOfASequenceStandsWhereItsHeadStands) {
  const auto drawing = sheets()
                           .entity("INSERT", {{330, "11"}, {67, "1"}, {66, "1"}, {2, "Door"}})
                           .entity("ATTRIB", {{330, "77"}, {8, "Own"}})
                           .entity("SEQEND")
                           .open();
  const RecordRange attributes = drawing->members(entityRecord(*drawing));
  ASSERT_EQ(1U, attributes.count);
  const Entity attribute(*drawing, attributes.first);
  EXPECT_EQ((Place{L"*Paper_Space", Space::Paper, L"Plan"}), placeOf(attribute));
  EXPECT_EQ(L"Own", attribute.layerName());
}

}  // namespace
}  // namespace velt::database
