#include <gtest/gtest.h>

#include <list>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/CrashReports.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "propdata/VeltPropData.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToyObject.h"
#include "tests/support/ToySelection.h"

namespace velt::toys {
namespace {

constexpr long openLayerId = 900;
constexpr long lockedLayerId = 901;
constexpr std::uint32_t anyColor = 0xC3000001;

class SetPropertiesValueTest : public LayerTest {
 protected:
  // An entity on an unlocked layer whose object knows the property "Radius" under DISPID 4.
  ToyObject& add(long id, long layerId = openLayerId) {
    ToyEntity& entity = entities.emplace_back(host, say("db", id), id);
    entity.layer.setFromOldId(layerId);
    ToyObject& object = objects.emplace_back(host, say("object", id));
    object.property(4, L"Radius").holds(r8(1.0));
    selection.add(object, id, CLSID_VeltCircle);
    return object;
  }
  int set(bool elementWrite = false, unsigned int cookie = 0) {
    host.mark();
    host.log.clear();
    const int result =
        SetPropertiesValue(selection.entries, row, value, elementWrite, errorText, locked, touched, cookie);
    EXPECT_EQ(host.balance(), "balanced");
    for (const auto& [id, object] : host.database)
      EXPECT_EQ(object->opened, 0) << object->name();
    return result;
  }
  std::vector<long> touchedIds() const {
    std::vector<long> ids;
    for (int i = 0; i < touched.length(); ++i)
      ids.push_back(touched[i].asOldId());
    return ids;
  }
  using Ids = std::vector<long>;
  Lines puts() const { return host.log.only({"Invoke(", "SetElementValue("}); }

