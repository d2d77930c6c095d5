// The palette's query.

#include <cwchar>
#include <utility>

#include "host/com/Cancellation.h"
#include "host/com/ComError.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/merge/Cores.h"
#include "propdata/selection/Cores.h"
#include "propdata/support/Lists.h"
#include "propdata/writing/Cores.h"

using namespace velt::propdata;
using velt::errors::guarded;

namespace {

using DynamicLists = TqVector<TqVector<PROPINFO>>;

bool harvestAll(const TqVector<VeltPropData*>& selection, bool withDynamic, EntityLists& lists,
                DynamicLists& dynamicLists, CStdStr<wchar_t>& errorText) {
  lists.reserve(selection.length());
  if (withDynamic) reserve(dynamicLists, selection.length());
  SelectionHarvest harvest(lists);
  for (VeltPropData* const entry : selection) {
    if (!harvest.add(entry, errorText)) return false;
    if (!withDynamic) continue;
    TqVector<PROPINFO> dynamic;
    // QUIRK(sources_result_unexamined): an entity whose sources cannot be enumerated has an empty list, and the static
    // rows are shown all the same; plug-ins attach and remove their sources at any time.
    [[maybe_unused]] const bool hasSources = appendDynamicRows(entry->pDispatch, dynamic);
    mustAppend(dynamicLists, dynamic);
  }
  return true;
}

// A query that fails gives no value back, and neither does one that an exception ends. But users cancel large ones, again
// and again: then what was read of thousands of entities is given back, but for the few values of the first entity, which
// are in the rows of the result.
bool intersectOrGiveBack(EntityLists& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText) {
  try {
    return intersect(lists, result, errorText);
  } catch (const _com_error& error) {
    if (std::wcscmp(error.Description(), cancelledText) == 0) lists.clearValuesRead();
    throw;
  }
}

bool query(const TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
           CStdStr<wchar_t>& errorText) {
  mustClear(result);
  EntityLists lists;
  DynamicLists dynamicLists;
  const bool withDynamic = showsDynamicRows(selection);
  if (!harvestAll(selection, withDynamic, lists, dynamicLists, errorText)) return false;

  if (!intersectOrGiveBack(lists, result, errorText)) return false;
  if (withDynamic) {
    TqVector<PROPINFO> merged;
    if (!intersect(dynamicLists, merged, errorText)) return false;
    mustAppendAll(result, std::move(merged));
  }
  fillChoices(result);
  // QUIRK(dynamic_values_not_released): only the static lists give their values back; property sources keep
  // answering with values that the merged rows share.
  lists.clearValues();
  return true;
}

}  // namespace

bool GetPropertiesInfo(TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
                       CStdStr<wchar_t>& errorText, [[maybe_unused]] bool& mergeFlag,
                       [[maybe_unused]] bool& typeFlag) {
  return guarded(false, errorText, [&] { return query(selection, result, errorText); });
}
