#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/CrashReports.h"
#include "host/com/Cancellation.h"
#include "host/com/ComError.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToySelection.h"
#include "tests/support/ToySourceRegistry.h"

namespace velt::toys {
namespace {

// One reference to a dynamic block: automation object and database object.
struct Entity {
  Entity(ToyHost& host, int number)
      : object(host, say("e", number)), reference(host, say("r", number), 100 + number) {
    object.objectId = reference.objectId();
    reference.original.setFromOldId(500);
    // What every object of the class publishes.
    object.property(5, L"Start")
        .returns(VT_VARIANT)
        .element(1, L"X", r8(1.5))
        .element(2, L"Y", r8(2.5))
        .inCategory(3, L"Geometry")
        .labelled(L"Start point");
    object.property(6, L"Style").holds(i4(number)).choice(L"solid", i4(0)).choice(L"dashed", i4(1)).weighs(4);
    object.readOnly(7, L"Length").returns(VT_R8).holds(r8(9)).inCategory(-2);
  }

  ToyObject object;
  ToyBlockReference reference;
};

class PropertyQuery : public LayerTest {
 protected:
  ~PropertyQuery() override { clear(); }

  Entity& select(const CLSID& clsid = toyClass(1)) {
    const int number = static_cast<int>(entities.size());
    Entity& made = *entities.emplace_back(std::make_unique<Entity>(host, number));
    selection.add(made.object, 100 + number, clsid);
    return made;
  }
  // Dynamic rows: one property, of every entity.
  void offerDynamic() {
    turned.displayName = L"Turned";
    turned.value = ToyValue(i4(90));
    turned.items = {{L"quarter", ToyValue(i4(90))}, {L"half", ToyValue(i4(180))}};
    source.properties = {turned.unknown()};
    registry.add(L"Blocks", &source);
  }

  // The values of the rows are the caller's.
  void clear() {
    for (PROPINFO& row : result)
      VariantClear(&row.value);
    result.clear();
  }
  bool query() {
    clear();
    bool mergeFlag = true, typeFlag = false;
    const bool answer = GetPropertiesInfo(selection.entries, result, errorText, mergeFlag, typeFlag);
    EXPECT_TRUE(mergeFlag);
    EXPECT_FALSE(typeFlag);
    return answer;
  }
  std::string nameOfToy(const IUnknown* pointer) const {
    if (pointer == nullptr) return "null";
    for (const auto& entity : entities) {
      if (pointer == entity->object.dispatch()) return entity->object.name();
    }
    return pointer == turned.as<IUnknown>(IID_IDynamicProperty2) ? turned.name() : "stranger";
  }
  // What the rows tell the palette.
  Lines answered() const {
    Lines made;
    for (const PROPINFO& row : result) {
      std::string choices, sources;
      for (const CStdStr<wchar_t>& choice : std::as_const(row.choiceNames))
        choices += " " + narrow(choice.c_str());
      for (const int value : std::as_const(row.choiceValues))
        choices += say(" ", value);
      for (const DispatchDynPropSourceNode& pair : std::as_const(row.dynSources))
        sources += say(" (", nameOfToy(pair.pDispatch), ", ", nameOfToy(pair.pDynamicProperty), ")");
      made.push_back(say(
          narrow(row.name.c_str()), " \"", narrow(row.displayName.c_str()), "\" = ", print(row.value), " [",
          row.categoryId, " ", narrow(row.categoryName.c_str()), "]", row.isEditable ? "" : " read-only",
          row.isVaries ? " varies" : "", row.isElement ? say(" element ", row.elementCookie) : "",
          row.hasChoices ? " choices:" : "", choices, row.weight != 0 ? say(" weight ", row.weight) : "",
          " type ", row.customType, " of ", nameOfToy(row.pDispatch), " ", row.objectId.asOldId(),
          sources.empty() ? "" : " sources", sources));
    }
    return made;
  }
  std::string balanceAfterClear() {
    clear();
    for (const auto& [id, object] : host.database)
      EXPECT_EQ(object->opened, 0) << object->name();
    return host.balance();
  }

