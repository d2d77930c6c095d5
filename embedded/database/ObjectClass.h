#pragma once

// What kinds of database objects there are: one row per kind, and the run-time class made for it.
//
// A kind is found by the DXF name of a record. A new kind is a new row in ObjectClass.cpp.
//
// Classes live as long as the process. All functions may be called on every thread.

#include <span>
#include <string_view>

#include "dxf/RecordView.h"
#include "host/database/VkRxObject.h"

namespace velt::database {

// Which of the declared classes an object is an instance of.
enum class Shape : unsigned char { Object, Entity, BlockReference, Layer };

[[nodiscard]] constexpr bool isEntityShape(Shape shape) {
  return shape == Shape::Entity || shape == Shape::BlockReference;
}

// Picks one of several kinds that share a DXF name by the bits of a flag word (group code 70).
struct FlagTest {
  // 0 matches every record.
  unsigned mask = 0;
  unsigned value = 0;
};

struct ObjectClass {
  std::string_view dxfName;
  FlagTest flags;
  Shape shape;
  const wchar_t* name;

  // Of a row of the table, not of a copy.
  [[nodiscard]] VkRxClass* runtimeClass() const;
};

// The table: kinds that share a DXF name stand together, the first whose flags match is taken, and the last of them
// matches every record. The last two rows, without a DXF name, are of whatever has no other.
[[nodiscard]] std::span<const ObjectClass> objectClasses();

// The row of an entity, a part of one (VERTEX, ATTRIB), a table record or another object. `isEntity` tells where the
// record stands: a record that has an entity's name and is none gets no entity's class, and the other way round.
[[nodiscard]] const ObjectClass& classOf(const dxf::RecordView& record, bool isEntity);

// The row of block table records, for a block that has none.
[[nodiscard]] const ObjectClass& classOfBlocks();

// By the name of the run-time class ("VkDbLine"), for those who register protocol extensions; null for none.
[[nodiscard]] VkRxClass* runtimeClassNamed(std::wstring_view name);

}  // namespace velt::database
