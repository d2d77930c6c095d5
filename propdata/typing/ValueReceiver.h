#pragma once

#include "host/com/Variant.h"
#include "propdata/typeinfo/ElementReceiver.h"

namespace velt::propdata {

// Where the value of a property goes, or its elements, or both when the expansion broke off.
class ValueReceiver : public ElementReceiver {
 public:
  // The value to fetch into, with what it holds before. Asked for once, after the elements.
  virtual VARIANT& value() = 0;

 protected:
  ~ValueReceiver() = default;
};

}  // namespace velt::propdata
