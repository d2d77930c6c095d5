#pragma once

// Writes group-code/value pairs of a new drawing.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "dxf/Encoding.h"

namespace velt::dxf {

// A point in drawing units.
struct Point {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

// Collects pairs. Texts are given in UTF-8 and written in the drawing's encoding; numbers are written with the fewest
// digits that read back as the same number.
class PairWriter {
 public:
  explicit PairWriter(Encoding encoding) : encoding_(std::move(encoding)) {}

  void text(int code, std::string_view utf8);
  void integer(int code, std::int64_t value);
  void real(int code, double value);
  void handle(int code, std::uint64_t value);
  // x under the code, y under code + 10, z under code + 20.
  void point(int code, const Point& at);
  // x and y alone.
  void flatPoint(int code, const Point& at);
  // Bytes in the drawing's encoding, without a line end.
  void verbatim(int code, std::string_view value);
  // Pairs of another writer with the same encoding.
  void append(const PairWriter& other) { bytes_ += other.bytes_; }

  [[nodiscard]] const Encoding& encoding() const noexcept { return encoding_; }
  [[nodiscard]] const std::string& bytes() const noexcept { return bytes_; }

 private:
  Encoding encoding_;
  std::string bytes_;
};

}  // namespace velt::dxf
