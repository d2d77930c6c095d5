#pragma once

// Model space, the sheets and the blocks, each with the entities in it.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::view {

// Something that can be drawn by itself.
struct Space {
  // "Model", or that of the layout; "Paper" for the sheet of an old drawing, which has no name.
  std::wstring name{};
  // In Contents.
  std::uint32_t contents = 0;
  bool isPaper = false;
};

// Model space first, then the layouts in the order of their tabs.
[[nodiscard]] std::vector<Space> spacesOf(const database::Drawing& drawing);

// Which entities stand where, as the drawing was when this was made.
class Contents {
 public:
  explicit Contents(const database::Drawing& drawing);

  // The records of a space, or of the block with that index in the drawing's table; from back to front.
  [[nodiscard]] std::span<const std::uint32_t> of(std::uint32_t contents) const {
    return records_.at(contents);
  }
  [[nodiscard]] std::uint32_t ofModelSpace() const { return model_; }

 private:
  // By block; then those of model space and of the sheet where the drawing has no blocks for them.
  std::vector<std::vector<std::uint32_t>> records_;
  std::uint32_t model_;
};

}  // namespace velt::view
