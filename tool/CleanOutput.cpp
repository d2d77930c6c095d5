#include "tool/CleanOutput.h"

#include <algorithm>

#include "palette/Palette.h"

namespace velt::tool {

namespace {

bool isPlain(char c) {
  return c == '\n' || c == '\t'
         || (static_cast<unsigned char>(c) >= 0x20 && static_cast<unsigned char>(c) < 0x7F);
}

bool isObeyed(wchar_t c) {
  return (c < 0x20 && c != L'\n' && c != L'\t') || (c >= 0x7F && c < 0xA0);
}

// The length of the style that the text begins with; 0 when it begins with none.
std::size_t styleLength(std::wstring_view text) {
  for (const std::wstring_view style : {L"\033[0m", L"\033[1m", L"\033[2m"}) {
    if (text.starts_with(style)) return style.size();
  }
  return 0;
}

std::string cleaned(std::string_view text, bool hasColor) {
  constexpr wchar_t replacement = 0xFFFD;
  std::wstring wide = palette::fromUtf8(text);
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const std::size_t style = hasColor ? styleLength(std::wstring_view(wide).substr(i)) : 0;
    if (style > 0) {
      i += style - 1;
    } else if (isObeyed(wide[i])) {
      wide[i] = replacement;
    }
  }
  return palette::toUtf8(wide);
}

}  // namespace

int CleanOutput::overflow(int character) {
  if (std::char_traits<char>::eq_int_type(character, std::char_traits<char>::eof()))
    return std::char_traits<char>::not_eof(character);
  const char c = std::char_traits<char>::to_char_type(character);
  return xsputn(&c, 1) == 1 ? character : std::char_traits<char>::eof();
}

std::streamsize CleanOutput::xsputn(const char* text, std::streamsize length) {
  pending_.append(text, static_cast<std::size_t>(length));
  // Not within a line: a character may have come in part.
  const std::size_t lineEnd = pending_.rfind('\n');
  return lineEnd == std::string::npos || passOn(lineEnd + 1) ? length : 0;
}

int CleanOutput::sync() {
  return passOn(pending_.size()) && to_.flush() ? 0 : -1;
}

bool CleanOutput::passOn(std::size_t length) {
  const std::string_view lines = std::string_view(pending_).substr(0, length);
  to_ << (std::all_of(lines.begin(), lines.end(), isPlain) ? std::string(lines) : cleaned(lines, hasColor_));
  pending_.erase(0, length);
  return static_cast<bool>(to_);
}

}  // namespace velt::tool
