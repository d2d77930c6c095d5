#include "view/Spaces.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/database/Dictionary.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Lens.h"

namespace velt::view {
namespace {

using database::Drawing;
using database::Entity;
using database::Lens;

std::uint32_t blockNamed(const Drawing& drawing, std::wstring_view name, std::wstring_view oldName,
                         std::uint32_t otherwise) {
  const database::Table& blocks = drawing.blocks();
  const database::TableEntry* block = blocks.find(name);
  if (block == nullptr) block = blocks.find(oldName);
  return block != nullptr ? blocks.indexOf(*block) : otherwise;
}

std::uint32_t blockCount(const Drawing& drawing) {
  return static_cast<std::uint32_t>(drawing.blocks().entries().size());
}

// Of the entities that belong to no block of the drawing.
std::uint32_t modelContents(const Drawing& drawing) {
  return blockNamed(drawing, L"*Model_Space", L"$Model_Space", blockCount(drawing));
}
std::uint32_t sheetContents(const Drawing& drawing) {
  return blockNamed(drawing, L"*Paper_Space", L"$Paper_Space", blockCount(drawing) + 1);
}

std::int64_t tabOrder(const Drawing& drawing, const database::Layout& layout) {
  return layout.record != dxf::none ? Lens(drawing, layout.record).integer(71, "AcDbLayout", 0) : 0;
}

// A block may tell in which order its entities cover each other: some of them are taken for older or younger ones than
// their handles say.
void sortAsShown(const Drawing& drawing, const database::TableEntry& block,
                 std::vector<std::uint32_t>& records) {
  if (block.record == dxf::none) return;
  const auto dictionary = database::extensionDictionary(drawing, block.record);
  const auto table =
      dictionary ? database::dictionaryEntry(drawing, *dictionary, "ACAD_SORTENTS") : std::nullopt;
  if (!table) return;
  std::unordered_map<std::uint64_t, std::uint64_t> places;
  const dxf::RecordView view = drawing.view(*table);
  std::uint64_t entity = 0;
  view.visit("AcDbSortentsTable", [&](std::size_t index) {
    const std::uint64_t handle = dxf::parseHandle(view.value(index)).value_or(0);
    if (view.code(index) == 331) entity = handle;
    if (view.code(index) == 5 && entity != 0) places[std::exchange(entity, 0)] = handle;
    return true;
  });
  if (places.empty()) return;
  std::vector<std::pair<std::uint64_t, std::uint32_t>> order;
  for (const std::uint32_t record : records) {
    const std::uint64_t handle = drawing.handleOf(record);
    const auto found = places.find(handle);
    order.emplace_back(found != places.end() ? found->second : handle, record);
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::transform(order.begin(), order.end(), records.begin(), [](const auto& one) { return one.second; });
}

}  // namespace

std::vector<Space> spacesOf(const Drawing& drawing) {
  std::vector<Space> spaces = {{L"Model", modelContents(drawing), false}};
  std::vector<const database::Layout*> layouts;
  for (const database::Layout& layout : drawing.layouts()) {
    if (layout.block != dxf::none && layout.block != spaces.front().contents) layouts.push_back(&layout);
  }
  std::stable_sort(layouts.begin(), layouts.end(), [&](const auto* a, const auto* b) {
    return tabOrder(drawing, *a) < tabOrder(drawing, *b);
  });
  for (const database::Layout* layout : layouts)
    spaces.push_back({layout->name, layout->block, true});
  if (layouts.empty()) spaces.push_back({L"Paper", sheetContents(drawing), true});
  return spaces;
}

Contents::Contents(const Drawing& drawing) : model_(modelContents(drawing)) {
  const std::uint32_t count = blockCount(drawing);
  records_.resize(std::size_t{count} + 2);
  for (const VkDbObjectId id : drawing.entities()) {
    const auto object = database::resolve(id);
    if (!object) continue;
    const Entity entity(*object);
    const database::TableEntry* const block = entity.owner();
    std::uint32_t where = block != nullptr ? drawing.blocks().indexOf(*block) : count;
    if (block == nullptr && entity.space() == database::Space::Paper) where = count + 1;
    records_[where].push_back(object->record);
  }
  for (const database::TableEntry& block : drawing.blocks().entries())
    sortAsShown(drawing, block, records_[drawing.blocks().indexOf(block)]);
}

}  // namespace velt::view
