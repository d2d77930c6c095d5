#include "palette/selection/EntityValue.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "embedded/database/Drawing.h"
#include "holders/VariantHolder.h"
#include "palette/Palette.h"
#include "tests/tool/Drawings.h"

using namespace velt::tool;
using namespace velt::tests;
using velt::database::Drawing;

namespace {

class EntityValue : public testing::Test {
 protected:
  PROPINFO row(const wchar_t* shown) {
    for (const PROPINFO& row : rows_) {
      if (row.displayName == CStdStr<wchar_t>(shown)) return row;
    }
    throw std::logic_error("no such row");
  }

  std::unique_ptr<Drawing> drawing_ = Drawing::parse(
      drawingOf({{"0"}, {"Walls"}}, line("2F", "Walls", 0.1) + line("30", "0", 20.0)), "house.dxf");
  Palette palette{{drawing_->entities().begin(), drawing_->entities().end()}};
  const TqVector<PROPINFO>& rows_ = palette.query();
};

velt::holders::VariantHolder real(double number) {
  velt::holders::VariantHolder made;
  made.get().vt = VT_R8;
  made.get().dblVal = number;
  return made;
}

}  // namespace

TEST_F(EntityValue, IsTheEntitysOwnAlsoWhereTheRowVaries) {
  EXPECT_EQ(entityValue(row(L"Layer"), palette.entry(0), 0), L"\"Walls\"");
  EXPECT_EQ(entityValue(row(L"Layer"), palette.entry(1), 1), L"\"0\"");
}

TEST_F(EntityValue, OfAnElementIsTheElements) {
  EXPECT_EQ(entityValue(row(L"End X"), palette.entry(0), 0), comparable(real(0.1).get()));
  EXPECT_EQ(entityValue(row(L"End X"), palette.entry(1), 1), L"20");
}

TEST_F(EntityValue, IsComparedInFullPrecision) {
  EXPECT_NE(comparable(real(0.1).get()), comparable(real(0.1 + 1e-16).get()));
}

TEST_F(EntityValue, OfNothingIsEmpty) {
  const velt::holders::VariantHolder none;
  EXPECT_EQ(comparable(none.get()), L"");
}

TEST_F(EntityValue, ARefusalHasAReason) {
  velt::holders::VariantHolder value = real(1.0);
  EXPECT_NE(reasonOfRefusal(row(L"Handle"), palette.entry(0), value.get()), "");
  EXPECT_NE(reasonOfRefusal(row(L"Normal X"), palette.entry(0), value.get()), "");
}
