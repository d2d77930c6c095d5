#include "embedded/automation/classes/RecordClasses.h"

#include <string_view>
#include <unordered_map>
#include <vector>

#include "embedded/automation/classes/ClassList.h"

namespace velt::automation {
namespace {

using Candidates = std::unordered_map<std::string_view, std::vector<const AutomationClass*>>;

/// By the type of the record; those that take every record of it come last.
Candidates candidatesByType() {
  Candidates found;
  for (const bool picky : {true, false}) {
    for (const AutomationClass* kind : automationClasses()) {
      if (kind->dxfName.empty() || (kind->standsFor != nullptr) != picky) continue;
      found[kind->dxfName].push_back(kind);
    }
  }
  return found;
}

}  // namespace

const AutomationClass* classOfRecord(const database::Drawing& drawing, std::uint32_t record) {
  static const Candidates candidates = candidatesByType();
  const auto found = candidates.find(drawing.view(record).type());
  if (found == candidates.end()) return nullptr;
  for (const AutomationClass* kind : found->second) {
    if (kind->takes(drawing, record)) return kind;
  }
  return nullptr;
}

}  // namespace velt::automation
