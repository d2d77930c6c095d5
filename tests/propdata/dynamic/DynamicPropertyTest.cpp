#include <gtest/gtest.h>

#include "host/automation/IVeltBaseObject.h"
#include "host/com/ComError.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/LayerTest.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToyObject.h"

namespace velt::toys {
namespace {

class DynamicProperty : public LayerTest {
 protected:
  DynamicProperty() { entity.objectId.setFromOldId(77); }
  ~DynamicProperty() override { VariantClear(&out.value); }

  int describe() {
    host.mark();
    return GetDynamicPropertyPropInfo(entity.dispatch(), dynamic.unknown(), out);
  }
  int describeOlder() {
    host.mark();
    return GetDynamicPropertyPropInfoDefault(entity.dispatch(), dynamic.unknown(), out);
  }
  void offer(int count) {
    for (int i = 0; i < count; ++i)
      dynamic.items.push_back({L"item", ToyValue(i4(i))});
  }

  // A property that has an answer to everything.
  void answerAll() {
    dynamic.displayName = L"Material";
    dynamic.description = L"What it is made of";
    dynamic.valueTypeName = L"VELT_LAYER";
    dynamic.value = ToyValue(r8(2.5));
    dynamic.readOnly = BOOL{1};
    dynamic.category = 42;
    dynamic.categoryName = L"Building";
    offer(2);
  }
  // A record with a mark in every field, so that it shows which of them are written.
  void markAll() {
    out.clsid = CLSID_VeltLine;
    out.pDispatch = other.dispatch();
    out.dispId = 1;
    out.name = L"old name";
    out.description = L"old description";
    out.displayName = L"old label";
    out.value = i4(9);
    out.categoryId = 3;
    out.categoryName = L"old category";
    out.isElement = true;
    out.elementCookie = 4;
    out.hasChoices = false;
    out.choiceNames.push_back(L"old choice");
    out.choiceValues.push_back(5);
    out.isWritable = true;
    out.isEditable = true;
    out.isVaries = true;
    out.customType = 6;
    out.groupCount = 7;
    out.elementGrouping = 8;
    out.weight = 9;
    out.sortByCookie = true;
    out.objectId.setFromOldId(10);
    out.valueType = VT_BOOL;
    out.hasValue = true;
    out.pDynamicProperty = other.unknown();
    out.dynSources.push_back({other.unknown(), dynamic.unknown()});
    out.choiceReals.push_back(1.5);
  }
  // Every field, one per line, in the order of the record.
  Lines fields() const {
    Lines lines{say("clsid ", nameOf(out.clsid)),
                say("pDispatch of ", host.nameOfOwner(out.pDispatch)),
                say("dispId ", out.dispId),
                "name " + narrow(out.name.c_str()),
                "description " + narrow(out.description.c_str()),
                "displayName " + narrow(out.displayName.c_str()),
                "value " + print(out.value),
                say("categoryId ", out.categoryId),
                "categoryName " + narrow(out.categoryName.c_str()),
                say("isElement ", out.isElement),
                say("elementCookie ", out.elementCookie),
                say("hasChoices ", out.hasChoices)};
    for (const CStdStr<wchar_t>& name : out.choiceNames)
      lines.push_back("choiceNames " + narrow(name.c_str()));
    for (const int value : out.choiceValues)
      lines.push_back(say("choiceValues ", value));
    lines.insert(lines.end(),
                 {say("isWritable ", out.isWritable), say("isEditable ", out.isEditable),
                  say("isVaries ", out.isVaries), say("customType ", out.customType),
                  say("groupCount ", out.groupCount), say("elementGrouping ", out.elementGrouping),
                  say("weight ", out.weight), say("sortByCookie ", out.sortByCookie),
                  say("objectId ", out.objectId.asOldId()), "valueType " + nameOfType(out.valueType),
                  say("hasValue ", out.hasValue)});
    for (const IID& iid : {IID_IUnknown, IID_IDynamicProperty2, IID_IDynamicProperty}) {
      if (out.pDynamicProperty == dynamic.as<IUnknown>(iid))
        lines.push_back("pDynamicProperty " + nameOf(iid) + " of dynamic");
    }
    for (const DispatchDynPropSourceNode& node : out.dynSources)
      lines.push_back(say("dynSources ", node.pDispatch == other.unknown(), " ",
                          node.pDynamicProperty == dynamic.unknown()));
    for (const double real : out.choiceReals)
      lines.push_back(say("choiceReals ", real));
    return lines;
  }
  // What answerAll() makes of markAll(); only the pointer to the property differs between the generations.
  static Lines writtenFields(const char* interfaceOfProperty) {
    return {"clsid GUID_NULL",
            "pDispatch of entity",
            "dispId -23",
            "name Material",
            "description What it is made of",
            "displayName Material",
            "value VT_R8 2.5",
            "categoryId 42",
            "categoryName Building",
            "isElement 1",
            "elementCookie 4",
            "hasChoices 1",
            "choiceNames old choice",
            "choiceValues 5",
            "isWritable 1",
            "isEditable 0",
            "isVaries 1",
            "customType 541",
            "groupCount 7",
            "elementGrouping 8",
            "weight 9",
            "sortByCookie 1",
            "objectId 10",
            "valueType VT_R8",
            "hasValue 1",
            say("pDynamicProperty ", interfaceOfProperty, " of dynamic"),
            "dynSources 1 1",
            "choiceReals 1.5"};
  }

