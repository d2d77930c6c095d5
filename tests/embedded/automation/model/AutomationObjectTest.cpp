#include "embedded/automation/model/AutomationObject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/Watch.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

using AutomationObjectTest = ToyTest;
using Texts = std::vector<std::wstring>;

constexpr DISPID unknownId = 4711;

// --- identity and size ---

// Half of it are the points that it was asked for.
static_assert(sizeof(EntityObject) <= 20 * sizeof(void*), "fifty thousand are made for one selection");

TEST_F(AutomationObjectTest, AllInterfacesAreOneObject) {
  const Bound made = bound();
  const auto identity = ask<IDispatch>(made.dispatch());
  const std::initializer_list<IID> all = {IID_IUnknown,
                                          IID_IDispatch,
                                          velt::IID_IVeltBaseObject,
                                          IID_IOPMPropertyExtension,
                                          IID_IOPMPropertyExpander,
                                          IID_ICategorizeProperties,
                                          IID_IPerPropertyBrowsing,
                                          velt::IID_IVkPiPropertyDisplay};
  for (const IID& iid : all) {
    void* asked = nullptr;
    ASSERT_EQ(S_OK, made.dispatch().QueryInterface(iid, &asked));
    const auto face = InterfaceHolder<IUnknown>::owning(static_cast<IUnknown*>(asked));
    void* root = nullptr;
    ASSERT_EQ(S_OK, face->QueryInterface(IID_IUnknown, &root));
    const auto held = InterfaceHolder<IUnknown>::owning(static_cast<IUnknown*>(root));
    EXPECT_EQ(static_cast<void*>(&made.dispatch()), root);
  }
}

TEST_F(AutomationObjectTest, TheClassesReferencesAreCountedUnderItsName) {
  const Bound made = bound();
  EXPECT_EQ(1, balance.now().at("VeltToy"));
}

TEST_F(AutomationObjectTest, MakingAnObjectIsOneAllocation) {
  const auto counting = platform::AllocationFault::countOnly();
  const Bound made = bound();
  EXPECT_EQ(1U, counting.allocations());
}

// --- binding ---

TEST_F(AutomationObjectTest, BindsToAnObjectOfItsKindOnly) {
  const Bound made = unbound();
  VkDbObjectId line = drawing->entities()[1];
  VkDbObjectId toyId = drawing->entities()[0];
  VkDbObjectId madeUp = VkDbObjectId().setFromOldId(123456789);
  VkDbObjectId null;
  const auto base = made.as<IVeltBaseObject>();
  for (VkDbObjectId* id : {&line, &madeUp, &null}) {
    EXPECT_EQ(E_INVALIDARG, base->SetObjectId(*id, VkDbObjectId::kNull, nullptr));
  }
  VkDbObjectId answer = madeUp;
  EXPECT_EQ(E_UNEXPECTED, base->GetObjectId(&answer));
  EXPECT_EQ(madeUp, answer);
  EXPECT_EQ(S_OK, base->SetObjectId(toyId, VkDbObjectId::kNull, nullptr));
  EXPECT_EQ(S_OK, base->GetObjectId(&answer));
  EXPECT_EQ(toyId, answer);
  EXPECT_EQ(E_POINTER, base->GetObjectId(nullptr));
}

TEST_F(AutomationObjectTest, AClassForAnythingBindsToAnything) {
  const Bound made = unbound(CLSID_VeltLeader);
  VkDbObjectId line = drawing->entities()[1];
  EXPECT_EQ(S_OK, made.as<IVeltBaseObject>()->SetObjectId(line, VkDbObjectId::kNull, nullptr));
}

TEST_F(AutomationObjectTest, AnUnboundObjectSaysSo) {
  const Answer answer = unbound().get(L"Real");
  EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
  EXPECT_EQ(E_UNEXPECTED, answer.scode);
  EXPECT_NE(std::wstring::npos, answer.description.find(L"not bound"));
}

TEST_F(AutomationObjectTest, AnErasedEntityIsNotRead) {
  const Bound made = bound();
  drawing->setErased(database::resolve(drawing->entities()[0])->record, true);
  const Answer answer = made.get(L"Real");
  EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
  EXPECT_EQ(E_FAIL, answer.scode);
  EXPECT_NE(std::wstring::npos, answer.description.find(L"erased"));
}

TEST_F(AutomationObjectTest, AClosedDrawingIsNotRead) {
  const Bound made = bound();
  drawing.reset();
  const Answer answer = made.get(L"Real");
  EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
  EXPECT_EQ(E_FAIL, answer.scode);
  VariantHolder value;
  EXPECT_EQ(E_FAIL, made.as<IOPMPropertyExpander>()->GetElementValue(11, 0, value.put()));
}

