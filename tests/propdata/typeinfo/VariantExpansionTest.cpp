// A property that a toy object splits into elements.

#include "host/com/ComError.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"

namespace {

using namespace velt::toys;

class VariantExpansion : public LayerTest {
 protected:
  VariantExpansion() { info = Row(L"Centre").of(line, 77).dispId(4).declared(VT_VARIANT); }
  ~VariantExpansion() override {
    for (const PROPINFO& row : out) {
      VARIANT held = row.value;
      VariantClear(&held);
    }
  }

  bool expand() { return GetVariantTypeInfo(info, out, errorText); }
  const PROPINFO& row(int index) const { return std::as_const(out).at(index); }
  void clearValues() {
    for (PROPINFO& held : out)
      VariantClear(&held.value);
  }

  ToyObject line{host, "line"};
  ToyProperty& centre = line.property(4, L"Centre");
  PROPINFO info;
  TqVector<PROPINFO> out;
};

TEST_F(VariantExpansion, ElementsAreReadInOneOrderOfCalls) {
  centre.element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0)).grouped(2, 5);
  host.mark();

  EXPECT_TRUE(expand());

  EXPECT_EQ(host.log.lines(), (Lines{
                                  "QueryInterface(IOPMPropertyExpander) on line",
                                  "GetElementStrings(4) on line",
                                  "GetElementGrouping(4) on line",
                                  "GetGroupCount(4) on line",
                                  "GetElementValue(4, cookie 10) on line",
                                  "GetElementValue(4, cookie 11) on line",
                                  "Release(IOPMPropertyExpander) on line",
                              }));
  EXPECT_EQ(host.balance(), "balanced");
  EXPECT_EQ(error(), untouched);
}

TEST_F(VariantExpansion, EveryElementBecomesARowInTheOrderOfTheCookies) {
  centre.element(30, L"X", r8(1.5)).element(10, L"Y", i4(2)).element(20, L"Z", text(L"three"));
  info.objectId.setFromOldId(77);
  info.description = L"The centre";
  info.isWritable = true;

  EXPECT_TRUE(expand());

  ASSERT_EQ(out.length(), 3U);
  const wchar_t* const labels[] = {L"X", L"Y", L"Z"};
  const std::uint32_t cookies[] = {30, 10, 20};
  const VARTYPE types[] = {VT_R8, VT_I4, VT_BSTR};
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_TRUE(row(i).isElement);
    EXPECT_TRUE(row(i).hasValue);
    EXPECT_TRUE(row(i).sortByCookie);
    EXPECT_EQ(row(i).elementCookie, cookies[i]);
    EXPECT_EQ(row(i).displayName.str(), labels[i]);
    EXPECT_EQ(row(i).valueType, types[i]);
    EXPECT_EQ(row(i).value.vt, types[i]);
    EXPECT_EQ(row(i).elementGrouping, 0);
    EXPECT_EQ(row(i).groupCount, 0);
    EXPECT_EQ(row(i).customType, PropertyKind::none);
    // What the template had:
    EXPECT_EQ(row(i).dispId, 4);
    EXPECT_EQ(row(i).name.str(), L"Centre");
    EXPECT_EQ(row(i).description.str(), L"The centre");
    EXPECT_EQ(row(i).categoryName.str(), L"General");
    EXPECT_EQ(row(i).objectId.asOldId(), 77);
    EXPECT_EQ(row(i).pDispatch, line.dispatch());
    EXPECT_TRUE(row(i).isWritable);
    EXPECT_TRUE(row(i).isEditable);
  }
  EXPECT_EQ(row(0).value.dblVal, 1.5);
  EXPECT_EQ(row(1).value.lVal, 2);
  EXPECT_STREQ(row(2).value.bstrVal, L"three");
}

TEST_F(VariantExpansion, RowsAreAppendedToWhatTheListHolds) {
  out.push_back(Row(L"Before"));
  centre.element(10, L"X", r8(1.0));

  EXPECT_TRUE(expand());

  ASSERT_EQ(out.length(), 2U);
  EXPECT_EQ(row(0).name.str(), L"Before");
}

