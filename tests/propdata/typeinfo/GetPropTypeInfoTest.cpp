// The walk over the type information of a toy object.

#include <algorithm>

#include "tests/support/LayerTest.h"
#include "tests/support/ToySelection.h"

namespace {

using namespace velt::toys;

class GetPropTypeInfoTest : public LayerTest {
 protected:
  bool walk() { return GetPropTypeInfo(&entry, props, putNames, errorText, flag); }

  std::vector<std::string> listed() const {
    std::vector<std::string> made;
    for (const PROPINFO& row : props)
      made.push_back(narrow(row.name.c_str()));
    return made;
  }
  std::vector<std::string> puts() const {
    std::vector<std::string> made;
    for (long i = 0; i < putNames.GetSize(); ++i)
      made.push_back(narrow(putNames.GetAt(i)));
    return made;
  }
  const PROPINFO& row(int index) const { return std::as_const(props).at(index); }
  std::vector<std::string> choiceNames(int index) const {
    std::vector<std::string> made;
    for (const CStdStr<wchar_t>& name : row(index).choiceNames)
      made.push_back(narrow(name.c_str()));
    return made;
  }
  std::vector<int> choiceValues(int index) const {
    return {row(index).choiceValues.begin(), row(index).choiceValues.end()};
  }

  using Names = std::vector<std::string>;

