#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/propdata/merge/MergeScenario.h"
#include "tests/propdata/merge/MergeScenarioRun.h"
#include "tests/propdata/merge/ReferenceMerge.h"
#include "tests/support/LayerTest.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyDatabase.h"

namespace velt::tests {
namespace {

using namespace velt::toys;

// --- one call ------------------------------------------------------------------------------------------------

struct Merged {
  bool answer = false;
  TqVector<PROPINFO> result;
  std::wstring errorText;
};

Merged merge(TqVector<TqVector<PROPINFO>>& perEntity) {
  // The selection and the flag are for the caller's sake: entries that lead nowhere show that nobody looks.
  TqVector<VeltPropData*> entities;
  entities.push_back(nullptr);
  CStdStr<wchar_t> errorText(L"as before");
  bool flag = true;
  Merged made;
  made.answer = ExcuteIntersect(entities, perEntity, made.result, errorText, flag);
  made.errorText = errorText.str();
  EXPECT_TRUE(flag);
  EXPECT_EQ(entities.length(), 1u);
  return made;
}

Merged mergeRows(std::initializer_list<TqVector<PROPINFO>> perEntity) {
  TqVector<TqVector<PROPINFO>> all = lists(perEntity);
  return merge(all);
}

// "Start", "End varies": what the palette would show.
Lines shown(const TqVector<PROPINFO>& list) {
  Lines made;
  for (const PROPINFO& row : list)
    made.push_back(narrow(row.name.c_str()) + (row.isVaries ? " varies" : ""));
  return made;
}

std::vector<LONG> numbers(const TqVector<PROPINFO>& list) {
  std::vector<LONG> made;
  for (const PROPINFO& row : list)
    made.push_back(row.value.vt == VT_I4 ? row.value.lVal : -1);
  return made;
}

using Pairs = std::vector<std::pair<const IUnknown*, const IUnknown*>>;

Pairs pairsOf(const PROPINFO& row) {
  Pairs made;
  for (const DispatchDynPropSourceNode& node : row.dynSources)
    made.push_back({node.pDispatch, node.pDynamicProperty});
  return made;
}

const PROPINFO& rowAt(const TqVector<PROPINFO>& list, std::uint32_t index) {
  return list[index];
}
const TqVector<PROPINFO>& listAt(const TqVector<TqVector<PROPINFO>>& all, std::uint32_t index) {
  return all[index];
}

// A stage with entities that have a point "Start" (DISPID 1), which expands into X and Y, and a number
// "Length" (DISPID 2).
class ExcuteIntersectOnToys : public LayerTest {
 protected:
  ExcuteIntersectOnToys() {
    host.texts[1019] = L"no property %ls";
    for (ToyObject* const object : {&first, &second, &third}) {
      object->property(1, L"Start").element(1, L"X", i4(10)).element(2, L"Y", i4(20));
      object->property(2, L"Length").holds(i4(7));
    }
  }

  static Row point(const ToyObject& object) {
    return Row(L"Start").of(object).dispId(1).declared(VT_VARIANT);
  }
  static Row length(const ToyObject& object) { return Row(L"Length").of(object).dispId(2).declared(VT_I4); }
  int callsOn(const ToyObject& object) const {
    return static_cast<int>(std::ranges::count_if(
        host.log.all(), [&](const std::string& line) { return line.ends_with(" on " + object.name()); }));
  }

  ToyObject first{host, "first"};
  ToyObject second{host, "second"};
  ToyObject third{host, "third"};
  ToyDynamicProperty dynamicA{host, "dynamicA"};
  ToyDynamicProperty dynamicB{host, "dynamicB"};
  ToyDynamicProperty dynamicC{host, "dynamicC"};
};

// --- no list, empty lists --------------------------------------------------------------------------------------

TEST(ExcuteIntersect, WithoutAListFailsAndLeavesTheResultAlone) {
  TqVector<VeltPropData*> entities;
  TqVector<TqVector<PROPINFO>> none;
  TqVector<PROPINFO> result = rows({Row(L"Old").value(i4(1))});
  CStdStr<wchar_t> errorText(L"as before");
  bool flag = false;

  EXPECT_FALSE(ExcuteIntersect(entities, none, result, errorText, flag));

  EXPECT_EQ(names(result), Lines{"Old"});
  EXPECT_EQ(errorText.str(), L"as before");
  EXPECT_FALSE(flag);
}

TEST(ExcuteIntersect, AnEmptyFirstListSucceedsWithAnEmptyResult) {
  for (const std::uint32_t entityCount : {1u, 2u, 3u}) {
    SCOPED_TRACE(entityCount);
    TqVector<VeltPropData*> entities;
    TqVector<TqVector<PROPINFO>> all;
    all.push_back(TqVector<PROPINFO>());
    for (std::uint32_t i = 1; i < entityCount; ++i)
      all.push_back(rows({Row(L"A").value(i4(1))}));
    TqVector<PROPINFO> result = rows({Row(L"Old").value(i4(1))});
    CStdStr<wchar_t> errorText(L"as before");
    bool flag = false;

    EXPECT_TRUE(ExcuteIntersect(entities, all, result, errorText, flag));

    EXPECT_TRUE(result.isEmpty());
    EXPECT_EQ(errorText.str(), L"as before");
  }
}

TEST(ExcuteIntersect, AnEmptyLaterListEmptiesTheResult) {
  const Merged merged = mergeRows({rows({Row(L"A").value(i4(1))}), rows({})});

  EXPECT_TRUE(merged.answer);
  EXPECT_TRUE(merged.result.isEmpty());
}

TEST(ExcuteIntersect, ReplacesWhatTheResultHeldBefore) {
  TqVector<VeltPropData*> entities;
  TqVector<TqVector<PROPINFO>> all = lists({rows({Row(L"A").value(i4(1))}), rows({Row(L"A").value(i4(1))})});
  TqVector<PROPINFO> result = rows({Row(L"Old").value(i4(1)), Row(L"Older").value(i4(1))});
  CStdStr<wchar_t> errorText;
  bool flag = false;

  EXPECT_TRUE(ExcuteIntersect(entities, all, result, errorText, flag));

  EXPECT_EQ(names(result), Lines{"A"});
}

// --- one entity ------------------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, ASingleEntityGetsAllItsRowsReadInTheirOrderAndNoneVarying) {
  const Merged merged =
      mergeRows({rows({length(first), point(first), Row(L"Known").of(first).value(i4(3))})});

