#pragma once

// The patterns that every drawing can be hatched with, known by the names that drafters give them.

#include <span>
#include <string_view>
#include <vector>

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

// A family of parallel lines.
struct PatternLine {
  // In degrees.
  double angle = 0;
  // A point of the first line.
  Vector2 base{};
  // From line to line: along the line, and across it.
  Vector2 step{};
  // Dash, gap, dash, ...: lengths of what is drawn are positive, of gaps negative, of dots 0. None: the line is whole.
  std::vector<double> dashes{};
};

struct PredefinedPattern {
  const wchar_t* name;
  // In inches, at the scale 1. None: the area is filled.
  std::vector<PatternLine> lines{};
};

inline constexpr const wchar_t* solidPatternName = L"SOLID";

// By name, the solid filling first.
[[nodiscard]] std::span<const PredefinedPattern> predefinedPatterns();

// Upper and lower case do not differ. Null when there is none.
[[nodiscard]] const PredefinedPattern* predefinedPattern(std::wstring_view name);

}  // namespace velt::automation
