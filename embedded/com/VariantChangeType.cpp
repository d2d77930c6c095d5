// VariantChangeType: converts between integers, reals, currency, flags and text, as automation clients expect it.
//
// Numbers are rounded, halves to the even neighbour; a value that the wanted type cannot hold is DISP_E_OVERFLOW.
// Text is read and written in the same way in every locale: digits, a point, an exponent, blanks around it. What has
// no meaning in the wanted type is DISP_E_TYPEMISMATCH. Dates convert as numbers of days, and not to or from text.

#include <locale.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "embedded/com/VariantTypes.h"
#include "host/com/IDispatch.h"

namespace {

using namespace velt::com;

// With either of them a flag (VT_BOOL) becomes "True" or "False" as a text.
constexpr USHORT alphabeticFlags = 0x02 | 0x10;

struct Currency {
  std::int64_t tenThousandths;
};
constexpr std::int64_t currencyScale = 10000;

using Number = std::variant<std::int64_t, std::uint64_t, double, Currency>;

// Rounds halves to the even neighbour, whatever rounding mode the process has set. The difference is computed exactly,
// so nothing else is taken for a half.
double roundHalfToEven(double value) {
  const double whole = std::trunc(value);
  const double rest = std::abs(value - whole);
  const bool away = rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0);
  return away ? whole + std::copysign(1.0, value) : whole;
}

std::int64_t roundHalfToEven(Currency value) {
  const std::int64_t whole = value.tenThousandths / currencyScale;
  const std::int64_t rest = std::abs(value.tenThousandths % currencyScale);
  const bool away = rest > currencyScale / 2 || (rest == currencyScale / 2 && whole % 2 != 0);
  if (!away) return whole;
  return value.tenThousandths < 0 ? whole - 1 : whole + 1;
}

double toReal(const Number& number) {
  return std::visit(
      [](auto value) {
        if constexpr (std::is_same_v<decltype(value), Currency>) {
          return static_cast<double>(value.tenThousandths) / static_cast<double>(currencyScale);
        } else {
          return static_cast<double>(value);
        }
      },
      number);
}

template <class Integer>
HRESULT toInteger(const Number& number, Integer& result) {
  using Limits = std::numeric_limits<Integer>;
  if (const auto* real = std::get_if<double>(&number)) {
    const double rounded = roundHalfToEven(*real);
    // A double may not hold the maximum exactly. It does hold the number after it, which is a power of two.
    const double end = std::ldexp(1.0, Limits::digits);
    if (!(rounded >= static_cast<double>(Limits::min()) && rounded < end)) return DISP_E_OVERFLOW;
    result = static_cast<Integer>(rounded);
    return S_OK;
  }
  const auto take = [&result](auto value) {
    if (!std::in_range<Integer>(value)) return DISP_E_OVERFLOW;
    result = static_cast<Integer>(value);
    return S_OK;
  };
  if (const auto* large = std::get_if<std::uint64_t>(&number)) return take(*large);
  if (const auto* currency = std::get_if<Currency>(&number)) return take(roundHalfToEven(*currency));
  return take(*std::get_if<std::int64_t>(&number));
}

HRESULT toSingle(const Number& number, float& result) {
  const double real = toReal(number);
  if (std::abs(real) > static_cast<double>(std::numeric_limits<float>::max())) return DISP_E_OVERFLOW;
  result = static_cast<float>(real);
  return S_OK;
}

HRESULT toCurrency(const Number& number, CY& result) {
  if (const auto* currency = std::get_if<Currency>(&number)) {
    result.int64 = currency->tenThousandths;
    return S_OK;
  }
  if (const auto* real = std::get_if<double>(&number)) {
    return toInteger(Number{*real * static_cast<double>(currencyScale)}, result.int64);
  }
  std::int64_t whole = 0;
  if (FAILED(toInteger(number, whole))) return DISP_E_OVERFLOW;
  return __builtin_mul_overflow(whole, currencyScale, &result.int64) ? DISP_E_OVERFLOW : S_OK;
}

// --- reading text
// -----------------------------------------------------------------------------------------------------

constexpr std::wstring_view blanks = L" \t\n\v\f\r";

