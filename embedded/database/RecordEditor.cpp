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
  if (!setReal(code, subclass, value[0], after) || !setReal(code + 10, subclass, value[1], {code}))
    return false;
  const bool isFlat = value[2] == 0.0 && !Lens(*drawing_, record_).has(code + 20, subclass);
  return isFlat || setReal(code + 20, subclass, value[2], {code + 10});
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
  // What stands before the first marker also counts as the common part.
  if (!pair && subclass == commonSubclass) pair = before.view().insertionPoint("", after);
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
