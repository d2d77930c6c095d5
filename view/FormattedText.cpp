#include "view/FormattedText.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <cwctype>
#include <utility>

#include "dxf/TextCodes.h"
#include "embedded/automation/geometry/Angle.h"
#include "view/Colors.h"
#include "view/Letters.h"

namespace velt::view {
namespace {

// What cannot be broken: letters of one format, or two texts above each other.
struct Piece {
  std::wstring text{};
  // What stands below it, when it is a stack.
  std::wstring below{};
  TextFormat format{};
  bool isStack = false;
  bool hasBar = false;
  bool isSpace = false;
};

struct Paragraph {
  std::vector<Piece> pieces{};
  // In place of that of the whole text.
  std::optional<double> across{};
};

constexpr double stackedSize = 0.7;
// From line to line, in heights of capital letters.
constexpr double lineDistance = 5.0 / 3;

double lengthOf(const Piece& piece) {
  const double size = piece.format.height * piece.format.widthFactor;
  if (!piece.isStack) return size * view::lengthOf(piece.text);
  return size * stackedSize * std::max(view::lengthOf(piece.text), view::lengthOf(piece.below));
}

double numberIn(const std::wstring& text, double otherwise) {
  wchar_t* end = nullptr;
  const double number = std::wcstod(text.c_str(), &end);
  return end != text.c_str() && std::isfinite(number) ? number : otherwise;
}

// The letters that fonts of tolerance symbols show in place of the plain ones.
wchar_t symbolOf(wchar_t letter) {
  // clang-format off
  static constexpr std::pair<wchar_t, wchar_t> symbols[] = {
    // written  shown
    {L'a',      L'\u2220'},  // angularity
    {L'b',      L'\u27C2'},  // perpendicularity
    {L'c',      L'\u23E5'},  // flatness
    {L'd',      L'\u2313'},  // profile of a surface
    {L'e',      L'\u25CB'},  // roundness
    {L'f',      L'\u2225'},  // parallelism
    {L'g',      L'\u232D'},  // cylindricity
    {L'h',      L'\u2197'},  // runout
    {L'i',      L'\u232F'},  // symmetry
    {L'j',      L'\u2316'},  // position
    {L'k',      L'\u2312'},  // profile of a line
    {L'l',      L'\u24C1'},  // least material
    {L'm',      L'\u24C2'},  // most material
    {L'n',      L'\u2300'},  // diameter
    {L'p',      L'\u24C5'},  // projected
    {L'r',      L'\u25CE'},  // concentricity
    {L's',      L'\u24C8'},  // regardless of size
    {L't',      L'\u2330'},  // total runout
    {L'u',      L'\u23E4'},  // straightness
    {L'v',      L'\u2334'},  // counterbore
    {L'w',      L'\u2335'},  // countersink
    {L'x',      L'\u21A7'},  // depth
  };
  // clang-format on
  for (const auto& [written, shown] : symbols) {
    if (written == letter) return shown;
  }
  return letter;
}

// Whether the file or family of a font is one of tolerance symbols.
bool hasSymbols(std::wstring name) {
  std::transform(name.begin(), name.end(), name.begin(), [](wchar_t letter) {
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter)));
  });
  return name.find(L"gdt") != std::wstring::npos;
}

// Reads the codes from left to right.
class Reader {
 public:
  Reader(std::wstring_view codes, const TextFormat& format) : codes_(codes), format_(format) {}

  std::vector<Paragraph> read() {
    while (!atEnd()) {
      const wchar_t letter = take();
      switch (letter) {
        case L'\\':
          readCode();
          break;
        case L'{':
          formats_.push_back(format_);
          break;
        case L'}':
          // The letters so far are those of the braces.
          finish();
          if (!formats_.empty()) {
            format_ = formats_.back();
            formats_.pop_back();
          }
          break;
        case L'^':
          readCaret();
          break;
        case L'\n':
          newParagraph();
          break;
        case L'\r':
          break;
        case L' ':
        case L'\t':
          addSpace(letter == L'\t' ? L"    " : L" ");
          break;
        default:
          add(letter);
      }
    }
    finish();
    return std::move(paragraphs_);
  }

