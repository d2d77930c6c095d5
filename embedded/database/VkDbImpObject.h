#pragma once

// The host's own part of a database object.
//
// Objects and their parts are in the slots of the process-wide object table (ObjectTable.h) and are never moved. So a
// pointer that somebody keeps after the drawing was closed still points to an object, perhaps to one of another
// drawing; an id does not.

#include <atomic>
#include <cstdint>

namespace velt::database {
class Drawing;
struct ObjectClass;
}  // namespace velt::database

struct VkDbImpObject {
  // Null once the drawing is closed.
  velt::database::Drawing* drawing = nullptr;
  const velt::database::ObjectClass* objectClass = nullptr;
  std::uint32_t record = 0;
  std::uint32_t slot = 0;
  // The generation of the one id that names this slot now; 0 while none does.
  std::atomic<std::uint32_t> generation{0};
  std::uint32_t nextGeneration = 1;
  // How often it was opened and not yet closed.
  std::uint32_t opens = 0;
  bool isErased = false;
};
