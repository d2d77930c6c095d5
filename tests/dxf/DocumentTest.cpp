#include "dxf/Document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/dxf/Drawings.h"
#include "tests/support/Files.h"
#include "tests/support/WholeDrawings.h"

namespace velt::dxf {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using testing::entities;
using ::testing::HasSubstr;
using testing::headerOf;
using testing::pairs;
using tests::TemporaryFolder;

Document parsed(std::string bytes) {
  return Document::parse(std::move(bytes), "a.dxf");
}

// The message of the Error that opening throws, or that there was none.
std::string errorOfOpening(const fs::path& path) {
  try {
    (void)Document::open(path);
    return "no error";
  } catch (const Error& error) {
    return error.what();
  }
}

std::string errorOfParsing(std::string bytes) {
  try {
    (void)parsed(std::move(bytes));
    return "no error";
  } catch (const Error& error) {
    return error.what();
  }
}

std::uint32_t recordOf(const Document& document, std::string_view type, std::size_t occurrence = 0) {
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    if (document.type(record) == type && occurrence-- == 0) return record;
  }
  ADD_FAILURE() << "no " << type;
  return 0;
}

// One of everything that a drawing may hold.
const std::string& smallDrawing() {
  static const std::string bytes =
      pairs({"999|drawn by hand", "0|SECTION", "2|HEADER", "9|$ACADVER", "1|AC1015", "9|$DWGCODEPAGE",
             "3|ANSI_1252", "9|$EXTMIN", "10|0.0", "20|1.0", "30|2.0", "9|$HANDSEED", "5|FF", "0|ENDSEC"})
      + pairs({"0|SECTION", "2|TABLES", "0|TABLE", "2|LAYER", "5|2", "100|AcDbSymbolTable", "70|1", "0|LAYER",
               "5|10", "100|AcDbSymbolTableRecord", "100|AcDbLayerTableRecord", "2|W\xE4nde", "70|0", "62|7",
               "0|ENDTAB", "0|ENDSEC"})
      + pairs({"0|SECTION", "2|BLOCKS", "0|BLOCK", "5|20", "2|DOOR", "0|ARC", "5|21", "40|.9", "0|ENDBLK",
               "0|ENDSEC"})
      + pairs({"0|SECTION",
               "2|ENTITIES",
               "0|LINE",
               "5|30",
               "102|{ACAD_REACTORS",
               "330|1",
               "102|}",
               "330|1F",
               "100|AcDbEntity",
               "8|W\xE4nde",
               "100|AcDbLine",
               "10|0",
               "20|0",
               "11|1.",
               "21|1e3",
               "1001|PE_URL",
               "1000|http://example.org",
               "0|POLYLINE",
               "66|1",
               "0|VERTEX",
               "10|1",
               "0|SEQEND",
               "0|INSERT",
               "66|1",
               "0|ATTRIB",
               "1|12",
               "0|SEQEND",
               "0|MTEXT",
               "100|AcDbMText",
               "1|a",
               "101|Embedded Object",
               "70|1",
               "0|ENDSEC"})
      + pairs({"0|SECTION", "2|ACDSDATA", "70|2", "0|ENDSEC", "0|EOF"}) + "behind\n";
  return bytes;
}

// --- saving without an edit -------------------------------------------------------------------------------------------

TEST(Document, ASaveWithoutAnEditGivesBackTheBytes) {
  for (const std::string& bytes : {
           smallDrawing(),
           entities({"0|LINE", "8| padded  ", "0|UNKNOWN", "1|\x81\xFF"}),
           std::string("0\r\nSECTION\n  2\r\nENTITIES\n\t0 \r\nLINE\r\n  8\n\xC3(\n0\nENDSEC\n0\nEOF"),
           std::string("\xEF\xBB\xBF  0\nSECTION\n  2\nENTITIES\n  0\nEOF\n\n\x1A"),
           std::string("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\nno eof\n  0\nENDSEC"),
           std::string("  0\nEOF\nanything\0behind", 23),
       }) {
    // given, when
    const Document document = parsed(bytes);
    std::ostringstream stream;
    document.write(stream);
    // then
    EXPECT_EQ(document.bytes(), bytes);
    EXPECT_EQ(stream.str(), bytes);
    EXPECT_FALSE(document.isEdited());
  }
}

