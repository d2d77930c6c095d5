#include "samples/builder/DrawingBuilder.h"

#include <algorithm>
#include <utility>

#include "samples/builder/Records.h"
#include "samples/builder/Sections.h"

namespace velt::samples {

DrawingBuilder::DrawingBuilder(DrawingVersion version) : parts_(version) {
  for (Block& space : parts_.blocks)
    builders_.emplace_back(parts_, space);
  lineType("ByBlock", "", {});
  lineType("ByLayer", "", {});
  lineType("Continuous", "Solid line", {});
  layer("0");
  textStyle("Standard", "txt");
  application("ACAD");
}

void DrawingBuilder::layer(std::string_view name, const LayerStyle& style) {
  parts_.layers.push_back({std::string(name), style, parts_.newHandle()});
}

void DrawingBuilder::lineType(std::string_view name, std::string_view description,
                              std::vector<double> dashes) {
  parts_.lineTypes.push_back(
      {std::string(name), std::string(description), std::move(dashes), parts_.newHandle()});
}

void DrawingBuilder::textStyle(std::string_view name, std::string_view font, double widthFactor) {
  parts_.fonts.push_back({std::string(name), std::string(font), widthFactor, parts_.newHandle()});
}

Handle DrawingBuilder::dimensionStyle(std::string_view name, const Pairs& variables) {
  return parts_.dimensionStyles.emplace_back(DimensionStyle{std::string(name), variables, parts_.newHandle()})
      .handle;
}

Handle DrawingBuilder::textStyleHandle(std::string_view name) const {
  return std::find_if(parts_.fonts.begin(), parts_.fonts.end(),
                      [&](const Font& it) { return it.name == name; })
      ->handle;
}

Handle DrawingBuilder::lineTypeHandle(std::string_view name) const {
  return std::find_if(parts_.lineTypes.begin(), parts_.lineTypes.end(),
                      [&](const LineType& it) { return it.name == name; })
      ->handle;
}

Handle DrawingBuilder::object(std::string_view dictionary, std::string_view name, std::string_view type,
                              const Pairs& pairs) {
  std::vector<Dictionary>& all = parts_.dictionaries;
  auto holder =
      std::find_if(all.begin(), all.end(), [&](const Dictionary& it) { return it.name == dictionary; });
  if (holder == all.end()) holder = all.insert(holder, {std::string(dictionary), parts_.newHandle(), {}});
  return holder->objects
      .emplace_back(NamedObject{std::string(name), std::string(type), pairs, parts_.newHandle()})
      .handle;
}

void DrawingBuilder::externalReference(std::string_view name, std::string_view path) {
  parts_.block(name).path = path;
}

void DrawingBuilder::variable(std::string_view name, const Pairs& pairs) {
  parts_.variables.verbatim(9, name);
  write(parts_.variables, pairs);
}

void DrawingBuilder::extents(const Point& low, const Point& high) {
  parts_.low = low;
  parts_.high = high;
}

BlockBuilder& DrawingBuilder::block(std::string_view name, const Point& base) {
  Block& block = parts_.block(name, base);
  for (BlockBuilder& known : builders_) {
    if (known.handle() == block.record) return known;
  }
  return builders_.emplace_back(parts_, block);
}

std::string DrawingBuilder::bytes() const {
  dxf::PairWriter out(parts_.encoding);
  writeHeader(out, parts_);
  writeClasses(out);
  writeTables(out, parts_);
  writeBlocks(out, parts_);
  writeEntities(out, parts_);
  writeObjects(out, parts_);
  out.verbatim(0, "EOF");
  return out.bytes();
}

}  // namespace velt::samples
