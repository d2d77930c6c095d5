#pragma once

// Finds the rows of one entity's list that the merge's scan would stop at, without visiting the others.
//
// The merge is described as a scan of every list from its start for every row. A row that has another sameness
// key is passed over without effect, and so is an element that was already read and is another property; a
// layout leads from one of the remaining rows to the next, in the order of the scan.
//
// Lists of one class are laid out alike, and still are after the same rows of them were broken up into the same
// elements. So layouts are shared by all such lists and never change: a list whose row is broken up goes on with
// another layout.

#include <array>
#include <cstdint>
#include <deque>
#include <limits>
#include <unordered_map>
#include <vector>

#include "propdata/VeltPropData.h"

namespace velt::propdata {

using KeyNumber = std::uint32_t;

// What makes two rows of different lists the same, as far as the scan is concerned.
struct SamenessKey {
  std::int32_t categoryId;
  bool isEditable;
  CStdStr<wchar_t> categoryName;
  CStdStr<wchar_t> name;

  static SamenessKey of(const PROPINFO& row) {
    return {row.categoryId, row.isEditable, row.categoryName, row.name};
  }
  bool operator==(const SamenessKey&) const = default;
};

// What else makes them the same property.
struct PropertyKey {
  bool hasChoices;
  bool isElement;
  CStdStr<wchar_t> displayName;

  static PropertyKey of(const PROPINFO& row) { return {row.hasChoices, row.isElement, row.displayName}; }
  bool operator==(const PropertyKey&) const = default;
};

// Numbers for keys: equal keys, equal numbers.
class KeyTable {
 public:
  KeyNumber samenessKey(const PROPINFO& row);
  // The sameness key and the property key together.
  KeyNumber fullKey(KeyNumber sameness, const PROPINFO& row);

 private:
  struct FullKey {
    KeyNumber sameness;
    PropertyKey property;
    bool operator==(const FullKey&) const = default;
  };
  struct Hash {
    std::size_t operator()(const SamenessKey& key) const;
    std::size_t operator()(const FullKey& key) const;
  };

  std::unordered_map<SamenessKey, KeyNumber, Hash> sameness_;
  std::unordered_map<FullKey, KeyNumber, Hash> full_;
};

class ListLayout {
 public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  // The first row at or behind `from` whose values may have to be compared: a row of the list as it came with
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
  // What a list with this layout goes on with.
  struct Continuation {
    std::uint32_t brokenUp;
    std::vector<PropertyKey> elements;
    ListLayout* layout;
  };
  static std::uint32_t next(const std::vector<Entry>& sorted, KeyNumber key, std::uint32_t from);

  std::uint32_t length_ = 0;
  std::vector<Entry> rows_;        // by sameness key, then place
  std::vector<Entry> elements_;    // by full key, then place
  std::vector<Entry> expansions_;  // sameness key and first element of each expansion, in order of place
  std::vector<Continuation> continuations_;  // at most one for each row
};

// Owns the layouts of one merge. Lists that are unlike all others get layouts of their own, at the cost of building
// them.
class LayoutTable {
 public:
  explicit LayoutTable(KeyTable& keys) : keys_(keys) {}

  ListLayout& of(const TqVector<PROPINFO>& list);

  // The layout after the row at a place was broken up. The row has lost its name already, `before` is its sameness
  // key from before that; the elements are going to stand behind the list. Labels that elements of other lists have
  // are shared from here on.
  ListLayout& brokenUp(ListLayout& layout, std::uint32_t place, KeyNumber before, const PROPINFO& row,
                       TqVector<PROPINFO>& elements);

 private:
  struct KnownList {
    std::vector<SamenessKey> rows;
    ListLayout* layout = nullptr;

    bool isLike(const TqVector<PROPINFO>& list) const;
  };

  ListLayout& build(const TqVector<PROPINFO>& list);
  ListLayout& extend(const ListLayout& layout, std::uint32_t place, KeyNumber before, const PROPINFO& row,
                     const TqVector<PROPINFO>& elements);

  KeyTable& keys_;
  std::deque<ListLayout> layouts_;
  std::array<KnownList, 64> known_;  // by the string that the first row is named with
};

}  // namespace velt::propdata
