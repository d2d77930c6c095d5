#include <gtest/gtest.h>

#include <algorithm>

#include "host/automation/IVeltBaseObject.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyDynamicProperty.h"
#include "tests/support/ToyObject.h"
#include "tests/support/ToySourceRegistry.h"

namespace velt::toys {
namespace {

constexpr long entityId = 77;

class PropertySources : public LayerTest {
 protected:
  PropertySources() {
    entity.objectId.setFromOldId(entityId);
    for (ToyDynamicProperty* const property : {&oak, &steel, &price}) {
      property->displayName = std::wstring(property->name().begin(), property->name().end());
    }
    materials.properties = {oak.unknown(), steel.unknown()};
    prices.properties = {price.unknown()};
  }

  std::vector<std::string> collect() {
    host.mark();
    host.log.clear();
    answer = GetDynPropSourcesPropInfo(entity.dispatch(), out);
    EXPECT_EQ(host.balance(), "balanced");
    EXPECT_EQ(inDatabase.opened, 0);
    return names(std::as_const(out));
  }
  bool hasSources() {
    COleSafeArray sources;
    return GetDynProperteySources(entity.dispatch(), sources) != 0;
  }
  using Names = std::vector<std::string>;

  ToyEntity inDatabase{host, "entityInDatabase", entityId};
  ToyObject entity{host, "entity"};
  ToySourceRegistry registry{host};
  ToyPropertySource materials{host, "materials"};
  ToyPropertySource prices{host, "prices"};
  ToyDynamicProperty oak{host, "oak"};
  ToyDynamicProperty steel{host, "steel"};
  ToyDynamicProperty price{host, "price"};
  TqVector<PROPINFO> out;
  int answer = -1;
};

TEST_F(PropertySources, TheRowsOfAllSourcesComeInTheirOrder) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);

  EXPECT_EQ(collect(), (Names{"oak", "steel", "price"}));
  EXPECT_EQ(answer, 1);
}

TEST_F(PropertySources, SourcesAreFoundByThisOrderOfCalls) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);

  COleSafeArray sources;
  host.log.clear();
  EXPECT_EQ(GetDynProperteySources(entity.dispatch(), sources), 1);

  EXPECT_EQ(host.log.only({"QueryInterface(IVeltBaseObject)", "GetObjectId", "CreateOPM",
                           "GetObjectPropertySourceNames", "GetPropertySourceAt"}),
            (Lines{"QueryInterface(IVeltBaseObject) on entity", "GetObjectId() on entity",
                   "CreateOPMInstancePropertyExtension(VkDbEntity)", "GetObjectPropertySourceNames(77)",
                   "GetPropertySourceAt(Materials)", "GetPropertySourceAt(Prices)"}));
}

TEST_F(PropertySources, AnEntityIsClosedBeforeTheFactoryIsAskedAndEachSourceReadBeforeTheNext) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);

  collect();

  EXPECT_EQ(host.log.only({"vkdbOpen", "close", "CreateOPM", "GetObjectPropertySourceNames",
                           "GetPropertySourceAt", "QueryInterface(IPropertySource)", "GetProperties(",
                           "QueryInterface(IDynamicProperty2)"}),
            (Lines{"vkdbOpenVkDbObject(77, mode 0)", "close() on entityInDatabase",
                   "CreateOPMInstancePropertyExtension(VkDbEntity)", "GetObjectPropertySourceNames(77)",
                   "GetPropertySourceAt(Materials)", "GetPropertySourceAt(Prices)",
                   "QueryInterface(IPropertySource) on materials", "GetProperties(entity) on materials",
                   "QueryInterface(IDynamicProperty2) on oak", "QueryInterface(IDynamicProperty2) on steel",
                   "QueryInterface(IPropertySource) on prices", "GetProperties(entity) on prices",
                   "QueryInterface(IDynamicProperty2) on price"}));
}

TEST_F(PropertySources, TheRegistryIsLookedUpAgainForEachNameAndTakesNoSourceBackWhenItVanishes) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  registry.removesItselfAfter = 1;

  EXPECT_EQ(collect(), (Names{"oak", "steel"}));
  EXPECT_EQ(answer, 1);
  EXPECT_EQ(host.log.count("GetPropertySourceAt"), 1);
}

TEST_F(PropertySources, ARegistryThatVanishesBeforeItKnewASourceIsAnEntityWithoutSources) {
  registry.add(L"Unknown", nullptr);
  registry.add(L"Prices", &prices);
  registry.removesItselfAfter = 1;

  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
}

