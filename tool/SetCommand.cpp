#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"
#include "tool/Assignment.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/JsonOutput.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"

namespace velt::tool {

namespace {

using palette::Fate;

// The names of the fates in JSON.
constexpr std::pair<Fate, const char*> fates[] = {
    {Fate::changed, "changed"}, {Fate::unchanged, "unchanged"}, {Fate::locked, "locked"},
    {Fate::skipped, "skipped"}, {Fate::refused, "refused"},     {Fate::notReached, "notReached"},
};

struct Applied {
  Assignment assignment;
  palette::Report outcome;
  // A plug-in has taken the value and keeps it somewhere else than in the drawing.
  bool isKeptOutside = false;
};

struct Report {
  std::vector<Applied> assignments;

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
  line(Fate::locked, "left as they are: on a locked layer");
  line(Fate::skipped, "left as they are: cannot be opened");
  line(Fate::refused, "refused");
  printReasons(outcome, ids, out);
  line(Fate::notReached, "not reached after the refusal");
}

void printForPeople(const SetRequest& request, const Report& report, const SelectedEntities& selected,
                    std::ostream& out) {
  const std::vector<VkDbObjectId>& ids = selected.ids;
  out << fmt::format("{}: {} selected\n", request.drawing, entitiesText(ids.size()));
  for (const Applied& applied : report.assignments) {
    out << fmt::format("\n{}\n", applied.assignment.text);
    printOutcome(applied.outcome, ids, out);
    if (applied.isKeptOutside) out << "    The plug-in keeps the value outside of the drawing.\n";
  }
  out << remarkOnHandles(selected) << fmt::format("\n{}\n", report.remark);
}

nlohmann::ordered_json outcomeJson(const Applied& applied, const std::vector<VkDbObjectId>& ids) {
  const auto& [assignment, outcome, isKeptOutside] = applied;
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
  return json;
}

void printAsJson(const SetRequest& request, const Report& report, const SelectedEntities& selected,
                 std::ostream& out) {
  const std::vector<VkDbObjectId>& ids = selected.ids;
  nlohmann::ordered_json json = {{"drawing", request.drawing},
                                 {"selection", {{"count", ids.size()}}},
                                 {"assignments", nlohmann::ordered_json::array()},
                                 {"outcome", outcomeName(report.code)},
                                 {"saved", nullptr}};
  if (!selected.sharedHandles.empty()) json["selection"]["sharedHandles"] = sharedHandleTexts(selected);
  for (const Applied& applied : report.assignments)
    json["assignments"].push_back(outcomeJson(applied, ids));
  if (!report.savedTo.empty()) json["saved"] = report.savedTo;
  printJson(json, out);
}

// --- the work --------------------------------------------------------------------------------------------

void checkOutput(const SetRequest& request) {
  if (request.selection.isEmpty()) throw UsageFailure(noSelectionText);
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

// Queries anew for each assignment, because the one before may have changed which rows there are and what they accept.
palette::Report apply(const Assignment& assignment, const std::vector<VkDbObjectId>& ids, bool keepGoing) {
  Progress progress("Writing " + assignment.name);
  palette::Selection selection(ids);
  const palette::Row row = rowFor(assignment, selection.query());
  const auto show = [&](std::size_t done, std::size_t total) {
    progress.report(done, total);
    return true;
  };
  return selection.write(row, valueFor(assignment, row), {.keepGoing = keepGoing, .progress = show});
}

void save(const SetRequest& request, database::Drawing& drawing, const std::string& target,
          std::ostream& err) {
  if (!request.inPlace && target == standardStream) {
    drawing.document().write(*request.standardOutput);
    if (!request.standardOutput->flush()) throw Failure("the output could not be written");
    return;
  }
  const bool onlyNew = !request.inPlace && !request.force;
  try {
    drawing.save(target, {.overwriteChanges = request.overwriteChanges,
                          .onlyNew = onlyNew,
                          .tell = [&](std::string_view loss) { err << "veltprops: " << loss << '\n'; }});
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
  if (report.has(Fate::refused) && !request.keepGoing) {
    report.remark = "A value was refused, so nothing was saved (--keep-going saves the rest)";
  } else if (!report.has(Fate::changed)) {
    report.remark = "No entity changed, so nothing was saved";
  } else if (request.dryRun) {
    report.remark = "Nothing was saved: --dry-run";
  } else if (!report.hasNewsForTheDrawing()) {
    report.remark = "Nothing changed in the drawing, so nothing was saved";
  } else {
    save(request, drawing, target, err);
    report.savedTo = target;
    report.remark = fmt::format("{}: saved", target);
  }
}

}  // namespace

ExitCode set(const SetRequest& request, std::ostream& out, std::ostream& err) {
  checkOutput(request);
  std::vector<Assignment> assignments;
  for (const std::string& text : request.assignments)
    assignments.push_back(parseAssignment(text));

  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const SelectedEntities selected = select(*drawing, request.selection);
  const std::vector<VkDbObjectId>& ids = selected.ids;
  if (ids.empty()) throw Failure(fmt::format("{}: nothing selected", request.drawing));

  Report report;
  for (const Assignment& assignment : assignments) {
    const std::uint64_t revision = drawing->revision();
    palette::Report outcome = apply(assignment, ids, request.keepGoing);
    const bool isRefused = outcome.count(Fate::refused) > 0;
    const bool isKeptOutside = outcome.count(Fate::changed) > 0 && drawing->revision() == revision;
    report.assignments.push_back({assignment, std::move(outcome), isKeptOutside});
    if (isRefused && !request.keepGoing) break;
  }
  report.code = codeOf(request, report);
  saveUnlessForbidden(request, *drawing, report, err);
  (request.json ? printAsJson : printForPeople)(request, report, selected, out);
  return report.code;
}

}  // namespace velt::tool
