#include "embedded/database/Layer.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Sample;

struct State {
  bool off, frozen, locked;
};

State stateOf(const char* flags, const char* color) {
  const auto drawing = Sample().layer("Walls", {{70, flags}, {62, color}}).open();
  const Layer layer(*drawing, drawing->layers().entries()[0].record);
  return {layer.isOff(), layer.isFrozen(), layer.isLocked()};
}

TEST(Layer, FlagsAndTheSignOfTheColorTellItsState) {
  for (const int flags : {0, 1, 2, 4, 5, 64, 71}) {
    for (const int color : {7, -7}) {
      const State state = stateOf(std::to_string(flags).c_str(), std::to_string(color).c_str());
      EXPECT_EQ(color < 0, state.off) << flags;
      EXPECT_EQ((flags & 1) != 0, state.frozen) << flags;
      EXPECT_EQ((flags & 4) != 0, state.locked) << flags;
    }
  }
}

TEST(Layer, ALayerThatTellsNothingIsOnThawedAndUnlocked) {
  const auto drawing = Sample().layer("Walls").open();
  const Layer layer(*drawing, drawing->layers().entries()[0].record);
  EXPECT_FALSE(layer.isOff() || layer.isFrozen() || layer.isLocked());
  EXPECT_EQ(L"Continuous", layer.linetypeName());
  EXPECT_EQ(L"Walls", layer.name());
}

TEST(Layer, AnEditShowsAtOnce) {
  // given
  const auto drawing = Sample().layer("Walls", {{70, "0"}, {62, "3"}, {6, "DASHED"}}).open();
  const std::uint32_t record = drawing->layers().entries()[0].record;
  const Layer layer(*drawing, record);
  // when
  drawing->edit(record, [&](dxf::Document& document) {
    document.set(record, 70, dxf::anySubclass, "4");
    document.set(record, 62, dxf::anySubclass, "-5");
  });
  // then
  EXPECT_TRUE(layer.isLocked());
  EXPECT_TRUE(layer.isOff());
  EXPECT_EQ(0xC3000005, layer.color().color());
  EXPECT_EQ(L"DASHED", layer.linetypeName());
}

TEST(Layer, OneThatIsOnlyNamedHasTheDefaults) {
  const auto drawing = Sample().entity("LINE", {{8, "Walls"}}).open();
  const Layer layer(*drawing, drawing->layers().find(L"Walls")->record);
  EXPECT_EQ(0xC3000007, layer.color().color());
  EXPECT_EQ(L"Continuous", layer.linetypeName());
  EXPECT_FALSE(layer.isOff() || layer.isFrozen() || layer.isLocked());
}

}  // namespace
}  // namespace velt::database
