// The sample plug-in of the older generation, shown and set through the layer.

#include <gtest/gtest.h>

#include "tests/plugins/Palette.h"

namespace velt::tests {
namespace {

using database::test::Sample;

class SerialSample : public testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(expectedToBeTold_, told_); }
  Ids entity(std::size_t index) const { return {drawing_->entities()[index]}; }

  std::vector<std::string> expectedToBeTold_;

  std::vector<std::string> told_;
  std::unique_ptr<sources::LoadedPlugins> plugin_ = loadSample("serial", told_);
  std::unique_ptr<database::Drawing> drawing_ = Sample()
                                                    .tableRecord("BLOCK_RECORD", {{5, "A0"}, {2, "Door"}})
                                                    .block({{5, "B0"}, {330, "A0"}, {2, "Door"}})
                                                    .entity("INSERT", {{8, "0"}, {2, "Door"}})
                                                    .entity("INSERT", {{8, "0"}, {2, "Door"}})
                                                    .entity("LINE", {{8, "0"}})
                                                    .open();
};

TEST_F(SerialSample, EachReferenceHasANumberOfItsOwnThatStays) {
  const std::string one = PaletteOf(entity(0)).text("Serial number");
  const std::string other = PaletteOf(entity(1)).text("Serial number");
  EXPECT_TRUE(one.starts_with("S-"));
  EXPECT_NE(one, other);
  EXPECT_EQ(one, PaletteOf(entity(0)).text("Serial number"));
}

TEST_F(SerialSample, OnlyReferencesHaveOne) {
  EXPECT_FALSE(PaletteOf(entity(2)).has("Serial number"));
}

TEST_F(SerialSample, ANumberMayBeOverwrittenByATextThatIsNotTooLong) {
  const auto set = [&](std::size_t index, const char* text) {
    return PaletteOf(entity(index)).set("Serial number", palette::Value::ofText(text)).summary();
  };
  EXPECT_EQ("1 changed", set(0, "A 17"));
  EXPECT_EQ("A 17", PaletteOf(entity(0)).text("Serial number"));
  EXPECT_EQ("1 refused", set(1, "123456789012345678901"));
  expectedToBeTold_ = {"plug-in serial.so: SetCurrentValueData failed: An argument is not valid."};
  EXPECT_TRUE(PaletteOf(entity(1)).text("Serial number").starts_with("S-"));
}

}  // namespace
}  // namespace velt::tests
