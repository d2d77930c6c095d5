#include <utility>

#include "palette/Palette.h"
#include "palette/support/HostCalls.h"
#include "palette/values/Variants.h"

namespace velt::palette {

namespace {

VARIANT tagged(VARTYPE type) {
  VARIANT made{};
  made.vt = type;
  return made;
}

}  // namespace

Value::Value(holders::VariantHolder held) : held_(std::move(held)) {}

Value Value::ofText(std::string_view text) {
  const std::wstring wide = fromUtf8(text);
  // What is not UTF-8 became another character.
  if (toUtf8(wide) != text) throw Error("the text is not UTF-8");
  if (wide.find(L'\0') != std::wstring::npos) throw Error("a text cannot hold the character NUL");
  return textValue(wide);
}

Value Value::ofReal(double number) {
  VARIANT made = tagged(VT_R8);
  made.dblVal = number;
  return owning(made);
}

Value Value::ofInteger(std::int32_t number) {
  VARIANT made = tagged(VT_I4);
  made.lVal = number;
  return owning(made);
}

Value Value::ofFlag(bool isYes) {
  VARIANT made = tagged(VT_BOOL);
  made.boolVal = isYes ? VARIANT_TRUE : VARIANT_FALSE;
  return owning(made);
}

PlainValue Value::plain() const {
  return orError([&] { return plainValueOf(held_.get()); });
}

}  // namespace velt::palette
