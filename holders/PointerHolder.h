#pragma once

// What all holders of pointers have in common: one resource, given back at the end of the scope.
//
// put() and attach() require an empty holder: an assertion tells of a full one, whose resource would be lost. A resource
// that is moved over replaces the one that was held, which is given back first.

#include <cassert>
#include <utility>

namespace velt::holders {

// GiveBack is called with a pointer that is not null.
template <class Pointee, class GiveBack>
class PointerHolder {
 public:
  PointerHolder() = default;
  explicit PointerHolder(GiveBack giveBack) : giveBack_(giveBack) {}
  PointerHolder(PointerHolder&& other) noexcept : held_(other.detach()), giveBack_(other.giveBack_) {}
  PointerHolder& operator=(PointerHolder&& other) noexcept {
    if (this == &other) return *this;
    reset();
    held_ = other.detach();
    giveBack_ = other.giveBack_;
    return *this;
  }
  ~PointerHolder() { reset(); }

  // For an out-parameter.
  [[nodiscard]] Pointee** put() {
    assert(held_ == nullptr);
    return &held_;
  }
  void attach(Pointee* resource) {
    assert(held_ == nullptr);
    held_ = resource;
  }
  [[nodiscard]] Pointee* detach() { return std::exchange(held_, nullptr); }
  [[nodiscard]] Pointee* get() const { return held_; }
  Pointee* operator->() const { return held_; }
  explicit operator bool() const { return held_ != nullptr; }

  // Gives the resource back before the scope ends.
  void reset() {
    if (Pointee* const given = detach()) giveBack_(given);
  }

 private:
  Pointee* held_ = nullptr;
  [[no_unique_address]] GiveBack giveBack_{};
};

}  // namespace velt::holders