  ToyObject line{host, "line"};
  std::unique_ptr<ToyTypeInfo> color = ToyTypeInfo::named(host, L"Color");
  ToySelection selection;
  VeltPropData& entry = selection.add(line, 77, CLSID_VeltLine);
  TqVector<PROPINFO> props;
  CStringArray putNames;
  bool flag = true;
};

TEST_F(GetPropTypeInfoTest, OnePropertyIsReadInOneOrderOfCalls) {
  line.property(4, L"StartX").returns(VT_R8);
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(host.log.lines(), (Lines{
                                  "GetUserDefaultLangID()",
                                  "GetTypeInfo(0, locale 0x407) on line",
                                  "GetTypeAttr() on line.type",
                                  "ReleaseTypeAttr() on line.type",
                                  "QueryInterface(IOPMPropertyExtension) on line",
                                  "GetFuncDesc(7) on line.type",
                                  "ReleaseFuncDesc() on line.type",
                                  "GetDocumentation(1004: name, documentation) on line.type",
                                  "GetIDsOfNames(StartX, locale 0x800) on line",
                                  "GetDisplayName(4) on line",
                                  "ShowProperty(4) on line",
                                  "GetFuncDesc(8) on line.type",
                                  "ReleaseFuncDesc() on line.type",
                                  "GetDocumentation(1004: name, documentation) on line.type",
                                  "GetIDsOfNames(StartX, locale 0x800) on line",
                                  "Release(IOPMPropertyExtension) on line",
                                  "Release(ITypeInfo) on line.type",
                              }));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, ARowCarriesEveryFieldOfItsProperty) {
  line.readOnly(4, L"StartX").returns(VT_R8).labelled(L"Start X").documented(L"Where it starts");

  ASSERT_TRUE(walk());

  ASSERT_EQ(listed(), Names{"StartX"});
  EXPECT_EQ(nameOf(row(0).clsid), "CLSID_VeltLine");
  EXPECT_EQ(row(0).pDispatch, line.dispatch());
  EXPECT_EQ(row(0).dispId, 4);
  EXPECT_EQ(row(0).description.str(), L"Where it starts");
  EXPECT_EQ(row(0).displayName.str(), L"Start X");
  EXPECT_EQ(row(0).value.vt, VT_EMPTY);
  EXPECT_EQ(row(0).categoryName.str(), L"");
  EXPECT_FALSE(row(0).isElement);
  EXPECT_FALSE(row(0).hasChoices);
  EXPECT_FALSE(row(0).isVaries);
  EXPECT_FALSE(row(0).sortByCookie);
  EXPECT_FALSE(row(0).hasValue);
  EXPECT_EQ(row(0).elementCookie, 0U);
  EXPECT_EQ(row(0).groupCount, 0);
  EXPECT_EQ(row(0).elementGrouping, 0);
  EXPECT_EQ(row(0).weight, 0);
  EXPECT_TRUE(row(0).choiceNames.isEmpty());
  EXPECT_TRUE(row(0).choiceValues.isEmpty());
  EXPECT_EQ(row(0).customType, PropertyKind::none);
  EXPECT_EQ(row(0).objectId.asOldId(), 77);
  EXPECT_EQ(row(0).valueType, VT_R8);
  EXPECT_EQ(row(0).categoryId, 0);
  EXPECT_FALSE(row(0).isWritable);
  EXPECT_FALSE(row(0).isEditable);
  EXPECT_EQ(row(0).pDynamicProperty, nullptr);
  EXPECT_TRUE(row(0).dynSources.isEmpty());
  EXPECT_TRUE(row(0).choiceReals.isEmpty());
}

TEST_F(GetPropTypeInfoTest, SuccessLeavesTheErrorTextAndTheFlagAlone) {
  line.property(4, L"StartX");

  for (const bool before : {true, false}) {
    flag = before;
    EXPECT_TRUE(walk());
    EXPECT_EQ(flag, before);
  }
  EXPECT_EQ(error(), untouched);
}

TEST_F(GetPropTypeInfoTest, TheDispatchIsBorrowedWithoutAReference) {
  line.property(4, L"StartX");

  ASSERT_TRUE(walk());

  EXPECT_EQ(host.log.count("AddRef"), 0);
}

TEST_F(GetPropTypeInfoTest, BothOutputsAreEmptiedFirst) {
  props.push_back(PROPINFO());
  putNames.Add(L"Old");
  host.on("GetTypeInfo(").fail();

  EXPECT_FALSE(walk());

  EXPECT_TRUE(props.isEmpty());
  EXPECT_TRUE(putNames.IsEmpty());
}

TEST_F(GetPropTypeInfoTest, TheDispatchAndTheUnknownOfTheEntryAreAskedForTheirOwnInterfaces) {
  ToyObject asDispatch(host, "asDispatch");
  ToyObject asUnknown(host, "asUnknown");
  asDispatch.readOnly(4, L"StartX");
  asUnknown.readOnly(4, L"StartX").labelled(L"Label");
  entry.pDispatch->Release();
  entry.pUnknown->Release();
  entry.pDispatch = asDispatch.dispatch();
  entry.pUnknown = asUnknown.unknown();

  EXPECT_TRUE(walk());

  EXPECT_EQ(host.log.count("GetTypeInfo(0, locale 0x407) on asDispatch"), 1);
  EXPECT_EQ(host.log.count("GetIDsOfNames(StartX, locale 0x800) on asDispatch"), 1);
  EXPECT_EQ(host.log.count("QueryInterface(IOPMPropertyExtension) on asUnknown"), 1);
  EXPECT_EQ(row(0).displayName.str(), L"Label");
  entry.pDispatch = nullptr;
  entry.pUnknown = nullptr;
}

TEST_F(GetPropTypeInfoTest, TheTypeInformationIsAskedForInTheUsersLanguage) {
  host.userLanguage = LANGID{0x8C0A};
  line.readOnly(4, L"StartX");

  EXPECT_TRUE(walk());

  EXPECT_EQ(host.log.count("GetTypeInfo(0, locale 0x8C0A) on line"), 1);
}

// --- which functions are rows -------------------------------------------------------------------------------

TEST_F(GetPropTypeInfoTest, WithoutFunctionsTheExtensionIsNotAskedFor) {
  line.type.functionCount = WORD{0};
  line.withhold(IID_IOPMPropertyExtension);
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_TRUE(props.isEmpty());
  EXPECT_EQ(host.log.count("QueryInterface"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, TheSevenBaseMethodsAreSkippedUnread) {
  for (WORD count = 1; count <= 7; ++count) {
    line.type.functionCount = count;
    host.log.clear();
    host.mark();

    EXPECT_TRUE(walk());

    EXPECT_TRUE(props.isEmpty());
    EXPECT_EQ(host.log.count("GetFuncDesc"), 0);
    EXPECT_EQ(host.log.count("QueryInterface(IOPMPropertyExtension) on line"), 1);
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(GetPropTypeInfoTest, BaseMethodsAloneStillNeedTheExtension) {
  line.withhold(IID_IOPMPropertyExtension);
  for (WORD count = 1; count <= 7; ++count) {
    line.type.functionCount = count;
    errorText = untouched;

    EXPECT_FALSE(walk());

    EXPECT_EQ(error(), message(1011));
  }
}

TEST_F(GetPropTypeInfoTest, RowsStandInTheOrderOfTheFunctionTable) {
  line.readOnly(9, L"Zebra");
  line.readOnly(2, L"apple");
  line.property(5, L"Mango");

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), (Names{"Zebra", "apple", "Mango"}));
}

TEST_F(GetPropTypeInfoTest, PutNamesStandInTheOrderOfTheFunctionTable) {
  line.property(9, L"Zebra");
  line.writeOnly(2, L"apple");
  line.property(5, L"Mango");

  EXPECT_TRUE(walk());

  EXPECT_EQ(puts(), (Names{"Zebra", "apple", "Mango"}));
}

TEST_F(GetPropTypeInfoTest, AGetterAloneIsARowAndNoPutName) {
  line.readOnly(4, L"Length");

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{"Length"});
  EXPECT_EQ(puts(), Names{});
}

TEST_F(GetPropTypeInfoTest, APutterAloneIsAPutNameAndNoRow) {
  line.writeOnly(4, L"Secret");

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{});
  EXPECT_EQ(puts(), Names{"Secret"});
  EXPECT_EQ(host.log.only({"GetDisplayName", "ShowProperty"}), Lines{});
}

TEST_F(GetPropTypeInfoTest, MethodsAndReferencePuttersAreNeitherRowsNorPutNames) {
  line.method(3, L"Explode");
  line.readOnly(4, L"Owner");
  line.type.functions.back().kind = INVOKE_PROPERTYPUTREF;

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{});
  EXPECT_EQ(puts(), Names{});
  EXPECT_EQ(host.log.only({"GetDisplayName", "ShowProperty"}), Lines{});
}

