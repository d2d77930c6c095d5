#include "bench/Selection.h"

#include <stdexcept>
#include <utility>

#include "embedded/database/Entity.h"
#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltBaseObject.h"

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

void Selection::forget() {
  for (const VeltPropData* const entry : std::as_const(entries())) {
    holders::InterfaceHolder<IVeltBaseObject> object;
    VkDbObjectId id;
    id.setFromOldId(entry->oldId);
    if (FAILED(holders::query(entry->pDispatch, IID_IVeltBaseObject, object))
        || FAILED(object->SetObjectId(id, VkDbObjectId(), nullptr))) {
      throw std::runtime_error("an object cannot be bound to its entity");
    }
  }
}

void clearValues(TqVector<PROPINFO>& rows) {
  for (PROPINFO& row : rows)
    VariantClear(&row.value);
}

}  // namespace velt::bench
