// The palette's query.

#include "propdata/VeltPropData.h"
#include "propdata/support/Lists.h"

using namespace velt::propdata;

namespace {

struct EntityLists {
  TqVector<TqVector<PROPINFO>> ofType;
  TqVector<TqVector<PROPINFO>> dynamic;
};

bool harvestAll(TqVector<VeltPropData*>& selection, bool sameDynamic, EntityLists& lists,
                CStdStr<wchar_t>& errorText, bool& typeFlag) {
  reserve(lists.ofType, selection.length());
  if (sameDynamic) reserve(lists.dynamic, selection.length());
  for (VeltPropData* const entry : std::as_const(selection)) {
    TqVector<PROPINFO> ofType;
    if (!GetSingleEntPropInfo(entry, ofType, errorText, typeFlag)) return false;
    mustAppend(lists.ofType, ofType);
    if (!sameDynamic) continue;
    TqVector<PROPINFO> dynamic;
    // QUIRK(sources_result_unexamined): an entity whose sources cannot be enumerated has an empty list, and the static
    // rows are shown all the same; plug-ins attach and remove their sources at any time.
    [[maybe_unused]] const int hasSources = GetDynPropSourcesPropInfo(entry->pDispatch, dynamic);
    mustAppend(lists.dynamic, dynamic);
  }
  return true;
}

}  // namespace

bool GetPropertiesInfo(TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
                       CStdStr<wchar_t>& errorText, bool& mergeFlag, bool& typeFlag) {
  return orOnNoMemory(false, [&] {
    result.clear();
    EntityLists lists;
    const bool sameDynamic = isAllEntitiesSameDynProp(selection);
    if (!harvestAll(selection, sameDynamic, lists, errorText, typeFlag)) return false;

    if (!ExcuteIntersect(selection, lists.ofType, result, errorText, mergeFlag)) return false;
    if (sameDynamic) {
      TqVector<PROPINFO> merged;
      if (!ExcuteIntersect(selection, lists.dynamic, merged, errorText, mergeFlag)) return false;
      reserve(result, result.length() + merged.length());
      result.append(merged);
    }
    fillPropComboBox(result);
    // QUIRK(dynamic_values_not_released): only the static lists give their values back; property sources keep
    // answering with values that the merged rows share.
    freePropInfoVariantValue(lists.ofType);
    return true;
  });
}
