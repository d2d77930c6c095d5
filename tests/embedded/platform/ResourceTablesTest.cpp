#include "embedded/platform/ResourceTables.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <set>
#include <string>

#include "embedded/platform/Categories.h"
#include "embedded/platform/Messages.h"

namespace velt::platform {
namespace {

class ResourceTablesTest : public testing::Test {
 protected:
  void TearDown() override { ResourceTables::restore(); }
};

using ResourcesTest = ResourceTablesTest;

std::wstring textOf(HMODULE module, UINT id) {
  wchar_t buffer[2048] = L"untouched";
  const INT length = LoadStringW(module, id, buffer, 2047);
  EXPECT_TRUE(length == 0 || static_cast<std::size_t>(length) == std::wcslen(buffer));
  return buffer;
}

HMODULE messageLibrary() {
  return LoadLibraryExW(L"PropertyBarRes.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

TEST_F(ResourcesTest, LibrariesAreFoundByNameWithoutRegardToCase) {
  HMODULE messages = messageLibrary();
  ASSERT_NE(nullptr, messages);
  EXPECT_EQ(messages, loadResourceDll(L"PROPERTYBARRES.DLL"));
  EXPECT_EQ(messages, loadResourceDll(L"propertybarres.dll"));
  HMODULE categories = loadResourceDll(L"PlxOPMRes.dll");
  ASSERT_NE(nullptr, categories);
  EXPECT_NE(messages, categories);
}

TEST_F(ResourcesTest, AnUnknownLibraryIsNull) {
  for (const wchar_t* name : {L"Other.dll", L"", L"PropertyBarRes", L"PropertyBarRes.dll "}) {
    EXPECT_EQ(nullptr, loadResourceDll(name));
    EXPECT_EQ(nullptr, LoadLibraryExW(name, nullptr, LOAD_LIBRARY_AS_DATAFILE));
  }
  EXPECT_EQ(nullptr, loadResourceDll(nullptr));
  EXPECT_EQ(nullptr, LoadLibraryExW(nullptr, nullptr, 0));
  int file = 0;
  EXPECT_EQ(nullptr, LoadLibraryExW(L"PropertyBarRes.dll", &file, 0)) << "a reserved argument";
}

TEST_F(ResourcesTest, AStringIsCutToTheCharactersAskedForAndTerminatedAfterThem) {
  ResourceTables::setText(L"PropertyBarRes.dll", 1, L"12345");
  HMODULE module = messageLibrary();
  for (INT characters = 1; characters <= 7; ++characters) {
    wchar_t buffer[9] = L"xxxxxxxx";
    const INT expected = std::min(characters, 5);
    EXPECT_EQ(expected, LoadStringW(module, 1, buffer, characters));
    EXPECT_EQ(std::wstring(L"12345").substr(0, static_cast<std::size_t>(expected)), std::wstring(buffer));
    EXPECT_EQ(std::wstring(static_cast<std::size_t>(8 - expected - 1), L'x'),
              std::wstring(buffer + expected + 1))
        << "nothing is written after the terminator";
  }
}

TEST_F(ResourcesTest, WhatDoesNotExistLeavesTheBufferAlone) {
  wchar_t buffer[8] = L"before";
  HMODULE module = messageLibrary();
  int noModule = 0;
  EXPECT_EQ(0, LoadStringW(module, 999, buffer, 7));
  EXPECT_EQ(0, LoadStringW(nullptr, 1001, buffer, 7));
  EXPECT_EQ(0, LoadStringW(&noModule, 1001, buffer, 7));
  EXPECT_EQ(0, LoadStringW(module, 1001, buffer, 0));
  EXPECT_EQ(0, LoadStringW(module, 1001, buffer, -1));
  EXPECT_EQ(0, LoadStringW(module, 1001, nullptr, 7));
  EXPECT_STREQ(L"before", buffer);
}

TEST_F(ResourcesTest, EveryMessageAndEveryCategoryHasItsText) {
  HMODULE library = messageLibrary();
  for (const Message& message : messages)
    EXPECT_EQ(message.text, textOf(library, message.id));
  HMODULE categories = loadResourceDll(L"PlxOPMRes.dll");
  for (UINT id = 1001; id <= 1032; ++id) {
    const std::wstring text = textOf(categories, id);
    EXPECT_NE(L"untouched", text) << id;
    EXPECT_FALSE(text.empty()) << id;
  }
  EXPECT_EQ(L"General", textOf(categories, 1012));
  EXPECT_EQ(L"Misc", textOf(categories, 1002));
  EXPECT_EQ(L"untouched", textOf(categories, 1000));
  EXPECT_EQ(L"untouched", textOf(categories, 1033));
}

TEST_F(ResourceTablesTest, ATextCanBeReplacedAddedAndTakenOut) {
  HMODULE module = messageLibrary();
  ResourceTables::setText(L"propertybarres.DLL", 1003, L"other");
  ResourceTables::setText(L"PropertyBarRes.dll", 5000, L"new");
  EXPECT_EQ(L"other", textOf(module, 1003));
  EXPECT_EQ(L"new", textOf(module, 5000));
  ResourceTables::removeText(L"PropertyBarRes.dll", 1003);
  EXPECT_EQ(L"untouched", textOf(module, 1003));
}

TEST_F(ResourceTablesTest, ARemovedLibraryIsNotFoundAndItsHandleYieldsNothing) {
  HMODULE module = messageLibrary();
  ResourceTables::removeLibrary(L"PropertyBarRes.dll");
  EXPECT_EQ(nullptr, messageLibrary());
  EXPECT_EQ(nullptr, loadResourceDll(L"PropertyBarRes.dll"));
  EXPECT_EQ(L"untouched", textOf(module, 1001));
  ResourceTables::restore();
  EXPECT_EQ(module, messageLibrary()) << "the same handle again";
  EXPECT_EQ(L"COM could not be initialized.", textOf(module, 1001));
}

TEST_F(ResourceTablesTest, ALibraryCanBeAddedAndIsEmptyAtFirst) {
  ResourceTables::addLibrary(L"Mine.dll");
  HMODULE module = loadResourceDll(L"mine.dll");
  ASSERT_NE(nullptr, module);
  EXPECT_EQ(L"untouched", textOf(module, 1001));
  ResourceTables::setText(L"Mine.dll", 1, L"one");
  EXPECT_EQ(L"one", textOf(module, 1));
  ResourceTables::removeLibrary(L"Mine.dll");
  ResourceTables::setText(L"Mine.dll", 2, L"two");
  EXPECT_EQ(L"two", textOf(module, 2));
  EXPECT_EQ(L"untouched", textOf(module, 1)) << "a library that comes back by a text holds that text alone";
}

TEST_F(ResourceTablesTest, AddingALibraryThatIsThereEmptiesIt) {
  ResourceTables::addLibrary(L"PropertyBarRes.dll");
  EXPECT_EQ(L"untouched", textOf(messageLibrary(), 1001));
}

TEST_F(ResourceTablesTest, RestoringBringsTheBuiltInTextsBackAndNothingElse) {
  ResourceTables::setText(L"PropertyBarRes.dll", 1001, L"other");
  ResourceTables::setText(L"PropertyBarRes.dll", 5000, L"new");
  ResourceTables::addLibrary(L"Mine.dll");
  ResourceTables::restore();
  EXPECT_EQ(L"COM could not be initialized.", textOf(messageLibrary(), 1001));
  EXPECT_EQ(L"untouched", textOf(messageLibrary(), 5000));
  EXPECT_EQ(nullptr, loadResourceDll(L"Mine.dll"));
}

std::size_t occurrences(const std::wstring& text, const std::wstring& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

TEST(Messages, HoldEveryIdOnceInOrder) {
  std::set<UINT> expected;
  for (UINT id = 1001; id <= 1023; ++id)
    expected.insert(id);
  for (const UINT unused : {1012U, 1013U, 1017U})
    expected.erase(unused);
  std::set<UINT> ids;
  UINT last = 0;
  for (const Message& message : messages) {
    EXPECT_LT(last, message.id);
    last = message.id;
    ids.insert(message.id);
  }
  EXPECT_EQ(expected, ids);
}

TEST(Messages, HaveOnePlaceholderWhereTheNameOfThePropertyIsFilledInAndNoneElsewhere) {
  for (const Message& message : messages) {
    const bool isFormat = message.id == 1010 || message.id == 1014 || message.id == 1019;
    EXPECT_EQ(isFormat ? 1U : 0U, occurrences(message.text, L"%ls")) << message.id;
    EXPECT_EQ(isFormat ? 1U : 0U, occurrences(message.text, L"%")) << message.id;
  }
}

TEST(Messages, DifferFromEachOtherAndFitTheBufferOfTheLoader) {
  std::set<std::wstring> texts;
  for (const Message& message : messages) {
    texts.insert(message.text);
    EXPECT_LT(std::wcslen(message.text), 2047U);
  }
  EXPECT_EQ(std::size(messages), texts.size());
}

}  // namespace
}  // namespace velt::platform
