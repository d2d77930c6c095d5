#include "dxf/TextCodes.h"

#include <cstddef>
#include <optional>

#include "dxf/Encoding.h"

namespace velt::dxf {
namespace {

struct Code {
  std::wstring_view shown;
  // In characters, without the percent signs.
  std::size_t length = 0;
};

// The code that a letter after "%%" makes.
std::optional<Code> letterCode(wchar_t letter) {
  switch (letter) {
    case L'c':
    case L'C':
      return Code{L"\u2205", 1};
    case L'd':
    case L'D':
      return Code{L"\u00B0", 1};
    case L'p':
    case L'P':
      return Code{L"\u00B1", 1};
    case L'%':
      return Code{L"%", 1};
    case L'u':
    case L'U':
    case L'o':
    case L'O':
    case L'k':
    case L'K':
      return Code{L"", 1};
    default:
      return std::nullopt;
  }
}

std::optional<wchar_t> numberedCharacter(std::wstring_view digits) {
  if (digits.size() < 3) return std::nullopt;
  unsigned number = 0;
  for (const wchar_t digit : digits.substr(0, 3)) {
    if (digit < L'0' || digit > L'9') return std::nullopt;
    number = number * 10 + static_cast<unsigned>(digit - L'0');
  }
  if (number == 0 || number > 0xFF) return std::nullopt;
  static const Encoding page = Encoding::ofCodePage("ANSI_1252");
  const char byte = static_cast<char>(number);
  return page.decode({&byte, 1})[0];
}

}  // namespace

std::wstring decodePercentCodes(std::wstring_view text) {
  std::wstring shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const std::wstring_view afterSigns = text.starts_with(L"%%") ? text.substr(2) : std::wstring_view{};
    if (const auto code = afterSigns.empty() ? std::nullopt : letterCode(afterSigns[0])) {
      shown += code->shown;
      text.remove_prefix(2 + code->length);
    } else if (const auto character = numberedCharacter(afterSigns)) {
      shown += *character;
      text.remove_prefix(5);
    } else {
      shown += text[0];
      text.remove_prefix(1);
    }
  }
  return shown;
}

std::wstring decodeCaretCodes(std::wstring_view text) {
  std::wstring shown;
  shown.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t next = text[i] == L'^' && i + 1 < text.size() ? text[i + 1] : L'\0';
    if (next == L' ') {
      shown += L'^';
      ++i;
    } else if (next > L'@' && next <= L'_') {
      shown += static_cast<wchar_t>(next - L'@');
      ++i;
    } else {
      shown += text[i];
    }
  }
  return shown;
}

std::wstring encodeCaretCodes(std::wstring_view text) {
  std::wstring coded;
  coded.reserve(text.size());
  for (const wchar_t c : text) {
    if (c == L'^') {
      coded += L"^ ";
    } else if (c > 0 && c < 0x20) {
      coded += L'^';
      coded += static_cast<wchar_t>(c + L'@');
    } else {
      coded += c;
    }
  }
  return coded;
}

}  // namespace velt::dxf
