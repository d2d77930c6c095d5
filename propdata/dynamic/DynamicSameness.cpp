// Whether dynamic rows are shown for a selection.

#include "errors/Guard.h"
#include "host/database/OpenObject.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/dynamic/EntityId.h"
#include "propdata/dynamic/Refusals.h"

using namespace velt::propdata;

namespace {

// The definition of the dynamic block to which the entity refers; the null id for anything else.
VkDbObjectId dynamicBlockOf(const VeltPropData& entry) {
  const VkDbObjectId id = entityIdOf(entry.pDispatch);
  if (id.isNull()) return id;
  const VkDbObjectPointer<VkDbBlockReference> reference(id, VkDb::kForRead);
  if (reference.openStatus() != Velt::eOk || reference.object() == nullptr) return VkDbObjectId::kNull;
  const VkDbObjectId original = vkdbGetEnhancedBlkOriginalBtrId(reference.object());
  if (!original.isNull() || !vkdbIsEnhancedBlockRef(reference.object())) return original;
  return reference->blockTableRecord();
}

}  // namespace

namespace velt::propdata {

bool showsDynamicRows(const TqVector<VeltPropData*>& selection) {
  if (selection.length() == 1) return true;
  bool isFirst = true;
  VkDbObjectId definition;
  for (const VeltPropData* const entry : selection) {
    if (entry == nullptr) continue;
    const VkDbObjectId block = orRefused(VkDbObjectId(), [&] { return dynamicBlockOf(*entry); });
    if (block.isNull()) return false;
    if (isFirst) definition = block;
    if (block != definition) return false;
    isFirst = false;
  }
  return !definition.isNull();
}

}  // namespace velt::propdata

bool isAllEntitiesSameDynProp(TqVector<VeltPropData*>& selection) {
  return velt::errors::guarded(false, [&] { return showsDynamicRows(selection); });
}
