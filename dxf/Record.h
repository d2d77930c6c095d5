#pragma once

// How the pairs of a drawing form records, and where each record stands.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "dxf/Tag.h"

namespace velt::dxf {

enum class Section : std::uint8_t {
  // Before, between and behind the sections: comments, EOF.
  Outside,
  Header,
  Classes,
  Tables,
  Blocks,
  Entities,
  Objects,
  // A section of any other name, kept and not understood.
  Other,
};

// A run of pairs that begins with group code 0. Only what stands before the first of them has no type. The records
// follow each other without a gap; together they hold every tag once.
//
// The whole HEADER section is one record, of type SECTION: its variables are no records.
struct Record {
  std::uint32_t firstTag = 0;
  std::uint32_t tagCount = 0;
  // The TABLE or BLOCK record that this one stands in, the closing ENDTAB or ENDBLK included; none for those heads
  // themselves and elsewhere.
  std::uint32_t container = none;
  // The POLYLINE or INSERT that this VERTEX, ATTRIB or SEQEND belongs to.
  std::uint32_t sequenceHead = none;
  std::uint32_t edit =
      // The document's: where the edited pairs are; none while the record is as it was read.
      none;
  Section section = Section::Outside;
};

// Groups the pairs. Nothing is refused: a section, table, block or sequence whose end is missing ends where the next
// one begins or where records follow that cannot belong to it.
[[nodiscard]] std::vector<Record> groupRecords(const std::string& bytes, std::span<const Tag> tags);

}  // namespace velt::dxf