  ToySourceRegistry registry{host};
  ToyPropertySource source{host, "source"};
  ToyDynamicProperty turned{host, "turned"};
  std::vector<std::unique_ptr<Entity>> entities;
  ToySelection selection;
  TqVector<PROPINFO> result;
};

// --- the steps ---------------------------------------------------------------------------------------------------

TEST_F(PropertyQuery, ASingleEntityShowsAllItsRowsAndAfterThemTheDynamicOnes) {
  offerDynamic();
  select();
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(
      answered(),
      (Lines{"Start \"X\" = VT_R8 1.5 [3 Geometry] element 1 type 0 of e0 100",
             "Start \"Y\" = VT_R8 2.5 [3 Geometry] element 2 type 0 of e0 100",
             "Style \"Style\" = VT_I4 0 [1 General] choices: solid dashed 0 1 weight 4 type 511 of e0 100",
             "Length \"Length\" = VT_R8 9 [-2 PlxOPMRes.dll:1002] read-only type 528 of e0 100",
             "Turned \"Turned\" = VT_I4 90 [1 General] choices: quarter half 90 180 type 511 of e0 0 sources "
             "(e0, turned)"}));
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(balanceAfterClear(), "balanced");
}

TEST_F(PropertyQuery, SeveralEntitiesShowWhatTheyShare) {
  offerDynamic();
  select();
  select();
  select().object.dispIds.erase(L"Nothing");
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length", "Turned"}));
  const TqVector<PROPINFO>& rows = result;
  EXPECT_TRUE(rows[2].isVaries);
  EXPECT_FALSE(rows[0].isVaries || rows[1].isVaries || rows[3].isVaries || rows[4].isVaries);
  EXPECT_EQ(rows[4].dynSources.length(), 3u);
  EXPECT_EQ(balanceAfterClear(), "balanced");
}

TEST_F(PropertyQuery, AsksForSamenessOnceThenReadsEachEntityThenMergesThenFillsThenFrees) {
  offerDynamic();
  select().object[7].holds(text(L"long"));
  select().object[7].holds(text(L"long"));
  for (const auto& entity : entities)
    entity->object[7].returns(VT_BSTR);

  EXPECT_TRUE(query());

  Lines steps;
  for (const std::string& line :
       host.log.only({"vkdbGetEnhanced", "GetTypeInfo(", "Editable(6)", "GetProperties(", "Invoke(7",
                      "GetPredefinedValue", "GetPropValueData", "VariantClear(VT_BSTR"})) {
    steps.push_back(line.substr(0, line.find(", get"))
                    + (line.starts_with("Invoke") ? line.substr(line.rfind(' ')) : ""));
  }
  EXPECT_EQ(steps, (Lines{"vkdbGetEnhancedBlkOriginalBtrId(r0)", "vkdbGetEnhancedBlkOriginalBtrId(r1)",
                          "GetTypeInfo(0, locale 0x407) on e0", "Editable(6) on e0",
                          "GetProperties(e0) on source", "Editable(6) on e1", "GetProperties(e1) on source",
                          "Invoke(7 e0", "Invoke(7 e1", "GetPredefinedValue(6, cookie 0) on e0",
                          "GetPredefinedValue(6, cookie 1) on e0", "GetPropValueData(0) on turned",
                          "GetPropValueData(1) on turned", "VariantClear(VT_BSTR \"long\")"}));
}

TEST_F(PropertyQuery, WhatTheResultHeldBeforeIsGone) {
  select();
  result.push_back(Row(L"Old").value(i4(1)));
  bool flag = false;

  EXPECT_TRUE(GetPropertiesInfo(selection.entries, result, errorText, flag, flag));

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length"}));
}

TEST_F(PropertyQuery, TheFlagsAreNeitherReadNorWritten) {
  select();
  for (const bool merge : {true, false}) {
    for (const bool type : {true, false}) {
      bool mergeFlag = merge, typeFlag = type;
      EXPECT_TRUE(GetPropertiesInfo(selection.entries, result, errorText, mergeFlag, typeFlag));
      EXPECT_EQ(mergeFlag, merge);
      EXPECT_EQ(typeFlag, type);
      EXPECT_EQ(result.length(), 4u);
    }
  }
}

TEST_F(PropertyQuery, ASecondQueryServesTheClassFromTheCacheAndAnswersTheSame) {
  offerDynamic();
  select();
  select();
  EXPECT_TRUE(query());
  const Lines first = answered();
  host.log.clear();

  EXPECT_TRUE(query());

  EXPECT_EQ(answered(), first);
  EXPECT_EQ(host.log.count("GetTypeInfo("), 0);
}

TEST_F(PropertyQuery, EntitiesOfSeveralClassesShareWhatBothPublish) {
  select(toyClass(1));
  Entity& other = select(toyClass(2));
  other.object.property(8, L"Bulge").holds(i4(1));
  other.object.type.functions.erase(other.object.type.functions.begin(),
                                    other.object.type.functions.begin() + 2);
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Style", "Length"}));
  EXPECT_EQ(host.log.count("GetTypeInfo("), 2);
  EXPECT_EQ(balanceAfterClear(), "balanced");
}

TEST_F(PropertyQuery, WhenNothingIsSharedTheAnswerIsEmptyAndASuccess) {
  select(toyClass(1));
  Entity& other = select(toyClass(2));
  other.object.type.functions.clear();
  other.object.property(8, L"Bulge").holds(i4(1));
  other.reference.original = VkDbObjectId();

  EXPECT_TRUE(query());

  EXPECT_TRUE(result.isEmpty());
}

TEST_F(PropertyQuery, AMessageLeftBehindByTheHarvestStandsAfterASuccess) {
  select().object.withhold(IID_IPerPropertyBrowsing);

  EXPECT_TRUE(query());

  EXPECT_EQ(error(), message(1018));
}

// --- dynamic rows ------------------------------------------------------------------------------------------------

TEST_F(PropertyQuery, WithoutSamenessNoDynamicRowIsEvenRead) {
  offerDynamic();
  select();
  select().reference.original.setFromOldId(501);

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length"}));
  EXPECT_EQ(host.log.count("GetObjectPropertySourceNames"), 0);
  EXPECT_EQ(host.log.count("GetProperties("), 0);
}

TEST_F(PropertyQuery, ASingleEntityShowsDynamicRowsWhateverItIs) {
  offerDynamic();
  select().reference.original = VkDbObjectId();

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result).back(), "Turned");
  EXPECT_EQ(host.log.count("vkdbGetEnhanced"), 0);
}

