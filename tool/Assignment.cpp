#include "tool/Assignment.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <new>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

#include "embedded/automation/model/ReadOnlyReason.h"
#include "palette/rows/NumberKinds.h"
#include "palette/text/Utf8.h"
#include "tool/Failure.h"

namespace velt::tool {

namespace {

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

// --- rows ------------------------------------------------------------------------------------------------

std::string shownName(const PROPINFO& row) {
  return oneLine(row.displayName.str());
}

std::vector<const PROPINFO*> rowsNamed(const std::string& name, const TqVector<PROPINFO>& rows) {
  std::vector<const PROPINFO*> found;
  for (const PROPINFO& row : rows) {
    if (equalIgnoringCase(shownName(row), name)) found.push_back(&row);
  }
  if (!found.empty()) return found;
  for (const PROPINFO& row : rows) {
    if (equalIgnoringCase(oneLine(row.name.str()), name)) found.push_back(&row);
  }
  return found;
}

// A sentence of the host, which begins with a word, for the middle of another one.
std::string clauseOf(const std::wstring& sentence) {
  std::string clause = oneLine(sentence);
  if (clause.ends_with('.')) clause.pop_back();
  if (!clause.empty() && clause[0] >= 'A' && clause[0] <= 'Z') clause[0] += 'a' - 'A';
  return clause;
}

std::string editableNames(const TqVector<PROPINFO>& rows) {
  std::string names;
  std::string last;
  for (const PROPINFO& row : rows) {
    if (!row.isEditable || shownName(row) == last) continue;
    last = shownName(row);
    if (!names.empty()) names += ", ";
    names += last;
  }
  return names.empty() ? "no property of the selection can be edited" : "these can be edited: " + names;
}

// Of the value that the entity gave, since some are declared as a type of the object's own.
VARTYPE typeOf(const PROPINFO& row) {
  return row.value.vt != VT_EMPTY ? row.value.vt : row.valueType;
}

// --- values ----------------------------------------------------------------------------------------------

std::string choicesOf(const PROPINFO& row) {
  constexpr std::uint32_t mostNamed = 40;
  std::string names;
  for (std::uint32_t i = 0; i < row.choiceNames.length(); ++i) {
    if (i == mostNamed) return names + fmt::format(" and {} more", row.choiceNames.length() - mostNamed);
    if (i > 0) names += ", ";
    names += oneLine(row.choiceNames[i].str());
  }
  return names;
}

std::optional<std::uint32_t> choiceNamed(const PROPINFO& row, const std::string& value) {
  for (std::uint32_t i = 0; i < row.choiceNames.length(); ++i) {
    if (oneLine(row.choiceNames[i].str()) == value) return i;
  }
  for (std::uint32_t i = 0; i < row.choiceNames.length(); ++i) {
    if (equalIgnoringCase(oneLine(row.choiceNames[i].str()), value)) return i;
  }
  return std::nullopt;
}

[[noreturn]] void refuse(const Assignment& assignment, std::string_view wanted) {
  throw Failure(fmt::format("{}: \"{}\" is {}", assignment.name, assignment.value, wanted));
}

holders::VariantHolder textValue(const std::wstring& text) {
  holders::VariantHolder made;
  made.get().bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (made.get().bstrVal == nullptr) throw std::bad_alloc();
  made.get().vt = VT_BSTR;
  return made;
}

holders::VariantHolder realValue(const Assignment& assignment, const PROPINFO& row) {
  std::string_view text = trimmed(assignment.value);
  const bool inDegrees = isAngle(row.customType);
  constexpr std::string_view degree = "\u00B0";
  if (inDegrees && text.ends_with(degree)) text.remove_suffix(degree.size());
  const std::optional<double> number = numberIn<double>(text);
  if (!number || !std::isfinite(*number)) refuse(assignment, inDegrees ? "no angle in degrees" : "no number");
  holders::VariantHolder made;
  const double value = inDegrees ? *number * std::numbers::pi / 180.0 : *number;
  if (typeOf(row) == VT_R4) {
    made.get().fltVal = static_cast<float>(value);
  } else {
    made.get().dblVal = value;
  }
  made.get().vt = typeOf(row);
  return made;
}

holders::VariantHolder yesOrNo(const Assignment& assignment) {
  const std::string value(trimmed(assignment.value));
  holders::VariantHolder made;
  made.get().vt = VT_BOOL;
  for (const char* const yes : {"yes", "true", "on", "1"}) {
    if (!equalIgnoringCase(value, yes)) continue;
    made.get().boolVal = VARIANT_TRUE;
    return made;
  }
  for (const char* const no : {"no", "false", "off", "0"}) {
    if (equalIgnoringCase(value, no)) return made;
  }
  refuse(assignment, "neither yes nor no");
}

template <class Number>
bool fits(long long number) {
  return number >= static_cast<long long>(std::numeric_limits<Number>::min())
         && number <= static_cast<long long>(std::numeric_limits<Number>::max());
}

holders::VariantHolder integerValue(const Assignment& assignment, VARTYPE type, long long number) {
  holders::VariantHolder made;
  VARIANT& value = made.get();
  bool isInRange = true;
  // The bytes of a shorter integer are the first ones of the longest.
  value.llVal = number;
  switch (type) {
    case VT_I1:
      isInRange = fits<std::int8_t>(number);
      break;
    case VT_UI1:
      isInRange = fits<std::uint8_t>(number);
      break;
    case VT_I2:
      isInRange = fits<std::int16_t>(number);
      break;
    case VT_UI2:
      isInRange = fits<std::uint16_t>(number);
      break;
    case VT_I4:
    case VT_INT:
      isInRange = fits<std::int32_t>(number);
      break;
    case VT_UI4:
    case VT_UINT:
      isInRange = fits<std::uint32_t>(number);
      break;
    case VT_UI8:
      isInRange = number >= 0;
      break;
    default:
      break;
  }
  if (!isInRange) refuse(assignment, "out of range");
  value.vt = type;
  return made;
}

holders::VariantHolder integerValue(const Assignment& assignment, const PROPINFO& row) {
  const std::optional<long long> number = numberIn<long long>(assignment.value);
  if (!number) refuse(assignment, "no whole number");
  return integerValue(assignment, typeOf(row), *number);
}

holders::VariantHolder chosenValue(const Assignment& assignment, const PROPINFO& row, std::uint32_t choice) {
  switch (typeOf(row)) {
    case VT_BSTR:
    case VT_DISPATCH:
      return textValue(row.choiceNames[choice].str());
    case VT_R4:
    case VT_R8: {
      holders::VariantHolder made;
      if (choice >= row.choiceReals.length()) refuse(assignment, "a choice without a value");
      made.get().dblVal = row.choiceReals[choice];
      made.get().vt = VT_R8;
      return made;
    }
    default:
      if (choice >= row.choiceValues.length()) refuse(assignment, "a choice without a value");
      return integerValue(assignment, typeOf(row), row.choiceValues[choice]);
  }
}

bool isOneOf(long long number, const TqVector<int>& values) {
  for (const int value : values) {
    if (value == number) return true;
  }
  return false;
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

}  // namespace

Assignment parseAssignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  Assignment made{.text = std::string(text), .name = std::string(trimmed(text.substr(0, equals)))};
  if (equals == std::string_view::npos || made.name.empty()) {
    throw UsageFailure(fmt::format("\"{}\" is no assignment; write NAME=VALUE, such as Layer=Walls", text));
  }
  made.value = text.substr(equals + 1);
  if (const std::size_t hash = made.name.rfind('#'); hash != std::string::npos) {
    if (const auto number = numberIn<std::size_t>(std::string_view(made.name).substr(hash + 1));
        number && *number > 0) {
      made.number = *number;
      made.name = trimmed(std::string_view(made.name).substr(0, hash));
    }
  }
  return made;
}

const PROPINFO& rowFor(const Assignment& assignment, const TqVector<PROPINFO>& rows) {
  const std::vector<const PROPINFO*> found = rowsNamed(assignment.name, rows);
  if (found.empty()) {
    throw Failure(fmt::format("the selection has no property {}; {}", assignment.name, editableNames(rows)));
  }
  if (assignment.number > found.size()) {
    throw Failure(fmt::format("the selection has {} of the name {}, not {}", found.size(), assignment.name,
                              assignment.number));
  }
  if (assignment.number == 0 && found.size() > 1) {
    throw Failure(fmt::format("{0} is the name of {1} properties; say which, from {0}#1 to {0}#{1}",
                              assignment.name, found.size()));
  }
  const PROPINFO& row = *found[assignment.number == 0 ? 0 : assignment.number - 1];
  if (!row.isEditable) {
    const std::string why = clauseOf(automation::readOnlyReason(row.clsid, row.dispId, row.objectId));
    throw Failure(fmt::format("{} cannot be edited{}{}; {}", assignment.name, why.empty() ? "" : ": ", why,
                              editableNames(rows)));
  }
  return row;
}

holders::VariantHolder valueFor(const Assignment& assignment, const PROPINFO& row) {
  if (row.hasChoices) {
    if (const auto choice = choiceNamed(row, assignment.value)) return chosenValue(assignment, row, *choice);
  }
  if (isInteger(typeOf(row))) {
    const std::optional<long long> number = numberIn<long long>(assignment.value);
    if (row.hasChoices && !(number && isOneOf(*number, row.choiceValues))) {
      refuse(assignment, "none of its choices: " + choicesOf(row));
    }
    return integerValue(assignment, row);
  }
  switch (typeOf(row)) {
    case VT_R4:
    case VT_R8:
      return realValue(assignment, row);
    case VT_BOOL:
      return yesOrNo(assignment);
    case VT_BSTR:
      if (row.hasChoices && !row.choiceNames.isEmpty())
        refuse(assignment, "none of its choices: " + choicesOf(row));
      return textValue(fromUtf8(assignment.value));
    case VT_DISPATCH:
      return textValue(fromUtf8(assignment.value));
    default:
      throw Failure(fmt::format("{} has a value that cannot be written as text", assignment.name));
  }
}

}  // namespace velt::tool
