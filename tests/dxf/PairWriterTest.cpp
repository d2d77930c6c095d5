#include "dxf/PairWriter.h"

#include <gtest/gtest.h>

namespace velt::dxf {
namespace {

TEST(PairWriter, WritesGroupCodesToTheRightOfThreeColumns) {
  PairWriter out(Encoding::utf8());
  out.verbatim(0, "LINE");
  out.verbatim(10, "1.0");
  out.verbatim(370, " 25");
  out.verbatim(1071, "");
  EXPECT_EQ(out.bytes(), "  0\nLINE\n 10\n1.0\n370\n 25\n1071\n\n");
}

TEST(PairWriter, WritesNumbersAndPoints) {
  PairWriter out(Encoding::utf8());
  out.integer(70, -3);
  out.real(40, 2.0);
  out.handle(5, 0x1F);
  out.point(10, {1.0, 2.0, 3.0});
  out.flatPoint(11, {4.5, 5.0, 6.0});
  EXPECT_EQ(out.bytes(), " 70\n-3\n 40\n2.0\n  5\n1F\n 10\n1.0\n 20\n2.0\n 30\n3.0\n 11\n4.5\n 21\n5.0\n");
}

TEST(PairWriter, WritesTextsInTheEncodingOfTheDrawing) {
  PairWriter modern(Encoding::utf8());
  modern.text(1, "Küche Ж");
  EXPECT_EQ(modern.bytes(), "  1\nKüche Ж\n");
  PairWriter old(Encoding::ofCodePage("ANSI_1252"));
  old.text(1, "Küche Ж");
  EXPECT_EQ(old.bytes(),
            "  1\nK\xFC"
            "che \\U+0416\n");
}

TEST(PairWriter, ATextWithLineEndsStaysOneValue) {
  PairWriter out(Encoding::utf8());
  out.text(1, "a\nb");
  EXPECT_EQ(out.bytes(), "  1\na^Jb\n");
}

TEST(PairWriter, TakesOverThePairsOfAnother) {
  PairWriter first(Encoding::utf8());
  PairWriter second(Encoding::utf8());
  first.integer(1, 1);
  second.integer(2, 2);
  first.append(second);
  EXPECT_EQ(first.bytes(), "  1\n1\n  2\n2\n");
}

}  // namespace
}  // namespace velt::dxf