std::wstring_view textOf(BSTR string) {
  std::wstring_view text(string != nullptr ? string : L"", SysStringLen(string));
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool equalsIgnoringCase(std::wstring_view text, std::wstring_view lowerCase) {
  if (text.size() != lowerCase.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i] >= L'A' && text[i] <= L'Z' ? text[i] + (L'a' - L'A') : text[i];
    if (c != lowerCase[i]) return false;
  }
  return true;
}

struct Numeral {
  // As ASCII, without a plus sign.
  std::string digits;
  bool isInteger = false;
};

// [sign] digits [. digits] [e [sign] digits], with a digit before or after the point.
std::optional<Numeral> readNumeral(std::wstring_view text) {
  std::size_t at = 0;
  const auto skipSign = [&] {
    if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) ++at;
  };
  const auto skipDigits = [&] {
    const std::size_t start = at;
    while (at < text.size() && text[at] >= L'0' && text[at] <= L'9')
      ++at;
    return at - start;
  };
  skipSign();
  std::size_t digits = skipDigits();
  const bool isInteger = at == text.size();
  if (at < text.size() && text[at] == L'.') {
    ++at;
    digits += skipDigits();
  }
  if (digits == 0) return std::nullopt;
  if (at < text.size() && (text[at] == L'e' || text[at] == L'E')) {
    ++at;
    skipSign();
    if (skipDigits() == 0) return std::nullopt;
  }
  if (at != text.size()) return std::nullopt;
  if (text.front() == L'+') text.remove_prefix(1);
  Numeral numeral{{}, isInteger};
  numeral.digits.reserve(text.size());
  for (const wchar_t c : text)
    numeral.digits += static_cast<char>(c);
  return numeral;
}

HRESULT parseNumber(std::wstring_view text, Number& number) {
  const std::optional<Numeral> numeral = readNumeral(text);
  if (!numeral) return DISP_E_TYPEMISMATCH;
  const char* begin = numeral->digits.data();
  const char* end = begin + numeral->digits.size();
  if (numeral->isInteger) {
    std::int64_t small = 0;
    if (std::from_chars(begin, end, small).ec == std::errc{}) {
      number = small;
      return S_OK;
    }
    std::uint64_t large = 0;
    if (std::from_chars(begin, end, large).ec == std::errc{}) {
      number = large;
      return S_OK;
    }
  }
  // Unlike from_chars, strtod tells a number that is too small (near zero) from one that is too large (infinite).
  static const locale_t invariant = newlocale(LC_ALL_MASK, "C", nullptr);
  const double real = strtod_l(begin, nullptr, invariant);
  if (std::isinf(real)) return DISP_E_OVERFLOW;
  number = real;
  return S_OK;
}

// --- writing text
// -----------------------------------------------------------------------------------------------------

HRESULT toText(std::string_view narrow, BSTR& result) {
  result = SysAllocStringLen(nullptr, static_cast<UINT>(narrow.size()));
  if (result == nullptr) return E_OUTOFMEMORY;
  for (std::size_t i = 0; i < narrow.size(); ++i)
    result[i] = static_cast<wchar_t>(narrow[i]);
  return S_OK;
}

HRESULT realToText(double value, int significantDigits, BSTR& result) {
  // Also for the negative zero: in text, zero has no sign.
  if (value == 0) return toText("0", result);
  char buffer[40];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, significantDigits);
  for (char* c = buffer; c != end.ptr; ++c) {
    if (*c == 'e') *c = 'E';
  }
  return toText({buffer, end.ptr}, result);
}

HRESULT currencyToText(Currency value, BSTR& result) {
  char buffer[40];
  char* at = buffer;
  std::uint64_t magnitude = static_cast<std::uint64_t>(value.tenThousandths);
  if (value.tenThousandths < 0) {
    magnitude = 0 - magnitude;
    *at++ = '-';
  }
  at = std::to_chars(at, buffer + sizeof buffer, magnitude / currencyScale).ptr;
  std::uint64_t rest = magnitude % currencyScale;
  if (rest != 0) *at++ = '.';
  for (std::uint64_t place = currencyScale / 10; rest != 0; place /= 10) {
    *at++ = static_cast<char>('0' + rest / place);
    rest %= place;
  }
  return toText({buffer, at}, result);
}

