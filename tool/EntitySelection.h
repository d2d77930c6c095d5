#pragma once

// The entities of a drawing that a command works on.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::tool {

// The filters of the command line. An entity is selected when it fits one of the filters of each kind that is given.
struct SelectionRequest {
  bool all = false;
  // Also entities inside block definitions.
  bool inBlocks = false;
  std::vector<std::string> handles{};
  std::vector<std::string> layers{};
  // Names of classes ("Line") or DXF types ("LINE").
  std::vector<std::string> types{};

  bool isEmpty() const { return !all && handles.empty() && layers.empty() && types.empty(); }
};

struct SelectedEntities {
  // In file order.
  std::vector<VkDbObjectId> ids;
  // How many fit but are inside block definitions.
  std::size_t leftOutInBlocks = 0;
};

// Throws Failure for a handle, layer or type that the drawing does not have; the message names those that it has.
SelectedEntities select(database::Drawing& drawing, const SelectionRequest& request);

// "Line" for an entity with an automation class of its own, else "Entity".
std::string className(VkDbObjectId id);
// The DXF type: "LINE".
std::string dxfName(VkDbObjectId id);
std::string handleText(VkDbObjectId id);
std::string layerName(VkDbObjectId id);

}  // namespace velt::tool
