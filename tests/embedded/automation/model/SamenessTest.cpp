#include "embedded/automation/model/Sameness.h"

#include <gtest/gtest.h>

#include "embedded/automation/geometry/Angle.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

PropertyRow rowOf(ValueType type, Access access = {}, Choices choices = Choices::None) {
  return {.dispId = 1,
          .name = L"Row",
          .label = L"Row",
          .type = type,
          .category = platform::Category::Misc,
          .access = access,
          .writability = writable,
          .choices = choices,
          .weight = 0,
          .help = L""};
}

bool same(const Value& put, const Value& got, const PropertyRow& row = rowOf(VT_VARIANT)) {
  return isSameValue(row, put, got);
}

TEST(Sameness, NumbersAreTheSameUpToRounding) {
  EXPECT_TRUE(same(2.0, 2.0));
  EXPECT_TRUE(same(2.0, 2.0 + 1e-10));
  EXPECT_FALSE(same(2.0, 2.0 + 1e-8));
  EXPECT_FALSE(same(0.0, 1e-300));
  EXPECT_TRUE(isSameNumber(0.0, 1e-10, 1));
  EXPECT_FALSE(isSameNumber(0.0, 1e-8, 1));
}

TEST(Sameness, TheLargestCoordinateTellsHowExactAPointIs) {
  EXPECT_TRUE(same(Vector3{1e9, 0, 1}, Vector3{1e9, 0.5, 1}));
  EXPECT_FALSE(same(Vector3{1, 0, 1}, Vector3{1, 0.5, 1}));
  EXPECT_TRUE(same(std::vector<double>{1, 2}, std::vector<double>{1, 2}));
  EXPECT_TRUE(same(Vector3{1, 2, 3}, std::vector<double>{1, 2, 3})) << "a list of one point";
  EXPECT_FALSE(same(Vector3{1, 2, 3}, 1.0));
  EXPECT_FALSE(same(std::vector<double>{1, 2}, std::vector<double>{1, 2, 3}));
}

TEST(Sameness, AnglesAreTheSameUpToWholeTurns) {
  EXPECT_TRUE(isSameAngle(1 + fullTurn, 1.0));
  EXPECT_TRUE(isSameAngle(0.0, fullTurn - 1e-12));
  EXPECT_FALSE(isSameAngle(1.0, 1.1));
  EXPECT_TRUE(same(1 + fullTurn, 1.0, rowOf(types::angle)));
  EXPECT_TRUE(same(1 + fullTurn, 1.0, rowOf(VT_R8, {.kind = AccessKind::Direction})));
  EXPECT_FALSE(same(1 + fullTurn, 1.0));
}

TEST(Sameness, NamesOfATableAreTheSameInAnyCase) {
  EXPECT_TRUE(same(std::wstring(L"walls"), std::wstring(L"WALLS"), rowOf(VT_BSTR, {}, Choices::Layers)));
  EXPECT_FALSE(same(std::wstring(L"walls"), std::wstring(L"doors"), rowOf(VT_BSTR, {}, Choices::Layers)));
  EXPECT_FALSE(same(std::wstring(L"walls"), std::wstring(L"WALLS")));
  EXPECT_TRUE(isSameName(std::wstring(L"_dot"), std::wstring(L"_Dot")));
}

TEST(Sameness, AllElseIsTheSameWhenItIsEqual) {
  EXPECT_TRUE(same(true, true));
  EXPECT_FALSE(same(true, false));
  EXPECT_TRUE(same(std::int32_t{3}, std::int32_t{3}));
  EXPECT_FALSE(same(std::int32_t{3}, std::int32_t{4}));
  EXPECT_FALSE(same(std::int32_t{1}, true));
}

TEST(Sameness, ARowMayCompareByItself) {
  PropertyRow row = rowOf(VT_R8);
  row.access.isSame = [](const Value&, const Value&) { return true; };
  EXPECT_TRUE(same(1.0, 2.0, row));
  row.access.isSame = [](const Value&, const Value&) { return false; };
  EXPECT_FALSE(same(1.0, 1.0, row));
}

TEST(Sameness, NumbersAreLeftWhenTheyAreStillTheSameToTheLastBit) {
  const auto isLeft = [](const Value& before, const Value& got, const PropertyRow& row = rowOf(VT_R8)) {
    return isNumberLeft(row, before, got);
  };
  EXPECT_TRUE(isLeft(1.0, 1.0));
  EXPECT_FALSE(isLeft(1.0, 1.0 + 1e-12));
  EXPECT_TRUE(isLeft(Vector3{1, 2, 3}, Vector3{1, 2, 3}));
  EXPECT_FALSE(isLeft(Vector3{1, 2, 3}, Vector3{1, 2, 3 + 1e-12}));
  EXPECT_FALSE(isLeft(1.0, 1.0, rowOf(types::angle))) << "a turn more may have been put";
  EXPECT_FALSE(isLeft(std::wstring(L"A"), std::wstring(L"A")))
      << "the other case of letters may have been put";
  PropertyRow row = rowOf(VT_R8);
  row.access.isSame = [](const Value&, const Value&) { return true; };
  EXPECT_FALSE(isLeft(1.0, 1.0, row));
}

TEST(Sameness, TheRefusalNamesWhatIsThereInstead) {
  EXPECT_EQ(0U, notGivenBack(0.5).text().find(L"The drawing would give back 0.5 instead: "));
  EXPECT_EQ(0U, notGivenBack(std::wstring(L"a")).text().find(L"The drawing would give back \"a\" instead: "));
  EXPECT_EQ(0U, notGivenBack(true).text().find(L"The drawing would give back yes instead: "));
  EXPECT_EQ(0U, notGivenBack(std::int32_t{7}).text().find(L"The drawing would give back 7 instead: "));
  EXPECT_EQ(0U, notGivenBack(Vector3{}).text().find(L"The drawing would give back another value instead: "));
  EXPECT_EQ(E_FAIL, notGivenBack(0.5).result());
}

}  // namespace
}  // namespace velt::automation