TEST_F(AutomationObjectTest, AnEntityInThePlaceOfAClosedDrawingsIsNotMistakenForIt) {
  const Bound made = bound();
  const VkDbObjectId before = drawing->entities()[0];
  drawing.reset();
  Sample others;
  for (int i = 0; i < 100; ++i)
    others.entity("TOY", {});
  drawing = others.open();
  const std::span<const VkDbObjectId> all = drawing->entities();
  ASSERT_TRUE(std::any_of(all.begin(), all.end(), [&](VkDbObjectId id) {
    return static_cast<std::uint32_t>(id.asOldId()) == static_cast<std::uint32_t>(before.asOldId());
  })) << "or the test tells nothing";

  EXPECT_EQ(E_FAIL, made.get(L"Real").scode);
  CALPOLESTR strings{};
  CADWORD cookies{};
  EXPECT_EQ(E_FAIL, made.as<IOPMPropertyExpander>()->GetElementStrings(11, &strings, &cookies));
}

// --- type information ---

TEST_F(AutomationObjectTest, GivesItsClassesTypeInformation) {
  const Bound made = bound();
  UINT count = 0;
  EXPECT_EQ(S_OK, made.dispatch().GetTypeInfoCount(&count));
  EXPECT_EQ(1U, count);
  InterfaceHolder<ITypeInfo> info;
  ASSERT_EQ(S_OK, made.dispatch().GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()));
  EXPECT_EQ(registry.find(CLSID_VeltTable)->typeInfo, info.get()) << "the same for all objects of the class";
  ITypeInfo* none = info.get();
  EXPECT_EQ(DISP_E_BADINDEX, made.dispatch().GetTypeInfo(1, LOCALE_USER_DEFAULT, &none));
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(E_POINTER, made.dispatch().GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr));
  EXPECT_EQ(E_POINTER, made.dispatch().GetTypeInfoCount(nullptr));
}

// --- names ---

TEST_F(AutomationObjectTest, FindsNamesInAnyCase) {
  const Bound made = unbound();
  EXPECT_EQ(7, made.id(L"Real"));
  EXPECT_EQ(7, made.id(L"rEAL"));
  EXPECT_EQ(90, made.id(L"SHARED"));
  EXPECT_EQ(0, made.id(L"Real "));
  EXPECT_EQ(0, made.id(L""));
}

TEST_F(AutomationObjectTest, AnUnknownNameIsMarkedAsSuch) {
  const Bound made = unbound();
  wchar_t unknown[] = L"Unknown";
  wchar_t real[] = L"Real";
  wchar_t parameter[] = L"Parameter";
  LPOLESTR names[] = {unknown, parameter};
  DISPID ids[] = {1, 1};
  EXPECT_EQ(DISP_E_UNKNOWNNAME, made.dispatch().GetIDsOfNames(GUID_NULL, names, 2, 0, ids));
  EXPECT_EQ(DISPID_UNKNOWN, ids[0]);
  EXPECT_EQ(DISPID_UNKNOWN, ids[1]);
  names[0] = real;
  EXPECT_EQ(DISP_E_UNKNOWNNAME, made.dispatch().GetIDsOfNames(GUID_NULL, names, 2, 0, ids));
  EXPECT_EQ(7, ids[0]);
  EXPECT_EQ(DISPID_UNKNOWN, ids[1]);
}

TEST_F(AutomationObjectTest, NamesAreAskedForProperly) {
  const Bound made = unbound();
  wchar_t real[] = L"Real";
  LPOLESTR names[] = {real};
  DISPID id = 1;
  EXPECT_EQ(E_POINTER, made.dispatch().GetIDsOfNames(GUID_NULL, nullptr, 1, 0, &id));
  EXPECT_EQ(E_POINTER, made.dispatch().GetIDsOfNames(GUID_NULL, names, 1, 0, nullptr));
  EXPECT_EQ(E_INVALIDARG, made.dispatch().GetIDsOfNames(GUID_NULL, names, 0, 0, &id));
  EXPECT_EQ(unknownInterface, made.dispatch().GetIDsOfNames(IID_IDispatch, names, 1, 0, &id));
  names[0] = nullptr;
  EXPECT_EQ(E_POINTER, made.dispatch().GetIDsOfNames(GUID_NULL, names, 1, 0, &id));
}

// --- getting ---

TEST_F(AutomationObjectTest, AGetGivesTheDeclaredType) {
  const Bound made = bound();
  EXPECT_EQ(1.5, made.real(L"Real"));
  EXPECT_EQ(1.5, made.real(L"Shared"));
  EXPECT_EQ(20, made.integer(L"Choice")) << "an enumeration's value is a VT_I4";
  EXPECT_EQ((std::vector<double>{1, 2, 3}), made.numbers(L"Spot"));
  EXPECT_EQ(VT_DISPATCH, made.get(L"Color").value.get().vt);
}

