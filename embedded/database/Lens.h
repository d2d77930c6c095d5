#pragma once

// Typed access to the values of one record.
//
// A value is named by its group code and the subclass that it stands in (see dxf::RecordView). The caller also gives
// the value that counts when the record has none, or one that cannot be read as what is asked for.
//
// Ownership: none. A lens is valid until the record is edited or the drawing is closed.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::database {

using Point = std::array<double, 3>;

using dxf::commonSubclass;

class Lens {
 public:
  explicit Lens(const ObjectRef& object) : Lens(*object.drawing, object.record) {}
  Lens(const Drawing& drawing, std::uint32_t record)
      : drawing_(&drawing), record_(record), view_(drawing.view(record)) {}

  [[nodiscard]] const dxf::RecordView& view() const { return view_; }
  [[nodiscard]] const Drawing& drawing() const { return *drawing_; }
  [[nodiscard]] std::string_view type() const { return view_.type(); }

  // The index in view() of the first value with that code.
  [[nodiscard]] std::optional<std::size_t> find(int code, std::string_view subclass) const;
  [[nodiscard]] bool has(int code, std::string_view subclass) const;
  // As it stands in the file.
  [[nodiscard]] std::optional<std::string_view> value(int code, std::string_view subclass) const;

  [[nodiscard]] double real(int code, std::string_view subclass, double otherwise) const;
  [[nodiscard]] std::int64_t integer(int code, std::string_view subclass, std::int64_t otherwise) const;
  [[nodiscard]] std::uint64_t handle(int code, std::string_view subclass, std::uint64_t otherwise = 0) const;
  // Decoded, with the blanks around it.
  [[nodiscard]] std::wstring text(int code, std::string_view subclass,
                                  std::wstring_view otherwise = L"") const;
  // Decoded, without the blanks around it, which are not part of a name. An empty name counts as missing.
  [[nodiscard]] std::wstring name(int code, std::string_view subclass,
                                  std::wstring_view otherwise = L"") const;
  // x under the code, y and z under code + 10 and code + 20; a missing y or z is 0.
  [[nodiscard]] Point point(int code, std::string_view subclass, const Point& otherwise = {}) const {
    Point point = otherwise;
    return readPoint(code, subclass, point[0], point[1], point[2]) ? point : otherwise;
  }
  // The same into numbers of the caller. False, and nothing is changed, where there is no such point.
  bool readPoint(int code, std::string_view subclass, double& x, double& y, double& z) const;

  // All values of a code that repeats, in file order; one that is not a number counts as 0.
  [[nodiscard]] std::vector<double> reals(int code, std::string_view subclass) const;
  [[nodiscard]] std::vector<Point> points(int code, std::string_view subclass) const;
  [[nodiscard]] std::vector<std::wstring> texts(int code, std::string_view subclass) const;

  // The pairs of view() that are the extended data of an application; nothing when it has none here.
  [[nodiscard]] std::optional<dxf::PairRange> xdata(std::string_view application) const {
    return view_.extendedData(application);
  }

 private:
  // RecordShapes::nowhere when there is none.
  [[nodiscard]] std::size_t indexOf(int code, std::string_view subclass) const;

  const Drawing* drawing_;
  std::uint32_t record_;
  dxf::RecordView view_;
};

}  // namespace velt::database
