#include "embedded/automation/polylines/HeavyVertexEditor.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using Numbers = std::vector<double>;
using database::test::entityRecord;

VariantHolder list(const Numbers& numbers) {
  VariantHolder held;
  *held.put() = toVariant(Value(numbers), VT_VARIANT);
  return held;
}

constexpr const wchar_t* vertex = L"Vertex";

// A polyline or mesh of four vertices with widths of their own, one after the other on the X axis.
std::unique_ptr<Drawing> sample(const char* flags, const char* vertexFlags = "0",
                                const char* marker = "AcDb2dPolyline") {
  Sample made;
  made.entity("POLYLINE", {{66, "1"}, {100, marker}, {10, "0"}, {20, "0"}, {30, "5"}, {70, flags}});
  for (const char* const x : {"0", "1", "2", "3"}) {
    made.entity("VERTEX", {{100, "AcDbVertex"},
                           {10, x},
                           {20, "0.50"},
                           {30, "5"},
                           {70, vertexFlags},
                           {40, "1"},
                           {41, "2"},
                           {1001, "ACAD"},
                           {1040, "7"}});
  }
  return made.entity("SEQEND", {{8, "0"}}).open();
}

std::string vertexBytes(const Drawing& drawing) {
  const std::uint32_t head = entityRecord(drawing);
  const database::RecordRange members = drawing.members(head);
  std::string bytes;
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record) {
    const dxf::RecordView view = drawing.view(record);
    for (std::size_t index = 0; index < view.size(); ++index)
      bytes += std::to_string(view.code(index)) + "=" + std::string(view.value(index)) + "|";
  }
  return bytes;
}

TEST(HeavyVertexEditor, MovesOneVertexAndLeavesTheOthersAsTheyAreWritten) {
  const auto drawing = sample("0");
  const Bound made(*drawing, 0);
  const std::string before = vertexBytes(*drawing);

  EXPECT_EQ(S_OK, made.putElement(vertex, 4, 1.5));

  EXPECT_EQ((Numbers{0, 0.5, 1.5, 0.5, 2, 0.5, 3, 0.5}), made.numbers(vertex));
  std::string expected = before;
  expected.replace(expected.find("10=1|"), 5, "10=1.5|");
  EXPECT_EQ(expected, vertexBytes(*drawing));
}

TEST(HeavyVertexEditor, APutOfWhatIsThereEditsNothing) {
  const auto drawing = sample("0");
  const Bound made(*drawing, 0);
  const std::string before = vertexBytes(*drawing);
  EXPECT_EQ(S_OK, made.putElement(vertex, 5, 0.5));
  EXPECT_EQ(S_OK, made.put(vertex, list({0, 0.5, 1, 0.5, 2, 0.5, 3, 0.5}).get()).result);
  EXPECT_EQ(before, vertexBytes(*drawing));
}

TEST(HeavyVertexEditor, TakesAllVerticesAtOnceButNoOtherNumberOfThem) {
  const auto drawing = sample("0");
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(vertex, list({9, 8, 7, 6, 5, 4, 3, 2}).get()).result);
  EXPECT_EQ((Numbers{9, 8, 7, 6, 5, 4, 3, 2}), made.numbers(vertex));
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(vertex, list({1, 2, 3, 4}).get()).result);
  EXPECT_EQ((Numbers{9, 8, 7, 6, 5, 4, 3, 2}), made.numbers(vertex));
}

TEST(HeavyVertexEditor, GivesASegmentWidthsOfItsOwn) {
  const auto drawing = sample("0");
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.putElement(vertex, 6, 0.25));
  EXPECT_EQ(S_OK, made.putElement(vertex, 7, 0.75));
  EXPECT_EQ(0.25, made.element(vertex, 6));
  EXPECT_EQ(0.75, made.element(vertex, 7));
  EXPECT_EQ(1, made.element(vertex, 2)) << "of another one";
  EXPECT_NE(S_OK, made.putElement(vertex, 6, -1));
  EXPECT_EQ(S_OK, made.put(L"StartSeg", number(3)).result);
  EXPECT_EQ(S_OK, made.put(L"EndSeg", number(4)).result);
  EXPECT_EQ(3, made.element(vertex, 2));
  EXPECT_EQ(4, made.element(vertex, 3));
}

