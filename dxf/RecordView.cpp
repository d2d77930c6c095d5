#include "dxf/RecordView.h"

#include <algorithm>

#include "dxf/Numbers.h"

namespace velt::dxf {

std::string_view RecordView::type() const noexcept {
  return size_ != 0 && code(0) == 0 ? trimmed(value(0)) : std::string_view{};
}

std::string_view RecordView::handle() const {
  const std::string_view recordType = type();
  // A 5 in the header section is the value of a header variable.
  if (recordType == "SECTION") return {};
  return text(recordType == "DIMSTYLE" ? 105 : 5, "").value_or(std::string_view{});
}

bool RecordView::hasSubclasses() const noexcept {
  for (std::size_t index = 0; index < size_; ++index) {
    if (code(index) == 100) return true;
  }
  return false;
}

bool RecordView::hasSubclass(std::string_view subclass) const {
  for (std::size_t index = 0; index < size_; ++index) {
    if (code(index) == 100 && trimmed(value(index)) == subclass) return true;
    if (code(index) == 101 && isEmbeddedObject(value(index))) return false;
  }
  return false;
}

std::optional<std::size_t> RecordView::find(int wanted, std::string_view subclass,
                                            std::size_t occurrence) const {
  std::optional<std::size_t> found;
  visit(subclass, [&](std::size_t index) {
    if (code(index) != wanted || occurrence-- != 0) return true;
    found = index;
    return false;
  });
  return found;
}

std::vector<std::size_t> RecordView::findAll(int wanted, std::string_view subclass) const {
  std::vector<std::size_t> found;
  visit(subclass, [&](std::size_t index) {
    if (code(index) == wanted) found.push_back(index);
    return true;
  });
  return found;
}

std::optional<std::string_view> RecordView::text(int wanted, std::string_view subclass,
                                                 std::size_t occurrence) const {
  const auto index = find(wanted, subclass, occurrence);
  return index ? std::optional(value(*index)) : std::nullopt;
}

std::optional<double> RecordView::real(int wanted, std::string_view subclass, std::size_t occurrence) const {
  const auto index = find(wanted, subclass, occurrence);
  return index ? parseReal(value(*index)) : std::nullopt;
}

std::optional<std::int64_t> RecordView::integer(int wanted, std::string_view subclass,
                                                std::size_t occurrence) const {
  const auto index = find(wanted, subclass, occurrence);
  return index ? parseInteger<std::int64_t>(value(*index)) : std::nullopt;
}

std::optional<PointPairs> RecordView::pointPairs(int wanted, std::string_view subclass,
                                                 std::size_t occurrence) const {
  std::optional<PointPairs> found;
  visit(subclass, [&](std::size_t index) {
    const int here = code(index);
    if (!found) {
      if (here == wanted && occurrence-- == 0) found = PointPairs{.x = index};
      return true;
    }
    if (here == wanted) return false;
    if (here == wanted + 10 && !found->y) found->y = index;
    if (here == wanted + 20 && !found->z) found->z = index;
    return !found->y || !found->z;
  });
  return found;
}

bool RecordView::readPoint(const PointPairs& pairs, double& x, double& y, double& z) const {
  if (!readReal(value(pairs.x), x)) return false;
  if (!pairs.y || !readReal(value(*pairs.y), y)) y = 0;
  if (!pairs.z || !readReal(value(*pairs.z), z)) z = 0;
  return true;
}

std::optional<std::array<double, 3>> RecordView::point(int wanted, std::string_view subclass,
                                                       std::size_t occurrence) const {
  const auto pairs = pointPairs(wanted, subclass, occurrence);
  std::array<double, 3> point{};
  if (!pairs || !readPoint(*pairs, point[0], point[1], point[2])) return std::nullopt;
  return point;
}

std::optional<PairRange> RecordView::extendedData(std::string_view application) const {
  std::size_t index = 0;
  while (index < size_ && !(code(index) == 1001 && trimmed(value(index)) == application))
    ++index;
  if (index == size_) return std::nullopt;
  const std::size_t first = ++index;
  while (index < size_ && isExtendedData(code(index)) && code(index) != 1001)
    ++index;
  return PairRange{first, index - first};
}

std::optional<PairRange> RecordView::applicationGroup(std::string_view name) const {
  const auto isMark = [&](std::size_t index, char bracket) {
    return code(index) == 102 && trimmed(value(index)).starts_with(bracket);
  };
  for (std::size_t index = 0; index < size_; ++index) {
    if (!isMark(index, '{') || trimmed(value(index)).substr(1) != name) continue;
    const std::size_t first = index + 1;
    std::size_t last = first;
    for (std::size_t depth = 1; last < size_ && code(last) != 100 && !isExtendedData(code(last)); ++last) {
      if (isMark(last, '{')) ++depth;
      if (isMark(last, '}') && --depth == 0) break;
    }
    return PairRange{first, last - first};
  }
  return std::nullopt;
}

std::optional<PairRange> RecordView::embeddedObject() const {
  std::size_t index = 0;
  while (index < size_ && !(code(index) == 101 && isEmbeddedObject(value(index))))
    ++index;
  if (index == size_) return std::nullopt;
  const std::size_t first = ++index;
  while (index < size_ && !isExtendedData(code(index)))
    ++index;
  return PairRange{first, index - first};
}

std::optional<std::size_t> RecordView::insertionPoint(std::string_view subclass,
                                                      std::span<const int> after) const {
  std::optional<std::size_t> afterHint;
  std::optional<std::size_t> sectionEnd;
  bool isSectionOver = false;
  Walk walk(*this, subclass);
  for (std::size_t index = 0; index < size_ && !walk.ended() && !isExtendedData(code(index)); ++index) {
    const bool isProperty = walk.isProperty(index);
    // The next section may be one of the same subclass.
    const bool opensSection = code(index) == 100 && !walk.joinsSections();
    if (sectionEnd && (opensSection || !walk.inside())) isSectionOver = !walk.joinsSections();
    if (!walk.inside() || walk.inGroup()) continue;
    if (!isSectionOver) sectionEnd = index + 1;
    if (isProperty && std::find(after.begin(), after.end(), code(index)) != after.end())
      afterHint = index + 1;
  }
  return afterHint ? afterHint : sectionEnd;
}

}  // namespace velt::dxf
