#include "tool/FromFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "tool/Failure.h"
#include "tool/Progress.h"
#include "tool/ReadOnlyRows.h"
#include "tool/RowJson.h"

namespace velt::tool {

namespace {

// A value that is not the one that the entities have.
struct Difference {
  const WantedValues* wanted;
  // Which of the rows.
  std::size_t index;
  // Of an entity that is on it then, nothing else could be changed.
  bool isLayer;
};

std::string nameOf(const Difference& difference) {
  const WantedValues& wanted = *difference.wanted;
  const std::string& name = wanted.label.empty() ? wanted.name : wanted.label;
  return wanted.values.size() == 1 ? name : fmt::format("{}#{}", name, difference.index + 1);
}

class FromFile {
 public:
  FromFile(database::Drawing& drawing, const std::string& file, bool keepGoing)
      : drawing_(drawing), units_(drawing), file_(file), keepGoing_(keepGoing) {}

  // False when a value was refused and that ends the work.
  bool write(const std::vector<VkDbObjectId>& ids, const std::string& who,
             const std::vector<WantedValues>& values) {
    palette::Selection selection(ids);
    selection.query();
    const std::vector<Difference> differences = differencesOf(selection, who, values);
    for (const Difference& difference : differences) {
      if (!write(selection, ids, difference) && !keepGoing_) return false;
    }
    return true;
  }

  // What write() would throw for.
  void check(const std::vector<VkDbObjectId>& ids, const std::string& who,
             const std::vector<WantedValues>& values) {
    palette::Selection selection(ids);
    selection.query();
    for (const WantedValues& wanted : values)
      requireRows(selection, who, wanted);
  }

  FileOutcome outcome{};

 private:
  std::vector<palette::Row> requireRows(const palette::Selection& selection, const std::string& who,
                                        const WantedValues& wanted) const {
    std::vector<palette::Row> rows = rowsFor(wanted, selection.rows());
    const std::string& name = wanted.label.empty() ? wanted.name : wanted.label;
    const bool hasValue = std::any_of(wanted.values.begin(), wanted.values.end(), [](const auto& value) {
      return !std::holds_alternative<std::monostate>(value);
    });
    if (rows.empty() && hasValue) throw Failure(fmt::format("{}: {} has no property {}", file_, who, name));
    if (rows.size() != wanted.values.size() && hasValue) {
      throw Failure(fmt::format("{}: it gives {} values for {} of {}, and the drawing has {}", file_,
                                wanted.values.size(), name, who, rows.size()));
    }
    for (std::size_t i = 0; i < rows.size() && i < wanted.units.size(); ++i) {
      const std::string own = units_.of(rows[i]);
      if (wanted.units[i].empty() || wanted.units[i] == own) continue;
      throw Failure(fmt::format("{}: {} of {} is in {} there, and {} in the drawing", file_, name, who,
                                wanted.units[i], own.empty() ? "has no unit" : "in " + own));
    }
    return rows;
  }

  // Asked of all before anything is written.
  std::vector<Difference> differencesOf(const palette::Selection& selection, const std::string& who,
                                        const std::vector<WantedValues>& values) {
    std::vector<Difference> differences;
    for (const WantedValues& wanted : values) {
      const std::vector<palette::Row> rows = requireRows(selection, who, wanted);
      for (std::size_t i = 0; i < rows.size() && i < wanted.values.size(); ++i) {
        const palette::PlainValue& value = wanted.values[i];
        if (std::holds_alternative<std::monostate>(value)) continue;
        const bool isSame = !rows[i].isVarying() && palette::isSame(value, rows[i].plain());
        isSame ? static_cast<void>(++outcome.same)
               : differences.push_back({&wanted, i, rows[i].kind() == PropertyKind::entityLayer});
      }
    }
    std::stable_partition(differences.begin(), differences.end(),
                          [](const Difference& difference) { return !difference.isLayer; });
    return differences;
  }

  // Asks for the rows anew, since what was written before may have changed them.
  bool write(palette::Selection& selection, const std::vector<VkDbObjectId>& ids,
             const Difference& difference) {
    const WantedValues& wanted = *difference.wanted;
    const palette::PlainValue& value = wanted.values[difference.index];
    const std::vector<palette::Row> rows = rowsFor(wanted, selection.query());
    Applied applied;
    applied.entities = ids;
    applied.assignment.name = nameOf(difference);
    applied.assignment.value = valueText(value);
    applied.assignment.text = applied.assignment.name + "=" + applied.assignment.value;
    const std::uint64_t revision = drawing_.revision();
    applied.outcome = difference.index < rows.size() ? written(selection, rows[difference.index], value)
                                                     : refusal(selection, "it has no such property any more");
    applied.isKeptOutside =
        applied.outcome.count(palette::Fate::changed) > 0 && drawing_.revision() == revision;
    const bool isRefused = applied.outcome.count(palette::Fate::refused) > 0;
    outcome.applied.push_back(std::move(applied));
    return !isRefused;
  }

