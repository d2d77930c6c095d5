#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "dxf/FileReplacement.h"
#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "palette/Palette.h"
#include "palette/selection/DynamicNodes.h"
#include "palette/selection/EntityValue.h"
#include "palette/text/Utf8.h"
#include "tool/Assignment.h"
#include "tool/Commands.h"
#include "tool/Failure.h"
#include "tool/OpenDrawing.h"
#include "tool/Progress.h"

namespace velt::tool {

namespace {

enum class Fate { changed, unchanged, locked, skipped, refused, notReached };

constexpr std::pair<Fate, const char*> fates[] = {
    {Fate::changed, "changed"}, {Fate::unchanged, "unchanged"}, {Fate::locked, "locked"},
    {Fate::skipped, "skipped"}, {Fate::refused, "refused"},     {Fate::notReached, "notReached"},
};

// What became of one assignment.
struct Outcome {
  explicit Outcome(std::size_t entities) : fates(entities, Fate::notReached) {}

  std::size_t count(Fate fate) const {
    return static_cast<std::size_t>(std::count(fates.begin(), fates.end(), fate));
  }

  std::vector<Fate> fates;                     // of the entities, in the order of the selection
  std::map<std::size_t, std::string> reasons;  // of those that refused
  std::string message;                         // what the layer said of the last refusal
};

bool isOnLockedLayer(VkDbObjectId id) {
  const auto object = database::resolve(id);
  if (!object) return false;
  const database::TableEntry* const layer = database::Entity(*object).layer();
  return layer != nullptr && database::Layer(*object->drawing, layer->record).isLocked();
}

// Writes one row of a selection, as a palette commits it, and finds out what became of each entity.
class Writing {
 public:
  Writing(Palette& palette, const std::vector<VkDbObjectId>& ids, const PROPINFO& row, VARIANT& value,
          bool keepGoing)
      : palette_(palette), ids_(ids), row_(row), value_(value), keepGoing_(keepGoing), outcome_(ids.size()) {}

  Outcome run(Progress& progress) {
    before_ = allValues();
    if (row_.dispId == dynamicPropertyDispId) {
      writeDynamic();
    } else {
      writeStatic(progress);
    }
    return std::move(outcome_);
  }

 private:
  std::vector<std::wstring> allValues() {
    std::vector<std::wstring> values;
    values.reserve(ids_.size());
    for (std::size_t i = 0; i < ids_.size(); ++i)
      values.push_back(entityValue(row_, palette_.entry(i), i));
    return values;
  }

  Fate fateOfWritten(std::size_t i) {
    return entityValue(row_, palette_.entry(i), i) == before_[i] ? Fate::unchanged : Fate::changed;
  }

  // In portions, only so that progress can be shown: the layer does the same for all of them in one call.
  void writeStatic(Progress& progress) {
    constexpr std::size_t portion = 1000;
    for (std::size_t from = 0; from < ids_.size();) {
      const std::size_t end = std::min(from + portion, ids_.size());
      const std::size_t refused = writePortion(from, end);
      if (refused != end && !keepGoing_) return;
      from = refused != end ? refused + 1 : end;
      progress.report(from, ids_.size());
    }
  }

  // The entity at which it stopped, else `end`.
  std::size_t writePortion(std::size_t from, std::size_t end) {
    TqVector<VeltPropData*> portion;
    if (!portion.setPhysicalLength(static_cast<std::uint32_t>(end - from))) throw std::bad_alloc();
    for (std::size_t i = from; i < end; ++i)
      portion.push_back(&palette_.entry(i));
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touched;
    const int result = SetPropertiesValue(portion, row_, value_, row_.isElement, errorText, lockedCount,
                                          touched, static_cast<unsigned int>(row_.elementCookie));
    // Touched are, in order, all that were tried; those between them were passed over.
    std::size_t i = from;
    for (int t = 0; t < touched.length(); ++t, ++i) {
      for (; ids_[i] != touched[t]; ++i)
        passOver(i);
      if (result == 0 && t + 1 == touched.length()) {
        refuse(i, toUtf8(errorText.str()));
        return i;
      }
      outcome_.fates[i] = fateOfWritten(i);
    }
    for (; i < end; ++i)
      passOver(i);
    return end;
  }

  void passOver(std::size_t i) {
    outcome_.fates[i] = isOnLockedLayer(ids_[i]) ? Fate::locked : Fate::skipped;
  }

  void refuse(std::size_t i, std::string message) {
    outcome_.fates[i] = Fate::refused;
    outcome_.reasons[i] = reasonOfRefusal(row_, palette_.entry(i), value_);
    outcome_.message = std::move(message);
  }

  // Dynamic properties are written all at once, and what they answer is not told. So the values tell.
  void writeDynamic() {
    const std::wstring wanted = comparable(value_);
    TqVector<VeltPropData*> unused;
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touched;
    SetPropertiesValue(unused, row_, value_, false, errorText, lockedCount, touched, 0);
    for (std::size_t i = 0; i < ids_.size(); ++i) {
      const std::wstring now = entityValue(row_, palette_.entry(i), i);
      if (now != before_[i]) {
        outcome_.fates[i] = Fate::changed;
      } else if (now == wanted) {
        outcome_.fates[i] = Fate::unchanged;
      } else if (isOnLockedLayer(ids_[i])) {
        outcome_.fates[i] = Fate::locked;
      } else {
        outcome_.fates[i] = Fate::refused;
        outcome_.reasons[i] = "the property does not take the value";
      }
    }
  }