TEST_F(VariantExpansion, TheTemplateEndsUpAsTheLastElement) {
  centre.element(10, L"X", r8(1.0)).element(11, L"Y", i4(2)).grouped(2, 5);
  info.customType = PropertyKind::color;

  EXPECT_TRUE(expand());

  EXPECT_TRUE(info.isElement);
  EXPECT_TRUE(info.hasValue);
  EXPECT_EQ(info.elementCookie, 11U);
  EXPECT_EQ(info.displayName.str(), L"Y");
  EXPECT_EQ(info.valueType, VT_I4);
  EXPECT_EQ(info.value.lVal, 2);
  EXPECT_EQ(info.elementGrouping, 2);
  EXPECT_EQ(info.customType, PropertyKind::none);
  EXPECT_EQ(info.groupCount, 0);
}

TEST_F(VariantExpansion, AValueIsTakenOverBitForBit) {
  centre.element(10, L"X", text(L"shared"));
  host.mark();

  EXPECT_TRUE(expand());

  EXPECT_EQ(row(0).value.bstrVal, info.value.bstrVal) << "the rows share it";
  EXPECT_EQ(host.balance(), "BSTR +1") << "and it is theirs";
  clearValues();
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(VariantExpansion, AValueThatIsNotWrittenIsEmpty) {
  centre.element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0));
  host.on("GetElementValue(4, cookie 11)").answerNothing();

  EXPECT_TRUE(expand());

  EXPECT_EQ(row(1).value.vt, VT_EMPTY) << "nothing of the element before stays";
  EXPECT_EQ(row(1).valueType, VT_EMPTY);
}

