#include "embedded/automation/hatches/HatchObject.h"

#include "embedded/automation/model/Guard.h"

namespace velt::automation {

HRESULT HatchObject::get_PropertyVariant(INT* variant) {
  if (variant == nullptr) return E_POINTER;
  return guarded([&] {
    *variant = kind().variant(subject());
    return S_OK;
  });
}

}  // namespace velt::automation
