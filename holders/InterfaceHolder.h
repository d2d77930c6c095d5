#pragma once

// Holds one reference to an interface.

#include "holders/HandedOver.h"
#include "holders/PointerHolder.h"
#include "host/com/IUnknown.h"

namespace velt::holders {

// A Release that throws counts as done: a holder ends in destructors, which have nobody to tell.
struct ReleaseReference {
  template <class Interface>
  void operator()(Interface* object) const noexcept {
    try {
      object->Release();
    } catch (...) {  // NOLINT(bugprone-empty-catch)
    }
  }
};

template <class Interface>
class InterfaceHolder : public PointerHolder<Interface, ReleaseReference> {
 public:
  // Takes over the reference that the caller has.
  [[nodiscard]] static InterfaceHolder owning(Interface* object) {
    InterfaceHolder holder;
    holder.attach(object);
    return holder;
  }
  // Adds a reference of its own.
  [[nodiscard]] static InterfaceHolder sharing(Interface* object) {
    if (object != nullptr) object->AddRef();
    return owning(object);
  }
};

// Queries for an interface into an empty holder. A null object has none: E_NOINTERFACE. A success that yields none is a
// failure too, but not that answer, which has a meaning of its own to who asks: E_POINTER.
template <class Interface>
HRESULT query(IUnknown* object, REFIID iid, InterfaceHolder<Interface>& to) {
  if (object == nullptr) return E_NOINTERFACE;
  void* found = nullptr;
  const HRESULT result = object->QueryInterface(iid, &found);
  if (FAILED(result)) return result;
  if (found == nullptr) return E_POINTER;
  to.attach(static_cast<Interface*>(found));
  return result;
}

}  // namespace velt::holders