TEST_F(GetPropTypeInfoTest, HiddenAndNonBrowsableAccessorsAreLeftOutAltogether) {
  line.property(4, L"Hidden").flagged(FUNCFLAG_FHIDDEN);
  line.property(5, L"NonBrowsable").flagged(FUNCFLAG_FNONBROWSABLE);
  line.property(6, L"Both").flagged(FUNCFLAG_FHIDDEN | FUNCFLAG_FNONBROWSABLE);
  line.property(7, L"Shown").flagged(static_cast<WORD>(~0x440U));

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{"Shown"});
  EXPECT_EQ(puts(), Names{"Shown"});
}

TEST_F(GetPropTypeInfoTest, Quirk_every_name_resolved_first) {
  host.texts[1010] = L"no id for %s";
  line.readOnly(4, L"StartX");
  line.method(5, L"Explode");
  line.property(6, L"Hidden").flagged(FUNCFLAG_FHIDDEN);

  for (const wchar_t* const name : {L"Explode", L"Hidden"}) {
    SCOPED_TRACE(narrow(name));
    const DISPID known = line.dispIds.at(name);
    line.dispIds.erase(name);
    errorText = untouched;
    host.mark();

    EXPECT_FALSE(walk());

    EXPECT_EQ(error(), std::wstring(L"no id for ") + name);
    EXPECT_EQ(listed(), Names{"StartX"});
    EXPECT_EQ(host.balance(), "balanced");
    line.dispIds[name] = known;
  }
}

TEST_F(GetPropTypeInfoTest, TheDispIdIsTheOneThatTheObjectGivesForTheName) {
  line.readOnly(4, L"StartX");
  line.dispIds[L"StartX"] = -500;

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).dispId, -500);
  EXPECT_EQ(host.log.only({"GetDisplayName", "ShowProperty"}),
            (Lines{"GetDisplayName(-500) on line", "ShowProperty(-500) on line"}));
}

TEST_F(GetPropTypeInfoTest, ADispIdThatIsNotWrittenIsZero) {
  line.readOnly(4, L"StartX");
  line.readOnly(5, L"EndX");
  host.on("GetIDsOfNames(EndX").answerNothing();

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).dispId, 4);
  EXPECT_EQ(row(1).dispId, 0) << "nothing of the name before stays";
}

TEST_F(GetPropTypeInfoTest, APositiveResultOfTheNameLookupIsSuccess) {
  line.readOnly(4, L"StartX");
  host.on("GetIDsOfNames").workThenReturn(S_FALSE);

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).dispId, 4);
}

TEST_F(GetPropTypeInfoTest, AMissingDocumentationIsAnEmptyDescription) {
  line.readOnly(4, L"StartX");

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).description.str(), L"");
}

TEST_F(GetPropTypeInfoTest, ANamelessFunctionIsMessage1010) {
  host.texts[1010] = L"no id for '%s'";
  line.readOnly(4, L"StartX");
  host.on("GetDocumentation(1004").answerNull();

  EXPECT_FALSE(walk());

  EXPECT_EQ(error(), L"no id for ''");
}

