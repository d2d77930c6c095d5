#pragma once

// The ways in which rows reach their values.

#include <type_traits>

#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/PropertyTable.h"

namespace velt::automation {

// X, Y and Z of a row whose value is a point or a direction in space.
extern const ElementAccess pointElements;

namespace access {

Value getReal(const Subject&, const PropertyRow&);
Value getDegrees(const Subject&, const PropertyRow&);
Value getDirection(const Subject&, const PropertyRow&);
Value getInteger(const Subject&, const PropertyRow&);
Value getBit(const Subject&, const PropertyRow&);
Value getText(const Subject&, const PropertyRow&);
Value getWorldPoint(const Subject&, const PropertyRow&);
Value getObjectPoint(const Subject&, const PropertyRow&);

// Puts for the value that is there already change nothing, so that a rounding on the way to a palette and back does not
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
  return {AccessKind::Real, code, subclass, otherwise, 0, Limit::None, access::getReal, access::putReal, nullptr};
}
constexpr Access storedDegrees(int code, const char* subclass, double otherwiseDegrees = 0) {
  return {AccessKind::Degrees, code, subclass, otherwiseDegrees, 0, Limit::None, access::getDegrees, access::putDegrees, nullptr};
}
constexpr Access storedDirection(int code, const char* subclass, double otherwiseDegrees = 0) {
  return {AccessKind::Direction, code, subclass, otherwiseDegrees, 0, Limit::None, access::getDirection, access::putDirection, nullptr};
}
constexpr Access storedInteger(int code, const char* subclass, std::int32_t otherwise = 0) {
  return {AccessKind::Integer, code, subclass, static_cast<double>(otherwise), 0, Limit::None, access::getInteger, access::putInteger, nullptr};
}
constexpr Access storedBit(int code, const char* subclass, std::int32_t mask) {
  return {AccessKind::Bit, code, subclass, 0, mask, Limit::None, access::getBit, access::putBit, nullptr};
}
constexpr Access storedText(int code, const char* subclass) {
  return {AccessKind::Text, code, subclass, 0, 0, Limit::None, access::getText, access::putText, nullptr};
}
constexpr Access worldPoint(int code, const char* subclass) {
  return {AccessKind::WorldPoint, code, subclass, 0, 0, Limit::None, access::getWorldPoint, access::putWorldPoint, &pointElements};
}
constexpr Access objectPoint(int code, const char* subclass) {
  return {AccessKind::ObjectPoint, code, subclass, 0, 0, Limit::None, access::getObjectPoint, access::putObjectPoint, &pointElements};
}
// clang-format on

// By functions of the class: `T Get(const Subject&)` for one of the types of Value, `void Put(const Subject&, const T&)`,
// or with a Value where it takes several types.
template <auto Get, auto Put = nullptr>
constexpr Access computed() {
  Access made{AccessKind::Computed, 0, "", 0, 0, Limit::None, access::getBy<Get>, nullptr, nullptr};
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

// What is stored, with other things that a put has to keep in step.
template <auto Put>
constexpr Access writtenBy(Access stored) {
  stored.put = access::putBy<Put>;
  return stored;
}

}  // namespace velt::automation
