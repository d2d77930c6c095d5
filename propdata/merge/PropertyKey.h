#pragma once

// What two rows with the same name key and the same isEditable must also have in common to be the same property.

#include "propdata/VeltPropData.h"

namespace velt::propdata {

struct PropertyKey {
  bool hasChoices;
  bool isElement;
  CStdStr<wchar_t> displayName;

  static PropertyKey of(const PROPINFO& row) { return {row.hasChoices, row.isElement, row.displayName}; }
  bool operator==(const PropertyKey&) const = default;
};

}  // namespace velt::propdata
