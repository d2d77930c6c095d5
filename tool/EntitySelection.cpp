#include "tool/EntitySelection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/database/Entity.h"
#include "palette/Palette.h"
#include "propdata/VeltPropData.h"
#include "tool/Condition.h"
#include "tool/ConditionCheck.h"
#include "tool/Failure.h"
#include "tool/OpenDrawing.h"
#include "tool/Patterns.h"
#include "tool/Progress.h"

namespace velt::tool {

namespace {

database::Entity entityOf(VkDbObjectId id) {
  const std::optional<database::ObjectRef> object = database::resolve(id);
  if (!object) throw Failure("an entity of the selection no longer exists");
  return database::Entity(*object);
}

std::uint64_t parseHandle(const std::string& text) {
  std::uint64_t handle = 0;
  const char* const end = text.data() + text.size();
  const auto [parsed, error] = std::from_chars(text.data(), end, handle, 16);
  if (error != std::errc() || parsed != end || handle == 0) {
    throw Failure(fmt::format("\"{}\" is not a handle: handles are hexadecimal numbers such as 2F", text));
  }
  return handle;
}

// An entity that the database finds under another's handle is told by looking at them all.
bool hasEntityOf(const database::Drawing& drawing, std::uint64_t handle) {
  if (!drawing.entityByHandle(handle).isNull()) return true;
  const auto entities = drawing.entities();
  return std::any_of(entities.begin(), entities.end(),
                     [handle](VkDbObjectId id) { return entityOf(id).handle() == handle; });
}

std::unordered_set<std::uint64_t> requestedHandles(const database::Drawing& drawing,
                                                   const SelectionRequest& request) {
  std::unordered_set<std::uint64_t> handles;
  for (const std::string& text : request.handles) {
    const std::uint64_t handle = parseHandle(text);
    if (!hasEntityOf(drawing, handle)) {
      throw Failure(fmt::format("{}: no entity has the handle {:X} (\"veltprops list\" lists them all)",
                                drawing.document().displayName(), handle));
    }
    handles.insert(handle);
  }
  return handles;
}

std::map<std::uint64_t, std::size_t> sharedHandlesOf(const std::vector<VkDbObjectId>& ids) {
  std::vector<std::uint64_t> handles;
  handles.reserve(ids.size());
  for (const VkDbObjectId id : ids)
    handles.push_back(entityOf(id).handle());
  std::sort(handles.begin(), handles.end());
  std::map<std::uint64_t, std::size_t> shared;
  for (std::size_t i = 1; i < handles.size(); ++i) {
    if (handles[i] == handles[i - 1]) shared.try_emplace(handles[i], 1).first->second += 1;
  }
  return shared;
}

// "; the drawing has: A, B" when they are few.
std::string listed(const std::set<std::string>& names) {
  constexpr std::size_t mostNames = 40;
  if (names.empty()) return "; the drawing has none";
  return names.size() <= mostNames ? fmt::format("; the drawing has: {}", fmt::join(names, ", ")) : "";
}

bool fitsOne(const std::vector<std::string>& patterns, const std::string& name) {
  return std::any_of(patterns.begin(), patterns.end(),
                     [&](const std::string& pattern) { return fits(pattern, name); });
}

// Which of a drawing's names were asked for, of layers or the like.
class NameFilter {
 public:
  // Throws Failure for a pattern that fits none of the names.
  NameFilter(const database::Drawing& drawing, const char* kind, const std::vector<std::string>& patterns,
             const std::set<std::string>& names)
      : patterns_(patterns) {
    for (const std::string& pattern : patterns) {
      const bool isThere = std::any_of(names.begin(), names.end(),
                                       [&](const std::string& name) { return fits(pattern, name); });
      if (isThere) continue;
      const std::vector<std::string> known(names.begin(), names.end());
      throw Failure(fmt::format("{}: no {} \"{}\"{}", drawing.document().displayName(), kind, pattern,
                                palette::didYouMean(pattern, known, listed(names))));
    }
  }

