#pragma once

// The headings under which properties stand: the palette's own, and a few that only automation classes know.

#include "embedded/platform/Categories.h"
#include "host/com/Types.h"

namespace velt::automation {

// Positive, so that they never meet the predefined ones.
enum class OwnCategory : PROPCAT {
  Gradient = 1,
};

struct OwnCategoryName {
  OwnCategory category;
  const wchar_t* name;
};

// clang-format off
inline constexpr OwnCategoryName ownCategoryNames[] = {
    // category              heading
    {OwnCategory::Gradient,  L"Gradient"},
};
// clang-format on

// A heading of either kind.
struct CategoryId {
  PROPCAT number;

  // Both conversions are meant: a row names either kind in the same column.
  constexpr CategoryId(platform::Category category)
      : number(platform::number(category)) {}  // NOLINT(*-explicit-*)
  constexpr CategoryId(OwnCategory category)
      : number(static_cast<PROPCAT>(category)) {}  // NOLINT(*-explicit-*)
};

// Null for a number that no heading has.
constexpr const wchar_t* categoryName(PROPCAT number) {
  for (const platform::CategoryName& row : platform::categoryNames) {
    if (platform::number(row.category) == number) return row.name;
  }
  for (const OwnCategoryName& row : ownCategoryNames) {
    if (static_cast<PROPCAT>(row.category) == number) return row.name;
  }
  return nullptr;
}

}  // namespace velt::automation
