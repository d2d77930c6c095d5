#include "tool/Assignment.h"

#include <fmt/format.h>

#include <charconv>
#include <optional>
#include <vector>

#include "tool/Failure.h"
#include "tool/ReadOnlyRows.h"

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

std::string editableNames(std::span<const palette::Row> rows) {
  std::string names;
  std::string last;
  for (const palette::Row& row : rows) {
    if (!row.isEditable() || row.label() == last) continue;
    last = row.label();
    if (!names.empty()) names += ", ";
    names += last;
  }
  return names.empty() ? "no property of the selection can be edited" : "these can be edited: " + names;
}

}  // namespace

Assignment parseAssignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  Assignment made{.text = std::string(text), .name = std::string(trimmed(text.substr(0, equals)))};
  if (equals == std::string_view::npos || made.name.empty()) {
    throw UsageFailure(
        fmt::format("\"{}\" is not an assignment: write NAME=VALUE, such as Layer=Walls", text));
  }
  made.value = text.substr(equals + 1);
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
    throw Failure(fmt::format("the selection has no property {}; {}", assignment.name, editableNames(rows)));
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
    throw Failure(fmt::format("{} cannot be edited{}{}; {}", assignment.name, reason.empty() ? "" : ": ",
                              reason, editableNames(rows)));
  }
  return row;
}

palette::Value valueFor(const Assignment& assignment, const palette::Row& row) {
  if (!row.takesText())
    throw Failure(fmt::format("{} has a value that cannot be written as text", assignment.name));
  try {
    return row.parse(assignment.value);
  } catch (const palette::Error& error) {
    throw Failure(fmt::format("{}: {}", assignment.name, error.what()));
  }
}

}  // namespace velt::tool
