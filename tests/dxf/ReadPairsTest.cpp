#include "dxf/ReadPairs.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "dxf/Record.h"
#include "tests/dxf/Drawings.h"

namespace velt::dxf {
namespace {

using Pair = std::pair<int, std::string>;

// The pairs of the first record.
std::vector<Pair> pairsReadFrom(const std::string& bytes) {
  const RecordList list = readRecords(bytes, "a.dxf");
  const ReadPairs read = list.pairsOf(list.records.front(), bytes.data());
  std::vector<Pair> all;
  std::string together;
  for (std::uint32_t pair = 0; pair < read.size(); ++pair) {
    all.emplace_back(read.code(pair), read.value(pair));
    together += read.bytes(pair);
  }
  EXPECT_EQ(together, bytes.substr(list.begin, together.size()));
  return all;
}

TEST(ReadPairs, TellCodesInEveryPadding) {
  EXPECT_EQ(
      pairsReadFrom("0\nA\n 10\n1\n  8\nB\n1071\n5\n\t70 \n2\n    62\n3\n-5\nC\n10\n\n 7 \n8\n 20\r\n9\n"),
      (std::vector<Pair>{{0, "A"},
                         {10, "1"},
                         {8, "B"},
                         {1071, "5"},
                         {70, "2"},
                         {62, "3"},
                         {-5, "C"},
                         {10, ""},
                         {7, "8"},
                         {20, "9"}}));
}

TEST(ReadPairs, TellValuesWithTheirBlanksAndWithoutOneLineEnd) {
  EXPECT_EQ(pairsReadFrom("  0\r\nA\r\n  1\r\n  two  \r\n  1\n\r\n  1\r\r\nx\r\r\n  1\n\n"),
            (std::vector<Pair>{{0, "A"}, {1, "  two  "}, {1, ""}, {1, "x\r"}, {1, ""}}));
}

TEST(ReadPairs, TellALastValueWithoutALineEnd) {
  EXPECT_EQ(pairsReadFrom("  0\nA\n  1\nx"), (std::vector<Pair>{{0, "A"}, {1, "x"}}));
  EXPECT_EQ(pairsReadFrom("  0\nA\n  1\nx\r"), (std::vector<Pair>{{0, "A"}, {1, "x\r"}}));
  EXPECT_EQ(pairsReadFrom("0\nA"), (std::vector<Pair>{{0, "A"}}));
}

TEST(ReadPairs, AreTheSameInARecordOfAnyLength) {
  // given values that end just before, at and after the last byte that 16 bits can count, and two that lie far beyond
  for (std::size_t length = 0xFFFF - 20; length < 0xFFFF + 20; ++length) {
    const std::string text(length, 'x');
    const std::string far(200'000, 'y');
    // when, then
    EXPECT_EQ(pairsReadFrom("  0\nA\n  1\n" + text + "\n"), (std::vector<Pair>{{0, "A"}, {1, text}}));
    EXPECT_EQ(pairsReadFrom("  0\nA\n  1\n" + text + "\n  3\n" + far + "\n  4\nb\n"),
              (std::vector<Pair>{{0, "A"}, {1, text}, {3, far}, {4, "b"}}));
  }
}

TEST(ReadPairs, OfARecordThatFollowsALongOneAreItsOwn) {
  const std::string bytes = "  0\nA\n  1\n" + std::string(100'000, 'x') + "\n  2\nb\n  0\nC\n  3\nd\n";
  const RecordList list = readRecords(bytes, "a.dxf");
  ASSERT_EQ(list.records.size(), 2U);
  EXPECT_EQ(list.pairsOf(list.records[0], bytes.data()).size(), 3U);
  const ReadPairs second = list.pairsOf(list.records[1], bytes.data());
  ASSERT_EQ(second.size(), 2U);
  EXPECT_EQ(second.value(1), "d");
}

}  // namespace
}  // namespace velt::dxf
