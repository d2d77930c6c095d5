#pragma once

// Holds one reference to a COM object for the length of a scope.

#include <cassert>
#include <utility>

#include "host/com/HResult.h"

namespace velt::com {

template <class Interface>
class InterfaceHolder {
 public:
  InterfaceHolder() = default;
  InterfaceHolder(InterfaceHolder&& other) noexcept : held_(other.detach()) {}
  InterfaceHolder& operator=(InterfaceHolder&& other) noexcept {
    if (this != &other) attach(other.detach());
    return *this;
  }
  ~InterfaceHolder() { reset(); }

  // Takes over the reference that the caller has.
  [[nodiscard]] static InterfaceHolder owning(Interface* object) {
    InterfaceHolder holder;
    holder.held_ = object;
    return holder;
  }
  // Adds a reference of its own.
  [[nodiscard]] static InterfaceHolder sharing(Interface* object) {
    if (object != nullptr) object->AddRef();
    return owning(object);
  }

  void attach(Interface* object) {
    reset();
    held_ = object;
  }
  [[nodiscard]] Interface* detach() { return std::exchange(held_, nullptr); }
  void reset() {
    if (Interface* object = std::exchange(held_, nullptr)) object->Release();
  }

  // For an out-parameter; the holder must be empty.
  [[nodiscard]] Interface** put() {
    assert(held_ == nullptr);
    return &held_;
  }
  [[nodiscard]] Interface* get() const { return held_; }
  Interface* operator->() const { return held_; }
  explicit operator bool() const { return held_ != nullptr; }

 private:
  Interface* held_ = nullptr;
};

}  // namespace velt::com
