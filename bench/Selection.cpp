#include "bench/Selection.h"

#include <stdexcept>
#include <utility>

#include "embedded/database/Entity.h"

namespace velt::bench {

Selection::Selection(std::string drawing)
    : drawing_(database::Drawing::parse(std::move(drawing), "benchmark")) {
  for (const VkDbObjectId id : drawing_->entities()) {
    const auto object = database::resolve(id);
    if (object && database::Entity(*object).space() == database::Space::Model) ids_.push_back(id);
  }
}

void Selection::query(TqVector<PROPINFO>& rows) {
  CStdStr<wchar_t> errorText;
  bool mergeFlag = false;
  bool typeFlag = false;
  if (!GetPropertiesInfo(entries(), rows, errorText, mergeFlag, typeFlag)) {
    throw std::runtime_error("GetPropertiesInfo: " + palette::toUtf8(errorText.str()));
  }
}

void clearValues(TqVector<PROPINFO>& rows) {
  for (PROPINFO& row : rows)
    VariantClear(&row.value);
}

}  // namespace velt::bench
