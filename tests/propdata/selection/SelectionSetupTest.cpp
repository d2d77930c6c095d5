// Set-up and teardown of a selection over toy entities that are opened by id and toy automation objects that
// are created by class.

#include "host/com/ComError.h"
#include "tests/support/LayerTest.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToySelection.h"

namespace {

using namespace velt::toys;

class SelectionSetup : public LayerTest {
 protected:
  SelectionSetup() {
    lineEntity.classId = CLSID_VeltLine;
    circleEntity.classId = CLSID_VeltCircle;
    host.createInstance = [this](REFCLSID clsid) -> ToyObject* {
      if (clsid == CLSID_VeltLine) return &line;
      if (clsid == CLSID_VeltCircle) return &circle;
      return clsid == GUID_NULL ? classless : nullptr;
    };
  }

  bool initialize() { return InitializePropData(selection.entries, errorText, mixedClasses); }
  VeltPropData& entry(int index) { return *selection.entries.at(index); }

  // An entry as callers make it: whatever was in its memory stands in the fields besides oldId.
  VeltPropData& addUnspecified(long oldId) {
    VeltPropData& made = selection.addBare(oldId);
    made.clsid = CLSID_VeltTable;
    made.pUnknown = rubbish.unknown();
    made.pDispatch = rubbish.dispatch();
    return made;
  }
  void forgetRubbish() {
    for (VeltPropData* const made : selection.entries) {
      if (made->pUnknown == rubbish.unknown()) made->pUnknown = nullptr;
      if (made->pDispatch == rubbish.dispatch()) made->pDispatch = nullptr;
    }
  }

  static constexpr long lineId = 77;
  static constexpr long circleId = 78;
  static constexpr long missingId = 99;

