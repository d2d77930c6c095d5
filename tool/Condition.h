#pragma once

// Conditions on the properties of entities, as --where takes them: Radius>5 and Layer like 'W*'.
//
//   condition:   comparisons with and, or, not and parentheses; `and` binds more tightly than `or`
//   comparison:  NAME = VALUE, and !=, <, <=, >, >=;  NAME like PATTERN, with * and ?;  NAME in (VALUE, VALUE);
//                has NAME, for entities that have such a property
//   NAME, VALUE: words, which may have blanks between them, or anything in quotes (a quote within is doubled)

#include <string>
#include <string_view>
#include <vector>

namespace velt::tool {

struct Condition {
  enum class Kind {
    all,
    any,
    negation,
    has,
    equal,
    different,
    less,
    lessOrEqual,
    greater,
    greaterOrEqual,
    like
  };
  Kind kind = Kind::all;
  // all, any: those that are joined; negation: one.
  std::vector<Condition> parts{};
  // Of the kinds after negation: the property. `value` as it was written, without quotes.
  std::string name{};
  std::string value{};

  friend bool operator==(const Condition&, const Condition&) = default;
};

// `NAME in (A, B)` becomes any of NAME = A and NAME = B. Throws UsageFailure that says where the text stops being a
// condition and what was expected there.
Condition parseCondition(std::string_view text);

}  // namespace velt::tool
