#include "samples/gallery/DimensionCodes.h"
#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

using namespace dimensions;

// What kind of dimension it is (code 70), and what is added to it.
constexpr int rotatedKind = 0;
constexpr int alignedKind = 1;
constexpr int angularKind = 2;
constexpr int diametricKind = 3;
constexpr int radialKind = 4;
constexpr int threePointKind = 5;
constexpr int ordinateKind = 6;
constexpr int joggedKind = 9;
constexpr int ownsItsBlock = 32;
constexpr int measuresX = 64;
constexpr int textIsPlaced = 128;

// What all dimensions have: the block that shows it, the point that defines it, the middle of its text, its kind, and
// what it measures.
Pairs dimension(const std::string& picture, const Pairs& definition, const Pairs& text, int kind,
                const Pairs& measurement) {
  constexpr int middleCentre = 5;
  return {
      subclass("AcDbDimension"), {2, picture},       definition,  text,
      {70, kind + ownsItsBlock}, {71, middleCentre}, measurement, {3, "GALLERY"},
  };
}

Pairs definition(int x, int y) {
  return point(10, x, y, 0);
}
Pairs text(int x, int y) {
  return point(11, x, y, 0);
}
template <class Number>
Pairs measured(Number number) {
  return {42, number};
}

Pairs rotated(const std::string& picture, const References& to) {
  return {
      dimension(picture, definition(0, 70), text(5, 71), rotatedKind, measured(10)),
      subclass("AcDbAlignedDimension"),
      point(13, 0, 60, 0),
      point(14, 10, 65, 0),
      {50, 0},
      subclass("AcDbRotatedDimension"),
      overrides({
          overridingInteger(ownArrows, 1),
          overridingHandle(firstArrow, to.dotBlock),
          // The usual arrow.
          overridingHandle(secondArrow, 0),
          overridingReal(arrowSize, 4),
          overridingInteger(precision, 3),
      }),
  };
}

Pairs aligned(const std::string& picture) {
  return {
      dimension(picture, definition(20, 64), text(22, 66), alignedKind, measured(5)),
      subclass("AcDbAlignedDimension"),
      point(13, 20, 60, 0),
      point(14, 24, 63, 0),
  };
}

Pairs radial(const std::string& picture) {
  return {
      dimension(picture, definition(40, 60), text(43, 64), radialKind, measured(5)),
      subclass("AcDbRadialDimension"),
      point(15, 43, 64, 0),
      {40, 0},
  };
}

Pairs diametric(const std::string& picture) {
  return {
      dimension(picture, definition(50, 60), text(53, 64), diametricKind, measured(10)),
      subclass("AcDbDiametricDimension"),
      point(15, 56, 68, 0),
      {40, 0},
  };
}

// Between two lines.
Pairs angular(const std::string& picture) {
  return {
      dimension(picture, definition(75, 65), text(76, 62), angularKind, measured(0.7853981633974483)),
      subclass("AcDb2LineAngularDimension"),
      point(13, 70, 60, 0),
      point(14, 75, 60, 0),
      point(15, 70, 60, 0),
      point(16, 76, 62, 0),
  };
}

// Between two points, seen from a third.
Pairs angularOfThreePoints(const std::string& picture) {
  return {
      dimension(picture, definition(88, 62), text(89, 63), threePointKind, measured(1.570796326794897)),
      subclass("AcDb3PointAngularDimension"),
      point(13, 85, 60, 0),
      point(14, 80, 65, 0),
      point(15, 80, 60, 0),
  };
}

Pairs ordinate(const std::string& picture) {
  return {
      dimension(picture, definition(100, 60), text(107, 66), ordinateKind + measuresX, measured(4)),
      subclass("AcDbOrdinateDimension"),
      point(13, 104, 63, 0),
      point(14, 106, 66, 0),
  };
}

Pairs jogged(const std::string& picture) {
  return {
      dimension(picture, definition(110, 60), text(118, 66), joggedKind + textIsPlaced, measured(10)),
      subclass("AcDbRadialDimensionLarge"),
      // The centre that is shown, the jog, and a point of the circle.
      point(13, 113, 62, 0),
      point(14, 115, 64, 0),
      point(15, 116, 68, 0),
      {40, 0},
  };
}

Pairs ofArc(const std::string& picture) {
  return {
      dimension(picture, definition(134, 64), text(135, 65), threePointKind, measured(6.283185307179586)),
      subclass("AcDbArcDimension"),
      // Both ends of the arc, and its centre.
      point(13, 134, 60, 0),
      point(14, 130, 64, 0),
      point(15, 130, 60, 0),
      // The whole arc, and no leader to it.
      {70, 0},
      {40, 0},
      {41, 0},
      {71, 0},
      point(16, 0, 0, 0),
      point(17, 0, 0, 0),
  };
}

Pairs drawn(const References& to) {
  return {
      dimension("*D2", definition(40, 140), text(20, 144), rotatedKind, measured(40)),
      subclass("AcDbAlignedDimension"),
      point(13, 0, 130, 0),
      point(14, 40, 130, 0),
      {50, 0},
      subclass("AcDbRotatedDimension"),
      overrides({
          overridingInteger(ownArrows, 1),
          overridingHandle(firstArrow, 0),
          overridingHandle(secondArrow, to.dotBlock),
      }),
  };
}

// The arrow at the left end of the dimension line.
Pairs arrowhead() {
  return {
      subclass("AcDbTrace"), point(10, 5, 140.8, 0), point(11, 5, 139.2, 0),
      point(12, 0, 140, 0),  point(13, 0, 140, 0),
  };
}

}  // namespace

void addDimensions(Exhibition& gallery, const std::string& picture) {
  gallery.add("DIMENSION", rotated(picture, gallery.references));
  gallery.add("DIMENSION", aligned(picture));
  gallery.add("DIMENSION", radial(picture));
  gallery.add("DIMENSION", diametric(picture));
  gallery.add("DIMENSION", angular(picture));
  gallery.add("DIMENSION", angularOfThreePoints(picture));
  gallery.add("DIMENSION", ordinate(picture));
  gallery.add("LARGE_RADIAL_DIMENSION", jogged(picture));
  gallery.add("ARC_DIMENSION", ofArc(picture));
}

void addDrawnDimension(Exhibition& gallery) {
  const std::string& layer = gallery.style.layer;
  const EntityStyle line{.layer = layer, .color = 1, .lineWeight = 35};
  const EntityStyle extension{.layer = layer, .color = 2, .lineWeight = 18};
  BlockBuilder& picture = gallery.drawing.block("*D2");
  picture.line({0, 131.2}, {0, 142.5}, extension);
  picture.line({40, 131.2}, {40, 142.5}, extension);
  picture.line({5, 140}, {35, 140}, line);
  picture.raw("SOLID", arrowhead(), {.layer = layer, .color = 1});
  picture.insert("_Dot", {.at = {40, 140}, .scaleX = 5, .scaleY = 5, .scaleZ = 5}, line);
  picture.mtext({20, 144}, "40 mm", {.height = 5, .attachment = 5}, {.layer = layer, .color = 3});
  for (const Point& at : {Point{0, 130}, Point{40, 130}, Point{40, 140}})
    picture.point(at, {.layer = "Defpoints", .color = byBlock});
  gallery.add("DIMENSION", drawn(gallery.references));
}

}  // namespace velt::samples
