#pragma once

// The character sets of old drawings: single-byte and double-byte code pages.

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace velt::dxf {

// Shown for bytes that are not a character. The bytes themselves stay in the drawing.
inline constexpr char32_t replacementCharacter = 0xFFFD;

// Two tables, made once per page from the C library's converter and shared by all drawings. They do not change, so any
// number of threads may use one. All characters of these pages are below U+10000, and ASCII stands for itself in each.
class CodePage {
 public:
  struct Read {
    char32_t character;
    // Bytes that it took.
    std::size_t length;
  };

  // `converter` is a name that iconv_open knows. The answer is never null: when the machine lacks the converter, bytes
  // from 0x80 on are shown as the Latin-1 characters of the same number, and only ASCII is written as bytes.
  [[nodiscard]] static std::shared_ptr<const CodePage> named(const std::string& converter);

  // The first character of `bytes`, which must not be empty. An invalid byte is the replacement character.
  [[nodiscard]] Read read(std::string_view bytes) const;
  // Appends the character's bytes; false, and nothing appended, when the page lacks it.
  [[nodiscard]] bool write(char32_t character, std::string& bytes) const;

 private:
  explicit CodePage(const std::string& converter);
  void readConverter(const std::string& converter);

  static constexpr std::size_t tableSize = 0x10000;
  static constexpr char16_t nothing = 0;

  // The character of a byte, or of lead byte * 256 + trail byte.
  std::array<char16_t, tableSize> characters_{};
  // The byte, or lead byte * 256 + trail byte, of a character.
  std::array<std::uint16_t, tableSize> bytes_{};
};

}  // namespace velt::dxf