TEST(Document, AFailedWriteShowsInTheStream) {
  std::ostringstream stream;
  stream.setstate(std::ios::badbit);
  parsed(smallDrawing()).write(stream);
  EXPECT_FALSE(stream.good());
}

TEST(Document, TellsHowMuchIsWrittenAndGivesUpWhenTheProgressThrows) {
  std::string bytes = smallDrawing();
  const std::size_t entities = bytes.find("EOF") - 3;
  bytes.insert(entities, "999\n" + std::string(std::size_t{3} << 20, 'x') + "\n");
  const Document document = parsed(bytes);
  std::ostringstream stream;
  std::vector<std::uint64_t> told;
  document.write(stream, [&](std::uint64_t done, std::uint64_t total) {
    EXPECT_EQ(total, bytes.size());
    told.push_back(done);
  });
  EXPECT_EQ(stream.str(), bytes);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_GT(told.size(), 3U);
  EXPECT_EQ(told.back(), bytes.size());
  EXPECT_THROW(document.write(stream, [](auto, auto) { throw std::runtime_error("cancelled"); }),
               std::runtime_error);
}

TEST(Document, AMovedDocumentKeepsItsBytes) {
  Document first = parsed(smallDrawing());
  first.replace(recordOf(first, "ARC"), 2, "1.5");
  const std::string expected = first.bytes();
  const Document second = std::move(first);
  EXPECT_EQ(second.bytes(), expected);
}

// --- opening ----------------------------------------------------------------------------------------------------------

TEST(Document, OpensAFile) {
  const TemporaryFolder folder;
  const fs::path file = folder.write("opens.dxf", smallDrawing());
  std::vector<std::uint64_t> done;
  const Document document = Document::open(file, [&](auto bytesDone, auto) { done.push_back(bytesDone); });
  EXPECT_EQ(document.bytes(), smallDrawing());
  EXPECT_EQ(document.displayName(), file);
  EXPECT_EQ(done.back(), smallDrawing().size());
}

TEST(Document, AMissingFileIsAnError) {
  EXPECT_EQ(errorOfOpening("/nowhere/a.dxf"), "/nowhere/a.dxf: cannot be read: No such file or directory");
}

TEST(Document, AFolderIsAnError) {
  EXPECT_THAT(errorOfOpening(fs::temp_directory_path()), HasSubstr("cannot be read: Is a directory"));
}

TEST(Document, AFileThatMayNotBeReadIsAnError) {
  // given a user who is not the superuser, whom nothing keeps from reading
  const TemporaryFolder folder;
  const fs::path file = folder.write("unreadable.dxf", smallDrawing());
  fs::permissions(file, fs::perms::none);
  const uid_t user = geteuid();
  constexpr uid_t nobody = 65534;
  if (user == 0 && seteuid(nobody) != 0) GTEST_SKIP() << "the superuser may read every file";
  // when
  const std::string error = errorOfOpening(file);
  if (user == 0) {
    ASSERT_EQ(seteuid(user), 0);
  }
  // then
  EXPECT_THAT(error, HasSubstr("cannot be read: Permission denied"));
}

TEST(Document, ADeviceIsAnError) {
  EXPECT_THAT(errorOfOpening("/dev/zero"), HasSubstr("it is not a file"));
}

TEST(Document, AnEmptyFileIsAnError) {
  const TemporaryFolder folder;
  const fs::path file = folder.write("empty.dxf", "");
  EXPECT_EQ(errorOfOpening(file), file.string() + ": the file is empty");
}

TEST(Document, AFileBeyondFourGigabytesIsAnErrorBeforeItIsRead) {
  const TemporaryFolder folder;
  const fs::path file = folder.write("huge.dxf", "  0\nEOF\n");
  std::error_code failed;
  // So large that reading it before looking at its size would exhaust the memory of any machine.
  fs::resize_file(file, 1ULL << 40, failed);
  if (failed) GTEST_SKIP() << "no sparse files here: " << failed.message();
  EXPECT_THAT(errorOfOpening(file), HasSubstr("larger than 4 GiB"));
}

TEST(Document, AnErrorNamesFileLineAndWhatWasFound) {
  EXPECT_EQ(errorOfParsing("  0\nSECTION\nENTITIES\n  0\n"),
            "a.dxf:3: expected a group code, found 'ENTITIES'");
  EXPECT_EQ(errorOfParsing("  0\nSECTION\n  2\n"), "a.dxf:3: truncated: group code 2 has no value");
}

