// Makes a row's value from a text.

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "palette/Palette.h"
#include "palette/rows/NumberKinds.h"
#include "palette/text/AngleText.h"
#include "palette/text/LengthText.h"
#include "palette/text/NumberText.h"
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

// Larger numbers come from mistakes, and no program draws what they lead to.
constexpr double beyondAnyDrawing = 1e20;

Value realOf(VARTYPE type, double number) {
  VARIANT made{};
  made.vt = type;
  if (type == VT_R4) {
    made.fltVal = static_cast<float>(number);
  } else {
    made.dblVal = number;
  }
  return owning(made);
}

// One text that is to become a value of one row.
class Parsing {
 public:
  Parsing(const PROPINFO& row, std::string_view text, const NumberStyle& style)
      : row_(row), text_(text), style_(style), type_(typeOf(row)) {}

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
      case VT_DISPATCH:
        return Value::ofText(colorOfDigits().value_or(std::string(text_)));
      default:
        return Value::ofText(text_);
    }
  }

 private:
  [[noreturn]] void refuse(std::string_view why) const {
    throw Error(fmt::format("\"{}\" is {}", text_, why));
  }
  // The nearest choices or, where none is near, as many as one reads.
  [[noreturn]] void refuseOtherThanChoices() const {
    constexpr std::size_t mostNamed = 30;
    std::vector<std::string> labels;
    for (const CStdStr<wchar_t>& name : row_.choiceNames)
      labels.push_back(oneLine(name.str()));
    std::string all;
    for (std::size_t i = 0; i < labels.size() && i < mostNamed; ++i)
      all += (i > 0 ? ", " : ": ") + labels[i];
    if (labels.size() > mostNamed) all += fmt::format(" and {} more", labels.size() - mostNamed);
    refuse("not one of its choices" + didYouMean(text_, labels, all));
  }

  // #ff8800, in the parts that a color property takes.
  std::optional<std::string> colorOfDigits() const {
    const std::string_view text = trimmed(text_);
    constexpr std::size_t digits = 6;
    if (row_.customType != PropertyKind::colorObject || text.size() != digits + 1 || text[0] != '#')
      return std::nullopt;
    std::uint32_t color = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), color, 16);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return fmt::format("{},{},{}", color >> 16, color >> 8 & 0xFF, color & 0xFF);
  }

  // Both are compared as they are shown, so that what looks like a choice is one: the end of a line that was copied from a
  // file may have come with it.
  std::optional<std::uint32_t> choiceNamed() const {
    const std::string wanted = oneLine(fromUtf8(text_));
    for (std::uint32_t i = 0; i < row_.choiceNames.length(); ++i) {
      if (oneLine(row_.choiceNames[i].str()) == wanted) return i;
    }
    for (std::uint32_t i = 0; i < row_.choiceNames.length(); ++i) {
      if (equalIgnoringCase(oneLine(row_.choiceNames[i].str()), wanted)) return i;
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
        if (choice >= row_.choiceReals.length()) refuse("a choice that has no value to write");
        return Value::ofReal(row_.choiceReals[choice]);
      default:
        if (choice >= row_.choiceValues.length()) refuse("a choice that has no value to write");
        return integerValue(row_.choiceValues[choice]);
    }
  }

  bool isOneOfTheChoices(std::int64_t number) const {
    for (const int value : row_.choiceValues) {
      if (value == number) return true;
    }
    return false;
  }

  // Widths in millimetres, as 0.35 and 0.35mm, are hundredths to the property, as which 35 is meant too; a whole number
  // that is no width in hundredths is one in millimetres.
  std::optional<std::int64_t> lineweight() const {
    std::string_view text = trimmed(text_);
    const bool hasUnit = text.size() > 2 && equalIgnoringCase(text.substr(text.size() - 2), "mm");
    if (hasUnit) text.remove_suffix(2);
    const std::optional<double> width = decimalIn(text);
    constexpr double widest = 1000;
    if (!width || !(std::fabs(*width) <= widest)) return std::nullopt;
    const bool isWhole = text.find_first_of(".eE") == std::string_view::npos;
    if (isWhole && !hasUnit && isOneOfTheChoices(std::llround(*width))) return std::llround(*width);
    const double hundredths = *width * 100;
    const std::int64_t number = std::llround(hundredths);
    return std::fabs(hundredths - static_cast<double>(number)) < 1e-6 ? std::optional(number) : std::nullopt;
  }

  std::optional<std::int64_t> wholeNumber() const {
    const bool isLineweight =
        row_.customType == PropertyKind::entityLineweight || row_.customType == PropertyKind::lineweight;
    return isLineweight ? lineweight() : numberIn<std::int64_t>(text_);
  }

  Value integerValue() const {
    const std::optional<std::int64_t> number = wholeNumber();
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

  double realNumber() const {
    if (isAngle(row_.customType)) {
      if (const auto angle = angleIn(text_, isDirection(row_), style_)) return *angle;
      refuse("not an angle: write degrees such as 80 or 80.5\u00B0, 80\u00B030', or 1.5 rad");
    }
    if (isLength(row_)) {
      if (const auto length = lengthIn(text_, style_)) return *length;
      const bool hasFeet = style_.lengthFormat == LengthFormat::engineering
                           || style_.lengthFormat == LengthFormat::architectural;
      refuse(hasFeet ? "not a length: write inches such as 66 or 66.5, or 5'-6 1/2\""
                     : "not a number: write one such as 2.5");
    }
    if (const auto number = decimalIn(text_)) return *number;
    refuse("not a number: write one such as 2.5");
  }

  Value realValue() const {
    const double value = realNumber();
    if (std::fabs(value) > beyondAnyDrawing) refuse("too large for any drawing");
    return realOf(type_, value);
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
  const NumberStyle& style_;
  VARTYPE type_;
};

}  // namespace

Value Row::valueOf(const PlainValue& data) const {
  const VARTYPE type = typeOf(*record_);
  if (const auto* const text = std::get_if<std::string>(&data)) {
    const bool holdsTexts = type == VT_BSTR || type == VT_DISPATCH;
    return holdsTexts ? Value::ofText(*text) : parse(*text);
  }
  if (const auto* const flag = std::get_if<bool>(&data)) {
    if (type == VT_BOOL) return Value::ofFlag(*flag);
    throw Error(*flag ? "yes is not a value that it can have" : "no is not a value that it can have");
  }
  const std::optional<double> number = numberOf(data);
  if (!number) throw Error("it cannot be left without a value");
  if (type == VT_R4 || type == VT_R8) {
    if (!(std::fabs(*number) <= beyondAnyDrawing))
      throw Error(fmt::format("\"{}\" is too large for any drawing", *number));
    return realOf(type, *number);
  }
  constexpr double allExact = 9007199254740992.0;
  if (isInteger(type) && std::trunc(*number) == *number && std::fabs(*number) <= allExact) {
    if (fitsType(type, static_cast<std::int64_t>(*number))) {
      VARIANT made{};
      made.vt = type;
      made.llVal = static_cast<std::int64_t>(*number);
      return owning(made);
    }
    throw Error(fmt::format("\"{}\" is out of range", *number));
  }
  throw Error(isInteger(type) ? fmt::format("\"{}\" is not a whole number", *number)
                              : fmt::format("the number {} is not a value that it can have", *number));
}

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

Value Row::parse(std::string_view text, const NumberStyle& style) const {
  if (!takesText()) throw Error("its value cannot be written as text");
  return Parsing(*record_, text, style).run();
}

}  // namespace velt::palette
