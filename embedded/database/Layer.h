#pragma once

// A layer: its name, color, line type and states. It reads the document at each call.
//
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

  [[nodiscard]] Lens lens() const { return {*drawing_, record_}; }
  [[nodiscard]] std::wstring name() const;
  // Never by layer or by block.
  [[nodiscard]] VkCmColor color() const;
  [[nodiscard]] std::wstring linetypeName() const;
  [[nodiscard]] bool isOff() const;
  [[nodiscard]] bool isFrozen() const;
  [[nodiscard]] bool isLocked() const;

 private:
  [[nodiscard]] bool hasFlag(std::int64_t flag) const;

  const Drawing* drawing_;
  std::uint32_t record_;
};

}  // namespace velt::database
