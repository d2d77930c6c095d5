#include "palette/text/NumberText.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string>

namespace velt::palette {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool hasDigitsBut0(std::string_view text) {
  return text.find_first_of("123456789") != std::string_view::npos;
}

// The number that the whole text is, written with a point whatever the language. Nothing for one that is too large or too
// small.
std::optional<double> realIn(std::string_view text) {
#ifdef __cpp_lib_to_chars
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
#else  // libc++ reads whole numbers alone so
  if (text.find_first_of("xX") != std::string_view::npos) return std::nullopt;
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  const std::string copy(text);
  char* end = nullptr;
  errno = 0;
  const double number = strtod_l(copy.c_str(), &end, plain);
  const bool isWhole = errno != ERANGE && end == copy.c_str() + copy.size();
#endif
  return isWhole ? std::optional(number) : std::nullopt;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string decimalText(double number, int places) {
  if (std::isnan(number)) return "";
  constexpr double tooLongForFixed = 1e15;
  if (!std::isfinite(number) || std::fabs(number) >= tooLongForFixed) return fmt::format("{:g}", number);
  const std::string text = fmt::format("{:.{}f}", number, places);
  if (hasDigitsBut0(text)) return text;
  if (std::fabs(number) >= leastShown) return fmt::format("{:.4g}", number);
  return text.starts_with('-') ? text.substr(1) : text;
}

std::string withZeros(std::string text, const NumberStyle& style) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  if (!style.hasTrailingZeros) {
    const std::size_t end = text.find_first_not_of("0123456789", point + 1);
    const std::size_t last = text.find_last_not_of('0', end == std::string::npos ? end : end - 1);
    const std::size_t first = last == point ? point : last + 1;
    text.erase(first, end == std::string::npos ? end : end - first);
  }
  const std::size_t digits = text.starts_with('-') ? 1 : 0;
  if (!style.hasLeadingZeros && hasDigitsBut0(text) && text.compare(digits, 2, "0.") == 0)
    text.erase(digits, 1);
  return text;
}

std::string exactText(double number) {
  return std::isnan(number) ? std::string() : fmt::format("{}", number);
}

std::optional<double> decimalIn(std::string_view text) {
  text = trimmed(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty() || !(isDigit(text[0]) || text[0] == '.')) return std::nullopt;
  const std::optional<double> number = realIn(text);
  return number && isNegative ? -*number : number;
}

std::optional<double> unsignedIn(std::string_view text) {
  text = trimmed(text);
  if (text.empty() || !(isDigit(text[0]) || text[0] == '.')) return std::nullopt;
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return decimalIn(text);
  const std::size_t gap = text.find_last_of(" -", slash);
  const std::size_t upper = gap == std::string_view::npos ? 0 : gap + 1;
  const std::optional<double> whole =
      upper == 0 ? std::optional(0.0) : unsignedIn(text.substr(0, text.find_last_not_of(" -", gap) + 1));
  const std::optional<double> above = decimalIn(text.substr(upper, slash - upper));
  const std::optional<double> below = decimalIn(text.substr(slash + 1));
  if (!whole || !above || !below || *above < 0 || *below <= 0) return std::nullopt;
  return *whole + *above / *below;
}

}  // namespace velt::palette
