#pragma once

// A second opinion on drawings that the project makes: that of Debian's python3-ezdxf, where it is installed.

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "tests/support/Files.h"

namespace velt::dxf::testing {

// What the audit finds, one line each, followed by the types of the entities in model space with their counts. Nothing
// when the package is not installed.
inline std::optional<std::string> audited(const std::string& bytes) {
  constexpr const char* program = R"(
import sys
try:
    import ezdxf
except ImportError:
    sys.exit(77)
import collections
drawing = ezdxf.readfile(sys.argv[1])
audit = drawing.audit()
for finding in audit.errors + audit.fixes:
    print('finding:', finding.message)
counts = collections.Counter(entity.dxftype() for entity in drawing.modelspace())
print(' '.join('%s=%d' % pair for pair in sorted(counts.items())))
)";
  const tests::TemporaryFolder folder;
  const std::string arguments =
      " '" + folder.write("audit.py", program) + "' '" + folder.write("audited.dxf", bytes) + "' 2>&1";
  // The package is the system's, which need not be the first interpreter of the path.
  for (const char* python : {"/usr/bin/python3", "python3"}) {
    std::string output;
    FILE* const pipe = popen((python + arguments).c_str(), "r");
    if (pipe == nullptr) continue;
    std::array<char, 4096> buffer{};
    while (std::fgets(buffer.data(), buffer.size(), pipe) != nullptr)
      output += buffer.data();
    const int status = pclose(pipe);
    constexpr int missing = 77;
    constexpr int noSuchProgram = 127;
    if (WIFEXITED(status) && (WEXITSTATUS(status) == missing || WEXITSTATUS(status) == noSuchProgram))
      continue;
    return output;
  }
  return std::nullopt;
}

}  // namespace velt::dxf::testing
