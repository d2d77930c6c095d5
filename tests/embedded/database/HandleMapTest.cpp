#include "embedded/database/HandleMap.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

namespace velt::database {
namespace {

TEST(HandleMap, AnEmptyMapFindsNothing) {
  const HandleMap map;
  EXPECT_EQ(std::nullopt, map.find(0));
  EXPECT_EQ(std::nullopt, map.find(1));
  EXPECT_EQ(0U, map.size());
}

TEST(HandleMap, TheFirstRecordOfAHandleStays) {
  HandleMap map;
  EXPECT_TRUE(map.add(0x1F, 3));
  EXPECT_FALSE(map.add(0x1F, 4));
  EXPECT_EQ(3U, map.find(0x1F));
  EXPECT_EQ(1U, map.size());
}

TEST(HandleMap, ZeroIsNotAHandle) {
  HandleMap map;
  EXPECT_FALSE(map.add(0, 3));
  EXPECT_EQ(std::nullopt, map.find(0));
}

TEST(HandleMap, TheLargestHandleIsOneLikeAnyOther) {
  HandleMap map;
  EXPECT_TRUE(map.add(std::numeric_limits<std::uint64_t>::max(), 9));
  EXPECT_EQ(9U, map.find(std::numeric_limits<std::uint64_t>::max()));
}

TEST(HandleMap, AgreesWithAPlainMapForAnyHandles) {
  for (const std::size_t reserved : {0U, 1U, 5000U}) {
    // given
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    HandleMap map;
    map.reserve(reserved);
    std::map<std::uint64_t, std::uint32_t> model;
    // when
    for (std::uint32_t record = 0; record < 5000; ++record) {
      const std::uint64_t handle = random() >> (random() % 64);
      const bool isNew = handle != 0 && model.emplace(handle, record).second;
      ASSERT_EQ(isNew, map.add(handle, record));
    }
    // then
    EXPECT_EQ(model.size(), map.size());
    for (std::uint64_t handle = 0; handle < 3000; ++handle) {
      const auto expected = model.find(handle);
      ASSERT_EQ(expected != model.end() ? std::optional(expected->second) : std::nullopt, map.find(handle));
    }
    for (const auto& [handle, record] : model)
      ASSERT_EQ(record, map.find(handle));
  }
}

}  // namespace
}  // namespace velt::database
