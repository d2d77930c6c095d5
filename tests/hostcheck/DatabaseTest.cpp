#include "tests/hostcheck/Stage.h"

namespace velt::hostcheck {
namespace {

using namespace velt::tests;
using namespace velt::toys;

using Database = Stage;

TEST_F(Database, IsFoundWhenAMadeUpIdOpens) {
  host.database[-1] = &entity;
  EXPECT_EQ(found(), Names{"made-up-id"});
}

TEST_F(Database, IsFoundWhenAnEntityDoesNotOpen) {
  EXPECT_EQ(found({id, 4711}), Names{"entity-opens"});
}

TEST_F(Database, IsFoundWhenAnOpeningThatSucceedsAnswersNoObject) {
  host.on("vkdbOpenObject(77").answerNothing();
  EXPECT_EQ(found(), Names{"opening-agrees"});
}

TEST_F(Database, IsFoundWhenAnEntityIsOfAnotherClass) {
  ToyEntity other(host, "other", 78, VkDbObject::desc());
  other.opensAsAnything = true;
  other.classId = toyClass(1);
  other.layer = layer.objectId();
  EXPECT_EQ(found({78}), Names{"entity-class"});
}

TEST_F(Database, IsFoundWhenAnEntityHasNoClassId) {
  entity.classId = GUID_NULL;
  host.createInstance = [this](REFCLSID clsid) { return clsid == GUID_NULL ? &part : nullptr; };
  EXPECT_EQ(found(), Names{"class-id"});
}

TEST_F(Database, IsFoundWhenTwoClassIdsAgreeUpToAZeroByte) {
  ToyEntity other(host, "other", 78);
  other.layer = layer.objectId();
  CLSID first = toyClass(1);
  first.Data2 = 0;
  CLSID second = first;
  second.Data4[7] = 99;
  entity.classId = first;
  other.classId = second;
  host.createInstance = [&](REFCLSID clsid) { return clsid == first || clsid == second ? &part : nullptr; };
  EXPECT_EQ(found({id, 78}), Names{"class-id-bytes"});
}

TEST_F(Database, IsFoundWhenNoEntityIsOnALayer) {
  entity.layer = VkDbObjectId::kNull;
  EXPECT_EQ(found(), Names{"layer-opens"});
}

TEST_F(Database, MayHoldAnEntityWhoseLayerDoesNotExist) {
  ToyEntity other(host, "other", 78);
  other.classId = toyClass(1);
  EXPECT_EQ(found({id, 78}), Names{});
}

TEST_F(Database, IsFoundWhenALayerIsNone) {
  entity.layer = entity.objectId();
  EXPECT_EQ(found(), Names{"layer-opens"});
}

TEST_F(Database, IsLeftWithNothingOpen) {
  found();
  EXPECT_EQ(entity.opened, 0);
  EXPECT_EQ(layer.opened, 0);
}

}  // namespace
}  // namespace velt::hostcheck
