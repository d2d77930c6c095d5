#include "tests/support/WholeDrawings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "samples/FloorPlan.h"
#include "samples/Gallery.h"
#include "tests/support/Files.h"

namespace velt::tests {
namespace {

std::vector<std::filesystem::path> filesOfOthers() {
  std::vector<std::filesystem::path> files;
  const char* const folder = std::getenv("VELT_DRAWINGS");
  if (folder == nullptr || *folder == '\0') return files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".dxf") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  EXPECT_FALSE(files.empty()) << "VELT_DRAWINGS names a folder without drawings: " << folder;
  return files;
}

}  // namespace

void forEachDrawing(const std::function<void(const WholeDrawing&)>& body) {
  const auto run = [&](const WholeDrawing& drawing) {
    SCOPED_TRACE(drawing.name);
    body(drawing);
  };
  run({"floor-plan.dxf", samples::sampleFloorPlan(), true});
  run({"gallery.dxf", samples::galleryDrawing(), true});
  for (const std::filesystem::path& file : filesOfOthers())
    run({file.filename().string(), contentOf(file), false});
}

}  // namespace velt::tests