TEST(Document, ADrawingThatEndsInsideASectionIsTruncated) {
  EXPECT_EQ(errorOfParsing("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n1.2"),
            "a.dxf:8: truncated: the drawing ends inside a section");
  EXPECT_EQ(errorOfParsing("  0\nSECTION\n  2\nHEADER\n"),
            "a.dxf:4: truncated: the drawing ends inside a section");
}

TEST(Document, AnOpenSectionIsClosedByEof) {
  EXPECT_EQ(parsed("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  0\nEOF\n").recordCount(), 3U);
}

TEST(Document, NumbersInPairsMakeNoDrawing) {
  EXPECT_EQ(errorOfParsing("1\n2\n3\n4\n"), "a.dxf: not a DXF drawing: it holds no section");
  EXPECT_EQ(errorOfParsing("  0\nLINE\n"), "a.dxf: not a DXF drawing: it holds no section");
  EXPECT_EQ(errorOfParsing("\n\n\n"), "a.dxf: not a DXF drawing: it holds no section");
}

TEST(Document, ADrawingWithoutHeaderOrEofIsRead) {
  const Document document = parsed("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  0\nENDSEC\n");
  EXPECT_EQ(document.recordCount(), 3U);
  EXPECT_EQ(document.headerValue("$ACADVER", 1), std::nullopt);
  EXPECT_EQ(document.headerNames(), std::vector<std::string_view>{});
}

TEST(Document, AnEmptyDrawingIsRead) {
  EXPECT_EQ(parsed("  0\nEOF\n").recordCount(), 1U);
}

// --- what it holds ----------------------------------------------------------------------------------------------------

TEST(Document, TellsTheValuesOfHeaderVariables) {
  const Document document = parsed(smallDrawing());
  EXPECT_EQ(document.headerValue("$ACADVER", 1), "AC1015");
  EXPECT_EQ(document.headerValue("$EXTMIN", 30), "2.0");
  EXPECT_EQ(document.headerValue("$EXTMIN", 40), std::nullopt);
  EXPECT_EQ(document.headerValue("$HANDSEED", 5), "FF");
  for (const char* const missing : {"$A", "$CECOLOR", "$EXTMI", "$EXTMINX", "$NONE"})
    EXPECT_FALSE(document.headerVariable(missing)) << missing;
  EXPECT_THAT(document.headerNames(), ElementsAre("$ACADVER", "$DWGCODEPAGE", "$EXTMIN", "$HANDSEED"));
  EXPECT_EQ(document.headerVariable("$EXTMIN")->pairs.count, 3U);
}

TEST(Document, OfTwoHeaderVariablesOfOneNameTheFirstCountsBeforeAndAfterAnEdit) {
  Document document =
      parsed("0\nSECTION\n2\nHEADER\n9\n$B\n70\n1\n9\n$A \n70\n2\n9\n$B\n70\n3\n9\n$C\n0\nENDSEC\n0\nEOF\n");
  EXPECT_EQ(document.headerValue("$B", 70), "1");
  EXPECT_EQ(document.headerValue("$A", 70), "2");
  EXPECT_EQ(document.headerValue("$C", 70), std::nullopt);
  EXPECT_EQ(document.headerValue("$D", 70), std::nullopt);
  EXPECT_EQ(document.headerVariable("$C")->pairs.count, 0U);
  const HeaderVariable first = document.headerVariable("$B").value();
  document.erase(first.record, first.pairs.first - 1);
  document.erase(first.record, first.pairs.first - 1);
  EXPECT_EQ(document.headerValue("$B", 70), "3");
  EXPECT_EQ(document.headerValue("$A", 70), "2");
}

TEST(Document, TellsWhatAHeadHolds) {
  const Document document = parsed(smallDrawing());
  const auto holds = [&](std::string_view type) {
    const PairRange range = document.membersOf(recordOf(document, type));
    std::vector<std::string_view> types;
    for (std::size_t i = 0; i < range.count; ++i) {
      types.push_back(document.type(static_cast<std::uint32_t>(range.first + i)));
    }
    return types;
  };
  EXPECT_THAT(holds("TABLE"), ElementsAre("LAYER", "ENDTAB"));
  EXPECT_THAT(holds("BLOCK"), ElementsAre("ARC", "ENDBLK"));
  EXPECT_THAT(holds("POLYLINE"), ElementsAre("VERTEX", "SEQEND"));
  EXPECT_THAT(holds("INSERT"), ElementsAre("ATTRIB", "SEQEND"));
  EXPECT_THAT(holds("MTEXT"), ElementsAre());
  EXPECT_THAT(holds("EOF"), ElementsAre());
}

