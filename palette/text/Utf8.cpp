#include <algorithm>
#include <cctype>
#include <cstdint>

#include "palette/Palette.h"

namespace velt::palette {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isCharacter(char32_t c) {
  return c < 0x110000 && !(c >= 0xD800 && c < 0xE000);
}

void append(std::string& utf8, char32_t c) {
  const auto byte = [&](char32_t value) { utf8 += static_cast<char>(static_cast<unsigned char>(value)); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | (c >> 6));
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

struct Sequence {
  char32_t character;
  std::size_t length;
};

Sequence readSequence(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  constexpr char32_t leastOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {replacement, 1};
  char32_t c = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {replacement, 1};
    c = (c << 6) | (byte(i) & 0x3FU);
  }
  if (c < leastOfLength[length] || !isCharacter(c)) return {replacement, 1};
  return {c, length};
}

}  // namespace

std::string toUtf8(std::wstring_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const wchar_t c : text) {
    const auto character = static_cast<char32_t>(c);
    append(utf8, isCharacter(character) ? character : replacement);
  }
  return utf8;
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring wide;
  while (!text.empty()) {
    const Sequence sequence = readSequence(text);
    wide += static_cast<wchar_t>(sequence.character);
    text.remove_prefix(sequence.length);
  }
  return wide;
}

std::string oneLine(std::wstring_view text) {
  // Nearly all names and labels, of which a selection by a condition reads thirty of every entity.
  const auto isPlain = [](wchar_t c) { return c >= 0x20 && c < 0x7F; };
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    std::string line(text.size(), ' ');
    std::transform(text.begin(), text.end(), line.begin(), [](wchar_t c) { return static_cast<char>(c); });
    return line;
  }
  std::wstring line;
  for (const wchar_t c : text) {
    if (c == L'\r') continue;
    if (c == L'\n') {
      line += L"\u21B5";
    } else {
      const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
      line += isControl ? L' ' : c;
    }
  }
  return toUtf8(line);
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace velt::palette