  ToyLayer openLayer{host, "openLayer", openLayerId, anyColor};
  ToyLayer lockedLayer{host, "lockedLayer", lockedLayerId, anyColor, true};
  std::list<ToyEntity> entities;
  std::list<ToyObject> objects;
  ToySelection selection;
  PROPINFO row = Row(L"Radius").dispId(4);
  VARIANT value = r8(2.5);
  int locked = 0;
  VkArray<VkDbObjectId> touched;
};

TEST_F(SetPropertiesValueTest, AnEmptySelectionIsDone) {
  EXPECT_EQ(set(), 1);

  EXPECT_EQ(touchedIds(), Ids{});
  EXPECT_EQ(locked, 0);
  EXPECT_EQ(error(), untouched);
}

TEST_F(SetPropertiesValueTest, AnEntityIsOpenedAskedAndClosedBeforeItIsWritten) {
  add(11);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(host.log.lines(),
            (Lines{"vkdbOpenObject(11, mode 0)", "layerId() on db11", "close() on db11",
                   "vkdbOpenVkDbObject(900, mode 0)", "isLocked() on openLayer", "close() on openLayer",
                   "GetIDsOfNames(Radius, locale 0x800) on object11", "GetUserDefaultLCID()",
                   "Invoke(4, put VT_R8 2.5 named -3, locale 0x807, result VT_R8) on object11"}));
  EXPECT_EQ(touchedIds(), Ids{11});
}

TEST_F(SetPropertiesValueTest, AnEntityOnALockedLayerIsAskedAndClosedAndNothingElse) {
  add(11, lockedLayerId);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(host.log.lines(), (Lines{"vkdbOpenObject(11, mode 0)", "layerId() on db11", "close() on db11",
                                     "vkdbOpenVkDbObject(901, mode 0)", "isLocked() on lockedLayer",
                                     "close() on lockedLayer"}));
}

TEST_F(SetPropertiesValueTest, AnElementIsLookedUpByNameAndWrittenThroughTheExpander) {
  add(11).property(4, L"Radius").element(1, L"X", r8(1.5));

  EXPECT_EQ(set(true, 1), 1);

  EXPECT_EQ(host.log.lines(),
            (Lines{"vkdbOpenObject(11, mode 0)", "layerId() on db11", "close() on db11",
                   "vkdbOpenVkDbObject(900, mode 0)", "isLocked() on openLayer", "close() on openLayer",
                   "GetIDsOfNames(Radius, locale 0x800) on object11",
                   "QueryInterface(IOPMPropertyExpander) on object11",
                   "SetElementValue(4, cookie 1, VT_R8 2.5) on object11",
                   "Release(IOPMPropertyExpander) on object11"}));
}

TEST_F(SetPropertiesValueTest, WithoutTheMessageLibraryTheResultIsTheSameAndTheTextEmpty) {
  host.on("LoadLibraryExW").answerNull();
  add(11);
  row.name = L"Unknown";

  EXPECT_EQ(set(), 0);

  EXPECT_EQ(error(), L"");
  EXPECT_EQ(touchedIds(), Ids{11});
}

TEST_F(SetPropertiesValueTest, Quirk_two_locales) {
  add(11);

  set();

  EXPECT_EQ(host.log.only({"GetIDsOfNames"}), Lines{"GetIDsOfNames(Radius, locale 0x800) on object11"});
  EXPECT_EQ(puts().front().find(", locale 0x807, ") != std::string::npos, true) << puts().front();
}

TEST_F(SetPropertiesValueTest, Quirk_result_slot_tag) {
  add(11);

  set();

  EXPECT_EQ(puts(), Lines{"Invoke(4, put VT_R8 2.5 named -3, locale 0x807, result VT_R8) on object11"})
      << "tagged like the new value; neither exception information nor an argument error is asked for";
}

TEST_F(SetPropertiesValueTest, TheValueIsPassedOnAsItIs) {
  add(11);
  const BSTR oak = SysAllocString(L"oak");
  value = borrowed(oak);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(puts(),
            Lines{"Invoke(4, put VT_BSTR \"oak\" named -3, locale 0x807, result VT_BSTR) on object11"});
  EXPECT_EQ(value.bstrVal, oak);
  SysFreeString(oak);
}

TEST_F(SetPropertiesValueTest, EveryEntityIsWrittenInOrder) {
  for (const long id : {11, 12, 13})
    add(id);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(puts().size(), 3U);
  EXPECT_EQ(touchedIds(), (Ids{11, 12, 13}));
}

TEST_F(SetPropertiesValueTest, EntitiesOnLockedLayersAreCountedAndSkipped) {
  add(11, lockedLayerId);
  add(12);
  add(13, lockedLayerId);
  locked = 5;

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(locked, 7);
  EXPECT_EQ(touchedIds(), Ids{12});
  EXPECT_EQ(puts().size(), 1U);
  EXPECT_EQ(error(), untouched);
}

TEST_F(SetPropertiesValueTest, ASelectionOnLockedLayersIsDoneWithoutATouch) {
  add(11, lockedLayerId);
  add(12, lockedLayerId);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(locked, 2);
  EXPECT_EQ(touchedIds(), Ids{});
}

TEST_F(SetPropertiesValueTest, WhatCannotBeOpenedIsSkippedWithoutAWord) {
  add(11);
  add(12, 0);
  add(13, 999999);
  ToyObject& stranger = objects.emplace_back(host, "stranger");
  selection.add(stranger, 123456789, CLSID_VeltCircle);
  selection.addNull();
  add(14);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(touchedIds(), (Ids{11, 14}));
  EXPECT_EQ(locked, 0);
  EXPECT_EQ(error(), untouched);
}

TEST_F(SetPropertiesValueTest, AnOpeningThatFailsSkipsTheEntityAndClosesNothingWhateverItLeft) {
  add(11);
  add(12);
  host.on("vkdbOpenObject(11,").leaveThenFail();

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(touchedIds(), Ids{12});
  EXPECT_EQ(puts().size(), 1U);
  EXPECT_EQ(host.log.only({"layerId", "close"}),
            (Lines{"layerId() on db12", "close() on db12", "close() on openLayer"}));
  EXPECT_EQ(error(), untouched);
}

TEST_F(SetPropertiesValueTest, NullEntriesArePassedOver) {
  selection.addNull();
  add(12);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(touchedIds(), Ids{12});
  EXPECT_EQ(puts().size(), 1U);
}

TEST_F(SetPropertiesValueTest, ANullLayerIsNotOpened) {
  add(11, 0);

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(host.log.lines(), (Lines{"vkdbOpenObject(11, mode 0)", "layerId() on db11", "close() on db11"}));
}

TEST_F(SetPropertiesValueTest, AnEntryWithoutDispatchStopsTheWrite) {
  add(11);
  add(12);
  add(13);
  IDispatch* const taken = std::exchange(selection.entries[1]->pDispatch, nullptr);

  EXPECT_EQ(set(), 0);

  EXPECT_EQ(error(), message(1003));
  EXPECT_EQ(touchedIds(), (Ids{11, 12}));
  selection.entries[1]->pDispatch = taken;
}

TEST_F(SetPropertiesValueTest, ANameThatIsNotKnownStopsTheWrite) {
  host.texts[1019] = L"no property \"%ls\"";
  add(11).dispIds.clear();
  add(12);

  EXPECT_EQ(set(), 0);

  EXPECT_EQ(error(), L"no property \"Radius\"");
  EXPECT_EQ(touchedIds(), Ids{11});
  EXPECT_EQ(puts(), Lines{});
}

TEST_F(SetPropertiesValueTest, Quirk_dispid_zero_refused) {
  host.texts[1019] = L"no property \"%s\"";
  add(11).dispIds[L"Radius"] = 0;

  EXPECT_EQ(set(), 0);

  EXPECT_EQ(error(), L"no property \"Radius\"");
  EXPECT_EQ(puts(), Lines{});
}

TEST_F(SetPropertiesValueTest, ANameThatResolvesToNothingIsZeroToo) {
  host.texts[1019] = L"no \"%ls\"";
  add(11);
  host.on("GetIDsOfNames").answerNothing();

  EXPECT_EQ(set(), 0);

  EXPECT_EQ(error(), L"no \"Radius\"");
  EXPECT_EQ(puts(), Lines{});
}

TEST_F(SetPropertiesValueTest, ANegativeMemberIdIsWritten) {
  add(11).property(-5, L"Radius").holds(r8(1.0));

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(puts(), Lines{"Invoke(-5, put VT_R8 2.5 named -3, locale 0x807, result VT_R8) on object11"});
}

TEST_F(SetPropertiesValueTest, TheNameIsLookedUpInTheDispatchAndTheExpanderAskedOfTheUnknown) {
  ToyObject& asUnknown = add(11);
  ToyObject asDispatch(host, "asDispatch");
  asDispatch.property(6, L"Radius").holds(r8(1.0));
  VeltPropData& entry = *selection.entries[0];
  entry.pDispatch->Release();
  entry.pDispatch = asDispatch.dispatch();

  EXPECT_EQ(set(), 1);
  EXPECT_EQ(puts(), Lines{"Invoke(6, put VT_R8 2.5 named -3, locale 0x807, result VT_R8) on asDispatch"});
  EXPECT_EQ(set(true, 1), 1);
  EXPECT_EQ(host.log.only({"GetIDsOfNames", "QueryInterface", "SetElementValue"}),
            (Lines{"GetIDsOfNames(Radius, locale 0x800) on asDispatch",
                   "QueryInterface(IOPMPropertyExpander) on " + asUnknown.name(),
                   "SetElementValue(6, cookie 1, VT_R8 2.5) on " + asUnknown.name()}));
  entry.pDispatch = nullptr;
}

TEST_F(SetPropertiesValueTest, Quirk_failed_put_leaves_error_text) {
  for (const long id : {11, 12, 13, 14, 15})
    add(id);
  host.on("Invoke(").nth(3).fail(DISP_E_TYPEMISMATCH);

  EXPECT_EQ(set(), 0);

  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(touchedIds(), (Ids{11, 12, 13}));
  EXPECT_EQ(puts().size(), 3U);
}

TEST_F(SetPropertiesValueTest, EachEntityResolvesTheNameForItself) {
  add(11);
  ToyObject& other = add(12);
  other.dispIds[L"Radius"] = 9;
  other.property(9, L"Radius").holds(r8(1.0));

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(puts()[1].substr(0, 9), "Invoke(9,");
}

// --- elements ------------------------------------------------------------------------------------------------------

TEST_F(SetPropertiesValueTest, AnElementIsWrittenThroughTheExpander) {
  add(11);

  EXPECT_EQ(set(true, 7), 1);

  EXPECT_EQ(host.log.only({"QueryInterface", "SetElementValue", "Release", "Invoke"}),
            (Lines{"QueryInterface(IOPMPropertyExpander) on object11",
                   "SetElementValue(4, cookie 7, VT_R8 2.5) on object11",
                   "Release(IOPMPropertyExpander) on object11"}));
}

TEST_F(SetPropertiesValueTest, AnObjectWithoutExpanderGivesTheMessageAsItStands) {
  host.texts[1014] = L"no elements of \"%ls\"";
  add(11).withhold(IID_IOPMPropertyExpander);
  add(12);

  EXPECT_EQ(set(true, 7), 0);

  EXPECT_EQ(error(), L"no elements of \"%ls\"");
  EXPECT_EQ(touchedIds(), Ids{11});
}

TEST_F(SetPropertiesValueTest, Quirk_message_1014_with_and_without_name) {
  host.texts[1014] = L"no elements of %ls";
  ToyObject& object = add(11);
  host.on("SetElementValue").fail();
  EXPECT_EQ(set(true, 7), 0);
  EXPECT_EQ(error(), L"no elements of Radius");

  object.withhold(IID_IOPMPropertyExpander);
  EXPECT_EQ(set(true, 7), 0);
  EXPECT_EQ(error(), L"no elements of %ls");
}

TEST_F(SetPropertiesValueTest, ARefusedElementGivesTheMessageWithTheName) {
  host.texts[1014] = L"no elements of \"%ls\"";
  add(11);
  add(12);
  host.on("SetElementValue").nth(2).fail();

  EXPECT_EQ(set(true, 7), 0);

  EXPECT_EQ(error(), L"no elements of \"Radius\"");
  EXPECT_EQ(touchedIds(), (Ids{11, 12}));
}

// --- dynamic properties --------------------------------------------------------------------------------------------

TEST_F(SetPropertiesValueTest, ADynamicRowGoesToItsSourcesAndNowhereElse) {
  add(11);
  ToyObject merged(host, "merged");  // when the row was made, and not selected any more
  ToyDynamicProperty dynamic(host, "dynamic");
  row = Row(L"Dyn").dynamic(dynamic.unknown()).source(merged.unknown(), dynamic.unknown());

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(host.log.only({"SetCurrentValueData"}),
            Lines{"SetCurrentValueData(merged, VT_R8 2.5) on dynamic"});
  EXPECT_EQ(puts(), Lines{});
  EXPECT_EQ(touchedIds(), Ids{});
}

TEST_F(SetPropertiesValueTest, ADynamicRowWithoutTheNewerInterfaceGoesToTheOlderWriter) {
  ToyObject& object = add(11);
  object.objectId.setFromOldId(11);
  ToyDynamicProperty dynamic(host, "dynamic");
  dynamic.withhold(IID_IDynamicProperty2);
  row = Row(L"Dyn").dynamic(dynamic.unknown()).source(object.unknown(), dynamic.unknown());

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(host.log.only({"SetCurrentValueData"}),
            Lines{"SetCurrentValueData(id 11, VT_R8 2.5) on dynamic"});
}

TEST_F(SetPropertiesValueTest, ADynamicRowIsDoneEvenWhenNobodyTakesTheValue) {
  row = Row(L"Dyn").dispId(dynamicPropertyDispId);
  EXPECT_EQ(set(), 1);

  ToyObject& object = add(11);
  ToyDynamicProperty dynamic(host, "dynamic");
  row = Row(L"Dyn").dynamic(dynamic.unknown()).source(object.unknown(), dynamic.unknown());
  host.on("SetCurrentValueData").fail();
  EXPECT_EQ(set(), 1);
  EXPECT_EQ(error(), untouched);
}

TEST_F(SetPropertiesValueTest, EveryCallThatThrowsStopsTheWriteWithItsMessage) {
  add(11).property(4, L"Radius").element(1, L"X", r8(1.5));
  for (const bool elementWrite : {false, true}) {
    for (int n = 1;; ++n) {
      ASSERT_LT(n, 100);
      errorText = untouched;
      host.raiseCall(n, L"no connection");

      const int answer = set(elementWrite, 1);

      if (host.failedCall().empty()) {
        EXPECT_EQ(answer, 1);
        EXPECT_GT(n, 2);
        break;
      }
      EXPECT_EQ(answer, 0) << host.failedCall();
      EXPECT_EQ(error(), L"no connection") << host.failedCall();
    }
  }
}

TEST_F(SetPropertiesValueTest, WithoutMemoryForTheNameNothingIsTouchedAndTheRecorderIsTold) {
  add(11);
  platform::CrashReports::clear();
  {
    const auto fault = platform::AllocationFault::failNth(1, platform::Heap::Strings);
    EXPECT_EQ(set(), 0);
    EXPECT_EQ(fault.failures(), 1U);
  }

  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(touchedIds(), Ids{});
  EXPECT_EQ(host.log.count("GetIDsOfNames"), 0);
  const auto reports = platform::CrashReports::take();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].status, Velt::eOutOfMemory);
}

TEST_F(SetPropertiesValueTest, ADynamicPropertyThatThrowsIsPassedOverLikeOneThatRefuses) {
  ToyObject& first = add(11);
  ToyObject& second = add(12);
  ToyDynamicProperty one(host, "one");
  ToyDynamicProperty two(host, "two");
  row = Row(L"Dyn").dispId(dynamicPropertyDispId);
  row.dynSources.push_back({first.unknown(), one.unknown()});
  row.dynSources.push_back({second.unknown(), two.unknown()});
  host.on("SetCurrentValueData").nth(1).raise(L"no connection");

  EXPECT_EQ(set(), 1);

  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.count("SetCurrentValueData"), 2);
}

}  // namespace
}  // namespace velt::toys
