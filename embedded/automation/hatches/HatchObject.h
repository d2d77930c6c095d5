#pragma once

// The automation object of a hatch: it tells its variant through an interface of its own.

#include "embedded/automation/model/AutomationObject.h"

namespace velt::automation {

// Fills the entries `First` to `Last` of a function table, which are only there to keep the later ones in their places.
template <class Base, int First, int Last>
class HeldSlots : public HeldSlots<Base, First, Last - 1> {
 public:
  using HeldSlots<Base, First, Last - 1>::HeldSlots;
  using HeldSlots<Base, First, Last - 1>::hostSlot;
  HRESULT hostSlot(SlotNumber<Last>) final { return E_NOTIMPL; }
};

template <class Base, int First>
class HeldSlots<Base, First, First> : public Base {
 public:
  using Base::Base;
  using Base::hostSlot;
  HRESULT hostSlot(SlotNumber<First>) final { return E_NOTIMPL; }
};

class HatchObject final : public HeldSlots<AutomationObject<IVeltHatch>, 7, 91> {
 public:
  using HeldSlots::HeldSlots;

  // What its class's table says (see AutomationClass::variant); on failure the argument stays as it is.
  HRESULT get_PropertyVariant(INT* variant) override;
};

}  // namespace velt::automation
