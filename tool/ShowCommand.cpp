#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "palette/Palette.h"
#include "tool/Columns.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/JsonOutput.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"
#include "tool/ReadOnlyRows.h"
#include "tool/RowJson.h"
#include "tool/ValueGroups.h"

namespace velt::tool {

namespace {

// What stands behind each row that varies.
using ValuesOfRows = std::map<const PROPINFO*, std::vector<SelectableValue>>;

struct Shown {
  const ShowRequest& request;
  const SelectedEntities& selected;
  const palette::Selection& selection;
  // Empty unless they were asked for.
  ValuesOfRows values{};
  std::map<std::string, std::size_t> classes{};
  // Entities on locked layers, which no write changes.
  std::size_t locked = 0;
  palette::NumberStyle style{};
  Units units;
};

void countEntities(Shown& shown) {
  for (const VkDbObjectId id : shown.selected.ids) {
    ++shown.classes[className(id)];
    if (palette::isOnLockedLayer(id)) ++shown.locked;
  }
}

// Before anything is printed, because it takes long for a large selection and shows its progress.
void readValues(Shown& shown) {
  if (!shown.request.values) return;
  const ReadingProgress progress;
  const std::vector<palette::Row>& rows = shown.selection.rows();
  for (const palette::Row& row : rows) {
    if (row.isVarying())
      shown.values.emplace(&row.record(), valuesBehind(shown.selection, row, rows, shown.style));
  }
}

// --- for people ------------------------------------------------------------------------------------------

void printChoices(const palette::Row& row, const Terminal& terminal, std::ostream& out) {
  for (const palette::Choice& choice : row.choices())
    out << terminal.fitted("      " + choice.label) << '\n';
}

void printValues(const Shown& shown, const std::vector<SelectableValue>& values, std::ostream& out) {
  constexpr std::size_t mostValues = 20;
  const std::size_t count = std::min(values.size(), mostValues);
  std::size_t countWidth = 0;
  std::size_t textWidth = 0;
  for (std::size_t i = 0; i < count; ++i) {
    countWidth = std::max(countWidth, fmt::formatted_size("{}", values[i].group.entities.size()));
    textWidth = std::max(textWidth, columns(values[i].group.text));
  }
  for (std::size_t i = 0; i < count; ++i) {
    out << shown.request.terminal.fitted(
        fmt::format("      {:>{}} of them  {}  {}", values[i].group.entities.size(), countWidth,
                    padded(values[i].group.text, textWidth), values[i].option))
        << '\n';
  }
  if (values.size() > count)
    out << fmt::format("      and {} other values (--json has them all)\n", values.size() - count);
}

// Reasons that rows share, each told once below the rows.
class Notes {
 public:
  // What stands beside the row.
  std::string reference(const std::string& reason) {
    const auto known = std::find(reasons_.begin(), reasons_.end(), reason);
    const auto number = known - reasons_.begin() + 1;
    if (known == reasons_.end()) reasons_.push_back(reason);
    return fmt::format("note {}", number);
  }
  void print(std::ostream& out) const {
    for (std::size_t i = 0; i < reasons_.size(); ++i)
      out << fmt::format("{}Note {}: {}\n", i == 0 ? "\n" : "", i + 1, reasons_[i]);
  }