 private:
  [[nodiscard]] bool atEnd() const { return next_ == codes_.size(); }
  wchar_t take() { return codes_[next_++]; }

  void add(wchar_t letter) { text_ += format_.hasSymbols ? symbolOf(letter) : letter; }

  void finish() {
    if (!text_.empty()) {
      Piece piece{.format = format_};
      piece.text = dxf::decodePercentCodes(text_);
      paragraphs_.back().pieces.push_back(std::move(piece));
    }
    text_.clear();
  }

  void addSpace(std::wstring_view space) {
    finish();
    paragraphs_.back().pieces.push_back({.text = std::wstring(space), .format = format_, .isSpace = true});
  }

  void newParagraph() {
    finish();
    const std::optional<double> across = paragraphs_.back().across;
    paragraphs_.push_back({{}, across});
  }

  // Up to the semicolon, which may be missing at the end.
  std::wstring argument() {
    std::wstring text;
    while (!atEnd()) {
      const wchar_t letter = take();
      if (letter == L';') break;
      text += letter;
    }
    return text;
  }

  void readCaret() {
    if (atEnd()) return add(L'^');
    const wchar_t letter = take();
    switch (letter) {
      case L'J':
        return newParagraph();
      case L'I':
        return addSpace(L"    ");
      case L'M':
        return;
      case L' ':
        return add(L'^');
      default:
        add(L'^');
        --next_;
    }
  }

  void readCode() {
    if (atEnd()) return add(L'\\');
    const wchar_t code = take();
    switch (code) {
      case L'P':
      case L'N':
      case L'X':
        return newParagraph();
      case L'~':
        return add(L'\u00A0');
      case L'U':
      case L'M':
        return readCharacter(code);
      case L'S':
        return readStack();
      case L'p':
        return readParagraph(argument());
      case L'L':
      case L'l':
        change().isUnderlined = code == L'L';
        return;
      case L'O':
      case L'o':
        change().isOverlined = code == L'O';
        return;
      case L'K':
      case L'k':
        change().isStruckOut = code == L'K';
        return;
      case L'H':
        return readHeight(argument());
      case L'W': {
        const double factor = numberIn(argument(), format_.widthFactor);
        if (factor > 0) change().widthFactor = factor;
        return;
      }
      case L'Q':
        change().oblique = automation::radians(std::clamp(numberIn(argument(), 0), -85.0, 85.0));
        return;
      case L'C':
        return readColor(argument());
      case L'c': {
        const auto bgr = static_cast<std::uint32_t>(std::clamp(numberIn(argument(), 0), 0.0, 16777215.0));
        change().ink = inkOfRgb((bgr & 0xFF) << 16 | (bgr & 0xFF00) | bgr >> 16);
        return;
      }
      case L'f':
      case L'F':
        return readFont(argument());
      case L'A':
      case L'T':
        argument();
        return;
      default:
        add(code);
    }
  }

  // What comes next looks different.
  TextFormat& change() {
    finish();
    return format_;
  }

  void readHeight(std::wstring text) {
    const bool isRelative = text.ends_with(L'x') || text.ends_with(L'X');
    const double number = numberIn(text, 0);
    if (number > 0) change().height = isRelative ? number * format_.height : number;
  }

  void readColor(const std::wstring& text) {
    const double index = numberIn(text, 256);
    if (index >= 1 && index <= 255) {
      change().ink = inkOfIndex(static_cast<std::uint32_t>(index));
    } else {
      change().ink.reset();
    }
  }

  // "Arial|b1|i0|c0|p34", or the name of a file of shapes.
  void readFont(const std::wstring& text) {
    TextFormat& format = change();
    format.family = text.substr(0, text.find(L'|'));
    format.hasSymbols = hasSymbols(format.family);
    if (format.hasSymbols || format.family.find(L'.') != std::wstring::npos) format.family.clear();
    format.isBold = text.find(L"|b1") != std::wstring::npos;
    format.isItalic = text.find(L"|i1") != std::wstring::npos;
  }

