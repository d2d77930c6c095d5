#include "tool/Units.h"

#include "tool/DrawingInfo.h"

namespace velt::tool {

namespace {

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// For the middle of a sentence: "millimeters", but "US survey feet".
std::string inASentence(std::string name) {
  if (name.size() > 1 && lower(name[1]) == name[1]) name[0] = lower(name[0]);
  return name;
}

}  // namespace

Units::Units(const database::Drawing& drawing)
    : length_(inASentence(insertionUnit(drawing).value_or("drawing units"))) {}

std::string Units::of(const palette::Row& row) const {
  switch (row.unit()) {
    case palette::Unit::none:
      return "";
    case palette::Unit::length:
      return length_;
    case palette::Unit::area:
      return "square " + length_;
    case palette::Unit::angle:
      return "radians";
    case palette::Unit::hundredthOfMillimetre:
      return "hundredths of a millimeter";
  }
  return "";
}

}  // namespace velt::tool
