#pragma once

// A drawing in the making, as its builders know it and before it is written: what each table, block and dictionary is
// to hold, and the handles that were given out for it.

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/Encoding.h"
#include "dxf/PairWriter.h"
#include "samples/builder/Styles.h"

namespace velt::samples {

using dxf::Point;

enum class DrawingVersion {
  // Texts in ANSI_1252.
  AC1018,
  // Texts in UTF-8.
  AC1027,
};

inline constexpr std::string_view modelSpace = "*Model_Space";
inline constexpr std::string_view paperSpace = "*Paper_Space";
// Under it a block record names the definition of which the block is a shape.
inline constexpr std::string_view dynamicBlockApplication = "AcDbBlockRepBTag";

struct Layer {
  std::string name;
  LayerStyle style;
  Handle handle;
};

struct LineType {
  std::string name;
  std::string description;
  // Dashes are positive, gaps negative, dots zero.
  std::vector<double> dashes;
  Handle handle;
};

struct Font {
  std::string name;
  std::string file;
  double widthFactor;
  Handle handle;
};

struct Application {
  std::string name;
  Handle handle;
};

struct DimensionStyle {
  std::string name;
  Pairs variables;
  Handle handle;
};

// In a dictionary.
struct NamedObject {
  std::string name;
  std::string type;
  Pairs pairs;
  Handle handle;
};

struct Dictionary {
  std::string name;
  Handle handle;
  std::vector<NamedObject> objects;
};

// A block definition, model space and paper space included.
struct Block {
  std::string name;
  Point base;
  // Of the table record, of the definition's first record and of its last.
  Handle record;
  Handle begin;
  Handle end;
  dxf::PairWriter entities;
  // Of the drawing that the block stands for.
  std::string path{};
  bool hasAttributes = false;
  // The record of the dynamic block of which this one is a shape; 0: none.
  Handle madeOf = 0;

  [[nodiscard]] bool isModel() const { return name == modelSpace; }
  [[nodiscard]] bool isPaper() const { return name == paperSpace; }
};

// Handles are given out in the order in which the parts are made, so the same calls make the same drawing.
struct Parts {
  explicit Parts(DrawingVersion version);
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  Handle newHandle() { return nextHandle++; }
  // The definition of that name, made at the first call.
  Block& block(std::string_view name, const Point& base = {});
  // Registers it once.
  void application(std::string_view name);
  [[nodiscard]] Handle table(std::string_view name) const { return tables.at(std::string(name)); }

  DrawingVersion version;
  dxf::Encoding encoding;
  Handle nextHandle = 1;
  Handle rootDictionary;
  Handle groups;
  Handle layouts;
  Handle plotStyles;
  Handle normalPlotStyle;
  Handle modelLayout;
  Handle paperLayout;
  Handle activeView;
  Handle standardDimensionStyle;
  // Of the tables, by their names.
  std::map<std::string, Handle> tables{};
  std::vector<Layer> layers{};
  std::vector<LineType> lineTypes{};
  std::vector<Font> fonts{};
  std::vector<Application> applications{};
  // Beside the standard one.
  std::vector<DimensionStyle> dimensionStyles{};
  std::vector<Dictionary> dictionaries{};
  // Of the header, beside those that every drawing has.
  dxf::PairWriter variables;
  // What is seen when the drawing is opened.
  Point low{};
  Point high{100.0, 100.0};
  // Model space, paper space, and those that were asked for. They stay where they are.
  std::deque<Block> blocks{};
};

}  // namespace velt::samples
