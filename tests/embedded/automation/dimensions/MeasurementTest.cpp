#include "embedded/automation/dimensions/Measurement.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/dimensions/StyledDimension.h"

namespace velt::automation {
namespace {

using namespace test;

using MeasurementTest = StyledDimension;

TEST_F(MeasurementTest, TheStoredMeasurementFollowsTheLinearScale) {
  const Bound& made = dimension({{2, "Mine"}, {144, "-1"}});
  EXPECT_EQ(S_OK, made.put(L"LinearScaleFactor", number(2)).result);
  EXPECT_EQ("1070=144 1040=-2.0", overridesOf(*drawing)) << "counts on sheets only, as before";
  EXPECT_EQ(5, made.real(L"Measurement"));
  const Bound& plain = dimension({{2, "Mine"}});
  EXPECT_EQ(S_OK, plain.put(L"LinearScaleFactor", number(2)).result);
  EXPECT_EQ(10, plain.real(L"Measurement"));
  EXPECT_EQ(10, database::Lens(*drawing, recordOf(*drawing, 0)).real(42, "AcDbDimension", 0));
  EXPECT_EQ(E_INVALIDARG, plain.put(L"LinearScaleFactor", number(0)).scode);
}

}  // namespace
}  // namespace velt::automation
