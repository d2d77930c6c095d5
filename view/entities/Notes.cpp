#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/database/NamedObjects.h"
#include "view/FormattedText.h"
#include "view/Letters.h"
#include "view/TextStyles.h"
#include "view/entities/Entities.h"
#include "view/entities/LetterDrawer.h"

namespace velt::view::entities {
namespace {

using automation::pointAt;

// A filled triangle with its tip at the first point.
void drawArrow(Painter& painter, const Place& place, Vector2 tip, Vector2 from, double size) {
  const double reach = length(from - tip);
  if (!(size > 0) || !(reach > 0)) return;
  const Vector2 back = (size / reach) * (from - tip);
  const Vector2 aside = (1.0 / 6) * perpendicular(back);
  const Outline area{{tip, tip + back + aside, tip + back - aside}, true};
  painter.canvas().fill(painter.pen(place), std::span(&area, 1));
}

// What the entity tells of its own, else what its dimension style does.
std::optional<std::string_view> styleValue(const Painter& painter, const Lens& entity,
                                           std::wstring_view style, int code) {
  if (const auto data = entity.xdata("ACAD")) {
    const dxf::RecordView& view = entity.view();
    for (std::size_t index = data->first; index + 1 < data->first + data->count; ++index) {
      constexpr int number = 1070;
      if (view.code(index) == number && dxf::parseInteger<int>(view.value(index)) == code)
        return view.value(index + 1);
      // The value after its number may look like one.
      if (view.code(index) == number && view.code(index + 1) == number) ++index;
    }
  }
  const database::TableEntry* const entry = painter.drawing().dimStyles().find(style);
  if (entry == nullptr || entry->isImplied()) return std::nullopt;
  return Lens(painter.drawing(), entry->record).value(code, "AcDbDimStyleTableRecord");
}

double styleSize(const Painter& painter, const Lens& entity, std::wstring_view style, int code,
                 double otherwise) {
  const auto told = styleValue(painter, entity, style, code);
  return told ? dxf::parseReal(*told).value_or(otherwise) : otherwise;
}

double scaledStyleSize(const Painter& painter, const Lens& entity, std::wstring_view style, int code,
                       double otherwise) {
  constexpr int overall = 40;
  const double scale = styleSize(painter, entity, style, overall, 1);
  return styleSize(painter, entity, style, code, otherwise) * (scale > 0 ? scale : 1);
}

// --- multileaders: see MultileaderRecord.h for what its parts are ---

struct LeaderLine {
  std::vector<Vector3> points{};
};

struct LeaderRoot {
  std::optional<Vector3> end{};
  Vector3 landing{};
  double landingLength = 0;
  std::vector<LeaderLine> lines{};
};

struct Multileader {
  std::vector<LeaderRoot> roots{};
  double arrowSize = 0;
  // The text.
  bool hasText = false;
  std::wstring wording{};
  std::uint64_t textStyle = 0;
  Vector3 textPoint{};
  Vector3 textDirection{1, 0, 0};
  double textHeight = 0;
  double textWidth = 0;
  // A frame around the text, so far from it.
  bool hasFrame = false;
  double gap = 0;
  std::int64_t textAlignment = 1;
  std::optional<std::int64_t> textColor{};
  // The block.
  bool hasBlock = false;
  std::uint64_t block = 0;
  Vector3 blockPoint{};
  Vector3 blockScale{1, 1, 1};
  double blockRotation = 0;
  // Of itself.
  std::int64_t lineKind = 1;
  std::optional<std::int64_t> lineColor{};
};

void setCoordinate(Vector3& point, int code, int base, double number) {
  if (code == base) point.x = number;
  if (code == base + 10) point.y = number;
  if (code == base + 20) point.z = number;
}

class MultileaderReader {
 public:
  explicit MultileaderReader(const Lens& lens) : lens_(lens) {}

  Multileader read() {
    lens_.view().visit("AcDbMLeader", [&](std::size_t index) {
      const int code = lens_.view().code(index);
      const std::string_view value = lens_.view().value(index);
      if (!changesPart(code, dxf::trimmed(value))) take(code, value);
      return true;
    });
    return std::move(leader_);
  }

