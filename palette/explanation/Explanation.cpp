// Why a row varies, and why there is none.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "palette/Palette.h"
#include "palette/explanation/EntityCause.h"
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

// By what a merge tells whether the properties of two entities are the same.
struct Key {
  std::int32_t categoryId = 0;
  std::string categoryName, name, label;
  bool isEditable = false, hasChoices = false, isElement = false;
  std::size_t elementCount = 0;
  VARTYPE type = VT_EMPTY;
  // 0 for what is not one of a group of elements.
  std::int32_t grouping = 0;
};

Key keyOf(const Row& row, std::span<const Row> rows) {
  const PROPINFO& record = row.record();
  Key key{record.categoryId, row.categoryName(), row.name(),      row.label(),
          row.isEditable(),  row.hasChoices(),   record.isElement};
  key.type = record.value.vt;
  key.grouping = record.elementGrouping;
  if (key.isElement) {
    key.elementCount =
        static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), [&](const Row& other) {
          return other.record().isElement && other.record().dispId == record.dispId;
        }));
  }
  return key;
}

std::vector<Absence::Part> differences(const Key& a, const Key& b) {
  using Part = Absence::Part;
  std::vector<Part> parts;
  const auto add = [&](bool isDifferent, Part part) {
    if (isDifferent) parts.push_back(part);
  };
  add(a.categoryId != b.categoryId || a.categoryName != b.categoryName, Part::category);
  add(a.name != b.name, Part::name);
  add(a.label != b.label, Part::label);
  add(a.isEditable != b.isEditable, Part::editability);
  add(a.hasChoices != b.hasChoices, Part::choices);
  add(a.isElement != b.isElement, Part::isElement);
  add(a.elementCount != b.elementCount, Part::elementCount);
  add(a.type != b.type, Part::type);
  return parts;
}

// What one entity, alone, has of a name.
struct Found {
  // none when it has a row.
  Absence::Cause cause = Absence::Cause::none;
  std::string message{};
  bool isDynamic = false;
  Key key{};
};

Found find(Selection& selection, std::size_t entity, std::string_view name) {
  try {
    const std::vector<Row>& all = selection.queryAlone(entity);
    const std::vector<Row> rows = rowsNamed(all, name);
    if (!rows.empty()) {
      const bool isDynamic =
          std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.isDynamic(); });
      return {.isDynamic = isDynamic, .key = keyOf(rows.front(), all)};
    }
  } catch (const Cancelled&) {
    throw;
  } catch (const Error& error) {
    return {.cause = Absence::Cause::unreadable, .message = error.what()};
  }
  const VeltPropData* const entry = std::as_const(selection.entries())[static_cast<std::uint32_t>(entity)];
  return {.cause = orError([&] { return causeOf(*entry, name); })};
}

// Whether two entities have a common row of that name.
bool haveInCommon(VkDbObjectId a, VkDbObjectId b, std::string_view name) {
  Selection pair(std::array{a, b});
  return !rowsNamed(pair.query(), name).empty();
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
  using Cause = Absence::Cause;
  if (!rowsNamed(rows_, name).empty() || size() == 0) return {};
  std::vector<VkDbObjectId> ids;
  for (std::size_t i = 0; i < size(); ++i)
    ids.push_back(entity(i));
  Selection copy(ids);
  Absence absence, unreadable{Cause::unreadable};
  bool areAllDynamic = true;
  Found ofFirst;
  for (std::size_t i = 0; i < size(); ++i) {
    Found found = find(copy, i, name);
    areAllDynamic = areAllDynamic && found.isDynamic;
    if (i == 0) ofFirst = found;
    if (found.cause == Cause::unreadable) {
      if (unreadable.entities.empty()) unreadable.message = std::move(found.message);
      unreadable.entities.push_back(i);
    } else if (found.cause != Cause::none) {
      if (absence.entities.empty()) absence.ofEntity = found.cause;
      absence.entities.push_back(i);
    }
  }
  // One entity that cannot be read leaves the whole selection without rows.
  if (!unreadable.entities.empty()) return unreadable;
  if (absence.entities.size() == size()) {
    absence.cause = std::exchange(absence.ofEntity, Cause::none);
    return absence;
  }
  if (!absence.entities.empty()) {
    absence.cause = Cause::notCommon;
    return absence;
  }

  TqVector<VeltPropData*> entries(selection_);
  if (areAllDynamic && !isAllEntitiesSameDynProp(entries)) return {Cause::dynamicWithheld};
  if (ofFirst.key.grouping != 0) return {Cause::oneAtATime};
  absence.cause = Cause::different;
  for (std::size_t i = 1; i < size(); ++i) {
    if (haveInCommon(ids[0], ids[i], name)) continue;
    if (absence.entities.empty()) absence.parts = differences(ofFirst.key, find(copy, i, name).key);
    absence.entities.push_back(i);
  }
  return absence;
}

std::vector<std::size_t> Selection::lockedEntities() const {
  std::vector<std::size_t> locked;
  for (std::size_t i = 0; i < size(); ++i) {
    if (isOnLockedLayer(entity(i))) locked.push_back(i);
  }
  return locked;
}

}  // namespace velt::palette