TEST_F(AutomationObjectTest, AnEmptyTextIsNotNull) {
  const Answer answer = bound().get(L"Text");
  ASSERT_EQ(VT_BSTR, answer.value.get().vt);
  ASSERT_NE(nullptr, answer.value.get().bstrVal) << "two null strings compare as different";
  EXPECT_EQ(0U, SysStringLen(answer.value.get().bstrVal));
}

TEST_F(AutomationObjectTest, AGetMayAskForAMethodToo) {
  EXPECT_EQ(S_OK, invoke(bound().dispatch(), 7, DISPATCH_PROPERTYGET | DISPATCH_METHOD).result);
}

TEST_F(AutomationObjectTest, ACallThatIsNeitherGetNorPutFindsNoMember) {
  for (const int flags : {0, int{DISPATCH_METHOD}, DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT, 16}) {
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND,
              invoke(bound().dispatch(), 7, static_cast<WORD>(flags), {number(1)}).result)
        << flags;
  }
}

TEST_F(AutomationObjectTest, AValueThatCannotBeToldIsEmpty) {
  const Bound made = bound();
  for (const DISPID id : {31, 32, 33, 34}) {
    VARIANT result = number(0);
    DISPPARAMS none{};
    EXPECT_GT(
        0, made.dispatch().Invoke(id, GUID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr));
    EXPECT_EQ(VT_EMPTY, result.vt) << id;
  }
}

TEST_F(AutomationObjectTest, AGetOfNoPropertyLeavesTheResultAlone) {
  const VARIANT before = number(42);
  VARIANT result = before;
  DISPPARAMS none{};
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, bound().dispatch().Invoke(unknownId, GUID_NULL, 0, DISPATCH_PROPERTYGET,
                                                             &none, &result, nullptr, nullptr));
  EXPECT_EQ(0, std::memcmp(&before, &result, sizeof result));
}

TEST_F(AutomationObjectTest, ARefusalBecomesExceptionInformation) {
  const Answer answer = bound().get(L"Refusal");
  EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
  EXPECT_EQ(E_FAIL, answer.scode);
  EXPECT_EQ(L"VeltToy", answer.source);
  EXPECT_EQ(L"Not today.", answer.description);
}

TEST_F(AutomationObjectTest, ExhaustedMemoryAndMistakesAreResultsToo) {
  const Bound made = bound();
  EXPECT_EQ(E_OUTOFMEMORY, made.get(L"Overflow").result);
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"Mistake").result);
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"WrongType").result);
  EXPECT_EQ(E_UNEXPECTED, made.get(L"WrongType").scode);
  const auto fault = platform::AllocationFault::failFrom(1, platform::Heap::Strings);
  EXPECT_EQ(E_OUTOFMEMORY, made.get(L"Text").result);
}

TEST_F(AutomationObjectTest, ACallIsMadeProperly) {
  const Bound made = bound();
  VARIANT result{};
  VARIANT argument = number(1);
  DISPPARAMS none{};
  DISPPARAMS one{&argument, nullptr, 1, 0};
  IDispatch& object = made.dispatch();
  EXPECT_EQ(E_POINTER,
            object.Invoke(7, GUID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, &result, nullptr, nullptr));
  EXPECT_EQ(E_POINTER,
            object.Invoke(7, GUID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr));
  EXPECT_EQ(DISP_E_BADPARAMCOUNT,
            object.Invoke(7, GUID_NULL, 0, DISPATCH_PROPERTYGET, &one, &result, nullptr, nullptr));
  EXPECT_EQ(unknownInterface,
            object.Invoke(7, IID_IDispatch, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND,
            object.Invoke(unknownId, GUID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr));
}

// --- putting ---

TEST_F(AutomationObjectTest, APutReachesTheSetterConverted) {
  const Bound made = bound();
  EXPECT_EQ(S_OK, made.put(L"Real", number(2.5)).result);
  EXPECT_EQ(S_OK, made.put(L"Real", integer(3)).result);
  EXPECT_EQ((std::vector<double>{2.5, 3}), toy.put);
}

TEST_F(AutomationObjectTest, AReadOnlyPropertyHasNoPut) {
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, bound().put(L"Shared", number(1)).result);
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, bound().put(L"Stored", number(1)).result) << "though it could be written";
  EXPECT_EQ(E_ACCESSDENIED, bound().as<IOPMPropertyExpander>()->SetElementValue(39, 0, number(1)));
}