 private:
  std::vector<std::string> reasons_;
};

// Why it cannot be edited where that lies in the entities; what no entity of the class lets be edited needs no words.
std::string readOnlyMark(const Shown& shown, const palette::Row& row, Notes& notes) {
  if (row.isEditable()) {
    const Refusals refusals = refusalsOf(shown.selection, row);
    if (refusals.entities.empty()) return {};
    return fmt::format("  (refused by {} of {}: {})", refusals.entities.size(), shown.selection.size(),
                       notes.reference(refusals.reason));
  }
  const std::string reason =
      row.editability() == palette::Editability::notNow ? readOnlyReason(row) : std::string();
  return reason.empty() ? "  (read-only)" : fmt::format("  (read-only: {})", notes.reference(reason));
}

// The names of the rows as the command line takes them: those that several rows have are numbered.
std::map<const PROPINFO*, std::string> namesOf(const std::vector<palette::Row>& rows) {
  std::map<std::string, std::size_t> counts, numbers;
  for (const palette::Row& row : rows)
    ++counts[row.label()];
  std::map<const PROPINFO*, std::string> names;
  for (const palette::Row& row : rows) {
    const std::string label = row.label();
    names[&row.record()] = counts[label] > 1 ? fmt::format("{}#{}", label, ++numbers[label]) : label;
  }
  return names;
}

// Of a value that all entities lack, the first one tells for all.
std::string reasonForNoValue(const Shown& shown, const palette::Row& row) {
  const bool hasValue = row.isVarying() || !std::holds_alternative<std::monostate>(row.plain());
  return hasValue ? std::string() : shown.selection.whyNoValue(row, 0);
}

void printRow(const Shown& shown, const palette::Row& row, const std::string& name, std::size_t nameWidth,
              std::size_t valueWidth, Notes& notes, std::ostream& out) {
  const Terminal& terminal = shown.request.terminal;
  std::string text = row.text(shown.style);
  if (const std::string reason = reasonForNoValue(shown, row); !reason.empty()) {
    text = fmt::format("(no value: {})", notes.reference(reason));
  }
  const std::string pair = fmt::format("  {}  {}", padded(name, nameWidth), padded(text, valueWidth));
  const std::string marks = (row.hasChoices() ? "  [choices]" : "") + readOnlyMark(shown, row, notes);
  std::string line = terminal.fitted(pair + marks);
  line.erase(line.find_last_not_of(' ') + 1);
  if (line.size() > pair.size() && line.starts_with(pair))
    line = pair + terminal.faint(std::string_view(line).substr(pair.size()));
  out << line << '\n';
  if (shown.request.choices && row.hasChoices()) printChoices(row, terminal, out);
  if (const auto values = shown.values.find(&row.record()); values != shown.values.end())
    printValues(shown, values->second, out);
}

void printRows(const Shown& shown, std::ostream& out) {
  constexpr std::size_t widestAlignedValue = 40;
  const std::vector<palette::Row>& rows = shown.selection.rows();
  const std::map<const PROPINFO*, std::string> names = namesOf(rows);
  std::size_t nameWidth = 0;
  std::size_t valueWidth = 0;
  for (const palette::Row& row : rows) {
    nameWidth = std::max(nameWidth, columns(names.at(&row.record())));
    valueWidth = std::max(valueWidth, std::min(columns(row.text(shown.style)), widestAlignedValue));
  }
  Notes notes;
  for (const palette::Category& category : palette::byCategory(rows)) {
    out << '\n'
        << shown.request.terminal.bold(category.name.empty() ? "(no category)" : category.name) << '\n';
    for (const palette::Row& row : category.rows)
      printRow(shown, row, names.at(&row.record()), nameWidth, valueWidth, notes, out);
  }
  notes.print(out);
}

void printHeading(const Shown& shown, std::ostream& out) {
  if (shown.selected.ids.empty()) {
    out << fmt::format("{}: nothing selected\n", shown.request.drawing);
    return;
  }
  std::vector<std::string> counts;
  for (const auto& [name, count] : shown.classes)
    counts.push_back(fmt::format("{} {}", count, name));
  out << fmt::format("{}: {} selected ({})\n", shown.request.drawing, entitiesText(shown.selected.ids.size()),
                     fmt::join(counts, ", "));
  if (shown.locked > 0) {
    out << fmt::format("On locked layers, which are not written to: {}\n", entitiesText(shown.locked));
  }
  out << remarkOnHandles(shown.selected);
  if (shown.selection.rows().empty()) out << "\nThe selected entities have no property in common.\n";
}

void printForPeople(const Shown& shown, std::ostream& out) {
  printHeading(shown, out);
  printRows(shown, out);
  if (shown.selected.leftOutInBlocks > 0) out << '\n' << leftOutText(shown.selected);
}

// --- for programs ----------------------------------------------------------------------------------------

nlohmann::ordered_json valuesJson(const Shown& shown, const std::vector<SelectableValue>& values) {
  auto list = nlohmann::ordered_json::array();
  for (const SelectableValue& value : values) {
    auto handles = nlohmann::ordered_json::array();
    for (const std::size_t entity : value.group.entities)
      handles.push_back(handleText(shown.selection.entity(entity)));
    list.push_back({{"value", valueJson(value.group.value)},
                    {"text", value.group.text},
                    {"count", value.group.entities.size()},
                    {"handles", std::move(handles)},
                    {"select", value.option}});
  }
  return list;
}

void printAsJson(const Shown& shown, std::ostream& out) {
  nlohmann::ordered_json json = {
      {"drawing", shown.request.drawing},
      {"selection", {{"count", shown.selected.ids.size()}, {"classes", nlohmann::ordered_json::object()}}},
      {"rows", nlohmann::ordered_json::array()},
  };
  for (const auto& [name, count] : shown.classes)
    json["selection"]["classes"][name] = count;
  // What most selections have none of stands there only when there is some.
  if (shown.locked > 0) json["selection"]["locked"] = shown.locked;
  if (shown.selected.leftOutInBlocks > 0)
    json["selection"]["leftOutInBlocks"] = shown.selected.leftOutInBlocks;
  if (const std::vector<std::string> handles = sharedHandleTexts(shown.selected); !handles.empty())
    json["selection"]["sharedHandles"] = handles;
  const RowFields fields = shown.request.debug ? RowFields::all : RowFields::known;
  for (const palette::Row& row : shown.selection.rows()) {
    nlohmann::ordered_json& made = json["rows"].emplace_back(rowJson(row, shown.style, shown.units, fields));
    if (const std::string reason = reasonForNoValue(shown, row); !reason.empty())
      made["noValueReason"] = reason;
    if (const std::string reason = readOnlyReason(row);
        row.editability() == palette::Editability::notNow && !reason.empty())
      made["readOnlyReason"] = reason;
    if (const Refusals refusals = refusalsOf(shown.selection, row); !refusals.entities.empty())
      made["refused"] = {{"count", refusals.entities.size()}, {"reason", refusals.reason}};
    if (const auto values = shown.values.find(&row.record()); values != shown.values.end())
      made["values"] = valuesJson(shown, values->second);
  }
  printJson(json, out);
}

}  // namespace

void show(const ShowRequest& request, std::ostream& out) {
  if (request.selection.isEmpty()) throw UsageFailure(noSelectionText);
  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const SelectedEntities selected = select(*drawing, request.selection);
  palette::Selection selection = queried(selected.ids);
  Shown shown{.request = request,
              .selected = selected,
              .selection = selection,
              .style = numberStyleOf(*drawing, request.precise),
              .units = Units(*drawing)};
  countEntities(shown);
  readValues(shown);
  if (request.json)
    printAsJson(shown, out);
  else
    printForPeople(shown, out);
}

}  // namespace velt::tool
