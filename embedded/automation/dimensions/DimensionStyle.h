#pragma once

// The variables of a dimension style, as one dimension, leader or tolerance has them.
//
// An entity names its style, and may carry variables of its own in its extended data, which count more. What neither has
// is what drawings mean by leaving it out. A variable is named by the group code that it has in the style's record.
// A variable that is written becomes one of the entity's own; the style stays what it is for all others.
//
// Ownership: none; an edit of the drawing makes it useless.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

class DimensionStyle {
 public:
  explicit DimensionStyle(const Subject& subject);

  // "Standard" when the entity names none.
  [[nodiscard]] std::wstring name() const;
  [[nodiscard]] double real(int code, double otherwise) const;
  // Whatever the entity overrides.
  [[nodiscard]] double realOfStyle(int code, double otherwise) const;
  [[nodiscard]] std::int64_t integer(int code, std::int64_t otherwise) const;
  [[nodiscard]] std::wstring text(int code) const;
  // The name that the table has for the entry whose handle the variable is; empty for none.
  [[nodiscard]] std::wstring entryName(int code, const database::Table& table) const;
  // Empty for the usual arrowhead. Old drawings have names where others have handles; both codes are asked.
  [[nodiscard]] std::wstring blockName(int handleCode, int nameCode) const;
  [[nodiscard]] bool has(int code) const { return value(code).has_value(); }

 private:
  [[nodiscard]] std::optional<std::string_view> value(int code) const;
  [[nodiscard]] std::optional<std::string_view> overriding(int code) const;

  database::Lens entity_;
  std::optional<database::Lens> style_;
};

// A member of types::arrowhead for the name of a block.
[[nodiscard]] std::int32_t arrowheadOfBlock(std::wstring_view name);

// The drawing's block for a member of types::arrowhead; null when it has none. Not for the usual one, which needs none,
// and not for one of the user's.
[[nodiscard]] const database::TableEntry* blockOfArrowhead(const database::Drawing& drawing,
                                                           std::int32_t arrowhead);

// By which variables and others refer to the entry. Throws Refusal for one that the drawing gives no handle.
[[nodiscard]] std::uint64_t handleOfEntry(const database::Drawing& drawing,
                                          const database::TableEntry& entry);

// Where the overrides of an entity stand in its view: codes of variables and values in turn.
struct Overrides {
  std::size_t begin = 0;
  // Of what can be read as such.
  std::size_t end = 0;
  // The list is closed there.
  bool isWhole = false;
};

inline constexpr std::string_view overridesApplication = "ACAD";
inline constexpr std::string_view overridesList = "DSTYLE";

[[nodiscard]] std::optional<Overrides> findOverrides(const database::Lens& entity);

// The version of the first format that knows the variable; empty for one that all know.
constexpr const char* firstFormatOf(int variable) {
  switch (variable) {
    // clang-format off
    case 270: case 271: case 272: case 273: case 274: case 275: case 280: case 281: case 282: case 283:
    case 284: case 285: case 286: case 287: case 288: case 340:
      return "AC1012";
    case 79: case 148: case 179: case 276: case 277: case 278: case 279: case 289: case 341: case 342:
    case 343: case 344: case 371: case 372:
      return "AC1015";
    case 49: case 69: case 90: case 290: case 345: case 346: case 347:
      return "AC1021";
    // clang-format on
    default:
      return "";
  }
}

namespace access {

Value getStyleReal(const Subject&, const PropertyRow&);
Value getStyleInteger(const Subject&, const PropertyRow&);
Value getStyleFlag(const Subject&, const PropertyRow&);
Value getStyleBit(const Subject&, const PropertyRow&);
Value getStyleMember(const Subject&, const PropertyRow&);
Value getStyleLinetype(const Subject&, const PropertyRow&);

// A put of the value in effect changes nothing, wherever it comes from.
void putStyleReal(const Subject&, const PropertyRow&, const Value&);
void putStyleColor(const Subject&, const PropertyRow&, const Value&);
void putStyleFlag(const Subject&, const PropertyRow&, const Value&);
void putStyleBit(const Subject&, const PropertyRow&, const Value&);
void putStyleMember(const Subject&, const PropertyRow&, const Value&);
void putStyleLinetype(const Subject&, const PropertyRow&, const Value&);

}  // namespace access

// The subclass of the records that hold the variables.
inline constexpr const char* dimensionStyleSubclass = "AcDbDimStyleTableRecord";

using Getter = Value (*)(const Subject&, const PropertyRow&);
using Putter = void (*)(const Subject&, const PropertyRow&, const Value&);

// clang-format off
constexpr Access styleVariable(int code, double otherwise, Getter get, Putter put, std::int32_t mask = 0) {
  return {.kind = AccessKind::StyleVariable, .code = code, .subclass = dimensionStyleSubclass, .otherwise = otherwise, .mask = mask, .get = get, .put = put, .since = firstFormatOf(code)};
}
constexpr Access styleReal(int code, double otherwise) { return styleVariable(code, otherwise, access::getStyleReal, access::putStyleReal); }
// The index of a color, by block if it is missing.
constexpr Access styleColor(int code) { return styleVariable(code, 0, access::getStyleInteger, access::putStyleColor); }
constexpr Access styleFlag(int code, bool otherwise) { return styleVariable(code, otherwise ? 1 : 0, access::getStyleFlag, access::putStyleFlag); }
constexpr Access styleBit(int code, std::int32_t mask) { return styleVariable(code, 0, access::getStyleBit, access::putStyleBit, mask); }
// Of the row's enumeration; what is none of its members counts as missing.
constexpr Access styleMember(int code, std::int32_t otherwise) { return styleVariable(code, otherwise, access::getStyleMember, access::putStyleMember); }
constexpr Access styleLinetype(int code) { return styleVariable(code, 0, access::getStyleLinetype, access::putStyleLinetype); }
// clang-format on

}  // namespace velt::automation
