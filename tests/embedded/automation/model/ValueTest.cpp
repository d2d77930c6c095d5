#include "embedded/automation/model/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/objects/ColorObject.h"
#include "embedded/platform/Allocation.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

class ValueTest : public ::testing::Test {
 protected:
  static VariantHolder made(Value value, const ValueType& type) {
    VariantHolder holder;
    holder.attach(toVariant(std::move(value), type));
    return holder;
  }

  template <class T>
  static std::optional<T> as(const std::optional<Value>& value) {
    if (!value || !std::holds_alternative<T>(*value)) return std::nullopt;
    return std::get<T>(*value);
  }

  Balance balance;
};

TEST_F(ValueTest, EveryKindBecomesItsVariant) {
  EXPECT_EQ(2.5, made(2.5, VT_R8).get().dblVal);
  EXPECT_EQ(VT_R8, made(2.5, types::angle).get().vt);
  EXPECT_EQ(-7, made(std::int32_t{-7}, VT_I4).get().lVal);
  EXPECT_EQ(VT_I4, made(std::int32_t{-7}, types::lineweight).get().vt);
  EXPECT_EQ(VARIANT_TRUE, made(true, VT_BOOL).get().boolVal);
  EXPECT_EQ(VARIANT_FALSE, made(false, VT_BOOL).get().boolVal);
  EXPECT_EQ(L"a\u00E9", textOf(made(std::wstring(L"a\u00E9"), VT_BSTR).get()));
  EXPECT_EQ((std::vector<double>{1, 2, 3}), numbersOf(made(Vector3{1, 2, 3}, VT_VARIANT).get()));
  EXPECT_EQ((std::vector<double>{4, 5}), numbersOf(made(std::vector<double>{4, 5}, VT_VARIANT).get()));
  EXPECT_EQ(VT_DISPATCH, made(ColorObject::make({}), VT_DISPATCH).get().vt);
}

TEST_F(ValueTest, AValueOfAnotherTypeThanDeclaredIsAMistake) {
  EXPECT_THROW(static_cast<void>(toVariant(true, VT_R8)), std::logic_error);
  EXPECT_THROW(static_cast<void>(toVariant(std::wstring(L"text"), VT_I4)), std::logic_error);
  EXPECT_THROW(static_cast<void>(toVariant(ColorObject::make({}), VT_BSTR)), std::logic_error);
}

TEST_F(ValueTest, ExhaustedMemoryIsRefused) {
  const auto fault = platform::AllocationFault::failFrom(1);
  EXPECT_THROW(static_cast<void>(toVariant(std::wstring(L"text"), VT_BSTR)), Refusal);
  EXPECT_THROW(static_cast<void>(toVariant(Vector3{}, VT_VARIANT)), Refusal);
}

TEST_F(ValueTest, NumbersAreTakenWhereNothingIsLost) {
  EXPECT_EQ(3.0, as<double>(fromVariant(integer(3), VT_R8)));
  EXPECT_EQ(3, as<std::int32_t>(fromVariant(number(3), VT_I4)));
  EXPECT_FALSE(fromVariant(number(3.5), VT_I4));
  EXPECT_FALSE(fromVariant(number(3e9), VT_I4));
  EXPECT_FALSE(fromVariant(number(std::nan("")), VT_R8));
  EXPECT_FALSE(fromVariant(number(std::numeric_limits<double>::infinity()), VT_R8));
}

TEST_F(ValueTest, TextsOfNumbersAreTaken) {
  const StringHolder digits(L"12.5");
  const StringHolder letters(L"abc");
  EXPECT_EQ(12.5, as<double>(fromVariant(variants::borrowed(digits.get()), VT_R8)));
  EXPECT_FALSE(fromVariant(variants::borrowed(letters.get()), VT_R8));
  EXPECT_EQ(std::wstring(L"abc"), as<std::wstring>(fromVariant(variants::borrowed(letters.get()), VT_BSTR)));
}

TEST_F(ValueTest, ANullStringIsTheEmptyText) {
  const VARIANT null = variants::ofType(VT_BSTR);
  EXPECT_EQ(std::wstring(), as<std::wstring>(fromVariant(null, VT_BSTR)));
}

