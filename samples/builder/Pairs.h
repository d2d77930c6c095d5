#pragma once

// Group-code/value pairs written down by hand, for entities and objects that no builder has a function for:
//
//   Pairs{subclass("AcDbRay"), point(10, 50, 20, 0), point(11, 0.6, 0.8, 0.0), {70, 1}, {340, handle}}
//
// A list of pairs is put together from single pairs and from lists. A number stands in the drawing as it stands here:
// 20 as "20", 20.0 as "20.0".

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/Numbers.h"

namespace velt::samples {

// Of a record in the drawing.
using Handle = std::uint64_t;

// A pair whose value is written as it is.
struct RawPair {
  int code = 0;
  std::string value{};
};

class Pairs {
 public:
  Pairs() = default;
  Pairs(std::initializer_list<Pairs> lists) {
    for (const Pairs& list : lists)
      append(list);
  }
  // A single pair.
  Pairs(int code, int number) : Pairs(code, dxf::formatInteger(number)) {}
  Pairs(int code, double number) : Pairs(code, dxf::formatReal(number)) {}
  Pairs(int code, Handle handle) : Pairs(code, dxf::formatHandle(handle)) {}
  // Bytes in the drawing's encoding.
  template <std::convertible_to<std::string_view> Text>
  Pairs(int code, const Text& text) : pairs_{{code, std::string(std::string_view(text))}} {}

  void append(const Pairs& others) {
    pairs_.insert(pairs_.end(), others.pairs_.begin(), others.pairs_.end());
  }

  [[nodiscard]] auto begin() const { return pairs_.begin(); }
  [[nodiscard]] auto end() const { return pairs_.end(); }

 private:
  std::vector<RawPair> pairs_;
};

// What follows belongs to this class of the record.
inline Pairs subclass(std::string_view name) {
  return {100, name};
}

template <class X, class Y>
Pairs flatPoint(int code, X x, Y y) {
  return {{code, x}, {code + 10, y}};
}

template <class X, class Y, class Z>
Pairs point(int code, X x, Y y, Z z) {
  return {flatPoint(code, x, y), {code + 20, z}};
}

// The same code for each of the values.
template <class Number>
Pairs each(int code, std::initializer_list<Number> values) {
  Pairs pairs;
  for (const Number value : values)
    pairs.append({code, value});
  return pairs;
}

}  // namespace velt::samples
