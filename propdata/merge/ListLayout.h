#pragma once

// Finds the rows of one entity's list at which the merge's scan would stop, without visiting the others.
//
// The merge is defined as a scan of every other list, from its start, for every row of the first. The scan
// passes over most rows without effect: those with another name key, and elements that are already read and are
// another property. A layout leads from one of the remaining rows to the next, in the order of the scan. It knows
// nothing of isEditable, by which the scan passes over rows too: that is the entity's own, and the merge looks at it
// where a layout leads.
//
// An example. The list of an entity came with three rows; a layout keeps them by the number of their name key:
//
//   place  row                   name     rows_
//     0    Color    [General]     0       {0, place 0}
//     1    Start    [Geometry]    1       {1, place 1}
//     2    Layer    [General]     2       {2, place 2}
//
// The first entity's Start was broken up already, so the merge looks for its elements one after the other:
// the elements keep the name Start (name key 1) and are told apart by their labels (property keys 5, 6, 7).
//
// 1. Start X: nextCandidate(1, 5, from 0) is place 1. A row that came with the list is a candidate whatever
//    its label: it may not have been read yet. It is read and breaks up: it loses its name, which gives it
//    the name key 3 of a nameless row, and its elements are appended. The list goes on with another layout:
//
//      place  row                     name  property    rows_           elements_        expansions_
//        0    Color                     0               {0, place 0}
//        1    (nameless)                3               {3, place 1}
//        2    Layer                     2               {2, place 2}
//        3    Start, label Start X      1       5                       {1, 5, place 3}  {1, row 1, place 3}
//        4    Start, label Start Y      1       6                       {1, 6, place 4}
//        5    Start, label Start Z      1       7                       {1, 7, place 5}
//
// 2. Start Y: nextCandidate(1, 6, from 0) is place 4 at once. The scan visits 0 to 3 on its way and does
//    nothing there.
// 3. Were Start Z varying already, it would only have to exist: nextNamed(1, from 0) is place 3, the first element of
//    the expansion of a row with that name key.

#include <compare>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "propdata/merge/KeyTable.h"

namespace velt::propdata {

// What came of reading a row of a list.
struct Reading {
  // Null when it broke up.
  const VARIANT* value;
  // Into so many elements.
  std::uint32_t elements;
};

class ListLayout {
 public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  // What stands at a place.
  struct Spot {
    // None when nothing was found.
    std::uint32_t place = none;
    // The place itself, or that of the row that was broken up into the element.
    std::uint32_t row = none;
    // Which of the row's elements it is; none for a row that came with the list.
    std::uint32_t element = none;
    // Its property key; 0 for a row that came with the list, where lists with this layout have different ones.
    KeyNumber property = 0;

    bool isElement() const { return element != none; }
  };

  // What a row was broken up into.
  struct Expansion {
    // The row's name key before it lost its name, which the elements have too.
    KeyNumber name;
    // The places of the row and of the first element.
    std::uint32_t row;
    std::uint32_t first;
    // The property keys of the elements.
    std::shared_ptr<const std::vector<KeyNumber>> elements;

    std::uint32_t count() const { return static_cast<std::uint32_t>(elements->size()); }
    Spot element(std::uint32_t index) const { return {first + index, row, index, (*elements)[index]}; }
  };

  // The layout that a list with this one has after the row at `brokenUp` was broken up into these elements.
  struct Continuation {
    std::uint32_t brokenUp;
    std::vector<PropertyKey> elements;
    ListLayout* layout;
  };

  std::uint32_t length() const { return length_; }
  // In the order of the places.
  const std::vector<Expansion>& expansions() const { return expansions_; }
  Spot at(std::uint32_t place) const;

  // The first row at or after `from` whose values may have to be compared: a row of the list as it came with
  // that name key, or an appended element with both keys.
  Spot nextCandidate(KeyNumber name, KeyNumber property, std::uint32_t from) const;
  // The first row at or after `from` with that name key. Of an expansion only the first element counts: the others
  // have the same name key and the same isEditable.
  Spot nextNamed(KeyNumber name, std::uint32_t from) const;

  // Where the search that is under way begins in a list with this layout, so that it is looked up once for all such
  // lists. Belongs to whoever searches; no search has the number 0.
  struct Start {
    std::uint64_t search = 0;
    Spot spot;
  } start;

  // The number that the last list with this layout got when lists were numbered by what they are like. Belongs to whoever
  // numbers them.
  std::uint32_t alike = 0;

 private:
  friend class LayoutTable;

  struct Row {
    KeyNumber name;
    std::uint32_t place;
    auto operator<=>(const Row&) const = default;
  };
  struct Element {
    KeyNumber name;
    KeyNumber property;
    std::uint32_t place;
    auto operator<=>(const Element&) const = default;
  };
  Spot came(std::uint32_t place) const {
    return {place, place, none, properties_.empty() ? 0 : properties_[place]};
  }

  std::uint32_t length_ = 0;
  // The property keys of the rows that came with the list; empty where lists with this layout have different ones.
  std::vector<KeyNumber> properties_;
  // Both sorted.
  std::vector<Row> rows_;
  std::vector<Element> elements_;
  std::vector<Expansion> expansions_;
  // At most one for each row.
  std::vector<Continuation> continuations_;
};

}  // namespace velt::propdata
