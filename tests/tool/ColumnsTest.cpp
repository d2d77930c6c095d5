#include "tool/Columns.h"

#include <gtest/gtest.h>

using namespace velt::tool;

TEST(Columns, CountCharactersNotBytes) {
  EXPECT_EQ(columns("\xC3\xA4\xC3\xA4"), 2U);
  EXPECT_EQ(padded("\xC3\xA4", 3), "\xC3\xA4  ");
  EXPECT_EQ(padded("long", 2), "long");
}
