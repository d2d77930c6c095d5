#pragma once

// A property's value between a drawing and a VARIANT.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/model/UserTypes.h"
#include "holders/InterfaceHolder.h"
#include "host/com/IDispatch.h"

namespace velt::automation {

using OwnedDispatch = holders::InterfaceHolder<IDispatch>;

// Lists of numbers are the coordinates of several points, one after the other.
using Value =
    std::variant<double, std::int32_t, bool, std::wstring, Vector3, std::vector<double>, OwnedDispatch>;

// Throws Refusal for a value of another type.
template <class T>
[[nodiscard]] const T& valueAs(const Value& value) {
  if (const T* held = std::get_if<T>(&value)) return *held;
  throw Refusal(DISP_E_TYPEMISMATCH, L"The property takes no value of this type.");
}

// A VARIANT for the caller, who clears it. The value must be one that the type can have: R8 from a real number, I4
// from an integer, BOOL, BSTR (never a null one, so that empty texts compare equal), DISPATCH, and for VT_VARIANT
// whatever it is, points as arrays of real numbers. Throws Refusal when memory is exhausted.
[[nodiscard]] VARIANT toVariant(Value value, const ValueType& type);

// What a caller gave for a property of that type, converted where that loses nothing. Nothing when it cannot be; no
// conversion is made of values that hold arrays or objects. An object is held with a reference of its own.
[[nodiscard]] std::optional<Value> fromVariant(const VARIANT& variant, const ValueType& type);

}  // namespace velt::automation
