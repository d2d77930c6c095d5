#pragma once

// How the pairs of a drawing form records, and where each record stands.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dxf/ReadPairs.h"
#include "dxf/Tag.h"
#include "dxf/TagReader.h"

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
// of a drawing form a record without a type. Records follow each other without a gap; together they hold every pair
// once.
//
// The whole HEADER section is one record, of type SECTION: its variables are not records.
struct Record {
  // Where its bytes begin in the file. They end where those of the next record begin.
  std::uint32_t begin = 0;
  // Where the places of its pairs begin in RecordList::places.
  std::uint32_t firstPlace = 0;
  // The TABLE or BLOCK record that this one stands in, the closing ENDTAB or ENDBLK included; none for those heads
  // themselves and elsewhere.
  std::uint32_t container = none;
  // The POLYLINE or INSERT that this VERTEX, ATTRIB or SEQEND belongs to.
  std::uint32_t sequenceHead = none;
  // Where the document keeps the edited pairs; none while the record is as it was read.
  std::uint32_t edit = none;
  Section section = Section::Outside;
  // Whether it has more bytes than 16 bits can count.
  bool isLong = false;
};
static_assert(sizeof(Record) == 24);

struct RecordList {
  std::vector<Record> records;
  // The places of every record's pairs, as ReadPairs takes them.
  std::vector<PairPlace> places;
  // Where the first record begins and the last one ends.
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  // `bytes` are those of the whole drawing.
  [[nodiscard]] ReadPairs pairsOf(const Record& record, const char* bytes) const noexcept {
    const Record* const next = &record + 1;
    const std::size_t last = next == records.data() + records.size() ? places.size() : next->firstPlace;
    const std::size_t taken = last - record.firstPlace;
    const std::size_t count = record.isLong ? taken / 2 : taken;
    return {bytes + record.begin, places.data() + record.firstPlace, static_cast<std::uint32_t>(count - 1),
            record.isLong};
  }
};

// Reads a drawing's pairs and groups them into records. Throws as TagReader does; the grouping itself refuses nothing: a
// section, table, block or sequence whose end is missing ends where the next one begins, or with the first record that
// cannot belong to it. How much memory is taken depends on the bytes alone, never on a count that a drawing states.
[[nodiscard]] RecordList readRecords(const std::string& bytes, const std::string& file,
                                     const Progress& progress = {});

}  // namespace velt::dxf
