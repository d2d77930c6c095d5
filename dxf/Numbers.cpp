#include "dxf/Numbers.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace velt::dxf {

std::string formatReal(double value) {
  if (!std::isfinite(value)) throw std::invalid_argument("a drawing cannot hold a number that is not finite");
  // Plain digits where people write them so; an exponent only where the zeros would outnumber the digits.
  const double size = std::abs(value);
  const bool plain = std::fpclassify(value) == FP_ZERO || (size >= 1e-5 && size < 1e16);
  std::array<char, 32> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          plain ? std::chars_format::fixed : std::chars_format::scientific);
  if (error != std::errc{}) throw std::logic_error("a double needs more room than expected");
  std::string text(buffer.data(), end);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

namespace {

// As std::from_chars, which reads whole numbers alone in libc++. What strtod takes besides is kept from it.
std::from_chars_result readAnyReal(std::string_view text, double& value) {
#ifdef __cpp_lib_to_chars
  return std::from_chars(text.data(), text.data() + text.size(), value);
#else
  if (text.find_first_of("xX") != std::string_view::npos || text.find_first_of("+ \t\n\v\f\r") == 0)
    return {text.data(), std::errc::invalid_argument};
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  const std::string copy(text);
  char* end = nullptr;
  const double read = strtod_l(copy.c_str(), &end, plain);
  const char* const reached = text.data() + (end - copy.c_str());
  if (reached == text.data()) return {reached, std::errc::invalid_argument};
  const bool isInfinite = std::isinf(read) && text.find_first_of("iI") == std::string_view::npos;
  const bool isLost =
      std::fpclassify(read) == FP_ZERO && text.find_first_of("123456789") < text.find_first_of("eE");
  if (isInfinite || isLost) return {reached, std::errc::result_out_of_range};
  value = read;
  return {reached, std::errc{}};
#endif
}

// Most numbers in drawings are a few digits with a point among them. Where these make a whole number below 2^53, divided by
// a power of ten below 10^23, both are exact and the division rounds once: it is the nearest double. False for all other
// texts, which may be numbers too.
bool readFewDigits(std::string_view text, double& number) {
  static constexpr std::array powers{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                     1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};
  const bool isNegative = text.starts_with('-');
  if (isNegative) text.remove_prefix(1);
  if (text.size() >= powers.size()) return false;
  std::uint64_t digits = 0;
  std::size_t point = text.size();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto digit = static_cast<unsigned>(text[i] - '0');
    if (digit <= 9) {
      digits = digits * 10 + digit;
    } else if (text[i] == '.' && point == text.size()) {
      point = i;
    } else {
      return false;
    }
  }
  const std::size_t decimals = point == text.size() ? 0 : text.size() - point - 1;
  constexpr std::uint64_t mostExact = std::uint64_t{1} << 53;
  if (text.size() == (point == text.size() ? 0U : 1U) || digits > mostExact) return false;
  const double size = static_cast<double>(digits) / powers[decimals];
  number = isNegative ? -size : size;
  return true;
}

}  // namespace

bool readReal(std::string_view text, double& number) {
  text = trimmed(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  if (readFewDigits(text, number)) return true;
  double value = 0.0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = readAnyReal(text, value);
  if (end != last || text.empty()) return false;
  if (error == std::errc::result_out_of_range) {
    const bool tooSmall =
        text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos;
    if (tooSmall) number = 0;
    return tooSmall;
  }
  if (error != std::errc{} || !std::isfinite(value)) return false;
  number = value;
  return true;
}

std::optional<std::uint64_t> parseHandle(std::string_view text) {
  text = trimmed(text);
  std::uint64_t value = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, value, 16);
  if (error != std::errc{} || end != last) return std::nullopt;
  return value;
}

std::string formatHandle(std::uint64_t handle) {
  std::array<char, 16> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), handle, 16);
  if (error != std::errc{}) throw std::logic_error("a handle needs more than sixteen digits");
  std::string text(buffer.data(), end);
  for (char& digit : text) {
    if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
  }
  return text;
}

std::string formatInteger(std::int64_t value) {
  return std::to_string(value);
}

}  // namespace velt::dxf
