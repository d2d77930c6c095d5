#pragma once

// IVeltHatch: the hatch's own interface. The layer uses one entry of it, by its place in the function table; the
// entries before it are the host's own, and are declared here only to hold that place.

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
  // Which kind of hatch this is: hatches of one variant have the same properties, and the layer keeps a list of
  // properties for each variant. A small number; only its lowest byte counts. The 93rd entry, counting QueryInterface
  // as the first.
  virtual HRESULT get_PropertyVariant(INT* variant) = 0;
};
