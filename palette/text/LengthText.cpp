#include "palette/text/LengthText.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <numeric>

#include "palette/text/NumberText.h"

namespace velt::palette {

namespace {

constexpr std::int64_t inchesPerFoot = 12;

bool hasFeet(const NumberStyle& style) {
  return style.lengthFormat == LengthFormat::engineering || style.lengthFormat == LengthFormat::architectural;
}

// How many of the smallest shown parts make one: of fractions halves of halves, else tenths of tenths.
std::int64_t partsOfOne(const NumberStyle& style) {
  const std::int64_t base = style.lengthFormat == LengthFormat::engineering ? 10 : 2;
  std::int64_t parts = 1;
  for (int place = 0; place < style.lengthPlaces; ++place)
    parts *= base;
  return parts;
}

// `hasWhole`: 0 1/2 rather than 1/2.
std::string withFraction(std::int64_t parts, std::int64_t ofOne, bool hasWhole, const NumberStyle& style) {
  const std::int64_t whole = parts / ofOne;
  const std::int64_t rest = parts % ofOne;
  if (rest == 0) return fmt::format("{}", whole);
  const std::int64_t common = std::gcd(rest, ofOne);
  const std::string fraction = fmt::format("{}/{}", rest / common, ofOne / common);
  return whole == 0 && !hasWhole ? fraction
                                 : fmt::format("{}{}{}", whole, style.isAsTyped ? '-' : ' ', fraction);
}

std::string inchesText(std::int64_t parts, std::int64_t ofOne, bool areFeetShown, const NumberStyle& style) {
  if (style.lengthFormat == LengthFormat::architectural)
    return withFraction(parts, ofOne, areFeetShown, style);
  const double inches = static_cast<double>(parts) / static_cast<double>(ofOne);
  return withZeros(fmt::format("{:.{}f}", inches, style.lengthPlaces), style);
}

// In feet and inches, or in fractions.
std::string inParts(double length, const NumberStyle& style) {
  const char* const unit = hasFeet(style) ? "\"" : "";
  const std::int64_t ofOne = partsOfOne(style);
  constexpr double mostParts = 9e15;
  const double exact = std::fabs(length) * static_cast<double>(ofOne);
  const std::int64_t parts = exact < mostParts ? std::llround(exact) : 0;
  if (parts == 0)
    return withZeros(decimalText(length, std::fabs(length) < leastShown ? 0 : style.lengthPlaces), style)
           + unit;
  const char* const sign = length < 0 ? "-" : "";
  if (!hasFeet(style)) return sign + withFraction(parts, ofOne, false, style);
  const std::int64_t feet = parts / (inchesPerFoot * ofOne);
  const std::int64_t rest = parts % (inchesPerFoot * ofOne);
  if (rest == 0 && !style.hasZeroInches) return fmt::format("{}{}'", sign, feet);
  const bool areFeetShown = feet != 0 || style.hasZeroFeet;
  const std::string inches = inchesText(rest, ofOne, areFeetShown, style);
  if (!areFeetShown) return fmt::format("{}{}\"", sign, inches);
  return fmt::format("{}{}'{}{}\"", sign, feet, style.isAsTyped ? "" : "-", inches);
}

std::optional<double> inFeetAndInches(std::string_view text) {
  double feet = 0;
  if (const std::size_t mark = text.find('\''); mark != std::string_view::npos) {
    const std::optional<double> number = unsignedIn(text.substr(0, mark));
    if (!number) return std::nullopt;
    feet = *number;
    text = trimmed(text.substr(mark + 1));
    if (text.empty()) return feet * inchesPerFoot;
    if (text.starts_with('-')) text.remove_prefix(1);
  }
  if (text.ends_with('"')) text.remove_suffix(1);
  const std::optional<double> inches = unsignedIn(text);
  if (!inches) return std::nullopt;
  return feet * inchesPerFoot + *inches;
}

}  // namespace

std::string lengthText(double length, const NumberStyle& style) {
  if (style.isPrecise) return exactText(length);
  if (!std::isfinite(length)) return decimalText(length, style.lengthPlaces);
  switch (style.lengthFormat) {
    case LengthFormat::scientific:
      return withZeros(fmt::format("{:.{}E}", length, style.lengthPlaces), style);
    case LengthFormat::engineering:
    case LengthFormat::architectural:
    case LengthFormat::fractional:
      return inParts(length, style);
    default:
      return withZeros(decimalText(length, style.lengthPlaces), style);
  }
}

std::optional<double> lengthIn(std::string_view text, const NumberStyle& style) {
  text = trimmed(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const std::optional<double> length = hasFeet(style) ? inFeetAndInches(text) : unsignedIn(text);
  if (!length) return std::nullopt;
  return isNegative ? -*length : *length;
}

}  // namespace velt::palette
