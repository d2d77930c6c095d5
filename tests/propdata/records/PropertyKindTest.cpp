#include <gtest/gtest.h>

#include "propdata/VeltPropData.h"

namespace velt::tests {
namespace {

struct Published {
  std::int32_t number;
  PropertyKind::Code kind;
};

// clang-format off
constexpr Published published[] = {
    {  0, PropertyKind::none},
    {500, PropertyKind::polylineFit},
    {501, PropertyKind::polyline3dFit},
    {502, PropertyKind::segmentWidth},
    {503, PropertyKind::vertex},
    {504, PropertyKind::flag},
    {505, PropertyKind::colorObject},
    {506, PropertyKind::arrowhead},
    {507, PropertyKind::dimensionStyle},
    {508, PropertyKind::ellipseEndAngle},
    {509, PropertyKind::hatchType},
    {510, PropertyKind::hyperlinks},
    {511, PropertyKind::choice},
    {512, PropertyKind::hatchGradient},
    {513, PropertyKind::hatchAngle},
    {514, PropertyKind::hatchFlag},
    {515, PropertyKind::hatchElevation},
    {516, PropertyKind::hatchIslandStyle},
    {517, PropertyKind::hatchIsoPenWidth},
    {518, PropertyKind::hatchPattern},
    {519, PropertyKind::hatchScale},
    {520, PropertyKind::hatchSpacing},
    {521, PropertyKind::entityLayer},
    {522, PropertyKind::entityLinetype},
    {523, PropertyKind::entityPlotStyle},
    {524, PropertyKind::leaderBlock},
    {525, PropertyKind::textDirection},
    {526, PropertyKind::mtextStyle},
    {527, PropertyKind::elevation},
    {528, PropertyKind::number},
    {529, PropertyKind::shapeArea},
    {530, PropertyKind::entityLineweight},
    {531, PropertyKind::viewportPlotStyleTable},
    {532, PropertyKind::meshFit},
    {533, PropertyKind::imageHeight},
    {534, PropertyKind::imageWidth},
    {535, PropertyKind::text},
    {536, PropertyKind::textJustification},
    {537, PropertyKind::textStyle},
    {538, PropertyKind::splineWeight},
    {539, PropertyKind::entityLinetypeScale},
    {540, PropertyKind::color},
    {541, PropertyKind::layer},
    {542, PropertyKind::distance},
    {543, PropertyKind::angle},
    {544, PropertyKind::noUnits},
    {545, PropertyKind::lineweight},
    {546, PropertyKind::plotStyle},
    {547, PropertyKind::linetype},
    {548, PropertyKind::noEditor},
    {549, PropertyKind::plotStyleTable},
    {550, PropertyKind::area},
    {551, PropertyKind::unknownType},
};
// clang-format on

// Palettes and plug-ins are compiled with the numbers, and rows store them.
TEST(PropertyKind, HasThePublishedNumbers) {
  for (const Published& it : published)
    EXPECT_EQ(it.kind, it.number);
}

TEST(PropertyKind, NamesEveryPublishedNumber) {
  std::int32_t next = 500;
  for (const Published& it : published) {
    if (it.kind == PropertyKind::none) continue;
    EXPECT_EQ(it.number, next++);
  }
  EXPECT_EQ(next, 552);
}

TEST(PropertyKind, IsStoredInARowAndComparedWithItAsItIs) {
  PROPINFO row;
  row.customType = PropertyKind::layer;
  EXPECT_TRUE(row.customType == PropertyKind::layer);
  EXPECT_EQ(row.customType, 541);
}

}  // namespace
}  // namespace velt::tests
