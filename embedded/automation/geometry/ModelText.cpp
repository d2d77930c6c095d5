#include "embedded/automation/geometry/ModelText.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "dxf/Numbers.h"

namespace velt::automation {
namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::string_view recordEnd = "#";
// From here on every record has a number of its own, and all but transforms refer to one record more.
constexpr int numberVersion = 700;

[[noreturn]] void failIncomplete() {
  throw ModelError("the modeller's text is incomplete");
}

[[noreturn]] void failField() {
  throw ModelError("a record of the modeller's text has another form than expected");
}

// "@5 plane" counts its characters, blanks among them.
std::size_t lengthOfText(std::string_view rest) {
  const std::size_t blank = std::min(rest.find(' '), rest.size());
  const auto count = dxf::parseInteger<std::size_t>(rest.substr(1, blank - 1));
  if (!count || blank == rest.size() || *count > rest.size() - blank - 1) failIncomplete();
  return blank + 1 + *count;
}

// Nothing at the end of the line.
std::string_view takeToken(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
  const std::size_t length =
      rest.starts_with('@') ? lengthOfText(rest) : std::min(rest.find_first_of(blanks), rest.size());
  const std::string_view token = rest.substr(0, length);
  rest.remove_prefix(length);
  return token;
}

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

ModelText::ModelText(std::vector<std::string> lines) : lines_(std::move(lines)) {
  readHeader();
  // Newer texts tell their writer and units before the first record, which begins with a name.
  std::size_t line = 1;
  while (line < std::min<std::size_t>(3, lines_.size()) && !lines_[line].empty()
         && !isLetter(lines_[line].front()))
    ++line;
  readRecords(line);
  if (promised_ != 0 && promised_ != records_.size()) failIncomplete();
}

void ModelText::readHeader() {
  if (lines_.empty()) failIncomplete();
  std::string_view rest = lines_.front();
  const auto version = dxf::parseInteger<int>(takeToken(rest));
  const auto promised = dxf::parseInteger<std::size_t>(takeToken(rest));
  if (!version || *version < 100 || !promised) throw ModelError("the modeller's text has no header");
  version_ = *version;
  promised_ = *promised;
}

void ModelText::readRecords(std::size_t firstLine) {
  std::size_t begin = 0;
  for (std::size_t line = firstLine; line < lines_.size(); ++line) {
    std::string_view rest = lines_[line];
    for (std::string_view token = takeToken(rest); !token.empty(); token = takeToken(rest)) {
      if (begin == tokens_.size() && token.starts_with("End-of-")) return;
      if (token != recordEnd) {
        tokens_.push_back(token);
        continue;
      }
      if (begin == tokens_.size()) failField();
      records_.push_back({begin, tokens_.size() - begin});
      begin = tokens_.size();
    }
  }
  if (begin != tokens_.size()) failIncomplete();
}

ModelFields ModelText::fieldsOf(std::size_t record, std::string_view name) const {
  if (nameOf(record) != name)
    throw ModelError("the modeller's text has no " + std::string(name) + " where one belongs");
  const Record& found = records_[record];
  const std::string_view* const tokens = tokens_.data() + found.first;
  ModelFields fields({tokens + 1, found.count - 1}, records_.size());
  fields.reference();
  if (version_ >= numberVersion) {
    fields.number();
    if (name != "transform") fields.reference();
  }
  return fields;
}

std::string_view ModelFields::next() {
  if (fields_.empty()) failField();
  const std::string_view field = fields_.front();
  fields_ = fields_.subspan(1);
  return field;
}

std::optional<std::size_t> ModelFields::reference() {
  const std::string_view field = next();
  if (!field.starts_with('$')) failField();
  if (field == "$-1") return std::nullopt;
  const auto index = dxf::parseInteger<std::size_t>(field.substr(1));
  if (!index || *index >= records_) throw ModelError("the modeller's text refers to a record that it lacks");
  return index;
}

std::size_t ModelFields::required() {
  const std::optional<std::size_t> found = reference();
  if (!found) throw ModelError("the modeller's text lacks a part of the outline");
  return *found;
}

double ModelFields::number() {
  constexpr double greatest = 1e30;
  const std::optional<double> value = dxf::parseReal(next());
  if (!value || std::abs(*value) > greatest) failField();
  return *value;
}

Vector3 ModelFields::vector() {
  const double x = number();
  const double y = number();
  return {x, y, number()};
}

void ModelFields::skip() {
  if (next().starts_with('$')) failField();
}

bool ModelFields::choice(std::string_view first, std::string_view second) {
  const std::string_view field = next();
  if (field == second || field == "1") return true;
  if (field != first && field != "0") failField();
  return false;
}

void ModelFields::range() {
  for (int end = 0; end < 2; ++end) {
    const std::string_view field = next();
    if (field == "F") {
      number();
    } else if (field != "I") {
      failField();
    }
  }
}

void ModelFields::end() const {
  if (!atEnd()) failField();
}

}  // namespace velt::automation
