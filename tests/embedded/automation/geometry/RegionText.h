#pragma once

// Regions in a modeller's text, for tests.
//
//   const std::vector<std::string> lines =
//       RegionText().face({{line({0, 0}, {2, 0}), arc({1, 0}, {1, 0}, 1, 0, pi)}}).lines();

#include <cmath>
#include <cstddef>
#include <map>
#include <numbers>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Vector.h"

namespace velt::automation::test {

// An edge as its loop runs through it.
struct Piece {
  Vector2 from;
  Vector2 to;
  // Of an arc: the ratio is 0 for a straight piece.
  Vector2 center = {};
  Vector2 major = {};
  double ratio = 0;
  double start = 0;
  double end = 0;
  // The curve runs against the edge, the edge against its loop.
  bool curveReversed = false;
  bool edgeReversed = false;

  [[nodiscard]] Piece withCurveReversed() const {
    Piece piece = *this;
    piece.curveReversed = true;
    return piece;
  }
  [[nodiscard]] Piece withEdgeReversed() const {
    Piece piece = *this;
    piece.edgeReversed = true;
    return piece;
  }
};

inline Piece line(Vector2 from, Vector2 to) {
  return {.from = from, .to = to};
}

// Counterclockwise when the end is greater.
inline Piece arc(Vector2 center, Vector2 major, double ratio, double start, double end) {
  const auto at = [&](double parameter) {
    return center + std::cos(parameter) * major + std::sin(parameter) * ratio * perpendicular(major);
  };
  const bool full = std::abs(std::abs(end - start) - 2 * std::numbers::pi) < 1e-12;
  return {.from = at(start),
          .to = full ? at(start) : at(end),
          .center = center,
          .major = major,
          .ratio = ratio,
          .start = start,
          .end = end};
}

inline Piece circle(Vector2 center, double radius) {
  return arc(center, {radius, 0}, 1, 0, 2 * std::numbers::pi);
}

using Loop = std::vector<Piece>;

inline Loop rectangle(Vector2 low, Vector2 high) {
  return {line(low, {high.x, low.y}), line({high.x, low.y}, high), line(high, {low.x, high.y}),
          line({low.x, high.y}, low)};
}

class RegionText {
 public:
  explicit RegionText(int version = 20800) : version_(version) {}

  RegionText& face(std::vector<Loop> loops) {
    lumps_.push_back({std::move(loops)});
    return *this;
  }
  // In the same lump as the last one.
  RegionText& another(std::vector<Loop> loops) {
    lumps_.back().push_back(std::move(loops));
    return *this;
  }
  RegionText& plane(const Vector3& origin, const Vector3& x, const Vector3& y) {
    origin_ = origin;
    x_ = x;
    y_ = y;
    return *this;
  }
  // The fields of the transform.
  RegionText& transformed(std::string fields) {
    transform_ = std::move(fields);
    return *this;
  }

  [[nodiscard]] std::vector<std::string> lines() const { return Writer(*this).lines(); }

 private:
  using Face = std::vector<Loop>;
  using Lump = std::vector<Face>;

  class Writer {
   public:
    explicit Writer(const RegionText& text) : text_(text) {}

    std::vector<std::string> lines() {
      const std::size_t body = reserve();
      std::optional<std::size_t> transform;
      if (!text_.transform_.empty()) transform = add("transform", text_.transform_);
      const std::size_t first = writeChain(text_.lumps_, body, &Writer::writeLump);
      fill(body, "body", to(first) + none + to(transform));
      std::vector<std::string> lines{std::to_string(text_.version_) + " " + std::to_string(records_.size())
                                     + " 1 0"};
      if (text_.version_ >= 200) {
        lines.emplace_back("9 Some Maker 5 1.0.0 1 0");
        lines.emplace_back("1 9.9999999999999995e-007 1e-010");
      }
      lines.insert(lines.end(), records_.begin(), records_.end());
      return lines;
    }

   private:
    static constexpr const char* none = "$-1 ";

    static std::string to(std::optional<std::size_t> record) {
      return record ? "$" + std::to_string(*record) + " " : none;
    }
    static std::string number(double value) { return dxf::formatReal(value) + " "; }
    static std::string vector(const Vector3& value) {
      return number(value.x) + number(value.y) + number(value.z);
    }
    [[nodiscard]] Vector3 turned(Vector2 value) const { return value.x * text_.x_ + value.y * text_.y_; }
    [[nodiscard]] Vector3 normal() const { return cross(text_.x_, text_.y_); }

    std::size_t reserve() {
      records_.emplace_back();
      return records_.size() - 1;
    }
    void fill(std::size_t record, const std::string& name, const std::string& fields) {
      const bool isTransform = name == "transform";
      const char* const head = text_.version_ < 700 ? " $-1 " : isTransform ? " $-1 -1 " : " $-1 -1 $-1 ";
      records_[record] = name + head + fields + "#";
    }
    std::size_t add(const std::string& name, const std::string& fields) {
      const std::size_t record = reserve();
      fill(record, name, fields);
      return record;
    }

