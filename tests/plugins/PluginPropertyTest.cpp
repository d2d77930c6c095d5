#include "embedded/sources/PluginProperty.h"

#include <gtest/gtest.h>

#include "host/palette/IDynamicProperty.h"

namespace velt::plugins {
namespace {

// A number that is kept in the property, whichever the entity.
class Number final : public Property {
 public:
  explicit Number(About about, bool* isEnded = nullptr) : Property(std::move(about)), isEnded_(isEnded) {}
  ~Number() override {
    if (isEnded_ != nullptr) *isEnded_ = true;
  }
  HRESULT get(IDispatch*, VARIANT& value) override {
    value.vt = VT_I4;
    value.lVal = number;
    return S_OK;
  }
  HRESULT set(IDispatch*, const VARIANT& value) override {
    number = value.lVal;
    return S_OK;
  }
  LONG number = 0;

 private:
  bool* const isEnded_;
};

HRESULT asked(IUnknown& object, REFIID iid) {
  void* found = nullptr;
  const HRESULT result = object.QueryInterface(iid, &found);
  if (SUCCEEDED(result)) static_cast<IUnknown*>(found)->Release();
  return result;
}

IUnknown& unknownOf(Property& property) {
  return static_cast<IDynamicProperty2&>(property);
}

TEST(PluginProperty, HasTheInterfacesThatItNeedsAndNoOthers) {
  Number& plain = *new Number({.name = L"Plain"});
  EXPECT_EQ(asked(unknownOf(plain), IID_IUnknown), S_OK);
  EXPECT_EQ(asked(unknownOf(plain), IID_IDynamicProperty2), S_OK);
  EXPECT_EQ(asked(unknownOf(plain), IID_IDynamicProperty), E_NOINTERFACE);
  EXPECT_EQ(asked(unknownOf(plain), IID_IDynamicEnumProperty), E_NOINTERFACE);
  EXPECT_EQ(asked(unknownOf(plain), IID_ICategorizeProperties), E_NOINTERFACE);
  plain.Release();
  Number& full = *new Number({.choices = {L"a"}, .category = 7, .categoryName = L"Seven"});
  EXPECT_EQ(asked(unknownOf(full), IID_IDynamicEnumProperty), S_OK);
  EXPECT_EQ(asked(unknownOf(full), IID_ICategorizeProperties), S_OK);
  full.Release();
}

TEST(PluginProperty, EndsWithItsLastReference) {
  bool isEnded = false;
  Property* const property = new Number({}, &isEnded);
  EXPECT_EQ(property->AddRef(), 2u);
  EXPECT_EQ(property->Release(), 1u);
  EXPECT_FALSE(isEnded);
  EXPECT_EQ(property->Release(), 0u);
  EXPECT_TRUE(isEnded);
}

TEST(PluginProperty, RefusesNullOutputs) {
  Number& property = *new Number({.typeName = L"VELT_COLOR", .choices = {L"a"}, .category = 7});
  EXPECT_EQ(unknownOf(property).QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(property.GetGUID(nullptr), E_POINTER);
  EXPECT_EQ(property.GetDisplayName(nullptr), E_POINTER);
  EXPECT_EQ(property.GetDescription(nullptr), E_POINTER);
  EXPECT_EQ(property.IsPropertyEnabled(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(property.IsPropertyReadOnly(nullptr), E_POINTER);
  EXPECT_EQ(property.GetCurrentValueName(nullptr), E_POINTER);
  EXPECT_EQ(property.GetCurrentValueType(nullptr), E_POINTER);
  EXPECT_EQ(property.GetCurrentValueData(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(property.GetNumPropertyValues(nullptr), E_POINTER);
  EXPECT_EQ(property.GetPropValueName(0, nullptr), E_POINTER);
  EXPECT_EQ(property.GetPropValueData(0, nullptr), E_POINTER);
  EXPECT_EQ(property.MapPropertyToCategory(0, nullptr), E_POINTER);
  EXPECT_EQ(property.GetCategoryName(7, 0, nullptr), E_POINTER);
  property.Release();
}

TEST(PluginProperty, KnowsItsChoicesAndNoOthers) {
  Number& property = *new Number({.choices = {L"a", L"b"}});
  LONG count = 0;
  EXPECT_EQ(property.GetNumPropertyValues(&count), S_OK);
  EXPECT_EQ(count, 2);
  BSTR name = nullptr;
  EXPECT_EQ(property.GetPropValueName(1, &name), S_OK);
  EXPECT_STREQ(name, L"b");
  SysFreeString(name);
  VARIANT value{};
  for (const LONG index : {-1, 2}) {
    EXPECT_EQ(property.GetPropValueName(index, &name), E_INVALIDARG);
    EXPECT_EQ(property.GetPropValueData(index, &value), E_INVALIDARG);
  }
  EXPECT_EQ(value.vt, VT_EMPTY);
  property.Release();
}

TEST(PluginProperty, AReadOnlyOneIsNeverSet) {
  VARIANT five{};
  five.vt = VT_I4;
  five.lVal = 5;
  Number& writable = *new Number({});
  Number& readOnly = *new Number({.isReadOnly = true});
  EXPECT_EQ(writable.SetCurrentValueData(nullptr, five), S_OK);
  EXPECT_EQ(readOnly.SetCurrentValueData(nullptr, five), E_ACCESSDENIED);
  EXPECT_EQ(writable.number, 5);
  EXPECT_EQ(readOnly.number, 0);
  writable.Release();
  readOnly.Release();
}

TEST(PluginProperty, AHostOfAnOlderVersionGetsNoSourceAndNothingIsLeft) {
  bool isEnded = false;
  const VeltPluginHost older{0, sizeof(VeltPluginHost), nullptr, nullptr};
  EXPECT_EQ(offer(&older, L"Test.Older", L"VkDbEntity", {new Number({}, &isEnded)}), E_NOTIMPL);
  EXPECT_TRUE(isEnded);
}

}  // namespace
}  // namespace velt::plugins
