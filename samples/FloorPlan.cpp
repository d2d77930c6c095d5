#include "samples/FloorPlan.h"

#include <array>
#include <cmath>
#include <numbers>
#include <string_view>
#include <vector>

#include "samples/builder/DrawingBuilder.h"

namespace velt::samples {
namespace {

// Of a segment that turns by a quarter and by a half circle to the left.
const double quarterTurn = std::tan(std::numbers::pi / 8);
constexpr double halfTurn = 1.0;

Outline rectangle(double left, double bottom, double right, double top) {
  return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

Outline roundedRectangle(double left, double bottom, double right, double top, double radius) {
  return {{left + radius, bottom},  {right - radius, bottom, quarterTurn},
          {right, bottom + radius}, {right, top - radius, quarterTurn},
          {right - radius, top},    {left + radius, top, quarterTurn},
          {left, top - radius},     {left, bottom + radius, quarterTurn}};
}

void addTables(DrawingBuilder& drawing) {
  drawing.lineType("CENTER", "Center ____ _ ____", {750, -150, 150, -150});
  drawing.lineType("DASHED", "Dashed __ __ __", {250, -125});
  drawing.lineType("DOT", "Dot . . . .", {0, -120});

  // clang-format off
  //            name            style
  drawing.layer("Walls",        {.color = 7, .lineWeight = 50});
  drawing.layer("Partitions",   {.color = 7, .lineWeight = 35});
  drawing.layer("Doors",        {.color = 30, .lineWeight = 25});
  drawing.layer("Windows",      {.color = 150, .lineWeight = 25});
  drawing.layer("Furniture",    {.color = 8, .lineWeight = 18});
  drawing.layer("Sanitary",     {.color = 4, .lineWeight = 18});
  drawing.layer("Columns",      {.color = 1, .lineWeight = 50});
  drawing.layer("Hatching",     {.color = 9, .lineWeight = 9});
  drawing.layer("Garden",       {.color = 94, .trueColor = 0x4F8A3C, .lineWeight = 18});
  drawing.layer("Labels",       {.color = 7, .lineWeight = 25});
  drawing.layer("Dimensions",   {.color = 3, .lineWeight = 18});
  drawing.layer("Survey",       {.color = 6, .lineWeight = 18});
  drawing.layer("Title",        {.color = 7, .lineWeight = 35});
  drawing.layer("Axes",         {.color = 2, .lineWeight = 13, .lineType = "CENTER", .locked = true});
  drawing.layer("Electrical",   {.color = 1, .lineWeight = 18, .off = true});
  drawing.layer("Construction", {.color = 252, .lineWeight = 5, .lineType = "DOT", .frozen = true});
  // clang-format on

  drawing.textStyle("Lettering", "arial.ttf");
  drawing.textStyle("Narrow", "arial.ttf", 0.8);
  drawing.variable("$INSUNITS", {70, 4});
  drawing.variable("$LTSCALE", {40, 1.0});
  drawing.variable("$PDMODE", {70, 34});
  drawing.variable("$PDSIZE", {40, 160.0});
  drawing.extents({-3200, -5200}, {14400, 11400});
}

// --- blocks -------------------------------------------------------------------------------------------------------------

// One unit wide: hinged at the origin, opening to the left of the way from the hinge to the other jamb, or to its
// right.
void drawDoor(BlockBuilder& door, bool isMirrored) {
  const double side = isMirrored ? -1 : 1;
  door.polyline(rectangle(0, 0, 0.05, side), {.closed = true});
  door.arc({0, 0}, 1, isMirrored ? 270 : 0, isMirrored ? 360 : 90, {.lineWeight = 13});
  door.line({0, 0}, {1, 0}, {.lineType = "DASHED", .lineTypeScale = 0.5});
  door.attributeDefinition(
      {.tag = "NUMBER", .value = "0", .at = {0.5, 0.3 * side}, .height = 0.2, .align = Align::Centre},
      "Number of the door");
}

// A dynamic block, which may be mirrored: its references refer to the shape that they take.
void addDoorBlocks(DrawingBuilder& drawing) {
  BlockBuilder& door = drawing.block("DOOR");
  drawDoor(door, false);
  for (const bool isMirrored : {false, true}) {
    BlockBuilder& shape = drawing.block(isMirrored ? "*U2" : "*U1");
    drawDoor(shape, isMirrored);
    shape.isMadeOf(door);
  }
}

// One unit long and one unit thick, so that its inserts are scaled unevenly.
void addWindowBlock(DrawingBuilder& drawing) {
  BlockBuilder& window = drawing.block("WINDOW");
  window.polyline(rectangle(0, 0, 1, 1), {.closed = true});
  window.line({0, 0.4}, {1, 0.4});
  window.line({0, 0.6}, {1, 0.6});
  window.line({0.5, 0.4}, {0.5, 0.6});
}

void addFurnitureBlocks(DrawingBuilder& drawing) {
  BlockBuilder& bed = drawing.block("BED");
  bed.polyline(rectangle(0, 0, 1800, 2050), {.closed = true});
  bed.polyline(roundedRectangle(120, 1500, 840, 1950, 80), {.closed = true});
  bed.polyline(roundedRectangle(960, 1500, 1680, 1950, 80), {.closed = true});
  bed.line({0, 1350}, {1800, 1350});
  bed.line({1200, 1350}, {1800, 900});

  BlockBuilder& sofa = drawing.block("SOFA");
  sofa.polyline(roundedRectangle(0, 0, 2200, 900, 120), {.closed = true});
  sofa.polyline(roundedRectangle(200, 0, 1100, 650, 60), {.closed = true});
  sofa.polyline(roundedRectangle(1100, 0, 2000, 650, 60), {.closed = true});

  BlockBuilder& chair = drawing.block("CHAIR");
  chair.polyline(roundedRectangle(-220, -220, 220, 220, 60), {.closed = true});
  chair.arc({0, 0}, 280, 40, 140);

  BlockBuilder& wardrobe = drawing.block("WARDROBE");
  wardrobe.polyline(rectangle(0, 0, 600, 2400), {.closed = true});
  wardrobe.line({300, 0}, {300, 2400}, {.lineType = "DASHED"});
  wardrobe.line({0, 1200}, {600, 1200});

  BlockBuilder& desk = drawing.block("DESK");
  desk.polyline(rectangle(0, 0, 1600, 750), {.closed = true});
  desk.polyline(rectangle(500, 420, 1100, 470), {.closed = true});

  BlockBuilder& hob = drawing.block("HOB");
  hob.polyline(rectangle(0, 0, 600, 600), {.closed = true});
  for (const Point& ring : {Point{170, 170}, Point{430, 170}, Point{170, 430}, Point{430, 430}}) {
    hob.circle(ring, 90);
    hob.circle(ring, 40);
  }

  BlockBuilder& sink = drawing.block("SINK");
  sink.polyline(rectangle(0, 0, 900, 600), {.closed = true});
  sink.polyline(roundedRectangle(60, 80, 480, 500, 70), {.closed = true});
  sink.circle({270, 290}, 35);

  BlockBuilder& toilet = drawing.block("TOILET");
  toilet.polyline(roundedRectangle(-190, 0, 190, 180, 40), {.closed = true});
  toilet.ellipse({0, 400}, {0, 260}, 0.68);

  BlockBuilder& basin = drawing.block("BASIN");
  basin.polyline(
      {{-300, 0}, {300, 0}, {300, 250, quarterTurn}, {100, 450}, {-100, 450, quarterTurn}, {-300, 250}},
      {.closed = true});
  basin.ellipse({0, 230}, {200, 0}, 0.65);
  basin.circle({0, 80}, 25);

  BlockBuilder& bath = drawing.block("BATH");
  bath.polyline(rectangle(0, 0, 1700, 750), {.closed = true});
  bath.polyline(roundedRectangle(80, 80, 1620, 670, 280), {.closed = true});
  bath.circle({250, 375}, 30);

  BlockBuilder& tree = drawing.block("TREE");
  tree.circle({0, 0}, 700);
  tree.circle({0, 0}, 60);
  for (int degrees = 0; degrees < 360; degrees += 45) {
    const double angle = degrees * std::numbers::pi / 180;
    tree.line({120 * std::cos(angle), 120 * std::sin(angle)}, {600 * std::cos(angle), 600 * std::sin(angle)});
    tree.arc({700 * std::cos(angle), 700 * std::sin(angle)}, 270, degrees - 100.0, degrees + 100.0);
  }
}

// --- the building -------------------------------------------------------------------------------------------------------

// The outer wall between its openings, from the terrace door counterclockwise.
const std::vector<Outline>& outerWalls() {
  static const std::vector<Outline> walls{
      {{4600, 0}, {8500, 0}, {8500, 300}, {4600, 300}},
      {{10000, 0}, {12000, 0}, {12000, 1500}, {11700, 1500}, {11700, 300}, {10000, 300}},
      {{11700, 3000}, {12000, 3000}, {12000, 4900}, {11700, 4900}},
      {{12000, 6200}, {12000, 9000}, {9800, 9000}, {9800, 8700}, {11700, 8700}, {11700, 6200}},
      {{9000, 9000}, {6200, 9000}, {6200, 8700}, {9000, 8700}},
      {{5200, 9000}, {0, 9000}, {0, 7700}, {300, 7700}, {300, 8700}, {5200, 8700}},
      {{0, 6200}, {0, 3500}, {300, 3500}, {300, 6200}},
      {{0, 1500}, {0, 0}, {2600, 0}, {2600, 300}, {300, 300}, {300, 1500}},
  };
  return walls;
}

const std::vector<Outline>& partitions() {
  static const std::vector<Outline> walls{
      rectangle(300, 5000, 5500, 5120),   rectangle(6400, 5000, 7000, 5120),
      rectangle(4200, 5120, 4320, 5500),  rectangle(4200, 6400, 4320, 8700),
      rectangle(7000, 300, 7120, 1500),   rectangle(7000, 2400, 7120, 5400),
      rectangle(7000, 6300, 7120, 7200),  rectangle(7000, 8000, 7120, 8700),
      rectangle(7120, 4200, 11700, 4320), rectangle(7120, 6680, 11700, 6800),
  };
  return walls;
}

void addWalls(BlockBuilder& model) {
  const HatchPattern masonry{.name = "ANSI31", .lines = {{.angle = 45, .offset = {0, 3.175}}}, .scale = 25};
  model.patternHatch(outerWalls(), masonry, {.layer = "Hatching"});
  model.solidHatch(partitions(), {.layer = "Hatching", .color = 253});
  for (const Outline& wall : outerWalls())
    model.polyline(wall, {.closed = true}, {.layer = "Walls"});
  for (const Outline& wall : partitions())
    model.polyline(wall, {.closed = true}, {.layer = "Partitions"});
}

struct Door {
  std::string_view number;
  Point hinge;
  double width;
  double rotation;
  bool isMirrored;
  Point label;
};

void addDoors(BlockBuilder& model) {
  // clang-format off
  constexpr std::array doors{
      //   number  hinge           width  rot.  mirrored  label
      Door{"D1",   {6200, 8700},   1000,  180,  false,    {5550, 8300}},
      Door{"D2",   {5500, 5000},    900,    0,  true,     {6050, 4550}},
      Door{"D3",   {4200, 6400},    900,  270,  true,     {3850, 5900}},
      Door{"D4",   {7120, 5400},    900,   90,  true,     {7500, 5850}},
      Door{"D5",   {7120, 7200},    800,   90,  true,     {7480, 7600}},
      Door{"D6",   {7120, 2400},    900,  270,  false,    {7500, 1850}},
  };
  // clang-format on
  for (const Door& door : doors) {
    model.insert(door.isMirrored ? "*U2" : "*U1",
                 {.at = door.hinge,
                  .scaleX = door.width,
                  .scaleY = door.width,
                  .scaleZ = door.width,
                  .rotation = door.rotation,
                  .attributes = {{.tag = "NUMBER",
                                  .value = std::string(door.number),
                                  .at = door.label,
                                  .height = 150,
                                  .align = Align::Centre}}},
                 {.layer = "Doors",
                  .hyperlink = door.number == "D1" ? std::optional(
                                   Hyperlink{"https://example.org/doors/d1", "Front door, data sheet"})
                                                   : std::nullopt});
  }
}

struct Window {
  Point at;
  double length;
  double rotation;
};

void addWindows(BlockBuilder& model) {
  constexpr double wall = 300;
  constexpr std::array windows{
      Window{{2600, 0}, 2000, 0},      Window{{8500, 0}, 1500, 0},   Window{{12000, 1500}, 1500, 90},
      Window{{12000, 4900}, 1300, 90}, Window{{9000, 8700}, 800, 0}, Window{{300, 6200}, 1500, 90},
      Window{{300, 1500}, 2000, 90},
  };
  for (const Window& window : windows) {
    model.insert("WINDOW",
                 {.at = window.at, .scaleX = window.length, .scaleY = wall, .rotation = window.rotation},
                 {.layer = "Windows"});
  }
}

void addFurniture(BlockBuilder& model) {
  const EntityStyle furniture{.layer = "Furniture"};
  const EntityStyle sanitary{.layer = "Sanitary"};

  model.insert("SOFA", {.at = {400, 3450}, .rotation = 270}, furniture);
  model.insert("SOFA", {.at = {3900, 4900}, .rotation = 180}, {.layer = "Furniture", .trueColor = 0x9C4A2F});
  model.polyline(roundedRectangle(1700, 2000, 2900, 2700, 100), {.closed = true}, furniture);
  model.ellipse({5200, 2400}, {0, 900}, 0.6, {.layer = "Furniture", .lineWeight = 30});
  const std::array chairs{Placement{.at = {4480, 2050}, .rotation = 90},
                          Placement{.at = {4480, 2750}, .rotation = 90},
                          Placement{.at = {5920, 2050}, .rotation = 270},
                          Placement{.at = {5920, 2750}, .rotation = 270},
                          Placement{.at = {5200, 3520}},
                          Placement{.at = {5200, 1280}, .rotation = 180}};
  for (const Placement& chair : chairs)
    model.insert("CHAIR", chair, furniture);

  model.insert("BED", {.at = {1000, 6600}}, furniture);
  model.insert("WARDROBE", {.at = {3500, 5730}, .scaleY = -1, .rotation = 270}, furniture);
  model.insert("WARDROBE", {.at = {4380, 6500}, .scaleY = 0.8}, furniture);

  model.polyline({{8400, 900}, {11100, 900}, {11100, 4180}, {11680, 4180}, {11680, 320}, {8400, 320}},
                 {.closed = true}, furniture);
  model.insert("HOB", {.at = {11680, 1750}, .rotation = 90}, furniture);
  model.insert("SINK", {.at = {8800, 310}},
               {.layer = "Furniture", .hyperlink = Hyperlink{"https://example.org/kitchen", "Kitchen unit"}});
  model.solidHatch({{rectangle(11100, 3500, 11680, 4180)}}, {.layer = "Hatching", .color = 254});
  model.polyline(rectangle(11100, 3500, 11680, 4180), {.closed = true}, furniture);

  model.insert("DESK", {.at = {11680, 4750}, .rotation = 90},
               {.layer = "Furniture",
                .extendedData = {{"VELT_INVENTORY", {{1000, "Desk, oak"}, {1071, 4711}, {1040, 349.0}}}}});
  model.insert("CHAIR", {.at = {10600, 5550}, .rotation = 90}, furniture);
  model.insert("WARDROBE", {.at = {8200, 6660}, .scaleY = 1.1, .rotation = 270}, furniture);

  model.insert("BATH", {.at = {11680, 6950}, .rotation = 90}, sanitary);
  model.insert("TOILET", {.at = {8500, 6800}}, sanitary);
  model.insert("BASIN", {.at = {9600, 6800}}, sanitary);
}

// --- what is written on it ----------------------------------------------------------------------------------------------

struct Room {
  std::string_view name;
  std::string_view area;
  Point at;
};

void addLabels(BlockBuilder& model) {
  // clang-format off
  constexpr std::array rooms{
      Room{"LIVING ROOM", "31.5 m²", {3450, 1500}},
      Room{"KITCHEN",     "17.9 m²", {9300, 2500}},
      Room{"STUDY",       "10.8 m²", {9100, 5350}},
      Room{"BATHROOM",    "8.7 m²",  {9300, 8000}},
      Room{"BEDROOM",     "14.0 m²", {2300, 6340}},
      Room{"HALL",        "9.6 m²",  {5750, 7050}},
  };
  // clang-format on
  const EntityStyle labels{.layer = "Labels"};
  for (const Room& room : rooms) {
    model.text(room.at, room.name, {.height = 200, .style = "Lettering", .align = Align::Centre}, labels);
    model.mtext({room.at.x, room.at.y - 120}, "{\\H0.9x;" + std::string(room.area) + "}\\Pceiling 2.60 m",
                {.height = 140, .width = 2000, .style = "Narrow", .attachment = 2}, labels);
  }
  model.text({3600, -1500}, "Terrace, slope 1°",
             {.height = 180, .style = "Lettering", .align = Align::Centre}, labels);
  model.text({9600, -2250}, "Pond, depth 800 %%p50",
             {.height = 140, .style = "Narrow", .align = Align::Centre},
             {.layer = "Labels", .trueColor = 0x1F3F66});
  model.text({1620, -480}, "%%c260", {.height = 110, .style = "Narrow"}, {.layer = "Labels"});
  model.text({-1150, 4500}, "Hedge", {.height = 160, .rotation = 90, .style = "Narrow"},
             {.layer = "Labels", .color = 94});

  model.mtext({-2900, -3450},
              "{\\LNotes}\\P1. All dimensions in millimetres, to be checked on site before any work is "
              "begun.\\P2. Outer "
              "walls: masonry 300 mm, rendered outside, plastered inside; partitions: masonry 120 mm, "
              "plastered on both "
              "sides.\\P3. Window sills 0.90 m above floor level, in the bathroom 1.30 m; terrace door "
              "without a step.\\P"
              "4. Levels refer to the finished floor of the ground floor, \\U+00B10.00.",
              {.height = 120, .width = 5200, .style = "Narrow"}, labels);
}

void addTitle(BlockBuilder& model) {
  const EntityStyle title{.layer = "Title"};
  const TextStyle small{.height = 120, .style = "Narrow"};
  model.polyline({{-3200, -5200, 0, 30, 30},
                  {14400, -5200, 0, 30, 30},
                  {14400, 11400, 0, 30, 30},
                  {-3200, 11400, 0, 30, 30}},
                 {.closed = true}, title);
  model.polyline(rectangle(9600, -5050, 14250, -3750), {.closed = true}, title);
  model.line({9600, -4300}, {14250, -4300}, title);
  model.line({12300, -5050}, {12300, -4300}, title);
  model.text({9800, -4150}, "Ground floor", {.height = 280, .style = "Lettering"}, title);
  model.text({9800, -4560}, "Small house with terrace", small, title);
  model.text({9800, -4860}, "Sheet A-101", small, title);
  model.text({12500, -4560}, "Scale 1:100", small, title);
  model.text({12500, -4860}, "Units: mm", small, title);

  // North arrow.
  model.circle({13500, 10500}, 450, title);
  model.raw("SOLID",
            {subclass("AcDbTrace"), point(10, 13500, 11150, 0), point(11, 13350, 10200, 0),
             point(12, 13500, 10350, 0), point(13, 13500, 10350, 0)},
            title);
  model.text({13850, 10950}, "N", {.height = 250, .style = "Lettering"}, title);
}

// A dimension and the block that shows it, for horizontal and vertical distances.
void addDimension(DrawingBuilder& drawing, std::string_view block, const Point& from, const Point& to,
                  double distance) {
  const bool isVertical = from.x == to.x;
  const double length = isVertical ? to.y - from.y : to.x - from.x;
  const auto shifted = [&](const Point& at, double by) {
    return isVertical ? Point{at.x - by, at.y} : Point{at.x, at.y + by};
  };
  const Point first = shifted(from, distance);
  const Point second = shifted(to, distance);
  const Point middle = shifted({(from.x + to.x) / 2, (from.y + to.y) / 2}, distance + 60);
  const double overshoot = distance > 0 ? 100 : -100;
  const EntityStyle style{.layer = "Dimensions", .color = byBlock};
  const std::string wording = std::to_string(std::lround(length));

  BlockBuilder& shown = drawing.block(block);
  shown.line(shifted(from, overshoot), shifted(from, distance + overshoot), style);
  shown.line(shifted(to, overshoot), shifted(to, distance + overshoot), style);
  shown.line(first, second, style);
  for (const Point& tick : {first, second})
    shown.line({tick.x - 80, tick.y - 80}, {tick.x + 80, tick.y + 80}, style);
  shown.mtext(middle, wording,
              {.height = 150, .rotation = isVertical ? 90.0 : 0.0, .style = "Narrow", .attachment = 8},
              style);

  drawing.model().raw("DIMENSION",
                      {
                          subclass("AcDbDimension"),
                          {2, block},
                          // The dimension line, and the middle of the text.
                          point(10, second.x, second.y, 0.0),
                          point(11, middle.x, middle.y, 0.0),
                          {70, 32},
                          {71, 5},
                          {42, length},
                          {3, "Standard"},
                          subclass("AcDbAlignedDimension"),
                          point(13, from.x, from.y, 0.0),
                          point(14, to.x, to.y, 0.0),
                          {50, isVertical ? 90.0 : 0.0},
                          subclass("AcDbRotatedDimension"),
                      },
                      {.layer = "Dimensions"});
}

void addDimensions(DrawingBuilder& drawing) {
  addDimension(drawing, "*D1", {0, 9000}, {12000, 9000}, 1300);
  addDimension(drawing, "*D2", {0, 9000}, {5200, 9000}, 700);
  addDimension(drawing, "*D3", {5200, 9000}, {6200, 9000}, 700);
  addDimension(drawing, "*D4", {6200, 9000}, {12000, 9000}, 700);
  addDimension(drawing, "*D5", {0, 0}, {0, 4260}, 1900);
  addDimension(drawing, "*D7", {0, 4260}, {0, 9000}, 1900);
  addDimension(drawing, "*D6", {12000, 0}, {12000, 9000}, -1300);
}

// --- around it ------------------------------------------------------------------------------------------------------------

// From the first of four points to the last, drawn by the two between.
Pairs splineBeside(const Pairs& points) {
  return {
      subclass("AcDbSpline"),
      // In a plane, cubic.
      {70, 8},
      {71, 3},
      // So many knots, control points and points that it goes through.
      {72, 8},
      {73, 4},
      {74, 0},
      each(40, {0, 0, 0, 0, 1, 1, 1, 1}),
      points,
  };
}

void addGarden(BlockBuilder& model) {
  const Outline terrace{{1200, 0},     {1200, -1400, quarterTurn},
                        {2400, -2600}, {4800, -2600, quarterTurn},
                        {6000, -1400}, {6000, 0}};
  const HatchPattern tiles{.name = "NET",
                           .lines = {{.angle = 0, .offset = {0, 3.175}}, {.angle = 90, .offset = {0, 3.175}}},
                           .angle = 45,
                           .scale = 126};
  // The pattern leaves the lettering free.
  const Outline lettering = rectangle(2350, -1600, 4850, -1220);
  model.patternHatch({{terrace, lettering}}, tiles, {.layer = "Hatching", .trueColor = 0xD8C3A5});
  model.polyline(terrace, {.elevation = -20}, {.layer = "Garden", .trueColor = 0x8A6D3B, .lineWeight = 35});

  const Outline pond{{8600, -3000}, {10600, -3000, halfTurn}, {10600, -1400}, {8600, -1400, halfTurn}};
  model.gradientHatch({{pond}}, {.firstColor = 0x2F7FBF, .secondColor = 0xD6ECFA, .angle = 30},
                      {.layer = "Garden"});
  model.polyline(pond, {.closed = true}, {.layer = "Garden", .color = 5});
  model.ellipse({9600, -2200}, {1900, 0}, 0.55, {.layer = "Garden", .lineType = "DASHED"});

  model.insert("TREE", {.at = {13300, -1800}}, {.layer = "Garden"});
  model.insert("TREE", {.at = {7300, -1500}, .scaleX = 0.7, .scaleY = 0.7, .scaleZ = 0.7, .rotation = 20},
               {.layer = "Garden"});
  model.insert("TREE", {.at = {-2100, -1900}, .scaleX = 0.8, .scaleY = 0.8, .scaleZ = 0.8},
               {.layer = "Garden", .trueColor = 0x2E6B2A});
  model.ellipse({13800, 4000}, {0, 1500}, 0.2, {.layer = "Garden", .trueColor = 0x2E6B2A}, -120, 120);
  model.polyline({{-900, 2600, 0, 260, 260}, {-900, 6400, 0, 260, 260}}, {}, {.layer = "Garden"});

  // The step in front of the door.
  model.arc({5700, 9000}, 700, 0, 180, {.layer = "Garden", .color = 8});

  // The path from the street.
  const EntityStyle path{.layer = "Garden", .color = 8};
  model.raw("SPLINE",
            splineBeside({point(10, 5350, 9050, 0), point(10, 5200, 9900, 0), point(10, 4300, 10500, 0),
                          point(10, 4200, 11350, 0)}),
            path);
  model.raw("SPLINE",
            splineBeside({point(10, 6050, 9050, 0), point(10, 6050, 9900, 0), point(10, 5300, 10500, 0),
                          point(10, 5200, 11350, 0)}),
            path);
}

void addColumns(BlockBuilder& model) {
  for (const Point& at : {Point{1450, -250}, Point{5750, -250}, Point{2300, -2200}, Point{4900, -2200}}) {
    model.circle(at, 130, {.layer = "Columns"});
    model.circle(at, 60, {.layer = "Columns", .color = 8, .lineWeight = 13});
  }
}

void addSurvey(BlockBuilder& model) {
  const std::array points{Point{-3000, -3300, 0.12}, Point{13950, -3300, 0.05}, Point{13950, 11150, 0.31},
                          Point{-3000, 11150, 0.28}};
  int number = 1;
  for (const Point& at : points) {
    model.point(at, {.layer = "Survey", .color = number == 4 ? 1 : byLayer});
    model.text({at.x + 130, at.y + 90, at.z}, "P" + std::to_string(number++),
               {.height = 130, .style = "Narrow"}, {.layer = "Survey"});
  }
  // The boundary of the plot, in the old form of a polyline.
  const EntityStyle boundary{.layer = "Survey", .lineType = "CENTER"};
  constexpr int closedInSpace = 9;
  constexpr int vertexInSpace = 32;
  const Handle polyline = model.raw(
      "POLYLINE", {subclass("AcDb3dPolyline"), {66, 1}, point(10, 0.0, 0.0, 0.0), {70, closedInSpace}},
      boundary);
  for (const Point& at : points) {
    model.raw("VERTEX",
              {subclass("AcDbVertex"),
               subclass("AcDb3dPolylineVertex"),
               point(10, at.x, at.y, at.z),
               {70, vertexInSpace}},
              boundary, polyline);
  }
  model.raw("SEQEND", {}, boundary, polyline);
}

void addAxes(BlockBuilder& model) {
  const EntityStyle axes{.layer = "Axes"};
  const TextStyle letters{
      .height = 180, .style = "Lettering", .align = Align::Centre, .alignVertical = AlignVertical::Middle};
  const std::array columns{150.0, 7060.0, 11850.0};
  const std::array rows{150.0, 4260.0, 8850.0};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    model.line({columns[i], -700}, {columns[i], 10650}, axes);
    model.circle({columns[i], 10850}, 200, {.layer = "Axes", .lineType = "Continuous"});
    model.text({columns[i], 10850}, std::string(1, static_cast<char>('A' + i)), letters, axes);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    model.line({-2500, rows[i]}, {12700, rows[i]}, axes);
    model.circle({-2700, rows[i]}, 200, {.layer = "Axes", .lineType = "Continuous"});
    model.text({-2700, rows[i]}, std::to_string(i + 1), letters, axes);
  }
}

// What is there and not seen: one layer is off, one is frozen, one entity is invisible.
void addHidden(BlockBuilder& model) {
  for (const Point& lamp :
       {Point{3650, 2650}, Point{9400, 2250}, Point{9400, 5500}, Point{9400, 7750}, Point{2250, 6900}}) {
    model.circle(lamp, 150, {.layer = "Electrical"});
    model.line(
        {lamp.x - 106, lamp.y - 106}, {lamp.x + 106, lamp.y + 106},
        {.layer = "Electrical", .extendedData = {{"VELT_INVENTORY", {{1000, "Lamp, 12 W"}, {1071, 4720}}}}});
    model.line({lamp.x - 106, lamp.y + 106}, {lamp.x + 106, lamp.y - 106}, {.layer = "Electrical"});
  }
  model.raw("XLINE", {subclass("AcDbXline"), point(10, 0.0, 0.0, 0.0), point(11, 0.8, 0.6, 0.0)},
            {.layer = "Construction"});
  model.line({0, 0}, {12000, 9000}, {.layer = "Construction"});
  model.line({0, 9000}, {12000, 0}, {.layer = "Construction", .visible = false});
}

// A note with its arrow, and the porch roof above the front door.
void addOtherTypes(BlockBuilder& model) {
  model.raw("LEADER",
            {
                subclass("AcDbLeader"),
                {3, "Standard"},
                // An arrow, straight lines, no annotation.
                {71, 1},
                {72, 0},
                {73, 3},
                {74, 0},
                {75, 0},
                {40, 0.0},
                {41, 0.0},
                // Corners.
                {76, 3},
                point(10, 6900.0, 9600.0, 0.0),
                point(10, 7500.0, 10750.0, 0.0),
                point(10, 7900.0, 10750.0, 0.0),
            },
            {.layer = "Labels"});
  model.mtext({8000, 10830}, "Porch roof, glass\\Pon steel brackets",
              {.height = 130, .width = 2500, .style = "Narrow"}, {.layer = "Labels"});
  model.raw("3DFACE",
            {subclass("AcDbFace"), point(10, 4700.0, 9000.0, 2600.0), point(11, 6900.0, 9000.0, 2600.0),
             point(12, 6900.0, 9600.0, 2400.0), point(13, 4700.0, 9600.0, 2400.0)},
            {.layer = "Walls", .color = 8, .lineWeight = 18, .lineType = "DASHED"});
}

}  // namespace

std::string sampleFloorPlan() {
  DrawingBuilder drawing(DrawingVersion::AC1027);
  addTables(drawing);
  addDoorBlocks(drawing);
  addWindowBlock(drawing);
  addFurnitureBlocks(drawing);

  BlockBuilder& model = drawing.model();
  addGarden(model);
  addWalls(model);
  addColumns(model);
  addDoors(model);
  addWindows(model);
  addFurniture(model);
  addLabels(model);
  addDimensions(drawing);
  addAxes(model);
  addSurvey(model);
  addHidden(model);
  addOtherTypes(model);
  addTitle(model);
  return drawing.bytes();
}

}  // namespace velt::samples
