#pragma once

// A layer: its name, color, line type and states. It reads the document at each call.
//
// A layer without a record (dxf::none), which entities only name, has the defaults; its name is in its table entry.
// Ownership: none. It is valid until the drawing is closed; edits leave it valid.

#include <cstdint>
#include <string>

#include "embedded/database/Lens.h"
#include "host/database/VkCmColor.h"

namespace velt::database {

class Layer {
 public:
  explicit Layer(const ObjectRef& object) : Layer(*object.drawing, object.record) {}
  Layer(const Drawing& drawing, std::uint32_t record) : drawing_(&drawing), record_(record) {}

  // Of a layer that has a record, as is its name.
  [[nodiscard]] Lens lens() const { return {*drawing_, record_}; }
  [[nodiscard]] std::wstring name() const;
  // Never by layer or by block.
  [[nodiscard]] VkCmColor color() const;
  [[nodiscard]] std::wstring linetypeName() const;
  [[nodiscard]] bool isOff() const;
  [[nodiscard]] bool isFrozen() const;
  [[nodiscard]] bool isLocked() const;

 private:
  [[nodiscard]] bool hasRecord() const { return record_ != dxf::none; }
  [[nodiscard]] bool hasFlag(std::int64_t flag) const;

  const Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::database
