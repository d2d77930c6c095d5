#include "propdata/dynamic/EntityId.h"

#include <gtest/gtest.h>

#include "tests/support/LayerTest.h"
#include "tests/support/ToyObject.h"

namespace velt::toys {
namespace {

using propdata::entityIdOf;

class EntityId : public LayerTest {
 protected:
  EntityId() { line.objectId.setFromOldId(77); }
  long idOf(IUnknown* object) {
    host.mark();
    const long id = entityIdOf(object).asOldId();
    EXPECT_EQ(host.balance(), "balanced");
    return id;
  }

  ToyObject line{host, "line"};
};

TEST_F(EntityId, IsWhatTheBaseObjectTells) {
  EXPECT_EQ(idOf(line.dispatch()), 77);
  EXPECT_EQ(idOf(line.unknown()), 77);
}

TEST_F(EntityId, AsksTheObjectOnceAndReleasesIt) {
  idOf(line.dispatch());

  EXPECT_EQ(host.log.all(), (Lines{"QueryInterface(IVeltBaseObject) on line", "GetObjectId() on line",
                                   "Release(IVeltBaseObject) on line"}));
}

TEST_F(EntityId, IsNullWithoutAnObject) {
  EXPECT_EQ(idOf(nullptr), 0);
}

TEST_F(EntityId, IsNullWithoutABaseObject) {
  line.withhold(IID_IVeltBaseObject);

  EXPECT_EQ(idOf(line.dispatch()), 0);
}

TEST_F(EntityId, IsNullWhenTheQueryYieldsNothing) {
  host.on("QueryInterface(IVeltBaseObject)").answerNull();

  EXPECT_EQ(idOf(line.dispatch()), 0);
}

TEST_F(EntityId, IsNullWhenTheObjectDoesNotTell) {
  host.on("GetObjectId").fail();

  EXPECT_EQ(idOf(line.dispatch()), 0);
}

TEST_F(EntityId, OfAnObjectThatIsTiedToNothingIsNull) {
  line.objectId = VkDbObjectId();

  EXPECT_EQ(idOf(line.dispatch()), 0);
}

}  // namespace
}  // namespace velt::toys
