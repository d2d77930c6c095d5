#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/database/Entity.h"
#include "embedded/database/NameFolding.h"
#include "view/entities/Entities.h"

namespace velt::view::entities {
namespace {

using automation::EllipticalArc;
using automation::fullTurn;
using automation::pointAt;

void stroke(Painter& painter, const Place& place, const EllipticalArc& arc) {
  const bool isFull = std::abs(arc.sweep) >= fullTurn * (1 - 1e-9);
  std::vector<Vector2> points;
  if (!isFull) points.push_back(arc.first());
  appendArc(points, arc, painter.canvas().tolerance());
  painter.canvas().path(painter.dashedPen(place), points, isFull);
}

std::vector<Vector2> flatPoints(const Lens& entity, int code, const Place& place) {
  std::vector<Vector2> points;
  for (const database::Point& point : entity.points(code, "AcDbSpline"))
    points.push_back(place.toSpace().flat(automation::vectorOf(point)));
  return points;
}

// The part of the line from + t * along, t from `first` on, that lies within the box.
void strokeWithin(Painter& painter, const Place& place, Vector2 from, Vector2 along, double first) {
  const std::optional<Box> sight = painter.canvas().sight(place.around.clip);
  if (!sight || !(length(along) > 0)) return;
  double last = std::numeric_limits<double>::infinity();
  const auto cut = [&](double start, double step, double low, double high) {
    if (std::abs(step) > 0) {
      const double a = (low - start) / step;
      const double b = (high - start) / step;
      first = std::max(first, std::min(a, b));
      last = std::min(last, std::max(a, b));
    } else if (start < low || start > high) {
      last = -std::numeric_limits<double>::infinity();
    }
  };
  cut(from.x, along.x, sight->low.x, sight->high.x);
  cut(from.y, along.y, sight->low.y, sight->high.y);
  if (!(first < last)) return;
  Pen pen = painter.dashedPen(place);
  pen.isEndless = true;
  const std::array<Vector2, 2> points = {from + first * along, from + last * along};
  painter.canvas().path(pen, points);
}

void strokeEndless(Painter& painter, const Lens& entity, const Place& place, double first) {
  const Vector2 from = place.toSpace().flat(pointAt(entity, 10, dxf::anySubclass));
  strokeWithin(painter, place, from, place.toSpace().flatAlong(pointAt(entity, 11, dxf::anySubclass)), first);
}

double headerNumber(const database::Drawing& drawing, std::string_view name, int code) {
  const auto value = drawing.document().headerValue(name, code);
  return value ? dxf::parseReal(*value).value_or(0) : 0;
}

// How large points are seen, in the units of the space: as told, or a part of what is seen.
double pointSize(Painter& painter, const Place& place) {
  const double stored = headerNumber(painter.drawing(), "$PDSIZE", 40);
  if (stored > 0) return stored * place.toSpace().scale();
  constexpr double usualPercent = 5;
  const double percent = stored < 0 ? -stored : usualPercent;
  const DrawOptions& options = painter.canvas().options();
  if (options.seenHeight > 0) return percent / 100 * options.seenHeight;
  return options.window ? percent / 100 * (options.window->high.y - options.window->low.y) : 0;
}

}  // namespace

void drawLine(Painter& painter, const Lens& entity, const Place& place) {
  const std::array<Vector2, 2> points = {place.toSpace().flat(pointAt(entity, 10, "AcDbLine")),
                                         place.toSpace().flat(pointAt(entity, 11, "AcDbLine"))};
  painter.canvas().path(painter.dashedPen(place), points);
}

void drawArc(Painter& painter, const Lens& entity, const Place& place) {
  const bool isArc = entity.type() == "ARC";
  const Transform plane =
      place.toSpace().after(Transform::ofFrame(automation::frameOf(entity, "AcDbCircle")));
  const double radius = entity.real(40, "AcDbCircle", 0);
  EllipticalArc arc{plane.flat(pointAt(entity, 10, "AcDbCircle")), plane.flatAlong({radius, 0, 0}),
                    plane.flatAlong({0, radius, 0}), 0, fullTurn};
  if (isArc) {
    arc.start = automation::radians(entity.real(50, "AcDbArc", 0));
    arc.sweep = automation::sweepBetween(arc.start, automation::radians(entity.real(51, "AcDbArc", 0)));
  }
  stroke(painter, place, arc);
}

void drawEllipse(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbEllipse";
  const Vector3 major = pointAt(entity, 11, subclass);
  const Vector3 normal = direction(automation::normalOf(entity, subclass), {0, 0, 1});
  const Vector3 minor = entity.real(40, subclass, 1) * cross(normal, major);
  const double start = entity.real(41, subclass, 0);
  const double end = entity.real(42, subclass, fullTurn);
  stroke(painter, place,
         {place.toSpace().flat(pointAt(entity, 10, subclass)), place.toSpace().flatAlong(major),
          place.toSpace().flatAlong(minor), start, automation::sweepBetween(start, end)});
}

void drawSpline(Painter& painter, const Lens& entity, const Place& place) {
  constexpr std::string_view subclass = "AcDbSpline";
  std::vector<Vector2> points;
  const Tolerance tolerance = painter.canvas().tolerance();
  // Seen from above, the curve is that of the control points as they are seen.
  const std::vector<Vector2> control = flatPoints(entity, 10, place);
  std::vector<double> weights = entity.reals(41, subclass);
  if (weights.size() != control.size()) weights.clear();
  const auto spline = automation::Spline::make(entity.integer(71, subclass, 3), entity.reals(40, subclass),
                                               control, std::move(weights));
  if (spline) {
    appendSpline(points, *spline, tolerance);
  } else if (const std::vector<Vector2> fit = flatPoints(entity, 11, place); !fit.empty()) {
    const auto directionAt = [&](int code) {
      const bool isThere = entity.has(code, subclass);
      return isThere ? std::optional(place.toSpace().flatAlong(pointAt(entity, code, subclass)))
                     : std::nullopt;
    };
    appendCurveThrough(points, fit, directionAt(12), directionAt(13), tolerance);
  } else {
    points = control;
  }
  painter.canvas().path(painter.dashedPen(place), points);
}

void drawRay(Painter& painter, const Lens& entity, const Place& place) {
  strokeEndless(painter, entity, place, 0);
}

void drawXLine(Painter& painter, const Lens& entity, const Place& place) {
  strokeEndless(painter, entity, place, -std::numeric_limits<double>::infinity());
}

void drawPoint(Painter& painter, const Lens& entity, const Place& place) {
  // Those that dimensions are measured from are dots, whatever others look like.
  const bool isOfDimension =
      database::sameName(database::Entity(painter.drawing(), place.record).layerName(), L"Defpoints");
  const int mode = isOfDimension ? 0 : static_cast<int>(headerNumber(painter.drawing(), "$PDMODE", 70));
  const Vector2 center = place.toSpace().flat(pointAt(entity, 10, "AcDbPoint"));
  const double half = pointSize(painter, place) / 2;
  std::vector<Outline> lines;
  const auto add = [&](std::initializer_list<Vector2> arms, bool isClosed = false) {
    lines.push_back({{}, isClosed});
    for (const Vector2& arm : arms)
      lines.back().points.push_back(center + half * arm);
  };
  constexpr int circled = 32;
  constexpr int squared = 64;
  switch (half > 0 ? mode & 7 : 0) {
    case 0:
      lines.push_back({{center}});
      break;
    case 2:
      add({{-2, 0}, {2, 0}});
      add({{0, -2}, {0, 2}});
      break;
    case 3:
      add({{-1, -1}, {1, 1}});
      add({{-1, 1}, {1, -1}});
      break;
    case 4:
      add({{0, 0}, {0, 1}});
      break;
    default:  // 1 is nothing at all
      break;
  }
  if (half > 0 && (mode & circled) != 0) {
    lines.push_back({{}, true});
    appendArc(lines.back().points, {center, {half, 0}, {0, half}, 0, fullTurn}, painter.canvas().tolerance());
  }
  if (half > 0 && (mode & squared) != 0) add({{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}, true);
  painter.canvas().path(painter.pen(place), lines);
}

}  // namespace velt::view::entities
