#include "embedded/sources/HostSources.h"

#include "embedded/sources/BlockAttributes.h"
#include "embedded/sources/ExtendedData.h"
#include "embedded/sources/SourceRegistry.h"
#include "host/database/VkDbEntity.h"

namespace velt::sources {

void attachHostSources(SourceRegistry& registry) {
  const auto attributes = holders::InterfaceHolder<IPropertySource>::owning(makeBlockAttributes());
  const auto extendedData = holders::InterfaceHolder<IPropertySource>::owning(makeExtendedData());
  registry.attach(blockAttributesSource, VkDbBlockReference::desc(), attributes.get());
  registry.attach(extendedDataSource, VkDbEntity::desc(), extendedData.get());
}

}  // namespace velt::sources
