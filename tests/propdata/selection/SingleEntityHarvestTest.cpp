// The harvest of one toy entity, with and without the cache.

#include "host/com/ComError.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToySelection.h"

namespace {

using namespace velt::toys;

class SingleEntityHarvest : public LayerTest {
 protected:
  bool harvest(VeltPropData& entry) { return GetSingleEntPropInfo(&entry, list, errorText, typeFlag); }
  VeltPropData& add(ToyObject& toy, long oldId = 77, const CLSID& clsid = toyClass(1)) {
    return selection.add(toy, oldId, clsid);
  }
  const PROPINFO& row(int index) const { return std::as_const(list).at(index); }
  std::vector<std::string> listed() const {
    std::vector<std::string> made;
    for (const PROPINFO& listedRow : list)
      made.push_back(narrow(listedRow.name.c_str()));
    return made;
  }
  static bool isCached(const CLSID& clsid, int variant = -1) {
    return getTqPROPINFOCache()->contains(CLSIDMemString(clsid, variant));
  }

  using Names = std::vector<std::string>;

  ToyObject line{host, "line"};
  ToyObject second{host, "second"};
  ToySelection selection;
  TqVector<PROPINFO> list;
  bool typeFlag = true;
};

TEST_F(SingleEntityHarvest, ARowIsCompletedInOneOrderOfCalls) {
  line.property(4, L"StartX").choice(L"One", i4(1)).choice(L"Two", i4(2));
  line.readOnly(5, L"Length").inCategory(2, L"Geometry");
  VeltPropData& entry = add(line);
  host.mark();

  EXPECT_TRUE(harvest(entry));

  Lines behindTheWalk = host.log.lines();
  while (!behindTheWalk.empty() && behindTheWalk.front() != "Release(ITypeInfo) on line.type") {
    behindTheWalk.erase(behindTheWalk.begin());
  }
  EXPECT_EQ(behindTheWalk, (Lines{
                               "Release(ITypeInfo) on line.type",
                               "QueryInterface(IOPMPropertyExtension) on line",
                               "Editable(4) on line",
                               "Release(IOPMPropertyExtension) on line",
                               "QueryInterface(ICategorizeProperties) on line",
                               "MapPropertyToCategory(4) on line",
                               "GetCategoryName(1, locale 4) on line",
                               "Release(ICategorizeProperties) on line",
                               "QueryInterface(IPerPropertyBrowsing) on line",
                               "GetPredefinedStrings(4) on line",
                               "Release(IPerPropertyBrowsing) on line",
                               "QueryInterface(IOPMPropertyExtension) on line",
                               "Release(IOPMPropertyExtension) on line",
                               "QueryInterface(ICategorizeProperties) on line",
                               "MapPropertyToCategory(5) on line",
                               "GetCategoryName(2, locale 5) on line",
                               "Release(ICategorizeProperties) on line",
                               "QueryInterface(IPerPropertyBrowsing) on line",
                               "GetPredefinedStrings(5) on line",
                               "Release(IPerPropertyBrowsing) on line",
                           }));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SingleEntityHarvest, TheUnknownOfTheEntryIsAskedForEverythingButItsType) {
  ToyObject asDispatch(host, "asDispatch");
  for (ToyObject* const object : {&line, &asDispatch})
    object->property(4, L"PatternName").choice(L"One", i4(1)).editable(1);
  VeltPropData& entry = add(line, 77, CLSID_VeltHatch);
  entry.pDispatch->Release();
  entry.pDispatch = asDispatch.dispatch();
  host.log.clear();

  EXPECT_TRUE(harvest(entry));
  EXPECT_TRUE(harvest(entry)) << "from the cache";

  EXPECT_EQ(host.log.count("QueryInterface"), 1 + 1 + 3 + 1 + 1);
  for (const std::string& call : host.log.only({"QueryInterface", "get_PropertyVariant", "Editable"}))
    EXPECT_TRUE(call.ends_with(" on line")) << call;
  for (const std::string& call : host.log.only({"GetTypeInfo", "GetIDsOfNames"}))
    EXPECT_TRUE(call.ends_with(" on asDispatch")) << call;
  entry.pDispatch = nullptr;
}

TEST_F(SingleEntityHarvest, SuccessLeavesTheErrorTextAndTheFlagAlone) {
  line.property(4, L"StartX");
  VeltPropData& entry = add(line);

  for (const bool before : {true, false}) {
    typeFlag = before;
    EXPECT_TRUE(harvest(entry));
    EXPECT_EQ(typeFlag, before);
  }

  EXPECT_EQ(error(), untouched);
}

TEST_F(SingleEntityHarvest, ValuesAreNotRead) {
  line.property(4, L"StartX").holds(r8(1.5));

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_EQ(row(0).value.vt, VT_EMPTY);
  EXPECT_FALSE(row(0).hasValue);
  EXPECT_EQ(host.log.count("Invoke"), 0);
}

TEST_F(SingleEntityHarvest, WhatTheListHeldBeforeIsGone) {
  list.push_back(PROPINFO());
  list.push_back(PROPINFO());
  line.property(4, L"StartX");
  VeltPropData& entry = add(line);

  EXPECT_TRUE(harvest(entry));
  EXPECT_EQ(listed(), Names{"StartX"});

  list.push_back(PROPINFO());
  EXPECT_TRUE(harvest(entry));
  EXPECT_EQ(listed(), Names{"StartX"}) << "from the cache too";
}

// --- editability --------------------------------------------------------------------------------------------

TEST_F(SingleEntityHarvest, APropertyWithoutAPutterIsNeitherWritableNorEditable) {
  line.readOnly(4, L"Length").editable(1);
  line.property(5, L"StartX").editable(1);

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).isWritable);
  EXPECT_FALSE(row(0).isEditable);
  EXPECT_TRUE(row(1).isWritable);
  EXPECT_TRUE(row(1).isEditable);
  EXPECT_EQ(host.log.only({"Editable"}), Lines{"Editable(5) on line"}) << "it is not even asked about";
}