TEST_F(AutomationObjectTest, AnObstacleRefusesThePutWithItsReason) {
  for (const wchar_t* const name : {L"Told", L"Untold"}) {
    toy.real = -1;
    EXPECT_EQ(reasons::followsFromBoth.sentence, bound().put(name, number(1)).description);
    EXPECT_TRUE(toy.put.empty());
    toy.real = 0;
    EXPECT_EQ(S_OK, bound().put(name, number(1)).result);
    toy.put.clear();
  }
}

TEST_F(AutomationObjectTest, AnObstacleThatShowsMakesTheRowReadOnlyThere) {
  const auto isEditable = [&](DISPID id) {
    BOOL editable = 55;
    EXPECT_EQ(S_OK, bound().as<IOPMPropertyExtension>()->Editable(id, &editable));
    return editable;
  };
  toy.real = -1;
  EXPECT_EQ(0, isEditable(40));
  EXPECT_EQ(1, isEditable(41)) << "only the put tells";
  toy.real = 0;
  EXPECT_EQ(1, isEditable(40));
}

TEST_F(AutomationObjectTest, APutByReferenceIsForObjectsOnly) {
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND,
            invoke(bound().dispatch(), 7, DISPATCH_PROPERTYPUTREF, {number(1)}).result);
}

TEST_F(AutomationObjectTest, APutThatCannotBeConvertedIsATypeMismatch) {
  const Bound made = bound();
  VARIANT array = toVariant(Vector3{1, 2, 3}, VT_VARIANT);
  UINT argument = 99;
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS params{&array, &put, 1, 1};
  EXPECT_EQ(DISP_E_TYPEMISMATCH, made.dispatch().Invoke(7, GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params,
                                                        nullptr, nullptr, &argument));
  EXPECT_EQ(0U, argument);
  EXPECT_EQ(DISP_E_TYPEMISMATCH, made.dispatch().Invoke(7, GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params,
                                                        nullptr, nullptr, nullptr));
  VariantClear(&array);
  EXPECT_TRUE(toy.put.empty());
}

TEST_F(AutomationObjectTest, APutNamesItsArgument) {
  const Bound made = bound();
  VARIANT values[] = {number(1), number(2)};
  DISPID put = DISPID_PROPERTYPUT;
  DISPID other = 5;
  const auto result = [&](DISPPARAMS params) {
    return made.dispatch().Invoke(7, GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr);
  };
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, result({values, &put, 0, 1}));
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, result({values, &put, 2, 1}));
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, result({values, nullptr, 1, 0}));
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, result({values, nullptr, 1, 1}));
  EXPECT_EQ(E_INVALIDARG, result({values, &other, 1, 1}));
  EXPECT_EQ(E_POINTER, result({nullptr, &put, 1, 1}));
  EXPECT_TRUE(toy.put.empty());
}

TEST_F(AutomationObjectTest, APutThatIsRefusedHalfWayChangesNothing) {
  const Bound made = bound();
  const std::string before = drawing->document().bytes();
  const Answer refused = made.put(L"Half", number(1));
  EXPECT_EQ(DISP_E_EXCEPTION, refused.result);
  EXPECT_EQ(E_FAIL, refused.scode);
  EXPECT_EQ(L"Only half of it.", refused.description);
  EXPECT_EQ(before, drawing->document().bytes());
  EXPECT_EQ(S_OK, made.put(L"Half", number(-1)).result);
  EXPECT_NE(before, drawing->document().bytes());
}

TEST_F(AutomationObjectTest, AValueThatDoesNotComeBackIsRefusedAndChangesNothing) {
  toy.forgets = true;
  const Bound made = bound();
  const std::string before = drawing->document().bytes();
  const Answer refused = made.put(L"Half", number(-1));
  EXPECT_EQ(DISP_E_EXCEPTION, refused.result);
  EXPECT_EQ(E_FAIL, refused.scode);
  EXPECT_EQ(
      L"The drawing would give back 1.5 instead: it cannot hold this value here, or the data of the entity "
      L"is "
      L"damaged.",
      refused.description);
  EXPECT_EQ(before, drawing->document().bytes());
  EXPECT_EQ(E_FAIL, made.putElement(L"Spot", 1, 9));
  EXPECT_EQ(E_FAIL, made.putElement(L"Groups", 3, 8));
}

TEST_F(AutomationObjectTest, ANumberThatDoesNotComeBackIsRefusedHoweverLittleItDiffers) {
  toy.forgets = true;
  const Bound made = bound();
  const std::string before = drawing->document().bytes();
  EXPECT_EQ(E_FAIL, made.put(L"Half", number(1.5 + 1e-12)).scode);
  EXPECT_EQ(E_FAIL, made.putElement(L"Spot", 1, 2 + 1e-12));
  EXPECT_EQ(E_FAIL, made.putElement(L"Groups", 3, 103 + 1e-12));
  EXPECT_EQ(before, drawing->document().bytes());
}