// --- show flag and display name -----------------------------------------------------------------------------

TEST_F(GetPropTypeInfoTest, Quirk_show_flag_exactly_one) {
  line.readOnly(4, L"One").shown(1);
  line.readOnly(5, L"Zero").shown(0);
  line.readOnly(6, L"MinusOne").shown(-1);
  line.readOnly(7, L"Two").shown(2);
  line.readOnly(8, L"High").shown(-127);

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{"One"});
}

TEST_F(GetPropTypeInfoTest, AFlagThatIsNotWrittenShowsTheProperty) {
  line.readOnly(4, L"Hidden").shown(0);
  line.readOnly(5, L"NotWritten");
  line.readOnly(6, L"Failing").shown(0);
  host.on("ShowProperty(6)").fail();

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), (Names{"NotWritten", "Failing"})) << "the flag is preset for every property anew";
}

TEST_F(GetPropTypeInfoTest, AFlagThatAFailingCallWroteCounts) {
  line.readOnly(4, L"Hidden").shown(0);
  line.readOnly(5, L"Shown").shown(1);
  host.on("ShowProperty").workThenReturn(E_FAIL);

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{"Shown"});
}

TEST_F(GetPropTypeInfoTest, AHiddenPropertysPutNameStays) {
  line.property(4, L"StartX").shown(0);

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{});
  EXPECT_EQ(puts(), Names{"StartX"});
}

TEST_F(GetPropTypeInfoTest, WithoutADisplayNameTheNameIsTheLabel) {
  line.readOnly(4, L"NoLabel");
  line.readOnly(5, L"EmptyLabel").labelled(L"");
  line.readOnly(6, L"FailingLabel").labelled(L"never written");
  host.on("GetDisplayName(6)").fail();
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).displayName.str(), L"NoLabel");
  EXPECT_EQ(row(1).displayName.str(), L"EmptyLabel");
  EXPECT_EQ(row(2).displayName.str(), L"FailingLabel");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, Quirk_display_name_result_unexamined) {
  line.readOnly(4, L"StartX").labelled(L"Start X");
  host.on("GetDisplayName").workThenReturn(E_FAIL);

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).displayName.str(), L"Start X");
}

TEST_F(GetPropTypeInfoTest, ALabelIsNotTakenOverByTheNextProperty) {
  line.readOnly(4, L"StartX").labelled(L"Start X");
  line.readOnly(5, L"EndX");

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(1).displayName.str(), L"EndX");
}

// --- user-defined types -------------------------------------------------------------------------------------

TEST_F(GetPropTypeInfoTest, AnEnumerationIsReadInOneOrderOfCalls) {
  color->member(L"Red", i4(1)).member(L"Green", i4(3));
  line.readOnly(4, L"Color").returns(*color);
  host.mark();

  EXPECT_TRUE(walk());

  const Lines all = host.log.lines();
  const auto from = std::find(all.begin(), all.end(), "GetRefTypeInfo(0x107) on line.type");
  const auto to = std::find(all.begin(), all.end(), "GetDisplayName(4) on line");
  EXPECT_EQ(Lines(from, to), (Lines{
                                 "GetRefTypeInfo(0x107) on line.type",
                                 "GetTypeAttr() on Color",
                                 "GetVarDesc(0) on Color",
                                 "GetNames(1, at most 1) on Color",
                                 "ReleaseVarDesc() on Color",
                                 "GetVarDesc(1) on Color",
                                 "GetNames(2, at most 1) on Color",
                                 "ReleaseVarDesc() on Color",
                                 "ReleaseTypeAttr() on Color",
                                 "GetContainingTypeLib() on Color",
                                 "GetDocumentation(3: name, documentation, context, file) on Color.library",
                                 "Release(ITypeLib) on Color.library",
                                 "Release(ITypeInfo) on Color",
                             }));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, TheMembersOfAnEnumerationAreTheChoicesInTheirOrder) {
  color->member(L"Red", i4(7)).member(L"Green", i4(-3)).member(L"Blue", i4(7));
  line.readOnly(4, L"Color").returns(*color);

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), (Names{"Red", "Green", "Blue"}));
  EXPECT_EQ(choiceValues(0), (std::vector{7, -3, 7}));
  EXPECT_EQ(row(0).valueType, VT_USERDEFINED);
  EXPECT_FALSE(row(0).hasChoices) << "whether they are offered is settled by the harvest";
}

