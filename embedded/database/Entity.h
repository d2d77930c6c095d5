#pragma once

// What entities of all kinds have. It reads the document each time it is asked.
//
// Ownership: none; the end of the drawing makes it invalid, an edit does not. Members of a sequence may be asked too:
// they stand where their head stands.

#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/database/Lens.h"
#include "host/database/VkCmColor.h"

namespace velt::database {

enum class Space : std::uint8_t {
  Model,
  // On a sheet.
  Paper,
  // Inside the definition of a block.
  Block,
};

class Entity {
 public:
  explicit Entity(const ObjectRef& object) : Entity(*object.drawing, object.record) {}
  Entity(const Drawing& drawing, std::uint32_t record) : drawing_(&drawing), record_(record) {}

  [[nodiscard]] Lens lens() const { return {*drawing_, record_}; }
  [[nodiscard]] std::string_view dxfName() const { return drawing_->document().type(record_); }
  [[nodiscard]] std::uint64_t handle() const { return drawing_->handleOf(record_); }
  [[nodiscard]] bool isErased() const { return drawing_->isErased(record_); }

  // "0" when the entity names none.
  [[nodiscard]] std::wstring layerName() const;
  // Null when the drawing has no record of that layer.
  [[nodiscard]] const TableEntry* layer() const;
  [[nodiscard]] VkCmColor color() const;
  // "ByLayer" when the entity names none.
  [[nodiscard]] std::wstring linetypeName() const;
  // Hundredths of a millimetre; -1 by layer, also when the entity tells none, -2 by block, -3 default.
  [[nodiscard]] std::int64_t lineweight() const;

  // The block that the entity stands in, model space and the sheets included. What the entity says of its owner counts
  // only outside block definitions, and only when it is a sheet or model space. Null when the drawing has no such
  // block, as old drawings need not.
  [[nodiscard]] const TableEntry* owner() const;
  [[nodiscard]] Space space() const;
  // "Model" in model space; empty inside a block definition, and for a sheet that has no name.
  [[nodiscard]] std::wstring layoutName() const;

 private:
  const Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::database
