#include "fuzz/Session.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dxf/Document.h"
#include "dxf/Numbers.h"
#include "embedded/database/Drawing.h"
#include "embedded/database/Lens.h"
#include "palette/Palette.h"

namespace {

using velt::database::Drawing;
using velt::palette::Fate;
using velt::palette::Row;
using velt::palette::Selection;

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

// --- what a drawing holds and shows ---------------------------------------------------------------------------------------

std::unique_ptr<Drawing> opened(std::string bytes) {
  try {
    return Drawing::parse(std::move(bytes), "fuzz.dxf");
  } catch (const velt::dxf::Error&) {
    return nullptr;
  }
}

using Pairs = std::vector<std::pair<int, std::string>>;

std::vector<Pairs> recordsOf(const Drawing& drawing) {
  std::vector<Pairs> records;
  const auto count = static_cast<std::uint32_t>(drawing.document().recordCount());
  for (std::uint32_t record = 0; record < count; ++record) {
    const velt::dxf::RecordView view = drawing.view(record);
    Pairs& pairs = records.emplace_back();
    for (std::size_t i = 0; i < view.size(); ++i)
      pairs.emplace_back(view.code(i), view.value(i));
  }
  return records;
}

// The rows as lines; a line without rows where the entities cannot be selected.
std::vector<std::string> shown(const std::vector<VkDbObjectId>& entities) {
  std::vector<std::string> lines;
  try {
    Selection selection(entities);
    for (const Row& row : selection.query()) {
      std::string line = row.label() + '\t' + row.name() + '\t' + row.text();
      // A layer that no record describes is there as long as the drawing is open, also when the last entity has left it.
      if (row.name() != "Layer") {
        for (const velt::palette::Choice& choice : row.choices())
          line += '\t' + choice.label;
      }
      lines.push_back(std::move(line));
    }
  } catch (const velt::palette::Error& error) {
    lines.push_back(std::string("failed: ") + error.what());
  }
  return lines;
}

// Some of the entities, and then all of them together.
std::vector<std::string> everythingShown(const Drawing& drawing) {
  constexpr std::size_t enough = 16;
  const std::span<const VkDbObjectId> entities = drawing.entities();
  std::vector<std::string> lines;
  const auto add = [&](const std::vector<VkDbObjectId>& some) {
    const std::vector<std::string> more = shown(some);
    lines.insert(lines.end(), more.begin(), more.end());
  };
  for (std::size_t i = 0; i < std::min(enough, entities.size()); ++i)
    add({entities[i]});
  add({entities.begin(), entities.end()});
  return lines;
}

void requireSame(const std::vector<std::string>& edited, const std::vector<std::string>& saved) {
  for (std::size_t i = 0; i < std::min(edited.size(), saved.size()); ++i) {
    require(edited[i] == saved[i], ("a saved drawing shows what the edited one shows: edited \"" + edited[i]
                                    + "\", saved \"" + saved[i] + "\"")
                                       .c_str());
  }
  require(edited.size() == saved.size(), "a saved drawing has as many rows as the edited one");
}

// --- the put --------------------------------------------------------------------------------------------------------------

std::vector<VkDbObjectId> chosen(const Drawing& drawing, std::size_t number) {
  const std::span<const VkDbObjectId> entities = drawing.entities();
  if (number == 0 || entities.empty()) return {entities.begin(), entities.end()};
  return {entities[(number - 1) % entities.size()]};
}

// The entities that may have changed.
std::vector<VkDbObjectId> put(const std::vector<VkDbObjectId>& entities, const fuzz::SessionInput& input) {
  std::vector<VkDbObjectId> changed;
  try {
    Selection selection(entities);
    std::vector<Row> editable = selection.query();
    std::erase_if(editable, [](const Row& row) { return !row.isEditable() || !row.takesText(); });
    if (editable.empty()) return {};
    const Row row = editable[input.row % editable.size()];
    const velt::palette::Report report = selection.write(row, row.parse(input.value), {.keepGoing = true});
    require(report.fates.size() == entities.size(), "each entity has its fate");
    for (std::size_t i = 0; i < entities.size(); ++i) {
      // A dynamic row may be written to more properties of an entity than the one of which its fate tells.
      if (report.fates[i] == Fate::changed || (row.isDynamic() && entities.size() > 1))
        changed.push_back(entities[i]);
    }
  } catch (const velt::palette::Error&) {}
  return changed;
}

// A dimension is seen by its picture, a block of its own, and an edit of its colors changes the lines there.
void addPicture(const Drawing& drawing, std::uint32_t dimension, std::set<std::uint32_t>& records) {
  const std::wstring name = velt::database::Lens(drawing, dimension).name(2, "AcDbDimension");
  const velt::database::TableEntry* const block = drawing.blocks().find(name);
  if (block == nullptr || block->definition == velt::dxf::none) return;
  const velt::dxf::PairRange range = drawing.document().membersOf(block->definition);
  for (std::size_t i = 0; i < range.count; ++i)
    records.insert(static_cast<std::uint32_t>(range.first + i));
}

// Hatches follow what they were made from, which their records name.
void addFollowers(const Drawing& drawing, const std::set<std::uint64_t>& handles,
                  std::set<std::uint32_t>& records) {
  const auto count = static_cast<std::uint32_t>(drawing.document().recordCount());
  for (std::uint32_t record = 0; record < count; ++record) {
    if (drawing.document().type(record) != "HATCH") continue;
    const velt::dxf::RecordView view = drawing.view(record);
    for (std::size_t i = 0; i < view.size(); ++i) {
      const auto source = view.code(i) == 330 ? velt::dxf::parseHandle(view.value(i)) : std::nullopt;
      if (source && handles.contains(*source)) records.insert(record);
    }
  }
}

std::set<std::uint32_t> recordsOf(const Drawing& drawing, const std::vector<VkDbObjectId>& entities) {
  std::set<std::uint32_t> records;
  std::set<std::uint64_t> handles;
  for (const VkDbObjectId& id : entities) {
    const auto object = velt::database::resolve(id);
    require(object.has_value(), "an entity that has been written to is there");
    records.insert(object->record);
    handles.insert(drawing.handleOf(object->record));
    addPicture(drawing, object->record, records);
    // The rest of its sequence, with the record that ends it, which has a layer and a color of its own, too.
    const std::span<const velt::dxf::Record> all = drawing.document().records();
    for (std::uint32_t i = object->record + 1; i < all.size() && all[i].sequenceHead == object->record; ++i)
      records.insert(i);
  }
  addFollowers(drawing, handles, records);
  return records;
}

}  // namespace

namespace fuzz {

bool runSession(const SessionInput& input) {
  const std::unique_ptr<Drawing> drawing = opened(input.drawing);
  if (drawing == nullptr || drawing->entities().empty()) return false;

  const std::vector<Pairs> before = recordsOf(*drawing);
  static_cast<void>(everythingShown(*drawing));
  require(drawing->document().bytes() == input.drawing, "looking changes nothing");

  const std::vector<VkDbObjectId> changed = put(chosen(*drawing, input.entity), input);
  const std::vector<Pairs> after = recordsOf(*drawing);
  require(after.size() == before.size(), "no record comes or goes");
  const std::set<std::uint32_t> named = recordsOf(*drawing, changed);
  for (std::uint32_t record = 0; record < after.size(); ++record) {
    const std::string type(drawing->document().type(record));
    require(after[record] == before[record] || named.contains(record),
            ("only the named entities change, not record " + std::to_string(record) + ", " + type).c_str());
  }

  const std::unique_ptr<Drawing> again = opened(drawing->document().bytes());
  require(again != nullptr, "what is saved can be loaded");
  require(recordsOf(*again) == after, "what is loaded is what was saved");
  requireSame(everythingShown(*drawing), everythingShown(*again));
  return true;
}

}  // namespace fuzz
