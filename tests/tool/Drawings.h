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

}  // namespace velt::tests
