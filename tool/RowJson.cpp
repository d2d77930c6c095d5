#include "tool/RowJson.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "embedded/database/Entity.h"

namespace velt::tool {

namespace {

nlohmann::ordered_json handleJson(VkDbObjectId id) {
  const std::optional<database::ObjectRef> object = database::resolve(id);
  if (!object) return nullptr;
  return fmt::format("{:X}", database::Entity(*object).handle());
}

bool isKnown(std::string_view field) {
  constexpr std::string_view known[] = {"name",         "description", "displayName", "value",
                                        "categoryName", "hasChoices",  "choiceNames", "choiceValues",
                                        "choiceReals",  "isEditable",  "isVaries"};
  return std::find(std::begin(known), std::end(known), field) != std::end(known);
}

struct FieldWriter {
  nlohmann::ordered_json operator()(const palette::PlainValue& value) const { return valueJson(value); }
  nlohmann::ordered_json operator()(VkDbObjectId id) const { return handleJson(id); }
  nlohmann::ordered_json operator()(const std::vector<palette::DynamicSource>& sources) const {
    auto list = nlohmann::ordered_json::array();
    for (const palette::DynamicSource& source : sources) {
      list.push_back({{"pDispatch", handleJson(source.entity)}, {"pDynamicProperty", source.hasProperty}});
    }
    return list;
  }
  template <class Element>
  nlohmann::ordered_json operator()(const std::vector<Element>& list) const {
    return list;
  }
};

}  // namespace

nlohmann::ordered_json valueJson(const palette::PlainValue& value) {
  return std::visit(
      [](const auto& plain) -> nlohmann::ordered_json {
        if constexpr (std::is_same_v<decltype(plain), const std::monostate&>) {
          return nullptr;
        } else {
          return plain;
        }
      },
      value);
}

nlohmann::ordered_json unitJson(const std::string& unit) {
  return unit.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(unit);
}

nlohmann::ordered_json rowJson(const palette::Row& row, const palette::NumberStyle& style, const Units& units,
                               RowFields fields) {
  nlohmann::ordered_json json;
  for (const palette::Field& field : row.fields()) {
    if (fields == RowFields::all || isKnown(field.name))
      json[field.name] = std::visit(FieldWriter(), field.data);
  }
  // That of the first entity is not the selection's.
  if (row.isVarying()) json["value"] = nullptr;
  json["text"] = row.text(style);
  json["unit"] = unitJson(units.of(row));
  json["isDynamic"] = row.isDynamic();
  return json;
}

}  // namespace velt::tool
