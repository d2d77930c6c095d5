#include "host/database/OpenObject.h"

#include <gtest/gtest.h>

#include "embedded/database/ObjectTable.h"
#include "embedded/database/OpenAccount.h"
#include "embedded/platform/Ledger.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using platform::Ledger;
using test::entityRecord;
using test::Sample;

std::int64_t openNow() {
  const Ledger::Snapshot now = Ledger::snapshot();
  const auto account = now.find(openObjectsAccountName);
  return account != now.end() ? account->second.handedOut - account->second.givenBack : 0;
}

class OpenObject : public testing::Test {
 protected:
  OpenObject() : before_(Ledger::snapshot()) {}
  ~OpenObject() override {
    EXPECT_EQ("balanced", Ledger::print(Ledger::difference(before_, Ledger::snapshot())));
  }

  Ledger::Snapshot before_;
  std::unique_ptr<Drawing> drawing_ = Sample().layer("Walls").entity("LINE", {{8, "Walls"}}).open();
  VkDbObjectId line_ = drawing_->entities()[0];
  VkDbObjectId layer_ = drawing_->layers().find(L"walls")->id;
};

TEST_F(OpenObject, OpensAnEntityForEveryModeAndCountsUntilItIsClosed) {
  for (const auto mode : {VkDb::kForRead, VkDb::kForWrite, VkDb::kForNotify}) {
    const std::int64_t open = openNow();
    VkDbEntity* entity = nullptr;
    ASSERT_EQ(Velt::eOk, vkdbOpenVkDbEntity(entity, line_, mode));
    ASSERT_NE(nullptr, entity);
    EXPECT_EQ(line_, entity->objectId());
    EXPECT_EQ(open + 1, openNow());
    EXPECT_EQ(Velt::eOk, entity->close());
    EXPECT_EQ(open, openNow());
  }
}

TEST_F(OpenObject, AnyNumberMayHaveOneObjectOpen) {
  VkDbEntity *first = nullptr, *second = nullptr;
  ASSERT_EQ(Velt::eOk, vkdbOpenObject(first, line_, VkDb::kForWrite));
  ASSERT_EQ(Velt::eOk, vkdbOpenObject(second, line_, VkDb::kForRead));
  EXPECT_EQ(first, second) << "an id always gives the same object";
  EXPECT_EQ(Velt::eOk, first->close());
  EXPECT_EQ(Velt::eOk, second->close());
}

TEST_F(OpenObject, AnObjectThatIsNotOpenCannotBeClosed) {
  VkDbEntity* entity = nullptr;
  ASSERT_EQ(Velt::eOk, vkdbOpenObject(entity, line_, VkDb::kForRead));
  ASSERT_EQ(Velt::eOk, entity->close());
  EXPECT_EQ(Velt::eInvalidInput, entity->close());
}

// What a pointer holds before a call that fails: the call makes it null.
template <class T>
T* notNull() {
  static long place = 0;
  return reinterpret_cast<T*>(&place);
}

Velt::ErrorStatus statusOf(VkDbObjectId id, VkDb::OpenMode mode = VkDb::kForRead, bool openErased = false) {
  auto* object = notNull<VkDbObject>();
  const Velt::ErrorStatus status = vkdbOpenVkDbObject(object, id, mode, openErased);
  if (status == Velt::eOk) {
    object->close();
  } else {
    EXPECT_EQ(nullptr, object);
  }
  return status;
}

Velt::ErrorStatus entityStatusOf(VkDbObjectId id, bool openErased = false) {
  auto* entity = notNull<VkDbEntity>();
  const Velt::ErrorStatus status = vkdbOpenVkDbEntity(entity, id, VkDb::kForRead, openErased);
  if (status == Velt::eOk) {
    entity->close();
  } else {
    EXPECT_EQ(nullptr, entity);
  }
  auto* other = notNull<VkDbEntity>();
  if (!openErased) {
    EXPECT_EQ(status, vkdbOpenObject(other, id, VkDb::kForRead));
    if (status == Velt::eOk) {
      other->close();
    } else {
      EXPECT_EQ(nullptr, other);
    }
  }
  return status;
}

TEST_F(OpenObject, TheNullIdOpensNothing) {
  EXPECT_EQ(Velt::eNullObjectId, statusOf(VkDbObjectId::kNull));
  EXPECT_EQ(Velt::eNullObjectId, entityStatusOf(VkDbObjectId::kNull));
}

TEST_F(OpenObject, AMadeUpIdOpensNothing) {
  for (const long madeUp : {1L, -1L, 0x7FFFFFFFFFFFFFFFL, line_.asOldId() + (1L << 32), -line_.asOldId()}) {
    EXPECT_EQ(Velt::eInvalidObjectId, statusOf(VkDbObjectId().setFromOldId(madeUp))) << madeUp;
    EXPECT_EQ(Velt::eInvalidObjectId, entityStatusOf(VkDbObjectId().setFromOldId(madeUp))) << madeUp;
  }
}

