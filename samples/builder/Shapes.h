#pragma once

// What single kinds of entities are made of, beside the style that all of them have.

#include <cstdint>
#include <string>
#include <vector>

#include "dxf/PairWriter.h"

namespace velt::samples {

using dxf::Point;

// Of a polyline or of a hatch's boundary. The bulge of the segment that begins here is the tangent of a quarter of its
// arc's angle, positive to the left.
struct Vertex {
  double x = 0.0;
  double y = 0.0;
  double bulge = 0.0;
  double startWidth = 0.0;
  double endWidth = 0.0;
};
using Outline = std::vector<Vertex>;

struct PolylineStyle {
  bool closed = false;
  double elevation = 0.0;
};

enum class Align { Left = 0, Centre = 1, Right = 2 };
enum class AlignVertical { Baseline = 0, Bottom = 1, Middle = 2, Top = 3 };

struct TextStyle {
  double height = 2.5;
  // In degrees.
  double rotation = 0.0;
  std::string style = "Standard";
  Align align = Align::Left;
  AlignVertical alignVertical = AlignVertical::Baseline;
  double widthFactor = 1.0;
};

struct MTextStyle {
  double height = 2.5;
  // Where lines break; 0 for nowhere.
  double width = 0.0;
  // In degrees.
  double rotation = 0.0;
  std::string style = "Standard";
  // 1 top left to 9 bottom right.
  int attachment = 1;
};

struct Attribute {
  std::string tag{};
  std::string value{};
  Point at{};
  double height = 2.5;
  Align align = Align::Left;
  bool visible = true;
};

struct Placement {
  Point at{};
  double scaleX = 1.0;
  double scaleY = 1.0;
  double scaleZ = 1.0;
  // In degrees.
  double rotation = 0.0;
  std::vector<Attribute> attributes{};
};

// A family of parallel lines, in the pattern's own coordinates; dashes are positive, gaps negative, dots zero.
struct PatternLine {
  // In degrees.
  double angle = 0.0;
  Point base{};
  // From line to line, along and across the line.
  Point offset{};
  std::vector<double> dashes{};
};

struct HatchPattern {
  std::string name{};
  std::vector<PatternLine> lines{};
  // In degrees.
  double angle = 0.0;
  double scale = 1.0;
};

struct HatchGradient {
  std::string name = "LINEAR";
  // 0xRRGGBB.
  std::uint32_t firstColor = 0;
  std::uint32_t secondColor = 0xFFFFFF;
  // In degrees.
  double angle = 0.0;
};

}  // namespace velt::samples
