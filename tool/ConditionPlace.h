#pragma once

// What is being typed at the end of a condition that is not finished, for the completion of a shell.

#include <string>
#include <string_view>

namespace velt::tool {

struct ConditionPlace {
  enum class What {
    // The name of a property, or one of the words that may stand before it.
    name,
    // What follows a name: =, like, ... It may also be the next word of a longer name.
    comparer,
    // What the property `name` is compared with.
    value,
    // and, or. It may also be the next word of a longer value.
    joint
  };
  What what = What::name;
  std::string name{};
  // Where in the text the operand begins that is being typed, or has just been.
  std::size_t begin = 0;
};

ConditionPlace placeIn(std::string_view condition);

// The name or value as a condition takes it: in quotes where it needs some, or where these are typed already. `quote` is
// that of the typed text, 0 for none.
std::string asOperand(std::string_view text, char quote = 0);

}  // namespace velt::tool
