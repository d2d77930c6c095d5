#include <gtest/gtest.h>

#include <vector>

#include "host/palette/IDynamicEnumProperty.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyDynamicProperty.h"

namespace velt::toys {
namespace {

class DynamicChoices : public LayerTest {
 protected:
  DynamicChoices() {
    row.choiceNames.push_back(L"old");
    row.choiceValues.push_back(70);
    row.choiceReals.push_back(0.25);
  }

  int fill() {
    host.mark();
    const int answer = fillDynPropComboBox(row);
    EXPECT_EQ(host.balance(), "balanced");
    return answer;
  }
  void offer(std::wstring name, std::optional<ToyValue> value) {
    dynamic.items.push_back({std::move(name), std::move(value)});
  }
  std::vector<std::wstring> names() const {
    std::vector<std::wstring> made;
    for (const CStdStr<wchar_t>& name : std::as_const(row.choiceNames))
      made.push_back(name.str());
    return made;
  }
  std::vector<int> values() const {
    return {std::as_const(row.choiceValues).begin(), std::as_const(row.choiceValues).end()};
  }
  std::vector<double> reals() const {
    return {std::as_const(row.choiceReals).begin(), std::as_const(row.choiceReals).end()};
  }
  void expectListsAsBefore() const {
    EXPECT_EQ(names(), std::vector<std::wstring>{L"old"});
    EXPECT_EQ(values(), std::vector<int>{70});
    EXPECT_EQ(reals(), std::vector<double>{0.25});
  }

