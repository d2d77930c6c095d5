#include "embedded/database/RecordEditor.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>
#include <string>

#include "dxf/Numbers.h"

namespace velt::database {

std::span<const int> codesBefore(int code, std::span<const int> order) {
  const auto place = std::find(order.begin(), order.end(), code);
  return place == order.end() ? std::span<const int>()
                              : order.first(static_cast<std::size_t>(place - order.begin()));
}

template <class IsSame, class Write>
bool RecordEditor::setUnlessSame(int code, std::string_view subclass, Codes after, IsSame&& isSame,
                                 Write&& write) {
  const Lens now(*drawing_, record_);
  const auto stored = now.find(code, subclass);
  if (stored && isSame(now.view().value(*stored))) return true;
  const auto value = write();
  const auto place = stored ? stored : now.view().insertionPoint(subclass, after);
  if (!place) return false;
  const auto change = [&](dxf::Document& document) {
    if (stored) {
      document.replace(record_, *place, value);
    } else {
      document.insert(record_, *place, code, value);
    }
  };
  drawing_->edit(record_, std::cref(change));
  return true;
}

bool RecordEditor::setReal(int code, std::string_view subclass, double value, Codes after) {
  return setUnlessSame(
      code, subclass, after, [&](std::string_view stored) { return dxf::parseReal(stored) == value; },
      [&] { return dxf::formatReal(value); });
}

bool RecordEditor::setInteger(int code, std::string_view subclass, std::int64_t value, Codes after) {
  return setUnlessSame(
      code, subclass, after,
      [&](std::string_view stored) { return dxf::parseInteger<std::int64_t>(stored) == value; },
      [&] { return dxf::formatInteger(value); });
}

bool RecordEditor::setHandle(int code, std::string_view subclass, std::uint64_t value, Codes after) {
  return setUnlessSame(
      code, subclass, after, [&](std::string_view stored) { return dxf::parseHandle(stored) == value; },
      [&] { return dxf::formatHandle(value); });
}

bool RecordEditor::setText(int code, std::string_view subclass, std::wstring_view value, Codes after) {
  return setUnlessSame(
      code, subclass, after, [&](std::string_view stored) { return drawing_->decode(stored) == value; },
      [&] { return drawing_->document().encode(value); });
}

bool RecordEditor::setBytes(int code, std::string_view subclass, std::string_view value, Codes after) {
  return setUnlessSame(
      code, subclass, after, [&](std::string_view stored) { return stored == value; }, [&] { return value; });
}

bool RecordEditor::setPoint(int code, std::string_view subclass, const Point& value, Codes after) {
  for (const double coordinate : value) {
    if (!std::isfinite(coordinate)) throw std::invalid_argument("a drawing cannot hold such a point");
  }
  const auto pairsNow = [&] { return drawing_->view(record_).pointPairs(code, subclass); };
  auto pairs = pairsNow();
  const bool isNew = !pairs;
  if (isNew) {
    if (!setReal(code, subclass, value[0], after)) return false;
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
  const auto change = [&](dxf::Document& document) {
    if (pair) {
      document.replace(record_, *pair, dxf::formatReal(value));
    } else {
      document.insert(record_, previous + 1, code, dxf::formatReal(value));
    }
  };
  drawing_->edit(record_, std::cref(change));
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

}  // namespace velt::database
