#pragma once

// The automation object of a hatch: it tells its variant through an interface of its own.

#include "embedded/automation/model/AutomationObject.h"

namespace velt::automation {

// Fills the entries of a hatch's function table that are only there to keep the later ones in their places.
template <class Base>
class HeldSlots : public Base {
 public:
  using Base::Base;

#define VELT_HELD_SLOT(number)       \
  HRESULT hostSlot##number() final { \
    return E_NOTIMPL;                \
  }
  VELT_HATCH_HOST_SLOTS(VELT_HELD_SLOT)
#undef VELT_HELD_SLOT
};

class HatchObject final : public HeldSlots<AutomationObject<IVeltHatch>> {
 public:
  using HeldSlots::HeldSlots;

  // What its class's table says (see AutomationClass::variant); on failure the argument stays as it is.
  HRESULT get_PropertyVariant(INT* variant) override;
};

}  // namespace velt::automation
