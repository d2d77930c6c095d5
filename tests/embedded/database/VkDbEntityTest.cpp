#include "host/database/VkDbEntity.h"

#include <gtest/gtest.h>

#include "host/database/OpenObject.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Sample;

VkDbObjectId layerOf(const Drawing& drawing, std::size_t entity) {
  const VkDbObjectPointer<VkDbEntity> opened(drawing.entities()[entity], VkDb::kForRead);
  EXPECT_EQ(Velt::eOk, opened.openStatus());
  return opened->layerId();
}

TEST(VkDbEntity, ItsLayerIsTheRecordOfThatNameInAnyCase) {
  const auto drawing = Sample()
                           .version("AC1021")
                           .layer("0")
                           .layer("Wände")
                           .entity("LINE", {{8, " WÄNDE"}})
                           .entity("LINE")
                           .open();
  EXPECT_EQ(drawing->layers().entries()[1].id, layerOf(*drawing, 0));
  EXPECT_EQ(drawing->layers().entries()[0].id, layerOf(*drawing, 1))
      << "an entity that names none is on layer 0";
}

TEST(VkDbEntity, ALayerThatEntitiesOnlyNameCanBeOpenedAndHasTheDefaults) {
  const auto drawing = Sample().layer("0").entity("LINE", {{8, "Gone"}, {62, "3"}}).open();
  const VkDbObjectPointer<VkDbLayerTableRecord> layer(layerOf(*drawing, 0), VkDb::kForRead);
  ASSERT_EQ(Velt::eOk, layer.openStatus());
  EXPECT_FALSE(layer->isLocked());
  EXPECT_EQ(0xC3000007, layer->color().color());
  EXPECT_EQ(L"VkDbLayerTableRecord", std::wstring(layer->isA()->name()));
}

TEST(VkDbEntity, ALayerThatWasOnlyNamedAnswersNothingAfterItsDrawingIsClosed) {
  auto drawing = Sample().entity("LINE", {{8, "Gone"}}).open();
  const VkDbObjectId id = layerOf(*drawing, 0);
  const VkDbObjectPointer<VkDbLayerTableRecord> layer(id, VkDb::kForRead);
  drawing.reset();
  EXPECT_EQ(VkCmColor(), layer->color());
  EXPECT_EQ(Velt::eInvalidObjectId, VkDbObjectPointer<VkDbObject>(id, VkDb::kForRead).openStatus());
}

TEST(VkDbEntity, ALayerThatAnEditNamesIsNoneWhenTheDrawingHasNoneOfThatName) {
  const auto drawing = Sample().layer("0").entity("LINE", {{8, "0"}}).open();
  const std::uint32_t record = test::entityRecord(*drawing);
  drawing->edit(record, [&](dxf::Document& document) { document.set(record, 8, dxf::anySubclass, "Gone"); });
  EXPECT_TRUE(layerOf(*drawing, 0).isNull());
  const VkDbObjectPointer<VkDbEntity> entity(drawing->entities()[0], VkDb::kForRead);
  CLSID clsid{};
  EXPECT_EQ(Velt::eOk, entity->getClassID(&clsid));
}

TEST(VkDbEntity, TheLayerIsTheOneOfTheMoment) {
  // given
  const auto drawing = Sample().layer("A").layer("B").entity("LINE", {{8, "A"}}).open();
  const std::uint32_t record = test::entityRecord(*drawing);
  // when
  drawing->edit(record, [&](dxf::Document& document) { document.set(record, 8, dxf::anySubclass, "B"); });
  // then
  EXPECT_EQ(drawing->layers().find(L"B")->id, layerOf(*drawing, 0));
}

TEST(VkDbEntity, ALayerTellsItsColorAndWhetherItIsLocked) {
  const auto drawing = Sample().layer("Walls", {{70, "4"}, {62, "-3"}}).layer("Doors", {{70, "1"}}).open();
  const VkDbObjectPointer<VkDbLayerTableRecord> walls(drawing->layers().find(L"Walls")->id, VkDb::kForRead);
  const VkDbObjectPointer<VkDbLayerTableRecord> doors(drawing->layers().find(L"Doors")->id, VkDb::kForRead);
  EXPECT_TRUE(walls->isLocked());
  EXPECT_FALSE(doors->isLocked());
  EXPECT_EQ(0xC3000003, walls->color().color());
  EXPECT_NE(walls->color(), doors->color());
}

TEST(VkDbEntity, TwoDrawingsMayBeOpenAtOnce) {
  const auto one = Sample().layer("L", {{62, "1"}}).entity("LINE", {{8, "L"}}).open();
  const auto other = Sample().layer("L", {{62, "2"}}).entity("LINE", {{8, "L"}}).open();
  const auto colorOf = [](const Drawing& drawing) {
    const VkDbObjectPointer<VkDbLayerTableRecord> layer(layerOf(drawing, 0), VkDb::kForRead);
    return layer->color().color();
  };
  EXPECT_EQ(0xC3000001, colorOf(*one));
  EXPECT_EQ(0xC3000002, colorOf(*other));
  EXPECT_NE(one->entities()[0], other->entities()[0]);
}

