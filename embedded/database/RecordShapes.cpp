#include "embedded/database/RecordShapes.h"

#include <new>

namespace velt::database {

namespace {

// Of 100, 101 and 102 the value counts; all other pairs are what their code says.
bool isMark(int code) {
  return code >= 100 && code <= 102;
}

std::size_t hashOf(const dxf::RecordView& view) {
  std::size_t hash = view.size();
  for (std::size_t pair = 0; pair < view.size(); ++pair) {
    const int code = view.code(pair);
    hash = hash * 31 + static_cast<std::size_t>(code);
    if (isMark(code)) hash = hash * 31 + std::hash<std::string_view>()(view.value(pair));
  }
  return hash;
}

template <class Shape>
bool isOf(const dxf::RecordView& view, const Shape& shape) {
  if (view.size() != shape.codes.size()) return false;
  for (std::size_t pair = 0; pair < shape.codes.size(); ++pair) {
    if (view.code(pair) != shape.codes[pair]) return false;
  }
  for (const auto& [pair, value] : shape.marks) {
    if (view.value(pair) != value) return false;
  }
  return true;
}

}  // namespace

RecordShapes::ShapeNumber RecordShapes::learn(std::uint32_t record, const dxf::RecordView& view) noexcept {
  try {
    if (shapeOfRecord_.empty()) shapeOfRecord_.resize(records_);
    return shapeOfRecord_[record] = learned(view);
  } catch (const std::bad_alloc&) {
    // Whoever asks next tries again.
    return unknown;
  }
}

RecordShapes::ShapeNumber RecordShapes::learned(const dxf::RecordView& view) {
  if (view.size() > mostPairs) return shapeless;
  // Mostly a record looks like the one before it.
  if (last_ != shapeless && isOf(view, shapes_[last_ - std::size_t{2}])) return last_;
  const std::size_t hash = hashOf(view);
  const auto [first, end] = numbers_.equal_range(hash);
  for (auto known = first; known != end; ++known) {
    if (isOf(view, shapes_[known->second - std::size_t{2}])) return last_ = known->second;
  }
  if (shapes_.size() == mostShapes) return shapeless;
  Shape shape;
  for (std::size_t pair = 0; pair < view.size(); ++pair) {
    shape.codes.push_back(view.code(pair));
    if (isMark(view.code(pair))) shape.marks.emplace_back(pair, view.value(pair));
  }
  const auto number = static_cast<ShapeNumber>(shapes_.size() + 2);
  const auto entry = numbers_.emplace(hash, number);
  try {
    shapes_.push_back(std::move(shape));
  } catch (const std::bad_alloc&) {
    numbers_.erase(entry);
    throw;
  }
  return last_ = number;
}

bool RecordShapes::lookUp(const dxf::RecordView& view, const Wanted& wanted, Place& place) noexcept {
  try {
    const std::string& subclass = *subclasses_.emplace(wanted.subclass).first;
    Place found{.wanted = {wanted.code, wanted.isPoint, subclass}};
    if (wanted.isPoint) {
      const auto pairs = view.pointPairs(wanted.code, wanted.subclass);
      found.isFound = pairs.has_value();
      found.pairs = pairs.value_or(dxf::PointPairs{});
    } else {
      const auto pair = view.find(wanted.code, wanted.subclass);
      found.isFound = pair.has_value();
      found.pairs.x = pair.value_or(0);
    }
    place = found;
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace velt::database