TEST_F(SingleEntityHarvest, WithoutAnyPutterNothingIsWritable) {
  line.readOnly(4, L"Length").editable(1);

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).isWritable);
  EXPECT_EQ(host.log.count("Editable"), 0);
}

TEST_F(SingleEntityHarvest, PutNamesAreComparedExactly) {
  line.readOnly(4, L"Height");
  line.writeOnly(5, L"height");
  line.writeOnly(6, L"Heigh");
  line.writeOnly(7, L"Heights");

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).isWritable);
}

TEST_F(SingleEntityHarvest, APutterMayStandAnywhereInTheTable) {
  line.readOnly(4, L"StartX");
  line.readOnly(5, L"EndX");
  line.writeOnly(5, L"EndX");
  line.writeOnly(4, L"StartX");

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_TRUE(row(0).isWritable);
  EXPECT_TRUE(row(1).isWritable);
}

TEST_F(SingleEntityHarvest, TheExtensionsAnswerDecidesWhetherAWritableRowIsEditable) {
  line.property(4, L"No").editable(0);
  line.property(5, L"Yes").editable(1);
  line.property(6, L"MinusOne").editable(-1);
  line.property(7, L"NotWritten");

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).isEditable);
  EXPECT_TRUE(row(1).isEditable);
  EXPECT_TRUE(row(2).isEditable);
  EXPECT_TRUE(row(3).isEditable) << "preset to true";
  for (const PROPINFO& writable : list)
    EXPECT_TRUE(writable.isWritable);
}

TEST_F(SingleEntityHarvest, Quirk_editable_result_unexamined) {
  line.property(4, L"WroteNo").editable(0);
  line.property(5, L"WroteNothing").editable(0);
  host.on("Editable(4)").workThenReturn(E_FAIL);
  host.on("Editable(5)").fail();

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).isEditable);
  EXPECT_TRUE(row(1).isEditable);
}

TEST_F(SingleEntityHarvest, TheAnswerDisturbsNoNeighbouringField) {
  line.property(4, L"StartX").editable(-1);

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_TRUE(row(0).isWritable);
  EXPECT_FALSE(row(0).isVaries);
  EXPECT_EQ(row(0).customType, 0);
}

// --- category -----------------------------------------------------------------------------------------------

