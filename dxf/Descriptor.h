#pragma once

// Holds an open file.

#include <unistd.h>

#include <utility>

namespace velt::dxf {

class Descriptor {
 public:
  Descriptor() = default;
  // Negative: none, as a call that failed answers.
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  [[nodiscard]] int get() const noexcept { return descriptor_; }
  explicit operator bool() const noexcept { return descriptor_ >= 0; }
  // For a function that closes it itself.
  [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

 private:
  int descriptor_ = -1;
};

}  // namespace velt::dxf