  EXPECT_TRUE(merged.answer);
  EXPECT_EQ(shown(merged.result), (Lines{"Length", "Start", "Start", "Known"}));
  EXPECT_EQ(numbers(merged.result), (std::vector<LONG>{7, 10, 20, 3}));
  EXPECT_EQ(host.log.count("Invoke"), 1);
  EXPECT_EQ(merged.errorText, L"as before");
}

TEST_F(ExcuteIntersectOnToys, AReadRowOfASingleEntityIsNotReadAgain) {
  const Merged merged = mergeRows({rows({Row(L"Length").of(first).dispId(2).value(i4(3))})});

  EXPECT_EQ(numbers(merged.result), std::vector<LONG>{3});
  EXPECT_EQ(host.log.lines(), Lines{});
}

TEST_F(ExcuteIntersectOnToys, AGroupedPropertyOfASingleEntityKeepsItsHeaderBeforeItsElements) {
  first[1].grouped(1, 4);

  const Merged merged = mergeRows({rows({point(first)})});

  ASSERT_EQ(merged.result.length(), 3u);
  EXPECT_EQ(rowAt(merged.result, 0).customType, PropertyKind::vertex);
  EXPECT_EQ(rowAt(merged.result, 0).groupCount, 4);
  EXPECT_FALSE(rowAt(merged.result, 0).isElement);
  EXPECT_EQ(numbers(merged.result), (std::vector<LONG>{0, 10, 20}));
}

TEST_F(ExcuteIntersectOnToys, APropertyThatExpandsIntoNothingStaysItself) {
  first[1].elements.clear();

  const Merged merged = mergeRows({rows({point(first)})});

  ASSERT_EQ(merged.result.length(), 1u);
  EXPECT_TRUE(rowAt(merged.result, 0).hasValue);
  EXPECT_FALSE(rowAt(merged.result, 0).isElement);
}

TEST_F(ExcuteIntersectOnToys, Quirk_partial_elements_replace_their_row) {
  first[1].element(3, L"Z", i4(30));
  host.on("GetElementValue(1, cookie 2)").fail();

  const Merged merged = mergeRows({rows({length(first), point(first), length(first)})});

  EXPECT_EQ(numbers(merged.result), (std::vector<LONG>{7, 10, 7}));
  EXPECT_EQ(merged.errorText, L"as before");
}

// A later entity's row stays in its list, for whoever clears that.
TEST_F(ExcuteIntersectOnToys, Quirk_value_beside_partial_elements_lost) {
  for (ToyObject* const object : {&first, &second})
    (*object)[1].holds(toys::text(L"whole"));
  host.on("GetElementValue(1, cookie 2)").fail();
  TqVector<TqVector<PROPINFO>> all = lists({rows({point(first)}), rows({point(second)})});
  host.mark();

  const Merged merged = merge(all);
  freePropInfoVariantValue(all);

  EXPECT_EQ(shown(merged.result), Lines{"Start"});
  EXPECT_EQ(host.balance(), "BSTR +1");
}

TEST_F(ExcuteIntersectOnToys, APropertyWhoseElementsCannotBeListedIsReadAsOneValue) {
  first[1].holds(i4(5));
  host.on("GetElementStrings").fail();

  const Merged merged = mergeRows({rows({point(first)})});

  EXPECT_EQ(numbers(merged.result), std::vector<LONG>{5});
}

TEST_F(ExcuteIntersectOnToys, ADynamicRowOfASingleEntityGetsItsOwnPair) {
  const Merged merged =
      mergeRows({rows({Row(L"D").of(first).value(i4(1)).dynamic(dynamicA.unknown()), length(first)})});

  ASSERT_EQ(merged.result.length(), 2u);
  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{{first.dispatch(), dynamicA.unknown()}}));
  EXPECT_EQ(pairsOf(rowAt(merged.result, 1)), Pairs{});
}

TEST_F(ExcuteIntersectOnToys, Quirk_dynamic_rows_read_by_invoke) {
  const Row fromTheSource = Row(L"Material").of(first).dynamic(dynamicA.unknown()).value(i4(3));
  const Row unread = Row(fromTheSource).declared(VT_I4);

  const Merged refused = mergeRows({rows({unread})});
  EXPECT_EQ(host.log.count("Invoke(-23, get"), 1);
  EXPECT_EQ(numbers(refused.result), std::vector<LONG>{3}) << "the old bits under the same type";

  first.readOnly(dynamicPropertyDispId, L"Material").holds(i4(5)).weighs(9);
  const Merged answered = mergeRows({rows({unread})});
  EXPECT_EQ(numbers(answered.result), std::vector<LONG>{5});
  EXPECT_EQ(rowAt(answered.result, 0).weight, 9);
}

TEST_F(ExcuteIntersectOnToys, TheOwnPairOfASingleEntityStandsAfterPairsThatTheRowHad) {
  const Merged merged = mergeRows({rows({Row(L"D")
                                             .of(first)
                                             .value(i4(1))
                                             .source(second.unknown(), dynamicB.unknown())
                                             .dynamic(dynamicA.unknown())})});

  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)),
            (Pairs{{second.unknown(), dynamicB.unknown()}, {first.dispatch(), dynamicA.unknown()}}));
}

TEST_F(ExcuteIntersectOnToys, TheElementsOfASingleEntitysDynamicRowCarryItsPair) {
  first.property(-23, L"D").element(1, L"X", i4(1)).element(2, L"Y", i4(2));

  const Merged merged =
      mergeRows({rows({Row(L"D").of(first).declared(VT_VARIANT).dynamic(dynamicA.unknown())})});

  ASSERT_EQ(merged.result.length(), 2u);
  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{{first.dispatch(), dynamicA.unknown()}}));
  EXPECT_EQ(pairsOf(rowAt(merged.result, 1)), (Pairs{{first.dispatch(), dynamicA.unknown()}}));
}

TEST_F(ExcuteIntersectOnToys, ASingleEntityKeepsVaryingAndGroupedRows) {
  const Merged merged =
      mergeRows({rows({Row(L"V").value(i4(1)).varies(), Row(L"G").value(i4(2)).grouping(1)})});

  EXPECT_EQ(shown(merged.result), (Lines{"V varies", "G"}));
}

