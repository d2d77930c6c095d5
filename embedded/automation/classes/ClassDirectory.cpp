#include "embedded/automation/classes/ClassDirectory.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "embedded/automation/model/ClassRegistry.h"
#include "embedded/automation/objects/ColorObject.h"
#include "embedded/automation/objects/HyperlinksObject.h"
#include "embedded/database/ObjectClass.h"
#include "embedded/database/VkDbImpObject.h"
#include "host/database/VkDbObject.h"

namespace velt::automation {
namespace {

using Candidates = std::unordered_map<std::string_view, std::vector<const AutomationClass*>>;

// By the type of the record; those that take every record of it come last.
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

const AutomationClass* findClass(REFCLSID clsid) {
  const auto all = automationClasses();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const AutomationClass* kind) { return kind->clsid == clsid; });
  return found != all.end() ? *found : nullptr;
}

const AutomationClass* classOfRecord(const database::Drawing& drawing, std::uint32_t record) {
  static const Candidates candidates = candidatesByType();
  const auto found = candidates.find(drawing.view(record).type());
  if (found == candidates.end()) return nullptr;
  for (const AutomationClass* kind : found->second) {
    if (kind->takes(drawing, record)) return kind;
  }
  return nullptr;
}

// Defined here and not beside its class: objects of the model ask for it, and only this directory knows the classes.
const ClassRegistry& ClassRegistry::ofHost() {
  // Never destroyed: objects may be released as late as when the process ends.
  static const ClassRegistry& registry =
      *new ClassRegistry(L"VeltAutomation", automationClasses(),
                         {ColorObject::type(), HyperlinksObject::type(), HyperlinkObject::type()});
  return registry;
}

}  // namespace velt::automation

// The one method of a database object that needs to know the automation classes.
Velt::ErrorStatus VkDbObject::getClassID(CLSID* clsid) const {
  if (clsid == nullptr) return Velt::eInvalidInput;
  // A record among the objects is not an entity, even if it has the name of one.
  if (imp_ == nullptr || imp_->drawing == nullptr || !isEntityShape(imp_->objectClass->shape))
    return Velt::eNoAutomationClass;
  const velt::automation::AutomationClass* kind =
      velt::automation::classOfRecord(*imp_->drawing, imp_->record);
  if (kind == nullptr) return Velt::eNoAutomationClass;
  *clsid = kind->clsid;
  return Velt::eOk;
}