    // One after the other, each referring to the next; gives the first.
    template <class Part>
    std::size_t writeChain(const std::vector<Part>& parts, std::size_t owner,
                           void (Writer::*write)(const Part&, std::size_t, std::optional<std::size_t>,
                                                 std::size_t)) {
      const std::size_t first = records_.size();
      records_.resize(first + parts.size());
      for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isLast = i + 1 == parts.size();
        (this->*write)(parts[i], first + i, isLast ? std::nullopt : std::optional(first + i + 1), owner);
      }
      return first;
    }

    void writeLump(const Lump& lump, std::size_t record, std::optional<std::size_t> next, std::size_t body) {
      const std::size_t shell = reserve();
      const std::size_t first = writeChain(lump, shell, &Writer::writeFace);
      fill(shell, "shell", std::string(none) + none + to(first) + none + to(record));
      fill(record, "lump", to(next) + to(shell) + to(body));
    }
    void writeFace(const Face& face, std::size_t record, std::optional<std::size_t> next, std::size_t shell) {
      const std::size_t first = writeChain(face, record, &Writer::writeLoop);
      const std::size_t plane = add("plane-surface", vector(text_.origin_) + vector(normal())
                                                         + vector(text_.x_) + "forward_v I I I I ");
      fill(record, "face", to(next) + to(first) + to(shell) + none + to(plane) + "forward double out ");
    }
    void writeLoop(const Loop& loop, std::size_t record, std::optional<std::size_t> nextLoop,
                   std::size_t face) {
      const std::size_t first = records_.size();
      records_.resize(first + loop.size());
      std::map<std::pair<double, double>, std::size_t> vertices;
      for (std::size_t i = 0; i < loop.size(); ++i) {
        const std::size_t next = first + (i + 1) % loop.size();
        const std::size_t previous = first + (i + loop.size() - 1) % loop.size();
        const std::size_t edge = writeEdge(loop[i], first + i, vertices);
        fill(first + i, "coedge",
             to(next) + to(previous) + none + to(edge) + sense(loop[i].edgeReversed) + to(record) + none);
      }
      fill(record, "loop", to(nextLoop) + to(first) + to(face));
    }
    static std::string sense(bool reversed) { return reversed ? "reversed " : "forward "; }

    using Vertices = std::map<std::pair<double, double>, std::size_t>;

    std::size_t writeEdge(const Piece& piece, std::size_t coedge, Vertices& vertices) {
      const std::size_t record = reserve();
      const std::size_t from = vertexAt(piece.from, record, vertices);
      const std::size_t last = vertexAt(piece.to, record, vertices);
      const bool against = piece.edgeReversed;
      std::pair<double, double> range =
          against ? std::pair(piece.end, piece.start) : std::pair(piece.start, piece.end);
      std::string curve = "straight-curve";
      std::string shape;
      if (piece.ratio > 0) {
        // The parameter of the curve grows along the curve, and that of the edge along the edge.
        const bool rising = (range.second > range.first) != piece.curveReversed;
        curve = "ellipse-curve";
        shape = vector(text_.origin_ + turned(piece.center)) + vector((rising ? 1.0 : -1.0) * normal())
                + vector(turned(piece.major)) + number(piece.ratio);
        if (!rising) range = {-range.first, -range.second};
      } else {
        const Vector2 begin = against != piece.curveReversed ? piece.to : piece.from;
        const Vector2 finish = against != piece.curveReversed ? piece.from : piece.to;
        const double size = length(finish - begin);
        shape = vector(text_.origin_ + turned(begin)) + vector(turned((1 / size) * (finish - begin)));
        range = piece.curveReversed ? std::pair(size, 0.0) : std::pair(0.0, size);
      }
      if (piece.curveReversed) range = {-range.first, -range.second};
      const std::size_t shapeRecord = add(curve, shape + "I I ");
      const bool tellsParameters = text_.version_ >= 500;
      const auto parameter = [&](double value) { return tellsParameters ? number(value) : std::string(); };
      fill(record, "edge",
           to(against ? last : from) + parameter(range.first) + to(against ? from : last)
               + parameter(range.second) + to(coedge) + to(shapeRecord) + sense(piece.curveReversed)
               + (tellsParameters ? "@7 unknown " : ""));
      return record;
    }
    std::size_t vertexAt(Vector2 at, std::size_t edge, Vertices& vertices) {
      const auto [found, isNew] = vertices.try_emplace({rounded(at.x), rounded(at.y)}, 0);
      if (isNew) {
        const std::size_t point = add("point", vector(text_.origin_ + turned(at)));
        found->second = add("vertex", to(edge) + to(point));
      }
      return found->second;
    }
    static double rounded(double value) { return std::round(value * 1e9) / 1e9 + 0.0; }

    const RegionText& text_;
    std::vector<std::string> records_;
  };

  int version_;
  std::vector<Lump> lumps_;
  Vector3 origin_;
  Vector3 x_{1, 0, 0};
  Vector3 y_{0, 1, 0};
  std::string transform_;
};

}  // namespace velt::automation::test
