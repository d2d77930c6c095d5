#include <fmt/format.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "palette/Palette.h"
#include "tool/Commands.h"
#include "tool/EntitySelection.h"
#include "tool/Explanation.h"
#include "tool/Failure.h"
#include "tool/JsonOutput.h"
#include "tool/NamedRows.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"
#include "tool/RowJson.h"

namespace velt::tool {

namespace {

using Json = nlohmann::ordered_json;

// Each entity may be asked by itself.
Explanation explanationOf(palette::Selection& selection, const std::string& name,
                          const palette::NumberStyle& style) {
  const ReadingProgress progress;
  try {
    selection.query();
  } catch (const palette::Error&) {
    // The entity that stands in the way is found below.
  }
  const std::vector<palette::Row> rows = rowsMeant(selection.rows(), name);
  return rows.empty() ? explainAbsence(selection, name) : explainRow(selection, rows.front(), style);
}

// --- output ----------------------------------------------------------------------------------------------

void printForPeople(const ExplainRequest& request, const palette::Selection& selection,
                    const Explanation& explanation, std::ostream& out) {
  out << fmt::format("{} of {} in {}\n", request.name, entitiesText(selection.size()), request.drawing);
  for (const std::string& sentence : explanation.said)
    out << "  " << sentence << '\n';
  constexpr std::size_t mostValues = 20;
  for (std::size_t i = 0; i < explanation.values.size() && i < mostValues; ++i) {
    const SelectableValue& value = explanation.values[i];
    out << request.terminal.fitted(
        fmt::format("    {} of them  {}  {}", value.group.entities.size(), value.group.text, value.option))
        << '\n';
  }
  if (explanation.values.size() > mostValues)
    out << fmt::format("    and {} other values\n", explanation.values.size() - mostValues);
  for (const Advice& advice : explanation.advice)
    out << "  To do: " << advice.step << advice.onCommandLine << '\n';
}

void printAsJson(const ExplainRequest& request, const palette::Selection& selection,
                 const Explanation& explanation, std::ostream& out) {
  const auto handlesOf = [&](const std::vector<std::size_t>& entities) {
    Json handles = Json::array();
    for (const std::size_t entity : entities)
      handles.push_back(handleText(selection.entity(entity)));
    return handles;
  };
  Json json = {{"drawing", request.drawing},
               {"name", request.name},
               {"count", selection.size()},
               {"cause", explanation.cause},
               {"said", explanation.said},
               {"advice", Json::array()},
               {"entities", handlesOf(explanation.entities)},
               {"differsIn", explanation.parts},
               {"values", Json::array()}};
  for (const Advice& advice : explanation.advice)
    json["advice"].push_back(advice.step + advice.onCommandLine);
  for (const SelectableValue& value : explanation.values) {
    json["values"].push_back({{"value", valueJson(value.group.value)},
                              {"text", value.group.text},
                              {"count", value.group.entities.size()},
                              {"handles", handlesOf(value.group.entities)},
                              {"select", value.option}});
  }
  printJson(json, out);
}

}  // namespace

void explain(const ExplainRequest& request, std::ostream& out) {
  if (request.selection.isEmpty()) throw UsageFailure(noSelectionText);
  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  palette::Selection selection(select(*drawing, request.selection).ids);
  if (selection.size() == 0) throw Failure(fmt::format("{}: nothing selected", request.drawing));
  const Explanation explanation = explanationOf(selection, request.name, numberStyleOf(*drawing));
  if (request.json)
    printAsJson(request, selection, explanation, out);
  else
    printForPeople(request, selection, explanation, out);
}

}  // namespace velt::tool
