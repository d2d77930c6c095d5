#pragma once

// Finds the rows of one entity's list at which the merge's scan would stop, without visiting the others.
//
// The merge is defined as a scan of every other list, from its start, for every row of the first. The scan
// passes over most rows without effect: those with another sameness key, and elements that are already read
// and are another property. A layout leads from one of the remaining rows to the next, in the order of the
// scan.
//
// An example. The list of an entity came with three rows; a layout keeps them by the number of their sameness
// key:
//
//   place  row                   sameness     rows_
//     0    Color    [General]       0         {0, place 0}
//     1    Start    [Geometry]      1         {1, place 1}
//     2    Layer    [General]       2         {2, place 2}
//
// The first entity's Start was broken up already, so the merge looks for its elements one after the other:
// the elements keep the name Start (sameness key 1) and are told apart by their labels (full keys 5, 6, 7).
//
// 1. Start X: nextCandidate(1, 5, from 0) is place 1. A row that came with the list is a candidate whatever
//    its label: it may not have been read yet. It is read and breaks up: it loses its name, which gives it
//    the sameness key 3 of a nameless row, and its elements are appended. The list goes on with another
//    layout:
//
//      place  row                   sameness   full     rows_           elements_       expansions_
//        0    Color                    0                {0, place 0}
//        1    (nameless)               3                {3, place 1}
//        2    Layer                    2                {2, place 2}
//        3    Start, label Start X     1        5                       {5, place 3}    {1, place 3}
//        4    Start, label Start Y     1        6                       {6, place 4}
//        5    Start, label Start Z     1        7                       {7, place 5}
//
// 2. Start Y: nextCandidate(1, 6, from 0) is place 4 at once. The scan visits 0 to 3 on its way and does
//    nothing there.
// 3. Were Start Z varying already, it would only have to exist: first(1) is place 3, the first element of the
//    expansion of a row with that sameness key.

#include <cstdint>
#include <limits>
#include <vector>

#include "propdata/merge/KeyTable.h"

namespace velt::propdata {

class ListLayout {
 public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  // The first row at or after `from` whose values may have to be compared: a row of the list as it came with
  // that sameness key, or an appended element with that full key.
  std::uint32_t nextCandidate(KeyNumber sameness, KeyNumber full, std::uint32_t from) const;
  // The first row with that sameness key.
  std::uint32_t first(KeyNumber sameness) const;
  // Whether the list is still as it came.
  bool isUnbroken() const { return expansions_.empty(); }

 private:
  friend class LayoutTable;

  struct Entry {
    KeyNumber key;
    std::uint32_t place;
    auto operator<=>(const Entry&) const = default;
  };
  // The layout that a list with this one has after the row at `brokenUp` was replaced by these elements.
  struct Continuation {
    std::uint32_t brokenUp;
    std::vector<PropertyKey> elements;
    ListLayout* layout;
  };
  static std::uint32_t next(const std::vector<Entry>& sorted, KeyNumber key, std::uint32_t from);

  std::uint32_t length_ = 0;
  // By sameness key, then place.
  std::vector<Entry> rows_;
  // By full key, then place.
  std::vector<Entry> elements_;
  // Sameness key and first element of each expansion, in the order of the places.
  std::vector<Entry> expansions_;
  // At most one for each row.
  std::vector<Continuation> continuations_;
};

}  // namespace velt::propdata