TEST_F(PropertyQuery, AnEntityWithoutSourcesEmptiesTheDynamicRowsAlone) {
  offerDynamic();
  select();
  select();
  host.on("GetProperties(").nth(2).fail();

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length"}));
}

TEST_F(PropertyQuery, Quirk_sources_result_unexamined) {
  offerDynamic();
  select();
  select();
  host.on("QueryInterface(IVeltBaseObject) on e1").nth(2).fail();  // the first one is for the sameness

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length"}));
}

TEST_F(PropertyQuery, ASingleEntityWhoseSourcesCannotBeEnumeratedShowsItsStaticRows) {
  offerDynamic();
  select().object.withhold(IID_IVeltBaseObject);

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length"}));
}

TEST_F(PropertyQuery, AnEntityWithoutSourcesStillShowsItsStaticRows) {
  select();

  EXPECT_TRUE(query());

  EXPECT_EQ(result.length(), 4u);
}

TEST_F(PropertyQuery, DynamicAndStaticRowsOfOneNameAreNotMixed) {
  offerDynamic();
  turned.displayName = L"Style";
  turned.valueTypeName = std::nullopt;
  select();
  select();

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length", "Style"}));
}

TEST_F(PropertyQuery, Quirk_dynamic_values_not_released) {
  offerDynamic();
  turned.value = text(L"left");
  select();
  select();
  select();
  host.mark();

  EXPECT_TRUE(query());

  // The first entity's value came back in the result; those of the others nobody gives back.
  EXPECT_EQ(answered().back().substr(0, 32), "Turned \"Turned\" = VT_BSTR \"left\"");
  EXPECT_EQ(balanceAfterClear(), "BSTR +2");
}

// --- values ------------------------------------------------------------------------------------------------------

TEST_F(PropertyQuery, TheValuesOfTheFirstEntityComeBackAndThoseOfTheOthersAreFreed) {
  for (int i = 0; i < 3; ++i)
    select().object[7].returns(VT_BSTR).holds(text(L"long"));
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(host.balance(), "BSTR +1");
  EXPECT_EQ(host.log.count("VariantClear(VT_BSTR \"long\")"), 2);
  EXPECT_EQ(balanceAfterClear(), "balanced");
}

TEST_F(PropertyQuery, TextsOfElementsAreFreedOnce) {
  for (int i = 0; i < 2; ++i) {
    ToyProperty& start = select().object[5];
    start.elements.clear();
    start.element(1, L"X", text(L"one")).element(2, L"Y", text(L"two"));
  }
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(host.log.count("SysFreeString(one)"), 1);
  EXPECT_EQ(host.log.count("SysFreeString(two)"), 1);
  EXPECT_EQ(host.balance(), "BSTR +2");
  EXPECT_EQ(balanceAfterClear(), "balanced");
}

TEST_F(PropertyQuery, ObjectsInElementsAreReleasedOnce) {
  ToyObject held(host, "held");
  for (int i = 0; i < 3; ++i) {
    ToyProperty& start = select().object[5];
    start.elements.clear();
    start.element(1, L"X", object(held.dispatch()));
  }
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(balanceAfterClear(), "balanced");
}

TEST_F(PropertyQuery, Quirk_dropped_values_not_released) {
  select(toyClass(1)).object.property(9, L"Only").returns(VT_BSTR).holds(text(L"here"));
  select(toyClass(2));
  host.mark();

  EXPECT_TRUE(query());

  EXPECT_EQ(names(result), (std::vector<std::string>{"Start", "Start", "Style", "Length"}));
  EXPECT_EQ(balanceAfterClear(), "BSTR +1");
}

TEST_F(PropertyQuery, WhatWasReadBeforeTheUserCancelledIsFreedButForTheFirstEntitysValues) {
  for (int i = 0; i < 4; ++i) {
    Entity& entity = select();
    entity.object[7].returns(VT_BSTR).holds(text(L"long"));
    entity.object[5].elements.clear();
    entity.object[5].element(1, L"X", text(L"one"));
  }
  // The values of the first entity, then row by row those of the others: of the last row the third one fails.
  host.on("Invoke(7, get").nth(3).raise(cancelledText);
  host.mark();

  EXPECT_FALSE(query());

  EXPECT_EQ(std::wstring(errorText.str()), cancelledText);
  EXPECT_TRUE(result.isEmpty());
  EXPECT_EQ(host.log.count("VariantClear(VT_BSTR \"long\")"), 1) << "that of the second entity";
  EXPECT_EQ(host.log.count("VariantClear(VT_BSTR \"one\")"), 3) << "an element of each but the first";
  EXPECT_EQ(host.balance(), "BSTR +2") << "those of the first are in rows of a result that nobody gets";
}

