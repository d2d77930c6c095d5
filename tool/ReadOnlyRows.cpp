#include "tool/ReadOnlyRows.h"

#include <span>
#include <string_view>
#include <utility>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/model/ReadOnlyReason.h"
#include "embedded/automation/model/Reasons.h"
#include "tool/Sentence.h"

namespace velt::tool {

namespace {

// A sentence of the host as a clause for the middle of another sentence.
std::string clauseOf(const std::wstring& sentence) {
  std::string clause = palette::oneLine(sentence);
  if (clause.ends_with('.')) clause.pop_back();
  return inASentence(clause);
}

// The option that makes an end of that reason.
const char* wayAround(const std::string& sentence) {
  using namespace automation::reasons;
  const bool isForHatches = sentence == palette::oneLine(followedByHatch.sentence)
                            || sentence == palette::oneLine(hatchWouldNotClose.sentence);
  return isForHatches ? " (set --break-associations sees to that)" : "";
}

// The number of the row's property in a class; 0, which no property has, for one that is not there.
DISPID numberIn(REFCLSID clsid, const PROPINFO& record) {
  if (clsid == record.clsid) return record.dispId;
  const automation::AutomationClass* const kind = automation::findClass(clsid);
  DISPID number = 0;
  const auto look = [&](std::span<const automation::PropertyRow> rows) {
    for (const automation::PropertyRow& row : rows) {
      if (std::wstring_view(row.name) == record.name.str()) number = row.dispId;
    }
  };
  if (kind == nullptr) return number;
  if (kind->general != nullptr) look(*kind->general);
  for (const auto* const family : kind->families)
    look(*family);
  look(kind->rows);
  return number;
}

}  // namespace

std::string readOnlyReason(const palette::Row& row) {
  if (row.isEditable()) return {};
  const PROPINFO& record = row.record();
  return clauseOf(automation::readOnlyReason(record.clsid, record.dispId, record.objectId));
}

std::string refusalOf(const palette::Row& row, VkDbObjectId entity) {
  if (row.kind() == PropertyKind::vertex && !row.record().isElement)
    return "it only chooses the vertex that is shown; to change the second one write Vertex[2].X=VALUE";
  GUID clsid = GUID_NULL;
  if (row.isDynamic() || !GetCLSID(clsid, entity.asOldId())) return {};
  const std::wstring sentence = automation::readOnlyReason(clsid, numberIn(clsid, row.record()), entity);
  return clauseOf(sentence) + wayAround(palette::oneLine(sentence));
}

void tellWhyRefused(palette::Report& report, const palette::Selection& selection, const palette::Row& row,
                    const automation::RefusalLog& log) {
  for (auto& [index, reason] : report.reasons) {
    const VkDbObjectId entity = selection.entity(index);
    if (std::string known = refusalOf(row, entity); !known.empty()) {
      reason = std::move(known);
      continue;
    }
    if (const std::wstring sentence = log.of(entity); row.record().isElement && !sentence.empty())
      reason = palette::oneLine(sentence);
    reason += wayAround(reason);
  }
}

Refusals refusalsOf(const palette::Selection& selection, const palette::Row& row) {
  Refusals refusals;
  if (!row.isEditable() || row.isDynamic()) return refusals;
  for (std::size_t i = 0; i < selection.size(); ++i) {
    const VkDbObjectId entity = selection.entity(i);
    std::string reason = refusalOf(row, entity);
    if (reason.empty() || palette::isOnLockedLayer(entity)) continue;
    if (refusals.entities.empty()) refusals.reason = std::move(reason);
    refusals.entities.push_back(i);
  }
  return refusals;
}

}  // namespace velt::tool
