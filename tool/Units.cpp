#include "tool/Units.h"

#include "tool/DrawingInfo.h"
#include "tool/Sentence.h"

namespace velt::tool {

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
