#include "embedded/database/ObjectTable.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include "host/database/OpenObject.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Sample;

const ObjectClass& lines() {
  return objectClasses().front();
}

// Objects are made for a drawing; which one does not matter here.
class ObjectTableTest : public testing::Test {
 protected:
  VkDbImpObject& acquire() { return table_.acquire(*drawing_, lines(), 1); }

  std::unique_ptr<Drawing> drawing_ = Sample().entity("POINT").open();
  ObjectTable& table_ = ObjectTable::ofProcess();
};

TEST_F(ObjectTableTest, AnIdLeadsToItsObjectAndBack) {
  VkDbImpObject& object = acquire();
  const VkDbObjectId id = ObjectTable::idOf(object);
  EXPECT_FALSE(id.isNull());
  EXPECT_EQ(&object, table_.find(id));
  EXPECT_EQ(&object, &table_.at(object.slot));
  EXPECT_EQ(id, ObjectTable::objectOf(object)->objectId());
  table_.release(object);
}

TEST_F(ObjectTableTest, OldIdsArePositive) {
  VkDbImpObject& object = acquire();
  EXPECT_LT(0, ObjectTable::idOf(object).asOldId());
  table_.release(object);
}

TEST_F(ObjectTableTest, AReleasedIdIsStaleForEverAlthoughItsSlotIsUsedAgain) {
  // given
  std::set<long> seen;
  std::uint32_t slot = 0;
  for (int round = 0; round < 100; ++round) {
    // when
    VkDbImpObject& object = acquire();
    const VkDbObjectId id = ObjectTable::idOf(object);
    if (round > 0) {
      EXPECT_EQ(slot, object.slot);
    }
    slot = object.slot;
    table_.release(object);
    // then
    EXPECT_TRUE(seen.insert(id.asOldId()).second);
    for (const long old : seen)
      EXPECT_EQ(nullptr, table_.find(VkDbObjectId().setFromOldId(old)));
    EXPECT_TRUE(ObjectTable::idOf(object).isNull());
  }
}

TEST_F(ObjectTableTest, NullAndMadeUpIdsLeadNowhere) {
  // given
  VkDbImpObject& object = acquire();
  const long real = ObjectTable::idOf(object).asOldId();
  // then
  EXPECT_EQ(nullptr, table_.find(VkDbObjectId::kNull));
  constexpr long limits[] = {
      1, 2, -1, 0xFFFFFFFF, 1L << 32, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()};
  for (const long madeUp : limits) {
    if (madeUp == real) continue;
    if (VkDbImpObject* found = table_.find(VkDbObjectId().setFromOldId(madeUp))) {
      EXPECT_EQ(madeUp, ObjectTable::idOf(*found).asOldId()) << "found something that it does not name";
    }
  }
  EXPECT_EQ(nullptr, table_.find(VkDbObjectId().setFromOldId(real + (1L << 32))));
  EXPECT_EQ(nullptr, table_.find(VkDbObjectId().setFromOldId(real | std::numeric_limits<long>::min())));
  table_.release(object);
}

TEST_F(ObjectTableTest, RandomIdsNeverLeadToAnObjectOfAnotherId) {
  const auto seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  for (int round = 0; round < 100000; ++round) {
    const long madeUp = static_cast<long>(random() >> (random() % 64));
    VkDbImpObject* const found = table_.find(VkDbObjectId().setFromOldId(madeUp));
    if (found != nullptr) {
      ASSERT_EQ(madeUp, ObjectTable::idOf(*found).asOldId());
    }
  }
}

TEST_F(ObjectTableTest, ASlotIsNotUsedAgainWhileItsObjectIsOpen) {
  // given
  VkDbImpObject& object = acquire();
  VkDbObject* opened = nullptr;
  ASSERT_EQ(Velt::eOk, vkdbOpenVkDbObject(opened, ObjectTable::idOf(object), VkDb::kForRead));
  table_.release(object);
  // when
  VkDbImpObject& other = acquire();
  // then
  EXPECT_NE(object.slot, other.slot);
  EXPECT_EQ(Velt::eOk, opened->close());
  VkDbImpObject& afterwards = acquire();
  EXPECT_EQ(object.slot, afterwards.slot);
  table_.release(other);
  table_.release(afterwards);
}

TEST_F(ObjectTableTest, ASlotWhoseGenerationsAreUsedUpIsNotUsedAgain) {
  // given
  VkDbImpObject& object = acquire();
  object.nextGeneration = 0x8000'0000;
  const std::uint32_t slot = object.slot;
  // when
  table_.release(object);
  // then
  VkDbImpObject& other = acquire();
  EXPECT_NE(slot, other.slot);
  table_.release(other);
}

TEST_F(ObjectTableTest, TheLastGenerationIsUsed) {
  VkDbImpObject& object = acquire();
  object.nextGeneration = 0x7FFF'FFFF;
  table_.release(object);
  VkDbImpObject& last = acquire();
  EXPECT_EQ(&object, &last);
  EXPECT_LT(0, ObjectTable::idOf(last).asOldId());
  EXPECT_EQ(&last, table_.find(ObjectTable::idOf(last)));
  table_.release(last);
}

TEST_F(ObjectTableTest, ItGrowsBeyondItsFirstChunk) {
  std::vector<VkDbImpObject*> objects;
  const std::size_t before = table_.size();
  for (int count = 0; count < 200'000; ++count)
    objects.push_back(&acquire());
  EXPECT_EQ(before + objects.size(), table_.size());
  std::set<long> ids;
  for (VkDbImpObject* object : objects) {
    ids.insert(ObjectTable::idOf(*object).asOldId());
    ASSERT_EQ(object, table_.find(ObjectTable::idOf(*object)));
  }
  EXPECT_EQ(objects.size(), ids.size());
  for (VkDbImpObject* object : objects)
    table_.release(*object);
  EXPECT_EQ(before, table_.size());
}

TEST_F(ObjectTableTest, ThreadsMayMakeAndEndObjectsAtOnce) {
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([this] {
      for (int round = 0; round < 5000; ++round) {
        VkDbImpObject& object = acquire();
        const VkDbObjectId id = ObjectTable::idOf(object);
        EXPECT_EQ(&object, table_.find(id));
        table_.release(object);
        EXPECT_EQ(nullptr, table_.find(id));
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
}

}  // namespace
}  // namespace velt::database
