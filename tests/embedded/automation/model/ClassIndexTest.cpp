#include "embedded/automation/model/ClassIndex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cwctype>
#include <string>
#include <thread>
#include <vector>

#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

TEST(ClassIndex, GeneralRowsStandBeforeTheClassesOwn) {
  const ClassIndex index(toyClass);
  ASSERT_EQ(1 + std::size(toyRows), index.rows().size());
  EXPECT_EQ(&toyGeneralRows[0], index.rows()[0]);
  EXPECT_EQ(&toyRows[0], index.rows()[1]);
}

TEST(ClassIndex, FindsEveryRowByIdAndByName) {
  const ClassIndex index(toyClass);
  for (const PropertyRow* row : index.rows()) {
    EXPECT_EQ(row, index.find(row->dispId));
    EXPECT_EQ(row, index.find(std::wstring_view(row->name)));
  }
}

TEST(ClassIndex, FindsNothingElse) {
  const ClassIndex index(toyClass);
  for (const DISPID id : {0, -1, -23, 4, 91, 0x7FFFFFFF, -0x7FFFFFFF})
    EXPECT_EQ(nullptr, index.find(id)) << id;
  for (const wchar_t* name : {L"", L"Rea", L"Reall", L"Refusa1"}) {
    EXPECT_EQ(nullptr, index.find(std::wstring_view(name)));
  }
}

TEST(ClassIndex, FindsARowAgainAsItFindsItFirst) {
  const ClassIndex index(toyClass);
  for (const PropertyRow* row : index.rows()) {
    EXPECT_EQ(row, index.findAgain(row->name));
    EXPECT_EQ(row, index.findAgain(row->name)) << "as the last time";
    EXPECT_EQ(nullptr, index.findAgain(L"Reall"));
    std::wstring upper(row->name);
    for (wchar_t& c : upper)
      c = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(c)));
    EXPECT_EQ(row, index.findAgain(upper.c_str()));
    EXPECT_EQ(row, index.findAgain(std::wstring(row->name).c_str())) << "the same name elsewhere";
  }
}

TEST(ClassIndex, ManyThreadsFindTheirOwnRows) {
  const ClassIndex index(toyClass);
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (const PropertyRow* row : index.rows()) {
    threads.emplace_back([&index, &wrong, row] {
      for (int i = 0; i < 2000; ++i)
        if (index.findAgain(row->name) != row) ++wrong;
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(0, wrong);
}

TEST(ClassIndex, LabelsOfElementsFollowTheRowOrStandAlone) {
  const ClassIndex index(toyClass);
  ASSERT_EQ(3U, index.findEntry(11)->labels.size());
  EXPECT_EQ(L"Spot Z", index.findEntry(11)->labels.text(2));
  ASSERT_EQ(2U, index.findEntry(12)->labels.size());
  EXPECT_EQ(L"First", index.findEntry(12)->labels.text(0));
  EXPECT_TRUE(index.findEntry(7)->labels.empty());
}

TEST(ClassIndex, AClassMayHaveNoGeneralRows) {
  const AutomationClass bare = {
      .clsid = CLSID_VeltTable,
      .name = L"VeltBare",
      .label = L"",
      .dxfName = "",
      .help = L"",
      .rows = toyRows,
  };
  EXPECT_EQ(std::size(toyRows), ClassIndex(bare).rows().size());
}

TEST(NameIndex, ManyNamesAreAllFound) {
  std::vector<std::wstring> names;
  for (int i = 0; i < 1000; ++i)
    names.push_back(L"Name" + std::to_wstring(i));
  NameIndex index;
  for (std::size_t i = 0; i < names.size(); ++i)
    index.add(names[i].c_str(), i);
  for (std::size_t i = 0; i < names.size(); ++i) {
    std::wstring lower = names[i];
    lower[0] = L'n';
    EXPECT_EQ(i, index.find(lower));
  }
  EXPECT_FALSE(index.find(L"Name1000"));
}

TEST(NameIndex, TheFirstOfEqualNamesStays) {
  NameIndex index;
  index.add(L"Area", 1);
  index.add(L"AREA", 2);
  EXPECT_EQ(1U, index.find(L"area"));
}

TEST(NameIndex, OnlyLettersOfAsciiHaveTwoCases) {
  NameIndex index;
  index.add(L"\u00C4rea[", 1);
  EXPECT_FALSE(index.find(L"\u00E4rea["));
  EXPECT_FALSE(index.find(L"\u00C4rea{"));
  EXPECT_TRUE(index.find(L"\u00C4REA["));
}

}  // namespace
}  // namespace velt::automation
