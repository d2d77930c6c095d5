#include "view/Svg.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <string_view>

#include "view/Letters.h"

namespace velt::view {
namespace {

// Line weights are shown as on a screen, and thinner lines as a pixel.
constexpr double pixelsPerMillimetre = 96 / 25.4;
constexpr double thinnest = 1;

void append(std::string& text, double number) {
  // A hundredth of a pixel is seen by nobody.
  std::array<char, 64> digits{};
  const double rounded = std::round(number * 100) / 100;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rounded + 0.0).ptr;
  text.append(digits.data(), end);
}

// Short, and as exact as a matrix needs it.
void appendFine(std::string& text, double number) {
  std::array<char, 64> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, 6).ptr;
  text.append(digits.data(), end);
}

// UTF-8, with what XML would take for its own escaped, and without what it does not allow.
std::string escaped(std::wstring_view text) {
  std::string out;
  for (const wchar_t letter : text) {
    const auto code = static_cast<std::uint32_t>(letter);
    const bool isAllowed = (code >= 0x20 || code == '\t') && (code < 0xD800 || code > 0xDFFF)
                           && code < 0x110000 && code != 0xFFFE && code != 0xFFFF;
    if (!isAllowed) {
      out += ' ';
    } else if (letter == L'&') {
      out += "&amp;";
    } else if (letter == L'<') {
      out += "&lt;";
    } else if (letter == L'>') {
      out += "&gt;";
    } else if (letter == L'"') {
      out += "&quot;";
    } else if (code < 0x80) {
      out += static_cast<char>(code);
    } else if (code < 0x800) {
      out += static_cast<char>(0xC0 | code >> 6);
      out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      out += static_cast<char>(0xE0 | code >> 12);
      out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
      out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | code >> 18);
      out += static_cast<char>(0x80 | (code >> 12 & 0x3F));
      out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
      out += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return out;
}

// The same for a text in UTF-8.
std::string escapedUtf8(std::string_view text) {
  std::string out;
  for (const char letter : text) {
    if (letter == '&') {
      out += "&amp;";
    } else if (letter == '<') {
      out += "&lt;";
    } else if (letter == '"') {
      out += "&quot;";
    } else if (static_cast<unsigned char>(letter) >= 0x20) {
      out += letter;
    }
  }
  return out;
}

std::string hex(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text = "#";
  for (const std::uint8_t channel : {red, green, blue}) {
    text += digits[channel >> 4];
    text += digits[channel & 0xF];
  }
  return text;
}

class Writer {
 public:
  Writer(const Picture& picture, const SvgOptions& options, std::ostream& out)
      : picture_(picture), options_(options), out_(out), scale_(scaleOf(options)) {}

  void write() {
    const double height = std::max(1.0, std::ceil((options_.window.high.y - options_.window.low.y) * scale_));
    text_ = R"(<svg xmlns="http://www.w3.org/2000/svg" width=")";
    append(text_, options_.width);
    text_ += R"(" height=")";
    append(text_, height);
    text_ += R"(" viewBox="0 0 )";
    append(text_, options_.width);
    text_ += ' ';
    append(text_, height);
    text_ += "\" data-window=\"" + window()
             + "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    if (!options_.title.empty()) text_ += "<title>" + escapedUtf8(options_.title) + "</title>\n";
    text_ += "<rect width=\"100%\" height=\"100%\" fill=\"" + backgroundColor() + "\"/>\n";
    writeClips();
    const bool hasHighlight = !options_.highlighted.empty();
    if (hasHighlight) text_ += "<g opacity=\"0.35\">\n";
    writeAll(false);
    if (hasHighlight) {
      text_ += "</g>\n<g>\n";
      writeAll(true);
      text_ += "</g>\n";
    }
    text_ += "</svg>\n";
    flush();
  }

 private:
  [[nodiscard]] bool isDark() const { return options_.background == Background::Dark; }
  [[nodiscard]] std::string backgroundColor() const { return isDark() ? "#212830" : "#ffffff"; }
  [[nodiscard]] std::string colorOf(const Ink& ink) const {
    switch (ink.kind) {
      case Ink::Kind::Foreground:
        return isDark() ? "#ffffff" : "#000000";
      case Ink::Kind::Background:
        return backgroundColor();
      default:
        return hex(ink.red, ink.green, ink.blue);
    }
  }
  [[nodiscard]] std::string highlightColor() const { return isDark() ? "#ffa630" : "#e8590c"; }

  [[nodiscard]] Vector2 pixel(Vector2 point) const {
    return {(point.x - options_.window.low.x) * scale_, (options_.window.high.y - point.y) * scale_};
  }

  // What is shown, so that whoever knows the drawing finds places in the picture.
  [[nodiscard]] std::string window() const {
    std::string text;
    for (const Vector2& corner : {options_.window.low, options_.window.high}) {
      for (const double number : {corner.x, corner.y}) {
        std::array<char, 64> digits{};
        text.append(text.empty() ? "" : " ");
        text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
      }
    }
    return text;
  }

  void flush() {
    out_ << text_;
    text_.clear();
  }

  void appendPoints(std::span<const Vector2> points, bool isClosed) {
    std::string before;
    bool isFirst = true;
    for (const Vector2& point : points) {
      const Vector2 there = pixel(point);
      std::string coordinates;
      append(coordinates, there.x);
      coordinates += ' ';
      append(coordinates, there.y);
      // Points that fall on each other need not be said again, but a line needs an end.
      if (coordinates == before && !isFirst) continue;
      text_ += isFirst ? 'M' : 'L';
      text_ += coordinates;
      before = std::move(coordinates);
      wasDot_ = isFirst;
      isFirst = false;
    }
    // A line to where it began is drawn as a dot.
    if (wasDot_) text_ += "h0";
    if (isClosed) text_ += 'Z';
  }

  void writeClips() {
    for (std::size_t i = 0; i < picture_.clips.size(); ++i) {
      const Clip& clip = picture_.clips[i];
      text_ += "<clipPath id=\"c" + std::to_string(i) + "\"" + clipReference(clip.outer) + "><path d=\"";
      appendPoints(clip.outline, true);
      text_ += "\"/></clipPath>\n";
    }
  }

  [[nodiscard]] static std::string clipReference(std::uint32_t clip) {
    return clip == none ? "" : " clip-path=\"url(#c" + std::to_string(clip) + ")\"";
  }

  void writeAll(bool highlighted) {
    std::uint32_t clip = none;
    std::uint32_t entity = none;
    const auto change = [&](std::uint32_t nextClip, std::uint32_t nextEntity) {
      if (clip == nextClip && entity == nextEntity) return;
      if (entity != none) text_ += "</g>\n";
      if (nextEntity != none) {
        text_ += "<g" + clipReference(nextClip);
        if (options_.nameOf) text_ += " data-entity=\"" + escapedUtf8(options_.nameOf(nextEntity)) + "\"";
        text_ += ">\n";
      }
      clip = nextClip;
      entity = nextEntity;
    };
    for (const Primitive& primitive : picture_.primitives) {
      if (options_.highlighted.contains(primitive.entity) != highlighted) continue;
      if (!primitive.box.meets(options_.window)) continue;
      change(primitive.clip, primitive.entity);
      writePrimitive(primitive, highlighted);
      constexpr std::size_t enough = 1 << 16;
      if (text_.size() > enough) flush();
    }
    change(none, none);
  }

  void writePrimitive(const Primitive& primitive, bool highlighted) {
    const std::string color = highlighted && primitive.ink.kind != Ink::Kind::Background
                                  ? highlightColor()
                                  : colorOf(primitive.ink);
    switch (primitive.shape) {
      case Shape::Path:
        return writePath(primitive, color, highlighted);
      case Shape::Fill:
        return writeFill(primitive, color);
      case Shape::Text:
        return writeText(picture_.texts[primitive.first], color, primitive.opacity);
    }
  }

  void writeParts(const Primitive& primitive) {
    for (std::uint32_t part = primitive.first; part < primitive.first + primitive.count; ++part) {
      const Part& of = picture_.parts[part];
      appendPoints(std::span(picture_.points).subspan(of.firstPoint, of.pointCount), of.isClosed);
    }
  }

  void writeOpacity(const char* name, float opacity) {
    if (opacity >= 1) return;
    text_ += ' ';
    text_ += name;
    text_ += "=\"";
    append(text_, opacity);
    text_ += '"';
  }

  void writePath(const Primitive& primitive, const std::string& color, bool highlighted) {
    double width =
        std::max(primitive.width > 0 ? primitive.width * scale_ : primitive.lineweight * pixelsPerMillimetre,
                 thinnest);
    if (highlighted) width += 1;
    text_ += "<path d=\"";
    writeParts(primitive);
    text_ += "\" stroke=\"" + color + "\"";
    if (std::abs(width - 1) > 1e-3) {
      text_ += " stroke-width=\"";
      append(text_, width);
      text_ += '"';
    }
    // A broad line ends where it ends, with corners.
    if (primitive.width > 0) text_ += R"( stroke-linecap="butt" stroke-linejoin="miter")";
    if (primitive.dashes != none) writeDashes(picture_.dashes[primitive.dashes], width, primitive.width > 0);
    writeOpacity("stroke-opacity", primitive.opacity);
    text_ += "/>\n";
  }

  void writeDashes(const std::vector<double>& dashes, double width, bool isBroad) {
    text_ += " stroke-dasharray=\"";
    for (std::size_t i = 0; i < dashes.size(); ++i) {
      if (i > 0) text_ += ' ';
      double size = dashes[i] * scale_;
      // Without a length, nothing would be seen of a dot on a line with plain ends.
      if (i % 2 == 0) size = std::max(size, std::min(width, 1.0));
      append(text_, std::max(size, 0.1));
    }
    text_ += '"';
    if (!isBroad) text_ += R"( stroke-linecap="butt")";
  }

  void writeFill(const Primitive& primitive, const std::string& color) {
    text_ += "<path d=\"";
    writeParts(primitive);
    text_ += "\" fill=\"" + color + "\" fill-rule=\"evenodd\"";
    writeOpacity("fill-opacity", primitive.opacity);
    text_ += "/>\n";
  }

  void writeText(const Text& text, const std::string& color, float opacity) {
    const double capitals = length(text.up) * scale_;
    const double across = length(text.right) * scale_;
    if (!(capitals > 0) || !(across > 0)) return;
    const Vector2 origin = pixel(text.origin);
    text_ += "<text font-size=\"";
    append(text_, std::max(capitals / capitalHeight, 0.01));
    text_ += "\" transform=\"matrix(";
    const double factor = scale_ / capitals;
    for (const double number :
         {text.right.x * factor, -text.right.y * factor, -text.up.x * factor, text.up.y * factor}) {
      appendFine(text_, number);
      text_ += ' ';
    }
    append(text_, origin.x);
    text_ += ' ';
    append(text_, origin.y);
    text_ += ")\" fill=\"" + color + "\" font-family=\"";
    if (!text.fontFamily.empty()) text_ += "'" + escaped(text.fontFamily) + "',";
    text_ += "Arial,'Liberation Sans',sans-serif\"";
    if (text.anchor > 0) text_ += text.anchor < 1 ? " text-anchor=\"middle\"" : " text-anchor=\"end\"";
    if (text.isBold) text_ += " font-weight=\"bold\"";
    if (text.isItalic) text_ += " font-style=\"italic\"";
    if (text.isUnderlined || text.isOverlined || text.isStruckOut) {
      std::string lines;
      if (text.isUnderlined) lines += " underline";
      if (text.isOverlined) lines += " overline";
      if (text.isStruckOut) lines += " line-through";
      text_ += " text-decoration=\"" + lines.substr(1) + '"';
    }
    writeOpacity("fill-opacity", opacity);
    text_ += " xml:space=\"preserve\">" + escaped(text.wording) + "</text>\n";
  }

  const Picture& picture_;
  const SvgOptions& options_;
  std::ostream& out_;
  double scale_;
  std::string text_{};
  bool wasDot_ = false;
};

}  // namespace

double scaleOf(const SvgOptions& options) {
  return options.width / (options.window.high.x - options.window.low.x);
}

Box windowAround(const Box& extents) {
  if (extents.high.x < extents.low.x || extents.high.y < extents.low.y) return {{0, 0}, {1, 1}};
  const double size = std::max(extents.high.x - extents.low.x, extents.high.y - extents.low.y);
  const double room = size > 0 ? 0.02 * size : 0.5;
  // What is tall and thin gets more room beside it, or nothing would be seen of it.
  constexpr double tallest = 3;
  const double missing = (extents.high.y - extents.low.y) / tallest - (extents.high.x - extents.low.x);
  const double beside = room + std::max(0.0, missing) / 2;
  return {extents.low - Vector2{beside, room}, extents.high + Vector2{beside, room}};
}

void writeSvg(const Picture& picture, const SvgOptions& options, std::ostream& out) {
  Writer(picture, options, out).write();
}

}  // namespace velt::view