TEST_F(ExcuteIntersectOnToys, TheFirstListIsNeverChanged) {
  for (const bool alone : {true, false}) {
    SCOPED_TRACE(alone);
    const PROPINFO dynamicRow = Row(L"D").of(first).value(i4(1)).dynamic(dynamicA.unknown());
    TqVector<TqVector<PROPINFO>> all = lists({rows({length(first), point(first), dynamicRow})});
    if (!alone) all.push_back(rows({length(second), point(second)}));

    EXPECT_TRUE(merge(all).answer);

    const TqVector<PROPINFO>& list = listAt(all, 0);
    EXPECT_EQ(names(list), (Lines{"Length", "Start", "D"}));
    EXPECT_FALSE(rowAt(list, 0).hasValue);
    EXPECT_FALSE(rowAt(list, 1).hasValue);
    EXPECT_FALSE(rowAt(list, 1).isElement);
    EXPECT_EQ(pairsOf(rowAt(list, 2)), Pairs{});
  }
}

// --- exceptions ----------------------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, WhicheverCallThrowsItsDescriptionIsTheErrorTextAndTheResultStays) {
  const TqVector<PROPINFO> before = rows({Row(L"Old").value(i4(1))});
  for (const bool alone : {true, false}) {
    SCOPED_TRACE(alone);
    for (int n = 1;; ++n) {
      TqVector<TqVector<PROPINFO>> all = lists({rows({point(first), length(first)})});
      if (!alone) all.push_back(rows({length(second), point(second)}));
      TqVector<VeltPropData*> entities;
      TqVector<PROPINFO> result(before);
      CStdStr<wchar_t> text(L"as before");
      bool flag = false;
      host.mark();
      host.raiseCall(n, L"no connection");

      bool answer = true;
      EXPECT_NO_THROW(answer = ExcuteIntersect(entities, all, result, text, flag));

      if (host.failedCall().empty()) {
        EXPECT_TRUE(answer);
        EXPECT_GT(n, 8);
        break;
      }
      EXPECT_FALSE(answer) << host.failedCall();
      EXPECT_EQ(text.str(), L"no connection") << host.failedCall();
      EXPECT_EQ(names(result), Lines{"Old"}) << host.failedCall();
      EXPECT_EQ(host.balance(), "balanced") << host.failedCall();
    }
  }
}

// --- memory ------------------------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, ExhaustedMemoryFailsAndLeavesTheResultAlone) {
  const TqVector<PROPINFO> before = rows({Row(L"Old").value(i4(1))});
  for (const bool alone : {true, false}) {
    SCOPED_TRACE(alone);
    const PROPINFO dynamicRow = Row(L"D").of(first).value(i4(1)).dynamic(dynamicA.unknown());
    TqVector<TqVector<PROPINFO>> prepared = lists({rows({point(first), length(first), dynamicRow})});
    if (!alone) prepared.push_back(rows({length(second), dynamicRow, point(second)}));
    TqVector<VeltPropData*> entities;
    CStdStr<wchar_t> text(L"as before");
    bool flag = false;
    TqVector<TqVector<PROPINFO>> all;
    TqVector<PROPINFO> result;
    bool answer = true;

    refuseMemory(
        [&] {
          all = prepared;
          result = before;
          answer = ExcuteIntersect(entities, all, result, text, flag);
        },
        [&] {
          EXPECT_FALSE(answer);
          EXPECT_EQ(names(result), Lines{"Old"});
          EXPECT_EQ(text.str(), L"as before");
        });

    EXPECT_TRUE(answer);
    EXPECT_EQ(names(result), (Lines{"Start", "Start", "Length", "D"}));
  }
}

// --- which rows are the same -------------------------------------------------------------------------------------

TEST(ExcuteIntersect, KeepsWhatAllEntitiesHaveInTheFirstOnesOrder) {
  const Merged merged = mergeRows({
      rows({Row(L"C").value(i4(1)), Row(L"A").value(i4(2)), Row(L"B").value(i4(3)), Row(L"D").value(i4(4))}),
      rows({Row(L"B").value(i4(3)), Row(L"X").value(i4(9)), Row(L"C").value(i4(1)), Row(L"D").value(i4(4))}),
      rows({Row(L"D").value(i4(4)), Row(L"C").value(i4(1)), Row(L"A").value(i4(2)), Row(L"B").value(i4(3))}),
  });

  EXPECT_TRUE(merged.answer);
  EXPECT_EQ(shown(merged.result), (Lines{"C", "B", "D"}));
}

TEST(ExcuteIntersect, DropsARowThatDiffersInTheKey) {
  const Row base = Row(L"A").value(i4(1));
  const PROPINFO others[] = {
      Row(base).inCategory(2, L"General"),  // another category
      Row(base).inCategory(1, L"general"),  // names are compared by case
      Row(L"a").label(L"A").value(i4(1)),
      Row(base).editable(false),
      Row(base).label(L"a"),  // the wider key
      Row(base).withChoices(),
      Row(base).element(0),
      Row(base).value(i2(1)),  // a value of another type
  };
  for (const PROPINFO& other : others) {
    SCOPED_TRACE(&other - others);
    const Merged merged = mergeRows({rows({base}), rows({other})});
    EXPECT_TRUE(merged.answer);
    EXPECT_EQ(shown(merged.result), Lines{});
    EXPECT_EQ(merged.errorText, L"as before");
  }
  EXPECT_EQ(shown(mergeRows({rows({base}), rows({base})}).result), Lines{"A"});
}

TEST(ExcuteIntersect, DoesNotCompareWhatIsNotPartOfTheKey) {
  PROPINFO other = Row(L"A")
                       .dispId(99)
                       .customType(PropertyKind::color)
                       .weight(4)
                       .ofEntity(5)
                       .grouping(1)
                       .value(i4(1))
                       .varies();
  other.description = L"another";
  other.isWritable = false;
  other.clsid = CLSID_VeltArc;
  other.elementCookie = 7;

  EXPECT_EQ(shown(mergeRows({rows({Row(L"A").value(i4(1))}), rows({other})}).result), Lines{"A"});
}

TEST(ExcuteIntersect, SearchesOnAfterARowWithAnotherLabel) {
  const Merged merged = mergeRows({
      rows({Row(L"A").label(L"two").value(i4(2))}),
      rows({Row(L"A").label(L"one").value(i4(1)), Row(L"A").label(L"two").value(i4(2))}),
  });

  EXPECT_EQ(shown(merged.result), Lines{"A"});
}

