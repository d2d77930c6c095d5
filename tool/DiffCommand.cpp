#include <fmt/format.h>

#include <exception>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "palette/Palette.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/JsonOutput.h"
#include "tool/NamedRows.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"
#include "tool/RowJson.h"

namespace velt::tool {

namespace {

using Json = nlohmann::ordered_json;

// One value of an entity, under the name that finds it.
struct NamedValue {
  std::string name;
  palette::PlainValue value;
  std::string text;
};

struct Change {
  std::string name;
  // Nothing where the entity does not have the property.
  std::optional<NamedValue> before;
  std::optional<NamedValue> after;
};

struct ChangedEntity {
  std::string handle;
  std::string className;
  std::vector<Change> changes;
};

struct LoneEntity {
  std::string handle;
  std::string className;
  std::string layer;
};

struct Differences {
  std::vector<LoneEntity> removed;
  std::vector<LoneEntity> added;
  std::vector<ChangedEntity> changed;
  std::size_t same = 0;

  bool isEmpty() const { return removed.empty() && added.empty() && changed.empty(); }
};

// What tells which entities of two drawings to compare. Several entities of a damaged drawing may have one handle: the
// first of them is compared with the first of the other drawing, and so on.
struct EntityKey {
  std::string handle;
  std::size_t number = 0;
  auto operator<=>(const EntityKey&) const = default;
};

// A drawing with all its entities, those inside block definitions included.
class Side {
 public:
  explicit Side(const std::string& file)
      : drawing_(openDrawing(file)),
        ids_(select(*drawing_, {.all = true, .inBlocks = true}).ids),
        selection_(ids_),
        style_(numberStyleOf(*drawing_)) {
    std::map<std::string, std::size_t> counts;
    for (std::size_t i = 0; i < ids_.size(); ++i) {
      std::string handle = handleText(ids_[i]);
      const std::size_t number = counts[handle]++;
      keys_.push_back({std::move(handle), number});
      byKey_.try_emplace(keys_.back(), i);
    }
  }

  // Those that are selected, which stand in the order of all.
  std::set<EntityKey> keysOf(const SelectionRequest& request) {
    std::set<EntityKey> keys;
    std::size_t i = 0;
    for (const VkDbObjectId id : select(*drawing_, request).ids) {
      while (ids_[i] != id)
        ++i;
      keys.insert(keys_[i]);
    }
    return keys;
  }

  std::size_t size() const { return ids_.size(); }
  const EntityKey& key(std::size_t index) const { return keys_[index]; }
  std::string classOf(std::size_t index) const { return className(ids_[index]); }
  LoneEntity alone(std::size_t index) const {
    return {keys_[index].handle, classOf(index), layerName(ids_[index])};
  }
  std::optional<std::size_t> find(const EntityKey& key) const {
    const auto found = byKey_.find(key);
    return found != byKey_.end() ? std::optional(found->second) : std::nullopt;
  }

  // In display order; a name that several rows have is numbered as on the command line.
  std::vector<NamedValue> values(std::size_t index) {
    const std::vector<palette::Row>& rows = selection_.queryAlone(index);
    const std::vector<std::string> names = namesToFind(rows);
    std::map<std::string, std::size_t> counts, numbers;
    for (const std::string& name : names)
      ++counts[name];
    std::vector<NamedValue> values;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      std::string name = names[i];
      if (counts[name] > 1) name += fmt::format("#{}", ++numbers[names[i]]);
      values.push_back({std::move(name), rows[i].plain(), rows[i].text(style_)});
    }
    return values;
  }

