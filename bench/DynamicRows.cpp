// Dynamic rows of growing selections: references to one dynamic block, whose attributes are the rows.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Groups.h"
#include "bench/Selection.h"

namespace velt::bench {

namespace {

constexpr std::uint32_t rowsPerReference = 10;

struct BlockScale {
  std::vector<std::uint32_t> sizes;
  std::size_t repetitions;
};

BlockScale blockScaleFor(const Settings& settings) {
  if (settings.quick) return {{20, 100}, 2};
  return {{2'000, 5'000, 10'000, 20'000}, 7};
}

std::uint32_t dynamicRowsOf(const TqVector<PROPINFO>& rows) {
  std::uint32_t count = 0;
  for (const PROPINFO& row : rows)
    count += row.dispId == dynamicPropertyDispId ? 1 : 0;
  return count;
}

void query(Selection& selection, std::uint32_t expectedRows) {
  TqVector<PROPINFO> rows;
  selection.query(rows);
  const std::uint32_t found = dynamicRowsOf(rows);
  clearValues(rows);
  if (found != expectedRows)
    throw std::logic_error("the query does not have the dynamic rows that it should have");
}

void queryAll(Selection& selection) {
  query(selection, rowsPerReference);
}

void queryStaticRowsOnly(Selection& selection) {
  query(selection, 0);
}

// The dynamic rows alone, without the merge.
void readRows(Selection& selection) {
  for (const VeltPropData* const entry : std::as_const(selection.entries())) {
    TqVector<PROPINFO> rows;
    GetDynPropSourcesPropInfo(entry->pDispatch, rows);
    clearValues(rows);
  }
}

// Each repetition in a process of its own, without a run before it. The values of all references but the first are
// never released (dynamic_values_not_released in docs/quirks.md), so in one process each repetition would find a heap
// more scattered than the one before.
double timeApart(const std::function<void()>& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("a pipe could not be made");
  const pid_t child = fork();
  if (child == 0) {
    try {
      const double time = timeOf(work);
      _exit(write(ends[1], &time, sizeof(time)) == sizeof(time) ? 0 : 1);
    } catch (const std::exception& error) {
      fmt::print(stderr, "{}\n", error.what());
      _exit(1);
    }
  }
  close(ends[1]);
  double time = 0.0;
  const bool isTold = read(ends[0], &time, sizeof(time)) == sizeof(time);
  close(ends[0]);
  if (child < 0 || waitpid(child, nullptr, 0) != child || !isTold)
    throw std::runtime_error("a repetition failed");
  return time;
}

struct BlockWork {
  const char* name;
  void (*run)(Selection&);
  bool isDynamic = true;
};

constexpr BlockWork blockWorks[] = {
    {"dynamic/read", readRows},
    {"dynamic/query", queryAll},
    {"dynamic/ordinary", queryStaticRowsOnly, false},
};

}  // namespace

void measureDynamicRows(const Settings& settings, Report& report) {
  const BlockScale scale = blockScaleFor(settings);
  for (const BlockWork& work : blockWorks) {
    const std::string nameOfGrowth = fmt::format("growth/{}", work.name);
    std::vector<Point> growth;
    for (const std::uint32_t references : scale.sizes) {
      const std::string name = fmt::format("{}/{}", work.name, references);
      if (!settings.wantsOneOf({nameOfGrowth, name})) continue;
      Selection selection(drawingOfReferences(references, rowsPerReference, work.isDynamic));
      selection.setUp();
      Samples samples;
      while (samples.size() < scale.repetitions)
        samples.push_back(timeApart([&] { work.run(selection); }));
      const Spread time = spreadOf(samples);
      growth.push_back({static_cast<double>(references), time.median});
      report.add({name,
                  {{"references", static_cast<double>(references)}, {"rowsPerReference", rowsPerReference}},
                  {{"time", "ns per row", time.over(static_cast<double>(references) * rowsPerReference)}}});
    }
    if (!settings.wants(nameOfGrowth)) continue;
    const double exponent = growthExponent(growth);
    report.add({nameOfGrowth,
                {{"from", growth.front().size}, {"to", growth.back().size}},
                {{"exponent", "", {exponent, exponent, exponent}}}});
  }
}

}  // namespace velt::bench