TEST_F(GetPropTypeInfoTest, MembersThatAreNotConstantsAreNotChoices) {
  color->member(L"Red", i4(1))
      .member(L"PerInstance", i4(2), VAR_PERINSTANCE)
      .member(L"Static", i4(3), VAR_STATIC)
      .member(L"Dispatch", i4(4), VAR_DISPATCH)
      .member(L"Blue", i4(5));
  line.readOnly(4, L"Color").returns(*color);
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), (Names{"Red", "Blue"}));
  EXPECT_EQ(choiceValues(0), (std::vector{1, 5}));
  EXPECT_EQ(host.log.count("GetNames("), 5) << "the name is asked for before the kind is looked at";
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, AMemberThatCannotBeDescribedIsLeftOut) {
  color->member(L"Red", i4(1)).member(L"Green", i4(2)).member(L"Blue", i4(3));
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetVarDesc(1)").fail();
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), (Names{"Red", "Blue"}));
  EXPECT_EQ(choiceValues(0), (std::vector{1, 3}));
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.count("GetNames(2"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, AMemberWithoutANameIsAChoiceAllTheSame) {
  color->member(L"Red", i4(1)).member(L"Green", i4(2)).member(L"Blue", i4(3));
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetNames(2").fail();

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), (Names{"Red", "", "Blue"})) << "and it does not bear the name before it";
  EXPECT_EQ(choiceValues(0), (std::vector{1, 2, 3}));
}

TEST_F(GetPropTypeInfoTest, Quirk_member_name_result_unexamined) {
  color->member(L"Red", i4(1)).member(L"Green", i4(2)).member(L"Blue", i4(3));
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetNames(1").workThenReturn(E_FAIL);
  host.on("GetNames(2").answerNothing();
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), (Names{"Red", "", "Blue"}));
  EXPECT_EQ(choiceValues(0), (std::vector{1, 2, 3}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, AChoicesIntegerIsTheDataWordWhateverTheTypeOfTheConstant) {
  VARIANT real = r8(0.0);
  real.llVal = 0x1122334455667788;
  color->member(L"Short", i2(-1)).member(L"Real", real).member(L"Long", i4(-1));
  line.readOnly(4, L"Color").returns(*color);

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceValues(0), (std::vector{0xFFFF, 0x55667788, -1}));
}

TEST_F(GetPropTypeInfoTest, ChoicesAreNotTakenOverByTheNextProperty) {
  color->member(L"Red", i4(1));
  color->typeName = L"VELT_COLOR";
  line.readOnly(4, L"Color").returns(*color);
  line.readOnly(5, L"Plain");

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(1), Names{});
  EXPECT_EQ(choiceValues(1), std::vector<int>{});
  EXPECT_EQ(row(1).customType, PropertyKind::none);
}

TEST_F(GetPropTypeInfoTest, AUserDefinedTypeOfAnotherKindGivesItsCodeAndNoChoices) {
  color->kind = TKIND_ALIAS;
  color->typeName = L"VELT_COLOR";
  color->member(L"Red", i4(1));
  line.readOnly(4, L"Color").returns(*color);
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), Names{});
  EXPECT_EQ(row(0).customType, PropertyKind::color);
  EXPECT_EQ(row(0).valueType, VT_USERDEFINED);
  EXPECT_EQ(host.log.count("GetVarDesc"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, AnEnumerationOfAKnownNameGivesItsCodeAndItsChoices) {
  color->typeName = L"ACAD_LWEIGHT";
  color->member(L"Thin", i4(5));
  line.readOnly(4, L"Weight").returns(*color);

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).customType, PropertyKind::lineweight);
  EXPECT_EQ(choiceValues(0), std::vector{5});
}

TEST_F(GetPropTypeInfoTest, Quirk_two_codes_for_no_custom_type) {
  line.readOnly(4, L"Plain").returns(VT_I4);
  line.readOnly(5, L"Enumerated").returns(*color);

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).customType, PropertyKind::none) << "not user-defined";
  EXPECT_EQ(row(1).customType, PropertyKind::unknownType) << "user-defined, of a name that means nothing";
}

