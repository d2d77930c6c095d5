#include "dxf/Record.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "dxf/RecordView.h"

namespace velt::dxf {
namespace {

struct SectionName {
  std::string_view name;
  Section section;
};

constexpr std::array sectionNames{
    SectionName{"HEADER", Section::Header},     SectionName{"CLASSES", Section::Classes},
    SectionName{"TABLES", Section::Tables},     SectionName{"BLOCKS", Section::Blocks},
    SectionName{"ENTITIES", Section::Entities}, SectionName{"OBJECTS", Section::Objects},
};

// Goes through the records in file order and remembers the section, table, block and sequence that the next one is in.
class Grouping {
 public:
  Grouping(const std::string& bytes, const std::string& file, const Progress& progress)
      : bytes_(bytes), reader_(bytes, file, progress) {}

  RecordList read() {
    list_.begin = reader_.position();
    std::optional<Tag> tag = reader_.next();
    while (tag) {
      const std::uint32_t begin = tag->begin;
      beginRecord(begin);
      do {
        addPlace(tag->begin - begin, tag->code);
        tag = reader_.next();
      } while (tag && tag->code != 0);
      addPlace((tag ? tag->begin : reader_.position()) - begin, 0);
      place(list_.records.back());
    }
    list_.end = reader_.position();
    return std::move(list_);
  }

 private:
  void beginRecord(std::uint32_t begin) {
    makeRoom(list_.records, 1);
    list_.records.push_back({.begin = begin, .firstPlace = static_cast<std::uint32_t>(list_.places.size())});
  }

  void addPlace(std::uint32_t distance, std::int16_t code) {
    constexpr std::uint32_t longestShort = 0xFFFF;
    std::vector<PairPlace>& places = list_.places;
    makeRoom(places, 2);
    if (distance > longestShort && !list_.records.back().isLong) widen();
    places.push_back({static_cast<std::uint16_t>(distance), code});
    if (list_.records.back().isLong) places.push_back({static_cast<std::uint16_t>(distance >> 16), 0});
  }

  // Gives the places of the record, which turned out to be long, their high halves.
  void widen() {
    Record& record = list_.records.back();
    record.isLong = true;
    std::vector<PairPlace>& places = list_.places;
    const std::vector<PairPlace> low(places.begin() + record.firstPlace, places.end());
    places.resize(record.firstPlace);
    makeRoom(places, 2 * low.size() + 2);
    for (const PairPlace& place : low) {
      places.push_back(place);
      places.push_back({0, 0});
    }
  }

  // Grows a full list to what the rest of the drawing will need if it goes on as it did so far. So hardly any list is
  // moved twice, and room in which nothing was written costs no memory.
  template <class T>
  void makeRoom(std::vector<T>& list, std::size_t more) const {
    const std::size_t needed = list.size() + more;
    if (list.capacity() >= needed) return;
    constexpr std::uint32_t tooEarlyToTell = 1U << 16;
    constexpr double margin = 1.0625;
    const double rest = static_cast<double>(bytes_.size()) / std::max(1U, reader_.position()) * margin;
    const bool canTell = reader_.position() >= tooEarlyToTell;
    const auto expected = static_cast<std::size_t>(static_cast<double>(needed) * (canTell ? rest : 2.0));
    list.reserve(std::max(needed, expected));
  }

  [[nodiscard]] RecordView view(const Record& record) const {
    return RecordView(list_.pairsOf(record, bytes_.data()));
  }

  void place(Record& record) {
    const std::string_view type = view(record).type();
    if (type == "SECTION") {
      section_ = sectionOf(record);
      container_ = sequence_ = none;
    } else if (type == "EOF") {
      section_ = Section::Outside;
      container_ = sequence_ = none;
    } else if (type == "ENDSEC") {
      container_ = sequence_ = none;
    }
    const bool opensContainer =
        (section_ == Section::Tables && type == "TABLE") || (section_ == Section::Blocks && type == "BLOCK");
    if (opensContainer) container_ = none;

    record.section = section_;
    record.container = container_;
    record.sequenceHead = continueSequence(type);

    const auto self = static_cast<std::uint32_t>(list_.records.size() - 1);
    if (opensContainer) container_ = self;
    if (type == "ENDSEC") section_ = Section::Outside;
    if (type == "ENDTAB" || type == "ENDBLK") container_ = none;
    if (type == "POLYLINE" || type == "INSERT") {
      sequence_ = self;
      member_ = type == "POLYLINE" ? "VERTEX" : "ATTRIB";
    } else if (record.sequenceHead == none || type == "SEQEND") {
      sequence_ = none;
    }
  }

  // The head of the current sequence, when a record of this type continues it.
  [[nodiscard]] std::uint32_t continueSequence(std::string_view type) const {
    if (sequence_ == none) return none;
    if (type == member_) return sequence_;
    if (type != "SEQEND") return none;
    // An INSERT without attributes has no SEQEND unless it says that attributes follow.
    const bool directlyAfterInsert = member_ == "ATTRIB" && sequence_ + 2 == list_.records.size();
    if (directlyAfterInsert && view(list_.records[sequence_]).integer(66, anySubclass) != 1) return none;
    return sequence_;
  }

  [[nodiscard]] Section sectionOf(const Record& head) const {
    const std::string_view name = trimmed(view(head).text(2, anySubclass).value_or(std::string_view{}));
    for (const SectionName& known : sectionNames) {
      if (known.name == name) return known.section;
    }
    return Section::Other;
  }

  const std::string& bytes_;
  TagReader reader_;
  RecordList list_;
  Section section_ = Section::Outside;
  std::uint32_t container_ = none;
  std::uint32_t sequence_ = none;
  std::string_view member_;
};

}  // namespace

RecordList readRecords(const std::string& bytes, const std::string& file, const Progress& progress) {
  return Grouping(bytes, file, progress).read();
}

}  // namespace velt::dxf
