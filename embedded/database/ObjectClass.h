#pragma once

// The kinds of database objects: one row for each, and the run-time class that is made for it.
//
// A record's kind is found by its DXF name. A new kind is a new row in ObjectClass.cpp.
// Ownership: the classes live as long as the process.
// Threads: all functions may be called on every thread.

#include <span>
#include <string_view>

#include "dxf/RecordView.h"
#include "host/database/VkRxObject.h"

namespace velt::database {

// Which of the classes of host/database/ an object is an instance of.
enum class Shape : unsigned char { Object, Entity, BlockReference, Layer };

[[nodiscard]] constexpr bool isEntityShape(Shape shape) {
  return shape == Shape::Entity || shape == Shape::BlockReference;
}

// Tells apart kinds that share a DXF name, by bits of a flag word (group code 70).
struct FlagTest {
  // 0 matches every record.
  unsigned mask = 0;
  unsigned value = 0;
};

struct ObjectClass {
  std::string_view dxfName;
  FlagTest flags;
  Shape shape;
  // Of the run-time class.
  const wchar_t* name;

  // To be asked of a row of the table, not of a copy.
  [[nodiscard]] VkRxClass* runtimeClass() const;
};

// The table. Kinds that share a DXF name stand together: the first one whose flags match is taken, and the last one
// matches every record. The last two rows, without a DXF name, are for all records that have no other.
[[nodiscard]] std::span<const ObjectClass> objectClasses();

// The row of an entity, a part of one (VERTEX, ATTRIB), a table record or another object. `isEntity` tells whether the
// record stands among entities: elsewhere, a record with an entity's name does not get an entity's class, and among
// entities one with an object's name does not get an object's.
[[nodiscard]] const ObjectClass& classOf(const dxf::RecordView& record, bool isEntity);

// The row of block table records, for blocks of old drawings, which have no such record.
[[nodiscard]] const ObjectClass& classOfBlocks();

// The row of layers, for those that have no record.
[[nodiscard]] const ObjectClass& classOfLayers();

// The run-time class of that name ("VkDbLine"), on which a protocol extension can be registered; null for none.
[[nodiscard]] VkRxClass* runtimeClassNamed(std::wstring_view name);

}  // namespace velt::database
