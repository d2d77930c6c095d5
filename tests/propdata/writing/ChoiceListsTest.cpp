#include <gtest/gtest.h>

#include <vector>

#include "host/palette/IDynamicEnumProperty.h"
#include "propdata/VeltPropData.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyDynamicProperty.h"

namespace velt::toys {
namespace {

// --- fillPropComboBox ----------------------------------------------------------------------------------------------

struct Choices {
  bool has;
  std::vector<std::wstring> names;
  std::vector<int> values;
  friend bool operator==(const Choices&, const Choices&) = default;
};

void PrintTo(const Choices& choices, std::ostream* out) {
  *out << (choices.has ? "choices" : "no choices");
  for (const std::wstring& name : choices.names)
    *out << " \"" << narrow(name) << "\"";
  for (const int value : choices.values)
    *out << " " << value;
}

Choices choicesOf(const PROPINFO& row) {
  Choices made{row.hasChoices, {}, {}};
  for (const CStdStr<wchar_t>& name : row.choiceNames)
    made.names.push_back(name.str());
  for (const int value : row.choiceValues)
    made.values.push_back(value);
  return made;
}

class ChoiceLists : public LayerTest {
 protected:
  Row rowOf4() { return Row(L"Style").of(line).dispId(4).choice(L"old", 70).choice(L"older", 71); }
  static inline const Choices before{true, {L"old", L"older"}, {70, 71}};

  Choices fill(const PROPINFO& row) {
    TqVector<PROPINFO> list = rows({row});
    list[0].choiceReals.push_back(0.25);
    host.mark();
    fillPropComboBox(list);
    EXPECT_EQ(host.balance(), "balanced");
    const PROPINFO& filled = std::as_const(list)[0];
    EXPECT_EQ(filled.choiceReals.length(), 1u) << "only the enumeration of a dynamic property writes them";
    return choicesOf(filled);
  }
  PROPINFO dynamicRow(int customType) {
    return Row(L"Dyn").of(line).choice(L"old", 70).customType(customType).dynamic(dynamic.unknown());
  }

  ToyObject line{host, "line"};
  ToyDynamicProperty dynamic{host, "dynamic"};
};

TEST_F(ChoiceLists, ARowWithoutChoicesIsLeftAsItWas) {
  line.property(4, L"Style").choice(L"one", i4(1));
  PROPINFO row = rowOf4();
  row.hasChoices = false;

  EXPECT_EQ(fill(row), (Choices{false, before.names, before.values}));
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(ChoiceLists, AnEmptyListIsFilledWithNothing) {
  TqVector<PROPINFO> none;

  fillPropComboBox(none);

  EXPECT_TRUE(none.isEmpty());
}

TEST_F(ChoiceLists, NamesAndValuesComeFromThePredefinedOnes) {
  line.property(4, L"Style").choice(L"one", i4(11)).choice(L"two", i4(-12)).choice(L"three", i4(13));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one", L"two", L"three"}, {11, -12, 13}}));
}

TEST_F(ChoiceLists, AsksForTheStringsThenForEachValueAndFreesEverything) {
  line.property(4, L"Style").choice(L"one", i4(1)).choice(L"two", i4(2));

  fill(rowOf4());

  const Lines calls = host.log.all();
  EXPECT_EQ(calls,
            (Lines{"QueryInterface(IPerPropertyBrowsing) on line", "GetPredefinedStrings(4) on line",
                   "GetPredefinedValue(4, cookie 0) on line", "GetPredefinedValue(4, cookie 1) on line",
                   "SysFreeString(one)", "SysFreeString(two)", "CoTaskMemFree()", "CoTaskMemFree()",
                   "Release(IPerPropertyBrowsing) on line"}));
}

TEST_F(ChoiceLists, Quirk_predefined_value_by_index) {
  // The toy's cookies are 100 and 101, but the places of the strings are asked for.
  line.property(4, L"Style").choice(L"one", i4(1)).choice(L"two", i4(2));

  fill(rowOf4());

  EXPECT_EQ(host.log.only({"GetPredefinedValue"}),
            (Lines{"GetPredefinedValue(4, cookie 0) on line", "GetPredefinedValue(4, cookie 1) on line"}));
}

TEST_F(ChoiceLists, AStringValueGivesItsPlaceAndIsCleared) {
  line.property(4, L"Style")
      .choice(L"one", i4(11))
      .choice(L"two", text(L"zwei"))
      .choice(L"three", text(L"drei"));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one", L"two", L"three"}, {11, 1, 2}}));
  EXPECT_EQ(host.log.count("SysFreeString(zwei)"), 1);
  EXPECT_EQ(host.log.count("SysFreeString(drei)"), 1);
}

TEST_F(ChoiceLists, Quirk_choices_clear_strings_only) {
  line.property(4, L"Style")
      .choice(L"one", i4(1))
      .choice(L"two", text(L"x"))
      .choice(L"three", r8(2.5))
      .choice(L"four", i2(4));

  fill(rowOf4());

  EXPECT_EQ(host.log.only({"VariantClear"}), Lines{"VariantClear(VT_BSTR \"x\")"});
}

TEST_F(ChoiceLists, AShortValueKeepsItsSign) {
  line.property(4, L"Style").choice(L"one", i2(-5)).choice(L"two", i2(300));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one", L"two"}, {-5, 300}}));
}

TEST_F(ChoiceLists, TheBitsBeyondAShortValueDoNotCount) {
  line.property(4, L"Style").choice(L"one", ofType(VT_I2, 0x7FFF0001));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one"}, {1}}));
}

TEST_F(ChoiceLists, AnyOtherValueGivesItsLow32Bits) {
  line.property(4, L"Style")
      .choice(L"boolean", ofType(VT_BOOL, 0x1234FFFF))
      .choice(L"byte", ofType(VT_UI1, 0x12345678))
      .choice(L"long", ofType(VT_I8, 0x700000005))
      .choice(L"none", empty())
      .choice(L"float", r4(1.0F));

  EXPECT_EQ(fill(rowOf4()), (Choices{true,
                                     {L"boolean", L"byte", L"long", L"none", L"float"},
                                     {0x1234FFFF, 0x12345678, 5, 0, 0x3F800000}}));
}

TEST_F(ChoiceLists, Quirk_real_choices_cut_to_integers) {
  VARIANT low = r8(0);
  low.llVal = 0x3FF0000000000007;
  line.property(4, L"Style").choice(L"1.0", r8(1.0)).choice(L"odd", low);

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"1.0", L"odd"}, {0, 7}}));
}

