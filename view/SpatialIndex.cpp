#include "view/SpatialIndex.h"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <iterator>
#include <span>
#include <unordered_set>
#include <utility>

#include "view/LinePieces.h"

namespace velt::view {
namespace {

namespace geometry = boost::geometry;

using IndexPoint = geometry::model::point<double, 2, geometry::cs::cartesian>;
using IndexBox = geometry::model::box<IndexPoint>;
using Entry = std::pair<IndexBox, std::uint32_t>;

IndexBox asIndexBox(const Box& box) {
  return {{box.low.x, box.low.y}, {box.high.x, box.high.y}};
}

double distanceTo(Vector2 point, Vector2 from, Vector2 to) {
  const Vector2 along = to - from;
  const double square = dot(along, along);
  const double part = square > 0 ? std::clamp(dot(point - from, along) / square, 0.0, 1.0) : 0;
  return length(point - (from + part * along));
}

// Whether a ray from the point leaves the ring an odd number of times.
bool isInside(std::span<const Vector2> ring, Vector2 point) {
  bool inside = false;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Vector2 a = ring[i];
    const Vector2 b = ring[(i + 1) % ring.size()];
    if ((a.y > point.y) != (b.y > point.y) && point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x))
      inside = !inside;
  }
  return inside;
}

bool contains(const Box& box, Vector2 point) {
  return point.x >= box.low.x && point.x <= box.high.x && point.y >= box.low.y && point.y <= box.high.y;
}

bool contains(const Box& box, const Box& inner) {
  return contains(box, inner.low) && contains(box, inner.high);
}

// Looks at one primitive closely, where its box alone does not tell.
class Closely {
 public:
  Closely(const Picture& picture, const Primitive& primitive) : picture_(picture), primitive_(primitive) {
    if (primitive.shape == Shape::Text) corners_ = outlineOf(picture.texts[primitive.first]);
  }

  [[nodiscard]] bool isHit(Vector2 point, double distance) const {
    if (!isWithinClips(point)) return false;
    if (primitive_.shape != Shape::Path && isFilledAt(point)) return true;
    const double reach = distance + primitive_.width / 2;
    return anyEdge([&](Vector2 from, Vector2 to) { return distanceTo(point, from, to) <= reach; });
  }

  [[nodiscard]] bool crosses(const Box& box) const {
    if (!clipsMeet(box)) return false;
    if (primitive_.shape != Shape::Path && isFilledAt(0.5 * (box.low + box.high))) return true;
    const Box reach = box.grown(primitive_.width / 2);
    return anyEdge([&](Vector2 from, Vector2 to) { return partWithin(from, to, reach).has_value(); });
  }

 private:
  [[nodiscard]] std::span<const Vector2> pointsOf(const Part& part) const {
    return std::span(picture_.points).subspan(part.firstPoint, part.pointCount);
  }

  [[nodiscard]] bool isFilledAt(Vector2 point) const {
    if (primitive_.shape == Shape::Text) return isInside(corners_, point);
    bool inside = false;
    for (std::uint32_t part = primitive_.first; part < primitive_.first + primitive_.count; ++part) {
      if (isInside(pointsOf(picture_.parts[part]), point)) inside = !inside;
    }
    return inside;
  }

  template <class Test>
  [[nodiscard]] bool anyEdge(Test&& test) const {
    if (primitive_.shape == Shape::Text) return anyEdgeOf(corners_, true, test);
    for (std::uint32_t part = primitive_.first; part < primitive_.first + primitive_.count; ++part) {
      if (anyEdgeOf(pointsOf(picture_.parts[part]), picture_.parts[part].isClosed, test)) return true;
    }
    return false;
  }

  template <class Test>
  [[nodiscard]] static bool anyEdgeOf(std::span<const Vector2> points, bool isClosed, Test&& test) {
    if (points.size() == 1) return test(points[0], points[0]);
    for (std::size_t i = 1; i < points.size(); ++i) {
      if (test(points[i - 1], points[i])) return true;
    }
    return isClosed && points.size() > 2 && test(points.back(), points.front());
  }

