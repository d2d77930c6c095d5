#include "bench/Drawings.h"

#include <array>
#include <iterator>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "samples/builder/DrawingBuilder.h"

namespace velt::bench {

namespace {

constexpr std::array layerColors{7, 1, 3, 5, 30};  // of the layers 0, Layer1, Layer2, ...

class Text {
 public:
  Text& pair(int code, std::string_view value) {
    fmt::format_to(std::back_inserter(text_), "{:>3}\n{}\n", code, value);
    return *this;
  }
  Text& pair(int code, int value) { return pair(code, std::to_string(value)); }
  Text& pair(int code, double value) { return pair(code, fmt::format("{:.6f}", value)); }
  Text& handle(int code, std::uint32_t value) { return pair(code, fmt::format("{:X}", value)); }
  Text& point(int code, double x, double y) { return pair(code, x).pair(code + 10, y).pair(code + 20, 0.0); }
  Text& section(std::string_view name) { return pair(0, "SECTION").pair(2, name); }
  Text& endSection() { return pair(0, "ENDSEC"); }

  [[nodiscard]] std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

// Where and how an entity is drawn. The numbers are spread without being random, and stay apart for any two entities.
struct Look {
  std::uint32_t handle;
  std::size_t layer;
  int color;  // 256: by layer
  double x;
  double y;
  double size;
};

Look lookOf(std::uint32_t number, bool various) {
  const std::uint32_t handle = 0x100 + number;
  if (!various) return {handle, 1, 256, 10.0, 20.0, 5.0};
  return {handle,
          number % layerColors.size(),
          number % 3 == 0 ? static_cast<int>(1 + number % 7) : 256,
          static_cast<double>(number % 1000) * 12.5,
          static_cast<double>(number / 1000) * 12.5,
          1.0 + static_cast<double>(number % 97) * 0.1};
}

std::string layerName(std::size_t layer) {
  return layer == 0 ? "0" : fmt::format("Layer{}", layer);
}

Text& begin(Text& text, const Look& look, std::string_view type, std::string_view subclass) {
  text.pair(0, type).handle(5, look.handle).pair(100, "AcDbEntity").pair(8, layerName(look.layer));
  if (look.color != 256) text.pair(62, look.color);
  return text.pair(100, subclass);
}

void line(Text& text, const Look& look) {
  begin(text, look, "LINE", "AcDbLine").point(10, look.x, look.y).point(11, look.x + look.size, look.y + 3.0);
}

void point(Text& text, const Look& look) {
  begin(text, look, "POINT", "AcDbPoint").point(10, look.x, look.y);
}

void circle(Text& text, const Look& look) {
  begin(text, look, "CIRCLE", "AcDbCircle").point(10, look.x, look.y).pair(40, look.size);
}

void arc(Text& text, const Look& look) {
  begin(text, look, "ARC", "AcDbCircle").point(10, look.x, look.y).pair(40, look.size);
  text.pair(100, "AcDbArc").pair(50, 15.0).pair(51, 15.0 + look.size);
}

void ellipse(Text& text, const Look& look) {
  begin(text, look, "ELLIPSE", "AcDbEllipse").point(10, look.x, look.y).point(11, look.size, 0.5);
  text.pair(40, 0.4).pair(41, 0.0).pair(42, 6.283185307179586);
}

void polylineOf(Text& text, const Look& look, std::uint32_t vertices) {
  begin(text, look, "LWPOLYLINE", "AcDbPolyline")
      .pair(90, static_cast<int>(vertices))
      .pair(70, 1)
      .pair(43, 0.0);
  for (std::uint32_t vertex = 0; vertex < vertices; ++vertex)
    text.pair(10, look.x + look.size * vertex).pair(20, look.y + look.size * (vertex % 2));
}

void polyline(Text& text, const Look& look) {
  polylineOf(text, look, 4);
}

void singleLineText(Text& text, const Look& look) {
  begin(text, look, "TEXT", "AcDbText").point(10, look.x, look.y).pair(40, 2.5);
  text.pair(1, fmt::format("Room {}", look.handle)).pair(100, "AcDbText");
}

void paragraphText(Text& text, const Look& look) {
  begin(text, look, "MTEXT", "AcDbMText").point(10, look.x, look.y).pair(40, 2.5).pair(41, 40.0).pair(71, 1);
  text.pair(72, 1).pair(1, fmt::format("Door {}\\Poak", look.handle));
}

void blockReference(Text& text, const Look& look) {
  begin(text, look, "INSERT", "AcDbBlockReference").pair(2, "SYMBOL").point(10, look.x, look.y);
  text.pair(41, look.size).pair(42, look.size).pair(43, look.size).pair(50, 30.0);
}

void hatch(Text& text, const Look& look) {
  begin(text, look, "HATCH", "AcDbHatch").point(10, 0.0, 0.0).pair(210, 0.0).pair(220, 0.0).pair(230, 1.0);
  text.pair(2, "SOLID").pair(70, 1).pair(71, 0).pair(91, 1).pair(92, 3).pair(72, 0).pair(73, 1).pair(93, 3);
  text.pair(10, look.x).pair(20, look.y).pair(10, look.x + look.size).pair(20, look.y);
  text.pair(10, look.x).pair(20, look.y + look.size).pair(97, 0).pair(75, 0).pair(76, 1).pair(98, 0);
}

using Entity = void (*)(Text&, const Look&);

// One of each automation class of the embedded host that stands for one kind of entity.
constexpr std::array<Entity, 10> kinds{line,           point,         circle,         arc,  ellipse, polyline,
                                       singleLineText, paragraphText, blockReference, hatch};

void header(Text& text) {
  text.section("HEADER")
      .pair(9, "$ACADVER")
      .pair(1, "AC1027")
      .pair(9, "$DWGCODEPAGE")
      .pair(3, "ANSI_1252")
      .endSection();
}

void layers(Text& text) {
  text.section("TABLES").pair(0, "TABLE").pair(2, "LAYER").pair(70, static_cast<int>(layerColors.size()));
  for (std::size_t layer = 0; layer < layerColors.size(); ++layer) {
    text.pair(0, "LAYER")
        .handle(5, static_cast<std::uint32_t>(0x10 + layer))
        .pair(100, "AcDbSymbolTableRecord");
    text.pair(100, "AcDbLayerTableRecord").pair(2, layerName(layer)).pair(70, 0).pair(62, layerColors[layer]);
    text.pair(6, "CONTINUOUS");
  }
  text.pair(0, "ENDTAB").endSection();
}

void blocks(Text& text) {
  text.section("BLOCKS").pair(0, "BLOCK").handle(5, 0x20).pair(100, "AcDbEntity").pair(8, "0");
  text.pair(100, "AcDbBlockBegin").pair(2, "SYMBOL").pair(70, 0).point(10, 0.0, 0.0).pair(3, "SYMBOL");
  text.pair(0, "ENDBLK").handle(5, 0x21).pair(100, "AcDbEntity").pair(8, "0").pair(100, "AcDbBlockEnd");
  text.endSection();
}

Entity kindOf(Content content, std::uint32_t number) {
  return content == Content::Mixed ? kinds[number % kinds.size()] : line;
}

// A drawing with what `entities` writes into it.
template <class Writer>
std::string drawingWith(Writer entities) {
  Text text;
  header(text);
  layers(text);
  blocks(text);
  text.section("ENTITIES");
  entities(text);
  text.endSection().pair(0, "EOF");
  return text.take();
}

}  // namespace

std::string drawingOf(Content content, std::uint32_t entities) {
  return drawingWith([&](Text& text) {
    for (std::uint32_t number = 0; number < entities; ++number)
      kindOf(content, number)(text, lookOf(number, content != Content::EqualLines));
  });
}

std::string drawingOfPolylines(std::uint32_t vertices) {
  return drawingWith([&](Text& text) {
    polylineOf(text, lookOf(0, true), vertices);
    polylineOf(text, lookOf(1, true), vertices);
  });
}

std::string drawingOfReferences(std::uint32_t references, std::uint32_t attributes, bool isDynamic) {
  samples::DrawingBuilder drawing;
  samples::BlockBuilder& symbol = drawing.block("SYMBOL");
  for (const char* const shape : {"*U1", "*U2"}) {
    samples::BlockBuilder& made = drawing.block(shape);
    if (isDynamic) made.isMadeOf(symbol);
  }
  std::vector<samples::Attribute> list(attributes);
  for (std::uint32_t tag = 0; tag < attributes; ++tag)
    list[tag].tag = fmt::format("TAG{}", tag);
  for (std::uint32_t number = 0; number < references; ++number) {
    // Half of the attributes are alike everywhere, so that the merge has to look at all of them.
    for (std::uint32_t tag = 0; tag < attributes; ++tag)
      list[tag].value = tag % 2 == 0 ? "alike" : fmt::format("{}", number);
    const Look look = lookOf(number, true);
    drawing.model().insert(number % 2 == 0 ? "*U1" : "*U2", {.at = {look.x, look.y}, .attributes = list});
  }
  return drawing.bytes();
}

}  // namespace velt::bench
