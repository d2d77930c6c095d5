#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "palette/Palette.h"
#include "tool/Columns.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/OpenDrawing.h"
#include "tool/RowJson.h"

namespace velt::tool {

namespace {

using ClassCounts = std::map<std::string, std::size_t>;

ClassCounts countClasses(const std::vector<VkDbObjectId>& ids) {
  ClassCounts counts;
  for (const VkDbObjectId id : ids)
    ++counts[className(id)];
  return counts;
}

std::string entities(std::size_t count) {
  return fmt::format("{} {}", count, count == 1 ? "entity" : "entities");
}

void printChoices(const palette::Row& row, std::ostream& out) {
  for (const palette::Choice& choice : row.choices()) {
    out << (choice.integer ? fmt::format("      {} = {}\n", *choice.integer, choice.label)
                           : fmt::format("      {}\n", choice.label));
  }
}

std::string marksOf(const palette::Row& row) {
  std::string marks;
  if (row.hasChoices()) marks += "  [choices]";
  if (!row.isEditable()) marks += "  (read-only)";
  return marks;
}

void printRows(const std::vector<palette::Row>& rows, const palette::NumberStyle& style, bool withChoices,
               std::ostream& out) {
  constexpr std::size_t widestAlignedValue = 40;
  std::size_t nameWidth = 0;
  std::size_t valueWidth = 0;
  for (const palette::Row& row : rows) {
    nameWidth = std::max(nameWidth, columns(row.label()));
    valueWidth = std::max(valueWidth, std::min(columns(row.text(style)), widestAlignedValue));
  }
  for (const palette::Category& category : palette::byCategory(rows)) {
    out << fmt::format("\n{}\n", category.name.empty() ? "(no category)" : category.name);
    for (const palette::Row& row : category.rows) {
      std::string line = fmt::format("  {}  {}{}", padded(row.label(), nameWidth),
                                     padded(row.text(style), valueWidth), marksOf(row));
      line.erase(line.find_last_not_of(' ') + 1);
      out << line << '\n';
      if (withChoices && row.hasChoices()) printChoices(row, out);
    }
  }
}

void printForPeople(const ShowRequest& request, const SelectedEntities& selected, const ClassCounts& classes,
                    const std::vector<palette::Row>& rows, const palette::NumberStyle& style,
                    std::ostream& out) {
  if (selected.ids.empty()) {
    out << fmt::format("{}: nothing selected\n", request.drawing);
  } else {
    std::vector<std::string> counts;
    for (const auto& [name, count] : classes)
      counts.push_back(fmt::format("{} {}", count, name));
    out << fmt::format("{}: {} selected ({})\n", request.drawing, entities(selected.ids.size()),
                       fmt::join(counts, ", "));
    if (rows.empty()) out << "\nThe selected entities have no property in common.\n";
  }
  printRows(rows, style, request.choices, out);
  if (selected.leftOutInBlocks > 0) {
    out << fmt::format("\n{} inside block definitions left out (--in-blocks includes them)\n",
                       entities(selected.leftOutInBlocks));
  }
}

void printAsJson(const ShowRequest& request, const SelectedEntities& selected, const ClassCounts& classes,
                 const std::vector<palette::Row>& rows, const palette::NumberStyle& style,
                 std::ostream& out) {
  nlohmann::ordered_json json = {
      {"drawing", request.drawing},
      {"selection", {{"count", selected.ids.size()}, {"classes", nlohmann::ordered_json::object()}}},
      {"rows", nlohmann::ordered_json::array()},
  };
  for (const auto& [name, count] : classes)
    json["selection"]["classes"][name] = count;
  for (const palette::Row& row : rows)
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
  const palette::NumberStyle style = numberStyleOf(*drawing);
  palette::Selection selection(selected.ids);
  const std::vector<palette::Row>& rows = selection.query();
  (request.json ? printAsJson : printForPeople)(request, selected, classes, rows, style, out);
}

}  // namespace velt::tool
