#pragma once

// The entities of a drawing that a command works on.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::automation {
struct AutomationClass;
}

namespace velt::tool {

// The filters of the command line. An entity is selected when it fits one of the names of each kind that is given, and
// the condition. Names may have wildcards, * and ?.
struct SelectionRequest {
  bool all = false;
  // Also entities inside block definitions.
  bool inBlocks = false;
  std::vector<std::string> handles{};
  std::vector<std::string> layers{};
  // Names of classes ("Line") or DXF types ("LINE").
  std::vector<std::string> types{};
  std::vector<std::string> layouts{};
  // Entities inside the definitions of these blocks, without inBlocks too.
  std::vector<std::string> blocks{};
  // See Condition.h; empty for none.
  std::string where{};
  // Those that do not fit are selected instead.
  bool isInverted = false;

  bool isEmpty() const {
    return !all && handles.empty() && layers.empty() && types.empty() && layouts.empty() && blocks.empty()
           && where.empty();
  }
};

struct SelectedEntities {
  // In file order.
  std::vector<VkDbObjectId> ids;
  // How many fit but are inside block definitions.
  std::size_t leftOutInBlocks = 0;
  // Nobody asked whether these fit the condition.
  bool isConditionOpen = false;
  // The handles that several of the entities have, with how many. Damaged drawings have some.
  std::map<std::uint64_t, std::size_t> sharedHandles{};
};

// A handle that several entities have selects them all. Throws Failure for a name or a handle that the drawing does not have, with those that were probably meant or, of few,
// those that it has; also for a condition that makes no sense there. Throws UsageFailure for one that is none.
SelectedEntities select(database::Drawing& drawing, const SelectionRequest& request);

// Tells people of the shared handles, in lines of their own; empty when there are none.
std::string remarkOnHandles(const SelectedEntities& selected);
// As handleText() writes them.
std::vector<std::string> sharedHandleTexts(const SelectedEntities& selected);

// The name of a class without the prefix that all of them have: "Line".
std::string shortName(const automation::AutomationClass& kind);
// Null for an entity without an automation class of its own.
const automation::AutomationClass* classOf(VkDbObjectId id);
// "Line" for an entity with an automation class of its own, else "Entity".
std::string className(VkDbObjectId id);
std::string className(const automation::AutomationClass* kind);
// The DXF type: "LINE".
std::string dxfName(VkDbObjectId id);
std::string handleText(VkDbObjectId id);
std::string layerName(VkDbObjectId id);
// "Model" in model space; empty inside a block definition.
std::string layoutName(VkDbObjectId id);
// The block in whose definition the entity stands; empty elsewhere.
std::string blockName(VkDbObjectId id);

// "3 entities", "1 entity".
std::string entitiesText(std::size_t count);
// Says how many are left out because they are inside block definitions, in a line; empty when none are.
std::string leftOutText(const SelectedEntities& selected);

// What commands say that need a selection and were given none.
inline constexpr const char* noSelectionText =
    "which entities? Select with --all, --handle, --layer, --type, --layout, --block or --where";

}  // namespace velt::tool