  ToyObject entity{host, "entity"};
  ToyObject other{host, "other"};
  ToyDynamicProperty dynamic{host, "dynamic"};
  PROPINFO out;
};

// --- the newer generation ------------------------------------------------------------------------------------------

TEST_F(DynamicProperty, AsksInThisOrder) {
  dynamic.value = ToyValue(i4(5));
  dynamic.valueTypeName = L"VELT_LAYER";

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(
      host.log.lines(),
      (Lines{"QueryInterface(IDynamicProperty2) on dynamic", "IsPropertyEnabled(entity) on dynamic",
             "GetGUID() on dynamic", "GetDisplayName() on dynamic", "GetDescription() on dynamic",
             "GetCurrentValueName() on dynamic", "GetCurrentValueData(entity) on dynamic",
             "IsPropertyReadOnly() on dynamic", "Release(IDynamicProperty2) on dynamic",
             "QueryInterface(IDynamicEnumProperty) on dynamic", "GetNumPropertyValues() on dynamic",
             "Release(IDynamicEnumProperty) on dynamic", "QueryInterface(ICategorizeProperties) on dynamic",
             "MapPropertyToCategory(-23) on dynamic", "GetCategoryName(1, locale 1024) on dynamic",
             "Release(ICategorizeProperties) on dynamic"}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(DynamicProperty, AnEnabledPropertyIsDescribed) {
  dynamic.displayName = L"Material";
  dynamic.description = L"What it is made of";
  dynamic.value = ToyValue(i4(5));
  dynamic.category = 42;
  dynamic.categoryName = L"Building";

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.pDispatch, entity.dispatch());
  EXPECT_EQ(out.dispId, -23);
  EXPECT_EQ(out.name.str(), L"Material");
  EXPECT_EQ(out.displayName.str(), L"Material");
  EXPECT_EQ(out.description.str(), L"What it is made of");
  EXPECT_EQ(print(out.value), "VT_I4 5");
  EXPECT_EQ(out.valueType, VT_I4);
  EXPECT_TRUE(out.isEditable);
  EXPECT_FALSE(out.hasChoices);
  EXPECT_FALSE(out.hasValue);
  EXPECT_EQ(out.categoryId, 42);
  EXPECT_EQ(out.categoryName.str(), L"Building");
}

TEST_F(DynamicProperty, TheseFieldsAreWrittenAndNoOther) {
  answerAll();
  markAll();

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(fields(), writtenFields("IDynamicProperty2"));
}

TEST_F(DynamicProperty, WhatIsSkippedLeavesEveryFieldAsItWas) {
  answerAll();
  markAll();
  const Lines before = fields();

  dynamic.enabled = BOOL{0};
  EXPECT_EQ(describe(), 0);
  EXPECT_EQ(fields(), before);
  EXPECT_EQ(describeOlder(), 0);
  EXPECT_EQ(fields(), before);

  dynamic.withhold(IID_IDynamicProperty2);
  EXPECT_EQ(describe(), 2);
  EXPECT_EQ(fields(), before);

  dynamic.enabled = BOOL{1};
  entity.withhold(IID_IVeltBaseObject);
  EXPECT_EQ(describeOlder(), 0);
  EXPECT_EQ(fields(), before);
}

TEST_F(DynamicProperty, BelongsToNoClassOfTheHost) {
  EXPECT_EQ(describe(), 1);

  EXPECT_TRUE(out.clsid == GUID_NULL);
}

TEST_F(DynamicProperty, Quirk_borrowed_dynamic_property) {
  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.pDynamicProperty, dynamic.as<IDynamicProperty2>(IID_IDynamicProperty2));
  EXPECT_EQ(dynamic.references(), 0);
}

TEST_F(DynamicProperty, WithoutTheNewerInterfaceTheOlderIsToBeTried) {
  dynamic.withhold(IID_IDynamicProperty2);

  EXPECT_EQ(describe(), 2);

  EXPECT_EQ(host.log.lines(), Lines{"QueryInterface(IDynamicProperty2) on dynamic"});
  EXPECT_EQ(out.name.str(), L"");
}

TEST_F(DynamicProperty, Quirk_only_no_interface_falls_back) {
  for (const HRESULT failure : {E_FAIL, E_ACCESSDENIED, E_OUTOFMEMORY, E_POINTER}) {
    host.on("QueryInterface(IDynamicProperty2)").fail(failure);
    EXPECT_EQ(describe(), 0) << hex(static_cast<std::uint32_t>(failure));
  }
}

TEST_F(DynamicProperty, Quirk_enabled_exactly_one) {
  for (const BOOL flag : {BOOL{0}, BOOL{-1}, BOOL{2}, BOOL{127}}) {
    dynamic.enabled = flag;
    out.name = L"as before";
    EXPECT_EQ(describe(), 0) << static_cast<int>(flag);
    EXPECT_EQ(out.name.str(), L"as before");
    EXPECT_EQ(host.balance(), "balanced");
  }
}

TEST_F(DynamicProperty, AFlagThatIsNotWrittenIsNotEnabled) {
  dynamic.enabled = std::nullopt;

  EXPECT_EQ(describe(), 0);
}

TEST_F(DynamicProperty, AFailingTestForEnabledLeavesTheRecordUntouched) {
  host.on("IsPropertyEnabled(").workThenReturn(E_FAIL);
  out.name = L"as before";

  EXPECT_EQ(describe(), 0);

  EXPECT_EQ(out.name.str(), L"as before");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(DynamicProperty, TheTypeNameGivesTheCustomType) {
  dynamic.valueTypeName = L"KELVO_COLOR";

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.customType, PropertyKind::color);
  EXPECT_EQ(host.log.count("GetCurrentValueType"), 0);
}

TEST_F(DynamicProperty, WithoutATypeNameTheTypeIsAskedAndNotUsed) {
  dynamic.value = ToyValue(r8(2.5));

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.customType, PropertyKind::unknownType);
  EXPECT_EQ(host.log.count("GetCurrentValueType()"), 1);
  EXPECT_EQ(out.valueType, VT_R8) << "the value's own type";
}

TEST_F(DynamicProperty, ATypeNameThatIsNullMeansNoCustomType) {
  dynamic.valueTypeName = L"VELT_COLOR";
  host.on("GetCurrentValueName(").answerNull();

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.customType, PropertyKind::unknownType);
}

TEST_F(DynamicProperty, AValueIsTakenOverBitForBit) {
  dynamic.value = text(L"oak");

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(print(out.value), "VT_BSTR \"oak\"");
  EXPECT_EQ(host.log.count("SysFreeString(oak)"), 0);
  EXPECT_EQ(host.balance(), "BSTR +1") << "the row holds it";
}

TEST_F(DynamicProperty, AValueThatCannotBeHadIsEmpty) {
  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.value.vt, VT_EMPTY);
  EXPECT_EQ(out.valueType, VT_EMPTY);
}

