#include <span>
#include <string_view>

#include "dxf/ModelLine.h"
#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

// A square with a round hole, as a modeller tells it.
constexpr std::string_view region[] = {
    "400 32 1 0",
    "7 Gallery 5 1.0.0 1 0",
    "1 1e-06 1e-10",
    "body $-1 $1 $-1 $-1 #",
    "lump $-1 $-1 $2 $0 #",
    "shell $-1 $-1 $-1 $3 $-1 $1 #",
    "face $-1 $-1 $4 $2 $-1 $5 forward double out #",
    "loop $-1 $6 $7 $3 #",
    "plane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #",
    "loop $-1 $-1 $27 $3 #",
    "coedge $-1 $8 $10 $-1 $11 forward $4 $-1 #",
    "coedge $-1 $9 $7 $-1 $12 forward $4 $-1 #",
    "coedge $-1 $10 $8 $-1 $13 forward $4 $-1 #",
    "coedge $-1 $7 $9 $-1 $14 forward $4 $-1 #",
    "edge $-1 $15 $16 $7 $23 forward #",
    "edge $-1 $16 $17 $8 $24 forward #",
    "edge $-1 $17 $18 $9 $25 forward #",
    "edge $-1 $18 $15 $10 $26 forward #",
    "vertex $-1 $11 $19 #",
    "vertex $-1 $12 $20 #",
    "vertex $-1 $13 $21 #",
    "vertex $-1 $14 $22 #",
    "point $-1 140 15 0 #",
    "point $-1 150 15 0 #",
    "point $-1 150 25 0 #",
    "point $-1 140 25 0 #",
    "straight-curve $-1 140 15 0 1 0 0 I I #",
    "straight-curve $-1 150 15 0 0 1 0 I I #",
    "straight-curve $-1 150 25 0 -1 0 0 I I #",
    "straight-curve $-1 140 25 0 0 -1 0 I I #",
    "coedge $-1 $27 $27 $-1 $28 reversed $6 $-1 #",
    "edge $-1 $29 $29 $27 $31 forward #",
    "vertex $-1 $28 $30 #",
    "point $-1 148 20 0 #",
    "ellipse-curve $-1 145 20 0 0 0 1 3 0 0 1 I I #",
};

constexpr std::string_view ball[] = {
    "400 5 1 0",
    "7 Gallery 5 1.0.0 1 0",
    "1 1e-06 1e-10",
    "body $-1 $1 $-1 $-1 #",
    "lump $-1 $-1 $2 $0 #",
    "shell $-1 $-1 $-1 $3 $-1 $1 #",
    "face $-1 $-1 $-1 $2 $-1 $4 forward single #",
    "sphere-surface $-1 210 20 0 5 1 0 0 0 0 1 forward_v I I I I #",
};

// An entity with the modeller's text, which drawings keep in other letters.
void addModel(Exhibition& gallery, std::string_view type, std::span<const std::string_view> lines) {
  Pairs pairs{subclass("AcDbModelerGeometry"), {70, 1}};
  for (const std::string_view line : lines)
    pairs.append({1, dxf::encodeModelLine(line)});
  gallery.add(type, pairs);
}

// A mesh: a pyramid over a triangle.
Pairs pyramid() {
  // Numbers of corners.
  const auto face = [](int a, int b, int c) -> Pairs { return {{90, 3}, each(90, {a, b, c})}; };
  const auto edge = [](int a, int b) { return each(90, {a, b}); };
  return {
      subclass("AcDbSubDMesh"),
      // Version, no smoothing of creases, level of smoothing.
      {71, 2},
      {72, 1},
      {91, 1},
      // Corners.
      {92, 4},
      point(10, 180, 40, 0),
      point(10, 190, 40, 0),
      point(10, 180, 50, 0),
      point(10, 180, 40, 10),
      // Faces: how many numbers they take, and for each how many corners it has and which.
      {93, 16},
      face(0, 2, 1),
      face(0, 1, 3),
      face(1, 2, 3),
      face(0, 3, 2),
      // Edges.
      {94, 6},
      edge(0, 1),
      edge(1, 2),
      edge(2, 0),
      edge(0, 3),
      edge(1, 3),
      edge(2, 3),
      // How sharp each of them is.
      {95, 6},
      each(140, {0, 0, 0, 0, 0, 0}),
      // Parts that look otherwise: none.
      {90, 0},
  };
}

}  // namespace

void addMesh(Exhibition& gallery) {
  gallery.add("MESH", pyramid());
}

void addBody(Exhibition& gallery) {
  addModel(gallery, "BODY", {});
}

void addModels(Exhibition& gallery) {
  addModel(gallery, "REGION", region);
  addModel(gallery, "3DSOLID", ball);
}

}  // namespace velt::samples
