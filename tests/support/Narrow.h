#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace velt::tests {

// For messages and listings: characters beyond ASCII stand as \u and their number.
inline std::string narrow(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t character : text) {
    const auto code = static_cast<std::uint32_t>(character);
    if (code < 0x80) {
      bytes += static_cast<char>(code);
    } else {
      char digits[16];
      std::snprintf(digits, sizeof digits, "\\u%X", code);
      bytes += digits;
    }
  }
  return bytes;
}

}  // namespace velt::tests
