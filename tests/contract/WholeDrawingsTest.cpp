// The shipped libraries together, on whole drawings: every selection is answered, no drawing is changed, and nothing
// leaks but what the layer keeps on purpose (the entries "not_released" in docs/quirks.md).

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "embedded/platform/Ledger.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/automation/IVeltVkCmColor.h"
#include "host/automation/IdValues.h"
#include "propdata/VeltPropData.h"
#include "samples/FloorPlan.h"
#include "tests/contract/Query.h"
#include "tests/support/Narrow.h"
#include "tests/support/WholeDrawings.h"

namespace velt::tests {
namespace {

using database::Drawing;
using platform::Ledger;
using Losses = std::map<std::string, std::int64_t>;

std::string accountOf(IDispatch* object) {
  const auto offers = [&](REFIID iid) {
    void* found = nullptr;
    if (FAILED(object->QueryInterface(iid, &found))) return false;
    static_cast<IUnknown*>(found)->Release();
    return true;
  };
  if (offers(velt::IID_IVeltVkCmColor)) return "VeltVkCmColor";
  return offers(velt::IID_IVeltHyperlinks) ? "VeltHyperlinks" : "unknown object";
}

bool isIn(const TqVector<PROPINFO>& rows, const PROPINFO& wanted) {
  return std::any_of(rows.begin(), rows.end(), [&](const PROPINFO& row) {
    return row.dispId == wanted.dispId && row.name == wanted.name && row.elementCookie == wanted.elementCookie
           && row.displayName == wanted.displayName;
  });
}

// QUIRK entries of the balance: the values of the first entity's rows that the merge drops, those of all dynamic lists
// that do not leave with the merged rows, and one reference to each hatch that was asked for its variant.
Losses intendedLosses(const Ids& selection, Query& query) {
  const TqVector<PROPINFO>& merged = query.rows;
  Losses losses;
  if (const std::int64_t hatches = query.hatches(); hatches > 0) losses["VeltHatch"] = hatches;
  if (query.hasDynamicRows()) {
    std::int64_t texts = -query.dynamicTexts();
    for (const VkDbObjectId id : selection) {
      Query alone({id});
      EXPECT_TRUE(alone.ask());
      texts += alone.dynamicTexts();
    }
    if (texts > 0) losses["BSTR"] = texts;
  }
  Query first({selection.front()});
  EXPECT_TRUE(first.ask());
  for (const PROPINFO& row : std::as_const(first.rows)) {
    if (row.dispId == dynamicPropertyDispId || isIn(merged, row)) continue;
    if (row.value.vt == VT_BSTR && row.value.bstrVal != nullptr) ++losses["BSTR"];
    if (row.value.vt == VT_DISPATCH && row.value.pdispVal != nullptr) ++losses[accountOf(row.value.pdispVal)];
  }
  return losses;
}

// Asks once, checks everything that must hold for any selection, and gives the number of rows.
std::uint32_t askAndCheck(const Drawing& drawing, const Ids& selection, const std::string& what) {
  SCOPED_TRACE(what);
  if (selection.empty()) return 0;
  const std::uint64_t revision = drawing.revision();
  Losses expected;
  std::uint32_t rows = 0;
  {
    Query warm(selection);  // classes that are met for the first time make what lasts as long as the process
    EXPECT_TRUE(warm.isSetUp && warm.ask());
    rows = warm.rows.length();
    expected = intendedLosses(selection, warm);
  }
  const Ledger::Snapshot before = Ledger::snapshot();
  {
    Query query(selection);
    EXPECT_TRUE(query.isSetUp);
    EXPECT_TRUE(query.ask());
    EXPECT_TRUE(query.errorText.empty());
    EXPECT_EQ(std::as_const(query.rows).length(), rows);
  }
  const Ledger::Difference difference = Ledger::difference(before, Ledger::snapshot());
  EXPECT_EQ(Losses(difference.begin(), difference.end()), expected) << Ledger::print(difference);
  EXPECT_EQ(drawing.revision(), revision);
  return rows;
}

struct Selections {
  std::map<std::string, Ids> ofTypes;
  std::map<std::wstring, Ids> ofLayers;
  Ids all;
};

Selections selectionsOf(const Drawing& drawing) {
  Selections selections;
  for (const VkDbObjectId id : drawing.entities()) {
    const std::optional<database::ObjectRef> object = database::resolve(id);
    EXPECT_TRUE(object.has_value());
    const database::Entity entity(*object);
    selections.ofTypes[std::string(entity.dxfName())].push_back(id);
    selections.ofLayers[entity.layerName()].push_back(id);
    selections.all.push_back(id);
  }
  return selections;
}

void everySelectionAnswers(const Drawing& drawing) {
  const Selections selections = selectionsOf(drawing);
  if (selections.all.empty()) return;
  EXPECT_GT(askAndCheck(drawing, selections.all, "all"), 0U);
  for (const auto& [type, ids] : selections.ofTypes)
    EXPECT_GT(askAndCheck(drawing, ids, type), 0U) << type;
  for (const auto& [layer, ids] : selections.ofLayers) {
    EXPECT_GT(askAndCheck(drawing, ids, "a layer"), 0U) << narrow(layer);
  }
}

}  // namespace

TEST(WholeDrawings, EverySelectionAnswersAndLosesNothing) {
  forEachDrawing([](const WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    everySelectionAnswers(*drawing);
    EXPECT_EQ(drawing->document().bytes(), whole.bytes) << "reading and writing back gives the same bytes";
  });
}

TEST(WholeDrawings, TwoEntitiesOfOneClassLoseNothingAtAll) {
  const auto drawing = Drawing::parse(samples::sampleFloorPlan(), "sample.dxf");
  const Ids lines = selectionsOf(*drawing).ofTypes.at("LINE");
  ASSERT_GE(lines.size(), 2U);
  askAndCheck(*drawing, {lines[0], lines[1]}, "two lines");

  const Ledger::Snapshot before = Ledger::snapshot();
  {
    Query query({lines[0], lines[1]});
    EXPECT_TRUE(query.ask());
  }
  EXPECT_EQ(Ledger::print(Ledger::difference(before, Ledger::snapshot())), "balanced");
}

TEST(WholeDrawings, TheHatchVariantsHaveListsOfTheirOwn) {
  const auto drawing = Drawing::parse(samples::sampleFloorPlan(), "sample.dxf");
  const Ids hatches = selectionsOf(*drawing).ofTypes.at("HATCH");
  std::set<std::set<std::wstring>> shown;
  for (const VkDbObjectId id : hatches) {
    Query query({id});
    ASSERT_TRUE(query.isSetUp);
    ASSERT_TRUE(query.ask()) << narrow(query.errorText.str());
    std::set<std::wstring> names;
    for (const PROPINFO& row : std::as_const(query.rows))
      names.insert(row.name.str());
    shown.insert(names);
  }
  EXPECT_EQ(shown.size(), 3U) << "pattern, solid and gradient";
}

TEST(WholeDrawings, ByLayerColorsOfDifferentLayersVary) {
  const auto drawing = Drawing::parse(samples::sampleFloorPlan(), "sample.dxf");
  std::map<std::wstring, VkDbObjectId> byLayer;
  for (const VkDbObjectId id : drawing->entities()) {
    const database::Entity entity(*database::resolve(id));
    if (entity.dxfName() == "LINE" && entity.color().isByLayer() && entity.layer() != nullptr) {
      byLayer.try_emplace(entity.layerName(), id);
    }
  }
  ASSERT_GE(byLayer.size(), 2U);
  const VkDbObjectId first = byLayer.begin()->second;
  bool variesForSomePair = false;
  for (const auto& [layer, id] : byLayer) {
    Query query({first, id});
    ASSERT_TRUE(query.ask());
    for (const PROPINFO& row : std::as_const(query.rows)) {
      if (row.dispId != 1280) continue;
      variesForSomePair = variesForSomePair || row.isVaries;
      EXPECT_FALSE(row.isVaries && id == first) << "an entity does not differ from itself";
    }
  }
  EXPECT_TRUE(variesForSomePair);
}

}  // namespace velt::tests
