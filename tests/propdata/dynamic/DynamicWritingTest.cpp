#include <gtest/gtest.h>

#include <list>

#include "host/automation/IVeltBaseObject.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "propdata/VeltPropData.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToyObject.h"

namespace velt::toys {
namespace {

class DynamicWriting : public LayerTest {
 protected:
  DynamicWriting() {
    for (int i = 1; i <= 3; ++i) {
      ToyObject& entity = entities.emplace_back(host, say("entity", i));
      entity.objectId.setFromOldId(70 + i);
      ToyDynamicProperty& property = properties.emplace_back(host, say("property", i));
      row.dynSources.push_back({entity.unknown(), property.unknown()});
    }
  }

  ToyObject& entity(int number) { return *std::next(entities.begin(), number - 1); }
  ToyDynamicProperty& property(int number) { return *std::next(properties.begin(), number - 1); }
  int write() {
    host.mark();
    host.log.clear();
    const int answer = setDynPropSourcesPropValue(row, value);
    EXPECT_EQ(host.balance(), "balanced");
    return answer;
  }
  int writeOlder() {
    host.mark();
    host.log.clear();
    const int answer = setDynPropSourcesPropValueDefault(row, value);
    EXPECT_EQ(host.balance(), "balanced");
    return answer;
  }
  Lines written() const { return host.log.only({"SetCurrentValueData"}); }