TEST_F(DynamicProperty, AReadOnlyPropertyIsNotEditableWhateverTheByte) {
  for (const BOOL flag : {BOOL{1}, BOOL{-1}, BOOL{2}}) {
    dynamic.readOnly = flag;
    EXPECT_EQ(describe(), 1);
    EXPECT_FALSE(out.isEditable) << static_cast<int>(flag);
  }
}

TEST_F(DynamicProperty, APropertyThatDoesNotTellIsEditable) {
  dynamic.readOnly = std::nullopt;

  EXPECT_EQ(describe(), 1);

  EXPECT_TRUE(out.isEditable);
}

TEST_F(DynamicProperty, Quirk_more_than_one_choice) {
  offer(1);
  EXPECT_EQ(describe(), 1);
  EXPECT_FALSE(out.hasChoices);

  offer(1);
  EXPECT_EQ(describe(), 1);
  EXPECT_TRUE(out.hasChoices);
}

TEST_F(DynamicProperty, TooFewChoicesLeaveTheFlagAsItWas) {
  out.hasChoices = true;

  EXPECT_EQ(describe(), 1);

  EXPECT_TRUE(out.hasChoices);
}

TEST_F(DynamicProperty, WithoutCategoriesTheRecordKeepsItsOwn) {
  dynamic.withhold(IID_ICategorizeProperties);
  out.categoryId = 7;
  out.categoryName = L"as before";

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.categoryId, 7);
  EXPECT_EQ(out.categoryName.str(), L"as before");
}