TEST_F(ChoiceLists, NoStringsLeaveEmptyListsAndTheFlag) {
  line.property(4, L"Style").noChoices();

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {}, {}}));
}

TEST_F(ChoiceLists, StringsWithoutAnArrayCountAsNone) {
  line.property(4, L"Style").choice(L"one", i4(1));
  host.on("GetPredefinedStrings").answerNull();

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {}, {}}));
}

TEST_F(ChoiceLists, ARowWhoseObjectCannotBeBrowsedLosesItsFlagAlone) {
  line.property(4, L"Style").choice(L"one", i4(1));
  line.withhold(IID_IPerPropertyBrowsing);

  EXPECT_EQ(fill(rowOf4()), (Choices{false, before.names, before.values}));
}

TEST_F(ChoiceLists, ARowWithoutAnObjectLosesItsFlag) {
  PROPINFO row = rowOf4();
  row.pDispatch = nullptr;

  EXPECT_EQ(fill(row), (Choices{false, before.names, before.values}));
}

TEST_F(ChoiceLists, ARowWhoseStringsAreRefusedLosesItsFlagAlone) {
  line.property(4, L"Style");

  EXPECT_EQ(fill(rowOf4()), (Choices{false, before.names, before.values}));
  EXPECT_EQ(host.log.all().back(), "Release(IPerPropertyBrowsing) on line");
}

TEST_F(ChoiceLists, WhatAFailingCallLeftInTheArraysIsNeitherTakenNorFreed) {
  line.property(4, L"Style").choice(L"one", i4(1));
  host.on("GetPredefinedStrings").workThenReturn(E_FAIL);
  TqVector<PROPINFO> list = rows({rowOf4()});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{false, before.names, before.values}));
  EXPECT_EQ(host.log.only({"SysFreeString(one)", "CoTaskMemFree", "GetPredefinedValue"}), Lines{});
  line.freeLastArrays();
}

TEST_F(ChoiceLists, AValueThatFailsEndsTheListBeforeItAndAllStringsAreFreed) {
  line.property(4, L"Style")
      .choice(L"one", i4(1))
      .choice(L"two", i4(2))
      .choice(L"three", i4(3), E_FAIL)
      .choice(L"four", i4(4))
      .choice(L"five", i4(5));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one", L"two"}, {1, 2}}));
  EXPECT_EQ(host.log.count("GetPredefinedValue"), 3);
  EXPECT_EQ(host.log.only({"SysFreeString"}),
            (Lines{"SysFreeString(one)", "SysFreeString(two)", "SysFreeString(three)", "SysFreeString(four)",
                   "SysFreeString(five)"}));
}

