#pragma once

// By what the scan of the merge finds a row of one entity's list in another's. The DISPID is not part of it, and
// neither are label and value, which are compared once a row is found.

#include <cstdint>

#include "propdata/VeltPropData.h"

namespace velt::propdata {

struct SamenessKey {
  std::int32_t categoryId;
  bool isEditable;
  CStdStr<wchar_t> categoryName;
  CStdStr<wchar_t> name;

  static SamenessKey of(const PROPINFO& row) {
    return {row.categoryId, row.isEditable, row.categoryName, row.name};
  }
  bool operator==(const SamenessKey&) const = default;
};

}  // namespace velt::propdata