TEST_F(AutomationObjectTest, AnEntityOnALockedLayerTakesNoPut) {
  drawing = Sample().layer("Walls", {{70, "4"}}).entity("TOY", {{8, "Walls"}}).open();
  const Bound made = bound();
  const Answer refused = made.put(L"Real", number(1));
  EXPECT_EQ(DISP_E_EXCEPTION, refused.result);
  EXPECT_EQ(E_ACCESSDENIED, refused.scode);
  EXPECT_EQ(L"The layer Walls is locked.", refused.description);
  EXPECT_EQ(E_ACCESSDENIED, made.putElement(L"Spot", 0, 1));
  EXPECT_TRUE(toy.put.empty());
}

TEST_F(AutomationObjectTest, APutNeedsAFormatThatHasAPlaceForIt) {
  EXPECT_EQ(E_FAIL, bound().put(L"Newer", number(1)).scode);
  EXPECT_TRUE(toy.put.empty());
  drawing = Sample().version("AC1018").entity("TOY").open();
  EXPECT_EQ(S_OK, bound().put(L"Newer", number(1)).result);
}

TEST_F(AutomationObjectTest, AnEnumerationTakesItsMembersOnly) {
  EXPECT_EQ(E_INVALIDARG, bound().put(L"Tens", integer(15)).scode);
  EXPECT_TRUE(toy.put.empty());
  EXPECT_EQ(S_OK, bound().put(L"Tens", integer(10)).result);
  EXPECT_EQ(std::vector<double>{10}, toy.put);
}

// --- how properties are shown ---

TEST_F(AutomationObjectTest, GivesLabels) {
  const auto extension = unbound().as<IOPMPropertyExtension>();
  StringHolder name;
  EXPECT_EQ(S_OK, extension->GetDisplayName(7, name.put()));
  EXPECT_EQ(L"A real", name.view());
  BSTR untouched = name.get();
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, extension->GetDisplayName(unknownId, &untouched));
  EXPECT_EQ(name.get(), untouched);
  EXPECT_EQ(E_POINTER, extension->GetDisplayName(7, nullptr));
  const auto fault = platform::AllocationFault::failFrom(1, platform::Heap::Strings);
  EXPECT_EQ(E_OUTOFMEMORY, extension->GetDisplayName(7, &untouched));
}

TEST_F(AutomationObjectTest, FlagsAreExactlyOneByte) {
  const auto extension = bound().as<IOPMPropertyExtension>();
  unsigned char bytes[] = {0xAA, 0xAA, 0xAA};
  auto* middle = static_cast<BOOL*>(static_cast<void*>(&bytes[1]));
  EXPECT_EQ(S_OK, extension->Editable(7, middle));
  EXPECT_EQ(1, bytes[1]);
  EXPECT_EQ(S_OK, extension->Editable(90, middle));
  EXPECT_EQ(0, bytes[1]);
  EXPECT_EQ(S_OK, extension->ShowProperty(7, middle));
  EXPECT_EQ(1, bytes[1]);
  EXPECT_EQ(0xAA, bytes[0]);
  EXPECT_EQ(0xAA, bytes[2]);
}

TEST_F(AutomationObjectTest, FlagsOfUnknownPropertiesAreNotWritten) {
  const auto extension = bound().as<IOPMPropertyExtension>();
  BOOL flag = 55;
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, extension->Editable(unknownId, &flag));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, extension->ShowProperty(unknownId, &flag));
  EXPECT_EQ(55, flag);
  EXPECT_EQ(E_POINTER, extension->Editable(7, nullptr));
  EXPECT_EQ(E_POINTER, extension->ShowProperty(7, nullptr));
}

TEST_F(AutomationObjectTest, ARowIsShownForItsVariantsOnly) {
  const Bound made = bound();
  for (const auto& [variant, expected] : {std::pair{0, 0}, {1, 1}, {2, 0}, {3, 1}}) {
    toy.variant = variant;
    EXPECT_EQ(expected, made.shown(L"Sometimes")) << variant;
    EXPECT_EQ(1, made.shown(L"Real")) << variant;
  }
}

TEST_F(AutomationObjectTest, WhatDependsOnTheVariantNeedsAnEntity) {
  BOOL show = 55;
  EXPECT_EQ(E_UNEXPECTED, unbound().as<IOPMPropertyExtension>()->ShowProperty(23, &show));
  EXPECT_EQ(55, show);
}

// --- elements ---

