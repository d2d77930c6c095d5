#include "holders/OpenObjectHolder.h"

#include <gtest/gtest.h>

#include <utility>

namespace velt::holders {
namespace {

struct Object {
  int closed = 0;
  void close() { ++closed; }
};

void open(Object*& out, Object& object) {
  out = &object;
}

TEST(OpenObjectHolder, ClosesItsObjectOnceAtTheEndOfTheScope) {
  Object object;
  {
    OpenObjectHolder<Object> holder;
    open(*holder.put(), object);
    EXPECT_TRUE(holder);
    const OpenObjectHolder<Object> other = std::move(holder);
    EXPECT_FALSE(holder);
    EXPECT_EQ(0, other->closed);
  }
  EXPECT_EQ(1, object.closed);
}

TEST(OpenObjectHolder, GivesItsObjectUpByDetaching) {
  Object object;
  {
    OpenObjectHolder<Object> holder;
    holder.attach(&object);
    EXPECT_EQ(&object, holder.detach());
  }
  EXPECT_EQ(0, object.closed);
}

TEST(OpenObjectHolder, WhatAFailingOpeningLeftIsNotClosed) {
  Object object;
  {
    OpenObjectHolder<Object> holder;
    open(*holder.put(), object);
    EXPECT_TRUE(handedOver(Velt::eOk, holder));
    EXPECT_EQ(&object, holder.get());
    EXPECT_FALSE(handedOver(Velt::eInvalidObjectId, holder));
    EXPECT_FALSE(holder);
  }
  EXPECT_EQ(0, object.closed);
}

}  // namespace
}  // namespace velt::holders
