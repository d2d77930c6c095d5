#include <algorithm>
#include <iterator>

#include "palette/Palette.h"
#include "palette/rows/NumberKinds.h"

namespace velt::palette {

std::string Row::label() const {
  return oneLine(record_->displayName.str());
}

std::string Row::name() const {
  return oneLine(record_->name.str());
}

std::string Row::help() const {
  return oneLine(record_->description.str());
}

std::string Row::categoryName() const {
  return oneLine(record_->categoryName.str());
}

bool Row::isAngle() const {
  return palette::isAngle(record_->customType);
}

Unit Row::unit() const {
  if (isAngle()) return Unit::angle;
  if (isArea(record_->customType)) return Unit::area;
  if (isLineweight(record_->customType)) return Unit::hundredthOfMillimetre;
  return isLength(*record_) ? Unit::length : Unit::none;
}

std::vector<Choice> Row::choices() const {
  std::vector<Choice> choices;
  choices.reserve(record_->choiceNames.length());
  for (std::uint32_t i = 0; i < record_->choiceNames.length(); ++i) {
    Choice& choice = choices.emplace_back(Choice{oneLine(record_->choiceNames[i].str())});
    if (i < record_->choiceValues.length()) choice.integer = record_->choiceValues[i];
    if (i < record_->choiceReals.length()) choice.real = record_->choiceReals[i];
  }
  return choices;
}

Editability Row::editability() const {
  if (record_->isEditable) return Editability::editable;
  return record_->isWritable || isDynamic() ? Editability::notNow : Editability::neverWritable;
}

int placeOfCategory(std::int32_t id) {
  // The numbers that every host answers for its predefined categories.
  constexpr std::int32_t none = -1, misc = -2, lastOfAutomation = -11, general = -12, last = -32;
  constexpr int madeUp = 100, ofAutomation = 200, atTheEnd = 300;
  if (id == general) return 0;
  if (id < general && id >= last) return general - id;
  if (id < misc && id >= lastOfAutomation) return ofAutomation - id;
  if (id == misc) return atTheEnd;
  return id == none ? atTheEnd + 1 : madeUp;
}

std::vector<Category> byCategory(std::span<const Row> rows) {
  std::vector<Category> categories;
  std::map<std::pair<std::int32_t, std::string>, std::size_t> known;
  for (const Row& row : rows) {
    std::string name = row.categoryName();
    const auto [entry, isNew] = known.try_emplace({row.categoryId(), name}, categories.size());
    if (isNew) categories.push_back({row.categoryId(), std::move(name), {}});
    categories[entry->second].rows.push_back(row);
  }
  std::stable_sort(categories.begin(), categories.end(), [](const Category& a, const Category& b) {
    return placeOfCategory(a.id) < placeOfCategory(b.id);
  });
  return categories;
}

std::vector<Row> rowsNamed(std::span<const Row> rows, std::string_view name) {
  std::vector<Row> found;
  const auto take = [&](std::string (Row::*nameOfRow)() const) {
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found),
                 [&](const Row& row) { return equalIgnoringCase((row.*nameOfRow)(), name); });
  };
  take(&Row::label);
  if (found.empty()) take(&Row::name);
  return found;
}

}  // namespace velt::palette
