// Writing through the layer into the automation objects of the host: every row that says it can be written is written
// to the whole selection, and to nothing else.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "samples/FloorPlan.h"
#include "tests/contract/Query.h"

namespace velt::tests {
namespace {

using database::Drawing;

// The entities of each kind.
std::map<std::string, Ids> entitiesByKind(const Drawing& drawing) {
  std::map<std::string, Ids> selections;
  for (const VkDbObjectId id : drawing.entities())
    selections[std::string(drawing.view(database::resolve(id)->record).type())].push_back(id);
  return selections;
}

bool isLocked(const Drawing& drawing, VkDbObjectId id) {
  const database::TableEntry* const layer = database::Entity(*database::resolve(id)).layer();
  return layer != nullptr && database::Layer(drawing, layer->record).isLocked();
}

std::map<std::size_t, std::string> pairsOfAll(const Drawing& drawing) {
  std::map<std::size_t, std::string> pairs;
  for (std::size_t entity = 0; entity < drawing.entities().size(); ++entity)
    pairs[entity] = pairsOf(drawing, drawing.entities()[entity]);
  return pairs;
}

const PROPINFO* sameRow(const TqVector<PROPINFO>& rows, const PROPINFO& wanted) {
  for (const PROPINFO& row : rows) {
    if (row.dispId == wanted.dispId && row.isElement == wanted.isElement
        && row.elementCookie == wanted.elementCookie)
      return &row;
  }
  return nullptr;
}

// How a write through the layer ended.
struct Written {
  int result = -1;
  int locked = 0;
  Ids touched;
};

Written write(Query& query, const PROPINFO& row) {
  Written written;
  VkArray<VkDbObjectId> touched;
  VARIANT value = row.value;
  written.result = SetPropertiesValue(query.selection(), row, value, row.isElement, query.errorText,
                                      written.locked, touched, row.elementCookie);
  for (int i = 0; i < touched.length(); ++i)
    written.touched.push_back(touched[i]);
  return written;
}

// Gives all entities what the first one has. False when one of them refused it.
bool writeAndCheck(const Drawing& drawing, Query& query, const PROPINFO& row, const Ids& selection) {
  const auto before = pairsOfAll(drawing);
  const Written written = write(query, row);
  Ids unlocked;
  for (const VkDbObjectId id : selection) {
    if (!isLocked(drawing, id)) unlocked.push_back(id);
  }
  std::set<std::int64_t> chosen;
  for (const VkDbObjectId id : unlocked)
    chosen.insert(id.asOldId());
  for (std::size_t entity = 0; entity < drawing.entities().size(); ++entity) {
    const VkDbObjectId id = drawing.entities()[entity];
    if (chosen.contains(id.asOldId())) continue;
    EXPECT_EQ(before.at(entity), pairsOf(drawing, id)) << "it was not selected, or is locked";
  }
  if (written.result != 1) return false;
  EXPECT_EQ(selection.size() - unlocked.size(), static_cast<std::size_t>(written.locked));
  EXPECT_EQ(unlocked.size(), written.touched.size());
  Query again(unlocked);
  EXPECT_TRUE(again.isSetUp && again.ask());
  const PROPINFO* const after = sameRow(std::as_const(again.rows), row);
  EXPECT_TRUE(after != nullptr && !after->isVaries) << "all have the value now";
  return true;
}

// The layer first: colors by layer differ as long as their layers do.
std::vector<PROPINFO> editableRows(const Query& query) {
  constexpr DISPID layer = 1281;
  std::vector<PROPINFO> rows;
  for (const PROPINFO& row : query.rows) {
    if (row.isEditable && row.dispId != dynamicPropertyDispId && row.elementGrouping == 0)
      rows.push_back(row);
  }
  std::stable_partition(rows.begin(), rows.end(), [](const PROPINFO& row) { return row.dispId == layer; });
  return rows;
}

TEST(Writing, EveryRowOfTheSampleReachesTheWholeSelectionAndNothingElse) {
  std::set<std::string> refused;
  const auto names = entitiesByKind(*Drawing::parse(samples::sampleFloorPlan(), "sample.dxf"));
  for (const auto& [type, first] : names) {
    const auto drawing = Drawing::parse(samples::sampleFloorPlan(), "sample.dxf");
    Ids selection = entitiesByKind(*drawing)[type];
    // The first entity gives the values; one on a locked layer would never have them changed to its own.
    std::stable_partition(selection.begin(), selection.end(),
                          [&](VkDbObjectId id) { return !isLocked(*drawing, id); });
    Query query(selection);
    ASSERT_TRUE(query.isSetUp && query.ask());
    for (const PROPINFO& row : editableRows(query)) {
      const std::string name(row.displayName.str().begin(), row.displayName.str().end());
      SCOPED_TRACE(type + ": " + name);
      if (!writeAndCheck(*drawing, query, row, selection)) refused.insert(type + ": " + name);
    }
    EXPECT_EQ(drawing->entities().size(),
              Drawing::parse(drawing->document().bytes(), "saved.dxf")->entities().size());
  }
  // The ends of an arc would coincide, the minor axis would be the longer one, attributes would have to be stretched,
  // which lines of the pictures of dimensions are which cannot be told, and a gradient has no pattern.
  const std::set<std::string> impossible = {"ARC: Start angle",
                                            "DIMENSION: Dim line color",
                                            "DIMENSION: Dim line lineweight",
                                            "DIMENSION: Ext line color",
                                            "DIMENSION: Ext line lineweight",
                                            "ELLIPSE: End angle",
                                            "ELLIPSE: End parameter",
                                            "ELLIPSE: Major radius",
                                            "HATCH: Pattern name",
                                            "INSERT: Scale X",
                                            "INSERT: Scale Y",
                                            "INSERT: Scale Z"};
  EXPECT_EQ(impossible, refused);
}

}  // namespace
}  // namespace velt::tests
