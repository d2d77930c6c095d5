#pragma once

// What entities of all kinds have: layer, color, line type, the block that they are in. It reads the document at each
// call.
//
// A member of a sequence (VERTEX, ATTRIB) may be asked too, and is in the block of its head.
// Ownership: none. It is valid until the drawing is closed; edits leave it valid.

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

  // "0" when the entity names no layer.
  [[nodiscard]] std::wstring layerName() const;
  // Null when the drawing has no such layer: an edit after the drawing was read gave the entity an unknown name.
  [[nodiscard]] const TableEntry* layer() const;
  [[nodiscard]] VkCmColor color() const;
  // "ByLayer" when the entity names no line type.
  [[nodiscard]] std::wstring linetypeName() const;
  // In hundredths of a millimetre; -1 by layer (also when the entity has none of its own), -2 by block, -3 the default.
  [[nodiscard]] std::int64_t lineweight() const;

  // The block that holds the entity, which may be that of model space or of a sheet. The owner that the entity names
  // counts only outside of block definitions, and only when it is model space or a sheet. Null when the drawing has no
  // such block: old drawings may lack those of model space and the sheets.
  [[nodiscard]] const TableEntry* owner() const;
  [[nodiscard]] Space space() const;
  // "Model" in model space; empty inside a block definition, and for a sheet that has no name.
  [[nodiscard]] std::wstring layoutName() const;

 private:
  const Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::database
