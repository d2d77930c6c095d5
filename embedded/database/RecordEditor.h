#pragma once

// Typed editing of the values of one record: the counterpart of Lens.
//
// An existing value is replaced, the first one when there are several. A missing one is inserted after the last value
// with one of the codes in `after`, else at the end of its subclass. Where the record already holds the same value, in
// whatever digits or spelling, nothing is edited. Views and lenses of the record are not valid after a call.
//
// Failure: false, and nothing is changed, when the record has no such subclass. A number that is not finite throws
// std::invalid_argument, and nothing is changed.
// Ownership: none. An editor is valid until the drawing is closed; edits leave it valid.

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "embedded/database/Lens.h"

namespace velt::database {

// The order in which drawings have what entities of all kinds have in common.
inline constexpr int commonOrder[] = {67, 410, 8, 6, 62, 370, 48, 60, 420, 430, 440};

// The part of an order that stands before the code; nothing for a code that it lacks.
[[nodiscard]] std::span<const int> codesBefore(int code, std::span<const int> order);

class RecordEditor {
 public:
  // Group codes. They are not copied, and have to last for the call only.
  class Codes : public std::span<const int> {
   public:
    Codes() = default;
    Codes(std::span<const int> codes) : span(codes) {}  // NOLINT(*-explicit-*)
    Codes(std::initializer_list<int> codes)             // NOLINT(*-explicit-*)
        : span(codes.begin(), codes.size()) {}
  };

  explicit RecordEditor(const ObjectRef& object) : RecordEditor(*object.drawing, object.record) {}
  RecordEditor(Drawing& drawing, std::uint32_t record) : drawing_(&drawing), record_(record) {}

  bool setReal(int code, std::string_view subclass, double value, Codes after = {});
  bool setInteger(int code, std::string_view subclass, std::int64_t value, Codes after = {});
  bool setHandle(int code, std::string_view subclass, std::uint64_t value, Codes after = {});
  bool setText(int code, std::string_view subclass, std::wstring_view value, Codes after = {});
  // Bytes that are to stand in the file, in the drawing's encoding.
  bool setBytes(int code, std::string_view subclass, std::string_view value, Codes after = {});
  // The coordinates of dxf::RecordView::pointPairs(). A y or z of 0 is not added to a point that has none.
  bool setPoint(int code, std::string_view subclass, const Point& value, Codes after = {});

  // Removes all values of the code in that subclass. False when there is none.
  bool remove(int code, std::string_view subclass);

 private:
  // Replaces the number of the pair, or inserts one after the pair `previous`.
  void setNumber(std::optional<std::size_t> pair, std::size_t previous, int code, double value);
  // Replaces or inserts what `write` gives, unless `isSame` says of the stored value that it is the same.
  template <class IsSame, class Write>
  bool setUnlessSame(int code, std::string_view subclass, Codes after, IsSame&& isSame, Write&& write);

  Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::database