  // "xqc,t5": of all that it says, which way lines are pushed.
  void readParagraph(const std::wstring& text) {
    const std::size_t place = text.find(L'q');
    if (place == std::wstring::npos || place + 1 >= text.size()) return;
    switch (text[place + 1]) {
      case L'l':
      case L'j':
      case L'd':
        paragraphs_.back().across = 0;
        break;
      case L'c':
        paragraphs_.back().across = 0.5;
        break;
      case L'r':
        paragraphs_.back().across = 1;
        break;
      default:
        paragraphs_.back().across.reset();
    }
  }

  // \U+2205, and \M+183BE of a code page, which is not told here.
  void readCharacter(wchar_t code) {
    const std::size_t digits = code == L'U' ? 4 : 5;
    if (codes_.size() - next_ < digits + 1 || codes_[next_] != L'+') return add(code);
    const std::wstring number(codes_.substr(next_ + 1, digits));
    wchar_t* end = nullptr;
    const unsigned long character = std::wcstoul(number.c_str(), &end, 16);
    if (*end != L'\0') return add(code);
    next_ += digits + 1;
    add(code == L'U' ? static_cast<wchar_t>(character) : L'?');
  }

  // "+0.1^-0.2", "1/2", "1#2".
  void readStack() {
    finish();
    Piece piece{.format = format_, .isStack = true};
    bool isBelow = false;
    while (!atEnd()) {
      wchar_t letter = take();
      if (letter == L';') break;
      const bool isLiteral = letter == L'\\' && !atEnd();
      if (isLiteral) letter = take();
      if (!isLiteral && !isBelow && (letter == L'^' || letter == L'/' || letter == L'#')) {
        isBelow = true;
        piece.hasBar = letter != L'^';
        // A caret is followed by a blank where it would be a code otherwise.
        if (letter == L'^' && !atEnd() && codes_[next_] == L' ') ++next_;
        continue;
      }
      (isBelow ? piece.below : piece.text) += letter;
    }
    piece.text = dxf::decodePercentCodes(piece.text);
    piece.below = dxf::decodePercentCodes(piece.below);
    if (!isBelow) piece.isStack = false;
    paragraphs_.back().pieces.push_back(std::move(piece));
  }

  std::wstring_view codes_;
  std::size_t next_ = 0;
  TextFormat format_;
  std::vector<TextFormat> formats_{};
  std::wstring text_{};
  std::vector<Paragraph> paragraphs_{1};
};

struct Line {
  std::vector<Piece> pieces{};
  double width = 0;
  double height = 0;
  std::optional<double> across{};
};

// Without the spaces at its end, and with the height of its tallest letters.
void finishLine(Line& line, double usualHeight) {
  while (!line.pieces.empty() && line.pieces.back().isSpace)
    line.pieces.pop_back();
  line.width = 0;
  line.height = line.pieces.empty() ? usualHeight : 0;
  for (const Piece& piece : line.pieces) {
    line.width += lengthOf(piece);
    line.height = std::max(line.height, piece.format.height);
  }
}

