#include "samples/Gallery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/database/Drawing.h"
#include "tests/dxf/Audit.h"

namespace velt::samples {

using namespace velt::dxf;
namespace {

TEST(GalleryDrawing, IsFoundSoundByAnotherReader) {
  const auto findings = dxf::testing::audited(galleryDrawing());
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_THAT(*findings, ::testing::Not(::testing::HasSubstr("finding:")));
  EXPECT_THAT(*findings, ::testing::Not(::testing::HasSubstr("Traceback")));
  EXPECT_THAT(*findings, ::testing::HasSubstr("ARC_DIMENSION=2"));
}

TEST(GalleryDrawing, IsTheSameAtEveryCall) {
  EXPECT_EQ(galleryDrawing(), galleryDrawing());
}

TEST(GalleryDrawing, HasAnEntityOfEveryClass) {
  const auto drawing = database::Drawing::parse(galleryDrawing(), "gallery.dxf");
  std::set<const automation::AutomationClass*> shown;
  for (const VkDbObjectId id : drawing->entities()) {
    const std::uint32_t record = database::resolve(id)->record;
    shown.insert(automation::classOfRecord(*drawing, record));
    const database::RecordRange members = drawing->members(record);
    for (std::uint32_t member = members.first; member < members.first + members.count; ++member)
      shown.insert(automation::classOfRecord(*drawing, member));
  }
  for (const automation::AutomationClass* kind : automation::automationClasses()) {
    EXPECT_TRUE(kind->dxfName.empty() || shown.contains(kind)) << kind->dxfName;
  }
  EXPECT_TRUE(shown.contains(nullptr)) << "one that has no class of its own";
}

}  // namespace
}  // namespace velt::samples
