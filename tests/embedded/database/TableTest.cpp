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
  const Table original = threeLayers();
  const Table copy = original;
  EXPECT_EQ(&copy.entries()[1], copy.find(L"wände"));
}

}  // namespace
}  // namespace velt::database
