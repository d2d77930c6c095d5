#pragma once

// Holds one reference to an interface. Empty before put(); releases at the end of its scope.

#include <cassert>
#include <utility>

#include "host/com/IUnknown.h"

namespace velt::propdata {

template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(const ComPtr&) = delete;
  ComPtr& operator=(const ComPtr&) = delete;
  ~ComPtr() { release(); }

  Interface** put() {
    assert(pointer_ == nullptr);
    return &pointer_;
  }
  void attach(Interface* pointer) {
    assert(pointer_ == nullptr);
    pointer_ = pointer;
  }
  Interface* detach() { return std::exchange(pointer_, nullptr); }
  Interface* get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }

  void release() {
    if (Interface* const held = detach()) held->Release();
  }

 private:
  Interface* pointer_ = nullptr;
};

// Queries for an interface. A null object, and a success that yields no interface, count as E_NOINTERFACE; a
// pointer that a failing query left behind is not taken over.
template <class Interface>
HRESULT query(IUnknown* object, REFIID iid, ComPtr<Interface>& to) {
  if (object == nullptr) return E_NOINTERFACE;
  void* found = nullptr;
  const HRESULT result = object->QueryInterface(iid, &found);
  if (FAILED(result)) return result;
  if (found == nullptr) return E_NOINTERFACE;
  to.attach(static_cast<Interface*>(found));
  return result;
}

}  // namespace velt::propdata
