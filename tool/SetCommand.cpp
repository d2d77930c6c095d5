#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"
#include "tool/Applied.h"
#include "tool/Assignment.h"
#include "tool/Commands.h"
#include "tool/EntitySelection.h"
#include "tool/Explanation.h"
#include "tool/Failure.h"
#include "tool/FromFile.h"
#include "tool/JsonOutput.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"
#include "tool/RowChange.h"
#include "tool/ValuesFile.h"

namespace velt::tool {

namespace {

using palette::Fate;

// The names of the fates in JSON.
constexpr std::pair<Fate, const char*> fates[] = {
    {Fate::changed, "changed"}, {Fate::unchanged, "unchanged"}, {Fate::locked, "locked"},
    {Fate::skipped, "skipped"}, {Fate::refused, "refused"},     {Fate::notReached, "notReached"},
};

struct Report {
  std::vector<Applied> assignments;
  std::size_t entities = 0;
  // Of a file: values that were there already.
  std::size_t same = 0;

  bool has(Fate fate) const {
    return std::any_of(assignments.begin(), assignments.end(),
                       [&](const Applied& applied) { return applied.outcome.count(fate) > 0; });
  }
  bool hasNewsForTheDrawing() const {
    return std::any_of(assignments.begin(), assignments.end(), [](const Applied& applied) {
      return !applied.isKeptOutside && applied.outcome.count(Fate::changed) > 0;
    });
  }
  // Empty when nothing was saved.
  std::string savedTo;
  // What became of the file.
  std::string remark;
  ExitCode code = succeeded;
};

// The outcomes of the command, for programs that do not look at its exit code.
const char* outcomeName(ExitCode code) {
  switch (code) {
    case succeeded:
      return "done";
    case nothingToDo:
      return "nothingToDo";
    case partlyDone:
      return "partlyDone";
    default:
      return "refused";
  }
}

// --- the report ------------------------------------------------------------------------------------------

// Prints each reason once, with the handles of the first entities that gave it.
void printReasons(const palette::Report& outcome, const std::vector<VkDbObjectId>& ids, std::ostream& out) {
  constexpr std::size_t mostHandles = 8;
  std::map<std::string, std::vector<std::string>> handles;
  for (const auto& [index, reason] : outcome.reasons)
    handles[reason].push_back(handleText(ids[index]));
  for (const auto& [reason, of] : handles) {
    std::string named;
    for (std::size_t i = 0; i < of.size() && i < mostHandles; ++i)
      named += (i > 0 ? ", " : "") + of[i];
    if (of.size() > mostHandles) named += fmt::format(" and {} more", of.size() - mostHandles);
    out << fmt::format("    {}: {}\n", named, reason);
  }
}

void printOutcome(const palette::Report& outcome, const std::vector<VkDbObjectId>& ids, std::ostream& out) {
  const auto line = [&](Fate fate, const char* words) {
    if (const std::size_t count = outcome.count(fate); count > 0)
      out << fmt::format("  {:>6} {}\n", count, words);
  };
  line(Fate::changed, "changed");
  line(Fate::unchanged, "unchanged: already had the value");
  if (outcome.rounded > 0)
    out << fmt::format("    {} of them only as it is shown, with fewer digits (--precise writes it)\n",
                       outcome.rounded);
  line(Fate::locked, "left as they are: on a locked layer");
  line(Fate::skipped, "left as they are: cannot be opened");
  line(Fate::refused, "refused");
  printReasons(outcome, ids, out);
  line(Fate::notReached, "not reached after the refusal");
}

// Of the values of a file how many met which fate, and every refusal.
void printFile(const SetRequest& request, const Report& report, std::ostream& out) {
  out << fmt::format("{}: {} in {}\n\n", request.drawing, entitiesText(report.entities), request.from);
  const auto line = [&](Fate fate, const char* words) {
    std::size_t count = fate == Fate::unchanged ? report.same : 0;
    for (const Applied& applied : report.assignments)
      count += applied.outcome.count(fate);
    if (count > 0) out << fmt::format("  {:>6} {} {}\n", count, count == 1 ? "value" : "values", words);
  };
  line(Fate::changed, "changed");
  line(Fate::unchanged, "unchanged: already there");
  line(Fate::locked, "left as they are: on a locked layer");
  line(Fate::skipped, "left as they are: cannot be opened");
  line(Fate::refused, "refused");
  for (const Applied& applied : report.assignments) {
    for (const auto& [index, reason] : applied.outcome.reasons)
      out << fmt::format("    {} {}: {}\n", handleText(applied.entities[index]), applied.assignment.text,
                         reason);
  }
}

void printForPeople(const SetRequest& request, const Report& report, const SelectedEntities& selected,
                    std::ostream& out) {
  if (!request.from.empty()) {
    printFile(request, report, out);
    out << fmt::format("\n{}\n", report.remark);
    return;
  }
  out << fmt::format("{}: {} selected\n", request.drawing, entitiesText(selected.ids.size()));
  for (const Applied& applied : report.assignments) {
    out << fmt::format("\n{}\n", applied.assignment.text);
    printOutcome(applied.outcome, applied.entities, out);
    if (applied.isKeptOutside) out << "    The plug-in keeps the value outside of the drawing.\n";
  }
  out << remarkOnHandles(selected) << fmt::format("\n{}\n", report.remark);
}

nlohmann::ordered_json outcomeJson(const Applied& applied) {
  const auto& [assignment, ids, outcome, isKeptOutside] = applied;
  nlohmann::ordered_json json = {{"name", assignment.name}, {"value", assignment.value}};
  for (const auto& [fate, name] : fates) {
    auto handles = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < ids.size(); ++i) {
      if (outcome.fates[i] != fate) continue;
      if (fate == Fate::refused) {
        handles.push_back({{"handle", handleText(ids[i])}, {"reason", outcome.reasons.at(i)}});
      } else {
        handles.push_back(handleText(ids[i]));
      }
    }
    json[name] = std::move(handles);
  }
  json["message"] = outcome.message;
  if (isKeptOutside) json["keptOutside"] = true;
  if (outcome.rounded > 0) json["rounded"] = outcome.rounded;
  return json;
}

void printAsJson(const SetRequest& request, const Report& report, const SelectedEntities& selected,
                 std::ostream& out) {
  nlohmann::ordered_json json = {{"drawing", request.drawing},
                                 {"selection", {{"count", report.entities}}},
                                 {"assignments", nlohmann::ordered_json::array()},
                                 {"outcome", outcomeName(report.code)},
                                 {"saved", nullptr}};
  if (!selected.sharedHandles.empty()) json["selection"]["sharedHandles"] = sharedHandleTexts(selected);
  for (const Applied& applied : report.assignments)
    json["assignments"].push_back(outcomeJson(applied));
  if (!report.savedTo.empty()) json["saved"] = report.savedTo;
  printJson(json, out);
}

// --- the work --------------------------------------------------------------------------------------------

void checkRequest(const SetRequest& request) {
  if (request.from.empty() == request.assignments.empty()) {
    throw UsageFailure(request.from.empty() ? "write what? Say NAME=VALUE, or name a file with --from"
                                            : "NAME=VALUE and --from exclude each other");
  }
  if (request.from.empty() && request.selection.isEmpty()) throw UsageFailure(noSelectionText);
  if (request.output.empty() && !request.inPlace && !request.dryRun)
    throw UsageFailure("save where? Name a file with -o, or say --in-place or --dry-run");
  if (request.inPlace && request.drawing == standardStream)
    throw UsageFailure("standard input cannot be saved to: name a file with -o, or -o - for standard output");
  std::error_code unknown;
  if (request.output.empty() || request.output == standardStream || request.force
      || !std::filesystem::exists(request.output, unknown))
    return;
  if (std::filesystem::equivalent(request.output, request.drawing, unknown))
    throw Failure(fmt::format("{}: is the drawing itself (--in-place saves to it)", request.output));
  throw Failure(fmt::format("{}: exists already (--force replaces it)", request.output));
}

// Asks one entity of each class, because asking all of a large selection takes long, and most names that are not found are
// misspelt.
bool isOfSomeClass(const std::string& name, const palette::Selection& selection) {
  std::set<std::string> asked;
  for (std::size_t i = 0; i < selection.size(); ++i) {
    const VkDbObjectId id = selection.entity(i);
    if (!asked.insert(className(id)).second) continue;
    palette::Selection alone(std::span(&id, 1));
    if (!palette::rowsNamed(alone.query(), name).empty()) return true;
  }
  return false;
}

// When some of the entities have the property, says which lack it: names that are like it would lead astray.
void requireCommon(const std::string& name, const palette::Selection& selection) {
  if (!palette::rowsNamed(selection.rows(), name).empty() || !isOfSomeClass(name, selection)) return;
  const ReadingProgress progress;
  const Explanation explanation = explainAbsence(selection, name);
  if (explanation.cause == unknownCause) return;
  std::string text = fmt::format("the selected entities have no property {} in common:", name);
  for (const std::string& sentence : explanation.said)
    text += " " + sentence;
  for (const Advice& advice : explanation.advice)
    text += " To do: " + advice.step + advice.onCommandLine + ".";
  throw Failure(text);
}

// Queries anew for each assignment, because the one before may have changed which rows there are and what they accept.
palette::Report apply(const Assignment& assignment, const std::vector<VkDbObjectId>& ids, bool keepGoing,
                      const palette::NumberStyle& style) {
  palette::Selection selection = queried(ids);
  requireCommon(assignment.name, selection);
  const palette::Row row = rowFor(assignment, selection.rows());
  Progress progress("Writing " + assignment.name);
  const auto show = [&](std::size_t done, std::size_t total) {
    progress.report(done, total);
    return true;
  };
  try {
    const palette::WriteOptions options{.keepGoing = keepGoing, .progress = show, .style = style};
    return write(selection, row, {assignment.value, assignment.relation}, options);
  } catch (const palette::Error& error) {
    throw Failure(fmt::format("{}: {}", assignment.name, error.what()));
  }
}

void save(const SetRequest& request, database::Drawing& drawing, const std::string& target,
          std::ostream& err) {
  if (!request.inPlace && target == standardStream) {
    drawing.document().write(*request.standardOutput);
    if (!request.standardOutput->flush()) throw Failure("the output could not be written");
    return;
  }
  const bool onlyNew = !request.inPlace && !request.force;
  Progress progress("Saving " + target);
  try {
    drawing.save(target, {.overwriteChanges = request.overwriteChanges,
                          .onlyNew = onlyNew,
                          .tell = [&](std::string_view loss) { err << "veltprops: " << loss << '\n'; },
                          .progress = [&](auto done, auto total) { progress.report(done, total); }});
  } catch (const dxf::FileChanged& changed) {
    throw Failure(
        fmt::format("{}, so nothing was saved (run it again to change the file as it is now, or save over "
                    "the other change with --overwrite-changes)",
                    changed.what()));
  }
}

ExitCode codeOf(const SetRequest& request, const Report& report) {
  const bool isRefused = report.has(Fate::refused);
  if (isRefused && !(request.keepGoing && report.has(Fate::changed))) return failed;
  if (!report.has(Fate::changed)) return nothingToDo;
  return isRefused || report.has(Fate::skipped) ? partlyDone : succeeded;
}

void saveUnlessForbidden(const SetRequest& request, database::Drawing& drawing, Report& report,
                         std::ostream& err) {
  const std::string target = request.inPlace ? request.drawing : request.output;
  // Whoever reads from a pipe needs the drawing, whether it has changed or not.
  const bool isPassedOn = !request.inPlace && target == standardStream;
  if (report.has(Fate::refused) && !request.keepGoing) {
    report.remark = "A value was refused, so nothing was saved (--keep-going saves the rest)";
  } else if (!report.has(Fate::changed) && !isPassedOn) {
    report.remark = "No entity changed, so nothing was saved";
  } else if (request.dryRun) {
    report.remark = "Nothing was saved: --dry-run";
  } else if (!report.hasNewsForTheDrawing() && !isPassedOn) {
    report.remark = "Nothing changed in the drawing, so nothing was saved";
  } else {
    save(request, drawing, target, err);
    report.savedTo = target;
    report.remark = fmt::format("{}: saved", target);
  }
}

std::unique_ptr<database::Drawing> openForSetting(const SetRequest& request) {
  std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  drawing->setBreaksAssociations(request.breakAssociations);
  return drawing;
}

std::vector<Assignment> parsed(const std::vector<std::string>& texts) {
  std::vector<Assignment> assignments;
  for (const std::string& text : texts)
    assignments.push_back(parseAssignment(text));
  return assignments;
}

// One after the other, each on what the one before has left.
SelectedEntities applyAssignments(const SetRequest& request, const std::vector<Assignment>& assignments,
                                  database::Drawing& drawing, Report& report) {
  SelectedEntities selected = select(drawing, request.selection);
  const std::vector<VkDbObjectId>& ids = selected.ids;
  if (ids.empty()) throw Failure(fmt::format("{}: nothing selected", request.drawing));
  report.entities = ids.size();
  const palette::NumberStyle style = numberStyleOf(drawing, request.precise);
  for (const Assignment& assignment : assignments) {
    const std::uint64_t revision = drawing.revision();
    palette::Report outcome = apply(assignment, ids, request.keepGoing, style);
    const bool isRefused = outcome.count(Fate::refused) > 0;
    const bool isKeptOutside = outcome.count(Fate::changed) > 0 && drawing.revision() == revision;
    report.assignments.push_back({assignment, ids, std::move(outcome), isKeptOutside});
    if (isRefused && !request.keepGoing) break;
  }
  return selected;
}

void applyFromFile(const SetRequest& request, const ValuesFile& file, database::Drawing& drawing,
                   Report& report) {
  FileOutcome outcome = applyFile(file, request.from, drawing, request.selection, request.keepGoing);
  report.assignments = std::move(outcome.applied);
  report.entities = outcome.entities;
  report.same = outcome.same;
}

}  // namespace

ExitCode set(const SetRequest& request, std::ostream& out, std::ostream& err) {
  checkRequest(request);
  Report report;
  SelectedEntities selected;
  std::unique_ptr<database::Drawing> drawing;
  if (request.from.empty()) {
    const std::vector<Assignment> assignments = parsed(request.assignments);
    drawing = openForSetting(request);
    selected = applyAssignments(request, assignments, *drawing, report);
  } else {
    const ValuesFile file = readValuesFile(request.from);
    drawing = openForSetting(request);
    applyFromFile(request, file, *drawing, report);
  }
  report.code = codeOf(request, report);
  saveUnlessForbidden(request, *drawing, report, err);
  if (request.json)
    printAsJson(request, report, selected, out);
  else
    printForPeople(request, report, selected, out);
  return report.code;
}

}  // namespace velt::tool