TEST(ExcuteIntersect, StopsAtTheFirstRowOfTheSameProperty) {
  // The second row would be equal, but the first one decides.
  const Merged varying = mergeRows({
      rows({Row(L"A").value(i4(2))}),
      rows({Row(L"A").value(i4(1)), Row(L"A").value(i4(2))}),
  });
  const Merged ofAnotherType = mergeRows({
      rows({Row(L"A").value(i4(2))}),
      rows({Row(L"A").value(i2(2)), Row(L"A").value(i4(2))}),
  });

  EXPECT_EQ(shown(varying.result), Lines{"A varies"});
  EXPECT_EQ(shown(ofAnotherType.result), Lines{});
}

TEST(ExcuteIntersect, RowsWithOneKeyInTheFirstListAreMergedEachForItself) {
  const Merged merged = mergeRows({
      rows({Row(L"A").value(i4(1)), Row(L"A").value(i4(2)), Row(L"A").value(i4(1))}),
      rows({Row(L"A").value(i4(1)), Row(L"A").value(i4(2))}),
  });

  EXPECT_EQ(shown(merged.result), (Lines{"A", "A varies", "A"}));
  EXPECT_EQ(numbers(merged.result), (std::vector<LONG>{1, 2, 1}));
}

// --- values ------------------------------------------------------------------------------------------------------

TEST(ExcuteIntersect, AValueThatDiffersMarksTheRowAndStaysTheFirstEntitys) {
  const Merged merged = mergeRows({rows({Row(L"A").value(i4(1))}), rows({Row(L"A").value(i4(2))})});

  EXPECT_EQ(shown(merged.result), Lines{"A varies"});
  EXPECT_EQ(numbers(merged.result), std::vector<LONG>{1});
}

TEST(ExcuteIntersect, ARowThatVariesMustStillExistEverywhere) {
  const PROPINFO one = Row(L"A").value(i4(1));
  const PROPINFO two = Row(L"A").value(i4(2));

  EXPECT_EQ(shown(mergeRows({rows({one}), rows({two}), rows({Row(L"B").value(i4(1))})}).result), Lines{});
  EXPECT_EQ(shown(mergeRows({rows({one}), rows({two}), rows({two})}).result), Lines{"A varies"});
  EXPECT_EQ(shown(mergeRows({rows({one}), rows({one}), rows({two})}).result), Lines{"A varies"});
}

TEST_F(ExcuteIntersectOnToys, Quirk_varying_rows_need_only_their_key) {
  second[2].holds(i4(8));

  TqVector<TqVector<PROPINFO>> all =
      lists({rows({length(first)}), rows({length(second)}),
             rows({length(third).label(L"another label").withChoices(), length(third)})});
  const Merged merged = merge(all);

  EXPECT_EQ(shown(merged.result), Lines{"Length varies"});
  EXPECT_EQ(callsOn(third), 0) << "a later entity's value is not read";
  EXPECT_FALSE(rowAt(listAt(all, 2), 0).hasValue);
}

TEST_F(ExcuteIntersectOnToys, Quirk_type_mismatch_ends_search) {
  const PROPINFO one = Row(L"A").value(i4(1));
  const PROPINFO ofAnotherType = Row(L"A").value(r8(1));

  EXPECT_EQ(shown(mergeRows({rows({one}), rows({ofAnotherType, one})}).result), Lines{});
  EXPECT_EQ(shown(mergeRows({rows({one}), rows({one, ofAnotherType})}).result), Lines{"A"});
}

TEST_F(ExcuteIntersectOnToys, AValueOfAnotherTypeInALaterEntityIsNotLookedAtOnceTheRowVaries) {
  const Merged merged = mergeRows(
      {rows({Row(L"A").value(i4(1))}), rows({Row(L"A").value(i4(2))}), rows({Row(L"A").value(r8(1))})});

  EXPECT_EQ(shown(merged.result), Lines{"A varies"});
}

// --- colors -----------------------------------------------------------------------------------------------------

// Entities with a color object each, on layers of their own.
class ExcuteIntersectOnColors : public ExcuteIntersectOnToys {
 protected:
  ExcuteIntersectOnColors() {
    ToyColor* color = colors;
    for (ToyObject* const object : {&first, &second, &third})
      object->property(1281, L"Color").returns(VT_DISPATCH).holds(holding(*color++));
    firstInDatabase.layer = red.objectId();
    secondInDatabase.layer = thirdInDatabase.layer = green.objectId();
  }

  static ToyValue holding(const ToyColor& color) { return toys::object(color.dispatch()); }
  static TqVector<PROPINFO> listOf(const ToyObject& object, long id) {
    return rows({Row(L"Color").of(object, id).dispId(1281).declared(VT_DISPATCH)});
  }
  // What is shown of the colors of two or three entities; the values are given back.
  Lines merged(bool withThird = false) {
    TqVector<TqVector<PROPINFO>> all = lists({listOf(first, 21), listOf(second, 22)});
    if (withThird) all.push_back(listOf(third, 23));
    host.mark();
    Merged made = merge(all);
    EXPECT_TRUE(made.answer);
    EXPECT_EQ(made.errorText, L"as before");
    const Lines lines = shown(made.result);
    for (PROPINFO& row : made.result) {
      EXPECT_EQ(print(row.value), "VT_DISPATCH");
      EXPECT_EQ(row.value.pdispVal, colors[0].dispatch()) << "the first entity's";
      VariantClear(&row.value);
    }
    freePropInfoVariantValue(all);
    EXPECT_EQ(host.balance(), "balanced");
    for (const auto& [id, object] : host.database)
      EXPECT_EQ(object->opened, 0) << object->name();
    return lines;
  }
  void paint(std::initializer_list<std::uint32_t> values) {
    ToyColor* color = colors;
    for (const std::uint32_t value : values)
      (color++)->value = value;
  }

  ToyLayer red{host, "red", 11, ToyColor::indexed(1)};
  ToyLayer green{host, "green", 12, ToyColor::indexed(3)};
  ToyEntity firstInDatabase{host, "firstInDatabase", 21};
  ToyEntity secondInDatabase{host, "secondInDatabase", 22};
  ToyEntity thirdInDatabase{host, "thirdInDatabase", 23};
  ToyColor colors[3] = {{host, "color0", 0}, {host, "color1", 0}, {host, "color2", 0}};
};

