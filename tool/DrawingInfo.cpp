#include "tool/DrawingInfo.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>

#include "dxf/Numbers.h"
#include "embedded/database/Dictionary.h"
#include "embedded/database/EnhancedBlocks.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "host/automation/ColorNames.h"
#include "palette/Palette.h"
#include "tool/EntitySelection.h"

namespace velt::tool {

namespace {

using database::Drawing;

constexpr std::pair<std::string_view, std::string_view> formats[] = {
    {"AC1006", "DXF R10"},  {"AC1009", "DXF R11 or R12"}, {"AC1012", "DXF R13"},  {"AC1014", "DXF R14"},
    {"AC1015", "DXF 2000"}, {"AC1018", "DXF 2004"},       {"AC1021", "DXF 2007"}, {"AC1024", "DXF 2010"},
    {"AC1027", "DXF 2013"}, {"AC1032", "DXF 2018"},
};

constexpr std::string_view insertionUnits[] = {
    "Unitless",
    "Inches",
    "Feet",
    "Miles",
    "Millimeters",
    "Centimeters",
    "Meters",
    "Kilometers",
    "Microinches",
    "Mils",
    "Yards",
    "Angstroms",
    "Nanometers",
    "Microns",
    "Decimeters",
    "Decameters",
    "Hectometers",
    "Gigameters",
    "Astronomical units",
    "Light years",
    "Parsecs",
    "US survey feet",
    "US survey inches",
    "US survey yards",
    "US survey miles",
};
constexpr std::string_view lengthFormats[] = {
    "", "Scientific", "Decimal", "Engineering", "Architectural", "Fractional"};
constexpr std::string_view angleFormats[] = {"Decimal degrees", "Degrees, minutes and seconds", "Gradians",
                                             "Radians", "Surveyor's units"};

std::string headerText(const Drawing& drawing, std::string_view variable, int code) {
  const auto value = drawing.document().headerValue(variable, code);
  return value ? palette::toUtf8(drawing.decode(dxf::trimmed(*value))) : "";
}

std::optional<std::int64_t> headerInteger(const Drawing& drawing, std::string_view variable) {
  const auto value = drawing.document().headerValue(variable, 70);
  return value ? dxf::parseInteger<std::int64_t>(*value) : std::nullopt;
}

// The name of the number; the number itself where there is no name for it.
template <std::size_t Count>
std::string nameOf(const std::string_view (&names)[Count], std::int64_t number) {
  const bool isKnown = number >= 0 && static_cast<std::size_t>(number) < Count;
  return isKnown ? std::string(names[number]) : fmt::format("{}", number);
}

std::string withPrecision(std::string format, std::optional<std::int64_t> places) {
  return places ? fmt::format("{}, {} {}", format, *places, *places == 1 ? "place" : "places") : format;
}

void readHeader(const Drawing& drawing, DrawingInfo& info) {
  info.version = headerText(drawing, "$ACADVER", 1);
  const auto known = std::find_if(std::begin(formats), std::end(formats),
                                  [&](const auto& format) { return format.first == info.version; });
  info.format = known != std::end(formats) ? std::string(known->second) : info.version;
  info.codePage = headerText(drawing, "$DWGCODEPAGE", 3);
  info.units = nameOf(insertionUnits, headerInteger(drawing, "$INSUNITS").value_or(0));
  constexpr std::int64_t decimal = 2;
  info.lengths = withPrecision(nameOf(lengthFormats, headerInteger(drawing, "$LUNITS").value_or(decimal)),
                               headerInteger(drawing, "$LUPREC"));
  info.angles = withPrecision(nameOf(angleFormats, headerInteger(drawing, "$AUNITS").value_or(0)),
                              headerInteger(drawing, "$AUPREC"));
}

std::optional<std::array<double, 3>> headerPoint(const Drawing& drawing, std::string_view variable) {
  std::array<double, 3> point{};
  for (std::size_t axis = 0; axis < point.size(); ++axis) {
    const auto value = drawing.document().headerValue(variable, 10 + 10 * static_cast<int>(axis));
    const std::optional<double> number = value ? dxf::parseReal(*value) : std::nullopt;
    if (!number && axis < 2) return std::nullopt;
    point[axis] = number.value_or(0.0);
  }
  return point;
}

// An empty drawing stores a lower corner that is above the upper one.
void readExtents(const Drawing& drawing, DrawingInfo& info) {
  const auto lower = headerPoint(drawing, "$EXTMIN");
  const auto upper = headerPoint(drawing, "$EXTMAX");
  if (lower && upper && (*lower)[0] <= (*upper)[0]) info.extents.emplace(*lower, *upper);
}

std::string colorText(const VkCmColor& color) {
  const std::uint32_t value = color.color();
  constexpr std::uint32_t trueColor = 0xC2;
  if (value >> 24 == trueColor)
    return fmt::format("{},{},{}", (value >> 16) & 0xFF, (value >> 8) & 0xFF, value & 0xFF);
  const auto index = static_cast<std::int32_t>(value & 0xFF);
  const auto& names = automation::colorNames;
  const auto named = std::find_if(names.begin(), names.end(),
                                  [&](const automation::NamedColor& it) { return it.index == index; });
  return named != names.end() ? palette::toUtf8(named->name) : fmt::format("{}", index);
}

DrawingInfo::Layer layerInfo(const Drawing& drawing, const database::TableEntry& entry) {
  DrawingInfo::Layer made{.name = palette::toUtf8(entry.name), .isOnlyNamed = entry.isImplied()};
  const database::Layer layer(drawing, entry.record);
  made.color = colorText(layer.color());
  made.linetype = palette::toUtf8(layer.linetypeName());
  made.isOff = layer.isOff();
  made.isFrozen = layer.isFrozen();
  made.isLocked = layer.isLocked();
  return made;
}

void readSections(const Drawing& drawing, DrawingInfo& info) {
  static const std::set<std::string_view> knownTables{"LAYER", "LTYPE", "STYLE",        "DIMSTYLE", "APPID",
                                                      "UCS",   "VIEW",  "BLOCK_RECORD", "VPORT"};
  static const std::set<std::string_view> knownSections{"HEADER", "CLASSES",  "TABLES",
                                                        "BLOCKS", "ENTITIES", "OBJECTS"};
  const auto names = [&](std::uint32_t record) {
    const auto name = drawing.view(record).text(2, dxf::anySubclass);
    return std::string(name ? dxf::trimmed(*name) : "");
  };
  std::set<std::string> sections, tables;
  for (std::uint32_t record = 0; record < drawing.document().recordCount(); ++record) {
    const std::string_view type = drawing.document().type(record);
    if (type == "SECTION" && !knownSections.contains(names(record))) sections.insert(names(record));
    if (type == "TABLE" && !knownTables.contains(names(record))) tables.insert(names(record));
  }
  info.unknownSections.assign(sections.begin(), sections.end());
  info.unknownTables.assign(tables.begin(), tables.end());
}

// Counts one entity after the other.
class Census {
 public:
  Census(Drawing& drawing, DrawingInfo& info) : drawing_(drawing), info_(info) {
    for (const database::TableEntry& layer : drawing.layers().entries())
      info.layers.push_back(layerInfo(drawing, layer));
    entitiesOfBlock_.resize(drawing.blocks().entries().size());
    references_.resize(entitiesOfBlock_.size());
  }

