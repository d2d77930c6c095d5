#include "embedded/automation/objects/ColorObject.h"

#include <gtest/gtest.h>

#include "embedded/automation/model/Refusal.h"
#include "embedded/platform/Allocation.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

class ColorObjectTest : public ::testing::Test {
 protected:
  ColorObjectTest() { makeRegistry(); }

  static Bound make(std::uint32_t value, const wchar_t* name = nullptr, const wchar_t* book = nullptr) {
    VkCmColor color;
    color.setColor(value);
    color.setNames(name, book);
    return Bound(ColorObject::make(color));
  }
  static LONG valueOf(const Bound& made) {
    LONG value = 0;
    EXPECT_EQ(S_OK, made.as<IVeltVkCmColor>()->get_EntityColor(&value));
    return value;
  }
  static constexpr LONG bits(std::uint32_t value) { return static_cast<LONG>(value); }

  bool registryMade = (makeRegistry(), true);
  Balance balance;
};

TEST_F(ColorObjectTest, GivesTheColorItWasMadeOf) {
  const Bound made = make(0xC2102030, L"Ocean", L"Seas");
  StringHolder name;
  StringHolder book;
  EXPECT_EQ(bits(0xC2102030), valueOf(made));
  EXPECT_EQ(S_OK, made.as<IVeltVkCmColor>()->get_ColorName(name.put()));
  EXPECT_EQ(S_OK, made.as<IVeltVkCmColor>()->get_BookName(book.put()));
  EXPECT_EQ(L"Ocean", name.view());
  EXPECT_EQ(L"Seas", book.view());
}

TEST_F(ColorObjectTest, NamesAreNeverNull) {
  BSTR name = nullptr;
  EXPECT_EQ(S_OK, make(0xC0000000).as<IVeltVkCmColor>()->get_ColorName(&name));
  EXPECT_NE(nullptr, name);
  SysFreeString(name);
}

TEST_F(ColorObjectTest, TakesEveryWayOfColoringAndNothingElse) {
  const Bound made = make(0xC0000000);
  const auto color = made.as<IVeltVkCmColor>();
  for (const std::uint32_t value : {0xC1000000U, 0xC2FFFFFFU, 0xC3000005U, 0xC8000000U, 0xC0000000U}) {
    EXPECT_EQ(S_OK, color->put_EntityColor(bits(value)));
    EXPECT_EQ(bits(value), valueOf(made));
  }
  for (const std::uint32_t value : {0U, 5U, 0xBF000000U, 0xC4000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(E_INVALIDARG, color->put_EntityColor(bits(value)));
    EXPECT_EQ(bits(0xC0000000), valueOf(made));
  }
}

TEST_F(ColorObjectTest, NamesAreSetTogether) {
  const Bound made = make(0xC2000001, L"Old", L"Book");
  StringHolder name(L"New");
  EXPECT_EQ(S_OK, made.as<IVeltVkCmColor>()->SetNames(name.get(), nullptr));
  EXPECT_EQ(L"New", made.text(L"ColorName"));
  EXPECT_EQ(L"", made.text(L"BookName"));
}

TEST_F(ColorObjectTest, NullPointersAndExhaustedMemoryAreToldApart) {
  const Bound made = make(0xC0000000);
  const auto color = made.as<IVeltVkCmColor>();
  EXPECT_EQ(E_POINTER, color->get_EntityColor(nullptr));
  EXPECT_EQ(E_POINTER, color->get_ColorName(nullptr));
  EXPECT_EQ(E_POINTER, color->get_BookName(nullptr));
  const auto fault = platform::AllocationFault::failFrom(1);
  BSTR name = nullptr;
  EXPECT_EQ(E_OUTOFMEMORY, color->get_ColorName(&name));
  EXPECT_THROW(static_cast<void>(ColorObject::make({})), Refusal);
}

TEST_F(ColorObjectTest, CanBeAskedLate) {
  const Bound made = make(0xC2102030);
  EXPECT_EQ(bits(0xC2102030), made.integer(L"EntityColor"));
  EXPECT_EQ(0x10, made.integer(L"Red"));
  EXPECT_EQ(0x20, made.integer(L"green"));
  EXPECT_EQ(0x30, made.integer(L"BLUE"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"ColorIndex").result);
  EXPECT_EQ(S_OK, made.put(L"EntityColor", integer(bits(0xC3000002))).result);
  EXPECT_EQ(2, made.integer(L"ColorIndex"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.get(L"Red").result);
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"EntityColor", integer(7)).result);
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, made.put(L"ColorName", L"x").result);
  EXPECT_EQ(0, made.id(L"Unknown"));
}

