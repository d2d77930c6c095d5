#include "dxf/Record.h"

#include <array>
#include <string_view>

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
  Grouping(const std::string& bytes, std::span<const Tag> tags) : bytes_(bytes), tags_(tags) {}

  std::vector<Record> group() {
    std::size_t count = tags_.empty() || tags_[0].code == 0 ? 0 : 1;
    for (const Tag& tag : tags_)
      count += tag.code == 0 ? 1 : 0;
    records_.reserve(count);

    for (std::size_t first = 0; first < tags_.size();) {
      std::size_t last = first + 1;
      while (last < tags_.size() && tags_[last].code != 0)
        ++last;
      Record record;
      record.firstTag = static_cast<std::uint32_t>(first);
      record.tagCount = static_cast<std::uint32_t>(last - first);
      place(record);
      records_.push_back(record);
      first = last;
    }
    return std::move(records_);
  }

 private:
  [[nodiscard]] RecordView view(const Record& record) const {
    return {bytes_.data(), tags_.subspan(record.firstTag, record.tagCount)};
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

    const auto self = static_cast<std::uint32_t>(records_.size());
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
    const bool directlyAfterInsert = member_ == "ATTRIB" && sequence_ + 1 == records_.size();
    if (directlyAfterInsert && view(records_[sequence_]).integer(66, anySubclass) != 1) return none;
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
  std::span<const Tag> tags_;
  std::vector<Record> records_;
  Section section_ = Section::Outside;
  std::uint32_t container_ = none;
  std::uint32_t sequence_ = none;
  std::string_view member_;
};

}  // namespace

std::vector<Record> groupRecords(const std::string& bytes, std::span<const Tag> tags) {
  return Grouping(bytes, tags).group();
}

}  // namespace velt::dxf
