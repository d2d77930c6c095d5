// Intersecting the per-entity lists: the rows that all entities have.

#include "errors/Guard.h"
#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"
#include "propdata/merge/EntityLists.h"
#include "propdata/merge/Merge.h"
#include "propdata/merge/RecordLists.h"

using namespace velt::propdata;

namespace velt::propdata {

bool intersect(TqVector<TqVector<PROPINFO>>& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText) {
  RecordLists records(lists);
  return mergeInto(result, records, errorText);
}

bool intersect(EntityLists& lists, TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText) {
  return mergeInto(result, lists, errorText);
}

}  // namespace velt::propdata

bool ExcuteIntersect([[maybe_unused]] TqVector<VeltPropData*>& entities, TqVector<TqVector<PROPINFO>>& lists,
                     TqVector<PROPINFO>& result, CStdStr<wchar_t>& errorText, [[maybe_unused]] bool& flag) {
  return velt::errors::guarded(false, errorText, [&] { return intersect(lists, result, errorText); });
}
