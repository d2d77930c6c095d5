#include "tool/EntityFacts.h"

#include <algorithm>
#include <utility>

#include "embedded/database/Entity.h"
#include "palette/Palette.h"
#include "tool/EntitySelection.h"

namespace velt::tool {

namespace {

constexpr std::pair<std::string_view, std::string (*)(VkDbObjectId)> facts[] = {
    {"@handle", handleText}, {"@class", className},   {"@type", dxfName},
    {"@layer", layerName},   {"@layout", layoutName}, {"@block", blockName},
};

}  // namespace

bool isFactName(std::string_view name) {
  return std::any_of(std::begin(facts), std::end(facts),
                     [&](const auto& fact) { return palette::equalIgnoringCase(fact.first, name); });
}

std::string factOf(VkDbObjectId entity, std::string_view name) {
  const auto fact = std::find_if(std::begin(facts), std::end(facts), [&](const auto& known) {
    return palette::equalIgnoringCase(known.first, name);
  });
  return fact->second(entity);
}

}  // namespace velt::tool
