#include "palette/writing/Meaning.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "palette/rows/NumberKinds.h"

namespace velt::palette {

namespace {

std::optional<double> quantityOf(const PlainValue& value) {
  if (const auto* const flag = std::get_if<bool>(&value)) return *flag ? 1 : 0;
  return numberOf(value);
}

bool isNear(double a, double b) {
  constexpr double rounding = 1e-6;
  return a == b || std::fabs(a - b) <= rounding * std::max(std::fabs(a), std::fabs(b));
}

bool isSameAngle(double a, double b) {
  constexpr double rounding = 1e-6;
  return std::fabs(std::remainder(a - b, 2 * std::numbers::pi)) <= rounding;
}

// Letters outside of ASCII have cases, too, which only the host can tell.
std::string comparable(const std::string& text) {
  std::string letters;
  std::copy_if(text.begin(), text.end(), std::back_inserter(letters),
               [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != ' '; });
  return letters;
}

}  // namespace

bool mayMean(const PROPINFO& row, const PlainValue& put, const PlainValue& now) {
  if (row.valueType == VT_DISPATCH) return true;
  const std::optional<double> a = quantityOf(put);
  const std::optional<double> b = quantityOf(now);
  if (a && b) return isAngle(row.customType) ? isSameAngle(*a, *b) : isNear(*a, *b);
  const auto* const text = std::get_if<std::string>(&put);
  const auto* const other = std::get_if<std::string>(&now);
  if (text != nullptr && other != nullptr) return equalIgnoringCase(comparable(*text), comparable(*other));
  return true;
}

}  // namespace velt::palette
