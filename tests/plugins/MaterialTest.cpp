// The sample plug-in of the newer generation, shown and set through the layer.

#include <gtest/gtest.h>

#include <numbers>

#include "tests/plugins/Palette.h"

namespace velt::tests {
namespace {

using database::test::Sample;

class MaterialSample : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(expectedToBeTold_, told_); }
  Ids entity(std::size_t index) const { return {drawing_->entities()[index]}; }

  std::vector<std::string> expectedToBeTold_;

  std::vector<std::string> told_;
  std::unique_ptr<sources::LoadedPlugins> plugin_ = loadSample("material", told_);
  std::unique_ptr<database::Drawing> drawing_ = Sample()
                                                    .entity("CIRCLE", {{8, "0"}, {40, "2.0"}})
                                                    .entity("LINE", {{8, "0"}})
                                                    .entity("CIRCLE", {{8, "0"}, {40, "1.0"}})
                                                    .open();
};

TEST_F(MaterialSample, EveryEntityHasAMaterialWithItsChoices) {
  for (const std::size_t index : {0U, 1U}) {
    const PaletteOf palette(entity(index));
    const PROPINFO& row = palette.row(L"Material");
    EXPECT_EQ(VT_I4, row.value.vt);
    EXPECT_EQ(0, row.value.lVal);
    EXPECT_TRUE(row.isEditable);
    EXPECT_EQ(L"Material", row.categoryName.str());
    ASSERT_EQ(4U, row.choiceNames.length());
    EXPECT_EQ(L"Oak", row.choiceNames[2].str());
    EXPECT_EQ(2, row.choiceValues[2]);
  }
}

TEST_F(MaterialSample, WhatHasAnAreaHasAPriceThatCannotBeSet) {
  PaletteOf palette(entity(0));
  const PROPINFO& row = palette.row(L"Price");
  EXPECT_EQ(VT_R8, row.value.vt);
  EXPECT_NEAR(4 * std::numbers::pi * 0.5, row.value.dblVal, 1e-9);
  EXPECT_FALSE(row.isEditable);
  EXPECT_FALSE(PaletteOf(entity(1)).has(L"Price")) << "a line";
}

TEST_F(MaterialSample, AChosenMaterialIsKeptAndPriced) {
  PaletteOf(entity(0)).set(L"Material", 2);
  const PaletteOf palette(entity(0));
  EXPECT_EQ(2, palette.row(L"Material").value.lVal);
  EXPECT_NEAR(4 * std::numbers::pi * 2.5, palette.row(L"Price").value.dblVal, 1e-9);
  EXPECT_EQ(0, PaletteOf(entity(2)).row(L"Material").value.lVal) << "the other circle";
  EXPECT_EQ(0U, drawing_->revision()) << "the drawing is not changed";
}

TEST_F(MaterialSample, WithoutThePluginThereAreNoRows) {
  plugin_.reset();
  EXPECT_FALSE(PaletteOf(entity(0)).has(L"Material"));
}

}  // namespace
}  // namespace velt::tests