  void add(VkDbObjectId id) {
    const std::optional<database::ObjectRef> object = database::resolve(id);
    if (!object || drawing_.isErased(object->record)) return;
    const database::Entity entity(*object);
    const bool isInBlock = entity.space() == database::Space::Block;
    const auto count = [&](DrawingInfo::Count& counted) {
      ++(isInBlock ? counted.inBlocks : counted.outside);
    };
    count(info_.entities);
    if (const database::TableEntry* const layer = entity.layer())
      count(info_.layers[drawing_.layers().indexOf(*layer)].entities);
    count(classes_[{className(id), std::string(entity.dxfName())}]);
    if (const database::TableEntry* const owner = entity.owner())
      ++entitiesOfBlock_[drawing_.blocks().indexOf(*owner)];
    if (!isInBlock) ++layouts_[palette::toUtf8(entity.layoutName())];
    if (entity.dxfName() == "INSERT") addReference(object->record);
    addApplications(object->record);
  }

  void finish() {
    for (const auto& [key, entities] : classes_)
      info_.classes.push_back({key.first, key.second, entities, key.first == "Entity"});
    finishBlocks();
    finishLayouts();
    for (const database::TableEntry& application : drawing_.appIds().entries())
      applications_.try_emplace(palette::toUtf8(application.name));
    for (const auto& [name, entities] : applications_)
      info_.applications.push_back({name, entities});
  }

