#include "embedded/palette/HostSources.h"

#include "embedded/palette/BlockAttributes.h"
#include "embedded/palette/ExtendedData.h"
#include "embedded/palette/SourceRegistry.h"
#include "host/database/VkDbEntity.h"

namespace velt::palette {

void attachHostSources(SourceRegistry& registry) {
  const auto attributes = com::InterfaceHolder<IPropertySource>::owning(makeBlockAttributes());
  const auto extendedData = com::InterfaceHolder<IPropertySource>::owning(makeExtendedData());
  registry.attach(blockAttributesSource, VkDbBlockReference::desc(), attributes.get());
  registry.attach(extendedDataSource, VkDbEntity::desc(), extendedData.get());
}

}  // namespace velt::palette
