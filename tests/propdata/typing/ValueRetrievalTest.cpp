// Reading the value of a row from a toy object.

#include <utility>

#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyColor.h"

namespace {

using namespace velt::toys;

class ValueRetrieval : public LayerTest {
 protected:
  ValueRetrieval() {
    prop = Row(L"Radius").of(circle, 77).dispId(4).declared(VT_R8).ofClass(CLSID_VeltCircle);
  }

  void read() { getPropValue(prop, elements); }
  bool refresh() { return GetPropInfoValue(prop); }

  ToyObject circle{host, "circle"};
  ToyProperty& radius = circle.property(4, L"Radius");
  PROPINFO prop;
  TqVector<PROPINFO> elements;
};

// What both functions do, called through either.
class EitherReader : public ValueRetrieval, public ::testing::WithParamInterface<bool> {
 protected:
  void readEither() {
    if (GetParam()) {
      EXPECT_TRUE(refresh());
    } else {
      read();
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Readers, EitherReader, ::testing::Bool(), [](const auto& reader) {
  return reader.param ? "GetPropInfoValue" : "getPropValue";
});

TEST_P(EitherReader, TheWeightIsAskedForBeforeTheValue) {
  radius.holds(r8(1.5)).weighs(7);
  host.mark();

  readEither();

  const Lines lines = host.log.lines();
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0], "QueryInterface(IVkPiPropertyDisplay) on circle");
  EXPECT_EQ(lines[1], "GetPropertyWeight(VT_I4 4) on circle");
  EXPECT_EQ(lines[2], "Release(IVkPiPropertyDisplay) on circle");
  EXPECT_EQ(lines[3], "GetUserDefaultLangID()");
  EXPECT_TRUE(lines[4].starts_with("Invoke(4, get, locale 0x407, result VT_R8, exception")) << lines[4];
  EXPECT_TRUE(circle.exceptionWasZeroed);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_P(EitherReader, TheRowGetsItsValue) {
  radius.holds(r8(1.5));

  readEither();

  EXPECT_EQ(print(prop.value), "VT_R8 1.5");
  EXPECT_TRUE(prop.hasValue);
  EXPECT_EQ(prop.valueType, VT_R8);
}

TEST_P(EitherReader, AValueOfAnotherTypeThanDeclaredIsKeptAsItComes) {
  radius.holds(text(L"big"));
  host.mark();

  readEither();

  EXPECT_EQ(print(prop.value), "VT_BSTR \"big\"");
  EXPECT_EQ(prop.valueType, VT_R8) << "the declared type stays";
  EXPECT_EQ(host.balance(), "BSTR +1");
  VariantClear(&prop.value);
}

TEST_P(EitherReader, TheLocaleIsTheSixteenBitsOfTheUsersLanguage) {
  host.userLanguage = LANGID{0x8C0A};
  host.userLocale = LCID{0x11223344};
  radius.holds(r8(1.5));

  readEither();

  EXPECT_EQ(host.log.count("Invoke(4, get, locale 0x8C0A,"), 1);
  EXPECT_EQ(host.log.count("GetUserDefaultLCID"), 0);
}

TEST_P(EitherReader, WhatTheValueHeldBeforeIsOverwrittenAndNotCleared) {
  const BSTR before = SysAllocString(L"before");
  prop.value = borrowed(before);
  radius.holds(r8(1.5));
  host.mark();

  readEither();

  EXPECT_EQ(print(prop.value), "VT_R8 1.5");
  EXPECT_EQ(host.balance(), "balanced") << "the string is still there";
  SysFreeString(before);
}

TEST_P(EitherReader, ValuesThatWereReadBeforeAreReadAgain) {
  prop.hasValue = true;
  radius.holds(r8(1.5));

  readEither();

  EXPECT_EQ(print(prop.value), "VT_R8 1.5");
}

TEST_P(EitherReader, Quirk_type_tag_before_get) {
  prop.value = i4(42);
  host.on("Invoke").fail();

  readEither();

  EXPECT_EQ(prop.value.vt, VT_R8) << "the declared type stands over the bits that were there";
  EXPECT_EQ(prop.value.lVal, 42);
}

// As callers are told to do it: nobody learns that the get failed, and the old value must not be cleared twice.
TEST_P(EitherReader, AValueThatWasTakenOutBeforeCanBeClearedAfterAFailedGet) {
  prop.valueType = VT_BSTR;
  prop.value = text(L"old").make();
  host.on("Invoke").fail();

  VARIANT before = std::exchange(prop.value, VARIANT{});
  readEither();
  EXPECT_EQ(prop.value.vt, VT_BSTR);
  VariantClear(&prop.value);
  VariantClear(&before);

  EXPECT_EQ(host.log.count("SysFreeString(old)"), 1);
}

TEST_P(EitherReader, TheResultOfTheGetIsNotLookedAt) {
  radius.holds(r8(1.5));
  host.on("Invoke").workThenReturn(E_FAIL);

  readEither();

  EXPECT_EQ(print(prop.value), "VT_R8 1.5");
}

TEST_P(EitherReader, ARowWithoutAnObjectCountsAsReadAndHasTheDeclaredTypeAlone) {
  prop.pDispatch = nullptr;
  prop.weight = 3;

  readEither();

  EXPECT_EQ(prop.value.vt, VT_R8);
  EXPECT_EQ(prop.weight, 3);
  EXPECT_TRUE(prop.hasValue);
}

TEST_P(EitherReader, Quirk_has_value_in_every_case) {
  host.on("Invoke").fail();
  host.on("QueryInterface").fail();

  readEither();

  EXPECT_TRUE(prop.hasValue) << "so that nobody reads it again";
}

TEST_P(EitherReader, TheStringsOfAnExceptionAreFreed) {
  radius.raises({L"source", L"description", L"help"});
  host.mark();

  readEither();

  EXPECT_EQ(host.log.only({"SysFreeString"}),
            (Lines{"SysFreeString(source)", "SysFreeString(description)", "SysFreeString(help)"}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_P(EitherReader, TheStringsOfAnExceptionAreFreedEvenWhenThereAreNone) {
  radius.holds(r8(1.5));

  readEither();

  EXPECT_EQ(host.log.count("SysFreeString(null)"), 3);
}

// --- weight -------------------------------------------------------------------------------------------------

TEST_P(EitherReader, TheDisplayInterfacesWeightIsTaken) {
  radius.holds(r8(1.5)).weighs(7);

  readEither();

  EXPECT_EQ(prop.weight, 7);
}

TEST_P(EitherReader, TheDisplayInterfacesWeightTakesThePlaceOfTheOldOne) {
  prop.weight = 5;
  radius.holds(r8(1.5)).weighs(7);
  readEither();
  EXPECT_EQ(prop.weight, 7);

  radius.weighs(0);
  readEither();
  EXPECT_EQ(prop.weight, 0);
}

TEST_P(EitherReader, AWeightIsCutTo32Bits) {
  radius.holds(r8(1.5)).weighs(0x1FFFFFFF9L);

  readEither();

  EXPECT_EQ(prop.weight, -7);
}

TEST_P(EitherReader, WithoutTheDisplayInterfaceTheWeightStays) {
  circle.withhold(IID_IVkPiPropertyDisplay);
  radius.holds(r8(1.5)).weighs(7);
  for (const int before : {0, 12}) {
    prop.weight = before;
    readEither();
    EXPECT_EQ(prop.weight, before);
  }
}

TEST_P(EitherReader, AWeightThatIsRefusedStays) {
  radius.holds(r8(1.5)).weighs(7);
  prop.weight = 12;

  host.on("GetPropertyWeight").fail();
  readEither();
  EXPECT_EQ(prop.weight, 12);

  host.on("GetPropertyWeight").workThenReturn(E_FAIL);
  readEither();
  EXPECT_EQ(prop.weight, 12) << "even when the failing call wrote one";
}

TEST_P(EitherReader, APositiveResultIsAWeight) {
  radius.holds(r8(1.5)).weighs(7);
  host.on("GetPropertyWeight").workThenReturn(S_FALSE);

  readEither();

  EXPECT_EQ(prop.weight, 7);
}

TEST_P(EitherReader, ThePlaceInTheTableOverridesTheDisplayInterface) {
  circle.property(63, L"ExtensionLineColor").holds(i4(1)).weighs(7);
  prop.dispId = 63;
  prop.clsid = CLSID_VeltDimRotated;

  readEither();

  EXPECT_EQ(prop.weight, 3);
}

TEST_P(EitherReader, ThePlaceInTheTableIsTakenWithoutTheDisplayInterface) {
  circle.withhold(IID_IVkPiPropertyDisplay);
  prop.dispId = 1542;
  prop.clsid = CLSID_VeltLeader;

  readEither();

  EXPECT_EQ(prop.weight, 2);
}

// --- kind ---------------------------------------------------------------------------------------------------

TEST_P(EitherReader, ARowWithoutACustomTypeGetsItsKind) {
  radius.holds(r8(1.5));
  for (const int before : {PropertyKind::none, PropertyKind::unknownType}) {
    prop.customType = before;
    readEither();
    EXPECT_EQ(prop.customType, PropertyKind::number) << "before: " << before;
  }
}

TEST_P(EitherReader, AnyOtherCustomTypeStays) {
  radius.holds(r8(1.5));
  for (const int before : std::initializer_list<int>{PropertyKind::color, PropertyKind::linetype,
                                                     PropertyKind::area, PropertyKind::vertex, 552, -1}) {
    prop.customType = before;
    readEither();
    EXPECT_EQ(prop.customType, before);
  }
}

TEST_P(EitherReader, TheKindMayBeNone) {
  radius.holds(ofType(VT_DATE));
  prop.customType = PropertyKind::unknownType;

  readEither();

  EXPECT_EQ(prop.customType, PropertyKind::none);
}

TEST_P(EitherReader, TheKindIsThatOfTheValueThatWasRead) {
  ToyColor red(host, "red", ToyColor::indexed(1));
  radius.holds(object(red.dispatch()));
  host.mark();

  readEither();

  EXPECT_EQ(prop.customType, PropertyKind::colorObject);
  VariantClear(&prop.value);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_P(EitherReader, TheKindDependsOnTheClassOfTheRow) {
  circle.property(5, L"Area").holds(r8(2.0));
  prop.dispId = 5;
  prop.name = L"Area";

  readEither();
  EXPECT_EQ(prop.customType, PropertyKind::shapeArea);

  prop.clsid = CLSID_VeltLine;
  prop.customType = PropertyKind::none;
  readEither();
  EXPECT_EQ(prop.customType, PropertyKind::number);
}

TEST_P(EitherReader, WhicheverCallFailsTheRowCountsAsRead) {
  radius.holds(r8(1.5)).weighs(7);

  int run = 1;
  for (bool failed = true; failed; ++run) {
    ASSERT_LT(run, 20);
    prop.weight = 0;
    prop.value = empty();
    prop.hasValue = false;
    host.mark();
    host.failCall(run);

    readEither();

    const std::string call = host.failedCall();
    failed = !call.empty();
    SCOPED_TRACE(call);
    const bool weightFailed =
        call.starts_with("QueryInterface(IVkPi") || call.starts_with("GetPropertyWeight");
    EXPECT_TRUE(prop.hasValue);
    EXPECT_EQ(prop.weight, weightFailed ? 0 : 7);
    EXPECT_EQ(print(prop.value), call.starts_with("Invoke") ? "VT_R8 0" : "VT_R8 1.5");
    EXPECT_EQ(host.balance(), "balanced");
  }
  EXPECT_EQ(run, 3 + 1 + 1);
}

TEST_P(EitherReader, WhicheverCallThrowsTheRowCountsAsReadAndNothingPasses) {
  radius.holds(r8(1.5)).weighs(7);
  int run = 1;
  for (bool raised = true; raised; ++run) {
    ASSERT_LT(run, 20);
    prop.hasValue = false;
    host.mark();
    host.raiseCall(run, L"no connection");

    EXPECT_NO_THROW(readEither());

    raised = !host.failedCall().empty();
    EXPECT_TRUE(prop.hasValue) << host.failedCall();
    EXPECT_EQ(host.balance(), "balanced") << host.failedCall();
  }
  EXPECT_EQ(run, 3 + 1 + 1);
}

// --- where the two differ -----------------------------------------------------------------------------------

TEST_F(ValueRetrieval, AnExpandedPropertyGivesItsElementsAndIsNotFetched) {
  radius.holds(r8(1.5)).element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0)).weighs(7);
  prop.valueType = VT_VARIANT;
  prop.dispId = 4;
  elements.push_back(Row(L"Before"));

  read();

  ASSERT_EQ(elements.length(), 3U);
  EXPECT_EQ(elements.at(1).elementCookie, 10U);
  EXPECT_EQ(elements.at(2).elementCookie, 11U);
  EXPECT_EQ(elements.at(1).weight, 7) << "the weight is settled before the elements are made";
  EXPECT_TRUE(prop.hasValue);
  EXPECT_EQ(host.log.count("Invoke"), 0);
}

TEST_F(ValueRetrieval, AnExpandedPropertyHasNoKind) {
  circle.property(1301, L"Hyperlinks").noElements().grouped(0);
  prop.dispId = 1301;
  prop.valueType = VT_VARIANT;
  prop.customType = PropertyKind::none;

  read();

  EXPECT_EQ(prop.customType, PropertyKind::none) << "1301 would be hyperlinks";
  EXPECT_TRUE(prop.hasValue);
  EXPECT_TRUE(elements.isEmpty());
  EXPECT_EQ(prop.value.vt, VT_EMPTY);
}

TEST_F(ValueRetrieval, Quirk_expanded_from_a_copy) {
  radius.element(10, L"X", r8(1.0)).grouped(2, 5);
  prop.valueType = VT_VARIANT;
  prop.customType = PropertyKind::unknownType;

  read();

  EXPECT_EQ(prop.customType, PropertyKind::unknownType);
  EXPECT_EQ(prop.value.vt, VT_EMPTY);
  EXPECT_EQ(prop.valueType, VT_VARIANT);
  EXPECT_EQ(prop.elementGrouping, 0);
  EXPECT_FALSE(prop.isElement);
  EXPECT_EQ(prop.displayName.str(), L"Radius");
  EXPECT_EQ(elements.length(), 2U);
}

TEST_F(ValueRetrieval, AVariantThatIsNotExpandedIsFetchedAndTheMessageIsDropped) {
  radius.holds(text(L"whole"));
  prop.valueType = VT_VARIANT;

  read();

  EXPECT_EQ(print(prop.value), "VT_BSTR \"whole\"");
  EXPECT_EQ(prop.customType, PropertyKind::text);
  EXPECT_TRUE(elements.isEmpty());
  EXPECT_EQ(host.log.count("Invoke(4, get, locale 0x407, result VT_VARIANT"), 1);
  VariantClear(&prop.value);
}

TEST_F(ValueRetrieval, AVariantWithoutTheExpanderIsFetched) {
  circle.withhold(IID_IOPMPropertyExpander);
  radius.holds(r8(1.5)).element(10, L"X", r8(1.0));
  prop.valueType = VT_VARIANT;

  read();

  EXPECT_EQ(print(prop.value), "VT_R8 1.5");
  EXPECT_TRUE(elements.isEmpty());
}

TEST_F(ValueRetrieval, AnExpansionThatBreaksOffLeavesItsRowsAndTheValueIsFetched) {
  radius.holds(r8(9.5)).element(10, L"X", r8(1.0)).element(11, L"Y", r8(2.0));
  prop.valueType = VT_VARIANT;
  host.on("GetElementValue").nth(2).fail();

  read();

  EXPECT_EQ(elements.length(), 1U);
  EXPECT_EQ(print(prop.value), "VT_R8 9.5");
  EXPECT_TRUE(prop.hasValue);
}

TEST_F(ValueRetrieval, OnlyAVariantIsTriedToBeExpanded) {
  radius.holds(r8(1.5)).element(10, L"X", r8(1.0));
  for (const VARTYPE type : {VT_R8, VT_USERDEFINED, VT_DISPATCH}) {
    prop.valueType = type;
    read();
  }

  EXPECT_EQ(host.log.count("QueryInterface(IOPMPropertyExpander)"), 0);
  EXPECT_TRUE(elements.isEmpty());
}

TEST_F(ValueRetrieval, TheExpansionComesAfterTheWeight) {
  circle.property(63, L"Expanded").element(10, L"X", r8(1.0));
  prop.dispId = 63;
  prop.clsid = CLSID_VeltDimRotated;
  prop.valueType = VT_VARIANT;

  read();

  EXPECT_EQ(elements.at(0).weight, 3);
}

TEST_F(ValueRetrieval, ARefreshNeverExpands) {
  radius.holds(r8(1.5)).element(10, L"X", r8(1.0));
  prop.valueType = VT_VARIANT;

  EXPECT_TRUE(refresh());

  EXPECT_EQ(print(prop.value), "VT_R8 1.5");
  EXPECT_EQ(host.log.count("QueryInterface(IOPMPropertyExpander)"), 0);
  EXPECT_EQ(host.log.count("Invoke(4, get, locale 0x407, result VT_VARIANT"), 1);
}

TEST_F(ValueRetrieval, ARefreshIsTrueEvenWhenEverythingFails) {
  host.on("QueryInterface").fail();
  host.on("Invoke").fail();

  EXPECT_TRUE(refresh());
}

TEST_F(ValueRetrieval, OnlyARefreshClearsTheArgumentOfTheWeightQuery) {
  radius.holds(r8(1.5)).weighs(7);

  read();
  EXPECT_EQ(host.log.count("VariantClear"), 0);

  EXPECT_TRUE(refresh());
  EXPECT_EQ(host.log.only({"VariantClear"}), Lines{"VariantClear(VT_I4 4)"});
}

}  // namespace
