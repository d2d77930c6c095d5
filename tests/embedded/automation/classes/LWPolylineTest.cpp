#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;
using Texts = std::vector<std::wstring>;

class LWPolylineTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("LWPOLYLINE", {{100, "AcDbPolyline"}, {90, "3"}, {70, "129"}, {38, "7"}, {39, "2"},
                             {10, "0"}, {20, "0"}, {40, "0.1"}, {41, "0.2"},
                             {10, "4"}, {20, "0"}, {42, "1"},
                             {10, "4"}, {20, "3"}})
      .entity("LWPOLYLINE", {{100, "AcDbPolyline"}, {90, "2"}, {43, "0.5"}, {10, "0"}, {20, "0"}, {10, "3"}, {20, "4"}})
      .entity("LWPOLYLINE", {{100, "AcDbPolyline"}, {90, "0"}})
      .open();
  // clang-format on
};

TEST_F(LWPolylineTest, VerticesAreGroupsOfFourElements) {
  const Bound made(*drawing, 0);
  const auto expander = made.as<IOPMPropertyExpander>();
  const DISPID vertex = made.id(L"Vertex");
  long groups = 0;
  SHORT grouping = 0;
  EXPECT_EQ(S_OK, expander->GetGroupCount(vertex, &groups));
  EXPECT_EQ(3, groups);
  EXPECT_EQ(S_OK, expander->GetElementGrouping(vertex, &grouping));
  EXPECT_NE(0, grouping);
  const Texts labels = made.elementLabels(L"Vertex");
  ASSERT_EQ(12U, labels.size());
  EXPECT_EQ(L"Vertex X", labels[4]);
  EXPECT_EQ(L"Vertex Y", labels[5]);
  EXPECT_EQ(L"Start segment width", labels[6]);
  EXPECT_EQ(L"End segment width", labels[7]);
  EXPECT_EQ(0.1, made.element(L"Vertex", 2));
  EXPECT_EQ(0.2, made.element(L"Vertex", 3));
  EXPECT_EQ(4, made.element(L"Vertex", 8));
  EXPECT_EQ(3, made.element(L"Vertex", 9));
  EXPECT_EQ((Numbers{0, 0, 4, 0, 4, 3}), made.numbers(L"Vertex"));
}

TEST_F(LWPolylineTest, FlagsAndHeightsAreWhatIsStored) {
  const Bound made(*drawing, 0);
  EXPECT_TRUE(made.flag(L"Closed"));
  EXPECT_TRUE(made.flag(L"LinetypeGeneration"));
  EXPECT_EQ(7, made.real(L"Elevation"));
  EXPECT_EQ(2, made.real(L"Thickness"));
  const Bound open(*drawing, 1);
  EXPECT_FALSE(open.flag(L"Closed"));
  EXPECT_FALSE(open.flag(L"LinetypeGeneration"));
  EXPECT_EQ(0.5, open.real(L"ConstantWidth"));
  EXPECT_EQ(0.5, open.element(L"Vertex", 3));
}

TEST_F(LWPolylineTest, AreaAndLengthIncludeArcsAndTheClosingSegment) {
  const Bound made(*drawing, 0);
  EXPECT_NEAR(4 + 1.5 * pi + 5, made.real(L"Length"), 1e-14);
  EXPECT_NEAR(6 + 1.5 * 1.5 * pi / 2, made.real(L"Area"), 1e-14);
  EXPECT_EQ(5, Bound(*drawing, 1).real(L"Length"));
}

TEST_F(LWPolylineTest, APolylineWithoutVerticesIsNothing) {
  const Bound made(*drawing, 2);
  EXPECT_EQ(Texts(), made.elementLabels(L"Vertex"));
  EXPECT_EQ(0, made.real(L"Length"));
  EXPECT_EQ(0, made.real(L"Area"));
  EXPECT_EQ(Numbers(), made.numbers(L"Vertex"));
}

TEST_F(LWPolylineTest, AVertexIsPutElementByElement) {
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.putElement(L"Vertex", 9, 5));
  EXPECT_EQ((Numbers{0, 0, 4, 0, 4, 5}), made.numbers(L"Vertex"));
  EXPECT_EQ(S_OK, made.putElement(L"Vertex", 6, 0.25));
  EXPECT_EQ(0.25, made.element(L"Vertex", 6));
  EXPECT_EQ(0.2, made.element(L"Vertex", 3));
  EXPECT_EQ(E_INVALIDARG, made.putElement(L"Vertex", 6, -1));
  EXPECT_EQ(E_INVALIDARG, made.putElement(L"Vertex", 12, 1)) << "there are three vertices";
}

TEST_F(LWPolylineTest, AllVerticesArePutAtOnce) {
  const Bound made(*drawing, 0);
  VariantHolder places;
  *places.put() = toVariant(Value(Numbers{1, 1, 5, 1, 5, 4}), VT_VARIANT);
  EXPECT_EQ(S_OK, made.put(L"Vertex", places.get()).result);
  EXPECT_EQ((Numbers{1, 1, 5, 1, 5, 4}), made.numbers(L"Vertex"));
  EXPECT_EQ(0.1, made.element(L"Vertex", 2));
  VariantHolder fewer;
  *fewer.put() = toVariant(Value(Numbers{1, 1, 5, 1}), VT_VARIANT);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Vertex", fewer.get()).scode);
}

TEST_F(LWPolylineTest, FlagsArePutOneByOne) {
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"Closed", flag(false)).result);
  EXPECT_FALSE(made.flag(L"Closed"));
  EXPECT_TRUE(made.flag(L"LinetypeGeneration"));
  EXPECT_EQ(S_OK, made.put(L"ConstantWidth", number(3)).result);
  EXPECT_EQ(3, made.element(L"Vertex", 2));
}

TEST_F(LWPolylineTest, SegmentsOfDifferentWidthsHaveNoGlobalOne) {
  const Bound made(*drawing, 0);
  EXPECT_TRUE(std::isnan(made.real(L"ConstantWidth")));
  EXPECT_EQ(S_OK, made.put(L"ConstantWidth", number(0)).result);
  EXPECT_EQ(0, made.real(L"ConstantWidth"));
  EXPECT_EQ(0, made.element(L"Vertex", 2));
}

}  // namespace
}  // namespace velt::automation
