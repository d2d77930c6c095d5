#pragma once

// What makes a row of one entity's list a match for a row of another's, as far as the scan of the merge is
// concerned. The DISPID is no part of it, and neither are label and value: those are compared once a match is
// found.

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
