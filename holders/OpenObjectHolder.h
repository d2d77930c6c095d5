#pragma once

// Holds one opened database object, and closes it. The functions that open take the pointer itself: `*holder.put()`.
//
// Whoever looks at the status of an opening looks at it through handedOver(), as at the result of any call. Where it is
// not looked at, whatever stands in the holder is open and is closed.

#include "holders/PointerHolder.h"
#include "host/database/OpenObject.h"

namespace velt::holders {

struct CloseObject {
  template <class Object>
  void operator()(Object* object) const {
    object->close();
  }
};

template <class Object>
using OpenObjectHolder = PointerHolder<Object, CloseObject>;

// Whether the object was opened. When it was not, the holder is empty afterwards.
template <class Object>
[[nodiscard]] bool handedOver(Velt::ErrorStatus status, OpenObjectHolder<Object>& object) {
  if (status == Velt::eOk) return true;
  static_cast<void>(object.detach());
  return false;
}

}  // namespace velt::holders
