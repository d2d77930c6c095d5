#pragma once

// Changing the entity that a property is written to.
//
// The database tells by a result that a record lacks the part of its data that a value belongs in; here that is a
// Refusal. A missing value is put where drawings have it: readers may count on the order within a subclass.
// Whoever edits does so within Drawing::atomically(), as automation objects do with every put, so that a refusal half way
// leaves nothing changed.

#include <cstdint>
#include <string_view>

#include "embedded/automation/geometry/Vector.h"
#include "embedded/automation/model/PropertyTable.h"
#include "embedded/automation/model/Subject.h"
#include "embedded/database/RecordEditor.h"

namespace velt::automation {

// Throws Refusal for an entity on a locked layer, for a property that the drawing's format has no place for, for a
// shape that others follow, and where the row names an obstacle.
void requireChangeable(const Subject& subject, const PropertyRow& row);

// Whether a put of the row changes the shape of the entity, which others may follow.
[[nodiscard]] bool changesShape(const Subject& subject, const PropertyRow& row);

// The drawing is of that version ("AC1018") or a later one. One that tells no version counts as older than all.
[[nodiscard]] bool isOfFormat(const database::Drawing& drawing, std::string_view version);

// Throws Refusal for what the limit excludes.
void requireWithin(Limit limit, double number);

// Throws Refusal for a value that no member of the enumeration has.
void requireMember(const ValueType& type, const Value& value);

// Throws Refusal for what no line of the drawing can hold: control characters, numbers of no character, and characters
// that its code page lacks and that cannot be escaped so that every reader finds them again.
void requireLine(const database::Drawing& drawing, std::wstring_view text);

class Editor {
 public:
  explicit Editor(const Subject& subject) : Editor(subject.drawing(), subject.record()) {}
  Editor(database::Drawing& drawing, std::uint32_t record)
      : drawing_(&drawing), record_(record), editor_(drawing, record) {}

  void real(int code, const char* subclass, double value);
  void integer(int code, const char* subclass, std::int64_t value);
  // The same, but a missing value stays missing when it is to become `otherwise`, which is what that means.
  void integer(int code, const char* subclass, std::int64_t value, std::int64_t otherwise);
  void text(int code, const char* subclass, std::wstring_view value);
  // The name of the entry, as its table record spells it.
  void name(int code, const char* subclass, const database::TableEntry& entry);
  void point(int code, const char* subclass, const Vector3& value);
  // Nothing happens when there is none.
  void remove(int code, const char* subclass) { editor_.remove(code, subclass); }

  [[nodiscard]] database::Lens lens() const { return {*drawing_, record_}; }

 private:
  database::Drawing* drawing_;
  std::uint32_t record_;
  database::RecordEditor editor_;
};

}  // namespace velt::automation