TEST_F(DynamicProperty, TheCategoryNameIsAskedEvenWhenTheCategoryIsNotTold) {
  dynamic.category = std::nullopt;

  EXPECT_EQ(describe(), 1);

  EXPECT_EQ(out.categoryId, 0);
  EXPECT_EQ(host.log.count("GetCategoryName(0, locale 1024)"), 1);
  EXPECT_EQ(out.categoryName.str(), L"General");
}

TEST_F(DynamicProperty, Quirk_dynamic_getters_unexamined) {
  answerAll();
  for (const char* const call :
       {"GetGUID", "GetDisplayName", "GetDescription", "GetCurrentValueData", "IsPropertyReadOnly",
        "GetNumPropertyValues", "MapPropertyToCategory", "GetCategoryName"}) {
    host.on(call).nth(1).workThenReturn(E_FAIL);
    out = PROPINFO();
    markAll();
    EXPECT_EQ(describe(), 1) << call;
    EXPECT_EQ(fields(), writtenFields("IDynamicProperty2")) << call;
  }
}

TEST_F(DynamicProperty, FailingGettersNeverLeaveTheRowOut) {
  offer(2);
  dynamic.value = text(L"oak");
  for (const char* const call :
       {"GetGUID", "GetDisplayName", "GetDescription", "GetCurrentValueName", "GetCurrentValueType",
        "GetCurrentValueData", "IsPropertyReadOnly", "QueryInterface(IDynamicEnumProperty)",
        "GetNumPropertyValues", "QueryInterface(ICategorizeProperties)", "MapPropertyToCategory",
        "GetCategoryName"}) {
    host.on(call).nth(1).fail();
    EXPECT_EQ(describe(), 1) << call;
    VariantClear(&out.value);
    EXPECT_EQ(host.balance(), "balanced") << call;
  }
}

TEST_F(DynamicProperty, AQueryThatSucceedsWithANullPointerLeavesThePropertyOut) {
  host.on("QueryInterface(IDynamicProperty2)").answerNull();
  EXPECT_EQ(describe(), 0);
}

TEST_F(DynamicProperty, AnExceptionLeavesThePropertyOutAndNothingIsLost) {
  offer(2);
  dynamic.value = text(L"oak");
  for (const char* const call : {"IsPropertyEnabled", "GetDisplayName", "GetCurrentValueName",
                                 "IsPropertyReadOnly", "GetNumPropertyValues", "GetCategoryName"}) {
    host.on(call).nth(1).raise(L"gone");
    EXPECT_EQ(describe(), 0) << call;
    EXPECT_EQ(host.balance(), "balanced") << call;
  }
}

TEST_F(DynamicProperty, EveryRefusalByOperatorNewLeavesThePropertyOutAndNothingIsLost) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  answerAll();
  dynamic.value = text(L"oak");
  for (std::uint64_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    host.mark();
    std::uint64_t refused = 0;
    int answer = -1;
    {
      const tests::AllocationSpy spy = tests::AllocationSpy::failNth(n);
      answer = GetDynamicPropertyPropInfo(entity.dispatch(), dynamic.unknown(), out);
      refused = spy.counts().failures;
    }
    EXPECT_EQ(answer, refused == 0 ? 1 : 0);
    if (refused == 0) {
      EXPECT_GT(n, 3U);
      break;
    }
    EXPECT_EQ(host.balance(), "balanced");
  }
}

