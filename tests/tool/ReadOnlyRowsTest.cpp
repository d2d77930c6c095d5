#include "tool/ReadOnlyRows.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "host/automation/IdValues.h"

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
  const std::string old =
      pairs({{0, "SECTION"},  {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {0, "ENDSEC"}, {0, "SECTION"},
             {2, "ENTITIES"}, {0, "LINE"},   {5, "2F"},       {8, "0"},      {10, "0"},     {20, "0"},
             {11, "1"},       {21, "1"},     {0, "CIRCLE"},   {5, "30"},     {8, "0"},      {10, "0"},
             {20, "0"},       {40, "1"},     {0, "ENDSEC"},   {0, "EOF"}});
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

TEST(ReadOnlyRows, OfSeveralEntitiesOnlyThoseThatRefuseAreTold) {
  const std::string followed = pairs({{0, "ARC"},         {5, "31"},           {102, "{ACAD_REACTORS"},
                                      {330, "40"},        {102, "}"},          {100, "AcDbEntity"},
                                      {8, "0"},           {100, "AcDbCircle"}, {10, "0"},
                                      {20, "0"},          {40, "2.5"},         {100, "AcDbArc"},
                                      {50, "0"},          {51, "90"},          {0, "HATCH"},
                                      {5, "40"},          {100, "AcDbEntity"}, {8, "0"},
                                      {100, "AcDbHatch"}, {2, "SOLID"},        {70, "1"},
                                      {71, "1"},          {91, "0"},           {76, "1"}});
  const auto drawing = Drawing::parse(
      drawingOf({{"0"}, {"Shut", 1, 4}}, circle("2F", "Shut") + circle("30", "0") + followed), "house.dxf");
  const std::array ids{drawing->entityByHandle(0x2F), drawing->entityByHandle(0x30),
                       drawing->entityByHandle(0x31)};
  velt::palette::Selection selection(ids);
  selection.query();
  const Refusals refusals = refusalsOf(selection, selection.row("Radius"));
  EXPECT_EQ(refusals.entities, std::vector<std::size_t>{2});
  EXPECT_EQ(refusals.reason, refusalOf(selection.row("Radius"), ids[2]));
  EXPECT_TRUE(refusals.reason.ends_with(" (set --break-associations sees to that)")) << refusals.reason;
  EXPECT_EQ(refusalOf(selection.row("Radius"), ids[1]), "");
  EXPECT_EQ(refusalOf(selection.row("Radius"), ids[0]), "the layer Shut is locked");
}

TEST(ReadOnlyRows, PropertiesOfFamiliesOfClassesAreFoundInEachOfThem) {
  const auto area = [](const std::string& type, const std::string& handle, const std::string& reactors) {
    return pairs({{0, type}, {5, handle}}) + reactors
           + pairs({{100, "AcDbEntity"},
                    {8, "0"},
                    {100, "AcDbTrace"},
                    {10, "0"},
                    {20, "0"},
                    {11, "1"},
                    {21, "0"},
                    {12, "0"},
                    {22, "1"},
                    {13, "1"},
                    {23, "1"}});
  };
  const std::string hatch = pairs({{0, "HATCH"},
                                   {5, "40"},
                                   {100, "AcDbEntity"},
                                   {8, "0"},
                                   {100, "AcDbHatch"},
                                   {2, "SOLID"},
                                   {70, "1"},
                                   {71, "1"},
                                   {91, "0"},
                                   {76, "1"}});
  const auto drawing = Drawing::parse(
      drawingOf({{"0"}}, area("SOLID", "30", "")
                             + area("TRACE", "31", pairs({{102, "{ACAD_REACTORS"}, {330, "40"}, {102, "}"}}))
                             + hatch),
      "house.dxf");
  const std::array ids{drawing->entityByHandle(0x30), drawing->entityByHandle(0x31)};
  velt::palette::Selection selection(ids);
  selection.query();
  EXPECT_EQ(refusalsOf(selection, selection.row("Elevation")).entities, std::vector<std::size_t>{1});
}

TEST(ReadOnlyRows, ARowThatOnlyChoosesAVertexSaysHowToWriteOne) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, line("2F", "0")), "house.dxf");
  PROPINFO record;
  record.name = L"Vertex";
  record.customType = PropertyKind::vertex;
  EXPECT_EQ(refusalOf(velt::palette::Row(record), drawing->entityByHandle(0x2F)),
            "it only chooses the vertex that is shown; to change the second one write Vertex[2].X=VALUE");
  record.isElement = true;
  EXPECT_EQ(refusalOf(velt::palette::Row(record), drawing->entityByHandle(0x2F)), "");
}

TEST(ReadOnlyRows, ARowOfAPlugInIsNotAskedOfThePropertyOfThatName) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, line("2F", "0")), "house.dxf");
  PROPINFO record;
  record.name = L"Handle";
  record.customType = 0;
  record.dispId = 1;
  EXPECT_EQ(refusalOf(velt::palette::Row(record), drawing->entityByHandle(0x2F)), "it never changes");
  record.dispId = dynamicPropertyDispId;
  EXPECT_EQ(refusalOf(velt::palette::Row(record), drawing->entityByHandle(0x2F)), "");
}

}  // namespace
}  // namespace velt::tool
