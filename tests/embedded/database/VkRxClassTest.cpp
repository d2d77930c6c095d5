#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "host/database/VkDbEntity.h"
#include "host/database/VkRxObject.h"

namespace {

struct Protocol {
  VkRxClass description{L"Protocol", VkRxObject::desc()};
};

struct Extension final : VkRxObject {};

// Three classes, each the parent of the next.
struct Family {
  VkRxClass top{L"Top", VkRxObject::desc()};
  VkRxClass middle{L"Middle", &top};
  VkRxClass bottom{L"Bottom", &middle};
};

TEST(VkRxClass, KnowsItsNameAndItsParent) {
  Family family;
  EXPECT_STREQ(L"Middle", family.middle.name());
  EXPECT_EQ(&family.top, family.middle.myParent());
  EXPECT_EQ(nullptr, VkRxObject::desc()->myParent());
}

TEST(VkRxClass, AClassDerivesFromItselfAndItsParentsAndFromNothingElse) {
  Family family;
  EXPECT_TRUE(family.bottom.isDerivedFrom(&family.bottom));
  EXPECT_TRUE(family.bottom.isDerivedFrom(&family.top));
  EXPECT_TRUE(family.bottom.isDerivedFrom(VkRxObject::desc()));
  EXPECT_FALSE(family.top.isDerivedFrom(&family.bottom));
  EXPECT_FALSE(family.bottom.isDerivedFrom(VkDbEntity::desc()));
  EXPECT_FALSE(family.bottom.isDerivedFrom(nullptr));
}

TEST(VkRxClass, AnObjectIsOfItsOwnKindAndOfItsParents) {
  const Extension object;
  EXPECT_EQ(VkRxObject::desc(), object.isA());
  EXPECT_TRUE(object.isKindOf(VkRxObject::desc()));
  EXPECT_FALSE(object.isKindOf(VkRxClass::desc()));
  EXPECT_TRUE(VkRxObject::desc()->isKindOf(VkRxClass::desc()));
}

TEST(VkRxClass, DatabaseClassesDeriveFromEachOtherAsDeclared) {
  EXPECT_EQ(VkRxObject::desc(), VkDbObject::desc()->myParent());
  EXPECT_EQ(VkDbObject::desc(), VkDbEntity::desc()->myParent());
  EXPECT_EQ(VkDbEntity::desc(), VkDbBlockReference::desc()->myParent());
  EXPECT_EQ(VkDbObject::desc(), VkDbLayerTableRecord::desc()->myParent());
  EXPECT_EQ(VkRxObject::desc(), VkDbDatabase::desc()->myParent());
}

TEST(VkRxClass, AnExtensionIsFoundThroughTheParents) {
  // given
  Family family;
  Protocol protocol;
  Extension extension;
  // when
  EXPECT_EQ(nullptr, family.top.addX(&protocol.description, &extension));
  // then
  EXPECT_EQ(&extension, family.bottom.queryX(&protocol.description));
  EXPECT_EQ(&extension, family.top.queryX(&protocol.description));
  EXPECT_EQ(nullptr, VkRxObject::desc()->queryX(&protocol.description));

  EXPECT_EQ(&extension, family.top.delX(&protocol.description));
}

TEST(VkRxClass, TheNearestExtensionIsTaken) {
  Family family;
  Protocol protocol;
  Extension far, near;
  family.top.addX(&protocol.description, &far);
  family.middle.addX(&protocol.description, &near);

  EXPECT_EQ(&near, family.bottom.queryX(&protocol.description));
  EXPECT_EQ(&far, family.top.queryX(&protocol.description));

  EXPECT_EQ(&near, family.middle.delX(&protocol.description));
  EXPECT_EQ(&far, family.bottom.queryX(&protocol.description));
  EXPECT_EQ(&far, family.top.delX(&protocol.description));
}

TEST(VkRxClass, AnExtensionTakesThePlaceOfTheOneBefore) {
  Family family;
  Protocol protocol;
  Extension first, second;
  EXPECT_EQ(nullptr, family.top.addX(&protocol.description, &first));
  EXPECT_EQ(&first, family.top.addX(&protocol.description, &second));
  EXPECT_EQ(&second, family.top.queryX(&protocol.description));
  EXPECT_EQ(&second, family.top.delX(&protocol.description));
}

TEST(VkRxClass, WhatIsNotRegisteredCannotBeTakenOut) {
  Family family;
  Protocol protocol;
  Extension extension;
  family.top.addX(&protocol.description, &extension);

  EXPECT_EQ(nullptr, family.bottom.delX(&protocol.description));
  EXPECT_EQ(&extension, family.top.delX(&protocol.description));
  EXPECT_EQ(nullptr, family.top.delX(&protocol.description));
  EXPECT_EQ(nullptr, family.bottom.queryX(&protocol.description));
}

TEST(VkRxClass, ProtocolsAreKeptApart) {
  Family family;
  Protocol one, other;
  Extension extension;
  family.top.addX(&one.description, &extension);
  EXPECT_EQ(nullptr, family.top.queryX(&other.description));
  family.top.delX(&one.description);
}

TEST(VkRxClass, ExtensionsMayBeRegisteredAndAskedForByManyThreads) {
  Family family;
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&family] {
      Protocol protocol;
      Extension extension;
      for (int round = 0; round < 2000; ++round) {
        EXPECT_EQ(nullptr, family.top.addX(&protocol.description, &extension));
        EXPECT_EQ(&extension, family.bottom.queryX(&protocol.description));
        EXPECT_EQ(&extension, family.top.delX(&protocol.description));
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
}

}  // namespace
