// Which calls a query of a selection must make to its host: worked out once, from the rows and the values that the
// layer itself has for the selection.
//
// The plan holds no values and no interfaces, only what is asked of which entity in which order. Whether it is right is
// not taken on trust: the program of bench/counting makes a query and a run over the floor with counted calls, and
// fails when a single count differs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/Selection.h"

namespace velt::bench {

struct FloorPlan {
  /// Entities that share one list of properties.
  struct Kind {
    bool isHatch = false;  ///< asked which of its kinds it is
    std::uint32_t rows = 0;
    std::vector<DISPID> writable;  ///< asked whether they may be edited now
  };

  struct Read {
    std::uint32_t place = 0;  ///< in the list of its entity
    DISPID dispId = 0;
    VARTYPE type = VT_EMPTY;
    bool expands = false;      ///< read as elements
    bool probesColor = false;  ///< an object in the value is asked whether it is a colour
  };

  /// What the search for a row of the first entity finds in the list of an entity of some kind.
  struct Step {
    Read read;
    bool compares = false;
  };

  struct Search {
    std::uint32_t firstValue = 0;  ///< of which row of the first entity, elements counted singly
    std::wstring name;             ///< for an element: of its property
    bool isElement = false;
    bool isHyperlink = false;
    /// Other entities are searched in order, this many of them: until one lacks the row, or differs.
    std::uint32_t entities = 0;
    /// So many of them have the property in elements already, from the search for an element before this one.
    std::uint32_t expandedBefore = 0;
    std::vector<Step> ofKind;
  };

  std::vector<Kind> kinds;
  std::vector<std::uint32_t> kindOf;  ///< by entity
  std::vector<Read> first;            ///< how the first entity is read
  std::vector<Search> searches;
  std::vector<DISPID> withChoices;      ///< rows of the result whose choices are listed
  std::vector<std::uint32_t> inResult;  ///< which values of the first entity the caller gets, and clears
  std::uint32_t firstValues = 0;
  std::uint64_t properties = 0;          ///< of all entities together
  std::uint64_t records = 0;             ///< the same, with the elements that the merge appends
  std::vector<std::uint32_t> recordsOf;  ///< by entity
};

/// Makes the calls of a query itself. Throws std::logic_error for a selection of a sort that it does not know.
[[nodiscard]] FloorPlan planFor(Selection& selection);

}  // namespace velt::bench