TEST_F(ChoiceLists, AFirstValueThatFailsLeavesEmptyLists) {
  line.property(4, L"Style").choice(L"one", i4(1), E_ACCESSDENIED).choice(L"two", i4(2));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {}, {}}));
}

TEST_F(ChoiceLists, ValuesThatAreNotImplementedKeepThoseFoundBefore) {
  line.property(4, L"Style")
      .choice(L"one", i4(1), E_NOTIMPL)
      .choice(L"two", i4(2), E_NOTIMPL)
      .choice(L"three", i4(3), E_NOTIMPL)
      .choice(L"four", i4(4), E_NOTIMPL);

  // The row had two values; beyond them the places are taken.
  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one", L"two", L"three", L"four"}, {70, 71, 2, 3}}));
}

TEST_F(ChoiceLists, ANotImplementedValueTakesTheOldOneAtItsOwnPlace) {
  line.property(4, L"Style").choice(L"one", i4(1)).choice(L"two", i4(2), E_NOTIMPL).choice(L"three", i4(3));

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one", L"two", L"three"}, {1, 71, 3}}));
}

TEST_F(ChoiceLists, AnyResultThatIsNotNegativeIsASuccess) {
  line.property(4, L"Style").choice(L"one", i4(1), S_FALSE);
  host.on("GetPredefinedStrings").workThenReturn(S_FALSE);
  host.on("QueryInterface(IPerPropertyBrowsing)").workThenReturn(S_FALSE);

  EXPECT_EQ(fill(rowOf4()), (Choices{true, {L"one"}, {1}}));
}

TEST_F(ChoiceLists, ASuccessThatWritesNothingGivesTheBitsOfAnEmptyValue) {
  line.property(4, L"Style").choice(L"one", i4(1));
  host.on("GetPredefinedValue").answerNull();

  EXPECT_EQ(fill(rowOf4()).names, std::vector<std::wstring>{L"one"});
}

TEST_F(ChoiceLists, EveryRowIsFilledInOrderAndAFailureStopsNone) {
  line.property(4, L"Style").choice(L"one", i4(1));
  line.property(5, L"Refused");
  line.property(6, L"Kind").choice(L"two", i4(2));
  TqVector<PROPINFO> list =
      rows({Row(L"Plain").of(line), rowOf4(), Row(L"Refused").of(line).dispId(5).withChoices(),
            Row(L"Kind").of(line).dispId(6).withChoices()});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{false, {}, {}}));
  EXPECT_EQ(choicesOf(std::as_const(list)[1]), (Choices{true, {L"one"}, {1}}));
  EXPECT_EQ(choicesOf(std::as_const(list)[2]), (Choices{false, {}, {}}));
  EXPECT_EQ(choicesOf(std::as_const(list)[3]), (Choices{true, {L"two"}, {2}}));
  EXPECT_EQ(host.log.only({"GetPredefinedStrings"}),
            (Lines{"GetPredefinedStrings(4) on line", "GetPredefinedStrings(5) on line",
                   "GetPredefinedStrings(6) on line"}));
}

TEST_F(ChoiceLists, CopiesOfAListKeepTheChoicesTheyHad) {
  line.property(4, L"Style").choice(L"one", i4(1));
  TqVector<PROPINFO> list = rows({rowOf4()});
  const TqVector<PROPINFO> kept = list;
  const PROPINFO keptRow = kept[0];

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{true, {L"one"}, {1}}));
  EXPECT_EQ(choicesOf(kept[0]), before);
  EXPECT_EQ(choicesOf(keptRow), before);
}

TEST_F(ChoiceLists, EveryHostCallMayFailWithoutALeak) {
  line.property(4, L"Style").choice(L"one", i4(1)).choice(L"two", text(L"zwei")).choice(L"three", i4(3));
  for (int n = 1;; ++n) {
    host.failCall(n);
    const Choices choices = fill(rowOf4());
    if (host.failedCall().empty()) {
      EXPECT_EQ(choices, (Choices{true, {L"one", L"two", L"three"}, {1, 1, 3}}));
      EXPECT_EQ(n, 2 + 3 + 1);
      break;
    }
    SCOPED_TRACE(host.failedCall());
    const Choices expected[] = {{false, before.names, before.values},
                                {false, before.names, before.values},
                                {true, {}, {}},
                                {true, {L"one"}, {1}},
                                {true, {L"one", L"two"}, {1, 1}}};
    ASSERT_LE(n, 5);
    EXPECT_EQ(choices, expected[n - 1]);
  }
}