TEST(Document, DecodesByVersionAndCodePage) {
  EXPECT_EQ(parsed(smallDrawing()).decode("W\xE4nde"), L"Wände");
  EXPECT_EQ(parsed(headerOf("AC1015", "ANSI_1251")).decode("\xC6"), L"Ж");
  EXPECT_EQ(parsed(headerOf("AC1015", "ANSI_932")).decode("\x95\x5CU+0041"), L"表U+0041");
  EXPECT_EQ(parsed(headerOf("AC1021", "ANSI_1251")).decode("Ж"), L"Ж");
  EXPECT_EQ(parsed(headerOf("AC1015", "ANSI_1252")).encode(L"Ж"), "\\U+0416");
  EXPECT_EQ(parsed(entities({})).decode("\xE4"), L"ä");
}

TEST(Document, AByteOrderMarkSaysUtf8) {
  EXPECT_EQ(parsed("\xEF\xBB\xBF" + headerOf("AC1015", "ANSI_1252")).decode("Ж"), L"Ж");
}

TEST(Document, CountsInTheFileAreNotBelieved) {
  const Document document =
      parsed(entities({"0|LWPOLYLINE", "90|2147483647", "10|1", "20|2", "0|HATCH", "91|99999999", "93|-1"}));
  EXPECT_EQ(document.recordCount(), 5U);
}

// --- editing ----------------------------------------------------------------------------------------------------------

TEST(Document, AReplacedValueLeavesEveryOtherByteAlone) {
  // given paddings and line ends of all kinds
  const std::string before =
      "  0\nSECTION\n  2\nENTITIES\n0\r\nLINE\r\n\t8 \nWalls \r\n 62\r\n     1\n  0\nEOF\n";
  Document document = parsed(before);
  const std::uint32_t line = recordOf(document, "LINE");
  // when
  document.replace(line, 1, "Doors");
  // then
  EXPECT_EQ(document.bytes(),
            "  0\nSECTION\n  2\nENTITIES\n0\r\nLINE\r\n\t8 \nDoors\r\n 62\r\n     1\n  0\nEOF\n");
  EXPECT_EQ(document.view(line).value(1), "Doors");
  EXPECT_TRUE(document.isEdited(line));
  EXPECT_TRUE(document.isEdited());
}

TEST(Document, AnInsertedPairIsWrittenInTheStyleOfTheFile) {
  const auto edited = [](std::string bytes) {
    Document document = parsed(std::move(bytes));
    document.insert(recordOf(document, "LINE"), 1, 8, "Walls");
    document.insert(recordOf(document, "LINE"), 2, 1071, "5");
    return document.bytes();
  };
  EXPECT_EQ(edited("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 62\n1\n  0\nEOF\n"),
            "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\nWalls\n1071\n5\n 62\n1\n  0\nEOF\n");
  EXPECT_EQ(
      edited("0\r\nSECTION\r\n2\r\nENTITIES\r\n0\r\nLINE\r\n62\r\n1\r\n0\r\nEOF\r\n"),
      "0\r\nSECTION\r\n2\r\nENTITIES\r\n0\r\nLINE\r\n8\r\nWalls\r\n1071\r\n5\r\n62\r\n1\r\n0\r\nEOF\r\n");
}

TEST(Document, AnErasedPairIsGone) {
  Document document = parsed(entities({"0|LINE", "8|Walls", "62|1"}));
  document.erase(recordOf(document, "LINE"), 1);
  EXPECT_EQ(document.bytes(), entities({"0|LINE", "62|1"}));
}

TEST(Document, APairAfterAnUnendedLastLineGetsItsOwnLine) {
  Document document = parsed("  0\nSECTION\n  0\nENDSEC\n  0\nLINE\n  8\nWalls");
  document.insert(recordOf(document, "LINE"), 2, 62, "1");
  EXPECT_EQ(document.bytes(), "  0\nSECTION\n  0\nENDSEC\n  0\nLINE\n  8\nWalls\n 62\n1\n");
  document.replace(recordOf(document, "LINE"), 1, "Doors");
  EXPECT_EQ(document.bytes(), "  0\nSECTION\n  0\nENDSEC\n  0\nLINE\n  8\nDoors\n 62\n1\n");
}

