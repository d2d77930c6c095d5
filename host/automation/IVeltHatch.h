#pragma once

// The hatch's own interface. Callers outside the host use one entry of it, by its place in the function
// table; the entries before it are the host's and only hold that place.

#include <utility>

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"

namespace velt::automation {

template <int Slot>
using SlotNumber = std::integral_constant<int, Slot>;

// Adds the entries with the (zero-based) numbers First to Last, one each, to the function table of IDispatch.
template <int First, int Last>
struct HostSlots : HostSlots<First, Last - 1> {
  using HostSlots<First, Last - 1>::hostSlot;
  virtual HRESULT hostSlot(SlotNumber<Last>) = 0;
};

template <int First>
struct HostSlots<First, First> : IDispatch {
  virtual HRESULT hostSlot(SlotNumber<First>) = 0;
};

}  // namespace velt::automation

struct IVeltHatch : velt::automation::HostSlots<7, 91> {
  // The 93rd entry, counting QueryInterface as the first.
  virtual HRESULT get_PropertyVariant(INT* variant) = 0;
};
