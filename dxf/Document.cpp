#include "dxf/Document.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ostream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "dxf/Descriptor.h"

namespace velt::dxf {
namespace {

[[noreturn]] void failToRead(const std::string& name, int error) {
  throw Error(name, 0, "cannot be read: " + std::generic_category().message(error));
}

struct ReadFile {
  std::string bytes;
  // None of a pipe.
  std::optional<FileState> state;
};

ReadFile readFile(const std::filesystem::path& path, const std::string& name) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0) failToRead(name, errno);
  if (S_ISDIR(status.st_mode)) failToRead(name, EISDIR);
  // A device may never end.
  if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
    throw Error(name, 0, "cannot be read: it is not a file");
  const auto statedSize = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
  if (statedSize > maximumDrawingSize) throw Error(name, 0, "the drawing is larger than 4 GiB");

  // The size is a hint: a pipe has none, and a file may grow while it is read.
  constexpr std::size_t step = std::size_t{1} << 16;
  std::string bytes;
  bytes.resize(statedSize + 1);
  std::size_t length = 0;
  while (true) {
    if (length == bytes.size()) bytes.resize(bytes.size() + std::max(step, bytes.size() / 2));
    const ssize_t got = read(file.get(), bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) failToRead(name, errno);
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
    if (length > maximumDrawingSize) throw Error(name, 0, "the drawing is larger than 4 GiB");
  }
  bytes.resize(length);
  if (!S_ISREG(status.st_mode)) return {std::move(bytes), std::nullopt};

  struct stat after {};
  if (fstat(file.get(), &after) != 0) failToRead(name, errno);
  ContentDigest content;
  content.add(bytes);
  return {std::move(bytes), FileState(path, status, after, content)};
}

void requireOneLine(std::string_view value) {
  if (value.find_first_of("\r\n") != std::string_view::npos) {
    throw std::invalid_argument("a value of a drawing cannot hold a line end");
  }
}

}  // namespace

Document Document::open(const std::filesystem::path& file, const Progress& progress) {
  std::string name = file.string();
  ReadFile read = readFile(file, name);
  Document document = parse(std::move(read.bytes), std::move(name), progress);
  if (read.state) document.files_.remember(*std::move(read.state));
  return document;
}

Document Document::parse(std::string bytes, std::string displayName, const Progress& progress) {
  return {std::move(bytes), std::move(displayName), progress};
}

Document::Document(std::string bytes, std::string displayName, const Progress& progress)
    : name_(std::move(displayName)), bytes_(std::move(bytes)), list_(readRecords(bytes_, name_, progress)) {
  const auto& records = list_.records;
  const bool isDrawing = std::any_of(records.begin(), records.end(), [&](const Record& record) {
    const auto recordType = type(static_cast<std::uint32_t>(&record - records.data()));
    return recordType == "SECTION" || recordType == "EOF";
  });
  if (!isDrawing) throw Error(name_, 0, "not a DXF drawing: it holds no section");
  requireLastSectionClosed();
  learnStyle();
  header_ = findHeader();
  variables_ = sortedVariables();
  encoding_ = bytes_.starts_with("\xEF\xBB\xBF")
                  ? Encoding::utf8()
                  : Encoding::ofDrawing(headerValue("$ACADVER", 1).value_or(std::string_view{}),
                                        headerValue("$DWGCODEPAGE", 3).value_or(std::string_view{}));
}

// Old writers leave out EOF, but none leaves a section open: the rest of such a file is missing, and its last value may
// be cut short.
void Document::requireLastSectionClosed() const {
  const auto last = static_cast<std::uint32_t>(list_.records.size() - 1);
  const std::string_view lastType = trimmed(type(last));
  if (lastType == "EOF" || lastType == "ENDSEC" || list_.records[last].section == Section::Outside) return;
  const auto lines = std::count(bytes_.begin(), bytes_.end(), '\n') + (bytes_.ends_with('\n') ? 0 : 1);
  throw Error(name_, static_cast<std::uint64_t>(lines), "truncated: the drawing ends inside a section");
}

void Document::learnStyle() {
  const std::string_view first = read(0).bytes(0);
  const std::string_view codeLine = first.substr(0, first.find('\n') + 1);
  lineEnd_ = codeLine.ends_with("\r\n") ? "\r\n" : "\n";
  padsCodes_ = codeLine.starts_with(' ') || codeLine.size() > lineEnd_.size() + 2;
}

PairRange Document::membersOf(std::uint32_t head) const {
  const std::size_t first = std::size_t{head} + 1;
  std::size_t last = first;
  while (last < list_.records.size()
         && (list_.records[last].container == head || list_.records[last].sequenceHead == head))
    ++last;
  return {first, last - first};
}

RecordView Document::view(std::uint32_t record) const noexcept {
  const Record& it = list_.records[record];
  return it.edit != none ? RecordView(read(record), *edits_[it.edit]) : RecordView(read(record));
}

