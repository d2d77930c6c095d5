// The variables of a dimension style, as one dimension, leader or tolerance has them.
//
// An entity names its style, and may carry variables of its own in its extended data, which count more. What neither has
// is what drawings mean by leaving it out. A variable is named by the group code that it has in the style's record.
//
// Ownership: none; an edit of the drawing makes it useless.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/automation/PropertyTable.h"

namespace velt::automation {

class DimensionStyle {
 public:
  explicit DimensionStyle(const Subject& subject);

  /// "Standard" when the entity names none.
  [[nodiscard]] std::wstring name() const;
  [[nodiscard]] double real(int code, double otherwise) const;
  [[nodiscard]] std::int64_t integer(int code, std::int64_t otherwise) const;
  [[nodiscard]] std::wstring text(int code) const;
  /// The name that the table has for the entry whose handle the variable is; empty for none.
  [[nodiscard]] std::wstring entryName(int code, const database::Table& table) const;
  /// Empty for the usual arrowhead. Old drawings have names where others have handles; both codes are asked.
  [[nodiscard]] std::wstring blockName(int handleCode, int nameCode) const;
  [[nodiscard]] bool has(int code) const { return value(code).has_value(); }

 private:
  [[nodiscard]] std::optional<std::string_view> value(int code) const;
  [[nodiscard]] std::optional<std::string_view> overriding(int code) const;

  database::Lens entity_;
  std::optional<database::Lens> style_;
};

/// A member of types::arrowhead for the name of a block.
[[nodiscard]] std::int32_t arrowheadOfBlock(std::wstring_view name);

namespace access {

Value getStyleReal(const Subject&, const PropertyRow&);
Value getStyleInteger(const Subject&, const PropertyRow&);
Value getStyleFlag(const Subject&, const PropertyRow&);
Value getStyleBit(const Subject&, const PropertyRow&);
Value getStyleMember(const Subject&, const PropertyRow&);
Value getStyleLinetype(const Subject&, const PropertyRow&);

}  // namespace access

/// The subclass of the records that hold the variables.
inline constexpr const char* dimensionStyleSubclass = "AcDbDimStyleTableRecord";

// clang-format off
constexpr Access styleVariable(int code, double otherwise, Value (*get)(const Subject&, const PropertyRow&), std::int32_t mask = 0) {
  return {AccessKind::StyleVariable, code, dimensionStyleSubclass, otherwise, mask, Limit::None, get, nullptr, nullptr};
}
constexpr Access styleReal(int code, double otherwise) { return styleVariable(code, otherwise, access::getStyleReal); }
constexpr Access styleInteger(int code, std::int32_t otherwise) { return styleVariable(code, otherwise, access::getStyleInteger); }
constexpr Access styleFlag(int code, bool otherwise) { return styleVariable(code, otherwise ? 1 : 0, access::getStyleFlag); }
constexpr Access styleBit(int code, std::int32_t mask) { return styleVariable(code, 0, access::getStyleBit, mask); }
/// Of the row's enumeration; what is none of its members counts as missing.
constexpr Access styleMember(int code, std::int32_t otherwise) { return styleVariable(code, otherwise, access::getStyleMember); }
constexpr Access styleLinetype(int code) { return styleVariable(code, 0, access::getStyleLinetype); }
// clang-format on

}  // namespace velt::automation
