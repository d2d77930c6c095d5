#pragma once

// The hyperlinks that an entity carries in its extended data.

#include <string>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::automation {

struct Hyperlink {
  std::wstring url;
  std::wstring description;
  // A place within the target.
  std::wstring subLocation;
};

// In file order; none for an entity without links.
[[nodiscard]] std::vector<Hyperlink> hyperlinksOf(const database::ObjectRef& object);

}  // namespace velt::automation