TEST_F(AutomationObjectTest, ThePartsOfAPointAreLabelledAfterTheRow) {
  const Bound made = bound();
  EXPECT_EQ((Texts{L"Spot X", L"Spot Y", L"Spot Z"}), made.elementLabels(L"Spot"));
  EXPECT_EQ(1, made.element(L"Spot", 0));
  EXPECT_EQ(2, made.element(L"Spot", 1));
  EXPECT_EQ(3, made.element(L"Spot", 2));
  SHORT grouping = 55;
  long groups = 55;
  const auto expander = made.as<IOPMPropertyExpander>();
  EXPECT_EQ(S_OK, expander->GetElementGrouping(11, &grouping));
  EXPECT_EQ(0, grouping);
  EXPECT_EQ(S_OK, expander->GetGroupCount(11, &groups));
  EXPECT_EQ(1, groups);
}

TEST_F(AutomationObjectTest, GroupsRepeatTheirLabels) {
  const Bound made = bound();
  EXPECT_EQ((Texts{L"First", L"Second", L"First", L"Second"}), made.elementLabels(L"Groups"));
  EXPECT_EQ(103, made.element(L"Groups", 3));
  SHORT grouping = 0;
  long groups = 0;
  const auto expander = made.as<IOPMPropertyExpander>();
  EXPECT_EQ(S_OK, expander->GetElementGrouping(12, &grouping));
  EXPECT_EQ(7, grouping);
  EXPECT_EQ(S_OK, expander->GetGroupCount(12, &groups));
  EXPECT_EQ(2, groups);
  toy.groups = 0;
  EXPECT_EQ(Texts(), made.elementLabels(L"Groups"));
}

TEST_F(AutomationObjectTest, AValueThatIsThereAlreadyIsNotPutAgain) {
  const Bound made = bound();
  toy.real = 2.5;
  EXPECT_EQ(S_OK, made.put(L"Real", number(2.5)).result);
  EXPECT_TRUE(toy.put.empty());
  EXPECT_EQ(S_OK, made.putElement(L"Spot", 1, 2));
  EXPECT_TRUE(toy.put.empty());
  EXPECT_EQ(S_OK, made.put(L"Real", number(std::nextafter(2.5, 3))).result)
      << "the next number is another one";
  EXPECT_EQ(1U, toy.put.size());
}

TEST_F(AutomationObjectTest, AValueThatCannotBeReadCanBePut) {
  const Bound made = bound();
  toy.real = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(E_FAIL, made.get(L"Real").scode);
  EXPECT_EQ(S_OK, made.put(L"Real", number(2.5)).result);
  EXPECT_EQ(2.5, made.real(L"Real"));
}

TEST_F(AutomationObjectTest, OneElementIsPut) {
  const Bound made = bound();
  EXPECT_EQ(S_OK, made.putElement(L"Spot", 1, 9));
  EXPECT_EQ((std::vector<double>{1, 9, 3}), toy.put);
  EXPECT_EQ(S_OK, made.putElement(L"Groups", 3, 8));
  EXPECT_EQ((std::vector<double>{3, 8}), toy.put);
}

TEST_F(AutomationObjectTest, EachValueThatIsReadOrWrittenIsWatchedAsSuch) {
  const Bound made = bound();
  const auto expander = made.as<IOPMPropertyExpander>();
  const platform::Watch watch([](const platform::Progress&) { return true; }, std::chrono::hours(1));
  const auto counted = [&](const std::function<void()>& call) {
    const platform::Progress before = watch.progress();
    call();
    const platform::Progress after = watch.progress();
    return std::pair(after.valuesRead - before.valuesRead, after.valuesWritten - before.valuesWritten);
  };
  using Steps = std::pair<std::uint64_t, std::uint64_t>;
  VARIANT value{};
  EXPECT_EQ(Steps(1, 0), counted([&] { static_cast<void>(made.get(L"Real")); }));
  EXPECT_EQ(Steps(0, 1), counted([&] { made.put(L"Real", number(7)); }));
  EXPECT_EQ(Steps(1, 0), counted([&] { expander->GetElementValue(11, 0, &value); }));
  EXPECT_EQ(Steps(0, 1), counted([&] { made.putElement(L"Spot", 1, 9); }));
}

TEST_F(AutomationObjectTest, ElementsThatDoNotExistAreRefused) {
  const Bound made = bound();
  const auto expander = made.as<IOPMPropertyExpander>();
  VARIANT value = number(42);
  EXPECT_EQ(E_INVALIDARG, expander->GetElementValue(11, 3, &value));
  EXPECT_EQ(E_INVALIDARG, expander->GetElementValue(12, 4, &value));
  EXPECT_EQ(E_INVALIDARG, expander->GetElementValue(12, 0xFFFFFFFF, &value));
  EXPECT_EQ(42, value.dblVal);
  EXPECT_EQ(E_INVALIDARG, made.putElement(L"Spot", 3, 1));
  VARIANT text{};
  EXPECT_EQ(DISP_E_TYPEMISMATCH, expander->SetElementValue(11, 0, text));
  EXPECT_TRUE(toy.put.empty());
}

