#pragma once

// Which calls a query of a selection must make to its host: worked out once, from the rows and values that the layer
// itself answers for the selection.
//
// The plan holds no values and no interfaces, only what is asked of which entity in which order. bench/counting
// checks it: that program counts the calls of a query and those of a run over the floor, and fails when one count
// differs.

#include <cstdint>
#include <string>
#include <vector>

#include "bench/Selection.h"

namespace velt::bench {

struct FloorPlan {
  // Entities that share one list of properties.
  struct Kind {
    // Hatches are asked for their variant.
    bool isHatch = false;
    std::uint32_t rows = 0;
    // The properties that are asked whether they may be edited now.
    std::vector<DISPID> writable;
  };

  // How one row is read.
  struct Read {
    // Its index in the list of its entity.
    std::uint32_t place = 0;
    DISPID dispId = 0;
    VARTYPE type = VT_EMPTY;
    // Read as elements.
    bool expands = false;
    // An object in the value is asked whether it is a color.
    bool probesColor = false;
  };

  // What the search for a row of the first entity finds in the list of an entity of some kind.
  struct Step {
    Read read;
    bool compares = false;
  };

  struct Search {
    // The row of the first entity that is searched for; each element counts as a row.
    std::uint32_t firstValue = 0;
    // For an element, the name of its property.
    std::wstring name;
    bool isElement = false;
    bool isHyperlink = false;
    // How many other entities are searched, in order: until one lacks the row or differs.
    std::uint32_t entities = 0;
    // In how many of them the property is expanded already, because an earlier element of it was searched for.
    std::uint32_t expandedBefore = 0;
    // Indexed by kind.
    std::vector<Step> ofKind;
  };

  std::vector<Kind> kinds;
  // Indexed by entity.
  std::vector<std::uint32_t> kindOf;
  // How the first entity is read.
  std::vector<Read> first;
  std::vector<Search> searches;
  // Rows of the result whose choices are listed.
  std::vector<DISPID> withChoices;
  // The values of the first entity that the caller gets and clears.
  std::vector<std::uint32_t> inResult;
  std::uint32_t firstValues = 0;
  // Rows of all entities together, before the merge.
  std::uint64_t properties = 0;
  // The same, including the elements that the merge appends.
  std::uint64_t records = 0;
  // Indexed by entity.
  std::vector<std::uint32_t> recordsOf;
};

// Queries the layer to find out. Throws std::logic_error for a selection for which it cannot make a plan: of one
// entity, or with dynamic rows.
[[nodiscard]] FloorPlan planFor(Selection& selection);

}  // namespace velt::bench
