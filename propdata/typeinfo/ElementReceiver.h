#pragma once

#include <cstdint>

#include "host/com/Types.h"
#include "host/com/Variant.h"

namespace velt::propdata {

// Takes the elements that a property is split into, in this order. Whatever is thrown ends the expansion.
class ElementReceiver {
 public:
  // At most so many follow, a header included. Called once it is known that the property can be split.
  virtual void expect(std::uint32_t count) = 0;
  // The property is grouped: a row stands before those of its elements.
  virtual void addHeader() = 0;
  // The header, if any, came before; what follows are elements.
  virtual void beginElements() = 0;
  // The value goes over to the receiver, unless it throws. The label may be null.
  virtual void addElement(const OLECHAR* label, DWORD cookie, const VARIANT& value) = 0;

 protected:
  ~ElementReceiver() = default;
};

}  // namespace velt::propdata
