// Makes a row's value from a text.

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

#include "palette/Palette.h"
#include "palette/rows/NumberKinds.h"
#include "palette/values/Variants.h"

namespace velt::palette {

namespace {

// The type of the value that the entity gave, because some properties are declared with a type of the object's own. Where
// it gave none, such a type is taken for a choice's number or for a number.
VARTYPE typeOf(const PROPINFO& row) {
  if (row.value.vt != VT_EMPTY) return row.value.vt;
  if (row.valueType != VT_USERDEFINED) return row.valueType;
  return row.hasChoices ? VT_I4 : VT_R8;
}

bool isInteger(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
      return true;
    default:
      return false;
  }
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

template <class Number>
std::optional<Number> numberIn(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

template <class Number>
bool fits(std::int64_t number) {
  return std::in_range<Number>(number);
}

bool fitsType(VARTYPE type, std::int64_t number) {
  switch (type) {
    case VT_I1:
      return fits<std::int8_t>(number);
    case VT_UI1:
      return fits<std::uint8_t>(number);
    case VT_I2:
      return fits<std::int16_t>(number);
    case VT_UI2:
      return fits<std::uint16_t>(number);
    case VT_I4:
    case VT_INT:
      return fits<std::int32_t>(number);
    case VT_UI4:
    case VT_UINT:
      return fits<std::uint32_t>(number);
    case VT_UI8:
      return fits<std::uint64_t>(number);
    default:
      return true;
  }
}

// One text that is to become a value of one row.
class Parsing {
 public:
  Parsing(const PROPINFO& row, std::string_view text) : row_(row), text_(text), type_(typeOf(row)) {}

  Value run() const {
    if (row_.hasChoices) {
      if (const auto choice = choiceNamed()) return chosenValue(*choice);
    }
    if (isInteger(type_)) return integerValue();
    switch (type_) {
      case VT_R4:
      case VT_R8:
        return realValue();
      case VT_BOOL:
        return yesOrNo();
      case VT_BSTR:
        if (row_.hasChoices && !row_.choiceNames.isEmpty()) refuseOtherThanChoices();
        return Value::ofText(text_);
      default:
        return Value::ofText(text_);
    }
  }

 private:
  [[noreturn]] void refuse(std::string_view why) const {
    throw Error(fmt::format("\"{}\" is {}", text_, why));
  }
  [[noreturn]] void refuseOtherThanChoices() const { refuse("not one of its choices: " + choiceList()); }

  std::string choiceList() const {
    constexpr std::uint32_t mostNamed = 40;
    std::string names;
    for (std::uint32_t i = 0; i < row_.choiceNames.length(); ++i) {
      if (i == mostNamed) return names + fmt::format(" and {} more", row_.choiceNames.length() - mostNamed);
      if (i > 0) names += ", ";
      names += oneLine(row_.choiceNames[i].str());
    }
    return names;
  }

  std::optional<std::uint32_t> choiceNamed() const {
    for (std::uint32_t i = 0; i < row_.choiceNames.length(); ++i) {
      if (oneLine(row_.choiceNames[i].str()) == text_) return i;
    }
    for (std::uint32_t i = 0; i < row_.choiceNames.length(); ++i) {
      if (equalIgnoringCase(oneLine(row_.choiceNames[i].str()), text_)) return i;
    }
    return std::nullopt;
  }

  Value chosenValue(std::uint32_t choice) const {
    switch (type_) {
      case VT_BSTR:
      case VT_DISPATCH:
        return textValue(row_.choiceNames[choice].str());
      case VT_R4:
      case VT_R8:
        if (choice >= row_.choiceReals.length()) refuse("a choice without a value");
        return Value::ofReal(row_.choiceReals[choice]);
      default:
        if (choice >= row_.choiceValues.length()) refuse("a choice without a value");
        return integerValue(row_.choiceValues[choice]);
    }
  }

  bool isOneOfTheChoices(std::int64_t number) const {
    for (const int value : row_.choiceValues) {
      if (value == number) return true;
    }
    return false;
  }

  Value integerValue() const {
    const std::optional<std::int64_t> number = numberIn<std::int64_t>(text_);
    if (row_.hasChoices && !(number && isOneOfTheChoices(*number))) refuseOtherThanChoices();
    if (!number) refuse("not a whole number");
    return integerValue(*number);
  }

  Value integerValue(std::int64_t number) const {
    if (!fitsType(type_, number)) refuse("out of range");
    VARIANT made{};
    made.vt = type_;
    // The bytes of a shorter integer are the first ones of the longest.
    made.llVal = number;
    return owning(made);
  }

  Value realValue() const {
    std::string_view text = trimmed(text_);
    const bool inDegrees = isAngle(row_.customType);
    constexpr std::string_view degree = "\u00B0";
    if (inDegrees && text.ends_with(degree)) text.remove_suffix(degree.size());
    const std::optional<double> number = numberIn<double>(text);
    if (!number || !std::isfinite(*number)) refuse(inDegrees ? "not an angle in degrees" : "not a number");
    const double value = inDegrees ? *number * std::numbers::pi / 180.0 : *number;
    VARIANT made{};
    made.vt = type_;
    if (type_ == VT_R4) {
      made.fltVal = static_cast<float>(value);
    } else {
      made.dblVal = value;
    }
    return owning(made);
  }

  Value yesOrNo() const {
    const std::string_view text = trimmed(text_);
    for (const char* const yes : {"yes", "true", "on", "1"}) {
      if (equalIgnoringCase(text, yes)) return Value::ofFlag(true);
    }
    for (const char* const no : {"no", "false", "off", "0"}) {
      if (equalIgnoringCase(text, no)) return Value::ofFlag(false);
    }
    refuse("neither yes nor no");
  }

  const PROPINFO& row_;
  std::string_view text_;
  VARTYPE type_;
};

}  // namespace

bool Row::takesText() const {
  switch (typeOf(*record_)) {
    case VT_R4:
    case VT_R8:
    case VT_BOOL:
    case VT_BSTR:
    case VT_DISPATCH:
      return true;
    default:
      return isInteger(typeOf(*record_));
  }
}

Value Row::parse(std::string_view text) const {
  if (!takesText()) throw Error("its value cannot be written as text");
  return Parsing(*record_, text).run();
}

}  // namespace velt::palette