TEST(Document, SetReplacesWhatIsThereAndInsertsWhatIsNot) {
  // given
  Document document =
      parsed(entities({"0|LINE", "100|AcDbEntity", "8|0", "6|DASHED", "100|AcDbLine", "10|1"}));
  const std::uint32_t line = recordOf(document, "LINE");
  // when
  EXPECT_EQ(document.set(line, 8, "AcDbEntity", "Walls"), 2U);
  EXPECT_EQ(document.set(line, 62, "AcDbEntity", "3", std::array{8}), 3U);
  EXPECT_EQ(document.set(line, 370, "AcDbEntity", "25"), 5U);
  EXPECT_EQ(document.set(line, 40, "AcDbCircle", "1"), std::nullopt);
  // then
  EXPECT_EQ(document.bytes(), entities({"0|LINE", "100|AcDbEntity", "8|Walls", "62|3", "6|DASHED", "370|25",
                                        "100|AcDbLine", "10|1"}));
}

TEST(Document, SetDoesNotTouchApplicationGroups) {
  Document document = parsed(entities({"0|LINE", "102|{X", "62|9", "102|}", "8|0"}));
  document.set(recordOf(document, "LINE"), 62, "AcDbEntity", "3");
  EXPECT_EQ(document.bytes(), entities({"0|LINE", "102|{X", "62|9", "102|}", "8|0", "62|3"}));
}

TEST(Document, AHeaderVariableCanBeEdited) {
  Document document = parsed(smallDrawing());
  const HeaderVariable seed = document.headerVariable("$HANDSEED").value();
  document.replace(seed.record, seed.pairs.first, "1234");
  EXPECT_EQ(document.headerValue("$HANDSEED", 5), "1234");
}

TEST(Document, AnEditOfOneRecordLeavesViewsOfOthersValid) {
  Document document = parsed(entities({"0|LINE", "8|A", "0|LINE", "8|B", "0|LINE", "8|C"}));
  document.replace(recordOf(document, "LINE", 0), 1, std::string(100, 'x'));
  const RecordView first = document.view(recordOf(document, "LINE", 0));
  for (std::size_t i = 1; i < 3; ++i)
    document.replace(recordOf(document, "LINE", i), 1, "y");
  EXPECT_EQ(first.value(1), std::string(100, 'x'));
}

TEST(Document, AValueMayBeTakenFromTheRecordThatIsEdited) {
  Document document = parsed(entities({"0|LINE", "8|Walls", "6|DASHED"}));
  const std::uint32_t line = recordOf(document, "LINE");
  document.replace(line, 1, std::string(100, 'x'));
  document.replace(line, 1, document.view(line).value(1));
  document.replace(line, 2, document.view(line).value(1));
  EXPECT_EQ(document.view(line).value(1), std::string(100, 'x'));
  EXPECT_EQ(document.view(line).value(2), std::string(100, 'x'));
}

TEST(Document, ARevertedRecordIsAsItWasRead) {
  Document document = parsed(smallDrawing());
  document.replace(recordOf(document, "ARC"), 1, "99");
  document.replace(recordOf(document, "LINE"), 1, "98");
  document.revert(recordOf(document, "ARC"));
  document.revert(recordOf(document, "ARC"));
  EXPECT_EQ(document.view(recordOf(document, "ARC")).value(1), "21");
  EXPECT_TRUE(document.isEdited());
  document.replace(recordOf(document, "MTEXT"), 2, "b");
  EXPECT_EQ(document.view(recordOf(document, "LINE")).value(1), "98");
  document.revert(recordOf(document, "LINE"));
  document.revert(recordOf(document, "MTEXT"));
  EXPECT_FALSE(document.isEdited());
  EXPECT_EQ(document.bytes(), smallDrawing());
}