  ToyEntity lineEntity{host, "lineEntity", lineId};
  ToyEntity circleEntity{host, "circleEntity", circleId};
  ToyObject line{host, "line"};
  ToyObject circle{host, "circle"};
  ToyObject rubbish{host, "rubbish"};
  ToyObject* classless = nullptr;
  ToySelection selection;
  bool mixedClasses = false;
};

TEST_F(SelectionSetup, AnEntryGetsItsClassAndItsObjectInOneOrderOfCalls) {
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(host.log.lines(), (Lines{
                                  "CoInitialize(null)",
                                  "vkdbOpenVkDbEntity(77, mode 0)",
                                  "getClassID() on lineEntity",
                                  "close() on lineEntity",
                                  "TqAutoCreateInstance(CLSID_VeltLine, no outer, context 1, IUnknown)",
                                  "QueryInterface(IDispatch) on line",
                                  "QueryInterface(IVeltBaseObject) on line",
                                  "SetObjectId(77, owner 0, null) on line",
                                  "Release(IVeltBaseObject) on line",
                              }));
  EXPECT_EQ(nameOf(entry(0).clsid), "CLSID_VeltLine");
  EXPECT_EQ(entry(0).pUnknown, line.unknown());
  EXPECT_EQ(entry(0).pDispatch, line.dispatch());
  EXPECT_EQ(entry(0).oldId, lineId);
  EXPECT_EQ(lineEntity.opened, 0);
  EXPECT_EQ(host.balance(), "line.IDispatch +1, line.IUnknown +1");
}

TEST_F(SelectionSetup, SuccessEmptiesTheErrorText) {
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(error(), L"");
}

TEST_F(SelectionSetup, EntriesArePreparedOneAfterTheOtherInSelectionOrder) {
  addUnspecified(circleId);
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(host.log.only({"CoInitialize", "vkdbOpen", "TqAuto", "SetObjectId"}),
            (Lines{
                "CoInitialize(null)",
                "vkdbOpenVkDbEntity(78, mode 0)",
                "TqAutoCreateInstance(CLSID_VeltCircle, no outer, context 1, IUnknown)",
                "SetObjectId(78, owner 0, null) on circle",
                "vkdbOpenVkDbEntity(77, mode 0)",
                "TqAutoCreateInstance(CLSID_VeltLine, no outer, context 1, IUnknown)",
                "SetObjectId(77, owner 0, null) on line",
            }));
}

TEST_F(SelectionSetup, AnEmptySelectionIsReadyAndStartsCom) {
  EXPECT_TRUE(initialize());

  EXPECT_EQ(host.log.lines(), Lines{"CoInitialize(null)"});
  EXPECT_EQ(error(), L"");
  EXPECT_FALSE(mixedClasses);
}

TEST_F(SelectionSetup, Quirk_empty_selection_stays_initialised) {
  EXPECT_TRUE(initialize());
  host.log.clear();

  EXPECT_TRUE(UnInitializePropData(selection.entries));

  EXPECT_EQ(host.log.lines(), Lines{}) << "COM is not ended, although set-up started it";
}

TEST_F(SelectionSetup, ComThatWasStartedBeforeIsNotAFailure) {
  host.on("CoInitialize").workThenReturn(S_FALSE);
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(entry(0).pUnknown, line.unknown());
}

TEST_F(SelectionSetup, WithoutComNoEntryIsTouched) {
  host.on("CoInitialize").fail();
  addUnspecified(lineId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(error(), message(1001));
  EXPECT_EQ(nameOf(entry(0).clsid), "CLSID_VeltTable");
  EXPECT_EQ(entry(0).pUnknown, rubbish.unknown());
  EXPECT_EQ(entry(0).pDispatch, rubbish.dispatch());
  EXPECT_EQ(host.log.only({"vkdbOpen", "TqAuto", "QueryInterface", "CoUninitialize"}), Lines{});
  forgetRubbish();
}

TEST_F(SelectionSetup, AFailureDoesNotEndCom) {
  addUnspecified(missingId).clsid = GUID_NULL;

  EXPECT_FALSE(initialize());

  EXPECT_EQ(host.log.count("CoUninitialize"), 0);
}

// --- classes ------------------------------------------------------------------------------------------------

TEST_F(SelectionSetup, EntriesOfTwoClassesAreMixed) {
  addUnspecified(lineId);
  addUnspecified(circleId);

  EXPECT_TRUE(initialize());

  EXPECT_TRUE(mixedClasses);
}

TEST_F(SelectionSetup, EveryEntryIsComparedWithTheFirst) {
  ToyEntity secondLine(host, "secondLine", 80);
  secondLine.classId = CLSID_VeltLine;
  addUnspecified(lineId);
  addUnspecified(80);
  addUnspecified(circleId);

  EXPECT_TRUE(initialize());

  EXPECT_TRUE(mixedClasses);
}

TEST_F(SelectionSetup, EntriesOfOneClassLeaveTheMixedFlagAsTheCallerSetIt) {
  ToyEntity secondLine(host, "secondLine", 80);
  secondLine.classId = CLSID_VeltLine;
  addUnspecified(lineId);
  addUnspecified(80);

  for (const bool before : {false, true}) {
    mixedClasses = before;
    EXPECT_TRUE(initialize());
    EXPECT_EQ(mixedClasses, before);
    UnInitializePropData(selection.entries);
  }
}

TEST_F(SelectionSetup, AnEntryWithoutAClassIsNotTheFirstClass) {
  ToyObject nameless(host, "nameless");
  classless = &nameless;
  addUnspecified(missingId).clsid = GUID_NULL;
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_FALSE(mixedClasses) << "the line is the first entry with a class";
  UnInitializePropData(selection.entries);
}

TEST_F(SelectionSetup, AfterAnEntryWithoutAClassTheFirstWithOneIsCompared) {
  ToyObject nameless(host, "nameless");
  classless = &nameless;
  addUnspecified(missingId).clsid = GUID_NULL;
  addUnspecified(lineId);
  addUnspecified(circleId);

  EXPECT_TRUE(initialize());

  EXPECT_TRUE(mixedClasses);
  UnInitializePropData(selection.entries);
}

TEST_F(SelectionSetup, AnEntryWithoutAClassDiffersFromTheFirstClass) {
  ToyObject nameless(host, "nameless");
  classless = &nameless;
  addUnspecified(lineId);
  addUnspecified(missingId).clsid = GUID_NULL;

  EXPECT_TRUE(initialize());

  EXPECT_TRUE(mixedClasses);
  UnInitializePropData(selection.entries);
}

TEST_F(SelectionSetup, TheMixedFlagIsSetBeforeTheEntryFails) {
  addUnspecified(lineId);
  addUnspecified(missingId);  // keeps the class of a table, which cannot be created

  EXPECT_FALSE(initialize());

  EXPECT_TRUE(mixedClasses);
}

TEST_F(SelectionSetup, Quirk_class_id_result_unexamined) {
  addUnspecified(missingId).clsid = CLSID_VeltCircle;

  EXPECT_TRUE(initialize());

  EXPECT_EQ(entry(0).pUnknown, circle.unknown());
  EXPECT_EQ(host.log.count("SetObjectId(99, owner 0, null) on circle"), 1);
}

// --- failures of an entry -----------------------------------------------------------------------------------

TEST_F(SelectionSetup, AnObjectThatCannotBeCreatedIsMessage1002) {
  addUnspecified(missingId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(error(), message(1002));
  EXPECT_EQ(entry(0).pUnknown, nullptr);
  EXPECT_EQ(entry(0).pDispatch, nullptr);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionSetup, EveryCallThatThrowsEndsTheSetUpWithItsMessageAndTearDownReleasesWhatWasMade) {
  for (int n = 1;; ++n) {
    ASSERT_LT(n, 100);
    selection.entries.clear();
    addUnspecified(lineId);
    entry(0).pUnknown = nullptr;
    entry(0).pDispatch = nullptr;
    errorText = untouched;
    host.mark();
    host.raiseCall(n, L"no connection");

    const bool answer = initialize();

    const std::string failed = host.failedCall();
    if (!failed.empty()) {
      EXPECT_FALSE(answer) << failed;
      EXPECT_EQ(error(), L"no connection") << failed;
    }
    EXPECT_TRUE(UnInitializePropData(selection.entries));
    EXPECT_EQ(host.balance(), "balanced") << failed;
    if (failed.empty()) {
      EXPECT_TRUE(answer);
      EXPECT_GT(n, 3);
      break;
    }
  }
}

TEST_F(SelectionSetup, AnObjectCountsOnlyWithASuccessThatHandsItOut) {
  addUnspecified(lineId);
  for (const bool isNull : {true, false}) {
    Rule& rule = host.on("TqAutoCreateInstance").nth(1);
    if (isNull) {
      rule.answerNull();
    } else {
      rule.workThenReturn(E_FAIL);
    }
    errorText = untouched;

    EXPECT_FALSE(initialize());

    EXPECT_EQ(error(), message(1002));
    EXPECT_EQ(entry(0).pDispatch, nullptr);
    EXPECT_EQ(host.log.count("QueryInterface"), 0);
  }
}

TEST_F(SelectionSetup, ThePointersAreNullBeforeTheObjectIsCreated) {
  host.on("TqAutoCreateInstance").fail();  // writes nothing
  addUnspecified(lineId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(entry(0).pUnknown, nullptr);
  EXPECT_EQ(entry(0).pDispatch, nullptr);
}

TEST_F(SelectionSetup, TheClassIsAskedForBeforeThePointersAreEmptied) {
  IUnknown* seen = nullptr;
  host.on("vkdbOpenVkDbEntity").first([&] { seen = entry(0).pUnknown; });
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(seen, rubbish.unknown());
}

TEST_F(SelectionSetup, TheObjectThatWasCreatedIsAskedForItsBaseObject) {
  line.handOut(IID_IDispatch, circle);
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(entry(0).pDispatch, circle.dispatch());
  EXPECT_EQ(host.log.only({"QueryInterface", "SetObjectId"}),
            (Lines{"QueryInterface(IDispatch) on line", "QueryInterface(IVeltBaseObject) on line",
                   "SetObjectId(77, owner 0, null) on line"}));
}

TEST_F(SelectionSetup, AnObjectIsReleasedBeforeTheMessageIsLoaded) {
  addUnspecified(lineId);
  for (const IID& withheld : {IID_IVeltBaseObject, IID_IDispatch}) {
    line.withhold(withheld);
    host.log.clear();

    EXPECT_FALSE(initialize());

    EXPECT_EQ(host.log.only({"Release", "LoadStringW"}),
              (Lines{"Release(IUnknown) on line", say("LoadStringW(PropertyBarRes.dll, ",
                                                      withheld == IID_IDispatch ? 1003 : 1004, ", 2047)")}));
    UnInitializePropData(selection.entries);
  }
}

TEST_F(SelectionSetup, AnObjectWithoutDispatchIsMessage1003AndReleased) {
  line.withhold(IID_IDispatch);
  addUnspecified(lineId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(error(), message(1003));
  EXPECT_EQ(entry(0).pUnknown, nullptr);
  EXPECT_EQ(entry(0).pDispatch, nullptr);
  EXPECT_EQ(host.log.only({"Release"}), Lines{"Release(IUnknown) on line"});
  EXPECT_EQ(host.log.count("QueryInterface(IVeltBaseObject)"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionSetup, Quirk_dispatch_kept_without_base_object) {
  line.withhold(IID_IVeltBaseObject);
  addUnspecified(lineId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(error(), message(1004));
  EXPECT_EQ(entry(0).pUnknown, nullptr);
  EXPECT_EQ(entry(0).pDispatch, line.dispatch());
  EXPECT_EQ(host.log.only({"Release"}), Lines{"Release(IUnknown) on line"});
  EXPECT_EQ(host.balance(), "line.IDispatch +1");

  UnInitializePropData(selection.entries);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionSetup, Quirk_binding_result_unexamined) {
  host.on("SetObjectId").fail();
  addUnspecified(lineId);

  EXPECT_TRUE(initialize());

  EXPECT_EQ(error(), L"");
  EXPECT_EQ(host.log.count("Release(IVeltBaseObject) on line"), 1);
}

TEST_F(SelectionSetup, AFailureStopsAtItsEntry) {
  addUnspecified(lineId);
  addUnspecified(missingId);
  addUnspecified(circleId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(entry(0).pUnknown, line.unknown()) << "entries before it keep their objects";
  EXPECT_EQ(entry(0).pDispatch, line.dispatch());
  EXPECT_EQ(nameOf(entry(2).clsid), "CLSID_VeltTable") << "entries after it stay untouched";
  EXPECT_EQ(entry(2).pUnknown, rubbish.unknown());
  EXPECT_EQ(entry(2).pDispatch, rubbish.dispatch());
  forgetRubbish();
  UnInitializePropData(selection.entries);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionSetup, WhicheverCallFailsTheTeardownReleasesEverything) {
  addUnspecified(lineId);
  addUnspecified(circleId);

  int run = 1;
  for (bool failed = true; failed; ++run) {
    ASSERT_LT(run, 100);
    errorText = untouched;
    // Classes that the entries would keep, should they not be opened.
    entry(0) = {lineId, CLSID_VeltLine, nullptr, nullptr};
    entry(1) = {circleId, CLSID_VeltCircle, nullptr, nullptr};
    host.mark();
    host.failCall(run);

    const bool done = initialize();
    const std::string call = host.failedCall();
    failed = !call.empty();
    SCOPED_TRACE(call);

    const auto starts = [&call](const char* with) { return call.starts_with(with); };
    const int expected = starts("CoInitialize")                      ? 1001
                         : starts("TqAuto")                          ? 1002
                         : starts("QueryInterface(IDispatch)")       ? 1003
                         : starts("QueryInterface(IVeltBaseObject)") ? 1004
                                                                     : 0;
    EXPECT_EQ(done, expected == 0);
    EXPECT_EQ(error(), expected == 0 ? L"" : message(expected));
    UnInitializePropData(selection.entries);
    EXPECT_EQ(host.balance(), "balanced");
    EXPECT_EQ(lineEntity.opened + circleEntity.opened, 0);
  }
  EXPECT_EQ(run, 11 + 1 + 1)
      << "one start of COM and five calls per entry can fail, and the last run goes through";
}

TEST_F(SelectionSetup, WithoutTheMessageLibraryTheResultIsTheSameAndTheTextEmpty) {
  host.on("LoadLibraryExW").answerNull();
  line.withhold(IID_IDispatch);
  addUnspecified(lineId);

  EXPECT_FALSE(initialize());

  EXPECT_EQ(error(), L"");
  EXPECT_EQ(entry(0).pUnknown, nullptr);
}

TEST_F(SelectionSetup, NullEntriesArePassedOver) {
  selection.addNull();
  addUnspecified(lineId);
  selection.addNull();

  EXPECT_TRUE(initialize());
  EXPECT_EQ(entry(1).pUnknown, line.unknown());
  EXPECT_FALSE(mixedClasses);

  EXPECT_TRUE(UnInitializePropData(selection.entries));
  EXPECT_EQ(host.balance(), "balanced");
}

// --- teardown -----------------------------------------------------------------------------------------------

TEST_F(SelectionSetup, TeardownReleasesBothPointersOfEachEntryAndThenEndsCom) {
  addUnspecified(lineId);
  addUnspecified(circleId);
  ASSERT_TRUE(initialize());
  host.log.clear();

  EXPECT_TRUE(UnInitializePropData(selection.entries));

  EXPECT_EQ(host.log.lines(), (Lines{
                                  "Release(IUnknown) on line",
                                  "Release(IDispatch) on line",
                                  "Release(IUnknown) on circle",
                                  "Release(IDispatch) on circle",
                                  "CoUninitialize()",
                              }));
  for (const VeltPropData* const torn : selection.entries) {
    EXPECT_EQ(torn->pUnknown, nullptr);
    EXPECT_EQ(torn->pDispatch, nullptr);
  }
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionSetup, TeardownLeavesIdAndClass) {
  addUnspecified(lineId);
  ASSERT_TRUE(initialize());

  EXPECT_TRUE(UnInitializePropData(selection.entries));

  EXPECT_EQ(entry(0).oldId, lineId);
  EXPECT_EQ(nameOf(entry(0).clsid), "CLSID_VeltLine");
}

TEST_F(SelectionSetup, TeardownPassesOverNullPointers) {
  selection.addBare(lineId);
  VeltPropData& onlyUnknown = selection.addBare(lineId);
  onlyUnknown.pUnknown = line.referenced(IID_IUnknown);
  VeltPropData& onlyDispatch = selection.addBare(circleId);
  circle.referenced(IID_IDispatch);
  onlyDispatch.pDispatch = circle.dispatch();

  EXPECT_TRUE(UnInitializePropData(selection.entries));

  EXPECT_EQ(host.log.lines(),
            (Lines{"Release(IUnknown) on line", "Release(IDispatch) on circle", "CoUninitialize()"}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(SelectionSetup, ASecondTeardownReleasesNothingButEndsComAgain) {
  addUnspecified(lineId);
  ASSERT_TRUE(initialize());
  UnInitializePropData(selection.entries);
  host.log.clear();

  EXPECT_TRUE(UnInitializePropData(selection.entries));

  EXPECT_EQ(host.log.lines(), Lines{"CoUninitialize()"});
}

// --- GetCLSID -----------------------------------------------------------------------------------------------

TEST_F(SelectionSetup, TheClassIdIsTheOneThatTheObjectNames) {
  GUID clsid = CLSID_VeltTable;

  EXPECT_TRUE(GetCLSID(clsid, circleId));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltCircle");
  EXPECT_EQ(host.log.lines(), (Lines{
                                  "vkdbOpenVkDbEntity(78, mode 0)",
                                  "getClassID() on circleEntity",
                                  "close() on circleEntity",
                              }));
  EXPECT_EQ(circleEntity.opened, 0);
}

TEST_F(SelectionSetup, AnObjectThatCannotBeOpenedLeavesTheClassIdAlone) {
  GUID clsid = CLSID_VeltTable;

  EXPECT_FALSE(GetCLSID(clsid, missingId));
  EXPECT_FALSE(GetCLSID(clsid, 0));
  host.on("vkdbOpenVkDbEntity(78").fail();
  EXPECT_FALSE(GetCLSID(clsid, circleId));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltTable");
  EXPECT_EQ(host.log.only({"getClassID", "close"}), Lines{});
}

TEST_F(SelectionSetup, AnOpeningThatFailsLeavesTheClassIdAloneAndClosesNothingWhateverItLeft) {
  host.on("vkdbOpenVkDbEntity(77,").leaveThenFail();
  GUID clsid = CLSID_VeltTable;

  EXPECT_FALSE(GetCLSID(clsid, lineId));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltTable");
  EXPECT_EQ(host.log.only({"getClassID", "close"}), Lines{});
  EXPECT_EQ(lineEntity.opened, 0);
}

TEST_F(SelectionSetup, AnEntityThatNamesNoClassIsTheGenericEntity) {
  ToyEntity plain(host, "plain", 80);
  GUID clsid = CLSID_VeltTable;

  EXPECT_TRUE(GetCLSID(clsid, 80));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltEntity");
  EXPECT_EQ(plain.opened, 0);
  EXPECT_EQ(host.log.count("close() on plain"), 1);
}

TEST_F(SelectionSetup, AnEntityOfADerivedClassThatNamesNoClassIsTheGenericEntity) {
  const ToyBlockReference reference(host, "reference", 80);
  GUID clsid = CLSID_VeltTable;

  EXPECT_TRUE(GetCLSID(clsid, 80));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltEntity");
}

TEST_F(SelectionSetup, AnotherObjectThatNamesNoClassIsTheGenericObject) {
  ToyEntity other(host, "other", 80, VkDbObject::desc());
  other.opensAsAnything = true;
  GUID clsid = CLSID_VeltTable;

  EXPECT_TRUE(GetCLSID(clsid, 80));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltObject");
  EXPECT_EQ(other.opened, 0);
}

TEST_F(SelectionSetup, AnotherObjectThatNamesAClassKeepsIt) {
  ToyEntity other(host, "other", 80, VkDbObject::desc());
  other.opensAsAnything = true;
  other.classId = CLSID_VeltTable;
  GUID clsid = GUID_NULL;

  EXPECT_TRUE(GetCLSID(clsid, 80));

  EXPECT_EQ(nameOf(clsid), "CLSID_VeltTable");
}

}  // namespace
