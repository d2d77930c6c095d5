#pragma once

// IVeltHatch: the hatch's own interface. The layer uses one entry of it, by its place in the function table; the
// entries before it are the host's own, and are declared here only to hold that place.

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"

// The zero-based numbers of the entries that hold their place. Whoever implements the interface implements them by this
// list, too. (Overloads in a chain of templates would say the same, and keep the compiler busy for a minute.)
// clang-format off
#define VELT_HATCH_HOST_SLOTS(ENTRY) \
  ENTRY(7) ENTRY(8) ENTRY(9) \
  ENTRY(10) ENTRY(11) ENTRY(12) ENTRY(13) ENTRY(14) ENTRY(15) ENTRY(16) ENTRY(17) ENTRY(18) ENTRY(19) \
  ENTRY(20) ENTRY(21) ENTRY(22) ENTRY(23) ENTRY(24) ENTRY(25) ENTRY(26) ENTRY(27) ENTRY(28) ENTRY(29) \
  ENTRY(30) ENTRY(31) ENTRY(32) ENTRY(33) ENTRY(34) ENTRY(35) ENTRY(36) ENTRY(37) ENTRY(38) ENTRY(39) \
  ENTRY(40) ENTRY(41) ENTRY(42) ENTRY(43) ENTRY(44) ENTRY(45) ENTRY(46) ENTRY(47) ENTRY(48) ENTRY(49) \
  ENTRY(50) ENTRY(51) ENTRY(52) ENTRY(53) ENTRY(54) ENTRY(55) ENTRY(56) ENTRY(57) ENTRY(58) ENTRY(59) \
  ENTRY(60) ENTRY(61) ENTRY(62) ENTRY(63) ENTRY(64) ENTRY(65) ENTRY(66) ENTRY(67) ENTRY(68) ENTRY(69) \
  ENTRY(70) ENTRY(71) ENTRY(72) ENTRY(73) ENTRY(74) ENTRY(75) ENTRY(76) ENTRY(77) ENTRY(78) ENTRY(79) \
  ENTRY(80) ENTRY(81) ENTRY(82) ENTRY(83) ENTRY(84) ENTRY(85) ENTRY(86) ENTRY(87) ENTRY(88) ENTRY(89) \
  ENTRY(90) ENTRY(91)
// clang-format on

struct IVeltHatch : IDispatch {
#define VELT_HOST_SLOT(number) virtual HRESULT hostSlot##number() = 0;
  VELT_HATCH_HOST_SLOTS(VELT_HOST_SLOT)
#undef VELT_HOST_SLOT

  // Called by: GetPropertiesInfo, for each entity of the class CLSID_VeltHatch; the result is not looked at.
  // Which kind of hatch this is: hatches of one variant have the same properties, and the layer keeps a list of
  // properties for each variant. A small number; only its lowest byte counts. The 93rd entry, counting QueryInterface
  // as the first.
  virtual HRESULT get_PropertyVariant(INT* variant) = 0;
};
