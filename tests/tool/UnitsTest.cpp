#include "tool/Units.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/embedded/database/Sample.h"

namespace velt::tool {
namespace {

using database::test::Sample;

std::string unitOf(const Sample& sample, PropertyKind::Code kind) {
  const std::unique_ptr<database::Drawing> drawing = sample.open();
  PROPINFO record;
  record.customType = kind;
  return Units(*drawing).of(palette::Row(record));
}

TEST(Units, OfLengthsIsThatOfTheDrawing) {
  const Sample inMillimeters = Sample().header("$INSUNITS", 70, "4");
  EXPECT_EQ(unitOf(inMillimeters, PropertyKind::distance), "millimeters");
  EXPECT_EQ(unitOf(inMillimeters, PropertyKind::area), "square millimeters");
  EXPECT_EQ(unitOf(Sample().header("$INSUNITS", 70, "1"), PropertyKind::distance), "inches");
  EXPECT_EQ(unitOf(Sample().header("$INSUNITS", 70, "24"), PropertyKind::distance), "US survey miles");
  EXPECT_EQ(unitOf(Sample().header("$INSUNITS", 70, "25"), PropertyKind::distance), "drawing units");
  EXPECT_EQ(unitOf(Sample().header("$INSUNITS", 70, "21"), PropertyKind::distance), "US survey feet");
}

TEST(Units, OfADrawingThatDoesNotSayAreItsOwn) {
  for (const Sample& sample :
       {Sample(), Sample().header("$INSUNITS", 70, "0"), Sample().header("$INSUNITS", 70, "99")}) {
    EXPECT_EQ(unitOf(sample, PropertyKind::distance), "drawing units");
    EXPECT_EQ(unitOf(sample, PropertyKind::shapeArea), "square drawing units");
  }
}

TEST(Units, OfOtherKindsAreAlwaysTheSame) {
  EXPECT_EQ(unitOf(Sample(), PropertyKind::angle), "radians");
  EXPECT_EQ(unitOf(Sample(), PropertyKind::entityLineweight), "hundredths of a millimeter");
  EXPECT_EQ(unitOf(Sample(), PropertyKind::noUnits), "");
  EXPECT_EQ(unitOf(Sample(), PropertyKind::entityLayer), "");
}

}  // namespace
}  // namespace velt::tool
