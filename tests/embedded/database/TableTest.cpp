#include "embedded/database/Table.h"

#include <gtest/gtest.h>

namespace velt::database {
namespace {

Table threeLayers() {
  return Table(
      {{.name = L"0", .record = 3}, {.name = L"Wände", .record = 4}, {.name = L"WÄNDE", .record = 5}});
}

TEST(Table, ANameIsFoundInAnyCase) {
  const Table table = threeLayers();
  ASSERT_NE(nullptr, table.find(L"wÄnde"));
  EXPECT_EQ(nullptr, table.find(L"Türen"));
}

TEST(Table, OfTwoEntriesWithOneNameTheFirstIsFoundAndBothStay) {
  const Table table = threeLayers();
  EXPECT_EQ(4U, table.find(L"WÄNDE")->record);
  EXPECT_EQ(3U, table.entries().size());
  EXPECT_EQ(L"WÄNDE", table.ofRecord(5)->name);
}

TEST(Table, ABlockIsFoundByItsRecordAndByItsDefinition) {
  const Table table({{.name = L"Door", .record = 7, .definition = 20}});
  EXPECT_EQ(L"Door", table.ofRecord(7)->name);
  EXPECT_EQ(table.ofRecord(7), table.ofRecord(20));
  EXPECT_EQ(nullptr, table.ofRecord(8));
}

TEST(Table, AnImpliedEntryHasNoRecord) {
  const Table table({{.name = L"ByLayer"}, {.name = L"ByBlock"}});
  EXPECT_TRUE(table.find(L"BYLAYER")->isImplied());
  EXPECT_EQ(nullptr, table.ofRecord(dxf::none));
}

TEST(Table, AnEntryKnowsItsPlace) {
  const Table table = threeLayers();
  EXPECT_EQ(1U, table.indexOf(*table.find(L"wände")));
}

TEST(Table, ACopyFindsItsOwnEntries) {
  const auto document = dxf::Document::parse("0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n", "a.dxf");
  const Table original = threeLayers();
  ASSERT_NE(nullptr, original.findWritten("0", document));
  const Table copy = original;
  EXPECT_EQ(&copy.entries()[1], copy.find(L"wände"));
  EXPECT_EQ(&copy.entries()[0], copy.findWritten("0", document));
}

TEST(Table, ANameIsFoundAsTheDocumentWritesIt) {
  const auto document = dxf::Document::parse(
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$DWGCODEPAGE\n3\nANSI_1252\n0\nENDSEC\n0\nEOF\n",
      "a.dxf");
  const Table table = threeLayers();
  for (int time = 1; time <= 2; ++time) {
    SCOPED_TRACE(time);
    EXPECT_EQ(table.find(L"Wände"), table.findWritten("w\xE4nde", document));
    EXPECT_EQ(table.find(L"Wände"), table.findWritten("W\\U+00E4nde", document));
    EXPECT_EQ(nullptr, table.findWritten("T\xFCren", document));
  }
}

}  // namespace
}  // namespace velt::database
