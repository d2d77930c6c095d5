#include "host/automation/TqAutoCreateInstance.h"

#include <gtest/gtest.h>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/platform/Allocation.h"
#include "host/automation/IdValues.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

class TqAutoCreateInstanceTest : public ::testing::Test {
 protected:
  static HRESULT create(const CLSID& clsid, InterfaceHolder<IUnknown>& made) {
    void* object = nullptr;
    const HRESULT result = TqAutoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object);
    made.attach(static_cast<IUnknown*>(object));
    return result;
  }

  bool registryMade = (makeRegistry(), true);
  Balance balance;
};

TEST_F(TqAutoCreateInstanceTest, MakesAnObjectOfEveryClassWithOneReference) {
  for (const AutomationClass* kind : automationClasses()) {
    InterfaceHolder<IUnknown> made;
    ASSERT_EQ(S_OK, create(kind->clsid, made)) << kind->name;
    EXPECT_TRUE(ask<IDispatch>(*made.get()));
    EXPECT_TRUE(ask<IVeltBaseObject>(*made.get()));
    EXPECT_EQ(kind->clsid == CLSID_VeltHatch, static_cast<bool>(ask<IVeltHatch>(*made.get())));
    IUnknown* last = made.detach();
    EXPECT_EQ(0U, last->Release());
  }
}

TEST_F(TqAutoCreateInstanceTest, AnUnknownClassIsNotRegistered) {
  InterfaceHolder<IUnknown> made;
  EXPECT_EQ(REGDB_E_CLASSNOTREG, create(GUID_NULL, made));
  EXPECT_FALSE(made);
}

TEST_F(TqAutoCreateInstanceTest, AggregationIsRefused) {
  InterfaceHolder<IUnknown> outer;
  ASSERT_EQ(S_OK, create(CLSID_VeltLine, outer));
  void* object = outer.get();
  EXPECT_EQ(CLASS_E_NOAGGREGATION,
            TqAutoCreateInstance(CLSID_VeltLine, outer.get(), CLSCTX_INPROC_SERVER, IID_IUnknown, &object));
  EXPECT_EQ(nullptr, object);
}

TEST_F(TqAutoCreateInstanceTest, AnInterfaceThatIsNotOfferedMakesNothing) {
  void* object = this;
  EXPECT_EQ(E_NOINTERFACE, TqAutoCreateInstance(CLSID_VeltLine, nullptr, CLSCTX_INPROC_SERVER,
                                                velt::IID_IVeltHatch, &object));
  EXPECT_EQ(nullptr, object);
  EXPECT_EQ(E_POINTER,
            TqAutoCreateInstance(CLSID_VeltLine, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, nullptr));
}

TEST_F(TqAutoCreateInstanceTest, ExhaustedMemoryMakesNothing) {
  for (const CLSID& clsid : {CLSID_VeltLine, CLSID_VeltHatch}) {
    const auto fault = platform::AllocationFault::failFrom(1);
    void* object = this;
    EXPECT_EQ(E_OUTOFMEMORY,
              TqAutoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object));
    EXPECT_EQ(nullptr, object);
  }
}

}  // namespace
}  // namespace velt::automation