  Palette& palette_;
  const std::vector<VkDbObjectId>& ids_;
  const PROPINFO& row_;
  VARIANT& value_;
  bool keepGoing_;
  Outcome outcome_;
  std::vector<std::wstring> before_;
};

struct Report {
  std::vector<std::pair<Assignment, Outcome>> assignments;
  bool isRefused = false;
  std::string savedTo;  // empty: nothing was saved
  std::string remark;   // what became of the file
};

std::string entities(std::size_t count) {
  return fmt::format("{} {}", count, count == 1 ? "entity" : "entities");
}

// --- the report ------------------------------------------------------------------------------------------

// Each reason once, with the first handles that it holds for.
void printReasons(const Outcome& outcome, const std::vector<VkDbObjectId>& ids, std::ostream& out) {
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

void printOutcome(const Outcome& outcome, const std::vector<VkDbObjectId>& ids, std::ostream& out) {
  const auto line = [&](Fate fate, const char* words) {
    if (const std::size_t count = outcome.count(fate); count > 0)
      out << fmt::format("  {:>6} {}\n", count, words);
  };
  line(Fate::changed, "changed");
  line(Fate::unchanged, "unchanged: had the value already");
  line(Fate::locked, "left as they are: on a locked layer");
  line(Fate::skipped, "left as they are: cannot be opened");
  line(Fate::refused, "refused");
  printReasons(outcome, ids, out);
  line(Fate::notReached, "not reached behind the refusal");
}

void printForPeople(const SetRequest& request, const Report& report, const std::vector<VkDbObjectId>& ids,
                    std::ostream& out) {
  out << fmt::format("{}: {} selected\n", request.drawing, entities(ids.size()));
  for (const auto& [assignment, outcome] : report.assignments) {
    out << fmt::format("\n{}\n", assignment.text);
    printOutcome(outcome, ids, out);
  }
  out << fmt::format("\n{}\n", report.remark);
}

nlohmann::ordered_json outcomeJson(const Assignment& assignment, const Outcome& outcome,
                                   const std::vector<VkDbObjectId>& ids) {
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
  return json;
}

void printAsJson(const SetRequest& request, const Report& report, const std::vector<VkDbObjectId>& ids,
                 std::ostream& out) {
  nlohmann::ordered_json json = {{"drawing", request.drawing},
                                 {"selection", {{"count", ids.size()}}},
                                 {"assignments", nlohmann::ordered_json::array()},
                                 {"saved", nullptr}};
  for (const auto& [assignment, outcome] : report.assignments)
    json["assignments"].push_back(outcomeJson(assignment, outcome, ids));
  if (!report.savedTo.empty()) json["saved"] = report.savedTo;
  out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

// --- the work --------------------------------------------------------------------------------------------

void checkOutput(const SetRequest& request) {
  if (request.selection.isEmpty())
    throw UsageFailure("which entities? Select with --all, --handle, --layer or --type");
  if (request.output.empty() && !request.inPlace && !request.dryRun)
    throw UsageFailure("save where? Name a file with -o, or say --in-place or --dry-run");
  std::error_code unknown;
  if (request.output.empty() || request.force || !std::filesystem::exists(request.output, unknown)) return;
  if (std::filesystem::equivalent(request.output, request.drawing, unknown))
    throw Failure(fmt::format("{}: is the drawing itself (--in-place saves to it)", request.output));
  throw Failure(fmt::format("{}: exists already (--force replaces it)", request.output));
}

// A fresh query for each assignment: one may change which rows there are, and what they may be given.
Outcome apply(const Assignment& assignment, const std::vector<VkDbObjectId>& ids, bool keepGoing) {
  Progress progress("Writing " + assignment.name);
  Palette palette(ids);
  const PROPINFO row = withOneNodePerEntity(rowFor(assignment, palette.query()));
  holders::VariantHolder value = valueFor(assignment, row);
  return Writing(palette, ids, row, value.get(), keepGoing).run(progress);
}

void saveUnlessForbidden(const SetRequest& request, const database::Drawing& drawing, Report& report) {
  const std::string target = request.inPlace ? request.drawing : request.output;
  if (report.isRefused && !request.keepGoing) {
    report.remark = "A value was refused, so nothing was saved (--keep-going saves the rest)";
  } else if (request.dryRun) {
    report.remark = "Nothing was saved: --dry-run";
  } else if (request.inPlace && !drawing.document().isEdited()) {
    report.remark = fmt::format("{}: nothing changed, so nothing was saved", target);
  } else {
    dxf::save(drawing.document(), target);
    report.savedTo = target;
    report.remark = fmt::format("{}: saved", target);
  }
}

}  // namespace

ExitCode set(const SetRequest& request, std::ostream& out) {
  checkOutput(request);
  std::vector<Assignment> assignments;
  for (const std::string& text : request.assignments)
    assignments.push_back(parseAssignment(text));

  const std::unique_ptr<database::Drawing> drawing = openDrawing(request.drawing);
  const std::vector<VkDbObjectId> ids = select(*drawing, request.selection).ids;
  if (ids.empty()) throw Failure(fmt::format("{}: nothing selected", request.drawing));

  Report report;
  for (const Assignment& assignment : assignments) {
    const auto& [applied, outcome] =
        report.assignments.emplace_back(assignment, apply(assignment, ids, request.keepGoing));
    report.isRefused = report.isRefused || outcome.count(Fate::refused) > 0;
    if (report.isRefused && !request.keepGoing) break;
  }
  saveUnlessForbidden(request, *drawing, report);
  (request.json ? printAsJson : printForPeople)(request, report, ids, out);
  return report.isRefused ? failed : succeeded;
}

}  // namespace velt::tool