std::uint32_t Document::findHeader() const {
  for (std::uint32_t record = 0; record < list_.records.size(); ++record) {
    if (list_.records[record].section == Section::Header && type(record) == "SECTION") return record;
  }
  return none;
}

std::vector<std::uint32_t> Document::sortedVariables() const {
  std::vector<std::uint32_t> variables;
  if (header_ == none) return variables;
  const ReadPairs header = read(header_);
  for (std::uint32_t index = 0; index < header.size(); ++index) {
    if (header.code(index) == 9) variables.push_back(index);
  }
  std::stable_sort(variables.begin(), variables.end(), [&](std::uint32_t a, std::uint32_t b) {
    return trimmed(header.value(a)) < trimmed(header.value(b));
  });
  return variables;
}

std::size_t Document::findVariable(const RecordView& header, std::string_view name) const {
  if (!isEdited(header_)) {
    const auto found = std::lower_bound(
        variables_.begin(), variables_.end(), name,
        [&](std::uint32_t index, std::string_view wanted) { return trimmed(header.value(index)) < wanted; });
    return found != variables_.end() && trimmed(header.value(*found)) == name ? *found : none;
  }
  for (std::size_t index = 0; index < header.size(); ++index) {
    if (header.code(index) == 9 && trimmed(header.value(index)) == name) return index;
  }
  return none;
}

std::optional<HeaderVariable> Document::headerVariable(std::string_view name) const {
  if (header_ == none) return std::nullopt;
  const RecordView header = view(header_);
  std::size_t index = findVariable(header, name);
  if (index == none) return std::nullopt;
  const std::size_t first = ++index;
  while (index < header.size() && header.code(index) != 9)
    ++index;
  return HeaderVariable{header_, {first, index - first}};
}

std::optional<std::string_view> Document::headerValue(std::string_view name, int code) const {
  const auto variable = headerVariable(name);
  if (!variable) return std::nullopt;
  const RecordView header = view(variable->record);
  const std::size_t last = variable->pairs.first + variable->pairs.count;
  for (std::size_t index = variable->pairs.first; index < last; ++index) {
    if (header.code(index) == code) return header.value(index);
  }
  return std::nullopt;
}

std::vector<std::string_view> Document::headerNames() const {
  std::vector<std::string_view> names;
  if (header_ != none) {
    const RecordView header = view(header_);
    for (std::size_t index = 0; index < header.size(); ++index) {
      if (header.code(index) == 9) names.push_back(trimmed(header.value(index)));
    }
  }
  return names;
}

std::uint32_t Document::endOf(std::uint32_t record) const noexcept {
  const std::size_t next = std::size_t{record} + 1;
  return next < list_.records.size() ? list_.records[next].begin : list_.end;
}

std::string_view Document::slice(std::uint32_t begin, std::uint32_t end) const noexcept {
  return std::string_view(bytes_).substr(begin, end - begin);
}

Document::Pairs& Document::pairsForEdit(std::uint32_t record) {
  if (!isEdited(record)) {
    const ReadPairs asRead = read(record);
    auto pairs = std::make_unique<Pairs>();
    // Most edits insert a pair.
    pairs->reserve(std::size_t{asRead.size()} + 1);
    pairs->resize(asRead.size());
    for (std::uint32_t i = 0; i < asRead.size(); ++i) {
      (*pairs)[i].code = static_cast<std::int16_t>(asRead.code(i));
      (*pairs)[i].origin = i;
    }
    placeForEdit(record) = std::move(pairs);
  }
  return *edits_[list_.records[record].edit];
}

std::unique_ptr<Document::Pairs>& Document::placeForEdit(std::uint32_t record) {
  std::uint32_t& edit = list_.records[record].edit;
  if (edit != none) return edits_[edit];
  if (freeEdits_.empty()) {
    // Taking an edit back must not need memory.
    freeEdits_.reserve(edits_.size() + 1);
    edits_.emplace_back();
    edit = static_cast<std::uint32_t>(edits_.size() - 1);
  } else {
    edit = freeEdits_.back();
    freeEdits_.pop_back();
  }
  return edits_[edit];
}

void Document::requirePair(std::uint32_t record, std::size_t pair) const {
  if (record >= list_.records.size() || pair >= view(record).size()) {
    throw std::invalid_argument("the drawing has no such pair");
  }
  if (view(record).code(pair) == 0) throw std::invalid_argument("the type of a record cannot be edited");
}

void Document::replace(std::uint32_t record, std::size_t pair, std::string_view value) {
  requirePair(record, pair);
  requireOneLine(value);
  // Before the record is touched: the value may be one of its own.
  NewValue owned(value);
  pairsForEdit(record)[pair].value = std::move(owned);
}