  ToyDynamicProperty dynamic{host, "dynamic"};
  PROPINFO row = Row(L"Dyn").dynamic(dynamic.unknown());
};

TEST_F(DynamicChoices, AsksForTheCountThenForNameAndValueOfEachItem) {
  offer(L"one", ToyValue(i4(1)));
  offer(L"two", ToyValue(i4(2)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(host.log.lines(),
            (Lines{"QueryInterface(IDynamicEnumProperty) on dynamic", "GetNumPropertyValues() on dynamic",
                   "GetPropValueName(0) on dynamic", "GetPropValueData(0) on dynamic",
                   "GetPropValueName(1) on dynamic", "GetPropValueData(1) on dynamic",
                   "Release(IDynamicEnumProperty) on dynamic"}));
}

TEST_F(DynamicChoices, IntegersAreTheValuesThemselves) {
  offer(L"one", ToyValue(i4(11)));
  offer(L"two", ToyValue(i4(-12)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(names(), (std::vector<std::wstring>{L"one", L"two"}));
  EXPECT_EQ(values(), (std::vector<int>{11, -12}));
  EXPECT_EQ(reals(), std::vector<double>{});
}

TEST_F(DynamicChoices, ShortIntegersKeepTheirSign) {
  offer(L"one", ToyValue(i2(-5)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(values(), std::vector<int>{-5});
}

TEST_F(DynamicChoices, TheBitsBeyondAShortIntegerDoNotCount) {
  offer(L"one", ToyValue(ofType(VT_I2, 0x7FFF0001)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(values(), std::vector<int>{1});
}

TEST_F(DynamicChoices, RealsGiveTheirPlaceAndTheirValue) {
  offer(L"half", ToyValue(r8(0.5)));
  offer(L"quarter", ToyValue(r4(0.25F)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(values(), (std::vector<int>{0, 1}));
  EXPECT_EQ(reals(), (std::vector<double>{0.5, 0.25}));
}

TEST_F(DynamicChoices, StringsGiveTheirPlaceAndAreCleared) {
  offer(L"one", ToyValue(i4(9)));
  offer(L"two", text(L"zwei"));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(values(), (std::vector<int>{9, 1}));
  EXPECT_EQ(host.log.count("SysFreeString(zwei)"), 1);
}

TEST_F(DynamicChoices, MixedKindsMakeTheRealsShorterThanTheRest) {
  offer(L"one", ToyValue(i4(9)));
  offer(L"two", ToyValue(r8(2.5)));
  offer(L"three", text(L"drei"));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(values(), (std::vector<int>{9, 1, 2}));
  EXPECT_EQ(reals(), std::vector<double>{2.5});
}

TEST_F(DynamicChoices, AnyOtherTypeGivesItsLowBits) {
  offer(L"big", ToyValue(i8(0x100000007LL)));
  offer(L"flag", ToyValue(ofType(VT_BOOL, 0xFFFF)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(values(), (std::vector<int>{7, 0xFFFF}));
}

TEST_F(DynamicChoices, WithoutAnEnumerationNothingChanges) {
  dynamic.withhold(IID_IDynamicEnumProperty);

  EXPECT_EQ(fill(), 0);

  expectListsAsBefore();
  EXPECT_FALSE(row.hasChoices);
}

TEST_F(DynamicChoices, AValueThatCannotBeHadLeavesTheListsAsTheyWere) {
  offer(L"one", text(L"eins"));
  offer(L"two", std::nullopt);
  offer(L"three", ToyValue(i4(3)));

  EXPECT_EQ(fill(), 0);

  expectListsAsBefore();
  EXPECT_TRUE(row.hasChoices);
  EXPECT_EQ(host.log.count("GetPropValueName(2)"), 0);
}

TEST_F(DynamicChoices, ANameThatCannotBeHadIsEmpty) {
  offer(L"one", ToyValue(i4(1)));
  host.on("GetPropValueName(0)").fail();

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(names(), std::vector<std::wstring>{L""});
  EXPECT_EQ(values(), std::vector<int>{1});
}

TEST_F(DynamicChoices, Quirk_dynamic_choices_unexamined) {
  offer(L"one", ToyValue(i4(1)));
  offer(L"two", ToyValue(i4(2)));
  host.on("GetNumPropertyValues(").workThenReturn(E_FAIL);
  host.on("GetPropValueName(1)").workThenReturn(E_FAIL);

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(names(), (std::vector<std::wstring>{L"one", L"two"}));
  EXPECT_EQ(values(), (std::vector<int>{1, 2}));
}

TEST_F(DynamicChoices, Quirk_a_single_choice_in_the_list) {
  offer(L"one", ToyValue(i4(1)));

  EXPECT_EQ(fill(), 1);

  EXPECT_TRUE(row.hasChoices);
}

TEST_F(DynamicChoices, NoItemsEmptyTheListsAndDoNotSetTheFlag) {
  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(names(), std::vector<std::wstring>{});
  EXPECT_EQ(values(), std::vector<int>{});
  EXPECT_EQ(reals(), std::vector<double>{});
  EXPECT_FALSE(row.hasChoices);
}

TEST_F(DynamicChoices, ACountThatIsNotToldCountsAsNone) {
  offer(L"one", ToyValue(i4(1)));
  host.on("GetNumPropertyValues(").fail();

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(names(), std::vector<std::wstring>{});
}

TEST_F(DynamicChoices, ACountThatLiesEndsAtTheItemThatIsMissing) {
  offer(L"one", ToyValue(i4(1)));
  dynamic.valueCount = 1000000000;

  EXPECT_EQ(fill(), 0);

  expectListsAsBefore();
}

TEST_F(DynamicChoices, OnlyAStringValueIsCleared) {
  offer(L"one", ToyValue(i4(1)));
  offer(L"two", text(L"x"));
  offer(L"three", ToyValue(r8(2.5)));
  offer(L"four", ToyValue(i2(4)));

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(host.log.only({"VariantClear"}), Lines{"VariantClear(VT_BSTR \"x\")"});
}

TEST_F(DynamicChoices, ANegativeCountCountsAsZero) {
  dynamic.valueCount = -1;

  EXPECT_EQ(fill(), 1);

  EXPECT_EQ(names(), std::vector<std::wstring>{});
  EXPECT_FALSE(row.hasChoices);
}

TEST_F(DynamicChoices, ARowWithoutAPropertyObjectHasNone) {
  row.pDynamicProperty = nullptr;

  EXPECT_EQ(fill(), 0);

  expectListsAsBefore();
}

TEST_F(DynamicChoices, ExhaustedMemoryLeavesTheListsAndNoText) {
  for (const wchar_t* const name : {L"one", L"two", L"three"})
    offer(name, text(name));
  offer(L"four", ToyValue(r8(4.5)));
  const PROPINFO fresh = row;
  int answer = -1;

  refuseMemory([&] { answer = fill(); },
               [&] {
                 EXPECT_EQ(answer, 0);
                 expectListsAsBefore();
                 row = fresh;
               });

  EXPECT_EQ(answer, 1);
}

TEST_F(DynamicChoices, EveryRefusalByOperatorNewLeavesTheListsAndNoText) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  for (const wchar_t* const name : {L"one", L"two", L"three"})
    offer(name, text(name));
  offer(L"four", ToyValue(r8(4.5)));
  const PROPINFO fresh = row;
  for (std::uint64_t n = 1;; ++n) {
    ASSERT_LT(n, 1000U);
    host.mark();
    int answer = -1;
    std::uint64_t refused = 0;
    {
      const auto spy = tests::AllocationSpy::failNth(n);
      answer = fillDynPropComboBox(row);
      refused = spy.counts().failures;
    }
    EXPECT_EQ(host.balance(), "balanced");
    if (refused == 0) {
      EXPECT_EQ(answer, 1);
      EXPECT_GT(n, 4U);
      break;
    }
    EXPECT_EQ(answer, 0);
    expectListsAsBefore();
    row = fresh;
  }
}

TEST_F(DynamicChoices, TheListsHaveAsManySlotsAsAfterAppendingOneByOne) {
  for (const int count : {0, 1, 8, 9, 17}) {
    dynamic.items.clear();
    TqVector<int> appended;
    for (int i = 0; i < count; ++i) {
      offer(L"choice", ToyValue(r8(i)));
      appended.append(i);
    }

    EXPECT_EQ(fill(), 1);

    EXPECT_EQ(row.choiceNames.physicalLength(), appended.physicalLength()) << count;
    EXPECT_EQ(row.choiceValues.physicalLength(), appended.physicalLength()) << count;
    EXPECT_EQ(row.choiceReals.physicalLength(), appended.physicalLength()) << count;
  }
}

// Nobody sees the lists before they are complete, so they need not move each time that eight more are there.
TEST_F(DynamicChoices, TheListsAreAllocatedOnceHoweverLongTheyAre) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  for (int i = 0; i < 1000; ++i)
    offer(L"choice", ToyValue(r8(i)));
  const tests::AllocationSpy spy;

  EXPECT_EQ(fillDynPropComboBox(row), 1);

  EXPECT_EQ(spy.counts().arrayNews, 3U);
}

}  // namespace
}  // namespace velt::toys
