#include "embedded/automation/model/ReadOnlyReason.h"

#include <optional>

#include "embedded/automation/model/ClassRegistry.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {

std::wstring readOnlyReason(REFCLSID clsid, DISPID property, VkDbObjectId entity) {
  const RegisteredClass* const registered = ClassRegistry::ofHost().find(clsid);
  const PropertyRow* const row = registered == nullptr ? nullptr : registered->index.find(property);
  if (row == nullptr) return {};
  if (row->writability.never != nullptr) return row->writability.never->sentence;
  const AutomationClass& kind = registered->index.kind();
  const std::optional<database::ObjectRef> object = database::resolve(entity);
  if (!object || object->drawing->isErased(object->record)) return {};
  if (!kind.takes(*object->drawing, object->record)) return {};
  try {
    requireChangeable(Subject(*object, entity, kind), *row);
  } catch (const Refusal& refusal) {
    return refusal.text();
  }
  return {};
}

}  // namespace velt::automation