TEST_F(ExcuteIntersectOnColors, ColorObjectsThatDifferVaryAndTheFirstEntitysStays) {
  paint({ToyColor::indexed(1), ToyColor::indexed(3)});

  EXPECT_EQ(merged(), Lines{"Color varies"});
}

TEST_F(ExcuteIntersectOnColors, TwoObjectsOfOneColorDoNotVaryWhateverTheLayers) {
  paint({ToyColor::indexed(5), ToyColor::indexed(5)});

  EXPECT_EQ(merged(), Lines{"Color"});
}

TEST_F(ExcuteIntersectOnColors, AColorByLayerVariesFromTheSameColorSetOutright) {
  paint({ToyColor::byLayer, ToyColor::indexed(1)});

  EXPECT_EQ(merged(), Lines{"Color varies"});
}

TEST_F(ExcuteIntersectOnColors, ColorsByLayerVaryWhenTheEntitiesLayersDiffer) {
  paint({ToyColor::byLayer, ToyColor::byLayer});
  EXPECT_EQ(merged(), Lines{"Color varies"});

  secondInDatabase.layer = red.objectId();
  EXPECT_EQ(merged(), Lines{"Color"});
}

TEST_F(ExcuteIntersectOnColors, AThirdEntitysLayerIsComparedWithTheFirstOnes) {
  paint({ToyColor::byLayer, ToyColor::byLayer, ToyColor::byLayer});
  secondInDatabase.layer = red.objectId();
  EXPECT_EQ(merged(true), Lines{"Color varies"});

  thirdInDatabase.layer = red.objectId();
  EXPECT_EQ(merged(true), Lines{"Color"});
}

// --- later entities --------------------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, LaterEntitiesAreNotLookedAtOnceOneLacksTheRow) {
  TqVector<TqVector<PROPINFO>> all =
      lists({rows({length(first)}), rows({point(second)}), rows({length(third)})});

  EXPECT_EQ(shown(merge(all).result), Lines{});

  EXPECT_EQ(callsOn(third), 0);
  EXPECT_FALSE(rowAt(listAt(all, 2), 0).hasValue);
}

TEST_F(ExcuteIntersectOnToys, ARowFoundInOneEntityIsNotTakenAsFoundInTheNext) {
  EXPECT_EQ(shown(mergeRows({rows({length(first)}), rows({length(second)}), rows({})}).result), Lines{});
}

TEST_F(ExcuteIntersectOnToys, ReadsTheFirstEntityWholeAndThenEachLaterRowWhenItIsMet) {
  first.property(3, L"Width").holds(i4(1));
  second.property(3, L"Width").holds(i4(1));
  const auto width = [](const ToyObject& object) {
    return Row(L"Width").of(object).dispId(3).declared(VT_I4);
  };

  EXPECT_EQ(
      shown(mergeRows({rows({length(first), width(first)}), rows({width(second), length(second)})}).result),
      (Lines{"Length", "Width"}));

  std::vector<std::string> order;
  for (const std::string& line : host.log.only({"Invoke"}))
    order.push_back(line.substr(0, line.find(',')) + line.substr(line.rfind(' ')));
  EXPECT_EQ(order, (Lines{"Invoke(2 first", "Invoke(3 first", "Invoke(2 second", "Invoke(3 second"}));
}

TEST_F(ExcuteIntersectOnToys, EachRowIsReadOnceHoweverOftenItIsMet) {
  const Row reader = length(second).label(L"other");

  mergeRows({rows({length(first), length(first), length(first)}), rows({reader, length(second)})});

  EXPECT_EQ(host.log.only({"Invoke"}).size(), 3u + 2u);
  EXPECT_EQ(host.log.count("QueryInterface(IVkPiPropertyDisplay)"), 3 + 2);
}

TEST_F(ExcuteIntersectOnToys, RowsThatNobodyLooksForStayUnread) {
  TqVector<TqVector<PROPINFO>> all = lists({rows({length(first)}), rows({point(second), length(second)})});

  merge(all);

  EXPECT_FALSE(rowAt(listAt(all, 1), 0).hasValue);
  EXPECT_TRUE(rowAt(listAt(all, 1), 1).hasValue);
}

TEST_F(ExcuteIntersectOnToys, ValuesReadInLaterListsStayThereForTheCaller) {
  second[2].holds(i4(8)).weighs(4);
  TqVector<TqVector<PROPINFO>> all = lists({rows({length(first)}), rows({length(second)})});

  merge(all);

  const PROPINFO& read = rowAt(listAt(all, 1), 0);
  EXPECT_TRUE(read.hasValue);
  EXPECT_EQ(print(read.value), "VT_I4 8");
  EXPECT_EQ(read.weight, 4);
  EXPECT_EQ(read.customType, PropertyKind::number);
  EXPECT_FALSE(read.isVaries);
}

TEST_F(ExcuteIntersectOnToys, AWriteToOneListLeavesListsThatSharedItsBlockAlone) {
  const TqVector<PROPINFO> shared = rows({length(second), point(second)});
  TqVector<TqVector<PROPINFO>> all = lists({rows({length(first), point(first)}), shared, shared});
  const TqVector<TqVector<PROPINFO>> kept = all;

  merge(all);

  EXPECT_EQ(names(shared), (Lines{"Length", "Start"}));
  EXPECT_FALSE(rowAt(shared, 0).hasValue);
  for (std::uint32_t k = 0; k < 3; ++k) {
    EXPECT_EQ(names(listAt(kept, k)), (Lines{"Length", "Start"}));
    EXPECT_FALSE(rowAt(listAt(kept, k), 0).hasValue);
  }
  for (std::uint32_t k = 1; k < 3; ++k)
    EXPECT_EQ(names(listAt(all, k)), (Lines{"Length", "", "Start", "Start"}));
}

// --- rows that never survive ---------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, Quirk_varying_rows_dropped_on_arrival) {
  TqVector<TqVector<PROPINFO>> all =
      lists({rows({Row(L"Length").of(first).dispId(2).value(i4(7)).varies(), Row(L"A").value(i4(1))}),
             rows({length(second), Row(L"A").value(i4(1))})});

  EXPECT_EQ(shown(merge(all).result), Lines{"A"});

  EXPECT_EQ(host.log.lines(), Lines{}) << "not even searched for";
  EXPECT_FALSE(rowAt(listAt(all, 1), 0).hasValue);
}