// --- dynamic rows ------------------------------------------------------------------------------------------------

TEST_F(ChoiceLists, ADynamicRowsChoicesComeFromItsEnumeration) {
  dynamic.items = {{L"small", ToyValue(i4(5))}, {L"large", ToyValue(i4(6))}};
  line.property(-23, L"Dyn").choice(L"one", i4(1));
  TqVector<PROPINFO> list = rows({dynamicRow(PropertyKind::color)});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{true, {L"small", L"large"}, {5, 6}}));
  EXPECT_EQ(host.log.count("QueryInterface(IPerPropertyBrowsing)"), 0);
}

TEST_F(ChoiceLists, TheRowsAfterADynamicOneAreFilledToo) {
  dynamic.items = {{L"small", ToyValue(i4(5))}};
  line.property(4, L"Style").choice(L"one", i4(1));
  TqVector<PROPINFO> list = rows({dynamicRow(PropertyKind::none), rowOf4()});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{true, {L"small"}, {5}}));
  EXPECT_EQ(choicesOf(std::as_const(list)[1]), (Choices{true, {L"one"}, {1}}));
}

TEST_F(ChoiceLists, ADynamicRowWhoseEnumerationIsEmptyIsDone) {
  TqVector<PROPINFO> list = rows({dynamicRow(PropertyKind::color)});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{true, {}, {}}));
  EXPECT_EQ(host.log.count("QueryInterface(IPerPropertyBrowsing)"), 0);
}

TEST_F(ChoiceLists, DynamicColorsLayersWeightsAndLineTypesFallBackToTheObjectsStrings) {
  dynamic.withhold(IID_IDynamicEnumProperty);
  line.property(-23, L"Dyn").choice(L"one", i4(1));
  for (const int customType :
       {PropertyKind::color, PropertyKind::layer, PropertyKind::lineweight, PropertyKind::linetype}) {
    EXPECT_EQ(fill(dynamicRow(customType)), (Choices{true, {L"one"}, {1}})) << customType;
  }
  EXPECT_EQ(host.log.count("GetPredefinedStrings(-23) on line"), 4);
}

TEST_F(ChoiceLists, TheFallbackIsTakenAlsoWhenAValueOfTheEnumerationFails) {
  dynamic.items = {{L"small", ToyValue(i4(5))}, {L"broken", std::nullopt}};
  line.property(-23, L"Dyn").choice(L"one", i4(1));

  EXPECT_EQ(fill(dynamicRow(PropertyKind::layer)), (Choices{true, {L"one"}, {1}}));
}

TEST_F(ChoiceLists, AnEnumerationThatThrowsIsAFailedOneAndStopsNoOtherRow) {
  dynamic.items = {{L"small", ToyValue(i4(5))}};
  line.property(-23, L"Dyn").choice(L"one", i4(1));
  host.on("GetPropValueData").nth(1).raise(L"gone");
  TqVector<PROPINFO> list = rows({dynamicRow(PropertyKind::layer), rowOf4()});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{true, {L"one"}, {1}}));
  EXPECT_EQ(host.log.count("GetPredefinedStrings(4)"), 1);
}

TEST_F(ChoiceLists, TheFallbackOfADynamicRowFailsLikeThatOfAnyOther) {
  dynamic.withhold(IID_IDynamicEnumProperty);
  line.withhold(IID_IPerPropertyBrowsing);

  EXPECT_EQ(fill(dynamicRow(PropertyKind::color)), (Choices{false, {L"old"}, {70}}));
}

TEST_F(ChoiceLists, Quirk_choices_kept_after_failed_enumeration) {
  dynamic.withhold(IID_IDynamicEnumProperty);
  line.property(-23, L"Dyn").choice(L"one", i4(1));
  for (const int customType :
       {PropertyKind::none, PropertyKind::choice, PropertyKind::entityLinetypeScale, PropertyKind::distance,
        PropertyKind::angle, PropertyKind::noUnits, PropertyKind::plotStyle, PropertyKind::noEditor,
        PropertyKind::plotStyleTable, PropertyKind::area, PropertyKind::unknownType}) {
    EXPECT_EQ(fill(dynamicRow(customType)), (Choices{true, {L"old"}, {70}})) << customType;
  }
  EXPECT_EQ(host.log.count("QueryInterface(IPerPropertyBrowsing)"), 0);
}

