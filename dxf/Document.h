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
#include "dxf/FileState.h"
#include "dxf/Record.h"
#include "dxf/RecordView.h"
#include "dxf/Tag.h"
#include "dxf/TagReader.h"

namespace velt::dxf {

// Where the values of a header variable stand.
struct HeaderVariable {
  // The record of the HEADER section.
  std::uint32_t record = none;
  // Its values, without the 9 that names it.
  PairRange pairs;
};

// The file's bytes in one buffer, and the records, which know where in it their pairs begin. Edits are
// laid over that: an edited record has its own list of pairs, everything else stays a slice of the buffer. So what
// nobody understands survives a save, and a document without an edit gives back the bytes that it was read from.
//
// Ownership: the document owns the bytes. Views and texts that it gives out are valid until it ends or is moved, and
// those of a record until that record is edited.
// Threads: any number may read at once; while one edits, no other may read.
class Document {
 public:
  // Throws Error when there is no such file, it cannot be read, it is no drawing that can be read (see TagReader),
  // or it ends inside a section.
  [[nodiscard]] static Document open(const std::filesystem::path& file, const Progress& progress = {});
  // The same for bytes in memory; messages call them by the name.
  [[nodiscard]] static Document parse(std::string bytes, std::string displayName,
                                      const Progress& progress = {});

  Document(Document&&) noexcept = default;
  Document& operator=(Document&&) noexcept = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() = default;

  [[nodiscard]] const std::string& displayName() const noexcept { return name_; }

  // --- as it was read -----------------------------------------------------------------------------------------------
  [[nodiscard]] std::span<const Record> records() const noexcept { return list_.records; }
  [[nodiscard]] std::size_t recordCount() const noexcept { return list_.records.size(); }
  // The records that `head` (a TABLE, BLOCK, POLYLINE or INSERT) holds, as a range of record indexes; a block's range
  // includes the members of the sequences in it.
  [[nodiscard]] PairRange membersOf(std::uint32_t head) const;

  // --- lenses -------------------------------------------------------------------------------------------------------
  [[nodiscard]] RecordView view(std::uint32_t record) const noexcept;
  [[nodiscard]] std::string_view type(std::uint32_t record) const noexcept { return view(record).type(); }
  // A variable by its name, dollar sign included; nothing when the drawing lacks it.
  [[nodiscard]] std::optional<HeaderVariable> headerVariable(std::string_view name) const;
  // The variable's first value with that group code, as it stands in the file.
  [[nodiscard]] std::optional<std::string_view> headerValue(std::string_view name, int code) const;
  // The names of all variables, in file order.
  [[nodiscard]] std::vector<std::string_view> headerNames() const;

  // --- texts --------------------------------------------------------------------------------------------------------
  [[nodiscard]] const Encoding& encoding() const noexcept { return encoding_; }
  [[nodiscard]] std::wstring decode(std::string_view value) const { return encoding_.decode(value); }
  [[nodiscard]] std::string encode(std::wstring_view text) const { return encoding_.encode(text); }

  // --- editing ------------------------------------------------------------------------------------------------------
  //
  // Pairs are named by their index in the record's current view. Values are bytes in the drawing's encoding. Whatever
  // would break the document apart throws std::invalid_argument and changes nothing: a value with a line end, a change
  // of the leading 0, a second 0, an index that is not there.

  // The pair's group code, padding and line end stay as they are.
  void replace(std::uint32_t record, std::size_t pair, std::string_view value);
  // Before that pair, or at the end for the index after the last one. Written with the line ends and padding of the
  // file.
  void insert(std::uint32_t record, std::size_t pair, int code, std::string_view value);
  void erase(std::uint32_t record, std::size_t pair);
  // Replaces the first property with that code in the subclass, or inserts it where RecordView::insertionPoint says.
  // Answers the pair's index; nothing, and changes nothing, when the record has no such subclass.
  std::optional<std::size_t> set(std::uint32_t record, int code, std::string_view subclass,
                                 std::string_view value, std::span<const int> after = {});
  // Makes the record what it was when it was read.
  void revert(std::uint32_t record);

