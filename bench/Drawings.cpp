#include "bench/Drawings.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "embedded/database/Drawing.h"
#include "samples/Gallery.h"
#include "samples/builder/DrawingBuilder.h"

namespace velt::bench {

namespace {

using namespace samples;

constexpr std::array layerColors{7, 1, 3, 5, 30};  // of the layers 0, Layer1, Layer2, ...

// Where and how an entity is drawn. The numbers are spread without being random, and stay apart for any two entities.
struct Look {
  std::uint32_t number;
  EntityStyle style;
  Point at;
  double size;
};

std::string layerName(std::size_t layer) {
  return layer == 0 ? "0" : fmt::format("Layer{}", layer);
}

Look lookOf(std::uint32_t number, bool various) {
  if (!various) return {number, {.layer = layerName(1)}, {10.0, 20.0}, 5.0};
  return {number,
          {.layer = layerName(number % layerColors.size()),
           .color = number % 3 == 0 ? static_cast<int>(1 + number % 7) : byLayer},
          {static_cast<double>(number % 1000) * 12.5, static_cast<double>(number / 1000) * 12.5},
          1.0 + static_cast<double>(number % 97) * 0.1};
}

void line(BlockBuilder& model, const Look& look) {
  model.line(look.at, {look.at.x + look.size, look.at.y + 3.0}, look.style);
}

void point(BlockBuilder& model, const Look& look) {
  model.point(look.at, look.style);
}

void circle(BlockBuilder& model, const Look& look) {
  model.circle(look.at, look.size, look.style);
}

void arc(BlockBuilder& model, const Look& look) {
  model.arc(look.at, look.size, 15.0, 15.0 + look.size, look.style);
}

void ellipse(BlockBuilder& model, const Look& look) {
  model.ellipse(look.at, {look.size, 0.5}, 0.4, look.style);
}

void polylineOf(BlockBuilder& model, const Look& look, std::uint32_t vertices) {
  Outline outline;
  for (std::uint32_t vertex = 0; vertex < vertices; ++vertex)
    outline.push_back({look.at.x + look.size * vertex, look.at.y + look.size * (vertex % 2)});
  model.polyline(outline, {.closed = true}, look.style);
}

void polyline(BlockBuilder& model, const Look& look) {
  polylineOf(model, look, 4);
}

void singleLineText(BlockBuilder& model, const Look& look) {
  model.text(look.at, fmt::format("Room {}", look.number), {}, look.style);
}

void paragraphText(BlockBuilder& model, const Look& look) {
  model.mtext(look.at, fmt::format("Door {}\\Poak", look.number), {.width = 40.0}, look.style);
}

void blockReference(BlockBuilder& model, const Look& look) {
  model.insert(
      "SYMBOL",
      {.at = look.at, .scaleX = look.size, .scaleY = look.size, .scaleZ = look.size, .rotation = 30.0},
      look.style);
}

void hatch(BlockBuilder& model, const Look& look) {
  const auto [x, y, z] = look.at;
  const Outline triangle{{x, y}, {x + look.size, y}, {x, y + look.size}};
  model.solidHatch({&triangle, 1}, look.style);
}

using Entity = void (*)(BlockBuilder&, const Look&);

// One of each automation class of the embedded host that stands for one kind of entity.
constexpr std::array<Entity, 10> tenClasses{
    line, point, circle, arc, ellipse, polyline, singleLineText, paragraphText, blockReference, hatch};

// The layers of the looks, and the block to refer to.
void addStyles(DrawingBuilder& drawing) {
  for (std::size_t layer = 1; layer < layerColors.size(); ++layer)
    drawing.layer(layerName(layer), {.color = layerColors[layer]});
  drawing.block("SYMBOL");
}

}  // namespace

std::string drawingOf(Content content, std::uint32_t entities) {
  DrawingBuilder drawing;
  addStyles(drawing);
  for (std::uint32_t number = 0; number < entities; ++number) {
    const Entity draw = content == Content::Mixed ? tenClasses[number % tenClasses.size()] : line;
    draw(drawing.model(), lookOf(number, content != Content::EqualLines));
  }
  return drawing.bytes();
}

namespace {

std::string withoutHeader(std::string drawing) {
  const std::size_t begin = drawing.find("  0\nSECTION\n  2\nHEADER\n");
  const std::string_view end = "  0\nENDSEC\n";
  return drawing.erase(begin, drawing.find(end, begin) + end.size() - begin);
}

// The gallery with its entities repeated until there are so many, in a drawing that is otherwise the same. Copies have the
// handles of the first ones: what is looked up by handle is the first.
std::string galleryOf(std::uint32_t size) {
  const std::string gallery = galleryDrawing();
  const std::string_view head = "  0\nSECTION\n  2\nENTITIES\n";
  const std::size_t begin = gallery.find(head) + head.size();
  const std::size_t end = gallery.find("  0\nENDSEC\n", begin);
  const auto drawing = database::Drawing::parse(gallery, "gallery");
  const std::size_t entities = drawing->entities().size();
  std::string made = gallery.substr(0, end);
  for (std::size_t count = entities; count < size; count += entities)
    made += gallery.substr(begin, end - begin);
  return made + gallery.substr(end);
}

void addLayers(DrawingBuilder& drawing, std::uint32_t size) {
  for (std::uint32_t number = 0; number < size; ++number) {
    const std::string layer = fmt::format("Own{}", number);
    drawing.layer(layer);
    Look look = lookOf(number, true);
    look.style.layer = layer;
    line(drawing.model(), look);
  }
}

void addBlocks(DrawingBuilder& drawing, std::uint32_t size) {
  for (std::uint32_t number = 0; number < size; ++number) {
    const Look look = lookOf(number, true);
    const std::string name = fmt::format("OWN{}", number);
    point(drawing.block(name), look);
    drawing.model().insert(name, {.at = look.at}, look.style);
  }
}

void addExtendedData(DrawingBuilder& drawing, std::uint32_t size) {
  for (std::uint32_t number = 0; number < size; ++number) {
    Look look = lookOf(number, true);
    for (const char* const application : {"APP1", "APP2", "APP3"})
      look.style.extendedData.push_back(
          {application, {{1000, fmt::format("text {}", number)}, {1040, look.size}, {1070, 7}}});
    line(drawing.model(), look);
  }
}

}  // namespace

std::string drawingOf(Shape shape, std::uint32_t size) {
  if (shape == Shape::WithoutHeader) return withoutHeader(drawingOf(Content::Lines, size));
  if (shape == Shape::EveryClass) return galleryOf(size);
  DrawingBuilder drawing;
  addStyles(drawing);
  if (shape == Shape::ManyLayers) addLayers(drawing, size);
  if (shape == Shape::ManyBlocks) addBlocks(drawing, size);
  if (shape == Shape::ExtendedData) addExtendedData(drawing, size);
  if (shape == Shape::OnePolyline) polylineOf(drawing.model(), lookOf(1, true), size);
  if (shape == Shape::LongTexts) {
    for (std::uint32_t number = 0; number < size; ++number)
      drawing.model().mtext(lookOf(number, true).at, std::string(4'000, 'x'));
  }
  return drawing.bytes();
}

std::string drawingOfPolylines(std::uint32_t vertices) {
  DrawingBuilder drawing;
  addStyles(drawing);
  for (const std::uint32_t number : {0U, 1U})
    polylineOf(drawing.model(), lookOf(number, true), vertices);
  return drawing.bytes();
}

std::string drawingOfReferences(std::uint32_t references, std::uint32_t attributes, bool isDynamic) {
  DrawingBuilder drawing;
  BlockBuilder& symbol = drawing.block("SYMBOL");
  for (const char* const shape : {"*U1", "*U2"}) {
    BlockBuilder& made = drawing.block(shape);
    if (isDynamic) made.isMadeOf(symbol);
  }
  std::vector<Attribute> list(attributes);
  for (std::uint32_t tag = 0; tag < attributes; ++tag)
    list[tag].tag = fmt::format("TAG{}", tag);
  for (std::uint32_t number = 0; number < references; ++number) {
    // Half of the attributes are alike everywhere, so that the merge has to look at all of them.
    for (std::uint32_t tag = 0; tag < attributes; ++tag)
      list[tag].value = tag % 2 == 0 ? "alike" : fmt::format("{}", number);
    const Look look = lookOf(number, true);
    drawing.model().insert(number % 2 == 0 ? "*U1" : "*U2", {.at = look.at, .attributes = list});
  }
  return drawing.bytes();
}

}  // namespace velt::bench
