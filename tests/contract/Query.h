#pragma once

// What a palette does with a selection of entities, over the libraries as they ship.

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/database/VkDbObjectId.h"
#include "propdata/VeltPropData.h"

namespace velt::tests {

using Ids = std::vector<VkDbObjectId>;

// Owns the selection and the values of the rows.
class Query {
 public:
  explicit Query(const Ids& ids) : entries_(ids.size()) {
    for (std::size_t i = 0; i < ids.size(); ++i) {
      entries_[i].oldId = ids[i].asOldId();
      selection_.push_back(&entries_[i]);
    }
    bool mixedClasses = false;
    isSetUp = InitializePropData(selection_, errorText, mixedClasses);
  }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;
  ~Query() {
    for (PROPINFO& row : rows)
      VariantClear(&row.value);
    UnInitializePropData(selection_);
  }

  bool ask() {
    bool mergeFlag = false;
    bool typeFlag = false;
    return GetPropertiesInfo(selection_, rows, errorText, mergeFlag, typeFlag);
  }
  TqVector<VeltPropData*>& selection() { return selection_; }
  std::int64_t hatches() const {
    return std::count_if(entries_.begin(), entries_.end(),
                         [](const VeltPropData& entry) { return entry.clsid == ::CLSID_VeltHatch; });
  }

  bool hasDynamicRows() { return isAllEntitiesSameDynProp(selection_); }
  // Texts in the dynamic rows.
  std::int64_t dynamicTexts() const {
    return std::count_if(rows.begin(), rows.end(), [](const PROPINFO& row) {
      return row.dispId == dynamicPropertyDispId && row.value.vt == VT_BSTR && row.value.bstrVal != nullptr;
    });
  }

  bool isSetUp = false;
  CStdStr<wchar_t> errorText;
  TqVector<PROPINFO> rows;

 private:
  std::vector<VeltPropData> entries_;
  TqVector<VeltPropData*> selection_;
};

}  // namespace velt::tests
