#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "embedded/dxf/SampleDrawing.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {

namespace {

[[noreturn]] void failToWrite(const std::string& file) {
  throw Failure(fmt::format("{}: cannot be written: {}", file, std::strerror(errno)));
}

// Beside the file first, then in its place: what stood there stays whole until the new file is.
void writeInPlace(const std::string& file, const std::string& bytes) {
  const std::string unfinished = file + ".unfinished";
  errno = 0;
  {
    std::ofstream out(unfinished, std::ios::binary | std::ios::trunc);
    out << bytes;
    out.close();
    if (!out) {
      std::error_code ignored;
      std::filesystem::remove(unfinished, ignored);
      failToWrite(file);
    }
  }
  std::error_code failure;
  std::filesystem::rename(unfinished, file, failure);
  if (failure) {
    std::error_code ignored;
    std::filesystem::remove(unfinished, ignored);
    throw Failure(fmt::format("{}: cannot be written: {}", file, failure.message()));
  }
}

}  // namespace

void sample(const SampleRequest& request, std::ostream& out) {
  if (!request.force && std::filesystem::exists(request.file)) {
    throw Failure(fmt::format("{}: exists already (--force replaces it)", request.file));
  }
  writeInPlace(request.file, dxf::sampleFloorPlan());
  out << fmt::format("{}: written\n", request.file);
}

}  // namespace velt::tool
