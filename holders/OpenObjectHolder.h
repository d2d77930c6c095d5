#pragma once

// Holds one opened database object; closes it at the end of its scope.

#include <cassert>
#include <utility>

#include "host/database/OpenObject.h"

namespace velt::propdata {

template <class Object>
class Opened {
 public:
  Opened() = default;
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  ~Opened() { close(); }

  Object*& put() {
    assert(object_ == nullptr);
    return object_;
  }
  Object* get() const { return object_; }
  Object* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  void close() {
    if (Object* const held = std::exchange(object_, nullptr)) held->close();
  }

 private:
  Object* object_ = nullptr;
};

}  // namespace velt::propdata