TEST_F(ExcuteIntersectOnToys, Quirk_grouped_elements_single_selection_only) {
  for (ToyObject* const object : {&first, &second})
    (*object)[1].grouped(2, 4);
  TqVector<TqVector<PROPINFO>> all =
      lists({rows({point(first), length(first)}), rows({point(second), length(second)})});

  const Merged merged = merge(all);

  EXPECT_EQ(shown(merged.result), Lines{"Length"});
  EXPECT_EQ(host.log.count("GetElementStrings(1) on second"), 0) << "no search for what is grouped";
  EXPECT_EQ(names(listAt(all, 1)), (Lines{"Start", "Length"}));
}

TEST_F(ExcuteIntersectOnToys, AGroupedRowIsDroppedEvenWhenItIsNotAnElement) {
  const PROPINFO grouped = Row(L"A").value(i4(1)).grouping(-1);

  EXPECT_EQ(shown(mergeRows({rows({grouped}), rows({grouped})}).result), Lines{});
}

TEST_F(ExcuteIntersectOnToys, OnlyTheFirstEntitysGroupingCounts) {
  EXPECT_EQ(
      shown(mergeRows({rows({Row(L"A").value(i4(1))}), rows({Row(L"A").value(i4(1)).grouping(1)})}).result),
      Lines{"A"});
}

// --- expanded properties -------------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, ElementsAreMergedOneByOne) {
  second[1].elements[1].value = ToyValue(i4(21));

  const Merged merged = mergeRows({rows({point(first)}), rows({point(second)})});

  EXPECT_EQ(shown(merged.result), (Lines{"Start", "Start varies"}));
  EXPECT_EQ(numbers(merged.result), (std::vector<LONG>{10, 20}));
  EXPECT_EQ(narrow(rowAt(merged.result, 0).displayName.c_str()), "X");
  EXPECT_EQ(narrow(rowAt(merged.result, 1).displayName.c_str()), "Y");
}

TEST_F(ExcuteIntersectOnToys, APropertyThatBrokeUpLosesItsNameAndItsElementsStandAtTheEnd) {
  TqVector<TqVector<PROPINFO>> all = lists({rows({point(first)}), rows({point(second), length(second)})});

  merge(all);

  const TqVector<PROPINFO>& list = listAt(all, 1);
  EXPECT_EQ(names(list), (Lines{"", "Length", "Start", "Start"}));
  EXPECT_TRUE(rowAt(list, 0).hasValue);
  EXPECT_FALSE(rowAt(list, 1).hasValue);
  EXPECT_EQ(rowAt(list, 2).elementCookie, 1u);
  EXPECT_EQ(rowAt(list, 3).elementCookie, 2u);
  EXPECT_TRUE(rowAt(list, 2).isElement && rowAt(list, 2).hasValue);
}

TEST_F(ExcuteIntersectOnToys, APropertyIsBrokenUpOnceForAllItsElements) {
  mergeRows({rows({point(first)}), rows({point(second)})});

  EXPECT_EQ(host.log.count("GetElementValue(1, cookie 1) on second"), 1);
  EXPECT_EQ(host.log.count("GetElementValue(1, cookie 2) on second"), 1);
  // The counts are asked for anew at each comparison of elements: X meets X, Y meets Y.
  EXPECT_EQ(host.log.count("GetIDsOfNames(Start, locale 0x800) on second"), 2);
  EXPECT_EQ(host.log.count("GetElementStrings(1) on first"), 1 + 2);
}

TEST_F(ExcuteIntersectOnToys, ExpandedPropertiesOfDifferentElementCountsAreDropped) {
  second[1].element(3, L"Z", i4(30));

  const Merged merged = mergeRows({rows({point(first)}), rows({point(second)})});

  EXPECT_TRUE(merged.answer);
  EXPECT_EQ(shown(merged.result), Lines{});
  EXPECT_EQ(merged.errorText, L"as before");
}

TEST_F(ExcuteIntersectOnToys, AnElementMeetsOnlyElements) {
  // The second entity cannot expand its point: one value stands against two elements.
  second.withhold(IID_IOPMPropertyExpander);
  second[1].holds(i4(10));

  EXPECT_EQ(shown(mergeRows({rows({point(first)}), rows({point(second)})}).result), Lines{});
  EXPECT_EQ(shown(mergeRows({rows({point(second)}), rows({point(first)})}).result), Lines{});
}

TEST_F(ExcuteIntersectOnToys, APropertyThatExpandsIntoNothingEverywhereVaries) {
  first[1].elements.clear();
  second[1].elements.clear();

  // Neither has a value: two empty values differ.
  EXPECT_EQ(shown(mergeRows({rows({point(first)}), rows({point(second)})}).result), Lines{"Start varies"});
}

TEST_F(ExcuteIntersectOnToys, AVaryingElementMeetsThePropertyItselfInALaterEntity) {
  second[1].elements[0].value = ToyValue(i4(11));
  TqVector<TqVector<PROPINFO>> all =
      lists({rows({point(first)}), rows({point(second)}), rows({point(third)})});

  const Merged merged = merge(all);

  EXPECT_EQ(shown(merged.result), (Lines{"Start varies", "Start"}));
  // X varied already and found the unbroken property by its key; only Y had the third entity's broken up.
  EXPECT_EQ(host.log.count("GetElementStrings(1) on third"), 1 + 1);
  EXPECT_EQ(names(listAt(all, 2)), (Lines{"", "Start", "Start"}));
}

TEST_F(ExcuteIntersectOnToys, AFailedElementQueryLeavesItsMessageAndDropsTheElement) {
  host.on("GetIDsOfNames(Start, locale 0x800) on second").fail();

  const Merged merged =
      mergeRows({rows({length(first), point(first)}), rows({point(second), length(second)})});

  EXPECT_TRUE(merged.answer);
  EXPECT_EQ(shown(merged.result), Lines{"Length"});
  EXPECT_EQ(merged.errorText, L"no property Start");
}

TEST_F(ExcuteIntersectOnToys, AnElementWhoseQueryFailedIsMetAgainAfterTheRowThatBrokeUp) {
  // The first comparison of X fails for good; the scan then reaches the element at the end of the list.
  host.on("GetIDsOfNames(Start, locale 0x800) on first").nth(1).fail();

  const Merged merged = mergeRows({rows({point(first)}), rows({point(second)})});

  EXPECT_EQ(shown(merged.result), (Lines{"Start", "Start"}));
  EXPECT_EQ(merged.errorText, L"no property Start") << "the message stays although the element was found";
  EXPECT_EQ(host.log.count("GetIDsOfNames(Start, locale 0x800) on first"), 3);
}