  [[nodiscard]] bool isWithinClips(Vector2 point) const {
    for (std::uint32_t clip = primitive_.clip; clip != none; clip = picture_.clips[clip].outer) {
      if (!isInside(picture_.clips[clip].outline, point)) return false;
    }
    return true;
  }

  [[nodiscard]] bool clipsMeet(const Box& box) const {
    for (std::uint32_t clip = primitive_.clip; clip != none; clip = picture_.clips[clip].outer) {
      if (!picture_.clips[clip].box.meets(box)) return false;
    }
    return true;
  }

  const Picture& picture_;
  const Primitive& primitive_;
  std::vector<Vector2> corners_{};
};

}  // namespace

class SpatialIndex::Tree {
 public:
  explicit Tree(const std::vector<Entry>& entries) : tree_(entries.begin(), entries.end()) {}

  // In drawing order.
  [[nodiscard]] std::vector<std::uint32_t> meeting(const Box& box) const {
    std::vector<Entry> found;
    tree_.query(geometry::index::intersects(asIndexBox(box)), std::back_inserter(found));
    std::vector<std::uint32_t> indexes;
    indexes.reserve(found.size());
    for (const Entry& entry : found)
      indexes.push_back(entry.second);
    std::sort(indexes.begin(), indexes.end());
    return indexes;
  }

 private:
  geometry::index::rtree<Entry, geometry::index::quadratic<16>> tree_;
};

SpatialIndex::SpatialIndex(const Picture& picture) : picture_(&picture) {
  std::vector<Entry> entries;
  entries.reserve(picture.primitives.size());
  for (std::size_t i = 0; i < picture.primitives.size(); ++i) {
    const Primitive& primitive = picture.primitives[i];
    entries.emplace_back(asIndexBox(primitive.box), static_cast<std::uint32_t>(i));
    extents_[primitive.entity].include(primitive.box);
  }
  tree_ = std::make_unique<Tree>(entries);
}

SpatialIndex::~SpatialIndex() = default;
SpatialIndex::SpatialIndex(SpatialIndex&&) noexcept = default;
SpatialIndex& SpatialIndex::operator=(SpatialIndex&&) noexcept = default;

std::vector<std::uint32_t> SpatialIndex::seenIn(const Box& box) const {
  return tree_->meeting(box);
}

std::vector<std::uint32_t> SpatialIndex::at(Vector2 point, double distance) const {
  std::vector<std::uint32_t> candidates = tree_->meeting(Box{point, point}.grown(distance));
  std::reverse(candidates.begin(), candidates.end());
  std::vector<std::uint32_t> entities;
  std::unordered_set<std::uint32_t> known;
  for (const std::uint32_t index : candidates) {
    const Primitive& primitive = picture_->primitives[index];
    if (known.contains(primitive.entity) || !Closely(*picture_, primitive).isHit(point, distance)) continue;
    known.insert(primitive.entity);
    entities.push_back(primitive.entity);
  }
  return entities;
}

std::vector<std::uint32_t> SpatialIndex::within(const Box& box) const {
  std::vector<std::uint32_t> entities;
  std::unordered_set<std::uint32_t> known;
  for (const std::uint32_t index : tree_->meeting(box)) {
    const std::uint32_t entity = picture_->primitives[index].entity;
    if (known.insert(entity).second && contains(box, extents_.at(entity))) entities.push_back(entity);
  }
  return entities;
}

std::vector<std::uint32_t> SpatialIndex::crossing(const Box& box) const {
  std::vector<std::uint32_t> entities;
  std::unordered_set<std::uint32_t> known;
  for (const std::uint32_t index : tree_->meeting(box)) {
    const Primitive& primitive = picture_->primitives[index];
    if (known.contains(primitive.entity)) continue;
    if (!contains(box, primitive.box) && !Closely(*picture_, primitive).crosses(box)) continue;
    known.insert(primitive.entity);
    entities.push_back(primitive.entity);
  }
  return entities;
}

}  // namespace velt::view