TEST_F(SingleEntityHarvest, EveryRowGetsItsOwnCategory) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  line.readOnly(5, L"Layer").inCategory(-2);

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_EQ(row(0).categoryId, 3);
  EXPECT_EQ(row(0).categoryName.str(), L"Geometry");
  EXPECT_EQ(row(1).categoryId, -2);
  EXPECT_EQ(row(1).categoryName.str(), L"PlxOPMRes.dll:1002");
}

TEST_F(SingleEntityHarvest, ACategoryThatIsNotToldIsTheOneOfTheRowBefore) {
  line.readOnly(4, L"First");
  line.readOnly(5, L"Second").inCategory(3, L"Geometry");
  line.readOnly(6, L"Third");
  host.on("MapPropertyToCategory(4)").answerNothing();
  host.on("MapPropertyToCategory(6)").answerNothing();

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_EQ(row(0).categoryId, -12) << "before the first row there is a predefined one";
  EXPECT_EQ(row(0).categoryName.str(), L"PlxOPMRes.dll:1012");
  EXPECT_EQ(row(2).categoryId, 3);
  EXPECT_EQ(row(2).categoryName.str(), L"Geometry");
}

// --- choices ------------------------------------------------------------------------------------------------

TEST_F(SingleEntityHarvest, ARowHasChoicesWhenItsStringsCanBeHad) {
  line.readOnly(4, L"Style").choice(L"One", i4(1)).choice(L"Two", i4(2));
  line.readOnly(5, L"Empty").noChoices();
  line.readOnly(6, L"Plain");
  VeltPropData& entry = add(line);
  host.mark();

  EXPECT_TRUE(harvest(entry));

  EXPECT_TRUE(row(0).hasChoices);
  EXPECT_TRUE(row(1).hasChoices) << "even when there is none";
  EXPECT_FALSE(row(2).hasChoices);
  EXPECT_TRUE(row(0).choiceNames.isEmpty()) << "the strings are not kept";
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SingleEntityHarvest, TheStringsAndBothArraysAreFreedAtOnce) {
  line.readOnly(4, L"Style").choice(L"One", i4(1)).choice(L"Two", i4(2));

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_EQ(host.log.count("SysFreeString(One)"), 1);
  EXPECT_EQ(host.log.count("SysFreeString(Two)"), 1);
  EXPECT_EQ(host.log.count("CoTaskMemFree()"), 2);
}

TEST_F(SingleEntityHarvest, NullArraysAreChoicesToo) {
  line.readOnly(4, L"Style").choice(L"One", i4(1));
  host.on("GetPredefinedStrings").answerNull();

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_TRUE(row(0).hasChoices);
}

TEST_F(SingleEntityHarvest, APositiveResultMeansChoices) {
  line.readOnly(4, L"Style").choice(L"One", i4(1));
  host.on("GetPredefinedStrings").workThenReturn(S_FALSE);
  VeltPropData& entry = add(line);
  host.mark();

  EXPECT_TRUE(harvest(entry));

  EXPECT_TRUE(row(0).hasChoices);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SingleEntityHarvest, WhatAFailingCallLeftInTheArraysIsNotFreed) {
  line.readOnly(4, L"Style").choice(L"One", i4(1));
  host.on("GetPredefinedStrings").workThenReturn(E_FAIL);

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).hasChoices);
  EXPECT_EQ(host.log.only({"SysFreeString(One)", "CoTaskMemFree"}), Lines{});
  line.freeLastArrays();
}

TEST_F(SingleEntityHarvest, Quirk_message_1018_left_behind) {
  line.property(4, L"StartX").choice(L"One", i4(1)).editable(1);
  line.withhold(IID_IPerPropertyBrowsing);
  const CLSID clsid = toyClass(2);

  EXPECT_TRUE(harvest(add(line, 77, clsid)));

  EXPECT_EQ(error(), message(1018));
  EXPECT_EQ(listed(), Names{"StartX"});
  EXPECT_FALSE(row(0).hasChoices);
  EXPECT_TRUE(row(0).isEditable);
  EXPECT_TRUE(isCached(clsid));
}

