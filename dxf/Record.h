#pragma once

// How the pairs of a drawing form records, and where each record stands.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "dxf/Tag.h"

namespace velt::dxf {

enum class Section : std::uint8_t {
  // Before, between and after the sections: comments, EOF.
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

// Consecutive pairs, the first of which has group code 0 and gives the record's type. Only pairs before the first 0
// of a drawing form a record without a type. Records follow each other without a gap; together they hold every tag
// once.
//
// The whole HEADER section is one record, of type SECTION: its variables are not records.
struct Record {
  std::uint32_t firstTag = 0;
  std::uint32_t tagCount = 0;
  // The TABLE or BLOCK record that this one stands in, the closing ENDTAB or ENDBLK included; none for those heads
  // themselves and elsewhere.
  std::uint32_t container = none;
  // The POLYLINE or INSERT that this VERTEX, ATTRIB or SEQEND belongs to.
  std::uint32_t sequenceHead = none;
  // Where the document keeps the edited pairs; none while the record is as it was read.
  std::uint32_t edit = none;
  Section section = Section::Outside;
};

// Groups the pairs into records. Nothing is refused: a section, table, block or sequence whose end is missing ends
// where the next one begins, or with the first record that cannot belong to it.
[[nodiscard]] std::vector<Record> groupRecords(const std::string& bytes, std::span<const Tag> tags);

}  // namespace velt::dxf
