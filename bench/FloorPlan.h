#pragma once

// Which calls a query of a selection must make to its host: worked out once, from the rows and the values that the
// layer itself has for the selection.
//
// The plan holds no values and no interfaces, only what is asked of which entity in which order. Whether it is right is
// not taken on trust: the program of bench/counting makes a query and a run over the floor with counted calls, and
// fails when a single count differs.

#include <cstdint>
#include <string>
#include <vector>

#include "bench/Selection.h"

namespace velt::bench {

struct FloorPlan {
  // Entities that share one list of properties.
  struct Kind {
    // Asked which of its kinds it is.
    bool isHatch = false;
    std::uint32_t rows = 0;
    // Asked whether they may be edited now.
    std::vector<DISPID> writable;
  };

  struct Read {
    // In the list of its entity.
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
    // Of which row of the first entity, elements counted singly.
    std::uint32_t firstValue = 0;
    // For an element: of its property.
    std::wstring name;
    bool isElement = false;
    bool isHyperlink = false;
    // Other entities are searched in order, this many of them: until one lacks the row, or differs.
    std::uint32_t entities = 0;
    // So many of them have the property in elements already, from the search for an element before this one.
    std::uint32_t expandedBefore = 0;
    std::vector<Step> ofKind;
  };

  std::vector<Kind> kinds;
  // By entity.
  std::vector<std::uint32_t> kindOf;
  // How the first entity is read.
  std::vector<Read> first;
  std::vector<Search> searches;
  // Rows of the result whose choices are listed.
  std::vector<DISPID> withChoices;
  // Which values of the first entity the caller gets, and clears.
  std::vector<std::uint32_t> inResult;
  std::uint32_t firstValues = 0;
  // Of all entities together.
  std::uint64_t properties = 0;
  // The same, with the elements that the merge appends.
  std::uint64_t records = 0;
  // By entity.
  std::vector<std::uint32_t> recordsOf;
};

// Makes the calls of a query itself. Throws std::logic_error for a selection of a sort that it does not know.
[[nodiscard]] FloorPlan planFor(Selection& selection);

}  // namespace velt::bench