TEST_F(AutomationObjectTest, APropertyThatIsNotExpandedHasNoElements) {
  const auto expander = bound().as<IOPMPropertyExpander>();
  VARIANT value = number(42);
  CALPOLESTR strings{};
  CADWORD cookies{};
  SHORT grouping = 55;
  long groups = 55;
  for (const auto& [id, expected] : {std::pair{DISPID{7}, E_NOTIMPL}, {unknownId, DISP_E_MEMBERNOTFOUND}}) {
    EXPECT_EQ(expected, expander->GetElementValue(id, 0, &value));
    EXPECT_EQ(expected, expander->SetElementValue(id, 0, value));
    EXPECT_EQ(expected, expander->GetElementStrings(id, &strings, &cookies));
    EXPECT_EQ(expected, expander->GetElementGrouping(id, &grouping));
    EXPECT_EQ(expected, expander->GetGroupCount(id, &groups));
  }
  EXPECT_EQ(42, value.dblVal);
  EXPECT_EQ(55, grouping);
  EXPECT_EQ(55, groups);
  EXPECT_EQ(E_POINTER, expander->GetElementValue(11, 0, nullptr));
  EXPECT_EQ(E_POINTER, expander->GetElementStrings(11, nullptr, &cookies));
  EXPECT_EQ(E_POINTER, expander->GetElementStrings(11, &strings, nullptr));
  EXPECT_EQ(E_POINTER, expander->GetElementGrouping(11, nullptr));
  EXPECT_EQ(E_POINTER, expander->GetGroupCount(11, nullptr));
}

TEST_F(AutomationObjectTest, ElementsAreAllGivenOrNone) {
  const auto expander = bound().as<IOPMPropertyExpander>();
  std::uint64_t calls = 0;
  {
    const auto counting = platform::AllocationFault::countOnly();
    EXPECT_EQ(4U, bound().elementLabels(L"Groups").size());
    calls = counting.allocations() - 1;  // the object itself
  }
  for (std::uint64_t n = 1; n <= calls; ++n) {
    const auto fault = platform::AllocationFault::failNth(n);
    CALPOLESTR strings{77, nullptr};
    CADWORD cookies{77, nullptr};
    EXPECT_EQ(E_OUTOFMEMORY, expander->GetElementStrings(12, &strings, &cookies)) << n;
    EXPECT_EQ(77U, strings.cElems);
    EXPECT_EQ(77U, cookies.cElems);
  }
}

// --- categories ---

TEST_F(AutomationObjectTest, MapsPropertiesToCategories) {
  const auto categories = unbound().as<ICategorizeProperties>();
  PROPCAT category = 99;
  EXPECT_EQ(S_OK, categories->MapPropertyToCategory(7, &category));
  EXPECT_EQ(platform::number(platform::Category::Geometry), category);
  EXPECT_EQ(S_OK, categories->MapPropertyToCategory(5, &category));
  EXPECT_EQ(1, category);
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, categories->MapPropertyToCategory(unknownId, &category));
  EXPECT_EQ(1, category);
  EXPECT_EQ(E_POINTER, categories->MapPropertyToCategory(7, nullptr));
}

TEST_F(AutomationObjectTest, NamesCategoriesWhateverTheLocale) {
  const auto categories = unbound().as<ICategorizeProperties>();
  StringHolder own;
  StringHolder predefined;
  EXPECT_EQ(S_OK, categories->GetCategoryName(1, 1282, own.put()));
  EXPECT_EQ(L"Gradient", own.view());
  EXPECT_EQ(S_OK,
            categories->GetCategoryName(platform::number(platform::Category::Geometry), 0, predefined.put()));
  EXPECT_EQ(L"Geometry", predefined.view());
  BSTR untouched = nullptr;
  EXPECT_EQ(E_INVALIDARG, categories->GetCategoryName(0, 0, &untouched));
  EXPECT_EQ(E_INVALIDARG, categories->GetCategoryName(2, 0, &untouched));
  EXPECT_EQ(nullptr, untouched);
  EXPECT_EQ(E_POINTER, categories->GetCategoryName(1, 0, nullptr));
}

// --- choices ---

TEST_F(AutomationObjectTest, OffersTheMembersOfAnEnumeration) {
  const Bound made = bound();
  EXPECT_EQ((Texts{L"ten of them", L"twenty of them"}), made.choices(L"Choice"));
  const VariantHolder value = made.choiceValue(L"Choice", 1);
  EXPECT_EQ(VT_I4, value.get().vt);
  EXPECT_EQ(20, value.get().lVal);
}

