#include "embedded/database/EnhancedBlocks.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::nameOf;
using test::Sample;

// A dynamic block "Door" (A0) with its dictionary, an anonymous block made of it (A1), and an ordinary block (A2).
Sample doors() {
  return Sample()
      .tableRecord("BLOCK_RECORD",
                   {{5, "A0"}, {102, "{ACAD_XDICTIONARY"}, {360, "D0"}, {102, "}"}, {2, "Door"}})
      .tableRecord("BLOCK_RECORD",
                   {{5, "A1"}, {2, "*U1"}, {1001, "AcDbBlockRepBTag"}, {1070, "1"}, {1005, "A0"}})
      .tableRecord("BLOCK_RECORD", {{5, "A2"}, {2, "Chair"}})
      .object("DICTIONARY", {{5, "D0"}, {3, "ACAD_ENHANCEDBLOCK"}, {360, "D1"}})
      .object("ACAD_EVALUATION_GRAPH", {{5, "D1"}});
}

std::wstring originalIn(const Sample& sample) {
  const auto drawing = sample.open();
  return nameOf(originalBlock(*drawing, entityRecord(*drawing)));
}

TEST(EnhancedBlocks, AReferenceNamesItsBlockInAnyCase) {
  const auto drawing =
      doors().entity("INSERT", {{2, " DOOR"}}).entity("INSERT", {{2, "Window"}}).entity("INSERT").open();
  EXPECT_EQ(L"Door", nameOf(referredBlock(*drawing, entityRecord(*drawing, 0))));
  EXPECT_EQ(nullptr, referredBlock(*drawing, entityRecord(*drawing, 1)));
  EXPECT_EQ(nullptr, referredBlock(*drawing, entityRecord(*drawing, 2)));
}

TEST(EnhancedBlocks, AnAnonymousBlockTellsWhatItWasMadeOf) {
  EXPECT_EQ(L"Door", originalIn(doors().entity("INSERT", {{2, "*U1"}})));
}

TEST(EnhancedBlocks, AReferenceToTheDefinitionOrToAnOrdinaryBlockHasNoOriginal) {
  EXPECT_EQ(L"-", originalIn(doors().entity("INSERT", {{2, "Door"}})));
  EXPECT_EQ(L"-", originalIn(doors().entity("INSERT", {{2, "Chair"}})));
  EXPECT_EQ(L"-", originalIn(doors().entity("INSERT", {{2, "Window"}})));
}

TEST(EnhancedBlocks, TheReferencesOwnDictionaryTellsItWhereTheBlockDoesNot) {
  const auto with = [](const char* original) {
    return doors()
        .entity("INSERT", {{102, "{ACAD_XDICTIONARY"}, {360, "E0"}, {102, "}"}, {2, "Chair"}})
        .object("DICTIONARY", {{5, "E0"}, {3, "AcDbBlockRepresentation"}, {360, "E1"}})
        .object("DICTIONARY", {{5, "E1"}, {3, "AppDataCache"}, {360, "E9"}, {3, "AcDbRepData"}, {360, "E2"}})
        .object("ACDB_BLOCKREPRESENTATION_DATA",
                {{5, "E2"}, {100, "AcDbBlockRepresentationData"}, {70, "1"}, {340, original}});
  };
  EXPECT_EQ(L"Door", originalIn(with("A0")));
  EXPECT_EQ(L"-", originalIn(with("A2"))) << "the block itself";
  EXPECT_EQ(L"-", originalIn(with("E0"))) << "no block";
  EXPECT_EQ(L"-", originalIn(with("FF"))) << "nothing";
}

TEST(EnhancedBlocks, DictionariesMayLeadInACircle) {
  const Sample sample =
      doors()
          .entity("INSERT", {{102, "{ACAD_XDICTIONARY"}, {360, "E0"}, {102, "}"}, {2, "Chair"}})
          .object("DICTIONARY",
                  {{5, "E0"}, {3, "AcDbBlockRepresentation"}, {360, "E0"}, {3, "AcDbRepData"}, {360, "E0"}});
  EXPECT_EQ(L"-", originalIn(sample));
}

TEST(EnhancedBlocks, ABlockThatClaimsToBeMadeOfItselfOrOfNoBlockHasNoOriginal) {
  for (const char* original : {"A5", "D0", "0", "FFFFFFFFFFFFFFFFF", ""}) {
    const Sample sample =
        doors()
            .tableRecord("BLOCK_RECORD",
                         {{5, "A5"}, {2, "*U5"}, {1001, "AcDbBlockRepBTag"}, {1005, original}})
            .entity("INSERT", {{2, "*U5"}});
    EXPECT_EQ(L"-", originalIn(sample)) << original;
  }
}

TEST(EnhancedBlocks, ADefinitionIsOneWithTheDictionaryOfItsParameters) {
  const auto drawing = doors().open();
  EXPECT_TRUE(isEnhancedDefinition(*drawing, *drawing->blocks().find(L"Door")));
  EXPECT_FALSE(isEnhancedDefinition(*drawing, *drawing->blocks().find(L"*U1")));
  EXPECT_FALSE(isEnhancedDefinition(*drawing, *drawing->blocks().find(L"Chair")));
}

}  // namespace
}  // namespace velt::database
