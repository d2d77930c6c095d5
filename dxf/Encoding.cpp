#include "dxf/Encoding.h"

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "dxf/Numbers.h"

namespace velt::dxf {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char32_t), "wide texts are UTF-32");

struct PageName {
  std::string_view drawingName;
  std::string_view converter;
};

// Pages whose names in drawings do not end in a number.
constexpr std::array pageNames{
    // clang-format off
    //       in drawings   converter
    PageName{"mac-roman",  "MACINTOSH"},
    PageName{"big5",       "CP950"},
    PageName{"gb2312",     "CP936"},
    PageName{"ksc5601",    "CP949"},
    PageName{"johab",      "CP1361"},
    // clang-format on
};

// Indexed by the digit n of \M+nXXXX.
constexpr std::array<std::string_view, 6> escapedPages{"", "CP932", "CP950", "CP949", "CP1361", "CP936"};

constexpr bool isHighSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// "1252" of "ansi_1252" when the prefix is "ansi_"; nothing when no number follows.
std::optional<std::string> numberAfter(std::string_view prefix, std::string_view name) {
  if (!name.starts_with(prefix)) return std::nullopt;
  const auto number = parseInteger<std::uint16_t>(name.substr(prefix.size()));
  return number ? std::optional(std::to_string(*number)) : std::nullopt;
}

CodePage::Read readUtf8(std::string_view bytes) {
  const auto byte = [&](std::size_t i) {
    return i < bytes.size() ? static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) : 0U;
  };
  const std::uint32_t first = byte(0);
  if (first < 0x80) return {first, 1};
  std::size_t length = 0;
  std::uint32_t lowest = 0;
  std::uint32_t character = 0;
  if ((first & 0xE0) == 0xC0) {
    length = 2, lowest = 0x80, character = first & 0x1F;
  } else if ((first & 0xF0) == 0xE0) {
    length = 3, lowest = 0x800, character = first & 0x0F;
  } else if ((first & 0xF8) == 0xF0) {
    length = 4, lowest = 0x10000, character = first & 0x07;
  } else {
    return {replacementCharacter, 1};
  }
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {replacementCharacter, i};
    character = character << 6 | (byte(i) & 0x3F);
  }
  const bool isValid = character >= lowest && character <= 0x10FFFF && !isHighSurrogate(character)
                       && !isLowSurrogate(character);
  return {isValid ? character : replacementCharacter, isValid ? length : 1};
}

void writeUtf8(char32_t character, std::string& bytes) {
  const auto put = [&](char32_t byte) { bytes += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

void writeEscape(char32_t unit, std::string& bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  bytes += "\\U+";
  for (int shift = 12; shift >= 0; shift -= 4)
    bytes += digits[unit >> shift & 0xF];
}

std::optional<std::uint32_t> hexadecimal(std::string_view digits) {
  if (digits.size() != 4) return std::nullopt;
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return error == std::errc{} && end == digits.data() + digits.size() ? std::optional(value) : std::nullopt;
}

std::optional<CodePage::Read> readUnicodeEscape(std::string_view bytes) {
  constexpr std::size_t length = 7;
  if (!bytes.starts_with("\\U+") || bytes.size() < length) return std::nullopt;
  const auto unit = hexadecimal(bytes.substr(3, 4));
  if (!unit) return std::nullopt;
  if (isHighSurrogate(*unit)) {
    const std::string_view next = bytes.substr(length);
    const auto low = next.starts_with("\\U+") ? hexadecimal(next.substr(3, 4)) : std::nullopt;
    if (low && isLowSurrogate(*low)) {
      return CodePage::Read{0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00), 2 * length};
    }
  }
  // A zero would end the text for everyone who counts on a terminator.
  const bool isCharacter = *unit != 0 && !isHighSurrogate(*unit) && !isLowSurrogate(*unit);
  return CodePage::Read{isCharacter ? *unit : replacementCharacter, length};
}

std::optional<CodePage::Read> readMultiByteEscape(std::string_view bytes) {
  constexpr std::size_t length = 8;
  if (!bytes.starts_with("\\M+") || bytes.size() < length || bytes[3] < '1' || bytes[3] > '5')
    return std::nullopt;
  const auto value = hexadecimal(bytes.substr(4, 4));
  if (!value) return std::nullopt;
  const auto page = CodePage::named(std::string(escapedPages[static_cast<std::size_t>(bytes[3] - '0')]));
  std::string character;
  if (*value > 0xFF) character += static_cast<char>(*value >> 8);
  character += static_cast<char>(*value & 0xFF);
  const CodePage::Read read = page->read(character);
  const bool isCharacter = read.length == character.size() && read.character != 0;
  return CodePage::Read{isCharacter ? read.character : replacementCharacter, length};
}

std::optional<CodePage::Read> readEscape(std::string_view bytes) {
  const auto unicode = readUnicodeEscape(bytes);
  return unicode ? unicode : readMultiByteEscape(bytes);
}

bool isCharacter(char32_t character) {
  return character <= 0x10FFFF && !isHighSurrogate(character) && !isLowSurrogate(character);
}

// Whether the text begins with what decode() takes for an escape.
bool looksLikeEscape(std::wstring_view text) {
  constexpr std::size_t longestEscape = 8;
  std::string ascii;
  for (const wchar_t wide : text.substr(0, longestEscape))
    ascii += wide < 0x80 ? static_cast<char>(wide) : '?';
  return readEscape(ascii).has_value();
}

}  // namespace

