#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>
#include <vector>

#include "palette/Palette.h"
#include "tool/Columns.h"
#include "tool/Commands.h"
#include "tool/EntityFacts.h"
#include "tool/Failure.h"
#include "tool/JsonOutput.h"
#include "tool/NamedRows.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"
#include "tool/RowJson.h"

namespace velt::tool {

namespace {

using Json = nlohmann::ordered_json;
using Cells = std::vector<std::string>;

constexpr const char* allColumns = "all";

bool wantsAll(const TableRequest& request) {
  return request.columns.empty()
         || (request.columns.size() == 1 && palette::equalIgnoringCase(request.columns[0], allColumns));
}

// Several values of one name: the vertices of a polyline.
std::string joined(const std::vector<palette::Row>& rows, const palette::NumberStyle& style) {
  std::string text;
  for (const palette::Row& row : rows)
    text += (text.empty() ? "" : "; ") + row.text(style);
  return text;
}

Json valuesOf(const std::vector<palette::Row>& rows) {
  if (rows.empty()) return nullptr;
  if (rows.size() == 1) return valueJson(rows.front().plain());
  Json values = Json::array();
  for (const palette::Row& row : rows)
    values.push_back(valueJson(row.plain()));
  return values;
}

// Of choices, of which the values are numbers, their names; null for other rows.
Json choiceNamesOf(const std::vector<palette::Row>& rows) {
  Json names = Json::array();
  for (const palette::Row& row : rows) {
    if (!row.hasChoices() || !std::holds_alternative<std::int64_t>(row.plain())) return nullptr;
    names.push_back(row.text());
  }
  if (names.empty()) return nullptr;
  return names.size() == 1 ? names.front() : names;
}

// Of rows with one name; null where none has a unit.
Json unitsOf(const std::vector<palette::Row>& rows, const Units& units) {
  Json made = Json::array();
  for (const palette::Row& row : rows)
    made.push_back(unitJson(units.of(row)));
  const bool isSame =
      std::all_of(made.begin(), made.end(), [&](const Json& unit) { return unit == made.front(); });
  return made.empty() || !isSame ? made : made.front();
}

// --- which columns ---------------------------------------------------------------------------------------

// The names of all properties, in the order of a palette: by category, and within it as they are first met.
class AllNames {
 public:
  void add(const std::vector<palette::Row>& rows) {
    std::vector<std::string> names = namesToFind(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto [place, isNew] = known_.try_emplace(std::move(names[i]), rows[i].categoryId());
      if (isNew) order_.push_back({palette::placeOfCategory(rows[i].categoryId()), place->first});
    }
  }

  std::vector<std::string> inOrder() {
    std::stable_sort(order_.begin(), order_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> names{"@handle", "@class"};
    for (auto& [place, name] : order_)
      names.push_back(std::move(name));
    return names;
  }

 private:
  std::map<std::string, std::int32_t> known_;
  std::vector<std::pair<int, std::string>> order_;
};

// Every entity's rows in turn.
template <class Function>
void forEachEntity(palette::Selection& selection, const std::string& what, Function function) {
  Progress progress(what);
  for (std::size_t i = 0; i < selection.size(); ++i) {
    function(selection.entity(i), selection.queryAlone(i));
    progress.report(i + 1, selection.size());
  }
}

std::vector<std::string> columnsOf(const TableRequest& request, palette::Selection& selection) {
  if (!wantsAll(request)) return request.columns;
  AllNames names;
  forEachEntity(selection, "Looking for columns",
                [&](VkDbObjectId, const std::vector<palette::Row>& rows) { names.add(rows); });
  return names.inOrder();
}

// Which columns some entity has.
class FoundColumns {
 public:
  explicit FoundColumns(const std::vector<std::string>& columns)
      : columns_(columns), isFound_(columns.size(), false) {}

