#include "embedded/sources/HostSources.h"

#include <gtest/gtest.h>

#include "embedded/sources/SourceRegistry.h"
#include "host/database/VkDbEntity.h"

namespace velt::sources {
namespace {

TEST(HostSources, AttributesAreForReferencesAndExtendedDataForEverything) {
  SourceRegistry registry;
  attachHostSources(registry);
  const std::vector<std::wstring> both{blockAttributesSource, extendedDataSource};
  EXPECT_EQ(both, registry.namesFor(VkDbBlockReference::desc()));
  EXPECT_EQ(std::vector<std::wstring>{extendedDataSource}, registry.namesFor(VkDbEntity::desc()));
  EXPECT_NE(registry.find(blockAttributesSource).get(), registry.find(extendedDataSource).get());
}

TEST(HostSources, TheRegistryOfTheProcessHasThemFromTheStart) {
  EXPECT_NE(nullptr, SourceRegistry::ofProcess().find(blockAttributesSource).get());
  EXPECT_NE(nullptr, SourceRegistry::ofProcess().find(extendedDataSource).get());
}

}  // namespace
}  // namespace velt::sources
