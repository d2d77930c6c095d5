#include "tool/ValuesFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "tool/EntityFacts.h"
#include "tool/Failure.h"
#include "tool/NamedRows.h"

namespace velt::tool {

namespace {

using Json = nlohmann::ordered_json;

// Thrown for data of another form, and caught where the file is known.
class OtherForm : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

palette::PlainValue plainOf(const Json& value, const std::string& name) {
  if (value.is_null()) return {};
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (std::in_range<std::int64_t>(number)) return static_cast<std::int64_t>(number);
    return number;
  }
  if (value.is_number_integer()) return value.get<std::int64_t>();
  if (value.is_number()) return value.get<double>();
  if (value.is_string()) return value.get<std::string>();
  throw OtherForm(fmt::format("the value of {} is not a number, a text, true, false or null", name));
}

const Json& memberOf(const Json& object, const char* name) {
  if (!object.is_object() || !object.contains(name)) throw OtherForm(fmt::format("\"{}\" is missing", name));
  return object.at(name);
}

std::string textOf(const Json& object, const char* name) {
  const Json& text = memberOf(object, name);
  if (!text.is_string()) throw OtherForm(fmt::format("\"{}\" is not a text", name));
  return text.get<std::string>();
}

// Null and what is missing stand for no unit.
std::string unitOf(const Json& unit, const std::string& name) {
  if (unit.is_null()) return {};
  if (!unit.is_string()) throw OtherForm(fmt::format("the unit of {} is not a text", name));
  return unit.get<std::string>();
}

// Of table: one for all values of a name, or one for each.
std::vector<std::string> unitsNamed(const Json& units, const WantedValues& wanted) {
  const Json of = units.is_object() && units.contains(wanted.name) ? units.at(wanted.name) : Json();
  if (!of.is_array()) return std::vector(wanted.values.size(), unitOf(of, wanted.name));
  std::vector<std::string> list;
  for (const Json& unit : of)
    list.push_back(unitOf(unit, wanted.name));
  list.resize(wanted.values.size());
  return list;
}

// Of table: {"Radius":2.5,"Vertex X":[0,10]}, and {"Radius":"millimeters"}
std::vector<WantedValues> valuesByName(const Json& values, const Json& units) {
  std::vector<WantedValues> wanted;
  for (const auto& [name, value] : values.items()) {
    // A property that the entity does not have, or a fact, which is not one.
    if (value.is_null() || isFactName(name)) continue;
    WantedValues& made = wanted.emplace_back();
    made.name = name;
    if (value.is_array()) {
      for (const Json& one : value)
        made.values.push_back(plainOf(one, name));
    } else {
      made.values.push_back(plainOf(value, name));
    }
    made.units = unitsNamed(units, made);
  }
  return wanted;
}

// Of list and show: [{"name":"Radius","displayName":"Radius","value":2.5}]
std::vector<WantedValues> valuesInOrder(const Json& rows) {
  if (!rows.is_array()) throw OtherForm("the values are not a list");
  std::vector<WantedValues> wanted;
  std::map<std::pair<std::string, std::string>, std::size_t> known;
  for (const Json& row : rows) {
    std::string name = textOf(row, "name");
    std::string label = textOf(row, "displayName");
    const auto [place, isNew] = known.try_emplace({name, label}, wanted.size());
    if (isNew) wanted.push_back({.name = std::move(name), .label = std::move(label)});
    const bool isVarying = row.contains("isVaries") && row["isVaries"] == true;
    WantedValues& made = wanted[place->second];
    made.values.push_back(isVarying ? palette::PlainValue()
                                    : plainOf(memberOf(row, "value"), place->first.second));
    made.units.push_back(row.contains("unit") ? unitOf(row["unit"], place->first.second) : std::string());
  }
  return wanted;
}

WantedEntity entityIn(const Json& json) {
  WantedEntity entity{.handle = textOf(json, "handle")};
  const Json& values = memberOf(json, "values");
  entity.values = values.is_object() ? valuesByName(values, json.contains("units") ? json["units"] : Json())
                                     : valuesInOrder(values);
  return entity;
}

ValuesFile documentIn(const Json& json) {
  ValuesFile made;
  if (json.is_object() && json.contains("rows")) {
    made.isOfSelection = true;
    made.ofSelection = valuesInOrder(json["rows"]);
    return made;
  }
  if (json.is_object() && json.contains("handle")) {
    made.entities.push_back(entityIn(json));
    return made;
  }
  const Json& entities = memberOf(json, "entities");
  if (!entities.is_array()) throw OtherForm("\"entities\" is not a list");
  for (const Json& entity : entities)
    made.entities.push_back(entityIn(entity));
  return made;
}

constexpr const char* forms =
    "what \"table --json\", \"list --json --values\" or \"show --json\" print can be written";

}  // namespace

ValuesFile parseValuesFile(const std::string& text, const std::string& file) {
  const Json whole = Json::parse(text, nullptr, false);
  try {
    if (!whole.is_discarded()) return documentIn(whole);
  } catch (const OtherForm& other) {
    throw Failure(fmt::format("{}: {} ({})", file, other.what(), forms));
  }
  ValuesFile made;
  std::istringstream lines(text);
  std::size_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    try {
      const Json json = Json::parse(line, nullptr, false);
      if (json.is_discarded()) throw OtherForm("not JSON");
      made.entities.push_back(entityIn(json));
    } catch (const OtherForm& other) {
      throw Failure(fmt::format("{}: line {}: {} ({})", file, number, other.what(), forms));
    }
  }
  return made;
}

ValuesFile readValuesFile(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  if (in.peek() != std::ifstream::traits_type::eof()) text << in.rdbuf();
  if (!in.is_open() || in.bad()) throw Failure(fmt::format("{}: cannot be read", file));
  return parseValuesFile(text.str(), file);
}

std::vector<palette::Row> rowsFor(const WantedValues& wanted, std::span<const palette::Row> rows) {
  std::vector<palette::Row> found;
  if (!wanted.label.empty()) {
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found), [&](const palette::Row& row) {
      return palette::toUtf8(row.record().name.str()) == wanted.name
             && palette::toUtf8(row.record().displayName.str()) == wanted.label;
    });
    return found;
  }
  const std::vector<std::string> names = namesToFind(rows);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (names[i] == wanted.name) found.push_back(rows[i]);
  }
  return found.empty() ? rowsMeant(rows, wanted.name) : found;
}

}  // namespace velt::tool