TEST(Document, ARecordGoesBackToWhatItWasBacked) {
  Document document = parsed("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nA\n0\nENDSEC\n0\nEOF\n");
  const std::uint32_t line = recordOf(document, "LINE");
  const std::string asRead = document.bytes();
  Document::Backup untouched = document.backup(line);
  EXPECT_EQ(line, untouched.record());
  document.replace(line, 1, "B");
  const std::string edited = document.bytes();
  Document::Backup once = document.backup(line);
  document.insert(line, 2, 62, "3");
  document.erase(line, 1);
  document.restore(std::move(once));
  EXPECT_EQ(edited, document.bytes());
  document.restore(std::move(untouched));
  EXPECT_EQ(asRead, document.bytes());
  EXPECT_FALSE(document.isEdited());
}

TEST(Document, AnEditThatWouldBreakTheDrawingIsRefused) {
  Document document = parsed(entities({"0|LINE", "8|A"}));
  const std::uint32_t line = recordOf(document, "LINE");
  EXPECT_THROW(document.replace(line, 0, "ARC"), std::invalid_argument);
  EXPECT_THROW(document.erase(line, 0), std::invalid_argument);
  EXPECT_THROW(document.insert(line, 0, 8, "x"), std::invalid_argument);
  EXPECT_THROW(document.insert(line, 1, 0, "LINE"), std::invalid_argument);
  EXPECT_THROW(document.insert(line, 1, 1072, "x"), std::invalid_argument);
  EXPECT_THROW(document.insert(line, 1, -6, "x"), std::invalid_argument);
  EXPECT_THROW(document.insert(line, 3, 8, "x"), std::invalid_argument);
  EXPECT_THROW(document.replace(line, 2, "x"), std::invalid_argument);
  EXPECT_THROW(document.replace(line, 1, "a\nb"), std::invalid_argument);
  EXPECT_THROW(document.insert(line, 1, 8, "a\r"), std::invalid_argument);
  EXPECT_THROW(document.erase(line, 2), std::invalid_argument);
  EXPECT_THROW(document.erase(99, 1), std::invalid_argument);
  EXPECT_FALSE(document.isEdited());
  EXPECT_EQ(document.bytes(), entities({"0|LINE", "8|A"}));
}

TEST(Document, EditsOfAnyKindAgreeWithTheSimplestModel) {
  // The model: every record is a list of code and value, and a save writes them in order.
  using Model = std::vector<std::vector<std::pair<int, std::string>>>;
  constexpr unsigned seed = 77;
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
  for (int round = 0; round < 50; ++round) {
    // given
    const std::string bytes =
        entities({"0|LINE", "8|A", "62|1", "0|ARC", "8|B", "40|2", "50|3", "0|TEXT", "1|x"});
    Document document = parsed(bytes);
    Model model;
    for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
      const RecordView view = document.view(record);
      model.emplace_back();
      for (std::size_t i = 0; i < view.size(); ++i)
        model.back().emplace_back(view.code(i), view.value(i));
    }
    // when
    for (int step = 0; step < 30; ++step) {
      const std::size_t record = 1 + below(3);
      auto& list = model[record];
      const auto index = static_cast<std::uint32_t>(record);
      const std::string value = std::to_string(random());
      const std::size_t pair = 1 + below(list.size());
      const auto place = list.begin() + static_cast<std::ptrdiff_t>(pair);
      if (pair == list.size() || below(3) == 0) {
        document.insert(index, pair, 40, value);
        list.emplace(place, 40, value);
      } else if (below(2) == 0) {
        document.replace(index, pair, value);
        place->second = value;
      } else {
        document.erase(index, pair);
        list.erase(place);
      }
    }
    // then
    std::string expected;
    for (const auto& list : model) {
      for (const auto& [code, value] : list)
        expected += pairs({std::to_string(code) + "|" + value});
    }
    ASSERT_EQ(document.bytes(), expected);
    // and it reads back
    const Document again = parsed(document.bytes());
    ASSERT_EQ(again.recordCount(), model.size());
  }
}

// --- damaged drawings -------------------------------------------------------------------------------------------------

// Looks at everything that a document offers.
void walk(const Document& document) {
  std::size_t seen = 0;
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    const RecordView view = document.view(record);
    seen += view.handle().size() + document.membersOf(record).count;
    for (std::size_t i = 0; i < view.size(); ++i) {
      seen += document.decode(view.value(i)).size();
      if (view.real(view.code(i), "AcDbEntity")) ++seen;
      if (view.point(view.code(i), anySubclass)) ++seen;
    }
    seen += view.insertionPoint("AcDbLine", {}).value_or(0);
    seen += view.extendedData("PE_URL").value_or(PairRange{}).count;
    seen += view.applicationGroup("ACAD_REACTORS").value_or(PairRange{}).count;
    seen += view.embeddedObject().value_or(PairRange{}).count;
  }
  EXPECT_GT(seen, 0U);
}