TEST(HeavyVertexEditor, ACommonWidthTakesAwayTheOthers) {
  const auto drawing = sample("0");
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"ConstantWidth", number(0.5)).result);
  EXPECT_EQ(0.5, made.real(L"ConstantWidth"));
  for (const DWORD element : {2U, 3U, 14U, 15U})
    EXPECT_EQ(0.5, made.element(vertex, element)) << element;
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"ConstantWidth", number(-0.5)).result);
}

TEST(HeavyVertexEditor, EveryVertexFollowsTheElevationAlsoOfASmoothedOne) {
  for (const char* const flags : {"0", "4"}) {
    const auto drawing = sample(flags, "16");
    const Bound made(*drawing, 0);
    EXPECT_EQ(S_OK, made.put(L"Elevation", number(-2)).result);
    EXPECT_EQ(-2, made.real(L"Elevation"));
    const std::string bytes = vertexBytes(*drawing);
    EXPECT_EQ(std::string::npos, bytes.find("30=5|"));
    EXPECT_NE(std::string::npos, bytes.find("30=-2.0|"));
  }
}

TEST(HeavyVertexEditor, WhatASmoothCurveWouldHaveToFollowIsRefused) {
  for (const char* const flags : {"2", "4"}) {
    const auto drawing = sample(flags, *flags == '4' ? "16" : "2");
    const Bound made(*drawing, 0);
    const std::string before = vertexBytes(*drawing);
    EXPECT_NE(S_OK, made.putElement(vertex, 0, 9));
    EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"StartSeg", number(9)).result);
    const Answer refused = made.put(L"Closed", flag(true));
    EXPECT_EQ(DISP_E_EXCEPTION, refused.result);
    EXPECT_EQ(reasons::smoothed.sentence, refused.description);
    EXPECT_EQ(before, vertexBytes(*drawing));
  }
}

TEST(HeavyVertexEditor, WithoutVerticesThereIsNoFirstWidth) {
  const auto drawing =
      Sample().entity("POLYLINE", {{100, "AcDb2dPolyline"}, {70, "0"}}).entity("SEQEND", {{8, "0"}}).open();
  EXPECT_EQ(DISP_E_EXCEPTION, Bound(*drawing, 0).put(L"StartSeg", number(1)).result);
}

TEST(HeavyVertexEditor, PointsInSpaceAreMovedInAllTheirCoordinates) {
  const std::pair<const char*, const char*> kinds[] = {{"8", "32"}, {"16", "64"}, {"64", "192"}};
  for (const auto& [flags, vertexFlags] : kinds) {
    const auto drawing = sample(flags, vertexFlags, "AcDb3dPolyline");
    const Bound made(*drawing, 0);
    EXPECT_EQ(S_OK, made.putElement(vertex, 5, -1)) << flags;
    EXPECT_EQ((Numbers{0, 0.5, 5, 1, 0.5, -1, 2, 0.5, 5, 3, 0.5, 5}), made.numbers(vertex)) << flags;
  }
}

TEST(HeavyVertexEditor, TheOnlyPointInSpaceComesAsAPoint) {
  const auto drawing = Sample()
                           .entity("POLYLINE", {{66, "1"}, {100, "AcDb3dPolyline"}, {70, "8"}})
                           .entity("VERTEX", {{10, "1"}, {20, "2"}, {30, "3"}, {70, "32"}})
                           .entity("SEQEND", {{8, "0"}})
                           .open();
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(vertex, list({4, 5, 6}).get()).result);
  EXPECT_EQ((Numbers{4, 5, 6}), made.numbers(vertex));
}

TEST(HeavyVertexEditor, ARowOfAMeshIsClosedUnlessItIsSmoothed) {
  for (const bool isSmoothed : {false, true}) {
    const auto drawing = sample(isSmoothed ? "20" : "16", "64", "AcDbPolygonMesh");
    const Bound made(*drawing, 0);
    EXPECT_EQ(isSmoothed ? DISP_E_EXCEPTION : S_OK, made.put(L"NClose", flag(true)).result);
    EXPECT_EQ(!isSmoothed, made.flag(L"NClose"));
    EXPECT_FALSE(made.flag(L"MClose"));
  }
}

}  // namespace
}  // namespace velt::automation
