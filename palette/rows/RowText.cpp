// How a row's value is shown.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "palette/Palette.h"
#include "palette/rows/NumberKinds.h"
#include "palette/support/HostCalls.h"
#include "palette/text/AngleText.h"
#include "palette/text/LengthText.h"
#include "palette/text/NumberText.h"
#include "palette/text/ObjectText.h"
#include "palette/values/Variants.h"

namespace velt::palette {

namespace {

std::string realText(const PROPINFO& row, double number, const NumberStyle& style) {
  // A number that the host cannot tell, such as the one width of segments that differ.
  if (std::isnan(number)) return "";
  if (isAngle(row.customType)) return angleText(number, isDirection(row), style);
  if (isLength(row)) return lengthText(number, style);
  if (style.isPrecise) return exactText(number);
  if (isWithoutUnits(row.customType))
    return fmt::format("{:.{}g}", number, std::max(style.lengthPlaces + 1, 6));
  return withZeros(decimalText(number, style.lengthPlaces), style);
}

std::optional<std::string> choiceLabel(const PROPINFO& row, std::int64_t value) {
  for (std::uint32_t i = 0; i < row.choiceValues.length() && i < row.choiceNames.length(); ++i) {
    if (row.choiceValues[i] == value) return oneLine(row.choiceNames[i].str());
  }
  return std::nullopt;
}

// `value` as the row shows one of its own.
std::string textOf(const PROPINFO& row, const VARIANT& value, const NumberStyle& style) {
  if (const std::optional<std::int64_t> integer = integerIn(value)) {
    return choiceLabel(row, *integer).value_or(fmt::format("{}", *integer));
  }
  switch (value.vt) {
    case VT_UI8:
      return fmt::format("{}", value.ullVal);
    case VT_R4:
      return realText(row, static_cast<double>(value.fltVal), style);
    case VT_R8:
      return realText(row, value.dblVal, style);
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE ? "Yes" : "No";
    case VT_BSTR:
      return value.bstrVal != nullptr ? oneLine(value.bstrVal) : "";
    case VT_DISPATCH:
      return objectText(value.pdispVal);
    default:
      return "";
  }
}

}  // namespace

std::string Row::text(const NumberStyle& style) const {
  if (isVarying()) return variesText;
  return orError([&] { return palette::textOf(*record_, record_->value, style); });
}

std::string Row::textOf(const Value& value, const NumberStyle& style) const {
  return orError([&] { return palette::textOf(*record_, value.variant(), style); });
}

PlainValue Row::plain() const {
  return orError([&] { return plainValueOf(record_->value); });
}

}  // namespace velt::palette
