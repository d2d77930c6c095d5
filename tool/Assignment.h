#pragma once

// What `veltprops set` is told: which row gets which value.

#include <cstddef>
#include <string>
#include <string_view>

#include "holders/VariantHolder.h"
#include "propdata/VeltPropData.h"

namespace velt::tool {

struct Assignment {
  std::string text{};      // as it stood on the command line
  std::string name{};      // of the row, as shown
  std::size_t number = 0;  // which of several rows of that name, from 1; 0 when none was told
  std::string value{};
};

// Throws UsageFailure for a text without a name or an equals sign.
Assignment parseAssignment(std::string_view text);

// The row that is meant: by the name that is shown, or by the property's own name, whatever the case. Throws Failure,
// with what is possible, when there is no such row, when there are several and none was told, and when the row cannot
// be edited.
const PROPINFO& rowFor(const Assignment& assignment, const TqVector<PROPINFO>& rows);

// The value as the property wants it: a choice by its name or number, a number, an angle in degrees, yes or no, a text.
// Colors stay texts, which the property itself understands. Throws Failure, with what is possible, for anything else.
holders::VariantHolder valueFor(const Assignment& assignment, const PROPINFO& row);

}  // namespace velt::tool