HRESULT numberToText(const Number& number, bool single, BSTR& result) {
  if (const auto* real = std::get_if<double>(&number)) {
    return realToText(
        *real, single ? std::numeric_limits<float>::digits10 + 1 : std::numeric_limits<double>::digits10,
        result);
  }
  if (const auto* currency = std::get_if<Currency>(&number)) return currencyToText(*currency, result);
  char buffer[24];
  char* end = nullptr;
  if (const auto* large = std::get_if<std::uint64_t>(&number)) {
    end = std::to_chars(buffer, buffer + sizeof buffer, *large).ptr;
  } else {
    end = std::to_chars(buffer, buffer + sizeof buffer, *std::get_if<std::int64_t>(&number)).ptr;
  }
  return toText({buffer, end}, result);
}

// --- from one tag to another
// --------------------------------------------------------------------------------------------

HRESULT readNumber(const VARIANT& source, Number& number) {
  switch (source.vt) {
    case VT_EMPTY:
      number = std::int64_t{0};
      return S_OK;
    case VT_I1:
      number = std::int64_t{source.cVal};
      return S_OK;
    case VT_I2:
      number = std::int64_t{source.iVal};
      return S_OK;
    case VT_I4:
    case VT_INT:
      number = std::int64_t{source.lVal};
      return S_OK;
    case VT_I8:
      number = source.llVal;
      return S_OK;
    case VT_UI1:
      number = std::uint64_t{source.bVal};
      return S_OK;
    case VT_UI2:
      number = std::uint64_t{source.uiVal};
      return S_OK;
    case VT_UI4:
    case VT_UINT:
      number = std::uint64_t{source.ulVal};
      return S_OK;
    case VT_UI8:
      number = source.ullVal;
      return S_OK;
    case VT_R4:
      number = double{source.fltVal};
      return S_OK;
    case VT_R8:
    case VT_DATE:
      number = source.dblVal;
      return S_OK;
    case VT_CY:
      number = Currency{source.cyVal.int64};
      return S_OK;
    case VT_BOOL:
      number = std::int64_t{source.boolVal != VARIANT_FALSE ? VARIANT_TRUE : VARIANT_FALSE};
      return S_OK;
    case VT_BSTR:
      return parseNumber(textOf(source.bstrVal), number);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

// True has all bits set: -1, and in an unsigned type its largest number instead of an overflow.
template <class Integer>
HRESULT changeToInteger(const VARIANT& source, Integer& result) {
  if (source.vt == VT_BOOL) {
    result = source.boolVal != VARIANT_FALSE ? static_cast<Integer>(-1) : Integer{0};
    return S_OK;
  }
  Number number;
  const HRESULT read = readNumber(source, number);
  return FAILED(read) ? read : toInteger(number, result);
}

HRESULT changeToBool(const VARIANT& source, VARIANT_BOOL& result) {
  if (source.vt == VT_BSTR) {
    const std::wstring_view text = textOf(source.bstrVal);
    if (equalsIgnoringCase(text, L"true") || equalsIgnoringCase(text, L"#true#")) {
      result = VARIANT_TRUE;
      return S_OK;
    }
    if (equalsIgnoringCase(text, L"false") || equalsIgnoringCase(text, L"#false#")) {
      result = VARIANT_FALSE;
      return S_OK;
    }
  }
  Number number;
  const HRESULT read = readNumber(source, number);
  if (FAILED(read)) return read;
  const bool isZero = toReal(number) == 0;
  result = isZero ? VARIANT_FALSE : VARIANT_TRUE;
  return S_OK;
}

HRESULT changeToText(const VARIANT& source, USHORT flags, BSTR& result) {
  if (source.vt == VT_EMPTY) return toText("", result);
  if (source.vt == VT_DATE) return DISP_E_TYPEMISMATCH;
  if (source.vt == VT_BOOL && (flags & alphabeticFlags) != 0) {
    return toText(source.boolVal != VARIANT_FALSE ? "True" : "False", result);
  }
  Number number;
  const HRESULT read = readNumber(source, number);
  return FAILED(read) ? read : numberToText(number, source.vt == VT_R4, result);
}

HRESULT changeToInterface(const VARIANT& source, VARTYPE type, VARIANT& result) {
  if (source.vt != VT_UNKNOWN && source.vt != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
  result.punkVal = nullptr;
  if (source.punkVal == nullptr) return S_OK;
  void* found = nullptr;
  const HRESULT queried =
      source.punkVal->QueryInterface(type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown, &found);
  if (FAILED(queried)) return DISP_E_TYPEMISMATCH;
  if (type == VT_DISPATCH) {
    result.pdispVal = static_cast<IDispatch*>(found);
  } else {
    result.punkVal = static_cast<IUnknown*>(found);
  }
  return S_OK;
}

// `source` is not a reference, and not of the wanted type. The caller sets the tag of `result` after a success.
HRESULT change(const VARIANT& source, USHORT flags, VARTYPE type, VARIANT& result) {
  Number number;
  HRESULT read = S_OK;
  switch (type) {
    case VT_I1:
      return changeToInteger(source, result.cVal);
    case VT_I2:
      return changeToInteger(source, result.iVal);
    case VT_I4:
    case VT_INT:
      return changeToInteger(source, result.lVal);
    case VT_I8:
      return changeToInteger(source, result.llVal);
    case VT_UI1:
      return changeToInteger(source, result.bVal);
    case VT_UI2:
      return changeToInteger(source, result.uiVal);
    case VT_UI4:
    case VT_UINT:
      return changeToInteger(source, result.ulVal);
    case VT_UI8:
      return changeToInteger(source, result.ullVal);
    case VT_R4:
      read = readNumber(source, number);
      return FAILED(read) ? read : toSingle(number, result.fltVal);
    case VT_DATE:
      if (source.vt == VT_BSTR) return DISP_E_TYPEMISMATCH;
      [[fallthrough]];
    case VT_R8:
      read = readNumber(source, number);
      if (SUCCEEDED(read)) result.dblVal = toReal(number);
      return read;
    case VT_CY:
      read = readNumber(source, number);
      return FAILED(read) ? read : toCurrency(number, result.cyVal);
    case VT_BOOL:
      return changeToBool(source, result.boolVal);
    case VT_BSTR:
      return changeToText(source, flags, result.bstrVal);
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return changeToInterface(source, type, result);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

// Follows a reference. `value` is a bitwise copy of what is referred to, and owns nothing. False for a null reference.
bool follow(const VARIANT& source, VARIANT& value) {
  value = source;
  for (int steps = 0; isByRef(value.vt); ++steps) {
    if (value.byref == nullptr || steps > 1) return false;
    const void* target = value.byref;
    const auto base = static_cast<VARTYPE>(value.vt & ~VT_BYREF);
    if (base == VT_VARIANT) {
      value = *static_cast<const VARIANT*>(target);
      continue;
    }
    value.vt = base;
    value.llVal = 0;
    if (base == VT_DECIMAL) return false;
    std::memcpy(&value.llVal, target, isArray(base) ? sizeof(SAFEARRAY*) : elementSize(base));
  }
  return true;
}

}  // namespace

HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type) {
  if (destination == nullptr || source == nullptr) return E_INVALIDARG;
  if (!isValidVariantType(type) || isByRef(type) || !isValidVariantType(source->vt)) return badVariantType;
  VARIANT value;
  if (!follow(*source, value)) return DISP_E_TYPEMISMATCH;
  if (!isValidVariantType(value.vt)) return badVariantType;
  VARIANT result;
  VariantInit(&result);
  HRESULT changed = S_OK;
  if (value.vt == type) {
    changed = VariantCopy(&result, &value);
  } else if (isArray(value.vt) || isArray(type)) {
    changed = DISP_E_TYPEMISMATCH;
  } else {
    try {
      changed = change(value, flags, type, result);
    } catch (const std::bad_alloc&) {
      changed = E_OUTOFMEMORY;
    }
    if (SUCCEEDED(changed)) result.vt = type;
  }
  if (FAILED(changed)) return changed;
  changed = VariantClear(destination);
  if (FAILED(changed)) {
    VariantClear(&result);
    return changed;
  }
  *destination = result;
  return S_OK;
}
