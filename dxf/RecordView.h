#pragma once

// Looks up typed values in one record of a drawing. The record's pairs stay as they are.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "dxf/ReadPairs.h"
#include "dxf/Tag.h"

namespace velt::dxf {

// In the place of a subclass: look in all of them.
inline constexpr std::string_view anySubclass = "*";

// What entities of all kinds have (layer, color, line type, ...). Some writers leave its marker out, so this part also
// includes what stands before the first marker. It ends where another subclass begins after it: looking for a color that
// a polyline of many vertices lacks costs no more than looking for that of a line.
inline constexpr std::string_view commonSubclass = "AcDbEntity";

// Consecutive pairs of a record.
struct PairRange {
  std::size_t first = 0;
  std::size_t count = 0;
};

// Where the coordinates of a point stand.
struct PointPairs {
  std::size_t x = 0;
  std::optional<std::size_t> y{}, z{};
};

// A view of one record. It owns nothing: it and every text that it gave out are valid until the record is edited or the
// document ends.
//
// What a group code means depends on the subclass marker (code 100) before it, so a property is looked up by code and
// subclass. The empty subclass is the part before the first marker. A record without any marker, as in old drawings, is
// one section that answers to every subclass. Three things are never found as properties: pairs inside application
// groups (102 "{..." to 102 "}"), extended data (codes from 1000 on), and everything after the start of an embedded
// object (101 "Embedded Object"). An application group that is not closed ends at the next marker.
//
// All functions agree on where a property stands: what is inserted at insertionPoint() is found by find(), and
// coordinates are those of pointPairs() for readers and writers alike.
class RecordView {
 public:
  explicit RecordView(const ReadPairs& read) : read_(read), size_(read.size()) {}
  // Over an edited record. The pairs refer by their origin to those that were read.
  RecordView(const ReadPairs& read, std::span<const EditedPair> pairs)
      : read_(read), edited_(pairs.data()), size_(pairs.size()) {}

  [[nodiscard]] std::size_t size() const noexcept { return size_; }
  // Whether the record has not been edited.
  [[nodiscard]] bool isAsRead() const noexcept { return edited_ == nullptr; }
  [[nodiscard]] int code(std::size_t index) const noexcept {
    return edited_ == nullptr ? read_.code(index) : edited_[index].code;
  }
  // As it stands in the file, blanks included, in the drawing's encoding.
  [[nodiscard]] std::string_view value(std::size_t index) const noexcept {
    if (edited_ == nullptr) return read_.value(index);
    const EditedPair& pair = edited_[index];
    return pair.value.isThere() ? pair.value.text() : read_.value(pair.origin);
  }

  // The value of the leading 0, without blanks; empty for what stands before the first record.
  [[nodiscard]] std::string_view type() const noexcept;
  // The record's handle as it stands in the file: under 5, or under 105 for a DIMSTYLE, whose 5 is a block's name in
  // old drawings. Empty when there is none. Drawings may repeat a handle or write one that is not a number (see
  // parseHandle).
  [[nodiscard]] std::string_view handle() const;

  [[nodiscard]] bool hasSubclasses() const noexcept;
  [[nodiscard]] bool hasSubclass(std::string_view subclass) const;

  // Calls `visitor(index)` for each pair that is a property within the subclass, in file order, the markers excluded,
  // until the visitor returns false.
  template <class Visitor>
  void visit(std::string_view subclass, Visitor&& visitor) const;

  [[nodiscard]] std::optional<std::size_t> find(int wanted, std::string_view subclass,
                                                std::size_t occurrence = 0) const;
  [[nodiscard]] std::vector<std::size_t> findAll(int wanted, std::string_view subclass) const;

  // The value as it stands.
  [[nodiscard]] std::optional<std::string_view> text(int wanted, std::string_view subclass,
                                                     std::size_t occurrence = 0) const;
  // Nothing also for a value that is not a number.
  [[nodiscard]] std::optional<double> real(int wanted, std::string_view subclass,
                                           std::size_t occurrence = 0) const;
  [[nodiscard]] std::optional<std::int64_t> integer(int wanted, std::string_view subclass,
                                                    std::size_t occurrence = 0) const;
  // x under the code, y and z under code + 10 and code + 20 before the next x. What stands before the x belongs to another
  // point.
  [[nodiscard]] std::optional<PointPairs> pointPairs(int wanted, std::string_view subclass,
                                                     std::size_t occurrence = 0) const;
  // The numbers of those. A y or z that is missing or not a number is 0; false, and nothing is changed, for such an x.
  [[nodiscard]] bool readPoint(const PointPairs& pairs, double& x, double& y, double& z) const;
  [[nodiscard]] std::optional<std::array<double, 3>> point(int wanted, std::string_view subclass,
                                                           std::size_t occurrence = 0) const;

