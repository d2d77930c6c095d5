#include "tool/OpenDrawing.h"

#include "tool/Progress.h"

namespace velt::tool {

std::unique_ptr<database::Drawing> openDrawing(const std::string& file) {
  Progress progress("Loading " + file);
  return database::Drawing::open(
      file, [&](std::uint64_t done, std::uint64_t total) { progress.report(done, total); });
}

}  // namespace velt::tool
