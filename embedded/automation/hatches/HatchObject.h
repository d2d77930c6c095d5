#pragma once

// The automation object of a hatch: it tells its variant through an interface of its own.

#include "embedded/automation/model/AutomationObject.h"

namespace velt::automation {

class HatchObject final : public AutomationObject<IVeltHatch> {
 public:
  using AutomationObject::AutomationObject;

  // The entries that are only there to keep the later ones in their places.
#define VELT_HELD_SLOT(number)          \
  HRESULT hostSlot##number() override { \
    return E_NOTIMPL;                   \
  }
  VELT_HATCH_HOST_SLOTS(VELT_HELD_SLOT)
#undef VELT_HELD_SLOT

  // What its class's table says (see AutomationClass::variant); on failure the argument stays as it is.
  HRESULT get_PropertyVariant(INT* variant) override;
};

}  // namespace velt::automation
