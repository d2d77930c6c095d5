#include "palette/selection/DynamicNodes.h"

#include <new>

namespace velt::palette {

PROPINFO withOneNodePerEntity(const PROPINFO& row) {
  PROPINFO pruned(row);
  if (row.dispId != dynamicPropertyDispId) return pruned;
  const TqVector<DispatchDynPropSourceNode>& all = row.dynSources;
  TqVector<DispatchDynPropSourceNode> own;
  if (!own.setPhysicalLength(all.length())) throw std::bad_alloc();
  for (std::uint32_t i = 0; i < all.length(); ++i) {
    // The merge's search in an entity's list ends at the property itself, so the last node of each entity is its own.
    const bool isLastOfEntity = i + 1 == all.length() || all[i + 1].pDispatch != all[i].pDispatch;
    if (isLastOfEntity) own.append(all[i]);
  }
  pruned.dynSources = own;
  return pruned;
}

}  // namespace velt::palette
