#pragma once

// What a write answers that was cancelled before it began.

#include <cstddef>

#include "palette/Palette.h"

namespace velt::palette {

inline Report reportOfCancelled(std::size_t entities) {
  Report report;
  report.fates.assign(entities, Fate::notReached);
  report.isCancelled = true;
  return report;
}

}  // namespace velt::palette
