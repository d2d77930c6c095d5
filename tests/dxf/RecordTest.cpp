#include "dxf/Record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dxf/RecordView.h"
#include "dxf/TagReader.h"
#include "tests/dxf/Drawings.h"

namespace velt::dxf {
namespace {

using testing::entities;
using testing::pairs;

// Each record as "TYPE section container sequence", the last two as the index of the head or "-".
std::vector<std::string> layoutOf(const std::string& bytes) {
  constexpr const char* names[] = {"outside", "header",   "classes", "tables",
                                   "blocks",  "entities", "objects", "other"};
  const RecordList list = readRecords(bytes, "a.dxf");
  std::vector<std::string> layout;
  std::uint32_t next = list.begin;
  for (const Record& record : list.records) {
    EXPECT_EQ(record.begin, next);
    const ReadPairs pairsOfRecord = list.pairsOf(record, bytes.data());
    for (std::uint32_t pair = 0; pair < pairsOfRecord.size(); ++pair) {
      EXPECT_EQ(pairsOfRecord.bytes(pair).data(), bytes.data() + next);
      next += static_cast<std::uint32_t>(pairsOfRecord.bytes(pair).size());
    }
    const RecordView view(pairsOfRecord);
    const auto index = [](std::uint32_t head) { return head == none ? "-" : std::to_string(head); };
    layout.push_back(std::string(view.type()) + " " + names[static_cast<std::size_t>(record.section)] + " "
                     + index(record.container) + " " + index(record.sequenceHead));
  }
  EXPECT_EQ(next, list.end);
  return layout;
}

using Layout = std::vector<std::string>;

TEST(Record, KnowsItsSection) {
  EXPECT_EQ(
      layoutOf(pairs({"999|made by hand", "0|SECTION",        "2|HEADER",  "9|$ACADVER",   "1|AC1027",
                      "0|ENDSEC",         "0|SECTION",        "2|CLASSES", "0|CLASS",      "1|X",
                      "0|ENDSEC",         "0|SECTION",        "2|OBJECTS", "0|DICTIONARY", "0|ENDSEC",
                      "0|SECTION",        "2|ACDSDATA",       "70|2",      "0|ACDSSCHEMA", "0|ENDSEC",
                      "0|SECTION",        "2|THUMBNAILIMAGE", "90|0",      "0|ENDSEC",     "0|EOF"})),
      (Layout{" outside - -", "SECTION header - -", "ENDSEC header - -", "SECTION classes - -",
              "CLASS classes - -", "ENDSEC classes - -", "SECTION objects - -", "DICTIONARY objects - -",
              "ENDSEC objects - -", "SECTION other - -", "ACDSSCHEMA other - -", "ENDSEC other - -",
              "SECTION other - -", "ENDSEC other - -", "EOF outside - -"}));
}

TEST(Record, FindsTheNameOfItsSectionAfterAComment) {
  EXPECT_EQ(layoutOf(pairs({"0|SECTION", "999|hello", "2|ENTITIES", "0|LINE"})),
            (Layout{"SECTION entities - -", "LINE entities - -"}));
}

TEST(Record, KnowsTheTableThatItStandsIn) {
  EXPECT_EQ(
      layoutOf(pairs({"0|SECTION", "2|TABLES", "0|TABLE", "2|LAYER", "70|2", "0|LAYER", "2|0", "0|LAYER",
                      "2|Walls", "0|ENDTAB", "0|TABLE", "2|LTYPE", "0|LTYPE", "0|ENDTAB", "0|ENDSEC"})),
      (Layout{"SECTION tables - -", "TABLE tables - -", "LAYER tables 1 -", "LAYER tables 1 -",
              "ENDTAB tables 1 -", "TABLE tables - -", "LTYPE tables 5 -", "ENDTAB tables 5 -",
              "ENDSEC tables - -"}));
}

TEST(Record, KnowsTheBlockThatItStandsIn) {
  EXPECT_EQ(
      layoutOf(pairs({"0|SECTION", "2|BLOCKS", "0|BLOCK", "2|DOOR", "0|ARC", "0|ENDBLK", "0|BLOCK", "2|EMPTY",
                      "0|ENDBLK", "0|ENDSEC", "0|SECTION", "2|ENTITIES", "0|LINE", "0|ENDSEC"})),
      (Layout{"SECTION blocks - -", "BLOCK blocks - -", "ARC blocks 1 -", "ENDBLK blocks 1 -",
              "BLOCK blocks - -", "ENDBLK blocks 4 -", "ENDSEC blocks - -", "SECTION entities - -",
              "LINE entities - -", "ENDSEC entities - -"}));
}

TEST(Record, ToleratesMissingEnds) {
  // no ENDSEC, ENDTAB or ENDBLK anywhere
  EXPECT_EQ(layoutOf(pairs({"0|SECTION", "2|TABLES",  "0|TABLE",   "0|LAYER",    "0|TABLE",
                            "0|STYLE",   "0|SECTION", "2|BLOCKS",  "0|BLOCK",    "0|LINE",
                            "0|BLOCK",   "0|ARC",     "0|SECTION", "2|ENTITIES", "0|POLYLINE",
                            "0|VERTEX",  "0|SECTION", "2|OBJECTS", "0|VERTEX",   "0|EOF"})),
            (Layout{"SECTION tables - -", "TABLE tables - -", "LAYER tables 1 -", "TABLE tables - -",
                    "STYLE tables 3 -", "SECTION blocks - -", "BLOCK blocks - -", "LINE blocks 6 -",
                    "BLOCK blocks - -", "ARC blocks 8 -", "SECTION entities - -", "POLYLINE entities - -",
                    "VERTEX entities - 11", "SECTION objects - -", "VERTEX objects - -", "EOF outside - -"}));
}

TEST(Record, StandsInNothingAfterTheEndOfWhatItStoodIn) {
  EXPECT_EQ(layoutOf(pairs({"0|SECTION", "2|TABLES", "0|TABLE", "0|ENDTAB", "0|LAYER", "0|ENDSEC", "0|LAYER",
                            "0|SECTION", "2|BLOCKS", "0|BLOCK", "0|ENDBLK", "0|LINE", "0|ENDSEC"})),
            (Layout{"SECTION tables - -", "TABLE tables - -", "ENDTAB tables 1 -", "LAYER tables - -",
                    "ENDSEC tables - -", "LAYER outside - -", "SECTION blocks - -", "BLOCK blocks - -",
                    "ENDBLK blocks 7 -", "LINE blocks - -", "ENDSEC blocks - -"}));
}

TEST(Record, IsATableOrABlockOnlyInItsSection) {
  EXPECT_EQ(layoutOf(entities({"0|TABLE", "0|LINE", "0|BLOCK", "0|LINE"})),
            (Layout{"SECTION entities - -", "TABLE entities - -", "LINE entities - -", "BLOCK entities - -",
                    "LINE entities - -", "ENDSEC entities - -", "EOF outside - -"}));
}

TEST(Record, BelongsToThePolylineInFrontOfIt) {
  EXPECT_EQ(
      layoutOf(entities({"0|POLYLINE", "66|1", "0|VERTEX", "0|VERTEX", "0|SEQEND", "0|VERTEX", "0|SEQEND"})),
      (Layout{"SECTION entities - -", "POLYLINE entities - -", "VERTEX entities - 1", "VERTEX entities - 1",
              "SEQEND entities - 1", "VERTEX entities - -", "SEQEND entities - -", "ENDSEC entities - -",
              "EOF outside - -"}));
}

TEST(Record, BelongsToThePolylineAlsoWithoutItsEnd) {
  EXPECT_EQ(
      layoutOf(
          entities({"0|POLYLINE", "0|VERTEX", "0|LINE", "0|VERTEX", "0|POLYLINE", "0|POLYLINE", "0|VERTEX"})),
      (Layout{"SECTION entities - -", "POLYLINE entities - -", "VERTEX entities - 1", "LINE entities - -",
              "VERTEX entities - -", "POLYLINE entities - -", "POLYLINE entities - -", "VERTEX entities - 6",
              "ENDSEC entities - -", "EOF outside - -"}));
}

TEST(Record, BelongsToTheInsertWhoseAttributesFollow) {
  EXPECT_EQ(layoutOf(entities(
                {"0|INSERT", "66|1", "0|ATTRIB", "0|SEQEND", "0|INSERT", "0|ATTRIB", "0|ATTRIB", "0|LINE"})),
            (Layout{"SECTION entities - -", "INSERT entities - -", "ATTRIB entities - 1",
                    "SEQEND entities - 1", "INSERT entities - -", "ATTRIB entities - 4",
                    "ATTRIB entities - 4", "LINE entities - -", "ENDSEC entities - -", "EOF outside - -"}));
}

TEST(Record, BelongsToAnInsertWithoutAttributesOnlyWhereItSaysThatTheyFollow) {
  EXPECT_EQ(layoutOf(entities(
                {"0|INSERT", "66|     1", "0|SEQEND", "0|INSERT", "0|SEQEND", "0|INSERT", "0|VERTEX"})),
            (Layout{"SECTION entities - -", "INSERT entities - -", "SEQEND entities - 1",
                    "INSERT entities - -", "SEQEND entities - -", "INSERT entities - -",
                    "VERTEX entities - -", "ENDSEC entities - -", "EOF outside - -"}));
}

TEST(Record, BelongsToABlockAndASequenceAtOnce) {
  EXPECT_EQ(
      layoutOf(pairs({"0|SECTION", "2|BLOCKS", "0|BLOCK", "0|POLYLINE", "0|VERTEX", "0|SEQEND", "0|ENDBLK"})),
      (Layout{"SECTION blocks - -", "BLOCK blocks - -", "POLYLINE blocks 1 -", "VERTEX blocks 1 2",
              "SEQEND blocks 1 2", "ENDBLK blocks 1 -"}));
}

TEST(Record, TakesNoMoreRoomThanTheBytesAccountFor) {
  // given lines that would make many records, after the end of the drawing
  const std::string bytes = "  0\nEOF\n" + std::string(1 << 20, '\n');
  // when
  const RecordList list = readRecords(bytes, "a.dxf");
  // then
  EXPECT_LE(list.records.capacity() * sizeof(Record) + list.places.capacity() * sizeof(PairPlace),
            bytes.size() * 10);
}

TEST(Record, OfADrawingThatGoesOnAsItBeginsLeavesLittleRoomUnused) {
  std::string bytes;
  for (int i = 0; i < 10000; ++i)
    bytes += pairs({"0|LINE", "8|Walls", "10|1.25"});
  const RecordList list = readRecords(bytes, "a.dxf");
  EXPECT_LE(list.places.capacity(), list.places.size() * 5 / 4);
  EXPECT_LE(list.records.capacity(), list.records.size() * 5 / 4);
}

}  // namespace
}  // namespace velt::dxf
