#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
std::unique_ptr<Drawing> drawingWithMLeader() {
  // clang-format off
  return Sample()
      .tableRecord("STYLE", {{5, "51"}, {2, "Notes"}})
      .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}})
      .entity("MULTILEADER", {{100, "AcDbMLeader"}, {300, "CONTEXT_DATA{"}, {40, "2"}, {10, "1"}, {20, "1"}, {41, "5"}, {140, "3"}, {145, "1"}, {290, "1"}, {304, "A } in braces {"}, {340, "51"}, {12, "7"}, {22, "8"}, {32, "9"}, {42, "1"}, {43, "20"}, {172, "1"}, {302, "LEADER{"}, {290, "1"}, {10, "4"}, {40, "2"}, {304, "LEADER_LINE{"}, {10, "1"}, {20, "2"}, {30, "3"}, {10, "4"}, {20, "5"}, {30, "6"}, {91, "0"}, {305, "}"}, {303, "}"}, {302, "LEADER{"}, {304, "LEADER_LINE{"}, {10, "7"}, {20, "8"}, {30, "9"}, {305, "}"}, {303, "}"}, {301, "}"}, {340, "60"}, {170, "2"}, {91, "-1023410171"}, {171, "25"}, {290, "1"}, {41, "8"}, {342, "52"}, {172, "2"}, {343, "51"}, {292, "1"}, {344, "52"}, {10, "9"}})
      .object("DICTIONARY", {{5, "61"}, {3, "Plain"}, {350, "60"}})
      .object("MLEADERSTYLE", {{5, "60"}, {330, "61"}})
      .open();
  // clang-format on
}

TEST(MLeaderTest, TellsWhatStandsInItsParts) {
  const auto drawing = drawingWithMLeader();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"Plain", made.text(L"MLeaderStyle"));
  EXPECT_EQ(L"A } in braces {", made.text(L"TextString"));
  EXPECT_EQ(L"Notes", made.text(L"TextStyle"));
  EXPECT_EQ(2, made.integer(L"LeaderType"));
  EXPECT_EQ(25, made.integer(L"LeaderLineWeight"));
  EXPECT_EQ(3, made.integer(L"Arrow"));
  EXPECT_EQ(3, made.real(L"ArrowheadSize"));
  EXPECT_EQ(2, made.integer(L"LeaderCount"));
  EXPECT_EQ(8, made.real(L"DoglegLength"));
  EXPECT_EQ(2, made.real(L"ScaleFactor"));
  EXPECT_EQ(5, made.real(L"Height"));
  EXPECT_EQ(20, made.real(L"Width"));
  EXPECT_EQ(1, made.real(L"Rotation"));
  EXPECT_EQ(L"_Dot", made.text(L"ContentBlockName"));
  EXPECT_TRUE(made.flag(L"TextFrame"));
  EXPECT_EQ((Numbers{7, 8, 9}), made.numbers(L"TextLocation"));
  EXPECT_EQ((Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9}), made.numbers(L"Vertex"));
  EXPECT_EQ(8, made.element(L"Vertex", 7));
}

}  // namespace
}  // namespace velt::automation
