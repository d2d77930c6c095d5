#include "dxf/ModelLine.h"

#include <gtest/gtest.h>

namespace velt::dxf {
namespace {

TEST(ModelLine, PrintableCharactersTradePlacesAndBlanksStay) {
  EXPECT_EQ("20800 43 2 0", decodeModelLine("mogoo kl m o"));
  EXPECT_EQ("body $-1 -1 $-1 $2 #", decodeModelLine("=0;& {rn rn {rn {m |"));
  EXPECT_EQ("mogoo kl m o", encodeModelLine("20800 43 2 0"));
}

TEST(ModelLine, ABlankAfterACaretBelongsToIt) {
  EXPECT_EQ("A B", decodeModelLine("^  ]"));
  EXPECT_EQ("^  ]", encodeModelLine("A B"));
  EXPECT_EQ("A", decodeModelLine("^"));
}

TEST(ModelLine, WhatIsWrittenReadsBack) {
  std::string all;
  for (int c = 1; c < 256; ++c)
    all += static_cast<char>(c);
  EXPECT_EQ(all, decodeModelLine(encodeModelLine(all)));
  EXPECT_EQ("\t\x7f\xe4", encodeModelLine("\t\x7f\xe4"));
}

}  // namespace
}  // namespace velt::dxf
