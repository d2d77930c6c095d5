#include "palette/Palette.h"

#include <gtest/gtest.h>

#include "embedded/database/Drawing.h"
#include "tests/tool/Drawings.h"
#include "tool/Failure.h"

using namespace velt::tool;
using namespace velt::tests;
using velt::database::Drawing;

namespace {

std::unique_ptr<Drawing> twoLinesAndACircle() {
  return Drawing::parse(
      drawingOf({{"0"}, {"Walls"}}, line("2F", "Walls") + line("30", "Walls", 20.0) + circle("31", "0")),
      "house.dxf");
}

std::vector<VkDbObjectId> idsOf(const Drawing& drawing) {
  return {drawing.entities().begin(), drawing.entities().end()};
}

const PROPINFO* rowNamed(const TqVector<PROPINFO>& rows, const wchar_t* name) {
  for (const PROPINFO& row : rows) {
    if (row.name == CStdStr<wchar_t>(name)) return &row;
  }
  return nullptr;
}

}  // namespace

TEST(Palette, TheRowsOfASelectionAreMerged) {
  const auto drawing = twoLinesAndACircle();
  Palette palette(idsOf(*drawing));
  const TqVector<PROPINFO>& rows = palette.query();
  ASSERT_NE(rowNamed(rows, L"Layer"), nullptr);
  EXPECT_TRUE(rowNamed(rows, L"Layer")->isVaries);
  EXPECT_EQ(rowNamed(rows, L"Radius"), nullptr);
}

TEST(Palette, TheRowsStandInDisplayOrder) {
  const auto drawing = twoLinesAndACircle();
  Palette palette(idsOf(*drawing));
  const TqVector<PROPINFO>& rows = palette.query();
  for (std::uint32_t i = 1; i < rows.length(); ++i)
    EXPECT_LE(rows[i - 1].weight, rows[i].weight);
}

TEST(Palette, AnEmptySelectionHasNoRows) {
  Palette palette({});
  EXPECT_TRUE(palette.query().isEmpty());
}

TEST(Palette, AnEntityThatIsGoneEndsTheSetUpWithTheLayersMessage) {
  VkDbObjectId gone;
  {
    const auto drawing = twoLinesAndACircle();
    gone = drawing->entities()[0];
  }
  try {
    Palette palette({gone});
    FAIL() << "a stale entity was accepted";
  } catch (const Failure& failure) {
    EXPECT_NE(std::string(failure.what()).find("the selection cannot be set up: "), std::string::npos);
  }
}

TEST(Palette, ASecondQueryGivesTheSameRows) {
  const auto drawing = twoLinesAndACircle();
  Palette palette(idsOf(*drawing));
  const std::uint32_t first = palette.query().length();
  EXPECT_EQ(palette.query().length(), first);
}
