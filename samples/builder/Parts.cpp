#include "samples/builder/Parts.h"

#include <algorithm>

namespace velt::samples {

using dxf::Encoding;

Parts::Parts(DrawingVersion which)
    : version(which),
      encoding(which == DrawingVersion::AC1018 ? Encoding::ofCodePage("ANSI_1252") : Encoding::utf8()),
      rootDictionary(newHandle()),
      groups(newHandle()),
      layouts(newHandle()),
      plotStyles(newHandle()),
      normalPlotStyle(newHandle()),
      modelLayout(newHandle()),
      paperLayout(newHandle()),
      activeView(newHandle()),
      standardDimensionStyle(newHandle()),
      variables(encoding) {
  for (const char* const name :
       {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"})
    tables.emplace(name, newHandle());
  block(modelSpace);
  block(paperSpace);
}

Block& Parts::block(std::string_view name, const Point& base) {
  const auto known =
      std::find_if(blocks.begin(), blocks.end(), [&](const Block& it) { return it.name == name; });
  if (known != blocks.end()) return *known;
  return blocks.emplace_back(Block{.name = std::string(name),
                                   .base = base,
                                   .record = newHandle(),
                                   .begin = newHandle(),
                                   .end = newHandle(),
                                   .entities = dxf::PairWriter(encoding)});
}

void Parts::application(std::string_view name) {
  const bool isKnown = std::any_of(applications.begin(), applications.end(),
                                   [&](const Application& it) { return it.name == name; });
  if (!isKnown) applications.push_back({std::string(name), newHandle()});
}

}  // namespace velt::samples
