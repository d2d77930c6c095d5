#pragma once

// A dimension of a style that a test describes, and what its puts override.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation::test {

// What stands in the list of overrides, if there is one.
inline std::string overridesOf(const Drawing& drawing, std::size_t entity = 0) {
  const std::string pairs = pairsOf(drawing, recordOf(drawing, entity));
  const std::size_t begin = pairs.find("1002={ ");
  return begin == std::string::npos ? "" : pairs.substr(begin + 7, pairs.size() - begin - 7 - 7);
}

class StyledDimension : public ::testing::Test {
 protected:
  // clang-format off
  static Sample sample() {
    return Sample()
        .version("AC1027")
        .tableRecord("APPID", {{2, "ACAD"}})
        .tableRecord("STYLE", {{5, "51"}, {2, "Notes"}})
        .tableRecord("BLOCK_RECORD", {{5, "52"}, {2, "_Dot"}})
        .tableRecord("BLOCK_RECORD", {{5, "53"}, {2, "_Oblique"}})
        .tableRecord("BLOCK_RECORD", {{5, "54"}, {2, "My arrow"}})
        .tableRecord("BLOCK_RECORD", {{5, "55"}, {2, "*D1"}});
  }
  // One of that style, which is called Mine.
  const Bound& dimension(Pairs style, const char* kind = "33") {
    drawing = sample()
                  .tableRecord("DIMSTYLE", style)
                  .tableRecord("DIMSTYLE", {{2, "Other"}, {144, "3"}})
                  .entity("DIMENSION", {{100, "AcDbDimension"}, {3, "Mine"}, {70, kind}, {42, "5.0"}, {14, "5"}})
                  .open();
    bound.emplace(*drawing, 0);
    return *bound;
  }
  // clang-format on

  std::unique_ptr<Drawing> drawing;
  std::optional<Bound> bound;
};

}  // namespace velt::automation::test
