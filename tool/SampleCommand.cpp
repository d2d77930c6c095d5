#include <fmt/format.h>

#include <filesystem>

#include "dxf/FileReplacement.h"
#include "samples/FloorPlan.h"
#include "samples/Gallery.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {

void sample(const SampleRequest& request, std::ostream& out) {
  if (!request.force && std::filesystem::exists(request.file)) {
    throw Failure(fmt::format("{}: exists already (--force replaces it)", request.file));
  }
  dxf::FileReplacement file(request.file, {.onlyNew = !request.force});
  file.stream() << (request.gallery ? samples::galleryDrawing() : samples::sampleFloorPlan());
  file.commit();
  out << fmt::format("{}: written\n", request.file);
}

}  // namespace velt::tool