TEST_F(PropertyQuery, AValueThatWasBeingReadWhenTheUserCancelledIsNotFreed) {
  for (int i = 0; i < 2; ++i)
    select().object[7].returns(VT_BSTR).holds(text(L"long"));
  host.on("Invoke(7, get").nth(2).raise(cancelledText);

  EXPECT_FALSE(query());

  EXPECT_EQ(host.log.count("VariantClear(VT_BSTR"), 0);
}

TEST_F(PropertyQuery, WhatWasReadBeforeAnyOtherExceptionIsNotFreed) {
  for (int i = 0; i < 4; ++i) {
    Entity& entity = select();
    entity.object[7].returns(VT_BSTR).holds(text(L"long"));
    entity.object[5].elements.clear();
    entity.object[5].element(1, L"X", text(L"one"));
  }
  host.on("Invoke(7, get").nth(3).raise(L"the disk is gone");
  host.mark();

  EXPECT_FALSE(query());

  EXPECT_EQ(std::wstring(errorText.str()), L"the disk is gone");
  EXPECT_EQ(host.log.count("VariantClear(VT_BSTR"), 0);
  EXPECT_EQ(host.balance(), "BSTR +6") << "an element of each, and two texts";
}

// --- failures ----------------------------------------------------------------------------------------------------

