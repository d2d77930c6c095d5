#pragma once

// By what the scan of the merge finds a row of one entity's list in another's, together with isEditable. That flag is
// not part of this key, because it is an entity's own, while all entities of a class share the rest. The DISPID is not
// part of it either, and neither are label and value, which are compared once a row is found.

#include <cstdint>

#include "propdata/VeltPropData.h"

namespace velt::propdata {

struct NameKey {
  std::int32_t categoryId;
  CStdStr<wchar_t> categoryName;
  CStdStr<wchar_t> name;

  static NameKey of(const PROPINFO& row) { return {row.categoryId, row.categoryName, row.name}; }
  // Of a row that lost its name, because it was broken up into elements.
  static NameKey ofNameless(const PROPINFO& row) { return {row.categoryId, row.categoryName, {}}; }
  bool operator==(const NameKey&) const = default;
};

}  // namespace velt::propdata