// True when it was read. Then it must give its bytes back.
bool survives(const std::string& bytes) {
  std::optional<Document> document;
  try {
    document = parsed(bytes);
  } catch (const Error& error) {
    EXPECT_THAT(error.what(), HasSubstr("a.dxf"));
    return false;
  }
  EXPECT_EQ(document->bytes(), bytes);
  walk(*document);
  return true;
}

TEST(Document, IsReadOrRefusedWhereverItIsCutOff) {
  const std::string& whole = smallDrawing();
  std::size_t read = 0;
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    if (survives(whole.substr(0, length))) ++read;
  }
  EXPECT_GT(read, 0U);
  EXPECT_LT(read, whole.size());
}

TEST(Document, IsReadOrRefusedWhateverByteIsWrong) {
  constexpr unsigned seed = 1234;
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  std::size_t read = 0;
  constexpr std::size_t rounds = 5000;
  for (std::size_t round = 0; round < rounds; ++round) {
    std::string bytes = smallDrawing();
    for (std::size_t flips = 1 + random() % 4; flips > 0; --flips) {
      bytes[random() % bytes.size()] = static_cast<char>(random() & 0xFF);
    }
    if (survives(bytes)) ++read;
  }
  EXPECT_GT(read, 0U);
  EXPECT_LT(read, rounds);
}

// --- whole drawings ---------------------------------------------------------------------------------------------------

// Pairs up to EOF, counted line by line.
std::size_t countPairs(const std::string& bytes) {
  std::istringstream file(bytes);
  std::size_t count = 0;
  std::string code;
  std::string value;
  while (std::getline(file, code) && std::getline(file, value)) {
    ++count;
    if (std::stoi(code) == 0 && value.starts_with("EOF")) break;
  }
  return count;
}

TEST(WholeDrawings, AreReadToTheLastPairAndGivenBackByteForByte) {
  tests::forEachDrawing([](const tests::WholeDrawing& whole) {
    const Document document = Document::parse(whole.bytes, whole.name);
    std::size_t count = 0;
    for (std::uint32_t record = 0; record < document.recordCount(); ++record)
      count += document.view(record).size();
    EXPECT_EQ(count, countPairs(whole.bytes));
    EXPECT_TRUE(document.bytes() == whole.bytes) << "other bytes came out";
  });
}

TEST(WholeDrawings, AreGivenBackByteForByteAlsoWhenEveryRecordIsRewritten) {
  tests::forEachDrawing([](const tests::WholeDrawing& whole) {
    Document document = Document::parse(whole.bytes, whole.name);
    for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
      const std::size_t last = document.view(record).size() - 1;
      if (last != 0) document.replace(record, last, document.view(record).value(last));
    }
    EXPECT_TRUE(document.isEdited());
    EXPECT_TRUE(document.bytes() == whole.bytes) << "other bytes came out";
  });
}

TEST(WholeDrawings, HaveEveryRecordWhereItBelongs) {
  tests::forEachDrawing([](const tests::WholeDrawing& whole) {
    const Document document = Document::parse(whole.bytes, whole.name);
    for (std::uint32_t index = 0; index < document.recordCount(); ++index) {
      const Record& record = document.records()[index];
      const std::string_view type = document.type(index);
      if (type == "VERTEX" || type == "ATTRIB" || type == "SEQEND") {
        ASSERT_NE(record.sequenceHead, none) << type;
      }
      if (type == "ENDTAB" || type == "ENDBLK" || type == "LAYER") {
        ASSERT_NE(record.container, none) << type;
      }
      if (type == "ARC" || type == "CIRCLE") {
        ASSERT_EQ(record.section == Section::Blocks, record.container != none);
        ASSERT_TRUE(document.view(index).real(40, "AcDbCircle").has_value());
      }
      // A comment may stand before the first section.
      EXPECT_EQ(record.section == Section::Outside, type == "EOF" || (index == 0 && type != "SECTION"))
          << type;
    }
  });
}

}  // namespace
}  // namespace velt::dxf
