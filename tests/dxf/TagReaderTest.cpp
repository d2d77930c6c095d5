#include "dxf/TagReader.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "dxf/Error.h"
#include "tests/dxf/Drawings.h"

namespace velt::dxf {
namespace {

using testing::pairs;

struct Read {
  int code;
  std::string value;
  bool operator==(const Read&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Read& read) {
  return out << read.code << '|' << read.value;
}

struct TagList {
  std::vector<Tag> tags;
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

TagList readTags(const std::string& bytes, const std::string& file, const Progress& progress = {}) {
  TagReader reader(bytes, file, progress);
  TagList list{.tags = {}, .begin = reader.position()};
  while (const std::optional<Tag> tag = reader.next())
    list.tags.push_back(*tag);
  list.end = reader.position();
  return list;
}

std::vector<Read> readAll(const std::string& bytes) {
  const TagList list = readTags(bytes, "a.dxf");
  std::vector<Read> all;
  std::uint32_t at = list.begin;
  for (const Tag& tag : list.tags) {
    // Every byte belongs to exactly one pair.
    EXPECT_EQ(tag.begin, at == list.begin ? at : bytes.find('\n', at) + 1);
    at = tag.offset + tag.length;
    all.push_back({tag.code, bytes.substr(tag.offset, tag.length)});
  }
  EXPECT_LE(at, list.end);
  return all;
}

// "line: message" of the error, or what was read when there was none.
std::string errorOf(const std::string& bytes) {
  try {
    (void)readTags(bytes, "a.dxf");
    return "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.file(), "a.dxf");
    EXPECT_NE(std::string(error.what()).find(error.message()), std::string::npos);
    return std::to_string(error.line()) + ": " + error.message();
  }
}

TEST(TagReader, ReadsPairsOfBothLineEndsAndOfAMix) {
  const std::vector<Read> expected{{0, "SECTION"}, {2, "ENTITIES"}, {0, "EOF"}};
  EXPECT_EQ(readAll("  0\nSECTION\n  2\nENTITIES\n  0\nEOF\n"), expected);
  EXPECT_EQ(readAll("  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nEOF\r\n"), expected);
  EXPECT_EQ(readAll("  0\r\nSECTION\n  2\nENTITIES\r\n  0\r\nEOF\n"), expected);
}

TEST(TagReader, ReadsGroupCodesInEveryPadding) {
  EXPECT_EQ(readAll("0\nA\n 10\n1\n  8\nB\n1071\n5\n\t70 \n2\n    62\n3\n-5\nC\n  0\nEOF\n"),
            (std::vector<Read>{
                {0, "A"}, {10, "1"}, {8, "B"}, {1071, "5"}, {70, "2"}, {62, "3"}, {-5, "C"}, {0, "EOF"}}));
}

TEST(TagReader, KeepsTheBlanksOfValues) {
  EXPECT_EQ(readAll("  1\n  two  \n  1\n\n  1\n\t\n  0\n EOF \n"),
            (std::vector<Read>{{1, "  two  "}, {1, ""}, {1, "\t"}, {0, " EOF "}}));
}

TEST(TagReader, KeepsOneCarriageReturnOfTwo) {
  EXPECT_EQ(readAll("  1\r\r\nx\r\r\n  0\nEOF\n"), (std::vector<Read>{{1, "x\r"}, {0, "EOF"}}));
}

TEST(TagReader, SkipsAByteOrderMark) {
  const std::string bytes = "\xEF\xBB\xBF  0\nEOF\n";
  EXPECT_EQ(readAll(bytes), (std::vector<Read>{{0, "EOF"}}));
  EXPECT_EQ(readTags(bytes, "a.dxf").begin, 3U);
}

TEST(TagReader, StopsAtTheEofPair) {
  const std::string bytes = "  0\nEOF\nanything\n at all";
  const TagList list = readTags(bytes, "a.dxf");
  EXPECT_EQ(list.tags.size(), 1U);
  EXPECT_EQ(bytes.substr(list.end), "anything\n at all");
  EXPECT_EQ(readTags("  0\n EOF\t\nanything\n at all", "a.dxf").tags.size(), 1U);
}

TEST(TagReader, ToleratesAMissingEof) {
  EXPECT_EQ(readAll("  0\nLINE\n  8\nWalls\n"), (std::vector<Read>{{0, "LINE"}, {8, "Walls"}}));
  EXPECT_EQ(readAll("  0\nLINE\n  8\nWalls"), (std::vector<Read>{{0, "LINE"}, {8, "Walls"}}));
}

TEST(TagReader, ToleratesBlankLinesAtTheEnd) {
  for (const char* end : {"\n", " \r\n\n", "\x1A", "  "}) {
    EXPECT_EQ(readAll(std::string("  0\nLINE\n") + end), (std::vector<Read>{{0, "LINE"}}));
  }
}

TEST(TagReader, RefusesAPairThatIsCutOff) {
  EXPECT_EQ(errorOf("  0\nLINE\n 10\n"), "3: truncated: group code 10 has no value");
  EXPECT_EQ(errorOf("  0\nLINE\n 10"), "3: truncated: group code 10 has no value");
}

TEST(TagReader, RefusesALineThatIsNotAGroupCode) {
  EXPECT_EQ(errorOf("  0\nLINE\nWalls\n  8\n"), "3: expected a group code, found 'Walls'");
  EXPECT_EQ(errorOf("  0\r\nLINE\r\n8x\r\n1\r\n"), "3: expected a group code, found '8x'");
  EXPECT_EQ(errorOf("  0\nLINE\n\n  8\nx\n"), "3: expected a group code, found ''");
  EXPECT_EQ(errorOf("  0\nLINE\n99999\nx\n"), "3: expected a group code, found '99999'");
  EXPECT_EQ(errorOf("  0\nLINE\n4294967296\nx\n"), "3: expected a group code, found '4294967296'");
  EXPECT_EQ(errorOf("  0\nLINE\n1 0\nx\n"), "3: expected a group code, found '1 0'");
  EXPECT_EQ(errorOf("  0\nLINE\n-\nx\n"), "3: expected a group code, found '-'");
}

TEST(TagReader, QuotesNoMoreThanIsReadable) {
  EXPECT_EQ(errorOf("  0\nLINE\n\x01\xFF" + std::string(100, 'x') + "\n"),
            "3: expected a group code, found '??" + std::string(38, 'x') + "...'");
}

TEST(TagReader, RefusesAGroupCodeAfterAnEndlessPadding) {
  EXPECT_EQ(errorOf(std::string(70000, ' ') + "0\nEOF\n").substr(0, 40),
            "1: not a DXF drawing: expected a group c");
}

TEST(TagReader, RefusesAFileThatIsNotADrawing) {
  EXPECT_EQ(errorOf("Dear reader,\n"), "1: not a DXF drawing: expected a group code, found 'Dear reader,'");
  EXPECT_EQ(errorOf("PK\x03\x04"),
            "1: not a DXF drawing: expected a group code, found 'PK?"
            "?'");
}

TEST(TagReader, RefusesAnEmptyFile) {
  EXPECT_EQ(errorOf(""), "0: the file is empty");
}

TEST(TagReader, RefusesABinaryDrawing) {
  using namespace std::string_literals;
  const std::string refusal =
      "0: the file is binary, and only ASCII DXF drawings can be read; if it is a drawing, save it from a "
      "CAD program "
      "as ASCII DXF";
  EXPECT_EQ(errorOf("A drawing in bytes\r\n\x1A\0\0SECTION\0"s), refusal);
  EXPECT_EQ(errorOf("AC1032\0\0\0\0\0"s), refusal);
}

TEST(TagReader, TakesAZeroInATextForABrokenCharacterAndNotForABinaryDrawing) {
  using namespace std::string_literals;
  EXPECT_EQ(readAll("999\na\0b\n  0\nEOF\n"s).size(), 2U);
  EXPECT_EQ(errorOf("Dear reader, this text\0 is long"s).substr(0, 20), "1: not a DXF drawing");
}

TEST(TagReader, RefusesTextInUtf16) {
  EXPECT_EQ(errorOf(std::string("\xFF\xFE \0 \0", 6)), "0: not a DXF drawing: the text is UTF-16");
}

TEST(TagReader, SaysWhereItIs) {
  // given
  std::string bytes;
  for (int i = 0; i < 300000; ++i)
    bytes += pairs({"8|Walls"});
  std::vector<std::uint64_t> done;
  // when
  (void)readTags(bytes, "a.dxf", [&](std::uint64_t bytesDone, std::uint64_t bytesTotal) {
    EXPECT_EQ(bytesTotal, bytes.size());
    done.push_back(bytesDone);
  });
  // then
  ASSERT_GE(done.size(), 3U);
  EXPECT_LE(done.size(), bytes.size() / (1 << 20) + 2);
  EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
  EXPECT_GT(done.front(), 0U);
  EXPECT_LT(done.front(), bytes.size() / 2);
  EXPECT_EQ(done.back(), bytes.size());
}

TEST(TagReader, GivesUpWhenTheProgressThrows) {
  EXPECT_THROW(
      (void)readTags("  0\nEOF\n", "a.dxf", [](auto, auto) { throw std::runtime_error("cancelled"); }),
      std::runtime_error);
}

}  // namespace
}  // namespace velt::dxf
