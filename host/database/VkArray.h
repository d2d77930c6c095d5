#pragma once

// VkArray: the host's growing array. A palette gets the ids of the entities that were written in one.

#include <vector>

// Not shared between threads. SetPropertiesValue appends to the one that the palette gives it.
template <class T>
class VkArray {
 public:
  // Adds a copy at the end.
  VkArray& append(const T& element) {
    elements_.push_back(element);
    return *this;
  }
  // Number of elements.
  int length() const { return static_cast<int>(elements_.size()); }
  bool isEmpty() const { return elements_.empty(); }
  // Indexes are not checked.
  const T& operator[](int index) const { return elements_[static_cast<std::size_t>(index)]; }
  const T& at(int index) const { return elements_[static_cast<std::size_t>(index)]; }

 private:
  std::vector<T> elements_;
};
