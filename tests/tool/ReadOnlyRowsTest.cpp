#include "tool/ReadOnlyRows.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/tool/Drawings.h"
#include "tool/EntitySelection.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using velt::database::Drawing;

TEST(ReadOnlyRows, TellTheReasonOfTheHostAsAClause) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, line("2F", "0")), "house.dxf");
  const std::array ids{drawing->entityByHandle(0x2F)};
  velt::palette::Selection selection(ids);
  selection.query();
  const std::string reason = readOnlyReason(selection.row("Handle"));
  ASSERT_FALSE(reason.empty());
  EXPECT_TRUE(reason[0] >= 'a' && reason[0] <= 'z') << reason;
  EXPECT_NE(reason.back(), '.');
  EXPECT_EQ(readOnlyReason(selection.row("Layer")), "") << "a row that can be edited";
}

TEST(ReadOnlyRows, EntitiesOnLockedLayersAreNotAmongThoseThatRefuse) {
  const auto drawing =
      Drawing::parse(drawingOf({{"0"}, {"Walls", 1, 4}}, line("2F", "Walls") + line("30", "0")), "house.dxf");
  velt::palette::Selection selection(select(*drawing, {.all = true}).ids);
  selection.query();
  EXPECT_TRUE(refusalsOf(selection, selection.row("Color")).entities.empty());
}

TEST(ReadOnlyRows, AValueThatTheFormatHasNoPlaceForIsRefusedByEveryEntity) {
  const std::string old = pairs({{0, "SECTION"},
                                 {2, "HEADER"},
                                 {9, "$ACADVER"},
                                 {1, "AC1009"},
                                 {0, "ENDSEC"},
                                 {0, "SECTION"},
                                 {2, "ENTITIES"},
                                 {0, "LINE"},
                                 {5, "2F"},
                                 {8, "0"},
                                 {10, "0"},
                                 {20, "0"},
                                 {11, "1"},
                                 {21, "1"},
                                 {0, "CIRCLE"},
                                 {5, "30"},
                                 {8, "0"},
                                 {10, "0"},
                                 {20, "0"},
                                 {40, "1"},
                                 {0, "ENDSEC"},
                                 {0, "EOF"}});
  const auto drawing = Drawing::parse(old, "old.dxf");
  velt::palette::Selection selection(select(*drawing, {.all = true}).ids);
  selection.query();
  const Refusals refusals = refusalsOf(selection, selection.row("Lineweight"));
  EXPECT_EQ(refusals.entities.size(), 2U);
  EXPECT_NE(refusals.reason.find("cannot store this property"), std::string::npos) << refusals.reason;
  // What the host said of each is replaced.
  velt::palette::Report report;
  report.reasons = {{0, "refused"}, {1, "refused"}};
  tellWhyRefused(report, selection, selection.row("Lineweight"), automation::RefusalLog());
  EXPECT_EQ(report.reasons.at(0), refusals.reason);
  EXPECT_EQ(report.reasons.at(1), refusals.reason);
}

}  // namespace
}  // namespace velt::tool