  static std::string valueText(const palette::PlainValue& value) {
    const auto* const text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : valueJson(value).dump();
  }

  palette::Report written(palette::Selection& selection, const palette::Row& row,
                          const palette::PlainValue& value) const {
    if (!row.isEditable()) {
      const std::string reason = readOnlyReason(row);
      return refusal(selection, reason.empty() ? "it cannot be edited" : "it cannot be edited: " + reason);
    }
    try {
      const automation::RefusalLog log;
      palette::Report report = selection.write(row, row.valueOf(value), {.keepGoing = keepGoing_});
      tellWhyRefused(report, selection, row, log);
      return report;
    } catch (const palette::Error& error) {
      return refusal(selection, error.what());
    }
  }

  // Entities on locked layers are not asked at all.
  static palette::Report refusal(const palette::Selection& selection, const std::string& reason) {
    palette::Report report;
    for (std::size_t i = 0; i < selection.size(); ++i) {
      const bool isLocked = palette::isOnLockedLayer(selection.entity(i));
      report.fates.push_back(isLocked ? palette::Fate::locked : palette::Fate::refused);
      if (!isLocked) report.reasons[i] = reason;
    }
    return report;
  }

  database::Drawing& drawing_;
  Units units_;
  const std::string& file_;
  bool keepGoing_;
};

// Several entities of a damaged drawing may have one handle: the first in the file is the first in the drawing.
class ByHandle {
 public:
  explicit ByHandle(database::Drawing& drawing) {
    for (const VkDbObjectId id : select(drawing, {.all = true, .inBlocks = true}).ids)
      ids_[handleText(id)].push_back(id);
  }
  std::optional<VkDbObjectId> next(const std::string& handle) {
    const auto found = ids_.find(handle);
    if (found == ids_.end()) return std::nullopt;
    const std::size_t number = taken_[handle]++;
    return found->second[std::min(number, found->second.size() - 1)];
  }

 private:
  std::map<std::string, std::vector<VkDbObjectId>> ids_;
  std::map<std::string, std::size_t> taken_;
};

std::set<long> selectedIds(database::Drawing& drawing, const SelectionRequest& request) {
  const std::vector<VkDbObjectId> ids = select(drawing, request).ids;
  std::set<long> selected;
  for (const VkDbObjectId id : ids)
    selected.insert(id.asOldId());
  return selected;
}

}  // namespace

FileOutcome applyFile(const ValuesFile& file, const std::string& name, database::Drawing& drawing,
                      const SelectionRequest& selection, bool keepGoing) {
  FromFile work(drawing, name, keepGoing);
  if (file.isOfSelection) {
    if (selection.isEmpty()) throw UsageFailure(noSelectionText);
    const std::vector<VkDbObjectId> ids = select(drawing, selection).ids;
    if (ids.empty()) throw Failure(fmt::format("{}: nothing selected", drawing.document().displayName()));
    work.outcome.entities = ids.size();
    work.write(ids, "the selection", file.ofSelection);
    return std::move(work.outcome);
  }
  const std::set<long> selected = selection.isEmpty() ? std::set<long>() : selectedIds(drawing, selection);
  std::vector<std::pair<VkDbObjectId, const WantedEntity*>> entities;
  ByHandle byHandle(drawing);
  for (const WantedEntity& wanted : file.entities) {
    const std::optional<VkDbObjectId> id = byHandle.next(wanted.handle);
    if (!id) throw Failure(fmt::format("{}: the drawing has no entity {}", name, wanted.handle));
    if (selection.isEmpty() || selected.contains(id->asOldId())) entities.emplace_back(*id, &wanted);
  }
  work.outcome.entities = entities.size();
  for (const auto& [id, wanted] : entities)
    work.check({id}, wanted->handle, wanted->values);
  Progress progress("Writing " + name);
  for (std::size_t i = 0; i < entities.size(); ++i) {
    const auto& [id, wanted] = entities[i];
    if (!work.write({id}, wanted->handle, wanted->values)) break;
    progress.report(i + 1, entities.size());
  }
  return std::move(work.outcome);
}

}  // namespace velt::tool
