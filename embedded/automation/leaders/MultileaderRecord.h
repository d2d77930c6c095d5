#pragma once

// The parts of a multileader.
//
// The same codes mean different things in the record itself, in its contents, in each of its leaders and in each of their
// lines; braces in texts of their own part them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

enum class MultileaderPart : std::uint8_t { Itself, Contents, Leader, Line };

class MultileaderRecord {
 public:
  explicit MultileaderRecord(const Subject& subject) : lens_(subject.lens()) {}

  // The first value of the code in such a part.

  [[nodiscard]] std::optional<std::string_view> value(MultileaderPart part, int code) const;
  [[nodiscard]] double real(MultileaderPart part, int code, double otherwise) const;
  [[nodiscard]] std::int64_t integer(MultileaderPart part, int code, std::int64_t otherwise) const;
  [[nodiscard]] std::uint64_t handle(MultileaderPart part, int code) const;
  [[nodiscard]] std::wstring text(MultileaderPart part, int code) const;
  [[nodiscard]] Vector3 point(MultileaderPart part, int code, const Vector3& otherwise = {}) const;
  // Of all lines of all leaders.
  [[nodiscard]] std::vector<Vector3> vertices() const;
  [[nodiscard]] std::size_t count(MultileaderPart part) const;

 private:
  // Calls `visitor(part, index)` for each pair of the multileader until it returns false.
  template <class Visitor>
  void visit(Visitor&& visitor) const;

  database::Lens lens_;
};

}  // namespace velt::automation
