#include <fmt/format.h>

#include <new>
#include <utility>

#include "palette/Palette.h"
#include "palette/selection/DynamicNodes.h"
#include "palette/selection/EntityValue.h"
#include "palette/support/HostCalls.h"

namespace velt::palette {

Selection::Selection(std::span<const VkDbObjectId> entities) : entries_(entities.size()) {
  // For an empty selection set-up would start COM, and teardown would not end it.
  if (entities.empty()) return;
  if (!selection_.setPhysicalLength(static_cast<std::uint32_t>(entities.size()))) throw std::bad_alloc();
  for (std::size_t i = 0; i < entities.size(); ++i) {
    entries_[i].oldId = entities[i].asOldId();
    selection_.push_back(&entries_[i]);
  }
  // The layer overwrites this pointer when it begins with the entry. If it is still there after a failure, COM did not
  // start, and there is nothing to tear down.
  IUnknown* const untouched = reinterpret_cast<IUnknown*>(&entries_);
  entries_.front().pUnknown = untouched;
  CStdStr<wchar_t> errorText;
  bool mixedClasses = false;
  bool isSetUp = false;
  try {
    isSetUp = orError([&] { return InitializePropData(selection_, errorText, mixedClasses); });
    if (!isSetUp) fail("the selection cannot be set up", errorText);
  } catch (...) {
    if (entries_.front().pUnknown != untouched) tearDown();
    throw;
  }
}

Selection::Selection(Selection&& other) noexcept
    : entries_(std::move(other.entries_)),
      selection_(std::move(other.selection_)),
      records_(std::move(other.records_)),
      rows_(std::move(other.rows_)) {}

Selection& Selection::operator=(Selection&& other) noexcept {
  // What was held before ends with `ended`.
  Selection ended(std::move(other));
  std::swap(entries_, ended.entries_);
  std::swap(selection_, ended.selection_);
  std::swap(records_, ended.records_);
  std::swap(rows_, ended.rows_);
  return *this;
}

Selection::~Selection() {
  forgetRows();
  tearDown();
}

void Selection::tearDown() {
  try {
    UnInitializePropData(selection_);
  } catch (const _com_error&) {
    // An object failed to end, and there is nobody left to tell.
  }
}

void Selection::forgetRows() {
  rows_.clear();
  for (PROPINFO& record : records_)
    VariantClear(&record.value);
  records_ = TqVector<PROPINFO>();
}

VkDbObjectId Selection::entity(std::size_t index) const {
  return VkDbObjectId().setFromOldId(entries_.at(index).oldId);
}

const std::vector<Row>& Selection::query() {
  return ask(selection_);
}

const std::vector<Row>& Selection::queryAlone(std::size_t entity) {
  TqVector<VeltPropData*> alone;
  if (!alone.setPhysicalLength(1)) throw std::bad_alloc();
  alone.push_back(&entries_.at(entity));
  return ask(alone);
}

const std::vector<Row>& Selection::ask(TqVector<VeltPropData*>& entries) {
  forgetRows();
  if (entries.isEmpty()) return rows_;
  CStdStr<wchar_t> errorText;
  bool mergeFlag = false;
  bool typeFlag = false;
  const bool isAnswered =
      orError([&] { return GetPropertiesInfo(entries, records_, errorText, mergeFlag, typeFlag); });
  if (!isAnswered) fail("the properties cannot be read", errorText);
  SortByWeight(records_);
  for (const PROPINFO& record : std::as_const(records_))
    rows_.emplace_back(record);
  return rows_;
}

Row Selection::row(std::string_view name) const {
  const std::vector<Row> found = rowsNamed(rows_, name);
  if (found.size() == 1) return found.front();
  throw Error(found.empty() ? fmt::format("the selection has no property {}", name)
                            : fmt::format("{} properties have the name {}", found.size(), name));
}

Value Selection::value(const Row& row, std::size_t entity) const {
  return orError(
      [&] { return entityValue(withOneNodePerEntity(row.record()), entries_.at(entity), entity); });
}

std::string Selection::whyNoValue(const Row& row, std::size_t entity) const {
  return orError([&] { return palette::whyNoValue(row.record(), entries_.at(entity)); });
}

std::vector<Value> Selection::values(const Row& row) const {
  return orError([&] {
    const PROPINFO record = withOneNodePerEntity(row.record());
    std::vector<Value> values;
    values.reserve(entries_.size());
    for (std::size_t i = 0; i < entries_.size(); ++i)
      values.push_back(entityValue(record, entries_[i], i));
    return values;
  });
}

}  // namespace velt::palette
