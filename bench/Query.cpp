// A query beside its floor, for growing selections.

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Floor.h"
#include "bench/Groups.h"
#include "bench/HostTraffic.h"
#include "bench/Memory.h"
#include "bench/Selection.h"
#include "embedded/platform/GeneralHeap.h"
#include "propdata/merge/QueryMemory.h"

namespace velt::bench {

namespace {

using platform::Ledger;

struct NamedContent {
  const char* name;
  Content content;
};

constexpr NamedContent contents[] = {
    {"equal-lines", Content::EqualLines},
    {"lines", Content::Lines},
    {"mixed", Content::Mixed},
};

constexpr std::size_t setUps = 3;

struct QueryScale {
  std::vector<std::uint32_t> sizes;
  std::uint32_t smallestForGrowth;
  // With fewer entities, whole pages, the heap's own blocks and what the layer keeps blur the figure.
  std::uint32_t smallestForMemory;
  Repetitions pairs;
};

QueryScale queryScaleFor(const Settings& settings) {
  if (settings.quick) return {{10, 100, 200}, 100, 200, {.atLeast = 2, .atMost = 2}};
  return {{100, 1'000, 10'000, 100'000}, 1'000, 100'000, {.atLeast = 5, .atMost = 101, .nanoseconds = 4e9}};
}

void queryAndClear(Selection& selection) {
  TqVector<PROPINFO> rows;
  selection.query(rows);
  clearValues(rows);
}

Samples sampleSetUp(Selection& selection) {
  Samples samples;
  while (samples.size() < setUps) {
    selection.tearDown();
    samples.push_back(timeOf([&] { selection.setUp(); }));
  }
  return samples;
}

// Throws when the floor does not ask as much of the host as the query. bench/counting compares every call, but only for
// small selections; this comparison is made on the very selections that are timed.
void checkTraffic(Selection& selection, Floor& floor) {
  const Ledger::Snapshot ofQuery = hostTrafficOf([&] { queryAndClear(selection); });
  const Ledger::Snapshot ofFloor = hostTrafficOf([&] { floor.run(); });
  floor.clearLeftovers();
  for (const auto& [name, count] : ofQuery) {
    const Ledger::Count other = ofFloor.at(name);
    if (count == other) continue;
    throw std::logic_error(fmt::format("{}: a query gets {} and gives back {}, its floor {} and {}", name,
                                       count.handedOut, count.givenBack, other.handedOut, other.givenBack));
  }
}

struct Growth {
  std::vector<Point> query;
  std::vector<Point> floor;
};

std::vector<Fact> factsOf(const FloorPlan& plan) {
  const auto entities = static_cast<double>(plan.kindOf.size());
  return {{"entities", entities},
          {"propertiesPerEntity", static_cast<double>(plan.properties) / entities},
          {"recordsPerEntity", static_cast<double>(plan.records) / entities}};
}

Quantity exactly(std::string name, std::string unit, double value) {
  return {std::move(name), std::move(unit), {value, value, value}};
}

// `values` is the memory that the values of the entities take in the host.
void addMemory(const std::string& name, std::size_t peak, std::size_t values, const FloorPlan& plan,
               Report& report) {
  const auto properties = static_cast<double>(plan.properties);
  const auto records = static_cast<double>(plan.records);
  std::vector<Fact> facts = factsOf(plan);
  facts.push_back({"sizeOfRecord", sizeof(PROPINFO)});
  report.add({name,
              std::move(facts),
              {exactly("peak", "bytes per entity and property", static_cast<double>(peak) / properties),
               exactly("peakPerRecord", "bytes per entity and record", static_cast<double>(peak) / records),
               exactly("values", "bytes per entity and record", static_cast<double>(values) / records)}});
}

void measureSize(const NamedContent& named, std::uint32_t entities, const QueryScale& scale, Growth& growth,
                 Report& report) {
  Selection selection(drawingOf(named.content, entities));
  const Spread setUp = spreadOf(sampleSetUp(selection));
  std::optional<platform::generalHeap::NothingSpared> measuring(std::in_place);
  // Of the first one, which fills the cache of property lists: from the second on the memory is kept. What the layer keeps of
  // smaller queries may have been there before.
  std::optional<std::size_t> peak = peakMemoryOf([&] { queryAndClear(selection); });
  if (peak) *peak += propdata::QueryMemory::keptAtLeast;

  Floor floor(selection);
  checkTraffic(selection, floor);
  const std::optional<std::size_t> values = peakMemoryOf([&] { floor.run(); });
  measuring.reset();
  const Pairs times = samplePairs(
      scale.pairs, [&] { queryAndClear(selection); }, [&] { floor.run(); }, [&] { selection.forget(); });
  floor.clearLeftovers();

  const auto properties = static_cast<double>(floor.plan().properties);
  const Spread ofQuery = spreadOf(times.first);
  const Spread ofFloor = spreadOf(times.second);
  if (entities >= scale.smallestForGrowth) {
    growth.query.push_back({static_cast<double>(entities), ofQuery.median});
    growth.floor.push_back({static_cast<double>(entities), ofFloor.median});
  }

  std::vector<Fact> facts = factsOf(floor.plan());
  report.add({fmt::format("setup/{}/{}", named.name, entities),
              facts,
              {{"time", "ns per entity", setUp.over(static_cast<double>(entities))}}});
  facts.push_back({"repetitions", static_cast<double>(times.first.size())});
  report.add({fmt::format("query/{}/{}", named.name, entities),
              std::move(facts),
              {{"ratio", "", spreadOf(times.ratio)},
               {"query", "ns per entity and property", ofQuery.over(properties)},
               {"floor", "ns per entity and property", ofFloor.over(properties)}}});
  if (peak && values && entities >= scale.smallestForMemory) {
    addMemory(fmt::format("memory/{}/{}", named.name, entities), *peak, *values, floor.plan(), report);
  }
}

void measureContent(const NamedContent& named, const Settings& settings, Report& report) {
  const QueryScale scale = queryScaleFor(settings);
  const std::string nameOfGrowth = fmt::format("growth/query/{}", named.name);
  Growth growth;
  for (const std::uint32_t entities : scale.sizes) {
    const std::string size = fmt::format("{}/{}", named.name, entities);
    if (settings.wantsOneOf({nameOfGrowth, "setup/" + size, "query/" + size, "memory/" + size}))
      measureSize(named, entities, scale, growth, report);
  }
  if (!settings.wants(nameOfGrowth)) return;
  const double ofQuery = growthExponent(growth.query);
  const double ofFloor = growthExponent(growth.floor);
  report.add({nameOfGrowth,
              {{"from", growth.query.front().size}, {"to", growth.query.back().size}},
              {exactly("exponent", "", ofQuery), exactly("floorExponent", "", ofFloor)}});
}

// Two polylines: every vertex is an element of its own, thousands of them under one name.
void measurePolylines(const Settings& settings, Report& report) {
  const QueryScale scale = queryScaleFor(settings);
  const std::vector<std::uint32_t> sizes =
      settings.quick ? std::vector<std::uint32_t>{10, 100} : std::vector<std::uint32_t>{100, 1'000, 10'000};
  constexpr std::string_view nameOfGrowth = "growth/query/polylines";
  std::vector<Point> growth;
  for (const std::uint32_t vertices : sizes) {
    const std::string name = fmt::format("query/polylines/{}", vertices);
    if (!settings.wantsOneOf({nameOfGrowth, name})) continue;
    Selection selection(drawingOfPolylines(vertices));
    selection.setUp();
    queryAndClear(selection);
    const Spread time = spreadOf(sample(
        scale.pairs, [&] { queryAndClear(selection); }, [&] { selection.forget(); }));
    growth.push_back({static_cast<double>(vertices), time.median});
    report.add({name,
                {{"vertices", static_cast<double>(vertices)}},
                {{"query", "ns per vertex", time.over(static_cast<double>(vertices))}}});
  }
  if (!settings.wants(nameOfGrowth)) return;
  report.add({std::string(nameOfGrowth),
              {{"from", growth.front().size}, {"to", growth.back().size}},
              {exactly("exponent", "", growthExponent(growth))}});
}

}  // namespace

void measureQueries(const Settings& settings, Report& report) {
  for (const NamedContent& named : contents)
    measureContent(named, settings, report);
  measurePolylines(settings, report);
}

}  // namespace velt::bench
