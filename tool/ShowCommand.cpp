#include <fmt/format.h>
#include <fmt/ranges.h>

#include <map>
#include <utility>
#include <vector>

#include "palette/Palette.h"
#include "palette/rows/RowText.h"
#include "palette/text/Utf8.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/OpenDrawing.h"

namespace velt::tool {

namespace {

using ClassCounts = std::map<std::string, std::size_t>;

struct CategoryRows {
  std::string name;
  std::vector<const PROPINFO*> rows;
};

ClassCounts countClasses(const std::vector<VkDbObjectId>& ids) {
  ClassCounts counts;
  for (const VkDbObjectId id : ids)
    ++counts[className(id)];
  return counts;
}

std::string entities(std::size_t count) {
  return fmt::format("{} {}", count, count == 1 ? "entity" : "entities");
}

// In the order in which the display order first reaches each category.
std::vector<CategoryRows> byCategory(const TqVector<PROPINFO>& rows) {
  std::vector<CategoryRows> categories;
  std::map<std::pair<int, std::string>, std::size_t> known;
  for (const PROPINFO& row : rows) {
    const std::string name = oneLine(row.categoryName.str());
    const auto [entry, isNew] = known.try_emplace({row.categoryId, name}, categories.size());
    if (isNew) categories.push_back({name, {}});
    categories[entry->second].rows.push_back(&row);
  }
  return categories;
}

void printChoices(const PROPINFO& row, std::ostream& out) {
  for (std::uint32_t i = 0; i < row.choiceNames.length(); ++i) {
    const std::string label = oneLine(row.choiceNames[i].str());
    out << (i < row.choiceValues.length() ? fmt::format("      {} = {}\n", row.choiceValues[i], label)
                                          : fmt::format("      {}\n", label));
  }
}

std::string marksOf(const PROPINFO& row) {
  std::string marks;
  if (row.hasChoices) marks += "  [choices]";
  if (!row.isEditable) marks += "  (read-only)";
  return marks;
}

void printRows(const TqVector<PROPINFO>& rows, const NumberStyle& style, bool withChoices,
               std::ostream& out) {
  std::size_t nameWidth = 0;
  for (const PROPINFO& row : rows)
    nameWidth = std::max(nameWidth, columns(oneLine(row.displayName.str())));
  constexpr std::size_t widestAlignedValue = 40;
  std::size_t valueWidth = 0;
  for (const PROPINFO& row : rows) {
    valueWidth = std::max(valueWidth, std::min(columns(valueText(row, style)), widestAlignedValue));
  }
  for (const CategoryRows& category : byCategory(rows)) {
    out << fmt::format("\n{}\n", category.name.empty() ? "(no category)" : category.name);
    for (const PROPINFO* const row : category.rows) {
      std::string line = fmt::format("  {}  {}{}", padded(oneLine(row->displayName.str()), nameWidth),
                                     padded(valueText(*row, style), valueWidth), marksOf(*row));
      line.erase(line.find_last_not_of(' ') + 1);
      out << line << '\n';
      if (withChoices && row->hasChoices) printChoices(*row, out);
    }
  }
}

void printForPeople(const ShowRequest& request, const SelectedEntities& selected, const ClassCounts& classes,
                    const TqVector<PROPINFO>& rows, const NumberStyle& style, std::ostream& out) {
  if (selected.ids.empty()) {
    out << fmt::format("{}: nothing selected\n", request.drawing);
  } else {
    std::vector<std::string> counts;
    for (const auto& [name, count] : classes)
      counts.push_back(fmt::format("{} {}", count, name));
    out << fmt::format("{}: {} selected ({})\n", request.drawing, entities(selected.ids.size()),
                       fmt::join(counts, ", "));
    if (rows.isEmpty()) out << "\nThe selected entities have no property in common.\n";
  }
  printRows(rows, style, request.choices, out);
  if (selected.leftOutInBlocks > 0) {
    out << fmt::format("\n{} inside block definitions left out (--in-blocks takes them in)\n",
                       entities(selected.leftOutInBlocks));
  }
}

void printAsJson(const ShowRequest& request, const SelectedEntities& selected, const ClassCounts& classes,
                 const TqVector<PROPINFO>& rows, const NumberStyle& style, std::ostream& out) {
  nlohmann::ordered_json json = {
      {"drawing", request.drawing},
      {"selection", {{"count", selected.ids.size()}, {"classes", nlohmann::ordered_json::object()}}},
      {"rows", nlohmann::ordered_json::array()},
  };
  for (const auto& [name, count] : classes)
    json["selection"]["classes"][name] = count;
  for (const PROPINFO& row : rows)
    json["rows"].push_back(rowJson(row, style));
  out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace

void show(const ShowRequest& request, std::ostream& out) {
  if (request.selection.isEmpty()) {
    throw UsageFailure("which entities? Select with --all, --handle, --layer or --type");
  }
  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const SelectedEntities selected = select(*drawing, request.selection);
  const ClassCounts classes = countClasses(selected.ids);
  const NumberStyle style = numberStyleOf(*drawing);
  Palette palette(selected.ids);
  const TqVector<PROPINFO>& rows = palette.query();
  (request.json ? printAsJson : printForPeople)(request, selected, classes, rows, style, out);
}

}  // namespace velt::tool