 private:
  std::unique_ptr<database::Drawing> drawing_;
  std::vector<VkDbObjectId> ids_;
  palette::Selection selection_;
  palette::NumberStyle style_;
  std::vector<EntityKey> keys_;
  std::map<EntityKey, std::size_t> byKey_;
};

std::vector<Change> changesBetween(std::vector<NamedValue> before, std::vector<NamedValue> after) {
  std::map<std::string, std::size_t> places;
  for (std::size_t i = 0; i < after.size(); ++i)
    places.emplace(after[i].name, i);
  std::vector<Change> changes;
  for (NamedValue& value : before) {
    const auto place = places.find(value.name);
    if (place == places.end()) {
      std::string name = value.name;
      changes.push_back({std::move(name), std::move(value), std::nullopt});
      continue;
    }
    NamedValue& other = after[place->second];
    if (!palette::isSame(value.value, other.value))
      changes.push_back({place->first, std::move(value), std::move(other)});
    places.erase(place);
  }
  // What only the other one has, in its order.
  for (NamedValue& value : after) {
    if (places.contains(value.name)) changes.push_back({value.name, std::nullopt, value});
  }
  return changes;
}

// The entities to compare: those that are selected in either drawing, so that an entity is not lost when it no longer
// fits in the other one. A layer or another name need only be in one of them. Empty when all are compared.
std::set<EntityKey> selectedKeys(const SelectionRequest& request, Side& before, Side& after) {
  if (request.isEmpty()) return {};
  std::set<EntityKey> keys;
  std::exception_ptr failure;
  std::size_t failures = 0;
  for (Side* const side : {&before, &after}) {
    try {
      keys.merge(side->keysOf(request));
    } catch (const Failure&) {
      if (failures++ == 0) failure = std::current_exception();
    }
  }
  if (failures == 2) std::rethrow_exception(failure);
  return keys;
}

Differences compare(Side& before, Side& after, const SelectionRequest& request) {
  const std::set<EntityKey> selected = selectedKeys(request, before, after);
  const auto isLeftOut = [&](const EntityKey& key) { return !request.isEmpty() && !selected.contains(key); };

  Differences differences;
  Progress progress("Comparing");
  for (std::size_t i = 0; i < before.size(); ++i) {
    progress.report(i, before.size());
    const EntityKey& key = before.key(i);
    if (isLeftOut(key)) continue;
    const std::optional<std::size_t> other = after.find(key);
    if (!other) {
      differences.removed.push_back(before.alone(i));
      continue;
    }
    std::vector<Change> changes = changesBetween(before.values(i), after.values(*other));
    if (changes.empty()) {
      ++differences.same;
    } else {
      differences.changed.push_back({key.handle, before.classOf(i), std::move(changes)});
    }
  }
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (!isLeftOut(after.key(i)) && !before.find(after.key(i))) differences.added.push_back(after.alone(i));
  }
  return differences;
}

// --- for people ------------------------------------------------------------------------------------------

// The text, or all digits where rounding hides the difference.
std::string textBeside(const std::optional<NamedValue>& value, const std::optional<NamedValue>& other) {
  if (!value) return "(none)";
  const auto* const real = std::get_if<double>(&value->value);
  if (real != nullptr && other && other->text == value->text) return fmt::format("{}", *real);
  return value->text.empty() ? "(empty)" : value->text;
}

void printLone(const char* mark, const std::vector<LoneEntity>& entities, const std::string& file,
               const Terminal& terminal, std::ostream& out) {
  for (const LoneEntity& entity : entities) {
    out << terminal.fitted(
        fmt::format("{} {} {} on {}: only in {}", mark, entity.handle, entity.className, entity.layer, file))
        << '\n';
  }
}

void printForPeople(const DiffRequest& request, const Differences& differences, std::ostream& out) {
  const Terminal& terminal = request.terminal;
  for (const ChangedEntity& entity : differences.changed) {
    out << terminal.bold(fmt::format("{} {}", entity.handle, entity.className)) << '\n';
    for (const Change& change : entity.changes) {
      out << terminal.fitted(fmt::format("  {}: {} -> {}", change.name,
                                         textBeside(change.before, change.after),
                                         textBeside(change.after, change.before)))
          << '\n';
    }
  }
  printLone("-", differences.removed, request.drawing, terminal, out);
  printLone("+", differences.added, request.other, terminal, out);
  if (!differences.isEmpty()) out << '\n';
  out << fmt::format("{} the same, {} changed, {} only in {}, {} only in {}\n",
                     entitiesText(differences.same), differences.changed.size(), differences.removed.size(),
                     request.drawing, differences.added.size(), request.other);
}

// --- for programs ----------------------------------------------------------------------------------------

Json sideJson(const std::optional<NamedValue>& value) {
  if (!value) return nullptr;
  return {{"value", valueJson(value->value)}, {"text", value->text}};
}

Json loneJson(const std::vector<LoneEntity>& entities) {
  Json list = Json::array();
  for (const LoneEntity& entity : entities)
    list.push_back({{"handle", entity.handle}, {"class", entity.className}, {"layer", entity.layer}});
  return list;
}

void printAsJson(const DiffRequest& request, const Differences& differences, std::ostream& out) {
  Json json = {{"drawing", request.drawing},
               {"other", request.other},
               {"same", differences.same},
               {"changed", Json::array()},
               {"onlyInDrawing", loneJson(differences.removed)},
               {"onlyInOther", loneJson(differences.added)}};
  for (const ChangedEntity& entity : differences.changed) {
    Json changes = Json::array();
    for (const Change& change : entity.changes) {
      changes.push_back(
          {{"name", change.name}, {"drawing", sideJson(change.before)}, {"other", sideJson(change.after)}});
    }
    json["changed"].push_back(
        {{"handle", entity.handle}, {"class", entity.className}, {"properties", std::move(changes)}});
  }
  printJson(json, out);
}

}  // namespace

bool diff(const DiffRequest& request, std::ostream& out) {
  Side before(request.drawing);
  Side after(request.other);
  const Differences differences = compare(before, after, request.selection);
  if (request.json)
    printAsJson(request, differences, out);
  else
    printForPeople(request, differences, out);
  return !differences.isEmpty();
}

}  // namespace velt::tool
