#include "embedded/automation/polylines/HeavyPolyline.h"

#include <gtest/gtest.h>

#include "embedded/database/RecordEditor.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

TEST(HeavyPolylineTest, FollowsAnEditOfAVertex) {
  // clang-format off
  const auto drawing = Sample()
      .entity("POLYLINE", {{66, "1"}, {70, "8"}})
      .entity("VERTEX", {{10, "0"}, {70, "32"}})
      .entity("VERTEX", {{10, "2"}, {70, "32"}})
      .entity("SEQEND")
      .open();
  // clang-format on
  const Bound made(*drawing, 0);
  EXPECT_EQ(2, made.real(L"Length"));
  const std::uint32_t second = drawing->members(database::resolve(drawing->entities()[0])->record).first + 1;
  database::RecordEditor(*drawing, second).setReal(10, "*", 7);
  EXPECT_EQ(7, made.real(L"Length"));
  drawing->setErased(second, true);
  EXPECT_EQ(0, Bound(*Sample().entity("POLYLINE", {{70, "8"}}).open(), 0).real(L"Length"));
}

}  // namespace
}  // namespace velt::automation
