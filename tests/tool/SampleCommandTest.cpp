#include <gtest/gtest.h>

#include <sstream>
#include <system_error>

#include "embedded/database/Drawing.h"
#include "samples/Gallery.h"
#include "tests/tool/Drawings.h"
#include "tool/Commands.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using namespace velt::tests;

TEST(SampleCommand, TheSampleIsADrawing) {
  const TemporaryFolder folder;
  std::ostringstream out;
  sample({.file = folder.path("a.dxf")}, out);
  EXPECT_GT(velt::database::Drawing::open(folder.path("a.dxf"))->entities().size(), 20U);
}

TEST(SampleCommand, TheGalleryIsAnotherDrawing) {
  const TemporaryFolder folder;
  std::ostringstream out;
  sample({.file = folder.path("a.dxf"), .gallery = true}, out);
  EXPECT_EQ(contentOf(folder.path("a.dxf")), velt::samples::galleryDrawing());
}

TEST(SampleCommand, AnExistingFileIsKeptUnlessForced) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.dxf", "mine");
  std::ostringstream out;
  EXPECT_THROW(sample({.file = file}, out), Failure);
  EXPECT_EQ(contentOf(file), "mine");
  sample({.file = file, .force = true}, out);
  EXPECT_NE(contentOf(file), "mine");
}

TEST(SampleCommand, AFolderThatIsMissingIsSaidToBe) {
  const TemporaryFolder folder;
  std::ostringstream out;
  try {
    sample({.file = folder.path("no/such/a.dxf")}, out);
    FAIL() << "written into a folder that is missing";
  } catch (const std::system_error& failure) {
    EXPECT_NE(std::string(failure.what()).find("No such file or directory"), std::string::npos);
  }
}

TEST(SampleCommand, NothingUnfinishedIsLeftBehind) {
  const TemporaryFolder folder;
  std::ostringstream out;
  sample({.file = folder.path("a.dxf")}, out);
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path(".")))
    ++files;
  EXPECT_EQ(files, 1U);
}

}  // namespace
}  // namespace velt::tool
