#include "host/com/StringArray.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace velt::com {
namespace {

TEST(StringArray, GrowsByWhatIsAddedAndTellsTheIndex) {
  CStringArray strings;
  EXPECT_TRUE(strings.IsEmpty());
  EXPECT_EQ(0, strings.Add(L"Layer"));
  EXPECT_EQ(1, strings.Add(L"Color"));
  EXPECT_EQ(2, strings.GetSize());
  EXPECT_FALSE(strings.IsEmpty());
  EXPECT_STREQ(L"Layer", strings.GetAt(0));
  EXPECT_STREQ(L"Color", strings.GetAt(1));
}

TEST(StringArray, CopiesWhatIsAdded) {
  CStringArray strings;
  wchar_t text[] = L"before";
  strings.Add(text);
  text[0] = L'x';
  EXPECT_STREQ(L"before", strings.GetAt(0));
}

TEST(StringArray, TakesNullForTheEmptyString) {
  CStringArray strings;
  strings.Add(nullptr);
  EXPECT_STREQ(L"", strings.GetAt(0));
}

TEST(StringArray, AnIndexOutsideGivesTheEmptyString) {
  CStringArray strings;
  strings.Add(L"x");
  for (const long index : {-1L, 1L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
    EXPECT_STREQ(L"", strings.GetAt(index));
  }
}

TEST(StringArray, IsEmptiedAndKeepsItsStringsWhenItGivesUnusedMemoryBack) {
  CStringArray strings;
  for (int i = 0; i < 100; ++i)
    strings.Add(std::to_wstring(i).c_str());
  strings.FreeExtra();
  EXPECT_EQ(100, strings.GetSize());
  EXPECT_STREQ(L"99", strings.GetAt(99));
  strings.RemoveAll();
  strings.FreeExtra();
  EXPECT_TRUE(strings.IsEmpty());
  EXPECT_EQ(0, strings.Add(L"again"));
}

}  // namespace
}  // namespace velt::com
