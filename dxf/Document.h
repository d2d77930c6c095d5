#pragma once

// A drawing, held as its DXF document.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dxf/Encoding.h"
#include "dxf/Error.h"
#include "dxf/Record.h"
#include "dxf/RecordView.h"
#include "dxf/Tag.h"
#include "dxf/TagReader.h"

namespace velt::dxf {

// Where a variable's values stand in the record of the HEADER section.
struct HeaderVariable {
  std::uint32_t record = none;
  // Behind the 9 that names it.
  PairRange pairs;
};

// The file's bytes in one buffer, a table of tags that point into it, and the records that the tags form. What is
// edited is laid over that: an edited record has its own list of pairs, all else stays a slice of the buffer. So what
// nobody understands survives a save, and a document without an edit gives back the bytes that it was read from.
//
// Ownership: the document owns the bytes; views and texts that it gives out end with it, with a move of it, and, for
// the record in question, with the next edit.
// Threads: any number may read at once; an edit needs the document alone.
class Document {
 public:
  // Throws Error when there is no such file, it cannot be read, it is no drawing that can be read (see readTags),
  // or it ends inside a section.
  [[nodiscard]] static Document open(const std::filesystem::path& file, const Progress& progress = {});
  // The same for bytes in memory; the name is for messages.
  [[nodiscard]] static Document parse(std::string bytes, std::string displayName,
                                      const Progress& progress = {});

  Document(Document&&) noexcept = default;
  Document& operator=(Document&&) noexcept = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() = default;

  [[nodiscard]] const std::string& displayName() const noexcept { return name_; }

  // --- as it was read -----------------------------------------------------------------------------------------------
  [[nodiscard]] std::span<const Tag> tags() const noexcept { return list_.tags; }
  [[nodiscard]] std::span<const Record> records() const noexcept { return records_; }
  [[nodiscard]] std::size_t recordCount() const noexcept { return records_.size(); }
  // The records that `head` (a TABLE, BLOCK, POLYLINE or INSERT) holds, as a range of record indexes; a block's range
  // includes the members of the sequences in it.
  [[nodiscard]] PairRange membersOf(std::uint32_t head) const;

  // --- lenses -------------------------------------------------------------------------------------------------------
  [[nodiscard]] RecordView view(std::uint32_t record) const noexcept;
  [[nodiscard]] std::string_view type(std::uint32_t record) const noexcept { return view(record).type(); }
  // By its name with the dollar sign.
  [[nodiscard]] std::optional<HeaderVariable> headerVariable(std::string_view name) const;
  // The first value under the code, as it stands.
  [[nodiscard]] std::optional<std::string_view> headerValue(std::string_view name, int code) const;
  // The names of all variables, in file order.
  [[nodiscard]] std::vector<std::string_view> headerNames() const;

  // --- texts --------------------------------------------------------------------------------------------------------
  [[nodiscard]] const Encoding& encoding() const noexcept { return encoding_; }
  [[nodiscard]] std::wstring decode(std::string_view value) const { return encoding_.decode(value); }
  [[nodiscard]] std::string encode(std::wstring_view text) const { return encoding_.encode(text); }

  // --- editing ------------------------------------------------------------------------------------------------------
  //
  // Pairs are named by their index in the record's current view. Values are bytes in the drawing's encoding. All throw
  // std::invalid_argument, and change nothing, for what would break the document apart: a value with a line end, a
  // change of the leading 0, another 0, an index that is not there.

  // The pair keeps the bytes around its value.
  void replace(std::uint32_t record, std::size_t pair, std::string_view value);
  // Before the pair, or at the end for an index behind the last; written in the style of the file.
  void insert(std::uint32_t record, std::size_t pair, int code, std::string_view value);
  void erase(std::uint32_t record, std::size_t pair);
  // Replaces the first such property or inserts it (see RecordView::insertionPoint). False, and nothing is done, when
  // the record has no such subclass. Gives the pair's index.
  std::optional<std::size_t> set(std::uint32_t record, int code, std::string_view subclass,
                                 std::string_view value, std::span<const int> after = {});
  // Back to what was read.
  void revert(std::uint32_t record);

  class Backup;
  // What the record holds now.
  [[nodiscard]] Backup backup(std::uint32_t record) const;
  // Back to what the record of this document held then. Needs no memory unless the record was reverted in between.
  void restore(Backup backup);

  [[nodiscard]] bool isEdited(std::uint32_t record) const { return records_[record].edit != none; }
  [[nodiscard]] bool isEdited() const noexcept { return edits_.size() != freeEdits_.size(); }

  // --- writing ------------------------------------------------------------------------------------------------------
  [[nodiscard]] std::string bytes() const;
  // Failure shows in the stream's state.
  void write(std::ostream& out) const;

 private:
  using Pairs = std::vector<EditedPair>;

  Document(std::string bytes, std::string displayName, const Progress& progress);

  [[nodiscard]] std::optional<std::uint32_t> headerRecord() const;
  void requireLastSectionClosed() const;
  void learnStyle();

  [[nodiscard]] std::uint32_t tagEnd(std::uint32_t tag) const noexcept;
  [[nodiscard]] std::string_view slice(std::uint32_t begin, std::uint32_t end) const noexcept;
  Pairs& pairsForEdit(std::uint32_t record);
  void requirePair(std::uint32_t record, std::size_t pair) const;

  template <class Sink>
  void writeTo(Sink&& sink) const;
  template <class Sink>
  void writePairs(const Pairs& pairs, Sink&& sink) const;

  std::string name_;
  std::string bytes_;
  TagList list_;
  std::vector<Record> records_;
  // By Record::edit. Each list stays where it is, so that an edit of one record leaves the views of others valid.
  std::vector<std::unique_ptr<Pairs>> edits_;
  // Places in it that reverted records left.
  std::vector<std::uint32_t> freeEdits_;
  Encoding encoding_ = Encoding::utf8();
  std::string_view lineEnd_ = "\n";
  bool padsCodes_ = true;
};

// Of one record; see Document::backup.
class Document::Backup {
 public:
  [[nodiscard]] std::uint32_t record() const noexcept { return record_; }

 private:
  friend class Document;
  Backup(std::uint32_t record, std::unique_ptr<Pairs> pairs) : record_(record), pairs_(std::move(pairs)) {}

  std::uint32_t record_;
  // Null: as it was read.
  std::unique_ptr<Pairs> pairs_;
};

}  // namespace velt::dxf
