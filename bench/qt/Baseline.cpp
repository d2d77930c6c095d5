// What a merge costs that does nothing else, over objects of Qt, beside a query of the layer over as many equal lines.

#include <stdexcept>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Floor.h"
#include "bench/Groups.h"
#include "bench/Selection.h"
#include "bench/qt/Merges.h"

namespace velt::bench {

namespace {

struct Merge {
  const char* name;
  std::size_t (*run)(const Objects& objects);
};

constexpr Merge merges[] = {{"index", mergeByIndex}, {"hash", mergeByHash}, {"name", mergeByName}};

void queryAndClear(Selection& selection) {
  TqVector<PROPINFO> rows;
  selection.query(rows);
  for (PROPINFO& row : rows)
    VariantClear(&row.value);
}

}  // namespace

void measureBaseline(const Settings& settings, Report& report) {
  const std::vector<std::uint32_t> sizes =
      settings.quick ? std::vector<std::uint32_t>{10} : std::vector<std::uint32_t>{1'000, 10'000, 100'000};
  const Repetitions repetitions = settings.quick ? Repetitions{.atLeast = 2, .atMost = 2} : Repetitions{};
  for (const Merge& merge : merges) {
    for (const std::uint32_t entities : sizes) {
      const std::string name = fmt::format("baseline/{}/{}", merge.name, entities);
      if (!settings.wants(name)) continue;
      Selection selection(drawingOf(Content::EqualLines, entities));
      selection.setUp();
      queryAndClear(selection);
      const double properties = static_cast<double>(Floor(selection).plan().properties);
      const Objects objects = lineObjects(entities);
      const double ofObjects = static_cast<double>(propertiesOf(objects)) * entities;
      // The names of objects are properties, too, and equal like all others.
      if (merge.run(objects) != propertiesOf(objects)) throw std::logic_error("the baseline merges wrongly");
      const Pairs times = samplePairs(
          repetitions, [&] { queryAndClear(selection); },
          [&] {
            if (merge.run(objects) == 0) throw std::logic_error("the baseline merges nothing");
          },
          [&] { selection.forget(); });
      Samples ratio = times.ratio;
      for (double& value : ratio)
        value *= ofObjects / properties;
      report.add({name,
                  {{"entities", static_cast<double>(entities)},
                   {"propertiesPerEntity", properties / entities},
                   {"propertiesPerObject", ofObjects / entities}},
                  {{"ratio", "", spreadOf(ratio)},
                   {"query", "ns per entity and property", spreadOf(times.first).over(properties)},
                   {"baseline", "ns per object and property", spreadOf(times.second).over(ofObjects)}}});
    }
  }
}

}  // namespace velt::bench