std::vector<Line> linesOf(const std::vector<Paragraph>& paragraphs, const TextLayout& layout) {
  std::vector<Line> lines;
  for (const Paragraph& paragraph : paragraphs) {
    Line line{.across = paragraph.across};
    std::size_t next = 0;
    double width = 0;
    while (next < paragraph.pieces.size()) {
      // A word, which may consist of several pieces, with the spaces before it.
      std::size_t end = next;
      double word = 0;
      while (end < paragraph.pieces.size() && paragraph.pieces[end].isSpace)
        word += lengthOf(paragraph.pieces[end++]);
      while (end < paragraph.pieces.size() && !paragraph.pieces[end].isSpace)
        word += lengthOf(paragraph.pieces[end++]);
      // The lengths are estimates, so a line that just does not fit may do.
      constexpr double slack = 1.02;
      if (layout.width > 0 && !line.pieces.empty() && width + word > layout.width * slack) {
        finishLine(line, layout.format.height);
        lines.push_back(std::exchange(line, {.across = paragraph.across}));
        width = 0;
        word = 0;
        while (next < end && paragraph.pieces[next].isSpace)
          ++next;
        for (std::size_t i = next; i < end; ++i)
          word += lengthOf(paragraph.pieces[i]);
      }
      width += word;
      line.pieces.insert(line.pieces.end(), paragraph.pieces.begin() + static_cast<std::ptrdiff_t>(next),
                         paragraph.pieces.begin() + static_cast<std::ptrdiff_t>(end));
      next = end;
    }
    finishLine(line, layout.format.height);
    lines.push_back(std::move(line));
  }
  return lines;
}

// Pieces of one format that follow each other are one text.
std::vector<Piece> joined(const std::vector<Piece>& pieces) {
  std::vector<Piece> texts;
  for (const Piece& piece : pieces) {
    const bool goesOn =
        !texts.empty() && !texts.back().isStack && !piece.isStack && texts.back().format == piece.format;
    if (goesOn) {
      texts.back().text += piece.text;
    } else {
      texts.push_back(piece);
    }
  }
  return texts;
}

void placeLine(LaidOutText& text, const Line& line, double start, double across, double baseline) {
  const std::vector<Piece> pieces = joined(line.pieces);
  if (pieces.size() == 1 && !pieces[0].isStack) {
    text.texts.push_back(
        {pieces[0].text, pieces[0].format, {start + across * line.width, baseline}, across, line.width});
    return;
  }
  double reached = start;
  for (Piece piece : pieces) {
    // Who shows a text may leave the blanks before it away.
    const std::size_t blanks = std::min(piece.text.find_first_not_of(L' '), piece.text.size());
    reached += piece.format.height * piece.format.widthFactor * view::lengthOf(piece.text.substr(0, blanks));
    piece.text.erase(0, blanks);
    const double length = lengthOf(piece);
    if (!piece.isStack) {
      if (!piece.text.empty())
        text.texts.push_back({piece.text, piece.format, {reached, baseline}, 0, length});
    } else {
      TextFormat format = piece.format;
      format.height *= stackedSize;
      const double up = piece.format.height * (1 - stackedSize / 2);
      const double size = format.height * format.widthFactor;
      text.texts.push_back(
          {piece.text, format, {reached, baseline + up}, 0, size * view::lengthOf(piece.text)});
      text.texts.push_back({piece.below,
                            format,
                            {reached, baseline - piece.format.height * stackedSize / 2},
                            0,
                            size * view::lengthOf(piece.below)});
      const double middle = baseline + piece.format.height * 0.5;
      if (piece.hasBar) text.bars.push_back({{reached, middle}, {reached + length, middle}, format.ink});
    }
    reached += length;
  }
}

}  // namespace

LaidOutText layOut(std::wstring_view codes, const TextLayout& layout) {
  const std::vector<Line> lines = linesOf(Reader(codes, layout.format).read(), layout);
  double height = 0;
  double width = layout.width;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    height += i == 0 ? lines[i].height : lines[i].height * lineDistance * layout.spacing;
    width = std::max(width, lines[i].width);
  }
  LaidOutText text;
  double baseline = layout.down * height;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Line& line = lines[i];
    baseline -= i == 0 ? line.height : line.height * lineDistance * layout.spacing;
    const double across = line.across.value_or(layout.across);
    // Lines are pushed within the width of the text, which hangs on its point by that side or the middle.
    const double start = -layout.across * width + across * (width - line.width);
    placeLine(text, line, start, across, baseline);
    text.box.include(Vector2{start, baseline});
    text.box.include(Vector2{start + line.width, baseline + line.height});
  }
  return text;
}

}  // namespace velt::view
