#pragma once

// printf-style formatting that knows its arguments.
//
// Formats come from resource libraries that are translated apart from the program, so a format is not trusted to fit
// its arguments. A placeholder takes the next argument when that is of its kind. When it is not, or none is left, the
// placeholder stands in the result as it is; nothing beyond the arguments is ever read.
//
//   %s %ls %S %hs   a string, wide or narrow (precision: at most so many characters)
//   %d %i %u %x %X %o %c   an integer
//   %f %F %e %E %g %G      a floating-point number
//   %%              a percent sign
//
// Flags work as in printf, width and precision up to 4095. Widths and precisions given as arguments ('*') do not.

#include <array>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

template <class CharT>
class CStdStr;

namespace velt::text {

// One argument, of any of the types above. Texts are not copied: they outlive the call.
class FormatArgument {
 public:
  enum class Kind { WideString, NarrowString, Signed, Unsigned, Real };

  FormatArgument(const wchar_t* text) : kind(Kind::WideString), wide(text != nullptr ? text : L"") {}
  FormatArgument(const char* text) : kind(Kind::NarrowString), narrow(text != nullptr ? text : "") {}
  FormatArgument(const std::wstring& text) : kind(Kind::WideString), wide(text) {}
  FormatArgument(const std::string& text) : kind(Kind::NarrowString), narrow(text) {}
  FormatArgument(const CStdStr<wchar_t>& text);
  FormatArgument(const CStdStr<char>& text);
  // Both, because %x of a negative number asks for its bits: those that it has as an int, or as the wider type that
  // it is.
  FormatArgument(std::signed_integral auto number)
      : kind(Kind::Signed),
        signedNumber(number),
        unsignedNumber(
            static_cast<unsigned long long>(static_cast<std::make_unsigned_t<decltype(+number)>>(+number))) {}
  FormatArgument(std::unsigned_integral auto number) : kind(Kind::Unsigned), unsignedNumber(number) {}
  FormatArgument(std::floating_point auto number)
      : kind(Kind::Real), realNumber(static_cast<double>(number)) {}

  Kind kind;
  std::wstring_view wide;
  std::string_view narrow;
  long long signedNumber = 0;
  unsigned long long unsignedNumber = 0;
  double realNumber = 0.0;
};

// Characters of strings of the other width are converted by their number: a narrow text keeps the lowest byte.
std::wstring formatWide(std::wstring_view format, const FormatArgument* arguments, std::size_t count);
std::string formatNarrow(std::string_view format, const FormatArgument* arguments, std::size_t count);

// A null format gives the empty text.
template <class CharT, class... Arguments>
std::basic_string<CharT> formatted(const CharT* format, const Arguments&... arguments) {
  const std::array<FormatArgument, sizeof...(Arguments)> list{FormatArgument(arguments)...};
  if (format == nullptr) return {};
  if constexpr (std::same_as<CharT, wchar_t>) {
    return formatWide(format, list.data(), list.size());
  } else {
    return formatNarrow(format, list.data(), list.size());
  }
}

}  // namespace velt::text
