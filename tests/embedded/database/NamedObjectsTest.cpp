#include "embedded/database/NamedObjects.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Sample;

TEST(NamedObjects, AreCalledWhatTheirHolderCallsThem) {
  // clang-format off
  const auto drawing = Sample()
      .tableRecord("STYLE", {{5, "51"}, {2, "Notes"}})
      .object("DICTIONARY", {{5, "61"}, {3, "Other"}, {350, "63"}, {3, "Plain"}, {350, "60"}, {3, "Twice"}, {360, "60"}})
      .object("IMAGEDEF", {{5, "60"}, {330, "61"}})
      .object("IMAGEDEF", {{5, "62"}, {330, "61"}})
      .object("IMAGEDEF", {{5, "64"}, {330, "99"}})
      .open();
  // clang-format on
  EXPECT_EQ(L"Plain", objectName(*drawing, 0x60)) << "the first name counts";
  EXPECT_EQ(L"", objectName(*drawing, 0x62)) << "not held";
  EXPECT_EQ(L"", objectName(*drawing, 0x64)) << "no holder";
  EXPECT_EQ(L"", objectName(*drawing, 0x99));
  EXPECT_EQ(L"Notes", entryName(*drawing, drawing->textStyles(), 0x51));
  EXPECT_EQ(L"", entryName(*drawing, drawing->textStyles(), 0x60));
}

}  // namespace
}  // namespace velt::database
