#pragma once

// The ways in which rows reach their values.

#include <type_traits>

#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

// X, Y and Z of a row whose value is a point or a direction in space.
extern const ElementAccess pointElements;

// The normal of an entity's plane, or of its thickness.
[[nodiscard]] Vector3 getNormal(const Subject& subject);

namespace access {

Value getReal(const Subject&, const PropertyRow&);
Value getDegrees(const Subject&, const PropertyRow&);
Value getDirection(const Subject&, const PropertyRow&);
Value getInteger(const Subject&, const PropertyRow&);
Value getBit(const Subject&, const PropertyRow&);
Value getText(const Subject&, const PropertyRow&);
Value getWorldPoint(const Subject&, const PropertyRow&);
Value getObjectPoint(const Subject&, const PropertyRow&);

// A put of the value that is there already changes nothing, so that rounding on the way to a palette and back does not
// reach the drawing.
void putReal(const Subject&, const PropertyRow&, const Value&);
void putDegrees(const Subject&, const PropertyRow&, const Value&);
void putDirection(const Subject&, const PropertyRow&, const Value&);
void putInteger(const Subject&, const PropertyRow&, const Value&);
void putBit(const Subject&, const PropertyRow&, const Value&);
void putText(const Subject&, const PropertyRow&, const Value&);
void putWorldPoint(const Subject&, const PropertyRow&, const Value&);
void putObjectPoint(const Subject&, const PropertyRow&, const Value&);

template <auto Get>
Value getBy(const Subject& subject, const PropertyRow&) {
  return Value(Get(subject));
}

template <class Argument>
void putThrough(void (*put)(const Subject&, Argument), const Subject& subject, const Value& value) {
  if constexpr (std::is_same_v<std::remove_cvref_t<Argument>, Value>) {
    put(subject, value);
  } else {
    put(subject, valueAs<std::remove_cvref_t<Argument>>(value));
  }
}

template <auto Put>
void putBy(const Subject& subject, const PropertyRow& row, const Value& value) {
  if (const auto* number = std::get_if<double>(&value)) requireWithin(row.access.limit, *number);
  putThrough(Put, subject, value);
}

}  // namespace access

// clang-format off
constexpr Access storedReal(int code, const char* subclass, double otherwise = 0) {
  return {.kind = AccessKind::Real, .code = code, .subclass = subclass, .otherwise = otherwise, .get = access::getReal, .put = access::putReal};
}
constexpr Access storedDegrees(int code, const char* subclass, double otherwiseDegrees = 0) {
  return {.kind = AccessKind::Degrees, .code = code, .subclass = subclass, .otherwise = otherwiseDegrees, .get = access::getDegrees, .put = access::putDegrees};
}
constexpr Access storedDirection(int code, const char* subclass, double otherwiseDegrees = 0) {
  return {.kind = AccessKind::Direction, .code = code, .subclass = subclass, .otherwise = otherwiseDegrees, .get = access::getDirection, .put = access::putDirection};
}
constexpr Access storedInteger(int code, const char* subclass, std::int32_t otherwise = 0) {
  return {.kind = AccessKind::Integer, .code = code, .subclass = subclass, .otherwise = static_cast<double>(otherwise), .get = access::getInteger, .put = access::putInteger};
}
constexpr Access storedBit(int code, const char* subclass, std::int32_t mask) {
  return {.kind = AccessKind::Bit, .code = code, .subclass = subclass, .mask = mask, .get = access::getBit, .put = access::putBit};
}
constexpr Access storedText(int code, const char* subclass) {
  return {.kind = AccessKind::Text, .code = code, .subclass = subclass, .get = access::getText, .put = access::putText};
}
constexpr Access worldPoint(int code, const char* subclass) {
  return {.kind = AccessKind::WorldPoint, .code = code, .subclass = subclass, .get = access::getWorldPoint, .put = access::putWorldPoint, .elements = &pointElements};
}
constexpr Access objectPoint(int code, const char* subclass) {
  return {.kind = AccessKind::ObjectPoint, .code = code, .subclass = subclass, .get = access::getObjectPoint, .put = access::putObjectPoint, .elements = &pointElements};
}
// clang-format on

// By functions of the class: `T Get(const Subject&)` for one of the types of Value, `void Put(const Subject&, const T&)`,
// or with a Value where it takes several types.
template <auto Get, auto Put = nullptr>
constexpr Access computed() {
  Access made{.kind = AccessKind::Computed, .get = access::getBy<Get>};
  if constexpr (Put != nullptr) made.put = access::putBy<Put>;
  return made;
}

// The same for points and directions.
template <auto Get, auto Put = nullptr>
constexpr Access computedPoint() {
  Access made = computed<Get, Put>();
  made.elements = &pointElements;
  return made;
}

// A stored value with a put of its own, which keeps other values in step.
template <auto Put>
constexpr Access writtenBy(Access stored) {
  stored.put = access::putBy<Put>;
  return stored;
}

}  // namespace velt::automation