TEST_F(VariantExpansion, WithoutElementsAndGroupingNothingIsAppended) {
  centre.noElements().grouped(0);
  info.customType = PropertyKind::color;
  info.groupCount = 9;
  host.mark();

  EXPECT_TRUE(expand());

  EXPECT_TRUE(out.isEmpty());
  EXPECT_FALSE(info.isElement);
  EXPECT_FALSE(info.hasValue);
  EXPECT_EQ(info.valueType, VT_VARIANT);
  EXPECT_EQ(info.customType, PropertyKind::none) << "reset in every case";
  EXPECT_EQ(info.groupCount, 0);
  EXPECT_EQ(host.log.count("GetGroupCount"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

// --- grouping -----------------------------------------------------------------------------------------------

TEST_F(VariantExpansion, AGroupedPropertyBeginsWithAHeader) {
  centre.element(10, L"X", r8(1.0)).grouped(2, 5);
  info.value.lVal = 7;

  EXPECT_TRUE(expand());

  ASSERT_EQ(out.length(), 2U);
  EXPECT_EQ(row(0).customType, PropertyKind::vertex);
  EXPECT_EQ(row(0).groupCount, 5);
  EXPECT_EQ(row(0).elementGrouping, 2);
  EXPECT_EQ(row(0).value.vt, VT_I4);
  EXPECT_EQ(row(0).value.lVal, 0);
  EXPECT_EQ(row(0).valueType, VT_I4);
  EXPECT_TRUE(row(0).hasValue);
  EXPECT_FALSE(row(0).isElement);
  EXPECT_EQ(row(0).displayName.str(), L"Centre");
  EXPECT_EQ(row(1).customType, PropertyKind::none);
  EXPECT_EQ(row(1).groupCount, 0);
  EXPECT_EQ(row(1).elementGrouping, 2);
  EXPECT_TRUE(row(1).isElement);
}

TEST_F(VariantExpansion, AGroupWithoutElementsIsTheHeaderAlone) {
  centre.noElements().grouped(-1, 0);

  EXPECT_TRUE(expand());

  ASSERT_EQ(out.length(), 1U);
  EXPECT_EQ(row(0).customType, PropertyKind::vertex);
  EXPECT_EQ(row(0).elementGrouping, -1);
  EXPECT_EQ(info.customType, PropertyKind::none);
}

TEST_F(VariantExpansion, AGroupingThatIsNotToldCountsAsZero) {
  centre.element(10, L"X", r8(1.0));
  info.elementGrouping = 7;
  for (const bool fails : {false, true}) {
    if (fails) centre.grouped(3, 1);
    host.on("GetElementGrouping").fail(fails ? E_FAIL : S_OK);

    EXPECT_TRUE(expand());

    EXPECT_EQ(info.elementGrouping, 0);
  }
  EXPECT_EQ(out.length(), 2U);
}

TEST_F(VariantExpansion, Quirk_grouping_results_unexamined) {
  centre.element(10, L"X", r8(1.0)).grouped(3, 5);
  host.on("GetElementGrouping").workThenReturn(E_FAIL);
  host.on("GetGroupCount").workThenReturn(E_FAIL);

  EXPECT_TRUE(expand());

  EXPECT_EQ(out.length(), 2U);
  EXPECT_EQ(row(0).elementGrouping, 3);
  EXPECT_EQ(row(0).groupCount, 5);
}

TEST_F(VariantExpansion, TheGroupCountGoesStraightIntoTheHeader) {
  centre.noElements().grouped(3, 0x123456789L);
  EXPECT_TRUE(expand());
  EXPECT_EQ(row(0).groupCount, 0x123456789L);

  info.groupCount = 9;
  host.on("GetGroupCount").fail();
  EXPECT_TRUE(expand());
  EXPECT_EQ(row(1).groupCount, 9) << "a count that is not told leaves the one that the row had";

  host.on("GetGroupCount").workThenReturn(E_FAIL);
  EXPECT_TRUE(expand());
  EXPECT_EQ(row(2).groupCount, 0x123456789L);
}

// --- order by cookie ----------------------------------------------------------------------------------------

TEST_F(VariantExpansion, Quirk_polyline_width_cookies) {
  for (DWORD cookie = 0; cookie < 6; ++cookie)
    centre.element(cookie, L"E", r8(0.0));
  info.clsid = CLSID_VeltLWPolyline;

  EXPECT_TRUE(expand());

  ASSERT_EQ(out.length(), 6U);
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(row(i).sortByCookie, i != 2 && i != 3) << i;
}

TEST_F(VariantExpansion, OfEveryOtherClassAllElementsAreOrderedByCookie) {
  for (DWORD cookie = 0; cookie < 6; ++cookie)
    centre.element(cookie, L"E", r8(0.0));
  info.clsid = CLSID_VeltPolyline;

  EXPECT_TRUE(expand());

  for (const PROPINFO& element : out)
    EXPECT_TRUE(element.sortByCookie);
}

TEST_F(VariantExpansion, TheHeaderKeepsTheOrderFlagOfTheTemplate) {
  centre.element(2, L"E", r8(0.0)).grouped(1, 1);
  info.sortByCookie = false;

  EXPECT_TRUE(expand());

  EXPECT_FALSE(row(0).sortByCookie);
  EXPECT_TRUE(row(1).sortByCookie);
}

// --- memory -------------------------------------------------------------------------------------------------

TEST_F(VariantExpansion, EveryNameIsFreedEvenTheOnesWithoutACookie) {
  centre.element(10, L"X", r8(1.0));
  centre.extraNames = {L"Spare", L"Another"};
  host.mark();

  EXPECT_TRUE(expand());

  EXPECT_EQ(out.length(), 1U);
  for (const char* const name : {"X", "Spare", "Another"}) {
    EXPECT_EQ(host.log.count(say("SysFreeString(", name, ")")), 1) << name;
  }
  EXPECT_EQ(host.log.count("CoTaskMemFree()"), 2);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(VariantExpansion, TheExpanderIsReleasedBeforeTheNamesAreFreed) {
  centre.element(10, L"X", r8(1.0));

  EXPECT_TRUE(expand());

  const Lines end = host.log.only({"Release(", "SysFreeString(X)", "CoTaskMemFree()"});
  EXPECT_EQ(end, (Lines{"Release(IOPMPropertyExpander) on line", "SysFreeString(X)", "CoTaskMemFree()",
                        "CoTaskMemFree()"}));
}

TEST_F(VariantExpansion, NullArraysAreNoElements) {
  centre.element(10, L"X", r8(1.0));
  host.on("GetElementStrings").answerNull();

  EXPECT_TRUE(expand());

  EXPECT_TRUE(out.isEmpty());
}

// --- failures -----------------------------------------------------------------------------------------------

TEST_F(VariantExpansion, AValueThatAFailingCallLeftIsNotCleared) {
  centre.element(10, L"X", text(L"left behind"));
  host.on("GetElementValue").leaveThenFail();
  host.mark();

  EXPECT_FALSE(expand());

  EXPECT_EQ(error(), message(1016));
  EXPECT_TRUE(out.isEmpty());
  EXPECT_EQ(host.log.only({"VariantClear"}), Lines{});
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(VariantExpansion, AnObjectWithoutTheExpanderIsMessage1014) {
  centre.element(10, L"X", r8(1.0));
  line.withhold(IID_IOPMPropertyExpander);

  EXPECT_FALSE(expand());

  EXPECT_EQ(error(), message(1014));
  EXPECT_TRUE(out.isEmpty());
  EXPECT_EQ(info.valueType, VT_VARIANT);
}

TEST_F(VariantExpansion, RefusedElementsAreMessage1015) {
  host.mark();

  EXPECT_FALSE(expand());

  EXPECT_EQ(error(), message(1015));
  EXPECT_TRUE(out.isEmpty());
  EXPECT_EQ(host.log.count("GetElementGrouping"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(VariantExpansion, WhatAFailingCallLeftInTheArraysIsNotFreed) {
  centre.element(10, L"X", r8(1.0));
  host.on("GetElementStrings").leaveThenFail();
  host.mark();

  EXPECT_FALSE(expand());

  EXPECT_EQ(error(), message(1015));
  EXPECT_TRUE(out.isEmpty());
  EXPECT_EQ(host.log.only({"SysFreeString(X)", "CoTaskMemFree"}), Lines{});
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(VariantExpansion, ARefusedElementValueIsMessage1016AndEarlierRowsStay) {
  centre.element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0)).element(12, L"Z", r8(3.0)).grouped(2, 5);
  host.on("GetElementValue").nth(2).fail();
  host.mark();

  EXPECT_FALSE(expand());

  EXPECT_EQ(error(), message(1016));
  ASSERT_EQ(out.length(), 2U);
  EXPECT_EQ(row(0).customType, PropertyKind::vertex);
  EXPECT_EQ(row(1).elementCookie, 10U);
  EXPECT_EQ(host.log.count("GetElementValue"), 2);
  EXPECT_EQ(host.log.count("Release(IOPMPropertyExpander) on line"), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(VariantExpansion, TheExpanderIsReleasedBeforeTheNamesAreFreedAfterARefusedElementToo) {
  centre.element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0));
  host.on("GetElementValue").nth(2).fail();
  host.mark();

  EXPECT_FALSE(expand());

  const Lines ends = host.log.only({"Release(IOPMPropertyExpander)", "SysFreeString", "CoTaskMemFree"});
  ASSERT_EQ(ends.size(), 5U) << "and two names and two arrays";
  EXPECT_TRUE(ends.front().starts_with("Release")) << ends.front();
}

TEST_F(VariantExpansion, WhicheverCallFailsTheOutcomeIsTheOneThatIsPromised) {
  centre.element(10, L"X", text(L"x")).element(11, L"Y", text(L"y")).grouped(2, 5);
  const PROPINFO fresh = info;

  int run = 1;
  for (bool failed = true; failed; ++run) {
    ASSERT_LT(run, 50);
    info = fresh;
    errorText = untouched;
    out.clear();
    host.mark();
    host.failCall(run);

    const bool done = expand();
    const std::string call = host.failedCall();
    failed = !call.empty();
    SCOPED_TRACE(call);

    const auto starts = [&call](const char* with) { return call.starts_with(with); };
    const int expected = starts("QueryInterface")      ? 1014
                         : starts("GetElementStrings") ? 1015
                         : starts("GetElementValue")   ? 1016
                                                       : 0;
    const std::size_t rowsLeft = starts("GetElementValue(4, cookie 11)")   ? 2
                                 : starts("GetElementValue(4, cookie 10)") ? 1
                                 : starts("GetElementGrouping")            ? 2
                                 : expected == 0                           ? 3
                                                                           : 0;
    EXPECT_EQ(done, expected == 0);
    EXPECT_EQ(error(), expected == 0 ? untouched : message(expected));
    EXPECT_EQ(out.length(), rowsLeft);
    clearValues();
    EXPECT_EQ(host.balance(), "balanced");
  }
  EXPECT_EQ(run, 6 + 1 + 1);
}

TEST_F(VariantExpansion, AnExceptionPassesThrough) {
  centre.element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0)).grouped(2, 5);

  for (int run = 1; run <= 6; ++run) {
    host.mark();
    host.raiseCall(run, L"no connection");

    EXPECT_THROW(expand(), _com_error) << host.failedCall();

    EXPECT_EQ(error(), untouched);
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(VariantExpansion, ExhaustedMemoryEndsTheExpansionWithoutAMessage) {
  centre.element(10, L"X", text(L"x")).element(11, L"Y", text(L"y")).grouped(2, 5);
  const PROPINFO fresh = info;
  host.mark();
  bool done = false;

  refuseMemory(
      [&] {
        info = fresh;
        out = TqVector<PROPINFO>();
        done = expand();
      },
      [&] {
        EXPECT_FALSE(done);
        EXPECT_EQ(error(), untouched);
        clearValues();
        EXPECT_EQ(host.balance(), "balanced");
      });

  EXPECT_TRUE(done);
}

}  // namespace
