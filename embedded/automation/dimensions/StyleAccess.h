#pragma once

// Rows that are a variable of the dimension style. A put overrides it for the entity; the style stays what it is for all
// others.

#include "embedded/automation/dimensions/StyleVariables.h"
#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

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

using Getter = Value (*)(const Subject&, const PropertyRow&);
using Putter = void (*)(const Subject&, const PropertyRow&, const Value&);

constexpr Access styleVariable(const StyleVariable& variable, Getter get, Putter put, std::int32_t mask = 0) {
  return {
      .kind = AccessKind::StyleVariable,
      .code = variable.code,
      .subclass = dimensionStyleSubclass,
      .otherwise = variable.usual,
      .mask = mask,
      .get = get,
      .put = put,
      .since = variable.since,
  };
}

// clang-format off
constexpr Access styleReal(const StyleVariable& variable) { return styleVariable(variable, access::getStyleReal, access::putStyleReal); }
// The index of a color.
constexpr Access styleColor(const StyleVariable& variable) { return styleVariable(variable, access::getStyleInteger, access::putStyleColor); }
constexpr Access styleFlag(const StyleVariable& variable) { return styleVariable(variable, access::getStyleFlag, access::putStyleFlag); }
constexpr Access styleBit(const StyleVariable& variable, std::int32_t mask) { return styleVariable(variable, access::getStyleBit, access::putStyleBit, mask); }
// A member of the row's enumeration; another number counts as missing.
constexpr Access styleMember(const StyleVariable& variable) { return styleVariable(variable, access::getStyleMember, access::putStyleMember); }
// By block where it is missing.
constexpr Access styleLinetype(const StyleVariable& variable) { return styleVariable(variable, access::getStyleLinetype, access::putStyleLinetype); }
// clang-format on

}  // namespace velt::automation
