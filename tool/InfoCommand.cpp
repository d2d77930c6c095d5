#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>

#include "tool/Columns.h"
#include "tool/Commands.h"
#include "tool/DrawingInfo.h"
#include "tool/JsonOutput.h"
#include "tool/OpenDrawing.h"

namespace velt::tool {

namespace {

using Json = nlohmann::ordered_json;

// --- for people ------------------------------------------------------------------------------------------

// Lines of a name and what is said of it, under a heading.
class Part {
 public:
  Part(const char* heading, const Terminal& terminal) : heading_(heading), terminal_(terminal) {}

  void add(std::string name, std::string text) { lines_.emplace_back(std::move(name), std::move(text)); }

  void print(std::ostream& out) const {
    if (lines_.empty()) return;
    std::size_t width = 0;
    for (const auto& [name, text] : lines_)
      width = std::max(width, columns(name));
    out << '\n' << terminal_.bold(heading_) << '\n';
    for (const auto& [name, text] : lines_) {
      std::string line = fmt::format("  {}  {}", padded(name, width), text);
      line.erase(line.find_last_not_of(' ') + 1);
      out << terminal_.fitted(line) << '\n';
    }
  }

 private:
  std::string heading_;
  const Terminal& terminal_;
  std::vector<std::pair<std::string, std::string>> lines_;
};

std::string countText(const DrawingInfo::Count& count) {
  if (count.inBlocks == 0) return entitiesText(count.outside);
  return fmt::format("{}, {} in blocks", entitiesText(count.outside), count.inBlocks);
}

std::string statesOf(const DrawingInfo::Layer& layer) {
  std::vector<std::string> states;
  if (layer.isOff) states.emplace_back("off");
  if (layer.isFrozen) states.emplace_back("frozen");
  if (layer.isLocked) states.emplace_back("locked");
  if (layer.isOnlyNamed) states.emplace_back("only named by entities");
  return states.empty() ? "" : fmt::format(" ({})", fmt::join(states, ", "));
}

std::string pointText(const std::array<double, 3>& point) {
  return fmt::format("{:g}, {:g}, {:g}", point[0], point[1], point[2]);
}

void printDrawing(const DrawingInfo& info, const Terminal& terminal, std::ostream& out) {
  Part part("Drawing", terminal);
  part.add("Format", info.version.empty() ? "not stated" : fmt::format("{} ({})", info.format, info.version));
  if (!info.codePage.empty()) part.add("Code page", info.codePage);
  part.add("Units", info.units);
  part.add("Lengths", info.lengths);
  part.add("Angles", info.angles);
  part.add("Extents", info.extents ? fmt::format("{} to {}", pointText(info.extents->first),
                                                 pointText(info.extents->second))
                                   : "none stored");
  part.add("Entities", countText(info.entities));
  part.print(out);
}

void printLayers(const DrawingInfo& info, const Terminal& terminal, std::ostream& out) {
  Part part("Layers", terminal);
  for (const DrawingInfo::Layer& layer : info.layers) {
    part.add(layer.name, fmt::format("{}, {}, {}{}", layer.color, layer.linetype, countText(layer.entities),
                                     statesOf(layer)));
  }
  part.print(out);
}

void printBlocks(const DrawingInfo& info, const Terminal& terminal, std::ostream& out) {
  Part part("Blocks", terminal);
  std::size_t anonymous = 0;
  for (const DrawingInfo::Block& block : info.blocks) {
    anonymous += block.isAnonymous;
    if (block.isAnonymous) continue;
    part.add(block.name, fmt::format("{}, {} {}{}", entitiesText(block.entities), block.references,
                                     block.references == 1 ? "reference" : "references",
                                     block.isExternal ? " (external)" : ""));
  }
  if (anonymous > 0) part.add("(without a name)", fmt::format("{}, made by programs", anonymous));
  part.print(out);
}

void printNotUnderstood(const DrawingInfo& info, const Terminal& terminal, std::ostream& out) {
  Part part("Kept as they stand, but not understood", terminal);
  for (const DrawingInfo::Class& of : info.classes) {
    if (of.isGeneric)
      part.add(of.dxfType, countText(of.entities) + ": no properties but those of every entity");
  }
  for (const std::string& section : info.unknownSections)
    part.add(section, "section");
  for (const std::string& table : info.unknownTables)
    part.add(table, "table");
  part.print(out);
}

void printForPeople(const InfoRequest& request, const DrawingInfo& info, std::ostream& out) {
  const Terminal& terminal = request.terminal;
  out << request.drawing << '\n';
  printDrawing(info, terminal, out);
  printLayers(info, terminal, out);

  Part classes("Classes of entities", terminal);
  for (const DrawingInfo::Class& of : info.classes)
    classes.add(fmt::format("{} ({})", of.name, of.dxfType), countText(of.entities));
  classes.print(out);
  printBlocks(info, terminal, out);

  Part layouts("Layouts", terminal);
  for (const DrawingInfo::Layout& layout : info.layouts)
    layouts.add(layout.name, entitiesText(layout.entities));
  layouts.print(out);

  Part applications("Data of applications", terminal);
  for (const DrawingInfo::Application& application : info.applications)
    applications.add(application.name, entitiesText(application.entities) + " with extended data");
  if (info.withExtensionDictionary > 0)
    applications.add("(in dictionaries)", entitiesText(info.withExtensionDictionary));
  applications.print(out);
  printNotUnderstood(info, terminal, out);
}

// --- for programs ----------------------------------------------------------------------------------------

Json countJson(const DrawingInfo::Count& count) {
  return {{"count", count.outside}, {"inBlocks", count.inBlocks}};
}

Json drawingJson(const std::string& drawing, const DrawingInfo& info) {
  Json json = {
      {"drawing", drawing},        {"version", info.version}, {"format", info.format},
      {"codePage", info.codePage}, {"units", info.units},     {"lengths", info.lengths},
      {"angles", info.angles},     {"extents", nullptr},      {"entities", countJson(info.entities)}};
  if (info.extents) json["extents"] = {{"lower", info.extents->first}, {"upper", info.extents->second}};
  return json;
}

Json layersJson(const DrawingInfo& info) {
  Json list = Json::array();
  for (const DrawingInfo::Layer& layer : info.layers) {
    list.push_back({{"name", layer.name},
                    {"color", layer.color},
                    {"linetype", layer.linetype},
                    {"off", layer.isOff},
                    {"frozen", layer.isFrozen},
                    {"locked", layer.isLocked},
                    {"onlyNamed", layer.isOnlyNamed},
                    {"entities", countJson(layer.entities)}});
  }
  return list;
}

void printAsJson(const InfoRequest& request, const DrawingInfo& info, std::ostream& out) {
  Json json = drawingJson(request.drawing, info);
  json["layers"] = layersJson(info);
  for (const char* const name : {"classes", "blocks", "layouts", "applications"})
    json[name] = Json::array();
  for (const DrawingInfo::Class& of : info.classes)
    json["classes"].push_back(
        {{"class", of.name}, {"type", of.dxfType}, {"entities", countJson(of.entities)}});
  for (const DrawingInfo::Block& block : info.blocks) {
    json["blocks"].push_back({{"name", block.name},
                              {"anonymous", block.isAnonymous},
                              {"external", block.isExternal},
                              {"entities", block.entities},
                              {"references", block.references}});
  }
  for (const DrawingInfo::Layout& layout : info.layouts)
    json["layouts"].push_back({{"name", layout.name}, {"entities", layout.entities}});
  for (const DrawingInfo::Application& application : info.applications)
    json["applications"].push_back({{"name", application.name}, {"entities", application.entities}});
  json["withExtensionDictionary"] = info.withExtensionDictionary;
  json["notUnderstood"] = {
      {"types", Json::array()}, {"sections", info.unknownSections}, {"tables", info.unknownTables}};
  for (const DrawingInfo::Class& of : info.classes) {
    if (of.isGeneric)
      json["notUnderstood"]["types"].push_back({{"type", of.dxfType}, {"entities", countJson(of.entities)}});
  }
  printJson(json, out);
}

}  // namespace

void info(const InfoRequest& request, std::ostream& out) {
  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const DrawingInfo gathered = infoOf(*drawing);
  if (request.json)
    printAsJson(request, gathered, out);
  else
    printForPeople(request, gathered, out);
}

}  // namespace velt::tool
