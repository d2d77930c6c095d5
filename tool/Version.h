#pragma once

namespace velt::tool {

// Of the whole project; the build writes it.
extern const char* const version;

}  // namespace velt::tool
