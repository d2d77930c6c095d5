#pragma once

// Which color, line type and line weight an entity is seen with, and whether it is seen at all.

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "view/Picture.h"

namespace velt::view {

// With everything that is by layer or by block replaced by what it comes to. As it begins, it is that of a block that
// nobody has inserted.
struct Look {
  Ink ink{};
  // In millimetres on paper.
  double lineweight = 0.25;
  // In the drawing's table; none for a continuous line.
  std::uint32_t linetype = none;
  // Of the entity alone.
  double linetypeScale = 1;
  float opacity = 1;
  // In the drawing's table; none for a layer that the drawing lacks.
  std::uint32_t layer = none;
  bool isOff = false;
  bool isFrozen = false;
};

using HiddenLayers = std::unordered_set<std::uint32_t>;

class Appearance {
 public:
  explicit Appearance(const database::Drawing& drawing);

  // `block` is the look of the reference that shows the block in which the entity stands; null outside of blocks.
  // `hidden` are layers that a viewport does not show; null for none.
  [[nodiscard]] Look lookOf(const database::Entity& entity, const Look* block,
                            const HiddenLayers* hidden) const;

  // By the number that entities store for a color: an index, or by layer or block.
  [[nodiscard]] Ink inkOf(std::int64_t index, const Look& look) const;
  // By the number of a color with its method in the highest byte, as multileaders and tables store it.
  [[nodiscard]] Ink inkOfRaw(std::int64_t raw, const Look& look) const;

  // Lengths of dashes and gaps by turns, in drawing units and scaled for the whole drawing; empty for a continuous line.
  [[nodiscard]] const std::vector<double>& dashesOf(std::uint32_t linetype) const;

 private:
  [[nodiscard]] std::uint32_t linetypeNamed(std::wstring_view name) const;

  const database::Drawing* drawing_;
  std::vector<Look> layers_;
  std::vector<std::vector<double>> linetypes_;
  std::uint32_t layerZero_ = none;
};

}  // namespace velt::view
