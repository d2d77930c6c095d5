#include "tool/EntityFacts.h"

#include <gtest/gtest.h>

#include "tests/tool/Drawings.h"
#include "tool/EntitySelection.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using velt::database::Drawing;

TEST(EntityFacts, AreKnownByTheirNamesInAnyCase) {
  EXPECT_TRUE(isFactName("@Handle"));
  EXPECT_FALSE(isFactName("Handle"));
  EXPECT_FALSE(isFactName("@"));
}

TEST(EntityFacts, AreNamedWhereAMisspeltNameBeginsAsTheyDo) {
  const std::vector<std::string> properties{"Layer", "Radius"};
  EXPECT_EQ(didYouMeanOf("@lyer", properties), "; did you mean @layer?");
  EXPECT_EQ(didYouMeanOf("Lyer", properties), "; did you mean Layer?");
  EXPECT_EQ(didYouMeanOf("@nothing of the kind", properties), "");
}

TEST(EntityFacts, TellWhatAnEntityIsAndWhereItStands) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}, {"Walls"}}, line("2F", "Walls")), "house.dxf");
  const VkDbObjectId entity = drawing->entityByHandle(0x2F);
  EXPECT_EQ(factOf(entity, "@handle"), "2F");
  EXPECT_EQ(factOf(entity, "@CLASS"), "Line");
  EXPECT_EQ(factOf(entity, "@type"), "LINE");
  EXPECT_EQ(factOf(entity, "@layer"), "Walls");
  EXPECT_EQ(factOf(entity, "@layout"), "Model");
  EXPECT_EQ(factOf(entity, "@block"), "");
}

}  // namespace
}  // namespace velt::tool