  // The pairs after `1001 application`, up to the next application; nothing when it has no data here.
  [[nodiscard]] std::optional<PairRange> extendedData(std::string_view application) const;
  // The pairs between `102 {name` and `102 }`.
  [[nodiscard]] std::optional<PairRange> applicationGroup(std::string_view name) const;
  // The pairs after the first `101 Embedded Object`, up to the extended data.
  [[nodiscard]] std::optional<PairRange> embeddedObject() const;

  // The index at which a pair that the subclass lacks is to be inserted: after its last pair with one of the codes in
  // `after`, else at its end, in neither case within an application group. Nothing when the record has other subclasses
  // only.
  [[nodiscard]] std::optional<std::size_t> insertionPoint(std::string_view subclass,
                                                          std::span<const int> after) const;

 private:
  // Follows the record from pair to pair and knows what each one is.
  class Walk;

  [[nodiscard]] static bool isEmbeddedObject(std::string_view value) noexcept {
    return trimmed(value) == "Embedded Object";
  }
  [[nodiscard]] static bool isExtendedData(int code) noexcept { return code >= 1000; }

  ReadPairs read_;
  const EditedPair* edited_ = nullptr;
  std::size_t size_;
};

class RecordView::Walk {
 public:
  Walk(const RecordView& record, std::string_view subclass)
      : record_(record),
        subclass_(subclass),
        isCommon_(subclass == commonSubclass),
        everywhere_(!isCommon_ && (subclass == anySubclass || !record.hasSubclasses())),
        inside_(everywhere_ || isCommon_ || subclass.empty()) {}

  // Takes the next pair. True when it is a property of the subclass. Once ended() is true, no other can follow.
  [[nodiscard]] bool isProperty(std::size_t index) {
    const int code = record_.code(index);
    if (code < 100) return inside_ && depth_ == 0 && code != 0;
    switch (code) {
      case 100:
        depth_ = 0;
        inside_ = everywhere_ || trimmed(record_.value(index)) == subclass_;
        if (isCommon_ && !inside_ && wasMarked_) ended_ = true;
        wasMarked_ = wasMarked_ || inside_;
        return false;
      case 101:
        ended_ = isEmbeddedObject(record_.value(index));
        return !ended_ && inside_ && depth_ == 0;
      case 102: {
        const std::string_view value = trimmed(record_.value(index));
        if (value.starts_with('{')) {
          ++depth_;
          return false;
        }
        if (depth_ > 0) {
          if (value.starts_with('}')) --depth_;
          return false;
        }
        return inside_;
      }
      default:
        if (isCommon_ && isExtendedData(code)) ended_ = true;
        return inside_ && depth_ == 0 && code < 999;
    }
  }

  // Whether the last pair was within the subclass, its application groups included.
  [[nodiscard]] bool inside() const noexcept { return inside_ && !ended_; }
  [[nodiscard]] bool inGroup() const noexcept { return depth_ > 0; }
  [[nodiscard]] bool ended() const noexcept { return ended_; }
  // Whether the section of a subclass goes on at the next marker of it.
  [[nodiscard]] bool joinsSections() const noexcept { return isCommon_ || subclass_ == anySubclass; }

 private:
  const RecordView& record_;
  std::string_view subclass_;
  bool isCommon_;
  bool everywhere_;
  bool inside_;
  // The common part has had a marker of its own.
  bool wasMarked_ = false;
  bool ended_ = false;
  std::size_t depth_ = 0;
};

template <class Visitor>
void RecordView::visit(std::string_view subclass, Visitor&& visitor) const {
  Walk walk(*this, subclass);
  for (std::size_t index = 0; index < size_ && !walk.ended(); ++index) {
    if (walk.isProperty(index) && !visitor(index)) return;
  }
}

}  // namespace velt::dxf