TEST_F(PropertyQuery, AnEmptySelectionFailsWithoutAMessageAndEmptiesTheResult) {
  result.push_back(Row(L"Old").value(i4(1)));
  bool flag = false;

  EXPECT_FALSE(GetPropertiesInfo(selection.entries, result, errorText, flag, flag));

  EXPECT_TRUE(result.isEmpty());
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(PropertyQuery, AnEntryThatFailsTheHarvestEndsTheQueryBeforeAnythingIsMerged) {
  offerDynamic();
  select(toyClass(1));
  select(toyClass(2)).object.withhold(IID_ICategorizeProperties);
  select(toyClass(3));
  result.push_back(Row(L"Old").value(i4(1)));
  host.mark();
  bool flag = false;

  EXPECT_FALSE(GetPropertiesInfo(selection.entries, result, errorText, flag, flag));

  EXPECT_TRUE(result.isEmpty());
  EXPECT_EQ(error(), L"PlxOPMRes.dll:1020") << "the first entity's category was looked up before any message";
  EXPECT_EQ(host.log.count("Invoke"), 0);
  EXPECT_EQ(host.log.count("GetElement"), 0);
  EXPECT_EQ(host.log.count("GetPredefinedValue"), 0);
  EXPECT_EQ(host.log.count("GetTypeInfo("), 2) << "the third is not harvested";
  EXPECT_EQ(host.log.count("GetProperties("), 1) << "the dynamic rows of the first were read";
  EXPECT_EQ(host.log.count("VariantClear(VT_R8"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(PropertyQuery, WithoutTheMessageLibraryAHarvestEndsAsItDoesWithItAndTheTextIsEmpty) {
  host.on("LoadLibraryExW").answerNull();
  select().object.withhold(IID_IOPMPropertyExtension);

  EXPECT_FALSE(query());

  EXPECT_EQ(error(), L"");
  EXPECT_TRUE(result.isEmpty());
}

TEST_F(PropertyQuery, ANullEntryFailsWithoutAMessage) {
  select();
  selection.addNull();

  EXPECT_FALSE(query());

  EXPECT_TRUE(result.isEmpty());
  EXPECT_EQ(error(), untouched);
}

TEST_F(PropertyQuery, ANullEntryAloneFailsWithoutAMessage) {
  selection.addNull();

  EXPECT_FALSE(query());

  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(PropertyQuery, AnObjectWithoutPropertiesFailsWithoutAMessage) {
  select().object.type.functions.clear();

  EXPECT_FALSE(query());

  EXPECT_EQ(error(), untouched);
}

// --- every failure at every place -----------------------------------------------------------------------------------

class PropertyQueryWithFaults : public PropertyQuery {
 protected:
  PropertyQueryWithFaults() {
    offerDynamic();
    kinds->member(L"round", i4(1)).member(L"square", i4(2));
    for (int i = 0; i < 2; ++i)
      select().object.property(8, L"Kind").returns(*kinds).holds(i4(1));
    host.mark();
    EXPECT_TRUE(query());
    healthy = answered();
    EXPECT_EQ(healthy.size(), 6u);
    forget();
  }
  // A cold layer, as before the first query of a process; but the categories are named from their own library whether
  // or not a failure's message was looked up before them, so that answers compare.
  void forget() {
    getTqPROPINFOCache()->clear();
    errors::g_hPropRes = loadResourceDll(L"PlxOPMRes.dll");
    host.log.clear();
    errorText = untouched;
    clear();
  }
  void expectAHealthyQueryToAnswerEverything() {
    clear();
    host.failCall(0);
    EXPECT_TRUE(query());
    EXPECT_EQ(answered(), healthy);
    EXPECT_EQ(balanceAfterClear(), "balanced");
  }

  std::unique_ptr<ToyTypeInfo> kinds = ToyTypeInfo::named(host, L"Kinds");
  Lines healthy;
};

// Whether a failed call of the first entity's harvest ends the query, leaves its trace in the cached list, or passes
// without one.
enum class Effect { EndsTheQuery, StaysInTheCache, Passes };

bool startsWithOneOf(const std::string& line, std::initializer_list<const char*> beginnings) {
  for (const char* const beginning : beginnings) {
    if (line.starts_with(beginning)) return true;
  }
  return false;
}

Effect effectInTheHarvest(const std::string& call) {
  if (call.find(" on Kinds") != std::string::npos) return Effect::StaysInTheCache;
  if (call.find(" on e0") == std::string::npos) return Effect::Passes;
  if (startsWithOneOf(call,
                      {"GetTypeInfo(", "GetTypeAttr", "GetFuncDesc", "GetDocumentation", "GetIDsOfNames",
                       "QueryInterface(IOPMPropertyExtension)", "QueryInterface(ICategorizeProperties)",
                       "MapPropertyToCategory", "GetCategoryName"})) {
    return Effect::EndsTheQuery;
  }
  if (startsWithOneOf(call, {"GetDisplayName", "ShowProperty", "QueryInterface(IPerPropertyBrowsing)",
                             "GetPredefinedStrings", "GetRefTypeInfo"})) {
    return Effect::StaysInTheCache;
  }
  return Effect::Passes;
}

TEST_F(PropertyQueryWithFaults, EveryFailedHostCallEndsTheQueryOrPassesAsItShould) {
  bool merging = false;
  int ended = 0;
  for (int n = 1;; ++n) {
    ASSERT_LT(n, 2000);
    forget();
    host.failCall(n);
    host.mark();
    const bool answer = query();
    const std::string failed = host.failedCall();
    if (failed.empty()) {
      EXPECT_TRUE(answer);
      EXPECT_EQ(answered(), healthy);
      EXPECT_GT(n, 150);
      break;
    }
    SCOPED_TRACE(say(n, ": ", failed));
    // The merge begins with a row's weight.
    merging = merging || failed.starts_with("QueryInterface(IVkPiPropertyDisplay)");
    const Effect effect = merging ? Effect::Passes : effectInTheHarvest(failed);

    EXPECT_EQ(answer, effect != Effect::EndsTheQuery);
    if (!answer) {
      ++ended;
      EXPECT_TRUE(result.isEmpty());
      EXPECT_NE(error(), untouched);
      EXPECT_TRUE(getTqPROPINFOCache()->empty()) << "a list that was not finished";
    }
    EXPECT_EQ(balanceAfterClear(), "balanced");
    if (effect == Effect::StaysInTheCache) continue;
    expectAHealthyQueryToAnswerEverything();
  }
  EXPECT_GT(ended, 30);
}

// Whether a call looks for dynamic rows, or fills their choices.
bool isForDynamicRows(const std::string& call) {
  return call.ends_with(" on source") || call.ends_with(" on turned")
         || startsWithOneOf(call, {"QueryInterface(IVeltBaseObject)", "GetObjectId", "vkdb", "CreateOPM",
                                   "GetObjectPropertySourceNames", "GetPropertySourceAt"});
}

TEST_F(PropertyQueryWithFaults, EveryHostCallThatThrowsEndsTheQueryWithItsMessageOrCostsADynamicRow) {
  int thrown = 0;
  int thrownForDynamicRows = 0;
  for (int n = 1;; ++n) {
    ASSERT_LT(n, 2000);
    forget();
    host.raiseCall(n, L"no connection");
    host.mark();
    const bool answer = query();
    const std::string failed = host.failedCall();
    if (failed.empty()) {
      EXPECT_TRUE(answer);
      break;
    }
    SCOPED_TRACE(say(n, ": ", failed));
    ++thrown;
    if (isForDynamicRows(failed)) {
      ++thrownForDynamicRows;
      EXPECT_TRUE(answer);
      EXPECT_EQ(error(), untouched);
      const Lines rows = answered();
      ASSERT_GE(rows.size(), healthy.size() - 1);
      EXPECT_TRUE(std::equal(healthy.begin(), healthy.end() - 1, rows.begin())) << "the static rows";
    } else {
      EXPECT_FALSE(answer);
      EXPECT_EQ(error(), L"no connection");
    }
    EXPECT_EQ(balanceAfterClear(), "balanced");
    expectAHealthyQueryToAnswerEverything();
  }
  EXPECT_GT(thrown, 150);
  EXPECT_GT(thrownForDynamicRows, 30);
}

// Whoever still shares the rows of the query before keeps them; the result must not.
TEST_F(PropertyQueryWithFaults, NoRowOfAnEarlierQueryIsAnsweredWhenASharedResultCannotBeEmptied) {
  TqVector<PROPINFO> earlier;
  earlier.append(Row(L"Earlier").dispId(9));
  bool answer = false;
  const auto ask = [&] {
    getTqPROPINFOCache()->clear();
    clear();
    result = earlier;
    bool mergeFlag = true, typeFlag = false;
    answer = GetPropertiesInfo(selection.entries, result, errorText, mergeFlag, typeFlag);
  };
  const auto hasNoEarlierRow = [&] {
    for (const PROPINFO& row : std::as_const(result))
      EXPECT_NE(row.name.str(), L"Earlier");
    EXPECT_FALSE(answer && answered() != healthy);
  };

  platform::CrashReports::clear();
  {
    const auto fault = platform::AllocationFault::failNth(1, platform::Heap::Host);
    ask();
  }
  EXPECT_FALSE(answer);
  hasNoEarlierRow();
  EXPECT_TRUE(result.isEmpty());
  EXPECT_EQ(platform::CrashReports::take().size(), 1U);

  ask();
  EXPECT_TRUE(answer);
  hasNoEarlierRow();
  EXPECT_EQ(earlier.length(), 1U);
}

// The host's frame between the two calls knows nothing of what the layer throws.
TEST_F(PropertyQueryWithFaults, AHostThatAsksAgainFromInsideACallMeetsNoException) {
  TqVector<PROPINFO> shared = std::as_const(result);
  shared.append(Row(L"Own").dispId(9));
  bool asked = false;
  forget();
  host.on("GetDisplayName(").nth(1).first([&] {
    asked = true;
    const TqVector<PROPINFO> keeps = std::as_const(shared);
    const auto fault = platform::AllocationFault::failFrom(1, platform::Heap::Host);
    EXPECT_NO_THROW(resetObjectInfo(shared, selection.entries[0]));
    TqVector<PROPINFO> list = keeps;
    CStdStr<wchar_t> text;
    bool flag = false;
    EXPECT_NO_THROW(EXPECT_FALSE(GetSingleEntPropInfo(selection.entries[0], list, text, flag)));
  });
  platform::CrashReports::clear();

  EXPECT_TRUE(query());

  EXPECT_TRUE(asked);
  EXPECT_EQ(answered(), healthy);
  EXPECT_FALSE(platform::CrashReports::take().empty());
}

// Where a query that has its answer lets go of values, memory that is missing changes nothing but the report.
TEST_F(PropertyQueryWithFaults, EveryRefusalByTheHostsHeapEndsTheQueryOrChangesNothingAndIsReported) {
  int ended = 0;
  for (const bool andAllAfterIt : {false, true}) {
    for (std::uint64_t n = 1;; ++n) {
      ASSERT_LT(n, 2000u);
      SCOPED_TRACE(say("block ", n, andAllAfterIt ? " and all after it" : ""));
      forget();
      platform::CrashReports::clear();
      host.mark();
      bool answer = false;
      std::uint64_t refused = 0;
      {
        const auto fault = andAllAfterIt ? platform::AllocationFault::failFrom(n, platform::Heap::Host)
                                         : platform::AllocationFault::failNth(n, platform::Heap::Host);
        answer = query();
        refused = fault.failures();
      }
      if (refused == 0) {
        EXPECT_TRUE(answer);
        EXPECT_GT(n, 1u);
        break;
      }
      const auto reports = platform::CrashReports::take();
      EXPECT_FALSE(reports.empty());
      if (answer) {
        EXPECT_EQ(answered(), healthy);
      } else {
        ++ended;
      }
      for (const auto& report : reports)
        EXPECT_EQ(report.status, Velt::eOutOfMemory);
      EXPECT_EQ(balanceAfterClear(), "balanced");
      expectAHealthyQueryToAnswerEverything();
    }
  }
  EXPECT_GT(ended, 20);
}

// An answer is what no allocation may change: false and a reason, or everything.
TEST_F(PropertyQueryWithFaults, EveryRefusalByOperatorNewEndsTheQueryOrChangesNothingAndIsReported) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new cannot be failed in this build";
  int ended = 0;
  for (const bool andAllAfterIt : {false, true}) {
    for (std::uint64_t n = 1;; ++n) {
      ASSERT_LT(n, 5000u);
      SCOPED_TRACE(say("operator new ", n, andAllAfterIt ? " and all after it" : ""));
      forget();
      platform::CrashReports::clear();
      host.mark();
      bool answer = false;
      std::uint64_t refused = 0;
      {
        const tests::AllocationSpy spy =
            andAllAfterIt ? tests::AllocationSpy::failFrom(n) : tests::AllocationSpy::failNth(n);
        answer = query();
        refused = spy.counts().failures;
      }
      if (refused == 0) {
        EXPECT_TRUE(answer);
        EXPECT_GT(n, 50u);
        break;
      }
      const auto reports = platform::CrashReports::take();
      if (answer) {
        EXPECT_EQ(answered(), healthy);
      } else {
        ++ended;
        // The host says by an exception that its own lists cannot grow, and that becomes the message. A report needs
        // memory of its own, so there is none when nothing more can be had.
        if (!andAllAfterIt && error() == untouched) {
          EXPECT_FALSE(reports.empty());
        }
      }
      for (const auto& report : reports)
        EXPECT_EQ(report.status, Velt::eOutOfMemory);
      EXPECT_EQ(balanceAfterClear(), "balanced");
      expectAHealthyQueryToAnswerEverything();
    }
  }
  EXPECT_GT(ended, 50);
}

TEST_F(PropertyQueryWithFaults, StringsThatCannotBeHadLeakNothing) {
  for (std::uint64_t n = 1;; ++n) {
    ASSERT_LT(n, 2000u);
    SCOPED_TRACE(n);
    forget();
    host.mark();
    std::uint64_t refused = 0;
    {
      const auto fault = platform::AllocationFault::failNth(n, platform::Heap::Strings);
      query();
      refused = fault.failures();
    }
    if (refused == 0) {
      EXPECT_GT(n, 30u);
      break;
    }
    EXPECT_EQ(balanceAfterClear(), "balanced");
  }
}

// --- the same by records ------------------------------------------------------------------------------------------

// The query puts no list of records together for its entities. So beside it stands the same query over lists of records,
// out of the functions that the layer exports for each step.
class PropertyQueryByRecords : public PropertyQuery {
 protected:
  struct Outcome {
    bool answer;
    Lines rows;
    std::wstring errorText;
    Lines calls;
    std::string failed;
    std::string balance;
    bool operator==(const Outcome&) const = default;
  };

  // Entities that differ in all that may differ: class, editable rows, values, elements, hatch variant.
  PropertyQueryByRecords() {
    offerDynamic();
    turned.value = text(L"oak");
    for (int i = 0; i < 5; ++i) {
      Entity& made = select(i == 3 ? toyClass(2) : i == 4 ? ::CLSID_VeltHatch : toyClass(1));
      made.object.hatchVariant = i % 2;
      made.object[5].editable(1);
      made.object[6].editable(i == 2 ? 0 : 1);
      ToyProperty& layer = made.object.property(9, L"Layer").returns(VT_BSTR).editable(i == 1 ? -1 : 1);
      layer.holds(text(i < 4 ? L"Walls" : L"Doors"));
      ToyProperty& normal = made.object.property(10, L"Normal").returns(VT_VARIANT).holds(text(L"whole"));
      normal.element(1, L"X", text(L"0")).element(2, L"Y", text(L"0"));
      if (i == 2) normal.elements.pop_back();
      ToyProperty& links = made.object.property(11, L"Links").returns(VT_DISPATCH);
      links.holds(object(color.dispatch()));
    }
  }

  void forget() {
    clear();
    getTqPROPINFOCache()->clear();
    errors::g_hPropRes = loadResourceDll(L"PlxOPMRes.dll");
    host.log.clear();
    errorText = untouched;
    host.mark();
  }

  bool queryByRecords() {
    clear();
    bool flag = false;
    const bool withDynamic = isAllEntitiesSameDynProp(selection.entries);
    TqVector<TqVector<PROPINFO>> lists, dynamicLists;
    for (VeltPropData* const entry : std::as_const(selection.entries)) {
      TqVector<PROPINFO> list, dynamic;
      if (!GetSingleEntPropInfo(entry, list, errorText, flag)) return false;
      lists.push_back(list);
      if (!withDynamic) continue;
      GetDynPropSourcesPropInfo(entry->pDispatch, dynamic);
      dynamicLists.push_back(dynamic);
    }
    if (!ExcuteIntersect(selection.entries, lists, result, errorText, flag)) return false;
    if (withDynamic) {
      TqVector<PROPINFO> merged;
      if (!ExcuteIntersect(selection.entries, dynamicLists, merged, errorText, flag)) return false;
      result.append(merged);
    }
    fillPropComboBox(result);
    freePropInfoVariantValue(lists);
    return true;
  }

  template <class Query>
  Outcome outcomeOf(Query query, int failedCall) {
    forget();
    host.failCall(failedCall);
    const bool answer = query();
    return {answer, answered(), error(), host.log.all(), host.failedCall(), host.balance()};
  }

  void compare(int everyNthCall) {
    for (int n = 0;; n += everyNthCall) {
      ASSERT_LT(n, 5000);
      const Outcome byRecords = outcomeOf([&] { return queryByRecords(); }, n);
      const Outcome byQuery = outcomeOf([&] { return query(); }, n);
      SCOPED_TRACE(say(n, ": ", byRecords.failed));
      ASSERT_EQ(byQuery.calls, byRecords.calls);
      ASSERT_EQ(byQuery.rows, byRecords.rows);
      ASSERT_TRUE(byQuery == byRecords);
      if (n != 0 && byRecords.failed.empty()) {
        EXPECT_GT(n, 300);
        EXPECT_FALSE(byRecords.rows.empty());
        break;
      }
    }
    host.failCall(0);
    clear();
  }

  ToyColor color{host, "red", ToyColor::indexed(1)};
};

TEST_F(PropertyQueryByRecords, GivesTheSameCallByCallWhicheverCallFails) {
  compare(1);
}

TEST_F(PropertyQueryByRecords, GivesTheSameForEntitiesThatHaveEverythingInCommon) {
  for (std::size_t i = 1; i < entities.size(); ++i) {
    selection.entries[static_cast<std::uint32_t>(i)]->clsid = toyClass(1);
    entities[i]->object[6].editable(1).holds(i4(0));
    entities[i]->object[9].editable(1).holds(text(L"Walls"));
    entities[i]->object[10].elements = entities[0]->object[10].elements;
  }
  compare(7);
}

// What a list holds in the cache is in every list that comes from it.
TEST_F(PropertyQueryByRecords, GivesTheSameWhenTheCacheHoldsRowsThatWereRead) {
  const auto withReadRows = [&](auto query) {
    return [this, query] {
      TqVector<PROPINFO> list;
      bool flag = false;
      EXPECT_TRUE(GetSingleEntPropInfo(selection.entries[0], list, errorText, flag));
      for (PROPINFO& row : getTqPROPINFOCache()->begin()->second) {
        if (row.name.str() == L"Length") {
          row.hasValue = true;
          row.value = i4(3);
        }
        if (row.name.str() == L"Style") row.isVaries = true;
      }
      return query();
    };
  };
  const Outcome byRecords = outcomeOf(withReadRows([&] { return queryByRecords(); }), 0);
  const Outcome byQuery = outcomeOf(withReadRows([&] { return query(); }), 0);

  EXPECT_EQ(byQuery.calls, byRecords.calls);
  EXPECT_EQ(byQuery.rows, byRecords.rows);
  EXPECT_TRUE(byQuery == byRecords);
  clear();
}

// --- a host that asks again ----------------------------------------------------------------------------------------

// Whichever call the host answers by asking for the same selection first: the query that is under way goes on as if it
// had not.
TEST_F(PropertyQueryByRecords, AHostThatQueriesAgainFromInsideAnyCallGetsBothAnswers) {
  Lines inner;
  bool asked = false;
  for (const bool isCold : {true, false}) {
    forget();
    EXPECT_TRUE(query());
    const Lines healthy = answered();
    clear();
    host.log.clear();
    EXPECT_TRUE(query());
    const std::vector<const char*> calls = {"QueryInterface(IOPMPropertyExtension)",
                                            "Editable(",
                                            "GetFuncDesc(",
                                            "QueryInterface(IVkPiPropertyDisplay)",
                                            "Invoke(",
                                            "GetElementStrings(",
                                            "GetElementValue(",
                                            "GetIDsOfNames(",
                                            "GetPropertyWeight(",
                                            "GetPredefinedValue(",
                                            "GetProperties("};
    for (const char* const call : calls) {
      for (const int nth : {1, 2, 3, 7, 20}) {
        SCOPED_TRACE(say(call, " ", nth, isCold ? " cold" : ""));
        if (isCold) forget();
        host.mark();
        inner.clear();
        asked = false;
        host.on(call).nth(nth).first([&] {
          if (std::exchange(asked, true)) return;
          TqVector<PROPINFO> outer;
          std::swap(outer, result);
          bool flag = false;
          CStdStr<wchar_t> message;
          EXPECT_TRUE(GetPropertiesInfo(selection.entries, result, message, flag, flag));
          inner = answered();
          clear();
          std::swap(outer, result);
        });

        EXPECT_TRUE(query());

        EXPECT_EQ(answered(), healthy);
        if (asked) {
          EXPECT_EQ(inner, healthy);
        }
        clear();
      }
    }
  }
}

// --- growth ------------------------------------------------------------------------------------------------------

class PropertyQueryGrowth : public PropertyQuery {
 protected:
  std::size_t callsFor(int entityCount) {
    while (static_cast<int>(entities.size()) < entityCount)
      select();
    host.log.clear();
    EXPECT_TRUE(query());
    EXPECT_EQ(result.length(), 5u);
    return host.log.all().size();
  }
};

TEST_F(PropertyQueryGrowth, HostCallsGrowLinearlyWithTheEntities) {
  offerDynamic();
  select();
  EXPECT_TRUE(query());  // the class is in the cache from here on
  const std::size_t two = callsFor(2);
  const std::size_t perEntity = callsFor(3) - two;
  EXPECT_GT(perEntity, 0u);
  for (const int entityCount : {4, 8, 16, 32}) {
    EXPECT_EQ(callsFor(entityCount), two + perEntity * static_cast<std::size_t>(entityCount - 2));
  }
}

}  // namespace
}  // namespace velt::toys