TEST_F(SingleEntityHarvest, EnumeratedChoicesStayThoughTheRowOffersNone) {
  const auto color = ToyTypeInfo::named(host, L"Color");
  color->member(L"Red", i4(1));
  line.readOnly(4, L"Color").returns(*color);

  EXPECT_TRUE(harvest(add(line)));

  EXPECT_FALSE(row(0).hasChoices);
  EXPECT_EQ(row(0).choiceNames.length(), 1U);
}

// --- failures -----------------------------------------------------------------------------------------------

// Callers may see how many slots a list has, whether it was walked or served.
TEST_F(SingleEntityHarvest, AListHasAsManySlotsAsAfterAppendingOneByOne) {
  TqVector<int> appended;
  for (DISPID dispId = 1; dispId <= 9; ++dispId) {
    line.property(dispId, L"P" + std::to_wstring(dispId)).returns(VT_VARIANT).inCategory(-1);
    appended.append(0);
  }
  VeltPropData& entry = add(line, 77, toyClass(1));
  for (const char* const from : {"the walk", "the cache"}) {
    list = TqVector<PROPINFO>();
    EXPECT_TRUE(harvest(entry));
    EXPECT_EQ(list.length(), 9u);
    EXPECT_EQ(list.physicalLength(), appended.physicalLength()) << from;
  }
}

TEST_F(SingleEntityHarvest, ANullEntryFailsWithoutAMessage) {
  EXPECT_FALSE(GetSingleEntPropInfo(nullptr, list, errorText, typeFlag));

  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.lines(), Lines{});
}

TEST_F(SingleEntityHarvest, AnObjectWithoutPropertiesFailsWithoutAMessage) {
  line.method(4, L"Explode");
  const CLSID clsid = toyClass(2);

  EXPECT_FALSE(harvest(add(line, 77, clsid)));

  EXPECT_EQ(error(), untouched);
  EXPECT_FALSE(isCached(clsid));
}

TEST_F(SingleEntityHarvest, AFailedWalkFailsWithItsMessage) {
  line.property(4, L"StartX");
  host.on("GetTypeInfo(").fail();
  const CLSID clsid = toyClass(2);

  EXPECT_FALSE(harvest(add(line, 77, clsid)));

  EXPECT_EQ(error(), message(1005));
  EXPECT_FALSE(isCached(clsid));
}

TEST_F(SingleEntityHarvest, AnExtensionLostAfterTheWalkIsMessage1011) {
  line.property(4, L"StartX");
  host.on("QueryInterface(IOPMPropertyExtension)").nth(2).fail();
  const CLSID clsid = toyClass(2);

  EXPECT_FALSE(harvest(add(line, 77, clsid)));

  EXPECT_EQ(error(), message(1011));
  EXPECT_EQ(host.log.count("QueryInterface(ICategorizeProperties)"), 0);
  EXPECT_FALSE(isCached(clsid));
}

TEST_F(SingleEntityHarvest, AHarvestThatFailsOnItsThirdPropertyCachesNothingAndIsRunAgain) {
  line.readOnly(4, L"One");
  line.readOnly(5, L"Two");
  line.readOnly(6, L"Three").category.reset();
  const CLSID clsid = toyClass(2);
  VeltPropData& entry = add(line, 77, clsid);

  EXPECT_FALSE(harvest(entry));
  EXPECT_EQ(error(), message(1021));
  EXPECT_FALSE(isCached(clsid));

  line[6].inCategory(1);
  host.log.clear();
  EXPECT_TRUE(harvest(entry));
  EXPECT_EQ(host.log.count("GetTypeInfo("), 1);
  EXPECT_EQ(listed(), (Names{"One", "Two", "Three"}));
  EXPECT_TRUE(isCached(clsid));
}