TEST_F(OpenObject, AnIdOfAClosedDrawingOpensNothingEvenWhenAnotherDrawingIsOpened) {
  drawing_.reset();
  EXPECT_EQ(Velt::eInvalidObjectId, statusOf(line_));
  const auto other = Sample().layer("Walls").entity("LINE", {{8, "Walls"}}).open();
  EXPECT_EQ(Velt::eInvalidObjectId, statusOf(line_));
  EXPECT_EQ(Velt::eInvalidObjectId, statusOf(layer_));
  EXPECT_EQ(Velt::eOk, statusOf(other->entities()[0]));
}

TEST_F(OpenObject, AnUnknownModeOpensNothing) {
  EXPECT_EQ(Velt::eInvalidInput, statusOf(line_, static_cast<VkDb::OpenMode>(3)));
  EXPECT_EQ(Velt::eInvalidInput, statusOf(line_, static_cast<VkDb::OpenMode>(-1)));
}

TEST_F(OpenObject, AnErasedObjectOpensOnlyForThoseWhoAskForErasedOnes) {
  drawing_->setErased(entityRecord(*drawing_), true);
  EXPECT_EQ(Velt::eWasErased, statusOf(line_));
  EXPECT_EQ(Velt::eWasErased, entityStatusOf(line_));
  EXPECT_EQ(Velt::eOk, statusOf(line_, VkDb::kForRead, true));
  EXPECT_EQ(Velt::eOk, entityStatusOf(line_, true));

  drawing_->setErased(entityRecord(*drawing_), false);
  EXPECT_EQ(Velt::eOk, statusOf(line_));
}

TEST_F(OpenObject, AnObjectThatIsNotAnEntityIsNotOpenedAsOne) {
  EXPECT_EQ(Velt::eNotThatKindOfClass, entityStatusOf(layer_));
  EXPECT_EQ(Velt::eOk, statusOf(layer_));
}

TEST_F(OpenObject, TheWrongClassIsRefusedAndLeavesNothingOpen) {
  const std::int64_t open = openNow();
  auto* layer = notNull<VkDbLayerTableRecord>();
  EXPECT_EQ(Velt::eNotThatKindOfClass,
            vkdbOpenObject<VkDbLayerTableRecord>(layer, line_, VkDb::kForRead, false));
  EXPECT_EQ(nullptr, layer);
  EXPECT_EQ(open, openNow());

  ASSERT_EQ(Velt::eOk, vkdbOpenObject<VkDbLayerTableRecord>(layer, layer_, VkDb::kForRead, false));
  EXPECT_EQ(Velt::eOk, layer->close());
}

TEST_F(OpenObject, AnObjectPointerClosesWhatItOpened) {
  const std::int64_t open = openNow();
  {
    const VkDbObjectPointer<VkDbObject> object(line_, VkDb::kForRead);
    EXPECT_EQ(Velt::eOk, object.openStatus());
    EXPECT_EQ(open + 1, openNow());
    const VkDbObjectPointer<VkDbBlockReference> reference(line_, VkDb::kForRead);
    EXPECT_EQ(Velt::eNotThatKindOfClass, reference.openStatus());
    EXPECT_EQ(nullptr, reference.object());
  }
  EXPECT_EQ(open, openNow());
}

TEST_F(OpenObject, AnObjectThatOutlivesItsDrawingAnswersNothingAndCanBeClosed) {
  // given
  VkDbEntity* entity = nullptr;
  ASSERT_EQ(Velt::eOk, vkdbOpenObject(entity, line_, VkDb::kForRead));
  VkDbLayerTableRecord* layer = nullptr;
  ASSERT_EQ(Velt::eOk, vkdbOpenObject<VkDbLayerTableRecord>(layer, layer_, VkDb::kForRead, false));
  // when
  drawing_.reset();
  // then
  EXPECT_TRUE(entity->objectId().isNull());
  EXPECT_TRUE(entity->layerId().isNull());
  EXPECT_TRUE(entity->isKindOf(VkDbEntity::desc()));
  EXPECT_EQ(VkCmColor(), layer->color());
  EXPECT_FALSE(layer->isLocked());
  EXPECT_EQ(Velt::eOk, entity->close());
  EXPECT_EQ(Velt::eOk, layer->close());
}

TEST_F(OpenObject, OpeningManyTimesTakesNoMoreObjects) {
  const std::size_t objects = ObjectTable::ofProcess().size();
  for (int round = 0; round < 1000; ++round)
    EXPECT_EQ(Velt::eOk, statusOf(line_));
  EXPECT_EQ(objects, ObjectTable::ofProcess().size());
}

}  // namespace
}  // namespace velt::database
