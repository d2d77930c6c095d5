#pragma once

// Walks through the entities of a space, and of the blocks that they show, and has each drawn.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/database/Lens.h"
#include "view/Appearance.h"
#include "view/Canvas.h"
#include "view/Draw.h"
#include "view/Spaces.h"
#include "view/Transform.h"

namespace velt::view {

// In what an entity stands: a space, a block that a reference shows, a viewport.
struct Surroundings {
  // From the coordinates of its contents to the space that is drawn.
  Transform toSpace{};
  // Of the reference; null outside of blocks.
  const Look* block = nullptr;
  const HiddenLayers* hiddenLayers = nullptr;
  // How much longer than in the drawing dashes are.
  double dashScale = 1;
  // What the contents are seen of; none where each entity is seen of itself.
  std::uint32_t entity = none;
  std::uint32_t viewport = none;
  std::uint32_t clip = none;
  bool isPaper = false;
};

// What an entity is drawn with.
struct Place {
  const Surroundings& around;
  Look look{};
  std::uint32_t record = none;
  std::uint32_t entity = none;

  [[nodiscard]] const Transform& toSpace() const { return around.toSpace; }
};

class Painter {
 public:
  Painter(const database::Drawing& drawing, const Contents& contents, const DrawOptions& options)
      : drawing_(drawing),
        contents_(contents),
        appearance_(drawing),
        canvas_(options),
        openBlocks_(blockCount()) {}

  void drawSpace(std::uint32_t contents, const Surroundings& around);
  // The block itself, from its base point: `around` says where that lies. A block that is being drawn is left out.
  void drawBlock(std::wstring_view name, const Surroundings& around);
  // An attribute of a reference, which is seen with it.
  void drawMember(std::uint32_t record, const Surroundings& around);
  [[nodiscard]] Picture take() { return canvas_.take(); }

  [[nodiscard]] const database::Drawing& drawing() const { return drawing_; }
  [[nodiscard]] const Contents& contents() const { return contents_; }
  [[nodiscard]] const Appearance& appearance() const { return appearance_; }
  [[nodiscard]] Canvas& canvas() { return canvas_; }

  // Around the contents of a block that the entity shows, which lies as `inner` says.
  [[nodiscard]] static Surroundings inside(const Place& place, const Transform& inner);

  // For continuous lines, areas and texts.
  [[nodiscard]] Pen pen(const Place& place) const;
  // For lines with the line type of the entity.
  [[nodiscard]] Pen dashedPen(const Place& place);

 private:
  void drawRecord(std::uint32_t record, const Surroundings& around);
  [[nodiscard]] std::size_t blockCount() const { return drawing_.blocks().entries().size(); }

  const database::Drawing& drawing_;
  const Contents& contents_;
  Appearance appearance_;
  Canvas canvas_;
  std::vector<bool> openBlocks_;
  std::size_t depth_ = 0;
  std::size_t drawn_ = 0;
};

}  // namespace velt::view