  class Backup;
  // What the record holds now.
  [[nodiscard]] Backup backup(std::uint32_t record) const;
  // Makes the record, of this same document, what it was at the backup. Needs no memory unless the record was reverted
  // and another one edited in between.
  void restore(Backup backup);

  [[nodiscard]] bool isEdited(std::uint32_t record) const { return list_.records[record].edit != none; }
  [[nodiscard]] bool isEdited() const noexcept { return edits_.size() != freeEdits_.size(); }

  // --- writing ------------------------------------------------------------------------------------------------------
  //
  // To a file: see FileReplacement.h.

  [[nodiscard]] std::string bytes() const;
  // Failure shows in the stream's state. The progress is called now and then, and at the end, with the number of bytes
  // written and that of the document as it was read, and may throw to give up.
  void write(std::ostream& out, const Progress& progress = {}) const;
  // The files that the document was read from and saved to, for those who save it: what they held then.
  [[nodiscard]] KnownFiles& knownFiles() noexcept { return files_; }

 private:
  using Pairs = std::vector<EditedPair>;

  Document(std::string bytes, std::string displayName, const Progress& progress);

  [[nodiscard]] std::uint32_t findHeader() const;
  [[nodiscard]] std::vector<std::uint32_t> sortedVariables() const;
  // The pair of the header that names the variable; none when there is none.
  [[nodiscard]] std::size_t findVariable(const RecordView& header, std::string_view name) const;
  void requireLastSectionClosed() const;
  void learnStyle();

  // The record's pairs as they were read, whether or not it was edited.
  [[nodiscard]] ReadPairs read(std::uint32_t record) const noexcept {
    return list_.pairsOf(list_.records[record], bytes_.data());
  }
  // Where the record's bytes end.
  [[nodiscard]] std::uint32_t endOf(std::uint32_t record) const noexcept;
  [[nodiscard]] std::string_view slice(std::uint32_t begin, std::uint32_t end) const noexcept;
  Pairs& pairsForEdit(std::uint32_t record);
  // Where the record's edited pairs are, or where they are to be put.
  std::unique_ptr<Pairs>& placeForEdit(std::uint32_t record);
  void requirePair(std::uint32_t record, std::size_t pair) const;

  template <class Sink>
  void writeTo(Sink&& sink) const;
  template <class Sink>
  void writePairs(std::uint32_t record, Sink&& sink) const;

  std::string name_;
  std::string bytes_;
  RecordList list_;
  // The record of the HEADER section; none when the drawing has no such section. Looked for once: headers are asked for
  // with every value, and a drawing without one would be searched to its end each time.
  std::uint32_t header_ = none;
  // The pairs that name its variables as they were read: by name, and of one name by place.
  std::vector<std::uint32_t> variables_;
  // Indexed by Record::edit. Each list stays where it is, so that an edit of one record leaves the views of others
  // valid.
  std::vector<std::unique_ptr<Pairs>> edits_;
  // Places in edits_ that reverted records left.
  std::vector<std::uint32_t> freeEdits_;
  Encoding encoding_ = Encoding::utf8();
  std::string_view lineEnd_ = "\n";
  bool padsCodes_ = true;
  KnownFiles files_;
};

// What one record held when it was made.
class Document::Backup {
 public:
  [[nodiscard]] std::uint32_t record() const noexcept { return record_; }

 private:
  friend class Document;
  Backup(std::uint32_t record, std::unique_ptr<Pairs> pairs) : record_(record), pairs_(std::move(pairs)) {}

  std::uint32_t record_;
  // Null for a record that was not edited then.
  std::unique_ptr<Pairs> pairs_;
};

}  // namespace velt::dxf