 private:
  enum class Part : std::uint8_t { Itself, Contents, Root, Line };

  bool changesPart(int code, std::string_view value) {
    const auto enter = [&](Part part) {
      part_ = part;
      return true;
    };
    if (code == 300 && value == "CONTEXT_DATA{") return enter(Part::Contents);
    if (part_ == Part::Contents && code == 302 && value == "LEADER{") {
      leader_.roots.emplace_back();
      return enter(Part::Root);
    }
    if (part_ == Part::Root && code == 304 && value == "LEADER_LINE{") {
      leader_.roots.back().lines.emplace_back();
      return enter(Part::Line);
    }
    if (value != "}") return false;
    if (part_ == Part::Line && code == 305) return enter(Part::Root);
    if (part_ == Part::Root && code == 303) return enter(Part::Contents);
    if (part_ == Part::Contents && code == 301) return enter(Part::Itself);
    return false;
  }

  void take(int code, std::string_view value) {
    const double number = dxf::parseReal(value).value_or(0);
    switch (part_) {
      case Part::Itself:
        return takeItself(code, value);
      case Part::Contents:
        return takeContents(code, value, number);
      case Part::Root:
        return takeRoot(leader_.roots.back(), code, number);
      case Part::Line: {
        std::vector<Vector3>& points = leader_.roots.back().lines.back().points;
        if (code == 10) points.emplace_back();
        if (!points.empty() && (code == 10 || code == 20 || code == 30))
          setCoordinate(points.back(), code, 10, number);
        return;
      }
    }
  }

  void takeItself(int code, std::string_view value) {
    const auto integer = dxf::parseInteger<std::int64_t>(value);
    if (code == 170 && integer) leader_.lineKind = *integer;
    if (code == 91 && integer) leader_.lineColor = *integer;
    if (code == 292 && integer) leader_.hasFrame = *integer != 0;
  }

  static void takeRoot(LeaderRoot& root, int code, double number) {
    if (code == 10) root.end.emplace();
    if (root.end && (code == 10 || code == 20 || code == 30)) setCoordinate(*root.end, code, 10, number);
    if (code == 11 || code == 21 || code == 31) setCoordinate(root.landing, code, 11, number);
    if (code == 40) root.landingLength = number;
  }

  void takeContents(int code, std::string_view value, double number) {
    const auto integer = [&] { return dxf::parseInteger<std::int64_t>(value).value_or(0); };
    setCoordinate(leader_.textPoint, code, 12, number);
    setCoordinate(leader_.textDirection, code, 13, number);
    setCoordinate(leader_.blockPoint, code, 15, number);
    setCoordinate(leader_.blockScale, code, 16, number);
    switch (code) {
      case 41:
        leader_.textHeight = number;
        break;
      case 43:
        leader_.textWidth = number;
        break;
      case 46:
        leader_.blockRotation = number;
        break;
      case 90:
        leader_.textColor = integer();
        break;
      case 140:
        leader_.arrowSize = number;
        break;
      case 145:
        leader_.gap = number;
        break;
      case 171:
        leader_.textAlignment = integer();
        break;
      case 290:
        leader_.hasText = integer() != 0;
        break;
      case 296:
        leader_.hasBlock = integer() != 0;
        break;
      case 304:
        leader_.wording = lens_.drawing().decode(value);
        break;
      case 340:
        leader_.textStyle = dxf::parseHandle(value).value_or(0);
        break;
      case 341:
        leader_.block = dxf::parseHandle(value).value_or(0);
        break;
      default:
        break;
    }
  }