void Document::insert(std::uint32_t record, std::size_t pair, int code, std::string_view value) {
  if (record >= list_.records.size() || pair == 0 || pair > view(record).size()) {
    throw std::invalid_argument("the drawing has no such place for a pair");
  }
  constexpr int highestCode = 1071;
  if (code == 0 || code < -5 || code > highestCode)
    throw std::invalid_argument("not a group code that a pair of a record can have");
  requireOneLine(value);
  EditedPair inserted{static_cast<std::int16_t>(code), none, NewValue(value)};
  Pairs& pairs = pairsForEdit(record);
  pairs.insert(pairs.begin() + static_cast<std::ptrdiff_t>(pair), std::move(inserted));
}

void Document::erase(std::uint32_t record, std::size_t pair) {
  requirePair(record, pair);
  Pairs& pairs = pairsForEdit(record);
  pairs.erase(pairs.begin() + static_cast<std::ptrdiff_t>(pair));
}

std::optional<std::size_t> Document::set(std::uint32_t record, int code, std::string_view subclass,
                                         std::string_view value, std::span<const int> after) {
  const RecordView before = view(record);
  if (const auto pair = before.find(code, subclass)) {
    replace(record, *pair, value);
    return pair;
  }
  const auto place = before.insertionPoint(subclass, after);
  if (place) insert(record, *place, code, value);
  return place;
}

void Document::revert(std::uint32_t record) {
  std::uint32_t& edit = list_.records[record].edit;
  if (edit == none) return;
  freeEdits_.push_back(edit);
  edits_[edit].reset();
  edit = none;
}

Document::Backup Document::backup(std::uint32_t record) const {
  const std::uint32_t edit = list_.records[record].edit;
  return {record, edit == none ? nullptr : std::make_unique<Pairs>(*edits_[edit])};
}

void Document::restore(Backup backup) {
  if (backup.pairs_ == nullptr) return revert(backup.record_);
  placeForEdit(backup.record_) = std::move(backup.pairs_);
}

template <class Sink>
void Document::writePairs(std::uint32_t record, Sink&& sink) const {
  const ReadPairs asRead = read(record);
  constexpr std::size_t codeWidth = 3;
  // Only the last pair of a file may lack a line end, and needs one when a pair is inserted after it.
  bool endsLine = true;
  // Pairs that follow each other in the file, as most do, are written together.
  std::string_view together;
  const auto writeTogether = [&] {
    if (!together.empty()) sink(together);
    together = {};
  };
  for (const EditedPair& pair : *edits_[list_.records[record].edit]) {
    if (pair.origin != none && !pair.value.isThere()) {
      const std::string_view bytes = asRead.bytes(pair.origin);
      if (endsLine && together.data() + together.size() == bytes.data()) {
        together = {together.data(), together.size() + bytes.size()};
      } else {
        writeTogether();
        if (!endsLine) sink(lineEnd_);
        together = bytes;
      }
      endsLine = bytes.ends_with('\n');
      continue;
    }
    writeTogether();
    if (!endsLine) sink(lineEnd_);
    if (pair.origin == none) {
      const std::string code = std::to_string(pair.code);
      if (padsCodes_ && code.size() < codeWidth) sink(std::string_view("   ").substr(code.size()));
      sink(code);
      sink(lineEnd_);
      sink(pair.value.text());
      sink(lineEnd_);
      endsLine = true;
      continue;
    }
    const std::string_view bytes = asRead.bytes(pair.origin);
    const std::string_view value = asRead.value(pair.origin);
    const auto before = static_cast<std::size_t>(value.data() - bytes.data());
    sink(bytes.substr(0, before));
    sink(pair.value.text());
    sink(bytes.substr(before + value.size()));
    endsLine = bytes.size() > before + value.size();
  }
  writeTogether();
}

template <class Sink>
void Document::writeTo(Sink&& sink) const {
  std::uint32_t copied = 0;
  for (std::uint32_t record = 0; record < list_.records.size(); ++record) {
    if (!isEdited(record)) continue;
    sink(slice(copied, list_.records[record].begin));
    writePairs(record, sink);
    copied = endOf(record);
  }
  sink(std::string_view(bytes_).substr(copied));
}

std::string Document::bytes() const {
  std::string written;
  written.reserve(bytes_.size());
  writeTo([&](std::string_view part) { written += part; });
  return written;
}

void Document::write(std::ostream& out, const Progress& progress) const {
  constexpr std::size_t step = std::size_t{1} << 18;
  const std::uint64_t total = bytes_.size();
  std::uint64_t written = 0;
  // Small parts are gathered, since each write of a stream takes longer than copying one.
  std::string gathered;
  gathered.reserve(2 * step);
  const auto put = [&](std::string_view part) {
    out.write(part.data(), static_cast<std::streamsize>(part.size()));
    written += part.size();
    // What was edited may be longer than what was read.
    if (progress) progress(std::min(written, total), total);
  };
  writeTo([&](std::string_view part) {
    gathered += part.substr(0, step);
    if (gathered.size() < step) return;
    put(gathered);
    gathered.clear();
    for (std::size_t at = step; at < part.size(); at += step)
      put(part.substr(at, step));
  });
  put(gathered);
}

}  // namespace velt::dxf