  void found(std::size_t column) { isFound_[column] = true; }
  void learn(const std::vector<palette::Row>& rows) {
    if (std::find(isFound_.begin(), isFound_.end(), false) == isFound_.end()) return;
    for (const palette::Row& row : rows)
      labels_.insert(row.label());
  }
  void requireAll() const {
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      if (isFound_[column]) continue;
      const std::vector<std::string> labels(labels_.begin(), labels_.end());
      throw Failure(fmt::format("no selected entity has a property {}{}", columns_[column],
                                didYouMeanOf(columns_[column], labels)));
    }
  }

 private:
  const std::vector<std::string>& columns_;
  std::vector<bool> isFound_;
  std::set<std::string> labels_;
};

// --- the cells -------------------------------------------------------------------------------------------

std::vector<Cells> readCells(const std::vector<std::string>& columns, palette::Selection& selection,
                             const palette::NumberStyle& style) {
  std::vector<Cells> table;
  table.reserve(selection.size());
  FoundColumns foundColumns(columns);
  forEachEntity(selection, "Reading", [&](VkDbObjectId entity, const std::vector<palette::Row>& rows) {
    Cells& cells = table.emplace_back();
    for (std::size_t column = 0; column < columns.size(); ++column) {
      if (isFactName(columns[column])) {
        foundColumns.found(column);
        cells.push_back(factOf(entity, columns[column]));
        continue;
      }
      const std::vector<palette::Row> meant = rowsMeant(rows, columns[column]);
      if (!meant.empty()) foundColumns.found(column);
      cells.push_back(joined(meant, style));
    }
    foundColumns.learn(rows);
  });
  if (!table.empty()) foundColumns.requireAll();
  return table;
}

// What a line of JSON tells of an entity.
struct Told {
  Json values = Json::object();
  Json names = Json::object();
  Json unitNames = Json::object();

