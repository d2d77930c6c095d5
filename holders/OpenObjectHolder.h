#pragma once

// Holds one opened database object, and closes it. The functions that open take the pointer itself: `*holder.put()`.
//
// The pointer is null when an object cannot be opened, so whatever stands there is open and has to be closed, whatever
// status came with it.

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

}  // namespace velt::holders