TEST_F(PropertySources, AnAnswerWithoutPropertiesIsAnAnswer) {
  materials.answerWith = ToyValue(r8(1.0));
  EXPECT_EQ(
      GetDynPropSourcePropInfo(entity.dispatch(), materials.as<IPropertySource>(IID_IPropertySource), out),
      1);
  materials.answerWith.reset();
  materials.answersEmpty = true;
  EXPECT_EQ(
      GetDynPropSourcePropInfo(entity.dispatch(), materials.as<IPropertySource>(IID_IPropertySource), out),
      0);
  EXPECT_TRUE(out.isEmpty());
}

TEST_F(PropertySources, PropertiesMayBeHandedOutByTheirAutomationInterface) {
  materials.elementType = VT_DISPATCH;
  registry.add(L"Materials", &materials);

  EXPECT_EQ(collect(), (Names{"oak", "steel"}));
}

TEST_F(PropertySources, NamesAreStringsByWhatTheArrayHoldsWhateverItsTagSays) {
  registry.add(L"Materials", &materials);
  for (const VARTYPE tag :
       std::initializer_list<VARTYPE>{VT_ARRAY | VT_BSTR, VT_ARRAY, VT_ARRAY | VT_VARIANT}) {
    registry.tag = tag;
    out.clear();
    EXPECT_EQ(collect(), (Names{"oak", "steel"})) << tag;
    EXPECT_EQ(answer, 1) << tag;
  }
}

TEST_F(PropertySources, PropertiesAreObjectsByWhatTheArrayHoldsWhateverItsTagSays) {
  registry.add(L"Materials", &materials);
  for (const VARTYPE elementType : std::initializer_list<VARTYPE>{VT_UNKNOWN, VT_DISPATCH}) {
    for (const VARTYPE tag : std::initializer_list<VARTYPE>{VT_ARRAY | VT_UNKNOWN, VT_ARRAY | VT_DISPATCH,
                                                            VT_ARRAY, VT_ARRAY | VT_BSTR}) {
      materials.elementType = elementType;
      materials.tag = tag;
      out.clear();
      EXPECT_EQ(collect(), (Names{"oak", "steel"})) << elementType << " tagged " << tag;
    }
  }
}

// What is not an object would be used as one.
TEST_F(PropertySources, AnArrayThatHoldsNoObjectsIsRefusedWhateverItsTagSays) {
  registry.add(L"Materials", &materials);
  materials.elementType = VT_R8;
  materials.properties = {nullptr, nullptr};
  for (const VARTYPE tag :
       std::initializer_list<VARTYPE>{VT_ARRAY | VT_UNKNOWN, VT_ARRAY | VT_DISPATCH, VT_ARRAY}) {
    materials.tag = tag;
    EXPECT_EQ(collect(), Names{}) << tag;
    EXPECT_EQ(answer, 1) << tag;
  }
}

TEST_F(PropertySources, AnObjectWithoutAnArrayAroundItIsRefused) {
  registry.add(L"Materials", &materials);
  for (const VARTYPE type : std::initializer_list<VARTYPE>{VT_UNKNOWN, VT_DISPATCH}) {
    materials.answerWith = ToyValue(type, oak.unknown());
    EXPECT_EQ(collect(), Names{}) << type;
    EXPECT_EQ(answer, 1) << type;
  }
}

// An element of it has two indexes, and only one would be told.
TEST_F(PropertySources, AnArrayOfTwoDimensionsIsRefused) {
  registry.add(L"Materials", &materials);
  materials.dimensions = 2;

  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 1);
}

TEST_F(PropertySources, AnArrayThatCannotBeMadeIsAnEntityWithoutSources) {
  registry.add(L"Materials", &materials);
  for (std::uint64_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    host.mark();
    std::uint64_t refused = 0;
    int made = -1;
    {
      COleSafeArray sources;
      const auto fault = platform::AllocationFault::failFrom(n, platform::Heap::Arrays);
      made = GetDynProperteySources(entity.dispatch(), sources);
      refused = fault.failures();
    }
    EXPECT_EQ(host.balance(), "balanced");
    EXPECT_EQ(made, refused == 0 ? 1 : 0);
    if (refused == 0) {
      EXPECT_GT(n, 2U) << "the array of names and the array of sources";
      break;
    }
  }
}

TEST_F(PropertySources, ANameIsFreedBeforeItsSourceIsPutAndTheNextIsLookedUp) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);

  COleSafeArray sources;
  host.log.clear();
  GetDynProperteySources(entity.dispatch(), sources);

  const Lines calls = host.log.only({"GetPropertySourceAt", "SysFreeString(Materials)", "AddRef"});
  const auto asked = std::find(calls.begin(), calls.end(), "GetPropertySourceAt(Materials)");
  ASSERT_GE(calls.end() - asked, 4);
  EXPECT_EQ(Lines(asked, asked + 4),
            (Lines{"GetPropertySourceAt(Materials)", "SysFreeString(Materials)",
                   "AddRef(IPropertySource) on materials", "GetPropertySourceAt(Prices)"}));
}