TEST_F(GetPropTypeInfoTest, ATypeWhoseNameCannotBeReadHasNoCode) {
  color->typeName = L"VELT_COLOR";
  color->member(L"Red", i4(1));
  line.readOnly(4, L"Color").returns(*color);
  const std::string calls[] = {"GetContainingTypeLib()", "GetDocumentation(3"};

  for (const std::string& call : calls) {
    SCOPED_TRACE(call);
    host.on(call).nth(1).fail();
    host.mark();

    EXPECT_TRUE(walk());

    EXPECT_EQ(row(0).customType, PropertyKind::none);
    EXPECT_EQ(choiceNames(0), Names{"Red"}) << "the choices were read before";
    EXPECT_EQ(error(), untouched);
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(GetPropTypeInfoTest, ATypeWithANullNameGetsTheGenericCode) {
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetDocumentation(3").answerNull();

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).customType, PropertyKind::unknownType);
}

TEST_F(GetPropTypeInfoTest, ATypeThatCannotBeResolvedLeavesThePropertyPlain) {
  color->typeName = L"VELT_COLOR";
  color->member(L"Red", i4(1));
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetRefTypeInfo").fail();
  host.mark();

  EXPECT_TRUE(walk());

  ASSERT_EQ(listed(), Names{"Color"});
  EXPECT_EQ(row(0).customType, PropertyKind::none);
  EXPECT_EQ(choiceNames(0), Names{});
  EXPECT_EQ(row(0).valueType, VT_USERDEFINED);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, ANullTypeLeavesThePropertyPlain) {
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetRefTypeInfo").answerNull();

  EXPECT_TRUE(walk());

  EXPECT_EQ(listed(), Names{"Color"});
  EXPECT_EQ(row(0).customType, PropertyKind::none);
}

TEST_F(GetPropTypeInfoTest, Quirk_reference_result_unexamined) {
  color->typeName = L"VELT_COLOR";
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetRefTypeInfo").workThenReturn(E_FAIL);
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(row(0).customType, PropertyKind::color);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, ATypeWithoutAttributesHasNeitherChoicesNorACode) {
  color->typeName = L"VELT_COLOR";
  color->member(L"Red", i4(1));
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetTypeAttr() on Color").fail();
  host.mark();

  EXPECT_TRUE(walk());

  ASSERT_EQ(listed(), Names{"Color"});
  EXPECT_EQ(row(0).customType, PropertyKind::none);
  EXPECT_EQ(choiceNames(0), Names{});
  EXPECT_EQ(host.log.only({"GetContainingTypeLib", "GetVarDesc"}), Lines{});
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, AttributesOfATypeCountOnlyWithASuccessThatHandsThemOut) {
  color->typeName = L"VELT_COLOR";
  color->member(L"Red", i4(1));
  line.readOnly(4, L"Color").returns(*color);
  const auto expectAPlainProperty = [this] {
    EXPECT_TRUE(walk());
    ASSERT_EQ(listed(), Names{"Color"});
    EXPECT_EQ(row(0).customType, PropertyKind::none);
    EXPECT_EQ(choiceNames(0), Names{});
    EXPECT_EQ(host.log.only({"GetContainingTypeLib", "GetVarDesc"}), Lines{});
  };

  host.on("GetTypeAttr() on Color").nth(1).answerNull();
  expectAPlainProperty();
  host.on("GetTypeAttr() on Color").nth(1).leaveThenFail();
  expectAPlainProperty();
}

TEST_F(GetPropTypeInfoTest, AMemberCountsOnlyWithASuccessThatDescribesIt) {
  color->member(L"Red", i4(1)).member(L"Green", i4(2)).member(L"Blue", i4(3));
  line.readOnly(4, L"Color").returns(*color);
  host.on("GetVarDesc(0)").answerNull();
  host.on("GetVarDesc(1)").leaveThenFail();

  EXPECT_TRUE(walk());

  EXPECT_EQ(choiceNames(0), Names{"Blue"});
  EXPECT_EQ(choiceValues(0), std::vector<int>{3});
  EXPECT_EQ(host.log.only({"GetNames"}), Lines{"GetNames(3, at most 1) on Color"});
}

TEST_F(GetPropTypeInfoTest, ATypeLibraryCountsOnlyWithASuccessThatHandsItOut) {
  color->typeName = L"VELT_COLOR";
  line.readOnly(4, L"Color").returns(*color);
  for (const bool isNull : {true, false}) {
    Rule& rule = host.on("GetContainingTypeLib").nth(1);
    if (isNull) {
      rule.answerNull();
    } else {
      rule.leaveThenFail();
    }
    host.mark();
    EXPECT_TRUE(walk());
    EXPECT_EQ(row(0).customType, PropertyKind::none);
    EXPECT_EQ(host.log.count("GetDocumentation(0"), 0);
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(GetPropTypeInfoTest, TheTypeOfAPutterIsNotResolved) {
  line.writeOnly(4, L"Color").flagged(0);
  line.type.functions.back().returns = VT_USERDEFINED;
  line.type.functions.back().type = color.get();

  EXPECT_TRUE(walk());

  EXPECT_EQ(host.log.count("GetRefTypeInfo"), 0);
}

TEST_F(GetPropTypeInfoTest, ATypeIsResolvedEvenForAPropertyThatIsNotShown) {
  line.readOnly(4, L"Color").returns(*color).shown(0);
  host.mark();

  EXPECT_TRUE(walk());

  EXPECT_EQ(host.log.count("GetRefTypeInfo"), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

// --- failures -----------------------------------------------------------------------------------------------

struct Failure {
  const char* call;
  int message;
};

class GetPropTypeInfoFailure : public GetPropTypeInfoTest, public ::testing::WithParamInterface<Failure> {};

TEST_P(GetPropTypeInfoFailure, EndsTheWalkWithItsMessage) {
  line.readOnly(4, L"StartX");
  host.on(GetParam().call).fail();
  host.mark();

  EXPECT_FALSE(walk());

  EXPECT_EQ(error(), message(GetParam().message));
  EXPECT_EQ(host.balance(), "balanced");
}

INSTANTIATE_TEST_SUITE_P(Calls, GetPropTypeInfoFailure,
                         ::testing::Values(Failure{"GetTypeInfo(", 1005}, Failure{"GetTypeAttr()", 1007},
                                           Failure{"QueryInterface(IOPMPropertyExtension)", 1011},
                                           Failure{"GetFuncDesc(7)", 1008},
                                           Failure{"GetDocumentation(1004", 1009},
                                           Failure{"GetIDsOfNames(", 1010}));

// A call that says that it succeeded but hands out nothing, and one that hands out something but failed.
TEST_P(GetPropTypeInfoFailure, EndsTheWalkWhenTheResultAndTheAnswerDisagree) {
  const bool isBlock = GetParam().message == 1007 || GetParam().message == 1008;
  line.readOnly(4, L"StartX");
  if (isBlock || GetParam().message == 1011) {
    host.on(GetParam().call).nth(1).answerNull();
    EXPECT_FALSE(walk());
    EXPECT_EQ(error(), message(GetParam().message));
    EXPECT_TRUE(props.isEmpty());
  }
  if (isBlock || GetParam().message == 1010) {
    errorText = untouched;
    host.on(GetParam().call).nth(1).leaveThenFail();
    EXPECT_FALSE(walk());
    EXPECT_EQ(error(), message(GetParam().message));
    EXPECT_TRUE(props.isEmpty());
  }
}

TEST_P(GetPropTypeInfoFailure, GivesNothingBackThatTheCallLeft) {
  line.readOnly(4, L"StartX").documented(L"left behind");
  host.on(GetParam().call).leaveThenFail();
  host.mark();

  EXPECT_FALSE(walk());

  EXPECT_EQ(error(), message(GetParam().message));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, ANullTypeInformationIsMessage1006) {
  line.readOnly(4, L"StartX");
  host.on("GetTypeInfo(").answerNull();

  EXPECT_FALSE(walk());

  EXPECT_EQ(error(), message(1006));
  EXPECT_EQ(host.log.count("GetTypeAttr"), 0);
}

TEST_F(GetPropTypeInfoTest, ATypeInformationThatIsNotWrittenIsMessage1006) {
  host.on("GetTypeInfo(").answerNothing();

  EXPECT_FALSE(walk());

  EXPECT_EQ(error(), message(1006));
}

TEST_F(GetPropTypeInfoTest, AnObjectWithoutTheExtensionIsMessage1011) {
  line.readOnly(4, L"StartX");
  line.withhold(IID_IOPMPropertyExtension);
  host.mark();

  EXPECT_FALSE(walk());

  EXPECT_EQ(error(), message(1011));
  EXPECT_EQ(host.log.count("GetFuncDesc"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(GetPropTypeInfoTest, AfterAFailureWhatWasListedStays) {
  line.property(4, L"StartX");
  line.property(5, L"EndX");
  host.on("GetFuncDesc(10)").fail();

  EXPECT_FALSE(walk());

  EXPECT_EQ(listed(), (Names{"StartX", "EndX"}));
  EXPECT_EQ(puts(), Names{"StartX"});
}

TEST_F(GetPropTypeInfoTest, WhicheverCallFailsTheOutcomeIsTheOneThatIsPromised) {
  color->member(L"Red", i4(1)).member(L"Green", i4(2));
  line.property(4, L"StartX").labelled(L"Start X");
  line.property(5, L"Color").returns(*color);

  int run = 1;
  for (bool failed = true; failed; ++run) {
    ASSERT_LT(run, 100);
    errorText = untouched;
    host.mark();
    host.failCall(run);

    const bool done = walk();
    const std::string call = host.failedCall();
    failed = !call.empty();
    SCOPED_TRACE(call);

    const auto is = [&call](const char* begins, const char* ends) {
      return call.starts_with(begins) && call.ends_with(ends);
    };
    const int expected = is("GetTypeInfo(", " on line")        ? 1005
                         : is("GetTypeAttr", "line.type")      ? 1007
                         : is("QueryInterface", "on line")     ? 1011
                         : is("GetFuncDesc", "line.type")      ? 1008
                         : is("GetDocumentation", "line.type") ? 1009
                         : is("GetIDsOfNames", "on line")      ? 1010
                                                               : 0;
    EXPECT_EQ(done, expected == 0);
    EXPECT_EQ(error(), expected == 0 ? untouched : message(expected));
    EXPECT_EQ(host.balance(), "balanced");
    if (done) {
      EXPECT_EQ(listed(), (Names{"StartX", "Color"}));
      EXPECT_EQ(row(1).choiceNames.length(), row(1).choiceValues.length());
    }
  }
  EXPECT_GT(run, 20);
}

// Where the result is looked at; elsewhere what stands in the output is used and given back.
TEST_F(GetPropTypeInfoTest, WhateverAFailingCallLeavesIsNotGivenBack) {
  color->typeName = L"VELT_COLOR";
  color->member(L"Red", i4(1)).member(L"Green", i4(2));
  line.property(4, L"StartX").labelled(L"Start X");
  line.property(5, L"Color").returns(*color);
  ASSERT_TRUE(walk());
  const Lines calls =
      host.log.only({"GetTypeInfo(", "GetTypeAttr", "QueryInterface", "GetFuncDesc", "GetDocumentation",
                     "GetIDsOfNames", "GetVarDesc", "GetContainingTypeLib"});
  EXPECT_EQ(calls.size(), 20U);

  for (const std::string& call : calls) {
    SCOPED_TRACE(call);
    host.on(call).nth(1).leaveThenFail();
    host.mark();
    walk();
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(GetPropTypeInfoTest, WhicheverCallThrowsItsDescriptionIsTheErrorText) {
  color->member(L"Red", i4(1));
  line.property(4, L"StartX").labelled(L"Start X");
  line.property(5, L"Color").returns(*color);

  int run = 1;
  for (bool failed = true; failed; ++run) {
    ASSERT_LT(run, 100);
    errorText = untouched;
    host.mark();
    host.raiseCall(run, L"no connection");

    const bool done = walk();
    failed = !host.failedCall().empty();
    SCOPED_TRACE(host.failedCall());

    EXPECT_EQ(done, !failed);
    EXPECT_EQ(error(), failed ? L"no connection" : untouched);
    EXPECT_EQ(host.balance(), "balanced");
  }
  EXPECT_GT(run, 20);
}

TEST_F(GetPropTypeInfoTest, AfterAnExceptionWhatWasListedStays) {
  line.property(4, L"StartX");
  line.property(5, L"EndX");
  host.on("ShowProperty(5)").raise(L"no connection");

  EXPECT_FALSE(walk());

  EXPECT_EQ(listed(), Names{"StartX"});
  EXPECT_EQ(puts(), Names{"StartX"});
}

TEST_F(GetPropTypeInfoTest, ExhaustedMemoryEndsTheWalkWithoutAMessage) {
  color->member(L"Red", i4(1)).member(L"Green", i4(2));
  line.property(4, L"StartX").labelled(L"Start X");
  line.property(5, L"Color").returns(*color);
  host.mark();
  bool done = false;

  refuseMemory(
      [&] {
        props = TqVector<PROPINFO>();
        done = walk();
      },
      [&] {
        EXPECT_FALSE(done);
        EXPECT_EQ(error(), untouched);
        EXPECT_EQ(host.balance(), "balanced");
      });

  EXPECT_TRUE(done);
}

}  // namespace
