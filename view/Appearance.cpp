#include "view/Appearance.h"

#include <algorithm>
#include <cmath>

#include "dxf/Numbers.h"
#include "embedded/database/Colors.h"
#include "embedded/database/Layer.h"
#include "embedded/database/Lens.h"
#include "embedded/database/NameFolding.h"
#include "view/Colors.h"

namespace velt::view {
namespace {

using database::Drawing;
using database::Entity;
using database::Lens;

constexpr std::int64_t lineweightByBlock = -2;
constexpr std::int64_t thickestLineweight = 211;
constexpr double defaultLineweight = 0.25;

Ink inkOfColor(std::uint32_t color, const Ink& byLayer, const Ink& byBlock) {
  switch (color & 0xFF000000) {
    case database::colorByLayer:
      return byLayer;
    case database::colorByBlock:
      return byBlock;
    case database::colorOfIndex(0):
      return inkOfIndex(color & 0xFFFFFF);
    default:
      return inkOfRgb(color);
  }
}

double millimetres(std::int64_t stored) {
  return stored >= 0 && stored <= thickestLineweight ? static_cast<double>(stored) / 100 : defaultLineweight;
}

float opacityOf(std::int64_t stored, float byBlock) {
  switch (stored >> 24 & 0xFF) {
    case 1:
      return byBlock;
    case 2:
      return static_cast<float>(stored & 0xFF) / 255.0F;
    default:
      return 1;
  }
}

double positiveHeader(const Drawing& drawing, std::string_view name) {
  const auto value = drawing.document().headerValue(name, 40);
  const double number = value ? dxf::parseReal(*value).value_or(1) : 1;
  return number > 0 ? number : 1;
}

// Dashes and gaps by turns. What a line type stores may have two dashes or gaps after each other, where a letter stands
// in the line; a dot is a dash without a length.
std::vector<double> dashesOf(const Lens& linetype, double factor) {
  std::vector<double> dashes;
  for (const double stored : linetype.reals(49, "AcDbLinetypeTableRecord")) {
    const double size = std::abs(stored) * factor;
    if (!std::isfinite(size)) return {};
    const bool isGap = std::signbit(stored) && size > 0;
    const bool comesNext = isGap == (dashes.size() % 2 == 1);
    if (comesNext) {
      dashes.push_back(size);
    } else if (!dashes.empty()) {
      dashes.back() += size;
    } else {
      // It begins with a gap.
      dashes = {0, size};
    }
  }
  if (dashes.size() % 2 == 1) dashes.push_back(0);
  double gaps = 0;
  for (std::size_t i = 1; i < dashes.size(); i += 2)
    gaps += dashes[i];
  return gaps > 0 ? dashes : std::vector<double>();
}

}  // namespace

Appearance::Appearance(const Drawing& drawing) : drawing_(&drawing) {
  const double scale = positiveHeader(drawing, "$LTSCALE");
  for (const database::TableEntry& entry : drawing.linetypes().entries()) {
    linetypes_.push_back(entry.isImplied() ? std::vector<double>()
                                           : view::dashesOf(Lens(drawing, entry.record), scale));
  }
  for (const database::TableEntry& entry : drawing.layers().entries()) {
    const database::Layer layer(drawing, entry.record);
    Look look;
    look.ink = inkOfColor(layer.color().color(), {}, {});
    look.linetype = linetypeNamed(layer.linetypeName());
    look.layer = drawing.layers().indexOf(entry);
    look.isOff = layer.isOff();
    look.isFrozen = layer.isFrozen();
    if (!entry.isImplied()) look.lineweight = millimetres(layer.lens().integer(370, dxf::anySubclass, -3));
    if (database::sameName(entry.name, L"0")) layerZero_ = look.layer;
    layers_.push_back(look);
  }
}

std::uint32_t Appearance::linetypeNamed(std::wstring_view name) const {
  const database::TableEntry* const entry = drawing_->linetypes().find(name);
  if (entry == nullptr) return none;
  const std::uint32_t index = drawing_->linetypes().indexOf(*entry);
  return linetypes_[index].empty() ? none : index;
}

Look Appearance::lookOf(const Entity& entity, const Look* block, const HiddenLayers* hidden) const {
  const Look outside;
  const Look& byBlock = block != nullptr ? *block : outside;
  const database::TableEntry* const entry = entity.layer();
  const std::uint32_t index = entry != nullptr ? drawing_->layers().indexOf(*entry) : none;

  // What stands on layer 0 of a block is on the layer of the reference.
  const bool isOfReference = block != nullptr && index == layerZero_ && block->layer != none;
  const std::uint32_t layer = isOfReference ? block->layer : index;
  Look look;
  if (layer != none) look = layers_[layer];
  if (hidden != nullptr && hidden->contains(layer)) look.isFrozen = true;
  const Look byLayer = look;

  look.ink = inkOfColor(entity.color().color(), byLayer.ink, byBlock.ink);
  const std::int64_t weight = entity.lineweight();
  if (weight == lineweightByBlock) {
    look.lineweight = byBlock.lineweight;
  } else if (weight != -1) {
    look.lineweight = millimetres(weight);
  }
  const std::wstring linetype = entity.linetypeName();
  if (database::sameName(linetype, L"ByBlock")) {
    look.linetype = byBlock.linetype;
  } else if (!database::sameName(linetype, L"ByLayer")) {
    look.linetype = linetypeNamed(linetype);
  }
  const Lens lens = entity.lens();
  const double scale = lens.real(48, database::commonSubclass, 1);
  look.linetypeScale = scale > 0 ? scale : 1;
  look.opacity = opacityOf(lens.integer(440, database::commonSubclass, 0), byBlock.opacity);
  return look;
}

Ink Appearance::inkOf(std::int64_t index, const Look& look) const {
  constexpr std::int64_t byBlock = 0;
  constexpr std::int64_t byLayer = 256;
  if (index > byBlock && index < byLayer) return inkOfIndex(static_cast<std::uint32_t>(index));
  if (index == byLayer && look.layer != none) return layers_[look.layer].ink;
  return look.ink;
}

Ink Appearance::inkOfRaw(std::int64_t raw, const Look& look) const {
  const std::optional<std::uint32_t> color = database::colorNumber(raw);
  if (!color) return look.ink;
  switch (*color & 0xFF000000) {
    case database::colorOfRgb(0):
      return inkOfRgb(*color);
    case database::colorOfIndex(0):
      return inkOf(*color & 0xFFFFFF, look);
    default:
      return look.ink;
  }
}

const std::vector<double>& Appearance::dashesOf(std::uint32_t linetype) const {
  static const std::vector<double> continuous;
  return linetype < linetypes_.size() ? linetypes_[linetype] : continuous;
}

}  // namespace velt::view