TEST_F(ExcuteIntersectOnToys, TheLastMessageStays) {
  host.on("QueryInterface(IOPMPropertyExpander) on second").nth(2).fail();
  host.on("GetIDsOfNames(Start, locale 0x800) on first").nth(3).fail();
  host.on("GetIDsOfNames(Start, locale 0x800) on first").nth(4).fail();

  const Merged merged = mergeRows({rows({point(first)}), rows({point(second)})});

  EXPECT_EQ(shown(merged.result), Lines{"Start"});
  EXPECT_EQ(merged.errorText, L"no property Start");
}

TEST_F(ExcuteIntersectOnToys, ElementsReadBeforeALaterEntitysExpansionFailsAreMerged) {
  host.on("GetElementValue(1, cookie 2) on second").fail();
  second[1].holds(i4(5));
  TqVector<TqVector<PROPINFO>> all = lists({rows({point(first)}), rows({point(second)})});

  const Merged merged = merge(all);

  // Both objects still tell of two elements, so X agrees; Y is missing.
  EXPECT_EQ(shown(merged.result), Lines{"Start"});
  EXPECT_EQ(names(listAt(all, 1)), (Lines{"", "Start"}));
}

TEST_F(ExcuteIntersectOnToys, ARowWithoutANameMeetsRowsThatWereBrokenUp) {
  first.property(3, L"").holds(i4(1));
  const PROPINFO nameless = Row(L"").of(first).dispId(3).label(L"Start").value(i4(1));
  TqVector<TqVector<PROPINFO>> all = lists({rows({point(first), nameless}), rows({point(second)})});

  const Merged merged = merge(all);

  // The broken-up row took the last element's label and is marked an element, so it is met but not the same.
  EXPECT_EQ(shown(merged.result), (Lines{"Start", "Start"}));
  const PROPINFO varying = Row(L"").label(L"any").value(i4(1)).varies();
  EXPECT_EQ(shown(mergeRows({rows({nameless}), rows({varying})}).result), Lines{});
}

TEST_F(ExcuteIntersectOnToys, ARowWithoutANameThatVariesIsFoundInARowThatWasBrokenUp) {
  const PROPINFO one = Row(L"").of(first).label(L"l").value(i4(1));
  const PROPINFO two = Row(L"").of(second).label(L"l").value(i4(2));

  const Merged merged =
      mergeRows({rows({point(first), one}), rows({point(second), two}), rows({point(third)})});

  EXPECT_EQ(shown(merged.result), (Lines{"Start", "Start", " varies"}));
}

// --- dynamic rows ----------------------------------------------------------------------------------------------------

TEST_F(ExcuteIntersectOnToys, Quirk_pairs_of_all_visited_rows) {
  const auto row = [](const wchar_t* name, const ToyObject& object, const ToyDynamicProperty& property) {
    return Row(name).of(object).value(i4(1)).dynamic(property.unknown());
  };
  const Merged merged = mergeRows({
      rows({row(L"B", first, dynamicA)}),
      rows({row(L"A", second, dynamicC), row(L"B", second, dynamicB), row(L"C", second, dynamicA)}),
  });

  // Its own pair, the row passed over, and the match; not the row after the match.
  ASSERT_EQ(shown(merged.result), Lines{"B"});
  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{{first.dispatch(), dynamicA.unknown()},
                                                     {second.dispatch(), dynamicC.unknown()},
                                                     {second.dispatch(), dynamicB.unknown()}}));
}

TEST_F(ExcuteIntersectOnToys, PairsAreGatheredOverAllEntitiesAndReplaceThoseThatTheRowHad) {
  const auto row = [](const ToyObject& object, const ToyDynamicProperty& property) {
    return Row(L"D")
        .of(object)
        .value(i4(1))
        .source(property.unknown(), property.unknown())
        .dynamic(property.unknown());
  };
  TqVector<TqVector<PROPINFO>> all = lists({rows({row(first, dynamicA)}), rows({row(second, dynamicB)}),
                                            rows({length(third), row(third, dynamicC)})});

  const Merged merged = merge(all);

  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{{first.dispatch(), dynamicA.unknown()},
                                                     {second.dispatch(), dynamicB.unknown()},
                                                     {third.dispatch(), nullptr},
                                                     {third.dispatch(), dynamicC.unknown()}}));
  EXPECT_EQ(pairsOf(rowAt(listAt(all, 1), 0)), (Pairs{{dynamicB.unknown(), dynamicB.unknown()}}));
}

TEST_F(ExcuteIntersectOnToys, AVaryingDynamicRowStillGathersThePairsUpToItsMatch) {
  const auto row = [](const ToyObject& object, const ToyDynamicProperty& property, LONG number) {
    return Row(L"D").of(object).value(i4(number)).dynamic(property.unknown());
  };
  const Merged merged = mergeRows({rows({row(first, dynamicA, 1)}), rows({row(second, dynamicB, 2)}),
                                   rows({length(third), row(third, dynamicC, 3), length(third)})});

  EXPECT_EQ(shown(merged.result), Lines{"D varies"});
  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{{first.dispatch(), dynamicA.unknown()},
                                                     {second.dispatch(), dynamicB.unknown()},
                                                     {third.dispatch(), nullptr},
                                                     {third.dispatch(), dynamicC.unknown()}}));
}

TEST_F(ExcuteIntersectOnToys, RowsThatAreNotDynamicKeepTheirPairs) {
  const PROPINFO row = Row(L"A").of(first).value(i4(1)).source(first.unknown(), dynamicA.unknown());

  const Merged merged = mergeRows({rows({row}), rows({Row(L"A").of(second).value(i4(1))})});

  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{{first.unknown(), dynamicA.unknown()}}));
}

