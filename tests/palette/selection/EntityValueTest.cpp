#include "palette/selection/EntityValue.h"

#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "tests/palette/Stage.h"
#include "tests/support/Row.h"
#include "tests/support/ToyDynamicProperty.h"

namespace velt::palette {
namespace {

class EntityValue : public Stage {
 protected:
  EntityValue() {
    object.property(4, L"Text").holds(toys::text(L"hello"));
    object.property(5, L"Start").element(7, L"X", toys::r8(1.5));
    object.objectId = entity(0).data.objectId();
    entry.pUnknown = object.unknown();
    entry.pDispatch = object.dispatch();
    property.value = toys::text(L"oak");
    host.mark();
  }
  PlainValue valueOf(const PROPINFO& record, std::size_t index = 0) {
    PlainValue value = entityValue(record, entry, index).plain();
    EXPECT_EQ(host.balance(), "balanced");
    return value;
  }
  static PlainValue text(const char* value) { return std::string(value); }

  toys::ToyObject& object = add();
  toys::ToyDynamicProperty property{host, "property"};
  VeltPropData entry{};
  const PROPINFO whole = toys::Row(L"Text").dispId(4);
  const PROPINFO element = toys::Row(L"Start").dispId(5).element(7);
  const PROPINFO dynamic =
      toys::Row(L"Wood").dynamic(property.unknown()).source(object.unknown(), property.unknown());
};

TEST_F(EntityValue, IsWhatTheEntitysObjectAnswers) {
  EXPECT_EQ(valueOf(whole), text("hello"));
}

TEST_F(EntityValue, ThatIsMissingHasTheReasonThatTheObjectGives) {
  EXPECT_EQ(whyNoValue(whole, entry), "");
  object.property(4, L"Text").exception = toys::ToyException{L"toy", L"Not computed: too long.", L"toy.hlp"};
  EXPECT_EQ(whyNoValue(whole, entry), "Not computed: too long.");
  EXPECT_EQ(whyNoValue(element, entry), "") << "only Invoke has a place for a reason";
  EXPECT_EQ(whyNoValue(dynamic, entry), "");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(EntityValue, OfAnElementIsTheElements) {
  EXPECT_EQ(valueOf(element), PlainValue(1.5));
}

TEST_F(EntityValue, OfAnotherClassIsAskedByItsName) {
  entry.clsid = toys::toyClass(2);
  EXPECT_EQ(valueOf(toys::Row(L"Text").dispId(5)), text("hello"));
  EXPECT_EQ(valueOf(toys::Row(L"Start").dispId(4).element(7)), PlainValue(1.5));
  EXPECT_EQ(valueOf(toys::Row(L"Unknown").dispId(4)), PlainValue());
  object.dispIds[L"Text"] = 0;
  EXPECT_EQ(valueOf(toys::Row(L"Text").dispId(4)), PlainValue());
}

TEST_F(EntityValue, OfADynamicRowIsThePropertysForThisEntity) {
  EXPECT_EQ(valueOf(dynamic), text("oak"));
  EXPECT_EQ(host.log.only({"GetCurrentValueData"}), toys::Lines{"GetCurrentValueData(object0) on property"});
  EXPECT_EQ(valueOf(dynamic, 1), PlainValue()) << "the row has no property of a second entity";
}

TEST_F(EntityValue, OfAPropertyOfTheOlderGenerationIsAskedByTheEntitysId) {
  property.withhold(IID_IDynamicProperty2);
  EXPECT_EQ(valueOf(dynamic), text("oak"));
  EXPECT_EQ(host.log.only({"GetCurrentValueData"}), toys::Lines{"GetCurrentValueData(id 100) on property"});
}

TEST_F(EntityValue, IsNothingWhereTheEntityGivesNone) {
  EXPECT_EQ(valueOf(toys::Row(L"Unknown").dispId(99)), PlainValue());
  object.withhold(IID_IOPMPropertyExpander);
  EXPECT_EQ(valueOf(element), PlainValue());
  property.withhold(IID_IDynamicProperty2);
  property.withhold(IID_IDynamicProperty);
  EXPECT_EQ(valueOf(dynamic), PlainValue());
  entry.pDispatch = nullptr;
  EXPECT_EQ(valueOf(whole), PlainValue());
}

TEST_F(EntityValue, WhatAFailingCallLeftIsNoValue) {
  host.on("Invoke(4").leaveThenFail();
  EXPECT_EQ(entityValue(whole, entry, 0).plain(), PlainValue());
  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::palette
