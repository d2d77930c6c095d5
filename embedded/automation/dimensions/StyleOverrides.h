#pragma once

// Where an entity holds the variables of its dimension style that it overrides: in a list of its extended data that one
// application keeps.

#include <cstddef>
#include <optional>
#include <string_view>

#include "embedded/database/Lens.h"

namespace velt::automation {

// Places in the entity's view: codes of variables and values in turn.
struct StyleOverrides {
  std::size_t begin = 0;
  // Of what can be read as such.
  std::size_t end = 0;
  // The list is closed there.
  bool isWhole = false;
};

inline constexpr std::string_view overridesApplication = "ACAD";
inline constexpr std::string_view overridesList = "DSTYLE";

[[nodiscard]] std::optional<StyleOverrides> findOverrides(const database::Lens& entity);

}  // namespace velt::automation