Encoding Encoding::ofCodePage(std::string_view drawingCodePage) {
  const std::string wanted = lowerCase(trimmed(drawingCodePage));
  if (wanted == "utf-8" || wanted == "utf8" || wanted == "ansi_65001") return utf8();
  std::string converter = "CP1252";
  if (const auto windows = numberAfter("ansi_", wanted)) converter = "CP" + *windows;
  if (const auto dos = numberAfter("dos", wanted)) converter = "CP" + *dos;
  if (const auto iso = numberAfter("8859_", wanted)) converter = "ISO-8859-" + *iso;
  if (const auto iso = numberAfter("iso8859-", wanted)) converter = "ISO-8859-" + *iso;
  for (const PageName& page : pageNames) {
    if (page.drawingName == wanted) converter = page.converter;
  }
  return {CodePage::named(converter), converter};
}

Encoding Encoding::ofDrawing(std::string_view version, std::string_view drawingCodePage) {
  // Versions are numbered upwards with the same number of digits, so their names compare as texts.
  constexpr std::string_view firstInUtf8 = "AC1021";
  version = trimmed(version);
  const bool isKnownVersion = version.size() == firstInUtf8.size() && version.starts_with("AC");
  if (isKnownVersion && version >= firstInUtf8) return utf8();
  return ofCodePage(drawingCodePage);
}

std::wstring Encoding::decode(std::string_view bytes) const {
  std::wstring text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    // Character by character: in double-byte pages a trail byte may look like a backslash.
    CodePage::Read read = page_ ? page_->read(bytes) : readUtf8(bytes);
    if (read.character == U'\\') read = readEscape(bytes).value_or(read);
    text += static_cast<wchar_t>(read.character);
    bytes.remove_prefix(read.length);
  }
  return text;
}

std::string Encoding::encode(std::wstring_view text) const {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t place = 0; place < text.size(); ++place)
    append(text, place, bytes);
  return bytes;
}

std::string Encoding::encodeAt(std::wstring_view text, std::size_t place) const {
  std::string bytes;
  append(text, place, bytes);
  return bytes;
}

void Encoding::append(std::wstring_view text, std::size_t place, std::string& bytes) const {
  auto character = static_cast<char32_t>(text[place]);
  if (!isCharacter(character)) character = replacementCharacter;
  if (character < 0x20) {
    bytes += '^';
    bytes += static_cast<char>(character + '@');
  } else if (character == U'\\' && looksLikeEscape(text.substr(place))) {
    writeEscape(character, bytes);
  } else if (!page_) {
    writeUtf8(character, bytes);
  } else if (!page_->write(character, bytes)) {
    if (character > 0xFFFF) {
      writeEscape(0xD800 + ((character - 0x10000) >> 10), bytes);
      writeEscape(0xDC00 + ((character - 0x10000) & 0x3FF), bytes);
    } else {
      writeEscape(character, bytes);
    }
  }
}

bool Encoding::canHold(wchar_t wide) const {
  const auto character = static_cast<char32_t>(wide);
  if (character < 0x20 || !isCharacter(character)) return false;
  std::string unused;
  return character <= 0xFFFF || !page_ || page_->write(character, unused);
}

}  // namespace velt::dxf
