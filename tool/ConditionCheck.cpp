#include "tool/ConditionCheck.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "embedded/database/NameFolding.h"
#include "tool/EntityFacts.h"
#include "tool/Failure.h"
#include "tool/NamedRows.h"
#include "tool/Patterns.h"

namespace velt::tool {

namespace {

using Kind = Condition::Kind;

std::optional<double> numberWritten(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<double> numberIn(const palette::PlainValue& value) {
  if (const auto* const flag = std::get_if<bool>(&value)) return *flag ? 1.0 : 0.0;
  return palette::numberOf(value);
}

// Less than, equal to or greater than 0.
int order(double a, double b) {
  if (isSameNumber(a, b)) return 0;
  return a < b ? -1 : 1;
}

int order(std::string_view a, std::string_view b) {
  return database::foldName(palette::fromUtf8(a)).compare(database::foldName(palette::fromUtf8(b)));
}

bool fitsOrder(Kind kind, int order) {
  switch (kind) {
    case Kind::equal:
      return order == 0;
    case Kind::different:
      return order != 0;
    case Kind::less:
      return order < 0;
    case Kind::lessOrEqual:
      return order <= 0;
    case Kind::greater:
      return order > 0;
    default:
      return order >= 0;
  }
}

bool textCompares(const Condition& condition, std::string_view text) {
  if (condition.kind == Kind::like) return fits(condition.value, text);
  const bool comparesForEquality = condition.kind == Kind::equal || condition.kind == Kind::different;
  const std::optional<double> number = numberWritten(text);
  const std::optional<double> wanted = numberWritten(condition.value);
  if (!comparesForEquality && number && wanted) return fitsOrder(condition.kind, order(*number, *wanted));
  return fitsOrder(condition.kind, order(text, condition.value));
}

// The number that the value of a condition means to the row. A whole number may be compared with any other.
double numberMeant(const std::string& value, const palette::Row& row, const palette::NumberStyle& style) {
  try {
    return numberIn(row.parse(value, style).plain()).value_or(0.0);
  } catch (const palette::Error&) {
    const std::optional<double> number = numberWritten(value);
    if (number && !row.hasChoices()) return *number;
    throw;
  }
}

}  // namespace

bool isSameNumber(double a, double b) {
  return std::fabs(a - b) <= 1e-9 * std::max({1.0, std::fabs(a), std::fabs(b)});
}

bool ConditionCheck::compares(const Condition& condition, const palette::Row& row,
                              Experience& experience) const {
  const palette::PlainValue value = row.plain();
  if (std::holds_alternative<std::monostate>(value)) return false;
  const std::optional<double> number = numberIn(value);
  // A number that an entity has not is shown as nothing, and is none.
  if (number && std::isnan(*number)) return false;
  if (!number || condition.kind == Kind::like) {
    experience.isUnderstood = true;
    return textCompares(condition, row.text(style_));
  }
  try {
    const double wanted = numberMeant(condition.value, row, style_);
    experience.isUnderstood = true;
    return fitsOrder(condition.kind, order(*number, wanted));
  } catch (const palette::Error& error) {
    experience.trouble = error.what();
    return false;
  }
}

bool ConditionCheck::holds(const Condition& condition, VkDbObjectId entity,
                           std::span<const palette::Row> rows) {
  const auto partHolds = [&](const Condition& part) { return holds(part, entity, rows); };
  // Every part is tried, so that a name that no entity has is noticed wherever it stands.
  switch (condition.kind) {
    case Kind::all:
      return std::count_if(condition.parts.begin(), condition.parts.end(), partHolds)
             == std::ssize(condition.parts);
    case Kind::any:
      return std::count_if(condition.parts.begin(), condition.parts.end(), partHolds) > 0;
    case Kind::negation:
      return !partHolds(condition.parts.front());
    default:
      break;
  }
  Experience& experience = experience_[&condition];
  if (isFactName(condition.name)) {
    experience.isKnown = true;
    return condition.kind == Kind::has || textCompares(condition, factOf(entity, condition.name));
  }
  const std::vector<palette::Row> meant = rowsMeant(rows, condition.name);
  experience.isKnown = experience.isKnown || !meant.empty();
  if (condition.kind == Kind::has) return !meant.empty();
  return std::any_of(meant.begin(), meant.end(),
                     [&](const palette::Row& row) { return compares(condition, row, experience); });
}

bool ConditionCheck::holds(VkDbObjectId entity, std::span<const palette::Row> rows) {
  const bool isFit = holds(condition_, entity, rows);
  const bool isUnknown = std::any_of(experience_.begin(), experience_.end(),
                                     [](const auto& entry) { return !entry.second.isKnown; });
  if (isUnknown) {
    for (const palette::Row& row : rows)
      labels_.insert(row.label());
  }
  return isFit;
}

void ConditionCheck::requireSense() const {
  const std::vector<std::string> labels(labels_.begin(), labels_.end());
  for (const auto& [condition, experience] : experience_) {
    // Whether some have a property and others do not may be the very question.
    if (!experience.isKnown && condition->kind != Kind::has) {
      throw Failure(fmt::format("--where: no entity has a property {}{}", condition->name,
                                didYouMeanOf(condition->name, labels)));
    }
    if (!experience.isUnderstood && !experience.trouble.empty())
      throw Failure(fmt::format("--where: {}: {}", condition->name, experience.trouble));
  }
}

}  // namespace velt::tool