TEST_F(PropertySources, ANameThatCannotBeReadLeavesOutNoOtherSource) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  int leftOut = 0;
  for (std::uint64_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    host.mark();
    host.log.clear();
    std::uint64_t refused = 0;
    int made = -1;
    {
      COleSafeArray sources;
      const auto fault = platform::AllocationFault::failNth(n, platform::Heap::Strings);
      made = GetDynProperteySources(entity.dispatch(), sources);
      refused = fault.failures();
    }
    EXPECT_EQ(made, 1);
    EXPECT_EQ(host.balance(), "balanced");
    const int asked =
        host.log.count("GetPropertySourceAt(Materials)") + host.log.count("GetPropertySourceAt(Prices)");
    if (refused == 0) {
      EXPECT_EQ(asked, 2);
      break;
    }
    EXPECT_EQ(asked, 1) << "the other one";
    if (host.log.count("GetPropertySourceAt") == 1) ++leftOut;
  }
  EXPECT_EQ(leftOut, 2) << "each of the two was once not even asked for";
}

TEST_F(PropertySources, TheFactoryIsAskedForTheClassOfTheEntity) {
  registry.add(L"Materials", &materials);

  collect();

  EXPECT_EQ(registry.asked, VkDbEntity::desc());
}

TEST_F(PropertySources, RowsAreAppendedToWhatIsThere) {
  registry.add(L"Materials", &materials);
  out.push_back(Row(L"before"));

  EXPECT_EQ(collect(), (Names{"before", "oak", "steel"}));
}

TEST_F(PropertySources, AnEntityWithoutABaseObjectHasNone) {
  registry.add(L"Materials", &materials);
  entity.withhold(IID_IVeltBaseObject);

  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(host.log.lines(), Lines{"QueryInterface(IVeltBaseObject) on entity"});
  EXPECT_FALSE(hasSources());
}

TEST_F(PropertySources, AnEntityThatCannotBeOpenedHasNone) {
  registry.add(L"Materials", &materials);
  entity.objectId.setFromOldId(123456789);

  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_FALSE(hasSources());
}

TEST_F(PropertySources, AClassWithoutSourcesHasNone) {
  registry.add(L"Materials", &materials);
  registry.answersFalse = true;
  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_FALSE(hasSources());

  registry.answersFalse = false;
  registry.answersEmpty = true;
  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_FALSE(hasSources());
}

TEST_F(PropertySources, WithoutFactoryExtensionOrRegistryThereAreNoRows) {
  registry.add(L"Materials", &materials);
  registry.noExtension = true;
  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_FALSE(hasSources());

  registry.noExtension = false;
  registry.withoutSources();
  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_FALSE(hasSources());

  registry.withoutFactory();
  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 0);
  EXPECT_FALSE(hasSources());
}

TEST_F(PropertySources, AnEmptyListOfNamesIsEnumeratedAllTheSame) {
  EXPECT_EQ(collect(), Names{});
  EXPECT_EQ(answer, 1);
}

TEST_F(PropertySources, ANameWithoutASourceIsPassedOver) {
  registry.add(L"Gone", nullptr);
  registry.add(L"Prices", &prices);

  EXPECT_EQ(collect(), Names{"price"});
}

TEST_F(PropertySources, AnElementThatIsNotAPropertySourceIsPassedOver) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  materials.withhold(IID_IPropertySource);

  EXPECT_EQ(collect(), Names{"price"});
}

TEST_F(PropertySources, Quirk_source_array_from_zero) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  registry.lowerBound = 1;

  COleSafeArray sources;
  EXPECT_EQ(GetDynProperteySources(entity.dispatch(), sources), 1);

  LONG lower = -1;
  LONG upper = -1;
  SafeArrayGetLBound(sources.parray, 1, &lower);
  SafeArrayGetUBound(sources.parray, 1, &upper);
  EXPECT_EQ(lower, 0);
  EXPECT_EQ(upper, 1);
  IUnknown* element = nullptr;
  LONG index = 0;
  SafeArrayGetElement(sources.parray, &index, &element);
  EXPECT_EQ(element, nullptr);
  sources.Clear();
  EXPECT_EQ(collect(), (Names{"oak", "steel"})) << "the last source falls outside";
}

TEST_F(PropertySources, AFailingSourceDoesNotStopTheOthers) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  host.on("GetProperties(entity) on materials").fail();
  EXPECT_EQ(collect(), Names{"price"});

  out.clear();
  host.on("GetProperties(entity) on materials").answerNull();
  EXPECT_EQ(collect(), Names{"price"});
}