  const Lens& lens_;
  Multileader leader_{};
  Part part_ = Part::Itself;
};

void drawLeaderLines(Painter& painter, const Place& place, const Multileader& leader) {
  constexpr std::int64_t invisible = 0;
  constexpr std::int64_t smooth = 2;
  if (leader.lineKind == invisible) return;
  const double arrow = leader.arrowSize * place.toSpace().scale();
  for (const LeaderRoot& root : leader.roots) {
    std::vector<Vector2> landing;
    if (root.end) {
      landing.push_back(place.toSpace().flat(*root.end));
      if (root.landingLength > 0)
        landing.push_back(place.toSpace().flat(*root.end + root.landingLength * root.landing));
    }
    for (const LeaderLine& line : root.lines) {
      std::vector<Vector2> points;
      for (const Vector3& point : line.points)
        points.push_back(place.toSpace().flat(point));
      if (points.empty()) continue;
      if (leader.lineKind == smooth) {
        if (!landing.empty()) points.push_back(landing.front());
        const std::vector<Vector2> through = std::exchange(points, {});
        appendCurveThrough(points, through, std::nullopt, std::nullopt, painter.canvas().tolerance());
      } else {
        points.insert(points.end(), landing.begin(), landing.end());
      }
      painter.canvas().path(painter.dashedPen(place), points);
      if (points.size() > 1) drawArrow(painter, place, points[0], points[1], arrow);
    }
  }
}

}  // namespace

void drawLeader(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbLeader";
  constexpr double usualArrow = 0.18;
  constexpr int arrowSize = 41;
  constexpr int lineColor = 176;
  constexpr int arrowBlock = 341;
  const std::vector<database::Point> corners = entity.points(10, subclass);
  if (corners.empty()) return;
  std::vector<Vector2> points;
  for (const database::Point& corner : corners)
    points.push_back(place.toSpace().flat(automation::vectorOf(corner)));
  const Vector3 tip = automation::vectorOf(corners.front());
  const Vector3 second = corners.size() > 1 ? automation::vectorOf(corners[1]) : tip;
  const bool isSmooth = entity.integer(72, subclass, 0) == 1;
  if (isSmooth) {
    const std::vector<Vector2> through = std::exchange(points, {});
    appendCurveThrough(points, through, std::nullopt, std::nullopt, painter.canvas().tolerance());
  }
  const std::wstring style = entity.name(3, subclass, L"Standard");
  Place ofLine = place;
  if (const auto told = styleValue(painter, entity, style, lineColor)) {
    // By block it is that of the leader itself.
    if (const auto color = dxf::parseInteger<std::int64_t>(*told); color && *color != 0)
      ofLine.look.ink = painter.appearance().inkOf(*color, place.look);
  }
  painter.canvas().path(painter.dashedPen(ofLine), points);
  if (entity.integer(71, subclass, 1) == 0) return;
  const double size = scaledStyleSize(painter, entity, style, arrowSize, usualArrow);
  const double room = length(second - tip);
  // As long as there is room for it.
  if (!(size > 0) || !(room > 0) || (2 * size > room && !isSmooth)) return;
  const auto block = styleValue(painter, entity, style, arrowBlock);
  const std::wstring name = block ? database::entryName(painter.drawing(), painter.drawing().blocks(),
                                                        dxf::parseHandle(*block).value_or(0))
                                  : std::wstring();
  if (name.empty())
    return drawArrow(painter, ofLine, place.toSpace().flat(tip), place.toSpace().flat(second),
                     size * place.toSpace().scale());
  const Vector3 outwards = tip - second;
  painter.drawBlock(name,
                    Painter::inside(ofLine, Transform::moved(tip)
                                                .after(Transform::rotated(std::atan2(outwards.y, outwards.x)))
                                                .after(Transform::scaled({size, size, size}))));
}

void drawMultileader(Painter& painter, const Lens& entity, const Place& place) {
  const Multileader leader = MultileaderReader(entity).read();
  Place ofLines = place;
  if (leader.lineColor) ofLines.look.ink = painter.appearance().inkOfRaw(*leader.lineColor, place.look);
  drawLeaderLines(painter, ofLines, leader);

  if (leader.hasText && leader.textHeight > 0) {
    const TextStyle style = textStyleOfHandle(painter.drawing(), leader.textStyle);
    TextLayout layout{.format = {.height = leader.textHeight,
                                 .widthFactor = style.widthFactor,
                                 .oblique = style.oblique,
                                 .family = style.family,
                                 .isBold = style.isBold,
                                 .isItalic = style.isItalic},
                      .width = std::max(0.0, leader.textWidth)};
    layout.across = static_cast<double>(std::clamp<std::int64_t>(leader.textAlignment, 1, 3) - 1) / 2;
    const Vector3 along = direction(leader.textDirection, {1, 0, 0});
    const Vector3 up = direction(cross(Vector3{0, 0, 1}, along), {0, 1, 0});
    Pen pen = painter.pen(place);
    if (leader.textColor) pen.ink = painter.appearance().inkOfRaw(*leader.textColor, place.look);
    const Transform plane = place.toSpace().after({along, up, {0, 0, 1}, leader.textPoint});
    const LaidOutText text = layOut(leader.wording, layout);
    drawFormatted(painter, pen, plane, text);
    if (leader.hasFrame && !text.texts.empty()) {
      const Box frame = text.box.grown(leader.gap);
      const std::array<Vector2, 4> corners = {
          plane.flat({frame.low.x, frame.low.y, 0}), plane.flat({frame.high.x, frame.low.y, 0}),
          plane.flat({frame.high.x, frame.high.y, 0}), plane.flat({frame.low.x, frame.high.y, 0})};
      painter.canvas().path(painter.pen(ofLines), corners, true);
    }
  }
  if (leader.hasBlock) {
    const std::wstring name =
        database::entryName(painter.drawing(), painter.drawing().blocks(), leader.block);
    const Transform toWorld = Transform::moved(leader.blockPoint)
                                  .after(Transform::rotated(leader.blockRotation))
                                  .after(Transform::scaled(leader.blockScale));
    painter.drawBlock(name, Painter::inside(place, toWorld));
  }
}

void drawTolerance(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbFcf";
  constexpr double usualHeight = 0.18;
  const double height =
      scaledStyleSize(painter, entity, entity.name(3, subclass, L"Standard"), 140, usualHeight);
  const std::wstring wording = entity.text(1, subclass);
  if (!(height > 0)) return;
  const Vector3 along = direction(pointAt(entity, 11, subclass, {1, 0, 0}), {1, 0, 0});
  const Vector3 normal = direction(automation::normalOf(entity, subclass), {0, 0, 1});
  const Transform plane = place.toSpace().after(
      {along, direction(cross(normal, along), {0, 1, 0}), normal, pointAt(entity, 10, subclass)});
  // Rows end with a caret code, compartments with %%v; each compartment that holds something has a frame.
  const double frameHeight = 2 * height;
  double top = frameHeight / 2;
  const Pen pen = painter.pen(place);
  std::size_t begin = 0;
  while (begin <= wording.size()) {
    const std::size_t end = std::min(wording.find(L"^J", begin), wording.size());
    double left = 0;
    std::size_t from = begin;
    while (from <= end) {
      const std::size_t next = std::min(wording.find(L"%%v", from), end);
      const std::wstring cell = wording.substr(from, next - from);
      const LaidOutText text = layOut(cell, {.format = {.height = height}, .down = 0.5});
      const double width = text.texts.empty() ? 0 : text.box.high.x - text.box.low.x + height;
      if (width > 0) {
        Outline frame{{}, true};
        for (const Vector2 corner :
             {Vector2{left, top}, Vector2{left + width, top}, Vector2{left + width, top - frameHeight},
              Vector2{left, top - frameHeight}})
          frame.points.push_back(plane.flat({corner.x, corner.y, 0}));
        painter.canvas().path(pen, std::span(&frame, 1));
        drawFormatted(painter, pen,
                      plane.after(Transform::moved({left + height / 2, top - frameHeight / 2, 0})), text);
      }
      left += width;
      if (next == end) break;
      from = next + 3;
    }
    top -= frameHeight;
    if (end == wording.size()) break;
    begin = end + 2;
  }
}

void drawShape(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbShape";
  const double size = entity.real(40, subclass, 1);
  const double rotation = entity.real(50, subclass, 0) / 180 * std::numbers::pi;
  const Transform plane = place.toSpace()
                              .after(Transform::ofFrame(automation::frameOf(entity, subclass)))
                              .after(Transform::moved(pointAt(entity, 10, subclass)))
                              .after(Transform::rotated(rotation));
  const std::array<Vector2, 4> square = {plane.flat({0, 0, 0}), plane.flat({size, 0, 0}),
                                         plane.flat({size, size, 0}), plane.flat({0, size, 0})};
  painter.canvas().path(painter.pen(place), square, true);
}

}  // namespace velt::view::entities