TEST_F(ExcuteIntersectOnToys, ThePairsOfAppendedElementsAreGatheredWhenTheScanReachesThem) {
  for (ToyObject* const object : {&first, &second})
    object->property(-23, L"D").element(1, L"X", i4(1)).element(2, L"Y", i4(2));
  const auto row = [](const ToyObject& object, const ToyDynamicProperty& property) {
    return Row(L"D").of(object).declared(VT_VARIANT).dynamic(property.unknown());
  };

  const Merged merged = mergeRows({rows({row(first, dynamicA)}), rows({row(second, dynamicB)})});

  const std::pair<const IUnknown*, const IUnknown*> own{first.dispatch(), dynamicA.unknown()};
  const std::pair<const IUnknown*, const IUnknown*> met{second.dispatch(), dynamicB.unknown()};
  ASSERT_EQ(merged.result.length(), 2u);
  // X was found among the elements of the row visited; Y passed the broken-up row and the element X.
  EXPECT_EQ(pairsOf(rowAt(merged.result, 0)), (Pairs{own, met}));
  EXPECT_EQ(pairsOf(rowAt(merged.result, 1)), (Pairs{own, met, met, met}));
}

// Callers may see how many slots a list has.
TEST(ExcuteIntersect, TheResultHasAsManySlotsAsAfterAppendingOneByOne) {
  for (const bool alone : {true, false}) {
    for (const int count : {0, 1, 8, 9, 17}) {
      TqVector<PROPINFO> list, appended;
      for (int i = 0; i < count; ++i) {
        list.append(Row((L"P" + std::to_wstring(i)).c_str()).value(i4(i)));
        appended.append(Row(L"P"));
      }
      TqVector<TqVector<PROPINFO>> all = lists({list});
      if (!alone) all.push_back(list);

      const Merged merged = merge(all);

      EXPECT_EQ(merged.result.length(), static_cast<std::uint32_t>(count));
      EXPECT_EQ(merged.result.physicalLength(), appended.physicalLength())
          << count << (alone ? " alone" : "");
    }
  }
}

// --- growth ------------------------------------------------------------------------------------------------------------

// Host calls of a merge over `entities` entities of `properties` rows each, every third one a point.
std::size_t callsOfMerge(int entities, int properties) {
  ToyHost host;
  std::list<ToyObject> objects;
  TqVector<TqVector<PROPINFO>> all;
  for (int e = 0; e < entities; ++e) {
    ToyObject& object = objects.emplace_back(host, say("e", e));
    TqVector<PROPINFO> list;
    for (int p = 0; p < properties; ++p) {
      const std::wstring name = L"P" + std::to_wstring(p);
      ToyProperty& property = object.property(p + 1, name);
      Row row = Row(name.c_str()).of(object).dispId(p + 1).declared(VT_I4);
      if (p % 3 == 0) {
        property.element(1, L"X", i4(1)).element(2, L"Y", i4(2)).element(3, L"Z", i4(3));
        row.declared(VT_VARIANT);
      } else {
        property.holds(i4(p));
      }
      list.push_back(row);
    }
    all.push_back(list);
  }
  host.log.clear();
  EXPECT_EQ(merge(all).result.length(), static_cast<std::uint32_t>(properties + (properties + 2) / 3 * 2));
  return host.log.all().size();
}

TEST(ExcuteIntersect, HostCallsGrowLinearlyWithTheEntities) {
  const std::size_t perEntity = callsOfMerge(3, 9) - callsOfMerge(2, 9);
  EXPECT_GT(perEntity, 0u);
  for (const int entities : {4, 8, 16, 32}) {
    EXPECT_EQ(callsOfMerge(entities, 9),
              callsOfMerge(2, 9) + perEntity * static_cast<std::size_t>(entities - 2));
  }
}

TEST(ExcuteIntersect, HostCallsGrowLinearlyWithTheProperties) {
  const std::size_t perThree = callsOfMerge(3, 6) - callsOfMerge(3, 3);
  EXPECT_GT(perThree, 0u);
  for (const int threes : {3, 10, 40})
    EXPECT_EQ(callsOfMerge(3, threes * 3), perThree * static_cast<std::size_t>(threes));
}

// --- against the reference -------------------------------------------------------------------------------------------

struct NestedOutcome {
  bool answer;
  Lines result;
  std::vector<Lines> lists;
  std::string errorText;
  Lines calls;
  std::string balance;
};

NestedOutcome outcomeOfTheLayer(const Scenario& scenario) {
  MergeWorld world(scenario);
  world.host.mark();
  TqVector<VeltPropData*> entities;
  TqVector<PROPINFO> result = rows({Row(L"Old").value(i4(1))});
  CStdStr<wchar_t> errorText(L"as before");
  bool flag = false;
  const bool answer = ExcuteIntersect(entities, world.lists, result, errorText, flag);
  return {answer,
          world.printList(std::as_const(result)),
          world.printLists(std::as_const(world.lists)),
          narrow(errorText.str()),
          world.host.log.all(),
          world.host.balance()};
}

NestedOutcome outcomeOfTheReference(const Scenario& scenario) {
  MergeWorld world(scenario);
  world.host.mark();
  std::vector<PlainList> all = world.plainLists();
  PlainList result = plain(rows({Row(L"Old").value(i4(1))}));
  CStdStr<wchar_t> errorText(L"as before");
  const bool answer = mergeReference(all, result, errorText);
  return {answer,
          world.printList(result),
          world.printLists(all),
          narrow(errorText.str()),
          world.host.log.all(),
          world.host.balance()};
}

void compareWithTheReference(int mostRows, int scenarios) {
  Reached reached;
  const auto property = [&] {
    const Scenario scenario = *rc::gen::resize(rc::kNominalSize, someScenario(mostRows));
    const NestedOutcome expected = outcomeOfTheReference(scenario);
    const NestedOutcome actual = outcomeOfTheLayer(scenario);
    RC_ASSERT(actual.answer == expected.answer);
    RC_ASSERT(actual.calls == expected.calls);
    RC_ASSERT(actual.result == expected.result);
    RC_ASSERT(actual.lists == expected.lists);
    RC_ASSERT(actual.errorText == expected.errorText);
    RC_ASSERT(actual.balance == expected.balance);
    if (scenario.entities.size() < 2) return;
    reached.count(expected);
  };
  holdsForScenarios(property, scenarios, reached);
}

TEST(ExcuteIntersect, DoesOnSmallSelectionsWhatTheNestedScansWouldDo) {
  compareWithTheReference(5, 1500);
}

TEST(ExcuteIntersect, DoesOnLongListsWhatTheNestedScansWouldDo) {
  compareWithTheReference(20, 250);
}

}  // namespace
}  // namespace velt::tests
