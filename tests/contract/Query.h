#pragma once

// What the layer tells a palette of a selection, as it tells it: over the libraries as they ship, rows in the layer's
// own order.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "host/database/VkDbObjectId.h"
#include "palette/Palette.h"

namespace velt::tests {

using Ids = std::vector<VkDbObjectId>;

// Owns the selection and the values of the rows.
class Query {
 public:
  explicit Query(const Ids& ids) {
    try {
      selection_.emplace(ids);
      isSetUp = true;
    } catch (const palette::Error&) {}
  }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;
  ~Query() {
    for (PROPINFO& row : rows)
      VariantClear(&row.value);
  }

  bool ask() {
    bool mergeFlag = false;
    bool typeFlag = false;
    return isSetUp && GetPropertiesInfo(selection(), rows, errorText, mergeFlag, typeFlag);
  }
  TqVector<VeltPropData*>& selection() { return selection_.value().entries(); }
  std::int64_t hatches() {
    const TqVector<VeltPropData*>& entries = selection();
    return std::count_if(entries.begin(), entries.end(),
                         [](const VeltPropData* entry) { return entry->clsid == ::CLSID_VeltHatch; });
  }

  bool hasDynamicRows() { return isAllEntitiesSameDynProp(selection()); }
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
  std::optional<palette::Selection> selection_;
};

// An entity's record, pair by pair.
inline std::string pairsOf(const database::Drawing& drawing, VkDbObjectId id) {
  const dxf::RecordView view = drawing.view(database::resolve(id)->record);
  std::string pairs;
  for (std::size_t index = 0; index < view.size(); ++index)
    pairs += std::to_string(view.code(index)) + "=" + std::string(view.value(index)) + "\n";
  return pairs;
}

}  // namespace velt::tests
