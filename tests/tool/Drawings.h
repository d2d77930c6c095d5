#pragma once

// Small drawings for the tests of the tool.

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Files.h"

namespace velt::tests {

using Pair = std::pair<int, std::string>;

inline std::string pairs(const std::vector<Pair>& list) {
  std::string text;
  for (const auto& [code, value] : list)
    text += std::to_string(code) + "\n" + value + "\n";
  return text;
}

struct LayerOf {
  std::string name;
  int color = 7;
  int flags = 0;
};

inline std::string drawingOf(const std::vector<LayerOf>& layers, const std::string& entities,
                             const std::string& blocks = {}) {
  std::string text = pairs({{0, "SECTION"},
                            {2, "HEADER"},
                            {9, "$ACADVER"},
                            {1, "AC1027"},
                            {9, "$LUPREC"},
                            {70, "3"},
                            {9, "$AUPREC"},
                            {70, "1"},
                            {0, "ENDSEC"},
                            {0, "SECTION"},
                            {2, "TABLES"},
                            {0, "TABLE"},
                            {2, "LAYER"}});
  int handle = 0x10;
  for (const LayerOf& layer : layers) {
    std::ostringstream hex;
    hex << std::uppercase << std::hex << handle++;
    text += pairs({{0, "LAYER"},
                   {5, hex.str()},
                   {100, "AcDbSymbolTableRecord"},
                   {100, "AcDbLayerTableRecord"},
                   {2, layer.name},
                   {70, std::to_string(layer.flags)},
                   {62, std::to_string(layer.color)},
                   {6, "Continuous"}});
  }
  text += pairs({{0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"}}) + blocks;
  text +=
      pairs({{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}}) + entities + pairs({{0, "ENDSEC"}, {0, "EOF"}});
  return text;
}

inline std::string line(const std::string& handle, const std::string& layer, double x2 = 10.0) {
  return pairs({{0, "LINE"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, layer},
                {100, "AcDbLine"},
                {10, "1.5"},
                {20, "2.0"},
                {30, "0.0"},
                {11, std::to_string(x2)},
                {21, "2.0"},
                {31, "0.0"}});
}

inline std::string circle(const std::string& handle, const std::string& layer) {
  return pairs({{0, "CIRCLE"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, layer},
                {100, "AcDbCircle"},
                {10, "0.0"},
                {20, "0.0"},
                {30, "0.0"},
                {40, "2.5"}});
}

inline std::string textEntity(const std::string& handle, const std::string& contents) {
  return pairs({{0, "TEXT"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbText"},
                {10, "0"},
                {20, "0"},
                {40, "1"},
                {1, contents},
                {100, "AcDbText"}});
}

inline std::string polyline(const std::string& handle, const std::string& secondX = "9") {
  return pairs({{0, "LWPOLYLINE"},
                {5, handle},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbPolyline"},
                {90, "2"},
                {70, "0"},
                {10, "1"},
                {20, "0"},
                {10, secondX},
                {20, "0"}});
}

// A reference to a block with one attribute, under three handles from the given one on.
inline std::string reference(int handle, const std::string& block, const std::string& tag,
                             const std::string& text) {
  const auto hex = [](int number) {
    std::ostringstream made;
    made << std::uppercase << std::hex << number;
    return made.str();
  };
  return pairs({{0, "INSERT"},
                {5, hex(handle)},
                {100, "AcDbEntity"},
                {8, "0"},
                {66, "1"},
                {100, "AcDbBlockReference"},
                {2, block},
                {10, "0"},
                {20, "0"},
                {0, "ATTRIB"},
                {5, hex(handle + 1)},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbText"},
                {10, "0"},
                {20, "0"},
                {40, "1"},
                {1, text},
                {100, "AcDbAttribute"},
                {2, tag},
                {70, "0"},
                {0, "SEQEND"},
                {5, hex(handle + 2)}});
}

inline std::string emptyBlock(const std::string& name) {
  return pairs({{0, "BLOCK"}, {5, "1F"}, {8, "0"}, {2, name}, {70, "0"}, {0, "ENDBLK"}});
}

// A line in DXF R12, which has no place for much of what came later.
inline std::string oldDrawing() {
  return pairs({{0, "SECTION"},
                {2, "HEADER"},
                {9, "$ACADVER"},
                {1, "AC1009"},
                {0, "ENDSEC"},
                {0, "SECTION"},
                {2, "ENTITIES"},
                {0, "LINE"},
                {5, "2F"},
                {8, "0"},
                {10, "0"},
                {20, "0"},
                {11, "1"},
                {21, "1"},
                {0, "ENDSEC"},
                {0, "EOF"}});
}

}  // namespace velt::tests
