#include "dxf/CodePage.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>

namespace velt::dxf {
namespace {

// Holds a converter of the C library. One thread opens and uses it, while a page is made.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (*this) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  explicit operator bool() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  struct Result {
    // Bytes written.
    std::size_t length = 0;
    // The input is the beginning of a longer character.
    bool wantsMore = false;
    // The input was one whole character, and is converted.
    bool complete = false;
  };

  // Converts one character by itself. Converters that compose accents hold a letter back until they are flushed.
  Result convert(char* from, std::size_t fromLength, char* to, std::size_t toLength) const {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    const std::size_t room = toLength;
    Result result;
    if (iconv(handle_, &from, &fromLength, &to, &toLength) == static_cast<std::size_t>(-1)) {
      result.wantsMore = errno == EINVAL;
      return result;
    }
    result.complete = iconv(handle_, nullptr, nullptr, &to, &toLength) != static_cast<std::size_t>(-1);
    result.length = room - toLength;
    return result;
  }

 private:
  iconv_t handle_;
};

struct Decoded {
  char16_t character = 0;
  bool wantsMore = false;
};

Decoded decodeOne(const Converter& converter, unsigned byte, std::optional<unsigned> trail) {
  std::array<char, 2> from{static_cast<char>(byte), static_cast<char>(trail.value_or(0))};
  std::array<char, 16> to{};
  const Converter::Result result = converter.convert(from.data(), trail ? 2 : 1, to.data(), to.size());
  if (!result.complete || result.length != sizeof(char32_t)) return {0, result.wantsMore};
  char32_t character = 0;
  std::memcpy(&character, to.data(), sizeof character);
  return {character <= 0xFFFF ? static_cast<char16_t>(character) : char16_t{0}, false};
}

// The bytes that the page writes for a character. Several byte values may read as the same character.
std::optional<std::uint16_t> preferredBytes(const Converter& converter, char16_t character) {
  const char32_t wide = character;
  std::array<char, sizeof wide> from{};
  std::memcpy(from.data(), &wide, sizeof wide);
  std::array<char, 16> to{};
  const Converter::Result result = converter.convert(from.data(), from.size(), to.data(), to.size());
  if (!result.complete || result.length == 0 || result.length > 2) return std::nullopt;
  unsigned bytes = static_cast<unsigned char>(to[0]);
  if (result.length == 2) bytes = bytes << 8 | static_cast<unsigned char>(to[1]);
  return static_cast<std::uint16_t>(bytes);
}

}  // namespace

std::shared_ptr<const CodePage> CodePage::named(const std::string& converter) {
  static std::mutex guard;
  static std::map<std::string, std::shared_ptr<const CodePage>> pages;
  const std::lock_guard lock(guard);
  std::shared_ptr<const CodePage>& page = pages[converter];
  if (!page) page.reset(new CodePage(converter));
  return page;
}

CodePage::CodePage(const std::string& converter) {
  readConverter(converter);
  for (char16_t ascii = 0; ascii < 0x80; ++ascii) {
    characters_[ascii] = ascii;
    bytes_[ascii] = ascii;
  }
}

void CodePage::readConverter(const std::string& converter) {
  const Converter decoder("UTF-32LE", converter.c_str());
  const Converter encoder(converter.c_str(), "UTF-32LE");
  if (!decoder || !encoder) {
    for (char16_t latin = 0x80; latin <= 0xFF; ++latin)
      characters_[latin] = latin;
    return;
  }
  const auto enter = [&](unsigned bytes, char16_t character) {
    if (character == nothing) return;
    characters_[bytes] = character;
    const bool isFirst = bytes_[character] == 0;
    bytes_[character] = isFirst ? static_cast<std::uint16_t>(bytes)
                                : preferredBytes(encoder, character).value_or(bytes_[character]);
  };
  for (unsigned byte = 0x80; byte <= 0xFF; ++byte) {
    const Decoded single = decodeOne(decoder, byte, std::nullopt);
    enter(byte, single.character);
    if (!single.wantsMore) continue;
    for (unsigned trail = 0x30; trail <= 0xFF; ++trail) {
      enter(byte << 8 | trail, decodeOne(decoder, byte, trail).character);
    }
  }
}

CodePage::Read CodePage::read(std::string_view bytes) const {
  const auto first = static_cast<unsigned char>(bytes[0]);
  if (first >= 0x80 && bytes.size() > 1) {
    const auto trail = static_cast<unsigned char>(bytes[1]);
    const char16_t character = characters_[static_cast<std::size_t>(first) << 8 | trail];
    if (character != nothing) return {character, 2};
  }
  const char16_t character = characters_[first];
  if (first != 0 && character == nothing) return {replacementCharacter, 1};
  return {character, 1};
}

bool CodePage::write(char32_t character, std::string& bytes) const {
  if (character > 0xFFFF) return false;
  const std::uint16_t value = bytes_[character];
  if (value == 0 && character != 0) return false;
  if (value > 0xFF) bytes += static_cast<char>(value >> 8);
  bytes += static_cast<char>(value & 0xFF);
  return true;
}

}  // namespace velt::dxf