  bool passes(const std::string& name) const {
    if (patterns_.empty()) return true;
    const auto [entry, isNew] = known_.try_emplace(name);
    if (isNew) entry->second = fitsOne(patterns_, name);
    return entry->second;
  }

 private:
  const std::vector<std::string>& patterns_;
  mutable std::unordered_map<std::string, bool> known_;
};

std::set<std::string> namesOf(const database::Table& table) {
  std::set<std::string> names;
  for (const database::TableEntry& entry : table.entries())
    names.insert(palette::toUtf8(entry.name));
  return names;
}

std::set<std::string> layoutNames(const database::Drawing& drawing) {
  std::set<std::string> names{"Model"};
  for (const database::Layout& layout : drawing.layouts())
    names.insert(palette::toUtf8(layout.name));
  return names;
}

bool isKnownClass(std::string_view name) {
  const auto classes = automation::automationClasses();
  return std::any_of(classes.begin(), classes.end(), [&](const automation::AutomationClass* known) {
    return palette::equalIgnoringCase(shortName(*known), name);
  });
}

void requireKnownTypes(const database::Drawing& drawing, const SelectionRequest& request) {
  if (request.types.empty()) return;
  std::set<std::string> present;
  for (const VkDbObjectId id : drawing.entities()) {
    present.insert(className(id));
    present.insert(dxfName(id));
  }
  for (const std::string& type : request.types) {
    const bool isPresent = std::any_of(present.begin(), present.end(),
                                       [&](const std::string& name) { return fits(type, name); });
    if (isPresent || isKnownClass(type)) continue;
    const std::vector<std::string> names(present.begin(), present.end());
    throw Failure(fmt::format("{}: no entities of type \"{}\"{}", drawing.document().displayName(), type,
                              palette::didYouMean(type, names, listed(present))));
  }
}

bool passesTypes(VkDbObjectId id, const std::vector<std::string>& types) {
  return types.empty() || fitsOne(types, className(id)) || fitsOne(types, dxfName(id));
}

// Leaves those that fit.
void filter(std::vector<VkDbObjectId>& ids, const Condition& condition, const palette::NumberStyle& style) {
  ConditionCheck check(condition, style);
  palette::Selection selection(ids);
  Progress progress("Selecting");
  std::vector<VkDbObjectId> fitting;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (check.holds(ids[i], selection.queryAlone(i))) fitting.push_back(ids[i]);
    progress.report(i + 1, ids.size());
  }
  if (!ids.empty()) check.requireSense();
  ids = std::move(fitting);
}

// Those that are not among `some`, which stand in the same order.
std::vector<VkDbObjectId> without(const std::vector<VkDbObjectId>& all,
                                  const std::vector<VkDbObjectId>& some) {
  std::vector<VkDbObjectId> rest;
  auto next = some.begin();
  for (const VkDbObjectId id : all) {
    if (next != some.end() && *next == id) {
      ++next;
    } else {
      rest.push_back(id);
    }
  }
  return rest;
}

}  // namespace

