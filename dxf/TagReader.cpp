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

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
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

class TagReader {
 public:
  TagReader(const std::string& bytes, const std::string& file, const Progress& progress)
      : file_(file),
        progress_(progress),
        first_(bytes.data()),
        last_(bytes.data() + bytes.size()),
        next_(first_) {}

  TagList read() {
    refuseOtherFormats();
    if (rest().starts_with(byteOrderMark)) next_ += byteOrderMark.size();
    TagList list;
    list.begin = offsetOf(next_);
    list.tags.reserve(expectedTags());
    const char* reportAt = next_ + std::min(progressStep, rest().size());
    while (next_ != last_) {
      const std::optional<Tag> tag = readTag();
      if (!tag) break;
      list.tags.push_back(*tag);
      if (tag->code == 0 && trimmed({first_ + tag->offset, tag->length}) == "EOF") break;
      if (next_ >= reportAt && progress_) {
        progress_(offsetOf(next_), size());
        reportAt = next_ + std::min(progressStep, rest().size());
      }
    }
    list.end = offsetOf(next_);
    if (progress_) progress_(size(), size());
    return list;
  }

 private:
  [[nodiscard]] std::string_view rest() const { return {next_, static_cast<std::size_t>(last_ - next_)}; }
  [[nodiscard]] std::uint32_t offsetOf(const char* at) const {
    return static_cast<std::uint32_t>(at - first_);
  }
  [[nodiscard]] std::uint64_t size() const { return static_cast<std::uint64_t>(last_ - first_); }

  [[noreturn]] void fail(const char* at, const std::string& message) const {
    throw Error(file_, static_cast<std::uint64_t>(std::count(first_, at, '\n')) + 1, message);
  }

  void refuseOtherFormats() const {
    const std::string_view bytes = rest();
    if (bytes.empty()) throw Error(file_, 0, "the file is empty");
    if (bytes.size() > maximumDrawingSize) throw Error(file_, 0, "the drawing is larger than 4 GiB");
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
      throw Error(file_, 0, "not a DXF drawing: the text is UTF-16");
    }
  }

  // Counting the lines first is far cheaper than growing the list, and leaves no room unused. The bound keeps a file of
  // empty lines from reserving more than one and a half times its own size.
  [[nodiscard]] std::size_t expectedTags() const {
    const auto lines = static_cast<std::size_t>(std::count(next_, last_, '\n'));
    return std::min(lines / 2 + 1, rest().size() / 8 + 1);
  }

  // Blank lines and the end-of-file character of old systems may close a drawing that lacks EOF.
  [[nodiscard]] bool onlyBlanksLeft() const {
    return rest().find_first_not_of(std::string_view(" \t\r\n\x1A\0", 6)) == std::string_view::npos;
  }

  // Moves `next_` to the end of the pair. Nothing at the end of a drawing without EOF.
  std::optional<Tag> readTag() {
    const char* const begin = next_;
    const std::optional<std::int16_t> code = readCode();
    if (!code) return std::nullopt;
    if (next_ == last_) fail(begin, "truncated: group code " + std::to_string(*code) + " has no value");
    const auto lead = static_cast<std::size_t>(next_ - begin);
    if (lead > std::numeric_limits<std::uint16_t>::max()) failAtCode(begin);

    const char* const value = next_;
    const auto* const lineEnd = static_cast<const char*>(std::memchr(value, '\n', rest().size()));
    const char* valueEnd = lineEnd == nullptr ? last_ : lineEnd;
    next_ = lineEnd == nullptr ? last_ : lineEnd + 1;
    if (lineEnd != nullptr && valueEnd != value && valueEnd[-1] == '\r') --valueEnd;
    return Tag{offsetOf(value), static_cast<std::uint32_t>(valueEnd - value), *code,
               static_cast<std::uint16_t>(lead)};
  }

  // Moves `next_` to the end of the line. The zero that ends the string stops every loop at the end of the bytes.
  std::optional<std::int16_t> readCode() {
    const char* const begin = next_;
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
    if (isNumber && at == last_)
      fail(begin, "truncated: group code " + std::to_string(code) + " has no value");
    if (!isNumber || *at != '\n') {
      if (onlyBlanksLeft()) return std::nullopt;
      failAtCode(begin);
    }
    next_ = at + 1;
    return static_cast<std::int16_t>(negative ? -code : code);
  }

  [[noreturn]] void failAtCode(const char* begin) const {
    const std::string_view left(begin, static_cast<std::size_t>(last_ - begin));
    const std::string_view line = left.substr(0, left.find('\n'));
    const bool atStart = std::count(first_, begin, '\n') == 0;
    if (atStart && left.substr(0, binaryGreeting).find('\0') != std::string_view::npos) {
      throw Error(file_, 0,
                  "the file is binary, and only DXF drawings in text form can be read; if it is a drawing, "
                  "save it as text");
    }
    fail(begin, (atStart ? "not a DXF drawing: " : "") + std::string("expected a group code, found ")
                    + quoted(line));
  }

  const std::string& file_;
  const Progress& progress_;
  const char* const first_;
  const char* const last_;
  const char* next_;
};

}  // namespace

TagList readTags(const std::string& bytes, const std::string& file, const Progress& progress) {
  return TagReader(bytes, file, progress).read();
}

}  // namespace velt::dxf