TEST_F(ValueTest, TruthIsTakenFromFlagsAndSmallNumbers) {
  EXPECT_EQ(true, as<bool>(fromVariant(flag(true), VT_BOOL)));
  EXPECT_EQ(false, as<bool>(fromVariant(flag(false), VT_BOOL)));
  EXPECT_EQ(true, as<bool>(fromVariant(integer(1), VT_BOOL)));
  EXPECT_EQ(true, as<bool>(fromVariant(integer(-1), VT_BOOL)));
  EXPECT_EQ(false, as<bool>(fromVariant(integer(0), VT_BOOL)));
  EXPECT_FALSE(fromVariant(integer(2), VT_BOOL));
}

TEST_F(ValueTest, PointsAreTakenFromThreeNumbers) {
  const VariantHolder point = made(Vector3{1, 2, 3}, VT_VARIANT);
  const VariantHolder two = made(std::vector<double>{1, 2}, VT_VARIANT);
  const VariantHolder bad = made(Vector3{1, std::nan(""), 3}, VT_VARIANT);
  EXPECT_EQ((Vector3{1, 2, 3}), as<Vector3>(fromVariant(point.get(), VT_VARIANT)));
  EXPECT_EQ((std::vector<double>{1, 2}), as<std::vector<double>>(fromVariant(two.get(), VT_VARIANT)));
  EXPECT_FALSE(fromVariant(bad.get(), VT_VARIANT));
  EXPECT_FALSE(fromVariant(number(1), VT_VARIANT));
  EXPECT_FALSE(fromVariant(point.get(), VT_R8));
  EXPECT_FALSE(fromVariant(point.get(), VT_BSTR));
}

TEST_F(ValueTest, ObjectsAreHeldWithAReferenceOfTheirOwn) {
  OwnedDispatch color = ColorObject::make({});
  {
    const std::optional<Value> taken = fromVariant(object(color.get()), VT_DISPATCH);
    ASSERT_TRUE(taken);
    color.reset();
    EXPECT_NE(nullptr, std::get<OwnedDispatch>(*taken).get());
    EXPECT_EQ(1, balance.now().at("VeltVkCmColor"));
  }
  EXPECT_TRUE(balance.now().empty());
}

TEST_F(ValueTest, WhereAnObjectIsWantedANumberOrANameMayStandForIt) {
  const StringHolder letters(L"Red");
  const StringHolder digits(L"5");
  EXPECT_EQ(5, as<std::int32_t>(fromVariant(integer(5), VT_DISPATCH)));
  EXPECT_EQ(5, as<std::int32_t>(fromVariant(variants::borrowed(digits.get()), VT_DISPATCH)));
  EXPECT_EQ(L"Red", as<std::wstring>(fromVariant(variants::borrowed(letters.get()), VT_DISPATCH)));
  EXPECT_FALSE(fromVariant(number(1.5), VT_DISPATCH));
  EXPECT_FALSE(fromVariant(object(nullptr), VT_DISPATCH));
}

TEST_F(ValueTest, NothingIsTakenFromNothing) {
  VARIANT empty{};
  VARIANT null{};
  null.vt = VT_NULL;
  for (const VARENUM type : {VT_R8, VT_I4, VT_BSTR, VT_BOOL, VT_VARIANT, VT_DISPATCH, VT_DATE}) {
    EXPECT_FALSE(fromVariant(null, type)) << type;
    EXPECT_FALSE(fromVariant(empty, type)) << type;
  }
}

TEST_F(ValueTest, AReferenceToAVariantIsFollowedOnce) {
  VARIANT inner = number(2);
  VARIANT outer{};
  outer.vt = VT_BYREF | VT_VARIANT;
  outer.pvarVal = &inner;
  EXPECT_EQ(2.0, as<double>(fromVariant(outer, VT_R8)));
  VARIANT endless{};
  endless.vt = VT_BYREF | VT_VARIANT;
  endless.pvarVal = &endless;
  EXPECT_FALSE(fromVariant(endless, VT_R8));
  endless.pvarVal = nullptr;
  EXPECT_FALSE(fromVariant(endless, VT_R8));
}

}  // namespace
}  // namespace velt::automation