  void add(const std::string& name, const std::vector<palette::Row>& rows, const Units& units) {
    if (Json of = unitsOf(rows, units); !of.empty()) unitNames[name] = std::move(of);
    values[name] = valuesOf(rows);
    if (Json of = choiceNamesOf(rows); !of.is_null()) names[name] = std::move(of);
  }
};

Told allOf(const std::vector<palette::Row>& rows, const Units& units) {
  const std::vector<std::string> names = namesToFind(rows);
  std::vector<std::string> order;
  std::map<std::string, std::vector<palette::Row>> byName;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::vector<palette::Row>& ofName = byName[names[i]];
    if (ofName.empty()) order.push_back(names[i]);
    ofName.push_back(rows[i]);
  }
  Told told;
  for (const std::string& name : order)
    told.add(name, byName[name], units);
  return told;
}

Json lineOf(const TableRequest& request, VkDbObjectId entity, Told told) {
  Json line = Json::object();
  if (request.isOneOfSeveral) line["drawing"] = request.drawing;
  line["handle"] = handleText(entity);
  line["class"] = className(entity);
  line["values"] = std::move(told.values);
  if (!told.names.empty()) line["names"] = std::move(told.names);
  if (!told.unitNames.empty()) line["units"] = std::move(told.unitNames);
  return line;
}

std::string written(const Json& line) {
  return jsonText(line, -1) + '\n';
}

void printAllAsJson(const TableRequest& request, palette::Selection& selection, const Units& units,
                    std::ostream& out) {
  forEachEntity(selection, "Reading", [&](VkDbObjectId entity, const std::vector<palette::Row>& rows) {
    out << written(lineOf(request, entity, allOf(rows, units)));
  });
}

// All lines are made before the first is printed, so that an unknown column prints none.
void printAsJson(const TableRequest& request, palette::Selection& selection, const Units& units,
                 std::ostream& out) {
  const std::vector<std::string>& columns = request.columns;
  std::string lines;
  FoundColumns foundColumns(columns);
  forEachEntity(selection, "Reading", [&](VkDbObjectId entity, const std::vector<palette::Row>& rows) {
    Told told;
    for (std::size_t column = 0; column < columns.size(); ++column) {
      const std::string& name = columns[column];
      const bool isFact = isFactName(name);
      const std::vector<palette::Row> meant = isFact ? std::vector<palette::Row>() : rowsMeant(rows, name);
      if (isFact || !meant.empty()) foundColumns.found(column);
      if (isFact)
        told.values[name] = factOf(entity, name);
      else
        told.add(name, meant, units);
    }
    foundColumns.learn(rows);
    lines += written(lineOf(request, entity, std::move(told)));
  });
  if (selection.size() > 0) foundColumns.requireAll();
  out << lines;
}

// --- output ----------------------------------------------------------------------------------------------

std::string csvCell(const std::string& text) {
  const bool needsQuotes =
      text.find_first_of(",\"\n\r") != std::string::npos || text.starts_with(' ') || text.ends_with(' ');
  if (!needsQuotes) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

void printSeparated(const Cells& cells, TableFormat format, std::ostream& out) {
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (column > 0) out << (format == TableFormat::csv ? ',' : '\t');
    // A value is one line without tabs already: see palette::oneLine.
    out << (format == TableFormat::csv ? csvCell(cells[column]) : cells[column]);
  }
  out << '\n';
}

void printForPeople(const Cells& headings, const std::vector<Cells>& table, const Terminal& terminal,
                    std::ostream& out) {
  std::vector<std::size_t> widths;
  for (const std::string& heading : headings)
    widths.push_back(columns(heading));
  for (const Cells& cells : table) {
    for (std::size_t column = 0; column < cells.size(); ++column)
      widths[column] = std::max(widths[column], columns(cells[column]));
  }
  const auto lineOf = [&](const Cells& cells) {
    std::string line;
    for (std::size_t column = 0; column < cells.size(); ++column)
      line += (column > 0 ? "  " : "") + padded(cells[column], widths[column]);
    line.erase(line.find_last_not_of(' ') + 1);
    return terminal.fitted(line);
  };
  out << terminal.bold(lineOf(headings)) << '\n';
  for (const Cells& cells : table)
    out << lineOf(cells) << '\n';
}

}  // namespace

void table(const TableRequest& request, std::ostream& out) {
  if (request.selection.isEmpty()) throw UsageFailure(noSelectionText);
  // Each drawing has properties of its own, and lines that follow each other need the same columns.
  const bool isSeparated = request.format == TableFormat::csv || request.format == TableFormat::tsv;
  if (isSeparated && request.isOneOfSeveral && wantsAll(request))
    throw UsageFailure(
        "which columns? Name them with --columns: those of one drawing are not those of another");
  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const SelectedEntities selected = select(*drawing, request.selection);
  palette::Selection selection(selected.ids);
  if (request.format == TableFormat::json) {
    if (wantsAll(request))
      printAllAsJson(request, selection, Units(*drawing), out);
    else
      printAsJson(request, selection, Units(*drawing), out);
    return;
  }
  Cells headings = columnsOf(request, selection);
  std::vector<Cells> cells = readCells(headings, selection, numberStyleOf(*drawing, request.precise));
  if (request.format == TableFormat::text) {
    if (request.isOneOfSeveral) out << request.terminal.bold(request.drawing) << '\n';
    printForPeople(headings, cells, request.terminal, out);
    if (selected.leftOutInBlocks > 0) out << '\n' << leftOutText(selected);
    return;
  }
  if (request.isOneOfSeveral) {
    headings.insert(headings.begin(), "Drawing");
    for (Cells& line : cells)
      line.insert(line.begin(), palette::oneLine(palette::fromUtf8(request.drawing)));
  }
  if (request.hasHeadings) printSeparated(headings, request.format, out);
  for (const Cells& line : cells)
    printSeparated(line, request.format, out);
}

}  // namespace velt::tool
