// The guide for authors of plug-ins (docs/plugins.md) names the classes that there are.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

#include "embedded/database/ObjectClass.h"
#include "palette/Palette.h"
#include "tests/support/Files.h"
#include "tests/support/Places.h"

namespace velt::tests {
namespace {

TEST(PluginGuide, ListsEveryClassOfEntitiesThatASourceCanBeAddedFor) {
  const std::string guide = contentOf(sourceFolder() / "docs" / "plugins.md");
  const std::regex row("\n\\| `(VkDb[A-Za-z0-9]+)` \\| `([A-Z0-9_]+)` \\|");
  std::set<std::pair<std::string, std::string>> listed;
  for (std::sregex_iterator found(guide.begin(), guide.end(), row), end; found != end; ++found)
    listed.emplace((*found)[1], (*found)[2]);

  // Parts of entities, whose rows no palette shows alone, and the class of all others.
  const std::set<std::string> left{"VkDbVertex", "VkDbSequenceEnd", "VkDbAttribute", "VkDbEntity"};
  std::set<std::pair<std::string, std::string>> known;
  for (const database::ObjectClass& kind : database::objectClasses()) {
    const std::string name = palette::toUtf8(kind.name);
    if (database::isEntityShape(kind.shape) && !left.contains(name)) known.emplace(name, kind.dxfName);
  }
  EXPECT_THAT(listed, testing::ContainerEq(known));
}

}  // namespace
}  // namespace velt::tests
