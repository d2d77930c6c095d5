#pragma once

// Where properties stand in a drawing's records, remembered for all records of one shape.
//
// A drawing's records look like many others: its lines have the same codes in the same order, with the same markers
// between them, and where a property stands depends on nothing else. A query looks thirty properties of each line up, one
// property after the other in all of them, so what was found in one is kept for the others.
//
// Records that were edited have no shape, and neither have long ones, nor those of a drawing of very many shapes: in them
// every lookup goes through the pairs.
// Threads: those of the drawing.
// Failure: none; a record has no shape either where there is no memory for it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "dxf/RecordView.h"

namespace velt::database {

class RecordShapes {
 public:
  // For a document of so many records.
  explicit RecordShapes(std::size_t records) : records_(records) {}

  // As dxf::RecordView::find() and pointPairs(); `view` is that of the record now.
  // `nowhere` where it is not.
  [[nodiscard]] std::size_t find(std::uint32_t record, const dxf::RecordView& view, int code,
                                 std::string_view subclass) {
    const Place* const place = placeOf(record, view, {code, false, subclass});
    if (place == nullptr) [[unlikely]]
      return view.find(code, subclass).value_or(nowhere);
    return place->isFound ? place->pairs.x : nowhere;
  }
  [[nodiscard]] std::optional<dxf::PointPairs> pointPairs(std::uint32_t record, const dxf::RecordView& view,
                                                          int code, std::string_view subclass) {
    const Place* const place = placeOf(record, view, {code, true, subclass});
    if (place == nullptr) return view.pointPairs(code, subclass);
    return place->isFound ? std::optional(place->pairs) : std::nullopt;
  }

  static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);
  static constexpr std::size_t mostPairs = 64;
  static constexpr std::size_t mostShapes = 1024;

 private:
  // Most names of subclasses have 8 to 16 letters, which are compared without a call.
  static bool areSame(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) return false;
    if (a.size() < 8 || a.size() > 16) return a == b;
    return wordAt(a, 0) == wordAt(b, 0) && wordAt(a, a.size() - 8) == wordAt(b, b.size() - 8);
  }
  static std::uint64_t wordAt(std::string_view text, std::size_t first) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + first, sizeof word);
    return word;
  }

  struct Wanted {
    int code = 0;
    bool isPoint = false;
    std::string_view subclass{};
    bool operator==(const Wanted& other) const noexcept {
      return code == other.code && isPoint == other.isPoint && areSame(subclass, other.subclass);
    }
  };

  // What was looked up, and where it stands: of a single value only x.
  struct Place {
    Wanted wanted{};
    bool isFound = false;
    dxf::PointPairs pairs{};
  };

  struct Shape {
    std::vector<int> codes;
    // The pairs whose values decide what the pairs after them are, with these values.
    std::vector<std::pair<std::size_t, std::string>> marks;
    // Each lookup has one place; the last one that has it stays.
    std::array<Place, 64> places{};
  };

  using ShapeNumber = std::uint16_t;
  // Of records; all other numbers are those of shapes, counted from 2.
  static constexpr ShapeNumber unknown = 0;
  static constexpr ShapeNumber shapeless = 1;

  static std::size_t slotOf(const Wanted& wanted) noexcept {
    return (static_cast<std::size_t>(wanted.code) * 2 + (wanted.isPoint ? 1 : 0) + wanted.subclass.size() * 7)
           % 64;
  }

  // Null for a record without a shape.
  const Place* placeOf(std::uint32_t record, const dxf::RecordView& view, const Wanted& wanted) {
    if (!view.isAsRead()) return nullptr;
    const ShapeNumber number = numberOf(record, view);
    if (number == unknown || number == shapeless) return nullptr;
    Place& place = shapes_[number - std::size_t{2}].places[slotOf(wanted)];
    if (!(place.wanted == wanted) && !lookUp(view, wanted, place)) return nullptr;
    return &place;
  }

  // Unknown where there was no memory to learn it.
  ShapeNumber numberOf(std::uint32_t record, const dxf::RecordView& view) noexcept {
    if (shapeOfRecord_.empty() || shapeOfRecord_[record] == unknown) [[unlikely]]
      return learn(record, view);
    return shapeOfRecord_[record];
  }
  ShapeNumber learn(std::uint32_t record, const dxf::RecordView& view) noexcept;
  ShapeNumber learned(const dxf::RecordView& view);
  bool lookUp(const dxf::RecordView& view, const Wanted& wanted, Place& place) noexcept;

  std::size_t records_;
  // Empty until the first lookup.
  std::vector<ShapeNumber> shapeOfRecord_;
  std::deque<Shape> shapes_;
  // By what they look like.
  std::unordered_multimap<std::size_t, ShapeNumber> numbers_;
  ShapeNumber last_ = shapeless;
  // The names in places.
  std::set<std::string, std::less<>> subclasses_;
};

}  // namespace velt::database
