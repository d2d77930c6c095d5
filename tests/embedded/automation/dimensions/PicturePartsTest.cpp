#include "embedded/automation/dimensions/PictureParts.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using database::test::record;

// clang-format off
// Ten long, upright extension lines, the dimension line at a height of five.
const std::string firstExtension  = record("LINE", {{8, "0"}, {10, "0"}, {20, "1"}, {11, "0"}, {21, "6"}});
const std::string secondExtension = record("LINE", {{8, "0"}, {10, "10"}, {20, "1"}, {11, "10"}, {21, "6"}});
const std::string dimensionLine   = record("LINE", {{8, "0"}, {10, "9"}, {20, "5"}, {11, "1"}, {21, "5"}});
const std::string filledArrow     = record("SOLID", {{10, "1"}, {20, "5.2"}, {11, "1"}, {21, "4.8"}, {12, "0"}, {22, "5"}, {13, "0"}, {23, "5"}});
const std::string dotArrow        = record("INSERT", {{2, "_Dot"}, {10, "10"}, {20, "5"}});
const std::string words           = record("MTEXT", {{100, "AcDbMText"}, {10, "5"}, {20, "5"}, {1, "\\A1;10"}});
const std::string definingPoint   = record("POINT", {{8, "Defpoints"}, {10, "0"}, {20, "0"}});
// clang-format on

class PicturePartsTest : public ::testing::Test {
 protected:
  // clang-format off
  Sample sample(const std::string& picture, const std::string& rotation = "0", Pairs more = {}) {
    return Sample()
        .tableRecord("DIMSTYLE", {{2, "Mine"}, {173, "1"}, {344, "D0"}})
        .tableRecord("BLOCK_RECORD", {{5, "D0"}, {2, "_Dot"}})
        .block({{2, "_Dot"}}, record("CIRCLE", {{40, "0.5"}}))
        .block({{2, "LABEL"}}, record("TEXT", {{1, "10"}}))
        .block({{2, "*D1"}}, picture)
        .entity("DIMENSION", {{100, "AcDbDimension"}, {2, "*d1"}, {3, "Mine"}, {10, "10"}, {20, "5"}, {70, "32"}, {13, "0"}, {23, "0"}, {14, "10"}, {24, "0"}, {50, rotation}})
        .append(database::test::text(more));
  }
  // clang-format on
  Subject of(const Sample& made) {
    drawing = made.open();
    for (std::size_t entity = 0;; ++entity) {
      if (drawing->view(recordOf(*drawing, entity)).type() == "DIMENSION") return subjectOf(*drawing, entity);
    }
  }
  std::unique_ptr<Drawing> drawing;
};

TEST_F(PicturePartsTest, OnlyABlockThatShowsSomethingIsAPicture) {
  EXPECT_TRUE(hasPicture(of(sample(dimensionLine))));
  EXPECT_FALSE(hasPicture(of(sample(""))));
  EXPECT_FALSE(hasPicture(of(Sample().entity("DIMENSION", {{2, "*D9"}}))));
  EXPECT_FALSE(hasPicture(of(Sample().entity("DIMENSION"))));
}

TEST_F(PicturePartsTest, LinesAreToldByWhereTheyLie) {
  const PictureLines lines = linesOfPicture(of(sample(firstExtension + secondExtension + dimensionLine
                                                      + filledArrow + dotArrow + words + definingPoint)));
  EXPECT_EQ(nullptr, lines.whyNot);
  EXPECT_EQ(2U, lines.extensionLines.size());
  EXPECT_EQ(1U, lines.dimensionLines.size());
  EXPECT_EQ(1U, lines.filledArrowheads.size());
  EXPECT_EQ(1U, lines.arrowheadBlocks.size());
}

