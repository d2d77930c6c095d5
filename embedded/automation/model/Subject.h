#pragma once

// The entity that a property is read from or written to.

#include <cstdint>

#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/AskedPoints.h"
#include "embedded/database/Drawing.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Lens.h"

namespace velt::automation {

struct AutomationClass;

// Cheap to make, for the length of one call: an edit of the drawing or its end makes it useless.
class Subject {
 public:
  // With points that were asked for before, where whoever asks keeps them.
  Subject(const database::ObjectRef& object, VkDbObjectId id, const AutomationClass& kind,
          AskedPoints* asked = nullptr)
      : object_(object), id_(id), kind_(&kind), asked_(asked) {}

  [[nodiscard]] database::Drawing& drawing() const { return *object_.drawing; }
  [[nodiscard]] std::uint32_t record() const { return object_.record; }
  [[nodiscard]] const database::ObjectRef& object() const { return object_; }
  [[nodiscard]] VkDbObjectId id() const { return id_; }
  [[nodiscard]] const AutomationClass& kind() const { return *kind_; }

  [[nodiscard]] database::Lens lens() const { return database::Lens(object_); }
  [[nodiscard]] database::Entity entity() const { return database::Entity(object_); }

  // As pointAt() its lens. The name of the subclass is the same one at every call.
  [[nodiscard]] Vector3 point(int code, const char* subclass) const {
    if (asked_ == nullptr) return pointAt(lens(), code, subclass);
    return asked_->of(code, subclass, drawing().revision(), [&] { return pointAt(lens(), code, subclass); });
  }

 private:
  database::ObjectRef object_;
  VkDbObjectId id_;
  const AutomationClass* kind_;
  AskedPoints* asked_;
};

}  // namespace velt::automation
