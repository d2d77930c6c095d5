#include "tool/NamedRows.h"

#include <charconv>
#include <map>

namespace velt::tool {

std::pair<std::string, std::size_t> withoutNumber(std::string_view name) {
  const std::size_t hash = name.rfind('#');
  if (hash == std::string_view::npos || hash == 0) return {std::string(name), 0};
  const std::string_view digits = name.substr(hash + 1);
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || number == 0)
    return {std::string(name), 0};
  return {std::string(name.substr(0, hash)), number};
}

std::vector<palette::Row> rowsMeant(std::span<const palette::Row> rows, std::string_view name) {
  std::vector<palette::Row> found = palette::rowsNamed(rows, name);
  if (found.empty()) {
    const auto [bare, number] = withoutNumber(name);
    if (number == 0) return {};
    const std::vector<palette::Row> all = palette::rowsNamed(rows, bare);
    return number <= all.size() ? std::vector{all[number - 1]} : std::vector<palette::Row>();
  }
  const std::string first = found.front().name();
  std::erase_if(found, [&](const palette::Row& row) { return row.name() != first; });
  return found;
}

std::vector<std::string> namesToFind(std::span<const palette::Row> rows) {
  std::map<std::string, std::string> firstNames;
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const palette::Row& row : rows) {
    std::string label = row.label();
    std::string name = row.name();
    const auto [first, isFirst] = firstNames.try_emplace(label, name);
    names.push_back(isFirst || first->second == name ? std::move(label) : std::move(name));
  }
  return names;
}

}  // namespace velt::tool