TEST_F(PropertySources, WhatThrowsIsPassedOverLikeWhatRefusesAndNothingIsLost) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  struct Throw {
    const char* call;
    Names rows;
    int answer;
  };
  for (const Throw& thrown :
       {Throw{"QueryInterface(IVeltBaseObject)", {}, 0}, Throw{"GetObjectId", {}, 0},
        Throw{"QueryInterface(IPropertySource)", {"price"}, 1}, Throw{"GetProperties", {"price"}, 1},
        Throw{"QueryInterface(IDynamicProperty2)", {"steel", "price"}, 1},
        Throw{"GetDescription", {"steel", "price"}, 1}}) {
    out.clear();
    host.on(thrown.call).nth(1).raise(L"gone");
    EXPECT_EQ(collect(), thrown.rows) << thrown.call;
    EXPECT_EQ(answer, thrown.answer) << thrown.call;
  }
}

TEST_F(PropertySources, EveryRefusalByOperatorNewEndsTheEnumerationAndNoValueIsLost) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  registry.add(L"Materials", &materials);
  oak.value = text(L"of oak");
  steel.value = text(L"of steel");
  for (std::uint64_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    host.mark();
    std::uint64_t refused = 0;
    {
      const tests::AllocationSpy spy = tests::AllocationSpy::failNth(n);
      answer = GetDynPropSourcesPropInfo(entity.dispatch(), out);
      refused = spy.counts().failures;
    }
    EXPECT_EQ(answer, refused == 0 ? 1 : 0);
    for (PROPINFO& row : out)
      VariantClear(&row.value);
    out.setPhysicalLength(0);
    EXPECT_EQ(host.balance(), "balanced");
    if (refused == 0) {
      EXPECT_GT(n, 3U);
      break;
    }
  }
}

TEST_F(PropertySources, AFailingSourceTakesNoRowsBack) {
  registry.add(L"Materials", &materials);
  registry.add(L"Prices", &prices);
  out.push_back(Row(L"before"));
  host.on("GetProperties(entity) on prices").fail();

  EXPECT_EQ(collect(), (Names{"before", "oak", "steel"}));
  EXPECT_EQ(answer, 1);
}

// --- one source ----------------------------------------------------------------------------------------------------

TEST_F(PropertySources, ASourceThatFailsOrAnswersNothingIsToldApart) {
  IPropertySource* const source = materials.as<IPropertySource>(IID_IPropertySource);
  EXPECT_EQ(GetDynPropSourcePropInfo(entity.dispatch(), source, out), 1);

  materials.answersEmpty = true;
  EXPECT_EQ(GetDynPropSourcePropInfo(entity.dispatch(), source, out), 0);

  host.on("GetProperties").fail();
  EXPECT_EQ(GetDynPropSourcePropInfo(entity.dispatch(), source, out), 0);
}

TEST_F(PropertySources, ASourceWithoutUsablePropertiesHasAnswered) {
  materials.properties = {};

  EXPECT_EQ(
      GetDynPropSourcePropInfo(entity.dispatch(), materials.as<IPropertySource>(IID_IPropertySource), out),
      1);
  EXPECT_TRUE(out.isEmpty());
}

TEST_F(PropertySources, NullAndDisabledPropertiesAreLeftOutWithoutTheOthers) {
  registry.add(L"Materials", &materials);
  oak.enabled = BOOL{0};
  materials.properties = {nullptr, oak.unknown(), steel.unknown(), nullptr};

  EXPECT_EQ(collect(), Names{"steel"});
}

TEST_F(PropertySources, AnArrayOfPropertiesMayStartAnywhere) {
  registry.add(L"Materials", &materials);
  materials.lowerBound = -5;

  EXPECT_EQ(collect(), (Names{"oak", "steel"}));
}

TEST_F(PropertySources, APropertyOfTheOlderGenerationIsDescribedByIt) {
  registry.add(L"Materials", &materials);
  oak.withhold(IID_IDynamicProperty2);

  EXPECT_EQ(collect(), (Names{"oak", "steel"}));
  EXPECT_EQ(host.log.count("IsPropertyEnabled(id 77) on oak"), 1);
  EXPECT_EQ(host.log.count("IsPropertyEnabled(entity) on steel"), 1);
}

TEST_F(PropertySources, APropertyThatFailsOtherwiseIsNotTriedAgain) {
  registry.add(L"Materials", &materials);
  host.on("QueryInterface(IDynamicProperty2) on oak").fail(E_FAIL);

  EXPECT_EQ(collect(), Names{"steel"});
  EXPECT_EQ(host.log.count("QueryInterface(IDynamicProperty) on oak"), 0);
}

}  // namespace
}  // namespace velt::toys
