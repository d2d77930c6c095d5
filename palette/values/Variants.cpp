#include "palette/values/Variants.h"

#include <bit>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include "palette/text/ObjectText.h"

namespace velt::palette {

namespace {

// A type that holds every number of all three types exactly.
std::optional<long double> exactNumber(const PlainValue& value) {
  static_assert(std::numeric_limits<long double>::digits >= std::numeric_limits<std::uint64_t>::digits);
  if (const auto* const integer = std::get_if<std::int64_t>(&value)) return *integer;
  if (const auto* const natural = std::get_if<std::uint64_t>(&value)) return *natural;
  if (const auto* const real = std::get_if<double>(&value)) return *real;
  return std::nullopt;
}

bool isSameReal(double a, double b) {
  const bool areSameBits = std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
  return areSameBits || (std::isnan(a) && std::isnan(b));
}

}  // namespace

std::optional<std::int64_t> integerIn(const VARIANT& value) {
  switch (value.vt) {
    case VT_I1:
      return value.cVal;
    case VT_UI1:
      return value.bVal;
    case VT_I2:
      return value.iVal;
    case VT_UI2:
      return value.uiVal;
    case VT_I4:
    case VT_INT:
      return value.lVal;
    case VT_UI4:
    case VT_UINT:
      return value.ulVal;
    case VT_I8:
      return value.llVal;
    default:
      return std::nullopt;
  }
}

PlainValue plainValueOf(const VARIANT& value) {
  if (const std::optional<std::int64_t> integer = integerIn(value)) return *integer;
  switch (value.vt) {
    case VT_UI8:
      return std::uint64_t{value.ullVal};
    case VT_R4:
      return static_cast<double>(value.fltVal);
    case VT_R8:
      return value.dblVal;
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_BSTR:
      return value.bstrVal != nullptr ? toUtf8(value.bstrVal) : std::string();
    case VT_DISPATCH:
      return objectText(value.pdispVal);
    default:
      return std::monostate();
  }
}

Value owning(const VARIANT& variant) {
  holders::VariantHolder held;
  held.attach(variant);
  return Value(std::move(held));
}

Value textValue(const std::wstring& text) {
  VARIANT made{};
  made.bstrVal = SysAllocString(text.c_str());
  if (made.bstrVal == nullptr) throw std::bad_alloc();
  made.vt = VT_BSTR;
  return owning(made);
}

std::optional<double> numberOf(const PlainValue& value) {
  if (const auto* const real = std::get_if<double>(&value)) return *real;
  if (const auto* const integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
  if (const auto* const natural = std::get_if<std::uint64_t>(&value)) return static_cast<double>(*natural);
  return std::nullopt;
}

bool isSame(const PlainValue& a, const PlainValue& b) {
  const auto* const realA = std::get_if<double>(&a);
  const auto* const realB = std::get_if<double>(&b);
  if (realA != nullptr && realB != nullptr) return isSameReal(*realA, *realB);
  const std::optional<long double> numberA = exactNumber(a);
  const std::optional<long double> numberB = exactNumber(b);
  return numberA && numberB ? *numberA == *numberB : a == b;
}

}  // namespace velt::palette
