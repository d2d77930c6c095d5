#include "dxf/TagReader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

#include "dxf/Error.h"

namespace velt::dxf {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
// A drawing in binary form begins with so many bytes of greeting, the last of which is a zero.
constexpr std::size_t binaryGreeting = 22;
constexpr std::size_t progressStep = std::size_t{1} << 20;
// No drawing pads a group code so far: such a line is something else.
constexpr std::ptrdiff_t longestCodeLine = 0xFFFF;

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Whether a code's line are three characters, digits with blanks before them, and a line end, as nearly all writers
// write codes below 1000. Requires four bytes.
//
// Without a branch for each character: how codes are padded varies from pair to pair.
bool isPlainCode(const char* line) noexcept {
  const auto isBlank = [](char c) { return static_cast<unsigned>(c == ' '); };
  const auto isDigit = [](char c) { return static_cast<unsigned>(static_cast<unsigned char>(c - '0') < 10); };
  const unsigned isPadded =
      (isBlank(line[0]) & (isBlank(line[1]) | isDigit(line[1]))) | (isDigit(line[0]) & isDigit(line[1]));
  return (isPadded & isDigit(line[2])) != 0 && (line[3] == '\n' || line[3] == '\r');
}
// The code of such a line. The low half of a digit is its number, and that of a blank is zero.
int plainCode(const char* line) noexcept {
  return (line[0] & 15) * 100 + (line[1] & 15) * 10 + (line[2] & 15);
}

// A line for a message: shortened, and printable.
std::string quoted(std::string_view line) {
  constexpr std::size_t longest = 40;
  line = trimmed(line);
  std::string text(line.substr(0, longest));
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) >= 0x7F) c = '?';
  }
  return "'" + text + (line.size() > longest ? "...'" : "'");
}

}  // namespace

TagReader::TagReader(const std::string& bytes, const std::string& file, const Progress& progress)
    : file_(file),
      progress_(progress),
      first_(bytes.data()),
      last_(bytes.data() + bytes.size()),
      next_(first_) {
  refuseOtherFormats();
  if (rest().starts_with(byteOrderMark)) next_ += byteOrderMark.size();
  reportAt_ = next_ + std::min(progressStep, rest().size());
}

std::optional<Tag> TagReader::next() {
  if (isOver_) return std::nullopt;
  const char* const begin = next_;
  const std::optional<std::int16_t> code = next_ != last_ ? readCode() : std::nullopt;
  if (!code) {
    isOver_ = true;
    if (progress_) progress_(size(), size());
    return std::nullopt;
  }
  if (next_ == last_) fail(begin, "truncated: group code " + std::to_string(*code) + " has no value");
  if (next_ - begin > longestCodeLine) failAtCode(begin);

  const char* const value = next_;
  const auto* const lineEnd = static_cast<const char*>(std::memchr(value, '\n', rest().size()));
  const char* valueEnd = lineEnd == nullptr ? last_ : lineEnd;
  next_ = lineEnd == nullptr ? last_ : lineEnd + 1;
  if (lineEnd != nullptr && valueEnd != value && valueEnd[-1] == '\r') --valueEnd;
  const Tag tag{offsetOf(begin), offsetOf(value), static_cast<std::uint32_t>(valueEnd - value), *code};
  if (tag.code == 0 && trimmed({value, tag.length}) == "EOF") {
    isOver_ = true;
    if (progress_) progress_(size(), size());
  } else if (next_ >= reportAt_) {
    if (progress_) progress_(offsetOf(next_), size());
    reportAt_ = next_ + std::min(progressStep, rest().size());
  }
  return tag;
}

void TagReader::fail(const char* at, const std::string& message) const {
  throw Error(file_, static_cast<std::uint64_t>(std::count(first_, at, '\n')) + 1, message);
}

void TagReader::refuseOtherFormats() const {
  const std::string_view bytes = rest();
  if (bytes.empty()) throw Error(file_, 0, "the file is empty");
  if (bytes.size() > maximumDrawingSize) throw Error(file_, 0, "the drawing is larger than 4 GiB");
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    throw Error(file_, 0, "not a DXF drawing: the text is UTF-16");
  }
}

// Blank lines and the end-of-file character of old systems may close a drawing that lacks EOF.
bool TagReader::onlyBlanksLeft() const {
  return rest().find_first_not_of(std::string_view(" \t\r\n\x1A\0", 6)) == std::string_view::npos;
}

// Moves `next_` to the end of the line. The zero that ends the string stops every loop at the end of the bytes.
std::optional<std::int16_t> TagReader::readCode() {
  const char* const begin = next_;
  if (rest().size() > 4 && isPlainCode(begin) && begin[3] == '\n') {
    next_ = begin + 4;
    return static_cast<std::int16_t>(plainCode(begin));
  }
  const char* at = begin;
  while (isBlank(*at))
    ++at;
  const bool negative = *at == '-';
  if (negative) ++at;
  const char* const digits = at;
  int code = 0;
  while (isDigit(*at) && code <= std::numeric_limits<std::int16_t>::max())
    code = code * 10 + (*at++ - '0');
  const bool isNumber = at != digits && code <= std::numeric_limits<std::int16_t>::max();
  while (isBlank(*at))
    ++at;
  if (isNumber && at == last_) fail(begin, "truncated: group code " + std::to_string(code) + " has no value");
  if (!isNumber || *at != '\n') {
    if (onlyBlanksLeft()) return std::nullopt;
    failAtCode(begin);
  }
  next_ = at + 1;
  return static_cast<std::int16_t>(negative ? -code : code);
}

void TagReader::failAtCode(const char* begin) const {
  const std::string_view left(begin, static_cast<std::size_t>(last_ - begin));
  const std::string_view line = left.substr(0, left.find('\n'));
  const bool atStart = std::count(first_, begin, '\n') == 0;
  if (atStart && left.substr(0, binaryGreeting).find('\0') != std::string_view::npos) {
    throw Error(
        file_, 0,
        "the file is binary, and only ASCII DXF drawings can be read; if it is a drawing, save it from a CAD "
        "program as ASCII DXF");
  }
  fail(begin,
       (atStart ? "not a DXF drawing: " : "") + std::string("expected a group code, found ") + quoted(line));
}

}  // namespace velt::dxf