  std::list<ToyObject> entities;
  std::list<ToyDynamicProperty> properties;
  PROPINFO row = Row(L"Dyn").dispId(dynamicPropertyDispId);
  VARIANT value = i4(5);
};

TEST_F(DynamicWriting, WithoutNodesNothingIsWritten) {
  row.dynSources = TqVector<DispatchDynPropSourceNode>();

  EXPECT_EQ(write(), 0);
  EXPECT_EQ(writeOlder(), 0);

  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(DynamicWriting, EveryNodeGetsTheValueInOrder) {
  EXPECT_EQ(write(), 1);

  EXPECT_EQ(written(), (Lines{"SetCurrentValueData(entity1, VT_I4 5) on property1",
                              "SetCurrentValueData(entity2, VT_I4 5) on property2",
                              "SetCurrentValueData(entity3, VT_I4 5) on property3"}));
}

TEST_F(DynamicWriting, ANodeIsAskedForThePropertyThenForTheEntity) {
  EXPECT_EQ(write(), 1);

  const Lines calls = host.log.lines();
  ASSERT_GE(calls.size(), 5U);
  EXPECT_EQ(Lines(calls.begin(), calls.begin() + 3),
            (Lines{"QueryInterface(IDynamicProperty2) on property1", "QueryInterface(IDispatch) on entity1",
                   "SetCurrentValueData(entity1, VT_I4 5) on property1"}));
}

TEST_F(DynamicWriting, TheValueIsPassedOnUnchanged) {
  const BSTR oak = SysAllocString(L"oak");
  value = borrowed(oak);

  EXPECT_EQ(write(), 1);

  EXPECT_EQ(value.bstrVal, oak);
  EXPECT_EQ(print(value), "VT_BSTR \"oak\"");
  SysFreeString(oak);
}

TEST_F(DynamicWriting, NodesWithANullPointerAreSkippedByBoth) {
  row.dynSources[0].pDispatch = nullptr;
  row.dynSources[1].pDynamicProperty = nullptr;

  const Lines untouchedNodes{"QueryInterface(IDynamicProperty2) on property1",
                             "QueryInterface(IDynamicProperty) on property1",
                             "QueryInterface(IDispatch) on entity2"};
  EXPECT_EQ(write(), 1);
  EXPECT_EQ(written(), Lines{"SetCurrentValueData(entity3, VT_I4 5) on property3"});
  for (const std::string& call : untouchedNodes)
    EXPECT_EQ(host.log.count(call), 0) << call;
  EXPECT_EQ(writeOlder(), 1);
  EXPECT_EQ(written(), Lines{"SetCurrentValueData(id 73, VT_I4 5) on property3"});
  for (const std::string& call : untouchedNodes)
    EXPECT_EQ(host.log.count(call), 0) << call;
}

TEST_F(DynamicWriting, APropertyWithoutTheNewerInterfaceEndsTheNewerWriterAtOnce) {
  property(1).withhold(IID_IDynamicProperty2);

  EXPECT_EQ(write(), 2);

  EXPECT_EQ(host.log.lines(), Lines{"QueryInterface(IDynamicProperty2) on property1"});
}

TEST_F(DynamicWriting, Quirk_double_write) {
  property(2).withhold(IID_IDynamicProperty2);

  EXPECT_EQ(write(), 2);
  EXPECT_EQ(written(), Lines{"SetCurrentValueData(entity1, VT_I4 5) on property1"});

  EXPECT_EQ(writeOlder(), 1);
  EXPECT_EQ(written(), (Lines{"SetCurrentValueData(id 71, VT_I4 5) on property1",
                              "SetCurrentValueData(id 72, VT_I4 5) on property2",
                              "SetCurrentValueData(id 73, VT_I4 5) on property3"}));
}

TEST_F(DynamicWriting, AnyOtherFailureOfAQueryPassesTheNodeOver) {
  host.on("QueryInterface(IDynamicProperty2) on property1").fail(E_FAIL);
  host.on("QueryInterface(IDispatch) on entity2").fail(E_NOINTERFACE);

  EXPECT_EQ(write(), 1);

  EXPECT_EQ(written(), Lines{"SetCurrentValueData(entity3, VT_I4 5) on property3"});
}

TEST_F(DynamicWriting, Quirk_dynamic_write_result_unexamined) {
  host.on("SetCurrentValueData").nth(1).fail();

  EXPECT_EQ(write(), 1);
  EXPECT_EQ(written().size(), 3U);

  host.on("SetCurrentValueData").nth(1).fail();
  EXPECT_EQ(writeOlder(), 1);
  EXPECT_EQ(written().size(), 3U);
}

TEST_F(DynamicWriting, AQueryThatSucceedsWithANullPointerPassesItsNodeOver) {
  host.on("QueryInterface(IDynamicProperty2) on property2").answerNull();

  EXPECT_EQ(write(), 1);

  EXPECT_EQ(written(), (Lines{"SetCurrentValueData(entity1, VT_I4 5) on property1",
                              "SetCurrentValueData(entity3, VT_I4 5) on property3"}));
}

TEST_F(DynamicWriting, ANodeThatThrowsIsPassedOver) {
  for (const char* const call :
       {"QueryInterface(IDynamicProperty2)", "QueryInterface(IDispatch)", "SetCurrentValueData"}) {
    host.on(call).nth(2).raise(L"gone");
    EXPECT_EQ(write(), 1) << call;
    EXPECT_EQ(host.log.count("SetCurrentValueData(entity1"), 1) << call;
    EXPECT_EQ(host.log.count("SetCurrentValueData(entity3"), 1) << call;
  }
  for (const char* const call : {"QueryInterface(IDynamicProperty)", "GetObjectId", "SetCurrentValueData"}) {
    host.on(call).nth(2).raise(L"gone");
    EXPECT_EQ(writeOlder(), 1) << call;
    EXPECT_EQ(host.log.count("SetCurrentValueData(id 71"), 1) << call;
    EXPECT_EQ(host.log.count("SetCurrentValueData(id 73"), 1) << call;
  }
}

TEST_F(DynamicWriting, TheOlderWriterAsksForPropertyThenEntityThenId) {
  EXPECT_EQ(writeOlder(), 1);

  const Lines calls = host.log.lines();
  ASSERT_GE(calls.size(), 6U);
  EXPECT_EQ(
      Lines(calls.begin(), calls.begin() + 6),
      (Lines{"QueryInterface(IDynamicProperty) on property1", "QueryInterface(IDispatch) on entity1",
             "QueryInterface(IVeltBaseObject) on entity1", "GetObjectId() on entity1",
             "Release(IVeltBaseObject) on entity1", "SetCurrentValueData(id 71, VT_I4 5) on property1"}));
}

TEST_F(DynamicWriting, TheDispatchThatTheEntityHandsOutIsWrittenToAndAskedForTheId) {
  ToyObject asDispatch(host, "asDispatch");
  asDispatch.objectId.setFromOldId(99);
  entity(1).handOut(IID_IDispatch, asDispatch);

  EXPECT_EQ(write(), 1);
  EXPECT_EQ(written()[0], "SetCurrentValueData(asDispatch, VT_I4 5) on property1");
  EXPECT_EQ(writeOlder(), 1);
  EXPECT_EQ(written()[0], "SetCurrentValueData(id 99, VT_I4 5) on property1");
}

TEST_F(DynamicWriting, TheOlderWriterPassesOverWhatCannotBeAsked) {
  property(1).withhold(IID_IDynamicProperty);
  host.on("QueryInterface(IDispatch) on entity2").fail();

  EXPECT_EQ(writeOlder(), 1);

  EXPECT_EQ(written(), Lines{"SetCurrentValueData(id 73, VT_I4 5) on property3"});
}

TEST_F(DynamicWriting, TheOlderWriterSkipsEntitiesWithoutAnId) {
  entity(1).objectId = VkDbObjectId::kNull;
  entity(2).withhold(IID_IVeltBaseObject);

  EXPECT_EQ(writeOlder(), 1);

  EXPECT_EQ(written(), Lines{"SetCurrentValueData(id 73, VT_I4 5) on property3"});
}

}  // namespace
}  // namespace velt::toys