TEST_F(ChoiceLists, ADynamicRowThatKeepsItsChoicesStopsNoOtherRow) {
  dynamic.withhold(IID_IDynamicEnumProperty);
  line.property(4, L"Style").choice(L"one", i4(1));
  TqVector<PROPINFO> list = rows({dynamicRow(PropertyKind::none), rowOf4()});

  fillPropComboBox(list);

  EXPECT_EQ(choicesOf(std::as_const(list)[0]), (Choices{true, {L"old"}, {70}}));
  EXPECT_EQ(choicesOf(std::as_const(list)[1]), (Choices{true, {L"one"}, {1}}));
}

TEST_F(ChoiceLists, TheTypeOfAStaticRowDoesNotMatter) {
  line.property(4, L"Style").choice(L"one", i4(1));
  for (const int customType : {PropertyKind::none, PropertyKind::color, PropertyKind::unknownType}) {
    EXPECT_EQ(fill(rowOf4().customType(customType)), (Choices{true, {L"one"}, {1}})) << customType;
  }
}

// --- freePropInfoVariantValue --------------------------------------------------------------------------------------

TEST_F(ChoiceLists, EveryValueOfEveryListIsCleared) {
  ToyObject held(host, "held");
  host.mark();
  TqVector<TqVector<PROPINFO>> all =
      lists({rows({Row(L"A").value(text(L"one").make()), Row(L"B").value(i4(5))}), rows({}),
             rows({Row(L"C").value(object(held.dispatch()).make()), Row(L"D"),
                   Row(L"E").value(text(L"two").make())})});

  freePropInfoVariantValue(all);

  EXPECT_EQ(host.balance(), "balanced");
  EXPECT_EQ(host.log.only({"VariantClear"}),
            (Lines{"VariantClear(VT_BSTR \"one\")", "VariantClear(VT_I4 5)", "VariantClear(VT_DISPATCH)",
                   "VariantClear(VT_EMPTY)", "VariantClear(VT_BSTR \"two\")"}));
  for (const TqVector<PROPINFO>& list : std::as_const(all)) {
    for (const PROPINFO& row : list)
      EXPECT_EQ(row.value.vt, VT_EMPTY);
  }
}

TEST_F(ChoiceLists, ClearedRowsKeepEverythingButTheirValues) {
  TqVector<TqVector<PROPINFO>> all = lists({rows({Row(L"A").dispId(7).value(i4(5))})});

  freePropInfoVariantValue(all);

  const PROPINFO& row = std::as_const(std::as_const(all)[0])[0];
  EXPECT_EQ(row.dispId, 7);
  EXPECT_EQ(row.valueType, VT_I4);
  EXPECT_TRUE(row.hasValue);
  EXPECT_EQ(narrow(row.name.c_str()), "A");
}

TEST_F(ChoiceLists, AListThatCannotBecomeItsOwnKeepsNoOtherFromBeingCleared) {
  const TqVector<PROPINFO> cached = rows({Row(L"A").value(i4(1))});
  TqVector<TqVector<PROPINFO>> all = lists({cached, rows({Row(L"B").value(text(L"one").make())})});
  host.log.clear();
  platform::CrashReports::clear();

  {
    const auto fault = platform::AllocationFault::failNth(1, platform::Heap::Host);
    freePropInfoVariantValue(all);
    EXPECT_EQ(fault.failures(), 1U);
  }

  EXPECT_EQ(host.log.only({"VariantClear"}), Lines{"VariantClear(VT_BSTR \"one\")"});
  EXPECT_EQ(print(cached[0].value), "VT_I4 1");
  EXPECT_EQ(platform::CrashReports::take().size(), 1U);
}

TEST_F(ChoiceLists, NoListsAreFreedWithoutACall) {
  TqVector<TqVector<PROPINFO>> none;

  freePropInfoVariantValue(none);

  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(ChoiceLists, AValueThatCannotBeClearedDoesNotStopTheOthers) {
  TqVector<TqVector<PROPINFO>> all =
      lists({rows({Row(L"A").value(ofType(0x0FFF)), Row(L"B").value(text(L"one").make())})});

  freePropInfoVariantValue(all);

  EXPECT_EQ(host.balance(), "balanced");
}

}  // namespace
}  // namespace velt::toys