TEST_F(ColorObjectTest, IndexesNameByLayerAndByBlockToo) {
  const Bound made = make(0xC3000007);
  for (const auto& [index, value] : {std::pair{256, 0xC0000000U}, {0, 0xC1000000U}, {255, 0xC30000FFU}}) {
    EXPECT_EQ(S_OK, made.put(L"ColorIndex", integer(index)).result);
    EXPECT_EQ(bits(value), valueOf(made));
    EXPECT_EQ(index, made.integer(L"ColorIndex"));
  }
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"ColorIndex", integer(257)).result);
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"ColorIndex", integer(-1)).result);
}

TEST_F(ColorObjectTest, CallsAreMadeProperly) {
  const Bound made = make(0xC0000000);
  IDispatch& dispatch = made.dispatch();
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, invoke(dispatch, 99, DISPATCH_PROPERTYGET).result);
  EXPECT_EQ(DISP_E_MEMBERNOTFOUND, invoke(dispatch, 1, DISPATCH_METHOD).result);
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, invoke(dispatch, 1, DISPATCH_PROPERTYGET, {integer(1)}).result);
  EXPECT_EQ(DISP_E_BADPARAMCOUNT, invoke(dispatch, 1, DISPATCH_PROPERTYPUT).result);
  VARIANT empty{};
  EXPECT_EQ(DISP_E_TYPEMISMATCH, made.put(L"EntityColor", empty).result);
  DISPPARAMS none{};
  EXPECT_EQ(E_POINTER,
            dispatch.Invoke(1, GUID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, &empty, nullptr, nullptr));
  EXPECT_EQ(E_POINTER,
            dispatch.Invoke(1, GUID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr));
  EXPECT_EQ(unknownInterface,
            dispatch.Invoke(1, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &none, &empty, nullptr, nullptr));
}

TEST_F(ColorObjectTest, HasTypeInformation) {
  const Bound made = make(0xC0000000);
  UINT count = 0;
  EXPECT_EQ(S_OK, made.dispatch().GetTypeInfoCount(&count));
  EXPECT_EQ(1U, count);
  InterfaceHolder<ITypeInfo> info;
  ASSERT_EQ(S_OK, made.dispatch().GetTypeInfo(0, 0, info.put()));
  StringHolder name;
  EXPECT_EQ(S_OK, info->GetDocumentation(1, name.put(), nullptr, nullptr, nullptr));
  EXPECT_EQ(L"EntityColor", name.view());
  ITypeInfo* none = nullptr;
  EXPECT_EQ(DISP_E_BADINDEX, made.dispatch().GetTypeInfo(1, 0, &none));
  EXPECT_EQ(E_POINTER, made.dispatch().GetTypeInfo(0, 0, nullptr));
  EXPECT_EQ(E_POINTER, made.dispatch().GetTypeInfoCount(nullptr));
}

TEST_F(ColorObjectTest, AnyObjectsColorCanBeTaken) {
  const Bound made = make(0xC2102030, L"Ocean", L"Seas");
  const VkCmColor taken = colorOf(made.dispatch());
  VkCmColor expected;
  expected.setColor(0xC2102030);
  expected.setNames(L"Ocean", L"Seas");
  EXPECT_TRUE(expected == taken);
}

TEST_F(ColorObjectTest, AnObjectWithoutAColorIsRefused) {
  const ClassRegistry registry(L"Toys", toyClasses);
  const auto other =
      InterfaceHolder<IDispatch>::owning(com::makeObject<EntityObject>(*registry.find(CLSID_VeltTable)));
  EXPECT_THROW(static_cast<void>(colorOf(*other.get())), Refusal);
}

}  // namespace
}  // namespace velt::automation
