#include "embedded/database/RecordEditor.h"

#include <span>
#include <string>

#include "embedded/dxf/Numbers.h"

namespace velt::database {

bool RecordEditor::setReal(int code, std::string_view subclass, double value, Codes after) {
  return set(code, subclass, dxf::formatReal(value), after);
}

bool RecordEditor::setInteger(int code, std::string_view subclass, std::int64_t value, Codes after) {
  return set(code, subclass, dxf::formatInteger(value), after);
}

bool RecordEditor::setHandle(int code, std::string_view subclass, std::uint64_t value, Codes after) {
  return set(code, subclass, dxf::formatHandle(value), after);
}

bool RecordEditor::setText(int code, std::string_view subclass, std::wstring_view value, Codes after) {
  return set(code, subclass, drawing_->document().encode(value), after);
}

bool RecordEditor::setPoint(int code, std::string_view subclass, const Point& value, Codes after) {
  const std::string y = dxf::formatReal(value[1]);
  const std::string z = dxf::formatReal(value[2]);
  if (!set(code, subclass, dxf::formatReal(value[0]), after) || !set(code + 10, subclass, y, {code}))
    return false;
  const bool isFlat = value[2] == 0.0 && !Lens(*drawing_, record_).has(code + 20, subclass);
  return isFlat || set(code + 20, subclass, z, {code + 10});
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
  const std::span<const int> hints(after.begin(), after.size());
  auto pair = before.find(code, subclass);
  const bool isThere = pair.has_value();
  if (!pair) pair = before.view().insertionPoint(subclass, hints);
  // The part before the first marker is common to all entities, too.
  if (!pair && subclass == commonSubclass) pair = before.view().insertionPoint("", hints);
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
