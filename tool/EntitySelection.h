#pragma once

// Which entities of a drawing a command is about.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::tool {

// What stood on the command line. Filters of one kind add up, filters of different kinds narrow each other.
struct SelectionRequest {
  bool all = false;
  bool inBlocks = false;  // also entities inside block definitions
  std::vector<std::string> handles{};
  std::vector<std::string> layers{};
  std::vector<std::string> types{};  // "Line", or as the file says "LINE"

  bool isEmpty() const { return !all && handles.empty() && layers.empty() && types.empty(); }
};

struct SelectedEntities {
  std::vector<VkDbObjectId> ids;    // in file order
  std::size_t leftOutInBlocks = 0;  // those that fit but stand in a block definition
};

// Throws Failure for a handle, layer or type that the drawing does not have, naming what it has.
SelectedEntities select(database::Drawing& drawing, const SelectionRequest& request);

// "Line" for an entity with an automation class of its own, else "Entity".
std::string className(VkDbObjectId id);
// As the file says: "LINE".
std::string dxfName(VkDbObjectId id);
std::string handleText(VkDbObjectId id);
std::string layerName(VkDbObjectId id);

}  // namespace velt::tool
