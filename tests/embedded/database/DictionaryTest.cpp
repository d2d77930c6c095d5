#include "embedded/database/Dictionary.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Pairs;
using test::Sample;

// The first object of the drawing is the dictionary, the second what it may lead to.
std::optional<std::uint32_t> entryOf(Pairs dictionary, std::string_view name,
                                     const char* type = "DICTIONARY") {
  const auto drawing = Sample().object(type, dictionary).object("XRECORD", {{5, "B"}}).open();
  const auto found = dictionaryEntry(*drawing, *drawing->recordByHandle(0xA), name);
  EXPECT_TRUE(!found || drawing->handleOf(*found) == 0xB);
  return found;
}

TEST(Dictionary, AnEntryLeadsToItsRecord) {
  EXPECT_TRUE(
      entryOf({{5, "A"}, {100, "AcDbDictionary"}, {281, "1"}, {3, "One"}, {360, "C"}, {3, "Two"}, {350, "B"}},
              "Two"));
  EXPECT_TRUE(entryOf({{5, "A"}, {3, "Two"}, {360, "B"}}, "Two", "ACDBDICTIONARYWDFLT"));
}

TEST(Dictionary, AMissingEntryAndOneThatLeadsNowhereAreNothing) {
  const Pairs dictionary = {{5, "A"},   {100, "AcDbDictionary"}, {3, "One"},   {360, "C"},
                            {3, "Two"}, {360, "nowhere"},        {3, "Three"}, {3, "Four"},
                            {360, "B"}};
  for (const char* name : {"One", "Two", "Three", "Five", "four", ""})
    EXPECT_FALSE(entryOf(dictionary, name)) << name;
  EXPECT_TRUE(entryOf(dictionary, "Four"));
}

TEST(Dictionary, ARecordOfAnotherTypeHasNoEntries) {
  EXPECT_FALSE(entryOf({{5, "A"}, {3, "Two"}, {360, "B"}}, "Two", "XRECORD"));
}

TEST(Dictionary, AnExtensionDictionaryIsTheOneInItsGroup) {
  const auto drawing = Sample()
                           .entity("LINE", {{5, "A"},
                                            {102, "{ACAD_REACTORS"},
                                            {330, "9"},
                                            {102, "}"},
                                            {102, "{ACAD_XDICTIONARY"},
                                            {360, "B"},
                                            {102, "}"}})
                           .entity("LINE", {{5, "C"}, {360, "B"}})
                           .entity("LINE", {{5, "D"}, {102, "{ACAD_XDICTIONARY"}, {360, "77"}, {102, "}"}})
                           .entity("LINE", {{5, "E"}, {102, "{ACAD_XDICTIONARY"}})
                           .object("DICTIONARY", {{5, "B"}})
                           .open();
  const auto of = [&](std::uint64_t handle) {
    return extensionDictionary(*drawing, drawing->recordByHandle(handle).value());
  };
  EXPECT_EQ(drawing->recordByHandle(0xB), of(0xA));
  EXPECT_EQ(std::nullopt, of(0xC));
  EXPECT_EQ(std::nullopt, of(0xD));
  EXPECT_EQ(std::nullopt, of(0xE));
}

}  // namespace
}  // namespace velt::database
