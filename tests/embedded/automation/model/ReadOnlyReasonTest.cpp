#include "embedded/automation/model/ReadOnlyReason.h"

#include <gtest/gtest.h>

#include "embedded/automation/model/Reasons.h"
#include "host/automation/IdValues.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

constexpr DISPID layer = 1281;
constexpr DISPID lengthOfLine = 5;
constexpr DISPID thicknessOfLine = 1;
constexpr DISPID startOfLine = 2;
constexpr DISPID dimStyle = 1542;

class ReadOnlyReasonTest : public ::testing::Test {
 protected:
  // The line of the block comes first among the entities.
  [[nodiscard]] VkDbObjectId line(std::size_t index) const { return drawing->entities()[index + 1]; }
  [[nodiscard]] std::wstring ofLine(DISPID property, std::size_t index = 0) const {
    return readOnlyReason(CLSID_VeltLine, property, line(index));
  }

  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .layer("Locked", {{70, "4"}})
      .entity("LINE", {{8, "0"}})
      .entity("LINE", {{8, "Locked"}})
      .entity("LINE", {{5, "A"}, {8, "0"}, {102, "{ACAD_REACTORS"}, {330, "B"}, {102, "}"}})
      .entity("HATCH", {{5, "B"}, {71, "1"}})
      .block({{2, "*D1"}}, database::test::record("LINE", {{8, "0"}}))
      .entity("DIMENSION", {{100, "AcDbDimension"}, {2, "*D1"}, {70, "32"}})
      .open();
  // clang-format on
};

TEST_F(ReadOnlyReasonTest, IsThatOfTheTableWhereNoEntitysCanBeChanged) {
  EXPECT_EQ(reasons::followsFromBoth.sentence, ofLine(lengthOfLine));
  EXPECT_EQ(reasons::followsFromBoth.sentence, ofLine(lengthOfLine, 1)) << "whatever else there is";
}

TEST_F(ReadOnlyReasonTest, IsEmptyWhereNothingStandsInTheWay) {
  EXPECT_EQ(L"", ofLine(layer));
  EXPECT_EQ(L"", ofLine(startOfLine));
}

TEST_F(ReadOnlyReasonTest, IsThatOfTheEntityWhereItsPutWouldBeRefused) {
  EXPECT_EQ(L"The layer Locked is locked.", ofLine(layer, 1));
  EXPECT_EQ(reasons::followedByHatch.sentence, ofLine(startOfLine, 2));
  EXPECT_EQ(L"", ofLine(thicknessOfLine, 2));
  EXPECT_EQ(reasons::pictureWouldStay.sentence,
            readOnlyReason(CLSID_VeltDimRotated, dimStyle, drawing->entities().back()));
}

TEST_F(ReadOnlyReasonTest, IsEmptyForWhatIsNotThere) {
  const VkDbObjectId locked = line(1);
  EXPECT_EQ(L"", readOnlyReason(GUID_NULL, layer, locked)) << "no class";
  EXPECT_EQ(L"", readOnlyReason(CLSID_VeltLine, -23, locked)) << "no property";
  EXPECT_EQ(L"", readOnlyReason(CLSID_VeltLine, layer, VkDbObjectId::kNull)) << "no entity";
  EXPECT_EQ(L"", readOnlyReason(CLSID_VeltCircle, layer, locked)) << "an entity of another class";
  drawing.reset();
  EXPECT_EQ(L"", readOnlyReason(CLSID_VeltLine, layer, locked)) << "a drawing that is closed";
}

}  // namespace
}  // namespace velt::automation
