#pragma once

// What a drawing as a whole consists of.

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/database/Drawing.h"

namespace velt::tool {

struct DrawingInfo {
  struct Count {
    // Of model space and the layouts.
    std::size_t outside = 0;
    std::size_t inBlocks = 0;
  };
  struct Layer {
    std::string name{};
    // By its name, its index or its parts.
    std::string color{};
    std::string linetype{};
    bool isOff = false;
    bool isFrozen = false;
    bool isLocked = false;
    // Entities name it, and the drawing has no record of it.
    bool isOnlyNamed = false;
    Count entities{};
  };
  struct Class {
    std::string name{};
    std::string dxfType{};
    Count entities{};
    // Its entities have the properties of every entity and no others.
    bool isGeneric = false;
  };
  struct Block {
    std::string name{};
    // Made by a program, such as the picture of a dimension.
    bool isAnonymous = false;
    bool isExternal = false;
    std::size_t entities = 0;
    // Block references that name it, wherever they stand.
    std::size_t references = 0;
  };
  struct Layout {
    std::string name{};
    std::size_t entities = 0;
  };
  struct Application {
    std::string name{};
    // With extended data of the application.
    std::size_t entities = 0;
  };

  // "AC1027"; empty for a drawing that does not say.
  std::string version{};
  // "DXF 2013", or the version itself when it is not a known one.
  std::string format{};
  std::string codePage{};
  // What a drawing unit is when the drawing is inserted into another: "Millimeters".
  std::string units{};
  // "Decimal, 4 places".
  std::string lengths{};
  std::string angles{};
  // As the drawing stores them; nothing when it stores none.
  std::optional<std::pair<std::array<double, 3>, std::array<double, 3>>> extents{};
  Count entities{};
  std::vector<Layer> layers{};
  std::vector<Class> classes{};
  std::vector<Block> blocks{};
  std::vector<Layout> layouts{};
  std::vector<Application> applications{};
  std::size_t withExtensionDictionary = 0;
  // Names of sections, and of tables, that nothing here reads. They are kept as they stand.
  std::vector<std::string> unknownSections{};
  std::vector<std::string> unknownTables{};
};

DrawingInfo infoOf(database::Drawing& drawing);

// "Millimeters"; nothing for a drawing that does not say what its unit is, or says it in a number that means nothing.
std::optional<std::string> insertionUnit(const database::Drawing& drawing);

}  // namespace velt::tool
