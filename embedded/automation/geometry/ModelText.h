#pragma once

// The records of a modeller's text: bodies, faces, edges, curves, each a line of fields that refers to others.

#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/automation/geometry/Vector.h"

namespace velt::automation {

// Why a text, or the region in it, cannot be understood.
class ModelError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class ModelFields;

// Ownership: the records view the lines, so a text is never copied.
class ModelText {
 public:
  // Decoded lines, the header first. Throws ModelError unless they fall into records, as many as the header says.
  explicit ModelText(std::vector<std::string> lines);
  ModelText(const ModelText&) = delete;
  ModelText& operator=(const ModelText&) = delete;
  ~ModelText() = default;

  // Of the format: a hundred times the major number, and the minor one.
  [[nodiscard]] int version() const noexcept { return version_; }
  [[nodiscard]] std::size_t size() const noexcept { return records_.size(); }
  [[nodiscard]] std::string_view nameOf(std::size_t record) const { return tokens_[records_[record].first]; }
  // Those after what every record has. Throws ModelError when the record has another name. The text has to outlive
  // the fields.
  [[nodiscard]] ModelFields fieldsOf(std::size_t record, std::string_view name) const;

 private:
  struct Record {
    // Of its tokens, the name.
    std::size_t first;
    std::size_t count;
  };

  void readHeader();
  void readRecords(std::size_t firstLine);

  std::vector<std::string> lines_;
  std::vector<std::string_view> tokens_;
  std::vector<Record> records_;
  int version_ = 0;
  // Records, or 0 when the header does not tell.
  std::size_t promised_ = 0;
};

// Takes the fields of a record one by one. Each throws ModelError when the next field is missing or something else.
class ModelFields {
 public:
  ModelFields(std::span<const std::string_view> fields, std::size_t records)
      : fields_(fields), records_(records) {}

  // The record referred to; nothing for a reference to none.
  std::optional<std::size_t> reference();
  // The record referred to, which there has to be.
  std::size_t required();
  // Within reason: products of numbers stay finite.
  double number();
  Vector3 vector();
  // Any word, number or text.
  void skip();
  // True for the second of the words, which old texts number instead.
  bool choice(std::string_view first, std::string_view second);
  // Ends of a parameter: infinite, or finite and a number.
  void range();
  [[nodiscard]] bool atEnd() const noexcept { return fields_.empty(); }
  void end() const;

 private:
  std::string_view next();

  std::span<const std::string_view> fields_;
  std::size_t records_;
};

}  // namespace velt::automation
