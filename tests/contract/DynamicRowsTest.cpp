// Rows that come from property sources, on whole drawings: the layer, the registry of the host and its sources
// together.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "host/com/Bstr.h"
#include "host/database/OpenObject.h"
#include "tests/contract/Query.h"
#include "tests/embedded/database/Sample.h"
#include "tests/support/Variants.h"
#include "tests/support/WholeDrawings.h"

namespace velt::tests {
namespace {

using database::Drawing;
using database::test::record;
using database::test::Sample;

// The text of each dynamic row, or "varies".
using Rows = std::map<std::wstring, std::wstring>;

Rows dynamicRows(Query& query) {
  Rows rows;
  EXPECT_TRUE(query.isSetUp && query.ask());
  for (const PROPINFO& row : std::as_const(query.rows)) {
    if (row.dispId != dynamicPropertyDispId) continue;
    EXPECT_EQ(VT_BSTR, row.value.vt);
    rows[row.name.str()] = row.isVaries ? L"varies" : row.value.bstrVal;
  }
  return rows;
}

Rows dynamicRowsOf(const Ids& ids) {
  Query query(ids);
  return dynamicRows(query);
}

std::string attribute(const std::string& tag, const std::string& text) {
  return record(
      "ATTRIB",
      {{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbText"}, {1, text}, {100, "AcDbAttribute"}, {2, tag}});
}

void addDoor(Sample& sample, const std::string& block, const std::string& number, const std::string& rating,
             const std::string& layer = "0") {
  sample.entity("INSERT",
                {{100, "AcDbEntity"}, {8, layer}, {100, "AcDbBlockReference"}, {66, "1"}, {2, block}});
  sample.append(attribute("NUMBER", number) + attribute("RATING", rating) + record("SEQEND", {}));
}

// A dynamic block (A0), two blocks made of it, an ordinary one; four references and two lines, the first with extended
// data.
class DynamicRows : public testing::Test {
 protected:
  DynamicRows() {
    Sample sample;
    sample.layer("0")
        .layer("Locked", {{70, "4"}})
        .tableRecord("BLOCK_RECORD",
                     {{5, "A0"}, {102, "{ACAD_XDICTIONARY"}, {360, "D0"}, {102, "}"}, {2, "Door"}})
        .tableRecord("BLOCK_RECORD", {{5, "A1"}, {2, "*U1"}, {1001, "AcDbBlockRepBTag"}, {1005, "A0"}})
        .tableRecord("BLOCK_RECORD", {{5, "A2"}, {2, "*U2"}, {1001, "AcDbBlockRepBTag"}, {1005, "A0"}})
        .tableRecord("BLOCK_RECORD", {{5, "A3"}, {2, "Plain"}})
        .object("DICTIONARY", {{5, "D0"}, {3, "ACAD_ENHANCEDBLOCK"}, {360, "D1"}})
        .object("ACAD_EVALUATION_GRAPH", {{5, "D1"}});
    addDoor(sample, "*U1", "1", "T30");
    addDoor(sample, "*U2", "2", "T30");
    addDoor(sample, "Door", "3", "T30", "Locked");
    addDoor(sample, "Plain", "4", "T30");
    sample.entity("LINE", {{8, "0"}, {1001, "ACME"}, {1000, "oak"}}).entity("LINE", {{8, "0"}});
    drawing_ = sample.open();
  }

  VkDbObjectId id(std::size_t entity) const { return drawing_->entities()[entity]; }

  std::unique_ptr<Drawing> drawing_;
};

TEST_F(DynamicRows, AReferenceShowsItsAttributesAndALineItsExtendedData) {
  EXPECT_EQ((Rows{{L"NUMBER", L"1"}, {L"RATING", L"T30"}}), dynamicRowsOf({id(0)}));
  EXPECT_EQ((Rows{{L"NUMBER", L"4"}, {L"RATING", L"T30"}}), dynamicRowsOf({id(3)}));
  EXPECT_EQ((Rows{{L"ACME 1", L"oak"}}), dynamicRowsOf({id(4)}));
  EXPECT_EQ(Rows{}, dynamicRowsOf({id(5)}));
}

TEST_F(DynamicRows, ReferencesOfOneDynamicBlockShowTheRowsTogether) {
  EXPECT_EQ((Rows{{L"NUMBER", L"varies"}, {L"RATING", L"T30"}}), dynamicRowsOf({id(0), id(1), id(2)}));
}

TEST_F(DynamicRows, AnyOtherSelectionOfSeveralShowsNone) {
  EXPECT_EQ(Rows{}, dynamicRowsOf({id(4), id(5)})) << "two lines";
  EXPECT_EQ(Rows{}, dynamicRowsOf({id(0), id(3)})) << "of different blocks";
  EXPECT_EQ(Rows{}, dynamicRowsOf({id(3), id(3)})) << "of an ordinary block";
}

TEST_F(DynamicRows, ALineOfTheMergedListIsWrittenToAllReferencesThatAreNotLocked) {
  Query query({id(0), id(1), id(2)});
  ASSERT_TRUE(query.ask());
  const auto* const first = std::find_if(query.rows.begin(), query.rows.end(),
                                         [](const PROPINFO& row) { return row.name == L"NUMBER"; });
  VARIANT value = variants::ownedText(L"9");
  EXPECT_EQ(1, setDynPropSourcesPropValue(*first, value));
  VariantClear(&value);
  EXPECT_EQ((Rows{{L"NUMBER", L"9"}, {L"RATING", L"T30"}}), dynamicRowsOf({id(0), id(1)}));
  EXPECT_EQ((Rows{{L"NUMBER", L"3"}, {L"RATING", L"T30"}}), dynamicRowsOf({id(2)})) << "its layer is locked";
  EXPECT_EQ((Rows{{L"NUMBER", L"4"}, {L"RATING", L"T30"}}), dynamicRowsOf({id(3)})) << "it was not selected";
}

TEST_F(DynamicRows, RowsOutliveTheDrawingThatTheyWereReadFrom) {
  Query query({id(0)});
  EXPECT_FALSE(dynamicRows(query).empty());
  drawing_.reset();
  VARIANT value{};
  for (const PROPINFO& row : std::as_const(query.rows)) {
    if (row.dispId == dynamicPropertyDispId) {
      EXPECT_EQ(1, setDynPropSourcesPropValue(row, value));
    }
  }
}

// The rows that all of them show, with a text where they show the same one.
Rows inCommon(const Ids& ids) {
  Rows common = dynamicRowsOf({ids[0]});
  for (const VkDbObjectId id : ids) {
    const Rows rows = dynamicRowsOf({id});
    std::erase_if(common, [&](const auto& row) { return !rows.contains(row.first); });
    for (auto& [name, text] : common)
      if (rows.at(name) != text) text = L"varies";
  }
  return common;
}

TEST(DynamicRowsOfWholeDrawings, TheReferencesOfADynamicBlockShowTogetherWhatTheyHaveInCommon) {
  std::size_t shown = 0;
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    std::map<long, Ids> references;
    for (const VkDbObjectId id : drawing->entities()) {
      const VkDbObjectPointer<VkDbBlockReference> reference(id, VkDb::kForRead);
      if (reference.openStatus() != Velt::eOk) continue;
      const VkDbObjectId block = vkdbGetEnhancedBlkOriginalBtrId(reference.object());
      if (!block.isNull()) references[block.asOldId()].push_back(id);
    }
    for (const auto& [block, ids] : references) {
      if (ids.size() < 2) continue;
      const Rows rows = dynamicRowsOf(ids);
      EXPECT_EQ(inCommon(ids), rows);
      shown += rows.size();
    }
  });
  EXPECT_GT(shown, 0U);
}

}  // namespace
}  // namespace velt::tests