TEST_F(AutomationObjectTest, OffersTheLayersOfTheMoment) {
  const Bound made = bound();
  EXPECT_EQ((Texts{L"0", L"Walls"}), made.choices(L"Text"));
  EXPECT_EQ(L"Walls", textOf(made.choiceValue(L"Text", 1).get()));
  drawing->edit(drawing->layers().find(L"Walls")->record, [&](dxf::Document& document) {
    document.set(drawing->layers().find(L"Walls")->record, 2, dxf::anySubclass, "Doors");
  });
  EXPECT_EQ((Texts{L"0", L"Doors"}), made.choices(L"Text"));
}

TEST_F(AutomationObjectTest, WithoutChoicesNothingIsOffered) {
  const auto browsing = bound().as<IPerPropertyBrowsing>();
  CALPOLESTR strings{77, nullptr};
  CADWORD cookies{77, nullptr};
  EXPECT_EQ(E_NOTIMPL, browsing->GetPredefinedStrings(7, &strings, &cookies));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, browsing->GetPredefinedStrings(unknownId, &strings, &cookies));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, browsing->GetPredefinedStrings(-23, &strings, &cookies));
  EXPECT_EQ(77U, strings.cElems);
  EXPECT_EQ(77U, cookies.cElems);
  VARIANT value = number(42);
  EXPECT_EQ(E_INVALIDARG, browsing->GetPredefinedValue(7, 0, &value));
  EXPECT_EQ(E_INVALIDARG, browsing->GetPredefinedValue(3, 2, &value));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, browsing->GetPredefinedValue(unknownId, 0, &value));
  EXPECT_EQ(42, value.dblVal);
  EXPECT_EQ(E_POINTER, browsing->GetPredefinedStrings(3, nullptr, &cookies));
  EXPECT_EQ(E_POINTER, browsing->GetPredefinedStrings(3, &strings, nullptr));
  EXPECT_EQ(E_POINTER, browsing->GetPredefinedValue(3, 0, nullptr));
}

TEST_F(AutomationObjectTest, ChoicesAreAllGivenOrNone) {
  const auto browsing = bound().as<IPerPropertyBrowsing>();
  constexpr std::uint64_t allocations = 2 + 2;  // both arrays and both texts
  for (std::uint64_t n = 1; n <= allocations; ++n) {
    const auto fault = platform::AllocationFault::failNth(n);
    CALPOLESTR strings{77, nullptr};
    CADWORD cookies{77, nullptr};
    EXPECT_EQ(E_OUTOFMEMORY, browsing->GetPredefinedStrings(3, &strings, &cookies)) << n;
    EXPECT_EQ(77U, strings.cElems);
    EXPECT_EQ(77U, cookies.cElems);
  }
}

TEST_F(AutomationObjectTest, HasNoPagesAndNoTextsOfItsOwnForValues) {
  const auto browsing = bound().as<IPerPropertyBrowsing>();
  BSTR text = nullptr;
  CLSID page{};
  EXPECT_EQ(E_NOTIMPL, browsing->GetDisplayString(7, &text));
  EXPECT_EQ(E_NOTIMPL, browsing->MapPropertyToPage(7, &page));
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, browsing->GetDisplayString(unknownId, &text));
  EXPECT_EQ(E_POINTER, browsing->GetDisplayString(7, nullptr));
}

// --- weights ---

TEST_F(AutomationObjectTest, GivesWeights) {
  const auto display = unbound().as<IVkPiPropertyDisplay>();
  long weight = 77;
  EXPECT_EQ(S_OK, display->GetPropertyWeight(integer(7), &weight));
  EXPECT_EQ(40, weight);
  EXPECT_EQ(S_OK, display->GetPropertyWeight(integer(5), &weight));
  EXPECT_EQ(-20, weight) << "all 64 bits are written";
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, display->GetPropertyWeight(integer(unknownId), &weight));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, display->GetPropertyWeight(number(7), &weight));
  EXPECT_EQ(-20, weight);
  EXPECT_EQ(E_POINTER, display->GetPropertyWeight(integer(7), nullptr));
}

TEST_F(AutomationObjectTest, LeavesColorsAndControlsToThePalette) {
  const auto display = bound().as<IVkPiPropertyDisplay>();
  BSTR control = nullptr;
  ULONG color = 5;
  BOOL full = 5;
  EXPECT_EQ(E_NOTIMPL, display->GetCustomPropertyCtrl(integer(7), 0, &control));
  EXPECT_EQ(E_NOTIMPL, display->GetPropertyColor(integer(7), &color));
  EXPECT_EQ(E_NOTIMPL, display->GetPropertyTextColor(integer(7), &color));
  EXPECT_EQ(E_NOTIMPL, display->IsFullView(integer(7), &full));
}

}  // namespace
}  // namespace velt::automation
