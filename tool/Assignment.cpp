#include "tool/Assignment.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "tool/Failure.h"
#include "tool/ReadOnlyRows.h"
#include "tool/RowChange.h"

namespace velt::tool {

namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// A whole number from 1 on.
std::optional<std::size_t> ordinalIn(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number == 0) return std::nullopt;
  return number;
}

// The relation that the characters around the equals sign name, which are taken off name and value.
std::optional<palette::Relation> takeRelation(std::string& name, std::string& value) {
  if (isReplacement(value)) {
    value.erase(0, 1);
    return palette::Relation::replaced;
  }
  const std::optional<palette::Relation> relation = name.empty() ? std::nullopt : relationOf(name.back());
  if (relation) {
    name.pop_back();
    name = trimmed(name);
  }
  return relation;
}

// Vertex[37].X is the 37th row Vertex X.
std::optional<std::pair<std::string, std::size_t>> elementIn(std::string_view name) {
  const std::size_t open = name.find('[');
  const std::size_t close = name.find("].", open == std::string_view::npos ? name.size() : open);
  if (open == 0 || close == std::string_view::npos) return std::nullopt;
  const std::optional<std::size_t> number = ordinalIn(name.substr(open + 1, close - open - 1));
  const std::string_view element = trimmed(name.substr(close + 2));
  if (!number || element.empty()) return std::nullopt;
  return std::pair(std::string(trimmed(name.substr(0, open))) + " " + std::string(element), *number);
}

std::string nearestNames(std::string_view name, std::span<const palette::Row> rows) {
  std::vector<std::string> labels;
  for (const palette::Row& row : rows)
    labels.push_back(row.label());
  return palette::didYouMean(
      name, labels,
      "; \"veltprops show\" lists those that they have, and \"veltprops explain\" says why one is missing");
}

// ~/OLD/NEW/ without the s. Nobody wants to see it in the texts of a drawing.
bool isForgottenReplacement(std::string_view value) {
  return value.starts_with("~/") && std::count(value.begin(), value.end(), '/') == 3 && value.ends_with('/');
}

}  // namespace

Assignment parseAssignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  Assignment made{.text = std::string(text), .name = std::string(trimmed(text.substr(0, equals)))};
  const auto requireName = [&] {
    if (equals != std::string_view::npos && !made.name.empty()) return;
    throw UsageFailure(
        fmt::format("\"{}\" is not an assignment: write NAME=VALUE, such as Layer=Walls", text));
  };
  requireName();
  made.value = text.substr(equals + 1);
  made.relation = takeRelation(made.name, made.value);
  requireName();
  if (!made.relation && isForgottenReplacement(made.value)) {
    throw UsageFailure(fmt::format(
        "\"{}\" is not a replacement: write {}=~s/OLD/NEW/ (a text that reads so is written with --from)",
        made.value, made.name));
  }
  if (const auto element = elementIn(made.name)) {
    std::tie(made.name, made.number) = *element;
    return made;
  }
  if (const std::size_t hash = made.name.rfind('#'); hash != std::string::npos) {
    if (const auto number = ordinalIn(std::string_view(made.name).substr(hash + 1))) {
      made.number = *number;
      made.name = trimmed(std::string_view(made.name).substr(0, hash));
    }
  }
  return made;
}

palette::Row rowFor(const Assignment& assignment, std::span<const palette::Row> rows) {
  const std::vector<palette::Row> found = palette::rowsNamed(rows, assignment.name);
  if (found.empty()) {
    throw Failure(fmt::format("the selected entities have no property {} in common{}", assignment.name,
                              nearestNames(assignment.name, rows)));
  }
  if (assignment.number > found.size()) {
    throw Failure(fmt::format("{}#{}: the selection has only {} of that name", assignment.name,
                              assignment.number, found.size()));
  }
  if (assignment.number == 0 && found.size() > 1) {
    throw Failure(fmt::format("{1} properties have the name {0}: choose one of {0}#1 to {0}#{1}",
                              assignment.name, found.size()));
  }
  const palette::Row& row = found[assignment.number == 0 ? 0 : assignment.number - 1];
  if (!row.isEditable()) {
    const std::string reason = readOnlyReason(row);
    throw Failure(
        fmt::format("{} cannot be edited{}{}", assignment.name, reason.empty() ? "" : ": ", reason));
  }
  return row;
}

}  // namespace velt::tool
