#include "embedded/database/Colors.h"

#include <gtest/gtest.h>

#include "embedded/database/Layer.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::Pairs;
using test::Sample;

VkCmColor ofEntity(Pairs pairs) {
  const auto drawing = Sample().entity("LINE", pairs).open();
  return entityColor(Lens(*drawing, entityRecord(*drawing)));
}

VkCmColor ofLayer(Pairs pairs) {
  const auto drawing = Sample().layer("Walls", pairs).open();
  return layerColor(Lens(*drawing, drawing->layers().entries()[0].record));
}

TEST(Colors, AnEntityWithoutAColorIsByLayer) {
  EXPECT_EQ(0xC0000000, ofEntity({}).color());
  EXPECT_EQ(0xC0000000, ofEntity({{62, "256"}}).color());
  EXPECT_TRUE(ofEntity({}).isByLayer());
}

TEST(Colors, AnIndexOfZeroIsByBlock) {
  EXPECT_EQ(0xC1000000, ofEntity({{62, "0"}}).color());
}

TEST(Colors, AnIndexIsKept) {
  EXPECT_EQ(0xC3000001, ofEntity({{62, "1"}}).color());
  EXPECT_EQ(0xC30000FF, ofEntity({{62, "   255"}}).color());
}

TEST(Colors, AnIndexThatMeansNothingIsByLayer) {
  for (const char* index : {"-1", "257", "99999999999999999999", "red", ""}) {
    EXPECT_EQ(0xC0000000, ofEntity({{62, index}}).color()) << index;
  }
}

TEST(Colors, ATrueColorGoesBeforeAnIndex) {
  EXPECT_EQ(0xC29B42BC, ofEntity({{62, "193"}, {420, "10175164"}}).color());
  EXPECT_EQ(0xC2000000, ofEntity({{420, "0"}}).color());
  EXPECT_EQ(0xC2FFFFFF, ofEntity({{62, "256"}, {420, "16777215"}}).color());
}

TEST(Colors, OnlyTheLowerThreeBytesOfATrueColorCount) {
  EXPECT_EQ(0xC2FFFFFF, ofEntity({{420, "-1"}}).color());
  EXPECT_EQ(0xC2123456, ofEntity({{420, "-1038994346"}}).color()) << "0xC2123456, as a signed number";
}

TEST(Colors, ATrueColorThatIsNotANumberLeavesTheIndex) {
  EXPECT_EQ(0xC3000005, ofEntity({{62, "5"}, {420, "blue"}}).color());
  EXPECT_EQ(0xC3000005, ofEntity({{62, "5"}, {420, "4294967296"}}).color()) << "more than 32 bits";
  EXPECT_EQ(0xC3000005, ofEntity({{62, "5"}, {420, "-2147483649"}}).color());
}

TEST(Colors, ANameIsSplitIntoBookAndColor) {
  const VkCmColor color = ofEntity({{62, "42"}, {420, "14848000"}, {430, "RAL CLASSIC$RAL 1006"}});
  EXPECT_EQ(0xC2E29000, color.color());
  EXPECT_STREQ(L"RAL CLASSIC", color.bookName());
  EXPECT_STREQ(L"RAL 1006", color.colorName());
}

TEST(Colors, ANameWithoutABookIsTheColorsName) {
  const VkCmColor color = ofEntity({{430, "Sky"}});
  EXPECT_STREQ(L"Sky", color.colorName());
  EXPECT_STREQ(L"", color.bookName());
}

TEST(Colors, ColorsOfOtherPartsOfTheEntityAreNotItsOwn) {
  const Pairs pairs = {{100, "AcDbEntity"}, {8, "0"},   {100, "AcDbTable"},
                       {62, "3"},           {420, "5"}, {430, "A$B"}};
  EXPECT_EQ(0xC0000000, ofEntity(pairs).color());
  EXPECT_STREQ(L"", ofEntity(pairs).bookName());
}

TEST(Colors, ALayerHasTheColorOfItsIndexWhetherItIsOnOrOff) {
  EXPECT_EQ(0xC3000003, ofLayer({{62, "3"}}).color());
  EXPECT_EQ(0xC3000003, ofLayer({{62, "-3"}}).color());
}

TEST(Colors, ALayerWithoutAUsableIndexHasTheForegroundColor) {
  EXPECT_EQ(0xC3000007, ofLayer({}).color());
  for (const char* index : {"0", "256", "-256", "-9223372036854775808", "x"}) {
    EXPECT_EQ(0xC3000007, ofLayer({{62, index}}).color()) << index;
  }
}

TEST(Colors, ALayerMayHaveATrueColorAndAName) {
  const VkCmColor color = ofLayer({{62, "31"}, {420, "16564615"}, {430, "DIC COLOR GUIDE(R)$DIC 7"}});
  EXPECT_EQ(0xC2FCC187, color.color());
  EXPECT_STREQ(L"DIC COLOR GUIDE(R)", color.bookName());
  EXPECT_STREQ(L"DIC 7", color.colorName());
}

// --- writing ---

// The pairs of an entity that had these before and is given that color.
std::string recolored(Pairs pairs, std::uint32_t value, const wchar_t* name = L"",
                      const wchar_t* book = L"") {
  const auto drawing = Sample().entity("LINE", pairs).open();
  const std::uint32_t line = test::entityRecord(*drawing);
  VkCmColor color;
  color.setColor(value);
  color.setNames(name, book);
  EXPECT_TRUE(setEntityColor(*drawing, line, color));
  EXPECT_TRUE(color == entityColor(Lens(*drawing, line)));
  std::string written;
  const dxf::RecordView view = drawing->view(line);
  for (std::size_t index = 1; index < view.size(); ++index)
    written += std::to_string(view.code(index)) + "=" + std::string(view.value(index)) + " ";
  return written;
}

TEST(Colors, ANewColorLeavesNothingOfTheOldOne) {
  const Pairs named = {{8, "0"}, {62, "5"}, {48, "2.0"}, {420, "255"}, {430, "A$B"}};
  EXPECT_EQ("8=0 62=3 48=2.0 ", recolored(named, 0xC3000003));
  EXPECT_EQ("8=0 48=2.0 ", recolored(named, 0xC0000000));
  EXPECT_EQ("8=0 62=0 48=2.0 ", recolored(named, 0xC1000000));
  EXPECT_EQ("8=0 48=2.0 420=1 ", recolored(named, 0xC2000001));
  EXPECT_EQ("8=0 48=2.0 420=1 430=RAL$1006 ", recolored(named, 0xC2000001, L"1006", L"RAL"));
}

TEST(Colors, AColorGoesWhereColorsStand) {
  EXPECT_EQ("8=0 62=3 10=1.0 ", recolored({{8, "0"}, {10, "1.0"}}, 0xC3000003));
  EXPECT_EQ("8=0 420=1 430=Sky 10=1.0 ", recolored({{8, "0"}, {10, "1.0"}}, 0xC2000001, L"Sky"));
}

TEST(Colors, WhatIsNotAColorOfAnEntityIsNotWritten) {
  const auto drawing = Sample().entity("LINE", {{62, "5"}}).open();
  for (const std::uint32_t value : {0U, 0xC8000000U, 0xC3000000U, 0xC3000100U}) {
    VkCmColor color;
    color.setColor(value);
    EXPECT_FALSE(setEntityColor(*drawing, test::entityRecord(*drawing), color)) << value;
  }
  EXPECT_EQ(0U, drawing->revision());
}

}  // namespace
}  // namespace velt::database
