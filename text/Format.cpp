#include "text/Format.h"

#include <algorithm>
#include <cstdio>
#include <type_traits>

#include "text/CStdStr.h"

namespace velt::text {

namespace {

constexpr std::size_t maxWidth = 4095;

struct Placeholder {
  std::string flags;
  std::size_t width = 0;
  bool hasPrecision = false;
  std::size_t precision = 0;
  char conversion = 0;
  // In characters of the format, the percent sign included; 0 when this is not a placeholder.
  std::size_t length = 0;
};

template <class CharT>
char asciiAt(std::basic_string_view<CharT> format, std::size_t at) {
  if (at >= format.size()) return 0;
  const auto code = static_cast<std::make_unsigned_t<CharT>>(format[at]);
  return code < 128 ? static_cast<char>(code) : '\0';
}

template <class CharT>
bool readNumber(std::basic_string_view<CharT> format, std::size_t& at, std::size_t& number) {
  for (char c = asciiAt(format, at); c >= '0' && c <= '9'; c = asciiAt(format, ++at)) {
    number = number * 10 + static_cast<std::size_t>(c - '0');
    if (number > maxWidth) return false;
  }
  return true;
}

template <class CharT>
Placeholder readPlaceholder(std::basic_string_view<CharT> format, std::size_t start) {
  Placeholder found;
  std::size_t at = start + 1;
  for (char c = asciiAt(format, at); c != 0 && std::string_view("-+ #0").find(c) != std::string_view::npos;
       c = asciiAt(format, ++at)) {
    if (found.flags.find(c) == std::string::npos) found.flags += c;
  }
  if (!readNumber(format, at, found.width)) return {};
  if (asciiAt(format, at) == '.') {
    found.hasPrecision = true;
    if (!readNumber(format, ++at, found.precision)) return {};
  }
  while (asciiAt(format, at) != 0
         && std::string_view("hlwLqjzt").find(asciiAt(format, at)) != std::string_view::npos) {
    ++at;
  }
  found.conversion = asciiAt(format, at);
  found.length = at + 1 - start;
  return found;
}

bool isString(const FormatArgument& argument) {
  return argument.kind == FormatArgument::Kind::WideString
         || argument.kind == FormatArgument::Kind::NarrowString;
}

bool fits(const Placeholder& placeholder, const FormatArgument& argument) {
  using Kind = FormatArgument::Kind;
  switch (placeholder.conversion) {
    case 's':
    case 'S':
      return isString(argument);
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
    case 'c':
      return argument.kind == Kind::Signed || argument.kind == Kind::Unsigned;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
      return argument.kind == Kind::Real;
    default:
      return false;
  }
}

template <class CharT>
void appendPadded(std::basic_string<CharT>& result, const Placeholder& placeholder,
                  const std::basic_string<CharT>& text) {
  const std::size_t padding = placeholder.width > text.size() ? placeholder.width - text.size() : 0;
  const bool left = placeholder.flags.find('-') != std::string::npos;
  if (!left) result.append(padding, CharT(' '));
  result += text;
  if (left) result.append(padding, CharT(' '));
}

template <class CharT>
void appendString(std::basic_string<CharT>& result, const Placeholder& placeholder,
                  const FormatArgument& argument) {
  std::basic_string<CharT> text;
  const auto convert = [](auto c) { return static_cast<CharT>(c); };
  if (argument.kind == FormatArgument::Kind::WideString) {
    std::transform(argument.wide.begin(), argument.wide.end(), std::back_inserter(text), convert);
  } else {
    std::transform(argument.narrow.begin(), argument.narrow.end(), std::back_inserter(text),
                   [](char c) { return static_cast<CharT>(static_cast<unsigned char>(c)); });
  }
  if (placeholder.hasPrecision && text.size() > placeholder.precision) text.resize(placeholder.precision);
  appendPadded(result, placeholder, text);
}

template <class CharT>
void appendNumber(std::basic_string<CharT>& result, const Placeholder& placeholder,
                  const FormatArgument& argument) {
  if (placeholder.conversion == 'c') {
    const unsigned long long code = argument.kind == FormatArgument::Kind::Signed
                                        ? static_cast<unsigned long long>(argument.signedNumber)
                                        : argument.unsignedNumber;
    appendPadded(result, placeholder, std::basic_string<CharT>(1, static_cast<CharT>(code)));
    return;
  }
  std::string format = "%" + placeholder.flags;
  if (placeholder.width > 0) format += std::to_string(placeholder.width);
  if (placeholder.hasPrecision) format += "." + std::to_string(placeholder.precision);
  // A double has up to 309 digits before the point.
  char buffer[2 * (maxWidth + 1) + 400];
  const auto print = [&](auto number, const char* lengthPrefix) {
    format += lengthPrefix;
    format += placeholder.conversion;
#pragma GCC diagnostic push
    // The format was put together above, from pieces that were checked.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::snprintf(buffer, sizeof buffer, format.c_str(), number);
#pragma GCC diagnostic pop
  };
  switch (argument.kind) {
    case FormatArgument::Kind::Signed:
      if (std::string_view("xXou").find(placeholder.conversion) != std::string_view::npos) {
        print(argument.unsignedNumber, "ll");
      } else {
        print(argument.signedNumber, "ll");
      }
      break;
    case FormatArgument::Kind::Unsigned:
      print(argument.unsignedNumber, "ll");
      break;
    default:
      print(argument.realNumber, "");
      break;
  }
  for (const char* c = buffer; *c != 0; ++c)
    result += static_cast<CharT>(*c);
}

template <class CharT>
std::basic_string<CharT> fill(std::basic_string_view<CharT> format, const FormatArgument* arguments,
                              std::size_t count) {
  std::basic_string<CharT> result;
  std::size_t next = 0;
  for (std::size_t at = 0; at < format.size();) {
    if (format[at] != CharT('%')) {
      result += format[at++];
      continue;
    }
    if (asciiAt(format, at + 1) == '%') {
      result += CharT('%');
      at += 2;
      continue;
    }
    const Placeholder placeholder = readPlaceholder(format, at);
    if (placeholder.length == 0 || next >= count || !fits(placeholder, arguments[next])) {
      result += format[at++];
      continue;
    }
    if (isString(arguments[next])) {
      appendString(result, placeholder, arguments[next]);
    } else {
      appendNumber(result, placeholder, arguments[next]);
    }
    ++next;
    at += placeholder.length;
  }
  return result;
}

}  // namespace

FormatArgument::FormatArgument(const CStdStr<wchar_t>& text) : FormatArgument(text.str()) {}
FormatArgument::FormatArgument(const CStdStr<char>& text) : FormatArgument(text.str()) {}

std::wstring formatWide(std::wstring_view format, const FormatArgument* arguments, std::size_t count) {
  return fill(format, arguments, count);
}

std::string formatNarrow(std::string_view format, const FormatArgument* arguments, std::size_t count) {
  return fill(format, arguments, count);
}

}  // namespace velt::text