// --- the older generation ------------------------------------------------------------------------------------------

TEST_F(DynamicProperty, TheOlderGenerationNamesTheEntityByItsId) {
  dynamic.withhold(IID_IDynamicProperty2);
  dynamic.value = ToyValue(i4(5));

  EXPECT_EQ(describeOlder(), 1);

  EXPECT_EQ(host.log.count("IsPropertyEnabled(id 77) on dynamic"), 1);
  EXPECT_EQ(host.log.count("GetCurrentValueData(id 77) on dynamic"), 1);
  EXPECT_EQ(out.name.str(), L"Dynamic");
  EXPECT_EQ(out.dispId, -23);
  EXPECT_EQ(out.customType, PropertyKind::unknownType);
  EXPECT_EQ(out.pDynamicProperty, dynamic.as<IDynamicProperty>(IID_IDynamicProperty));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(DynamicProperty, TheOlderGenerationAsksInThisOrder) {
  dynamic.value = ToyValue(i4(5));

  EXPECT_EQ(describeOlder(), 1);

  EXPECT_EQ(host.log.lines(), (Lines{"QueryInterface(IDynamicProperty) on dynamic",
                                     "QueryInterface(IVeltBaseObject) on entity",
                                     "GetObjectId() on entity",
                                     "Release(IVeltBaseObject) on entity",
                                     "IsPropertyEnabled(id 77) on dynamic",
                                     "GetGUID() on dynamic",
                                     "GetDisplayName() on dynamic",
                                     "GetDescription() on dynamic",
                                     "GetCurrentValueName() on dynamic",
                                     "GetCurrentValueType() on dynamic",
                                     "GetCurrentValueData(id 77) on dynamic",
                                     "IsPropertyReadOnly() on dynamic",
                                     "Release(IDynamicProperty) on dynamic",
                                     "QueryInterface(IDynamicEnumProperty) on dynamic",
                                     "GetNumPropertyValues() on dynamic",
                                     "Release(IDynamicEnumProperty) on dynamic",
                                     "QueryInterface(ICategorizeProperties) on dynamic",
                                     "MapPropertyToCategory(-23) on dynamic",
                                     "GetCategoryName(1, locale 1024) on dynamic",
                                     "Release(ICategorizeProperties) on dynamic"}));
}

TEST_F(DynamicProperty, TheOlderGenerationWritesTheSameFieldsAndNoOther) {
  answerAll();
  markAll();

  EXPECT_EQ(describeOlder(), 1);

  EXPECT_EQ(fields(), writtenFields("IDynamicProperty"));
}

TEST_F(DynamicProperty, WithoutTheOlderInterfaceItIsSkipped) {
  dynamic.withhold(IID_IDynamicProperty);

  EXPECT_EQ(describeOlder(), 0);
}

TEST_F(DynamicProperty, AnEntityWithoutABaseObjectGetsNoOlderRecord) {
  entity.withhold(IID_IVeltBaseObject);

  EXPECT_EQ(describeOlder(), 0);

  EXPECT_EQ(host.log.count("IsPropertyEnabled"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(DynamicProperty, AnEntityWithANullIdGetsNoOlderRecord) {
  entity.objectId = VkDbObjectId::kNull;

  EXPECT_EQ(describeOlder(), 0);

  EXPECT_EQ(host.log.count("IsPropertyEnabled"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(DynamicProperty, TheOlderGenerationIsEnabledByExactlyOneToo) {
  dynamic.enabled = BOOL{-1};

  EXPECT_EQ(describeOlder(), 0);
}

TEST_F(DynamicProperty, TheOlderGenerationAsksForMoreThanOneChoiceToo) {
  offer(1);
  EXPECT_EQ(describeOlder(), 1);
  EXPECT_FALSE(out.hasChoices);

  offer(1);
  EXPECT_EQ(describeOlder(), 1);
  EXPECT_TRUE(out.hasChoices);
}

}  // namespace
}  // namespace velt::toys
