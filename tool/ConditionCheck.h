#pragma once

// Whether entities fit a condition.
//
// Numbers are compared as numbers, and written as `set` takes them: an angle in degrees, a choice by its name. Other
// values are compared by the text that is shown, without regard to upper and lower case; < and > take texts that are
// numbers for numbers. An entity that has no such property, or no value of it, fits no comparison. Of several rows with
// one name, one that fits is enough.

#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "palette/Palette.h"
#include "tool/Condition.h"

namespace velt::tool {

// Whether both are one number to a condition: people write fewer digits than a drawing stores, so numbers that differ by
// less than one part in a thousand million are the same.
bool isSameNumber(double a, double b);

class ConditionCheck {
 public:
  ConditionCheck(const Condition& condition, palette::NumberStyle style)
      : condition_(condition), style_(style) {}

  // `rows` are those of the one entity.
  bool holds(VkDbObjectId entity, std::span<const palette::Row> rows);

  // After all entities: throws Failure for a property that none of them has, and for a value that means nothing to the
  // property in any of them.
  void requireSense() const;

 private:
  // What became of one name, or of one comparison, in all entities so far.
  struct Experience {
    bool isKnown = false;
    bool isUnderstood = false;
    // Why the value was not understood.
    std::string trouble{};
  };

  bool holds(const Condition& condition, VkDbObjectId entity, std::span<const palette::Row> rows);
  bool compares(const Condition& condition, const palette::Row& row, Experience& experience) const;

  const Condition& condition_;
  palette::NumberStyle style_;
  std::map<const Condition*, Experience> experience_;
  // The names that there are, for suggestions.
  std::set<std::string> labels_;
};

}  // namespace velt::tool
