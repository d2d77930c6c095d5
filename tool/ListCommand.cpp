#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <span>
#include <vector>

#include "palette/Palette.h"
#include "tool/Columns.h"
#include "tool/Commands.h"
#include "tool/JsonOutput.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"
#include "tool/RowJson.h"

namespace velt::tool {

namespace {

struct ListedEntity {
  std::string handle;
  std::string className;
  std::string dxfName;
  std::string layer;
  // Null when they were not asked for.
  nlohmann::ordered_json values{};
};

// Name, label and value of each property, in display order; the value also as it is shown, and its unit.
nlohmann::ordered_json valuesOf(VkDbObjectId id, const palette::NumberStyle& style, const Units& units) {
  auto values = nlohmann::ordered_json::array();
  palette::Selection selection(std::span(&id, 1));
  for (const palette::Row& row : selection.query()) {
    values.push_back({{"name", palette::toUtf8(row.record().name.str())},
                      {"displayName", palette::toUtf8(row.record().displayName.str())},
                      {"value", valueJson(row.plain())},
                      {"text", row.text(style)},
                      {"unit", unitJson(units.of(row))}});
  }
  return values;
}

void printForPeople(const std::vector<ListedEntity>& entities, const Terminal& terminal, std::ostream& out) {
  const ListedEntity headings{"Handle", "Class", "Type", "Layer", {}};
  ListedEntity widest = headings;
  const auto widen = [](std::string& widestText, const std::string& text) {
    if (columns(text) > columns(widestText)) widestText = text;
  };
  for (const ListedEntity& entity : entities) {
    widen(widest.handle, entity.handle);
    widen(widest.className, entity.className);
    widen(widest.dxfName, entity.dxfName);
  }
  const auto lineOf = [&](const ListedEntity& entity) {
    return terminal.fitted(fmt::format("{}  {}  {}  {}", padded(entity.handle, columns(widest.handle)),
                                       padded(entity.className, columns(widest.className)),
                                       padded(entity.dxfName, columns(widest.dxfName)),
                                       palette::oneLine(palette::fromUtf8(entity.layer))));
  };
  out << terminal.bold(lineOf(headings)) << '\n';
  for (const ListedEntity& entity : entities)
    out << lineOf(entity) << '\n';
}

void printAsJson(const ListRequest& request, const SelectedEntities& selected,
                 const std::vector<ListedEntity>& entities, std::ostream& out) {
  nlohmann::ordered_json json = {{"drawing", request.drawing},
                                 {"count", entities.size()},
                                 {"entities", nlohmann::ordered_json::array()}};
  if (selected.leftOutInBlocks > 0) json["leftOutInBlocks"] = selected.leftOutInBlocks;
  if (const std::vector<std::string> handles = sharedHandleTexts(selected); !handles.empty())
    json["sharedHandles"] = handles;
  for (const ListedEntity& entity : entities) {
    json["entities"].push_back({{"handle", entity.handle},
                                {"class", entity.className},
                                {"type", entity.dxfName},
                                {"layer", entity.layer}});
    if (!entity.values.is_null()) json["entities"].back()["values"] = entity.values;
  }
  printJson(json, out);
}

}  // namespace

void list(const ListRequest& request, std::ostream& out) {
  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const SelectedEntities selected = select(*drawing, request.selection);
  std::vector<ListedEntity> entities;
  entities.reserve(selected.ids.size());
  const palette::NumberStyle style = numberStyleOf(*drawing);
  const Units units(*drawing);
  Progress progress("Reading " + request.drawing);
  for (const VkDbObjectId id : selected.ids) {
    entities.push_back({handleText(id), className(id), dxfName(id), layerName(id), {}});
    if (!request.values) continue;
    entities.back().values = valuesOf(id, style, units);
    progress.report(entities.size(), selected.ids.size());
  }
  if (request.json) {
    printAsJson(request, selected, entities, out);
  } else {
    if (request.isOneOfSeveral) out << request.terminal.bold(request.drawing) << '\n';
    printForPeople(entities, request.terminal, out);
    out << remarkOnHandles(selected);
    if (selected.leftOutInBlocks > 0) out << '\n' << leftOutText(selected);
  }
}

}  // namespace velt::tool
