#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

// A text whose two points differ, as only other writers draw it.
Pairs textOfTwoPoints() {
  return {
      subclass("AcDbText"),
      point(10, 100, 5, 0),
      {40, 2.5},
      {1, "Centred"},
      {50, 10},
      {7, "Standard"},
      {72, 1},
      point(11, 110, 6, 0),
      subclass("AcDbText"),
      {73, 2},
  };
}

}  // namespace

void addPlainEntities(Exhibition& gallery) {
  BlockBuilder& model = gallery.model;
  const EntityStyle& style = gallery.style;
  model.line({0, 0}, {10, 5}, style);
  model.point({15, 0}, style);
  model.circle({25, 5}, 5, style);
  model.arc({40, 5}, 5, 30, 120, style);
  model.ellipse({55, 5}, {8, 0}, 0.5, style, 0, 200);
  model.polyline({{70, 0, 0.5, 1, 2}, {80, 0, 0, 2, 1}, {80, 10}}, {.closed = true, .elevation = 2}, style);
  model.text({90, 0}, "Plain", {.height = 3, .rotation = 15, .style = "Lettering"}, style);
  model.mtext({120, 10}, "Two\\Plines", {.height = 2, .width = 30, .rotation = 20}, style);
  model.insert("PART",
               {.at = {150, 5},
                .scaleX = 2,
                .rotation = 30,
                .attributes = {{.tag = "NUMBER", .value = "7", .at = {150, 11}}}},
               style);
  gallery.add("TEXT", textOfTwoPoints());
}

}  // namespace velt::samples
