// Drawings that are large in other ways than by many lines: each is read, queried as a whole and written to. What grows
// faster than the drawing shows in the exponents.

#include <cstdint>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Groups.h"
#include "bench/Selection.h"

namespace velt::bench {

namespace {

struct NamedShape {
  const char* name;
  Shape shape;
};

constexpr NamedShape shapes[] = {
    {"without-header", Shape::WithoutHeader}, {"every-class", Shape::EveryClass},
    {"long-texts", Shape::LongTexts},         {"many-layers", Shape::ManyLayers},
    {"many-blocks", Shape::ManyBlocks},       {"extended-data", Shape::ExtendedData},
    {"one-polyline", Shape::OnePolyline},
};

constexpr std::string_view writtenRow = "Linetype scale";

struct Times {
  Spread read, query, write;
  // Entities, or vertices of the one polyline.
  double parts = 0;
};

Times measureTimes(Shape shape, std::uint32_t size, const Repetitions& repetitions) {
  const std::string bytes = drawingOf(shape, size);
  Times times;
  times.read =
      spreadOf(sample(repetitions, [&] { static_cast<void>(database::Drawing::parse(bytes, "benchmark")); }));
  Selection selection(bytes);
  selection.setUp();
  palette::Selection& palette = selection.palette();
  palette.query();
  times.parts = shape == Shape::OnePolyline ? size : static_cast<double>(palette.size());
  times.query = spreadOf(sample(
      repetitions, [&] { palette.query(); }, [&] { selection.forget(); }));
  // Another value each time, because the host does not write a value that is there already.
  double next = 1.0;
  times.write = spreadOf(sample(repetitions, [&] {
    palette.write(palette.row(writtenRow), palette::Value::ofReal(next += 0.25), {.keepGoing = true});
  }));
  return times;
}

struct ShapeGrowth {
  std::vector<Point> read, query, write;

  void add(const Times& times) {
    read.push_back({times.parts, times.read.median});
    query.push_back({times.parts, times.query.median});
    write.push_back({times.parts, times.write.median});
  }
};

Quantity exponent(const char* name, const std::vector<Point>& points) {
  const double slope = growthExponent(points);
  return {name, "", {slope, slope, slope}};
}

void measureShape(const NamedShape& named, const Settings& settings, Report& report) {
  const std::vector<std::uint32_t> sizes =
      settings.quick ? std::vector<std::uint32_t>{100, 300} : std::vector<std::uint32_t>{1'000, 10'000};
  const Repetitions repetitions = settings.quick
                                      ? Repetitions{.atLeast = 2, .atMost = 2}
                                      : Repetitions{.atLeast = 5, .atMost = 51, .nanoseconds = 0.3e9};
  const std::string nameOfGrowth = fmt::format("growth/shapes/{}", named.name);
  ShapeGrowth growth;
  for (const std::uint32_t size : sizes) {
    const std::string name = fmt::format("shapes/{}/{}", named.name, size);
    if (!settings.wantsOneOf({nameOfGrowth, name})) continue;
    const Times times = measureTimes(named.shape, size, repetitions);
    growth.add(times);
    const std::string unit =
        fmt::format("ns per {}", named.shape == Shape::OnePolyline ? "vertex" : "entity");
    report.add({name,
                {{"parts", times.parts}},
                {{"read", unit, times.read.over(times.parts)},
                 {"query", unit, times.query.over(times.parts)},
                 {"write", unit, times.write.over(times.parts)}}});
  }
  if (!settings.wants(nameOfGrowth)) return;
  report.add({nameOfGrowth,
              {{"from", static_cast<double>(sizes.front())}, {"to", static_cast<double>(sizes.back())}},
              {exponent("readExponent", growth.read), exponent("queryExponent", growth.query),
               exponent("writeExponent", growth.write)}});
}

}  // namespace

void measureShapes(const Settings& settings, Report& report) {
  for (const NamedShape& named : shapes)
    measureShape(named, settings, report);
}

}  // namespace velt::bench
