#include <cmath>

#include "palette/Palette.h"

namespace velt::palette {

namespace {

// The variable's whole number where it lies in the range.
std::optional<int> numberBetween(int least, int most, std::optional<double> value) {
  if (!value || !(*value >= least && *value <= most)) return std::nullopt;
  return static_cast<int>(*value);
}

std::optional<int> places(std::optional<double> value) {
  constexpr double most = 8;
  if (!value || std::isnan(*value)) return std::nullopt;
  return static_cast<int>(*value < 0 ? 0 : std::fmin(*value, most));
}

// What DIMZIN says of zeros: of feet and inches in its last two bits, of decimal numbers in the two before.
void setZeros(NumberStyle& style, int zeros) {
  constexpr int noLeading = 4, noTrailing = 8, ofFeet = 3;
  style.hasLeadingZeros = (zeros & noLeading) == 0;
  style.hasTrailingZeros = (zeros & noTrailing) == 0;
  style.hasZeroFeet = (zeros & ofFeet) == 1 || (zeros & ofFeet) == 2;
  style.hasZeroInches = (zeros & ofFeet) == 1 || (zeros & ofFeet) == 3;
}

}  // namespace

NumberStyle NumberStyle::ofVariables(const Variable& variable) {
  NumberStyle style;
  style.lengthPlaces = places(variable("LUPREC")).value_or(style.lengthPlaces);
  style.anglePlaces = places(variable("AUPREC")).value_or(style.anglePlaces);
  if (const auto format = numberBetween(1, 5, variable("LUNITS")))
    style.lengthFormat = static_cast<LengthFormat>(*format);
  if (const auto format = numberBetween(0, 4, variable("AUNITS")))
    style.angleFormat = static_cast<AngleFormat>(*format);
  const double base = variable("ANGBASE").value_or(0);
  style.angleBase = std::isfinite(base) ? base : 0;
  style.isClockwise = numberBetween(0, 1, variable("ANGDIR")) == 1;
  style.isAsTyped = numberBetween(0, 1, variable("UNITMODE")) == 1;
  if (const auto zeros = numberBetween(0, 15, variable("DIMZIN"))) setZeros(style, *zeros);
  return style;
}

}  // namespace velt::palette
