// The palette's query.

#include <utility>

#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/merge/Cores.h"
#include "propdata/selection/Cores.h"
#include "propdata/support/Lists.h"
#include "propdata/writing/Cores.h"

using namespace velt::propdata;
using velt::errors::guarded;

namespace {

struct EntityLists {
  TqVector<TqVector<PROPINFO>> ofType;
  TqVector<TqVector<PROPINFO>> dynamic;
};

bool harvestAll(const TqVector<VeltPropData*>& selection, bool withDynamic, EntityLists& lists,
                CStdStr<wchar_t>& errorText) {
  reserve(lists.ofType, selection.length());
  if (withDynamic) reserve(lists.dynamic, selection.length());
  for (VeltPropData* const entry : selection) {
    TqVector<PROPINFO> ofType;
    if (!harvest(entry, ofType, errorText)) return false;
    mustAppend(lists.ofType, ofType);
    if (!withDynamic) continue;
    TqVector<PROPINFO> dynamic;
    // QUIRK(sources_result_unexamined): an entity whose sources cannot be enumerated has an empty list, and the static
    // rows are shown all the same; plug-ins attach and remove their sources at any time.
    [[maybe_unused]] const bool hasSources = appendDynamicRows(entry->pDispatch, dynamic);
    mustAppend(lists.dynamic, dynamic);
  }
  return true;
}

bool query(const TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
           CStdStr<wchar_t>& errorText) {
  mustClear(result);
  EntityLists lists;
  const bool withDynamic = showsDynamicRows(selection);
  if (!harvestAll(selection, withDynamic, lists, errorText)) return false;

  if (!intersect(lists.ofType, result, errorText)) return false;
  if (withDynamic) {
    TqVector<PROPINFO> merged;
    if (!intersect(lists.dynamic, merged, errorText)) return false;
    reserve(result, result.length() + merged.length());
    result.append(merged);
  }
  fillChoices(result);
  // QUIRK(dynamic_values_not_released): only the static lists give their values back; property sources keep
  // answering with values that the merged rows share.
  clearValues(lists.ofType);
  return true;
}

}  // namespace

bool GetPropertiesInfo(TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
                       CStdStr<wchar_t>& errorText, [[maybe_unused]] bool& mergeFlag,
                       [[maybe_unused]] bool& typeFlag) {
  return guarded(false, errorText, [&] { return query(selection, result, errorText); });
}
