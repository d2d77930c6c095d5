#include "tool/Sentence.h"

#include <gtest/gtest.h>

namespace velt::tool {
namespace {

TEST(Sentence, AWordBeginsSmallInTheMiddle) {
  EXPECT_EQ(inASentence("Millimeters"), "millimeters");
  EXPECT_EQ(inASentence("Astronomical units"), "astronomical units");
  EXPECT_EQ(inASentence("Zones A and B"), "zones A and B");
  EXPECT_EQ(inASentence("The layer is locked"), "the layer is locked");
  EXPECT_EQ(inASentence("A line"), "a line");
  EXPECT_EQ(inASentence("X"), "x");
}

TEST(Sentence, AnAbbreviationStaysAsItIs) {
  EXPECT_EQ(inASentence("US survey feet"), "US survey feet");
  EXPECT_EQ(inASentence("XA"), "XA");
  EXPECT_EQ(inASentence("XZ"), "XZ");
}

TEST(Sentence, OnlyCapitalsOfTheAlphabetAreLookedAt) {
  EXPECT_EQ(inASentence(""), "");
  EXPECT_EQ(inASentence("small"), "small");
  EXPECT_EQ(inASentence("sRGB"), "sRGB");
  EXPECT_EQ(inASentence("@layer"), "@layer");
  EXPECT_EQ(inASentence("[none]"), "[none]");
  EXPECT_EQ(inASentence("X@"), "x@");
  EXPECT_EQ(inASentence("X["), "x[");
  EXPECT_EQ(inASentence("\u00DCbersicht"), "\u00DCbersicht");
}

}  // namespace
}  // namespace velt::tool
