#include "tests/support/ToyValue.h"

#include "tests/support/ToyHost.h"

namespace velt::toys {

VARIANT ToyValue::make() const {
  VARIANT made = plain_;
  if (text_.has_value()) made.bstrVal = SysAllocStringLen(text_->c_str(), static_cast<UINT>(text_->size()));
  if (object_ != nullptr) {
    object_->AddRef();
    made.punkVal = object_;
  }
  return made;
}

std::string nameOfType(VARTYPE type) {
  switch (type) {
#define VELT_NAME(name) \
  case name:            \
    return #name;
    VELT_NAME(VT_EMPTY)
    VELT_NAME(VT_NULL)
    VELT_NAME(VT_I2)
    VELT_NAME(VT_I4)
    VELT_NAME(VT_R4)
    VELT_NAME(VT_R8)
    VELT_NAME(VT_BSTR)
    VELT_NAME(VT_DISPATCH)
    VELT_NAME(VT_BOOL)
    VELT_NAME(VT_VARIANT)
    VELT_NAME(VT_UNKNOWN)
    VELT_NAME(VT_I8)
    VELT_NAME(VT_USERDEFINED)
#undef VELT_NAME
    default:
      return "VT " + hex(type);
  }
}

std::string print(const VARIANT& value) {
  const std::string type = nameOfType(value.vt);
  switch (value.vt) {
    case VT_I2:
      return say(type, " ", value.iVal);
    case VT_I4:
      return say(type, " ", value.lVal);
    case VT_I8:
      return say(type, " ", value.llVal);
    case VT_R4:
      return say(type, " ", value.fltVal);
    case VT_R8:
      return say(type, " ", value.dblVal);
    case VT_BOOL:
      return say(type, " ", value.boolVal);
    case VT_BSTR:
      return value.bstrVal == nullptr ? type + " null" : say(type, " \"", narrow(value.bstrVal), "\"");
    default:
      return type;
  }
}

}  // namespace velt::toys
