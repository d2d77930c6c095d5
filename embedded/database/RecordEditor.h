#pragma once

// Typed editing of the values of one record: the counterpart of Lens.
//
// A value that is there is replaced, the first of several; one that is missing is inserted behind the last value that
// has one of the codes in `after`, else at the end of its subclass. One that is there already in other digits or another
// spelling stays as it is written, and then nothing is edited. Views and lenses of the record are invalid behind a call.
//
// Failure: false, and nothing changed, when the record has no such subclass. std::invalid_argument, and nothing changed,
// for a number that is not finite.
// Ownership: none; the end of the drawing makes the editor invalid, an edit does not.

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "embedded/database/Lens.h"

namespace velt::database {

class RecordEditor {
 public:
  // Group codes, for the length of a call.
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
  // In the drawing's encoding, as it is to stand in the file.
  bool setBytes(int code, std::string_view subclass, std::string_view value, Codes after = {});
  // Under the code, code + 10 and code + 20. The third is left out where the record has none and it is 0.
  bool setPoint(int code, std::string_view subclass, const Point& value, Codes after = {});

  // All values of the code in that subclass. False when there is none.
  bool remove(int code, std::string_view subclass);

 private:
  bool set(int code, std::string_view subclass, std::string_view value, Codes after);

  Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::database