SelectedEntities select(database::Drawing& drawing, const SelectionRequest& request) {
  std::optional<Condition> condition;
  if (!request.where.empty()) condition = parseCondition(request.where);
  const std::unordered_set<std::uint64_t> handles = requestedHandles(drawing, request);
  const NameFilter layers(drawing, "layer", request.layers, namesOf(drawing.layers()));
  const NameFilter layouts(drawing, "layout", request.layouts, layoutNames(drawing));
  const NameFilter blocks(drawing, "block", request.blocks, namesOf(drawing.blocks()));
  requireKnownTypes(drawing, request);
  // A handle names an entity wherever it stands.
  const bool looksInBlocks =
      request.inBlocks || !request.blocks.empty() || (!handles.empty() && !request.isInverted);

  const auto passes = [&](VkDbObjectId id, const database::Entity& entity) {
    if (!layers.passes(layerName(id)) || !passesTypes(id, request.types)) return false;
    if (!request.layouts.empty()
        && (entity.space() == database::Space::Block || !layouts.passes(layoutName(id))))
      return false;
    if (!request.blocks.empty() && !blocks.passes(blockName(id))) return false;
    return handles.empty() || handles.contains(entity.handle());
  };
  SelectedEntities selected;
  selected.isConditionOpen = condition.has_value();
  std::vector<VkDbObjectId> all, fitting;
  for (const VkDbObjectId id : drawing.entities()) {
    const database::Entity entity = entityOf(id);
    if (entity.isErased()) continue;
    const bool isFitting = passes(id, entity);
    if (!looksInBlocks && entity.space() == database::Space::Block) {
      if (isFitting != request.isInverted) ++selected.leftOutInBlocks;
      continue;
    }
    all.push_back(id);
    if (isFitting) fitting.push_back(id);
  }
  if (condition) filter(fitting, *condition, numberStyleOf(drawing));
  selected.ids = request.isInverted ? without(all, fitting) : std::move(fitting);
  selected.sharedHandles = sharedHandlesOf(selected.ids);
  return selected;
}

std::string remarkOnHandles(const SelectedEntities& selected) {
  constexpr std::size_t mostNamed = 8;
  if (selected.sharedHandles.empty()) return {};
  std::vector<std::string> named;
  for (const auto& [handle, count] : selected.sharedHandles) {
    if (named.size() == mostNamed) break;
    named.push_back(fmt::format("{:X} ({} entities)", handle, count));
  }
  const std::size_t more = selected.sharedHandles.size() - named.size();
  return fmt::format(
      "\nThe drawing is damaged: several entities have the handle {}{}; --handle selects them all\n",
      fmt::join(named, ", "), more > 0 ? fmt::format(" and {} more", more) : "");
}

std::vector<std::string> sharedHandleTexts(const SelectedEntities& selected) {
  std::vector<std::string> texts;
  for (const auto& [handle, count] : selected.sharedHandles)
    texts.push_back(fmt::format("{:X}", handle));
  return texts;
}

std::string shortName(const automation::AutomationClass& kind) {
  return palette::toUtf8(kind.name).substr(std::string_view("Velt").size());
}

const automation::AutomationClass* classOf(VkDbObjectId id) {
  GUID clsid = GUID_NULL;
  return GetCLSID(clsid, id.asOldId()) ? automation::findClass(clsid) : nullptr;
}

std::string className(const automation::AutomationClass* kind) {
  return kind != nullptr ? shortName(*kind) : "Entity";
}

std::string className(VkDbObjectId id) {
  return className(classOf(id));
}

std::string dxfName(VkDbObjectId id) {
  return std::string(entityOf(id).dxfName());
}

std::string handleText(VkDbObjectId id) {
  return fmt::format("{:X}", entityOf(id).handle());
}

std::string layerName(VkDbObjectId id) {
  return palette::toUtf8(entityOf(id).layerName());
}

std::string layoutName(VkDbObjectId id) {
  return palette::toUtf8(entityOf(id).layoutName());
}

std::string blockName(VkDbObjectId id) {
  const database::Entity entity = entityOf(id);
  if (entity.space() != database::Space::Block) return {};
  const database::TableEntry* const block = entity.owner();
  return block != nullptr ? palette::toUtf8(block->name) : "";
}

std::string entitiesText(std::size_t count) {
  return fmt::format("{} {}", count, count == 1 ? "entity" : "entities");
}

std::string leftOutText(const SelectedEntities& selected) {
  if (selected.leftOutInBlocks == 0) return {};
  return fmt::format("{} inside block definitions {} (--in-blocks includes them)\n",
                     entitiesText(selected.leftOutInBlocks),
                     selected.isConditionOpen ? "not looked at" : "left out");
}

}  // namespace velt::tool
