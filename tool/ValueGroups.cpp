#include "tool/ValueGroups.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <variant>

#include "embedded/database/NameFolding.h"
#include "tool/ConditionCheck.h"
#include "tool/EntitySelection.h"
#include "tool/NamedRows.h"

namespace velt::tool {

namespace {

// For an operand of a condition that stands in double quotes on the command line.
std::string operandOf(std::string_view text) {
  const bool isPlain = !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' || c == '-';
  });
  if (isPlain) return std::string(text);
  std::string made = "'";
  for (const char c : text)
    made += c == '\'' ? "''" : std::string(1, c);
  return made + "'";
}

// For an argument in double quotes.
std::string forShell(std::string_view text) {
  std::string made = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\' || c == '$' || c == '`') made += '\\';
    made += c;
  }
  return made + '"';
}

// The value as a condition takes it; nothing for one that no condition compares.
std::optional<std::string> literalOf(const palette::Row& row, const palette::ValueGroup& group,
                                     palette::NumberStyle style) {
  if (std::holds_alternative<std::monostate>(group.value)) return std::nullopt;
  const auto* const real = std::get_if<double>(&group.value);
  if (real == nullptr) return group.text;
  if (row.isAngle()) {
    style.isPrecise = true;
    return row.textOf(palette::Value::ofReal(*real), style);
  }
  // More digits than a condition looks at.
  return fmt::format("{:.12g}", *real);
}

bool isAmongOthers(const palette::Row& row, std::span<const palette::Row> rows) {
  return rowsMeant(rows, row.label()).size() != 1
         || rowsMeant(rows, row.label()).front().name() != row.name();
}

// The groups whose values a condition does not tell from those of others: texts that differ in case only, numbers that
// differ hardly.
std::set<std::size_t> indistinct(const std::vector<palette::ValueGroup>& groups) {
  std::map<std::wstring, std::vector<std::size_t>> byText;
  std::vector<std::pair<double, std::size_t>> numbers;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    if (const auto* const real = std::get_if<double>(&groups[i].value)) {
      numbers.emplace_back(*real, i);
    } else {
      byText[database::foldName(palette::fromUtf8(groups[i].text))].push_back(i);
    }
  }
  std::set<std::size_t> found;
  for (const auto& [text, sharers] : byText) {
    if (sharers.size() > 1) found.insert(sharers.begin(), sharers.end());
  }
  std::sort(numbers.begin(), numbers.end());
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    if (isSameNumber(numbers[i - 1].first, numbers[i].first))
      found.insert({numbers[i - 1].second, numbers[i].second});
  }
  return found;
}

// Classes may call the same number of one property by different names, of which the merged row has those of the first.
bool haveOwnChoices(const palette::Selection& selection, const palette::Row& row) {
  if (!row.hasChoices() || !std::holds_alternative<std::int64_t>(row.plain())) return false;
  for (std::size_t i = 1; i < selection.size(); ++i) {
    if (className(selection.entity(i)) != className(selection.entity(0))) return true;
  }
  return false;
}

std::string handlesOption(const palette::Selection& selection, const palette::ValueGroup& group) {
  std::string list;
  for (const std::size_t entity : group.entities)
    list += (list.empty() ? "" : ",") + handleText(selection.entity(entity));
  return "--handle " + list;
}

}  // namespace

std::vector<SelectableValue> valuesBehind(const palette::Selection& selection, const palette::Row& row,
                                          std::span<const palette::Row> rows,
                                          const palette::NumberStyle& style) {
  std::vector<palette::ValueGroup> groups = selection.valueGroups(row, style);
  std::stable_sort(groups.begin(), groups.end(),
                   [](const palette::ValueGroup& a, const palette::ValueGroup& b) {
                     return a.entities.size() > b.entities.size();
                   });
  const std::set<std::size_t> shared = indistinct(groups);
  const bool isAmbiguous = isAmongOthers(row, rows) || haveOwnChoices(selection, row);
  std::vector<SelectableValue> values;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    const std::optional<std::string> literal = literalOf(row, groups[i], style);
    const bool isTold = literal && !isAmbiguous && !shared.contains(i);
    std::string option = isTold ? "--where " + forShell(operandOf(row.label()) + "=" + operandOf(*literal))
                                : handlesOption(selection, groups[i]);
    values.push_back({std::move(groups[i]), std::move(option)});
  }
  return values;
}

}  // namespace velt::tool