// "Door" is dynamic, "*U1" and "*U2" are made of it, "Chair" is an ordinary block.
class BlockReference : public testing::Test {
 protected:
  struct Answer {
    std::wstring block, original;
    bool isEnhanced;
    friend bool operator==(const Answer&, const Answer&) = default;
  };

  Answer ask(std::size_t entity) {
    const VkDbObjectPointer<VkDbBlockReference> reference(drawing_->entities()[entity], VkDb::kForRead);
    EXPECT_EQ(Velt::eOk, reference.openStatus());
    return {nameOf(reference->blockTableRecord()),
            nameOf(vkdbGetEnhancedBlkOriginalBtrId(reference.object())),
            vkdbIsEnhancedBlockRef(reference.object())};
  }

  std::wstring nameOf(VkDbObjectId block) {
    const auto found = resolve(block);
    return found ? drawing_->blocks().ofRecord(found->record)->name : L"";
  }

  std::unique_ptr<Drawing> drawing_ =
      Sample()
          .tableRecord("BLOCK_RECORD",
                       {{5, "A0"}, {102, "{ACAD_XDICTIONARY"}, {360, "D0"}, {102, "}"}, {2, "Door"}})
          .tableRecord("BLOCK_RECORD", {{5, "A1"}, {2, "*U1"}, {1001, "AcDbBlockRepBTag"}, {1005, "A0"}})
          .tableRecord("BLOCK_RECORD", {{5, "A2"}, {2, "*U2"}, {1001, "AcDbBlockRepBTag"}, {1005, "A0"}})
          .tableRecord("BLOCK_RECORD", {{5, "A3"}, {2, "Chair"}})
          .object("DICTIONARY", {{5, "D0"}, {3, "ACAD_ENHANCEDBLOCK"}, {360, "D1"}})
          .object("ACAD_EVALUATION_GRAPH", {{5, "D1"}})
          .entity("INSERT", {{2, "Door"}})
          .entity("INSERT", {{2, "*U1"}})
          .entity("INSERT", {{2, "*U2"}})
          .entity("INSERT", {{2, "Chair"}})
          .entity("INSERT", {{2, "Window"}})
          .open();
};

TEST_F(BlockReference, OfADynamicBlockInAnotherStateHasAnOriginal) {
  EXPECT_EQ((Answer{L"*U1", L"Door", true}), ask(1));
  EXPECT_EQ((Answer{L"*U2", L"Door", true}), ask(2));
}

TEST_F(BlockReference, ToADynamicDefinitionIsEnhancedAndHasNoOriginal) {
  EXPECT_EQ((Answer{L"Door", L"", true}), ask(0));
}

TEST_F(BlockReference, ToAnOrdinaryBlockIsNotEnhanced) {
  EXPECT_EQ((Answer{L"Chair", L"", false}), ask(3));
}

TEST_F(BlockReference, ToABlockThatDoesNotExistAnswersNothing) {
  EXPECT_EQ((Answer{L"", L"", false}), ask(4));
}

TEST_F(BlockReference, ANullReferenceIsNotEnhanced) {
  EXPECT_FALSE(vkdbIsEnhancedBlockRef(nullptr));
  EXPECT_TRUE(vkdbGetEnhancedBlkOriginalBtrId(nullptr).isNull());
}

TEST_F(BlockReference, ThatOutlivesItsDrawingAnswersNothing) {
  VkDbBlockReference* reference = nullptr;
  ASSERT_EQ(Velt::eOk,
            vkdbOpenObject<VkDbBlockReference>(reference, drawing_->entities()[1], VkDb::kForRead, false));
  drawing_.reset();
  EXPECT_TRUE(reference->blockTableRecord().isNull());
  EXPECT_TRUE(vkdbGetEnhancedBlkOriginalBtrId(reference).isNull());
  EXPECT_FALSE(vkdbIsEnhancedBlockRef(reference));
  reference->close();
}

TEST(BlockReferenceOfAnOldDrawing, RefersToTheBlockItself) {
  const auto drawing = Sample().block({{2, "CHAIR"}}).entity("INSERT", {{2, "Chair"}}).open();
  const VkDbObjectPointer<VkDbBlockReference> reference(drawing->entities()[0], VkDb::kForRead);
  EXPECT_EQ(drawing->blocks().find(L"chair")->id, reference->blockTableRecord());
  const VkDbObjectPointer<VkDbObject> block(reference->blockTableRecord(), VkDb::kForRead);
  EXPECT_STREQ(L"VkDbBlockTableRecord", block->isA()->name());
}

}  // namespace
}  // namespace velt::database
