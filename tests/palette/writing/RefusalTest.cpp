#include "palette/writing/Refusal.h"

#include "host/palette/IOPMPropertyExpander.h"
#include "tests/palette/Stage.h"
#include "tests/support/Row.h"

namespace velt::palette {
namespace {

class Refusal : public Stage {
 protected:
  Refusal() {
    object.property(4, L"Radius").holds(toys::r8(1.5));
    entry.pUnknown = object.unknown();
    entry.pDispatch = object.dispatch();
    host.mark();
  }
  std::string reason(const PROPINFO& record) {
    std::string told = reasonOfRefusal(record, entry, toys::r8(-1));
    EXPECT_EQ(host.balance(), "balanced");
    return told;
  }

  toys::ToyObject& object = add();
  VeltPropData entry{};
  const PROPINFO whole = toys::Row(L"Radius").dispId(4);
  const PROPINFO element = toys::Row(L"Start").dispId(5).element(7);
};

TEST_F(Refusal, IsToldInTheHostsWords) {
  object[4].raises({L"source", L"A radius is\nlonger than 0.", L"help"});
  EXPECT_EQ(reason(whole), "A radius is\xE2\x86\xB5longer than 0.");
}

TEST_F(Refusal, OfAnotherClassIsAskedByThePropertysName) {
  entry.clsid = toys::toyClass(2);
  object[4].raises({L"source", L"Not this one.", L"help"});
  EXPECT_EQ(reason(toys::Row(L"Radius").dispId(9)), "Not this one.");
}

TEST_F(Refusal, WithoutWordsTheResultTells) {
  object[4].raises({});
  const std::pair<HRESULT, const char*> results[] = {
      {E_INVALIDARG, "the value is not allowed"},
      {DISP_E_TYPEMISMATCH, "the value is of the wrong kind"},
      {DISP_E_OVERFLOW, "the value is out of range"},
      {DISP_E_MEMBERNOTFOUND, "the entity has no such property"},
      {DISP_E_UNKNOWNNAME, "the entity has no such property"},
      {E_ACCESSDENIED, "the entity cannot be changed"},
      {E_FAIL, "the value was refused, and nothing says why"},
  };
  for (const auto& [result, words] : results) {
    host.on("Invoke(4").fail(result);
    EXPECT_EQ(reason(whole), words);
    host.on("SetElementValue").fail(result);
    object.property(5, L"Start").element(7, L"X", toys::r8(0));
    EXPECT_EQ(reason(element), words);
  }
}

TEST_F(Refusal, WhatTheHostThrowsIsTheReason) {
  host.on("Invoke(4").raise(L"no connection");
  EXPECT_EQ(reason(whole), "no connection");
}

TEST_F(Refusal, AnEntityThatHasNoElementsOrNoPropertiesSaysSo) {
  object.withhold(IID_IOPMPropertyExpander);
  EXPECT_EQ(reason(element), "the entity has no coordinates or other parts to write");
  entry.pDispatch = nullptr;
  EXPECT_EQ(reason(whole), "the entity has no such property");
}

}  // namespace
}  // namespace velt::palette
