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
  static palette::PlainValue number(std::int64_t value) { return value; }
  static double price(const PaletteOf& shown) { return std::get<double>(shown.row("Price").plain()); }

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
    const PaletteOf shown(entity(index));
    const palette::Row row = shown.row("Material");
    EXPECT_EQ(VT_I4, row.record().value.vt);
    EXPECT_EQ(number(0), row.plain());
    EXPECT_TRUE(row.isEditable());
    EXPECT_EQ("Material", row.categoryName());
    const std::vector<palette::Choice> choices = row.choices();
    ASSERT_EQ(4U, choices.size());
    EXPECT_EQ("Oak", choices[2].label);
    EXPECT_EQ(2, choices[2].integer);
  }
}

TEST_F(MaterialSample, WhatHasAnAreaHasAPriceThatCannotBeSet) {
  const PaletteOf shown(entity(0));
  EXPECT_NEAR(4 * std::numbers::pi * 0.5, price(shown), 1e-9);
  EXPECT_FALSE(shown.row("Price").isEditable());
  EXPECT_FALSE(PaletteOf(entity(1)).has("Price")) << "a line";
}

TEST_F(MaterialSample, AChosenMaterialIsKeptAndPriced) {
  const palette::Report report = PaletteOf(entity(0)).set("Material", palette::Value::ofInteger(2));
  EXPECT_EQ("1 changed", report.summary());
  const PaletteOf shown(entity(0));
  EXPECT_EQ(number(2), shown.row("Material").plain());
  EXPECT_NEAR(4 * std::numbers::pi * 2.5, price(shown), 1e-9);
  EXPECT_EQ(number(0), PaletteOf(entity(2)).row("Material").plain()) << "the other circle";
  EXPECT_EQ(0U, drawing_->revision()) << "the drawing is not changed";
}

TEST_F(MaterialSample, WithoutThePluginThereAreNoRows) {
  plugin_.reset();
  EXPECT_FALSE(PaletteOf(entity(0)).has("Material"));
}

}  // namespace
}  // namespace velt::tests
