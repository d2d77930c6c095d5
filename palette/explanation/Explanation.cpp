// Why a row varies, and why there is none.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "palette/Palette.h"
#include "palette/support/HostCalls.h"

namespace velt::palette {

namespace {

// Equal texts for equal values, different texts for different ones.
std::string keyOf(const PlainValue& value) {
  struct Writer {
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(bool flag) const { return flag ? "yes" : "no"; }
    std::string operator()(const std::string& text) const { return "\"" + text; }
    std::string operator()(double number) const { return fmt::format("{:.17g}", number); }
    std::string operator()(std::int64_t number) const { return fmt::format("{}", number); }
    std::string operator()(std::uint64_t number) const { return fmt::format("{}", number); }
  };
  return std::visit(Writer(), value);
}

struct Found {
  bool isThere = false;
  bool isDynamic = false;
};

// Whether a selection of these entities alone has a row of that name.
Found find(std::span<const VkDbObjectId> entities, std::string_view name) {
  Selection selection(entities);
  const std::vector<Row> rows = rowsNamed(selection.query(), name);
  const bool isDynamic =
      std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.isDynamic(); });
  return {!rows.empty(), isDynamic};
}

}  // namespace

std::vector<ValueGroup> Selection::valueGroups(const Row& row, const NumberStyle& style) const {
  const std::vector<Value> all = values(row);
  std::vector<ValueGroup> groups;
  std::unordered_map<std::string, std::size_t> known;
  for (std::size_t i = 0; i < all.size(); ++i) {
    PlainValue plain = all[i].plain();
    const auto [entry, isNew] = known.try_emplace(keyOf(plain), groups.size());
    if (isNew) groups.push_back({std::move(plain), row.textOf(all[i], style), {}});
    groups[entry->second].entities.push_back(i);
  }
  return groups;
}

Absence Selection::whyAbsent(std::string_view name) const {
  if (!rowsNamed(rows_, name).empty()) return {};
  Absence absence{Absence::Cause::notCommon};
  bool areAllDynamic = true;
  for (std::size_t i = 0; i < size(); ++i) {
    const std::array alone{entity(i)};
    const Found found = find(alone, name);
    if (!found.isThere) absence.entities.push_back(i);
    areAllDynamic = areAllDynamic && found.isDynamic;
  }
  if (absence.entities.size() == size()) return {Absence::Cause::unknown};
  if (!absence.entities.empty()) return absence;

  TqVector<VeltPropData*> entries(selection_);
  if (areAllDynamic && !isAllEntitiesSameDynProp(entries)) return {Absence::Cause::dynamicWithheld};
  absence.cause = Absence::Cause::different;
  for (std::size_t i = 1; i < size(); ++i) {
    const std::array pair{entity(0), entity(i)};
    if (!find(pair, name).isThere) absence.entities.push_back(i);
  }
  return absence;
}

}  // namespace velt::palette
