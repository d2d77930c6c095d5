#include "tool/EntityFacts.h"

#include <algorithm>
#include <cstddef>

#include "embedded/database/Entity.h"
#include "palette/Palette.h"
#include "tool/EntitySelection.h"

namespace velt::tool {

namespace {

// In the order of their names.
constexpr std::array<std::string (*)(VkDbObjectId), factNames.size()> facts{
    handleText, className, dxfName, layerName, layoutName, blockName};

auto findFact(std::string_view name) {
  return std::find_if(factNames.begin(), factNames.end(),
                      [&](std::string_view known) { return palette::equalIgnoringCase(known, name); });
}

}  // namespace

bool isFactName(std::string_view name) {
  return findFact(name) != factNames.end();
}

std::string factOf(VkDbObjectId entity, std::string_view name) {
  return facts.at(static_cast<std::size_t>(findFact(name) - factNames.begin()))(entity);
}

std::string didYouMeanOf(const std::string& name, const std::vector<std::string>& properties) {
  if (!name.starts_with('@')) return palette::didYouMean(name, properties);
  return palette::didYouMean(name, std::vector<std::string>(factNames.begin(), factNames.end()));
}

}  // namespace velt::tool
