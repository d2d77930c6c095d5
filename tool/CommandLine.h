#pragma once

// The command line of veltprops.

#include <ostream>

namespace velt::tool {

// Runs one command line. Results go to `out`, messages to `err`. Answers the exit code: 0 done, 1 failed, 2 wrong
// usage.
int run(int argumentCount, const char* const* arguments, std::ostream& out, std::ostream& err);

}  // namespace velt::tool
