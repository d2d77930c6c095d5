#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithExternalReference() {
  // clang-format off
  return Sample()
      .tableRecord("BLOCK_RECORD", {{5, "80"}, {2, "SITE"}})
      .tableRecord("BLOCK_RECORD", {{5, "81"}, {2, "DOOR"}})
      .block({{100, "AcDbBlockBegin"}, {2, "SITE"}, {70, "44"}, {1, "plans/site.dxf"}})
      .block({{100, "AcDbBlockBegin"}, {2, "DOOR"}, {70, "0"}})
      .entity("INSERT", {{100, "AcDbBlockReference"}, {2, "Site"}, {10, "1"}, {20, "2"}, {30, "3"}, {41, "2"}, {50, "90"}})
      .entity("INSERT", {{100, "AcDbBlockReference"}, {2, "DOOR"}})
      .open();
  // clang-format on
}

TEST(ExternalReferenceTest, IsAReferenceToABlockThatStandsForADrawing) {
  const auto drawing = drawingWithExternalReference();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"External Reference", made.text(L"EntityName"));
  EXPECT_EQ(L"plans/site.dxf", made.text(L"Path"));
  EXPECT_EQ(L"Site", made.text(L"Name"));
  EXPECT_TRUE(made.flag(L"Overlay"));
  EXPECT_EQ(2, made.real(L"XScaleFactor"));
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
  EXPECT_EQ(L"Block Reference", Bound(*drawing, 1).text(L"EntityName"));
}

}  // namespace
}  // namespace velt::automation
