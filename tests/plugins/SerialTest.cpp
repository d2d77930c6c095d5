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
  const std::wstring one = PaletteOf(entity(0)).text(L"Serial number");
  const std::wstring other = PaletteOf(entity(1)).text(L"Serial number");
  EXPECT_TRUE(one.starts_with(L"S-"));
  EXPECT_NE(one, other);
  EXPECT_EQ(one, PaletteOf(entity(0)).text(L"Serial number"));
}

TEST_F(SerialSample, OnlyReferencesHaveOne) {
  EXPECT_FALSE(PaletteOf(entity(2)).has(L"Serial number"));
}

TEST_F(SerialSample, ANumberMayBeOverwrittenByATextThatIsNotTooLong) {
  PaletteOf(entity(0)).set(L"Serial number", L"A 17");
  EXPECT_EQ(L"A 17", PaletteOf(entity(0)).text(L"Serial number"));
  PaletteOf(entity(1)).set(L"Serial number", L"123456789012345678901");
  expectedToBeTold_ = {"plug-in serial.so: SetCurrentValueData failed: An argument is not valid."};
  EXPECT_TRUE(PaletteOf(entity(1)).text(L"Serial number").starts_with(L"S-"));
}

}  // namespace
}  // namespace velt::tests