TEST_F(SingleEntityHarvest, WhicheverCallFailsTheOutcomeIsTheOneThatIsPromised) {
  line.property(4, L"StartX").choice(L"One", i4(1));
  line.readOnly(5, L"Length");
  const CLSID clsid = toyClass(2);
  VeltPropData& entry = add(line, 77, clsid);

  int run = 1;
  for (bool failed = true; failed; ++run) {
    ASSERT_LT(run, 100);
    getTqPROPINFOCache()->clear();
    errorText = untouched;
    host.mark();
    host.failCall(run);

    const bool done = harvest(entry);
    const std::string call = host.failedCall();
    failed = !call.empty();
    SCOPED_TRACE(call);

    const auto starts = [&call](const char* with) { return call.starts_with(with); };
    const int expected = starts("GetTypeInfo(")                            ? 1005
                         : starts("GetTypeAttr")                           ? 1007
                         : starts("QueryInterface(IOPMPropertyExtension)") ? 1011
                         : starts("GetFuncDesc")                           ? 1008
                         : starts("GetDocumentation")                      ? 1009
                         : starts("GetIDsOfNames")                         ? 1010
                         : starts("QueryInterface(ICategorizeProperties)") ? 1020
                         : starts("MapPropertyToCategory")                 ? 1021
                         : starts("GetCategoryName")                       ? 1022
                         : starts("QueryInterface(IPerPropertyBrowsing)")  ? 1018
                                                                           : 0;
    const bool fatal = expected != 0 && expected != 1018;
    EXPECT_EQ(done, !fatal);
    EXPECT_EQ(error(), expected == 0 ? untouched : message(expected));
    EXPECT_EQ(isCached(clsid), !fatal);
    EXPECT_EQ(host.balance(), "balanced");
  }
  EXPECT_GT(run, 25);
}