TEST_F(PicturePartsTest, OneLineThatIsNeitherMakesAllOfThemUnknown) {
  const std::string leader = record("LINE", {{10, "5"}, {20, "5"}, {11, "7"}, {21, "8"}});
  const std::string dot = record("LINE", {{10, "0"}, {20, "5"}, {11, "0"}, {21, "5"}});
  const std::string elsewhere = record("INSERT", {{2, "_Dot"}, {10, "5"}, {20, "5"}});
  const std::string otherBlock = record("INSERT", {{2, "LABEL"}, {10, "10"}, {20, "5"}});
  const std::string fill = record(
      "SOLID", {{10, "1"}, {20, "1"}, {11, "2"}, {21, "1"}, {12, "2"}, {22, "2"}, {13, "2"}, {23, "2"}});
  const std::string arc = record("ARC", {{10, "0"}, {20, "0"}, {40, "5"}});
  for (const std::string& odd : {leader, dot, elsewhere, otherBlock, fill, arc})
    EXPECT_NE(nullptr, linesOfPicture(of(sample(dimensionLine + odd))).whyNot) << odd;
}

TEST_F(PicturePartsTest, OnlyDimensionsSeenFromAboveAreTold) {
  EXPECT_EQ(nullptr, linesOfPicture(of(sample(dimensionLine))).whyNot);
  EXPECT_NE(nullptr, linesOfPicture(of(sample(dimensionLine, "90"))).whyNot)
      << "both points are at one height";
  EXPECT_NE(nullptr, linesOfPicture(of(sample(dimensionLine, "0", {{52, "60"}}))).whyNot) << "slanted";
  EXPECT_NE(nullptr,
            linesOfPicture(of(sample(dimensionLine, "0", {{210, "0"}, {220, "1"}, {230, "0"}}))).whyNot);
  EXPECT_NE(nullptr, linesOfPicture(of(sample(dimensionLine, "0", {{12, "1"}, {22, "0"}}))).whyNot)
      << "moved";
}

TEST_F(PicturePartsTest, TextsAreToldAmongEntitiesThatAreNotTexts) {
  const std::string plain = record("TEXT", {{100, "AcDbText"}, {1, "10"}});
  const PictureTexts texts =
      textsOfPicture(of(sample(dimensionLine + dotArrow + words + plain + definingPoint)));
  EXPECT_EQ(nullptr, texts.whyNot);
  EXPECT_EQ(2U, texts.records.size());
}

TEST_F(PicturePartsTest, TextThatMayBeElsewhereIsUnknown) {
  const std::string label = record("INSERT", {{2, "LABEL"}});
  const std::string missing = record("INSERT", {{2, "NOWHERE"}});
  const std::string odd = record("ACAD_PROXY_ENTITY", {{8, "0"}});
  for (const std::string& other : {label, missing, odd})
    EXPECT_NE(nullptr, textsOfPicture(of(sample(words + other))).whyNot) << other;
  EXPECT_NE(nullptr, textsOfPicture(of(sample(dimensionLine))).whyNot) << "a text must be somewhere";
}

TEST_F(PicturePartsTest, TextWithColorsOfItsOwnIsLeftAlone) {
  // clang-format off
  const std::string inOne = record("MTEXT", {{100, "AcDbMText"}, {1, "\\C1;10"}});
  const std::string inPieces = record("MTEXT", {{100, "AcDbMText"}, {3, "a\\"}, {1, "c255;b"}});
  // clang-format on
  EXPECT_NE(nullptr, textsOfPicture(of(sample(inOne))).whyNot);
  EXPECT_NE(nullptr, textsOfPicture(of(sample(inPieces))).whyNot);
}

TEST_F(PicturePartsTest, APictureThatOthersShowIsLeftAlone) {
  const Sample one = sample(dimensionLine + words);
  EXPECT_EQ(nullptr, textsOfPicture(of(one)).whyNot);
  EXPECT_NE(nullptr, textsOfPicture(of(Sample(one).entity("INSERT", {{2, "*D1"}}))).whyNot);
  EXPECT_NE(nullptr, linesOfPicture(of(Sample(one).entity("ARC_DIMENSION", {{2, "*D1"}}))).whyNot);
  EXPECT_EQ(nullptr, linesOfPicture(of(one)).whyNot) << "in another drawing";
}

}  // namespace
}  // namespace velt::automation
