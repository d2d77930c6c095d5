#pragma once

// Small drawings, and what they look like.

#include <memory>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "tests/tool/Drawings.h"
#include "view/Draw.h"

namespace velt::tests {

// One entity on a layer: its type, and its pairs after those that all entities have.
inline std::string entityOf(const std::string& type, const std::vector<Pair>& own,
                            const std::string& layer = "0", const std::vector<Pair>& common = {}) {
  return pairs({{0, type}, {8, layer}}) + pairs(common) + pairs(own);
}

inline std::string blockOf(const std::string& name, const std::string& contents,
                           const std::vector<Pair>& own = {}) {
  return pairs({{0, "BLOCK"}, {8, "0"}, {2, name}, {70, "0"}}) + pairs(own) + contents
         + pairs({{0, "ENDBLK"}, {8, "0"}});
}

inline std::string insertOf(const std::string& block, const std::vector<Pair>& own = {},
                            const std::string& layer = "0") {
  return entityOf("INSERT", {{2, block}}, layer) + pairs(own);
}

inline std::string lineFromTo(const std::string& x1, const std::string& y1, const std::string& x2,
                              const std::string& y2, const std::string& layer = "0",
                              const std::vector<Pair>& common = {}) {
  return entityOf("LINE", {{10, x1}, {20, y1}, {11, x2}, {21, y2}}, layer, common);
}

// What model space looks like, and where its points are.
class Scene {
 public:
  explicit Scene(const std::string& entities, const std::string& blocks = {},
                 const std::vector<LayerOf>& layers = {{"0"}},
                 const view::DrawOptions& options = {.scale = 1})
      : Scene(database::Drawing::parse(drawingOf(layers, entities, blocks), "scene"), options) {}
  Scene(std::unique_ptr<database::Drawing> drawing, const view::DrawOptions& options, std::size_t space = 0)
      : drawing_(std::move(drawing)) {
    const view::Contents contents(*drawing_);
    picture_ = view::draw(*drawing_, contents, view::spacesOf(*drawing_).at(space), options);
  }

  [[nodiscard]] const view::Picture& picture() const { return picture_; }
  [[nodiscard]] const database::Drawing& drawing() const { return *drawing_; }
  [[nodiscard]] std::size_t size() const { return picture_.primitives.size(); }
  [[nodiscard]] const view::Primitive& operator[](std::size_t index) const {
    return picture_.primitives.at(index);
  }
  [[nodiscard]] const view::Text& text(std::size_t index) const {
    return picture_.texts.at((*this)[index].first);
  }
  [[nodiscard]] std::vector<view::Vector2> points(std::size_t index, std::uint32_t part = 0) const {
    const view::Part& of = picture_.parts.at((*this)[index].first + part);
    const auto first = picture_.points.begin() + of.firstPoint;
    return {first, first + of.pointCount};
  }

 private:
  std::unique_ptr<database::Drawing> drawing_;
  view::Picture picture_;
};

inline std::string spelled(const std::vector<view::Vector2>& points) {
  std::ostringstream text;
  for (const view::Vector2& point : points)
    text << (text.tellp() > 0 ? " " : "") << point.x << "," << point.y;
  return text.str();
}

}  // namespace velt::tests
