#include "tool/EntitySelection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <unordered_set>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/database/Entity.h"
#include "palette/Palette.h"
#include "propdata/VeltPropData.h"
#include "tool/Failure.h"

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

std::unordered_set<std::uint64_t> requestedHandles(const database::Drawing& drawing,
                                                   const SelectionRequest& request) {
  std::unordered_set<std::uint64_t> handles;
  for (const std::string& text : request.handles) {
    const std::uint64_t handle = parseHandle(text);
    if (drawing.entityByHandle(handle).isNull()) {
      throw Failure(fmt::format("{}: no entity has the handle {:X} (\"veltprops list\" lists them all)",
                                drawing.document().displayName(), handle));
    }
    handles.insert(handle);
  }
  return handles;
}

// The layers of the drawing's table, and those that only entities name.
class LayerFilter {
 public:
  LayerFilter(const database::Drawing& drawing, const SelectionRequest& request) : table_(drawing.layers()) {
    for (const std::string& name : request.layers)
      add(drawing, name);
  }

  bool passes(const database::Entity& entity) const {
    if (entries_.empty() && names_.empty()) return true;
    if (const database::TableEntry* const layer = entity.layer()) return entries_.contains(layer);
    return names_.contains(entity.layerName());
  }

 private:
  void add(const database::Drawing& drawing, const std::string& name) {
    const std::wstring wide = palette::fromUtf8(name);
    if (const database::TableEntry* const entry = table_.find(wide)) {
      entries_.insert(entry);
      return;
    }
    for (const VkDbObjectId id : drawing.entities()) {
      if (entityOf(id).layerName() == wide) {
        names_.insert(wide);
        return;
      }
    }
    std::vector<std::string> known;
    for (const database::TableEntry& entry : table_.entries())
      known.push_back(palette::toUtf8(entry.name));
    throw Failure(fmt::format("{}: no layer \"{}\"; the drawing has: {}", drawing.document().displayName(),
                              name, fmt::join(known, ", ")));
  }

  const database::Table& table_;
  std::set<const database::TableEntry*> entries_;
  std::set<std::wstring> names_;
};

// The name of a class without the prefix that all of them have.
std::string shortName(const automation::AutomationClass& kind) {
  return palette::toUtf8(kind.name).substr(std::string_view("Velt").size());
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
    const bool isPresent = std::any_of(present.begin(), present.end(), [&](const std::string& name) {
      return palette::equalIgnoringCase(name, type);
    });
    if (isPresent || isKnownClass(type)) continue;
    throw Failure(fmt::format("{}: no entities of type \"{}\"; the drawing has: {}",
                              drawing.document().displayName(), type, fmt::join(present, ", ")));
  }
}

bool passesTypes(VkDbObjectId id, const std::vector<std::string>& types) {
  if (types.empty()) return true;
  const std::string automationClass = className(id);
  const std::string dxf = dxfName(id);
  return std::any_of(types.begin(), types.end(), [&](const std::string& type) {
    return palette::equalIgnoringCase(type, automationClass) || palette::equalIgnoringCase(type, dxf);
  });
}

}  // namespace

SelectedEntities select(database::Drawing& drawing, const SelectionRequest& request) {
  const std::unordered_set<std::uint64_t> handles = requestedHandles(drawing, request);
  const LayerFilter layers(drawing, request);
  requireKnownTypes(drawing, request);

  SelectedEntities selected;
  for (const VkDbObjectId id : drawing.entities()) {
    const database::Entity entity = entityOf(id);
    if (entity.isErased() || !layers.passes(entity) || !passesTypes(id, request.types)) continue;
    if (!handles.empty()) {
      if (drawing.entityByHandle(entity.handle()) != id || !handles.contains(entity.handle())) continue;
    } else if (!request.inBlocks && entity.space() == database::Space::Block) {
      ++selected.leftOutInBlocks;
      continue;
    }
    selected.ids.push_back(id);
  }
  return selected;
}

std::string className(VkDbObjectId id) {
  GUID clsid = GUID_NULL;
  if (!GetCLSID(clsid, id.asOldId())) return "Entity";
  const automation::AutomationClass* const kind = automation::findClass(clsid);
  return kind != nullptr ? shortName(*kind) : "Entity";
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

}  // namespace velt::tool
