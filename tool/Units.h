#pragma once

// The units of values in JSON.

#include <string>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"

namespace velt::tool {

class Units {
 public:
  explicit Units(const database::Drawing& drawing);

  // "millimeters", "square millimeters", "drawing units" where the drawing does not say which, "radians" or "hundredths of
  // a millimeter"; empty for a row whose values have no unit.
  [[nodiscard]] std::string of(const palette::Row& row) const;

 private:
  std::string length_;
};

}  // namespace velt::tool
