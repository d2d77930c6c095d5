// The hyperlinks that an entity carries in its extended data.
#pragma once

#include <string>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::automation {

struct Hyperlink {
  std::wstring url;
  std::wstring description;
  std::wstring subLocation;  ///< a place within the target
};

/// In file order; none for an entity without links.
[[nodiscard]] std::vector<Hyperlink> hyperlinksOf(const database::ObjectRef& object);

}  // namespace velt::automation