 private:
  void addReference(std::uint32_t insert) {
    const database::TableEntry* block = database::originalBlock(drawing_, insert);
    if (block == nullptr) block = database::referredBlock(drawing_, insert);
    if (block != nullptr) ++references_[drawing_.blocks().indexOf(*block)];
  }

  void addApplications(std::uint32_t record) {
    const dxf::RecordView view = drawing_.view(record);
    std::set<std::string> names;
    for (std::size_t pair = view.size(); pair-- > 0 && view.code(pair) >= 1000;) {
      if (view.code(pair) == 1001)
        names.insert(palette::toUtf8(drawing_.decode(dxf::trimmed(view.value(pair)))));
    }
    for (const std::string& name : names)
      ++applications_[name];
    if (database::extensionDictionary(drawing_, record)) ++info_.withExtensionDictionary;
  }

  void finishBlocks() {
    constexpr std::int64_t external = 4;
    const auto entries = drawing_.blocks().entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const bool isOfLayout = drawing_.layoutOf(entries[i]) != nullptr || isSpace(entries[i].name);
      if (isOfLayout) continue;
      const std::uint32_t definition =
          entries[i].definition != dxf::none ? entries[i].definition : entries[i].record;
      const std::int64_t flags = drawing_.view(definition).integer(70, dxf::anySubclass).value_or(0);
      info_.blocks.push_back({.name = palette::toUtf8(entries[i].name),
                              .isAnonymous = entries[i].name.starts_with(L'*'),
                              .isExternal = (flags & external) != 0,
                              .entities = entitiesOfBlock_[i],
                              .references = references_[i]});
    }
  }

  // The blocks of old drawings that have no layouts.
  static bool isSpace(const std::wstring& name) {
    const std::string block = palette::toUtf8(name);
    constexpr std::string_view spaces[] = {"*Model_Space", "*Paper_Space", "$Model_Space", "$Paper_Space"};
    return std::any_of(std::begin(spaces), std::end(spaces), [&](std::string_view space) {
      return palette::equalIgnoringCase(std::string_view(block).substr(0, space.size()), space);
    });
  }

  void finishLayouts() {
    for (const database::Layout& layout : drawing_.layouts()) {
      const std::string name = palette::toUtf8(layout.name);
      info_.layouts.push_back({name, layouts_[name]});
      layouts_.erase(name);
    }
    for (const auto& [name, entities] : layouts_)
      info_.layouts.push_back({name.empty() ? "(a sheet without a name)" : name, entities});
  }

  Drawing& drawing_;
  DrawingInfo& info_;
  std::map<std::pair<std::string, std::string>, DrawingInfo::Count> classes_;
  std::map<std::string, std::size_t> layouts_;
  std::map<std::string, std::size_t> applications_;
  std::vector<std::size_t> entitiesOfBlock_;
  std::vector<std::size_t> references_;
};

}  // namespace

DrawingInfo infoOf(Drawing& drawing) {
  DrawingInfo info;
  readHeader(drawing, info);
  readExtents(drawing, info);
  Census census(drawing, info);
  for (const VkDbObjectId id : drawing.entities())
    census.add(id);
  census.finish();
  readSections(drawing, info);
  return info;
}

std::optional<std::string> insertionUnit(const Drawing& drawing) {
  const std::int64_t number = headerInteger(drawing, "$INSUNITS").value_or(0);
  const bool isKnown = number > 0 && static_cast<std::size_t>(number) < std::size(insertionUnits);
  return isKnown ? std::optional(nameOf(insertionUnits, number)) : std::nullopt;
}

}  // namespace velt::tool