TEST_F(SingleEntityHarvest, AnExceptionOfTheHarvestsOwnCallsIsItsMessageAndCachesNothing) {
  line.property(4, L"StartX").choice(L"One", i4(1));
  const CLSID clsid = toyClass(2);
  VeltPropData& entry = add(line, 77, clsid);

  for (const char* const call :
       {"Editable", "QueryInterface(IPerPropertyBrowsing)", "GetPredefinedStrings"}) {
    SCOPED_TRACE(call);
    errorText = untouched;
    host.on(call).nth(1).raise(L"no connection");
    host.mark();

    EXPECT_FALSE(harvest(entry));

    EXPECT_EQ(error(), L"no connection");
    EXPECT_FALSE(isCached(clsid));
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(SingleEntityHarvest, AnExceptionInsideTheWalkOrTheCategoryIsItsMessage) {
  line.property(4, L"StartX");
  const CLSID clsid = toyClass(2);
  VeltPropData& entry = add(line, 77, clsid);

  for (const char* const call : {"GetTypeAttr", "MapPropertyToCategory"}) {
    SCOPED_TRACE(call);
    errorText = untouched;
    host.on(call).nth(1).raise(L"no connection");

    EXPECT_FALSE(harvest(entry));

    EXPECT_EQ(error(), L"no connection");
    EXPECT_FALSE(isCached(clsid));
  }
}

TEST_F(SingleEntityHarvest, ExhaustedMemoryCachesNothing) {
  line.property(4, L"StartX").choice(L"One", i4(1));
  const CLSID clsid = toyClass(2);
  VeltPropData& entry = add(line, 77, clsid);
  host.mark();
  bool done = false;

  refuseMemory(
      [&] {
        getTqPROPINFOCache()->clear();
        list = TqVector<PROPINFO>();
        done = harvest(entry);
      },
      [&] {
        EXPECT_FALSE(done);
        EXPECT_FALSE(isCached(clsid));
        EXPECT_EQ(error(), untouched);
        EXPECT_EQ(host.balance(), "balanced");
      });

  EXPECT_TRUE(done);
}

// A list that others share must be emptied before the walk, or its rows would be listed and cached as the entity's own.
TEST_F(SingleEntityHarvest, NoRowOfAnEarlierListIsListedOrCachedWhenASharedOneCannotBeEmptied) {
  line.property(4, L"StartX");
  const CLSID clsid = toyClass(2);
  VeltPropData& entry = add(line, 77, clsid);
  TqVector<PROPINFO> earlier;
  earlier.append(Row(L"Earlier").dispId(9));
  bool done = false;

  refuseMemory(
      [&] {
        getTqPROPINFOCache()->clear();
        list = earlier;
        done = harvest(entry);
      },
      [&] {
        EXPECT_FALSE(done);
        EXPECT_FALSE(isCached(clsid));
        for (const std::string& name : listed())
          EXPECT_NE(name, "Earlier");
      });

  EXPECT_TRUE(done);
  EXPECT_EQ(listed(), Names{"StartX"});
}

TEST_F(SingleEntityHarvest, ExhaustedMemoryLeavesTheCachedListAlone) {
  line.property(4, L"StartX");
  const CLSID clsid = toyClass(2);
  ASSERT_TRUE(harvest(add(line, 77, clsid)));
  VeltPropData& entry = add(second, 78, clsid);
  bool done = false;

  refuseMemory(
      [&] {
        list = TqVector<PROPINFO>();
        done = harvest(entry);
      },
      [&] {
        EXPECT_FALSE(done);
        EXPECT_EQ(getTqPROPINFOCache()->at(CLSIDMemString(clsid, -1)).last().pDispatch, line.dispatch());
      });

  EXPECT_TRUE(done);
}

// --- cache --------------------------------------------------------------------------------------------------

TEST_F(SingleEntityHarvest, ASecondEntityOfAClassIsServedFromTheCache) {
  line.property(4, L"StartX").editable(1);
  line.readOnly(5, L"Length");
  second.property(4, L"Other");
  const CLSID clsid = toyClass(2);
  ASSERT_TRUE(harvest(add(line, 77, clsid)));
  VeltPropData& entry = add(second, 78, clsid);
  host.log.clear();
  host.mark();

  EXPECT_TRUE(harvest(entry));

  EXPECT_EQ(listed(), (Names{"StartX", "Length"}));
  EXPECT_EQ(host.log.lines(), (Lines{
                                  "QueryInterface(IOPMPropertyExtension) on second",
                                  "Editable(4) on second",
                                  "Release(IOPMPropertyExtension) on second",
                              }));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SingleEntityHarvest, ACachedListShowsTheEntityThatAsksAndStaysAsItIsInTheCache) {
  line.property(4, L"StartX").editable(1);
  second.property(4, L"StartX").editable(0);
  const CLSID clsid = toyClass(2);
  ASSERT_TRUE(harvest(add(line, 77, clsid)));

  EXPECT_TRUE(harvest(add(second, 78, clsid)));

  EXPECT_EQ(row(0).objectId.asOldId(), 78);
  EXPECT_EQ(row(0).pDispatch, second.dispatch());
  EXPECT_FALSE(row(0).isEditable);
  const TqVector<PROPINFO>& cached = getTqPROPINFOCache()->at(CLSIDMemString(clsid, -1));
  EXPECT_EQ(cached.at(0).objectId.asOldId(), 77);
  EXPECT_EQ(cached.at(0).pDispatch, line.dispatch());
  EXPECT_TRUE(cached.at(0).isEditable);
}

TEST_F(SingleEntityHarvest, ChangingAListThatWasHandedOutLeavesTheCacheAlone) {
  line.property(4, L"StartX");
  const CLSID clsid = toyClass(2);
  ASSERT_TRUE(harvest(add(line, 77, clsid)));

  list.at(0).name = L"Changed";
  list.push_back(PROPINFO());

  EXPECT_EQ(getTqPROPINFOCache()->at(CLSIDMemString(clsid, -1)).length(), 1U);
  EXPECT_TRUE(harvest(add(second, 78, clsid)));
  EXPECT_EQ(listed(), Names{"StartX"});
}

TEST_F(SingleEntityHarvest, AnotherClassIsHarvestedForItself) {
  line.property(4, L"StartX");
  second.property(4, L"Radius");
  ASSERT_TRUE(harvest(add(line, 77, toyClass(2))));

  EXPECT_TRUE(harvest(add(second, 78, toyClass(3))));

  EXPECT_EQ(listed(), Names{"Radius"});
}

TEST_F(SingleEntityHarvest, TheKeyOfAnEntityThatIsNotAHatchHasTheVariantMinusOne) {
  line.property(4, L"StartX");

  ASSERT_TRUE(harvest(add(line, 77, CLSID_VeltLine)));

  EXPECT_TRUE(isCached(CLSID_VeltLine, -1));
  EXPECT_EQ(getTqPROPINFOCache()->size(), 1U);
  EXPECT_EQ(host.log.count("QueryInterface(IVeltHatch)"), 0);
}

TEST_F(SingleEntityHarvest, ClassesThatAgreeUpToAZeroByteShareAList) {
  line.property(4, L"StartX");
  second.property(4, L"Radius");
  CLSID one = toyClass(2);
  CLSID other = toyClass(2);
  one.Data4[0] = other.Data4[0] = 0;
  other.Data4[1] = 99;
  ASSERT_TRUE(harvest(add(line, 77, one)));

  EXPECT_TRUE(harvest(add(second, 78, other)));

  EXPECT_EQ(listed(), Names{"StartX"});
  EXPECT_TRUE(row(0).clsid == other) << "the row bears the class of the entity that asks";
}

TEST_F(SingleEntityHarvest, AListThatStandsInTheCacheMeanwhileIsKept) {
  line.property(4, L"StartX");
  const CLSID clsid = toyClass(2);
  host.on("GetPredefinedStrings").first([&] {
    TqVector<PROPINFO> earlier;
    getTqPROPINFOCache()->insert({CLSIDMemString(clsid, -1), earlier});
  });

  EXPECT_TRUE(harvest(add(line, 77, clsid)));

  EXPECT_EQ(listed(), Names{"StartX"});
  EXPECT_EQ(getTqPROPINFOCache()->at(CLSIDMemString(clsid, -1)).length(), 0U);
}

// --- hatches ------------------------------------------------------------------------------------------------

TEST_F(SingleEntityHarvest, HatchesOfEachVariantHaveAListOfTheirOwn) {
  line.property(4, L"PatternName");
  line.hatchVariant = 1;
  second.property(4, L"GradientName");
  second.hatchVariant = 2;

  EXPECT_TRUE(harvest(add(line, 77, CLSID_VeltHatch)));
  EXPECT_EQ(listed(), Names{"PatternName"});
  EXPECT_TRUE(harvest(add(second, 78, CLSID_VeltHatch)));
  EXPECT_EQ(listed(), Names{"GradientName"});

  EXPECT_TRUE(isCached(CLSID_VeltHatch, 1));
  EXPECT_TRUE(isCached(CLSID_VeltHatch, 2));
  EXPECT_EQ(getTqPROPINFOCache()->size(), 2U);
}

TEST_F(SingleEntityHarvest, HatchesOfOneVariantShareAList) {
  line.property(4, L"PatternName");
  second.property(4, L"GradientName");
  ASSERT_TRUE(harvest(add(line, 77, CLSID_VeltHatch)));

  EXPECT_TRUE(harvest(add(second, 78, CLSID_VeltHatch)));

  EXPECT_EQ(listed(), Names{"PatternName"});
}

TEST_F(SingleEntityHarvest, TheVariantIsAskedForBeforeTheCache) {
  line.property(4, L"PatternName");
  VeltPropData& entry = add(line, 77, CLSID_VeltHatch);

  EXPECT_TRUE(harvest(entry));

  const Lines lines = host.log.lines();
  ASSERT_GT(lines.size(), 2U);
  EXPECT_EQ(lines[0], "QueryInterface(IVeltHatch) on line");
  EXPECT_EQ(lines[1], "get_PropertyVariant() on line");
}

TEST_F(SingleEntityHarvest, AVariantThatIsNotToldIsMinusOne) {
  line.property(4, L"PatternName");
  host.on("get_PropertyVariant").fail();

  EXPECT_TRUE(harvest(add(line, 77, CLSID_VeltHatch)));

  EXPECT_TRUE(isCached(CLSID_VeltHatch, -1));
}

TEST_F(SingleEntityHarvest, Quirk_hatch_interface_not_released) {
  line.property(4, L"PatternName");
  line.hatchVariant = 3;
  host.on("QueryInterface(IVeltHatch)").workThenReturn(E_FAIL);
  VeltPropData& entry = add(line, 77, CLSID_VeltHatch);
  host.mark();

  EXPECT_TRUE(harvest(entry));
  EXPECT_EQ(host.balance(), "line.IVeltHatch +1");
  EXPECT_TRUE(isCached(CLSID_VeltHatch, 3)) << "the query's result is not looked at";

  EXPECT_TRUE(harvest(entry));
  EXPECT_EQ(host.balance(), "line.IVeltHatch +2") << "from the cache too";
}

}  // namespace
