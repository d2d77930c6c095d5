#pragma once

// A value that a toy answers: described once, and made afresh for every receiver, who owns what he gets.

#include <optional>
#include <string>

#include "host/com/IDispatch.h"
#include "host/com/Variant.h"
#include "tests/support/Variants.h"

namespace velt::toys {

// Plain ones: i4(5), r8(1.5), borrowed(object).
using namespace variants;

class ToyValue {
 public:
  ToyValue() { VariantInit(&plain_); }  // VT_EMPTY
  // The bits as they are: for plain values, and for pointers that the receiver does not own.
  explicit ToyValue(const VARIANT& plain) : plain_(plain) {}
  explicit ToyValue(std::wstring text) : text_(std::move(text)) { plain_ = {}, plain_.vt = VT_BSTR; }
  ToyValue(VARTYPE type, IUnknown* object) : object_(object) { plain_ = {}, plain_.vt = type; }

  VARIANT make() const;

 private:
  VARIANT plain_;
  std::optional<std::wstring> text_;
  IUnknown* object_ = nullptr;
};

// Values with an owner each time they are handed out.
inline ToyValue text(std::wstring characters) {
  return ToyValue(std::move(characters));
}
inline ToyValue object(IDispatch* dispatch) {
  return {VT_DISPATCH, dispatch};
}
inline ToyValue object(IUnknown* unknown) {
  return {VT_UNKNOWN, unknown};
}

std::string print(const VARIANT& value);  // "VT_I4 5", "VT_BSTR \"x\"", "VT_DISPATCH"
std::string nameOfType(VARTYPE type);     // "VT_I4", "VT 0x2005"

}  // namespace velt::toys
