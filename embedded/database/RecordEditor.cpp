#include "embedded/database/RecordEditor.h"

#include <cmath>
#include <stdexcept>
#include <string>

#include "dxf/Numbers.h"

namespace velt::database {

bool RecordEditor::setReal(int code, std::string_view subclass, double value, Codes after) {
  std::string written = dxf::formatReal(value);
  const auto stored = Lens(*drawing_, record_).value(code, subclass);
  if (stored && dxf::parseReal(*stored) == value) return true;
  return set(code, subclass, written, after);
}

bool RecordEditor::setInteger(int code, std::string_view subclass, std::int64_t value, Codes after) {
  const auto stored = Lens(*drawing_, record_).value(code, subclass);
  if (stored && dxf::parseInteger<std::int64_t>(*stored) == value) return true;
  return set(code, subclass, dxf::formatInteger(value), after);
}

bool RecordEditor::setHandle(int code, std::string_view subclass, std::uint64_t value, Codes after) {
  const auto stored = Lens(*drawing_, record_).value(code, subclass);
  if (stored && dxf::parseHandle(*stored) == value) return true;
  return set(code, subclass, dxf::formatHandle(value), after);
}

bool RecordEditor::setText(int code, std::string_view subclass, std::wstring_view value, Codes after) {
  const auto stored = Lens(*drawing_, record_).value(code, subclass);
  if (stored && drawing_->decode(*stored) == value) return true;
  return set(code, subclass, drawing_->document().encode(value), after);
}

bool RecordEditor::setBytes(int code, std::string_view subclass, std::string_view value, Codes after) {
  if (Lens(*drawing_, record_).value(code, subclass) == value) return true;
  return set(code, subclass, value, after);
}

bool RecordEditor::setPoint(int code, std::string_view subclass, const Point& value, Codes after) {
  for (const double coordinate : value) {
    if (!std::isfinite(coordinate)) throw std::invalid_argument("a drawing cannot hold such a point");
  }
  const auto pairsNow = [&] { return drawing_->view(record_).pointPairs(code, subclass); };
  auto pairs = pairsNow();
  const bool isNew = !pairs;
  if (isNew) {
    if (!set(code, subclass, dxf::formatReal(value[0]), after)) return false;
    pairs = pairsNow();
  }
  // From the last one to the first: what stands before an inserted pair stays where it is.
  if (pairs->z || value[2] != 0.0) setNumber(pairs->z, pairs->y.value_or(pairs->x), code + 20, value[2]);
  if (pairs->y || isNew || value[1] != 0.0) setNumber(pairs->y, pairs->x, code + 10, value[1]);
  setNumber(pairs->x, pairs->x, code, value[0]);
  return true;
}

void RecordEditor::setNumber(std::optional<std::size_t> pair, std::size_t previous, int code, double value) {
  if (pair && dxf::parseReal(drawing_->view(record_).value(*pair)) == value) return;
  drawing_->edit(record_, [&](dxf::Document& document) {
    if (pair) {
      document.replace(record_, *pair, dxf::formatReal(value));
    } else {
      document.insert(record_, previous + 1, code, dxf::formatReal(value));
    }
  });
}

bool RecordEditor::remove(int code, std::string_view subclass) {
  const auto first = Lens(*drawing_, record_).find(code, subclass);
  if (!first) return false;
  drawing_->edit(record_, [&](dxf::Document& document) {
    for (auto pair = first; pair; pair = Lens(*drawing_, record_).find(code, subclass))
      document.erase(record_, *pair);
  });
  return true;
}

bool RecordEditor::set(int code, std::string_view subclass, std::string_view value, Codes after) {
  const Lens before(*drawing_, record_);
  auto pair = before.find(code, subclass);
  const bool isThere = pair.has_value();
  if (!pair) pair = before.view().insertionPoint(subclass, after);
  if (!pair) return false;
  drawing_->edit(record_, [&](dxf::Document& document) {
    if (isThere) {
      document.replace(record_, *pair, value);
    } else {
      document.insert(record_, *pair, code, value);
    }
  });
  return true;
}

}  // namespace velt::database
