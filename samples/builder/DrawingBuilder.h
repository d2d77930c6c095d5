#pragma once

// Makes new drawings, complete ones: tables, model and paper space, layouts, dictionaries. The sample drawings, the
// drawings to measure on and tests come from it.
//
//   DrawingBuilder drawing;
//   drawing.layer("Walls", {.color = 3});
//   drawing.model().line({0, 0}, {10, 0}, {.layer = "Walls"});
//   drawing.bytes();
//
// What an entity refers to by its name (a layer, a line type) is not looked for. Handles and owners are given out in
// the order of the calls, so the same calls make the same bytes.

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "samples/builder/BlockBuilder.h"

namespace velt::samples {

class DrawingBuilder {
 public:
  explicit DrawingBuilder(DrawingVersion version = DrawingVersion::AC1027);
  DrawingBuilder(const DrawingBuilder&) = delete;
  DrawingBuilder& operator=(const DrawingBuilder&) = delete;

  void layer(std::string_view name, const LayerStyle& style = {});
  // Dashes are positive, gaps negative, dots zero.
  void lineType(std::string_view name, std::string_view description, std::vector<double> dashes);
  void textStyle(std::string_view name, std::string_view font, double widthFactor = 1.0);
  // A further one beside Standard; the pairs are its variables. Gives its handle.
  Handle dimensionStyle(std::string_view name, const Pairs& variables);
  // The handle of a text style or a line type of that name, which must be there.
  [[nodiscard]] Handle textStyleHandle(std::string_view name) const;
  [[nodiscard]] Handle lineTypeHandle(std::string_view name) const;
  // An object that a dictionary holds under that name; the dictionary is made when it is first named.
  Handle object(std::string_view dictionary, std::string_view name, std::string_view type,
                const Pairs& pairs);
  // A block that stands for another drawing.
  void externalReference(std::string_view name, std::string_view path);
  // A registered application, as extended data needs one.
  void application(std::string_view name) { parts_.application(name); }
  // A further variable of the header, by its name with the dollar sign.
  void variable(std::string_view name, const Pairs& pairs);
  // What is seen when the drawing is opened.
  void extents(const Point& low, const Point& high);

  BlockBuilder& model() { return block(modelSpace); }
  BlockBuilder& paper() { return block(paperSpace); }
  // The definition of that name, made at the first call.
  BlockBuilder& block(std::string_view name, const Point& base = {});

  // The whole drawing. More may be added afterwards.
  [[nodiscard]] std::string bytes() const;

 private:
  Parts parts_;
  // One for each block.
  std::deque<BlockBuilder> builders_;
};

}  // namespace velt::samples
